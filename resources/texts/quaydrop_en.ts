<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>Quaydrop</name>
    <message>
        <source>Zero KB</source>
        <translation>Zero KB</translation>
    </message>
    <message>
        <source>1 byte</source>
        <translation>1 byte</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 bytes</translation>
    </message>
    <message>
        <source>Quit Quaydrop</source>
        <translation>Quit Quaydrop</translation>
    </message>
    <message>
        <source>Quaydrop is running</source>
        <translation>Quaydrop is running</translation>
    </message>
    <message>
        <source>NotEnoughspaceAlrtTitle</source>
        <translation>Not enough space</translation>
    </message>
    <message>
        <source>NotEnoughspaceAlrtInfTxt</source>
        <translation>The destination does not have enough free space for these items.</translation>
    </message>
    <message>
        <source>overwriteNotPermited</source>
        <translation>%1 cannot be moved or copied onto itself</translation>
    </message>
    <message>
        <source>FilesAlreadyBeingoved</source>
        <translation>The items are already in this folder, or the folder lies inside them.</translation>
    </message>
    <message>
        <source>notPermitted</source>
        <translation>Not possible: %1</translation>
    </message>
    <message>
        <source>FilesAlreadyBeingoved2</source>
        <translation>These items are already on their way to %1.</translation>
    </message>
    <message>
        <source>FilesStillbeingCopied</source>
        <translation>These items are still being written by another transfer. Try again when it has finished.</translation>
    </message>
    <message>
        <source>canNotBeReplaced</source>
        <translation>A folder cannot replace a folder that contains it.</translation>
    </message>
    <message>
        <source>FileExistsAlrtTitle</source>
        <translation>An item with this name already exists</translation>
    </message>
    <message>
        <source>%@ alreadyExists</source>
        <translation>"%1" already exists in the destination. Replace it, skip it, or keep both?</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Replace</translation>
    </message>
    <message>
        <source>Skip</source>
        <translation>Skip</translation>
    </message>
    <message>
        <source>KeepBoth</source>
        <translation>Keep Both</translation>
    </message>
    <message>
        <source>Apply4All</source>
        <translation>Apply to all</translation>
    </message>
    <message>
        <source>copyingFile2</source>
        <translation>Copying %1 to %2</translation>
    </message>
    <message>
        <source>movingFile2</source>
        <translation>Moving %1 to %2</translation>
    </message>
    <message>
        <source>revealShowFileBtn</source>
        <translation>Show</translation>
    </message>
    <message>
        <source>/path</source>
        <translation>Copy path</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Back</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Characters</source>
        <translation>Characters</translation>
    </message>
    <message>
        <source>Convert</source>
        <translation>Convert</translation>
    </message>
    <message>
        <source>Converting</source>
        <translation>Converting…</translation>
    </message>
    <message>
        <source>Copied!</source>
        <translation>Copied!</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copy instead of move</translation>
    </message>
    <message>
        <source>Copy to clipboard</source>
        <translation>Copy to clipboard</translation>
    </message>
    <message>
        <source>Copying files</source>
        <translation>Copying files</translation>
    </message>
    <message>
        <source>Could not save the file</source>
        <translation>Could not save the file</translation>
    </message>
    <message>
        <source>Create</source>
        <translation>Create</translation>
    </message>
    <message>
        <source>Crop</source>
        <translation>Crop…</translation>
    </message>
    <message>
        <source>Data import canceled...</source>
        <translation>Data import canceled...</translation>
    </message>
    <message>
        <source>Drop here</source>
        <translation>Drop here</translation>
    </message>
    <message>
        <source>Facebook</source>
        <translation>Facebook</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>Height</translation>
    </message>
    <message>
        <source>Into folder</source>
        <translation>In folder</translation>
    </message>
    <message>
        <source>Keep proportions</source>
        <translation>Keep proportions</translation>
    </message>
    <message>
        <source>LaunchAtLogin</source>
        <translation>Start Quaydrop when you log in?</translation>
    </message>
    <message>
        <source>Loading</source>
        <translation>Loading…</translation>
    </message>
    <message>
        <source>Mail</source>
        <translation>Mail</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>Move</translation>
    </message>
    <message>
        <source>Move files to...</source>
        <translation>Move files to…</translation>
    </message>
    <message>
        <source>NO</source>
        <translation>No</translation>
    </message>
    <message>
        <source>New</source>
        <translation>New</translation>
    </message>
    <message>
        <source>Other...</source>
        <translation>Other…</translation>
    </message>
    <message>
        <source>PDF</source>
        <translation>As PDF</translation>
    </message>
    <message>
        <source>Post</source>
        <translation>Post</translation>
    </message>
    <message>
        <source>Print</source>
        <translation>Print</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Rename</translation>
    </message>
    <message>
        <source>Rename files</source>
        <translation>Rename files</translation>
    </message>
    <message>
        <source>Resize</source>
        <translation>Resize</translation>
    </message>
    <message>
        <source>Resizing</source>
        <translation>Resizing…</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>Save as text</source>
        <translation>Save text</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Search</translation>
    </message>
    <message>
        <source>Set</source>
        <translation>Set</translation>
    </message>
    <message>
        <source>Share</source>
        <translation>Share</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Show</translation>
    </message>
    <message>
        <source>To images</source>
        <translation>To images</translation>
    </message>
    <message>
        <source>Trash</source>
        <translation>Trash</translation>
    </message>
    <message>
        <source>Wallpaper</source>
        <translation>Wallpaper</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>Width</translation>
    </message>
    <message>
        <source>Words</source>
        <translation>Words</translation>
    </message>
    <message>
        <source>YES</source>
        <translation>Yes</translation>
    </message>
    <message>
        <source>Zip</source>
        <translation>Zip</translation>
    </message>
    <message>
        <source>loginLaunchInfTXT</source>
        <translation>Quaydrop lives in the tray and is ready whenever you drag something. You can change this later in its options.</translation>
    </message>
    <message>
        <source>exclListTitle</source>
        <translation>Exclusion list</translation>
    </message>
    <message>
        <source>exclListIntro</source>
        <translation>Dragging from these applications never opens the drop window.</translation>
    </message>
    <message>
        <source>exclAddApp</source>
        <translation>Add Application…</translation>
    </message>
    <message>
        <source>exclRemoveBtn</source>
        <translation>Remove from the list</translation>
    </message>
    <message>
        <source>exclListDeleteAlertTitle</source>
        <translation>Remove this application from the exclusion list?</translation>
    </message>
    <message>
        <source>exclHintBtnTxt</source>
        <translation>Drags that start in a listed application are ignored, so its own drag and drop works undisturbed.</translation>
    </message>
    <message>
        <source>exclPickerTitle</source>
        <translation>Choose Applications</translation>
    </message>
    <message>
        <source>exclFilterPlaceholder</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>exclListMenuItem</source>
        <translation>Exclusion List…</translation>
    </message>
    <message>
        <source>quickMoveDropCaption</source>
        <translation>Move</translation>
    </message>
    <message>
        <source>aliasDropCaption</source>
        <translation>Alias</translation>
    </message>
    <message>
        <source>quickMoveDropHint</source>
        <translation>Drop here to move or copy to a destination</translation>
    </message>
    <message>
        <source>aliasDropHint</source>
        <translation>Drop here to make an alias beside each item</translation>
    </message>
    <message>
        <source>Alias created</source>
        <translation>Alias created</translation>
    </message>
    <message>
        <source>at ../%1</source>
        <translation>at ../%1</translation>
    </message>
    <message>
        <source>Save To</source>
        <translation>Save To</translation>
    </message>
    <message>
        <source>imgSaveDestHelp</source>
        <translation>If left in 'Save To' state, images will be saved to their parent folder</translation>
    </message>
    <message>
        <source>Compression</source>
        <translation>Compression</translation>
    </message>
    <message>
        <source>Merge into one PDF</source>
        <translation>Merge into one PDF</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>Resolution</translation>
    </message>
    <message>
        <source>pdfDpiHint</source>
        <translation>30 to 1000 dots per inch. Each page becomes an image in a new folder.</translation>
    </message>
    <message>
        <source>lockedPdfTitle</source>
        <translation>This PDF is locked</translation>
    </message>
    <message>
        <source>lockedPdfText</source>
        <translation>Enter the password of %1.</translation>
    </message>
    <message>
        <source>Unlock</source>
        <translation>Unlock</translation>
    </message>
    <message>
        <source>Save result to...</source>
        <translation>Save result to…</translation>
    </message>
    <message>
        <source>savedTostr /%@</source>
        <translation>Saved to /%1</translation>
    </message>
    <message>
        <source>%1 could not be written</source>
        <translation>%1 could not be written; the log says why</translation>
    </message>
    <message>
        <source>nothingWrittenTitle</source>
        <translation>Nothing was written</translation>
    </message>
    <message>
        <source>imgResizeCompleteMsg</source>
        <translation>Images resized</translation>
    </message>
    <message>
        <source>imgConvCompleteMsg</source>
        <translation>Images converted</translation>
    </message>
    <message>
        <source>PDFConvCompleteMsg</source>
        <translation>PDF pages saved as images</translation>
    </message>
    <message>
        <source>pdfUnreadableTitle</source>
        <translation>This PDF cannot be read</translation>
    </message>
    <message>
        <source>savedasPDF</source>
        <translation>Saved as PDF</translation>
    </message>
    <message>
        <source>to ../%@/%@</source>
        <translation>to ../%1/%2</translation>
    </message>
    <message>
        <source>showOptionsMenuItem</source>
        <translation>Options…</translation>
    </message>
    <message>
        <source>hotKeyTaken</source>
        <translation>%1 is taken by another program; record another key.</translation>
    </message>
    <message>
        <source>summonTitle</source>
        <translation>Open the drop window</translation>
    </message>
    <message>
        <source>onClickCheckBox</source>
        <translation>When a drag starts</translation>
    </message>
    <message>
        <source>onHotkeyCheckBox</source>
        <translation>With the key</translation>
    </message>
    <message>
        <source>waylandNote</source>
        <translation>On this Wayland session drags are seen only from X11 windows; the key works everywhere.</translation>
    </message>
    <message>
        <source>waylandNoteBindCommand</source>
        <translation>On this Wayland session drags are seen only from X11 windows. For the key, give the command “quaydrop toggle” a keyboard shortcut in your desktop’s settings.</translation>
    </message>
    <message>
        <source>launchAtLoginSwitch</source>
        <translation>Start at login</translation>
    </message>
    <message>
        <source>notifySwitch</source>
        <translation>Notify when done</translation>
    </message>
    <message>
        <source>timeSavedTitle</source>
        <translation>Time saved</translation>
    </message>
    <message>
        <source>thisWeek</source>
        <translation>This week</translation>
    </message>
    <message>
        <source>inTotal</source>
        <translation>In total</translation>
    </message>
    <message>
        <source>howCalculated</source>
        <translation>How is this calculated?</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Language</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Options</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Quit</translation>
    </message>
    <message>
        <source>favDestMenuItem</source>
        <translation>Destinations…</translation>
    </message>
    <message>
        <source>helpIconsMenuItem</source>
        <translation>What the buttons mean</translation>
    </message>
    <message>
        <source>supportMenuItem</source>
        <translation>Contact support…</translation>
    </message>
    <message>
        <source>tellFriendMenuItem</source>
        <translation>Tell a friend…</translation>
    </message>
    <message>
        <source>hideIconMenuItem</source>
        <translation>Hide the tray icon…</translation>
    </message>
    <message>
        <source>aboutMenuItem</source>
        <translation>About Quaydrop</translation>
    </message>
    <message>
        <source>shareOnX</source>
        <translation>Post on X</translation>
    </message>
    <message>
        <source>shareOnFacebook</source>
        <translation>Post on Facebook</translation>
    </message>
    <message>
        <source>SharingfeatureAlrtTitle</source>
        <translation>Not quite yet</translation>
    </message>
    <message>
        <source>SharingfeatureAlrtInf</source>
        <translation>Time saved can be shared once it reaches 20 minutes.</translation>
    </message>
    <message>
        <source>thisweekSavedTime</source>
        <translation>Quaydrop saved me %1 this week.</translation>
    </message>
    <message>
        <source>thisweekSavedTimeFB</source>
        <translation>This week Quaydrop saved me %1 of dragging, renaming and converting.</translation>
    </message>
    <message>
        <source>totalTimeSaved</source>
        <translation>Quaydrop has saved me %1 so far.</translation>
    </message>
    <message>
        <source>totalTimeSavedFB</source>
        <translation>So far Quaydrop has saved me %1 of dragging, renaming and converting.</translation>
    </message>
    <message>
        <source>tellFriendSubject</source>
        <translation>Quaydrop: drag and drop that does more</translation>
    </message>
    <message>
        <source>tellFriendBody</source>
        <translation>I use Quaydrop: drag anything and a small window offers what fits, from moving files to resizing images. Have a look: %1</translation>
    </message>
    <message>
        <source>IMPORTANT</source>
        <translation>Hide the tray icon?</translation>
    </message>
    <message>
        <source>makeQDMenuBarIconVisibleAlertText</source>
        <translation>Quaydrop keeps running without it. To bring the icon back, start Quaydrop again from the applications menu, or type quaydrop in a terminal.</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>Hide</translation>
    </message>
    <message>
        <source>helpIconsTitle</source>
        <translation>What the panels' buttons do</translation>
    </message>
    <message>
        <source>helpTimeTitle</source>
        <translation>How the time saved is counted</translation>
    </message>
    <message>
        <source>helpTimeText</source>
        <translation>Each action adds the time it would take by hand, when you press its button. These are the main ones:</translation>
    </message>
    <message>
        <source>creditMove</source>
        <translation>Moving or copying to a destination</translation>
    </message>
    <message>
        <source>creditResize</source>
        <translation>Resizing images</translation>
    </message>
    <message>
        <source>creditConvert</source>
        <translation>Converting an image</translation>
    </message>
    <message>
        <source>creditPdfPage</source>
        <translation>A page of a PDF as an image</translation>
    </message>
    <message>
        <source>creditSaveAsPdf</source>
        <translation>A text document as PDF</translation>
    </message>
    <message>
        <source>creditCopyPath</source>
        <translation>Copying a path</translation>
    </message>
    <message>
        <source>creditMail</source>
        <translation>Mailing a file</translation>
    </message>
    <message>
        <source>creditAlias</source>
        <translation>Making aliases</translation>
    </message>
    <message>
        <source>creditSize</source>
        <translation>Showing a size</translation>
    </message>
    <message>
        <source>creditZip</source>
        <translation>Zipping</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>introWindowTitle</source>
        <translation>Welcome to Quaydrop</translation>
    </message>
    <message>
        <source>dontShowIntroAgain</source>
        <translation>Don't show this again</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Next</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Done</translation>
    </message>
    <message>
        <source>viewIntroBtn</source>
        <translation>More on the web</translation>
    </message>
    <message>
        <source>slide1Title</source>
        <translation>Drag anything</translation>
    </message>
    <message>
        <source>slide1Text</source>
        <translation>Start dragging files, text or a picture in any program. Quaydrop's small drop window appears next to the pointer.</translation>
    </message>
    <message>
        <source>slide2Title</source>
        <translation>Drop it on the window</translation>
    </message>
    <message>
        <source>slide2Text</source>
        <translation>Let go over the window, and a panel of actions for what you dropped opens.</translation>
    </message>
    <message>
        <source>slide3Title</source>
        <translation>Pick an action</translation>
    </message>
    <message>
        <source>slide3Text</source>
        <translation>Move or copy to a remembered place, resize or convert images, cut a PDF into pages, zip, and more. Each one adds to the time you saved.</translation>
    </message>
    <message>
        <source>slide4Title</source>
        <translation>Two shortcuts below</translation>
    </message>
    <message>
        <source>slide4Text</source>
        <translation>Drop on Move to pick a destination at once, or on Alias to put links beside the files. The tray icon holds the options, such as opening the window with Ctrl+Alt+F instead.</translation>
    </message>
    <message>
        <source>sizeUnreadableTitle</source>
        <translation>The size of this image cannot be read</translation>
    </message>
    <message>
        <source>wrongPdfPassword</source>
        <translation>This password does not open the PDF. Try again.</translation>
    </message>
    <message>
        <source>destFolderDoesntExistMsg</source>
        <translation>This destination folder no longer exists. Remove it from the list?</translation>
    </message>
    <message>
        <source>destFolderDoesntExistTitle</source>
        <translation>It may have been deleted or renamed, or it lies on a volume that is not mounted.</translation>
    </message>
    <message>
        <source>removeUserDestAlrtMsg</source>
        <translation>Remove this destination from the list? The folder itself stays.</translation>
    </message>
    <message>
        <source>chooseUserDest</source>
        <translation>Choose a folder to add as a destination</translation>
    </message>
    <message>
        <source>- Empty -</source>
        <translation>- Empty -</translation>
    </message>
    <message>
        <source>noSubfoldersMsg</source>
        <translation>No subfolders</translation>
    </message>
    <message>
        <source>addSubfolderToDest</source>
        <translation>Add to Destinations</translation>
    </message>
    <message>
        <source>destWriteFailedMsg</source>
        <translation>The list of destinations could not be saved; it stays as it was.</translation>
    </message>
    <message>
        <source>destAlreadyThereMsg</source>
        <translation>This folder is already a destination.</translation>
    </message>
    <message>
        <source>recentDestTip</source>
        <translation>Recent destinations</translation>
    </message>
    <message>
        <source>editDestTip</source>
        <translation>Edit destinations</translation>
    </message>
    <message>
        <source>doneEditingDestTip</source>
        <translation>Done editing</translation>
    </message>
    <message>
        <source>addDestTip</source>
        <translation>Add a folder…</translation>
    </message>
    <message>
        <source>manageDestTitle</source>
        <translation>Destinations</translation>
    </message>
    <message>
        <source>manageDestIntro</source>
        <translation>Where Move sends files. Click a name to rename it, drag a row to change the order, or open a folder with its arrow to add one of its subfolders.</translation>
    </message>
    <message>
        <source>addDestBtn</source>
        <translation>Add Folder…</translation>
    </message>
    <message>
        <source>Zipping</source>
        <translation>Zipping…</translation>
    </message>
    <message>
        <source>...Initializing...</source>
        <translation>...Initializing...</translation>
    </message>
    <message>
        <source>zipping</source>
        <translation>Zipping</translation>
    </message>
    <message>
        <source>Success</source>
        <translation>Success</translation>
    </message>
    <message>
        <source>Canceled</source>
        <translation>Canceled</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 of %2</translation>
    </message>
    <message>
        <source>zipTaskComplete</source>
        <translation>Archive created</translation>
    </message>
    <message>
        <source>zipFailedTitle</source>
        <translation>The archive could not be written</translation>
    </message>
    <message>
        <source>quickMoveDropHoverCaption</source>
        <translation>Move/Copy</translation>
    </message>
    <message>
        <source>aliasDropHoverCaption</source>
        <translation>Make alias</translation>
    </message>
    <message>
        <source>slide4TextNoTray</source>
        <translation>Drop on Move to pick a destination at once, or on Alias to put links beside the files. This desktop shows no tray icon: Quaydrop runs in the background, and starting it again (from the applications menu, or quaydrop in a terminal) opens its options.</translation>
    </message>
    <message>
        <source>loginLaunchInfTXTNoTray</source>
        <translation>Quaydrop runs in the background and is ready whenever you drag something. Starting it again opens its options, where you can change this later.</translation>
    </message>
    <message>
        <source>openFileBtn</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Undo</translation>
    </message>
    <message>
        <source>sameAsDraggedName</source>
        <translation>Same name as dropped</translation>
    </message>
    <message>
        <source>insideFolderCheckBox</source>
        <translation>Inside the folder</translation>
    </message>
    <message>
        <source>newFolderBtn</source>
        <translation>Folder</translation>
    </message>
    <message>
        <source>newTextBtn</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>newRtfBtn</source>
        <translation>Rich text</translation>
    </message>
    <message>
        <source>newWordBtn</source>
        <translation>Word</translation>
    </message>
    <message>
        <source>newExcelBtn</source>
        <translation>Excel</translation>
    </message>
    <message>
        <source>newOdtBtn</source>
        <translation>Writer</translation>
    </message>
    <message>
        <source>newOdsBtn</source>
        <translation>Calc</translation>
    </message>
    <message>
        <source>newFolderTip</source>
        <translation>A new folder</translation>
    </message>
    <message>
        <source>newTextTip</source>
        <translation>An empty text file (.txt)</translation>
    </message>
    <message>
        <source>newRtfTip</source>
        <translation>An empty rich text document (.rtf)</translation>
    </message>
    <message>
        <source>newWordTip</source>
        <translation>An empty Word document (.docx)</translation>
    </message>
    <message>
        <source>newExcelTip</source>
        <translation>An empty Excel workbook (.xlsx)</translation>
    </message>
    <message>
        <source>newOdtTip</source>
        <translation>An empty OpenDocument text (.odt)</translation>
    </message>
    <message>
        <source>newOdsTip</source>
        <translation>An empty OpenDocument spreadsheet (.ods)</translation>
    </message>
    <message>
        <source>fileCreateNameHintText</source>
        <translation>The name of the new item, without an extension. Left empty, a default name is used; a name that is taken gets a number.</translation>
    </message>
    <message>
        <source>%@ created</source>
        <translation>%1 created</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>newItemFailedTitle</source>
        <translation>The new item could not be created</translation>
    </message>
    <message>
        <source>folderNameLbl</source>
        <translation>Put the items into a new folder named:</translation>
    </message>
    <message>
        <source>filesMoveMsgTitle</source>
        <translation>Files moved into %1</translation>
    </message>
    <message>
        <source>%1 stayed where they were</source>
        <translation>%1 stayed where they were</translation>
    </message>
    <message>
        <source>gatherFailedTitle</source>
        <translation>Nothing could be put into the new folder</translation>
    </message>
    <message>
        <source>renameNamePlaceholder</source>
        <translation>New name</translation>
    </message>
    <message>
        <source>renamePrefixPlaceholder</source>
        <translation>Prefix</translation>
    </message>
    <message>
        <source>renameSuffixPlaceholder</source>
        <translation>Suffix</translation>
    </message>
    <message>
        <source>No rename data entered.

 Please make sure at least one of the textfields above is not empty. To go back, just click on the window's background.</source>
        <translation>No rename data entered.

 Please make sure at least one of the textfields above is not empty. To go back, just click on the window's background.</translation>
    </message>
    <message>
        <source>Renaming files</source>
        <translation>Renaming files</translation>
    </message>
    <message>
        <source>File rename complete!</source>
        <translation>File rename complete!</translation>
    </message>
    <message>
        <source>renameFailedTitle</source>
        <translation>No file could be renamed</translation>
    </message>
    <message>
        <source>noTrashTitle</source>
        <translation>This item cannot go to the trash</translation>
    </message>
    <message>
        <source>noTrashText</source>
        <translation>%1 lies on a volume without a trash. Delete it for good? This cannot be undone.</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>deleteFailedTitle</source>
        <translation>The item could not be deleted</translation>
    </message>
    <message>
        <source>Moving to the trash</source>
        <translation>Moving to the trash</translation>
    </message>
    <message>
        <source>Deleting</source>
        <translation>Deleting</translation>
    </message>
    <message>
        <source>trashDoneTitle</source>
        <translation>Moved to the trash</translation>
    </message>
    <message>
        <source>trashFailedTitle</source>
        <translation>Nothing could be moved to the trash</translation>
    </message>
    <message>
        <source>%1 items</source>
        <translation>%1 items</translation>
    </message>
    <message>
        <source>undoBlockedTitle</source>
        <translation>This cannot be undone</translation>
    </message>
    <message>
        <source>undoDoneTitle</source>
        <translation>Put back where it was</translation>
    </message>
    <message>
        <source>editorPaint</source>
        <translation>Paint</translation>
    </message>
    <message>
        <source>editorModeTip</source>
        <translation>Crop or paint on the picture</translation>
    </message>
    <message>
        <source>editorWidthShort</source>
        <translation>W</translation>
    </message>
    <message>
        <source>editorHeightShort</source>
        <translation>H</translation>
    </message>
    <message>
        <source>editorFullSizeTip</source>
        <translation>Frame the whole picture</translation>
    </message>
    <message>
        <source>editorAlignCentre</source>
        <translation>Frame to the centre</translation>
    </message>
    <message>
        <source>editorAlignBottomLeft</source>
        <translation>Frame to the bottom left</translation>
    </message>
    <message>
        <source>editorAlignBottomRight</source>
        <translation>Frame to the bottom right</translation>
    </message>
    <message>
        <source>editorAlignTopLeft</source>
        <translation>Frame to the top left</translation>
    </message>
    <message>
        <source>editorAlignTopRight</source>
        <translation>Frame to the top right</translation>
    </message>
    <message>
        <source>editorRotateLeftTip</source>
        <translation>Turn left (Ctrl+Left)</translation>
    </message>
    <message>
        <source>editorRotateRightTip</source>
        <translation>Turn right (Ctrl+Right)</translation>
    </message>
    <message>
        <source>editorResizeTip</source>
        <translation>Change the picture's size (Ctrl+R)</translation>
    </message>
    <message>
        <source>editorRevertTip</source>
        <translation>Back to the picture as it is on disk (Ctrl+Z)</translation>
    </message>
    <message>
        <source>editorSaveTip</source>
        <translation>Save a copy beside the picture (Ctrl+S); Return crops to the frame</translation>
    </message>
    <message>
        <source>editorBrush</source>
        <translation>Brush</translation>
    </message>
    <message>
        <source>editorEraser</source>
        <translation>Eraser</translation>
    </message>
    <message>
        <source>editorColour</source>
        <translation>Colour</translation>
    </message>
    <message>
        <source>editorBrushSize</source>
        <translation>Size</translation>
    </message>
    <message>
        <source>editorUndo</source>
        <translation>Undo the last stroke</translation>
    </message>
    <message>
        <source>editorRedo</source>
        <translation>Redo the stroke</translation>
    </message>
    <message>
        <source>editorCloseAfterSave</source>
        <translation>Close after saving</translation>
    </message>
    <message>
        <source>editorOriginalSize</source>
        <translation>Original: %1 px</translation>
    </message>
    <message>
        <source>editorOpenFailedTitle</source>
        <translation>This picture cannot be edited</translation>
    </message>
    <message>
        <source>editorSaveFailedTitle</source>
        <translation>The picture could not be saved</translation>
    </message>
    <message>
        <source>editorSaveFailedText</source>
        <translation>%1

