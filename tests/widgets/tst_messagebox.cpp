#include "host/widgets/HostTheme.h"
#include "host/widgets/MessageBox.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/WarningTrap.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

namespace {
const QString kCaption = QStringLiteral("Host");

QLabel* textOf(const QWidget& box)
{
    return box.findChild<QLabel*>(QStringLiteral("MessageText"));
}

} // namespace

class MessageBoxTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { ApplyHostTheme(*qApp); }
    void shouldAnswerByKeyboard_data();
    void shouldAnswerByKeyboard();
    void shouldAnswerByMouse();
    void shouldAlwaysInform();
    void shouldKeepItsWidth();
    void shouldShowPlainText();
    void shouldWrapWithinItsWidth();
    void shouldScrollALongText();
    void shouldBeAnAlert();
};

void MessageBoxTest::shouldAnswerByKeyboard_data()
{
    QTest::addColumn<QVector<int>>("keys");
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("answer");
    const int yes = QDialogButtonBox::Yes;
    const int no = QDialogButtonBox::No;
    QTest::newRow("Enter, Yes default") << QVector<int>{Qt::Key_Return} << yes << 0;
    QTest::newRow("Enter, No default") << QVector<int>{Qt::Key_Return} << no << 1;
    QTest::newRow("Escape") << QVector<int>{Qt::Key_Escape} << yes << 1;
    QTest::newRow("Tab, Enter") << QVector<int>{Qt::Key_Tab, Qt::Key_Return} << yes << 1;
    QTest::newRow("Right, Space") << QVector<int>{Qt::Key_Right, Qt::Key_Space} << yes << 1;
    QTest::newRow("Left, Enter") << QVector<int>{Qt::Key_Left, Qt::Key_Enter} << no << 0;
}

void MessageBoxTest::shouldAnswerByKeyboard()
{
    QFETCH(const QVector<int>, keys);
    QFETCH(const int, button);
    QFETCH(const int, answer);
    DialogDriver driver;
    driver.then([&keys](QWidget& box) {
        QApplication::setActiveWindow(&box);
        for (const int key : keys)
            QTest::keyClick(box.focusWidget(), static_cast<Qt::Key>(key));
    });
    QCOMPARE(CMessageBox::question(nullptr, QStringLiteral("Really?"), kCaption,
                                   QDialogButtonBox::Yes | QDialogButtonBox::No,
                                   static_cast<QDialogButtonBox::StandardButton>(button)),
             answer);
}

void MessageBoxTest::shouldAnswerByMouse()
{
    QWidget window;
    window.show();
    DialogDriver driver;
    driver.then([](QWidget& box) { clickButton(box, QStringLiteral("Yes")); });
    driver.then([](QWidget& box) { clickButton(box, QStringLiteral("No")); });
    driver.then([](QWidget& box) { clickButton(box, QStringLiteral("Close")); });
    for (const int answer : {CMessageBox::Yes, CMessageBox::No, CMessageBox::No})
        QCOMPARE(CMessageBox::question(&window, QStringLiteral("Really?"), kCaption), answer);
}

void MessageBoxTest::shouldAlwaysInform()
{
    DialogDriver driver;
    QString text;
    driver.thenReadMessage(text).thenEscape();
    for (int i = 0; i < 2; ++i)
        QCOMPARE(CMessageBox::information(nullptr, QStringLiteral("Done."), kCaption),
                 static_cast<int>(CMessageBox::Ok));
    QCOMPARE(text, QStringLiteral("Done."));
}

void MessageBoxTest::shouldKeepItsWidth()
{
    DialogDriver driver;
    const auto check = [](int width) {
        return [width](QWidget& box) {
            QCOMPARE(box.width(), width);
            QCOMPARE(box.windowTitle(), kCaption);
            QTest::keyClick(&box, Qt::Key_Escape);
        };
    };
    driver.then(check(330)).then(check(500));
    CMessageBox::information(nullptr, QStringLiteral("Done."), kCaption);
    CMessageBox::information(nullptr, QStringLiteral("Done."), kCaption, QDialogButtonBox::Ok,
                             QDialogButtonBox::Ok, 500);
}

