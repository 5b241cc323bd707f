#pragma once

#include "DropPanel.h"

#include <QList>
#include <QString>

// One button of an action panel: its outlet name, the AppDelegate action it calls, its image stem
// (empty for a button that shows a title only) and the key of its short label.
struct PanelButtonSpec
{
    const char *outlet;
    const char *action;
    const char *imageStem;
    const char *labelKey;
};

namespace PanelCatalog {

// The content view that shows a panel: 333 and 777 share "defaultActionPanel".
QString contentViewName(DropPanel panel);
// The buttons of a panel's content view, in reading order. Empty for the drop target and for
// values that are no panel.
QList<PanelButtonSpec> buttonsOf(DropPanel panel);
// The share buttons fire on press, not on release.
bool firesOnPress(const QString &outlet);
// The outlet of the panel's zip button, or empty when it has none.
QString zipButtonOf(DropPanel panel);
// Content size in points.
constexpr int kPanelWidth = 210;
constexpr int kPanelHeight = 235;
constexpr int kTallPanelHeight = 300; // the quick-move picker and the move overlay
constexpr int kDropTargetSide = 90;

} // namespace PanelCatalog
