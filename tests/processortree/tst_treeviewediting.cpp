#include "plugin/TargetSelectData.h"
#include "tests/processortree/DrivenTree.h"
#include "tests/processortree/WholeTree.h"

namespace {

/// The field that F2 opens on row `n`, once that is selected.
QPointer<QLineEdit> openEditor(WholeTree& tree, quint32 n)
{
    tree.select({n});
    tree.press(Qt::Key_F2);
    return tree.editor();
}

/// Renames row `n` by its menu, or as F2 does, while a field is open.
void renameAgain(WholeTree& tree, quint32 n, bool byMenu)
{
    if (byMenu) {
        DialogDriver driver;
        driver.then([](QWidget& menu) { choose(menu, QStringLiteral("Rename")); });
        tree.view->OnRightMenuEvent(tree.index(n), tree.place(n));
        return;
    }
    tree.select({n});
    tree.view->RenameSelection();
}

} // namespace

/// How the field for a name begins and ends.
class TreeViewEditingTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldOnlyCommitByTab_data();
    void shouldOnlyCommitByTab();
    void shouldCommitBeforeAnotherRename_data();
    void shouldCommitBeforeAnotherRename();
    void shouldStandAHostThatChangesTheTreeBetweenRenames_data();
    void shouldStandAHostThatChangesTheTreeBetweenRenames();
    void cleanup();
    void shouldDropWhatIsForbiddenMeanwhile_data();
    void shouldDropWhatIsForbiddenMeanwhile();
    void shouldCommitWhatIsForbiddenOnlyForAWhile();
    void shouldCommitInATreeThatWasReadOnly();
    void shouldStayOpenWhenProcessorsAreAdded_data();
    void shouldStayOpenWhenProcessorsAreAdded();
    void shouldGoWithItsRowInAReset();
    void shouldKeepTheFieldOfARowThatIsRenamedAgain();
};

void TreeViewEditingTest::shouldOnlyCommitByTab_data()
{
    QTest::addColumn<bool>("forward");
    QTest::newRow("Tab") << true;
    QTest::newRow("Backtab") << false;
}

void TreeViewEditingTest::shouldOnlyCommitByTab()
{
    QFETCH(bool, forward);
    WholeTree tree;
    const QPointer<QLineEdit> editor = openEditor(tree, 3);
    QVERIFY(editor);
    tree.host().selections.clear();
    QTest::keyClicks(editor, QStringLiteral("New"));
    QTest::keyClick(editor, forward ? Qt::Key_Tab : Qt::Key_Backtab,
                    forward ? Qt::NoModifier : Qt::ShiftModifier);
    QTRY_VERIFY(!editor);
    QVERIFY(!tree.editor());
    QCOMPARE(tree.panel.dump(), QStringLiteral("All processors(4)[G10[1,2],G11[],New,4]"));
    QCOMPARE(tree.view->currentIndex(), tree.index(3));
    QCOMPARE(tree.selected(), QStringLiteral("New"));
    QVERIFY(tree.host().selections.isEmpty());
    QVERIFY(tree.view->hasFocus());
}

void TreeViewEditingTest::shouldCommitBeforeAnotherRename_data()
{
    QTest::addColumn<bool>("byMenu");
    QTest::newRow("menu") << true;
    QTest::newRow("key") << false;
}

void TreeViewEditingTest::shouldCommitBeforeAnotherRename()
{
    QFETCH(bool, byMenu);
    WholeTree tree;
    const QPointer<QLineEdit> editor = openEditor(tree, 3);
    QVERIFY(editor);
    QTest::keyClicks(editor, QStringLiteral("New"));
    renameAgain(tree, 10, byMenu);
    QTRY_VERIFY(!editor);
    QCOMPARE(tree.panel.dump(), QStringLiteral("All processors(4)[G10[1,2],G11[],New,4]"));
    QVERIFY(tree.editor());
    QCOMPARE(tree.editor()->text(), QStringLiteral("G10"));
    tree.view->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(tree.view));
    QVERIFY(tree.editor()->hasFocus());
    QTest::keyClicks(tree.editor(), QStringLiteral("Left"));
    QTest::keyClick(tree.editor(), Qt::Key_Return);
    QTRY_VERIFY(!tree.editor());
    QCOMPARE(tree.panel.dump(), QStringLiteral("All processors(4)[Left[1,2],G11[],New,4]"));
}

