#include "search/PopupPlace.h"
#include "tests/ipmanage/DialogTest.h"
#include "tests/search/SearchField.h"

#include <QDialog>
#include <QEventLoop>
#include <QInputMethodEvent>
#include <QScreen>
#include <QShortcut>
#include <QTimer>

#include <functional>
#include <tuple>

using Action = std::function<void(const SearchField&)>;
using Change = std::function<void(SearchField&)>;
Q_DECLARE_METATYPE(Action)
Q_DECLARE_METATYPE(Change)

namespace {

const QColor kBackground(41, 41, 45);
const QColor kHint(115, 115, 128);

int distance(const QColor& one, const QColor& two)
{
    return qAbs(one.red() - two.red()) + qAbs(one.green() - two.green())
           + qAbs(one.blue() - two.blue());
}

/// The part of `image` that something else than the background covers.
QRect covered(const QImage& image, const QRect& within)
{
    QRect found;
    for (int y = within.top(); y <= within.bottom(); ++y) {
        for (int x = within.left(); x <= within.right(); ++x) {
            if (distance(image.pixelColor(x, y), kBackground) > 12)
                found |= QRect(x, y, 1, 1);
        }
    }
    return found;
}

} // namespace

class TestProcessorCompleter final : public QObject
{
    Q_OBJECT

private slots:
    void shouldOpenBelowTheField();
    void shouldSayThatNothingIsFound();
    void shouldListWhatIsFound();
    void shouldPaintTheBackgroundBehindRows();
    void shouldCloseWhenTheFieldIsCleared();

    void shouldChooseTheCurrentRow_data();
    void shouldChooseTheCurrentRow();
    void shouldCloseWithoutACurrentRow_data();
    void shouldCloseWithoutACurrentRow();
    void shouldCloseWithoutAChoice_data();
    void shouldCloseWithoutAChoice();
    void shouldChooseWithArrowKeys();
    void shouldGoRoundTheEnds();
    void shouldLeaveKeysToTheList_data();
    void shouldLeaveKeysToTheList();
    void shouldForwardHomeAndEnd();
    void shouldTypeOnWhileOpen();
    void shouldForwardTheReleaseOfBack();
    void shouldConsumeEveryKey();
    void shouldNotCloseADialogWithEscape();
    void shouldKeepItsKeysFromShortcuts();

    void shouldChooseWithAClick();
    void shouldChooseWhenTheMouseLeavesBeforeRelease();
    void shouldChooseARowThatIsSelectedAlready();
    void shouldNotHearALateRelease();
    void shouldCloseOnAPressOutside();

    void shouldTellOfClosing();
    void shouldHoldBackTheLossOfFocus();
    void shouldCloseWhenTheFocusGoesElsewhere();
    void shouldCloseWhenTheFieldCannotBeUsed_data();
    void shouldCloseWhenTheFieldCannotBeUsed();
    void shouldOutliveTheField();
    void shouldGoWithTheWindow();
    void shouldFollowTheField();
    void shouldStayOnTheScreen_data();
    void shouldStayOnTheScreen();

    void shouldMoveTheCurrentRowOnly();
    void shouldClearTheSelection();
    void shouldForgetTheCurrentRowWhenClosed();

    void shouldFollowTheTree_data();
    void shouldFollowTheTree();
    void shouldStandAResetUnderTheMouse();
    void shouldStayClosedWhenRowsCome();
    void shouldChooseTheRightRowAfterAReorder();

    void shouldStandItsEnd_data();
    void shouldStandItsEnd();
    void shouldStandItsEndInANestedLoop();

