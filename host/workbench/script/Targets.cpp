#include "host/workbench/script/Targets.h"

#include "Interface/ProcessorNode.h"
#include "Interface/TargetSelectAreaInterface.h"
#include "host/workbench/script/ScriptRun.h"
#include "host/workbench/session/Session.h"
#include "host/workbench/window/MainWindow.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QListView>
#include <QMenu>
#include <QRegularExpression>
#include <QTreeView>

#include <algorithm>
#include <functional>

namespace Targets {

namespace {

template <typename Widget>
QList<Widget*> visible(const QWidget& parent, const std::function<bool(Widget&)>& wanted)
{
    QList<Widget*> found;
    const auto all = parent.findChildren<Widget*>();
    std::copy_if(all.begin(), all.end(), std::back_inserter(found), [&](Widget* one) {
        return one->isVisible() && one->window() == parent.window() && wanted(*one);
    });
    return found;
}

/// Returns what is wanted in the panel if it is there, else anywhere in front.
template <typename Widget>
Found<Widget> inFront(ScriptRun& run, const QString& what,
                      const std::function<bool(Widget&)>& wanted)
{
    QWidget* front = popup();
    if (!front)
        front = dialog();
    QList<Widget*> found;
    QString place = QStringLiteral("the window");
    if (front) {
        place = QStringLiteral("\"%1\"").arg(front->windowTitle());
        found = visible<Widget>(*front, wanted);
    } else {
        if (run.session().layer())
            found = visible<Widget>(*run.session().layer()->GetWidget(), wanted);
        if (found.isEmpty())
            found = visible<Widget>(run.window(), wanted);
    }
    if (found.size() == 1)
        return {found.first(), {}};
    if (found.isEmpty())
        return {nullptr, QStringLiteral("there is no %1 in %2").arg(what, place)};
    return {nullptr, QStringLiteral("there are %1 of %2 in %3").arg(found.size()).arg(what, place)};
}

bool isCalled(const QWidget& widget, const QString& name)
{
    return widget.accessibleName() == name || widget.objectName() == name;
}

QStringList labelsOf(const QWidget& field)
{
    QStringList texts;
    const auto labels = field.window()->findChildren<QLabel*>();
    for (const QLabel* label : labels) {
        if (label->buddy() == &field)
            texts.append(plain(label->text()));
    }
    return texts;
}

void addRows(const QAbstractItemModel& model, const QModelIndex& parent, const QString& indent,
             QStringList& lines)
{
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        lines.append(indent + index.data().toString());
        addRows(model, index, indent + QStringLiteral("  "), lines);
    }
}

void visitRows(const QAbstractItemModel& model, const QModelIndex& parent,
               const std::function<void(const QModelIndex&)>& visit)
{
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        visit(index);
        visitRows(model, index, visit);
    }
}

bool hasNumber(const QModelIndex& index, int number)
{
    return index.data(NodeTypeRole).toInt() >= NodeProcessor
           && index.data(NodeDataRole).value<ProcessorNode>().number == number - 1;
}

} // namespace

QWidget* popup()
{
    return QApplication::activePopupWidget();
}

QWidget* dialog()
{
    return QApplication::activeModalWidget();
}

Found<QAbstractButton> button(ScriptRun& run, const QString& name)
{
    return inFront<QAbstractButton>(
        run, QStringLiteral("button \"%1\"").arg(name), [&](const QAbstractButton& one) {
            return plain(one.text()) == plain(name) || isCalled(one, name);
        });
}

Found<QWidget> field(ScriptRun& run, const QString& name)
{
    return inFront<QWidget>(run, QStringLiteral("field \"%1\"").arg(name), [&](const QWidget& one) {
        return one.focusPolicy() != Qt::NoFocus && !qobject_cast<const QAbstractButton*>(&one)
               && (isCalled(one, name) || labelsOf(one).contains(name));
    });
}

