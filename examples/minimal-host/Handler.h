#pragma once

#include "Interface/HostEvents.h"
#include "Interface/TargetSelectHandlerBase.h"
#include "Records.h"

/// Holds the host's project, answers the panel's questions about it and carries out its requests,
/// on the GUI thread unless it says otherwise. The base answers everything else, and the host's log
/// names what it was asked.
class Handler final : public CTargetSelectHandlerBase
{
public:
    Records<ProcessorGroupNode> groups;
    Records<ProcessorNode> processors;
    CSubject subject;              ///< For events that the GUI thread tells.
    CObserver* observer = nullptr; ///< The panel's, alive until the process ends.

    void SetObserver(CObserver* panel) override
    {
        observer = panel;
        subject.Attach(panel);
    }

    // Asked on any thread.
    ProcessorNode GetProcessorNode(const QUuid& id) override { return processors.value(id); }
    ProcessorGroupNode GetGroupNode(const QUuid& id) override { return groups.value(id); }

    QList<ProcessorNode> GetAllProcessorNodes() override { return processors.all(); }
    QList<ProcessorGroupNode> GetAllGroupNodes() override { return groups.all(); }
    bool ShowProcessorMoreButton() override { return true; }
    bool ShowNodeMoreButton() override { return true; }
    bool CanAddProcessors(const ProcessorNode&) override { return true; }
    bool IsAddProcessorsEnabled(const ProcessorNode&) override { return true; }

    // The panel shows these once an event says that they are carried out. The event comes after the
    // change, and the one about a group before those about its processors.
    void AddProcessors(const QUuid& group, int count) override
    {
        QList<QUuid> added;
        for (int n = 0; n < count; ++n) {
            ProcessorNode node;
            node.id = QUuid::createUuid();
            node.number = m_nextNumber++;
            node.name = QStringLiteral("Processor %1").arg(node.number + 1);
            node.groupId = group;
            processors.append(node);
            added.append(node.id);
        }
        HostEvents::ProcessorsAdded::tell(subject, added);
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

    // The panel shows these by itself.
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

    void Ungroup(const QUuid& id) override
    {
        const QList<ProcessorNode> all = processors.all();
        for (const ProcessorNode& node : all) {
            if (node.groupId == id)
                SetProcessorGroup({}, QUuid(), {node.id});
        }
        groups.remove(id);
    }

private:
    int m_nextNumber = 0;
};
