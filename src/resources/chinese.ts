<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>BoxEditDialog</name>
    <message>
        <source>Connect</source>
        <translation>连接</translation>
    </message>
    <message>
        <source>Disconnect</source>
        <translation>断开连接</translation>
    </message>
    <message>
        <source>Select Host Address</source>
        <translation>选择本机地址</translation>
    </message>
    <message>
        <source>Update project</source>
        <translation>更新项目</translation>
    </message>
    <message>
        <source>Update program</source>
        <translation>更新程序</translation>
    </message>
    <message>
        <source>Reboot Device</source>
        <translation>重启设备</translation>
    </message>
    <message>
        <source>Connection status: connecting..</source>
        <translation>连接状态：正在连接..</translation>
    </message>
    <message>
        <source>Program version: </source>
        <translation>程序版本：</translation>
    </message>
    <message>
        <source>Progress:</source>
        <translation>进度：</translation>
    </message>
    <message>
        <source>Edit Box</source>
        <translation>编辑Box</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Commonly</source>
        <translation>常用</translation>
    </message>
    <message>
        <source>Read</source>
        <translation>读取</translation>
    </message>
    <message>
        <source>Write</source>
        <translation>写入</translation>
    </message>
    <message>
        <source>The box &apos;%1&apos; is saved successfully.</source>
        <translation>Box“%1”保存成功。</translation>
    </message>
    <message>
        <source>Connection status: Not connected</source>
        <translation>连接状态：未连接</translation>
    </message>
    <message>
        <source>Selected address: 0.0.0.0 (No binding)</source>
        <translation>已选择地址：0.0.0.0（不绑定）</translation>
    </message>
    <message>
        <source>Selected host address: %1</source>
        <translation>已选择本机地址：%1</translation>
    </message>
    <message>
        <source>Binding Failed</source>
        <translation>绑定失败</translation>
    </message>
    <message>
        <source>Enable</source>
        <translation>Enable</translation>
    </message>
    <message>
        <source>Disabled</source>
        <translation>Disabled</translation>
    </message>
    <message>
        <source>!!!No communication for 30 seconds. Connection may be lost.!!!</source>
        <translation>！！！30 秒内无通信，连接可能已丢失。！！！</translation>
    </message>
    <message>
        <source>LAN Configuration</source>
        <translation>LAN 配置</translation>
    </message>
    <message>
        <source>LAN configuration updated successfully.</source>
        <translation>LAN 配置更新成功。</translation>
    </message>
    <message>
        <source>Wan Configuration</source>
        <translation>WAN 配置</translation>
    </message>
    <message>
        <source>Wan configuration updated successfully.</source>
        <translation>WAN 配置更新成功。</translation>
    </message>
    <message>
        <source>Wifi Configuration</source>
        <translation>WIFI 配置</translation>
    </message>
    <message>
        <source>Wifi configuration updated successfully.</source>
        <translation>WIFI 配置更新成功。</translation>
    </message>
    <message>
        <source>Lte Configuration</source>
        <translation>LTE 配置</translation>
    </message>
    <message>
        <source>Lte configuration updated successfully.</source>
        <translation>LTE 配置更新成功。</translation>
    </message>
    <message>
        <source>NTP Configuration</source>
        <translation>NTP 配置</translation>
    </message>
    <message>
        <source>NTP configuration updated successfully.</source>
        <translation>NTP 配置更新成功。</translation>
    </message>
    <message>
        <source>time Configuration</source>
        <translation>时间配置</translation>
    </message>
    <message>
        <source>time configuration updated successfully.</source>
        <translation>时间配置更新成功。</translation>
    </message>
    <message>
        <source>Select Program File</source>
        <translation>选择程序文件</translation>
    </message>
    <message>
        <source>Program Files (*.bin);;All Files (*.*)</source>
        <translation>程序文件 (*.bin);;所有文件 (*.*)</translation>
    </message>
    <message>
        <source>IP:</source>
        <translation>IP：</translation>
    </message>
    <message>
        <source>Mask:</source>
        <translation>子网掩码：</translation>
    </message>
    <message>
        <source>Gateway:</source>
        <translation>网关：</translation>
    </message>
    <message>
        <source>Dns1:</source>
        <translation>DNS1：</translation>
    </message>
    <message>
        <source>Dns2:</source>
        <translation>DNS2：</translation>
    </message>
    <message>
        <source>Dhcp:</source>
        <translation>DHCP：</translation>
    </message>
    <message>
        <source>wifiOnOff:</source>
        <translation>WiFi 开关：</translation>
    </message>
    <message>
        <source>Mode:</source>
        <translation>模式：</translation>
    </message>
    <message>
        <source>SSID:</source>
        <translation>SSID：</translation>
    </message>
    <message>
        <source>Password:</source>
        <translation>密码：</translation>
    </message>
    <message>
        <source>4G:</source>
        <translation>4G：</translation>
    </message>
    <message>
        <source>AT1:</source>
        <translation>AT1：</translation>
    </message>
    <message>
        <source>AT2:</source>
        <translation>AT2：</translation>
    </message>
    <message>
        <source>AT3:</source>
        <translation>AT3：</translation>
    </message>
    <message>
        <source>AT4:</source>
        <translation>AT4：</translation>
    </message>
    <message>
        <source>AT5:</source>
        <translation>AT5：</translation>
    </message>
    <message>
        <source>NTP Server:</source>
        <translation>NTP 服务器：</translation>
    </message>
    <message>
        <source>Local Time:</source>
        <translation>本地时间：</translation>
    </message>
    <message>
        <source>Box Time:</source>
        <translation>Box 时间：</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>名称：</translation>
    </message>
    <message>
        <source>Model:</source>
        <translation>型号：</translation>
    </message>
    <message>
        <source>LAN</source>
        <translation>LAN</translation>
    </message>
    <message>
        <source>WAN</source>
        <translation>WAN</translation>
    </message>
    <message>
        <source>NTP</source>
        <translation>NTP</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>Binding Status: Failed to bind to %1</source>
        <translation>绑定状态：绑定到 %1 失败</translation>
    </message>
    <message>
        <source>Connection Status:Failed to connect to server for program update.</source>
        <translation>连接状态：无法连接到服务器，更新未进行。</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>Failed to open program file.</source>
        <translation>打开程序文件失败。</translation>
    </message>
    <message>
        <source>Connection Status:Not connected to server.</source>
        <translation>连接状态：未连接到服务器。</translation>
    </message>
    <message>
        <source>Failed to open program file for checksum.</source>
        <translation>计算校验和时打开程序文件失败。</translation>
    </message>
    <message>
        <source>Timeout</source>
        <translation>超时</translation>
    </message>
    <message>
        <source>Timeout while waiting for checksum result.</source>
        <translation>等待校验结果超时。</translation>
    </message>
    <message>
        <source>Timeout:Timeout while waiting for checksum result.</source>
        <translation>超时：等待校验结果超时。</translation>
    </message>
    <message>
        <source>Checksum Result:Command type error.</source>
        <translation>校验结果：命令类型错误。</translation>
    </message>
    <message>
        <source>Checksum Result:Verification data return value error.</source>
        <translation>校验结果：校验数据返回值错误。</translation>
    </message>
    <message>
        <source>Checksum Result:Checksum failed.</source>
        <translation>校验结果：校验失败。</translation>
    </message>
    <message>
        <source>Checksum Result:Checksum successful.</source>
        <translation>校验结果：校验成功。</translation>
    </message>
    <message>
        <source>Please select the host address:</source>
        <translation>请选择本机地址：</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>ON</source>
        <translation>开</translation>
    </message>
    <message>
        <source>OFF</source>
        <translation>关</translation>
    </message>
