#include "host/widgets/HostTheme.h"
#include "host/widgets/SvgIcons.h"
#include "search/CompleterProcessorDelegate.h"
#include "tests/support/Chinese.h"
#include "tests/support/TestPanel.h"
#include "tests/support/WarningTrap.h"

#include <QApplication>
#include <QHelpEvent>
#include <QListView>
#include <QPainter>
#include <QStandardItemModel>
#include <QTest>
#include <QToolTip>

#include <initializer_list>

namespace {
const QColor kStrong(240, 240, 246);
const QColor kNormal(200, 200, 205);
const QColor kWeak(136, 136, 146);
constexpr QRect kRow(0, 0, 176, 42);
constexpr QRect kIcon(10, 9, 24, 24);

int distance(const QColor& one, const QColor& two)
{
    return qAbs(one.red() - two.red()) + qAbs(one.green() - two.green())
           + qAbs(one.blue() - two.blue());
}

/// A row with a record, painted by the delegate.
struct PaintedRow
{
    explicit PaintedRow(const ProcessorNode& record)
    {
        (void)panel; // registers the icons
        auto* item = new QStandardItem(record.name);
        item->setData(QVariant::fromValue(record), NodeDataRole);
        item->setData(QSize(0, 42), Qt::SizeHintRole);
        model.appendRow(item);
        view.setModel(&model);
        view.setItemDelegate(&delegate);
        view.setFrameShape(QFrame::NoFrame);
        view.resize(176, 100);
        QFont font = view.font();
        font.setPixelSize(20);
        font.setBold(true);
        view.setFont(font);
    }

    QStyleOptionViewItem option(QStyle::State state, const QRect& row = kRow) const
    {
        QStyleOptionViewItem option;
        option.initFrom(&view);
        option.widget = &view;
        option.font = view.font();
        option.state = QStyle::State_Enabled | QStyle::State_Active | state;
        option.rect = row;
        return option;
    }

    /// Paints on black, without the background of a selection, which would hide the text colours.
    QImage painted(QStyle::State state = QStyle::State_None, qreal scale = 1,
                   const QRect& row = kRow) const
    {
        QImage image(QSize(row.right() + 1, row.bottom() + 1) * scale,
                     QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(scale);
        image.fill(Qt::black);
        QStyleOptionViewItem item = option(state, row);
        item.palette.setColor(QPalette::Highlight, Qt::black);
        QPainter painter(&image);
        delegate.paint(&painter, item, model.index(0, 0));
        return image;
    }

    TestPanel panel;
    QStandardItemModel model;
    QListView view;
    CCompleterProcessorDelegate delegate;
};

/// Returns the bounds of the painted pixels in `part`, and their brightest colour.
QRect drawn(const QImage& image, const QRect& part, QColor* brightest = nullptr)
{
    QRect found;
    QColor top = Qt::black;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            const QColor color = image.pixelColor(x, y);
            if (distance(color, Qt::black) > 20)
                found |= QRect(x, y, 1, 1);
            if (distance(color, Qt::black) > distance(top, Qt::black))
                top = color;
        }
    }
    if (brightest)
        *brightest = top;
    return found;
}

/// Returns the picture of a row whose name or detail line is `text`, painted by the test.
QImage expected(const QString& text, const QRect& part, int vertical, const QColor& color)
{
    QImage image(kRow.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter painter(&image);
    QListView view;
    QFont font = view.font();
    font.setWeight(50);
    font.setPixelSize(12);
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(part, Qt::AlignLeft | vertical, text);
    return image.copy(part);
}

constexpr QRect kName(41, 0, 111, 21);
constexpr QRect kDetail(41, 21, 131, 21);

ProcessorNode longName()
{
    ProcessorNode record = testProcessor(1);
    record.name = QStringLiteral("A name that is much longer than the list is wide");
    return record;
}

} // namespace

