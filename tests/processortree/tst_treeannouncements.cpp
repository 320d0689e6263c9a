#include "tests/processortree/HeardTree.h"
#include "tests/support/Announcements.h"

/// What a screen reader is told of the tree while it runs, without asking.
class TreeAnnouncementsTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldAnnounceEveryRowThatKeysReach();
    void shouldAnnounceTheRowWhenTheFocusComes();
    void shouldAnnounceChangesOfARow();
    void shouldAnnounceWhatAGroupHolds();
    void shouldAnnounceExpansion();
    void shouldAnnounceRowsThatAreMarkedToBeMoved();
    void shouldAnnounceTheRowThatHasMoved();
    void shouldAnnounceTheFirstRowWhereNoneIsSelected();
    void shouldFollowAnotherModel();
    void shouldStandTheEndOfTheTree();
};

void TreeAnnouncementsTest::initTestCase()
{
    // Qt hears of the accessibility bus by and by.
    QTRY_VERIFY_WITH_TIMEOUT(QAccessible::isActive(), 30000);
}

void TreeAnnouncementsTest::shouldAnnounceEveryRowThatKeysReach()
{
    HeardTree tree;
    QVERIFY(tree.project());
    tree.select({1});
    Announcements announcements;
    QCoreApplication::processEvents();
    const auto reached = [&](Qt::Key key) {
        announcements.clear();
        tree.press(key);
        QCoreApplication::processEvents();
        return announcements.of(QAccessible::Focus);
    };
    QCOMPARE(reached(Qt::Key_Up), QStringLiteral("G10"));
    QCOMPARE(reached(Qt::Key_Up), QStringLiteral("All processors(4)"));
    QCOMPARE(reached(Qt::Key_Up), QString());
    QCOMPARE(reached(Qt::Key_Down), QStringLiteral("G10"));
    QCOMPARE(reached(Qt::Key_Down), QStringLiteral("1")); // which was current all the time
    QCOMPARE(reached(Qt::Key_Down), QStringLiteral("2"));
    QCOMPARE(reached(Qt::Key_Down), QStringLiteral("G11"));
    QCOMPARE(reached(Qt::Key_End), QStringLiteral("4"));
    QCOMPARE(reached(Qt::Key_Home), QStringLiteral("All processors(4)"));
}

void TreeAnnouncementsTest::shouldAnnounceTheRowWhenTheFocusComes()
{
    HeardTree tree;
    QVERIFY(tree.project());
    tree.select({10});
    tree.view->clearFocus();
    QCoreApplication::processEvents();
    const Announcements announcements;
    tree.selection()->select(tree.index(11), QItemSelectionModel::ClearAndSelect);
    QCoreApplication::processEvents();
    QCOMPARE(announcements.of(QAccessible::Focus), QString());
    tree.view->setFocus(Qt::TabFocusReason);
    QCoreApplication::processEvents();
    QVERIFY2(announcements.of(QAccessible::Focus).endsWith(QStringLiteral("G11")),
             qPrintable(announcements.of(QAccessible::Focus)));
}

void TreeAnnouncementsTest::shouldAnnounceChangesOfARow()
{
    HeardTree tree;
    QCOMPARE(tree.allTold(), kUntouched);
    QVERIFY(!tree.group()->child(0)->text(QAccessible::Description).isEmpty());
    Announcements announcements;
    const auto change = [&](const std::function<void(ProcessorNode&)>& what) {
        announcements.clear();
        auto record = tree.index(1).data(NodeDataRole).value<ProcessorNode>();
        what(record);
        tree.model().updateProcessor(tree.model().getItem(testId(1)), record);
        return announcements.of(QAccessible::NameChanged) + QLatin1Char('|')
               + announcements.of(QAccessible::DescriptionChanged);
    };
    QCOMPARE(change([](ProcessorNode& record) { record.online = true; }), QStringLiteral("|1"));
    QCOMPARE(change([](ProcessorNode& record) { record.hostFlag17 = true; }), QStringLiteral("|1"));
    QCOMPARE(change([](ProcessorNode& record) { record.redundancyMode = 2; }),
             QStringLiteral("|1"));
    QCOMPARE(change([](ProcessorNode& record) { record.name = QStringLiteral("Hall"); }),
             QStringLiteral("Hall|"));
    QCOMPARE(change([](ProcessorNode& record) { record.hostAttribute5 = 7; }), QStringLiteral("|"));
}

void TreeAnnouncementsTest::shouldAnnounceWhatAGroupHolds()
{
    HeardTree tree;
    QCOMPARE(tree.allTold(), kUntouched);
    QVERIFY(!tree.group()->text(QAccessible::Description).isEmpty());
    QVERIFY(!tree.project()->text(QAccessible::Description).isEmpty());
    Announcements announcements;
    tree.model().removeNode(testId(1));
    QCOMPARE(announcements.of(QAccessible::DescriptionChanged), QStringLiteral("G10"));
    QCOMPARE(announcements.of(QAccessible::NameChanged), QStringLiteral("All processors(3)"));
    announcements.clear();
    tree.model().AppendProcessor(testProcessor(1, 10));
    QCOMPARE(announcements.of(QAccessible::DescriptionChanged), QStringLiteral("G10"));
    announcements.clear();
    tree.model().AppendGroup(testGroup(12));
    QCOMPARE(announcements.of(QAccessible::DescriptionChanged),
             QStringLiteral("All processors(4)"));
}

