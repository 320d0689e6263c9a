// The open list after changes that its model does not announce.

#include "processortree/model/ProcessorTreeModel.h"
#include "tests/search/SearchField.h"

#include <QListView>
#include <QStandardItem>
#include <QTest>

namespace {

/// Counts how often a widget is painted.
class PaintCount final : public QObject
{
public:
    explicit PaintCount(QWidget& widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            ++count;
        return QObject::eventFilter(watched, event);
    }

    int count = 0;
};

} // namespace

class CompleterChangesTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldPaintAChange_data();
    void shouldPaintAChange();
};

void CompleterChangesTest::shouldPaintAChange_data()
{
    QTest::addColumn<int>("change");
    QTest::addColumn<QString>("rows");
    QTest::newRow("record") << 0 << QStringLiteral("Stage 1,Stage 10,Stage 11,Stage 12");
    QTest::newRow("text") << 1 << QStringLiteral("Stage 1b,Stage 10,Stage 11,Stage 12");
    QTest::newRow("order") << 2 << QStringLiteral("Stage 10,Stage 11,Stage 12,Stage 1");
    QTest::newRow("tree sorted") << 3 << QStringLiteral("Stage 1,Stage 10,Stage 11,Stage 12");
}

void CompleterChangesTest::shouldPaintAChange()
{
    QFETCH(int, change);
    QFETCH(QString, rows);
    SearchField search;
    search.type(QStringLiteral("stage 1"));
    QVERIFY(search.isOpen());
    QCOMPARE(search.rows(), QStringLiteral("Stage 1,Stage 10,Stage 11,Stage 12"));
    QVERIFY(QTest::qWaitForWindowExposed(search.popup()));
    PaintCount painted(*search.popup()->viewport());
    search.popup()->viewport()->repaint();
    QCOMPARE(painted.count, 1);

    QStandardItem* item = search.model().getItem(testId(1));
    auto record = item->data(NodeDataRole).value<ProcessorNode>();
    if (change == 0) {
        record.online = !record.online;
        search.model().updateProcessor(item, record);
    } else if (change == 1) {
        item->setText(QStringLiteral("Stage 1b"));
    } else if (change == 2) {
        record.number = 1000;
        search.model().updateProcessor(item, record);
    } else {
        search.model().sort(0, Qt::DescendingOrder);
    }
    QTRY_VERIFY(painted.count > 1);
    QCOMPARE(search.rows(), rows);
}

TSA_TEST_MAIN(CompleterChangesTest)
#include "tst_completerchanges.moc"
