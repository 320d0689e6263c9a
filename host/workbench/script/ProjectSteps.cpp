// Steps that act as the host: its project, its records, and what its handler answers.

#include "host/workbench/project/FieldJson.h"
#include "host/workbench/project/ProjectChecks.h"
#include "host/workbench/project/ProjectJson.h"
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
    ProcessorNode node;
    return readProcessor(step, node);
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

Progress setField(ScriptRun& run, const ScriptStep& step)
{
    const QUuid id = run.identity(step.value("RECORD"));
    if (run.phase == 0 && id.isNull())
        return Progress::waiting(
            QStringLiteral("there is no record \"%1\"").arg(step.value("RECORD")));
    return run.once([&run, &step, id] {
        run.session().store().changeProcessor(
            id, [&step](ProcessorNode& node) { return !readProcessor(step, node); });
    });
}

Progress expectField(ScriptRun& run, const ScriptStep& step)
{
    const QString name = step.value("RECORD");
    const Project project = run.session().store().snapshot();
    const ProcessorNode* found = project.processor(run.identity(name));
    if (!found)
        return Progress::waiting(QStringLiteral("the host has no processor \"%1\"").arg(name));
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

/// A step that needs the records named by RECORD to be there.
Progress withRecords(ScriptRun& run, const ScriptStep& step,
                     const std::function<void(const QList<QUuid>&)>& action)
{
    QList<QUuid> ids;
    for (const QString& name : step.values("RECORD")) {
        ids.append(run.identity(name));
        if (run.phase == 0 && ids.constLast().isNull())
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

QUuid groupOf(ScriptRun& run, const ScriptStep& step)
{
    return step.token("GROUP").isWord(QStringLiteral("root")) ? QUuid()
                                                              : run.identity(step.value("GROUP"));
}

void addHostSteps(StepRegistry& registry)
{
    registry.add({QStringLiteral("host add group NAME"),
                  [](ScriptRun& run, const ScriptStep& step) {
                      return run.once([&run, &step] {
                          ProcessorGroupNode group;
                          group.name = step.value("NAME");
                          run.session().store().addGroup(group);
                      });
                  },
                  {}});
    registry.add({QStringLiteral("host add processors COUNT to GROUP"),
                  [](ScriptRun& run, const ScriptStep& step) {
                      return run.once([&run, &step] {
                          run.session().store().addProcessors(groupOf(run, step),
                                                              step.number("COUNT"));
                      });
                  },
                  {}});
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
                  {}});
    registry.add({QStringLiteral("host move RECORD... to GROUP"),
                  [](ScriptRun& run, const ScriptStep& step) {
                      return withRecords(run, step, [&run, &step](const QList<QUuid>& ids) {
                          run.session().store().regroup(ids, groupOf(run, step));
                      });
                  },
                  {}});
    registry.add({QStringLiteral("host current RECORD"),
                  [](ScriptRun& run, const ScriptStep& step) {
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
    registry.add({QStringLiteral("set RECORD FIELD VALUE"), setField, checkProcessor});
    registry.add(
        {QStringLiteral("expect field of RECORD FIELD VALUE"), expectField, checkProcessor});
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