class TestCompleterDelegate final : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QToolTip::hideText(); }

    void shouldPaintTheState_data();
    void shouldPaintTheState();
    void shouldShowStatesByShape();
    void shouldPaintTheName();
    void shouldPaintTheDetail_data();
    void shouldPaintTheDetail();
    void shouldPaintInTheColoursOfItsState_data();
    void shouldPaintInTheColoursOfItsState();
    void shouldPaintTheStylesBackground();
    void shouldPaintWhereTheRowIs();
    void shouldPaintSharply();
    void shouldElideALongName();
    void shouldPaintARowThatIsTooSmall();
    void shouldPaintARowWithoutARecord();
    void shouldParseNothingWhilePainting();
    void shouldShowALongNameInAToolTip();
    void shouldShowNoOtherToolTip();
    void shouldBeTranslatedToChinese();
};

void TestCompleterDelegate::shouldPaintTheState_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("online");
    QTest::addColumn<QString>("icon");
    QTest::newRow("online") << 0 << true << "online";
    QTest::newRow("offline") << 0 << false << "offline";
    QTest::newRow("other mode") << 1 << true << "online";
    QTest::newRow("other mode, offline") << 3 << false << "offline";
    QTest::newRow("backup") << 2 << true << "backup-online";
    QTest::newRow("backup, offline") << 2 << false << "backup-offline";
}

void TestCompleterDelegate::shouldPaintTheState()
{
    QFETCH(int, mode);
    QFETCH(bool, online);
    QFETCH(QString, icon);
    ProcessorNode record = testProcessor(1);
    record.redundancyMode = mode;
    record.online = online;
    const PaintedRow row(record);
    SvgIcons icons;
    const QString path = QStringLiteral(":/Image/Target/Processor/%1_normal.svg").arg(icon);
    icons.load(path);
    QImage image(24, 24, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.drawPixmap(0, 0, icons.pixmap(path, 24, 1));
    painter.end();
    QVERIFY(!drawn(image, image.rect()).isEmpty());
    QVERIFY(row.painted().copy(kIcon) == image);
}

/// The four icons must differ without their colours.
void TestCompleterDelegate::shouldShowStatesByShape()
{
    QVector<QImage> shapes;
    for (const int mode : {0, 2}) {
        for (const bool online : {false, true}) {
            ProcessorNode record = testProcessor(1);
            record.redundancyMode = mode;
            record.online = online;
            QImage shape(24, 24, QImage::Format_Mono);
            shape.fill(0);
            const QImage icon = PaintedRow(record).painted().copy(kIcon);
            for (int y = 0; y < 24; ++y) {
                for (int x = 0; x < 24; ++x)
                    shape.setPixel(x, y, distance(icon.pixelColor(x, y), Qt::black) > 150);
            }
            QVERIFY(!shapes.contains(shape));
            shapes.append(shape);
        }
    }
}

void TestCompleterDelegate::shouldPaintTheName()
{
    ProcessorNode record = testProcessor(5);
    record.name = QStringLiteral("Foyer & bar");
    const PaintedRow row(record);
    QVERIFY(row.painted().copy(kName) == expected(record.name, kName, Qt::AlignBottom, kNormal));
}

void TestCompleterDelegate::shouldPaintTheDetail_data()
{
    QTest::addColumn<bool>("byIp");
    QTest::addColumn<quint32>("address");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("text");
    QTest::newRow("address") << true << 0xC0A80114U << 4 << "IP:192.168.1.20";
    QTest::newRow("highest") << true << 0xFFFFFFFFU << 4 << "IP:255.255.255.255";
    QTest::newRow("null") << true << 0U << 4 << "IP:0.0.0.0";
    QTest::newRow("no address") << true << kNoProcessorAddress << 4 << "IP:Invalid";
    QTest::newRow("number") << false << 0xC0A80114U << 4 << "Number: 5";
    QTest::newRow("number, no address") << false << kNoProcessorAddress << 254 << "Number: 255";
}

void TestCompleterDelegate::shouldPaintTheDetail()
{
    QFETCH(bool, byIp);
    QFETCH(quint32, address);
    QFETCH(int, number);
    QFETCH(QString, text);
    ProcessorNode record = testProcessor(1);
    record.reachedByIp = byIp;
    record.ipAddress = address;
    record.number = number;
    const PaintedRow row(record);
    QVERIFY(row.painted().copy(kDetail) == expected(text, kDetail, Qt::AlignTop, kWeak));
}

void TestCompleterDelegate::shouldPaintInTheColoursOfItsState_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("bright");
    QTest::newRow("neither") << int(QStyle::State_None) << false;
    QTest::newRow("selected") << int(QStyle::State_Selected) << true;
    QTest::newRow("hovered") << int(QStyle::State_MouseOver) << true;
    QTest::newRow("both") << int(QStyle::State_Selected | QStyle::State_MouseOver) << true;
    QTest::newRow("focused") << int(QStyle::State_HasFocus) << false;
}

