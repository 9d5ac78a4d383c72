<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>CMainWindow</name>
    <message>
        <source>Project Name</source>
        <translation>项目名称</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>项目</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>消息</translation>
    </message>
    <message>
        <source>Data monitoring</source>
        <translation>数据监控</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>选项</translation>
    </message>
    <message>
        <source>Clear Editor</source>
        <translation>清空</translation>
    </message>
    <message>
        <source>Create Perspective</source>
        <translation>新建视图布局</translation>
    </message>
    <message>
        <source>Save Project</source>
        <translation>保存项目</translation>
    </message>
    <message>
        <source>Close Project</source>
        <translation>关闭项目</translation>
    </message>
    <message>
        <source>Edit Project</source>
        <translation>编辑项目</translation>
    </message>
    <message>
        <source>Add Standard</source>
        <translation>添加Standard</translation>
    </message>
    <message>
        <source>Add Box</source>
        <translation>添加Box</translation>
    </message>
    <message>
        <source>Search Box</source>
        <translation>搜索设备</translation>
    </message>
    <message>
        <source>Edit Box</source>
        <translation>编辑Box</translation>
    </message>
    <message>
        <source>Edit Standard</source>
        <translation>编辑Standard</translation>
    </message>
    <message>
        <source>Edit Service</source>
        <translation>编辑Service</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Delete All</source>
        <translation>删除全部</translation>
    </message>
</context>
<context>
    <name>LogoWindow</name>
    <message>
        <source>About</source>
        <translation>关于</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>MainWindow</source>
        <translation>主窗口</translation>
    </message>
    <message>
        <source>Restore State</source>
        <translation>恢复布局</translation>
    </message>
    <message>
        <source>Save State</source>
        <translation>保存布局</translation>
    </message>
    <message>
        <source>About</source>
        <translation>关于</translation>
    </message>
    <message>
        <source>C-E Switching</source>
        <translation>中英切换</translation>
    </message>
    <message>
        <source>New Project</source>
        <translation>新建项目</translation>
    </message>
    <message>
        <source>Load Project</source>
        <translation>加载项目</translation>
    </message>
    <message>
        <source>Apply VS Style</source>
        <translation>应用VS样式</translation>
    </message>
    <message>
        <source>Save All Project</source>
        <translation>保存全部项目</translation>
    </message>
    <message>
        <source>File</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>View</source>
        <translation>视图</translation>
    </message>
    <message>
        <source>window</source>
        <translation>窗口</translation>
    </message>
    <message>
        <source>toolBar</source>
        <translation>工具栏</translation>
    </message>
</context>
<context>
    <name>ServiceIEC61850EditDialog</name>
    <message>
        <source>None</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Password</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
