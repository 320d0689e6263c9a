#pragma once

#include "host/widgets/TreeView.h"
#include "plugin/TargetSelectData.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "processortree/view/ProcessorSelectionModel.h"
#include "processortree/view/ProcessorTreeDelegate.h"
#include "tests/support/TestPanel.h"
#include "tests/support/WarningTrap.h"

#include <QTest>

/// The host's tree in a window, with the product's model, selection model and delegate: the groups
/// 10 and 11, of which 10 holds the processors 1 and 2, and 3 and 4 outside.
struct ShownTree
{
    ShownTree()
    {
        panel.host().setProject(
            {testGroup(10), testGroup(11)},
            {testProcessor(1, 10), testProcessor(2, 10), testProcessor(3), testProcessor(4)});
        model().reset();
        view.setModel(&model());
        selection = new CProcessorSelectionModel(*CTargetSelectData::Instance(), &model(), &view);
        QItemSelectionModel* before = view.selectionModel();
        view.setSelectionModel(selection);
        delete before;
        view.setSelectionMode(QAbstractItemView::ExtendedSelection);
        view.setEditTriggers(QAbstractItemView::EditKeyPressed);
        delegate = new CProcessorTreeDelegate(*CTargetSelectData::Instance(), &view);
        view.setItemDelegate(delegate);
        view.expandAll();
        view.resize(300, 400);
        view.show();
        panel.host().clearCalls();
    }

    FakeHandler& host() { return panel.host(); }
    CProcessorTreeModel& model() { return panel.model(); }

    QModelIndex index(quint32 n) { return panel.index(n); }

    QRect row(quint32 n) { return view.visualRect(index(n)); }

    /// Where the button of row `n` has its place.
    QRect button(quint32 n)
    {
        const QRect rect = row(n);
        return {rect.left() + rect.width() - 40, rect.top() + (rect.height() - 20) / 2, 20, 20};
    }

    QWidget* viewport() const { return view.viewport(); }

    void click(const QPoint& position, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::mouseClick(viewport(), Qt::LeftButton, modifiers, position);
    }

    TestPanel panel;
    CTreeView view;
    CProcessorSelectionModel* selection = nullptr; // Qt child of the view
    CProcessorTreeDelegate* delegate = nullptr;    // Qt child of the view
};
