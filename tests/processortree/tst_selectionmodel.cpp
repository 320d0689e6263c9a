#include "plugin/TargetSelectData.h"
#include "tests/processortree/ShownTree.h"

#include <QSignalSpy>
#include <QTest>

namespace {

QList<QUuid> ids(std::initializer_list<quint32> numbers)
{
    QList<QUuid> result;
    for (const quint32 n : numbers)
        result.append(testId(n));
    return result;
}

} // namespace

class TestSelectionModel final : public QObject
{
    Q_OBJECT

private slots:
    void shouldReportAClickedProcessor();
    void shouldKeepTheCurrentProcessorWhenAGroupIsClicked();
    void shouldReportAGroupWithItsProcessors();
    void shouldReportSeveralProcessorsInTheirOrder();
    void shouldReportThatNothingIsSelected();
    void shouldNotReportTheSameSelection();
    void shouldNotReportWhileTheGuardIsSet();
    void shouldGuardItsOwnReport();
    void shouldNameThePreviousProcessor();
    void shouldAskForTheRecordOfTheOldProcessor();
    void shouldIgnoreRowsThatCannotBecomeCurrent();
    void shouldBeInvokableByName();
    void shouldStayQuietWhenTheTreeIsFilledAnew();
    void shouldStandAHostThatChangesTheTreeWhenAsked();
    void shouldStandAHostThatChangesTheTreeWhenTold();
    void shouldStandAHostThatTakesTheViewAway();
};

void TestSelectionModel::shouldReportAClickedProcessor()
{
    ShownTree tree;
    tree.click(tree.row(3).center());
    QCOMPARE(tree.view.currentIndex(), tree.index(3));
    QCOMPARE(tree.host().selections.size(), 1);
    const FakeHandler::Selection& told = tree.host().selections.first();
    QCOMPARE(told.focus, testId(3));
    QCOMPARE(told.processors, ids({3}));
    QVERIFY(told.groups.isEmpty());
    QVERIFY(told.previous.isNull());
}

void TestSelectionModel::shouldKeepTheCurrentProcessorWhenAGroupIsClicked()
{
    ShownTree tree;
    tree.click(tree.row(3).center());
    tree.click(tree.row(10).center());
    QCOMPARE(tree.view.currentIndex(), tree.index(3));
    QCOMPARE(tree.selection->selectedIndexes(), QModelIndexList({tree.index(10)}));
}

void TestSelectionModel::shouldReportAGroupWithItsProcessors()
{
    ShownTree tree;
    tree.click(tree.row(10).center());
    QCOMPARE(tree.host().selections.size(), 1);
    const FakeHandler::Selection& told = tree.host().selections.first();
    QCOMPARE(told.focus, testId(10));
    QVERIFY(told.processors.isEmpty());
    QCOMPARE(told.groups.size(), 1);
    QCOMPARE(told.groups.first().id, testId(10));
    QCOMPARE(told.groups.first().processors, ids({1, 2}));
}

void TestSelectionModel::shouldReportSeveralProcessorsInTheirOrder()
{
    ShownTree tree;
    tree.click(tree.row(4).center());
    tree.click(tree.row(3).center(), Qt::ControlModifier);
    QCOMPARE(tree.host().selections.size(), 2);
    const FakeHandler::Selection& told = tree.host().selections.last();
    QCOMPARE(told.processors, ids({3, 4}));
    QCOMPARE(told.focus, testId(4));
    QCOMPARE(told.previous, testId(4));
}

void TestSelectionModel::shouldReportThatNothingIsSelected()
{
    ShownTree tree;
    tree.click(tree.row(4).center());
    tree.selection->clearSelection();
    QCOMPARE(tree.host().selections.size(), 2);
    const FakeHandler::Selection& told = tree.host().selections.last();
    QVERIFY(told.focus.isNull() && told.processors.isEmpty() && told.groups.isEmpty());
}

void TestSelectionModel::shouldNotReportTheSameSelection()
{
    ShownTree tree;
    tree.click(tree.row(3).center());
    tree.click(tree.row(3).center());
    tree.selection->select(tree.index(3), QItemSelectionModel::ClearAndSelect);
    tree.selection->setCurrentIndex(tree.index(3), QItemSelectionModel::NoUpdate);
    QCOMPARE(tree.host().selections.size(), 1);
}

void TestSelectionModel::shouldNotReportWhileTheGuardIsSet()
{
    ShownTree tree;
    CTargetSelectData& bridge = tree.panel.data();
    bridge.SetSelectionEchoGuard(true);
    tree.selection->setCurrentIndex(tree.index(3), QItemSelectionModel::ClearAndSelect);
    QVERIFY(tree.selection->isSelected(tree.index(3)));
    QVERIFY(tree.host().selections.isEmpty());
    QVERIFY(bridge.IsSelectionEchoGuarded());
    bridge.SetSelectionEchoGuard(false);
}

void TestSelectionModel::shouldGuardItsOwnReport()
{
    ShownTree tree;
    bool guarded = false;
    tree.host().inside = [&](const QString& name) {
        if (name != QLatin1String("ReportSelection"))
            return;
        guarded = tree.panel.data().IsSelectionEchoGuarded();
        tree.selection->select(tree.index(4), QItemSelectionModel::ClearAndSelect);
    };
    tree.click(tree.row(3).center());
    QVERIFY(guarded);
    QVERIFY(tree.selection->isSelected(tree.index(4)));
    QCOMPARE(tree.host().selections.size(), 1);
    QVERIFY(!tree.panel.data().IsSelectionEchoGuarded());
}

