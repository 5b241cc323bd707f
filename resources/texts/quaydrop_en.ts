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
</context>
</TS>
