#include "base/HostAnswer.h"

#include "base/ContractCheck.h"
#include "base/LogCategories.h"

namespace {

template <typename Record>
CHostAnswer<Record> ask(Record (Host::*question)(const QUuid&), const QUuid& id, quint32 event,
                        const HandlerPlace::CPanelWatch& panel)
{
    const ContractCheck::EventScope scope(event);
    CHostAnswer<Record> answer;
    for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
        const std::weak_ptr<IAbstractControlInterface> source = HandlerPlace::current();
        const auto handler = GetTargetSelectHandler();
        // The next panel's handler is not asked: the event was none of its host's.
        if (!handler || panel.isOver()) {
            logDropped(event, id, handler ? "the panel has gone" : "there is no handler");
            return {};
        }
        qCDebug(lcBridge, "event %u asks for %s", event, qPrintable(id.toString()));
        const Record record = (handler.get()->*question)(id);
        answer = {source, checkedRecord(record, id, event), record.id.isNull()};
        // The host may replace its handler inside the question.
        if (HandlerPlace::isCurrent(source) || panel.isOver())
            break;
        qCDebug(lcBridge, "event %u finds another handler after its question", event);
    }
    return answer;
}

} // namespace

template <typename Record>
bool CHostAnswer<Record>::isCurrent() const
{
    return HandlerPlace::isCurrent(m_source);
}

template class CHostAnswer<ProcessorNode>;
template class CHostAnswer<ProcessorGroupNode>;

template <typename Record>
std::optional<Record> checkedRecord(const Record& record, const QUuid& id, quint32 event)
{
    if (record.id == id) {
        qCDebug(lcBridge, "event %u got the record of %s", event, qPrintable(id.toString()));
        return record;
    }
    qCInfo(lcBridge, "event %u asked for %s and got %s, which is ignored", event,
           qPrintable(id.toString()), qPrintable(record.id.toString()));
    return std::nullopt;
}

template std::optional<ProcessorNode> checkedRecord(const ProcessorNode&, const QUuid&, quint32);
template std::optional<ProcessorGroupNode> checkedRecord(const ProcessorGroupNode&, const QUuid&,
                                                         quint32);

CHostAnswer<ProcessorNode> askForProcessor(const QUuid& id, quint32 event,
                                           const HandlerPlace::CPanelWatch& panel)
{
    return ask(&Host::GetProcessorNode, id, event, panel);
}

CHostAnswer<ProcessorGroupNode> askForGroup(const QUuid& id, quint32 event,
                                            const HandlerPlace::CPanelWatch& panel)
{
    return ask(&Host::GetGroupNode, id, event, panel);
}