</context>
<context>
    <name>BoxInputDialog</name>
    <message>
        <source>Box Name:</source>
        <translation>Box 名称：</translation>
    </message>
    <message>
        <source>IP Address:</source>
        <translation>IP 地址：</translation>
    </message>
    <message>
        <source>Model:</source>
        <translation>型号：</translation>
    </message>
    <message>
        <source>Add Box</source>
        <translation>添加Box</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>BoxSearchDialog</name>
    <message>
        <source>Search Box</source>
        <translation>搜索设备</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>搜索</translation>
    </message>
    <message>
        <source>No Devices Found</source>
        <translation>未找到设备</translation>
    </message>
    <message>
        <source>No devices were found during the search.</source>
        <translation>搜索期间未找到任何设备。</translation>
    </message>
</context>
<context>
    <name>CImageViewer</name>
    <message>
        <source>&amp;Open...</source>
        <translation>打开(&amp;O)...</translation>
    </message>
    <message>
        <source>Fit on Screen</source>
        <translation>适应窗口</translation>
    </message>
    <message>
        <source>Actual Pixels</source>
        <translation>实际像素</translation>
    </message>
    <message>
        <source>Zoom In (25%)</source>
        <translation>放大 (25%)</translation>
    </message>
    <message>
        <source>Zoom Out (25%)</source>
        <translation>缩小 (25%)</translation>
    </message>
    <message>
        <source>Open Image</source>
        <translation>打开图片</translation>
    </message>
    <message>
        <source>%1 is not an image that can be shown.</source>
        <translation>%1 不是可显示的图片。</translation>
    </message>
