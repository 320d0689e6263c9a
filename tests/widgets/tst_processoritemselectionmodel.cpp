#include "host/widgets/ProcessorItemSelectionModel.h"
#include "host/widgets/TreeView.h"
#include "tests/support/WarningTrap.h"
#include "tests/widgets/SampleTree.h"

#include <QSignalSpy>
#include <QTest>

namespace {
using Flags = QItemSelectionModel;

struct Form
{
    Form()
        : selection(&tree.model)
        , changes(&selection, &QItemSelectionModel::selectionChanged)
    {
        view.setModel(&tree.model);
        view.setSelectionModel(&selection);
        view.expandAll();
        view.resize(240, 400);
        view.show();
        view.activateWindow();
    }

    QString selected() const { return names(selection.selectedIndexes()); }

    void click(const QModelIndex& row, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        const QPoint end(view.viewport()->width() / 2, view.visualRect(row).center().y());
        QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers, end);
    }

    SampleTree tree;
    CTreeView view;
    CProcessorItemSelectionModel selection;
    QSignalSpy changes;
};

} // namespace

class TestProcessorItemSelectionModel final : public QObject
{
    Q_OBJECT

private slots:
    void shouldAcceptANewSelection();
    void shouldAddRowsOfTheSameKindOnly();
    void shouldSelectTheAnchorsKindInARange();
    void shouldSelectTheAnchorsKindWhileDragging();
    void shouldSelectAllProcessors();
    void shouldSelectGroupsWithoutProcessors();
    void shouldEmitNothingWithoutAChange();
    void shouldSkipRowsWithoutType();
    void shouldClearAndDeselectRowsOfAnyKind();
    void shouldResetItsStateWithTheModel();
    void shouldForgetRemovedRows();
    void shouldKeepLargeRangesTogether();
};

void TestProcessorItemSelectionModel::shouldAcceptANewSelection()
{
    Form form;
    form.click(form.tree.processor(1));
    QCOMPARE(form.selected(), QStringLiteral("1"));
    form.click(form.tree.a());
    QCOMPARE(form.selected(), QStringLiteral("A"));
    form.click(form.tree.all());
    QCOMPARE(form.selected(), QStringLiteral("All(5)"));
    form.click(form.tree.processor(5));
    QCOMPARE(form.selected(), QStringLiteral("5"));
    QCOMPARE(form.changes.count(), 4);
}

void TestProcessorItemSelectionModel::shouldAddRowsOfTheSameKindOnly()
{
    Form form;
    form.click(form.tree.processor(1));
    form.click(form.tree.processor(4), Qt::ControlModifier);
    QCOMPARE(form.selected(), QStringLiteral("1 4"));
    form.click(form.tree.a(), Qt::ControlModifier);
    form.click(form.tree.all(), Qt::ControlModifier);
    QCOMPARE(form.selected(), QStringLiteral("1 4"));
    form.click(form.tree.processor(1), Qt::ControlModifier);
    QCOMPARE(form.selected(), QStringLiteral("4"));

    form.click(form.tree.a());
    form.click(form.tree.b(), Qt::ControlModifier);
    form.click(form.tree.processor(1), Qt::ControlModifier);
    QCOMPARE(form.selected(), QStringLiteral("A B"));

    form.click(form.tree.all());
    form.click(form.tree.a(), Qt::ControlModifier);
    QCOMPARE(form.selected(), QStringLiteral("All(5)"));
    form.click(form.tree.all(), Qt::ControlModifier);
    form.click(form.tree.a(), Qt::ControlModifier);
    QCOMPARE(form.selected(), QStringLiteral("A"));
}

void TestProcessorItemSelectionModel::shouldSelectTheAnchorsKindInARange()
{
    Form form;
    form.click(form.tree.processor(2));
    form.click(form.tree.processor(4), Qt::ShiftModifier);
    QCOMPARE(form.selected(), QStringLiteral("2 3 4"));
    form.click(form.tree.all(), Qt::ShiftModifier);
    QCOMPARE(form.selected(), QStringLiteral("1 2"));

    form.click(form.tree.a());
    form.click(form.tree.processor(5), Qt::ShiftModifier);
    QCOMPARE(form.selected(), QStringLiteral("A B"));
    form.click(form.tree.all());
    form.click(form.tree.processor(5), Qt::ShiftModifier);
    QCOMPARE(form.selected(), QStringLiteral("All(5)"));
}

