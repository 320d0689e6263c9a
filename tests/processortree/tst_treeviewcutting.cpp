#include "host/widgets/HostTheme.h"
#include "plugin/TargetSelectData.h"
#include "tests/processortree/WholeTree.h"
#include "tests/support/Contrast.h"

namespace {

void cut(WholeTree& tree)
{
    tree.press(Qt::Key_X, Qt::ControlModifier);
}

/// Goes to row `n` by the mouse, and pastes there.
void pasteAt(WholeTree& tree, quint32 n)
{
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(n));
    tree.press(Qt::Key_V, Qt::ControlModifier);
}

} // namespace

/// Processors moved by keys: marked, and moved to where the user went.
class TreeViewCuttingTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void shouldMoveProcessors_data();
    void shouldMoveProcessors();
    void shouldMoveByKeysAlone();
    void shouldMoveNothingWithoutAMark_data();
    void shouldMoveNothingWithoutAMark();
    void shouldMoveNothingThatIsForbidden_data();
    void shouldMoveNothingThatIsForbidden();
    void shouldFollowTheTree();
    void shouldPaintMarkedRowsPale();
    void shouldPaintTextsOfMarkedRowsPaleButReadable();
    void shouldLeaveTheKeysToTheField();
    void shouldStandTheEndOfThePanel();
};

void TreeViewCuttingTest::initTestCase()
{
    ApplyHostTheme(*qApp);
}

void TreeViewCuttingTest::cleanup()
{
    CTargetSelectData::Instance()->SetReadOnly(false);
}

void TreeViewCuttingTest::shouldMoveProcessors_data()
{
    QTest::addColumn<QList<quint32>>("marked");
    QTest::addColumn<quint32>("onto");
    QTest::addColumn<QString>("tree");
    QTest::addColumn<QString>("moves");
    const auto row = [](const char* name, const QList<quint32>& marked, quint32 onto,
                        const char* tree, const char* moves) {
        QTest::newRow(name) << marked << onto << QString::fromLatin1(tree)
                            << QString::fromLatin1(moves);
    };
    row("onto a group", {1}, 11, "All processors(4)[G10[2],G11[1],3,4]", "1>11");
    row("several", {1, 4}, 11, "All processors(4)[G10[2],G11[1,4],3]", "1,4>11");
    row("onto one in a group", {4}, 2, "All processors(4)[G10[1,2,4],G11[],3]", "4>10");
    row("onto the root", {2}, 0, "All processors(4)[G10[1],G11[],3,4,2]", "2>0");
    row("onto one outside", {1}, 4, "All processors(4)[G10[1,2],G11[],3,4]", "");
    row("onto the own group", {1}, 10, "All processors(4)[G10[1,2],G11[],3,4]", "");
}

void TreeViewCuttingTest::shouldMoveProcessors()
{
    QFETCH(QList<quint32>, marked);
    QFETCH(quint32, onto);
    WholeTree tree;
    tree.select(marked);
    cut(tree);
    QCOMPARE(tree.panel.dump(), kUntouched);
    pasteAt(tree, onto);
    QTEST(tree.panel.dump(), "tree");
    QTEST(tree.moves(), "moves");
    if (onto == 4) { // nothing moved: the mark is still there
        pasteAt(tree, 11);
        QCOMPARE(tree.moves(), QStringLiteral("1>11"));
        return;
    }
    for (const quint32 n : qAsConst(marked))
        QVERIFY(tree.selection()->isSelected(tree.index(n)));
    QCOMPARE(tree.selection()->selectedIndexes().size(), marked.size());
    // They are moved once.
    tree.host().memberships.clear();
    pasteAt(tree, onto == 11 ? 10 : 11);
    QCOMPARE(tree.moves(), QString());
}

void TreeViewCuttingTest::shouldMoveByKeysAlone()
{
    WholeTree tree;
    tree.select({3});
    cut(tree);
    tree.press(Qt::Key_Up);
    QCOMPARE(tree.selected(), QStringLiteral("G11"));
    tree.press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(tree.panel.dump(), QStringLiteral("All processors(4)[G10[1,2],G11[3],4]"));
    QCOMPARE(tree.moves(), QStringLiteral("3>11"));
    QCOMPARE(tree.selected(), QStringLiteral("3"));
    QVERIFY(tree.view->isExpanded(tree.index(11)));
}

void TreeViewCuttingTest::shouldMoveNothingWithoutAMark_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("none made") << 0;
    QTest::newRow("taken back") << 1;
    QTest::newRow("of a group") << 2;
}

void TreeViewCuttingTest::shouldMoveNothingWithoutAMark()
{
    QFETCH(int, way);
    WholeTree tree;
    tree.select(way == 2 ? QList<quint32>{10} : QList<quint32>{1});
    if (way > 0)
        cut(tree);
    if (way == 1)
        tree.press(Qt::Key_Escape);
    pasteAt(tree, 11);
    QCOMPARE(tree.panel.dump(), kUntouched);
    QCOMPARE(tree.moves(), QString());
    QCOMPARE(tree.selected(), QStringLiteral("G11"));
}

