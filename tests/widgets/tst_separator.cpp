#include "host/widgets/HostTheme.h"
#include "host/widgets/Separator.h"
#include "tests/support/WarningTrap.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QTest>
#include <QVBoxLayout>

class TestSeparator final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldDrawOneLineAcross();
    void shouldDrawOneLineDown();
    void shouldBeAtLeastAsThickAsItsLine();
};

void TestSeparator::initTestCase()
{
    ApplyHostTheme(*qApp);
}

void TestSeparator::shouldDrawOneLineAcross()
{
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* line = new CSeparator(&window, 0, 4);
    layout->addWidget(line);
    layout->addStretch();
    window.resize(50, 50);
    window.show();
    QCOMPARE(line->size(), QSize(50, 4));
    const QImage image = window.grab().toImage();
    for (const int x : {0, 25, 49}) {
        QCOMPARE(image.pixelColor(x, 0), hostColors().window);
        QCOMPARE(image.pixelColor(x, 1), hostColors().line);
        QCOMPARE(image.pixelColor(x, 2), hostColors().window);
        QCOMPARE(image.pixelColor(x, 3), hostColors().window);
    }
}

void TestSeparator::shouldDrawOneLineDown()
{
    QWidget window;
    auto* layout = new QHBoxLayout(&window);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* line = new CSeparator(&window, CSeparator::Down, 5);
    layout->addWidget(line);
    layout->addStretch();
    window.resize(50, 40);
    window.show();
    QCOMPARE(line->size(), QSize(5, 40));
    const QImage image = window.grab().toImage();
    for (const int y : {0, 20, 39}) {
        QCOMPARE(image.pixelColor(1, y), hostColors().window);
        QCOMPARE(image.pixelColor(2, y), hostColors().line);
        QCOMPARE(image.pixelColor(3, y), hostColors().window);
    }
}

void TestSeparator::shouldBeAtLeastAsThickAsItsLine()
{
    const CSeparator line(nullptr, 7, 0);
    QCOMPARE(line.sizeHint(), QSize(1, 1));
    QCOMPARE(line.sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
}

TSA_TEST_MAIN(TestSeparator)

#include "tst_separator.moc"
