#include "host/common/SoftwareName.h"
#include "plugin/TargetSelectArea.h"
#include "tests/processortree/DrivenTree.h"

#include <QScrollBar>

namespace {

const QStringList kChanges = {QStringLiteral("IsIpManagementAvailable"),
                              QStringLiteral("PreDeleteProcessors"),
                              QStringLiteral("DeleteProcessors"), QStringLiteral("Ungroup"),
                              QStringLiteral("SetProcessorGroup")};

const QString kDeleteQuestion = QStringLiteral("Want to delete the selected processor?");
const QString kUngroupQuestion = QStringLiteral(
    "Are you sure you want to ungroup the selected processor group (the processors under the group "
    "still remains)?");
const QString kKeepOne = QStringLiteral("Must keep at least one processor.");

ProcessorNode redundant(quint32 n, quint32 group, int mode)
{
    ProcessorNode processor = testProcessor(n, group);
    processor.redundancyMode = mode;
    return processor;
}

void press(const DrivenTree& tree, Qt::Key key)
{
    QTest::keyClick(tree.view.data(), key);
}

} // namespace

class TreeViewDeletingTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldAskBeforeDeleting_data();
    void shouldAskBeforeDeleting();
    void shouldRefuseRedundantProcessors_data();
    void shouldRefuseRedundantProcessors();
    void shouldKeepOneProcessor();
    void shouldUngroupAfterAsking();
    void shouldUngroupAnEmptyGroupAtOnce();
    void shouldAskAboutOneGroupAfterTheOther();
    void shouldDeleteNothingWhenReadOnly();
    void shouldDeleteNothingOnceReadOnly();
    void shouldDeleteByKeyWhatTheMenuWould();
    void shouldStandTheHostRemovingMoreMeanwhile_data();
    void shouldStandTheHostRemovingMoreMeanwhile();
    void shouldStandTheHostInitialisingMeanwhile();
    void shouldNotLeaveAGroupCurrent();
    void shouldLeaveOutRowsThatVanishMeanwhile();
    void shouldOutliveAViewDestroyedMeanwhile_data();
    void shouldOutliveAViewDestroyedMeanwhile();
    void shouldStandOnAnotherRowAfterwards_data();
    void shouldStandOnAnotherRowAfterwards();
    void shouldShowTheRowThatTakesOver();
    void shouldStandOnTheRootAfterAGroup();
    void shouldWaitForAllThatWereAskedFor();
    void shouldStandOnTheRootWhenTheHostRemovesTheGroup();
};

void TreeViewDeletingTest::shouldAskBeforeDeleting_data()
{
    QTest::addColumn<bool>("managed");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("asked");
    QTest::newRow("yes") << false << "Yes"
                         << "IsIpManagementAvailable() DeleteProcessors(3,1)";
    QTest::newRow("no") << false << "No"
                        << "";
    QTest::newRow("escape") << false << ""
                            << "";
    QTest::newRow("managed") << true << "Yes"
                             << "IsIpManagementAvailable() PreDeleteProcessors(3,1) "
                                "DeleteProcessors(3,1)";
}

void TreeViewDeletingTest::shouldAskBeforeDeleting()
{
    QFETCH(bool, managed);
    QFETCH(QString, button);
    QFETCH(QString, asked);
    DrivenTree tree;
    tree.host().ipManagementAvailable = managed;
    tree.select({3, 1});
    tree.driver.then([&](QWidget& box) {
        QCOMPARE(messageOf(box), kDeleteQuestion);
        QCOMPARE(box.windowTitle(), custom_software_name());
        QCOMPARE(box.width(), 330);
        QCOMPARE(tree.asked(kChanges), QString());
        if (button.isEmpty())
            QTest::keyClick(&box, Qt::Key_Escape);
        else
            clickButton(box, button);
    });
    press(tree, Qt::Key_Delete);
    QCOMPARE(tree.asked(kChanges), asked);
    QCOMPARE(tree.selected(), QStringLiteral("3,1"));
}

