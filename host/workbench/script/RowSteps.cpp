// Steps that look at the panel: its rows, the search, and its fields and buttons.

#include "Interface/ProcessorNode.h"
#include "host/workbench/script/ScriptRun.h"
#include "host/workbench/script/Scrolling.h"
#include "host/workbench/script/Steps.h"
#include "host/workbench/script/Targets.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QItemSelectionModel>
#include <QListView>
#include <QTreeView>

#include <algorithm>
#include <optional>

namespace {

constexpr int kIndent = 2;
constexpr int kMaxDepth = 1; ///< Groups hold processors only.

int indentOf(const QString& line)
{
    int at = 0;
    while (at < line.size() && line.at(at) == QLatin1Char(' '))
        ++at;
    return at;
}

/// Returns the lines of a block without the indentation of the first one; a line in quotation marks
/// is a name that could not be written as it is.
QStringList blockLines(const ScriptStep& step)
{
    std::optional<int> common;
    QStringList lines;
    for (const QString& line : step.block) {
        if (line.trimmed().isEmpty())
            continue;
        common = common.value_or(indentOf(line));
        const QString indent(indentOf(line) - *common, QLatin1Char(' '));
        QString name = line.mid(indentOf(line));
        ScriptProblem ignored;
        if (name.startsWith(QLatin1Char('"')))
            name = scriptTokens(name, ignored)->constFirst().text;
        lines.append(indent + name);
    }
    return lines;
}

/// Returns an error if rows are not indented by two spaces for each level, at most `levels` deep.
std::optional<ScriptProblem> checkIndents(const ScriptStep& step, int levels)
{
    std::optional<int> first;
    int deepest = 0; // what the next line may have
    for (int at = 0; at < step.block.size(); ++at) {
        const QString& line = step.block.at(at);
        if (line.trimmed().isEmpty())
            continue;
        const int indent = indentOf(line);
        const int depth = indent - first.value_or(indent);
        first = first.value_or(indent);
        if (depth < 0 || depth % kIndent != 0 || depth > deepest)
            return ScriptProblem{
                step.blockLine + at, indent + 1,
                QStringLiteral("rows are indented by two spaces for each level, from the first one "
                               "on; this one has %1 spaces more")
                    .arg(depth)};
        deepest = std::min(depth / kIndent + 1, levels) * kIndent;
    }
    return std::nullopt;
}

std::optional<ScriptProblem> checkLines(const ScriptStep& step)
{
    for (int at = 0; at < step.block.size(); ++at) {
        const QString& line = step.block.at(at);
        ScriptProblem problem{step.blockLine + at, 1, {}};
        if (line.contains(QLatin1Char('\t'))) {
            problem.column += line.indexOf(QLatin1Char('\t'));
            problem.reason = QStringLiteral("rows are indented by spaces, two for each level");
            return problem;
        }
        if (!line.trimmed().startsWith(QLatin1Char('"')))
            continue;
        const auto tokens = scriptTokens(line, problem);
        if (!tokens)
            return problem;
        if (tokens->size() > 1) {
            problem.column = tokens->at(1).column;
            problem.reason = QStringLiteral("one name is expected");
            return problem;
        }
    }
    return std::nullopt;
}

std::optional<ScriptProblem> checkRows(const ScriptStep& step)
{
    const auto problem = checkLines(step);
    return problem ? problem : checkIndents(step, kMaxDepth);
}

/// A list has no levels.
std::optional<ScriptProblem> checkList(const ScriptStep& step)
{
    const auto problem = checkLines(step);
    return problem ? problem : checkIndents(step, 0);
}

QString shown(const QStringList& lines)
{
    return lines.isEmpty() ? QStringLiteral("  (none)")
                           : QStringLiteral("  ") + lines.join(QStringLiteral("\n  "));
}

Progress compared(const QStringList& expected, const QStringList& found)
{
    int line = 0;
    while (line < expected.size() && line < found.size() && expected.at(line) == found.at(line))
        ++line;
    return Progress::when(expected == found,
                          QStringLiteral("they differ in line %1\nexpected:\n%2\nfound:\n%3")
                              .arg(line + 1)
                              .arg(shown(expected), shown(found)));
}

Progress expectRows(ScriptRun& run, const ScriptStep& step)
{
    const QTreeView* view = Targets::tree(run);
    if (!view)
        return Progress::waiting(QStringLiteral("there is no panel"));
    // The root row stands for the project.
    QModelIndex parent = view->model()->index(0, 0);
    if (step.has("ROW")) {
        const Targets::Row row = Targets::row(run, step.token("ROW"));
        if (!row.index.isValid())
            return Progress::waiting(row.reason);
        parent = row.index;
    }
    return compared(blockLines(step), Targets::rowLines(*view->model(), parent));
}

/// Returns what a screen reader says of a row, besides its name.
QString descriptionOf(const Targets::Row& row)
{
    scrollByWheel(*row.view, row.index);
    const QRect place = row.view->visualRect(row.index);
    QAccessibleInterface* view = QAccessible::queryAccessibleInterface(row.view);
    const QPoint global = row.view->viewport()->mapToGlobal(place.center());
    QAccessibleInterface* cell = view ? view->childAt(global.x(), global.y()) : nullptr;
    return cell ? cell->text(QAccessible::Description) : QString();
}

/// Returns whether the row is in a state. The names of states are those of the step.
bool isIn(const Targets::Row& row, const QString& state)
{
    const auto record = row.index.data(NodeDataRole).value<ProcessorNode>();
    if (state == QLatin1String("selected"))
        return row.view->selectionModel()->isSelected(row.index);
    if (state == QLatin1String("current"))
        return row.view->currentIndex() == row.index;
    if (state == QLatin1String("expanded"))
        return row.view->isExpanded(row.index);
    if (state == QLatin1String("collapsed"))
        return !row.view->isExpanded(row.index);
    if (state == QLatin1String("online"))
        return record.online;
    if (state == QLatin1String("offline"))
        return !record.online;
    return record.redundancyMode == 2; // backup
}

Progress expectRow(ScriptRun& run, const ScriptStep& step)
{
    const Targets::Row row = Targets::row(run, step.token("ROW"));
    if (!row.index.isValid())
        return Progress::waiting(row.reason);
    const QString wanted = step.value("selected|current|expanded|collapsed|online|offline|backup");
    return Progress::when(wanted.isEmpty() || isIn(row, wanted),
                          QStringLiteral("\"%1\" is not %2").arg(step.value("ROW"), wanted));
}

Progress expectNoRow(ScriptRun& run, const ScriptStep& step)
{
    const Targets::Row row = Targets::row(run, step.token("ROW"));
    return Progress::when(row.reason.startsWith(QStringLiteral("there is no row")),
                          row.reason.isEmpty()
                              ? QStringLiteral("there is a row \"%1\"").arg(step.value("ROW"))
                              : row.reason);
}

Progress expectSelection(ScriptRun& run, const ScriptStep& step)
{
    const QTreeView* view = Targets::tree(run);
    if (!view)
        return Progress::waiting(QStringLiteral("there is no panel"));
    QStringList found;
    const QModelIndexList rows = view->selectionModel()->selectedRows();
    for (const QModelIndex& row : rows)
        found.append(row.data().toString());
    QStringList expected = step.values("NAME");
    found.sort();
    expected.sort();
    return compared(expected, found);
}

Progress expectResults(ScriptRun&, const ScriptStep& step)
{
    const QListView* list = Targets::results();
    if (!list)
        return Progress::waiting(QStringLiteral("no list of results is open"));
    QStringList found;
    for (int row = 0; row < list->model()->rowCount(); ++row)
        found.append(list->model()->index(row, 0).data().toString());
    return compared(blockLines(step), found);
}

Progress expectField(ScriptRun& run, const ScriptStep& step)
{
    const auto found = Targets::field(run, step.value("NAME"));
    if (!found.target)
        return Progress::waiting(found.reason);
    const QString text = Targets::fieldText(*found.target);
    return Progress::when(
        text == run.withFolder(step.value("TEXT")),
        QStringLiteral("expected: %1\nfound:    %2").arg(step.value("TEXT"), text));
}

Progress expectButton(ScriptRun& run, const ScriptStep& step)
{
    const auto found = Targets::button(run, step.value("NAME"));
    if (!found.target)
        return Progress::waiting(found.reason);
    const QString state = step.value("enabled|disabled|checked|unchecked");
    const bool holds = state == QLatin1String("enabled")    ? found.target->isEnabled()
                       : state == QLatin1String("disabled") ? !found.target->isEnabled()
                       : state == QLatin1String("checked")  ? found.target->isChecked()
                                                            : !found.target->isChecked();
    return Progress::when(holds, QStringLiteral("\"%1\" is not %2").arg(step.value("NAME"), state));
}

Progress expectFocus(ScriptRun&, const ScriptStep& step)
{
    const QWidget* focus = QApplication::focusWidget();
    const QString name = focus ? focus->accessibleName() : QString();
    return Progress::when(name == step.value("NAME"),
                          QStringLiteral("the keyboard is in \"%1\"").arg(name));
}

} // namespace

