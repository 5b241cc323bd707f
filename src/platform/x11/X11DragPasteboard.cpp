#include "X11DragPasteboard.h"

#include "X11Connection.h"
#include "X11PointerMonitor.h"
#include "platform/UriList.h"

#include <QFile>
#include <QLoggingCategory>

#include <xcb/xcb.h>
#include <xcb/xfixes.h>

#include <cstring>
#include <iterator>

Q_LOGGING_CATEGORY(lcDrag, "quaydrop.drag", QtWarningMsg)

namespace {

// How long a drag's source has to tell what it offers. The window is up meanwhile; what the source
// has not said by then is judged at the drop.
constexpr int kLearnBudgetMs = 250;

// The types the drop window knows, in the order it prefers them. Qt's drag sources answer a
// conversion to one of these at once but refuse TARGETS. A promised file is never asked for during
// the drag: that request tells the source to write it.
const char *const kWantedTypes[] = {"text/uri-list", "text/x-moz-url", "text/plain;charset=utf-8", "UTF8_STRING",
                                    "text/plain", "image/png", "image/tiff", "image/jpeg"};
constexpr int kWantedCount = int(std::size(kWantedTypes));

// An answer that leaves no doubt about the kind of drag, whatever a type list would add: local
// files, text, image data. A web address may come with an image, which only the list tells.
bool decisive(const QString &type, const std::optional<QByteArray> &uriList)
{
    if (type == QLatin1String("text/uri-list"))
        return uriList && !UriList::localPathBytes(*uriList).isEmpty();
    return type != QLatin1String("text/x-moz-url");
}

} // namespace

