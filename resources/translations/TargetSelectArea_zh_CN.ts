<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>CAddBatchIPDialog</name>
    <message>
        <source>The IP address entered is same as the IP address of your PC, it would fail network connection.</source>
        <translation>输入的 IP 地址与本机的 IP 地址相同，会导致网络连接失败。</translation>
    </message>
    <message>
        <source>IP address has been used.</source>
        <translation>IP 地址已被使用。</translation>
    </message>
    <message>
        <source>The IP address cannot start with 0.</source>
        <translation>IP 地址不能以 0 开头。</translation>
    </message>
    <message>
        <source>The IP address is the same as the default gateway.</source>
        <translation>IP 地址与默认网关相同。</translation>
    </message>
    <message>
        <source>The IP address is the broadcast address.</source>
        <translation>IP 地址是广播地址。</translation>
    </message>
    <message>
        <source>IP address is unreasonable.</source>
        <translation>IP 地址不合理。</translation>
    </message>
    <message>
        <source>Custom add processor</source>
        <translation>自定义添加处理器</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>数量</translation>
    </message>
    <message>
        <source>IP address</source>
        <translation>IP 地址</translation>
    </message>
</context>
<context>
    <name>CAddBothIpDialog</name>
    <message>
        <source>The IP address 1 entered is same as the IP address of your PC, it would fail network connection.</source>
        <translation>输入的 IP 地址 1 与本机的 IP 地址相同，会导致网络连接失败。</translation>
    </message>
    <message>
        <source>IP address 1 has been used.</source>
        <translation>IP 地址 1 已被使用。</translation>
    </message>
    <message>
        <source>The IP address 1 cannot start with 0.</source>
        <translation>IP 地址 1 不能以 0 开头。</translation>
    </message>
    <message>
        <source>The IP address 1 is the same as the default gateway.</source>
        <translation>IP 地址 1 与默认网关相同。</translation>
    </message>
    <message>
        <source>The IP address 1 is the broadcast address.</source>
        <translation>IP 地址 1 是广播地址。</translation>
    </message>
    <message>
        <source>IP address 1 is unreasonable.</source>
        <translation>IP 地址 1 不合理。</translation>
    </message>
    <message>
        <source>The IP address 2 entered is same as the IP address of your PC, it would fail network connection.</source>
        <translation>输入的 IP 地址 2 与本机的 IP 地址相同，会导致网络连接失败。</translation>
    </message>
    <message>
        <source>IP address 2 has been used.</source>
        <translation>IP 地址 2 已被使用。</translation>
    </message>
    <message>
        <source>The IP address 2 cannot start with 0.</source>
        <translation>IP 地址 2 不能以 0 开头。</translation>
    </message>
    <message>
        <source>The IP address 2 is the same as the default gateway.</source>
        <translation>IP 地址 2 与默认网关相同。</translation>
    </message>
    <message>
        <source>The IP address 2 is the broadcast address.</source>
        <translation>IP 地址 2 是广播地址。</translation>
    </message>
    <message>
        <source>IP address 2 is unreasonable.</source>
        <translation>IP 地址 2 不合理。</translation>
    </message>
    <message>
        <source>IP address 1 is the same as IP address 2.</source>
        <translation>IP 地址 1 与 IP 地址 2 相同。</translation>
    </message>
    <message>
        <source>Add IP</source>
        <translation>添加 IP</translation>
    </message>
    <message>
        <source>IP 1</source>
        <translation>IP 1</translation>
    </message>
    <message>
        <source>IP 2</source>
        <translation>IP 2</translation>
    </message>
</context>
<context>
    <name>CAddSingleIPDialog</name>
    <message>
        <source>The IP address entered is same as the IP address of your PC, it would fail network connection.</source>
        <translation>输入的 IP 地址与本机的 IP 地址相同，会导致网络连接失败。</translation>
    </message>
    <message>
        <source>IP address has been used.</source>
        <translation>IP 地址已被使用。</translation>
    </message>
    <message>
        <source>The IP address cannot start with 0.</source>
        <translation>IP 地址不能以 0 开头。</translation>
    </message>
    <message>
        <source>The IP address is the same as the default gateway.</source>
        <translation>IP 地址与默认网关相同。</translation>
    </message>
    <message>
        <source>The IP address is the broadcast address.</source>
        <translation>IP 地址是广播地址。</translation>
    </message>
    <message>
        <source>IP address is unreasonable.</source>
        <translation>IP 地址不合理。</translation>
    </message>
    <message>
        <source>Add IP</source>
        <translation>添加 IP</translation>
    </message>
    <message>
        <source>IP address</source>
        <translation>IP 地址</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