void TreeViewDeletingTest::shouldRefuseRedundantProcessors_data()
{
    QTest::addColumn<QList<quint32>>("rows");
    QTest::addColumn<QString>("message");
    const QString backed = QStringLiteral(
        "The selected processor has a redundant backup, please disable redundant backup first.");
    const QString backup = QStringLiteral("Processor%1 has been set to backup redundancy, please "
                                          "disable backup before delete them.");
    QTest::newRow("has a backup") << QList<quint32>{1} << backed;
    QTest::newRow("is a backup") << QList<quint32>{2} << backup.arg(2);
    QTest::newRow("behind others") << QList<quint32>{3, 4, 2, 1} << backup.arg(2);
    QTest::newRow("first of two") << QList<quint32>{4, 1, 2} << backed;
}

void TreeViewDeletingTest::shouldRefuseRedundantProcessors()
{
    QFETCH(QList<quint32>, rows);
    QFETCH(QString, message);
    DrivenTree tree;
    tree.fill({testGroup(10)}, {redundant(1, 10, 1), redundant(2, 10, 2), redundant(3, 0, 3),
                                testProcessor(4), testProcessor(5)});
    tree.select(rows);
    const QString before = tree.selected();
    QString text;
    tree.driver.thenReadMessage(text);
    tree.view->DeleteSelection();
    QCOMPARE(text, message);
    QCOMPARE(tree.asked(kChanges), QString());
    QCOMPARE(tree.selected(), before);
}

void TreeViewDeletingTest::shouldKeepOneProcessor()
{
    DrivenTree tree;
    tree.select({1, 2, 3, 4});
    QString text;
    tree.driver.thenReadMessage(text);
    press(tree, Qt::Key_Delete);
    QCOMPARE(text, kKeepOne);
    QCOMPARE(tree.asked(kChanges), QString());
}

void TreeViewDeletingTest::shouldUngroupAfterAsking()
{
    DrivenTree tree;
    tree.select({10});
    tree.driver
        .then([](QWidget& box) {
            QCOMPARE(messageOf(box), kUngroupQuestion);
            clickButton(box, QStringLiteral("No"));
        })
        .thenEnter();
    press(tree, Qt::Key_Delete);
    QCOMPARE(tree.asked(kChanges), QString());
    tree.activate();
    press(tree, Qt::Key_Delete);
    QCOMPARE(tree.asked(kChanges),
             QStringLiteral("Ungroup(10) SetProcessorGroup(0) SetProcessorGroup(0)"));
    QCOMPARE(tree.panel.dump(), QStringLiteral("All processors(4)[G11[],3,4,2,1]"));
}

void TreeViewDeletingTest::shouldUngroupAnEmptyGroupAtOnce()
{
    DrivenTree tree;
    tree.select({11});
    press(tree, Qt::Key_Delete);
    QCOMPARE(tree.asked(kChanges), QStringLiteral("Ungroup(11)"));
    QCOMPARE(tree.panel.dump(), QStringLiteral("All processors(4)[G10[1,2],3,4]"));
    QCOMPARE(tree.selected(), QStringLiteral("All processors(4)"));
}

void TreeViewDeletingTest::shouldAskAboutOneGroupAfterTheOther()
{
    DrivenTree tree;
    tree.fill({testGroup(10), testGroup(11)}, {testProcessor(1, 10), testProcessor(2, 11)});
    tree.select({11, 10});
    tree.driver.thenEscape().thenEnter();
    press(tree, Qt::Key_Delete);
    QCOMPARE(tree.asked(kChanges), QStringLiteral("Ungroup(10) SetProcessorGroup(0)"));
    QCOMPARE(tree.panel.dump(), QStringLiteral("All processors(2)[G11[2],1]"));
}

void TreeViewDeletingTest::shouldDeleteNothingWhenReadOnly()
{
    DrivenTree tree;
    tree.panel.data().SetReadOnly(true);
    for (const quint32 n : {1U, 10U, 11U}) {
        tree.select({n});
        press(tree, Qt::Key_Delete);
        QCOMPARE(tree.asked(kChanges), QString());
    }
}

