#pragma once

#include <QtGlobal>

// The rules behind the options panel's controls, without a window.
namespace OptionsRules {

// The two ways of opening the drop window exclude each other: there is never both or neither.
struct SummonState
{
    bool hotkeyBox = false;
    bool clickBox = true;
    bool recorderEnabled = false;
    bool shortcutEnabled = false;
};
SummonState fromShortcutEnabled(bool shortcutEnabled);
SummonState afterHotkeyBox(bool nowOn);
SummonState afterClickBox(bool nowOn);

// Time saved can be shared from 20 minutes on.
inline constexpr quint64 kShareThresholdSeconds = 1200;
inline bool canShareTime(quint64 seconds) { return seconds >= kShareThresholdSeconds; }

} // namespace OptionsRules