</context>
<context>
    <name>CMainWindow</name>
    <message>
        <source>Positive active power rate of 4 electric energy</source>
        <translation>正向有功费率4电能</translation>
    </message>
    <message>
        <source>Positive active power rate of 3 electric energy</source>
        <translation>正向有功费率3电能</translation>
    </message>
    <message>
        <source>Positive active power rate of 2 electric energy</source>
        <translation>正向有功费率2电能</translation>
    </message>
    <message>
        <source>Positive active power rate of 1 electric energy</source>
        <translation>正向有功费率1电能</translation>
    </message>
    <message>
        <source>Combination active power rate 4 electricity</source>
        <translation>组合有功费率4电能</translation>
    </message>
    <message>
        <source>Combination active power rate 3 electricity</source>
        <translation>组合有功费率3电能</translation>
    </message>
    <message>
        <source>Combination active power rate 2 electricity</source>
        <translation>组合有功费率2电能</translation>
    </message>
    <message>
        <source>Combination active power rate 1 electricity</source>
        <translation>组合有功费率1电能</translation>
    </message>
    <message>
        <source>Combined reactive power 2 total electrical energy</source>
        <translation>组合无功2总电能</translation>
    </message>
    <message>
        <source>Combined reactive power 1 total electrical energy</source>
        <translation>组合无功1总电能</translation>
    </message>
    <message>
        <source>A-phase positive active energy</source>
        <translation>A相正向有功电能</translation>
    </message>
    <message>
        <source>B-phase positive active energy</source>
        <translation>B相正向有功电能</translation>
    </message>
    <message>
        <source>C-phase positive active energy</source>
        <translation>C相正向有功电能</translation>
    </message>
    <message>
        <source>Reactive constant of electric meter</source>
        <translation>电表无功常数</translation>
    </message>
    <message>
        <source>Active constant of electric meter</source>
        <translation>电表有功常数</translation>
    </message>
    <message>
        <source>Combined active total electrical energy</source>
        <translation>组合有功总电能</translation>
    </message>
    <message>
        <source>Reverse active total electrical energy</source>
        <translation>反向有功总电能</translation>
    </message>
    <message>
        <source>Total reactive energy in the first quadrant</source>
        <translation>第一象限无功总电能</translation>
    </message>
    <message>
        <source>Total reactive energy in the second quadrant</source>
        <translation>第二象限无功总电能</translation>
    </message>
    <message>
        <source>Total reactive energy in the third quadrant</source>
        <translation>第三象限无功总电能</translation>
    </message>
    <message>
        <source>Total reactive energy in the fourth quadrant</source>
        <translation>第四象限无功总电能</translation>
    </message>
    <message>
        <source>Positive active total electrical energy</source>
        <translation>正向有功总电能</translation>
    </message>
    <message>
        <source>Instantaneous total apparent power</source>
        <translation>瞬时总视在功率</translation>
    </message>
    <message>
        <source>Instantaneous A-phase apparent power</source>
        <translation>瞬时A相视在功率</translation>
    </message>
    <message>
        <source>Instantaneous B-phase apparent power</source>
        <translation>瞬时B相视在功率</translation>
    </message>
    <message>
        <source>Instantaneous C-phase apparent power</source>
        <translation>瞬时C相视在功率</translation>
    </message>
    <message>
        <source>Instantaneous total reactive power</source>
        <translation>瞬时总无功功率</translation>
    </message>
    <message>
        <source>Instantaneous A-phase reactive power</source>
        <translation>瞬时A相无功功率</translation>
    </message>
    <message>
        <source>Instantaneous B-phase reactive power</source>
        <translation>瞬时B相无功功率</translation>
    </message>
    <message>
        <source>Instantaneous C-phase reactive power</source>
        <translation>瞬时C相无功功率</translation>
    </message>
    <message>
        <source>Instantaneous total active power</source>
        <translation>瞬时总有功功率</translation>
    </message>
    <message>
        <source>Instantaneous A-phase active power</source>
        <translation>瞬时A相有功功率</translation>
    </message>
    <message>
        <source>Instantaneous B-phase active power</source>
        <translation>瞬时B相有功功率</translation>
    </message>
    <message>
        <source>Instantaneous C-phase active power</source>
        <translation>瞬时C相有功功率</translation>
    </message>
    <message>
        <source>Total power factor</source>
        <translation>总功率因数</translation>
    </message>
    <message>
        <source>A-phase power factor</source>
        <translation>A相功率因数</translation>
    </message>
    <message>
        <source>B-phase power factor</source>
        <translation>B相功率因数</translation>
    </message>
    <message>
        <source>C-phase power factor</source>
        <translation>C相功率因数</translation>
    </message>
    <message>
        <source>A-phase current</source>
        <translation>A相电流</translation>
    </message>
    <message>
        <source>B-phase current</source>
        <translation>B相电流</translation>
    </message>
    <message>
        <source>C-phase current</source>
        <translation>C相电流</translation>
    </message>
    <message>
        <source>A-phase voltage</source>
        <translation>A相电压</translation>
    </message>
    <message>
        <source>B-phase voltage</source>
        <translation>B相电压</translation>
    </message>
    <message>
        <source>C-phase voltage</source>
        <translation>C相电压</translation>
    </message>
    <message>
        <source>None</source>
        <translation></translation>
    </message>
    <message>
        <source>Password</source>
        <translation></translation>
    </message>
    <message>
        <source>anonymous</source>
        <translation>匿名</translation>
    </message>
    <message>
        <source>Username and password verification</source>
        <translation>用户名、密码验证</translation>
    </message>
    <message>
        <source>Project Name</source>
        <translation>项目名称</translation>
    </message>
    <message>
        <source>Create Perspective</source>
        <translation>创建布局方案</translation>
    </message>
    <message>
        <source>Data monitoring</source>
        <translation>数据监控</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>项目</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>选项</translation>
    </message>
    <message>
        <source>Clear Editor</source>
        <translation>清空消息</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>消息</translation>
    </message>
    <message>
        <source>This is an editor. If you close the editor, it will be deleted. Enter your text here.</source>
        <translation>这是一个编辑器。关闭编辑器后，其内容将被删除。请在此输入文本。</translation>
    </message>
    <message>
        <source>Close Editor</source>
        <translation>关闭编辑器</translation>
    </message>
    <message>
        <source>Editor %1 contains unsaved changes? Would you like to close it?</source>
        <translation>编辑器 %1 包含未保存的更改，是否关闭？</translation>
    </message>
    <message>
        <source>Close Image Viewer</source>
        <translation>关闭图片查看器</translation>
    </message>
    <message>
        <source>%1 contains unsaved changes? Would you like to close it?</source>
        <translation>%1 包含未保存的更改，是否关闭？</translation>
    </message>
    <message>
        <source>Edit Box</source>
        <translation>编辑Box</translation>
    </message>
    <message>
        <source>Edit PLC</source>
        <translation>编辑PLC</translation>
    </message>
    <message>
        <source>Edit Server</source>
        <translation>编辑Server</translation>
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
        <source>Edit Project</source>
        <translation>编辑项目</translation>
    </message>
    <message>
        <source>invalid name</source>
        <translation>名称无效</translation>
    </message>
    <message>
        <source>Name cannot be null</source>
        <translation>名称不能为空</translation>
    </message>
    <message>
        <source>error</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>Unable to find parent directory</source>
        <translation>找不到上级目录</translation>
    </message>
    <message>
        <source>Duplicate name</source>
        <translation>名称重复</translation>
    </message>
    <message>
        <source>The name&quot;%1&quot;already exists, please change the name.</source>
        <translation>名称“%1”已存在，请更换名称。</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Addr</source>
        <translation>地址</translation>
    </message>
    <message>
        <source>DataType</source>
        <translation>数据类型</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>值</translation>
    </message>
    <message>
        <source>Valid</source>
        <translation>有效性</translation>
    </message>
    <message>
        <source>Update Time</source>
        <translation>更新时间</translation>
    </message>
    <message>
        <source>Effective</source>
        <translation>有效</translation>
    </message>
    <message>
        <source>Invalid</source>
        <translation>无效</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>未知</translation>
    </message>
    <message>
        <source>Save Successful</source>
        <translation>保存成功</translation>
    </message>
    <message>
        <source>JSON data saved to file:
