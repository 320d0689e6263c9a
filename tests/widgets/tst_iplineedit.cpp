#include "tests/widgets/AddressForm.h"

#include <QClipboard>
#include <QDialog>
#include <QMouseEvent>
#include <QPushButton>
#include <QSignalSpy>

/// The field's signals, focus and look.
class TestIPLineEdit final : public QObject
{
    Q_OBJECT

private slots:
    void shouldEmitOncePerChange();
    void shouldBeOneTabStop();
    void shouldSelectByMouse();
    void shouldPassEnterOn();
    void shouldBeOneAccessibleField();
    void shouldRefuseInputWhileDisabled();
    void shouldLayOutLeftToRight();
    void shouldDrawAllDigitsWithinItself();
    void shouldShowFocusInItsFrame();
};

void TestIPLineEdit::shouldEmitOncePerChange()
{
    AddressForm form;
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
    AddressForm form;
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
    AddressForm form;
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

void TestIPLineEdit::shouldBeOneAccessibleField()
{
    AddressForm form;
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
    AddressForm form;
    form.field.setText(QStringLiteral("10.0.0.1"));
    form.field.setEnabled(false);
    QTest::keyClick(&form.field, Qt::Key_Backspace);
    QVERIFY(!form.drop(QStringLiteral("10.0.0.2"), {3, 3}));
    QCOMPARE(form.field.text(), QStringLiteral("10.0.0.1"));
}

void TestIPLineEdit::shouldLayOutLeftToRight()
{
    AddressForm form;
    form.window.setLayoutDirection(Qt::RightToLeft);
    form.field.setText(QStringLiteral("10.0.0.1"));
    for (int place = 1; place <= 8; ++place)
        QVERIFY(form.field.cursorRect(place - 1).left() < form.field.cursorRect(place).left());
    QTest::keyClick(&form.field, Qt::Key_Left);
    QCOMPARE(form.field.cursorPosition(), 7);
}

void TestIPLineEdit::shouldDrawAllDigitsWithinItself()
{
    AddressForm form;
    QFont font = form.field.font();
    font.setPixelSize(12);
    form.field.setFont(font);
    form.field.setFixedSize(172, 24);
    form.field.setText(QStringLiteral("255.255.255.255"));
    QVERIFY(form.field.rect().contains(form.field.cursorRect(0)));
    QVERIFY(form.field.rect().contains(form.field.cursorRect(15)));
    const QSize least = form.field.minimumSizeHint();
    QVERIFY(least.width() <= 172 && least.height() <= 24);
    QVERIFY2(form.field.sizeHint().width() <= 172,
             qPrintable(QStringLiteral("%1 pixels in %2")
                            .arg(form.field.sizeHint().width())
                            .arg(QFontInfo(font).family())));

    font.setPixelSize(30);
    form.field.setFont(font);
    QVERIFY(form.field.sizeHint().width() > 300);
}

void TestIPLineEdit::shouldShowFocusInItsFrame()
{
    AddressForm form;
    QVERIFY(form.isActive());
    form.before.setFocus();
    const QRgb calm = form.field.grab().toImage().pixel(86, 0);
    form.field.setFocus();
    const QRgb focused = form.field.grab().toImage().pixel(86, 0);
    QVERIFY(calm != focused);
    QVERIFY(qBlue(focused) > qRed(focused));
}

TSA_TEST_MAIN(TestIPLineEdit)

#include "tst_iplineedit.moc"