Your changes are still in the editor.</translation>
    </message>
    <message>
        <source>editorSaveElsewhere</source>
        <translation>Save Elsewhere…</translation>
    </message>
    <message>
        <source>editorDiscard</source>
        <translation>Don't Save</translation>
    </message>
    <message>
        <source>editorUnsavedTitle</source>
        <translation>Save the changes to %1?</translation>
    </message>
    <message>
        <source>editorUnsavedOpenText</source>
        <translation>%1 is waiting to be edited. Changes that are not saved are lost.</translation>
    </message>
    <message>
        <source>editorUnsavedCloseText</source>
        <translation>Changes that are not saved are lost when the editor closes.</translation>
    </message>
    <message>
        <source>editorResizeFailedTitle</source>
        <translation>The picture could not be resized</translation>
    </message>
    <message>
        <source>editorResizeFailedText</source>
        <translation>%1 × %2 pixels is not a size this picture can take.</translation>
    </message>
    <message>
        <source>imgSaved</source>
        <translation>Picture saved</translation>
    </message>
    <message>
        <source>origImgNotFoundTitle</source>
        <translation>The original picture is gone</translation>
    </message>
    <message>
        <source>failedToGetOrigImg</source>
        <translation>The file the picture was opened from no longer exists, so there is nothing to go back to. Your changes are still here and can be saved.</translation>
    </message>
    <message>
        <source>accessDeniedByuserTitle</source>
        <translation>Access was refused</translation>
    </message>
    <message>
        <source>accessDeniedByuserMsg</source>
        <translation>The picture could not be handed to the service because access to it was refused.</translation>
    </message>
    <message>
        <source>editorCrop</source>
        <translation>Crop</translation>
    </message>
    <message>
        <source>MailAppNOTDefault</source>
        <translation>Your mail program can't take attachments from Quaydrop</translation>
    </message>
    <message>
        <source>MailAppNOTDefaultText</source>
        <translation>%1 is your default mail program. Quaydrop hands files to Thunderbird, Evolution, KMail, Geary, Claws Mail and Sylpheed, or to the desktop's mail portal. Open %1 and attach the files there, or choose one of these as your default mail program.</translation>
    </message>
    <message>
        <source>LaunchMailApp</source>
        <translation>Open %1</translation>
    </message>
    <message>
        <source>NoMailApp</source>
        <translation>No mail program is set up</translation>
    </message>
    <message>
        <source>NoMailAppText</source>
        <translation>No program on this computer opens mail links (mailto:). Install a mail program such as Thunderbird or Evolution, or choose one as the default in your desktop's settings.</translation>
    </message>
    <message>
        <source>MailNotStarted</source>
        <translation>The mail program did not start</translation>
    </message>
    <message>
        <source>MailTextTooLong</source>
        <translation>The text is too long for a new mail</translation>
    </message>
    <message>
        <source>MailTextTooLongText</source>
        <translation>A mail program can be handed about 100,000 characters at once. Save the text as a file and attach it instead.</translation>
    </message>
    <message>
        <source>printDialogTitle</source>
        <translation>Print</translation>
    </message>
    <message>
        <source>printFailedTitle</source>
        <translation>Nothing was printed</translation>
    </message>
    <message>
        <source>shareViaMail</source>
        <translation>Mail with %1</translation>
    </message>
    <message>
        <source>shareKdeConnect</source>
        <translation>%1 (KDE Connect)</translation>
    </message>
    <message>
        <source>shareBluetooth</source>
        <translation>Bluetooth…</translation>
    </message>
    <message>
        <source>shareOpenWith</source>
        <translation>Open with %1</translation>
    </message>
    <message>
        <source>shareSaveAs</source>
        <translation>Save as…</translation>
    </message>
    <message>
        <source>shareSaveText</source>
        <translation>Save as Text File…</translation>
    </message>
    <message>
        <source>shareCopyLinks</source>
        <translation>Copy as file links</translation>
    </message>
    <message>
        <source>sharePostOnX</source>
        <translation>Post on X</translation>
    </message>
    <message>
        <source>sharePostOnFacebook</source>
        <translation>Share on Facebook</translation>
    </message>
    <message>
        <source>shareFailedTitle</source>
        <translation>Could not share</translation>
    </message>
    <message>
        <source>noFileSearch</source>
        <translation>No file manager on this computer can search: install Catfish, or use Dolphin or Files (Nautilus) as the default file manager.</translation>
    </message>
    <message>
        <source>Textsaved</source>
        <translation>Text saved</translation>
    </message>
    <message>
        <source>facebookTextCopied</source>
        <translation>The text is on the clipboard</translation>
    </message>
    <message>
        <source>facebookTextCopiedText</source>
        <translation>Facebook takes links only. Paste the text into your post.</translation>
    </message>
    <message>
        <source>earlierWallpapersLbl</source>
        <translation>Earlier wallpapers:</translation>
    </message>
    <message>
        <source>setAsWallpaperBtn</source>
        <translation>Set</translation>
    </message>
    <message>
        <source>useOldWPBtn</source>
        <translation>Use</translation>
    </message>
    <message>
        <source>shareOldWPBtn</source>
        <translation>Share</translation>
    </message>
    <message>
        <source>wallpaperNotSetTitle</source>
        <translation>The wallpaper was not changed</translation>
    </message>
    <message>
        <source>noWallpaperServiceMsg</source>
        <translation>Quaydrop cannot reach a desktop to set the wallpaper on.</translation>
    </message>
    <message>
        <source>heresdesktopPic</source>
        <translation>Here is my desktop picture.</translation>
    </message>
    <message>
        <source>PDFPreviewTitle</source>
        <translation>PDF Page Board</translation>
    </message>
    <message>
        <source>rotateLeftBtn</source>
        <translation>Rotate Left</translation>
    </message>
    <message>
        <source>rotateRightBtn</source>
        <translation>Rotate Right</translation>
    </message>
    <message>
        <source>flipHorizontalBtn</source>
        <translation>Flip Horizontally</translation>
    </message>
    <message>
        <source>flipVerticalBtn</source>
        <translation>Flip Vertically</translation>
    </message>
    <message>
        <source>exportPDFBtn</source>
        <translation>Export PDF…</translation>
    </message>
    <message>
        <source>exportingPagesLbl</source>
        <translation>Exporting page %1 of %2…</translation>
    </message>
    <message>
        <source>pagesLeftOutTitle</source>
        <translation>%1 pages were left out</translation>
    </message>
    <message>
        <source>plsSelectImagePDFPreviewHint</source>
        <translation>Select one or more pictures first.</translation>
    </message>
    <message>
        <source>PDFPreviewHint</source>
        <translation>Drag pictures in to add them, drag them around to change the order, turn or flip the selected ones with the buttons, and press Delete to remove them. The files themselves stay as they are.</translation>
    </message>
    <message>
        <source>pageBoardBtn</source>
        <translation>Pages…</translation>
    </message>
</context>
</TS>
