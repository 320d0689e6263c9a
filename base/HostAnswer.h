#pragma once

#include "Interface/ProcessorNode.h"
#include "Interface/TargetSelectInterfaceHandler.h"
#include "base/TargetSelectHandler.h"

#include <QUuid>

#include <memory>
#include <optional>

/// What a handler answered when it was asked for a record.
///
/// With this class the bridge keeps its second law: *an answer is checked*. A record whose identity
/// is not the one that was asked for is no record; the log category says so.
template <typename Record>
class CHostAnswer final
{
public:
    /// Nobody was asked.
    CHostAnswer() = default;

    CHostAnswer(std::weak_ptr<IAbstractControlInterface> source, std::optional<Record> record,
                bool isUnknown = false)
        : m_isGiven(true)
        , m_isUnknown(isUnknown)
        , m_source(std::move(source))
        , m_record(std::move(record))
    {
    }

    /// Returns whether a handler answered at all.
    bool isGiven() const { return m_isGiven; }

    /// The record; nothing when the host has none of that identity, or gave another one.
    const std::optional<Record>& record() const { return m_record; }

    /// Returns whether the host said that it has none. A record of another identity does not.
    bool isUnknown() const { return m_isUnknown; }

    /// Returns whether the handler that answered is still the host's. GUI thread.
    bool isCurrent() const;

private:
    bool m_isGiven = false;
    bool m_isUnknown = false;
    std::weak_ptr<IAbstractControlInterface> m_source;
    std::optional<Record> m_record;
};

extern template class CHostAnswer<ProcessorNode>;
extern template class CHostAnswer<ProcessorGroupNode>;

/// Asks the host of `panel` for the record of `id` on behalf of event number `event`. Any thread;
/// the caller holds no lock.
/// @{
CHostAnswer<ProcessorNode> askForProcessor(const QUuid& id, quint32 event,
                                           const HandlerPlace::CPanelWatch& panel = {});
CHostAnswer<ProcessorGroupNode> askForGroup(const QUuid& id, quint32 event,
                                            const HandlerPlace::CPanelWatch& panel = {});
/// @}

/// Returns `record` if its identity is `id`, and logs otherwise.
template <typename Record>
std::optional<Record> checkedRecord(const Record& record, const QUuid& id, quint32 event);