    void shouldTakeInputMethodsToTheField();
    void shouldSpeakChineseAtOnce();
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

void TestProcessorCompleter::shouldSayThatNothingIsFound()
{
    const SearchField search;
    search.type(QStringLiteral("z"));
    QVERIFY(search.isOpen());
    QCOMPARE(search.popup()->size(), QSize(176, 270));
    QCOMPARE(search.rows(), QString());

    const QImage image = search.popup()->grab().toImage();
    QCOMPARE(image.pixelColor(88, 40), kBackground);
    QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
    QCOMPARE(image.pixelColor(175, 269).alpha(), 0);
    QCOMPARE(image.pixelColor(4, 4), kBackground);
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

void TestProcessorCompleter::shouldListWhatIsFound()
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
    QCOMPARE(image.pixelColor(3, search.place(0).y()), kBackground);
    QCOMPARE(image.pixelColor(88, 135), kBackground); // where the hint would be
    QVERIFY(!covered(image, QRect(QPoint(10, 8), QSize(150, 42))).isEmpty());
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

void TestProcessorCompleter::shouldChooseTheCurrentRow_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Return") << int(Qt::Key_Return);
    QTest::newRow("Enter") << int(Qt::Key_Enter);
    QTest::newRow("Tab") << int(Qt::Key_Tab);
    QTest::newRow("Select") << int(Qt::Key_Select);
}

void TestProcessorCompleter::shouldChooseTheCurrentRow()
{
    QFETCH(int, key);
    const SearchField search;
    search.type(QStringLiteral("1"));
    search.completer->select(search.row(2), false);
    search.press(key);
    QCOMPARE(search.told(), QStringLiteral("Stage 11"));
    QVERIFY(!search.isOpen());
    QVERIFY(!search.field->hasFocus());
    QCOMPARE(search.field->focusLosses, 1);
}

void TestProcessorCompleter::shouldCloseWithoutACurrentRow_data()
{
    shouldChooseTheCurrentRow_data();
}

void TestProcessorCompleter::shouldCloseWithoutACurrentRow()
{
    QFETCH(int, key);
    const SearchField search;
    search.type(QStringLiteral("1"));
    search.press(key);
    QVERIFY(!search.isOpen());
    QCOMPARE(search.told(), QStringLiteral("-"));
    QCOMPARE(search.field->hasFocus(), key != Qt::Key_Tab);
    QCOMPARE(search.field->text(), QStringLiteral("1"));
}

void TestProcessorCompleter::shouldCloseWithoutAChoice_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<bool>("focus");
    QTest::newRow("Escape") << int(Qt::Key_Escape) << 0 << true;
    QTest::newRow("Shift+Tab") << int(Qt::Key_Backtab) << int(Qt::ShiftModifier) << false;
    QTest::newRow("Alt+F4") << int(Qt::Key_F4) << int(Qt::AltModifier) << true;
}

void TestProcessorCompleter::shouldCloseWithoutAChoice()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(bool, focus);
    const SearchField search;
    search.type(QStringLiteral("1"));
    search.completer->select(search.row(1), false);
    search.press(key, Qt::KeyboardModifiers(modifiers));
    QVERIFY(!search.isOpen());
    QCOMPARE(search.told(), QStringLiteral("-"));
    QCOMPARE(search.field->hasFocus(), focus);
    QCOMPARE(search.field->text(), QStringLiteral("1"));
    QVERIFY(search.field->keys.contains(QStringLiteral("press %1").arg(key)));
    QVERIFY(search.window->isVisible());

    // F4 alone is nothing special.
    search.field->setFocus();
    search.type(QStringLiteral("1"));
    search.press(Qt::Key_F4);
    QVERIFY(search.isOpen());
}

void TestProcessorCompleter::shouldChooseWithArrowKeys()
{
    const SearchField search;
    search.type(QStringLiteral("1"));
    search.press(Qt::Key_Down);
    QCOMPARE(search.told(), QStringLiteral("Stage 1"));
    QVERIFY(!search.isOpen());
    QVERIFY(!search.field->hasFocus());

    search.field->setFocus();
    search.type(QStringLiteral("2"));
    search.press(Qt::Key_Up);
    QCOMPARE(search.told(), QStringLiteral("Stage 12"));
    QVERIFY(!search.isOpen());

    search.field->setFocus();
    search.type(QStringLiteral("z"));
    search.press(Qt::Key_Down);
    search.press(Qt::Key_Up);
    QVERIFY(search.isOpen());
    QCOMPARE(search.told(), QString());
}