%1</source>
        <translation>JSON 数据已保存到文件：
%1</translation>
    </message>
    <message>
        <source>Open JSON File</source>
        <translation>打开 JSON 文件</translation>
    </message>
    <message>
        <source>JSON Files (*.json)</source>
        <translation>JSON 文件 (*.json)</translation>
    </message>
    <message>
        <source>Load Successful</source>
        <translation>加载成功</translation>
    </message>
    <message>
        <source>JSON data loaded from file:
%1</source>
        <translation>已从文件加载 JSON 数据：
%1</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>A project with the same name already exists in the selected directory. Please use a different name.</source>
        <translation>所选目录中已存在同名项目，请使用其他名称。</translation>
    </message>
    <message>
        <source>A project with the same name already exists. Please use a different name.</source>
        <translation>已存在同名项目，请使用其他名称。</translation>
    </message>
    <message>
        <source>The Project &apos;%1&apos; is saved successfully.</source>
        <translation>项目“%1”保存成功。</translation>
    </message>
    <message>
        <source>Save Changes</source>
        <translation>保存更改</translation>
    </message>
    <message>
        <source>Do you want to save changes before deleting the project?</source>
        <translation>关闭项目前是否保存更改？</translation>
    </message>
    <message>
        <source>Do you want to save all projects before closing them?</source>
        <translation>关闭前是否保存全部项目？</translation>
    </message>
    <message>
        <source>Close Project</source>
        <translation>关闭项目</translation>
    </message>
    <message>
        <source>Save Project</source>
        <translation>保存项目</translation>
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
        <source>Delete All</source>
        <translation>删除全部</translation>
    </message>
    <message>
        <source>Editing Standard</source>
        <translation>编辑Standard</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Editing Service</source>
        <translation>编辑Service</translation>
    </message>
    <message>
        <source>Editing Box</source>
        <translation>编辑Box</translation>
    </message>
    <message>
        <source>Box Name cannot be empty.</source>
        <translation>Box 名称不能为空。</translation>
    </message>
    <message>
        <source>A box file with the same name already exists in this folder. Please use a different name.</source>
        <translation>该文件夹中已存在同名的 Box，请使用其他名称。</translation>
    </message>
    <message>
        <source>standard Name cannot be empty.</source>
        <translation>Standard 名称不能为空。</translation>
    </message>
    <message>
        <source>A standard file with the same name already exists in PLC or Standard folder. Please use a different name.</source>
        <translation>PLC 或 Standard 文件夹中已存在同名的 Standard，请使用其他名称。</translation>
    </message>