void TreeAnnouncementsTest::shouldAnnounceExpansion()
{
    HeardTree tree;
    QCOMPARE(tree.allTold(), kUntouched);
    Announcements announcements;
    tree.view->collapse(tree.index(10));
    QCOMPARE(announcements.of(QAccessible::StateChanged), QStringLiteral("G10"));
    announcements.clear();
    tree.view->expand(tree.index(10));
    QCOMPARE(announcements.of(QAccessible::StateChanged), QStringLiteral("G10"));
}

/// By keys alone; others see them pale.
void TreeAnnouncementsTest::shouldAnnounceRowsThatAreMarkedToBeMoved()
{
    HeardTree tree;
    tree.select({1});
    const auto heard = [&] { return tree.group()->child(0)->text(QAccessible::Description); };
    const QString before = heard();
    Announcements announcements;
    tree.press(Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(announcements.of(QAccessible::DescriptionChanged), QStringLiteral("1"));
    QCOMPARE(heard(), before + QStringLiteral(", Marked to be moved"));
    QVERIFY(
        !tree.group()->child(1)->text(QAccessible::Description).contains(QStringLiteral("moved")));
    announcements.clear();
    tree.press(Qt::Key_Escape);
    QCOMPARE(announcements.of(QAccessible::DescriptionChanged), QStringLiteral("1"));
    QCOMPARE(heard(), before);
}

/// It is another one for assistive technology.
void TreeAnnouncementsTest::shouldAnnounceTheRowThatHasMoved()
{
    HeardTree tree;
    QCOMPARE(tree.allTold(), kUntouched);
    tree.select({1});
    tree.press(Qt::Key_X, Qt::ControlModifier);
    tree.select({11});
    QCoreApplication::processEvents();
    Announcements announcements;
    tree.press(Qt::Key_V, Qt::ControlModifier);
    QCoreApplication::processEvents();
    QCOMPARE(tree.panel.dump(), QStringLiteral("All processors(4)[G10[2],G11[1],3,4]"));
    QCOMPARE(announcements.of(QAccessible::Focus), QStringLiteral("1"));
    // So it is for a row that others move while it stays selected.
    announcements.clear();
    tree.model().moveProcessors({tree.index(1)}, testId(10));
    QCoreApplication::processEvents();
    QCOMPARE(tree.panel.dump(), QStringLiteral("All processors(4)[G10[2,1],G11[],3,4]"));
    QCOMPARE(announcements.of(QAccessible::Focus), QStringLiteral("1"));
}

/// Keys start from there.
void TreeAnnouncementsTest::shouldAnnounceTheFirstRowWhereNoneIsSelected()
{
    HeardTree tree;
    QVERIFY(tree.project());
    tree.view->clearFocus();
    tree.selection()->clear();
    QCoreApplication::processEvents();
    const Announcements announcements;
    tree.view->setFocus(Qt::TabFocusReason);
    tree.selection()->clear();
    QCoreApplication::processEvents();
    QVERIFY2(announcements.of(QAccessible::Focus).endsWith(QStringLiteral("All processors(4)")),
             qPrintable(announcements.of(QAccessible::Focus)));
    QVERIFY(tree.project()->state().focused);
    QCOMPARE(tree.tree().focusChild(), tree.project());
}

void TreeAnnouncementsTest::shouldFollowAnotherModel()
{
    HeardTree tree;
    const Announcements announcements;
    QAccessibleInterface* before = tree.project();
    CProcessorTreeModel other;
    other.initRoot();
    tree.view->setModel(&other);
    QVERIFY(!before->isValid());
    QVERIFY(before->state().invalid);
    QCOMPARE(before->childCount(), 0);
    QVERIFY(!before->parent());
    QVERIFY(HeardTree::actions(*before).isEmpty());
    QCOMPARE(tree.tree().indexOfChild(before), -1);
    QCOMPARE(tree.allTold(), QStringLiteral("All processors(0)"));
    other.AppendGroup(testGroup(30));
    QCOMPARE(announcements.of(QAccessible::NameChanged), QString());
    other.AppendProcessor(testProcessor(31));
    QCOMPARE(announcements.of(QAccessible::NameChanged), QStringLiteral("All processors(1)"));
    tree.view->setModel(nullptr);
    QCOMPARE(tree.tree().childCount(), 0);
    QVERIFY(!tree.tree().child(0));
}

void TreeAnnouncementsTest::shouldStandTheEndOfTheTree()
{
    HeardTree tree;
    const Announcements announcements;
    const QAccessible::Id row = QAccessible::uniqueId(tree.group());
    tree.group()->actionInterface()->doAction(QStringLiteral("ShowMenu"));
    delete tree.view;
    QVERIFY(!QAccessible::accessibleInterface(row));
    QCoreApplication::processEvents();
    tree.model().removeNode(testId(1));
    QVERIFY(!tree.panel.index(1).isValid());
}

TSA_TEST_MAIN(TreeAnnouncementsTest)
#include "tst_treeannouncements.moc"
