#include "host/widgets/HostTheme.h"
#include "tests/processortree/HeardTree.h"
#include "tests/support/Announcements.h"
#include "tests/support/Chinese.h"
#include "tests/support/DialogDriver.h"

#include <QMenu>

/// The tree as a screen reader meets it: its rows, their texts and states, and what they do.
class TreeAccessibilityTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldBeAHierarchyOfRows();
    void shouldTellOfEachRow();
    void shouldHideRowsOfCollapsedGroups();
    void shouldTellWhichRowHasTheKeyboard();
    void shouldTellOfRowsOutOfView();
    void shouldFindRowsByTheirPlace();
    void shouldForgetRemovedRows();
    void shouldAnnounceNothingToNobody();
    void shouldOfferActions_data();
    void shouldOfferActions();
    void shouldNameActionsInTheUsersLanguage();
    void shouldExpandAndCollapse();
    void shouldPickARow();
    void shouldOpenTheMenuOfARow();
    void shouldRenameARow();
    void shouldActOnNothingThatIsLocked();
};

void TreeAccessibilityTest::initTestCase()
{
    ApplyHostTheme(*qApp);
}

void TreeAccessibilityTest::shouldBeAHierarchyOfRows()
{
    HeardTree tree;
    QCOMPARE(tree.tree().role(), QAccessible::Tree);
    QCOMPARE(tree.tree().childCount(), 1);
    QCOMPARE(tree.allTold(), kUntouched);
    QCOMPARE(tree.project()->parent(), &tree.tree());
    QCOMPARE(tree.tree().indexOfChild(tree.project()), 0);
    QCOMPARE(tree.tree().indexOfChild(tree.group()), -1);
    QCOMPARE(tree.tree().indexOfChild(&tree.tree()), -1);
    QCOMPARE(tree.group()->indexOfChild(tree.project()), -1);
    QVERIFY(!tree.tree().child(-1));
    QVERIFY(!tree.tree().child(100));
    QVERIFY(!tree.group()->child(-1));
    QVERIFY(!tree.group()->child(2));
}

void TreeAccessibilityTest::shouldTellOfEachRow()
{
    HeardTree tree;
    QAccessibleInterface* processor = tree.group()->child(1);
    QCOMPARE(processor->role(), QAccessible::TreeItem);
    QCOMPARE(processor->text(QAccessible::Name), QStringLiteral("2"));
    QCOMPARE(processor->text(QAccessible::Description),
             QStringLiteral("Processor, Offline, Number: 2"));
    QCOMPARE(processor->text(QAccessible::Value), QString());
    QCOMPARE(tree.group()->text(QAccessible::Description),
             QStringLiteral("Processor group, Processors: 2"));
    QCOMPARE(tree.project()->text(QAccessible::Description),
             QStringLiteral("Project, Processor groups: 2"));
    QCOMPARE(processor->window(), tree.view->windowHandle());
    // Renaming is the host's business.
    processor->setText(QAccessible::Name, QStringLiteral("mine"));
    QCOMPARE(tree.panel.dump(), kUntouched);
    tree.model().getItem(testId(2))->setAccessibleText(QStringLiteral("two"));
    QCOMPARE(processor->text(QAccessible::Name), QStringLiteral("two"));
}

void TreeAccessibilityTest::shouldHideRowsOfCollapsedGroups()
{
    HeardTree tree;
    const QAccessible::State open = tree.group()->state();
    QVERIFY(open.expandable && open.expanded && !open.collapsed);
    tree.view->collapse(tree.index(10));
    const QAccessible::State closed = tree.group()->state();
    QVERIFY(closed.expandable && !closed.expanded && closed.collapsed);
    QCOMPARE(tree.group()->childCount(), 0);
    const QAccessible::State empty = tree.project()->child(1)->state();
    QVERIFY(!empty.expandable && !empty.expanded && !empty.collapsed);
    const QAccessible::State processor = tree.project()->child(2)->state();
    QVERIFY(!processor.expandable && processor.selectable && processor.focusable);
}

