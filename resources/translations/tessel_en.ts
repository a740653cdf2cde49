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
</TS>
