#include "CommandTable.h"

#include "CoreCommands.h"
#include "DestinationsCommand.h"
#include "EditCommand.h"
#include "FileCommands.h"
#include "ImageCommands.h"
#include "FileActionCommands.h"
#include "SendingCommands.h"
#include "DesktopCommands.h"
#include "InstanceCommands.h"
#include "IntegrateCommand.h"
#include "ZipCommand.h"

namespace Cli {

namespace {

const Option kDest{"--dest", ValueKind::Folder, "DIR", "write into DIR instead of beside the first file"};
const QStringList kDestinationActions{QStringLiteral("list"), QStringLiteral("add"), QStringLiteral("remove"),
                                      QStringLiteral("rename")};
const QStringList kNewKinds{QStringLiteral("folder"), QStringLiteral("txt"), QStringLiteral("rtf"), QStringLiteral("docx"),
                            QStringLiteral("xlsx"), QStringLiteral("odt"), QStringLiteral("ods")};
const QStringList kPageTypes{QStringLiteral("png"), QStringLiteral("jpg"), QStringLiteral("bmp"), QStringLiteral("tiff")};

} // namespace

const std::vector<Command> &commands()
{
    static const std::vector<Command> table{
        {"type",
         {{"PATH", ArgumentKind::Path, true}},
         {},
         "print the panel code of each path (1 image, 2 text, 333 folder, 777 other)",
         "One line per path: the code, a tab, the path as given.",
         &runTypeCommand,
         false,
         false,
         true},
        {"size",
         {{"PATH", ArgumentKind::Path, true}},
         {},
         "print the size on disk of the paths together, readable and in bytes",
         "",
         &runSizeCommand,
         false,
         false,
         true},
        {"ledger", {}, {}, "print the time saved this week and in total", "", &runLedgerCommand},
        {"copy",
         {{"SRC", ArgumentKind::Path, true}, {"DESTDIR", ArgumentKind::Folder}},
         {{"--keep-both", ValueKind::None, "", "when a name is taken, keep both: the copy gets a free name"},
          {"--skip", ValueKind::None, "", "when a name is taken, leave that item out"},
          {"--replace", ValueKind::None, "", "when a name is taken, replace it once the copy is complete"}},
         "copy into DESTDIR, with progress on standard error",
         "Without one of the three options a taken name is asked about on a terminal; with no terminal to\n"
         "ask, the item is skipped and the exit status is 1. Ctrl+C stops and keeps everything as it was.",
         &runCopyCommand},
        {"move",
         {{"SRC", ArgumentKind::Path, true}, {"DESTDIR", ArgumentKind::Folder}},
         {{"--keep-both", ValueKind::None, "", "when a name is taken, keep both: the moved item gets a free name"},
          {"--skip", ValueKind::None, "", "when a name is taken, leave that item where it is"},
          {"--replace", ValueKind::None, "", "when a name is taken, replace it once the new one is complete"}},
         "move into DESTDIR: a rename on one device, else a copy whose sources go once it is complete",
         "A taken name is settled as for copy.",
         &runMoveCommand},
        {"resize",
         {{"FILE", ArgumentKind::File, true}},
         {{"--width", ValueKind::Pixels, "W", "the width of the result, in pixels"},
          {"--height", ValueKind::Pixels, "H", "the height of the result, in pixels"},
          kDest},
         "write resized copies NAME_WxH.EXT (Lanczos-3), the source's type and resolution kept",
         "Give --width, --height or both. One image with one side given keeps its proportions; several\n"
         "images get one copy per side given, each fitted with its own proportions. A photo is sized as\n"
         "it is seen (its EXIF orientation applied).",
         &runResizeCommand},
        {"convert",
         {{"TYPE", ArgumentKind::Choice, false, kPageTypes + QStringList{QStringLiteral("jp2")}},
          {"FILE", ArgumentKind::File, true}},
         {{"--compression", ValueKind::Percent, "PERCENT", "from 0 (best, the default) to 100 (smallest), in steps of 5"},
          kDest},
         "write each image in another type, under a free name",
         "jp2 writes JPEG 2000 (NAME.jp2). A PNG converted to PNG is rewritten losslessly.",
         &runConvertCommand},
        {"pdf2img",
         {{"TYPE", ArgumentKind::Choice, false, kPageTypes}, {"PDF", ArgumentKind::File}},
         {{"--dpi", ValueKind::Dpi, "N", "dots per inch, from 30 to 1000 (150 when left out)"},
          {"--password", ValueKind::Text, "P", "the password that opens a locked PDF"},
          {"--dest", ValueKind::Folder, "DIR", "make the new folder in DIR instead of beside the PDF"}},
         "write each page as an image, Page_1 ..., into a new folder named after the PDF",
         "",
         &runPdfToImagesCommand},
        {"img2pdf",
         {{"FILE", ArgumentKind::File, true}},
         {{"--merge", ValueKind::None, "", "one PDF of all the images, in natural name order, named after page 1"},
          {"--order-as-given", ValueKind::None, "", "with --merge: the pages in the order of the FILEs, for scripts"},
          kDest},
         "write a PDF of each image, JPEGs embedded as they are",
         "",
         &runImagesToPdfCommand},
        {"rotate",
         {{"FILE", ArgumentKind::File, true}},
         {{"--turns", ValueKind::Turns, "N", "quarter turns clockwise: 1, 2 or 3"}, kDest},
         "write each image turned, as _Quaydrop-NAME.EXT beside it, as the editor saves it",
         "A JPEG is turned losslessly, its compressed data untouched, where its size allows (as jpegtran\n"
         "-perfect does); its resolution, colour profile and EXIF stay, the orientation tag set upright.",
         &runRotateCommand},
        {"crop",
         {{"FILE", ArgumentKind::File, true}},
         {{"--rect", ValueKind::Rectangle, "X,Y,W,H", "the part to keep, in pixels from the top left"}, kDest},
         "write the part X,Y,W,H of each image as _Quaydrop-NAME.EXT beside it",
         "Pixels count on the image as it is seen (its EXIF orientation applied). A rectangle that\n"
         "reaches outside an image writes nothing for that image and the exit status is 1.",
         &runCropCommand},
        {"edit",
         {{"FILE", ArgumentKind::File}},
         {},
         "open the image in the editor's window: crop, turn, resize, paint and save",
         "The window's saves go beside the image as _Quaydrop-NAME.EXT, their paths on standard output.\n"
         "The command ends when the window closes.",
         &runEditCommand,
         true},
        {"destinations",
         {{"ACTION", ArgumentKind::Choice, false, kDestinationActions, true},
          {"DIR", ArgumentKind::Folder, false, {}, true},
          {"NAME", ArgumentKind::Text, false, {}, true}},
         {},
         "list or change the move picker's destinations",
         "list (the default): one line per destination, its name, a tab, its path.\n"
         "add DIR: DIR becomes the first destination. remove DIR: it leaves the list (the folder stays).\n"
         "rename DIR NAME: the destination shows as NAME; an empty NAME gives it back the folder's name.\n"
         "quaydrop --destinations opens the same list in a window.",
         &runDestinationsCommand,
         false,
         true},
        {"zip",
         {{"FILE", ArgumentKind::Path, true}},
         {},
         "pack the items into one archive beside the first, as the Zip button does",
         "One item gives NAME.zip beside it, several give QuaydropZip.zip beside the first, whichever\n"
         "folders they come from. Inside a folder, hidden entries are left out. An older archive of that\n"
         "name goes to the trash once the new one is complete. Ctrl+C stops and leaves no archive.",
         &runZipCommand},
        {"new",
         {{"KIND", ArgumentKind::Choice, false, kNewKinds}, {"PATH", ArgumentKind::Path}},
         {{"--name", ValueKind::Text, "N", "the new item's name, without its extension (else a default one)"},
          {"--inside", ValueKind::None, "", "when PATH is a folder, make the item inside it"}},
         "make a new folder or an empty document beside PATH, under a free name",
         "KIND is folder, txt, rtf, docx, xlsx, odt or ods. A taken name gets a number (\"Notes 1.txt\");\n"
         "nothing is ever replaced. The new item's path is printed.",
         &runNewCommand},
        {"gather",
         {{"FILE", ArgumentKind::Path, true}},
         {{"--name", ValueKind::Text, "N", "the name of the new folder"}},
         "put the items into a new folder beside the first one",
         "A folder of that name that exists already is left alone: the new one gets a number. An item that\n"
         "cannot be moved stays where it was (exit status 1). quaydrop undo puts everything back.",
         &runGatherCommand},
        {"rename",
         {{"FILE", ArgumentKind::Path, true}},
         {{"--name", ValueKind::Text, "N", "the new name (else each item keeps its own)"},
          {"--prefix", ValueKind::Text, "P", "put before each name"},
          {"--suffix", ValueKind::Text, "S", "put after each name, before the extension"}},
         "rename a batch: PREFIX + NAME + SUFFIX, extensions kept, into the first item's folder",
         "Names that clash are numbered in the order given (Trip.jpg, Trip 1.jpg, ...); nothing is\n"
         "overwritten. Each new path is printed. quaydrop undo gives the old names back.",
         &runRenameCommand},
        {"trash",
         {{"FILE", ArgumentKind::Path, true}},
         {},
         "move the items to the trash; a removable volume's mount point is ejected instead",
         "Where an item's volume has no trash, it is deleted for good only if you say so on a terminal;\n"
         "otherwise it is left alone and the exit status is 1. quaydrop undo takes the items back out.",
         &runTrashCommand,
         false,
         true},
        {"reveal",
         {{"FILE", ArgumentKind::Path, true}},
         {},
         "show the items in the file manager",
         "Through org.freedesktop.FileManager1; with no file manager on the bus, the first one's folder opens.",
         &runRevealCommand,
         false,
         true},
        {"undo",
         {},
         {},
         "put back what the last rename, gather, move or trash changed",
         "Nothing changes when an old name has been taken since; the item that blocks is named.",
         &runUndoCommand},
        {"mail",
         {{"FILE", ArgumentKind::File, true}},
         {},
         "start a new message of the default mail program with the files attached",
         "Thunderbird, Evolution, Geary, KMail, Claws Mail and Sylpheed take the files on their own command\n"
         "line; any other program through the desktop's mail portal where one runs. Prints the mail\n"
         "program's desktop file. A program that takes no attachments is named, and nothing is sent.",
         &runMailCommand},
        {"share",
         {{"FILE", ArgumentKind::File, true}},
         {{"--list", ValueKind::None, "", "print the targets this machine has for the files: an id, a tab, its name"},
          {"--to", ValueKind::Text, "TARGET", "hand the files to the target with this id"}},
         "list the share targets for files, or share them with one",
         "Targets are the mail program, KDE Connect's paired devices (kdeconnect:ID), Bluetooth and the\n"
         "applications that open the files (open-with:APP); only what is installed and reachable is listed.",
         &runShareCommand},
        {"print",
         {{"FILE", ArgumentKind::File, true}},
         {{"--printer", ValueKind::Text, "NAME", "the printer (a CUPS queue); the default printer when left out"},
          {"--copies", ValueKind::Count, "N", "how many copies, 1 to 999"},
          {"--pages", ValueKind::Pages, "A-B", "only these pages, such as 2, 1-3 or 1-3,7"},
          {"--password", ValueKind::Text, "P", "the password that opens a locked PDF"}},
         "print each document: a PDF as it is, an image fitted to the page, a text laid out",
         "One line per job: the printer and the job's number, a tab, the file. A PDF goes to the printer as\n"
         "the PDF itself; an image is fitted to the printable area and turned to the paper; a text, HTML\n"
         "or Markdown document is laid out as Save as PDF does. A damaged or locked file is not printed.",
         &runPrintCommand},
        {"pdf-board",
         {{"FILE", ArgumentKind::File, true, {}, true}},
         {},
         "open the page board with the images, to order, turn and export them as PDF",
         "The board is a window: it needs a display. Files that are no readable page image are left out.",
         &runPdfBoardCommand},
        {"wallpaper",
         {{"FILE", ArgumentKind::File, false, {}, true}},
         {{"--previous", ValueKind::None, "", "go back to the wallpaper before the present one"}},
         "make FILE the desktop's wallpaper, as the Wallpaper button does",
         "The picture is copied into Quaydrop's wallpaper folder first and the copy is set, on the desktop\n"
         "XDG_CURRENT_DESKTOP names (GNOME, Cinnamon, MATE, KDE Plasma, XFCE, the desktop portal, or feh).\n"
         "The two wallpapers before it are kept; --previous sets the one before again. The path set is\n"
         "printed on standard output.",
         &runWallpaperCommand},
        {"panel",
         {{"FILE", ArgumentKind::Path, true}},
         {},
         "open the drop window at the pointer with the panel for the files, as if they were dropped",
         "The running Quaydrop of this desktop session shows it; when none runs, one is started. The\n"
         "file managers' \"Open in Quaydrop\" entries call this. A file that is not there is an error.",
         &runPanelCommand},
        {"toggle",
         {},
         {},
         "open the drop window at the pointer, or close it when it is open",
         "What the hot key does, for desktops where Quaydrop cannot hold a key itself (Wayland): bind\n"
         "a keyboard shortcut of the desktop to \"quaydrop toggle\".",
         &runToggleCommand},
        {"integrate",
         {{"FILEMANAGER", ArgumentKind::Choice, false, {QStringLiteral("nautilus"), QStringLiteral("thunar")}}},
         {{"--remove", ValueKind::None, "", "take the entry out again"}},
         "add \"Open in Quaydrop\" to your file manager's menu for selected files",
         "nautilus: a script in ~/.local/share/nautilus/scripts. thunar: a custom action in\n"
         "~/.config/Thunar/uca.xml, the other actions left as they are, byte for byte. Dolphin and Nemo\n"
         "get their entry from the installed package.",
         &runIntegrateCommand},
    };
    return table;
}

const Command *find(const QString &name)
{
    for (const Command &c : commands())
        if (name == QLatin1String(c.name))
            return &c;
    return nullptr;
}

const std::vector<Option> &commonOptions()
{
    static const std::vector<Option> options{
        {"--help", ValueKind::None, "", "show the commands; after a command, its own help", "-h"},
        {"--version", ValueKind::None, "", "print the version"},
    };
    return options;
}

} // namespace Cli
