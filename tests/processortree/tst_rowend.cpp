#include "host/widgets/HostTheme.h"
#include "tests/processortree/Buttons.h"
#include "tests/support/Chinese.h"

#include <QHelpEvent>
#include <QStandardItem>
#include <QToolTip>

#include <memory>

/// What rows of the tree show at their right end: texts, or the button.
class RowEndTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldShowAddressesWhole_data();
    void shouldShowAddressesWhole();
    void shouldGiveTheButtonRoomInItsRowOnly_data();
    void shouldGiveTheButtonRoomInItsRowOnly();
    void shouldKeepTheWarningInItsPlace();
    void shouldTellTextsThatTheButtonCuts();
};

namespace {

constexpr int kRowWidth = 178; // of a processor in a group, in the panel of 220
constexpr QRgb kGround = 0xff1e1e21;

struct PaintedRow
{
    explicit PaintedRow(const QString& name = QStringLiteral("P"))
    {
        record = testIpProcessor(1, 0xFFFFFFFF, 10);
        record.name = name;
    }

    QImage paint(QStyle::State state, qreal scale = 1)
    {
        QStandardItem* item = tree.model().getItem(testId(1));
        tree.model().updateProcessor(item, record);
        QImage image(QSize(kRowWidth, 42) * scale, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(scale);
        image.fill(kGround);
        QStyleOptionViewItem option;
        option.initFrom(&tree.view);
        option.widget = &tree.view;
        option.font = tree.view.font();
        option.state = QStyle::State_Enabled | state;
        option.rect = QRect(0, 0, kRowWidth, 42);
        QPainter painter(&image);
        tree.delegate->paint(&painter, option, tree.index(1));
        return image;
    }

    Buttons tree;
    ProcessorNode record;
};

/// Returns the column behind the last painted pixel in the rows `top` to `bottom`.
int inkEnd(const QImage& image, int top, int bottom)
{
    for (int x = image.width(); x > 0; --x) {
        for (int y = top; y < bottom; ++y) {
            if (image.pixel(x - 1, y) != kGround)
                return x;
        }
    }
    return 0;
}

} // namespace

void RowEndTest::initTestCase()
{
    ApplyHostTheme(*qApp);
}

void RowEndTest::shouldShowAddressesWhole_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("hasButton");
    QTest::addColumn<bool>("isChinese");
    QTest::addColumn<qreal>("scale");
    for (const bool isChinese : {false, true}) {
        for (const qreal scale : {1.0, 1.5, 2.0}) {
            const auto add = [&](const char* name, QStyle::StateFlag state, bool hasButton) {
                QTest::addRow("%s, %s, %g", name, isChinese ? "zh" : "en", scale)
                    << static_cast<int>(state) << hasButton << isChinese << scale;
            };
            add("plain", QStyle::State_None, true);
            add("hovered", QStyle::State_MouseOver, true);
            add("selected", QStyle::State_Selected, true);
            add("selected without a button", QStyle::State_Selected, false);
        }
    }
}

/// An address that is cut hides its last digit, and looks the same whatever that is.
void RowEndTest::shouldShowAddressesWhole()
{
    QFETCH(const int, state);
    QFETCH(const bool, hasButton);
    QFETCH(const bool, isChinese);
    QFETCH(const qreal, scale);
    PaintedRow row;
    const std::unique_ptr<Chinese> chinese(isChinese ? new Chinese : nullptr);
    QVERIFY(!chinese || chinese->isLoaded());
    row.tree.host().showProcessorMoreButton = hasButton;
    QVector<QImage> pictures;
    for (const quint32 last : {2U, 3U, 4U}) {
        row.record.ipAddress = 0xFFFFFF00 + 250 + last;
        pictures.append(row.paint(static_cast<QStyle::State>(state), scale));
    }
    QVERIFY(pictures.at(0) != pictures.at(1));
    QVERIFY(pictures.at(1) != pictures.at(2));
    QVERIFY(pictures.at(0) != pictures.at(2));
}

void RowEndTest::shouldGiveTheButtonRoomInItsRowOnly_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("hasButton");
    QTest::addColumn<int>("margin");
    QTest::newRow("plain") << static_cast<int>(QStyle::State_None) << true << 10;
    QTest::newRow("hovered") << static_cast<int>(QStyle::State_MouseOver) << true << 40;
    QTest::newRow("selected") << static_cast<int>(QStyle::State_Selected) << true << 40;
    QTest::newRow("without a button") << static_cast<int>(QStyle::State_Selected) << false << 18;
}

void RowEndTest::shouldGiveTheButtonRoomInItsRowOnly()
{
    QFETCH(const int, state);
    QFETCH(const bool, hasButton);
    QFETCH(const int, margin);
    PaintedRow row(QStringLiteral("A processor whose name is far too long for its row"));
    row.tree.host().showProcessorMoreButton = hasButton;
    const QImage image = row.paint(static_cast<QStyle::State>(state));
    // Above the dots of the button.
    const int end = inkEnd(image, 0, 19);
    QVERIFY2(end <= kRowWidth - margin, qPrintable(QString::number(end)));
    QVERIFY2(end > kRowWidth - margin - 14, qPrintable(QString::number(end)));
}

/// It would slip away from the mouse that comes to it for its tool tip.
void RowEndTest::shouldKeepTheWarningInItsPlace()
{
    PaintedRow row(QStringLiteral("A processor whose name is far too long for its row"));
    row.record.hostFlag17 = true;
    const QRect place(kRowWidth - 54, 0, 14, 22);
    const QImage plain = row.paint(QStyle::State_None).copy(place);
    QCOMPARE(row.paint(QStyle::State_MouseOver).copy(place), plain);
    QCOMPARE(row.paint(QStyle::State_Selected).copy(place), plain);
    row.tree.host().showProcessorMoreButton = false;
    QCOMPARE(row.paint(QStyle::State_Selected).copy(place), plain);
    row.record.hostFlag17 = false;
    QVERIFY(row.paint(QStyle::State_None).copy(place) != plain);
}

void RowEndTest::shouldTellTextsThatTheButtonCuts()
{
    Buttons tree;
    const QFontMetrics metrics(tree.view.font());
    const int room = tree.row(3).width() - 24 - 30; // between those with and without a button
    QString name;
    while (metrics.horizontalAdvance(name) < room)
        name += QLatin1Char('i');
    tree.model().setData(tree.index(3), name, Qt::DisplayRole);
    const auto tip = [&] {
        QToolTip::hideText();
        const QPoint place = tree.row(3).center();
        QHelpEvent event(QEvent::ToolTip, place, tree.viewport()->mapToGlobal(place));
        QApplication::sendEvent(tree.viewport(), &event);
        return QToolTip::text();
    };
    tree.host().showProcessorMoreButton = false;
    QCOMPARE(tip(), QString());
    tree.host().showProcessorMoreButton = true;
    QVERIFY(tip().startsWith(name));
}

TSA_TEST_MAIN(RowEndTest)

#include "tst_rowend.moc"
