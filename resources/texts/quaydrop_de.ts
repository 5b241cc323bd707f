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
</context>
</TS>
