#include "tests/workbench/SampleRecords.h"

#include "host/workbench/project/Guid.h"

#include <limits>

QUuid sampleId(quint32 n)
{
    return n == 0 ? QUuid() : QUuid(n, 0x10, 0x20, 1, 2, 3, 4, 5, 6, 7, 8);
}

ProcessorNode unusualProcessor(quint32 n, quint32 group)
{
    ProcessorNode node;
    node.id = sampleId(n);
    node.name = QString::fromUtf8("大厅 \"%1\" \\ \n\t\u00e9 \U0001F39B").arg(n);
    node.number = std::numeric_limits<qint32>::min();
    node.groupId = sampleId(group);
    node.hostAttribute5 = 5;
    node.hostAttribute6 = std::numeric_limits<qint32>::max();
    node.hostAttribute7 = -7;
    node.hostAttribute8 = std::numeric_limits<qint64>::max() - static_cast<qint64>(n);
    node.redundancyMode = 2;
    node.hostAttribute10 = {1, 2, 3, std::numeric_limits<quint32>::max()};
    node.hostAttribute11 = 11;
    node.hostAttribute12 = 59.94F;
    node.hostFlag13 = true;
    node.hostText14 = QStringLiteral("fourteen");
    node.hostAttribute15 = 15;
    node.hostAttribute16 = 16;
    node.hostFlag17 = true;
    node.hostAttribute18 = 18;
    node.hostAttribute19 = 19;
    node.hostAttribute20 = std::numeric_limits<quint32>::max();
    node.hostAttribute21 = std::numeric_limits<quint16>::max();
    node.hostAttribute22 = 22;
    node.hostFlag23 = true;
    node.hostText24 = QStringLiteral("twenty-four");
    node.ipAddress = 0xC0A80001;
    node.secondAddress = 0xFFFFFFFE;
    node.online = true;
    node.reachedByIp = true;
    return node;
}

QStringList awkwardNames()
{
    return {QString(),
            QStringLiteral("Left (wing)"),
            QStringLiteral("("),
            QStringLiteral(")("),
            QStringLiteral("())"),
            QStringLiteral(","),
            QStringLiteral(" a, b,,c "),
            QStringLiteral("\"quoted\" 'so' `too`"),
            QStringLiteral("10.0.0.1(A)"),
            QStringLiteral("\t"),
            QStringLiteral("C:\\%1;&<>"),
            QString::fromUtf8("大厅左侧（备用）"),
            QString::fromUtf8("\u00e9 \U0001F39B\U0001F468\u200D\U0001F469"),
            QString(32, QLatin1Char('w'))};
}

Project unusualProject()
{
    Project project;
    for (const quint32 n : {1U, 2U}) {
        ProcessorGroupNode group;
        group.id = sampleId(n);
        group.name = QStringLiteral("Group <%1>").arg(n);
        group.hostAttribute3 = 33;
        group.hostAttribute4 = -44;
        project.groups.append(group);
        DeviceSet set;
        set.info = {toGuid(sampleId(100 + n)), n, std::numeric_limits<quint32>::max()};
        set.text = QStringLiteral("Set %1").arg(n);
        project.deviceSets.append(set);
    }
    project.processors = {unusualProcessor(11, 1), unusualProcessor(12, 2),
                          unusualProcessor(13, 0)};
    project.currentDeviceSet = toGuid(sampleId(102));
    project.currentProcessor = sampleId(12);
    quint32 address = 0x0A000001;
    for (const QString& name : awkwardNames())
        project.ipList.append({address++, name});
    HandlerAnswers& answers = project.answers;
    answers.detectStrategy = 2;
    answers.detectResult = 0xE0832005;
    answers.detectPauseMs = 1;
    answers.selectionMode = 2;
    answers.restrictedMode = true;
    answers.usesIpAddressing = true;
    answers.ipManagementAvailable = false;
    answers.lanUsbMode = true;
    answers.lanUsbAddresses = {0x0A000001, 0xC0A80001};
    answers.nameMaxBytes = 20;
    answers.nameUtf8 = false;
    answers.fixedOutputCount = 16;
    answers.newProcessorOutputs = 4;
    answers.showProcessorMoreButton = false;
    answers.showNodeMoreButton = false;
    answers.canAddProcessors = false;
    answers.addProcessorsEnabled = false;
    answers.canRenameProcessors = false;
    answers.acceptNewNames = false;
    answers.uniqueNames = false;
    answers.blockDelete = true;
    answers.deleteSpares = 2;
    answers.hostReply = HostReply::SecondLater;
    answers.eventsOneByOne = true;
    answers.contextMenuEntries = false;
    answers.confirmDeviceSetChange = false;
    answers.snapshotAcceptsOffline = false;
    answers.frontPanelHighlightAvailable = false;
    answers.ipCheckCode = 0xE0832003;
    answers.ipCheckCount = 3;
    answers.readOnlineCode = 0xE0831028;
    answers.importCode = 0xE0831033;
    project.network = {true, 50000, 70, 80, 900};
    return project;
}

Project smallProject()
{
    Project project;
    for (const quint32 n : {1U, 2U}) {
        ProcessorGroupNode group;
        group.id = sampleId(n);
        group.name = QStringLiteral("G%1").arg(n);
        project.groups.append(group);
    }
    const quint32 groups[] = {1, 1, 2, 0};
    for (quint32 at = 0; at < 4; ++at) {
        ProcessorNode node;
        node.id = sampleId(11 + at);
        node.name = QStringLiteral("P%1").arg(11 + at);
        node.number = static_cast<qint32>(at);
        node.groupId = sampleId(groups[at]);
        if (at < 2) {
            node.ipAddress = 0x0A000001 + at;
            node.reachedByIp = true;
        }
        project.processors.append(node);
    }
    project.currentProcessor = sampleId(11);
    return project;
}
