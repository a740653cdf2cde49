<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>EntryPane</name>
    <message numerus="yes">
        <source>%n found</source>
        <translation>
            <numerusform>%n found</numerusform>
            <numerusform>%n found</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Failures</name>
    <message numerus="yes">
        <source>%n more items could not be copied.</source>
        <translation>
            <numerusform>%n more item could not be copied.</numerusform>
            <numerusform>%n more items could not be copied.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>SourceReport</name>
    <message numerus="yes">
        <source>%n folder(s) could not be read.</source>
        <translation>
            <numerusform>%n folder could not be read.</numerusform>
            <numerusform>%n folders could not be read.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n of %1 file(s) could not be read.</source>
        <translation>
            <numerusform>%n of %1 files could not be read.</numerusform>
            <numerusform>%n of %1 files could not be read.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) are damaged in part.</source>
        <translation>
            <numerusform>%n file is damaged in part.</numerusform>
            <numerusform>%n files are damaged in part.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) are in an unknown compression in part.</source>
        <translation>
            <numerusform>%n file is in an unknown compression in part.</numerusform>
            <numerusform>%n files are in an unknown compression in part.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The format strings of %n image(s) are missing.</source>
        <translation>
            <numerusform>The format strings of %n image are missing.</numerusform>
            <numerusform>The format strings of %n images are missing.</numerusform>
        </translation>
    </message>
</context>
</TS>
