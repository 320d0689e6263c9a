#include "host/workbench/events/HostEvent.h"

#include "host/workbench/events/EventNumber.h"
#include "host/workbench/project/Guid.h"
#include "host/workbench/trace/ShortIds.h"

#include <QStringList>

#include <type_traits>

namespace {

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
        .arg(EventNumber::name(m_number), std::visit(ArgumentText(), m_argument));
}