void TestCompleterDelegate::shouldPaintInTheColoursOfItsState()
{
    QFETCH(int, state);
    QFETCH(bool, bright);
    ProcessorNode record = testProcessor(1);
    record.name = QStringLiteral("IIHHEELL");
    const PaintedRow row(record);
    const QImage image = row.painted(QStyle::State(state));
    QColor name;
    QColor detail;
    QVERIFY(!drawn(image, kName, &name).isEmpty());
    QVERIFY(!drawn(image, kDetail, &detail).isEmpty());
    QVERIFY(distance(name, bright ? kStrong : kNormal) < 16);
    QVERIFY(distance(detail, bright ? kNormal : kWeak) < 16);
}

void TestCompleterDelegate::shouldPaintTheStylesBackground()
{
    PaintedRow row(testProcessor(1));
    row.view.setStyleSheet(QStringLiteral("QListView::item:hover { background: #123456; }"
                                          "QListView::item:selected { background: #654321; }"));
    row.view.ensurePolished();
    const QPoint corner(174, 40);
    QCOMPARE(row.painted().pixelColor(corner), QColor(Qt::black));
    QCOMPARE(row.painted(QStyle::State_MouseOver).pixelColor(corner), QColor(0x12, 0x34, 0x56));
    QCOMPARE(row.painted(QStyle::State_Selected).pixelColor(corner), QColor(0x65, 0x43, 0x21));
}

void TestCompleterDelegate::shouldPaintWhereTheRowIs()
{
    const PaintedRow row(testProcessor(3));
    const QImage image = row.painted(QStyle::State_None, 1, QRect(20, 84, 176, 42));
    QVERIFY(image.copy(20, 84, 176, 42) == row.painted());
    QVERIFY(drawn(image, QRect(0, 0, 196, 84)).isEmpty());
    // An odd height aligns the icon to a whole pixel.
    const QImage odd = row.painted(QStyle::State_None, 1, QRect(0, 0, 176, 43));
    QVERIFY(odd.copy(10, 10, 24, 24) == row.painted().copy(kIcon)
            || odd.copy(10, 9, 24, 24) == row.painted().copy(kIcon));
}

void TestCompleterDelegate::shouldPaintSharply()
{
    ProcessorNode record = testProcessor(3);
    record.online = true;
    const PaintedRow row(record);
    for (const qreal scale : {1.5, 2.0}) {
        const QImage image = row.painted(QStyle::State_None, scale);
        const QRect place(qRound(kIcon.x() * scale), qRound(kIcon.y() * scale), qRound(24 * scale),
                          qRound(24 * scale));
        SvgIcons icons;
        const QString path = QStringLiteral(":/Image/Target/Processor/online_normal.svg");
        icons.load(path);
        QPixmap pixmap = icons.pixmap(path, 24, scale);
        QCOMPARE(pixmap.size(), place.size());
        pixmap.setDevicePixelRatio(1);
        QImage icon(place.size(), QImage::Format_ARGB32_Premultiplied);
        icon.fill(Qt::black);
        QPainter(&icon).drawPixmap(0, 0, pixmap);
        QImage found = image.copy(place);
        found.setDevicePixelRatio(1);
        int differing = 0;
        for (int y = 0; y < icon.height(); ++y) {
            for (int x = 0; x < icon.width(); ++x)
                differing += distance(found.pixelColor(x, y), icon.pixelColor(x, y)) > 6;
        }
        QCOMPARE(differing, 0);
    }
}

void TestCompleterDelegate::shouldElideALongName()
{
    const PaintedRow row(longName());
    const QImage image = row.painted();
    const QRect name = drawn(image, QRect(36, 0, 140, 21));
    QVERIFY(name.left() >= 41 && name.right() < 152);
    QVERIFY(name.right() > 130);
    QFont font = row.view.font();
    font.setWeight(50);
    font.setPixelSize(12);
    const QString elided = QFontMetrics(font).elidedText(longName().name, Qt::ElideRight, 111);
    QVERIFY(elided.endsWith(QChar(0x2026)));
    QVERIFY(image.copy(kName) == expected(elided, kName, Qt::AlignBottom, kNormal));
}

