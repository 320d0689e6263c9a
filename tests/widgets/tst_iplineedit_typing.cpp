#include "tests/widgets/AddressForm.h"

#include <QInputMethodEvent>
#include <QShortcut>
#include <QSignalSpy>

/// Keys and input methods.
class TestIPLineEditTyping final : public QObject
{
    Q_OBJECT

private slots:
    void shouldShowTypedText_data();
    void shouldShowTypedText();
    void shouldSelectTheNextOctet();
    void shouldNotSkipAnOctetByADotAfterThreeDigits();
    void shouldRemoveLeadingZerosOnFocusOut();
    void shouldCrossDotsWithArrows();
    void shouldEraseAcrossDots();
    void shouldExtendASelectionAcrossDots();
    void shouldAcceptOnlyAsciiDigitsFromInputMethods();
    void shouldKeepEditingKeysFromShortcuts();
    void shouldHaveNoUndo();
};

void TestIPLineEditTyping::shouldShowTypedText_data()
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

void TestIPLineEditTyping::shouldShowTypedText()
{
    QFETCH(const QString, typed);
    QFETCH(const QString, shown);
    QFETCH(const QString, address);
    AddressForm form;
    QTest::keyClicks(&form.field, typed);
    QCOMPARE(form.field.displayText(), shown);
    QCOMPARE(form.field.text(), address);
}

void TestIPLineEditTyping::shouldSelectTheNextOctet()
{
    AddressForm form;
    form.field.setText(QStringLiteral("10.20.30.40"));
    QTest::keyClick(&form.field, Qt::Key_Home);
    QTest::keyClicks(&form.field, QStringLiteral("."));
    QCOMPARE(form.selected(), QStringLiteral("20"));
    QTest::keyClicks(&form.field, QStringLiteral("123"));
    QCOMPARE(form.selected(), QStringLiteral("30"));
    QTest::keyClicks(&form.field, QStringLiteral("7"));
    QCOMPARE(form.field.text(), QStringLiteral("10.123.7.40"));
}

void TestIPLineEditTyping::shouldNotSkipAnOctetByADotAfterThreeDigits()
{
    AddressForm form;
    form.field.setText(QStringLiteral("1.2.3.4"));
    form.field.setSelection(0, 1);
    QTest::keyClicks(&form.field, QStringLiteral("192.168.5"));
    QCOMPARE(form.field.text(), QStringLiteral("192.168.5.4"));
}

void TestIPLineEditTyping::shouldRemoveLeadingZerosOnFocusOut()
{
    AddressForm form;
    QVERIFY(form.isActive());
    form.field.setFocus();
    QTest::keyClicks(&form.field, QStringLiteral("00.1.2.03"));
    QCOMPARE(form.field.displayText(), QStringLiteral("0.1.2.03"));
    QCOMPARE(form.field.text(), QStringLiteral("0.1.2.3"));
    form.after.setFocus();
    QCOMPARE(form.field.displayText(), QStringLiteral("0.1.2.3"));
}

void TestIPLineEditTyping::shouldCrossDotsWithArrows()
{
    AddressForm form;
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

void TestIPLineEditTyping::shouldEraseAcrossDots()
{
    AddressForm form;
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

void TestIPLineEditTyping::shouldExtendASelectionAcrossDots()
{
    AddressForm form;
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

void TestIPLineEditTyping::shouldAcceptOnlyAsciiDigitsFromInputMethods()
{
    AddressForm form;
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

void TestIPLineEditTyping::shouldKeepEditingKeysFromShortcuts()
{
    AddressForm form;
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

void TestIPLineEditTyping::shouldHaveNoUndo()
{
    AddressForm form;
    QTest::keyClicks(&form.field, QStringLiteral("10.20.30.40"));
    QTest::keyClick(&form.field, Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(&form.field, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(form.field.text(), QStringLiteral("10.20.30.40"));
}

TSA_TEST_MAIN(TestIPLineEditTyping)

#include "tst_iplineedit_typing.moc"
