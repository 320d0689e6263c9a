#include "base/IPText.h"
#include "ipmanage/IPProposal.h"
#include "tests/ipmanage/RandomAddresses.h"
#include "tests/ipmanage/ReferenceAddresses.h"
#include "tests/support/Seed.h"
#include "tests/support/WarningTrap.h"

#include <QTest>

namespace {

constexpr int kRandomSearches = 100'000;

using Rejects = std::function<bool(quint32)>;

ReferenceResult propose(quint32 base, int wanted, const Rejects& rejects)
{
    ReferenceResult result;
    const QList<quint32> found = proposeIPAddresses(base, wanted, [&](quint32 address) {
        result.asked.append(address);
        return rejects(address);
    });
    result.found = found.toVector();
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

/// Rejects that many addresses, accepts one, and so on through the list; rejects all further ones.
Rejects rejectsRows(const QVector<int>& rows)
{
    return [rows, row = 0, asked = 0](quint32) mutable {
        if (row == rows.size())
            return true;
        if (asked++ < rows.at(row))
            return true;
        ++row;
        asked = 0;
        return false;
    };
}

QString texts(const QVector<quint32>& addresses)
{
    QStringList list;
    for (const quint32 address : addresses)
        list.append(addressText(address));
    return list.join(QLatin1Char(' '));
}

QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

QString proposed(const char* base, int wanted, const Rejects& rejects = rejectsNothing)
{
    return texts(propose(addressOfText(text(base)), wanted, rejects).found);
}

/// Returns the numbers of found and of checked addresses: "2/258".
QString effort(int wanted, const Rejects& rejects)
{
    const ReferenceResult result = propose(addressOfText(text("10.0.0.1")), wanted, rejects);
    return QStringLiteral("%1/%2").arg(result.found.size()).arg(result.asked.size());
}

} // namespace

class IPProposalTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldProposeTheNextAddress();
    void shouldProposeTwoConsecutiveAddresses();
    void shouldSkipRejectedCandidates();
    void shouldContinueAtTwoAfterACarry();
    void shouldCorrectOctets_data();
    void shouldCorrectOctets();
    void shouldGiveUpAfter257Refusals();
    void shouldShareTheCountOfRejections();
    void shouldProposeNothingWhenNothingIsWanted();
    void shouldMatchTheReference();
};

void IPProposalTest::shouldProposeTheNextAddress()
{
    QCOMPARE(proposed("192.168.1.20", 1), text("192.168.1.21"));
    QCOMPARE(proposed("127.0.0.1", 1), text("127.0.0.2"));
}

void IPProposalTest::shouldProposeTwoConsecutiveAddresses()
{
    QCOMPARE(proposed("192.168.1.20", 2), text("192.168.1.21 192.168.1.22"));
    QCOMPARE(proposed("192.168.1.254", 2), text("192.168.1.255 192.168.2.2"));
}

void IPProposalTest::shouldSkipRejectedCandidates()
{
    const auto rejects = [](quint32 address) { return address % 10 != 0; };
    const ReferenceResult result = propose(20, 2, rejects);
    QCOMPARE(result.asked.first(), quint32{0xC0000015}); // 192.0.0.21
    QCOMPARE(result.found.size(), 2);
    QCOMPARE(result.found.at(1) - result.found.at(0), quint32{10});
}

void IPProposalTest::shouldContinueAtTwoAfterACarry()
{
    QCOMPARE(proposed("192.168.1.255", 1), text("192.168.2.2"));
    QCOMPARE(proposed("192.168.255.255", 1), text("192.168.1.2"));
    QCOMPARE(proposed("192.168.1.253", 1, rejectsRows({2})), text("192.168.2.2"));
}

