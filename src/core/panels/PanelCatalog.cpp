#include "PanelCatalog.h"

namespace {

// Buttons without an outlet get a name of our own so that tests and the window can address them.
const QList<PanelButtonSpec> kImagePanel = {
    {"moveFileToBtn", "moveToBtnAction", "06.move", "Move"},
    {"resizeImgBtn", "quickResizeBtnAction", "05.resize", "Resize"},
    {"revealImginFinderBtn", "convertImgAction", "convertImg", "Convert"}, // carries convert, despite its name
    {"shareImgBtn", "showImgSharePanelVC", "02.share", "Share"},
    {"mailImgBtn", "mailFileBtnAction", "07.mail", "Mail"},
    {"zipImgBtn", "zipBtnAction", "03.zip", "Zip"},
    {"deskPbtn", "setAsWallpaperAction", "01.bg", "Wallpaper"},
    {"createNewFImgBtn", "createNewFileBtnAction", "16.add", "New"},
    {"trashImgBtn", "trashFiles", "trash", "Trash"},
    {"sizeImgPanelBtn", "sizebtnAction", "", ""},
    {"getPathImgBtn", "getPathBtnAction", "", "/path"},
};

const QList<PanelButtonSpec> kDocumentPanel = {
    {"moveDocToBtn", "moveToBtnAction", "06.move", "Move"},
    {"convToPDFbtn", "SaveAsPDF", "13.pdf", "PDF"},
    {"printDocBtn", "printFileAction", "14.print", "Print"},
    {"airDrDocBtn", "airDropBtnAction", "02.share", "Share"},
    {"maildocBtn", "mailFileBtnAction", "07.mail", "Mail"},
    {"zipDocBtn", "zipBtnAction", "03.zip", "Zip"},
    {"revealdocInFinderBtn", "revealOneFileInFinder", "08.finder", "Show"},
    {"createNewDocBtn", "createNewFileBtnAction", "16.add", "New"},
    {"trashdocBtn", "trashFiles", "trash", "Trash"},
    {"sizeDocPanelBtn", "sizebtnAction", "", ""},
    {"getPathDocBtn", "getPathBtnAction", "", "/path"},
};

const QList<PanelButtonSpec> kDefaultPanel = {
    {"moveToBtn", "moveToBtnAction", "06.move", "Move"},
    {"airDropBtn", "airDropBtnAction", "02.share", "Share"},
    {"mailFileBtn", "mailFileBtnAction", "07.mail", "Mail"},
    {"zipBtn", "zipBtnAction", "03.zip", "Zip"},
    {"revealInFinderBtn", "revealOneFileInFinder", "08.finder", "Show"},
    {"createNewBtn", "createNewFileBtnAction", "16.add", "New"},
    {"trashFileBtn", "trashFiles", "trash", "Trash"},
    // Last, so that hiding them for anything but a PDF leaves no gap.
    {"printPrTbleFileBtn", "printPDFFileAction", "14.print", "Print"},
    {"convrtPDFToImgBtn", "showPDFToImgConvertVC", "convertImg", "To images"},
    {"sizeBtn", "sizebtnAction", "", ""},
    {"getPathBtn", "getPathBtnAction", "", "/path"},
};

const QList<PanelButtonSpec> kStringPanel = {
    {"strMailBtn", "newMailWithDroppedString", "07.mail", "Mail"},
    {"strOSXShareBtn", "shareDroppedStringViaShareMenu", "02.share", "Share"},
    {"strSearchInFinder", "searchStringInFinder", "searchInFinder", "Search"},
    {"strShareOnTwBtn", "postDroppedStringOnTwitter", "11.twitter", "Post"},
    {"strFBshareBtn", "postDroppedStringOnFacebook", "12.facebook", "Facebook"},
    {"saveDroppedStringToTXTBtn", "saveDroppedStringToTXT", "09.save", "Save as text"},
    {"droppedStrToClipboardBtn", "copyDroppedStringToClipboard", "", "Copy to clipboard"},
};

const QList<PanelButtonSpec> kOtherAppImagePanel = {
    {"saveDrImgBtn", "imageDropSaveAction", "09.save", "Save"},
    {"moveDrImgBtn", "moveToBtnAction", "06.move", "Move"},
    {"resizeDrImgBtn", "quickResizeBtnAction", "05.resize", "Resize"},
    {"convrtDrImgBtn", "convertImgAction", "convertImg", "Convert"},
    {"shareDrImgBtn", "showImgSharePanelVC", "02.share", "Share"},
    {"mailDrImgBtn", "mailFileBtnAction", "07.mail", "Mail"},
    {"zipDrImgBtn", "zipBtnAction", "03.zip", "Zip"},
    {"deskDrImgBtn", "setAsWallpaperAction", "01.bg", "Wallpaper"},
    {"dropedFromOtherAppImgDimesionsBtn", "copyImgDimesions", "", ""},
    {"copydroppedImgURLToClipboardBTN", "copydroppedImgURLToClipboard", "", "/path"},
};

const QList<PanelButtonSpec> kMultiFilesPanel = {
    {"movetoMultiBtn", "moveToBtnAction", "06.move", "Move"},
    {"moveToOneFoldBtn", "putSelectedFilesInFolderAction", "15.in.folder", "Into folder"},
    {"renameMultiBtn", "showRenameVC", "rename", "Rename"},
    {"multiResizeImg", "quickResizeBtnAction", "05.resize", "Resize"},
    {"multiConvrtImg", "convertImgAction", "convertImg", "Convert"},
    {"airDrMultiBtn", "airDropMultiFiles", "02.share", "Share"},
    {"mailMultyBtn", "mailMultipleFilesAvtion", "07.mail", "Mail"},
    {"zipMultiBtn", "zipMultiFilesAction", "03.zip", "Zip"},
    {"revealInfinderMultibtn", "revealMultiFilesInFinder", "08.finder", "Show"},
    {"createFileMultiBtn", "createNewFileBtnAction", "16.add", "New"},
    {"trashMultiBtn", "trashFiles", "trash", "Trash"},
    {"sizeMultiPanelBtn", "sizebtnAction", "", ""},
};

} // namespace