void TreeViewDeletingTest::shouldDeleteNothingOnceReadOnly()
{
    for (const quint32 n : {1U, 10U}) {
        DrivenTree tree;
        tree.select({n});
        tree.driver.then([&](QWidget& box) {
            tree.panel.data().SetReadOnly(true);
            clickButton(box, QStringLiteral("Yes"));
        });
        press(tree, Qt::Key_Delete);
        QCOMPARE(tree.asked(kChanges), QString());
    }
}

void TreeViewDeletingTest::shouldDeleteByKeyWhatTheMenuWould()
{
    ProcessorNode guarded = testProcessor(2, 10);
    guarded.hostFlag13 = true;
    const auto press = [&](bool offered, const std::function<void(DrivenTree&)>& change) {
        DrivenTree tree;
        tree.host().setProcessor(guarded);
        tree.select({1, 2});
        change(tree);
        if (offered)
            tree.driver.thenEnter();
        QTest::keyClick(tree.view.data(), Qt::Key_Delete);
        QCOMPARE(tree.driver.isDone(), true);
        QCOMPARE(tree.host().callCount(QStringLiteral("DeleteProcessors")), offered ? 1 : 0);
    };
    const auto inModeOfSeveral = [](DrivenTree& tree) {
        tree.host().selectionMode = 2;
        tree.host().selectedProcessors = QList<QUuid>{testId(1), testId(2)};
    };
    press(false, [](DrivenTree&) {});
    press(true, [](DrivenTree& tree) { tree.select({1}); });
    press(true, [](DrivenTree& tree) { tree.host().ipManagementAvailable = true; });
    press(true, inModeOfSeveral);
    press(false, [&](DrivenTree& tree) {
        inModeOfSeveral(tree);
        tree.host().deleteBlocked = QList<QUuid>{testId(2)};
    });
}

void TreeViewDeletingTest::shouldStandTheHostRemovingMoreMeanwhile_data()
{
    QTest::addColumn<quint32>("deleted");
    QTest::addColumn<quint32>("more");
    QTest::addColumn<QString>("left");
    QTest::newRow("the next one") << 1U << 2U << "All processors(3)[G10[3],4,5]";
    QTest::newRow("the one before") << 2U << 1U << "All processors(3)[G10[3],4,5]";
    QTest::newRow("one elsewhere") << 1U << 5U << "All processors(3)[G10[2,3],4]";
    QTest::newRow("the group") << 1U << 10U << "All processors(4)[4,5,3,2]";
}

/// The new current row is reported while the old one is being removed.
void TreeViewDeletingTest::shouldStandTheHostRemovingMoreMeanwhile()
{
    QFETCH(quint32, deleted);
    QFETCH(quint32, more);
    QFETCH(QString, left);
    DrivenTree tree;
    tree.fill({testGroup(10)}, {testProcessor(1, 10), testProcessor(2, 10), testProcessor(3, 10),
                                testProcessor(4), testProcessor(5)});
    tree.select({deleted});
    tree.driver.thenEnter();
    press(tree, Qt::Key_Delete);
    tree.doInside(QStringLiteral("ReportSelection"),
                  [&] { tree.panel.notify<QUuid>(20, testId(more)); });
    tree.panel.notify<QUuid>(20, testId(deleted));
    QTRY_COMPARE(tree.panel.dump(), left);
    QVERIFY(!tree.view->grab().isNull());
}

void TreeViewDeletingTest::shouldStandTheHostInitialisingMeanwhile()
{
    DrivenTree tree;
    tree.select({1});
    tree.driver.thenEnter();
    press(tree, Qt::Key_Delete);
    tree.doInside(QStringLiteral("ReportSelection"), [&] { tree.panel.area().Initialize(); });
    tree.panel.notify<QUuid>(20, testId(1));
    QTRY_COMPARE(tree.panel.dump(), QStringLiteral("All processors(0)[]"));
}

