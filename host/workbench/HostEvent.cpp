#include "host/workbench/HostEvent.h"

#include "host/workbench/Project.h"

#include <QStringList>

#include <type_traits>

namespace {

constexpr int kIdsShown = 4;

struct ArgumentText
{
    QString operator()(std::monostate) const { return {}; }
    QString operator()(int value) const { return QString::number(value); }
    QString operator()(const QUuid& id) const { return shortId(id); }
    QString operator()(const QList<QUuid>& ids) const { return shortIds(ids); }
    QString operator()(const HostEvent::DeviceSets& sets) const
    {
        return QStringLiteral("current %1, %2 sets")
            .arg(shortId(fromGuid(sets.first)))
            .arg(sets.second.size());
    }
    QString operator()(const HostEvent::ChangedProcessor& changed) const
    {
        return QStringLiteral("%1, \"%2\"").arg(shortId(changed.first), changed.second.name);
    }
};

} // namespace

HostEvent::HostEvent(quint32 number, Argument argument)
    : m_number(number)
    , m_argument(std::move(argument))
{
}

HostEvent HostEvent::forIds(quint32 one, quint32 several, const QList<QUuid>& ids)
{
    if (ids.size() == 1)
        return HostEvent(one, ids.first());
    return HostEvent(several, ids);
}

void HostEvent::deliver(CSubject& subject) const
{
    std::visit(
        [&](const auto& value) {
            using Value = std::decay_t<decltype(value)>;
            if constexpr (std::is_same_v<Value, std::monostate>)
                subject.Notify<>(m_number);
            else if constexpr (std::is_same_v<Value, DeviceSets>)
                subject.Notify<GUID, QList<SDeviceSetInfo>>(m_number, value.first, value.second);
            else if constexpr (std::is_same_v<Value, ChangedProcessor>)
                subject.Notify<QUuid, SPrjProcessor>(m_number, value.first, value.second);
            else
                subject.Notify<Value>(m_number, value);
        },
        m_argument);
}

QString HostEvent::text() const
{
    return QStringLiteral("%1 %2(%3)")
        .arg(m_number)
        .arg(name(m_number), std::visit(ArgumentText(), m_argument));
}

QString HostEvent::name(quint32 number)
{
    switch (number) {
    case DetectStrategyChanged:
        return QStringLiteral("DetectStrategyChanged");
    case DeviceSetsChanged:
        return QStringLiteral("DeviceSetsChanged");
    case ProjectReset:
        return QStringLiteral("ProjectReset");
    case GroupAdded:
        return QStringLiteral("GroupAdded");
    case ProcessorAdded:
        return QStringLiteral("ProcessorAdded");
    case ProcessorsAdded:
        return QStringLiteral("ProcessorsAdded");
    case NodeRemoved:
        return QStringLiteral("NodeRemoved");
    case NodesRemoved:
        return QStringLiteral("NodesRemoved");
    case ProcessorChanged:
        return QStringLiteral("ProcessorChanged");
    case ProjectProcessorChanged:
        return QStringLiteral("ProjectProcessorChanged");
    case LanUsbChanged:
        return QStringLiteral("LanUsbChanged");
    case CurrentProcessorChanged:
        return QStringLiteral("CurrentProcessorChanged");
    case MonitorWarningChanged:
        return QStringLiteral("MonitorWarningChanged");
    case MonitorStateChanged:
        return QStringLiteral("MonitorStateChanged");
    default:
        return QStringLiteral("Event");
    }
}

QString shortId(const QUuid& id)
{
    // Identities that a host numbers on differ in their last digits, random ones in all.
    const QString digits = id.toString(QUuid::WithoutBraces);
    return id.isNull() ? QStringLiteral("{}")
                       : QStringLiteral("{%1…%2}").arg(digits.left(4), digits.right(4));
}

QString shortIds(const QList<QUuid>& ids)
{
    QStringList texts;
    for (const QUuid& id : ids.mid(0, kIdsShown))
        texts.append(shortId(id));
    if (ids.size() > kIdsShown)
        texts.append(QStringLiteral("…"));
    return QStringLiteral("%1: [%2]").arg(ids.size()).arg(texts.join(QStringLiteral(", ")));
}
