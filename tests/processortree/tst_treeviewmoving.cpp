#include "tests/processortree/WholeTree.h"

namespace {

const quint32 kAddress = 0x0A000001;

/// Moves row 1 the way that `by` says; its row is removed and comes again.
void moveFirst(WholeTree& tree, const QString& by)
{
    if (by == QLatin1String("address")) {
        tree.host().setProcessor(testIpProcessor(1, kAddress, 10));
        tree.panel.notify<QUuid>(25, testId(1));
    } else if (by == QLatin1String("ungrouping")) {
        tree.host().removeGroup(testId(10));
        tree.panel.notify<QUuid>(20, testId(10));
    } else {
        tree.model().moveProcessors({tree.index(1), tree.index(4)}, testId(11));
    }
}

void addWays()
{
    QTest::addColumn<QString>("by");
    QTest::addColumn<QString>("tree");
    QTest::newRow("address") << QStringLiteral("address")
                             << QStringLiteral("All processors(4)[G10[%1,2],G11[],3,4]");
    QTest::newRow("ungrouping") << QStringLiteral("ungrouping")
                                << QStringLiteral("All processors(4)[G11[],3,4,2,%1]");
    QTest::newRow("group") << QStringLiteral("group")
                           << QStringLiteral("All processors(4)[G10[2],G11[%1,4],3]");
}

} // namespace

/// Rows that only move stay what they are to the user, and to the host.
class TreeViewMovingTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldStaySelectedAndCurrent_data();
    void shouldStaySelectedAndCurrent();
    void shouldStaySelectedAmongOthers_data();
    void shouldStaySelectedAmongOthers();
    void shouldStayAsTheyAreWhenNotSelected_data();
    void shouldStayAsTheyAreWhenNotSelected();
    void shouldStayUnderTheirField_data();
    void shouldStayUnderTheirField();
    void shouldStayWhereTheUserScrolled();
    void shouldBeReplacedWhenTheirPlaceIsGone();
    void shouldLoseTheirFieldWhenTheirPlaceIsGone();
};

void TreeViewMovingTest::shouldStaySelectedAndCurrent_data()
{
    addWays();
}

void TreeViewMovingTest::shouldStaySelectedAndCurrent()
{
    QFETCH(QString, by);
    QFETCH(QString, tree);
    WholeTree shown;
    QTest::mouseClick(shown.viewport(), Qt::LeftButton, {}, shown.place(1));
    shown.host().selections.clear();
    moveFirst(shown, by);
    QCOMPARE(shown.panel.dump(), tree.arg(1));
    QCoreApplication::processEvents();
    QCOMPARE(shown.selected(), QStringLiteral("1"));
    QCOMPARE(shown.view->currentIndex(), shown.index(1));
    QVERIFY(shown.host().selections.isEmpty());
    // The next choice names the right one before it.
    QTest::mouseClick(shown.viewport(), Qt::LeftButton, {}, shown.place(3));
    QCOMPARE(shown.host().selections.size(), 1);
    QCOMPARE(shown.host().selections.last().previous, testId(1));
}

void TreeViewMovingTest::shouldStaySelectedAmongOthers_data()
{
    addWays();
}

void TreeViewMovingTest::shouldStaySelectedAmongOthers()
{
    QFETCH(QString, by);
    WholeTree shown;
    shown.select({3, 1, 2});
    shown.host().selections.clear();
    moveFirst(shown, by);
    QCoreApplication::processEvents();
    QCOMPARE(shown.selection()->selectedIndexes().size(), 3);
    for (const quint32 n : {1U, 2U, 3U})
        QVERIFY(shown.selection()->isSelected(shown.index(n)));
    QCOMPARE(shown.view->currentIndex(), shown.index(3));
    QVERIFY(shown.host().selections.isEmpty());
}

void TreeViewMovingTest::shouldStayAsTheyAreWhenNotSelected_data()
{
    addWays();
}