void TestProcessorCompleter::shouldGoRoundTheEnds()
{
    const SearchField search;
    for (const auto& [from, key, to] :
         {std::make_tuple(0, Qt::Key_Down, "Stage 10"), std::make_tuple(1, Qt::Key_Up, "Stage 1"),
          std::make_tuple(4, Qt::Key_Down, "Stage 1"), std::make_tuple(0, Qt::Key_Up, "Foyer")}) {
        search.field->setFocus();
        search.field->clear();
        search.type(QStringLiteral("1"));
        search.completer->select(search.row(from), false);
        search.press(key);
        QCOMPARE(search.told(), QString::fromLatin1(to));
    }
}

void TestProcessorCompleter::shouldLeaveKeysToTheList_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QString>("chosen");
    QTest::newRow("PageDown") << int(Qt::Key_PageDown) << 0 << "Foyer";
    QTest::newRow("PageUp") << int(Qt::Key_PageUp) << 0 << "Stage 1";
    QTest::newRow("Ctrl+Home") << int(Qt::Key_Home) << int(Qt::ControlModifier) << "Stage 1";
    QTest::newRow("Ctrl+End") << int(Qt::Key_End) << int(Qt::ControlModifier) << "Foyer";
}

void TestProcessorCompleter::shouldLeaveKeysToTheList()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(QString, chosen);
    const SearchField search;
    search.type(QStringLiteral("1"));
    search.field->keys.clear();
    search.completer->select(search.row(2), false);
    search.press(key, Qt::KeyboardModifiers(modifiers));
    QCOMPARE(search.told(), chosen);
    QVERIFY(!search.isOpen());
    QVERIFY(!search.field->keys.contains(QStringLiteral("press %1").arg(key)));
}

void TestProcessorCompleter::shouldForwardHomeAndEnd()
{
    const SearchField search;
    search.type(QStringLiteral("Stage"));
    search.press(Qt::Key_Home);
    QCOMPARE(search.field->cursorPosition(), 0);
    search.press(Qt::Key_Right);
    QCOMPARE(search.field->cursorPosition(), 1);
    search.press(Qt::Key_End, Qt::ShiftModifier);
    QCOMPARE(search.field->selectedText(), QStringLiteral("tage"));
    QVERIFY(search.isOpen());
    QCOMPARE(search.told(), QString());
}

void TestProcessorCompleter::shouldTypeOnWhileOpen()
{
    const SearchField search;
    search.type(QStringLiteral("stage 1"));
    QCOMPARE(search.field->text(), QStringLiteral("stage 1"));
    QCOMPARE(search.rows(), QStringLiteral("Stage 1,Stage 10,Stage 11,Stage 12"));
    search.press(Qt::Key_Backspace);
    QCOMPARE(search.popup()->model()->rowCount(), 12);
    search.press(Qt::Key_A, Qt::ControlModifier);
    search.type(QStringLiteral("f"));
    QCOMPARE(search.rows(), QStringLiteral("Foyer"));
    QVERIFY(search.isOpen());
    QCOMPARE(search.told(), QString());
}

void TestProcessorCompleter::shouldForwardTheReleaseOfBack()
{
    const SearchField search;
    search.type(QStringLiteral("1"));
    search.field->keys.clear();
    search.press(Qt::Key_Back);
    const QStringList both = {QStringLiteral("press %1").arg(Qt::Key_Back),
                              QStringLiteral("release %1").arg(Qt::Key_Back)};
    QCOMPARE(search.field->keys, both);
    search.press(Qt::Key_F7);
    QCOMPARE(search.field->keys.last(), QStringLiteral("press %1").arg(Qt::Key_F7));
    QVERIFY(search.isOpen());
}

void TestProcessorCompleter::shouldConsumeEveryKey()
{
    const SearchField search;
    search.press(Qt::Key_F7);
    QCOMPARE(search.window->keys, 1); // which a closed list leaves alone
    for (const Qt::Key key : {Qt::Key_F7, Qt::Key_Down, Qt::Key_Return, Qt::Key_Escape, Qt::Key_Tab,
                              Qt::Key_Home, Qt::Key_Menu}) {
        search.field->setFocus();
        search.field->clear();
        search.type(QStringLiteral("1"));
        QVERIFY(search.isOpen());
        search.press(key);
    }
    QCOMPARE(search.window->keys, 1);
}

