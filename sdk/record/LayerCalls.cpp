#include "sdk/record/LayerCalls.h"

#include "sdk/record/TraceValues.h"

#include <QJsonArray>
#include <QVariant>

#include <functional>
#include <map>

namespace LayerCalls {
namespace {

using Layer = ITargetSelectAreaInterface;
using Repeat = std::function<QJsonValue(Layer&, const QJsonObject&)>;

QJsonValue nothing()
{
    return {QJsonValue::Undefined};
}

QUuid idOf(const QJsonObject& arguments)
{
    const QString id = arguments.value(QLatin1String("id")).toString();
    return QUuid::fromString(id);
}

int keyOf(const QJsonObject& arguments)
{
    return arguments.value(QLatin1String("key")).toInt();
}

bool flagOf(const QJsonObject& arguments, const char* name)
{
    return arguments.value(QLatin1String(name)).toBool();
}

std::vector<LanUsbProcessorInfo> processorsOf(const QJsonObject& arguments)
{
    std::vector<LanUsbProcessorInfo> processors;
    const QJsonArray items = arguments.value(QLatin1String("processors")).toArray();
    for (const QJsonValue& item : items) {
        const auto text = [&](const char* name) {
            return item.toObject().value(QLatin1String(name)).toString().toStdString();
        };
        processors.push_back({text("ip"), text("processorName"), text("deviceName")});
    }
    return processors;
}

const std::map<QString, Repeat>& repeats()
{
    static const std::map<QString, Repeat> all{
        {QStringLiteral("Initialize"),
         [](Layer& layer, const QJsonObject&) { return layer.Initialize(); }},
        {QStringLiteral("Reconnect"),
         [](Layer& layer, const QJsonObject&) { return layer.Reconnect(); }},
        {QStringLiteral("DetectDevices"),
         [](Layer& layer, const QJsonObject&) {
             return QJsonValue(static_cast<qint64>(layer.DetectDevices()));
         }},
        {QStringLiteral("GetProcessorTree"),
         [](Layer& layer, const QJsonObject& arguments) {
             ProcessorTreeSnapshot copy;
             layer.GetProcessorTree(copy, flagOf(arguments, "onlyAccepted"));
             return tree(copy);
         }},
        {QStringLiteral("SetReadOnly"),
         [](Layer& layer, const QJsonObject& arguments) {
             layer.SetReadOnly(flagOf(arguments, "readOnly"));
             return nothing();
         }},
        {QStringLiteral("SetCurrentProcessor"),
         [](Layer& layer, const QJsonObject& arguments) {
             layer.SetCurrentProcessor(idOf(arguments));
             return nothing();
         }},
        {QStringLiteral("SetOperationLock"),
         [](Layer& layer, const QJsonObject& arguments) {
             layer.SetOperationLock(keyOf(arguments), flagOf(arguments, "locked"));
             return nothing();
         }},
        {QStringLiteral("RemoveAllGroups"),
         [](Layer& layer, const QJsonObject&) {
             layer.RemoveAllGroups();
             return nothing();
         }},
        {QStringLiteral("UpdateMonitorWarningState"),
         [](Layer& layer, const QJsonObject&) {
             layer.UpdateMonitorWarningState();
             return nothing();
         }},
        {QStringLiteral("ApplyOperationLock"),
         [](Layer& layer, const QJsonObject& arguments) {
             layer.ApplyOperationLock(keyOf(arguments));
             return nothing();
         }},
        {QStringLiteral("ShowLanUsbWarning"),
         [](Layer& layer, const QJsonObject& arguments) {
             layer.ShowLanUsbWarning(processorsOf(arguments));
             return nothing();
         }},
        {QStringLiteral("GetAllProcessorNodes"),
         [](Layer& layer, const QJsonObject&) {
             return TraceValues::toJson(QVariant::fromValue(layer.GetAllProcessorNodes()));
         }},
    };
    return all;
}

} // namespace

QJsonObject warning(const std::vector<LanUsbProcessorInfo>& processors)
{
    QJsonArray items;
    for (const LanUsbProcessorInfo& info : processors) {
        items.append(QJsonObject{
            {QStringLiteral("ip"), QString::fromStdString(info.ip)},
            {QStringLiteral("processorName"), QString::fromStdString(info.processorName)},
            {QStringLiteral("deviceName"), QString::fromStdString(info.deviceName)}});
    }
    return {{QStringLiteral("processors"), items}};
}

QJsonValue tree(const ProcessorTreeSnapshot& tree)
{
    return QJsonObject{
        {QStringLiteral("groups"), TraceValues::toJson(QVariant::fromValue(tree.groups))},
        {QStringLiteral("processors"), TraceValues::toJson(QVariant::fromValue(tree.processors))}};
}

bool repeat(ITargetSelectAreaInterface& layer, const QString& name, const QJsonObject& arguments,
            QJsonValue& answer)
{
    const auto found = repeats().find(name);
    if (found == repeats().end())
        return false;
    answer = found->second(layer, arguments);
    return true;
}

} // namespace LayerCalls