void TreeViewEditingTest::shouldStandAHostThatChangesTheTreeBetweenRenames_data()
{
    QTest::addColumn<int>("change");
    QTest::newRow("takes the next row away") << 0;
    QTest::newRow("takes the first row away") << 1;
    QTest::newRow("takes the panel away") << 2;
}

void TreeViewEditingTest::shouldStandAHostThatChangesTheTreeBetweenRenames()
{
    QFETCH(int, change);
    WholeTree tree;
    QVERIFY(openEditor(tree, 3));
    QTest::keyClicks(tree.editor(), QStringLiteral("New"));
    tree.host().doInside(QStringLiteral("RenameProcessor"), [&] {
        if (change == 2)
            tree.view->outlivePanel();
        else
            tree.panel.notify<QUuid>(20, testId(change == 0 ? 11 : 3));
    });
    renameAgain(tree, 11, false);
    QCOMPARE(tree.host().callCount(QStringLiteral("RenameProcessor")), 1);
    QCoreApplication::processEvents();
    if (change == 2)
        QTRY_VERIFY(!tree.view);
    else
        QTRY_COMPARE(tree.viewport()->findChildren<QLineEdit*>().size(), change == 0 ? 0 : 1);
}

void TreeViewEditingTest::shouldKeepTheFieldOfARowThatIsRenamedAgain()
{
    WholeTree tree;
    const QPointer<QLineEdit> editor = openEditor(tree, 3);
    QVERIFY(editor);
    QTest::keyClicks(editor, QStringLiteral("New"));
    renameAgain(tree, 3, false);
    QCOMPARE(tree.editor(), editor.data());
    QCOMPARE(editor->text(), QStringLiteral("New"));
    QCOMPARE(tree.host().callCount(QStringLiteral("RenameProcessor")), 0);
}

void TreeViewEditingTest::cleanup()
{
    CTargetSelectData::Instance()->SetReadOnly(false);
}

void TreeViewEditingTest::shouldDropWhatIsForbiddenMeanwhile_data()
{
    QTest::addColumn<bool>("byLock"); // else read-only
    QTest::addColumn<int>("end");     // 0 by Return, 1 by Tab, 2 by a click
    const char* const ends[] = {"Return", "Tab", "click"};
    for (const bool byLock : {false, true}) {
        for (int end = 0; end < 3; ++end)
            QTest::addRow("%s, %s", byLock ? "lock" : "read-only", ends[end]) << byLock << end;
    }
}

void TreeViewEditingTest::shouldDropWhatIsForbiddenMeanwhile()
{
    QFETCH(bool, byLock);
    QFETCH(int, end);
    WholeTree tree;
    const QPointer<QLineEdit> editor = openEditor(tree, 3);
    QVERIFY(editor);
    QTest::keyClicks(editor, QStringLiteral("New"));
    if (byLock)
        tree.view->SetLocked(true);
    else
        tree.panel.data().SetReadOnly(true);
    if (end == 2)
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(4));
    else
        QTest::keyClick(editor, end == 0 ? Qt::Key_Return : Qt::Key_Tab);
    QTRY_VERIFY(!editor);
    QCOMPARE(tree.host().callCount(QStringLiteral("RenameProcessor")), 0);
    QCOMPARE(tree.panel.dump(), kUntouched);
}