</context>
<context>
    <name>CStatusDialogClass</name>
    <message>
        <source>Dock Widget Status</source>
        <translation>停靠窗口状态</translation>
    </message>
    <message>
        <source>&amp;Dock Widget:</source>
        <translation>停靠窗口(&amp;D)：</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>closed</source>
        <translation>已关闭</translation>
    </message>
    <message>
        <source>floating</source>
        <translation>浮动</translation>
    </message>
    <message>
        <source>tabbed</source>
        <translation>标签页</translation>
    </message>
    <message>
        <source>is current tab</source>
        <translation>当前标签页</translation>
    </message>
    <message>
        <source>Feature flags</source>
        <translation>特性标志</translation>
    </message>
    <message>
        <source>DockWidgetClosable</source>
        <translation>可关闭</translation>
    </message>
    <message>
        <source>DockWidgetMovable</source>
        <translation>可移动</translation>
    </message>
    <message>
        <source>DockWidgetFloatable</source>
        <translation>可浮动</translation>
    </message>
    <message>
        <source>DockWidgetDeleteOnClose</source>
        <translation>关闭时删除</translation>
    </message>
    <message>
        <source>CustomCloseHandling</source>
        <translation>自定义关闭处理</translation>
    </message>
</context>
<context>
    <name>EditProjectDialog</name>
    <message>
        <source>Name:</source>
        <translation>名称：</translation>
    </message>
    <message>
        <source>Path:</source>
        <translation>路径：</translation>
    </message>
    <message>
        <source>Description:</source>
        <translation>描述：</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
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
        <translation>中英文切换</translation>
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
        <translation>应用 VS 样式</translation>
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
    <name>NewProjectDialog</name>
    <message>
        <source>New Project</source>
        <translation>新建项目</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Browse</source>
        <translation>浏览</translation>
    </message>
    <message>
        <source>Select Directory</source>
        <translation>选择目录</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>名称：</translation>
    </message>
    <message>
        <source>Path:</source>
        <translation>路径：</translation>
    </message>
    <message>
        <source>Description:</source>
        <translation>描述：</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>Name and Path cannot be empty.</source>
        <translation>名称和路径不能为空。</translation>
    </message>