void TestSelectionModel::shouldNameThePreviousProcessor()
{
    ShownTree tree;
    tree.click(tree.row(3).center());
    tree.click(tree.row(10).center());
    QVERIFY(tree.host().selections.last().previous.isNull());
    tree.click(tree.row(4).center());
    QCOMPARE(tree.host().selections.last().previous, testId(3));
    tree.selection->setCurrentIndex(tree.index(1), QItemSelectionModel::ClearAndSelect);
    QCOMPARE(tree.host().selections.last().previous, testId(4));
}

void TestSelectionModel::shouldAskForTheRecordOfTheOldProcessor()
{
    ShownTree tree;
    tree.selection->setCurrentIndex(tree.index(3), QItemSelectionModel::NoUpdate);
    QCOMPARE(tree.host().callCount(QStringLiteral("GetProcessorNode")), 0);
    tree.selection->setCurrentIndex(tree.index(4), QItemSelectionModel::NoUpdate);
    QCOMPARE(tree.host().callCount(QStringLiteral("GetProcessorNode")), 1);
    const auto calls = tree.host().calls();
    QVERIFY(std::any_of(calls.cbegin(), calls.cend(), [](const FakeHandler::Call& call) {
        return call.name == QLatin1String("GetProcessorNode")
               && call.argument == testId(3).toString();
    }));
}

void TestSelectionModel::shouldIgnoreRowsThatCannotBecomeCurrent()
{
    ShownTree tree;
    tree.selection->setCurrentIndex(tree.index(3), QItemSelectionModel::NoUpdate);
    QSignalSpy changes(tree.selection, &QItemSelectionModel::currentChanged);
    const auto ClearAndSelect = QItemSelectionModel::ClearAndSelect;
    tree.selection->setCurrentIndex(tree.index(10), ClearAndSelect);
    tree.selection->setCurrentIndex(tree.index(0), ClearAndSelect);
    tree.selection->setCurrentIndex(QModelIndex(), ClearAndSelect);
    QVERIFY(tree.model().setData(tree.index(4), QPoint(), NodeTypeRole));
    tree.selection->setCurrentIndex(tree.model().index(3, 0, tree.index(0)), ClearAndSelect);
    QCOMPARE(changes.count(), 0);
    QVERIFY(!tree.selection->hasSelection());
    QVERIFY(tree.host().selections.isEmpty());
}

void TestSelectionModel::shouldBeInvokableByName()
{
    ShownTree tree;
    const QItemSelectionModel::SelectionFlags command = QItemSelectionModel::ClearAndSelect;
    QVERIFY(QMetaObject::invokeMethod(tree.selection, "setCurrentIndex",
                                      Q_ARG(QModelIndex, tree.index(3)),
                                      Q_ARG(QItemSelectionModel::SelectionFlags, command)));
    QCOMPARE(tree.view.currentIndex(), tree.index(3));
    const QItemSelection rows(tree.index(3), tree.index(4));
    QVERIFY(QMetaObject::invokeMethod(tree.selection, "select", Q_ARG(QItemSelection, rows),
                                      Q_ARG(QItemSelectionModel::SelectionFlags, command)));
    QCOMPARE(tree.host().selections.last().processors, ids({3, 4}));
}

void TestSelectionModel::shouldStayQuietWhenTheTreeIsFilledAnew()
{
    ShownTree tree;
    tree.click(tree.row(3).center());
    tree.host().selections.clear();
    tree.model().reset();
    QVERIFY(tree.host().selections.isEmpty());
    QVERIFY(!tree.selection->hasSelection());
    QVERIFY(!tree.selection->currentIndex().isValid());
}

void TestSelectionModel::shouldStandAHostThatChangesTheTreeWhenAsked()
{
    ShownTree tree;
    tree.click(tree.row(3).center());
    tree.host().inside = [&](const QString& name) {
        if (name == QLatin1String("GetProcessorNode"))
            tree.model().removeNode(testId(4));
    };
    tree.selection->setCurrentIndex(tree.index(4), QItemSelectionModel::ClearAndSelect);
    QVERIFY(!tree.index(4).isValid());
    QVERIFY(tree.selection->currentIndex() == tree.index(3));
}

void TestSelectionModel::shouldStandAHostThatChangesTheTreeWhenTold()
{
    ShownTree tree;
    tree.host().inside = [&](const QString& name) {
        if (name == QLatin1String("ReportSelection"))
            tree.model().reset();
    };
    tree.selection->setCurrentIndex(tree.index(4), QItemSelectionModel::ClearAndSelect);
    QVERIFY(!tree.selection->currentIndex().isValid());
    QVERIFY(!tree.selection->hasSelection());
    QVERIFY(!tree.panel.data().IsSelectionEchoGuarded());
}

void TestSelectionModel::shouldStandAHostThatTakesTheViewAway()
{
    for (const char* question : {"GetProcessorNode", "ReportSelection"}) {
        ShownTree tree;
        auto* selection =
            new CProcessorSelectionModel(*CTargetSelectData::Instance(), &tree.model(), nullptr);
        const QPointer<CProcessorSelectionModel> alive(selection);
        selection->setCurrentIndex(tree.index(3), QItemSelectionModel::ClearAndSelect);
        tree.host().inside = [&](const QString& name) {
            if (name == QLatin1String(question))
                delete alive.data();
        };
        selection->setCurrentIndex(tree.index(4), QItemSelectionModel::ClearAndSelect);
        QVERIFY(!alive);
        QVERIFY(!tree.panel.data().IsSelectionEchoGuarded());
    }
}

TSA_TEST_MAIN(TestSelectionModel)

#include "tst_selectionmodel.moc"
