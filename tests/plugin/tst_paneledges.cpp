#include "host/widgets/HostTheme.h"
#include "host/widgets/PureImageBtn.h"
#include "tests/plugin/ShownPanel.h"
#include "tests/support/Chinese.h"

#include <QLineEdit>
#include <QPainter>
#include <QScrollBar>

#include <memory>

/// The left and right edges that all parts of the panel's column share.
class PanelEdgesTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldHaveTheSameEdges_data();
    void shouldHaveTheSameEdges();
    void shouldUseTheWidthOfAWiderPanel();
};

namespace {

constexpr quint32 kGroup = 100;

using Edges = std::pair<qreal, qreal>;

/// A panel with the groups and processors of a small or a large project.
struct Column
{
    explicit Column(quint32 count)
    {
        QList<ProcessorNode> processors;
        for (quint32 n = 1; n <= count; ++n)
            processors.append(testProcessor(n, n % 2 ? kGroup : 0));
        shown.host().setProject({testGroup(kGroup)}, processors);
        shown.panel.notify(16);
        shown.area().onDetectStrategyChanged(2);
        shown.area().onCurrentDeviceSetChanged(deviceSet(1).id, deviceSets(2));
        QCoreApplication::processEvents();
    }

    QImage paint(qreal scale)
    {
        const QSize size = shown.area().size();
        QImage picture((QSizeF(size) * scale).toSize(), QImage::Format_RGB32);
        picture.setDevicePixelRatio(scale);
        picture.fill(hostColors().window);
        QPainter painter(&picture);
        shown.area().render(&painter);
        return picture;
    }

    Edges edges(const QWidget* widget)
    {
        const int left = widget->mapTo(&shown.area(), QPoint()).x();
        return {left, left + widget->width()};
    }

    /// Returns where the field begins, and where the button behind it ends.
    Edges edgesOfSearch()
    {
        return {edges(shown.area().findChild<QLineEdit*>()).first,
                edges(shown.area().findChild<CPureImageBtn*>()).second};
    }

    /// Returns where the background of a row begins and ends in the panel.
    Edges backgroundOf(const QModelIndex& row, qreal scale)
    {
        QItemSelectionModel& selection = *shown.view()->selectionModel();
        selection.select(row, QItemSelectionModel::ClearAndSelect);
        const QImage picture = paint(scale);
        const QRect place = shown.view()->visualRect(row);
        const QPoint corner = shown.view()->viewport()->mapTo(&shown.area(), place.topLeft());
        // Above the texts, and below the round corners.
        const int y = qRound((corner.y() + 5) * scale);
        const QColor fill = shown.view()->palette().color(QPalette::Highlight);
        int left = 0;
        while (left < picture.width() && picture.pixelColor(left, y) != fill)
            ++left;
        int right = left;
        while (right < picture.width() && picture.pixelColor(right, y) == fill)
            ++right;
        return {left / scale, right / scale};
    }

    QModelIndex row(quint32 n) { return shown.panel.index(n); }

    ShownPanel shown;
};

} // namespace

void PanelEdgesTest::initTestCase()
{
    ApplyHostTheme(*qApp);
}

void PanelEdgesTest::shouldHaveTheSameEdges_data()
{
    QTest::addColumn<quint32>("count");
    QTest::addColumn<bool>("isChinese");
    QTest::addColumn<qreal>("scale");
    for (const quint32 count : {4U, 255U}) {
        for (const bool isChinese : {false, true}) {
            for (const qreal scale : {1.0, 1.5, 2.0})
                QTest::addRow("%u, %s, %g", count, isChinese ? "zh" : "en", scale)
                    << count << isChinese << scale;
        }
    }
}

void PanelEdgesTest::shouldHaveTheSameEdges()
{
    QFETCH(const quint32, count);
    QFETCH(const bool, isChinese);
    QFETCH(const qreal, scale);
    Column column(count);
    const std::unique_ptr<Chinese> chinese(isChinese ? new Chinese : nullptr);
    QVERIFY(!chinese || chinese->isLoaded());
    ShownPanel& shown = column.shown;
    QCOMPARE(shown.view()->verticalScrollBar()->isVisible(), count > 100);

    const Edges expected(10, 210);
    QCOMPARE(column.edges(shown.detection()), expected);
    QCOMPARE(column.edges(shown.ipManagement()), expected);
    QCOMPARE(column.edges(shown.selector()), expected);
    QCOMPARE(column.edgesOfSearch(), expected);
    for (const QModelIndex& row : {column.row(0), column.row(kGroup), column.row(1)})
        QCOMPARE(column.backgroundOf(row, scale), expected);
}

/// A host may give the panel another width. Its controls keep theirs, the rows take what there is.
void PanelEdgesTest::shouldUseTheWidthOfAWiderPanel()
{
    Column column(255);
    for (const int width : {300, 500}) {
        column.shown.area().setFixedWidth(width);
        QCoreApplication::processEvents();
        QVERIFY(column.shown.view()->verticalScrollBar()->isVisible());
        QCOMPARE(column.backgroundOf(column.row(1), 1), Edges(10, width - 10));
        const Edges controls(width / 2 - 100, width / 2 + 100);
        QCOMPARE(column.edges(column.shown.detection()), controls);
        QCOMPARE(column.edgesOfSearch(), controls);
    }
}

TSA_TEST_MAIN(PanelEdgesTest)
#include "tst_paneledges.moc"
