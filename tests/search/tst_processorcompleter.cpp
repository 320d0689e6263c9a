#include "search/PopupPlace.h"
#include "tests/search/PopupPicture.h"
#include "tests/search/SearchField.h"
#include "tests/support/Chinese.h"

#include <QAccessible>
#include <QScreen>

namespace {

const QColor kHint(115, 115, 128);

} // namespace

/// The popup below the field: its position, its look and its current row.
class TestProcessorCompleter final : public QObject
{
    Q_OBJECT

private slots:
    void shouldOpenBelowTheField();
    void shouldShowAnEmptyResult();
    void shouldListTheMatchingProcessors();
    void shouldAnnounceTheNumberOfResults();
    void shouldDescribeItsRows_data();
    void shouldDescribeItsRows();
    void shouldPaintTheBackgroundBehindRows();
    void shouldMaskItsCorners();
    void shouldCloseWhenTheFieldIsCleared();

    void shouldFollowTheField();
    void shouldStayOnTheScreen_data();
    void shouldStayOnTheScreen();

    void shouldMoveTheCurrentRowOnly();
    void shouldClearTheSelection();
    void shouldResetTheCurrentRowOnClosing();

    void shouldRetranslateAtOnce();
};

void TestProcessorCompleter::shouldOpenBelowTheField()
{
    const SearchField search;
    const QListView* popup = search.popup();
    QVERIFY(popup);
    QVERIFY(!popup->isVisible());
    QVERIFY(!popup->parent());
    QCOMPARE(popup->windowFlags() & Qt::WindowType_Mask, Qt::Popup);
    QVERIFY(popup->windowFlags().testFlag(Qt::FramelessWindowHint));
    QVERIFY(popup->windowFlags().testFlag(Qt::NoDropShadowWindowHint));
    QVERIFY(popup->testAttribute(Qt::WA_TranslucentBackground));
    QCOMPARE(popup->focusPolicy(), Qt::NoFocus);
    QCOMPARE(popup->focusProxy(), search.field);
    QCOMPARE(popup->editTriggers(), QAbstractItemView::NoEditTriggers);
    QCOMPARE(popup->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(popup->selectionMode(), QAbstractItemView::SingleSelection);
    QCOMPARE(popup->selectionBehavior(), QAbstractItemView::SelectRows);
    QCOMPARE(search.field->focusPolicy(), Qt::StrongFocus);
    QCOMPARE(popup->accessibleName(), QStringLiteral("Search results"));

    search.type(QStringLiteral("S"));
    QVERIFY(popup->isVisible());
    QCOMPARE(popup->geometry().topLeft(),
             search.field->mapToGlobal(search.field->rect().bottomLeft()));
    QCOMPARE(popup->size(), QSize(176, 270));
    QVERIFY(search.field->hasFocus());
    QCOMPARE(search.told(), QString());
}

void TestProcessorCompleter::shouldShowAnEmptyResult()
{
    const SearchField search;
    search.type(QStringLiteral("z"));
    QVERIFY(search.isOpen());
    QCOMPARE(search.popup()->size(), QSize(176, 270));
    QCOMPARE(search.rows(), QString());

    const QImage image = search.popup()->grab().toImage();
    QCOMPARE(image.pixelColor(88, 40), kPopupBackground);
    QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
    QCOMPARE(image.pixelColor(175, 269).alpha(), 0);
    QCOMPARE(image.pixelColor(4, 4), kPopupBackground);
    const QRect text = covered(image, QRect(9, 9, 158, 252));
    QVERIFY(text.height() > 6 && text.width() > 80);
    QVERIFY(qAbs(text.center().x() - 88) <= 2);
    QVERIFY(qAbs(text.center().y() - 135) <= 3);
    int nearest = 999;
    for (int y = text.top(); y <= text.bottom(); ++y) {
        for (int x = text.left(); x <= text.right(); ++x)
            nearest = qMin(nearest, distance(image.pixelColor(x, y), kHint));
    }
    QVERIFY(nearest < 30);
}

void TestProcessorCompleter::shouldListTheMatchingProcessors()
{
    const SearchField search;
    search.type(QStringLiteral("1"));
    QCOMPARE(search.rows(), QStringLiteral("Stage 1,Stage 10,Stage 11,Stage 12,Foyer"));
    search.type(QStringLiteral("2"));
    QCOMPARE(search.rows(), QStringLiteral("Stage 12"));
    QVERIFY(search.isOpen());
}

void TestProcessorCompleter::shouldPaintTheBackgroundBehindRows()
{
    const SearchField search;
    search.type(QStringLiteral("f"));
    QCOMPARE(search.rows(), QStringLiteral("Foyer"));
    const QImage image = search.popup()->grab().toImage();
    QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
    QCOMPARE(image.pixelColor(3, search.place(0).y()), kPopupBackground);
    QCOMPARE(image.pixelColor(88, 135),
             kPopupBackground); // position of the text for an empty result
    QVERIFY(!covered(image, QRect(QPoint(10, 8), QSize(150, 42))).isEmpty());
}

void TestProcessorCompleter::shouldAnnounceTheNumberOfResults()
{
    SearchField search;
    const auto announced = [&] {
        return QAccessible::queryAccessibleInterface(search.field)->text(QAccessible::Description);
    };
    QCOMPARE(announced(), QString());
    search.type(QStringLiteral("1"));
    QCOMPARE(announced(), QStringLiteral("Processors found: 5"));
    search.type(QStringLiteral("2"));
    QCOMPARE(announced(), QStringLiteral("Processors found: 1"));
    search.panel.model().removeNode(testId(12));
    QCOMPARE(announced(), QStringLiteral("No content found in the search."));
    {
        const Chinese chinese;
        QTRY_COMPARE(announced(), QStringLiteral("未搜索到相关内容。"));
    }
    search.press(Qt::Key_Escape);
    QCOMPARE(announced(), QString());
}

void TestProcessorCompleter::shouldDescribeItsRows_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("online");
    QTest::addColumn<bool>("warns");
    QTest::addColumn<bool>("byIp");
    QTest::addColumn<QString>("text");
    QTest::newRow("number") << 0 << true << false << false << "Processor, Online, Number: 1";
    QTest::newRow("address") << 0 << false << false << true << "Processor, Offline, IP:10.0.0.7";
    QTest::newRow("backup") << 2 << true << false << false << "Backup processor, Online, Number: 1";
    QTest::newRow("with backup") << 1 << false << true << false
                                 << "Processor, Offline, Has a backup, Warning, Number: 1";
}