void IPProposalTest::shouldCorrectOctets_data()
{
    QTest::addColumn<QString>("base");
    QTest::addColumn<QString>("proposal");

    QTest::newRow("second 255") << text("10.255.3.4") << text("10.1.3.5");
    QTest::newRow("second 254") << text("10.254.3.4") << text("10.254.3.5");
    QTest::newRow("second 0") << text("10.0.3.4") << text("10.0.3.5");
    QTest::newRow("first 0") << text("0.2.3.4") << text("192.2.3.5");
    QTest::newRow("first 255") << text("255.2.3.4") << text("192.2.3.5");
    QTest::newRow("first 254") << text("254.2.3.4") << text("254.2.3.5");
    QTest::newRow("third 255") << text("10.2.255.4") << text("10.2.255.5");
    QTest::newRow("fourth 0") << text("10.2.3.0") << text("10.2.3.1");
    QTest::newRow("all 255") << text("255.255.255.255") << text("192.1.1.2");
    QTest::newRow("all 0") << text("0.0.0.0") << text("192.0.0.1");
}

void IPProposalTest::shouldCorrectOctets()
{
    QFETCH(QString, base);
    QFETCH(QString, proposal);
    QCOMPARE(proposed(qPrintable(base), 1), proposal);
}

void IPProposalTest::shouldGiveUpAfter257Refusals()
{
    QCOMPARE(effort(1, rejectsEverything), text("0/257"));
    QCOMPARE(effort(1, rejectsRows({256})), text("1/257"));
    QCOMPARE(effort(1, rejectsRows({257})), text("0/257"));
    QCOMPARE(effort(1, rejectsRows({0})), text("1/1"));
}

void IPProposalTest::shouldShareTheCountOfRejections()
{
    // The search for the second address ends at its first rejection.
    QCOMPARE(effort(2, rejectsEverything), text("0/258"));
    QCOMPARE(effort(2, rejectsRows({257})), text("1/258"));
    QCOMPARE(effort(2, rejectsRows({258})), text("0/258"));
    // 256 rejections before the first address and one after it.
    QCOMPARE(effort(2, rejectsRows({256})), text("1/258"));
    QCOMPARE(effort(2, rejectsRows({256, 0})), text("2/258"));
    QCOMPARE(effort(2, rejectsRows({100, 156})), text("2/258"));
    QCOMPARE(effort(2, rejectsRows({100, 157})), text("1/258"));
    QCOMPARE(effort(2, rejectsRows({0, 256})), text("2/258"));
    QCOMPARE(effort(2, rejectsRows({0, 257})), text("1/258"));
}

void IPProposalTest::shouldProposeNothingWhenNothingIsWanted()
{
    QCOMPARE(effort(0, rejectsNothing), text("0/0"));
    QCOMPARE(effort(-1, rejectsNothing), text("0/0"));
}

void IPProposalTest::shouldMatchTheReference()
{
    const quint32 first = firstSeed();
    qInfo("TSA_SEED=%u and the %d after it", first, kRandomSearches - 1);
    qint64 questions = 0;
    for (int i = 0; i < kRandomSearches; ++i) {
        const quint32 seed = first + static_cast<quint32>(i);
        QRandomGenerator random(seed);
        const RandomRejection rejection(random);
        const quint32 base = randomAddress(random);
        const int wanted = 1 + random.bounded(2);
        const ReferenceResult expected = referenceProposals(base, wanted, rejection.rejects);
        const ReferenceResult actual = propose(base, wanted, rejection.rejects);
        questions += actual.asked.size();
        if (actual.found != expected.found || actual.asked != expected.asked) {
            QFAIL(qPrintable(QStringLiteral("TSA_SEED=%1: %2 from %3, rejected: %4\n%5\nnot %6")
                                 .arg(QString::number(seed), QString::number(wanted),
                                      addressText(base), rejection.name, texts(actual.found),
                                      texts(expected.found))));
        }
    }
    QVERIFY(questions > kRandomSearches);
}

TSA_APPLESS_TEST_MAIN(IPProposalTest)
#include "tst_ipproposal.moc"
