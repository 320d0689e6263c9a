#include "host/workbench/project/ProjectChecks.h"

#include "Interface/ProjectLimits.h"
#include "host/workbench/project/Guid.h"

#include <QCoreApplication>
#include <QSet>

namespace {

struct Messages
{
    Q_DECLARE_TR_FUNCTIONS(ProjectChecks)
};

using Problem = std::optional<JsonProblem>;

QStringList pathTo(const char* list, int at, const char* field = nullptr)
{
    QStringList path{QLatin1String(list), QString::number(at)};
    if (field)
        path.append(QLatin1String(field));
    return path;
}

/// Returns the problem if `id` is null or among `seen`; otherwise adds it to `seen`.
Problem checkIdentity(const QUuid& id, const QStringList& record, QSet<QUuid>& seen)
{
    if (id.isNull())
        return JsonProblem{record, Messages::tr("the record has no identity")};
    if (seen.contains(id))
        return JsonProblem{
            record + QStringList(QStringLiteral("id")),
            Messages::tr("identity %1 occurs twice").arg(id.toString(QUuid::WithoutBraces))};
    seen.insert(id);
    return std::nullopt;
}

Problem checkProcessors(const Project& project, QSet<QUuid>& seen)
{
    for (int at = 0; at < project.processors.size(); ++at) {
        const ProcessorNode& node = project.processors.at(at);
        if (at >= ProjectLimits::kMaxProcessors)
            return JsonProblem{
                pathTo("processors", at),
                Messages::tr("a project holds at most %1 processors; this one has %2")
                    .arg(ProjectLimits::kMaxProcessors)
                    .arg(project.processors.size())};
        if (auto problem = checkIdentity(node.id, pathTo("processors", at), seen))
            return problem;
        if (!node.groupId.isNull() && !project.hasGroup(node.groupId))
            return JsonProblem{pathTo("processors", at, "groupId"),
                               Messages::tr("there is no group %1")
                                   .arg(node.groupId.toString(QUuid::WithoutBraces))};
    }
    if (!project.currentProcessor.isNull() && !project.processor(project.currentProcessor))
        return JsonProblem{{QStringLiteral("currentProcessor")},
                           Messages::tr("there is no processor %1")
                               .arg(project.currentProcessor.toString(QUuid::WithoutBraces))};
    return std::nullopt;
}

Problem checkDeviceSets(const Project& project)
{
    QSet<QUuid> seen;
    for (int at = 0; at < project.deviceSets.size(); ++at) {
        const QUuid id = fromGuid(project.deviceSets.at(at).info.id);
        if (auto problem = checkIdentity(id, pathTo("deviceSets", at), seen))
            return problem;
    }
    const QUuid current = fromGuid(project.currentDeviceSet);
    if (!current.isNull() && !seen.contains(current))
        return JsonProblem{
            {QStringLiteral("currentDeviceSet")},
            Messages::tr("there is no device set %1").arg(current.toString(QUuid::WithoutBraces))};
    return std::nullopt;
}

} // namespace

std::optional<JsonProblem> checkProject(const Project& project)
{
    QSet<QUuid> seen;
    for (int at = 0; at < project.groups.size(); ++at) {
        if (auto problem = checkIdentity(project.groups.at(at).id, pathTo("groups", at), seen))
            return problem;
    }
    if (auto problem = checkProcessors(project, seen))
        return problem;
    return checkDeviceSets(project);
}
