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
</context>
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
