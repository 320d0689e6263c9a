#include "tests/support/TestRecords.h"

QUuid testId(quint32 n)
{
    return n == 0 ? QUuid() : QUuid(n, 0x1, 0x2, 3, 4, 5, 6, 7, 8, 9, 10);
}

ProcessorGroupNode testGroup(quint32 n, const QString& name)
{
    ProcessorGroupNode group;
    group.id = testId(n);
    group.name = name.isEmpty() ? QStringLiteral("G%1").arg(n) : name;
    return group;
}

ProcessorNode testProcessor(quint32 n, quint32 group)
{
    ProcessorNode processor;
    processor.id = testId(n);
    processor.name = QString::number(n);
    processor.number = static_cast<qint32>(n) - 1;
    processor.groupId = testId(group);
    return processor;
}

ProcessorNode testIpProcessor(quint32 n, quint32 address, quint32 group)
{
    ProcessorNode processor = testProcessor(n, group);
    processor.reachedByIp = true;
    processor.ipAddress = address;
    return processor;
}

SDeviceSetInfo deviceSet(quint32 n)
{
    SDeviceSetInfo set{};
    set.id.Data1 = n;
    return set;
}