void MessageBoxTest::shouldShowPlainText()
{
    QImage plain;
    QImage bold;
    DialogDriver driver;
    const auto grab = [](QImage& image) {
        return [&image](QWidget& box) {
            image = textOf(box)->grab().toImage();
            QTest::keyClick(&box, Qt::Key_Escape);
        };
    };
    driver.then(grab(plain)).then(grab(bold));
    CMessageBox::information(nullptr, QStringLiteral("a word"), kCaption);
    CMessageBox::information(nullptr, QStringLiteral("<b>a</b> word"), kCaption);
    // Tags are shown as plain text, so more is painted to the right than without them.
    const auto rightmost = [](const QImage& image) {
        const QRgb below = image.pixel(image.width() - 1, image.height() - 1);
        for (int x = image.width() - 1; x >= 0; --x) {
            for (int y = 0; y < image.height(); ++y) {
                if (image.pixel(x, y) != below)
                    return x;
            }
        }
        return -1;
    };
    QVERIFY(rightmost(plain) > 0);
    QVERIFY(rightmost(bold) > rightmost(plain) + 20);
}

void MessageBoxTest::shouldWrapWithinItsWidth()
{
    DialogDriver driver;
    int one = 0;
    const auto height = [](int& value) {
        return [&value](QWidget& box) {
            value = textOf(box)->height();
            QVERIFY(box.rect().contains(textOf(box)->geometry()));
            QTest::keyClick(&box, Qt::Key_Escape);
        };
    };
    QVector<int> heights(4);
    driver.then(height(one));
    for (int& value : heights)
        driver.then(height(value));
    CMessageBox::information(nullptr, QStringLiteral("one"), kCaption);
    CMessageBox::information(nullptr, QStringLiteral("one\ntwo"), kCaption);
    CMessageBox::information(nullptr, QStringLiteral("word ").repeated(20), kCaption);
    CMessageBox::information(nullptr, QString(200, QLatin1Char('w')), kCaption);
    CMessageBox::information(nullptr, QStringLiteral("清空地址").repeated(20), kCaption);
    QVERIFY(one > 8);
    for (const int value : heights)
        QVERIFY2(value >= 2 * one, qPrintable(QString::number(value)));
}

void MessageBoxTest::shouldScrollALongText()
{
    DialogDriver driver;
    driver.then([](QWidget& box) {
        const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
        QVERIFY(room.contains(box.geometry()));
        auto* area = box.findChild<QScrollArea*>();
        QVERIFY(area->verticalScrollBar()->maximum() > 0);
        QVERIFY(textOf(box)->width() + area->verticalScrollBar()->width() <= area->width());
        QTest::keyClick(box.focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(box.focusWidget(), area);
        QTest::keyClick(area, Qt::Key_PageDown);
        QVERIFY(area->verticalScrollBar()->value() > 0);
        QTest::keyClick(area, Qt::Key_Return);
    });
    const QString text = QStringLiteral("A line of many.\n").repeated(300);
    QCOMPARE(CMessageBox::information(nullptr, text, kCaption), static_cast<int>(CMessageBox::Ok));
}

void MessageBoxTest::shouldBeAnAlert()
{
    DialogDriver driver;
    driver.then([](QWidget& box) {
        QAccessibleInterface* alert = QAccessible::queryAccessibleInterface(&box);
        QCOMPARE(alert->role(), QAccessible::AlertMessage);
        QCOMPARE(alert->text(QAccessible::Name), kCaption);
        QCOMPARE(alert->text(QAccessible::Description), QStringLiteral("Done."));
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    CMessageBox::information(nullptr, QStringLiteral("Done."), kCaption);
}

TSA_TEST_MAIN(MessageBoxTest)
#include "tst_messagebox.moc"