void TestProcessorCompleter::shouldDescribeItsRows()
{
    QFETCH(int, mode);
    QFETCH(bool, online);
    QFETCH(bool, warns);
    QFETCH(bool, byIp);
    QFETCH(QString, text);
    SearchField search;
    ProcessorNode record = testProcessor(1);
    record.name = QStringLiteral("Hall");
    record.redundancyMode = mode;
    record.online = online;
    record.hostFlag17 = warns;
    record.reachedByIp = byIp;
    record.ipAddress = 0x0A000007;
    search.panel.host().setProject({}, {record});
    search.model().reset();
    search.type(QStringLiteral("Hall"));
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(search.popup());
    QCOMPARE(list->childCount(), 1);
    QCOMPARE(list->child(0)->text(QAccessible::Name), QStringLiteral("Hall"));
    QCOMPARE(list->child(0)->text(QAccessible::Description), text);
}

void TestProcessorCompleter::shouldMaskItsCorners()
{
    const SearchField search;
    search.type(QStringLiteral("1"));
    const QRegion mask = search.popup()->mask();
    const QImage image = search.popup()->grab().toImage();
    QCOMPARE(mask.boundingRect(), search.popup()->rect());
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const bool isInside = mask.contains(QPoint(x, y));
            const int alpha = image.pixelColor(x, y).alpha();
            QVERIFY2(isInside ? alpha > 0 : alpha == 0,
                     qPrintable(QStringLiteral("%1,%2: %3").arg(x).arg(y).arg(alpha)));
        }
    }
}

void TestProcessorCompleter::shouldCloseWhenTheFieldIsCleared()
{
    const SearchField search;
    search.type(QStringLiteral("1"));
    search.press(Qt::Key_Backspace);
    QVERIFY(!search.isOpen());
    QVERIFY(search.field->text().isEmpty());
    QVERIFY(search.field->hasFocus());
    QCOMPARE(search.told(), QString());
    search.type(QStringLiteral("2"));
    QVERIFY(search.isOpen());
}

void TestProcessorCompleter::shouldFollowTheField()
{
    const SearchField search;
    search.type(QStringLiteral("1"));
    search.window->move(140, 130);
    QTRY_COMPARE(search.popup()->geometry().topLeft(),
                 search.field->mapToGlobal(search.field->rect().bottomLeft()));
    search.field->setGeometry(20, 30, 150, 24);
    QCOMPARE(search.popup()->geometry().topLeft(),
             search.field->mapToGlobal(search.field->rect().bottomLeft()));
    QCOMPARE(search.popup()->size(), QSize(150, 270));
    QVERIFY(search.isOpen());
}

