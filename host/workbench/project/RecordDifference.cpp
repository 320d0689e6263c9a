#include "host/workbench/project/RecordDifference.h"

#include "host/workbench/project/FieldJson.h"
#include "host/workbench/project/Guid.h"
#include "host/workbench/project/RecordFields.h"

#include <QCoreApplication>
#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <QLocale>

namespace {

QJsonObject fields(const ProcessorNode& node)
{
    FieldWriter writer;
    visitProcessorFields(node, writer);
    return writer.object;
}

QJsonObject fields(const ProcessorGroupNode& group)
{
    FieldWriter writer;
    visitGroupFields(group, writer);
    return writer.object;
}

QJsonObject fields(const DeviceSet& set)
{
    FieldWriter writer;
    visitDeviceSetFields(set, writer);
    return writer.object;
}

QJsonObject fields(const NetworkSettings& network)
{
    FieldWriter writer;
    visitNetworkFields(network, writer);
    return writer.object;
}

QJsonObject fields(const HandlerAnswers& answers)
{
    FieldWriter writer;
    visitAnswerFields(answers, writer);
    return writer.object;
}

template <typename Record>
QStringList difference(const Record& one, const Record& other)
{
    const QJsonObject first = fields(one);
    const QJsonObject second = fields(other);
    QStringList names;
    for (auto it = first.constBegin(); it != first.constEnd(); ++it) {
        if (it.value() != second.value(it.key()))
            names.append(it.key());
    }
    return names;
}

struct ProjectComparisonMessages
{
    Q_DECLARE_TR_FUNCTIONS(ProjectComparison)
};

QString valueText(const QJsonValue& value)
{
    if (value.isBool())
        return value.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    if (value.isDouble())
        return QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    if (!value.isArray())
        return value.toString();
    QStringList parts;
    const QJsonArray all = value.toArray();
    for (const QJsonValue& part : all)
        parts.append(valueText(part));
    return parts.join(QStringLiteral(", "));
}

QUuid identity(const DeviceSet& set)
{
    return fromGuid(set.info.id);
}

template <typename Node>
QUuid identity(const Node& node)
{
    return node.id;
}

QString title(const ProcessorNode& node)
{
    return ProjectComparisonMessages::tr("Processor %1").arg(node.name);
}

QString title(const ProcessorGroupNode& group)
{
    return ProjectComparisonMessages::tr("Group %1").arg(group.name);
}

QString title(const DeviceSet& set)
{
    return ProjectComparisonMessages::tr("Device set %1").arg(set.text);
}

/// Collects the differences of two projects.
class Comparison final
{
public:
    template <typename Record>
    void compareLists(const QList<Record>& one, const QList<Record>& other, const QString& name)
    {
        QHash<QUuid, const Record*> others;
        QList<QUuid> order;
        for (const Record& record : other) {
            others.insert(identity(record), &record);
            order.append(identity(record));
        }
        QList<QUuid> kept;
        for (const Record& record : one) {
            const Record* found = others.take(identity(record));
            if (found) {
                kept.append(identity(record));
                compareFields(title(record), fields(record), fields(*found));
            } else {
                order.removeAll(identity(record));
                differences.append(
                    {title(record), {}, ProjectComparisonMessages::tr("exists"), {}});
            }
        }
        for (const Record& record : other) {
            if (!others.contains(identity(record)))
                continue;
            order.removeAll(identity(record));
            differences.append({title(record), {}, {}, ProjectComparisonMessages::tr("exists")});
        }
        if (kept != order)
            differences.append({name,
                                ProjectComparisonMessages::tr("order"),
                                {},
                                ProjectComparisonMessages::tr("another")});
    }

    void compareFields(const QString& record, const QJsonObject& one, const QJsonObject& other)
    {
        for (auto it = one.constBegin(); it != one.constEnd(); ++it)
            compare(record, it.key(), valueText(it.value()), valueText(other.value(it.key())));
    }

    void compare(const QString& record, const QString& field, const QString& one,
                 const QString& other)
    {
        if (one != other)
            differences.append({record, field, one, other});
    }

    QList<ProjectDifference> differences;
};

QString currentText(const Project& project)
{
    const ProcessorNode* node = project.processor(project.currentProcessor);
    return node ? node->name : QString();
}

QString faultTexts(const Project& project)
{
    QStringList texts;
    for (const FaultRule& rule : project.faults)
        texts.append(faultText(rule));
    return texts.join(QStringLiteral("; "));
}

void compareIpLists(Comparison& found, const IpList& one, const IpList& other)
{
    for (const IpEntry& entry : one.entries()) {
        if (!other.entries().contains(entry))
            found.compare(ProjectComparisonMessages::tr("IP list"), {}, ipEntryText(entry), {});
    }
    for (const IpEntry& entry : other.entries()) {
        if (!one.entries().contains(entry))
            found.compare(ProjectComparisonMessages::tr("IP list"), {}, {}, ipEntryText(entry));
    }
    const auto kept = [](const IpList& list, const IpList& both) {
        QStringList texts;
        for (const IpEntry& entry : list.entries()) {
            if (both.entries().contains(entry))
                texts.append(ipEntryText(entry));
        }
        return texts;
    };
    if (kept(one, other) != kept(other, one))
        found.compare(ProjectComparisonMessages::tr("IP list"),
                      ProjectComparisonMessages::tr("order"), {},
                      ProjectComparisonMessages::tr("another"));
}

} // namespace

QList<ProjectDifference> compareProjects(const Project& one, const Project& other)
{
    Comparison found;
    found.compareLists(one.groups, other.groups, ProjectComparisonMessages::tr("Groups"));
    found.compareLists(one.processors, other.processors,
                       ProjectComparisonMessages::tr("Processors"));
    found.compareLists(one.deviceSets, other.deviceSets,
                       ProjectComparisonMessages::tr("Device sets"));
    const QString project = ProjectComparisonMessages::tr("Project");
    found.compare(project, QStringLiteral("currentProcessor"), currentText(one),
                  currentText(other));
    found.compare(project, QStringLiteral("currentDeviceSet"),
                  fromGuid(one.currentDeviceSet).toString(),
                  fromGuid(other.currentDeviceSet).toString());
    compareIpLists(found, one.ipList, other.ipList);
    found.compareFields(ProjectComparisonMessages::tr("Handler answers"), fields(one.answers),
                        fields(other.answers));
    found.compareFields(ProjectComparisonMessages::tr("Network"), fields(one.network),
                        fields(other.network));
    found.compare(project, QStringLiteral("faults"), faultTexts(one), faultTexts(other));
    return found.differences;
}

QStringList differentFields(const ProcessorNode& one, const ProcessorNode& other)
{
    return difference(one, other);
}

QStringList differentFields(const ProcessorGroupNode& one, const ProcessorGroupNode& other)
{
    return difference(one, other);
}

QStringList differentFields(const DeviceSet& one, const DeviceSet& other)
{
    return difference(one, other);
}

QStringList differentFields(const HandlerAnswers& one, const HandlerAnswers& other)
{
    return difference(one, other);
}