void TreeViewCuttingTest::shouldMoveNothingThatIsForbidden_data()
{
    QTest::addColumn<int>("how"); // 0 by the restricted mode, 1 read-only, 2 a lock
    QTest::addColumn<bool>("early");
    const char* const ways[] = {"restricted", "read-only", "locked"};
    for (int how = 0; how < 3; ++how) {
        for (const bool early : {false, true})
            QTest::addRow("%s%s", ways[how], early ? ", before" : "") << how << early;
    }
}

void TreeViewCuttingTest::shouldMoveNothingThatIsForbidden()
{
    QFETCH(int, how);
    QFETCH(bool, early);
    WholeTree tree;
    const auto forbid = [&](bool on) {
        if (how == 0)
            tree.host().restrictedMode = on;
        else if (how == 1)
            tree.panel.data().SetReadOnly(on);
        else
            tree.view->SetLocked(on);
    };
    tree.select({1});
    if (early)
        forbid(true);
    cut(tree);
    forbid(true);
    pasteAt(tree, 11);
    QCOMPARE(tree.panel.dump(), kUntouched);
    QCOMPARE(tree.moves(), QString());
    forbid(false);
    pasteAt(tree, 11);
    // A restricted tree lets rows be marked, as it lets them be dragged.
    QCOMPARE(tree.moves(), early && how > 0 ? QString() : QStringLiteral("1>11"));
}

/// Rows that the host moves, tells anew and removes meanwhile.
void TreeViewCuttingTest::shouldFollowTheTree()
{
    WholeTree tree;
    tree.select({1, 3, 4});
    cut(tree);
    tree.host().setProcessor(testIpProcessor(1, 0x0A000001, 10));
    tree.panel.notify<QUuid>(25, testId(1));
    tree.host().removeProcessor(testId(3));
    tree.panel.notify(16);
    tree.view->expandAll();
    tree.host().memberships.clear();
    pasteAt(tree, 11);
    QCOMPARE(tree.panel.dump(), QStringLiteral("All processors(3)[G10[2],G11[1,4]]"));
    QCOMPARE(tree.moves(), QStringLiteral("1,4>11"));
}

void TreeViewCuttingTest::shouldPaintMarkedRowsPale()
{
    WholeTree tree;
    tree.select({3});
    const auto row = [&](quint32 n) {
        return tree.view->viewport()->grab(tree.view->visualRect(tree.index(n))).toImage();
    };
    tree.press(Qt::Key_Control, Qt::ControlModifier); // shows the focus from here on
    const QImage before = row(3);
    const QImage other = row(4);
    cut(tree);
    QVERIFY(row(3) != before);
    QCOMPARE(row(4), other);
    tree.press(Qt::Key_Escape);
    QCOMPARE(row(3), before);
    cut(tree);
    QVERIFY(row(3) != before);
    tree.select({4});
    cut(tree);
    tree.select({3});
    QCOMPARE(row(3), before);
}

void TreeViewCuttingTest::shouldPaintTextsOfMarkedRowsPaleButReadable()
{
    WholeTree tree;
    tree.select({3});
    // The best contrast of a text in row 3, behind its icon.
    const auto readability = [&](int top, int height) {
        const QRect row = tree.view->visualRect(tree.index(3));
        const QRect text(row.left() + 24, row.top() + top, row.width() - 80, height);
        const QImage picture = tree.view->viewport()->grab(text).toImage();
        double best = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                best = qMax(best, contrast(picture.pixelColor(x, y), hostColors().window));
        }
        return best;
    };
    cut(tree);
    tree.select({4});
    const double name = readability(4, 19);
    const double number = readability(23, 15);
    tree.press(Qt::Key_Escape);
    QVERIFY2(name < readability(4, 19) - 2, qPrintable(QString::number(name)));
    QVERIFY2(number < readability(23, 15) - 2, qPrintable(QString::number(number)));
    QVERIFY2(name >= 4, qPrintable(QString::number(name)));
    QVERIFY2(number >= 3, qPrintable(QString::number(number)));
}

void TreeViewCuttingTest::shouldLeaveTheKeysToTheField()
{
    WholeTree tree;
    tree.select({3});
    tree.press(Qt::Key_F2);
    QVERIFY(tree.editor());
    QTest::keyClick(tree.editor(), Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(tree.editor()->text(), QString());
    QTest::keyClick(tree.editor(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(tree.editor()->text(), QStringLiteral("3"));
    QTest::keyClick(tree.editor(), Qt::Key_Escape);
    QTRY_VERIFY(!tree.editor());
    pasteAt(tree, 11);
    QCOMPARE(tree.panel.dump(), kUntouched);
}

void TreeViewCuttingTest::shouldStandTheEndOfThePanel()
{
    for (const char* question : {"IsRestrictedMode", "SetProcessorGroup"}) {
        WholeTree tree;
        tree.select({1});
        cut(tree);
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(11));
        tree.host().doInside(QLatin1String(question), [&] { tree.view->outlivePanel(); });
        tree.press(Qt::Key_V, Qt::ControlModifier);
        QTRY_VERIFY2(!tree.view, question);
    }
}

TSA_TEST_MAIN(TreeViewCuttingTest)

#include "tst_treeviewcutting.moc"
