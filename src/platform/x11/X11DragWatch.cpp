#include "X11DragWatch.h"

#include "X11Connection.h"
#include "platform/UriList.h"

#include <QFile>
#include <QScopeGuard>
#include <QSysInfo>
#include <QUrl>
#include <QLoggingCategory>

#include <xcb/xcb.h>
#include <xcb/xfixes.h>
#include <xcb/xinput.h>

#include <cstring>

Q_LOGGING_CATEGORY(lcDrag, "quaydrop.drag", QtWarningMsg)

namespace {

// All the questions about one drag together: a source that is slow to answer must not hold up the
// program, so what it has not said by then is learnt at the drop.
constexpr int kQuestionBudgetMs = 150;

// The types the drop window knows, in the order it prefers them. Qt's drag sources answer a
// conversion to one of these at once but refuse TARGETS. A promised file is never asked for during
// the drag: that request tells the source to write it.
const char *const kWantedTypes[] = {"text/uri-list", "text/x-moz-url", "text/plain;charset=utf-8", "UTF8_STRING",
                                    "text/plain", "image/png", "image/tiff", "image/jpeg"};

// A source writes a promised file in the time it takes to write a file.
constexpr int kSaveBudgetMs = 5000;

} // namespace

X11DragPasteboard::X11DragPasteboard(X11Connection *x, QObject *parent) : DragPasteboard(parent), m_x(x)
{
    xcb_xfixes_select_selection_input(x->connection(), x->root(), x->atom("XdndSelection"),
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
    xcb_flush(x->connection());
}

void X11DragPasteboard::handle(xcb_generic_event_t *event)
{
    if ((event->response_type & 0x7f) != m_x->xfixesFirstEvent() + XCB_XFIXES_SELECTION_NOTIFY)
        return;
    auto *notify = reinterpret_cast<xcb_xfixes_selection_notify_event_t *>(event);
    if (notify->owner == XCB_WINDOW_NONE)
        return; // the drag's source gave the selection up: no new drag
    m_owner = notify->owner;
    m_ownedSince = notify->selection_timestamp;
    qCDebug(lcDrag, "new drag: XdndSelection owned by 0x%x", notify->owner);
    m_types.reset();
    m_uriList.reset();
    m_asking.invalidate();
    Q_EMIT changed(++m_count);
}

QList<quint32> X11DragPasteboard::candidateTimes() const
{
    // A Qt source answers only a request stamped with the time of the last pointer motion it handled
    // (or of its start); other sources take any time. Newest first.
    QList<quint32> times{m_lastMotionTime, m_ownedSince};
    times.removeAll(0u);
    times.append(XCB_CURRENT_TIME);
    return times;
}

std::optional<QByteArray> X11DragPasteboard::convert(const char *target) const
{
    if (!m_asking.isValid())
        m_asking.start();
    for (const quint32 time : candidateTimes()) {
        const int left = int(kQuestionBudgetMs - m_asking.elapsed());
        if (left <= 0)
            break;
        if (auto data = m_x->convertSelection(m_x->atom("XdndSelection"), m_x->atom(target), time, left))
            return data;
    }
    return std::nullopt;
}

QStringList X11DragPasteboard::types() const
{
    if (m_types)
        return *m_types;
    QStringList types;
    // Sources offering more than three types list them on their window.
    if (const auto list = m_x->property(m_owner, m_x->atom("XdndTypeList"), XCB_ATOM_ATOM)) {
        const auto *atoms = reinterpret_cast<const quint32 *>(list->constData());
        for (qsizetype i = 0; i < list->size() / 4; ++i)
            types.append(m_x->atomName(atoms[i]));
    } else {
        for (const char *wanted : kWantedTypes) {
            const auto data = convert(wanted);
            if (!data)
                continue;
            types.append(QString::fromLatin1(wanted));
            if (std::strcmp(wanted, "text/uri-list") == 0)
                m_uriList = data;
            // Some sources answer for file names only in this form: "URL\ntitle" in UTF-16.
            if (std::strcmp(wanted, "text/x-moz-url") == 0) {
                const QString url = QString::fromUtf16(reinterpret_cast<const char16_t *>(data->constData()),
                                                       data->size() / 2).section(QLatin1Char('\n'), 0, 0);
                if (url.startsWith(QLatin1String("file://"))) {
                    m_uriList = url.toUtf8();
                    types.prepend(QStringLiteral("text/uri-list"));
                }
            }
            break; // the first answer tells what kind of drag this is
        }
        // X Direct Save: the source names its file in a property of its window.
        if (types.isEmpty() && m_x->property(m_owner, m_x->atom("XdndDirectSave0"), XCB_GET_PROPERTY_TYPE_ANY))
            types.append(QStringLiteral("XdndDirectSave0"));
    }
    qCDebug(lcDrag) << "drag offers" << types;
    m_types = types;
    return types;
}

QStringList X11DragPasteboard::filePaths() const
{
    if (!m_uriList)
        m_uriList = convert("text/uri-list");
    QStringList paths;
    // Decoded for the gate's tests only; a drop reads the names again, byte for byte.
    if (m_uriList)
        for (const QByteArray &bytes : UriList::localPathBytes(*m_uriList))
            paths.append(QFile::decodeName(bytes));
    return paths;
}

X11PointerMonitor::X11PointerMonitor(X11Connection *x, QObject *parent) : PointerMonitor(parent), m_x(x)
{
    struct
    {
        xcb_input_event_mask_t head;
        quint32 mask;
    } selection{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
                XCB_INPUT_XI_EVENT_MASK_RAW_MOTION | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS |
                    XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE};
    xcb_input_xi_select_events(x->connection(), x->root(), 1, &selection.head);
    xcb_flush(x->connection());
}

QPointF X11PointerMonitor::pointer() const
{
    auto *reply = xcb_query_pointer_reply(m_x->connection(), xcb_query_pointer(m_x->connection(), m_x->root()), nullptr);
    if (!reply)
        return {};
    const QPointF at(reply->root_x, reply->root_y);
    free(reply);
    return at;
}

void X11PointerMonitor::handle(xcb_generic_event_t *event)
{
    if ((event->response_type & 0x7f) != XCB_GE_GENERIC)
        return;
    auto *ge = reinterpret_cast<xcb_ge_generic_event_t *>(event);
    if (ge->extension != m_x->xinputOpcode())
        return;
    switch (ge->event_type) {
    case XCB_INPUT_RAW_BUTTON_PRESS:
        if (reinterpret_cast<xcb_input_raw_button_press_event_t *>(event)->detail == 1)
            m_buttonDown = true;
        break;
    case XCB_INPUT_RAW_BUTTON_RELEASE:
        if (reinterpret_cast<xcb_input_raw_button_release_event_t *>(event)->detail == 1 && m_buttonDown) {
            m_buttonDown = false;
            Q_EMIT leftMouseReleased(pointer());
        }
        break;
    case XCB_INPUT_RAW_MOTION: {
        if (!m_buttonDown && !m_tracking)
            return;
        auto *raw = reinterpret_cast<xcb_input_raw_motion_event_t *>(event);
        Q_EMIT serverTime(raw->time);
        // The deltas of the axes present, in order: x first, then y.
        qreal delta[2] = {0, 0};
        int found = 0;
        const quint32 *mask = xcb_input_raw_button_press_valuator_mask(raw);
        const xcb_input_fp3232_t *values = xcb_input_raw_button_press_axisvalues(raw);
        for (int axis = 0; axis < 2 && axis < raw->valuators_len * 32; ++axis) {
            if (!(mask[axis / 32] & (1u << (axis % 32))))
                continue;
            const xcb_input_fp3232_t &v = values[found++];
            delta[axis] = v.integral + v.frac / 4294967296.0;
        }
        const QPointF at = pointer();
        if (m_buttonDown)
            Q_EMIT leftMouseDragged(at, delta[0], delta[1]);
        // Plain motion only: while the button is held the pointer is dragging, not wandering off.
        if (m_tracking && !m_buttonDown)
            Q_EMIT mouseMoved(at);
        break;
    }
    default:
        break;
    }
}

Result<QStringList> X11DragPasteboard::namesOfPromisedFilesDroppedAtDestination(const QString &folder,
                                                                               quintptr dropTargetWindow)
{
    const auto error = [](int code, const QString &message) { return Error{QStringLiteral("XdndDirectSave"), code, message}; };
    const quint32 property = m_x->atom("XdndDirectSave0");
    const auto offered = m_owner ? m_x->property(m_owner, property, XCB_GET_PROPERTY_TYPE_ANY) : std::nullopt;
    if (!offered || offered->isEmpty())
        return error(1, QStringLiteral("the drag source names no file to save"));
    // A name, never a path: the source must not be steered out of the folder.
    const QString name = QFile::decodeName(*offered).section(QLatin1Char('/'), -1);
    if (name.isEmpty() || name == QLatin1String(".") || name == QLatin1String(".."))
        return error(2, QStringLiteral("the drag source named no usable file"));
    QUrl target = QUrl::fromLocalFile(folder + QLatin1Char('/') + name);
    target.setHost(QSysInfo::machineHostName());
    const QByteArray uri = target.toEncoded();
    xcb_change_property(m_x->connection(), XCB_PROP_MODE_REPLACE, m_owner, property, m_x->atom("text/plain"), 8,
                        quint32(uri.size()), uri.constData());
    // Asked from inside the window the drop landed on: once the drag is over, that is how a Qt source
    // finds the drop the request belongs to.
    const quint32 requestor = dropTargetWindow ? m_x->createHiddenChild(quint32(dropTargetWindow)) : 0;
    const auto cleanUp = qScopeGuard([this, requestor] {
        if (requestor)
            m_x->destroyWindow(requestor);
    });
    QElapsedTimer clock;
    clock.start();
    for (const quint32 time : candidateTimes()) {
        const int left = int(kSaveBudgetMs - clock.elapsed());
        if (left <= 0)
            break;
        const auto answer = m_x->convertSelection(m_x->atom("XdndSelection"), property, time, left, requestor);
        if (!answer)
            continue;
        if (answer->startsWith('S'))
            return QStringList{name};
        return error(3, QStringLiteral("the drag source could not write %1 (answer \"%2\")")
                            .arg(name, QString::fromLatin1(answer->left(1))));
    }
    return error(4, QStringLiteral("the drag source did not write %1").arg(name));
}