void TreeViewEditingTest::shouldCommitWhatIsForbiddenOnlyForAWhile()
{
    WholeTree tree;
    const QPointer<QLineEdit> editor = openEditor(tree, 3);
    QVERIFY(editor);
    QTest::keyClicks(editor, QStringLiteral("New"));
    tree.panel.data().SetReadOnly(true);
    tree.view->SetLocked(true);
    tree.panel.data().SetReadOnly(false);
    tree.view->SetLocked(false);
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_VERIFY(!editor);
    QCOMPARE(tree.panel.dump(), QStringLiteral("All processors(4)[G10[1,2],G11[],New,4]"));
}

/// Its menus offer "Rename" all the same.
void TreeViewEditingTest::shouldCommitInATreeThatWasReadOnly()
{
    WholeTree tree;
    tree.panel.data().SetReadOnly(true);
    const QPointer<QLineEdit> editor = openEditor(tree, 3);
    QVERIFY(editor);
    QTest::keyClicks(editor, QStringLiteral("New"));
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_VERIFY(!editor);
    QCOMPARE(tree.panel.dump(), QStringLiteral("All processors(4)[G10[1,2],G11[],New,4]"));
}

void TreeViewEditingTest::shouldStayOpenWhenProcessorsAreAdded_data()
{
    QTest::addColumn<quint32>("row");
    QTest::addColumn<bool>("isPanel");
    for (const bool isPanel : {false, true}) {
        for (const quint32 row : {1U, 3U, 11U})
            QTest::addRow("%u%s", row, isPanel ? ", in the panel" : "") << row << isPanel;
    }
}

void TreeViewEditingTest::shouldStayOpenWhenProcessorsAreAdded()
{
    QFETCH(quint32, row);
    QFETCH(bool, isPanel);
    WholeTree tree;
    if (isPanel) // which expands the tree after a reset
        connect(&tree.model(), &QAbstractItemModel::modelReset, tree.view,
                [&] { tree.view->expandAll(); });
    const QPointer<QLineEdit> editor = openEditor(tree, row);
    QVERIFY(editor);
    QTest::keyClicks(editor, QStringLiteral("New"));
    QTest::keyClick(editor, Qt::Key_Left);
    for (const quint32 n : {5U, 6U}) {
        tree.host().setProcessor(testProcessor(n, 11));
        tree.panel.notify<QList<QUuid>>(19, {testId(n)});
        QCoreApplication::processEvents();
        QVERIFY(editor && editor->isVisible() && editor->hasFocus());
    }
    QCOMPARE(tree.host().callCount(QStringLiteral("RenameProcessor")), 0);
    QCOMPARE(tree.host().callCount(QStringLiteral("RenameGroup")), 0);
    QCOMPARE(tree.view->indexWidget(tree.index(row)), editor.data());
    QVERIFY(tree.view->visualRect(tree.index(row)).contains(editor->geometry()));
    QTest::keyClick(editor, Qt::Key_E);
    QCOMPARE(editor->text(), QStringLiteral("Neew"));
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_VERIFY(!editor);
    QCOMPARE(tree.index(row).data().toString(), QStringLiteral("Neew"));
}

void TreeViewEditingTest::shouldGoWithItsRowInAReset()
{
    WholeTree tree;
    QPointer<QLineEdit> editor = openEditor(tree, 3);
    QVERIFY(editor);
    QTest::keyClicks(editor, QStringLiteral("New"));
    tree.host().setProject({}, {testProcessor(4)});
    tree.panel.notify(16);
    QTRY_VERIFY(!editor);
    QCOMPARE(tree.host().callCount(QStringLiteral("RenameProcessor")), 0);
    // A field that was closed before does not come again.
    tree.view->expandAll();
    editor = openEditor(tree, 4);
    QVERIFY(editor);
    QTest::keyClick(editor, Qt::Key_Escape);
    tree.panel.notify(16);
    QTRY_VERIFY(!editor);
    QVERIFY(!tree.editor());
}

TSA_TEST_MAIN(TreeViewEditingTest)

#include "tst_treeviewediting.moc"
