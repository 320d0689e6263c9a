// Steps that act as the host: its project, its records, and what its handler answers.

#include "Interface/ProjectLimits.h"
#include "host/workbench/project/FieldJson.h"
#include "host/workbench/project/ProjectChecks.h"
#include "host/workbench/project/ProjectJson.h"
#include "host/workbench/project/ProjectRanges.h"
#include "host/workbench/project/RecordFields.h"
#include "host/workbench/script/ScriptRun.h"
#include "host/workbench/script/Steps.h"
#include "host/workbench/session/Session.h"
#include "host/workbench/window/FileCommands.h"
#include "host/workbench/window/MainWindow.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

namespace {

/// Returns the value of an argument as a project file has it.
QJsonValue jsonOf(const ScriptToken& token)
{
    if (token.kind == ScriptToken::Kind::List) {
        QJsonArray array;
        for (const ScriptToken& item : token.items)
            array.append(jsonOf(item));
        return array;
    }
    if (token.kind != ScriptToken::Kind::Word)
        return token.text;
    if (token.text == QLatin1String("true") || token.text == QLatin1String("false"))
        return token.text == QLatin1String("true");
    bool isNumber = false;
    const double number = token.text.toDouble(&isNumber);
    return isNumber ? QJsonValue(number) : QJsonValue(token.text);
}

/// Reads the field of the step into a record, all of whose fields `visit` visits.
template <typename Visit>
std::optional<ScriptProblem> readField(const ScriptStep& step, const Visit& visit)
{
    std::optional<JsonProblem> problem;
    FieldReader reader(QJsonObject{{step.value("FIELD"), jsonOf(step.token("VALUE"))}}, {},
                       problem);
    visit(reader);
    if (problem)
        return step.problemAt(step.token("VALUE"), problem->reason);
    reader.refuseUnknown();
    if (problem)
        return step.problemAt(
            step.token("FIELD"),
            QStringLiteral("\"%1\": %2").arg(step.value("FIELD"), problem->reason));
    return std::nullopt;
}

std::optional<ScriptProblem> readProcessor(const ScriptStep& step, ProcessorNode& node)
{
    return readField(step, [&](FieldReader& reader) { visitProcessorFields(node, reader); });
}

std::optional<ScriptProblem> checkProcessor(const ScriptStep& step)
{
    const QString field = step.value("FIELD");
    if (field == QLatin1String("id") || field == QLatin1String("groupId"))
        return step.problemAt(
            step.token("FIELD"),
            QStringLiteral("\"%1\" cannot be set; \"host move\" moves").arg(field));
    Project project;
    project.addProcessors(QUuid(), 1);
    if (const auto problem = readProcessor(step, project.processors.first()))
        return problem;
    if (const auto problem = checkProject(project))
        return step.problemAt(step.token("VALUE"), problem->reason);
    return std::nullopt;
}

std::optional<ScriptProblem> readAnswer(const ScriptStep& step, HandlerAnswers& answers)
{
    return readField(step, [&](FieldReader& reader) { visitAnswerFields(answers, reader); });
}

std::optional<ScriptProblem> checkAnswer(const ScriptStep& step)
{
    Project project;
    if (const auto problem = readAnswer(step, project.answers))
        return problem;
    if (const auto problem = checkProject(project))
        return step.problemAt(step.token("VALUE"), problem->reason);
    return std::nullopt;
}

bool isProcessor(ScriptRun& run, const QUuid& id)
{
    return run.session().store().read(
        [&](const Project& project) { return project.processor(id) != nullptr; });
}

Progress noProcessor(const ScriptStep& step)
{
    return Progress::waiting(
        QStringLiteral("the host has no processor \"%1\"").arg(step.value("RECORD")));
}

Progress setRecordField(ScriptRun& run, const ScriptStep& step)
{
    const QUuid id = run.identity(step.value("RECORD"));
    if (run.phase == 0 && !isProcessor(run, id))
        return noProcessor(step);
    return run.once([&run, &step, id] {
        run.session().store().changeProcessor(
            id, [&step](ProcessorNode& node) { return !readProcessor(step, node); });
    });
}

Progress expectRecordField(ScriptRun& run, const ScriptStep& step)
{
    const Project project = run.session().store().snapshot();
    const ProcessorNode* found = project.processor(run.identity(step.value("RECORD")));
    if (!found)
        return noProcessor(step);
    FieldWriter known;
    visitProcessorFields(*found, known);
    ProcessorNode node = *found;
    readProcessor(step, node);
    FieldWriter wanted;
    visitProcessorFields(node, wanted);
    const QJsonValue is = known.object.value(step.value("FIELD"));
    return Progress::when(is == wanted.object.value(step.value("FIELD")),
                          QStringLiteral("the field is %1")
                              .arg(is.isString()
                                       ? QLatin1Char('"') + is.toString() + QLatin1Char('"')
                                       : is.toVariant().toString()));
}

/// Returns whether the host has the record: the names of those that have gone stay known.
bool isThere(ScriptRun& run, const QUuid& id)
{
    return run.session().store().read([&](const Project& project) {
        return project.processor(id) != nullptr || project.hasGroup(id);
    });
}

/// A step that needs the records named by RECORD to be there.
Progress withRecords(ScriptRun& run, const ScriptStep& step,
                     const std::function<void(const QList<QUuid>&)>& action)
{
    QList<QUuid> ids;
    for (const QString& name : step.values("RECORD")) {
        ids.append(run.identity(name));
        if (run.phase == 0 && !isThere(run, ids.constLast()))
            return Progress::waiting(QStringLiteral("there is no record \"%1\"").arg(name));
    }
    return run.once([action, ids] { action(ids); });
}

Progress openFile(ScriptRun& run, const ScriptStep& step)
{
    const QString path = run.filePath(step.value("FILE"));
    if (run.phase == 0)
        run.memory.clear();
    const Progress progress = run.once([&run, path] {
        QString reason;
        if (!run.window().files().open(path, reason))
            run.memory = reason;
    });
    return run.memory.toString().isEmpty() ? progress : Progress::failed(run.memory.toString());
}

Progress saveFile(ScriptRun& run, const ScriptStep& step)
{
    QString reason;
    if (!run.window().files().save(run.filePath(step.value("FILE")), reason))
        return Progress::failed(reason);
    return Progress::done();
}

Progress expectProject(ScriptRun& run, const ScriptStep& step)
{
    QString reason;
    const auto wanted = loadProject(run.filePath(step.value("FILE")), reason);
    if (!wanted)
        return Progress::failed(reason);
    const QList<QByteArray> expected = projectToJson(*wanted).split('\n');
    const QList<QByteArray> found = projectToJson(run.session().store().snapshot()).split('\n');
    for (int at = 0; at < std::max(expected.size(), found.size()); ++at) {
        if (expected.value(at) != found.value(at))
            return Progress::waiting(
                QStringLiteral("the projects differ in line %1\nexpected: %2\nfound:    %3")
                    .arg(at + 1)
                    .arg(QString::fromUtf8(expected.value(at)).trimmed(),
                         QString::fromUtf8(found.value(at)).trimmed()));
    }
    return Progress::done();
}

/// Returns an error if no record can have that name.
std::optional<ScriptProblem> checkNewName(const ScriptStep& step)
{
    const ScriptToken name = step.token("NAME");
    if (name.text.trimmed().isEmpty())
        return step.problemAt(name, QStringLiteral("a name that is not empty is expected"));
    if (name.text.size() > ProjectRanges::kMaxNameLength)
        return step.problemAt(name, QStringLiteral("the name has more than %1 characters")
                                        .arg(ProjectRanges::kMaxNameLength));
    return std::nullopt;
}

std::optional<ScriptProblem> checkCount(const ScriptStep& step)
{
    const int count = step.number("COUNT");
    if (count >= 1 && count <= ProjectLimits::kMaxProcessors)
        return std::nullopt;
    return step.problemAt(step.token("COUNT"),
                          QStringLiteral("a whole number from 1 to %1 is expected")
                              .arg(ProjectLimits::kMaxProcessors));
}

/// Returns the group of the step, null for the root; nothing if there is no such group.
std::optional<QUuid> groupOf(ScriptRun& run, const ScriptStep& step)
{
    if (step.token("GROUP").isWord(QStringLiteral("root")))
        return QUuid();
    const QUuid id = run.identity(step.value("GROUP"));
    const bool isThere =
        run.session().store().read([&](const Project& project) { return project.hasGroup(id); });
    return isThere ? std::make_optional(id) : std::nullopt;
}

Progress noGroup(const ScriptStep& step)
{
    return Progress::waiting(QStringLiteral("there is no group \"%1\"").arg(step.value("GROUP")));
}

Progress addGroup(ScriptRun& run, const ScriptStep& step)
{
    ProjectStore& store = run.session().store();
    const QString name = step.value("NAME");
    if (run.phase == 0
        && !store.read([&](const Project& project) { return project.canAddGroup(name); }))
        return Progress::failed(
            QStringLiteral("a project holds at most %1 groups").arg(ProjectRanges::kMaxGroups));
    return run.once([&store, name] {
        ProcessorGroupNode group;
        group.name = name;
        store.addGroup(group);
    });
}

Progress addProcessors(ScriptRun& run, const ScriptStep& step)
{
    ProjectStore& store = run.session().store();
    const auto group = groupOf(run, step);
    if (run.phase == 0 && !group)
        return noGroup(step);
    const int room = store.read([](const Project& project) { return project.roomForProcessors(); });
    if (run.phase == 0 && room < step.number("COUNT"))
        return Progress::failed(
            QStringLiteral("a project holds at most %1 processors; there is room for %2")
                .arg(ProjectLimits::kMaxProcessors)
                .arg(room));
    return run.once([&store, &step, group] {
        store.addProcessors(group.value_or(QUuid()), step.number("COUNT"));
    });
}

Progress moveProcessors(ScriptRun& run, const ScriptStep& step)
{
    const auto group = groupOf(run, step);
    if (run.phase == 0 && !group)
        return noGroup(step);
    return withRecords(run, step, [&run, group](const QList<QUuid>& ids) {
        run.session().store().regroup(ids, group.value_or(QUuid()));
    });
}

void addHostSteps(StepRegistry& registry)
{
    registry.add({QStringLiteral("host add group NAME"), addGroup, checkNewName});
    registry.add({QStringLiteral("host add processors COUNT to GROUP"), addProcessors, checkCount});
    registry.add({QStringLiteral("host remove RECORD..."),
                  [](ScriptRun& run, const ScriptStep& step) {
                      return withRecords(run, step, [&run](const QList<QUuid>& ids) {
                          run.session().store().removeProcessors(ids);
                          for (const QUuid& id : ids)
                              run.session().store().ungroup(id);
                      });
                  },
                  {}});
    registry.add({QStringLiteral("host rename RECORD NAME"),
                  [](ScriptRun& run, const ScriptStep& step) {
                      return withRecords(run, step, [&run, &step](const QList<QUuid>& ids) {
                          ProjectStore& store = run.session().store();
                          if (!store.renameProcessor(ids.first(), step.value("NAME")))
                              store.renameGroup(ids.first(), step.value("NAME"), true);
                      });
                  },
                  checkNewName});
    registry.add({QStringLiteral("host move RECORD... to GROUP"), moveProcessors, {}});
    registry.add({QStringLiteral("host current RECORD"),
                  [](ScriptRun& run, const ScriptStep& step) {
                      if (run.phase == 0 && !isProcessor(run, run.identity(step.value("RECORD"))))
                          return noProcessor(step);
                      return withRecords(run, step, [&run](const QList<QUuid>& ids) {
                          run.session().store().setCurrentProcessor(ids.first());
                      });
                  },
                  {}});
}

} // namespace

void addProjectSteps(StepRegistry& registry)
{
    registry.add({QStringLiteral("open FILE"), openFile, {}});
    registry.add({QStringLiteral("save FILE"), saveFile, {}});
    registry.add({QStringLiteral("expect project FILE"), expectProject, {}});
    registry.add({QStringLiteral("set RECORD FIELD VALUE"), setRecordField, checkProcessor});
    registry.add(
        {QStringLiteral("expect field of RECORD FIELD VALUE"), expectRecordField, checkProcessor});
    registry.add({QStringLiteral("answer FIELD VALUE"),
                  [](ScriptRun& run, const ScriptStep& step) {
                      return run.once([&run, &step] {
                          HandlerAnswers answers = run.session().store().snapshot().answers;
                          readAnswer(step, answers);
                          run.session().store().setAnswers(answers);
                      });
                  },
                  checkAnswer});
    addHostSteps(registry);
}
