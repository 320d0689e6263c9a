#include "host/widgets/HostTheme.h"
#include "host/widgets/ProcessorDelegate.h"
#include "host/widgets/ProcessorRow.h"
#include "host/widgets/SvgIcons.h"
#include "host/widgets/TreeView.h"
#include "tests/support/Contrast.h"
#include "tests/support/WarningTrap.h"
#include "tests/widgets/PaintedRow.h"
#include "tests/widgets/SampleTree.h"

#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QTest>
#include <QToolTip>

#include <limits>

namespace {

constexpr int kTextEnd = kRowWidth - 10;

ProcessorNode stateOf(bool online, int redundancyMode)
{
    ProcessorNode record = namedProcessor(QStringLiteral("P"));
    record.online = online;
    record.redundancyMode = redundancyMode;
    return record;
}

} // namespace

class TestProcessorDelegate final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void shouldShowStatesByShape();
    void shouldMarkProcessorsThatHaveABackup_data();
    void shouldMarkProcessorsThatHaveABackup();
    void shouldMarkWarnings();
    void shouldShowTheAddressOrNumber();
    void shouldAlignNamesWithEditors();
    void shouldEndTextsBeforeTheEdge();
    void shouldCountTheMembersOfAGroup();
    void shouldPaintTheCountOfTheRootAsThatOfAGroup();
    void shouldPaintTheArrowOfARowThatExpands();
    void shouldShowStates();
    void shouldPaintForeignRows();
    void shouldPaintNarrowRows();
    void shouldElideAnewForAnotherFontWidthOrText();
    void shouldUseTheHeightsOfTheModel();
    void shouldParseNothingWhilePainting();
    void shouldBeSharpAtEveryScale_data();
    void shouldBeSharpAtEveryScale();
    void shouldShowElidedTextsWhole();
    void shouldExplainMarks();
};

void TestProcessorDelegate::initTestCase()
{
    ApplyHostTheme(*qApp);
}

void TestProcessorDelegate::cleanup()
{
    QToolTip::hideText();
    QTRY_VERIFY(!QToolTip::isVisible());
}

void TestProcessorDelegate::shouldShowStatesByShape()
{
    Painting painting;
    const QRect icon(0, 0, 24, 42);
    QVector<QImage> shapes;
    for (const int mode : {0, 1, 2}) {
        for (const bool online : {true, false})
            shapes.append(shape(painting.paint(painting.add(stateOf(online, mode))), icon));
    }
    for (int one = 0; one < shapes.size(); ++one) {
        for (int two = 0; two < one; ++two)
            QVERIFY2(shapes.at(one) != shapes.at(two), qPrintable(QString::number(one * 10 + two)));
    }
}

void TestProcessorDelegate::shouldMarkProcessorsThatHaveABackup_data()
{
    QTest::addColumn<bool>("online");
    QTest::addColumn<bool>("warns");
    QTest::addColumn<bool>("isSelected");
    QTest::addColumn<qreal>("scale");
    for (const qreal scale : {1.0, 1.5, 2.0}) {
        const auto add = [&](const char* name, bool online, bool warns, bool isSelected) {
            QTest::addRow("%s, %g", name, scale) << online << warns << isSelected << scale;
        };
        add("online", true, false, false);
        add("offline", false, false, false);
        add("selected", true, false, true);
        add("selected and offline", false, false, true);
        add("with a warning", true, true, false);
    }
}