void TreeViewMovingTest::shouldStayAsTheyAreWhenNotSelected()
{
    QFETCH(QString, by);
    WholeTree shown;
    shown.select({3});
    shown.host().selections.clear();
    moveFirst(shown, by);
    QCoreApplication::processEvents();
    QCOMPARE(shown.selected(), QStringLiteral("3"));
    QCOMPARE(shown.view->currentIndex(), shown.index(3));
    QVERIFY(shown.host().selections.isEmpty());
}

void TreeViewMovingTest::shouldStayUnderTheirField_data()
{
    addWays();
}

void TreeViewMovingTest::shouldStayUnderTheirField()
{
    QFETCH(QString, by);
    QFETCH(QString, tree);
    WholeTree shown;
    shown.select({1});
    shown.press(Qt::Key_F2);
    const QPointer<QLineEdit> editor = shown.editor();
    QVERIFY(editor);
    QTest::keyClicks(editor, QStringLiteral("New"));
    QTest::keyClick(editor, Qt::Key_Left);
    QTest::keyClick(editor, Qt::Key_Left, Qt::ShiftModifier);
    moveFirst(shown, by);
    QCoreApplication::processEvents();
    QCOMPARE(shown.panel.dump(), tree.arg(1));
    QCOMPARE(shown.host().callCount(QStringLiteral("RenameProcessor")), 0);
    QVERIFY(editor && editor->isVisible() && editor->hasFocus());
    QCOMPARE(shown.view->indexWidget(shown.index(1)), editor.data());
    QVERIFY(shown.view->visualRect(shown.index(1)).contains(editor->geometry()));
    QCOMPARE(editor->text(), QStringLiteral("New"));
    QCOMPARE(editor->selectedText(), QStringLiteral("e"));
    QTest::keyClick(editor, Qt::Key_A);
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_VERIFY(!editor);
    QCOMPARE(shown.panel.dump(), tree.arg(QStringLiteral("Naw")));
}

void TreeViewMovingTest::shouldStayWhereTheUserScrolled()
{
    WholeTree shown;
    shown.view->resize(300, 120);
    QTest::mouseClick(shown.viewport(), Qt::LeftButton, {}, shown.place(1));
    shown.view->scrollToBottom();
    QVERIFY(shown.place(1).y() < 0);
    moveFirst(shown, QStringLiteral("address"));
    QCoreApplication::processEvents();
    QVERIFY(shown.place(1).y() < 0);
    QCOMPARE(shown.selected(), QStringLiteral("1"));
}

/// A group that the tree does not hold.
void TreeViewMovingTest::shouldBeReplacedWhenTheirPlaceIsGone()
{
    WholeTree shown;
    shown.panel.notify<QUuid>(20, testId(2));
    shown.select({1});
    shown.host().selections.clear();
    shown.host().setProcessor(testIpProcessor(1, kAddress, 77));
    shown.panel.notify<QUuid>(25, testId(1));
    QCOMPARE(shown.panel.dump(), QStringLiteral("All processors(2)[G10[],G11[],3,4]"));
    QCOMPARE(shown.selected(), QStringLiteral("3"));
    QCOMPARE(shown.view->currentIndex(), shown.index(3));
    QCOMPARE(shown.host().selections.size(), 1);
}

void TreeViewMovingTest::shouldLoseTheirFieldWhenTheirPlaceIsGone()
{
    WholeTree shown;
    shown.select({1});
    shown.press(Qt::Key_F2);
    const QPointer<QLineEdit> editor = shown.editor();
    QVERIFY(editor);
    QTest::keyClicks(editor, QStringLiteral("New"));
    shown.host().setProcessor(testIpProcessor(1, kAddress, 77));
    shown.panel.notify<QUuid>(25, testId(1));
    QTRY_VERIFY(!editor);
    QCOMPARE(shown.host().callCount(QStringLiteral("RenameProcessor")), 0);
    shown.select({3});
    shown.press(Qt::Key_F2);
    QVERIFY(shown.editor());
}

TSA_TEST_MAIN(TreeViewMovingTest)

#include "tst_treeviewmoving.moc"