void TestCompleterDelegate::shouldPaintARowThatIsTooSmall()
{
    const PaintedRow row(longName());
    const QImage image = row.painted(QStyle::State_None, 1, QRect(0, 0, 50, 42));
    QVERIFY(drawn(image, QRect(36, 0, 14, 21)).isEmpty());
    QVERIFY(drawn(image, QRect(46, 21, 4, 21)).isEmpty());
}

void TestCompleterDelegate::shouldPaintARowWithoutARecord()
{
    PaintedRow row(longName());
    row.model.clear();
    row.model.appendRow(new QStandardItem(QStringLiteral("Plain")));
    const QImage image = row.painted();
    QVERIFY(drawn(image, kName).isEmpty());
    QVERIFY(image.copy(kDetail)
            == expected(QStringLiteral("Number: 1"), kDetail, Qt::AlignTop, kWeak));
    QVERIFY(!drawn(image, kIcon).isEmpty());
}

void TestCompleterDelegate::shouldParseNothingWhilePainting()
{
    const PaintedRow row(longName());
    const int before = SvgIcons::parseCount();
    for (const QStyle::State state : {QStyle::State_None, QStyle::State_Selected})
        QVERIFY(!row.painted(state, 2).isNull());
    QCOMPARE(SvgIcons::parseCount(), before);
}

void TestCompleterDelegate::shouldShowALongNameInAToolTip()
{
    ProcessorNode record = longName();
    record.name.prepend(QStringLiteral("<b>"));
    PaintedRow row(record);
    row.view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&row.view));
    const QPoint place(80, 12);
    QHelpEvent event(QEvent::ToolTip, place, row.view.viewport()->mapToGlobal(place));
    QVERIFY(QApplication::sendEvent(row.view.viewport(), &event));
    QVERIFY(QToolTip::isVisible());
    // Long texts are converted to rich text so that they wrap.
    QString shown = QToolTip::text();
    shown.replace(QStringLiteral("&lt;"), QStringLiteral("<"));
    shown.replace(QStringLiteral("&gt;"), QStringLiteral(">"));
    QVERIFY(shown.contains(record.name));
}

void TestCompleterDelegate::shouldShowNoOtherToolTip()
{
    PaintedRow row(longName());
    row.view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&row.view));
    const auto ask = [&row](const QPoint& place) {
        QHelpEvent event(QEvent::ToolTip, place, row.view.viewport()->mapToGlobal(place));
        QApplication::sendEvent(row.view.viewport(), &event);
        return QToolTip::isVisible();
    };
    QVERIFY(!ask(QPoint(80, 30)));  // detail
    QVERIFY(!ask(QPoint(20, 12)));  // icon
    QVERIFY(!ask(QPoint(160, 12))); // after the name
    QVERIFY(!ask(QPoint(80, 80)));  // no row
    row.model.item(0)->setData(QVariant::fromValue(testProcessor(1)), NodeDataRole);
    QVERIFY(!ask(QPoint(80, 12))); // short
    // The default handling runs.
    row.model.item(0)->setToolTip(QStringLiteral("own"));
    QVERIFY(ask(QPoint(80, 12)));
    QCOMPARE(QToolTip::text(), QStringLiteral("own"));
}

void TestCompleterDelegate::shouldBeTranslatedToChinese()
{
    ProcessorNode record = testProcessor(5);
    const Chinese chinese;
    QVERIFY(chinese.isLoaded());
    QVERIFY(PaintedRow(record).painted().copy(kDetail)
            == expected(QStringLiteral("编号: 5"), kDetail, Qt::AlignTop, kWeak));
    record.reachedByIp = true;
    QVERIFY(PaintedRow(record).painted().copy(kDetail)
            == expected(QStringLiteral("IP:无效"), kDetail, Qt::AlignTop, kWeak));
}

TSA_TEST_MAIN(TestCompleterDelegate)

#include "tst_completerdelegate.moc"