</context>
<context>
    <name>CCustomAddProcessor</name>
    <message>
        <source>Custom add processor</source>
        <translation>自定义添加处理器</translation>
    </message>
    <message>
        <source>Number of processors</source>
        <translation>处理器数量</translation>
    </message>
    <message>
        <source>Number of outputs</source>
        <translation>输出口数量</translation>
    </message>
</context>
<context>
    <name>CIPListView</name>
    <message>
        <source>IP addresses</source>
        <translation>IP 地址列表</translation>
    </message>
    <message>
        <source>IP address</source>
        <translation>IP 地址</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
</context>
<context>
    <name>CIPManageDialog</name>
    <message>
        <source>Add</source>
        <translation>添加</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>编辑</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>清空</translation>
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
        <source>Read IP from online processors</source>
        <translation>从在线处理器读取 IP</translation>
    </message>
    <message>
        <source>Add an IP address...</source>
        <translation>添加一个 IP 地址...</translation>
    </message>
    <message>
        <source>Add multiple IP addresses...</source>
        <translation>添加多个 IP 地址...</translation>
    </message>
    <message>
        <source>IP address management</source>
        <translation>IP 地址管理</translation>
    </message>
    <message>
        <source>The number of IP addresses exceeds 255, and some IP addresses are not added.</source>
        <translation>IP 地址数量超过 255 个，部分 IP 地址未添加。</translation>
    </message>
    <message>
        <source>Online IP gets successfully, but the number of IP addresses is 0.</source>
        <translation>在线 IP 获取成功，但 IP 地址数量为 0。</translation>
    </message>
    <message>
        <source>Are you sure you want to clear all ips?</source>
        <translation>确定要清空所有 IP 吗？</translation>
    </message>
    <message>
        <source>Import an IP address list</source>
        <translation>导入 IP 地址列表</translation>
    </message>
    <message>
        <source>IP Address File(*.txt);;AllFile(*.*)</source>
        <translation>IP 地址文件(*.txt);;所有文件(*.*)</translation>
    </message>
    <message>
        <source>Import failed, file name is empty.</source>
        <translation>导入失败，文件名为空。</translation>
    </message>
    <message>
        <source>Import successfully.</source>
        <translation>导入成功。</translation>
    </message>
    <message>
        <source>Import failed, no valid IP.</source>
        <translation>导入失败，没有有效的 IP。</translation>
    </message>
    <message>
        <source>Import failed with file opening error.</source>
        <translation>导入失败，无法打开文件。</translation>
    </message>
    <message>
        <source>Export an IP address list</source>
        <translation>导出 IP 地址列表</translation>
    </message>
    <message>
        <source>IP Address File(*.txt);;*.txt</source>
        <translation>IP 地址文件(*.txt);;*.txt</translation>
    </message>
    <message>
        <source>Export failed, the file could not be written completely.</source>
        <translation>导出失败，文件未能完整写入。</translation>
    </message>
    <message>
        <source>Export successfully.</source>
        <translation>导出成功。</translation>
    </message>
    <message>
        <source>Export successfully. Characters that the file&apos;s encoding lacks were replaced.</source>
        <translation>导出成功。文件编码不支持的字符已被替换。</translation>
    </message>
</context>
<context>
    <name>CModifyIPDialog</name>
    <message>
        <source>The IP address entered is same as the IP address of your PC, it would fail network connection.</source>
        <translation>输入的 IP 地址与本机的 IP 地址相同，会导致网络连接失败。</translation>
    </message>
    <message>
        <source>IP address has been used.</source>
        <translation>IP 地址已被使用。</translation>
    </message>
    <message>
        <source>The IP address cannot start with 0.</source>
        <translation>IP 地址不能以 0 开头。</translation>
    </message>
    <message>
        <source>The IP address is the same as the default gateway.</source>
        <translation>IP 地址与默认网关相同。</translation>
    </message>
    <message>
        <source>The IP address is the broadcast address.</source>
        <translation>IP 地址是广播地址。</translation>
    </message>
    <message>
        <source>IP address is unreasonable.</source>
        <translation>IP 地址不合理。</translation>
    </message>
    <message>
        <source>Change IP address</source>
        <translation>修改 IP 地址</translation>
    </message>
    <message>
        <source>IP address</source>
        <translation>IP 地址</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
</context>
<context>
    <name>CNetUsbTipDlg</name>
    <message>
        <source>%1 does not support LAN-USB connections. The following processors are using this connection type. Please check:</source>
        <translation>%1 不支持 LAN-USB 连接。以下处理器正在使用该连接方式，请检查：</translation>
    </message>
</context>
<context>
    <name>CProcessorCompleter</name>
    <message>
        <source>Search results</source>
        <translation>搜索结果</translation>
    </message>
    <message>
        <source>No content found in the search.</source>
        <translation>未搜索到相关内容。</translation>
    </message>
    <message>
        <source>Processors found: %1</source>
        <translation>找到的处理器：%1</translation>
    </message>
