#include "host/widgets/HostTheme.h"
#include "host/widgets/TableView.h"
#include "tests/support/WarningTrap.h"

#include <QApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QHoverEvent>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTest>
#include <QToolTip>

namespace {
const QColor kBase(10, 20, 30);
const QColor kAlternate(200, 210, 220);

/// Has no texts for the vertical header.
class Model final : public QStandardItemModel
{
public:
    using QStandardItemModel::QStandardItemModel;

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        return orientation == Qt::Vertical && !namesRows
                   ? QVariant()
                   : QStandardItemModel::headerData(section, orientation, role);
    }

    bool namesRows = false;
};

struct Form
{
    explicit Form(int rows)
        : model(rows, 2)
    {
        window.resize(500, 400);
        table.setGeometry(10, 10, 400, 300);
        QPalette palette = table.palette();
        palette.setColor(QPalette::Base, kBase);
        palette.setColor(QPalette::AlternateBase, kAlternate);
        table.setPalette(palette);
        table.setModel(&model);
        table.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        table.setSelectionBehavior(QAbstractItemView::SelectRows);
        table.setPaintAlternatingRowColorsForEmptyArea(true);
        table.setColumnWidth(0, 150);
        table.setColumnWidth(1, 600);
        window.show();
        window.activateWindow();
    }

    QColor colorAt(int x, int y) { return table.viewport()->grab().toImage().pixelColor(x, y); }

    /// Returns whether the visible rows alternate down to the lower edge, starting with an even
    /// one.
    bool alternates(int x)
    {
        const QHeaderView& rows = *table.verticalHeader();
        const QImage image = table.viewport()->grab().toImage();
        const int height = rows.defaultSectionSize();
        for (int y = 0; y < image.height(); ++y) {
            const int row = (y + rows.offset()) / height;
            if (image.pixelColor(x, y) != (row % 2 == 0 ? kBase : kAlternate))
                return false;
        }
        return true;
    }

    Model model;
    QWidget window;
    CTableView table{&window};
};

} // namespace

class TestTableView final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldAlternateThroughTheEmptyArea_data();
    void shouldAlternateThroughTheEmptyArea();
    void shouldNotPaintTheEmptyAreaWhenOff();
    void shouldNumberRows();
    void shouldNotScrollColumns();
    void shouldElideAtTheEdgeOfTheTable();
    void shouldShowElidedTextsWhole();
    void shouldHighlightTheRowUnderTheMouse();
    void shouldOutlineTheCurrentRow();
    void shouldKeepTheKeysOfATable();
};

void TestTableView::initTestCase()
{
    QFont font = QApplication::font();
    font.setPixelSize(12);
    QApplication::setFont(font);
}

void TestTableView::shouldAlternateThroughTheEmptyArea_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("scrolled");
    for (const int rows : {0, 1, 3, 4, 300})
        QTest::addRow("%d rows", rows) << rows << 0;
    QTest::newRow("scrolled") << 300 << 7;
    QTest::newRow("scrolled to the end") << 301 << 301;
}

void TestTableView::shouldAlternateThroughTheEmptyArea()
{
    QFETCH(const int, rows);
    QFETCH(const int, scrolled);
    Form form(rows);
    form.table.verticalScrollBar()->setValue(scrolled);
    QVERIFY(form.alternates(140));
    form.table.setColumnWidth(1, 100);
    QVERIFY(form.alternates(form.table.viewport()->width() - 2));
    const int height = form.table.verticalHeader()->defaultSectionSize();
    QVERIFY(height >= 24 && height <= 26);
    QVERIFY(!form.table.showGrid());
}

void TestTableView::shouldNotPaintTheEmptyAreaWhenOff()
{
    Form form(1);
    const int second = form.table.verticalHeader()->defaultSectionSize() + 4;
    QCOMPARE(form.colorAt(140, second), kAlternate);
    form.table.setPaintAlternatingRowColorsForEmptyArea(false);
    QCOMPARE(form.colorAt(140, second), kBase);
}

void TestTableView::shouldNumberRows()
{
    Form form(9);
    const QHeaderView& rows = *form.table.verticalHeader();
    const int narrow = rows.width();
    QVERIFY(narrow < 40);
    const QImage numbered = form.table.verticalHeader()->grab().toImage();
    form.model.namesRows = true;
    const QImage named = form.table.verticalHeader()->grab().toImage();
    QVERIFY(numbered != QImage(numbered.size(), numbered.format()));
    form.model.namesRows = false;

    const QRect first(0, 0, narrow, rows.defaultSectionSize());
    const QImage one = form.table.verticalHeader()->grab(first).toImage();
    const QImage two =
        form.table.verticalHeader()->grab(first.translated(0, first.height())).toImage();
    QVERIFY(one != two);
    QVERIFY(!named.isNull());

    form.model.setRowCount(255);
    QTRY_VERIFY(rows.width() > narrow);
    const int digits = rows.fontMetrics().horizontalAdvance(QStringLiteral("255"));
    QVERIFY(rows.width() >= digits);
}

