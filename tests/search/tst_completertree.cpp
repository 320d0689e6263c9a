#include "tests/search/PopupPicture.h"
#include "tests/search/SearchField.h"

#include <QHelpEvent>
#include <QHoverEvent>

#include <functional>

using Change = std::function<void(SearchField&)>;
Q_DECLARE_METATYPE(Change)

/// The list while the tree changes.
class TestCompleterTree final : public QObject
{
    Q_OBJECT

private slots:
    void shouldFollowTheTree_data();
    void shouldFollowTheTree();
    void shouldSurviveAResetUnderTheMouse();
    void shouldStayClosedWhenRowsAreInserted();
    void shouldChooseTheRightRowAfterAReorder();
};

void TestCompleterTree::shouldFollowTheTree_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("rows");
    QTest::addColumn<QString>("current");
    QTest::newRow("nothing") << Change([](SearchField&) {})
                             << "Stage 1,Stage 10,Stage 11,Stage 12,Foyer"
                             << "Stage 11";
    QTest::newRow("reset") << Change([](SearchField& s) { s.model().reset(); })
                           << "Stage 1,Stage 10,Stage 11,Stage 12,Foyer"
                           << "";
    QTest::newRow("reset to nothing") << Change([](SearchField& s) {
        s.panel.host().setProject({}, {});
        s.model().reset();
    }) << ""
                                      << "";
    QTest::newRow("cleared") << Change([](SearchField& s) { s.model().clearToRoot(); }) << ""
                             << "";
    QTest::newRow("groups removed")
        << Change([](SearchField& s) { s.model().removeAllGroups(); }) << "Stage 1,Stage 11,Foyer"
        << "Stage 11";
    QTest::newRow("removed") << Change([](SearchField& s) { s.model().removeNode(testId(11)); })
                             << "Stage 1,Stage 10,Stage 12,Foyer"
                             << "";
    QTest::newRow("another removed")
        << Change([](SearchField& s) { s.model().removeNode(testId(1)); })
        << "Stage 10,Stage 11,Stage 12,Foyer"
        << "Stage 11";
    QTest::newRow("no longer matching") << Change([](SearchField& s) {
        ProcessorNode node = testProcessor(11);
        node.name = QStringLiteral("Bar");
        node.number = 44;
        s.model().updateProcessor(s.model().getItem(testId(11)), node);
    }) << "Stage 1,Stage 10,Stage 12,Foyer"
                                        << "";
    QTest::newRow("renamed") << Change([](SearchField& s) {
        s.model().setData(s.index(11), QStringLiteral("Bar 1"), Qt::DisplayRole);
    }) << "Stage 1,Stage 10,Bar 1,Stage 12,Foyer"
                             << "Bar 1";
    QTest::newRow("reordered") << Change([](SearchField& s) {
        ProcessorNode node = testProcessor(11);
        node.name = QStringLiteral("Stage 11");
        node.number = -5;
        s.model().updateProcessor(s.model().getItem(testId(11)), node);
    }) << "Stage 11,Stage 1,Stage 10,Stage 12,Foyer"
                               << "Stage 11";
    QTest::newRow("added") << Change([](SearchField& s) {
        ProcessorNode node = testProcessor(71);
        node.number = -3;
        node.name = QStringLiteral("New 1");
        s.model().AppendProcessor(node);
    }) << "New 1,Stage 1,Stage 10,Stage 11,Stage 12,Foyer"
                           << "Stage 11";
    QTest::newRow("moved") << Change([](SearchField& s) {
        s.model().moveProcessors({QPersistentModelIndex(s.index(12))}, QUuid());
    }) << "Stage 1,Stage 10,Stage 11,Stage 12,Foyer"
                           << "Stage 11";
}

void TestCompleterTree::shouldFollowTheTree()
{
    QFETCH(Change, change);
    QFETCH(QString, rows);
    QFETCH(QString, current);
    SearchField search;
    search.type(QStringLiteral("1"));
    QVERIFY(QTest::qWaitForWindowExposed(search.popup()));
    search.completer->select(search.row(2), false);
    change(search);
    QVERIFY(search.isOpen());
    QCOMPARE(search.rows(), rows);
    QCOMPARE(search.current(), current);
    QCOMPARE(search.popup()->currentIndex().isValid(), !current.isEmpty());
    QCOMPARE(search.told(), QString());
    QVERIFY(!search.popup()->grab().isNull());
    search.press(Qt::Key_Return);
    QCOMPARE(search.told(), current.isEmpty() ? QStringLiteral("-") : current);
}

void TestCompleterTree::shouldSurviveAResetUnderTheMouse()
{
    SearchField search;
    search.type(QStringLiteral("stage"));
    QVERIFY(QTest::qWaitForWindowExposed(search.popup()));
    const QPoint place = search.popup()->visualRect(search.row(4)).center();
    QHoverEvent hover(QEvent::HoverMove, place, QPoint(-1, -1));
    QApplication::sendEvent(search.popup()->viewport(), &hover);
    search.panel.host().setProject({}, {testProcessor(1)});
    search.model().reset();
    QCOMPARE(search.rows(), QString());
    const QImage empty = search.popup()->grab().toImage();
    QVERIFY(!covered(empty, QRect(9, 100, 158, 70)).isEmpty()); // the text for an empty result
    QTest::mouseClick(search.popup()->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      search.popup()->viewport()->mapTo(search.popup(), place));
    QHelpEvent help(QEvent::ToolTip, place, search.popup()->viewport()->mapToGlobal(place));
    QApplication::sendEvent(search.popup()->viewport(), &help);
    QCOMPARE(search.told(), QString());
    QVERIFY(search.isOpen());
}

void TestCompleterTree::shouldStayClosedWhenRowsAreInserted()
{
    SearchField search;
    search.type(QStringLiteral("1"));
    search.press(Qt::Key_Escape);
    search.model().AppendProcessor(testProcessor(71));
    search.model().removeNode(testId(1));
    search.model().reset();
    QVERIFY(!search.isOpen());
    QCOMPARE(search.told(), QStringLiteral("-"));
}

void TestCompleterTree::shouldChooseTheRightRowAfterAReorder()
{
    SearchField search;
    search.type(QStringLiteral("1"));
    QVERIFY(QTest::qWaitForWindowExposed(search.popup()));
    ProcessorNode node = testProcessor(11);
    node.name = QStringLiteral("Stage 11");
    node.number = -5;
    search.model().updateProcessor(search.model().getItem(testId(11)), node);
    QTest::mouseClick(search.popup()->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      search.place(0));
    QCOMPARE(search.told(), QStringLiteral("Stage 11"));
}

TSA_TEST_MAIN(TestCompleterTree)

#include "tst_completertree.moc"
