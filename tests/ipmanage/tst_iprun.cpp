#include "base/IPText.h"
#include "ipmanage/IPRun.h"
#include "tests/ipmanage/RandomAddresses.h"
#include "tests/ipmanage/ReferenceAddresses.h"
#include "tests/support/Seed.h"
#include "tests/support/WarningTrap.h"

#include <QTest>

#include <limits>

namespace {

constexpr int kRandomRuns = 100'000;

using Rejects = std::function<bool(quint32)>;

ReferenceResult run(quint32 start, int count, const Rejects& rejects)
{
    ReferenceResult result;
    generateIPRun(
        start, count,
        [&](quint32 address) {
            result.asked.append(address);
            return rejects(address);
        },
        [&](quint32 address) {
            result.found.append(address);
            return true;
        });
    return result;
}

bool rejectsNothing(quint32)
{
    return false;
}

bool rejectsEverything(quint32)
{
    return true;
}

/// "10.0.0.1 10.0.0.2"
QString texts(const QVector<quint32>& addresses)
{
    QStringList list;
    for (const quint32 address : addresses)
        list.append(addressText(address));
    return list.join(QLatin1Char(' '));
}

QString found(const char* start, int count, const Rejects& rejects = rejectsNothing)
{
    return texts(run(addressOfText(QString::fromLatin1(start)), count, rejects).found);
}

QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

/// Returns counts that keep dense runs short; sometimes a large one or 0.
int randomCount(QRandomGenerator& random, bool dense)
{
    switch (random.bounded(128)) {
    case 0:
        return -static_cast<int>(random.bounded(3));
    case 1:
        return 1 + random.bounded(dense ? 60 : 900);
    default:
        return 1 + random.bounded(dense ? 5 : 25);
    }
}

} // namespace

class IPRunTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldGenerateConsecutiveAddresses();
    void shouldCheckAllAddressesExceptTheStart();
    void shouldSkipRejectedCandidates();
    void shouldContinueInTheNextThirdOctet();
    void shouldNotCheckTheFirstAddressAfterACarry();
    void shouldCarryFromTheThirdOctetIntoTheSecond();
    void shouldKeepAnOddSecondOctet();
    void shouldCountTheCarryOfTheThirdOctet();
    void shouldCarryOnPast512();
    void shouldEmitNothingForACountBelowOne();
    void shouldEndForAnyRejections();
    void shouldStopOnRequest();
    void shouldMatchTheReference();
};

void IPRunTest::shouldGenerateConsecutiveAddresses()
{
    QCOMPARE(found("10.0.0.1", 1), text("10.0.0.1"));
    QCOMPARE(found("10.0.0.7", 3), text("10.0.0.7 10.0.0.8 10.0.0.9"));
    QCOMPARE(found("0.0.0.0", 2), text("0.0.0.0 0.0.0.1"));
}

void IPRunTest::shouldCheckAllAddressesExceptTheStart()
{
    const ReferenceResult result =
        run(addressOfText(text("10.0.0.7")), 3, [](quint32) { return false; });
    QCOMPARE(texts(result.asked), text("10.0.0.8 10.0.0.9"));
}

void IPRunTest::shouldSkipRejectedCandidates()
{
    QCOMPARE(found("10.0.0.7", 3, [](quint32 address) { return address % 4 != 3; }),
             text("10.0.0.7 10.0.0.11 10.0.0.15"));
}

void IPRunTest::shouldContinueInTheNextThirdOctet()
{
    QCOMPARE(found("192.168.3.250", 10),
             text("192.168.3.250 192.168.3.251 192.168.3.252 192.168.3.253 192.168.3.254 "
                  "192.168.3.255 192.168.4.1 192.168.4.2 192.168.4.3 192.168.4.4"));
}

void IPRunTest::shouldNotCheckTheFirstAddressAfterACarry()
{
    const ReferenceResult result = run(addressOfText(text("192.168.3.254")), 3, rejectsEverything);
    QCOMPARE(texts(result.found), text("192.168.3.254 192.168.4.1 192.168.5.1"));
    QVERIFY(!result.asked.contains(addressOfText(text("192.168.4.1"))));
    QVERIFY(result.asked.contains(addressOfText(text("192.168.4.2"))));
}

void IPRunTest::shouldCarryFromTheThirdOctetIntoTheSecond()
{
    const ReferenceResult result =
        run(addressOfText(text("10.2.255.254")), 6, [](quint32) { return false; });
    QCOMPARE(texts(result.found), text("10.2.255.254 10.2.255.255 10.3.0.2 10.3.0.3 10.3.0.4"));
    QCOMPARE(texts(result.asked), text("10.2.255.255 10.3.0.2 10.3.0.3 10.3.0.4"));
}

