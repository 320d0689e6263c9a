#include "tests/search/SearchField.h"

#include <QWindow>

/// The mouse while the list is open.
class TestCompleterMouse final : public QObject
{
    Q_OBJECT

private slots:
    void shouldChooseWithAClick();
    void shouldChooseWhenTheMouseLeavesBeforeRelease();
    void shouldChooseAnAlreadySelectedRow();
    void shouldIgnoreALateMouseRelease();
    void shouldCloseOnAPressOutside();
};

void TestCompleterMouse::shouldChooseWithAClick()
{
    const SearchField search;
    search.type(QStringLiteral("1"));
    const QPoint place = search.place(1);
    QTest::mouseClick(search.popup()->windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
    QCOMPARE(search.told(), QStringLiteral("Stage 10"));
    QVERIFY(!search.isOpen());
    QVERIFY(!search.field->hasFocus());

    // The first choice must not affect the second.
    search.field->setFocus();
    search.field->clear();
    search.type(QStringLiteral("1"));
    QVERIFY(!search.popup()->currentIndex().isValid());
    QVERIFY(!search.popup()->selectionModel()->hasSelection());
    QTest::mouseClick(search.popup()->windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
    QCOMPARE(search.told(), QStringLiteral("Stage 10"));
}

void TestCompleterMouse::shouldChooseWhenTheMouseLeavesBeforeRelease()
{
    const SearchField search;
    search.type(QStringLiteral("1"));
    const QPoint from = search.place(1);
    const QPoint to = search.place(3);
    QWindow* window = search.popup()->windowHandle();
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, from);
    QTest::mouseMove(window, to);
    QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, to);
    QCOMPARE(search.told(), QStringLiteral("Stage 10"));
    QVERIFY(!search.isOpen());
}

void TestCompleterMouse::shouldChooseAnAlreadySelectedRow()
{
    const SearchField search;
    search.type(QStringLiteral("1"));
    {
        const QSignalBlocker blocker(search.popup()->selectionModel());
        search.popup()->selectionModel()->select(search.row(1), QItemSelectionModel::Select);
    }
    QTest::mouseClick(search.popup()->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      search.place(1));
    QCOMPARE(search.told(), QStringLiteral("Stage 10"));
    QVERIFY(!search.isOpen());
}

void TestCompleterMouse::shouldIgnoreALateMouseRelease()
{
    const SearchField search;
    search.type(QStringLiteral("1"));
    QWidget* viewport = search.popup()->viewport();
    const QPoint place = search.popup()->visualRect(search.row(1)).center();
    QTest::mousePress(viewport, Qt::LeftButton, Qt::NoModifier, place);
    QTest::mouseRelease(viewport, Qt::LeftButton, Qt::NoModifier, place);
    QCOMPARE(search.told(), QStringLiteral("Stage 10"));
    QVERIFY(!search.isOpen());
}

void TestCompleterMouse::shouldCloseOnAPressOutside()
{
    const SearchField search;
    search.type(QStringLiteral("1"));
    QWindow* popup = search.popup()->windowHandle();
    // Inside the popup, outside of its rows.
    QTest::mouseClick(popup, Qt::LeftButton, Qt::NoModifier, QPoint(88, 3));
    QTest::mouseClick(popup, Qt::LeftButton, Qt::NoModifier, QPoint(88, 262));
    QVERIFY(search.isOpen());
    QTest::mouseClick(search.window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(280, 340));
    QVERIFY(!search.isOpen());
    QCOMPARE(search.told(), QStringLiteral("-"));
    QCOMPARE(search.field->text(), QStringLiteral("1"));
}

TSA_TEST_MAIN(TestCompleterMouse)

#include "tst_completermouse.moc"