void TestProcessorItemSelectionModel::shouldSelectTheAnchorsKindWhileDragging()
{
    Form form;
    const auto at = [&form](const QModelIndex& row) {
        return QPoint(form.view.viewport()->width() / 2, form.view.visualRect(row).center().y());
    };
    const auto moveTo = [&](const QModelIndex& row) {
        QMouseEvent move(QEvent::MouseMove, at(row), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(form.view.viewport(), &move);
    };
    QTest::mousePress(form.view.viewport(), Qt::LeftButton, Qt::NoModifier, at(form.tree.a()));
    moveTo(form.tree.processor(1));
    moveTo(form.tree.b());
    moveTo(form.tree.processor(4));
    QCOMPARE(form.selected(), QStringLiteral("A B"));
    QTest::mouseRelease(form.view.viewport(), Qt::LeftButton, Qt::NoModifier,
                        at(form.tree.processor(4)));
    QCOMPARE(form.selected(), QStringLiteral("A B"));
}

void TestProcessorItemSelectionModel::shouldSelectAllProcessors()
{
    Form form;
    QTest::keyClick(&form.view, Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(form.selected(), QStringLiteral("1 2 3 4 5"));
    form.click(form.tree.a());
    QTest::keyClick(&form.view, Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(form.selected(), QStringLiteral("1 2 3 4 5"));
}

void TestProcessorItemSelectionModel::shouldSelectGroupsWithoutProcessors()
{
    Form form;
    form.view.collapse(form.tree.a());
    form.view.collapse(form.tree.b());
    form.tree.root->removeRows(2, 2);
    form.view.selectAll();
    QCOMPARE(form.selected(), QStringLiteral("A B"));
    form.tree.root->removeRows(0, 2);
    form.view.selectAll();
    QCOMPARE(form.selected(), QStringLiteral("All(5)"));
}

void TestProcessorItemSelectionModel::shouldEmitNothingWithoutAChange()
{
    Form form;
    form.selection.select(form.tree.processor(1), Flags::ClearAndSelect);
    QCOMPARE(form.changes.count(), 1);
    form.selection.select(form.tree.processor(1), Flags::ClearAndSelect);
    form.selection.select(form.tree.a(), Flags::Toggle);
    form.selection.select(form.tree.all(), Flags::Select);
    form.selection.select(form.tree.a(), Flags::SelectCurrent);
    form.selection.select(form.tree.a(), Flags::Deselect);
    form.selection.select(QModelIndex(), Flags::Select);
    form.selection.select(QItemSelection(), Flags::Select);
    QCOMPARE(form.changes.count(), 1);
    QCOMPARE(form.selected(), QStringLiteral("1"));
}

void TestProcessorItemSelectionModel::shouldSkipRowsWithoutType()
{
    Form form;
    auto* foreign = new QStandardItem(QStringLiteral("foreign"));
    auto* text = new QStandardItem(QStringLiteral("text"));
    text->setData(QStringLiteral("no type"), NodeTypeRole);
    form.tree.root->appendRows({foreign, text});
    form.selection.select(foreign->index(), Flags::Select);
    form.selection.select(text->index(), Flags::Toggle);
    QCOMPARE(form.selected(), QString());

    const QItemSelection range(form.tree.processor(4), text->index());
    form.selection.select(range, Flags::ClearAndSelect);
    QCOMPARE(form.selected(), QStringLiteral("4 5"));
}

void TestProcessorItemSelectionModel::shouldClearAndDeselectRowsOfAnyKind()
{
    Form form;
    form.view.selectAll();
    form.selection.select(form.tree.processor(2), Flags::Deselect);
    QCOMPARE(form.selected(), QStringLiteral("1 3 4 5"));
    form.selection.select(QItemSelection(), Flags::Clear);
    QCOMPARE(form.selected(), QString());
    form.view.selectAll();
    form.selection.clearSelection();
    QVERIFY(!form.selection.hasSelection());
}

void TestProcessorItemSelectionModel::shouldResetItsStateWithTheModel()
{
    Form form;
    form.view.selectAll();
    form.tree.model.clear();
    QCOMPARE(form.selected(), QString());
    QStandardItem* group = groupRow(QStringLiteral("C"));
    form.tree.model.appendRow(group);
    form.selection.select(group->index(), Flags::Toggle);
    QCOMPARE(form.selected(), QStringLiteral("C"));
}

void TestProcessorItemSelectionModel::shouldForgetRemovedRows()
{
    Form form;
    form.selection.select(form.tree.processor(4), Flags::ClearAndSelect);
    form.tree.root->removeRow(2);
    QCOMPARE(form.selected(), QString());
    form.selection.select(form.tree.a(), Flags::Toggle);
    QCOMPARE(form.selected(), QStringLiteral("A"));
}

void TestProcessorItemSelectionModel::shouldKeepLargeRangesTogether()
{
    Form form;
    for (int number = 6; number <= 255; ++number)
        form.tree.root->appendRow(processorRow(namedProcessor(QString::number(number))));
    form.view.selectAll();
    QCOMPARE(form.selection.selectedIndexes().size(), 255);
    QCOMPARE(form.selection.selection().size(), 3);
}

TSA_TEST_MAIN(TestProcessorItemSelectionModel)

#include "tst_processoritemselectionmodel.moc"