void TestProcessorCompleter::shouldNotCloseADialogWithEscape()
{
    const SearchField search;
    QDialog dialog;
    QLineEdit field(&dialog);
    CProcessorCompleter completer(&field);
    dialog.setGeometry(100, 100, 200, 300);
    dialog.show();
    dialog.activateWindow();
    field.setFocus();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    completer.setFilterText(QStringLiteral("1"));
    QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
    QVERIFY(!completer.isOpen());
    QVERIFY(dialog.isVisible());
    QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
    QVERIFY(!dialog.isVisible());
}

void TestProcessorCompleter::shouldKeepItsKeysFromShortcuts()
{
    const SearchField search;
    const QShortcut escape(QKeySequence(Qt::Key_Escape), search.window);
    const QShortcut down(QKeySequence(Qt::Key_Down), search.field, nullptr, nullptr,
                         Qt::WidgetShortcut);
    QSignalSpy escapes(&escape, &QShortcut::activated);
    QSignalSpy downs(&down, &QShortcut::activated);
    search.type(QStringLiteral("1"));
    search.press(Qt::Key_Escape);
    QVERIFY(!search.isOpen());
    QCOMPARE(escapes.count(), 0);
    search.press(Qt::Key_Escape);
    QCOMPARE(escapes.count(), 1);
    search.type(QStringLiteral("1"));
    search.press(Qt::Key_Down);
    QCOMPARE(downs.count(), 0);
    QCOMPARE(search.told(), QStringLiteral("- Stage 11"));
}

