#include "host/common/SoftwareName.h"
#include "tests/support/WarningTrap.h"

#include <QTest>

#include <atomic>
#include <thread>

class SoftwareNameTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldBeEmptyUntilSet();
    void shouldReturnTheLastName();
    void shouldBeSafeOnAnyThread();
};

void SoftwareNameTest::shouldBeEmptyUntilSet()
{
    QCOMPARE(custom_software_name(), QString());
}

void SoftwareNameTest::shouldReturnTheLastName()
{
    set_custom_software_name(QStringLiteral("First"));
    QCOMPARE(custom_software_name(), QStringLiteral("First"));
    const QString wide = QString::fromUtf8("\xE5\xB1\x8F \xF0\x9F\x98\x80");
    set_custom_software_name(wide);
    QCOMPARE(custom_software_name(), wide);
    set_custom_software_name(QString());
    QVERIFY(custom_software_name().isEmpty());
}

void SoftwareNameTest::shouldBeSafeOnAnyThread()
{
    const QString names[] = {QString(5000, QLatin1Char('a')), QString(5000, QLatin1Char('b'))};
    set_custom_software_name(names[0]);
    std::atomic<bool> torn{false};
    std::thread reader([&] {
        for (int i = 0; i < 5000; ++i) {
            const QString name = custom_software_name();
            torn = torn || (name != names[0] && name != names[1]);
        }
    });
    for (int i = 0; i < 5000; ++i)
        set_custom_software_name(names[i % 2]);
    reader.join();
    QVERIFY(!torn);
}

TSA_TEST_MAIN(SoftwareNameTest)
#include "tst_softwarename.moc"