X11DragPasteboard::X11DragPasteboard(X11Connection *x, const X11PointerMonitor *pointer, QObject *parent)
    : DragPasteboard(parent), m_x(x), m_pointer(pointer), m_requestor(x->createHiddenChild(x->root()))
{
    xcb_xfixes_select_selection_input(x->connection(), x->root(), x->atom("XdndSelection"),
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
    xcb_flush(x->connection());
    m_budget.setSingleShot(true);
    m_budget.setInterval(kLearnBudgetMs);
    connect(&m_budget, &QTimer::timeout, this, &X11DragPasteboard::finishLearning);
}

X11DragPasteboard::~X11DragPasteboard()
{
    stopWatching();
    if (m_requestor)
        m_x->destroyWindow(m_requestor);
}

void X11DragPasteboard::handle(xcb_generic_event_t *event)
{
    const quint8 type = event->response_type & 0x7f;
    if (type == m_x->xfixesFirstEvent() + XCB_XFIXES_SELECTION_NOTIFY) {
        auto *notify = reinterpret_cast<xcb_xfixes_selection_notify_event_t *>(event);
        if (notify->owner == XCB_WINDOW_NONE)
            return; // the drag's source gave the selection up: no new drag
        if (m_x->isOwnWindow(notify->owner)) {
            qCDebug(lcDrag, "a drag of our own: not watched");
            return;
        }
        newOwner(notify->owner, notify->selection_timestamp);
        return;
    }
    if (type == XCB_SELECTION_NOTIFY) {
        auto *notify = reinterpret_cast<xcb_selection_notify_event_t *>(event);
        // A refusal may name no target at all.
        if (notify->requestor != m_requestor || !m_asking || notify->time != m_askedTime ||
            (notify->target != m_askedTarget && notify->property != XCB_ATOM_NONE))
            return;
        const bool refused = notify->property == XCB_ATOM_NONE;
        QByteArray data;
        if (!refused) {
            data = m_x->property(m_requestor, notify->property, XCB_GET_PROPERTY_TYPE_ANY).value_or(QByteArray());
            xcb_delete_property(m_x->connection(), m_requestor, notify->property);
            xcb_flush(m_x->connection());
        }
        answered(refused, data);
        return;
    }
    if (type == XCB_PROPERTY_NOTIFY) {
        auto *notify = reinterpret_cast<xcb_property_notify_event_t *>(event);
        if (notify->state != XCB_PROPERTY_NEW_VALUE || notify->atom != m_x->atom("XdndTypeList") ||
            !m_watched.contains(notify->window) || m_phase == Phase::Learnt)
            return;
        if (const auto types = typeListOf(notify->window))
            freshTypeList(*types);
    }
}

void X11DragPasteboard::newOwner(quint32 owner, quint32 timestamp)
{
    stopWatching();
    m_budget.stop();
    m_owner = owner;
    m_ownedSince = timestamp;
    m_phase = Phase::Idle;
    m_types.clear();
    m_uriList.reset();
    m_listAtStart.reset();
    m_freshList = false;
    m_answeredTypes.clear();
    m_typeIndex = m_timeIndex = 0;
    m_asking = false;
    // The source's own window is where the button went down; the owner may be a hidden one.
    m_sources = {owner};
    for (const quint32 window : m_pointer->pressWindows())
        if (!m_sources.contains(window) && !m_x->isOwnWindow(window))
            m_sources.append(window);
    // From now on, so that a type list written just after the new owner is seen as this drag's.
    for (const quint32 window : std::as_const(m_sources))
        m_x->watchProperties(window, true);
    m_watched = m_sources;
    qCDebug(lcDrag, "new drag: XdndSelection owned by 0x%x", owner);
    Q_EMIT changed(++m_count);
}

void X11DragPasteboard::stopWatching()
{
    for (const quint32 window : std::as_const(m_watched))
        m_x->watchProperties(window, false);
    m_watched.clear();
}

std::optional<QStringList> X11DragPasteboard::typeListOf(quint32 window) const
{
    const auto list = m_x->property(window, m_x->atom("XdndTypeList"), XCB_ATOM_ATOM);
    if (!list || list->isEmpty())
        return std::nullopt;
    QStringList types;
    const auto *atoms = reinterpret_cast<const quint32 *>(list->constData());
    for (qsizetype i = 0; i < list->size() / 4; ++i)
        types.append(m_x->atomName(atoms[i]));
    return types;
}

std::optional<QStringList> X11DragPasteboard::typeList() const
{
    for (const quint32 window : m_sources)
        if (auto types = typeListOf(window))
            return types;
    return std::nullopt;
}

void X11DragPasteboard::learnContent()
{
    if (m_phase == Phase::Learnt) {
        QMetaObject::invokeMethod(this, [this, count = m_count] { Q_EMIT contentLearned(count); }, Qt::QueuedConnection);
        return;
    }
    if (m_phase == Phase::Learning || !m_owner)
        return;
    m_phase = Phase::Learning;
    m_budget.start();
    if (m_freshList && !m_types.contains(QLatin1String("text/uri-list"))) {
        finishLearning();
        return;
    }
    if (!m_freshList)
        m_listAtStart = typeList();
    askNext();
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

void X11DragPasteboard::askNext()
{
    const QList<quint32> times = candidateTimes();
    while (m_typeIndex < kWantedCount) {
        if (m_timeIndex >= times.size()) {
            ++m_typeIndex;
            m_timeIndex = 0;
            continue;
        }
        m_askedTarget = m_x->atom(kWantedTypes[m_typeIndex]);
        m_askedTime = times.at(m_timeIndex);
        m_asking = true;
        xcb_convert_selection(m_x->connection(), m_requestor, m_x->atom("XdndSelection"), m_askedTarget,
                              m_x->atom("QUAYDROP_TYPES"), m_askedTime);
        xcb_flush(m_x->connection());
        return;
    }
    m_asking = false;
    // Nothing it answered: a list, fresh or left over, or the budget decides.
    if (m_freshList)
        finishLearning();
}

void X11DragPasteboard::answered(bool refused, const QByteArray &data)
{
    m_asking = false;
    if (refused) {
        ++m_timeIndex;
        askNext();
        return;
    }
    const QString wanted = QString::fromLatin1(kWantedTypes[m_typeIndex]);
    m_typeIndex = kWantedCount; // the first answer tells what kind of drag this is
    m_answeredTypes.append(wanted);
    if (wanted == QLatin1String("text/uri-list"))
        m_uriList = data;
    // Some sources answer for file names only in this form: "URL\ntitle" in UTF-16.
    if (wanted == QLatin1String("text/x-moz-url")) {
        const QString url = QString::fromUtf16(reinterpret_cast<const char16_t *>(data.constData()), data.size() / 2)
                                .section(QLatin1Char('\n'), 0, 0);
        if (url.startsWith(QLatin1String("file://"))) {
            m_uriList = url.toUtf8();
            m_answeredTypes.prepend(QStringLiteral("text/uri-list"));
        }
    }
    if (m_freshList || decisive(m_answeredTypes.first(), m_uriList))
        finishLearning();
}

void X11DragPasteboard::freshTypeList(const QStringList &types)
{
    m_freshList = true;
    m_types = types;
    // The file names come from the uri-list conversion, asked first of all.
    const bool namesStillAsked = m_asking && m_typeIndex == 0 && types.contains(QLatin1String("text/uri-list"));
    if (m_phase == Phase::Learning && !namesStillAsked)
        finishLearning();
}

void X11DragPasteboard::finishLearning()
{
    if (m_phase != Phase::Learning)
        return;
    m_budget.stop();
    stopWatching();
    m_asking = false;
    if (!m_freshList) {
        const bool sure = !m_answeredTypes.isEmpty() && decisive(m_answeredTypes.first(), m_uriList);
        // A list from before the drag's start may be the last drag's: what the source answered wins.
        m_types = sure ? m_answeredTypes : m_listAtStart.value_or(QStringList());
        for (const QString &type : std::as_const(m_answeredTypes))
            if (!m_types.contains(type))
                m_types.append(type);
        // X Direct Save: the source names its file in a property of its window.
        if (!m_types.contains(QLatin1String("XdndDirectSave0")))
            for (const quint32 window : std::as_const(m_sources))
                if (m_x->property(window, m_x->atom("XdndDirectSave0"), XCB_GET_PROPERTY_TYPE_ANY)) {
                    m_types.append(QStringLiteral("XdndDirectSave0"));
                    break;
                }
    }
    m_phase = Phase::Learnt;
    qCDebug(lcDrag) << "drag offers" << m_types << (m_freshList ? "(its type list)" : "(as answered)");
    Q_EMIT contentLearned(m_count);
}

QStringList X11DragPasteboard::filePaths() const
{
    QStringList paths;
    // Decoded for the gate's tests only; a drop reads the names again, byte for byte.
    if (m_uriList)
        for (const QByteArray &bytes : UriList::localPathBytes(*m_uriList))
            paths.append(QFile::decodeName(bytes));
    return paths;
}