/// In the lower right corner of the icon, in a colour that stands out from the row.
void TestProcessorDelegate::shouldMarkProcessorsThatHaveABackup()
{
    QFETCH(const bool, online);
    QFETCH(const bool, warns);
    QFETCH(const bool, isSelected);
    QFETCH(const qreal, scale);
    const QStyle::State state = isSelected ? QStyle::State_Selected : QStyle::State_None;
    Painting painting;
    const auto paint = [&](int mode) {
        ProcessorNode record = stateOf(online, mode);
        record.hostFlag17 = warns;
        return painting.paint(painting.add(record), QStyle::State_Enabled | state, scale);
    };
    const QColor ground =
        isSelected ? QApplication::palette().color(QPalette::Highlight) : hostColors().window;
    const QImage marked = paint(1);
    const QImage plain = paint(0);
    const QColor color = hostColors().accent;
    QVERIFY(contrast(color, ground) >= 3);
    const auto count = [&](const QImage& image) {
        int pixels = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                pixels += image.pixelColor(x, y) == color ? 1 : 0;
        }
        return pixels;
    };
    QCOMPARE(count(plain), 0);
    // Eight pixels wide and high, without the rounded corners.
    QVERIFY2(count(marked) >= 44 * scale * scale, qPrintable(QString::number(count(marked))));
    QVERIFY2(count(marked) <= 64 * scale * scale, qPrintable(QString::number(count(marked))));
    const auto behindIcon = [&](const QImage& image) {
        const int left = qRound(24 * scale);
        return image.copy(left, 0, image.width() - left, image.height());
    };
    QCOMPARE(behindIcon(marked), behindIcon(plain));
}

void TestProcessorDelegate::shouldMarkWarnings()
{
    Painting painting;
    ProcessorNode record = stateOf(true, 0);
    const QImage without = painting.paint(painting.add(record));
    record.hostFlag17 = true;
    const QImage with = painting.paint(painting.add(record));
    const QRect lower(0, 22, kRowWidth, with.height() - 22);
    const QRect upper(0, 0, kRowWidth, 22);
    QCOMPARE(with.copy(lower), without.copy(lower));
    QVERIFY(with.copy(upper) != without.copy(upper));
}

void TestProcessorDelegate::shouldShowTheAddressOrNumber()
{
    Painting painting;
    const QRect lower(24, 22, kTextEnd - 24, 20);
    const auto detail = [&](const ProcessorNode& record) {
        return painting.paint(painting.add(record)).copy(lower);
    };
    ProcessorNode byNumber = stateOf(true, 0);
    byNumber.number = 6;
    ProcessorNode otherAddress = byNumber;
    otherAddress.ipAddress = 0xC0A80001;
    QCOMPARE(detail(otherAddress), detail(byNumber));

    ProcessorNode byIp = otherAddress;
    byIp.reachedByIp = true;
    QVERIFY(detail(byIp) != detail(byNumber));
    ProcessorNode otherNumber = byIp;
    otherNumber.number = 99;
    QCOMPARE(detail(otherNumber), detail(byIp));
    ProcessorNode none = byIp;
    none.ipAddress = kNoProcessorAddress;
    QVERIFY(detail(none) != detail(byIp));
}

void TestProcessorDelegate::shouldAlignNamesWithEditors()
{
    Painting painting;
    const QString text = QStringLiteral("HH");
    ProcessorNode record = stateOf(true, 0);
    record.name = text;
    const QImage processor = painting.paint(painting.add(record));
    QVERIFY(isEmpty(processor, {21, 0, 3, 42}));
    QVERIFY(!isEmpty(processor, {24, 4, 3, 19}));
    const QImage group = painting.paint(painting.add(groupRow(text)));
    QVERIFY(isEmpty(group, {0, 0, 24, 32}));
    QVERIFY(!isEmpty(group, {25, 4, 3, 24}));
}

void TestProcessorDelegate::shouldEndTextsBeforeTheEdge()
{
    Painting painting;
    const QString longName = QStringLiteral("A processor whose name is far too long for its row");
    ProcessorNode warned = namedProcessor(longName);
    warned.hostFlag17 = true;
    const QModelIndexList rows = {painting.add(namedProcessor(longName)), painting.add(warned),
                                  painting.add(groupRow(longName)),
                                  painting.add(rootRow(longName))};
    for (const QModelIndex& row : rows) {
        QVERIFY(isEmpty(painting.paint(row), {kRowWidth - 10, 0, 10, 32}));
        for (const QStyle::State state : {QStyle::State_Selected, QStyle::State_MouseOver}) {
            const QImage image = painting.paint(row, QStyle::State_Enabled | state);
            QVERIFY(isEmpty(image, {kRowWidth - 18, 0, 18, 32}));
        }
    }
}