</context>
<context>
    <name>ParameterTable</name>
    <message>
        <source>Only positive integers and floating-point numbers are allowed.</source>
        <translation>只允许输入正整数和浮点数。</translation>
    </message>
    <message>
        <source>Length must be a positive integer.</source>
        <translation>长度必须为正整数。</translation>
    </message>
    <message>
        <source>Length must be a positive integer between 1 and 10.</source>
        <translation>长度必须为 1 到 10 之间的正整数。</translation>
    </message>
    <message>
        <source>Invalid input in row %1: only letters, digits, underscores, dots, colons, and brackets are allowed.</source>
        <translation>第 %1 行输入无效：只允许字母、数字、下划线、点、冒号和方括号。</translation>
    </message>
    <message>
        <source>Invalid input in row %1: only numbers, operators (+, -, *, /) and &apos;X&apos; are allowed.</source>
        <translation>第 %1 行输入无效：只允许数字、运算符（+、-、*、/）和“X”。</translation>
    </message>
    <message>
        <source>Invalid input in row %1: only integers and floating-point numbers are allowed.</source>
        <translation>第 %1 行输入无效：只允许整数和浮点数。</translation>
    </message>
    <message>
        <source>The name cannot contain a comma. Please use a different name.</source>
        <translation>名称不能包含逗号，请使用其他名称。</translation>
    </message>
    <message>
        <source>The address in the CSV row does not match the expected format.</source>
        <translation>CSV 行中的地址格式不正确。</translation>
    </message>
    <message>
        <source>The length of the numbers in the CSV row does not match the expected format.</source>
        <translation>CSV 行中的长度格式不正确。</translation>
    </message>
    <message>
        <source>The magnitude of the change in the CSV row does not match the expected format.</source>
        <translation>CSV 行中的变化幅度格式不正确。</translation>
    </message>
    <message>
        <source>The collection formula in the CSV row does not match the expected format.</source>
        <translation>CSV 行中的采集公式格式不正确。</translation>
    </message>
    <message>
        <source>The write formula in the CSV row does not match the expected format.</source>
        <translation>CSV 行中的写入公式格式不正确。</translation>
    </message>
    <message>
        <source>CSV file has incorrect column count, unable to import</source>
        <translation>CSV 文件列数不正确，无法导入</translation>
    </message>
    <message>
        <source>CSV header does not match expected format.</source>
        <translation>CSV 表头格式不正确。</translation>
    </message>
    <message>
        <source>The multiple-choice content in the CSV row does not match the expected format. Set as default value</source>
        <translation>CSV 行中的选项内容格式不正确，已设为默认值</translation>
    </message>
    <message>
        <source>Timed</source>
        <translation>定时上报</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>变化上报</translation>
    </message>
    <message>
        <source>Change amplitude</source>
        <translation>变化幅度上报</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>地址</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>类型</translation>
    </message>
    <message>
        <source>Length</source>
        <translation>长度</translation>
    </message>
    <message>
        <source>Permissions</source>
        <translation>权限</translation>
    </message>
    <message>
        <source>Reporting Method</source>
        <translation>上报方式</translation>
    </message>
    <message>
        <source>Change Amplitude</source>
        <translation>变化幅度</translation>
    </message>
    <message>
        <source>Collection Formula</source>
        <translation>采集公式</translation>
    </message>
    <message>
        <source>Write Formula</source>
        <translation>写入公式</translation>
    </message>
    <message>
        <source>Deleat</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>The name of the &apos;%1&apos; line already exists. Please use a different name.</source>
        <translation>第“%1”行的名称已存在，请使用其他名称。</translation>
    </message>
    <message>
        <source>Open CSV file</source>
        <translation>打开 CSV 文件</translation>
    </message>
    <message>
        <source>mistake</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>The name of the &apos;%1&apos; line already exists in this tab. Please use a different name.</source>
        <translation>本标签页第“%1”行的名称已存在，请使用其他名称。</translation>
    </message>
    <message>
        <source>Save CSV file</source>
        <translation>保存 CSV 文件</translation>
    </message>
    <message>
        <source>Mistake</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>CSV File (*.csv)</source>
        <translation>CSV 文件 (*.csv)</translation>
    </message>
    <message>
        <source>CSV file (*.csv)</source>
        <translation>CSV 文件 (*.csv)</translation>
    </message>
    <message>
        <source>Unable to open file for reading.</source>
        <translation>无法打开文件进行读取。</translation>
    </message>
    <message>
        <source>error</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>Unable to open file for writing.</source>
        <translation>无法打开文件进行写入。</translation>
    </message>
    <message>
        <source>Delete the current row</source>
        <translation>删除当前行</translation>
    </message>
</context>
<context>
    <name>Protocol</name>
    <message>
        <source>Failed to bind to IP address: %1</source>
        <translation>绑定 IP 地址失败：%1</translation>
    </message>
    <message>
        <source>Connection status: connecting..</source>
        <translation>连接状态：正在连接..</translation>
    </message>
    <message>
        <source>Connection status: Waiting for connection.</source>
        <translation>连接状态：等待连接。</translation>
    </message>
    <message>
        <source>Connection status: Reconnecting...</source>
        <translation>连接状态：正在重新连接...</translation>
    </message>
    <message>
        <source>Connection status: Disconnected</source>
        <translation>连接状态：连接已断开</translation>
    </message>
    <message>
        <source>Connection status: Not connected to server.</source>
        <translation>连接状态：未连接到服务器。</translation>
    </message>
    <message>
        <source>Not connected to server.</source>
        <translation>未连接到服务器。</translation>
    </message>
    <message>
        <source>Connection status: Not connected</source>
        <translation>连接状态：未连接</translation>
    </message>
    <message>
        <source>Connection status: Connected</source>
        <translation>连接状态：已连接</translation>
    </message>
    <message>
        <source>Write LAN Allocation</source>
        <translation>写入 LAN 配置</translation>
    </message>
    <message>
        <source>LAN allocation write successful.</source>
        <translation>LAN 配置写入成功。</translation>
    </message>
    <message>
        <source>LAN allocation write failed. Error code: </source>
        <translation>LAN 配置写入失败，错误码：</translation>
    </message>
    <message>
        <source>Write WAN Allocation</source>
        <translation>写入 WAN 配置</translation>
    </message>
    <message>
        <source>WAN allocation write successful.</source>
        <translation>WAN 配置写入成功。</translation>
    </message>
    <message>
        <source>WAN allocation write failed. Error code: </source>
        <translation>WAN 配置写入失败，错误码：</translation>
    </message>
    <message>
        <source>Write WIFI Allocation</source>
        <translation>写入 WIFI 配置</translation>
    </message>
    <message>
        <source>WIFI allocation write successful.</source>
        <translation>WIFI 配置写入成功。</translation>
    </message>
    <message>
        <source>WIFI allocation write failed. Error code: </source>
        <translation>WIFI 配置写入失败，错误码：</translation>
    </message>
    <message>
        <source>Write LTE Allocation</source>
        <translation>写入 LTE 配置</translation>
    </message>
    <message>
        <source>LTE allocation write successful.</source>
        <translation>LTE 配置写入成功。</translation>
    </message>
    <message>
        <source>LTE allocation write failed. Error code: </source>
        <translation>LTE 配置写入失败，错误码：</translation>
    </message>
    <message>
        <source>Write NTP Allocation</source>
        <translation>写入 NTP 配置</translation>
    </message>
    <message>
        <source>NTP allocation write successful.</source>
        <translation>NTP 配置写入成功。</translation>
    </message>
    <message>
        <source>NTP allocation write failed. Error code: </source>
        <translation>NTP 配置写入失败，错误码：</translation>
    </message>
    <message>
        <source>Write time Allocation</source>
        <translation>写入时间配置</translation>
    </message>
    <message>
        <source>time allocation write successful.</source>
        <translation>时间配置写入成功。</translation>
    </message>
    <message>
        <source>time allocation write failed. Error code: </source>
        <translation>时间配置写入失败，错误码：</translation>
    </message>
    <message>
        <source>Write Restart Allocation</source>
        <translation>写入重启配置</translation>
    </message>
    <message>
        <source>Restart allocation write successful.</source>
        <translation>重启配置写入成功。</translation>
    </message>
    <message>
        <source>Restart allocation write failed. Error code: </source>
        <translation>重启配置写入失败，错误码：</translation>
    </message>
