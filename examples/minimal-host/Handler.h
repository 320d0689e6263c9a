#pragma once

#include "Interface/HostEvents.h"
#include "Interface/TargetSelectHandlerBase.h"

#include <algorithm>
#include <mutex>
#include <vector>

/// Records in the host's order. Thread-safe, because the panel asks on several threads; each gets a
/// list of its own. No lock is held once a call has returned, so none while an event is told.
template <typename Record>
class Records final
{
public:
    QList<Record> all()
    {
        const std::lock_guard guard(m_mutex);
        return QList<Record>(m_records.begin(), m_records.end());
    }

    void append(const Record& record)
    {
        const std::lock_guard guard(m_mutex);
        m_records.push_back(record);
    }

    void remove(const QUuid& id)
    {
        const std::lock_guard guard(m_mutex);
        const auto isIt = [&](const Record& record) { return record.id == id; };
        m_records.erase(std::remove_if(m_records.begin(), m_records.end(), isIt), m_records.end());
    }

    /// Calls `change` with the record. Returns false for an unknown identity.
    template <typename Change>
    bool change(const QUuid& id, Change change)
    {
        const std::lock_guard guard(m_mutex);
        const auto isIt = [&](const Record& record) { return record.id == id; };
        const auto found = std::find_if(m_records.begin(), m_records.end(), isIt);
        if (found != m_records.end())
            change(*found);
        return found != m_records.end();
    }

    /// Returns an empty record, which says "there is none" to the panel, for an unknown identity.
    Record value(const QUuid& id)
    {
        Record value;
        change(id, [&](const Record& record) { value = record; });
        return value;
    }

private:
    std::mutex m_mutex;
    std::vector<Record> m_records;
};

/// Holds the host's project, answers the panel's questions and carries out its requests, on the GUI
/// thread unless it says otherwise. The base answers the rest, and the host's log names it.
class Handler final : public CTargetSelectHandlerBase
{
public:
    Records<ProcessorGroupNode> groups;
    Records<ProcessorNode> processors;
    CSubject subject;              ///< For events that the GUI thread tells.
    CObserver* observer = nullptr; ///< The panel's, alive until the process ends.
    int nextNumber = 0;            ///< Of a new processor.

    void SetObserver(CObserver* panel) override { subject.Attach(observer = panel); }

    // Asked on any thread.
    ProcessorNode GetProcessorNode(const QUuid& id) override { return processors.value(id); }
    ProcessorGroupNode GetGroupNode(const QUuid& id) override { return groups.value(id); }
    QList<ProcessorNode> GetAllProcessorNodes() override { return processors.all(); }
    QList<ProcessorGroupNode> GetAllGroupNodes() override { return groups.all(); }
    bool ShowProcessorMoreButton() override { return true; }
    bool ShowNodeMoreButton() override { return true; }
    bool CanAddProcessors(const ProcessorNode&) override { return true; }
    bool IsAddProcessorsEnabled(const ProcessorNode&) override { return true; }
    bool CanRenameProcessor(const QUuid&) override { return true; }

    // The panel shows these once an event says that they are carried out. The event comes after the
    // change, and the one about a group before those about its processors.
    void AddProcessors(const QUuid& group, int count) override
    {
        for (int n = 0; n < count; ++n) {
            ProcessorNode node;
            node.id = QUuid::createUuid();
            node.number = nextNumber++;
            node.name = QStringLiteral("Processor %1").arg(node.number + 1);
            node.groupId = group;
            processors.append(node);
            HostEvents::ProcessorAdded::tell(subject, node.id);
        }
    }

    void DeleteProcessors(const QList<QUuid>& ids) override
    {
        for (const QUuid& id : ids)
            processors.remove(id);
        HostEvents::NodesRemoved::tell(subject, ids);
    }

    QUuid CreateGroup(const ProcessorGroupNode& group) override
    {
        ProcessorGroupNode created = group;
        created.id = QUuid::createUuid();
        groups.append(created);
        HostEvents::GroupAdded::tell(subject, created.id);
        return created.id;
    }

    // The panel shows these by itself. SetProcessorGroup() follows for the members of a group.
    void Ungroup(const QUuid& id) override { groups.remove(id); }

    bool RenameProcessor(const QUuid& id, const QString& name) override
    {
        return processors.change(id, [&](ProcessorNode& node) { node.name = name; });
    }

    void RenameGroup(const QUuid& id, const QString& name) override
    {
        groups.change(id, [&](ProcessorGroupNode& group) { group.name = name; });
    }

    void SetProcessorGroup(const ProcessorGroupNode&, const QUuid& group,
                           const QList<QUuid>& ids) override
    {
        for (const QUuid& id : ids)
            processors.change(id, [&](ProcessorNode& node) { node.groupId = group; });
    }
};
