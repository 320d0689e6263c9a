#include "tests/workbench/NetworkUnderTest.h"

#include <QHash>

#include <memory>
#include <vector>

/// Reports that come in another order than the host would wish.
class NetworkReportsTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldNotTakeBackWhatAProcessorHasNotDoneYet();
    void shouldAddProcessorsByTheirAddresses();

private:
    const TestSettings m_settings;
};

void NetworkReportsTest::shouldNotTakeBackWhatAProcessorHasNotDoneYet()
{
    NetworkUnderTest test(1);
    test.workbench.store().addProcessors(QUuid(), QList<quint32>{kStranger});
    Stranger stranger(kStranger, test.simulator.port());
    DeviceState state = named("Before");
    stranger.byDatagram = [&](quint32 token) {
        return QByteArrayList{encode(StateMessage{token, state})};
    };
    int probes = 0;
    quint32 asked = 0;
    stranger.onMessage = [&](const Message& message) {
        const auto* probe = std::get_if<ProbeMessage>(&message);
        if (!probe)
            return;
        ++probes;
        if (probe->token == 0)
            stranger.say(StateMessage{0, state});
        else
            asked = probe->token;
    };
    test.detect();
    const QUuid id = test.at(kStranger).id;
    QTRY_VERIFY(probes > 1);

    // It reports its former state several times before it gets to what it is told.
    QStringList seen;
    QObject::connect(&test.workbench.store(), &ProjectStore::changed, &stranger, [&] {
        seen.append(test.at(kStranger).name
                    + (test.isLit(kStranger) ? QStringLiteral(" lit") : QStringLiteral(" dark")));
        seen.removeDuplicates();
    });
    test.workbench.store().setFrontPanel(id, true);
    QVERIFY(test.workbench.store().renameProcessor(id, QStringLiteral("After")));
    const int before = probes;
    QTRY_VERIFY(probes > before + 5);
    const QStringList wanted{QStringLiteral("Before lit"), QStringLiteral("After lit")};
    QCOMPARE(seen, wanted);
    state = named("After");
    state.lit = true;
    state.outputs = 33;
    QVERIFY(asked != 0);
    stranger.say(StateMessage{asked, state});
    QTRY_COMPARE(test.at(kStranger).hostAttribute11, 33);
    QCOMPARE(seen, wanted);

    // From then on it has the last word again.
    state.lit = false;
    stranger.say(StateMessage{0, state});
    QTRY_VERIFY(!test.isLit(kStranger));
}

void NetworkReportsTest::shouldAddProcessorsByTheirAddresses()
{
    NetworkUnderTest test(1, kDetectByAddress);
    QList<quint32> addresses;
    for (quint32 at = 0; at < 9; ++at)
        addresses.append(kStranger + at);
    std::vector<std::unique_ptr<Stranger>> strangers;
    QHash<int, quint32> tokens;
    for (const quint32 address : qAsConst(addresses)) {
        const int at = static_cast<int>(strangers.size());
        strangers.push_back(std::make_unique<Stranger>(address, test.simulator.port()));
        // The last one that is asked answers for all, from the last to the first.
        strangers.back()->byDatagram = [&, at](quint32 token) -> QByteArrayList {
            tokens.insert(at, token);
            for (int other = addresses.size() - 1; tokens.size() == addresses.size() && other >= 0;
                 --other)
                strangers[static_cast<std::size_t>(other)]->answer(
                    encode(StateMessage{token, named("Stranger")}));
            return {};
        };
    }
    test.workbench.store().changeIpList([&](IpList& list) {
        list = IpList();
        for (const quint32 address : qAsConst(addresses))
            list.append({address, QString()});
        return true;
    });
    test.detect();
    QList<quint32> found;
    const Project project = test.project();
    for (const ProcessorNode& node : project.processors)
        found.append(node.ipAddress);
    QCOMPARE(found, addresses);
}

TSA_TEST_MAIN(NetworkReportsTest)

#include "tst_network_reports.moc"