</context>
<context>
    <name>ServerForm</name>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>ServiceIEC61850EditDialog</name>
    <message>
        <source>Service Name:</source>
        <translation>服务名称：</translation>
    </message>
    <message>
        <source>Protocol:</source>
        <translation>协议：</translation>
    </message>
    <message>
        <source>Port:</source>
        <translation>端口：</translation>
    </message>
    <message>
        <source>Authentication:</source>
        <translation>认证方式：</translation>
    </message>
    <message>
        <source>None</source>
        <translation></translation>
    </message>
    <message>
        <source>Password</source>
        <translation></translation>
    </message>
    <message>
        <source>Password:</source>
        <translation>密码：</translation>
    </message>
    <message>
        <source>Enable GoosePublishing:</source>
        <translation>启用 GOOSE 发布：</translation>
    </message>
    <message>
        <source>Enable SSL:</source>
        <translation>启用 SSL：</translation>
    </message>
    <message>
        <source>Server Key Password:</source>
        <translation>服务器密钥密码：</translation>
    </message>
    <message>
        <source>IsVerifyClientCert:</source>
        <translation>验证客户端证书：</translation>
    </message>
    <message>
        <source>Client Certificate1:</source>
        <translation>客户端证书1：</translation>
    </message>
    <message>
        <source>Client Certificate2:</source>
        <translation>客户端证书2：</translation>
    </message>
    <message>
        <source>Client Certificate3:</source>
        <translation>客户端证书3：</translation>
    </message>
    <message>
        <source>Client Certificate4:</source>
        <translation>客户端证书4：</translation>
    </message>
    <message>
        <source>Client Certificate5:</source>
        <translation>客户端证书5：</translation>
    </message>
    <message>
        <source>Client Certificate6:</source>
        <translation>客户端证书6：</translation>
    </message>
    <message>
        <source>Client Certificate7:</source>
        <translation>客户端证书7：</translation>
    </message>
    <message>
        <source>Client Certificate8:</source>
        <translation>客户端证书8：</translation>
    </message>
    <message>
        <source>Client Certificate9:</source>
        <translation>客户端证书9：</translation>
    </message>
    <message>
        <source>Client Certificate10:</source>
        <translation>客户端证书10：</translation>
    </message>
    <message>
        <source>Edit Service</source>
        <translation>编辑Service</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>The Standard OpcUa &apos;%1&apos; is saved successfully.</source>
        <translation>Standard OpcUa“%1”保存成功。</translation>
    </message>
    <message>
        <source>Root Certificate:</source>
        <translation>根证书：</translation>
    </message>
    <message>
        <source>Server Certificate:</source>
        <translation>服务器证书：</translation>
    </message>
    <message>
        <source>Server Key:</source>
        <translation>服务器密钥：</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>选择</translation>
    </message>
    <message>
        <source>Select Key File</source>
        <translation>选择密钥文件</translation>
    </message>
    <message>
        <source>Keys (*.der *.pem *.crt *.key)</source>
        <translation>密钥 (*.der *.pem *.crt *.key)</translation>
    </message>
    <message>
        <source>Select Certificate File</source>
        <translation>选择证书文件</translation>
    </message>
    <message>
        <source>Certificates (*.der *.pem *.crt *.key)</source>
        <translation>证书 (*.der *.pem *.crt *.key)</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>Failed to open file: %1</source>
        <translation>打开文件失败：%1</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>The key storage path is inconsistent with the loading path.Please select the key again.Prevent data loss.</source>
        <translation>密钥的保存路径与加载路径不一致。请重新选择密钥，以防数据丢失。</translation>
    </message>
    <message>
        <source>The certificate storage path is inconsistent with the loading path.Please select the certificate again.Prevent data loss.</source>
        <translation>证书的保存路径与加载路径不一致。请重新选择证书，以防数据丢失。</translation>
    </message>
