<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>MainWindow</name>
    <message>
        <source>MainWindow</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Restore State</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save State</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>About</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>C-E Switching</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New Project</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Load Project</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Apply VS Style</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save All Project</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File</source>
        <translation>File</translation>
    </message>
    <message>
        <source>View</source>
        <translation>View</translation>
    </message>
    <message>
        <source>window</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>toolBar</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