void TreeViewDeletingTest::shouldNotLeaveAGroupCurrent()
{
    DrivenTree tree;
    tree.fill({testGroup(10), testGroup(11)}, {testProcessor(1, 10), testProcessor(3)});
    tree.select({3});
    tree.panel.notify<QUuid>(20, testId(3));
    QTRY_VERIFY(!tree.view->currentIndex().isValid());
    tree.host().clearCalls();
    QTest::mouseClick(tree.view->viewport(), Qt::LeftButton, Qt::NoModifier, tree.place(1));
    QCOMPARE(tree.current(), QStringLiteral("1"));
    QCOMPARE(tree.host().selections.last().previous, QUuid());
}

void TreeViewDeletingTest::shouldLeaveOutRowsThatVanishMeanwhile()
{
    DrivenTree tree;
    tree.select({1, 3});
    tree.driver.then([&](QWidget& box) {
        tree.model().removeNode(testId(1));
        clickButton(box, QStringLiteral("Yes"));
    });
    press(tree, Qt::Key_Delete);
    QCOMPARE(tree.asked(kChanges), QStringLiteral("IsIpManagementAvailable() DeleteProcessors(3)"));
}

void TreeViewDeletingTest::shouldOutliveAViewDestroyedMeanwhile_data()
{
    QTest::addColumn<QList<quint32>>("rows");
    QTest::addColumn<QString>("question");
    QTest::newRow("box") << QList<quint32>{1} << "";
    QTest::newRow("box of a group") << QList<quint32>{10, 12} << "";
    for (const char* question :
         {"IsIpManagementAvailable", "PreDeleteProcessors", "DeleteProcessors"})
        QTest::newRow(question) << QList<quint32>{1} << question;
    for (const char* question : {"Ungroup", "SetProcessorGroup"})
        QTest::newRow(question) << QList<quint32>{10} << question;
}

void TreeViewDeletingTest::shouldOutliveAViewDestroyedMeanwhile()
{
    QFETCH(QList<quint32>, rows);
    QFETCH(QString, question);
    DrivenTree tree;
    tree.fill({testGroup(10), testGroup(12)},
              {testProcessor(1, 10), testProcessor(2, 12), testProcessor(3)});
    tree.host().ipManagementAvailable = true;
    tree.select(rows);
    tree.doInside(question, [&] { delete tree.view; });
    tree.driver.then([&](QWidget& box) {
        if (question.isEmpty())
            delete tree.view;
        else
            clickButton(box, QStringLiteral("Yes"));
    });
    tree.view->DeleteSelection();
    QVERIFY(!tree.view);
    if (question.isEmpty())
        QCOMPARE(tree.asked(kChanges), QString());
    else
        QVERIFY(tree.asked(kChanges).contains(question));
}

void TreeViewDeletingTest::shouldStandOnAnotherRowAfterwards_data()
{
    QTest::addColumn<QList<quint32>>("rows");
    QTest::addColumn<QList<quint32>>("removed");
    QTest::addColumn<QString>("standing");
    using Rows = QList<quint32>;
    QTest::newRow("one, next below") << Rows{2} << Rows{2} << "3";
    QTest::newRow("last in group") << Rows{3} << Rows{3} << "2";
    QTest::newRow("several") << Rows{1, 2} << Rows{1, 2} << "3";
    QTest::newRow("several, backwards") << Rows{2, 3} << Rows{3, 2} << "1";
    QTest::newRow("whole group") << Rows{1, 2, 3} << Rows{1, 2, 3} << "4";
    QTest::newRow("under the root") << Rows{4} << Rows{4} << "5";
    QTest::newRow("last under the root") << Rows{6} << Rows{6} << "5";
    QTest::newRow("in two places") << Rows{1, 4} << Rows{4, 1} << "2";
}

