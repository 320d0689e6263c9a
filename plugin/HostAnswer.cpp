#include "plugin/HostAnswer.h"

#include "plugin/LogCategories.h"
#include "plugin/TargetSelectHandler.h"

namespace {

bool isSame(const std::weak_ptr<IAbstractControlInterface>& one,
            const std::shared_ptr<IAbstractControlInterface>& other)
{
    return !one.owner_before(other) && !other.owner_before(one);
}

template <typename Record>
CHostAnswer<Record> ask(Record (Host::*question)(const QUuid&), const QUuid& id, quint32 event)
{
    const std::weak_ptr<IAbstractControlInterface> source = HandlerPlace::current();
    const auto handler = GetTargetSelectHandler();
    if (!handler)
        return {};
    return {source, checkedRecord((handler.get()->*question)(id), id, event)};
}

} // namespace

template <typename Record>
bool CHostAnswer<Record>::isCurrent() const
{
    return isSame(m_source, HandlerPlace::current());
}

template class CHostAnswer<ProcessorNode>;
template class CHostAnswer<ProcessorGroupNode>;

template <typename Record>
std::optional<Record> checkedRecord(const Record& record, const QUuid& id, quint32 event)
{
    if (record.id == id)
        return record;
    qCInfo(lcBridge) << "event" << event << "asked for" << id << "and got" << record.id
                     << "which is ignored";
    return std::nullopt;
}

template std::optional<ProcessorNode> checkedRecord(const ProcessorNode&, const QUuid&, quint32);
template std::optional<ProcessorGroupNode> checkedRecord(const ProcessorGroupNode&, const QUuid&,
                                                         quint32);

CHostAnswer<ProcessorNode> askForProcessor(const QUuid& id, quint32 event)
{
    return ask(&Host::GetProcessorNode, id, event);
}

CHostAnswer<ProcessorGroupNode> askForGroup(const QUuid& id, quint32 event)
{
    return ask(&Host::GetGroupNode, id, event);
}
