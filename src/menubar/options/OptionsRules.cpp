#include "OptionsRules.h"

OptionsRules::SummonState OptionsRules::fromShortcutEnabled(bool enabled) { return {enabled, !enabled, enabled, enabled}; }

OptionsRules::SummonState OptionsRules::afterHotkeyBox(bool nowOn) { return fromShortcutEnabled(nowOn); }

OptionsRules::SummonState OptionsRules::afterClickBox(bool nowOn) { return fromShortcutEnabled(!nowOn); }