void TreeViewDeletingTest::shouldStandOnAnotherRowAfterwards()
{
    QFETCH(QList<quint32>, rows);
    QFETCH(QList<quint32>, removed);
    QFETCH(QString, standing);
    QList<QUuid> ids;
    for (const quint32 n : qAsConst(removed))
        ids.append(testId(n));
    for (const bool atOnce : {false, true}) {
        DrivenTree tree;
        tree.fill({testGroup(10)},
                  {testProcessor(1, 10), testProcessor(2, 10), testProcessor(3, 10),
                   testProcessor(4), testProcessor(5), testProcessor(6)});
        tree.select(rows);
        tree.driver.thenEnter();
        press(tree, Qt::Key_Delete);
        if (atOnce)
            tree.panel.notify<QList<QUuid>>(21, ids);
        else
            for (const QUuid& id : qAsConst(ids))
                tree.panel.notify<QUuid>(20, id);
        QCOMPARE(tree.model().getAllProcessorCount(), 6 - ids.size());
        QCOMPARE(tree.current(), standing);
        QCOMPARE(tree.selected(), standing);
    }
}

void TreeViewDeletingTest::shouldShowTheRowThatTakesOver()
{
    DrivenTree tree;
    QList<ProcessorNode> processors;
    for (quint32 n = 1; n <= 100; ++n)
        processors.append(testProcessor(n));
    tree.fill({}, processors);
    QList<QUuid> ids;
    QItemSelection rows;
    for (quint32 n = 1; n <= 60; ++n) {
        ids.append(testId(n));
        rows.select(tree.panel.index(n), tree.panel.index(n));
    }
    QItemSelectionModel* selection = tree.view->selectionModel();
    selection->setCurrentIndex(tree.panel.index(1), QItemSelectionModel::NoUpdate);
    selection->select(rows, QItemSelectionModel::ClearAndSelect);
    tree.view->verticalScrollBar()->setValue(tree.view->verticalScrollBar()->maximum());
    QVERIFY(!tree.view->viewport()->rect().intersects(tree.view->visualRect(tree.panel.index(1))));
    tree.panel.notify<QList<QUuid>>(21, ids);
    QCOMPARE(tree.view->currentIndex(), tree.panel.index(61));
    QTRY_VERIFY(tree.view->viewport()->rect().contains(
        tree.view->visualRect(tree.panel.index(61)).center()));
}

void TreeViewDeletingTest::shouldStandOnTheRootAfterAGroup()
{
    DrivenTree tree;
    tree.select({10});
    tree.driver.thenEnter();
    press(tree, Qt::Key_Delete);
    QCOMPARE(tree.selected(), QStringLiteral("All processors(4)"));
}

void TreeViewDeletingTest::shouldWaitForAllThatWereAskedFor()
{
    DrivenTree tree;
    tree.fill({testGroup(10)},
              {testProcessor(1, 10), testProcessor(2, 10), testProcessor(3, 10), testProcessor(4)});
    tree.select({1, 2});
    tree.driver.thenEnter().thenEnter();
    press(tree, Qt::Key_Delete);
    tree.panel.notify<QUuid>(20, testId(1));
    QCOMPARE(tree.selected(), QStringLiteral("2"));
    // The host did not delete it, and the user tries again.
    tree.activate();
    press(tree, Qt::Key_Delete);
    tree.panel.notify<QUuid>(20, testId(2));
    QCOMPARE(tree.selected(), QStringLiteral("3"));
    QCOMPARE(tree.current(), QStringLiteral("3"));
}

void TreeViewDeletingTest::shouldStandOnTheRootWhenTheHostRemovesTheGroup()
{
    DrivenTree tree;
    tree.select({10});
    tree.driver.then([&](QWidget& box) {
        tree.panel.notify<QUuid>(20, testId(10));
        tree.host().clearCalls();
        clickButton(box, QStringLiteral("Yes"));
    });
    press(tree, Qt::Key_Delete);
    QCOMPARE(tree.asked(kChanges), QString());
    QCOMPARE(tree.selected(), QStringLiteral("All processors(4)"));
}

TSA_TEST_MAIN(TreeViewDeletingTest)

#include "tst_treeviewdeleting.moc"
