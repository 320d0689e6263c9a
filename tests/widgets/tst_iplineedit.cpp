#include "host/widgets/IPLineEdit.h"
#include "tests/support/WarningTrap.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QShortcut>
#include <QSignalSpy>
#include <QTest>

namespace {

/// A window with a field between two others.
struct Form
{
    Form()
    {
        window.resize(400, 100);
        before.setGeometry(10, 10, 60, 24);
        field.setGeometry(80, 10, 172, 24);
        after.setGeometry(260, 10, 60, 24);
        window.show();
        window.activateWindow();
    }

    bool isActive() { return QTest::qWaitForWindowActive(&window); }

    QString selected() const
    {
        const int start = qMin(field.selectionAnchor(), field.cursorPosition());
        const int end = qMax(field.selectionAnchor(), field.cursorPosition());
        return field.displayText().mid(start, end - start);
    }

    QPoint pointOf(int place) const { return field.cursorRect(place).center(); }

    bool drop(const QString& text, const QPoint& position)
    {
        QMimeData data;
        data.setText(text);
        QDragEnterEvent enter(position, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&field, &enter);
        QDropEvent dropped(position, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        dropped.ignore();
        QApplication::sendEvent(&field, &dropped);
        return enter.isAccepted() && dropped.isAccepted();
    }

    QAccessibleInterface& accessible() { return *QAccessible::queryAccessibleInterface(&field); }

    WarningTrap trap;
    QWidget window;
    QLineEdit before{&window};
    CIPLineEdit field{&window};
    QLineEdit after{&window};
};

} // namespace

class TestIPLineEdit final : public QObject
{
    Q_OBJECT

private slots:
    void shouldShowWhatIsTyped_data();
    void shouldShowWhatIsTyped();
    void shouldSelectTheNextOctet();
    void shouldNotSkipAnOctetByADotAfterThreeDigits();
    void shouldDropLeadingZerosWhenLeft();
    void shouldCrossDotsWithArrows();
    void shouldEraseAcrossDots();
    void shouldExtendASelectionAcrossDots();
    void shouldTakeOnlyTextsThatFit_data();
    void shouldTakeOnlyTextsThatFit();
    void shouldTakeDroppedAddresses();
    void shouldCopyAndCutTheWholeAddress();
    void shouldTakeOnlyAsciiDigitsFromInputMethods();
    void shouldTellOfEachChangeOnce();
    void shouldBeOneTabStop();
    void shouldSelectByMouse();
    void shouldPassEnterOn();
    void shouldKeepEditingKeysFromShortcuts();
    void shouldOfferAMenu();
    void shouldHaveNoUndo();
    void shouldBeOneFieldForAssistiveTechnology();
    void shouldRefuseInputWhileDisabled();
    void shouldStandLeftToRight();
    void shouldDrawAllDigitsWithinItself();
    void shouldShowFocusInItsFrame();
};

void TestIPLineEdit::shouldShowWhatIsTyped_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("address");

    const QString none;
    QTest::newRow("address") << "192.168.1.10"
                             << "192.168.1.10"
                             << "192.168.1.10";
    QTest::newRow("no dots") << "192168100255"
                             << "192.168.100.255"
                             << "192.168.100.255";
    QTest::newRow("short") << "1.2.3.4"
                           << "1.2.3.4"
                           << "1.2.3.4";
    QTest::newRow("incomplete") << "10.2."
                                << "10.2.." << none;
    QTest::newRow("dots only") << "...."
                               << "..." << none;
    QTest::newRow("dots in a row") << "1..2"
                                   << "1.2.." << none;
    QTest::newRow("too large") << "256"
                               << "25..." << none;
    QTest::newRow("too large at once") << "300.1"
                                       << "30.1.." << none;
    QTest::newRow("largest") << "255.255.255.255"
                             << "255.255.255.255"
                             << "255.255.255.255";
    QTest::newRow("too much") << "255.255.255.2559.9"
                              << "255.255.255.255"
                              << "255.255.255.255";
    QTest::newRow("letters") << "1a,-+ 0.x"
                             << "10..." << none;
    QTest::newRow("zeros") << "010.000.00.01"
                           << "10.0.0.01"
                           << "10.0.0.1";
}