void TestTableView::shouldNotScrollColumns()
{
    Form form(20);
    form.table.setCurrentIndex(form.model.index(0, 0));
    QTest::keyClick(&form.table, Qt::Key_Right);
    QCOMPARE(form.table.columnViewportPosition(0), 0);
    form.table.scrollTo(form.model.index(19, 1), QAbstractItemView::PositionAtCenter);
    QCOMPARE(form.table.columnViewportPosition(0), 0);
    form.table.horizontalScrollBar()->setValue(50);
    QCOMPARE(form.table.columnViewportPosition(0), 0);

    form.table.setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    QTRY_VERIFY(form.table.horizontalScrollBar()->maximum() > 0);
}

void TestTableView::shouldElideAtTheEdgeOfTheTable()
{
    Form form(1);
    form.model.setData(form.model.index(0, 1), QString(200, QLatin1Char('M')));
    const QImage whole = form.table.viewport()->grab().toImage();
    form.table.setColumnWidth(1, form.table.viewport()->width() - 150);
    QCOMPARE(form.table.viewport()->grab().toImage(), whole);
}

void TestTableView::shouldShowElidedTextsWhole()
{
    Form form(2);
    form.model.setData(form.model.index(0, 1), QStringLiteral("short"));
    form.model.setData(form.model.index(1, 1), QString(70, QLatin1Char('M')));
    const auto toolTip = [&form](int row) {
        const QPoint center(200, form.table.rowViewportPosition(row) + 10);
        QWidget* viewport = form.table.viewport();
        QHelpEvent event(QEvent::ToolTip, center, viewport->mapToGlobal(center));
        QApplication::sendEvent(viewport, &event);
        return QToolTip::text();
    };
    QVERIFY(toolTip(0).isEmpty());
    QCOMPARE(toolTip(1).count(QLatin1Char('M')), 70);
    form.model.setData(form.model.index(1, 1), QStringLiteral("own"), Qt::ToolTipRole);
    QCOMPARE(toolTip(1), QStringLiteral("own"));
    QToolTip::hideText();
}

void TestTableView::shouldHighlightTheRowUnderTheMouse()
{
    Form form(3);
    QHoverEvent enter(QEvent::HoverMove, QPointF(20, 30), QPointF(0, 0));
    QApplication::sendEvent(form.table.viewport(), &enter);
    QCOMPARE(form.table.hoveredRow(), 1);
    QHoverEvent below(QEvent::HoverMove, QPointF(20, 200), QPointF(20, 30));
    QApplication::sendEvent(form.table.viewport(), &below);
    QCOMPARE(form.table.hoveredRow(), -1);
    QApplication::sendEvent(form.table.viewport(), &enter);
    QHoverEvent leave(QEvent::HoverLeave, QPointF(-1, -1), QPointF(20, 30));
    QApplication::sendEvent(form.table.viewport(), &leave);
    QCOMPARE(form.table.hoveredRow(), -1);
}

void TestTableView::shouldOutlineTheCurrentRow()
{
    Form form(3);
    QVERIFY(QTest::qWaitForWindowActive(&form.window));
    form.table.setFocus();
    form.table.setCurrentIndex(form.model.index(1, 0));
    const QImage image = form.table.viewport()->grab().toImage();
    const QRect row(0, form.table.rowViewportPosition(1), image.width(), form.table.rowHeight(1));
    const QColor accent = hostColors().accent;
    for (int x = row.left(); x <= row.right(); ++x) {
        QCOMPARE(image.pixelColor(x, row.top()), accent);
        QCOMPARE(image.pixelColor(x, row.bottom()), accent);
    }
    for (int y = row.top(); y <= row.bottom(); ++y) {
        QCOMPARE(image.pixelColor(row.left(), y), accent);
        QCOMPARE(image.pixelColor(row.right(), y), accent);
    }
    // Not between the columns.
    QVERIFY(image.pixelColor(149, row.center().y()) != accent);
    QVERIFY(image.pixelColor(150, row.center().y()) != accent);
}

void TestTableView::shouldKeepTheKeysOfATable()
{
    Form form(100);
    form.table.setCurrentIndex(form.model.index(0, 0));
    const auto selectedRows = [&form] {
        return form.table.selectionModel()->selectedRows().size();
    };
    QTest::keyClick(&form.table, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(&form.table, Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(selectedRows(), 3);
    QTest::keyClick(&form.table, Qt::Key_PageDown);
    QVERIFY(form.table.currentIndex().row() > 8);
    QTest::keyClick(&form.table, Qt::Key_PageUp);
    QTest::keyClick(&form.table, Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(form.table.currentIndex().row(), 99);
    QTest::keyClick(&form.table, Qt::Key_Home, Qt::ControlModifier);
    QCOMPARE(form.table.currentIndex().row(), 0);
    QTest::keyClick(&form.table, Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(selectedRows(), 100);
}

TSA_TEST_MAIN(TestTableView)

#include "tst_tableview.moc"