void TestProcessorDelegate::shouldCountTheMembersOfAGroup()
{
    Painting painting;
    const QString longName = QStringLiteral("A group whose name is far too long for its row");
    for (const QString& name : {QStringLiteral("Short"), longName}) {
        QStandardItem* group = groupRow(name);
        const QModelIndex index = painting.add(group);
        const QImage none = painting.paint(index);
        group->appendRow(processorRow(namedProcessor(QString())));
        QVERIFY(painting.paint(index) != none);
    }
}

void TestProcessorDelegate::shouldPaintTheCountOfTheRootAsThatOfAGroup()
{
    Painting painting;
    QStandardItem* group = groupRow(QStringLiteral("All"));
    group->appendRow(processorRow(namedProcessor(QString())));
    const QImage expected = painting.paint(painting.add(group));
    QCOMPARE(painting.paint(painting.add(rootRow(QStringLiteral("All(1)")))), expected);
    // The count stays whole beside a name that has no room.
    const QString longName = QStringLiteral("A root whose name is far too long for its row");
    QVERIFY(painting.paint(painting.add(rootRow(longName + QStringLiteral("(1)"))))
            != painting.paint(painting.add(rootRow(longName + QStringLiteral("(2)")))));
    for (const char* text :
         {"(", ")", "()", "All", "All)", "All(", "All()", "All(x)", "(1", "1)"}) {
        const QString plain = QString::fromLatin1(text);
        QCOMPARE(painting.paint(painting.add(rootRow(plain))),
                 painting.paint(painting.add(new QStandardItem(plain))));
    }
}

void TestProcessorDelegate::shouldPaintTheArrowOfARowThatExpands()
{
    Painting painting;
    const QModelIndex group = painting.add(groupRow(QStringLiteral("G")));
    const QRect column(0, 0, 25, 32);
    const auto arrow = [&](QStyle::State state) {
        return painting.paint(group, QStyle::State_Enabled | state).copy(column);
    };
    const QImage closed = arrow(QStyle::State_Children);
    const QImage open = arrow(QStyle::State_Children | QStyle::State_Open);
    QVERIFY(isEmpty(arrow({}), column));
    QVERIFY(!isEmpty(closed, column));
    QVERIFY(!isEmpty(open, column));
    QVERIFY(open != closed);
}

void TestProcessorDelegate::shouldShowStates()
{
    Painting painting;
    const QModelIndex index = painting.add(stateOf(true, 0));
    const QImage normal = painting.paint(index);
    QVERIFY(painting.paint(index, QStyle::State_Enabled | QStyle::State_Selected) != normal);
    QVERIFY(painting.paint(index, {}) != normal);
}

void TestProcessorDelegate::shouldPaintForeignRows()
{
    Painting painting;
    const QRect row(0, 0, kRowWidth, 32);
    auto* plain = new QStandardItem(QStringLiteral("plain"));
    QVERIFY(!isEmpty(painting.paint(painting.add(plain)), row));
    plain->setData(QStringLiteral("text"), NodeTypeRole);
    QVERIFY(!isEmpty(painting.paint(plain->index()), row));
    plain->setData(QVariant::fromValue(static_cast<EPrcTreeNodeType>(77)), NodeTypeRole);
    QVERIFY(!isEmpty(painting.paint(plain->index()), row));
    plain->setData(QVariant::fromValue(NodeProcessor), NodeTypeRole);
    plain->setData(QStringLiteral("no record"), NodeDataRole);
    QVERIFY(!isEmpty(painting.paint(plain->index()), row));
    QVERIFY(isEmpty(painting.paint(QModelIndex()), row));
}

void TestProcessorDelegate::shouldPaintNarrowRows()
{
    Painting painting;
    ProcessorNode record = stateOf(true, 0);
    record.hostFlag17 = true;
    const QModelIndex index = painting.add(record);
    for (const int width : {0, 1, 24, 40, 64, 70}) {
        QImage image(100, 42, QImage::Format_ARGB32_Premultiplied);
        image.fill(hostColors().window);
        QStyleOptionViewItem option;
        option.rect = QRect(0, 0, width, 42);
        option.palette = QApplication::palette();
        QPainter painter(&image);
        painting.delegate.paint(&painter, option, index);
        painter.end();
        QVERIFY(isEmpty(image, {width, 0, 100 - width, 42}));
    }
}

