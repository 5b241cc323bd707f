<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>Quaydrop</name>
    <message>
        <source>Zero KB</source>
        <translation>Null KB</translation>
    </message>
    <message>
        <source>1 byte</source>
        <translation>1 Byte</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 Byte</translation>
    </message>
    <message>
        <source>Quit Quaydrop</source>
        <translation>Quaydrop beenden</translation>
    </message>
    <message>
        <source>Quaydrop is running</source>
        <translation>Quaydrop läuft</translation>
    </message>
    <message>
        <source>NotEnoughspaceAlrtTitle</source>
        <translation>Nicht genug Speicherplatz</translation>
    </message>
    <message>
        <source>NotEnoughspaceAlrtInfTxt</source>
        <translation>Am Ziel ist nicht genug Platz für diese Objekte frei.</translation>
    </message>
    <message>
        <source>overwriteNotPermited</source>
        <translation>%1 kann nicht auf sich selbst bewegt oder kopiert werden</translation>
    </message>
    <message>
        <source>FilesAlreadyBeingoved</source>
        <translation>Die Objekte liegen bereits in diesem Ordner, oder der Ordner liegt in ihnen.</translation>
    </message>
    <message>
        <source>notPermitted</source>
        <translation>Nicht möglich: %1</translation>
    </message>
    <message>
        <source>FilesAlreadyBeingoved2</source>
        <translation>Diese Objekte werden bereits nach %1 übertragen.</translation>
    </message>
    <message>
        <source>FilesStillbeingCopied</source>
        <translation>Diese Objekte werden noch von einer anderen Übertragung geschrieben. Bitte versuchen Sie es erneut, wenn sie beendet ist.</translation>
    </message>
    <message>
        <source>canNotBeReplaced</source>
        <translation>Ein Ordner kann keinen Ordner ersetzen, der ihn enthält.</translation>
    </message>
    <message>
        <source>FileExistsAlrtTitle</source>
        <translation>Ein Objekt mit diesem Namen ist bereits vorhanden</translation>
    </message>
    <message>
        <source>%@ alreadyExists</source>
        <translation>„%1“ ist am Ziel bereits vorhanden. Ersetzen, überspringen oder beide behalten?</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Ersetzen</translation>
    </message>
    <message>
        <source>Skip</source>
        <translation>Überspringen</translation>
    </message>
    <message>
        <source>KeepBoth</source>
        <translation>Beide behalten</translation>
    </message>
    <message>
        <source>Apply4All</source>
        <translation>Für alle übernehmen</translation>
    </message>
    <message>
        <source>copyingFile2</source>
        <translation>%1 wird nach %2 kopiert</translation>
    </message>
    <message>
        <source>movingFile2</source>
        <translation>%1 wird nach %2 bewegt</translation>
    </message>
    <message>
        <source>revealShowFileBtn</source>
        <translation>Zeigen</translation>
    </message>
</context>
</TS>
