#include "host/widgets/SpinBox.h"
#include "tests/support/WarningTrap.h"

#include <QApplication>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

namespace {
void turnWheel(QWidget& widget)
{
    QWheelEvent event(widget.rect().center(), widget.mapToGlobal(widget.rect().center()), {},
                      QPoint(0, 120), Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &event);
}

} // namespace

class TestSpinBox final : public QObject
{
    Q_OBJECT

private slots:
    void shouldLimitTypedNumbersToTheRange_data();
    void shouldLimitTypedNumbersToTheRange();
    void shouldReactToTheWheelOnlyWithTheFocus();
};

void TestSpinBox::shouldLimitTypedNumbersToTheRange_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("value");

    QTest::newRow("inside") << "12" << 12;
    QTest::newRow("largest") << "200" << 200;
    QTest::newRow("beyond") << "201" << 200;
    QTest::newRow("far beyond") << "99999999999" << 200;
    QTest::newRow("below") << "3" << 5;
    QTest::newRow("zero") << "0" << 5;
    QTest::newRow("letters") << "1a5" << 15;
    QTest::newRow("nothing") << "" << 50;
}

void TestSpinBox::shouldLimitTypedNumbersToTheRange()
{
    QFETCH(const QString, typed);
    QFETCH(const int, value);
    QWidget window;
    window.resize(200, 80);
    CSpinBox box(&window);
    box.setRange(5, 200);
    box.setValue(50);
    QLineEdit other(&window);
    other.move(0, 40);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));

    for (const bool byEnter : {true, false}) {
        box.setValue(50);
        box.setFocus();
        box.selectAll();
        QTest::keyClick(&box, Qt::Key_Delete);
        QTest::keyClicks(&box, typed);
        if (byEnter)
            QTest::keyClick(&box, Qt::Key_Return);
        else
            other.setFocus();
        QCOMPARE(box.value(), value);
        QCOMPARE(box.text(), QString::number(value));
    }
}

void TestSpinBox::shouldReactToTheWheelOnlyWithTheFocus()
{
    QWidget window;
    window.resize(200, 80);
    QLineEdit other(&window);
    CSpinBox box(&window);
    box.move(0, 40);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    other.setFocus();
    turnWheel(box);
    QCOMPARE(box.value(), 0);
    QVERIFY(other.hasFocus());
    box.setFocus();
    turnWheel(box);
    QCOMPARE(box.value(), 1);
}

TSA_TEST_MAIN(TestSpinBox)

#include "tst_spinbox.moc"