void TestProcessorDelegate::shouldElideAnewForAnotherFontWidthOrText()
{
    Painting painting;
    const QModelIndex index =
        painting.add(namedProcessor(QStringLiteral("A name that is longer than its row")));
    const auto paint = [&](const CProcessorDelegate& delegate, const QFont& font, int width) {
        QImage image(300, 42, QImage::Format_ARGB32_Premultiplied);
        image.fill(hostColors().window);
        QStyleOptionViewItem option;
        option.rect = QRect(0, 0, width, 42);
        option.palette = QApplication::palette();
        option.font = font;
        option.fontMetrics = QFontMetrics(font);
        QPainter painter(&image);
        delegate.paint(&painter, option, index);
        return image;
    };
    QFont large = QApplication::font();
    large.setPixelSize(QFontInfo(large).pixelSize() + 4);
    QVector<QImage> pictures;
    for (const char* name : {"A name that is longer than its row", "Another name, as long as it"}) {
        painting.rename(index, QString::fromLatin1(name));
        for (const QFont& font : {QApplication::font(), large}) {
            for (const int width : {160, 200, 160}) {
                const QImage picture = paint(painting.delegate, font, width);
                QCOMPARE(picture, paint(CProcessorDelegate(), font, width));
                pictures.append(picture);
            }
        }
    }
    for (int row = 0; row < pictures.size(); row += 3) {
        QVERIFY(pictures.at(row) != pictures.at(row + 1));
        QCOMPARE(pictures.at(row), pictures.at(row + 2));
        QVERIFY(row == 0 || pictures.at(row) != pictures.at(row - 3));
    }
}

void TestProcessorDelegate::shouldUseTheHeightsOfTheModel()
{
    Painting painting;
    const QStyleOptionViewItem option;
    auto* row = processorRow(stateOf(true, 0));
    row->setData(QSize(77, 50), Qt::SizeHintRole);
    QCOMPARE(painting.delegate.sizeHint(option, painting.add(row)), QSize(0, 50));
    row->setData(QVariant(), Qt::SizeHintRole);
    QCOMPARE(painting.delegate.sizeHint(option, row->index()), QSize(0, 42));
    row->setData(QVariant(), NodeTypeRole);
    QCOMPARE(painting.delegate.sizeHint(option, row->index()), QSize(0, 32));
}

void TestProcessorDelegate::shouldParseNothingWhilePainting()
{
    const int before = SvgIcons::parseCount();
    Painting painting;
    const int parses = SvgIcons::parseCount();
    QVERIFY(parses > before);
    for (const qreal scale : {1.0, 1.5, 2.0}) {
        for (const int mode : {0, 1, 2}) {
            for (const bool online : {true, false}) {
                ProcessorNode record = stateOf(online, mode);
                record.hostFlag17 = online;
                painting.paint(painting.add(record), QStyle::State_Enabled, scale);
            }
        }
        const QModelIndex group = painting.add(groupRow(QStringLiteral("G")));
        painting.paint(group, QStyle::State_Enabled | QStyle::State_Children, scale);
    }
    const CProcessorDelegate another;
    QCOMPARE(SvgIcons::parseCount(), parses);
}

void TestProcessorDelegate::shouldBeSharpAtEveryScale_data()
{
    QTest::addColumn<qreal>("scale");
    QTest::newRow("100 %") << 1.0;
    QTest::newRow("150 %") << 1.5;
    QTest::newRow("200 %") << 2.0;
}

