<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>CProcessorTreeModel</name>
    <message>
        <source>All processors</source>
        <translation>全部处理器</translation>
    </message>
</context>
<context>
    <name>CTargetSelectArea</name>
    <message>
        <source>Processors</source>
        <translation>处理器</translation>
    </message>
    <message>
        <source>Device set</source>
        <translation>设备组</translation>
    </message>
</context>
</TS>
