#include "tests/validate/broken/Breakage.h"

#include "Interface/HostEvents.h"
#include "Interface/TargetSelectHandlerBase.h"
#include "Interface/TargetSelectHostPlugin.h"
#include "examples/minimal-host/Handler.h"

#include <QCoreApplication>
#include <QThread>

#include <chrono>
#include <cstdlib>
#include <future>
#include <stdexcept>

/// A host with something broken: each target has a name for what. With "nothing" it is whole.

namespace {

bool isGuiThread()
{
    return QThread::currentThread() == QCoreApplication::instance()->thread();
}

class BrokenHandler final : public CTargetSelectHandlerBase
{
public:
    Records<ProcessorGroupNode> groups;
    Records<ProcessorNode> processors;

    void SetObserver(CObserver* panel) override
    {
        if (!isBroken("unattached"))
            m_subject.Attach(panel);
    }

    ProcessorNode GetProcessorNode(const QUuid& id) override
    {
        if (isBroken("slow"))
            std::promise<void>().get_future().wait_for(std::chrono::milliseconds(80));
        if (isBroken("gui-thread-only") && !isGuiThread())
            return {};
        ProcessorNode node = processors.value(id);
        if (isBroken("knows-all") && node.id.isNull())
            return processors.all().value(0);
        if (isBroken("two-names"))
            node.name += QLatin1Char('!');
        return node;
    }
    ProcessorGroupNode GetGroupNode(const QUuid& id) override { return groups.value(id); }

    QList<ProcessorNode> GetAllProcessorNodes() override
    {
        QList<ProcessorNode> all = processors.all();
        if (isBroken("repeats"))
            all.append(all.constFirst());
        if (isBroken("null-identity"))
            all.append(ProcessorNode());
        return all;
    }
    QList<ProcessorGroupNode> GetAllGroupNodes() override
    {
        return isBroken("hides-groups") ? QList<ProcessorGroupNode>() : groups.all();
    }

    bool CanAddProcessors(const ProcessorNode&) override { return true; }
    bool IsAddProcessorsEnabled(const ProcessorNode&) override { return true; }
    bool CanRenameProcessor(const QUuid&) override { return true; }

    void AddProcessors(const QUuid& group, int count) override
    {
        if (isBroken("declines"))
            return;
        if (isBroken("throws"))
            throw std::runtime_error("no room");
        QList<QUuid> added;
        QList<ProcessorNode> nodes;
        for (int number = 0; number < count; ++number) {
            ProcessorNode node;
            node.id = QUuid::createUuid();
            node.number = m_number++;
            node.name = QStringLiteral("P%1").arg(node.number);
            node.groupId = isBroken("misplaces") ? QUuid() : group;
            nodes.append(node);
            added.append(node.id);
        }
        if (isBroken("tells-early"))
            HostEvents::ProcessorsAdded::tell(m_subject, added);
        for (const ProcessorNode& node : qAsConst(nodes))
            processors.append(node);
        if (isBroken("tells-otherwise"))
            HostEvents::MonitorWarningChanged::tell(m_subject);
        else if (!isBroken("tells-early"))
            HostEvents::ProcessorsAdded::tell(m_subject, added);
    }

    void DeleteProcessors(const QList<QUuid>& ids) override
    {
        if (isBroken("declines"))
            return;
        if (isBroken("crashes"))
            std::abort();
        if (!isBroken("keeps-deleted")) {
            for (const QUuid& id : ids)
                processors.remove(id);
        }
        HostEvents::NodesRemoved::tell(m_subject, ids);
    }

    QUuid CreateGroup(const ProcessorGroupNode& group) override
    {
        if (isBroken("declines"))
            return {};
        if (isBroken("hangs"))
            std::promise<void>().get_future().wait();
        ProcessorGroupNode created = group;
        created.id = QUuid::createUuid();
        groups.append(created);
        HostEvents::GroupAdded::tell(m_subject, created.id);
        return created.id;
    }

    bool RenameProcessor(const QUuid& id, const QString& name) override
    {
        return !isBroken("declines")
               && processors.change(id, [&](ProcessorNode& node) { node.name = name; });
    }
    void RenameGroup(const QUuid& id, const QString& name) override
    {
        if (isBroken("declines"))
            HostEvents::TreeReset::tell(m_subject);
        else if (!isBroken("lazy"))
            groups.change(id, [&](ProcessorGroupNode& group) { group.name = name; });
    }
    void SetProcessorGroup(const ProcessorGroupNode&, const QUuid& group,
                           const QList<QUuid>& ids) override
    {
        if (isBroken("declines")) {
            HostEvents::TreeReset::tell(m_subject);
            return;
        }
        for (const QUuid& id : ids)
            processors.change(id, [&](ProcessorNode& node) { node.groupId = group; });
    }
    void Ungroup(const QUuid& id) override
    {
        if (isBroken("declines"))
            HostEvents::TreeReset::tell(m_subject);
        else
            groups.remove(id);
    }

    void GetIPNameLists(QStringList& ips, QStringList& names) override
    {
        ips.clear();
        names.clear();
        if (isBroken("uneven-lists"))
            names.append(QStringLiteral("nameless"));
    }

private:
    CSubject m_subject;
    int m_number = 0;
};

} // namespace

bool TargetSelectHost_Open(int processors, TargetSelectHostProject* project)
{
    if (isBroken("opens-nothing"))
        return false;
    const auto handler = std::make_shared<BrokenHandler>();
    project->handler = handler;
    if (isBroken("opens-empty"))
        return true;
    ProcessorGroupNode group;
    group.id = QUuid::createUuid();
    group.name = QStringLiteral("Group");
    handler->groups.append(group);
    for (int number = 0; number < processors; ++number) {
        ProcessorNode node;
        node.id = QUuid::createUuid();
        node.name = QStringLiteral("Old %1").arg(number);
        node.groupId = number % 2 == 0 ? group.id : QUuid();
        handler->processors.append(node);
    }
    return true;
}