void TestIPLineEdit::shouldShowWhatIsTyped()
{
    QFETCH(const QString, typed);
    QFETCH(const QString, shown);
    QFETCH(const QString, address);
    Form form;
    QTest::keyClicks(&form.field, typed);
    QCOMPARE(form.field.displayText(), shown);
    QCOMPARE(form.field.text(), address);
}

void TestIPLineEdit::shouldSelectTheNextOctet()
{
    Form form;
    form.field.setText(QStringLiteral("10.20.30.40"));
    QTest::keyClick(&form.field, Qt::Key_Home);
    QTest::keyClicks(&form.field, QStringLiteral("."));
    QCOMPARE(form.selected(), QStringLiteral("20"));
    QTest::keyClicks(&form.field, QStringLiteral("123"));
    QCOMPARE(form.selected(), QStringLiteral("30"));
    QTest::keyClicks(&form.field, QStringLiteral("7"));
    QCOMPARE(form.field.text(), QStringLiteral("10.123.7.40"));
}

void TestIPLineEdit::shouldNotSkipAnOctetByADotAfterThreeDigits()
{
    Form form;
    form.field.setText(QStringLiteral("1.2.3.4"));
    form.field.setSelection(0, 1);
    QTest::keyClicks(&form.field, QStringLiteral("192.168.5"));
    QCOMPARE(form.field.text(), QStringLiteral("192.168.5.4"));
}

void TestIPLineEdit::shouldDropLeadingZerosWhenLeft()
{
    Form form;
    QVERIFY(form.isActive());
    form.field.setFocus();
    QTest::keyClicks(&form.field, QStringLiteral("00.1.2.03"));
    QCOMPARE(form.field.displayText(), QStringLiteral("0.1.2.03"));
    QCOMPARE(form.field.text(), QStringLiteral("0.1.2.3"));
    form.after.setFocus();
    QCOMPARE(form.field.displayText(), QStringLiteral("0.1.2.3"));
}

void TestIPLineEdit::shouldCrossDotsWithArrows()
{
    Form form;
    form.field.setText(QStringLiteral("1.22.3.4"));
    for (int place = 8; place > 0; --place) {
        QCOMPARE(form.field.cursorPosition(), place);
        QTest::keyClick(&form.field, Qt::Key_Left);
    }
    QTest::keyClick(&form.field, Qt::Key_Left);
    QCOMPARE(form.field.cursorPosition(), 0);
    QTest::keyClick(&form.field, Qt::Key_Right, Qt::KeypadModifier);
    QTest::keyClick(&form.field, Qt::Key_Right);
    QCOMPARE(form.field.cursorPosition(), 2);
    QTest::keyClick(&form.field, Qt::Key_Right, Qt::ControlModifier);
    QCOMPARE(form.field.cursorPosition(), 5);
    QTest::keyClick(&form.field, Qt::Key_End);
    QCOMPARE(form.field.cursorPosition(), 8);
    QTest::keyClick(&form.field, Qt::Key_Home);
    QCOMPARE(form.field.cursorPosition(), 0);
}

void TestIPLineEdit::shouldEraseAcrossDots()
{
    Form form;
    form.field.setText(QStringLiteral("1.22.3.4"));
    for (const char* shown : {"1.22.3.", "1.22..", "1.2..", "1...", "..."}) {
        QTest::keyClick(&form.field, Qt::Key_Backspace);
        QCOMPARE(form.field.displayText(), QLatin1String(shown));
    }
    QTest::keyClick(&form.field, Qt::Key_Backspace);
    QCOMPARE(form.field.cursorPosition(), 0);

    form.field.setText(QStringLiteral("1.22.3.4"));
    QTest::keyClick(&form.field, Qt::Key_Home);
    for (const char* shown : {".22.3.4", ".2.3.4", "..3.4", "...4", "..."}) {
        QTest::keyClick(&form.field, Qt::Key_Delete);
        QCOMPARE(form.field.displayText(), QLatin1String(shown));
    }
    form.field.selectAll();
    QTest::keyClick(&form.field, Qt::Key_Delete);
    QTest::keyClick(&form.field, Qt::Key_Delete);
    QCOMPARE(form.field.cursorPosition(), 0);
}

