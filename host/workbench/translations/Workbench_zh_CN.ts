<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>Actions</name>
    <message>
        <source>&amp;File</source>
        <translation>文件(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;New</source>
        <translation>新建(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>打开(&amp;O)...</translation>
    </message>
    <message>
        <source>Open sa&amp;mple</source>
        <translation>打开示例(&amp;M)</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>保存(&amp;S)</translation>
    </message>
    <message>
        <source>Save &amp;as...</source>
        <translation>另存为(&amp;A)...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>退出(&amp;Q)</translation>
    </message>
    <message>
        <source>&amp;Change</source>
        <translation>更改(&amp;C)</translation>
    </message>
    <message>
        <source>Add &amp;processor</source>
        <translation>添加处理器(&amp;P)</translation>
    </message>
    <message>
        <source>Add &amp;several processors...</source>
        <translation>添加多个处理器(&amp;S)...</translation>
    </message>
    <message>
        <source>Add &amp;group...</source>
        <translation>添加分组(&amp;G)...</translation>
    </message>
    <message>
        <source>Re&amp;move</source>
        <translation>移除(&amp;M)</translation>
    </message>
    <message>
        <source>&amp;Rename...</source>
        <translation>重命名(&amp;R)...</translation>
    </message>
    <message>
        <source>Mo&amp;ve to group...</source>
        <translation>移到分组(&amp;V)...</translation>
    </message>
    <message>
        <source>Go &amp;online</source>
        <translation>上线(&amp;O)</translation>
    </message>
    <message>
        <source>Go o&amp;ffline</source>
        <translation>离线(&amp;F)</translation>
    </message>
    <message>
        <source>Change &amp;address...</source>
        <translation>更改地址(&amp;A)...</translation>
    </message>
    <message>
        <source>Mark as &amp;backup, or not</source>
        <translation>设为或取消备份(&amp;B)</translation>
    </message>
    <message>
        <source>Has a bac&amp;kup, or not</source>
        <translation>有或取消备份(&amp;K)</translation>
    </message>
    <message>
        <source>Prot&amp;ected, or not</source>
        <translation>设为或取消保护(&amp;E)</translation>
    </message>
    <message>
        <source>Monitor &amp;warning on or off</source>
        <translation>打开或关闭监控告警(&amp;W)</translation>
    </message>
    <message>
        <source>Make &amp;current</source>
        <translation>设为当前(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Device sets...</source>
        <translation>设备组(&amp;D)...</translation>
    </message>
    <message>
        <source>De&amp;tection strategy...</source>
        <translation>检测策略(&amp;T)...</translation>
    </message>
    <message>
        <source>LAN-&amp;USB...</source>
        <translation>LAN-USB(&amp;U)...</translation>
    </message>
    <message>
        <source>&amp;Handler answers...</source>
        <translation>宿主应答(&amp;H)...</translation>
    </message>
    <message>
        <source>&amp;Events</source>
        <translation>事件(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;Raise event...</source>
        <translation>发出事件(&amp;R)...</translation>
    </message>
    <message>
        <source>&amp;Announce the whole project</source>
        <translation>重新通告整个项目(&amp;A)</translation>
    </message>
    <message>
        <source>Events on the &amp;GUI thread</source>
        <translation>在界面线程发出事件(&amp;G)</translation>
    </message>
    <message>
        <source>&amp;Layer</source>
        <translation>面板(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Read-only</source>
        <translation>只读(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Select in the panel</source>
        <translation>在面板中选中(&amp;S)</translation>
    </message>
    <message>
        <source>Remove all &amp;groups</source>
        <translation>移除所有分组(&amp;G)</translation>
    </message>
    <message>
        <source>Log the panel&apos;s &amp;tree</source>
        <translation>记录面板的树(&amp;T)</translation>
    </message>
    <message>
        <source>Log the &amp;accepted tree</source>
        <translation>记录被接受的树(&amp;A)</translation>
    </message>
    <message>
        <source>Log all &amp;processors</source>
        <translation>记录所有处理器(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Detect devices</source>
        <translation>检测设备(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Lock operations</source>
        <translation>锁定操作(&amp;L)</translation>
    </message>
    <message>
        <source>Repaint &amp;monitor warnings</source>
        <translation>重绘监控告警(&amp;M)</translation>
    </message>
    <message>
        <source>Appl&amp;y the lock</source>
        <translation>应用锁定(&amp;Y)</translation>
    </message>
    <message>
        <source>Lock by &amp;key...</source>
        <translation>按键值锁定(&amp;K)...</translation>
    </message>
    <message>
        <source>Show the LAN-&amp;USB warning</source>
        <translation>显示 LAN-USB 警告(&amp;U)</translation>
    </message>
    <message>
        <source>Re&amp;connect</source>
        <translation>重新连接(&amp;C)</translation>
    </message>
    <message>
        <source>Destro&amp;y the panel</source>
        <translation>销毁面板(&amp;Y)</translation>
    </message>
    <message>
        <source>&amp;Initialise the panel again</source>
        <translation>重新初始化面板(&amp;I)</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>视图(&amp;V)</translation>
    </message>
    <message>
        <source>To the &amp;panel</source>
        <translation>转到面板(&amp;P)</translation>
    </message>
    <message>
        <source>To the &amp;records</source>
        <translation>转到记录(&amp;R)</translation>
    </message>
    <message>
        <source>To the log &amp;filter</source>
        <translation>转到日志筛选(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Clear the log</source>
        <translation>清空日志(&amp;C)</translation>
    </message>
    <message>
        <source>L&amp;anguage</source>
        <translation>语言(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Recent</source>
        <translation>最近的项目(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Faults</source>
        <translation>故障(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Network...</source>
        <translation>网络(&amp;N)...</translation>
    </message>
    <message>
        <source>E&amp;dit</source>
        <translation>编辑(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>撤销(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>重做(&amp;R)</translation>
    </message>
    <message>
        <source>Check the contract in the ne&amp;xt panel</source>
        <translation>在下一个面板中检查约定(&amp;X)</translation>
    </message>
</context>
<context>
    <name>AddProcessorsDialog</name>
    <message>
        <source>Add processors</source>
        <translation>添加处理器</translation>
    </message>
    <message>
        <source>No group</source>
        <translation>不分组</translation>
    </message>
    <message>
        <source>none: addressed by number</source>
        <translation>无：按编号寻址</translation>
    </message>
    <message>
        <source>&amp;Group</source>
        <translation>分组(&amp;G)</translation>
    </message>
    <message>
        <source>&amp;Number of processors</source>
        <translation>处理器数量(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;First address</source>
        <translation>起始地址(&amp;F)</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no address; 192.168.0.1 is one.</source>
        <translation>“%1”不是地址；地址的写法如 192.168.0.1。</translation>
    </message>
    <message>
        <source>There are not so many addresses from %1 on.</source>
        <translation>从 %1 起没有这么多地址。</translation>
    </message>
    <message>
        <source>127.0.0.1 stands for no address.</source>
        <translation>127.0.0.1 表示没有地址。</translation>
    </message>
</context>
<context>
    <name>AnswersDialog</name>
    <message>
        <source>Handler answers</source>
        <translation>宿主应答</translation>
    </message>
    <message>
        <source>%1 has to be a number such as 0 or 0xe0832001.</source>
        <translation>%1 必须是数字，如 0 或 0xe0832001。</translation>
    </message>
    <message>
        <source>%1 has to be addresses parted by commas.</source>
        <translation>%1 必须是以逗号分隔的地址。</translation>
    </message>
</context>
<context>
    <name>Autosave</name>
    <message>
        <source>a project without a file</source>
        <translation>未保存过的项目</translation>
    </message>
    <message>
        <source>The program ended without warning. There is a copy of %1 with unsaved changes, of %2.</source>
        <translation>程序曾意外结束。存在 %1 的副本，含未保存的更改，时间为 %2。</translation>
    </message>
    <message>
        <source>Recover</source>
        <translation>恢复</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>丢弃</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>稍后</translation>
    </message>
    <message>
        <source>%1
The copy is kept as %2.</source>
        <translation>%1
副本保留为 %2。</translation>
    </message>
</context>
<context>
    <name>CTraceReader</name>
    <message>
        <source>%1 is not a regular file</source>
        <translation>%1 不是普通文件</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2</source>
        <translation>无法读取 %1：%2</translation>
    </message>
    <message>
        <source>%1, line %2: the recording ends inside this line</source>
        <translation>%1，第 %2 行：录制在这一行中断</translation>
    </message>
    <message>
        <source>this is not a recording</source>
        <translation>这不是录制文件</translation>
    </message>
    <message>
        <source>the recording has version %1 of the format, and this program reads version %2</source>
        <translation>该录制的格式版本为 %1，本程序只能读取版本 %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is missing or wrong</source>
        <translation>“%1”缺失或有误</translation>
    </message>
    <message>
        <source>this is not an object</source>
        <translation>这不是一个对象</translation>
    </message>
    <message>
        <source>%1, line %2, column %3: %4</source>
        <translation>%1，第 %2 行第 %3 列：%4</translation>
    </message>
</context>
<context>
    <name>CTraceWriter</name>
    <message>
        <source>the file that is there is not a recording</source>
        <translation>该处已有的文件不是录制文件</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation>无法写入 %1：%2</translation>
    </message>
    <message>
        <source>a recording is being written to %1</source>
        <translation>正在将录制写入 %1</translation>
    </message>
</context>
<context>
    <name>ChangeCommands</name>
    <message>
        <source>Add group</source>
        <translation>添加分组</translation>
    </message>
    <message>
        <source>Name of the group</source>
        <translation>分组名称</translation>
    </message>
    <message>
        <source>Group %1</source>
        <translation>分组 %1</translation>
    </message>
    <message>
        <source>Detection strategy</source>
        <translation>检测策略</translation>
    </message>
    <message>
        <source>Number of the strategy</source>
        <translation>策略编号</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>重命名</translation>
    </message>
    <message>
        <source>New name</source>
        <translation>新名称</translation>
    </message>
    <message>
        <source>No group</source>
        <translation>不分组</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
    <message>
        <source>Move to group</source>
        <translation>移到分组</translation>
    </message>
    <message>
        <source>Group</source>
        <translation>分组</translation>
    </message>
    <message>
        <source>Change address</source>
        <translation>更改地址</translation>
    </message>
    <message>
        <source>Address; 127.0.0.1 for none</source>
        <translation>地址；127.0.0.1 表示无地址</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no address; 192.168.0.1 is one.</source>
        <translation>“%1”不是地址；地址的写法如 192.168.0.1。</translation>
    </message>
    <message>
        <source>LAN-USB</source>
        <translation>LAN-USB</translation>
    </message>
    <message>
        <source>Addresses of LAN-USB processors; empty switches it off</source>
        <translation>LAN-USB 处理器的地址；留空则关闭</translation>
    </message>
    <message>
        <source>Addresses have to be parted by commas.</source>
        <translation>地址之间必须以逗号分隔。</translation>
    </message>
    <message>
        <source>The project holds no more groups.</source>
        <translation>项目不能再容纳更多分组。</translation>
    </message>
</context>
<context>
    <name>ChangeTitle</name>
    <message>
        <source>report of a processor</source>
        <translation>处理器的上报</translation>
    </message>
    <message>
        <source>choice of the current processor</source>
        <translation>当前处理器的选择</translation>
    </message>
    <message>
        <source>check of an address</source>
        <translation>地址检查</translation>
    </message>
    <message>
        <source>change of the IP list</source>
        <translation>IP 列表的更改</translation>
    </message>
    <message>
        <source>state of %1</source>
        <translation>“%1”的状态</translation>
    </message>
    <message>
        <source>state of %1 processors</source>
        <translation>%1 个处理器的状态</translation>
    </message>
    <message>
        <source>number of outputs</source>
        <translation>输出数量</translation>
    </message>
    <message>
        <source>handler answers</source>
        <translation>宿主应答</translation>
    </message>
    <message>
        <source>detection strategy</source>
        <translation>检测策略</translation>
    </message>
    <message>
        <source>LAN-USB</source>
        <translation>LAN-USB</translation>
    </message>
    <message>
        <source>choice of the device set</source>
        <translation>设备组的选择</translation>
    </message>
    <message>
        <source>device sets</source>
        <translation>设备组</translation>
    </message>
    <message>
        <source>faults</source>
        <translation>故障</translation>
    </message>
    <message>
        <source>network</source>
        <translation>网络</translation>
    </message>
    <message>
        <source>move of %1</source>
        <translation>“%1”的移动</translation>
    </message>
    <message>
        <source>move of %1 processors</source>
        <translation>%1 个处理器的移动</translation>
    </message>
    <message>
        <source>monitor warning of %1</source>
        <translation>“%1”的监控警告</translation>
    </message>
    <message>
        <source>monitor warning of %1 processors</source>
        <translation>%1 个处理器的监控警告</translation>
    </message>
    <message>
        <source>redundancy of %1</source>
        <translation>“%1”的冗余</translation>
    </message>
    <message>
        <source>redundancy of %1 processors</source>
        <translation>%1 个处理器的冗余</translation>
    </message>
    <message>
        <source>protection of %1</source>
        <translation>“%1”的保护</translation>
    </message>
    <message>
        <source>protection of %1 processors</source>
        <translation>%1 个处理器的保护</translation>
    </message>
    <message>
        <source>address of %1</source>
        <translation>“%1”的地址</translation>
    </message>
    <message>
        <source>change of %1</source>
        <translation>“%1”的更改</translation>
    </message>
    <message>
        <source>rename of %1</source>
        <translation>“%1”的重命名</translation>
    </message>
    <message>
        <source>addition of %1</source>
        <translation>“%1”的添加</translation>
    </message>
    <message>
        <source>addition of %1 processors</source>
        <translation>%1 个处理器的添加</translation>
    </message>
    <message>
        <source>addition of group %1</source>
        <translation>分组“%1”的添加</translation>
    </message>
    <message>
        <source>removal of %1</source>
        <translation>“%1”的移除</translation>
    </message>
    <message>
        <source>removal of %1 processors</source>
        <translation>%1 个处理器的移除</translation>
    </message>
    <message>
        <source>ungrouping of %1</source>
        <translation>分组“%1”的解散</translation>
    </message>
    <message>
        <source>detection</source>
        <translation>检测</translation>
    </message>
</context>
<context>
    <name>ChangedFileBar</name>
    <message>
        <source>%1 was removed by another program.</source>
        <translation>%1 已被其他程序删除。</translation>
    </message>
    <message>
        <source>%1 was changed by another program.</source>
        <translation>%1 已被其他程序更改。</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>重新加载</translation>
    </message>
    <message>
        <source>Open the file as it is now; changes made here are lost</source>
        <translation>打开文件的当前内容；此处的更改将丢失</translation>
    </message>
    <message>
        <source>Compare...</source>
        <translation>比较...</translation>
    </message>
    <message>
        <source>Show in what the project and the file differ</source>
        <translation>显示项目与文件的差异</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>保留</translation>
    </message>
    <message>
        <source>Keep the project as it is here, for the next Save</source>
        <translation>保留此处的项目，供下次保存</translation>
    </message>
    <message>
        <source>%1 was changed again by another program.</source>
        <translation>%1 又被其他程序更改。</translation>
    </message>
</context>
<context>
    <name>CompareDialog</name>
    <message>
        <source>Compare with the file</source>
        <translation>与文件比较</translation>
    </message>
    <message>
        <source>Differences: %1</source>
        <translation>差异：%1</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>记录</translation>
    </message>
    <message>
        <source>Field</source>
        <translation>字段</translation>
    </message>
    <message>
        <source>Here</source>
        <translation>此处</translation>
    </message>
    <message>
        <source>In the file</source>
        <translation>文件中</translation>
    </message>
    <message>
        <source>Differences</source>
        <translation>差异</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
</context>
<context>
    <name>DetectionStatus</name>
    <message>
        <source>Detection cancelled; processors found: %1</source>
        <translation>检测已取消；找到的处理器：%1</translation>
    </message>
    <message>
        <source>Detection</source>
        <translation>检测</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Cancel the detection</source>
        <translation>取消检测</translation>
    </message>
    <message>
        <source>Cancel the detection (Esc)</source>
        <translation>取消检测 (Esc)</translation>
    </message>
    <message>
        <source>Processors found: %1</source>
        <translation>找到的处理器：%1</translation>
    </message>
    <message>
        <source>Detecting devices...</source>
        <translation>正在检测设备...</translation>
    </message>
</context>
<context>
    <name>DeviceSetsDialog</name>
    <message>
        <source>Device sets</source>
        <translation>设备组</translation>
    </message>
    <message>
        <source>&amp;Sets</source>
        <translation>设备组(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Current set</source>
        <translation>当前组(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <translation>添加(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>移除(&amp;R)</translation>
    </message>
    <message>
        <source>Set %1</source>
        <translation>设备组 %1</translation>
    </message>
    <message>
        <source>None</source>
        <translation>无</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>文本</translation>
    </message>
</context>
<context>
    <name>EditCommands</name>
    <message>
        <source>&amp;Undo %1</source>
        <translation>撤销(&amp;U)%1</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>撤销(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Redo %1</source>
        <translation>重做(&amp;R)%1</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>重做(&amp;R)</translation>
    </message>
</context>
<context>
    <name>FaultRule</name>
    <message>
        <source>an event from 0 to %1, or event *, is expected</source>
        <translation>应为 0 到 %1 的事件，或 event *</translation>
    </message>
    <message>
        <source>%1 does not apply to %2</source>
        <translation>%1 不适用于 %2</translation>
    </message>
    <message>
        <source>%1 applies to events, not to %2</source>
        <translation>%1 适用于事件，不适用于 %2</translation>
    </message>
    <message>
        <source>%1 is no operation of the handler, and no event such as &quot;event 25&quot;</source>
        <translation>%1 既不是处理程序的操作，也不是 &quot;event 25&quot; 这样的事件</translation>
    </message>
    <message>
        <source>a whole number from 0 is expected</source>
        <translation>应为不小于 0 的整数</translation>
    </message>
    <message>
        <source>a number from 0 to 1 is expected</source>
        <translation>应为 0 到 1 的数</translation>
    </message>
    <message>
        <source>a whole number from 0 to %1 is expected</source>
        <translation>应为 0 到 %1 的整数</translation>
    </message>
    <message>
        <source>a rule such as &quot;GetProcessorNode call 3 slow 2000&quot; is expected</source>
        <translation>应为 &quot;GetProcessorNode call 3 slow 2000&quot; 这样的规则</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
    <message>
        <source>nothing is expected behind %1</source>
        <translation>%1 之后不应有内容</translation>
    </message>
</context>
<context>
    <name>FaultsModel</name>
    <message>
        <source>any</source>
        <translation>任意</translation>
    </message>
    <message>
        <source>On</source>
        <translation>启用</translation>
    </message>
    <message>
        <source>At</source>
        <translation>位置</translation>
    </message>
    <message>
        <source>Call</source>
        <translation>第几次</translation>
    </message>
    <message>
        <source>Probability</source>
        <translation>概率</translation>
    </message>
    <message>
        <source>Seed</source>
        <translation>种子</translation>
    </message>
    <message>
        <source>Effect</source>
        <translation>效果</translation>
    </message>
    <message>
        <source>Milliseconds</source>
        <translation>毫秒</translation>
    </message>
    <message>
        <source>Struck</source>
        <translation>已触发</translation>
    </message>
    <message>
        <source>%1 is no number</source>
        <translation>%1 不是数字</translation>
    </message>
    <message>
        <source>There are %1 rules already, and no more are possible.</source>
        <translation>已有 %1 条规则，不能再添加。</translation>
    </message>
</context>
<context>
    <name>FaultsPanel</name>
    <message>
        <source>Faults</source>
        <translation>故障</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>添加</translation>
    </message>
    <message>
        <source>Add a rule, switched off at first</source>
        <translation>添加一条规则，起初不启用</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>移除</translation>
    </message>
    <message>
        <source>Remove the selected rule</source>
        <translation>移除所选规则</translation>
    </message>
    <message>
        <source>Count anew</source>
        <translation>重新计数</translation>
    </message>
    <message>
        <source>Set the counts back, and the random numbers with them</source>
        <translation>将计数和随机数重置</translation>
    </message>
</context>
<context>
    <name>FieldEdit</name>
    <message>
        <source>An identity is expected, such as %1; nothing means none.</source>
        <translation>应为标识，例如 %1；留空表示无。</translation>
    </message>
    <message>
        <source>The text has more than %1 characters.</source>
        <translation>文本超过 %1 个字符。</translation>
    </message>
    <message>
        <source>Either true or false is expected.</source>
        <translation>应为 true 或 false。</translation>
    </message>
    <message>
        <source>A number is expected, such as 59.94.</source>
        <translation>应为数字，例如 59.94。</translation>
    </message>
    <message>
        <source>Four whole numbers from 0 to %1 are expected, with commas between them.</source>
        <translation>应为四个 0 到 %1 的整数，以逗号分隔。</translation>
    </message>
    <message>
        <source>A whole number from %1 to %2 is expected.</source>
        <translation>应为 %1 到 %2 的整数。</translation>
    </message>
    <message>
        <source>An address is expected, such as 192.168.0.1; 127.0.0.1 means none.</source>
        <translation>应为地址，例如 192.168.0.1；127.0.0.1 表示无。</translation>
    </message>
    <message>
        <source>The name is empty.</source>
        <translation>名称为空。</translation>
    </message>
    <message>
        <source>The name has %1 bytes of at most %2.</source>
        <translation>名称有 %1 个字节，最多 %2 个。</translation>
    </message>
    <message>
        <source>There is no group of this identity.</source>
        <translation>没有此标识的分组。</translation>
    </message>
    <message>
        <source>The identity of a record does not change.</source>
        <translation>记录的标识不会改变。</translation>
    </message>
    <message>
        <source>The record does not exist any more.</source>
        <translation>该记录已不存在。</translation>
    </message>
    <message>
        <source>An address is expected, such as 192.168.0.1.</source>
        <translation>应为地址，例如 192.168.0.1。</translation>
    </message>
    <message>
        <source>The list has this address already.</source>
        <translation>列表中已有此地址。</translation>
    </message>
    <message>
        <source>The name has more than %1 characters.</source>
        <translation>名称超过 %1 个字符。</translation>
    </message>
    <message>
        <source>The entry does not exist any more.</source>
        <translation>该条目已不存在。</translation>
    </message>
</context>
<context>
    <name>FieldReader</name>
    <message>
        <source>an object is expected here</source>
        <translation>此处应为对象</translation>
    </message>
    <message>
        <source>this field is not known</source>
        <translation>未知字段</translation>
    </message>
    <message>
        <source>an identity such as %1 is expected</source>
        <translation>应为标识，如 %1</translation>
    </message>
    <message>
        <source>a text is expected</source>
        <translation>应为文本</translation>
    </message>
    <message>
        <source>a list of texts is expected</source>
        <translation>应为文本列表</translation>
    </message>
    <message>
        <source>true or false is expected</source>
        <translation>应为 true 或 false</translation>
    </message>
    <message>
        <source>a whole number from %1 to %2 is expected</source>
        <translation>应为 %1 到 %2 之间的整数</translation>
    </message>
    <message>
        <source>a whole number of 64 bits, written as a text, is expected</source>
        <translation>应为以文本书写的 64 位整数</translation>
    </message>
    <message>
        <source>a number is expected</source>
        <translation>应为数字</translation>
    </message>
    <message>
        <source>a list of four numbers is expected</source>
        <translation>应为四个数字的列表</translation>
    </message>
    <message>
        <source>an address such as %1 is expected</source>
        <translation>应为地址，如 %1</translation>
    </message>
    <message>
        <source>a list of addresses is expected</source>
        <translation>应为地址列表</translation>
    </message>
    <message>
        <source>one of %1 is expected</source>
        <translation>应为以下之一：%1</translation>
    </message>
</context>
<context>
    <name>FileCommands</name>
    <message>
        <source>The project has unsaved changes. Save them?</source>
        <translation>项目有未保存的更改。要保存吗？</translation>
    </message>
    <message>
        <source>Untitled</source>
        <translation>未命名</translation>
    </message>
    <message>
        <source>Open a project</source>
        <translation>打开项目</translation>
    </message>
    <message>
        <source>Projects (*.json);;All files (*)</source>
        <translation>项目 (*.json);;所有文件 (*)</translation>
    </message>
    <message>
        <source>Save the project</source>
        <translation>保存项目</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>不保存</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>%1 cannot be written: another program has changed or removed it</source>
        <translation>无法写入 %1：其他程序已更改或删除它</translation>
    </message>
    <message>
        <source>%1
Save the project all the same?</source>
        <translation>%1
仍要保存项目吗？</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>重新加载</translation>
    </message>
    <message>
        <source>Compare...</source>
        <translation>比较...</translation>
    </message>
    <message>
        <source>%1 is not replaced, because it is no project</source>
        <translation>未替换 %1，因为它不是项目</translation>
    </message>
    <message>
        <source>%1 cannot be written: it is not a regular file</source>
        <translation>无法写入 %1：它不是普通文件</translation>
    </message>
    <message>
        <source>%1 cannot be written: the workbench writes something else there</source>
        <translation>无法写入 %1：工作台正在向其中写入其他内容</translation>
    </message>
    <message>
        <source>%1 cannot be written: it is the open project</source>
        <translation>无法写入 %1：它是已打开的项目</translation>
    </message>
    <message>
        <source>The project has unsaved changes. Discard them?</source>
        <translation>项目有未保存的更改。要放弃吗？</translation>
    </message>
</context>
<context>
    <name>FindingsLabel</name>
    <message>
        <source>Findings: %1 breaches, %2 hints</source>
        <translation>发现：%1 个违约，%2 个提示</translation>
    </message>
</context>
<context>
    <name>FormDialog</name>
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
    <name>Inspector</name>
    <message>
        <source>Nobody can connect to %1: %2</source>
        <translation>无法连接到 %1：%2</translation>
    </message>
    <message>
        <source>the file that is there is not a socket</source>
        <translation>该处的文件不是套接字</translation>
    </message>
    <message>
        <source>another program listens there</source>
        <translation>另一个程序正在该处监听</translation>
    </message>
</context>
<context>
    <name>LayerCommands</name>
    <message>
        <source>Target selection area</source>
        <translation>目标选择区</translation>
    </message>
    <message>
        <source>There is no panel.</source>
        <translation>没有面板。</translation>
    </message>
</context>
<context>
    <name>LockDialog</name>
    <message>
        <source>Lock by key</source>
        <translation>按键值锁定</translation>
    </message>
    <message>
        <source>Lock</source>
        <translation>锁定</translation>
    </message>
    <message>
        <source>Unlock</source>
        <translation>解锁</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>应用</translation>
    </message>
    <message>
        <source>&amp;Key</source>
        <translation>键值(&amp;K)</translation>
    </message>
    <message>
        <source>&amp;Do</source>
        <translation>操作(&amp;D)</translation>
    </message>
</context>
<context>
    <name>LogPanel</name>
    <message>
        <source>Filter: words to find, -word to leave out</source>
        <translation>筛选：要查找的词，-词 表示排除</translation>
    </message>
    <message>
        <source>Log filter</source>
        <translation>日志筛选</translation>
    </message>
    <message>
        <source>All kinds</source>
        <translation>全部类型</translation>
    </message>
    <message>
        <source>Calls</source>
        <translation>调用</translation>
    </message>
    <message>
        <source>Events</source>
        <translation>事件</translation>
    </message>
    <message>
        <source>Log records</source>
        <translation>日志记录</translation>
    </message>
    <message>
        <source>Kind of line</source>
        <translation>行的类型</translation>
    </message>
    <message>
        <source>Follow</source>
        <translation>跟随</translation>
    </message>
    <message>
        <source>Keep the latest line in sight</source>
        <translation>始终显示最新一行</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>清空</translation>
    </message>
    <message>
        <source>Empty the log</source>
        <translation>清空日志</translation>
    </message>
    <message>
        <source>Live log</source>
        <translation>实时日志</translation>
    </message>
    <message>
        <source>%1 of %2 lines</source>
        <translation>%1 / %2 行</translation>
    </message>
    <message>
        <source>Painting</source>
        <translation>绘制</translation>
    </message>
    <message>
        <source>Show what the panel asks while it paints</source>
        <translation>显示面板在绘制时的询问</translation>
    </message>
    <message>
        <source>Copy lines</source>
        <translation>复制行</translation>
    </message>
    <message>
        <source>Export...</source>
        <translation>导出...</translation>
    </message>
    <message>
        <source>Write the lines that are shown to a file</source>
        <translation>将显示的行写入文件</translation>
    </message>
    <message>
        <source>Export the log</source>
        <translation>导出日志</translation>
    </message>
    <message>
        <source>Text files (*.txt);;All files (*)</source>
        <translation>文本文件 (*.txt);;所有文件 (*)</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation>无法写入 %1：%2</translation>
    </message>
    <message>
        <source>Findings</source>
        <translation>发现</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Live log</source>
        <translation>实时日志</translation>
    </message>
    <message>
        <source>Faults</source>
        <translation>故障</translation>
    </message>
    <message>
        <source>Docks</source>
        <translation>停靠窗口</translation>
    </message>
</context>
<context>
    <name>NetworkDialog</name>
    <message>
        <source>Network</source>
        <translation>网络</translation>
    </message>
    <message>
        <source> ms</source>
        <translation> 毫秒</translation>
    </message>
    <message>
        <source>&amp;Detect simulated processors</source>
        <translation>检测模拟处理器(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Port</source>
        <translation>端口(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Wait for answers</source>
        <translation>等待应答时间(&amp;W)</translation>
    </message>
    <message>
        <source>&amp;Ask whether alive every</source>
        <translation>询问是否在线的间隔(&amp;A)</translation>
    </message>
    <message>
        <source>Offline after a &amp;silence of</source>
        <translation>无应答多久后视为离线(&amp;S)</translation>
    </message>
    <message>
        <source>The silence has to be at least twice as long as the time between two questions.</source>
        <translation>无应答时间至少应为询问间隔的两倍。</translation>
    </message>
</context>
<context>
    <name>PanelLibrary</name>
    <message>
        <source>The panel&apos;s library %1 does not exist. Build it, or name another with --library.</source>
        <translation>面板库 %1 不存在。请先构建，或用 --library 指定另一个。</translation>
    </message>
    <message>
        <source>The panel&apos;s library %1 cannot be loaded: %2</source>
        <translation>无法加载面板库 %1：%2</translation>
    </message>
    <message>
        <source>The library %1 is not the panel&apos;s: it has no TargetSelectArea_Init.</source>
        <translation>库 %1 不是面板库：其中没有 TargetSelectArea_Init。</translation>
    </message>
</context>
<context>
    <name>PictureFile</name>
    <message>
        <source>%1 cannot be written: what is there is not a picture of the workbench</source>
        <translation>无法写入 %1：该处已有的文件不是工作台的图片</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation>无法写入 %1：%2</translation>
    </message>
</context>
<context>
    <name>ProjectChecks</name>
    <message>
        <source>the record has no identity</source>
        <translation>记录没有标识</translation>
    </message>
    <message>
        <source>identity %1 occurs twice</source>
        <translation>标识 %1 重复出现</translation>
    </message>
    <message>
        <source>a project holds at most %1 processors; this one has %2</source>
        <translation>项目最多容纳 %1 个处理器；此项目有 %2 个</translation>
    </message>
    <message>
        <source>there is no group %1</source>
        <translation>没有分组 %1</translation>
    </message>
    <message>
        <source>there is no processor %1</source>
        <translation>没有处理器 %1</translation>
    </message>
    <message>
        <source>there is no device set %1</source>
        <translation>没有设备组 %1</translation>
    </message>
    <message>
        <source>the name has more than %1 characters</source>
        <translation>名称超过 %1 个字符</translation>
    </message>
    <message>
        <source>a project holds at most %1 groups; this one has %2</source>
        <translation>一个项目最多有 %1 个分组；此项目有 %2 个</translation>
    </message>
    <message>
        <source>a whole number from %1 to %2 is expected</source>
        <translation>应为 %1 到 %2 之间的整数</translation>
    </message>
    <message>
        <source>a project holds at most %1 faults; this one has %2</source>
        <translation>一个项目最多有 %1 条故障规则；此项目有 %2 条</translation>
    </message>
    <message>
        <source>at least twice %1 is expected</source>
        <translation>至少应为 %1 的两倍</translation>
    </message>
    <message>
        <source>the text has more than %1 characters</source>
        <translation>文本超过 %1 个字符</translation>
    </message>
    <message>
        <source>a project holds at most %1 device sets; this one has %2</source>
        <translation>一个项目最多包含 %1 个设备组；此项目有 %2 个</translation>
    </message>
</context>
<context>
    <name>ProjectComparison</name>
    <message>
        <source>Processor %1</source>
        <translation>处理器 %1</translation>
    </message>
    <message>
        <source>Group %1</source>
        <translation>分组 %1</translation>
    </message>
    <message>
        <source>Device set %1</source>
        <translation>设备组 %1</translation>
    </message>
    <message>
        <source>exists</source>
        <translation>存在</translation>
    </message>
    <message>
        <source>order</source>
        <translation>顺序</translation>
    </message>
    <message>
        <source>another</source>
        <translation>不同</translation>
    </message>
    <message>
        <source>IP list</source>
        <translation>IP 列表</translation>
    </message>
    <message>
        <source>Groups</source>
        <translation>分组</translation>
    </message>
    <message>
        <source>Processors</source>
        <translation>处理器</translation>
    </message>
    <message>
        <source>Device sets</source>
        <translation>设备组</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>项目</translation>
    </message>
    <message>
        <source>Handler answers</source>
        <translation>宿主应答</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>网络</translation>
    </message>
</context>
<context>
    <name>ProjectJson</name>
    <message>
        <source>the IP list holds at most %1 entries</source>
        <translation>IP 列表最多容纳 %1 项</translation>
    </message>
    <message>
        <source>an entry such as %1 is expected</source>
        <translation>应为条目，如 %1</translation>
    </message>
    <message>
        <source>address %1 occurs twice</source>
        <translation>地址 %1 出现两次</translation>
    </message>
    <message>
        <source>the name has more than %1 characters</source>
        <translation>名称超过 %1 个字符</translation>
    </message>
    <message>
        <source>line %1, column %2: %3</source>
        <translation>第 %1 行第 %2 列：%3</translation>
    </message>
    <message>
        <source>a list is expected</source>
        <translation>应为列表</translation>
    </message>
    <message>
        <source>the file has version %1; this program reads up to version %2</source>
        <translation>文件版本为 %1；本程序最高可读取版本 %2</translation>
    </message>
    <message>
        <source>the version number is missing</source>
        <translation>缺少版本号</translation>
    </message>
    <message>
        <source>the file is larger than %1 MiB</source>
        <translation>文件大于 %1 MiB</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2</source>
        <translation>无法读取 %1：%2</translation>
    </message>
    <message>
        <source>it is a directory</source>
        <translation>它是目录</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1，%2</translation>
    </message>
    <message>
        <source>%1 cannot be written: it is not a regular file</source>
        <translation>无法写入 %1：它不是普通文件</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation>无法写入 %1：%2</translation>
    </message>
    <message>
        <source>this field occurs twice</source>
        <translation>此字段出现了两次</translation>
    </message>
    <message>
        <source>it is not a regular file</source>
        <translation>它不是普通文件</translation>
    </message>
    <message>
        <source>%1 cannot be written: the file is larger than %2 MiB</source>
        <translation>无法写入 %1：文件大于 %2 MiB</translation>
    </message>
</context>
<context>
    <name>Prompts</name>
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
    <name>RaiseEventDialog</name>
    <message>
        <source>Raise event</source>
        <translation>发出事件</translation>
    </message>
    <message>
        <source>none</source>
        <translation>无</translation>
    </message>
    <message>
        <source>whole number</source>
        <translation>整数</translation>
    </message>
    <message>
        <source>identity</source>
        <translation>标识</translation>
    </message>
    <message>
        <source>list of identities</source>
        <translation>标识列表</translation>
    </message>
    <message>
        <source>device sets of the project</source>
        <translation>项目的设备组</translation>
    </message>
    <message>
        <source>identity and record</source>
        <translation>标识与记录</translation>
    </message>
    <message>
        <source>&amp;Number</source>
        <translation>编号(&amp;N)</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Argument &amp;type</source>
        <translation>参数类型(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Argument</source>
        <translation>参数(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Raise</source>
        <translation>发出(&amp;R)</translation>
    </message>
    <message>
        <source>The argument has to be an identity such as %1; a list takes several, parted by commas.</source>
        <translation>参数必须是标识，如 %1；列表可含多个，以逗号分隔。</translation>
    </message>
    <message>
        <source>The argument has to be a whole number.</source>
        <translation>参数必须是整数。</translation>
    </message>
</context>
<context>
    <name>RecordsModel</name>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>编号</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>地址</translation>
    </message>
    <message>
        <source>State</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>Addressed by</source>
        <translation>寻址方式</translation>
    </message>
    <message>
        <source>Redundancy</source>
        <translation>冗余</translation>
    </message>
    <message>
        <source>Monitor</source>
        <translation>监控</translation>
    </message>
    <message>
        <source>Front panel</source>
        <translation>前面板</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1（%2）</translation>
    </message>
    <message>
        <source>%1 (%2), front panel lit</source>
        <translation>%1（%2），前面板点亮</translation>
    </message>
    <message>
        <source>none</source>
        <translation>无</translation>
    </message>
    <message>
        <source>has a backup</source>
        <translation>有备份</translation>
    </message>
    <message>
        <source>backup</source>
        <translation>备份</translation>
    </message>
    <message>
        <source>online</source>
        <translation>在线</translation>
    </message>
    <message>
        <source>offline</source>
        <translation>离线</translation>
    </message>
    <message>
        <source>address</source>
        <translation>地址</translation>
    </message>
    <message>
        <source>number</source>
        <translation>编号</translation>
    </message>
    <message>
        <source>warning</source>
        <translation>告警</translation>
    </message>
    <message>
        <source>lit</source>
        <translation>点亮</translation>
    </message>
    <message>
        <source>%1 (current)</source>
        <translation>%1（当前）</translation>
    </message>
</context>
<context>
    <name>RecordsPanel</name>
    <message>
        <source>IP list (entries: %1)</source>
        <translation>IP 列表（条目：%1）</translation>
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
        <source>The project is empty.
Add processors with Change &gt; Add processor.</source>
        <translation>项目为空。
请用“更改 &gt; 添加处理器”添加处理器。</translation>
    </message>
    <message>
        <source>Project (groups: %1, processors: %2)</source>
        <translation>项目（分组：%1，处理器：%2）</translation>
    </message>
    <message>
        <source>Fields of the selected record</source>
        <translation>所选记录的字段</translation>
    </message>
    <message>
        <source>Field</source>
        <translation>字段</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>值</translation>
    </message>
    <message>
        <source>Records of the project</source>
        <translation>项目的记录</translation>
    </message>
    <message>
        <source>%1 (does not change)</source>
        <translation>%1（不会改变）</translation>
    </message>
</context>
<context>
    <name>RecoveryFile</name>
    <message>
        <source>%1 cannot be locked</source>
        <translation>无法锁定 %1</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation>无法写入 %1：%2</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2</source>
        <translation>无法读取 %1：%2</translation>
    </message>
    <message>
        <source>%1, line 1: this is not the copy of a project</source>
        <translation>%1，第 1 行：这不是项目的副本</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1，%2</translation>
    </message>
    <message>
        <source>%1 cannot be written: the project is larger than %2 MiB</source>
        <translation>无法写入 %1：项目大于 %2 MiB</translation>
    </message>
</context>
<context>
    <name>ReplacedFile</name>
    <message>
        <source>it is not a regular file</source>
        <translation>它不是普通文件</translation>
    </message>
    <message>
        <source>it is being written already</source>
        <translation>该文件正在被写入</translation>
    </message>
</context>
<context>
    <name>Replay</name>
    <message>
        <source>%1: the panel made the %2 recorded requests (%3 events, calls and gestures, %4 questions)</source>
        <translation>%1：面板发出了录制的 %2 个请求（事件、调用和操作 %3 个，询问 %4 个）</translation>
    </message>
    <message>
        <source>line %1</source>
        <translation>第 %1 行</translation>
    </message>
    <message>
        <source>end</source>
        <translation>结尾</translation>
    </message>
    <message>
        <source>%1, %2: the replay differs
  recorded: %3
  came:     %4</source>
        <translation>%1，%2：重放与录制不同
  录制：%3
  实际：%4</translation>
    </message>
    <message>
        <source>%1: there is nothing to replay</source>
        <translation>%1：没有可重放的内容</translation>
    </message>
    <message>
        <source>Replaying %1</source>
        <translation>正在重放 %1</translation>
    </message>
    <message>
        <source>%1 questions were not recorded and got default answers; the first: %2</source>
        <translation>%1 个询问没有记录，已用默认值回答；第一个：%2</translation>
    </message>
    <message>
        <source>the replay was ended before its end</source>
        <translation>重放未到结尾就被结束</translation>
    </message>
</context>
<context>
    <name>ReplayPlayer</name>
    <message>
        <source>nothing within %1 s</source>
        <translation>%1 秒内没有动静</translation>
    </message>
    <message>
        <source>the panel does not show this widget</source>
        <translation>面板没有显示该控件</translation>
    </message>
    <message>
        <source>an event before has not returned</source>
        <translation>前一个事件尚未返回</translation>
    </message>
    <message>
        <source>the library returns no panel</source>
        <translation>库没有返回面板</translation>
    </message>
    <message>
        <source>this cannot be called: there is no panel, or no such operation</source>
        <translation>无法调用：没有面板，或没有该操作</translation>
    </message>
</context>
<context>
    <name>ReplayProgress</name>
    <message>
        <source>no more requests</source>
        <translation>没有更多请求</translation>
    </message>
</context>
<context>
    <name>ReplayWindow</name>
    <message>
        <source>Workbench: replay</source>
        <translation>工作台：重放</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>结果</translation>
    </message>
</context>
<context>
    <name>TraceFile</name>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation>无法写入 %1：%2</translation>
    </message>
    <message>
        <source>the file that is there is not a trace</source>
        <translation>该处的文件不是跟踪记录</translation>
    </message>
</context>
<context>
    <name>TraceModel</name>
    <message>
        <source>Time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>类型</translation>
    </message>
    <message>
        <source>Thread</source>
        <translation>线程</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>内容</translation>
    </message>
    <message>
        <source>Call</source>
        <translation>调用</translation>
    </message>
    <message>
        <source>Event</source>
        <translation>事件</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>日志</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>时长</translation>
    </message>
    <message>
        <source>Finding</source>
        <translation>发现</translation>
    </message>
</context>
<context>
    <name>WorkbenchHandler</name>
    <message>
        <source>Host: make current</source>
        <translation>宿主：设为当前</translation>
    </message>
    <message>
        <source>Host: show in log</source>
        <translation>宿主：在日志中显示</translation>
    </message>
</context>
</TS>