</context>
<context>
    <name>CProcessorTree</name>
    <message>
        <source>Search</source>
        <translation>搜索</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>添加</translation>
    </message>
    <message>
        <source>Processors</source>
        <translation>处理器</translation>
    </message>
    <message>
        <source>Add processor group</source>
        <translation>添加处理器组</translation>
    </message>
    <message>
        <source>Add 1 processor</source>
        <translation>添加 1 台处理器</translation>
    </message>
    <message>
        <source>Add 2 processor</source>
        <translation>添加 2 台处理器</translation>
    </message>
    <message>
        <source>Custom adds...</source>
        <translation>自定义添加...</translation>
    </message>
</context>
<context>
    <name>CProcessorTreeDelegate</name>
    <message>
        <source>More</source>
        <translation>更多</translation>
    </message>
</context>
<context>
    <name>CProcessorTreeModel</name>
    <message>
        <source>All processors</source>
        <translation>全部处理器</translation>
    </message>
    <message>
        <source>Project, Processor groups: %1</source>
        <translation>项目，处理器组：%1</translation>
    </message>
    <message>
        <source>Processor group, Processors: %1</source>
        <translation>处理器组，处理器：%1</translation>
    </message>
</context>
<context>
    <name>CTargetSelectArea</name>
    <message>
        <source>Detect devices</source>
        <translation>检测设备</translation>
    </message>
    <message>
        <source>All devices</source>
        <translation>所有设备</translation>
    </message>
    <message>
        <source>Processors only</source>
        <translation>仅处理器</translation>
    </message>
    <message>
        <source>Processor1 IP: </source>
        <translation>处理器1 IP: </translation>
    </message>
    <message>
        <source>Device set</source>
        <translation>设备组</translation>
    </message>
    <message>
        <source>IP address management...</source>
        <translation>IP 地址管理...</translation>
    </message>
</context>
<context>
    <name>CEmptyTreeHint</name>
    <message>
        <source>No processors yet</source>
        <translation>暂无处理器</translation>
    </message>
</context>
<context>
    <name>CProcessorTreeView</name>
    <message>
        <source>Marked to be moved</source>
        <translation>已标记待移动</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Expand</source>
        <translation>展开</translation>
    </message>
    <message>
        <source>Collapse</source>
        <translation>折叠</translation>
    </message>
    <message>
        <source>Group</source>
        <translation>组</translation>
    </message>
    <message>
        <source>Add processor group</source>
        <translation>添加处理器组</translation>
    </message>
    <message>
        <source>Add 1 processor</source>
        <translation>添加 1 台处理器</translation>
    </message>
    <message>
        <source>Add 2 processor</source>
        <translation>添加 2 台处理器</translation>
    </message>
    <message>
        <source>Custom adds...</source>
        <translation>自定义添加...</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>重命名</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Highlight the front panel</source>
        <translation>点亮前面板</translation>
    </message>
    <message>
        <source>Cancel highlighting the front panel</source>
        <translation>取消点亮前面板</translation>
    </message>
    <message>
        <source>The selected processor has a redundant backup, please disable redundant backup first.</source>
        <translation>所选处理器有冗余备份，请先关闭冗余备份。</translation>
    </message>
    <message>
        <source>Processor%1 has been set to backup redundancy, please disable backup before delete them.</source>
        <translation>处理器%1 已设为备份冗余，请先关闭备份再删除。</translation>
    </message>
    <message>
        <source>Are you sure you want to ungroup the selected processor group (the processors under the group still remains)?</source>
        <translation>确定要解散所选处理器组吗（组内的处理器仍会保留）？</translation>
    </message>
    <message>
        <source>Must keep at least one processor.</source>
        <translation>必须至少保留一台处理器。</translation>
    </message>
    <message>
        <source>Want to delete the selected processor?</source>
        <translation>要删除所选处理器吗？</translation>
    </message>
</context>
<context>
    <name>ProcessorTexts</name>
    <message>
        <source>Number</source>
        <translation>编号</translation>
    </message>
    <message>
        <source>Invalid</source>
        <translation>无效</translation>
    </message>
    <message>
        <source>Processor</source>
        <translation>处理器</translation>
    </message>
    <message>
        <source>Backup processor</source>
        <translation>备份处理器</translation>
    </message>
    <message>
        <source>Online</source>
        <translation>在线</translation>
    </message>
    <message>
        <source>Offline</source>
        <translation>离线</translation>
    </message>
    <message>
        <source>Has a backup</source>
        <translation>有备份</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>警告</translation>
    </message>
</context>
</TS>