</context>
<context>
    <name>StandardFields</name>
    <message>
        <source>Communication Timeout:</source>
        <translation>通信超时：</translation>
    </message>
    <message>
        <source>Communication Gap:</source>
        <translation>通信间隔：</translation>
    </message>
    <message>
        <source>Serial Port:</source>
        <translation>串口：</translation>
    </message>
    <message>
        <source>Baud Rate:</source>
        <translation>波特率：</translation>
    </message>
    <message>
        <source>Data Bit:</source>
        <translation>数据位：</translation>
    </message>
    <message>
        <source>Stop Bit:</source>
        <translation>停止位：</translation>
    </message>
    <message>
        <source>Parity Bit:</source>
        <translation>校验位：</translation>
    </message>
    <message>
        <source>Rts Enable:</source>
        <translation>RTS 使能：</translation>
    </message>
    <message>
        <source>Trigger Conditions:</source>
        <translation>触发条件：</translation>
    </message>
    <message>
        <source>Timed Loops</source>
        <translation>定时循环</translation>
    </message>
</context>
<context>
    <name>standardDLT645EditDialog</name>
    <message>
        <source>Server Name:</source>
        <translation>名称：</translation>
    </message>
    <message>
        <source>Protocol:</source>
        <translation>协议：</translation>
    </message>
    <message>
        <source>Slave Address:</source>
        <translation>从站地址：</translation>
    </message>
    <message>
        <source>Protocol Version:</source>
        <translation>协议版本：</translation>
    </message>
    <message>
        <source>Edit Standard</source>
        <translation>编辑Standard</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Add Tab</source>
        <translation>添加标签页</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>全选</translation>
    </message>
    <message>
        <source>Data name</source>
        <translation>数据名称</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>The name of the &apos;%1&apos; line already exists. Please use a different name.</source>
        <translation>第“%1”行的名称已存在，请使用其他名称。</translation>
    </message>
    <message>
        <source>The Standard DLT645 &apos;%1&apos; is saved successfully.</source>
        <translation>Standard DLT645“%1”保存成功。</translation>
    </message>
</context>
<context>
    <name>standardInputDialog</name>
    <message>
        <source>Add Standard</source>
        <translation>添加Standard</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>名称：</translation>
    </message>
    <message>
        <source>Protocol:</source>
        <translation>协议：</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>standardModbusEditDialog</name>
    <message>
        <source>Server Name:</source>
        <translation>名称：</translation>
    </message>
    <message>
        <source>Protocol:</source>
        <translation>协议：</translation>
    </message>
    <message>
        <source>Modbus:</source>
        <translation>Modbus 方式：</translation>
    </message>
    <message>
        <source>IP:</source>
        <translation>IP：</translation>
    </message>
    <message>
        <source>Port:</source>
        <translation>端口：</translation>
    </message>
    <message>
        <source>Connection Timeout:</source>
        <translation>连接超时：</translation>
    </message>
    <message>
        <source>Communication Timeout:</source>
        <translation>通信超时：</translation>
    </message>
    <message>
        <source>Keep Alive Time:</source>
        <translation>心跳时间：</translation>
    </message>
    <message>
        <source>Series:</source>
        <translation>系列：</translation>
    </message>
    <message>
        <source>Station Num:</source>
        <translation>从站地址：</translation>
    </message>
    <message>
        <source>Byte Order:</source>
        <translation>字节序：</translation>
    </message>
    <message>
        <source>StartAddress0:</source>
        <translation>起始地址为0：</translation>
    </message>
    <message>
        <source>Char Reversed:</source>
        <translation>字符反转：</translation>
    </message>
    <message>
        <source>Edit Standard</source>
        <translation>编辑Standard</translation>
    </message>
    <message>
        <source>Parameter table not found.</source>
        <translation>未找到参数表。</translation>
    </message>
    <message>
        <source>No tab selected.</source>
        <translation>未选择标签页。</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Network Layer Information</source>
        <translation>网络层信息</translation>
    </message>
    <message>
        <source>Serial Port Information</source>
        <translation>串口信息</translation>
    </message>
    <message>
        <source>Add Tab</source>
        <translation>添加标签页</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>添加</translation>
    </message>
    <message>
        <source>Remove All</source>
        <translation>全部删除</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>导入</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>导出</translation>
    </message>
    <message>
        <source>The Standard Modbus &apos;%1&apos; is saved successfully.</source>
        <translation>Standard Modbus“%1”保存成功。</translation>
    </message>
</context>
</TS>
