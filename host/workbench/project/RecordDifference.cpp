#include "host/workbench/project/RecordDifference.h"

#include "host/workbench/project/FieldJson.h"
#include "host/workbench/project/RecordFields.h"

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

} // namespace

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