QString fieldText(QWidget& field)
{
    QAccessibleInterface* told = QAccessible::queryAccessibleInterface(&field);
    return told ? told->text(QAccessible::Value) : QString();
}

Entry menuEntry(const QString& text)
{
    auto* menu = qobject_cast<QMenu*>(popup());
    if (!menu)
        return {nullptr, {}, false, QStringLiteral("no menu is open")};
    QStringList offered;
    const auto actions = menu->actions();
    for (const QAction* action : actions) {
        if (!action->isVisible() || action->isSeparator())
            continue;
        if (plain(action->text()) == plain(text))
            return {
                menu, menu->actionGeometry(const_cast<QAction*>(action)), action->isEnabled(), {}};
        offered.append(plain(action->text()));
    }
    return {nullptr,
            {},
            false,
            QStringLiteral("there is no entry \"%1\" in the menu:\n  %2")
                .arg(text, offered.join(QStringLiteral("\n  ")))};
}

QStringList messages()
{
    QStringList texts;
    const QWidget* front = dialog();
    if (!front)
        return texts;
    const auto labels = front->findChildren<QLabel*>();
    for (const QLabel* label : labels) {
        if (label->isVisible() && !label->text().isEmpty())
            texts.append(label->text());
    }
    return texts;
}

QTreeView* tree(ScriptRun& run)
{
    if (!run.session().layer())
        return nullptr;
    const auto views = run.session().layer()->GetWidget()->findChildren<QTreeView*>();
    const auto found = std::find_if(views.begin(), views.end(),
                                    [](const QTreeView* view) { return view->model() != nullptr; });
    return found == views.end() ? nullptr : *found;
}

Row row(ScriptRun& run, const ScriptToken& name)
{
    Row result;
    result.view = tree(run);
    if (!result.view) {
        result.reason = QStringLiteral("there is no panel");
        return result;
    }
    bool isNumber = false;
    const int number = name.text.toInt(&isNumber);
    isNumber = isNumber && name.kind == ScriptToken::Kind::Word;
    QModelIndexList byName;
    QModelIndexList byPath;
    visitRows(*result.view->model(), {}, [&](const QModelIndex& index) {
        const QString text = index.data().toString();
        if (isNumber ? hasNumber(index, number) : text == name.text)
            byName.append(index);
        else if (index.parent().data().toString() + QLatin1Char('/') + text == name.text)
            byPath.append(index);
    });
    const QModelIndexList& found = byName.isEmpty() ? byPath : byName;
    if (found.size() == 1)
        result.index = found.first();
    else
        result.reason =
            found.isEmpty()
                ? QStringLiteral("there is no row \"%1\"").arg(name.text)
                : QStringLiteral("%1 rows are called \"%2\"").arg(found.size()).arg(name.text);
    return result;
}

QStringList rowLines(const QAbstractItemModel& model, const QModelIndex& parent)
{
    QStringList lines;
    addRows(model, parent, {}, lines);
    return lines;
}

QListView* results()
{
    QWidget* open = popup();
    if (!open || qobject_cast<QMenu*>(open))
        return nullptr;
    auto* view = qobject_cast<QListView*>(open);
    return view ? view : open->findChild<QListView*>();
}

QString plain(QString text)
{
    static const QRegularExpression key(QStringLiteral("\\(&.\\)"));
    text.remove(key).remove(QLatin1Char('&'));
    while (text.endsWith(QLatin1Char('.')) || text.endsWith(QChar(0x2026)))
        text.chop(1);
    return text;
}

bool matches(const QString& pattern, const QString& text)
{
    QStringList parts = pattern.split(QLatin1Char('*'));
    for (QString& part : parts)
        part = QRegularExpression::escape(part);
    const QRegularExpression whole(
        QRegularExpression::anchoredPattern(parts.join(QStringLiteral(".*"))),
        QRegularExpression::DotMatchesEverythingOption);
    return whole.match(text).hasMatch();
}

} // namespace Targets
