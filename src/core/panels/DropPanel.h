#pragma once

#include <QtGlobal>

// The index passed to showPanelWithIndex. 1, 2, 333 and 777 are also what
// Utils::determineFileType answers, so its result is passed on unchanged.
enum DropPanel : quint64 {
    DropPanelImage = 1,
    DropPanelDocument = 2,
    DropPanelDropTarget = 111,
    DropPanelString = 222,
    DropPanelFolder = 333,
    DropPanelOtherAppImage = 444,
    DropPanelDefault = 777,
    DropPanelMultiFiles = 888,
};

inline bool isKnownDropPanel(quint64 value)
{
    switch (value) {
    case DropPanelImage:
    case DropPanelDocument:
    case DropPanelDropTarget:
    case DropPanelString:
    case DropPanelFolder:
    case DropPanelOtherAppImage:
    case DropPanelDefault:
    case DropPanelMultiFiles:
        return true;
    default:
        return false;
    }
}
