// The X11 drag pasteboard against a real X server, with a drag source of the test's own on a
// connection of its own, so that what the source does and when is in the test's hands: a type list
// written just after the drag's start (as Firefox does), a list left over from the last drag, a
// source that says nothing, and a drag of our own. (X Direct Save's answers are met in the browser
// tests: Firefox's "S", Chromium's "F".)

#include "platform/x11/X11Desktop.h"

#include <QSignalSpy>
#include <QTest>
#include <QWidget>

#include <xcb/xcb.h>

#include <atomic>
#include <mutex>
#include <thread>

#include <poll.h>

namespace {

// A window that owns XdndSelection and answers conversions from a table: target name to bytes; a
// target not in the table is refused. It answers on a thread of its own, as another program would,
// also while the pasteboard waits for it.
class Source
{
public:
    Source()
    {
        m_c = xcb_connect(nullptr, nullptr);
        xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(m_c)).data;
        m_window = xcb_generate_id(m_c);
        xcb_create_window(m_c, XCB_COPY_FROM_PARENT, m_window, screen->root, 0, 0, 10, 10, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0, nullptr);
        xcb_flush(m_c);
        m_thread = std::thread([this] {
            while (!m_stop) {
                pollfd fd{xcb_get_file_descriptor(m_c), POLLIN, 0};
                ::poll(&fd, 1, 20);
                answer();
            }
        });
    }
    ~Source()
    {
        m_stop = true;
        m_thread.join();
        xcb_disconnect(m_c);
    }
    void startDrag()
    {
        xcb_set_selection_owner(m_c, m_window, atom("XdndSelection"), XCB_CURRENT_TIME);
        xcb_flush(m_c);
    }
    void setTypeList(const QList<QByteArray> &types)
    {
        QList<xcb_atom_t> atoms;
        for (const QByteArray &type : types)
            atoms.append(atom(type));
        xcb_change_property(m_c, XCB_PROP_MODE_REPLACE, m_window, atom("XdndTypeList"), XCB_ATOM_ATOM, 32,
                            quint32(atoms.size()), atoms.constData());
        xcb_flush(m_c);
    }
    void answerWith(const QByteArray &target, const QByteArray &data)
    {
        const std::lock_guard lock(m_mutex);
        m_answers.insert(target, data);
    }
    QList<QByteArray> asked() const
    {
        const std::lock_guard lock(m_mutex);
        return m_asked;
    }

private:
    xcb_atom_t atom(const QByteArray &name)
    {
        auto *reply = xcb_intern_atom_reply(m_c, xcb_intern_atom(m_c, 0, quint16(name.size()), name.constData()), nullptr);
        const xcb_atom_t value = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
        free(reply);
        return value;
    }
    QByteArray nameOf(xcb_atom_t atom)
    {
        auto *reply = xcb_get_atom_name_reply(m_c, xcb_get_atom_name(m_c, atom), nullptr);
        const QByteArray name = reply ? QByteArray(xcb_get_atom_name_name(reply), xcb_get_atom_name_name_length(reply))
                                      : QByteArray();
        free(reply);
        return name;
    }
    void answer()
    {
        while (xcb_generic_event_t *e = xcb_poll_for_event(m_c)) {
            if ((e->response_type & 0x7f) == XCB_SELECTION_REQUEST) {
                auto *request = reinterpret_cast<xcb_selection_request_event_t *>(e);
                const QByteArray target = nameOf(request->target);
                const std::lock_guard lock(m_mutex);
                m_asked.append(target);
                xcb_selection_notify_event_t notify{};
                notify.response_type = XCB_SELECTION_NOTIFY;
                notify.time = request->time;
                notify.requestor = request->requestor;
                notify.selection = request->selection;
                notify.target = request->target;
                notify.property = XCB_ATOM_NONE;
                if (m_answers.contains(target)) {
                    const QByteArray data = m_answers.value(target);
                    xcb_change_property(m_c, XCB_PROP_MODE_REPLACE, request->requestor, request->property,
                                        request->target, 8, quint32(data.size()), data.constData());
                    notify.property = request->property;
                }
                xcb_send_event(m_c, 0, request->requestor, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char *>(&notify));
                xcb_flush(m_c);
            }
            free(e);
        }
    }
    xcb_connection_t *m_c;
    xcb_window_t m_window;
    mutable std::mutex m_mutex;
    QHash<QByteArray, QByteArray> m_answers;
    QList<QByteArray> m_asked;
    std::atomic_bool m_stop = false;
    std::thread m_thread;
};

} // namespace

