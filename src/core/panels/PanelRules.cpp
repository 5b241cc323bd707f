#include "PanelRules.h"

#include "PanelCatalog.h"

#include <initializer_list>

namespace {

void setAll(QHash<QString, ButtonState> &states, std::initializer_list<const char *> outlets, bool enabled,
            bool visible = true)
{
    for (const char *outlet : outlets)
        states.insert(QString::fromLatin1(outlet), ButtonState{enabled, visible});
}

} // namespace

namespace PanelRules {

QHash<QString, ButtonState> buttonStatesFor(DropPanel panel, const PanelInputs &in)
{
    QHash<QString, ButtonState> states;
    const bool lib = in.libraryFolderFile;
    const bool libOrOther = in.libraryFolderFile || in.droppedImageFromOtherApp;
    switch (panel) {
    case DropPanelImage:
        setAll(states, {"zipImgBtn", "createNewFImgBtn", "trashImgBtn", "revealImginFinderBtn"}, !lib);
        break;
    case DropPanelDocument:
        setAll(states, {"revealdocInFinderBtn", "zipDocBtn", "trashdocBtn", "createNewDocBtn"}, !lib);
        break;
    case DropPanelFolder:
        setAll(states, {"trashFileBtn", "revealInFinderBtn", "zipBtn", "createNewBtn"}, !lib);
        setAll(states, {"printPrTbleFileBtn", "convrtPDFToImgBtn"}, in.firstPathIsPdf, in.firstPathIsPdf);
        break;
    case DropPanelDefault:
        setAll(states, {"trashFileBtn", "createNewBtn"}, !libOrOther);
        setAll(states, {"zipBtn"}, !lib && !in.firstPathIsArchive);
        setAll(states, {"printPrTbleFileBtn", "convrtPDFToImgBtn"}, in.firstPathIsPdf, in.firstPathIsPdf);
        break;
    case DropPanelMultiFiles:
        setAll(states, {"moveToOneFoldBtn", "createFileMultiBtn", "trashMultiBtn", "revealInfinderMultibtn"},
               !libOrOther);
        setAll(states, {"multiConvrtImg", "multiResizeImg"}, in.imageCount > 0);
        break;
    case DropPanelDropTarget:
    case DropPanelString:
    case DropPanelOtherAppImage:
        break;
    }
    // A zip running in the background survives panels closing and opening.
    if (const QString zip = PanelCatalog::zipButtonOf(panel); !zip.isEmpty() && in.zipRunning)
        states.insert(zip, ButtonState{false, true});
    return states;
}

} // namespace PanelRules
