<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- Texts of Qt's own boxes, file dialogs and menus, and of the docking library's title bars; kept by hand.
     Errors are left in English on purpose: they go into logs. -->
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Save All</source>
        <translation>全部保存</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>打开</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>是(&amp;Y)</translation>
    </message>
    <message>
        <source>Yes to &amp;All</source>
        <translation>全部是(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation>否(&amp;N)</translation>
    </message>
    <message>
        <source>N&amp;o to All</source>
        <translation>全部否(&amp;O)</translation>
    </message>
    <message>
        <source>Abort</source>
        <translation>中止</translation>
    </message>
    <message>
        <source>Retry</source>
        <translation>重试</translation>
    </message>
    <message>
        <source>Ignore</source>
        <translation>忽略</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>放弃</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>帮助</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>应用</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>重置</translation>
    </message>
    <message>
        <source>Restore Defaults</source>
        <translation>恢复默认值</translation>
    </message>
</context>
<context>
    <name>QDialogButtonBox</name>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
</context>
<context>
    <name>QMessageBox</name>
    <message>
        <source>Show Details...</source>
        <translation>显示详情...</translation>
    </message>
    <message>
        <source>Hide Details...</source>
        <translation>隐藏详情...</translation>
    </message>
</context>
<context>
    <name>QFileDialog</name>
    <message>
        <source>Look in:</source>
        <translation>查找范围：</translation>
    </message>
    <message>
        <source>File &amp;name:</source>
        <translation>文件名(&amp;N)：</translation>
    </message>
    <message>
        <source>Files of type:</source>
        <translation>文件类型：</translation>
    </message>
    <message>
        <source>Directory:</source>
        <translation>目录：</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>打开(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>保存(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Choose</source>
        <translation>选择(&amp;C)</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>打开</translation>
    </message>
    <message>
        <source>Save As</source>
        <translation>另存为</translation>
    </message>
    <message>
        <source>Find Directory</source>
        <translation>选择目录</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>后退</translation>
    </message>
    <message>
        <source>Go back</source>
        <translation>后退</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>前进</translation>
    </message>
    <message>
        <source>Go forward</source>
        <translation>前进</translation>
    </message>
    <message>
        <source>Parent Directory</source>
        <translation>上级目录</translation>
    </message>
    <message>
        <source>Go to the parent directory</source>
        <translation>转到上级目录</translation>
    </message>
    <message>
        <source>Create New Folder</source>
        <translation>新建文件夹</translation>
    </message>
    <message>
        <source>Create a New Folder</source>
        <translation>新建一个文件夹</translation>
    </message>
    <message>
        <source>New Folder</source>
        <translation>新建文件夹</translation>
    </message>
    <message>
        <source>&amp;New Folder</source>
        <translation>新建文件夹(&amp;N)</translation>
    </message>
    <message>
        <source>List View</source>
        <translation>列表视图</translation>
    </message>
    <message>
        <source>Change to list view mode</source>
        <translation>切换到列表视图</translation>
    </message>
    <message>
        <source>Detail View</source>
        <translation>详细视图</translation>
    </message>
    <message>
        <source>Change to detail view mode</source>
        <translation>切换到详细视图</translation>
    </message>
    <message>
        <source>Sidebar</source>
        <translation>侧边栏</translation>
    </message>
    <message>
        <source>List of places and bookmarks</source>
        <translation>位置和书签列表</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>Directories</source>
        <translation>目录</translation>
    </message>
    <message>
        <source>All Files (*)</source>
        <translation>所有文件 (*)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>所有文件 (*)</translation>
    </message>
    <message>
        <source>Recent Places</source>
        <translation>最近的位置</translation>
    </message>
    <message>
        <source>My Computer</source>
        <translation>计算机</translation>
    </message>
    <message>
        <source>Drive</source>
        <translation>驱动器</translation>
    </message>
    <message>
        <source>File</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>%1 File</source>
        <translation>%1 文件</translation>
    </message>
    <message>
        <source>File Folder</source>
        <translation>文件夹</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>文件夹</translation>
    </message>
    <message>
        <source>Alias</source>
        <translation>替身</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>快捷方式</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>未知</translation>
    </message>
    <message>
        <source>Show </source>
        <translation>显示 </translation>
    </message>
    <message>
        <source>Show &amp;hidden files</source>
        <translation>显示隐藏文件(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;Rename</source>
        <translation>重命名(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>删除(&amp;D)</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>移除</translation>
    </message>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>%1 已存在。
要替换它吗？</translation>
    </message>
    <message>
        <source>%1
Directory not found.
Please verify the correct directory name was given.</source>
        <translation>%1
找不到该目录。
请确认目录名是否正确。</translation>
    </message>
    <message>
        <source>%1
File not found.
Please verify the correct file name was given.</source>
        <translation>%1
找不到该文件。
请确认文件名是否正确。</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is write protected.
Do you want to delete it anyway?</source>
        <translation>“%1”已写保护。
仍要删除它吗？</translation>
    </message>
    <message>
        <source>Are you sure you want to delete &apos;%1&apos;?</source>
        <translation>确定要删除“%1”吗？</translation>
    </message>
    <message>
        <source>Could not delete directory.</source>
        <translation>无法删除目录。</translation>
    </message>
</context>
<context>
    <name>QFileSystemModel</name>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>大小</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>类型</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>种类</translation>
    </message>
    <message>
        <source>Date Modified</source>
        <translation>修改日期</translation>
    </message>
    <message>
        <source>My Computer</source>
        <translation>计算机</translation>
    </message>
    <message>
        <source>Computer</source>
        <translation>计算机</translation>
    </message>
    <message>
        <source>Invalid filename</source>
        <translation>无效的文件名</translation>
    </message>
    <message>
        <source>&lt;b&gt;The name &quot;%1&quot; cannot be used.&lt;/b&gt;&lt;p&gt;Try using another name, with fewer characters or no punctuation marks.</source>
        <translation>&lt;b&gt;不能使用名称“%1”。&lt;/b&gt;&lt;p&gt;请换一个较短或不含标点的名称。</translation>
    </message>
</context>
<context>
    <name>QLineEdit</name>
    <message>
        <source>&amp;Undo</source>
        <translation>撤销(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>重做(&amp;R)</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>剪切(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>复制(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>粘贴(&amp;P)</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>全选</translation>
    </message>
</context>
<context>
    <name>QWidgetTextControl</name>
    <message>
        <source>&amp;Undo</source>
        <translation>撤销(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>重做(&amp;R)</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>剪切(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>复制(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>粘贴(&amp;P)</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>全选</translation>
    </message>
    <message>
        <source>Copy &amp;Link Location</source>
        <translation>复制链接地址(&amp;L)</translation>
    </message>
</context>
<context>
    <name>QAbstractSpinBox</name>
    <message>
        <source>&amp;Select All</source>
        <translation>全选(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Step up</source>
        <translation>增加(&amp;S)</translation>
    </message>
    <message>
        <source>Step &amp;down</source>
        <translation>减少(&amp;D)</translation>
    </message>
</context>
<context>
    <name>QComboBox</name>
    <message>
        <source>Open the combo box selection popup</source>
        <translation>打开下拉列表</translation>
    </message>
</context>
<context>
    <name>QTabBar</name>
    <message>
        <source>Scroll Left</source>
        <translation>向左滚动</translation>
    </message>
    <message>
        <source>Scroll Right</source>
        <translation>向右滚动</translation>
    </message>
</context>
<context>
    <name>CloseButton</name>
    <message>
        <source>Close Tab</source>
        <translation>关闭标签页</translation>
    </message>
</context>
<context>
    <name>QScrollBar</name>
    <message>
        <source>Scroll here</source>
        <translation>滚动到此处</translation>
    </message>
    <message>
        <source>Left edge</source>
        <translation>左边缘</translation>
    </message>
    <message>
        <source>Right edge</source>
        <translation>右边缘</translation>
    </message>
    <message>
        <source>Top</source>
        <translation>顶部</translation>
    </message>
    <message>
        <source>Bottom</source>
        <translation>底部</translation>
    </message>
    <message>
        <source>Page left</source>
        <translation>向左翻页</translation>
    </message>
    <message>
        <source>Page right</source>
        <translation>向右翻页</translation>
    </message>
    <message>
        <source>Page up</source>
        <translation>向上翻页</translation>
    </message>
    <message>
        <source>Page down</source>
        <translation>向下翻页</translation>
    </message>
    <message>
        <source>Scroll left</source>
        <translation>向左滚动</translation>
    </message>
    <message>
        <source>Scroll right</source>
        <translation>向右滚动</translation>
    </message>
    <message>
        <source>Scroll up</source>
        <translation>向上滚动</translation>
    </message>
    <message>
        <source>Scroll down</source>
        <translation>向下滚动</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>List All Tabs</source>
        <translation>列出所有标签页</translation>
    </message>
    <message>
        <source>Detach Group</source>
        <translation>分离标签组</translation>
    </message>
    <message>
        <source>Close Group</source>
        <translation>关闭标签组</translation>
    </message>
    <message>
        <source>Close Active Tab</source>
        <translation>关闭当前标签页</translation>
    </message>
    <message>
        <source>Close Tab</source>
        <translation>关闭标签页</translation>
    </message>
</context>
<context>
    <name>ads::CDockAreaTitleBar</name>
    <message>
        <source>List All Tabs</source>
        <translation>列出所有标签页</translation>
    </message>
    <message>
        <source>Detach Group</source>
        <translation>分离标签组</translation>
    </message>
    <message>
        <source>Close Active Tab</source>
        <translation>关闭当前标签页</translation>
    </message>
    <message>
        <source>Close Group</source>
        <translation>关闭标签组</translation>
    </message>
    <message>
        <source>Close Other Groups</source>
        <translation>关闭其他标签组</translation>
    </message>
</context>
<context>
    <name>ads::CDockWidgetTab</name>
    <message>
        <source>Close Tab</source>
        <translation>关闭标签页</translation>
    </message>
    <message>
        <source>Detach</source>
        <translation>分离</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Close Others</source>
        <translation>关闭其他</translation>
    </message>
</context>
</TS>