void TestProcessorDelegate::shouldBeSharpAtEveryScale()
{
    QFETCH(const qreal, scale);
    const QString path = QStringLiteral(":/HostWidgets/icons/processor-online.svg");
    SvgIcons icons;
    QVERIFY(icons.pixmap(path, 24, scale).isNull());
    icons.load(path);
    const QPixmap pixmap = icons.pixmap(path, 24, scale);
    QCOMPARE(pixmap.width(), qRound(24 * scale));
    QCOMPARE(pixmap.devicePixelRatioF(), scale);
    QCOMPARE(icons.pixmap(path, 24, scale).cacheKey(), pixmap.cacheKey());

    // The device pixels equal those of the pixmap at every position.
    const QImage expected = pixmap.toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
    for (const int left : {0, 1, 3}) {
        QImage image(qRound(40 * scale), qRound(30 * scale), QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(scale);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        icons.paint(painter, QPointF(left, 0), path, 24);
        painter.end();
        image.setDevicePixelRatio(1);
        QImage plain = expected;
        plain.setDevicePixelRatio(1);
        QCOMPARE(image.copy(QRect(QPoint(qRound(left * scale), 0), plain.size())), plain);
    }
}

void TestProcessorDelegate::shouldShowElidedTextsWhole()
{
    const QString longName = QStringLiteral("A processor whose name is far too long for its row");
    QStandardItemModel model;
    ProcessorNode record = namedProcessor(longName);
    record.number = 4;
    model.appendRow(processorRow(record));
    model.appendRow(processorRow(namedProcessor(QStringLiteral("short"))));
    model.appendRow(groupRow(longName));
    auto* own = processorRow(record);
    own->setToolTip(QStringLiteral("own"));
    model.appendRow(own);
    model.appendRow(rootRow(longName + QStringLiteral("(7)")));
    CTreeView view;
    CProcessorDelegate delegate;
    view.setItemDelegate(&delegate);
    view.setModel(&model);
    view.resize(kRowWidth, 300);
    view.show();

    const auto hover = [&](int row) {
        const QPoint position = view.visualRect(model.index(row, 0)).center();
        QHelpEvent help(QEvent::ToolTip, position, view.viewport()->mapToGlobal(position));
        QCoreApplication::sendEvent(view.viewport(), &help);
    };
    hover(0);
    QCOMPARE(QToolTip::text(), longName + QStringLiteral("\nNumber: 5"));
    record.number = std::numeric_limits<qint32>::max();
    model.item(0)->setData(QVariant::fromValue(record), NodeDataRole);
    hover(0);
    QCOMPARE(QToolTip::text(), longName + QStringLiteral("\nNumber: 2147483648"));
    QToolTip::hideText();
    QTRY_VERIFY(!QToolTip::isVisible());
    hover(1);
    QVERIFY(!QToolTip::isVisible());
    hover(2);
    QCOMPARE(QToolTip::text(), longName + QStringLiteral(" (0)"));
    hover(3);
    QCOMPARE(QToolTip::text(), QStringLiteral("own"));
    hover(4);
    QCOMPARE(QToolTip::text(), longName + QStringLiteral("(7)"));
}

void TestProcessorDelegate::shouldExplainMarks()
{
    QStandardItemModel model;
    ProcessorNode record = namedProcessor(QStringLiteral("short"));
    record.hostFlag17 = true;
    model.appendRow(processorRow(record));
    CTreeView view;
    CProcessorDelegate delegate;
    view.setItemDelegate(&delegate);
    view.setModel(&model);
    view.resize(kRowWidth, 300);
    view.show();
    const QRect row = view.visualRect(model.index(0, 0));
    const auto tip = [&](const QPoint& position) {
        QToolTip::hideText();
        QHelpEvent help(QEvent::ToolTip, position, view.viewport()->mapToGlobal(position));
        QCoreApplication::sendEvent(view.viewport(), &help);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    };
    const QPoint warning(row.right() - ProcessorRowMetrics::kWarningEnd - 6, row.top() + 12);
    QCOMPARE(tip(warning), QStringLiteral("Monitor warning"));
    const QPoint mark(row.left() + 19, row.center().y() + 6);
    QVERIFY(tip(mark) != QStringLiteral("Has a backup"));
    record.redundancyMode = 1;
    model.item(0)->setData(QVariant::fromValue(record), NodeDataRole);
    QCOMPARE(tip(mark), QStringLiteral("Has a backup"));
    QCOMPARE(tip(warning), QStringLiteral("Monitor warning"));
}

TSA_TEST_MAIN(TestProcessorDelegate)

#include "tst_processordelegate.moc"
