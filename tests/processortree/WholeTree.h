#pragma once

#include "plugin/TargetSelectData.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "processortree/view/ProcessorTreeView.h"
#include "tests/support/TestPanel.h"
#include "tests/support/WarningTrap.h"

#include <QLineEdit>
#include <QTest>

#include <algorithm>
#include <memory>

/// A whole tree in which nothing was moved or renamed.
inline const QString kUntouched = QStringLiteral("All processors(4)[G10[1,2],G11[],3,4]");

/// The view of the panel over the host's tree, expanded: the groups 10 and 11, of which 10 holds
/// the processors 1 and 2, and 3 and 4 outside. The host may destroy the view.
struct WholeTree
{
    explicit WholeTree(Qt::WindowFlags flags = Qt::WindowFlags())
        : view(new CProcessorTreeView(*CTargetSelectData::Instance()))
    {
        panel.host().setProject(
            {testGroup(10), testGroup(11)},
            {testProcessor(1, 10), testProcessor(2, 10), testProcessor(3), testProcessor(4)});
        model().reset();
        view->setWindowFlags(flags);
        view->setModel(&model());
        view->expandAll();
        view->setGeometry(200, 150, 300, 420);
        view->show();
        view->activateWindow();
        view->setFocus();
        if (!QTest::qWaitForWindowActive(view, 30000))
            QTest::qFail("the tree does not become active", __FILE__, __LINE__);
        panel.host().clearCalls();
    }

    ~WholeTree() { delete view; }
    WholeTree(const WholeTree&) = delete;
    WholeTree& operator=(const WholeTree&) = delete;

    FakeHandler& host() { return panel.host(); }
    CProcessorTreeModel& model() { return panel.model(); }
    QWidget* viewport() const { return view->viewport(); }
    QItemSelectionModel* selection() const { return view->selectionModel(); }

    QModelIndex root() { return model().index(0, 0); }

    QModelIndex index(quint32 n) { return panel.index(n); }

    /// Returns a point on the name of row `n`; 0 is the root.
    QPoint place(quint32 n)
    {
        const QRect row = view->visualRect(n == 0 ? root() : index(n));
        return {row.left() + 70, row.center().y()};
    }

    /// Returns a point below all rows.
    QPoint nowhere() { return {100, viewport()->height() - 20}; }

    /// Makes the rows the selected ones, the first one current where it may be.
    void select(const QList<quint32>& rows)
    {
        selection()->clearSelection();
        for (const quint32 n : rows)
            selection()->select(index(n), QItemSelectionModel::Select);
        if (!rows.isEmpty())
            selection()->setCurrentIndex(index(rows.first()), QItemSelectionModel::NoUpdate);
        panel.host().clearCalls();
        panel.host().memberships.clear();
    }

    /// "1,2": the selected rows by their texts, from top to bottom.
    QString selected() const
    {
        QModelIndexList rows = selection()->selectedIndexes();
        std::sort(rows.begin(), rows.end(), [this](const QModelIndex& one, const QModelIndex& two) {
            return view->visualRect(one).top() < view->visualRect(two).top();
        });
        QStringList texts;
        for (const QModelIndex& row : qAsConst(rows))
            texts.append(row.data().toString());
        return texts.join(QLatin1Char(','));
    }

    /// Returns the moves that were reported to the host, in order: "2>10".
    QString moves()
    {
        QStringList told;
        for (const FakeHandler::Membership& move : qAsConst(panel.host().memberships)) {
            QStringList ids;
            for (const QUuid& id : move.processors)
                ids.append(QString::number(id.data1));
            told.append(ids.join(QLatin1Char(',')) + QLatin1Char('>')
                        + QString::number(move.groupId.data1));
        }
        return told.join(QLatin1Char(' '));
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QTest::keyClick(view, key, modifiers);
    }

    /// Returns the open editor of a name, or null.
    QLineEdit* editor() const { return viewport()->findChild<QLineEdit*>(); }

    TestPanel panel;
    QPointer<CProcessorTreeView> view;
};
