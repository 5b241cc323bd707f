#pragma once

#include "platform/Platform.h"

#include <QElapsedTimer>

#include <optional>

class X11Connection;
#include <xcb/xcb.h>

// The system-wide drag on X11: each new owner of the XdndSelection selection is a new drag (XFixes
// tells at once), what it offers comes from its XdndTypeList or from asking it, and its file names
// from converting the selection to text/uri-list.
class X11DragPasteboard : public DragPasteboard, public PromisedFileReceiver
{
    Q_OBJECT
public:
    explicit X11DragPasteboard(X11Connection *x, QObject *parent = nullptr);
    qint64 changeCount() const override { return m_count; }
    QStringList types() const override;
    QStringList filePaths() const override;
    // X Direct Save: the file URI goes into the source's XdndDirectSave0 property, then a request for
    // that target tells it to write; "S" is its success.
    Result<QStringList> namesOfPromisedFilesDroppedAtDestination(const QString &folder, quintptr dropTargetWindow) override;
    void handle(xcb_generic_event_t *event);
    void noteMotionTime(quint32 time) { m_lastMotionTime = time; }

private:
    std::optional<QByteArray> convert(const char *target) const;
    QList<quint32> candidateTimes() const;
    X11Connection *m_x;
    qint64 m_count = 0;
    quint32 m_lastMotionTime = 0;
    quint32 m_owner = 0;
    quint32 m_ownedSince = 0; // server time of the drag's start
    mutable std::optional<QStringList> m_types; // per drag
    mutable std::optional<QByteArray> m_uriList;
    mutable QElapsedTimer m_asking; // since the first question about this drag
};

// Left-button drags and, while asked, pointer motion, from XInput 2 raw events on the root window.
class X11PointerMonitor : public PointerMonitor
{
    Q_OBJECT
public:
    explicit X11PointerMonitor(X11Connection *x, QObject *parent = nullptr);
    void setMotionTracking(bool on) override { m_tracking = on; }
    void handle(xcb_generic_event_t *event);

Q_SIGNALS:
    void serverTime(quint32 time); // of each pointer motion

private:
    QPointF pointer() const;
    X11Connection *m_x;
    bool m_buttonDown = false;
    bool m_tracking = false;
};