void TreeAccessibilityTest::shouldTellWhichRowHasTheKeyboard()
{
    HeardTree tree;
    tree.select({1});
    QVERIFY(tree.group()->child(0)->state().focused);
    QVERIFY(tree.group()->child(0)->state().selected);
    QCOMPARE(tree.tree().focusChild(), tree.group()->child(0));
    tree.press(Qt::Key_Up);
    QCOMPARE(tree.selected(), QStringLiteral("G10"));
    QVERIFY(tree.group()->state().focused && tree.group()->state().selected);
    QVERIFY(!tree.group()->child(0)->state().focused);
    QVERIFY(!tree.group()->child(0)->state().selected);
    QCOMPARE(tree.tree().focusChild(), tree.group());
    tree.select({4, 3});
    QCOMPARE(tree.tree().focusChild()->text(QAccessible::Name), QStringLiteral("4"));
    tree.view->clearFocus();
    QVERIFY(!tree.project()->child(3)->state().focused);
    tree.view->setEnabled(false);
    QVERIFY(tree.group()->state().disabled);
}

void TreeAccessibilityTest::shouldTellOfRowsOutOfView()
{
    HeardTree tree;
    QVERIFY(!tree.project()->child(3)->state().offscreen);
    tree.view->resize(300, 100);
    QTRY_VERIFY(tree.project()->child(3)->state().offscreen);
    QVERIFY(tree.project()->child(3)->rect().isEmpty());
    QVERIFY(!tree.project()->state().offscreen);
    tree.view->scrollTo(tree.index(4));
    QVERIFY(!tree.project()->child(3)->state().offscreen);
    QVERIFY(!tree.project()->state().invisible);
    tree.view->hide();
    QVERIFY(tree.project()->state().invisible);
}

void TreeAccessibilityTest::shouldFindRowsByTheirPlace()
{
    HeardTree tree;
    const QPoint place = tree.viewport()->mapToGlobal(tree.place(2));
    QAccessibleInterface* found = tree.tree().childAt(place.x(), place.y());
    QVERIFY(found == tree.group()->child(1));
    QVERIFY(found->rect().contains(place));
    const QPoint below = tree.viewport()->mapToGlobal(tree.nowhere());
    QVERIFY(!tree.tree().childAt(below.x(), below.y()));
}

void TreeAccessibilityTest::shouldForgetRemovedRows()
{
    HeardTree tree;
    QAccessibleInterface* second = tree.group()->child(1);
    const QAccessible::Id gone = QAccessible::uniqueId(tree.group()->child(0));
    const QAccessible::Id stays = QAccessible::uniqueId(second);
    tree.model().removeNode(testId(1));
    QVERIFY(!QAccessible::accessibleInterface(gone));
    QCOMPARE(QAccessible::accessibleInterface(stays), second);
    QCOMPARE(tree.group()->child(0), second);
    QCOMPARE(tree.allTold(), QStringLiteral("All processors(3)[G10[2],G11[],3,4]"));
    tree.model().reset();
    QVERIFY(!QAccessible::accessibleInterface(stays));
    tree.view->expandAll();
    QCOMPARE(tree.allTold(), kUntouched);
}

void TreeAccessibilityTest::shouldAnnounceNothingToNobody()
{
    HeardTree tree;
    QCOMPARE(tree.allTold(), kUntouched);
    QVERIFY(!QAccessible::isActive());
    const Announcements announcements;
    tree.model().setData(tree.index(1), QStringLiteral("Hall"), Qt::DisplayRole);
    tree.view->collapse(tree.index(10));
    tree.press(Qt::Key_Up);
    QCoreApplication::processEvents();
    QCOMPARE(announcements.of(QAccessible::NameChanged), QString());
    QCOMPARE(announcements.of(QAccessible::StateChanged), QString());
    QCOMPARE(announcements.of(QAccessible::Focus), QString());
}

void TreeAccessibilityTest::shouldOfferActions_data()
{
    QTest::addColumn<quint32>("row");
    QTest::addColumn<bool>("locked");
    QTest::addColumn<QString>("actions");
    QTest::newRow("project") << 0U << false << "SetFocus,Collapse,ShowMenu";
    QTest::newRow("group") << 10U << false << "SetFocus,Collapse,ShowMenu,Rename";
    QTest::newRow("empty group") << 11U << false << "SetFocus,ShowMenu,Rename";
    QTest::newRow("processor") << 3U << false << "SetFocus,ShowMenu,Rename";
    QTest::newRow("locked group") << 10U << true << "SetFocus,Collapse";
    QTest::newRow("locked processor") << 3U << true << "SetFocus";
}

void TreeAccessibilityTest::shouldOfferActions()
{
    QFETCH(quint32, row);
    QFETCH(bool, locked);
    QFETCH(QString, actions);
    HeardTree tree;
    tree.view->SetLocked(locked);
    const QRect place = tree.view->visualRect(row == 0 ? tree.root() : tree.index(row));
    const QPoint point = tree.viewport()->mapToGlobal(place.center());
    QCOMPARE(HeardTree::actions(*tree.tree().childAt(point.x(), point.y())), actions);
}

