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
</context>
</TS>
