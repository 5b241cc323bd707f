#include "X11HotKeyBinder.h"

#include "X11Connection.h"

#include <QKeySequence>
#include <QLoggingCategory>

Q_DECLARE_LOGGING_CATEGORY(lcDrag)

namespace {

constexpr quint16 kLockModifiers[] = {0, XCB_MOD_MASK_LOCK, XCB_MOD_MASK_2, XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2};
constexpr quint16 kIgnoredModifiers = XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2;
constexpr quint16 kKeyModifiers = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4;

quint32 keysymFor(int key)
{
    if (key >= Qt::Key_A && key <= Qt::Key_Z)
        return quint32('a' + (key - Qt::Key_A));
    if (key >= Qt::Key_F1 && key <= Qt::Key_F35)
        return 0xffbe + quint32(key - Qt::Key_F1);
    switch (key) {
    case Qt::Key_Return: return 0xff0d;
    case Qt::Key_Enter: return 0xff8d;
    case Qt::Key_Escape: return 0xff1b;
    case Qt::Key_Tab: return 0xff09;
    case Qt::Key_Backspace: return 0xff08;
    case Qt::Key_Insert: return 0xff63;
    case Qt::Key_Delete: return 0xffff;
    case Qt::Key_Home: return 0xff50;
    case Qt::Key_End: return 0xff57;
    case Qt::Key_Left: return 0xff51;
    case Qt::Key_Up: return 0xff52;
    case Qt::Key_Right: return 0xff53;
    case Qt::Key_Down: return 0xff54;
    case Qt::Key_PageUp: return 0xff55;
    case Qt::Key_PageDown: return 0xff56;
    default: break;
    }
    // Digits, space and punctuation have their Latin-1 code as keysym.
    if (key >= 0x20 && key <= 0x7e)
        return quint32(key);
    return 0;
}

} // namespace

X11HotKeyBinder::X11HotKeyBinder(X11Connection *x, QObject *parent) : HotKeyBinder(parent), m_x(x) {}

X11HotKeyBinder::~X11HotKeyBinder() { unbind(); }

X11HotKeyBinder::Grab X11HotKeyBinder::grabFor(const QString &portableKeys)
{
    const QKeySequence sequence = QKeySequence::fromString(portableKeys, QKeySequence::PortableText);
    if (sequence.count() != 1)
        return {};
    const QKeyCombination combination = sequence[0];
    Grab grab;
    grab.keysym = keysymFor(combination.key());
    const Qt::KeyboardModifiers mods = combination.keyboardModifiers();
    if (mods & Qt::ShiftModifier)
        grab.modifiers |= XCB_MOD_MASK_SHIFT;
    if (mods & Qt::ControlModifier)
        grab.modifiers |= XCB_MOD_MASK_CONTROL;
    if (mods & Qt::AltModifier)
        grab.modifiers |= XCB_MOD_MASK_1;
    if (mods & Qt::MetaModifier)
        grab.modifiers |= XCB_MOD_MASK_4;
    return grab;
}

xcb_keycode_t X11HotKeyBinder::keycodeFor(quint32 keysym) const
{
    xcb_connection_t *c = m_x->connection();
    const xcb_setup_t *setup = xcb_get_setup(c);
    const int count = setup->max_keycode - setup->min_keycode + 1;
    auto *map = xcb_get_keyboard_mapping_reply(c, xcb_get_keyboard_mapping(c, setup->min_keycode, quint8(count)), nullptr);
    if (!map)
        return 0;
    const xcb_keysym_t *syms = xcb_get_keyboard_mapping_keysyms(map);
    const int perCode = map->keysyms_per_keycode;
    // A letter's keysym is lower case in the first column, upper case in the second.
    const quint32 upper = (keysym >= 'a' && keysym <= 'z') ? keysym - 32 : keysym;
    xcb_keycode_t found = 0;
    for (int code = 0; code < count && !found; ++code)
        for (int column = 0; column < qMin(perCode, 2); ++column)
            if (syms[code * perCode + column] == keysym || syms[code * perCode + column] == upper) {
                found = xcb_keycode_t(setup->min_keycode + code);
                break;
            }
    free(map);
    return found;
}

Status X11HotKeyBinder::bind(const QString &portableKeys)
{
    unbind();
    const Grab grab = grabFor(portableKeys);
    if (!grab.keysym || !grab.modifiers)
        return Error{QStringLiteral("hotkey"), 1, QStringLiteral("\"%1\" cannot be a global key: it needs a modifier and a key").arg(portableKeys)};
    const xcb_keycode_t keycode = keycodeFor(grab.keysym);
    if (!keycode)
        return Error{QStringLiteral("hotkey"), 2, QStringLiteral("the keyboard has no key for \"%1\"").arg(portableKeys)};
    xcb_connection_t *c = m_x->connection();
    for (const quint16 locks : kLockModifiers) {
        xcb_void_cookie_t cookie = xcb_grab_key_checked(c, 1, m_x->root(), grab.modifiers | locks, keycode,
                                                        XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        if (xcb_generic_error_t *error = xcb_request_check(c, cookie)) {
            free(error);
            // Another program holds it; a half-made grab would fire only with some lock keys on.
            xcb_ungrab_key(c, keycode, m_x->root(), XCB_MOD_MASK_ANY);
            xcb_flush(c);
            return Error{QStringLiteral("hotkey"), 3, QStringLiteral("%1 is already taken by another program").arg(portableKeys)};
        }
    }
    m_keycode = keycode;
    m_modifiers = grab.modifiers;
    qCDebug(lcDrag, "hot key %s grabbed as keycode %d, modifiers 0x%x", qPrintable(portableKeys), keycode, grab.modifiers);
    return success();
}

void X11HotKeyBinder::unbind()
{
    if (!m_keycode)
        return;
    for (const quint16 locks : kLockModifiers)
        xcb_ungrab_key(m_x->connection(), m_keycode, m_x->root(), m_modifiers | locks);
    xcb_flush(m_x->connection());
    m_keycode = 0;
}

void X11HotKeyBinder::handle(xcb_generic_event_t *event)
{
    const quint8 type = event->response_type & 0x7f;
    if (!m_keycode || (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE))
        return;
    auto *key = reinterpret_cast<xcb_key_press_event_t *>(event);
    if (key->detail != m_keycode || (key->state & kKeyModifiers & ~kIgnoredModifiers) != m_modifiers)
        return;
    if (type == XCB_KEY_RELEASE) {
        m_lastReleaseTime = key->time;
        return;
    }
    // A held key repeats as release and press with one time stamp: one press is one toggle.
    if (key->time == m_lastReleaseTime)
        return;
    Q_EMIT activated();
}