void TreeAccessibilityTest::shouldNameActionsInTheUsersLanguage()
{
    HeardTree tree;
    const QAccessibleActionInterface* actions = tree.group()->actionInterface();
    const auto named = [&] {
        QStringList names;
        for (const char* action : {"Rename", "Expand", "Collapse"})
            names.append(actions->localizedActionName(QLatin1String(action)));
        return names.join(QLatin1Char(','));
    };
    QCOMPARE(named(), QStringLiteral("Rename,Expand,Collapse"));
    QCOMPARE(actions->localizedActionDescription(QStringLiteral("Rename")),
             QStringLiteral("Rename"));
    QVERIFY(!actions->localizedActionName(QStringLiteral("ShowMenu")).isEmpty());
    QVERIFY(!actions->localizedActionDescription(QStringLiteral("ShowMenu")).isEmpty());
    const Chinese chinese;
    QCOMPARE(named(), QStringLiteral("重命名,展开,折叠"));
}

void TreeAccessibilityTest::shouldExpandAndCollapse()
{
    HeardTree tree;
    HeardTree::act(*tree.group(), "Collapse");
    QVERIFY(!tree.view->isExpanded(tree.index(10)));
    QCOMPARE(HeardTree::actions(*tree.group()), QStringLiteral("SetFocus,Expand,ShowMenu,Rename"));
    HeardTree::act(*tree.group(), "Expand");
    QVERIFY(tree.view->isExpanded(tree.index(10)));
    HeardTree::act(*tree.group(), "Expand"); // is not offered
    HeardTree::act(*tree.group(), "Press");
    QVERIFY(tree.view->isExpanded(tree.index(10)));
}

void TreeAccessibilityTest::shouldPickARow()
{
    HeardTree tree;
    tree.view->clearFocus();
    HeardTree::act(*tree.group()->child(1), "SetFocus");
    QVERIFY(tree.view->hasFocus());
    QCOMPARE(tree.selected(), QStringLiteral("2"));
    QCOMPARE(tree.view->currentIndex(), tree.index(2));
    HeardTree::act(*tree.group(), "SetFocus");
    QCOMPARE(tree.selected(), QStringLiteral("G10"));
    QCOMPARE(tree.view->currentIndex(), tree.index(2));
}

void TreeAccessibilityTest::shouldOpenTheMenuOfARow()
{
    HeardTree tree;
    tree.select({3});
    DialogDriver driver;
    QString entries;
    driver.then([&](QWidget& menu) {
        const QList<QAction*> actions = menu.actions();
        for (const QAction* action : actions)
            entries += action->text() + QLatin1Char('|');
        QCOMPARE(static_cast<QMenu&>(menu).activeAction(), actions.first());
        menu.close();
    });
    HeardTree::act(*tree.group(), "ShowMenu");
    QTRY_COMPARE(entries, QStringLiteral("Add processor group||Add 1 processor|Add 2 processor|"
                                         "Custom adds...|Rename||Delete|"));
    QCOMPARE(tree.selected(), QStringLiteral("G10"));
}

void TreeAccessibilityTest::shouldRenameARow()
{
    HeardTree tree;
    tree.select({3});
    HeardTree::act(*tree.group(), "Rename");
    QVERIFY(tree.editor());
    QCOMPARE(tree.editor()->text(), QStringLiteral("G10"));
    QCOMPARE(QAccessible::queryAccessibleInterface(tree.editor())->text(QAccessible::Name),
             QStringLiteral("Name"));
    QTest::keyClick(tree.editor(), Qt::Key_Escape);
    QTRY_VERIFY(!tree.editor());
}

void TreeAccessibilityTest::shouldActOnNothingThatIsLocked()
{
    HeardTree tree;
    tree.select({3});
    tree.group()->actionInterface()->doAction(QStringLiteral("Rename"));
    tree.view->SetLocked(true);
    QCoreApplication::processEvents();
    QVERIFY(!tree.editor());
    tree.view->SetLocked(false);
    tree.project()->child(2)->actionInterface()->doAction(QStringLiteral("Rename"));
    tree.model().removeNode(testId(3));
    QCoreApplication::processEvents();
    QVERIFY(!tree.editor());
}

TSA_TEST_MAIN(TreeAccessibilityTest)
#include "tst_treeaccessibility.moc"
