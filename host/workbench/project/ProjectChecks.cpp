#include "host/workbench/project/ProjectChecks.h"

#include "Interface/ProjectLimits.h"
#include "host/workbench/project/Guid.h"
#include "host/workbench/project/ProjectRanges.h"
#include "host/workbench/project/RecordFields.h"

#include <QCoreApplication>
#include <QSet>

namespace {

struct ProjectChecksMessages
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
        return JsonProblem{record, ProjectChecksMessages::tr("the record has no identity")};
    if (seen.contains(id))
        return JsonProblem{record + QStringList(QStringLiteral("id")),
                           ProjectChecksMessages::tr("identity %1 occurs twice")
                               .arg(id.toString(QUuid::WithoutBraces))};
    seen.insert(id);
    return std::nullopt;
}

Problem checkName(const QString& name, const QStringList& path)
{
    if (name.size() <= ProjectRanges::kMaxNameLength)
        return std::nullopt;
    return JsonProblem{path, ProjectChecksMessages::tr("the name has more than %1 characters")
                                 .arg(ProjectRanges::kMaxNameLength)};
}

Problem checkText(const QString& text, const QStringList& path)
{
    if (text.size() <= ProjectRanges::kMaxNameLength)
        return std::nullopt;
    return JsonProblem{path, ProjectChecksMessages::tr("the text has more than %1 characters")
                                 .arg(ProjectRanges::kMaxNameLength)};
}

Problem checkGroups(const Project& project, QSet<QUuid>& seen)
{
    for (int at = 0; at < project.groups.size(); ++at) {
        if (at >= ProjectRanges::kMaxGroups)
            return JsonProblem{
                pathTo("groups", at),
                ProjectChecksMessages::tr("a project holds at most %1 groups; this one has %2")
                    .arg(ProjectRanges::kMaxGroups)
                    .arg(project.groups.size())};
        const ProcessorGroupNode& node = project.groups.at(at);
        if (auto problem = checkIdentity(node.id, pathTo("groups", at), seen))
            return problem;
        if (auto problem = checkName(node.name, pathTo("groups", at, "name")))
            return problem;
    }
    return std::nullopt;
}

/// Visits the fields of an object, and keeps the first one that is out of its range.
class RangeCheck final
{
public:
    using RangeOf = ProjectRanges::Range (*)(const char* name);

    RangeCheck(const char* object, RangeOf rangeOf)
        : m_object(object)
        , m_rangeOf(rangeOf)
    {
    }

    void operator()(const char* name, qint32 value)
    {
        const auto range = m_rangeOf(name);
        if (problem || (value >= range.least && value <= range.most))
            return;
        problem = JsonProblem{{QLatin1String(m_object), QLatin1String(name)},
                              ProjectChecksMessages::tr("a whole number from %1 to %2 is expected")
                                  .arg(range.least)
                                  .arg(range.most)};
    }
    template <typename Other>
    void operator()(const char* /*name*/, const Other& /*value*/)
    {
    }
    template <typename Address>
    void visitAddress(const char* /*name*/, const Address& /*value*/)
    {
    }

    Problem problem;

private:
    const char* m_object;
    RangeOf m_rangeOf;
};

Problem checkNetwork(const NetworkSettings& network)
{
    RangeCheck ranges("network", NetworkSettings::rangeOf);
    visitNetworkFields(network, ranges);
    if (!ranges.problem && !network.allowsForLateAnswers())
        ranges.problem = JsonProblem{{QStringLiteral("network"), QStringLiteral("deadTimeoutMs")},
                                     ProjectChecksMessages::tr("at least twice %1 is expected")
                                         .arg(QLatin1String("aliveIntervalMs"))};
    return ranges.problem;
}

Problem checkProcessors(const Project& project, QSet<QUuid>& seen)
{
    for (int at = 0; at < project.processors.size(); ++at) {
        const ProcessorNode& node = project.processors.at(at);
        if (at >= ProjectLimits::kMaxProcessors)
            return JsonProblem{
                pathTo("processors", at),
                ProjectChecksMessages::tr("a project holds at most %1 processors; this one has %2")
                    .arg(ProjectLimits::kMaxProcessors)
                    .arg(project.processors.size())};
        if (auto problem = checkIdentity(node.id, pathTo("processors", at), seen))
            return problem;
        if (auto problem = checkName(node.name, pathTo("processors", at, "name")))
            return problem;
        if (auto problem = checkText(node.hostText14, pathTo("processors", at, "hostText14")))
            return problem;
        if (auto problem = checkText(node.hostText24, pathTo("processors", at, "hostText24")))
            return problem;
        if (!node.groupId.isNull() && !project.hasGroup(node.groupId))
            return JsonProblem{pathTo("processors", at, "groupId"),
                               ProjectChecksMessages::tr("there is no group %1")
                                   .arg(node.groupId.toString(QUuid::WithoutBraces))};
    }
    if (!project.currentProcessor.isNull() && !project.processor(project.currentProcessor))
        return JsonProblem{{QStringLiteral("currentProcessor")},
                           ProjectChecksMessages::tr("there is no processor %1")
                               .arg(project.currentProcessor.toString(QUuid::WithoutBraces))};
    return std::nullopt;
}

Problem checkDeviceSets(const Project& project)
{
    QSet<QUuid> seen;
    for (int at = 0; at < project.deviceSets.size(); ++at) {
        const DeviceSet& set = project.deviceSets.at(at);
        if (at >= ProjectRanges::kMaxDeviceSets)
            return JsonProblem{
                pathTo("deviceSets", at),
                ProjectChecksMessages::tr("a project holds at most %1 device sets; this one has %2")
                    .arg(ProjectRanges::kMaxDeviceSets)
                    .arg(project.deviceSets.size())};
        if (auto problem = checkIdentity(fromGuid(set.info.id), pathTo("deviceSets", at), seen))
            return problem;
        if (auto problem = checkText(set.text, pathTo("deviceSets", at, "text")))
            return problem;
    }
    const QUuid current = fromGuid(project.currentDeviceSet);
    if (!current.isNull() && !seen.contains(current))
        return JsonProblem{{QStringLiteral("currentDeviceSet")},
                           ProjectChecksMessages::tr("there is no device set %1")
                               .arg(current.toString(QUuid::WithoutBraces))};
    return std::nullopt;
}

Problem checkFaults(const Project& project)
{
    for (int at = 0; at < project.faults.size(); ++at) {
        if (at >= ProjectRanges::kMaxFaults)
            return JsonProblem{
                pathTo("faults", at),
                ProjectChecksMessages::tr("a project holds at most %1 faults; this one has %2")
                    .arg(ProjectRanges::kMaxFaults)
                    .arg(project.faults.size())};
        if (const auto found = checkFaultRule(project.faults.at(at)))
            return JsonProblem{pathTo("faults", at, found->field), found->reason};
    }
    return std::nullopt;
}

} // namespace

std::optional<JsonProblem> checkProject(const Project& project)
{
    QSet<QUuid> seen;
    if (auto problem = checkGroups(project, seen))
        return problem;
    if (auto problem = checkProcessors(project, seen))
        return problem;
    if (auto problem = checkDeviceSets(project))
        return problem;
    if (auto problem = checkFaults(project))
        return problem;
    RangeCheck answers("answers", ProjectRanges::ofAnswer);
    visitAnswerFields(project.answers, answers);
    if (answers.problem)
        return answers.problem;
    return checkNetwork(project.network);
}
