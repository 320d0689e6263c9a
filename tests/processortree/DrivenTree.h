#pragma once

#include "plugin/TargetSelectData.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "processortree/view/ProcessorTreeView.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/TestPanel.h"
#include "tests/support/WarningTrap.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QTest>

/// "1,2": the rows that are selected in `view`, in the order of their selection.
inline QString selectedTexts(const QAbstractItemView& view)
{
    QStringList texts;
    const QModelIndexList rows = view.selectionModel()->selectedIndexes();
    for (const QModelIndex& row : rows)
        texts.append(row.data().toString());
    return texts.join(QLatin1Char(','));
}

/// The view of the processor tree, which the host may destroy, over the host's project, expanded,
/// and somebody who answers its menus and boxes. The groups 10 and 11, of which 10 holds the
/// processors 1 and 2, and 3 and 4 outside.
struct DrivenTree
{
    DrivenTree()
        : view(new CProcessorTreeView(*CTargetSelectData::Instance()))
    {
        fill({testGroup(10), testGroup(11)},
             {testProcessor(1, 10), testProcessor(2, 10), testProcessor(3), testProcessor(4)});
        view->setModel(&model());
        view->expandAll();
        view->resize(300, 420);
        view->show();
        activate();
        host().clearCalls();
    }

    /// The bridge outlives the tree, and would keep it read-only for the next one.
    ~DrivenTree()
    {
        delete view;
        panel.data().SetReadOnly(false);
    }

    DrivenTree(const DrivenTree&) = delete;
    DrivenTree& operator=(const DrivenTree&) = delete;

    FakeHandler& host() { return panel.host(); }
    CProcessorTreeModel& model() { return panel.model(); }

    void fill(const QList<ProcessorGroupNode>& groups, const QList<ProcessorNode>& processors)
    {
        host().setProject(groups, processors);
        model().reset();
        if (view)
            view->expandAll();
        host().clearCalls();
    }

    /// Activates the view, at the start and after a message box was active.
    void activate() const
    {
        view->activateWindow();
        view->setFocus();
        if (!QTest::qWaitForWindowActive(view))
            QTest::qFail("the view is not active", __FILE__, __LINE__);
    }

    /// Row `n`; 0 is the root.
    QModelIndex index(quint32 n) { return panel.index(n); }

    /// Returns a point on the name of row `n`.
    QPoint place(quint32 n)
    {
        const QRect row = view->visualRect(index(n));
        return {row.left() + 70, row.center().y()};
    }

    /// Selects the rows one after the other; the first one is current where it may be.
    void select(const QList<quint32>& rows)
    {
        QItemSelectionModel* const selection = view->selectionModel();
        selection->clearSelection();
        for (const quint32 n : rows)
            selection->select(index(n), QItemSelectionModel::Select);
        if (!rows.isEmpty())
            selection->setCurrentIndex(index(rows.first()), QItemSelectionModel::NoUpdate);
        host().clearCalls();
    }

    /// Sends what the platform sends: press, context menu event, release.
    void rightClick(quint32 n)
    {
        QWidget* const viewport = view->viewport();
        const QPoint position = place(n);
        QTest::mousePress(viewport, Qt::RightButton, Qt::NoModifier, position);
        QContextMenuEvent event(QContextMenuEvent::Mouse, position,
                                viewport->mapToGlobal(position));
        QApplication::sendEvent(viewport, &event);
        if (view)
            QTest::mouseRelease(viewport, Qt::RightButton, Qt::NoModifier, position);
    }

    QString selected() const { return selectedTexts(*view); }

    QString current() const { return view->currentIndex().data().toString(); }

    /// Returns the open editor of a name, or null.
    QLineEdit* editor() const { return view->viewport()->findChild<QLineEdit*>(); }

    /// Returns the calls of these names, with identities as numbers: "AddProcessors(10,1)".
    QString asked(const QStringList& names)
    {
        QStringList texts;
        const auto calls = host().calls();
        for (const FakeHandler::Call& call : calls) {
            if (names.contains(call.name))
                texts.append(call.name + QLatin1Char('(') + numbered(call.argument)
                             + QLatin1Char(')'));
        }
        return texts.join(QLatin1Char(' '));
    }

    /// Makes the host run `action` once, inside the question of that name.
    void doInside(const QString& name, std::function<void()> action)
    {
        host().doInside(name, std::move(action));
    }

    TestPanel panel;
    QPointer<CProcessorTreeView> view;
    DialogDriver driver;

private:
    static QString numbered(QString text)
    {
        for (quint32 n = 0; n < 100; ++n)
            text.replace(testId(n).toString(), QString::number(n));
        return text;
    }
};

/// "Rename|--|(Delete)": the visible entries, those that are disabled in parentheses.
inline QString entriesOf(const QWidget& menu)
{
    QStringList texts;
    const auto actions = menu.actions();
    for (const QAction* action : actions) {
        if (!action->isVisible())
            continue;
        if (action->isSeparator())
            texts.append(QStringLiteral("--"));
        else if (action->isEnabled())
            texts.append(action->text());
        else
            texts.append(QStringLiteral("(%1)").arg(action->text()));
    }
    return texts.join(QLatin1Char('|'));
}

/// Chooses an entry with the mouse; the test fails when there is none of that text.
inline void choose(QWidget& window, const QString& text)
{
    auto* menu = qobject_cast<QMenu*>(&window);
    const auto actions = menu ? menu->actions() : QList<QAction*>();
    for (QAction* action : actions) {
        if (action->text() == text && action->isVisible()) {
            QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                              menu->actionGeometry(action).center());
            return;
        }
    }
    QTest::qFail(qPrintable(QStringLiteral("no entry \"%1\"").arg(text)), __FILE__, __LINE__);
    window.close();
}