void addRowSteps(StepRegistry& registry)
{
    registry.add({QStringLiteral("expect rows"), expectRows, checkRows, true});
    registry.add({QStringLiteral("expect rows in ROW"), expectRows, checkRows, true});
    registry.add({QStringLiteral("expect row ROW [is] [selected|current|expanded|collapsed|online|"
                                 "offline|backup]"),
                  expectRow,
                  {}});
    registry.add(
        {QStringLiteral("expect description of ROW TEXT"),
         [](ScriptRun& run, const ScriptStep& step) {
             const Targets::Row row = Targets::row(run, step.token("ROW"));
             if (!row.index.isValid())
                 return Progress::waiting(row.reason);
             const QString text = descriptionOf(row);
             return Progress::when(
                 Targets::matches(step.value("TEXT"), text),
                 QStringLiteral("expected: %1\nfound:    %2").arg(step.value("TEXT"), text));
         },
         {}});
    registry.add({QStringLiteral("expect no row ROW"), expectNoRow, {}});
    registry.add({QStringLiteral("expect selection [NAME...]"), expectSelection, {}});
    registry.add({QStringLiteral("expect results"), expectResults, checkList, true});
    registry.add({QStringLiteral("expect no results"),
                  [](ScriptRun&, const ScriptStep&) {
                      return Progress::when(!Targets::results(),
                                            QStringLiteral("a list of results is open"));
                  },
                  {}});
    registry.add({QStringLiteral("expect text of NAME TEXT"), expectField, {}});
    registry.add({QStringLiteral("expect button NAME enabled|disabled|checked|unchecked"),
                  expectButton,
                  {}});
    registry.add({QStringLiteral("expect focus NAME"), expectFocus, {}});
}