void TestProcessorCompleter::shouldChooseWithAClick()
{
    const SearchField search;
    search.type(QStringLiteral("1"));
    const QPoint place = search.place(1);
    QTest::mouseClick(search.popup()->windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
    QCOMPARE(search.told(), QStringLiteral("Stage 10"));
    QVERIFY(!search.isOpen());
    QVERIFY(!search.field->hasFocus());

    // The same again: nothing is left of the first choice.
    search.field->setFocus();
    search.field->clear();
    search.type(QStringLiteral("1"));
    QVERIFY(!search.popup()->currentIndex().isValid());
    QVERIFY(!search.popup()->selectionModel()->hasSelection());
    QTest::mouseClick(search.popup()->windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
    QCOMPARE(search.told(), QStringLiteral("Stage 10"));
}

void TestProcessorCompleter::shouldChooseWhenTheMouseLeavesBeforeRelease()
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

void TestProcessorCompleter::shouldChooseARowThatIsSelectedAlready()
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

void TestProcessorCompleter::shouldNotHearALateRelease()
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

void TestProcessorCompleter::shouldCloseOnAPressOutside()
{
    const SearchField search;
    search.type(QStringLiteral("1"));
    QWindow* popup = search.popup()->windowHandle();
    // On the popup, but on none of its rows.
    QTest::mouseClick(popup, Qt::LeftButton, Qt::NoModifier, QPoint(88, 3));
    QTest::mouseClick(popup, Qt::LeftButton, Qt::NoModifier, QPoint(88, 262));
    QVERIFY(search.isOpen());
    QTest::mouseClick(search.window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(280, 340));
    QVERIFY(!search.isOpen());
    QCOMPARE(search.told(), QStringLiteral("-"));
    QCOMPARE(search.field->text(), QStringLiteral("1"));
}

void TestProcessorCompleter::shouldTellOfClosing()
{
    const SearchField search;
    search.type(QStringLiteral("1"));
    search.popup()->close();
    QVERIFY(!search.isOpen());
    QCOMPARE(search.told(), QStringLiteral("-"));
    QVERIFY(!search.field->hasFocus());
    search.popup()->close();
    QCOMPARE(search.told(), QString());
}

void TestProcessorCompleter::shouldHoldBackTheLossOfFocus()
{
    const SearchField search;
    search.type(QStringLiteral("1"));
    QFocusEvent away(QEvent::FocusOut, Qt::PopupFocusReason);
    QApplication::sendEvent(search.field, &away);
    QCOMPARE(search.field->focusLosses, 0);
    QVERIFY(search.isOpen());
    search.press(Qt::Key_Escape);
    QCOMPARE(search.field->focusLosses, 0);
    QApplication::sendEvent(search.field, &away);
    QCOMPARE(search.field->focusLosses, 1);
}

void TestProcessorCompleter::shouldCloseWhenTheFocusGoesElsewhere()
{
    const SearchField search;
    search.type(QStringLiteral("1"));
    search.other->setFocus();
    QVERIFY(!search.isOpen());
    QCOMPARE(search.told(), QStringLiteral("-"));
    QVERIFY(search.other->hasFocus());
    QCOMPARE(search.field->focusLosses, 1);
}

void TestProcessorCompleter::shouldCloseWhenTheFieldCannotBeUsed_data()
{
    QTest::addColumn<Action>("action");
    QTest::newRow("field hidden") << Action([](const SearchField& s) { s.field->hide(); });
    QTest::newRow("window hidden") << Action([](const SearchField& s) { s.window->hide(); });
    QTest::newRow("window closed") << Action([](const SearchField& s) { s.window->close(); });
    QTest::newRow("minimised") << Action([](const SearchField& s) { s.window->showMinimized(); });
    QTest::newRow("disabled") << Action([](const SearchField& s) { s.field->setEnabled(false); });
    QTest::newRow("window disabled")
        << Action([](const SearchField& s) { s.window->setEnabled(false); });
    QTest::newRow("moved to another window")
        << Action([](const SearchField& s) { s.field->setParent(nullptr); });
}

void TestProcessorCompleter::shouldCloseWhenTheFieldCannotBeUsed()
{
    QFETCH(Action, action);
    const SearchField search;
    search.type(QStringLiteral("1"));
    QVERIFY(search.isOpen());
    action(search);
    QVERIFY(!search.isOpen());
    QTRY_COMPARE(search.spy->count(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(search.told(), QStringLiteral("-"));
    if (!search.field->parent())
        delete search.field;
}

void TestProcessorCompleter::shouldOutliveTheField()
{
    const SearchField search;
    search.type(QStringLiteral("1"));
    delete search.field;
    QVERIFY(!search.isOpen());
    search.completer->setFilterText(QStringLiteral("1"));
    QVERIFY(!search.isOpen());
    QTest::keyClick(search.popup(), Qt::Key_A);
    QVERIFY(!search.isOpen());
}

void TestProcessorCompleter::shouldGoWithTheWindow()
{
    const SearchField search;
    search.type(QStringLiteral("1"));
    const QPointer<QListView> popup = search.popup();
    delete search.window;
    QVERIFY(!popup || !popup->isVisible());
    QTRY_VERIFY(!popup);
    QVERIFY(!QApplication::activePopupWidget());
    QCOMPARE(search.told(), QString());
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
    // Where neither side has room, the list covers the field.
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
    // There is no row to choose, or to be current.
    search.completer->select(search.row(500), true);
    QCOMPARE(search.told(), QString());
    QVERIFY(!search.popup()->selectionModel()->hasSelection());
    QVERIFY(!search.popup()->currentIndex().isValid());
}

void TestProcessorCompleter::shouldForgetTheCurrentRowWhenClosed()
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

void TestProcessorCompleter::shouldFollowTheTree_data()
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

void TestProcessorCompleter::shouldFollowTheTree()
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

void TestProcessorCompleter::shouldStandAResetUnderTheMouse()
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
    QVERIFY(!covered(empty, QRect(9, 100, 158, 70)).isEmpty()); // says that nothing is found
    QTest::mouseClick(search.popup()->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      search.popup()->viewport()->mapTo(search.popup(), place));
    QHelpEvent help(QEvent::ToolTip, place, search.popup()->viewport()->mapToGlobal(place));
    QApplication::sendEvent(search.popup()->viewport(), &help);
    QCOMPARE(search.told(), QString());
    QVERIFY(search.isOpen());
}

void TestProcessorCompleter::shouldStayClosedWhenRowsCome()
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

void TestProcessorCompleter::shouldChooseTheRightRowAfterAReorder()
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

void TestProcessorCompleter::shouldStandItsEnd_data()
{
    QTest::addColumn<Action>("action");
    const auto press = [](Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        return Action([key, modifiers](const SearchField& s) { s.press(key, modifiers); });
    };
    QTest::newRow("Down") << press(Qt::Key_Down);
    QTest::newRow("PageDown") << press(Qt::Key_PageDown);
    QTest::newRow("Ctrl+End") << press(Qt::Key_End, Qt::ControlModifier);
    QTest::newRow("Escape") << press(Qt::Key_Escape);
    QTest::newRow("Tab") << press(Qt::Key_Tab);
    QTest::newRow("Return") << Action([](const SearchField& s) {
        s.completer->select(s.row(0), false);
        s.press(Qt::Key_Return);
    });
    QTest::newRow("click") << Action([](const SearchField& s) {
        QTest::mouseClick(s.popup()->windowHandle(), Qt::LeftButton, Qt::NoModifier, s.place(0));
    });
    QTest::newRow("press outside") << Action([](const SearchField& s) {
        QTest::mousePress(s.window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(280, 340));
    });
    QTest::newRow("close") << Action([](const SearchField& s) { s.popup()->close(); });
    QTest::newRow("focus") << Action([](const SearchField& s) { s.other->setFocus(); });
}

void TestProcessorCompleter::shouldStandItsEnd()
{
    QFETCH(Action, action);
    const SearchField search;
    const QPointer<QListView> popup = search.popup();
    CProcessorCompleter* completer = search.completer;
    QObject::connect(completer, &CProcessorCompleter::activated, completer,
                     [completer] { delete completer; });
    search.type(QStringLiteral("1"));
    action(search);
    QVERIFY(!search.completer);
    QTRY_VERIFY(!popup);
    QVERIFY(!QApplication::activePopupWidget());
}

void TestProcessorCompleter::shouldStandItsEndInANestedLoop()
{
    const SearchField search;
    const QPointer<QListView> popup = search.popup();
    CProcessorCompleter* completer = search.completer;
    bool whole = false;
    // As a host does that asks the user something, and ends the panel meanwhile.
    QObject::connect(completer, &CProcessorCompleter::activated, completer, [&] {
        QEventLoop loop;
        QTimer::singleShot(0, &loop, [&] {
            delete search.completer;
            QTimer::singleShot(0, &loop, &QEventLoop::quit);
        });
        loop.exec();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        whole = popup != nullptr;
    });
    search.type(QStringLiteral("1"));
    QTimer::singleShot(0, search.window, [&] {
        QTest::mouseClick(search.popup()->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          search.place(0));
    });
    QTRY_VERIFY(!search.completer);
    QTRY_VERIFY(!popup);
    QVERIFY(whole);
}

void TestProcessorCompleter::shouldTakeInputMethodsToTheField()
{
    const SearchField search;
    search.type(QStringLiteral("S"));
    QVERIFY(search.isOpen());
    for (QObject* target : {qApp->focusObject(), static_cast<QObject*>(search.popup())}) {
        QVERIFY(target);
        search.field->clear();
        QInputMethodEvent preedit(QStringLiteral("da ting"), {});
        QApplication::sendEvent(target, &preedit);
        QCOMPARE(search.field->preedit, QStringLiteral("da ting"));
        QCOMPARE(search.field->text(), QString());
        QInputMethodEvent commit;
        commit.setCommitString(QStringLiteral("大厅"));
        QApplication::sendEvent(target, &commit);
        QCOMPARE(search.field->text(), QStringLiteral("大厅"));
        QVERIFY(search.isOpen());
        QCOMPARE(search.rows(), QString());

        QInputMethodQueryEvent query(Qt::ImEnabled | Qt::ImSurroundingText);
        QApplication::sendEvent(target, &query);
        QVERIFY(query.value(Qt::ImEnabled).toBool());
        QCOMPARE(query.value(Qt::ImSurroundingText).toString(), QStringLiteral("大厅"));
    }
}

void TestProcessorCompleter::shouldSpeakChineseAtOnce()
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

QTEST_MAIN(TestProcessorCompleter)

#include "tst_processorcompleter.moc"
