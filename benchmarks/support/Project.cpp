#include "benchmarks/support/Project.h"

namespace {

constexpr int kGroupSize = 16;
constexpr quint32 kFirstAddress = 0x0A000001;

QUuid makeId(const QString& name)
{
    return QUuid::createUuidV5(QUuid(), name);
}

} // namespace

Project makeProject(int count)
{
    Project project;
    for (int number = 0; number < count; ++number) {
        if (number % kGroupSize == 0) {
            ProcessorGroupNode group;
            group.name = QStringLiteral("Group %1").arg(project.groups.size() + 1);
            group.id = makeId(group.name);
            project.groups.append(group);
        }
        ProcessorGroupNode& group = project.groups.last();
        ProcessorNode processor;
        processor.name = QStringLiteral("Processor %1").arg(number + 1);
        processor.id = makeId(processor.name);
        processor.number = number;
        processor.groupId = group.id;
        processor.reachedByIp = number % 4 != 3;
        processor.ipAddress = kFirstAddress + static_cast<quint32>(number);
        processor.hostText14 = QStringLiteral("SN-%1").arg(number, 8, 10, QLatin1Char('0'));
        group.processors.append(processor);
        project.processors.append(processor);
    }
    return project;
}