void TestIPLineEdit::shouldExtendASelectionAcrossDots()
{
    Form form;
    form.field.setText(QStringLiteral("10.20.30.40"));
    for (int count = 0; count < 5; ++count)
        QTest::keyClick(&form.field, Qt::Key_Left, Qt::ShiftModifier);
    QCOMPARE(form.selected(), QStringLiteral("30.40"));
    QTest::keyClick(&form.field, Qt::Key_Right, Qt::ShiftModifier);
    QCOMPARE(form.selected(), QStringLiteral("0.40"));
    QTest::keyClicks(&form.field, QStringLiteral("5"));
    QCOMPARE(form.field.displayText(), QStringLiteral("10.20.35."));
    QTest::keyClick(&form.field, Qt::Key_Home, Qt::ShiftModifier);
    QCOMPARE(form.selected(), QStringLiteral("10.20.35"));
    QTest::keyClick(&form.field, Qt::Key_Left);
    QCOMPARE(form.field.cursorPosition(), 0);
    QVERIFY(form.selected().isEmpty());
}

void TestIPLineEdit::shouldTakeOnlyTextsThatFit_data()
{
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("shown");

    QTest::newRow("address") << " 192.168.1.10\n"
                             << "192.168.1.10";
    QTest::newRow("zeros") << "010.000.001.009"
                           << "10.0.1.9";
    QTest::newRow("digits") << "5"
                            << "1.2.35.4";
    QTest::newRow("digits with white space") << " 5\n"
                                             << "1.2.35.4";
    QTest::newRow("no room") << "555"
                             << "1.2.3.4";
    QTest::newRow("too large") << "256"
                               << "1.2.3.4";
    QTest::newRow("port") << "10.0.0.1:80"
                          << "1.2.3.4";
    QTest::newRow("part of an address") << "10.0.0"
                                        << "1.2.3.4";
    QTest::newRow("name") << "Processor 1"
                          << "1.2.3.4";
    QTest::newRow("nothing") << ""
                             << "1.2.3.4";
    QTest::newRow("full-width") << QStringLiteral("\uFF15") << "1.2.3.4";
}