void IPRunTest::shouldKeepAnOddSecondOctet()
{
    QCOMPARE(found("10.1.255.255", 3), text("10.1.255.255 10.1.0.2"));
    QCOMPARE(found("255.255.255.255", 4), text("255.255.255.255 255.255.0.2 255.255.0.3"));
}

void IPRunTest::shouldCountTheCarryOfTheThirdOctet()
{
    QCOMPARE(found("10.0.255.255", 1), text("10.0.255.255"));
    QCOMPARE(found("10.0.255.255", 2), text("10.0.255.255"));
    QCOMPARE(found("10.0.255.255", 3), text("10.0.255.255 10.1.0.2"));
    QCOMPARE(found("10.0.255.255", 9, rejectsEverything), text("10.0.255.255"));
    // Each further carry counts too: 254 addresses, and then one less.
    const ReferenceResult result =
        run(addressOfText(text("10.0.255.255")), 2 + 254 + 2, rejectsNothing);
    QCOMPARE(texts(result.found.mid(254)), text("10.1.0.255 10.1.1.2"));
}

void IPRunTest::shouldCarryOnPast512()
{
    const quint32 start = addressOfText(text("10.0.255.255"));
    const auto rejects = [](quint32 address) { return (address & 0xFF) != 2; };
    const ReferenceResult result = run(start, 2 * 520, rejects);
    QCOMPARE(result.found.size(), 1 + 519);
    QCOMPARE(addressText(result.found.at(256)), text("10.1.255.2"));
    // The carry 512 sets bit 1 of the second octet; bit 0 is still set from 256.
    QCOMPARE(addressText(result.found.at(257)), text("10.3.0.2"));
    QCOMPARE(result.found, referenceRun(start, 2 * 520, rejects).found);
}

void IPRunTest::shouldEmitNothingForACountBelowOne()
{
    for (const int count : {0, -1, std::numeric_limits<int>::min()}) {
        const ReferenceResult result = run(1, count, rejectsNothing);
        QVERIFY(result.found.isEmpty());
        QVERIFY(result.asked.isEmpty());
    }
}

void IPRunTest::shouldEndForAnyRejections()
{
    for (const char* start : {"10.0.0.0", "10.0.0.1", "10.0.0.255", "10.0.255.0", "10.0.254.255",
                              "255.255.255.255", "0.0.0.0"}) {
        for (const int count : {1, 2, 3, 10, 255}) {
            const ReferenceResult result =
                run(addressOfText(text(start)), count, rejectsEverything);
            QVERIFY(result.asked.size() <= 255 * (count - 1));
        }
    }
    // The largest possible number of checks.
    QCOMPARE(run(addressOfText(text("10.0.0.0")), 2, rejectsEverything).asked.size(), 255);
}

void IPRunTest::shouldStopOnRequest()
{
    for (const int most : {1, 2, 100, 70'000}) {
        int emitted = 0;
        generateIPRun(addressOfText(text("10.0.0.250")), std::numeric_limits<int>::max(),
                      rejectsNothing, [&](quint32) { return ++emitted < most; });
        QCOMPARE(emitted, most);
    }
}

void IPRunTest::shouldMatchTheReference()
{
    const quint32 first = firstSeed();
    qInfo("TSA_SEED=%u and the %d after it", first, kRandomRuns - 1);
    qint64 questions = 0;
    for (int i = 0; i < kRandomRuns; ++i) {
        const quint32 seed = first + static_cast<quint32>(i);
        QRandomGenerator random(seed);
        const RandomRejection rejection(random);
        const quint32 start = randomAddress(random);
        const int count = randomCount(random, rejection.dense);
        const ReferenceResult expected = referenceRun(start, count, rejection.rejects);
        const ReferenceResult actual = run(start, count, rejection.rejects);
        questions += actual.asked.size();
        if (actual.found != expected.found || actual.asked != expected.asked
            || actual.asked.size() > 255 * qMax(0, count - 1)) {
            QFAIL(qPrintable(QStringLiteral("TSA_SEED=%1: %2 from %3, rejected: %4\n%5\nnot %6")
                                 .arg(QString::number(seed), QString::number(count),
                                      addressText(start), rejection.name, texts(actual.found),
                                      texts(expected.found))));
        }
    }
    QVERIFY(questions > kRandomRuns);
}

TSA_APPLESS_TEST_MAIN(IPRunTest)
#include "tst_iprun.moc"
