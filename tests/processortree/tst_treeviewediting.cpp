#include "tests/processortree/WholeTree.h"

namespace {

/// The field that F2 opens on row `n`, once that is selected.
QPointer<QLineEdit> openEditor(WholeTree& tree, quint32 n)
{
    tree.select({n});
    tree.press(Qt::Key_F2);
    return tree.editor();
}

} // namespace

/// How the field for a name begins and ends.
class TreeViewEditingTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldOnlyCommitByTab_data();
    void shouldOnlyCommitByTab();
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

QTEST_MAIN(TreeViewEditingTest)

#include "tst_treeviewediting.moc"