namespace PanelCatalog {

QString contentViewName(DropPanel panel)
{
    switch (panel) {
    case DropPanelImage: return QStringLiteral("imgActionPanel");
    case DropPanelDocument: return QStringLiteral("docTxtActionPanel");
    case DropPanelDropTarget: return QStringLiteral("dropFilesHereView");
    case DropPanelString: return QStringLiteral("stringDroppedActionPanel");
    case DropPanelFolder:
    case DropPanelDefault: return QStringLiteral("defaultActionPanel");
    case DropPanelOtherAppImage: return QStringLiteral("droppedImagePanel");
    case DropPanelMultiFiles: return QStringLiteral("multiFilesActionPanel");
    }
    return {};
}

QList<PanelButtonSpec> buttonsOf(DropPanel panel)
{
    switch (panel) {
    case DropPanelImage: return kImagePanel;
    case DropPanelDocument: return kDocumentPanel;
    case DropPanelFolder:
    case DropPanelDefault: return kDefaultPanel;
    case DropPanelString: return kStringPanel;
    case DropPanelOtherAppImage: return kOtherAppImagePanel;
    case DropPanelMultiFiles: return kMultiFilesPanel;
    case DropPanelDropTarget: break;
    }
    return {};
}

bool firesOnPress(const QString &outlet)
{
    static const QStringList shareButtons = {"shareImgBtn", "airDrDocBtn", "airDropBtn",
                                             "strOSXShareBtn", "shareDrImgBtn", "airDrMultiBtn"};
    return shareButtons.contains(outlet);
}

QString zipButtonOf(DropPanel panel)
{
    switch (panel) {
    case DropPanelImage: return QStringLiteral("zipImgBtn");
    case DropPanelDocument: return QStringLiteral("zipDocBtn");
    case DropPanelFolder:
    case DropPanelDefault: return QStringLiteral("zipBtn");
    case DropPanelMultiFiles: return QStringLiteral("zipMultiBtn");
    default: return {};
    }
}

} // namespace PanelCatalog