void TestProcessorCompleter::shouldStayOnTheScreen_data()
{
    QTest::addColumn<QRect>("field");
    QTest::addColumn<QRect>("place");
    QTest::newRow("room") << QRect(100, 100, 176, 24) << QRect(100, 123, 176, 270);
    QTest::newRow("just room") << QRect(100, 507, 176, 24) << QRect(100, 530, 176, 270);
    QTest::newRow("bottom") << QRect(100, 508, 176, 24) << QRect(100, 239, 176, 270);
    QTest::newRow("left") << QRect(-30, 100, 176, 24) << QRect(0, 123, 176, 270);
    QTest::newRow("right") << QRect(700, 100, 176, 24) << QRect(624, 123, 176, 270);
    QTest::newRow("wider than the screen") << QRect(100, 100, 900, 24) << QRect(0, 123, 900, 270);
    QTest::newRow("below the screen") << QRect(100, 900, 176, 24) << QRect(100, 530, 176, 270);
}

void TestProcessorCompleter::shouldStayOnTheScreen()
{
    QFETCH(QRect, field);
    QFETCH(QRect, place);
    QCOMPARE(popupPlace(field, 270, QRect(0, 0, 800, 800)), place);
    // If neither side has room, the list covers the field.
    QCOMPARE(popupPlace(QRect(0, 200, 176, 24), 270, QRect(0, 0, 800, 400)),
             QRect(0, 130, 176, 270));
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const SearchField search(screen.bottomRight() - QPoint(100, 60));
    search.type(QStringLiteral("1"));
    QVERIFY(screen.contains(search.popup()->geometry()));
}

void TestProcessorCompleter::shouldMoveTheCurrentRowOnly()
{
    const SearchField search;
    search.type(QStringLiteral("stage"));
    QVERIFY(QTest::qWaitForWindowExposed(search.popup()));
    search.completer->select(search.row(11), false);
    QCOMPARE(search.current(), QStringLiteral("Stage 12"));
    QVERIFY(!search.popup()->selectionModel()->hasSelection());
    QVERIFY(search.popup()->viewport()->rect().contains(
        search.popup()->visualRect(search.row(11)).center()));
    QVERIFY(search.isOpen());
    QCOMPARE(search.told(), QString());
    search.completer->select(QModelIndex(), false);
    QCOMPARE(search.current(), QString());
    QCOMPARE(search.popup()->verticalScrollBar()->value(), 0);
}

void TestProcessorCompleter::shouldClearTheSelection()
{
    const SearchField search;
    search.type(QStringLiteral("stage"));
    QVERIFY(QTest::qWaitForWindowExposed(search.popup()));
    search.completer->select(search.row(11), false);
    search.completer->select(QModelIndex(), true);
    QCOMPARE(search.current(), QString());
    QVERIFY(!search.popup()->selectionModel()->hasSelection());
    QCOMPARE(search.popup()->verticalScrollBar()->value(), 0);
    QVERIFY(search.isOpen());
    QCOMPARE(search.told(), QString());
    // The row does not exist.
    search.completer->select(search.row(500), true);
    QCOMPARE(search.told(), QString());
    QVERIFY(!search.popup()->selectionModel()->hasSelection());
    search.completer->select(search.row(500), false);
    QVERIFY(!search.popup()->currentIndex().isValid());
}

void TestProcessorCompleter::shouldResetTheCurrentRowOnClosing()
{
    const SearchField search;
    search.type(QStringLiteral("1"));
    search.completer->select(search.row(2), false);
    search.press(Qt::Key_Escape);
    search.completer->setFilterText(QStringLiteral("1"));
    QCOMPARE(search.current(), QString());
    search.press(Qt::Key_Return);
    QCOMPARE(search.told(), QStringLiteral("- -"));
}

void TestProcessorCompleter::shouldRetranslateAtOnce()
{
    const SearchField search;
    search.type(QStringLiteral("z"));
    const QImage english = search.popup()->grab().toImage();
    {
        const Chinese chinese;
        QVERIFY(chinese.isLoaded());
        QTRY_COMPARE(search.popup()->accessibleName(), QStringLiteral("搜索结果"));
        QVERIFY(search.popup()->grab().toImage() != english);
    }
    QTRY_COMPARE(search.popup()->accessibleName(), QStringLiteral("Search results"));
    QVERIFY(search.popup()->grab().toImage() == english);
}

TSA_TEST_MAIN(TestProcessorCompleter)

#include "tst_processorcompleter.moc"
