#include "Handler.h"
#include "Interface/TargetSelectHostPlugin.h"

/// Opens a project of the minimal host, with half of the processors in a group.
bool TargetSelectHost_Open(int processors, TargetSelectHostProject* project)
{
    const auto handler = std::make_shared<Handler>();
    ProcessorGroupNode group;
    group.name = QStringLiteral("Left wing");
    handler->AddProcessors(handler->CreateGroup(group), processors / 2);
    handler->AddProcessors(QUuid(), processors - processors / 2);
    project->handler = handler;
    // As the minimal host's own thread does: the first processor goes online and offline.
    project->change = [handler] {
        const QList<ProcessorNode> all = handler->processors.all();
        if (all.isEmpty())
            return;
        const QUuid id = all.first().id;
        handler->processors.change(id, [](ProcessorNode& node) { node.online = !node.online; });
        CSubject subject;
        subject.Attach(handler->observer);
        HostEvents::ProcessorChanged::tell(subject, id);
    };
    return true;
}