void TestIPLineEdit::shouldTakeOnlyTextsThatFit()
{
    QFETCH(const QString, pasted);
    QFETCH(const QString, shown);
    Form form;
    form.field.setText(QStringLiteral("1.2.3.4"));
    form.field.setSelection(5, 5);
    QApplication::clipboard()->setText(pasted);
    QTest::keyClick(&form.field, Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(form.field.displayText(), shown);

    form.field.setText(QStringLiteral("1.2.3.4"));
    QCOMPARE(form.drop(pasted, form.pointOf(5)), shown != QLatin1String("1.2.3.4"));
    QCOMPARE(form.field.displayText(), shown);

    if (QApplication::clipboard()->supportsSelection()) {
        form.field.setText(QStringLiteral("1.2.3.4"));
        QApplication::clipboard()->setText(pasted, QClipboard::Selection);
        QTest::mouseClick(&form.field, Qt::MiddleButton, {}, form.pointOf(5));
        QCOMPARE(form.field.displayText(), shown);
    }
}

void TestIPLineEdit::shouldTakeDroppedAddresses()
{
    Form form;
    QVERIFY(form.drop(QStringLiteral("10.0.0.1"), {3, 3}));
    QCOMPARE(form.field.text(), QStringLiteral("10.0.0.1"));
    QVERIFY(!form.drop(QStringLiteral("none"), {3, 3}));

    QMimeData data;
    data.setText(QStringLiteral("10.0.0.2"));
    QDragEnterEvent enter({3, 3}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&form.field, &enter);
    QDropEvent moved({3, 3}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                     Qt::ShiftModifier);
    moved.setDropAction(Qt::MoveAction);
    QApplication::sendEvent(&form.field, &moved);
    QCOMPARE(moved.dropAction(), Qt::CopyAction);
    QCOMPARE(form.field.text(), QStringLiteral("10.0.0.2"));
}

void TestIPLineEdit::shouldCopyAndCutTheWholeAddress()
{
    Form form;
    QClipboard* clipboard = QApplication::clipboard();
    const auto press = [&form](Qt::Key key) {
        QTest::keyClick(&form.field, key, Qt::ControlModifier);
    };
    form.field.setText(QStringLiteral("10.20.30.40"));
    clipboard->clear();
    press(Qt::Key_C);
    QCOMPARE(clipboard->text(), QStringLiteral("10.20.30.40"));

    form.field.setSelection(1, 4);
    press(Qt::Key_C);
    QCOMPARE(clipboard->text(), QStringLiteral("0.2"));

    press(Qt::Key_A);
    QCOMPARE(form.selected(), QStringLiteral("10.20.30.40"));
    press(Qt::Key_X);
    QCOMPARE(clipboard->text(), QStringLiteral("10.20.30.40"));
    QCOMPARE(form.field.displayText(), QStringLiteral("..."));

    press(Qt::Key_V);
    form.field.setSelection(4, 4);
    clipboard->clear();
    press(Qt::Key_X);
    QCOMPARE(clipboard->text(), QStringLiteral("10.20.30.40"));
    QVERIFY(form.field.text().isEmpty());

    clipboard->setText(QStringLiteral("kept"));
    press(Qt::Key_A);
    press(Qt::Key_C);
    press(Qt::Key_X);
    QCOMPARE(clipboard->text(), QStringLiteral("kept"));
}

void TestIPLineEdit::shouldTakeOnlyAsciiDigitsFromInputMethods()
{
    Form form;
    const auto commit = [&form](const QString& text) {
        QInputMethodEvent event(QStringLiteral("ni"), {});
        event.setCommitString(text);
        QApplication::sendEvent(&form.field, &event);
        return event.isAccepted();
    };
    QVERIFY(commit(QStringLiteral("\uFF11\uFF12\u0661\u06F1\u0967")));
    QCOMPARE(form.field.displayText(), QStringLiteral("..."));
    QVERIFY(commit(QStringLiteral("1\uFF122")));
    QCOMPARE(form.field.displayText(), QStringLiteral("12..."));
    QVERIFY(commit(QStringLiteral("\u4F60\u597D.34.5.6")));
    QCOMPARE(form.field.text(), QStringLiteral("12.34.5.6"));
    QVERIFY(form.field.testAttribute(Qt::WA_InputMethodEnabled));
    QCOMPARE(form.field.inputMethodQuery(Qt::ImSurroundingText).toString(),
             QStringLiteral("12.34.5.6"));
    QCOMPARE(form.field.inputMethodQuery(Qt::ImCursorRectangle).toRect(), form.field.cursorRect(9));
}

void TestIPLineEdit::shouldTellOfEachChangeOnce()
{
    Form form;
    QSignalSpy changes(&form.field, &CIPLineEdit::textChanged);
    const auto told = [&changes] {
        QStringList texts;
        for (const QVariantList& arguments : qAsConst(changes))
            texts.append(arguments.first().toString());
        changes.clear();
        return texts;
    };
    form.field.setText(QStringLiteral("10.0.0.1"));
    QCOMPARE(told(), QStringList{QStringLiteral("10.0.0.1")});
    form.field.setText(QStringLiteral("10.000.0.1"));
    QCOMPARE(told(), QStringList());
    QApplication::clipboard()->setText(QStringLiteral("10.0.0.2"));
    QTest::keyClick(&form.field, Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(told(), QStringList{QStringLiteral("10.0.0.2")});
    QTest::keyClick(&form.field, Qt::Key_V, Qt::ControlModifier);
    QTest::keyClick(&form.field, Qt::Key_Home);
    QCOMPARE(told(), QStringList());
    QTest::keyClick(&form.field, Qt::Key_Delete, Qt::ControlModifier);
    QCOMPARE(told(), QStringList{QString()});
    QTest::keyClicks(&form.field, QStringLiteral("0"));
    QTest::keyClick(&form.field, Qt::Key_End);
    form.field.clear();
    form.field.clear();
    form.field.setText(QStringLiteral("nonsense"));
    QCOMPARE(told().size(), 2);
}

void TestIPLineEdit::shouldBeOneTabStop()
{
    Form form;
    QVERIFY(form.isActive());
    form.field.setText(QStringLiteral("10.0.0.1"));
    form.before.setFocus();
    QTest::keyClick(&form.before, Qt::Key_Tab);
    QVERIFY(form.field.hasFocus());
    QCOMPARE(form.selected(), QStringLiteral("10.0.0.1"));
    QTest::keyClick(&form.field, Qt::Key_Tab);
    QVERIFY(form.after.hasFocus());
    QVERIFY(form.selected().isEmpty());
    QTest::keyClick(&form.after, Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(form.field.hasFocus());
    QCOMPARE(form.selected(), QStringLiteral("10.0.0.1"));
    QTest::keyClick(&form.field, Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(form.before.hasFocus());
    form.field.setFocus();
    QCOMPARE(QApplication::focusWidget(), &form.field);
}

void TestIPLineEdit::shouldSelectByMouse()
{
    Form form;
    QVERIFY(form.isActive());
    form.field.setText(QStringLiteral("10.200.30.40"));
    for (int place = 0; place <= 12; ++place) {
        QTest::mouseClick(&form.field, Qt::LeftButton, {}, form.pointOf(place));
        QCOMPARE(form.field.cursorPosition(), place);
    }
    QVERIFY(form.field.hasFocus());
    QTest::mouseClick(&form.field, Qt::LeftButton, Qt::ShiftModifier, form.pointOf(7));
    QCOMPARE(form.selected(), QStringLiteral("30.40"));
    QTest::mouseDClick(&form.field, Qt::LeftButton, {}, form.pointOf(4));
    QCOMPARE(form.selected(), QStringLiteral("200"));

    QTest::mousePress(&form.field, Qt::LeftButton, {}, form.pointOf(1));
    QMouseEvent drag(QEvent::MouseMove, form.pointOf(9), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(&form.field, &drag);
    QTest::mouseRelease(&form.field, Qt::LeftButton, {}, form.pointOf(9));
    QCOMPARE(form.selected(), QStringLiteral("0.200.30"));
    QMouseEvent after(QEvent::MouseMove, form.pointOf(1), Qt::NoButton, Qt::NoButton, {});
    QApplication::sendEvent(&form.field, &after);
    QCOMPARE(form.selected(), QStringLiteral("0.200.30"));

    QCOMPARE(form.field.placeAt({-50, 5}), 0);
    QCOMPARE(form.field.placeAt({500, 5}), 12);
}

void TestIPLineEdit::shouldPassEnterOn()
{
    const WarningTrap trap;
    QDialog dialog;
    dialog.resize(300, 100);
    CIPLineEdit field(&dialog);
    QPushButton button(&dialog);
    button.setDefault(true);
    dialog.show();
    QSignalSpy returned(&field, &CIPLineEdit::returnPressed);
    QSignalSpy clicked(&button, &QPushButton::clicked);
    QTest::keyClick(&field, Qt::Key_Return);
    QTest::keyClick(&field, Qt::Key_Enter, Qt::KeypadModifier);
    QCOMPARE(returned.count(), 2);
    QCOMPARE(clicked.count(), 2);
    QTest::keyClick(&field, Qt::Key_Escape);
    QVERIFY(!dialog.isVisible());
}

void TestIPLineEdit::shouldKeepEditingKeysFromShortcuts()
{
    Form form;
    QVERIFY(form.isActive());
    form.field.setFocus();
    QShortcut digit(QKeySequence(QStringLiteral("5")), &form.window);
    QShortcut erase(QKeySequence(Qt::Key_Delete), &form.window);
    QShortcut save(QKeySequence(QStringLiteral("Ctrl+S")), &form.window);
    QSignalSpy digits(&digit, &QShortcut::activated);
    QSignalSpy erased(&erase, &QShortcut::activated);
    QSignalSpy saved(&save, &QShortcut::activated);
    QTest::keyClick(&form.window, Qt::Key_Delete);
    QCOMPARE(erased.count(), 1);
    QWindow* window = form.window.windowHandle();
    QTest::keyClick(window, Qt::Key_5);
    QTest::keyClick(window, Qt::Key_Delete);
    QTest::keyClick(window, Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(form.field.displayText(), QStringLiteral("5..."));
    QCOMPARE(digits.count(), 0);
    QCOMPARE(erased.count(), 1);
    QCOMPARE(saved.count(), 1);
}

void TestIPLineEdit::shouldOfferAMenu()
{
    Form form;
    QVERIFY(form.isActive());
    form.field.setFocus();
    form.field.setText(QStringLiteral("10.0.0.1"));
    QApplication::clipboard()->setText(QStringLiteral("no address"));
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {5, 5});
    QApplication::sendEvent(&form.field, &event);
    QPointer<QMenu> menu = form.field.findChild<QMenu*>();
    QVERIFY(menu);
    QStringList enabled;
    const auto actions = menu->actions();
    for (const QAction* action : actions) {
        if (action->isEnabled() && !action->isSeparator())
            enabled.append(action->text());
    }
    QCOMPARE(enabled.join(QLatin1Char(',')), QStringLiteral("Cut,Copy,Select All"));
    menu->actions().constFirst()->trigger();
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("10.0.0.1"));
    QVERIFY(form.field.text().isEmpty());
    menu->close();
    QTRY_VERIFY(!menu);
}

void TestIPLineEdit::shouldHaveNoUndo()
{
    Form form;
    QTest::keyClicks(&form.field, QStringLiteral("10.20.30.40"));
    QTest::keyClick(&form.field, Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(&form.field, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(form.field.text(), QStringLiteral("10.20.30.40"));
}

void TestIPLineEdit::shouldBeOneFieldForAssistiveTechnology()
{
    Form form;
    form.field.setAccessibleName(QStringLiteral("IP address"));
    form.field.setText(QStringLiteral("10.0.0.1"));
    QAccessibleInterface& field = form.accessible();
    QCOMPARE(field.role(), QAccessible::EditableText);
    QCOMPARE(field.childCount(), 0);
    QCOMPARE(field.text(QAccessible::Name), QStringLiteral("IP address"));
    QCOMPARE(field.text(QAccessible::Value), QStringLiteral("10.0.0.1"));
    QVERIFY(field.state().focusable && field.state().editable);

    QAccessibleTextInterface* text = field.textInterface();
    QVERIFY(text);
    QCOMPARE(text->characterCount(), 8);
    QCOMPARE(text->text(0, 2), QStringLiteral("10"));
    QCOMPARE(text->cursorPosition(), 8);
    QCOMPARE(text->selectionCount(), 0);
    text->addSelection(0, 2);
    int start = -1;
    int end = -1;
    text->selection(0, &start, &end);
    QCOMPARE(start, 0);
    QCOMPARE(end, 2);
    QCOMPARE(text->selectionCount(), 1);
    text->removeSelection(0);
    QCOMPARE(text->selectionCount(), 0);
    const QRect character = text->characterRect(1);
    QVERIFY(!character.isEmpty());
    QCOMPARE(text->offsetAtPoint(character.topLeft()), 1);
    field.setText(QAccessible::Value, QStringLiteral("10.0.0.2"));
    QCOMPARE(form.field.text(), QStringLiteral("10.0.0.2"));
    field.setText(QAccessible::Value, QStringLiteral("abc"));
    QVERIFY(form.field.text().isEmpty());
}

void TestIPLineEdit::shouldRefuseInputWhileDisabled()
{
    Form form;
    form.field.setText(QStringLiteral("10.0.0.1"));
    form.field.setEnabled(false);
    QTest::keyClick(&form.field, Qt::Key_Backspace);
    QVERIFY(!form.drop(QStringLiteral("10.0.0.2"), {3, 3}));
    QCOMPARE(form.field.text(), QStringLiteral("10.0.0.1"));
}

void TestIPLineEdit::shouldStandLeftToRight()
{
    Form form;
    form.window.setLayoutDirection(Qt::RightToLeft);
    form.field.setText(QStringLiteral("10.0.0.1"));
    for (int place = 1; place <= 8; ++place)
        QVERIFY(form.field.cursorRect(place - 1).left() < form.field.cursorRect(place).left());
    QTest::keyClick(&form.field, Qt::Key_Left);
    QCOMPARE(form.field.cursorPosition(), 7);
}

void TestIPLineEdit::shouldDrawAllDigitsWithinItself()
{
    Form form;
    QFont font = form.field.font();
    font.setPixelSize(12);
    form.field.setFont(font);
    form.field.setFixedSize(172, 24);
    form.field.setText(QStringLiteral("255.255.255.255"));
    QVERIFY(form.field.rect().contains(form.field.cursorRect(0)));
    QVERIFY(form.field.rect().contains(form.field.cursorRect(15)));
    const QSize least = form.field.minimumSizeHint();
    QVERIFY(least.width() <= 172 && least.height() <= 24);
    QVERIFY(form.field.sizeHint().width() <= 172);

    font.setPixelSize(30);
    form.field.setFont(font);
    QVERIFY(form.field.sizeHint().width() > 300);
}

void TestIPLineEdit::shouldShowFocusInItsFrame()
{
    Form form;
    QVERIFY(form.isActive());
    form.before.setFocus();
    const QRgb calm = form.field.grab().toImage().pixel(86, 0);
    form.field.setFocus();
    const QRgb focused = form.field.grab().toImage().pixel(86, 0);
    QVERIFY(calm != focused);
    QVERIFY(qBlue(focused) > qRed(focused));
}

QTEST_MAIN(TestIPLineEdit)

#include "tst_iplineedit.moc"
