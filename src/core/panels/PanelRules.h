#pragma once

#include "DropPanel.h"

#include <QHash>
#include <QString>

struct ButtonState
{
    bool enabled = true;
    bool visible = true;
    bool operator==(const ButtonState &) const = default;
};

// What the enabling rules read from the dropped content.
struct PanelInputs
{
    bool libraryFolderFile = false;        // LIB
    bool droppedImageFromOtherApp = false; // OTHER
    int imageCount = 0;                    // images among the dropped paths
    bool firstPathIsPdf = false;
    bool firstPathIsArchive = false;
    bool zipRunning = false;
};

namespace PanelRules {

// The buttons a panel's rules touch when it opens, with their new state. Buttons not in the answer
// keep what they had: panel 777 shares its view with 333 and leaves the reveal button alone. Its zip
// button follows the file itself: an archive is not zipped again (a.zip would become a.zip).
QHash<QString, ButtonState> buttonStatesFor(DropPanel panel, const PanelInputs &in);

// On panel 888: the resize overlay works on several files unless exactly one image is among them.
inline bool multiFilesActionPanelShown(int imageCount) { return imageCount != 1; }

} // namespace PanelRules
