#pragma once

#include <QByteArray>
#include <QHash>
#include <QObject>
#include <QPoint>
#include <QPointF>
#include <QString>

#include <array>
#include <functional>
#include <memory>
#include <optional>

#include <xcb/xcb.h>

class QSocketNotifier;

// A connection of the program's own to the X server, read on the Qt event loop through its file
// descriptor: nothing polls, nothing wakes while the desktop is idle.
class X11Connection : public QObject
{
    Q_OBJECT
public:
    // Null when there is no X display or the server lacks XFixes or XInput 2.
    static std::unique_ptr<X11Connection> open();
    ~X11Connection() override;

    xcb_connection_t *connection() const { return m_c; }
    quint32 root() const { return m_root; }
    quint8 xfixesFirstEvent() const { return m_xfixesFirstEvent; }
    quint8 xinputOpcode() const { return m_xinputOpcode; }
    quint32 atom(const char *name);
    QString atomName(quint32 atom);

    // Asks the owner of `selection` for `target` and waits at most `timeoutMs` for the answer. `time` is
    // that of the ownership: drag sources refuse a request for "now". Events that come meanwhile are
    // handled afterwards, in order. `requestor`: a window of this connection's, else its own.
    std::optional<QByteArray> convertSelection(quint32 selection, quint32 target, quint32 time, int timeoutMs,
                                               quint32 requestor = 0);
    // An input-only window of this connection's inside `parent` (which may be another program's), or 0.
    quint32 createHiddenChild(quint32 parent);
    void destroyWindow(quint32 window);
    // The whole of a window's property as raw items (32-bit items for atoms), or nullopt.
    std::optional<QByteArray> property(quint32 window, quint32 property, quint32 type);

    // Whether a window was made by this program, through this connection or Qt's.
    bool isOwnWindow(quint32 window) const;
    // The windows that hold the pointer, from the root's child down to the innermost, and where it is.
    QList<quint32> windowsUnderPointer(QPoint *rootPosition = nullptr);
    // PropertyNotify of another program's window, while on.
    void watchProperties(quint32 window, bool on);
    // Between the server's pixels and Qt's device-independent pixels, by the scale of the screen there.
    static QPointF toLogical(QPointF native);
    static QPointF toNative(QPointF logical);

    // Sends `type` with five 32-bit items to `window`, as window managers expect of _NET_ requests.
    void sendClientMessage(quint32 window, quint32 type, const std::array<quint32, 5> &data);

    // Every handler sees every event; each picks its own.
    using Handler = std::function<void(xcb_generic_event_t *)>;
    void addEventHandler(Handler handler) { m_handlers.append(std::move(handler)); }

private:
    X11Connection() = default;
    void readEvents();
    void dispatch(xcb_generic_event_t *event);

    xcb_connection_t *m_c = nullptr;
    quint32 m_root = 0;
    quint32 m_requestor = 0;
    quint8 m_xfixesFirstEvent = 0;
    quint8 m_xinputOpcode = 0;
    QHash<QByteArray, quint32> m_atoms;
    QHash<quint32, QString> m_atomNames;
    QSocketNotifier *m_notifier = nullptr;
    QList<xcb_generic_event_t *> m_deferred;
    QList<Handler> m_handlers;
    struct IdSpace
    {
        quint32 base, mask;
    };
    QList<IdSpace> m_idSpaces;
};
