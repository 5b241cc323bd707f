#pragma once

#include "platform/Platform.h"

#include <functional>

class QMenu;
class QWidget;

// The share picker: a menu of `targets` below `anchor` (at the pointer without one). It decides
// nothing: the chosen target's id goes to `chosen`, and `closed` (if any) runs when the menu goes,
// chosen or not. Each entry's object name is its target's id.
QMenu *showSharePicker(const QList<ShareTarget> &targets, QWidget *anchor, std::function<void(const QString &id)> chosen,
                       std::function<void()> closed);