class X11DragPasteboardTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(QGuiApplication::platformName() == QLatin1String("xcb"), "needs an X server (run under xvfb-run)");
        m_x11 = X11Desktop::open();
        QVERIFY(m_x11);
    }

    void aTypeListWrittenJustAfterTheStartIsThisDrags()
    {
        Source source;
        // As Firefox: the address answers first, the list with the picture's types comes a moment later.
        source.answerWith("text/uri-list", "http://127.0.0.1/harbour.png\r\n");
        startDrag(source);
        QSignalSpy learnt(m_x11->pasteboard.get(), &DragPasteboard::contentLearned);
        m_x11->pasteboard->learnContent();
        QTRY_VERIFY(source.asked().contains("text/uri-list"));
        QTest::qWait(20);
        QVERIFY(learnt.isEmpty()); // a web address alone is not enough to judge
        source.setTypeList({"text/x-moz-url", "text/uri-list", "text/html", "image/png", "XdndDirectSave0"});
        QTRY_COMPARE(learnt.size(), 1);
        QCOMPARE(m_x11->pasteboard->types(),
                 (QStringList{"text/x-moz-url", "text/uri-list", "text/html", "image/png", "XdndDirectSave0"}));
        QVERIFY(m_x11->pasteboard->filePaths().isEmpty());
    }

    void aListLeftOverFromTheLastDragLosesToWhatTheSourceSays()
    {
        Source source;
        source.setTypeList({"text/x-moz-url", "text/html", "text/plain", "image/png"}); // the last drag's
        source.answerWith("text/uri-list", "file:///home/someone/notes.txt\r\n");
        startDrag(source);
        QSignalSpy learnt(m_x11->pasteboard.get(), &DragPasteboard::contentLearned);
        m_x11->pasteboard->learnContent();
        QTRY_COMPARE(learnt.size(), 1);
        QCOMPARE(m_x11->pasteboard->types(), QStringList{"text/uri-list"});
        QCOMPARE(m_x11->pasteboard->filePaths(), QStringList{"/home/someone/notes.txt"});
        // Asked again for the same drag: the same answer, nothing asked of the source.
        const qsizetype asked = source.asked().size();
        m_x11->pasteboard->learnContent();
        QTRY_COMPARE(learnt.size(), 2);
        QCOMPARE(source.asked().size(), asked);
    }

    void aSourceThatSaysNothingIsLearntWhenItsTimeIsUp()
    {
        Source source; // refuses everything, lists nothing
        startDrag(source);
        QSignalSpy learnt(m_x11->pasteboard.get(), &DragPasteboard::contentLearned);
        m_x11->pasteboard->learnContent();
        QVERIFY(learnt.wait(2000));
        QVERIFY(m_x11->pasteboard->types().isEmpty());
        QVERIFY(source.asked().contains("text/uri-list") && source.asked().contains("image/png"));
    }

    void aDragOfOurOwnIsNotCounted()
    {
        QWidget ours;
        ours.winId();
        QSignalSpy changed(m_x11->pasteboard.get(), &DragPasteboard::changed);
        xcb_connection_t *qt = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
        auto *reply = xcb_intern_atom_reply(qt, xcb_intern_atom(qt, 0, 13, "XdndSelection"), nullptr);
        xcb_set_selection_owner(qt, xcb_window_t(ours.winId()), reply->atom, XCB_CURRENT_TIME);
        free(reply);
        xcb_flush(qt);
        QVERIFY(!changed.wait(300));
        Source other;
        startDrag(other); // and the next drag of another program is
    }

private:
    // A new drag of `source`, once the pasteboard saw it.
    void startDrag(Source &source)
    {
        QSignalSpy changed(m_x11->pasteboard.get(), &DragPasteboard::changed);
        source.startDrag();
        QVERIFY(changed.wait(2000));
    }
    std::unique_ptr<X11Desktop> m_x11;
};

QTEST_MAIN(X11DragPasteboardTest)
#include "tst_x11dragpasteboard.moc"
