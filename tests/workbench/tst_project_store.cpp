#include "host/workbench/events/Notifier.h"
#include "host/workbench/project/Guid.h"
#include "host/workbench/store/ProjectStore.h"
#include "host/workbench/trace/TraceModel.h"
#include "tests/support/WarningTrap.h"
#include "tests/workbench/RecordingObserver.h"
#include "tests/workbench/SampleRecords.h"

#include <QSignalSpy>
#include <QTest>

Q_DECLARE_METATYPE(Notifier::Delivery)

/// A store whose events are recorded, delivered either way.
class StoreUnderTest final
{
public:
    explicit StoreUnderTest(Notifier::Delivery delivery)
    {
        m_notifier.setObserver(&observer);
        m_notifier.setDelivery(delivery);
        store.replace(smallProject());
        settle();
        observer.clear();
    }
    ~StoreUnderTest() { m_notifier.stop(); }
    StoreUnderTest(const StoreUnderTest&) = delete;
    StoreUnderTest& operator=(const StoreUnderTest&) = delete;

    /// The events since the last call.
    QString events()
    {
        settle();
        QString numbers = observer.numbers();
        observer.clear();
        return numbers;
    }

    /// The entries of the IP list, parted by blanks.
    QString ipTexts() const
    {
        QStringList texts;
        const IpList list = store.snapshot().ipList;
        for (const IpEntry& entry : list.entries())
            texts.append(ipEntryText(entry));
        return texts.join(QLatin1Char(' '));
    }

    RecordingObserver observer;

private:
    void settle()
    {
        QVERIFY(QTest::qWaitFor([this] { return m_notifier.isIdle(); }));
    }

    TraceModel m_trace;
    Notifier m_notifier{m_trace};

public:
    ProjectStore store{m_notifier};
};

class ProjectStoreTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldRaiseTheEventsOfEachChange_data();
    void shouldRaiseTheEventsOfEachChange();
    void shouldAnswerFromInsideADelivery_data() { shouldRaiseTheEventsOfEachChange_data(); }
    void shouldAnswerFromInsideADelivery();
    void shouldAllowChangesInsideADelivery();
    void shouldRaiseNothingWhenNothingChanges();
    void shouldReportWhetherItIsModified();
    void shouldKeepTheCurrentProcessorAnnouncedWhenItMoves();
    void shouldMergeOnlineAddresses();
    void shouldAddAsManyOnlineAddressesAsFit();
    void shouldKnowTheAddressesOfProcessors();
    void shouldReplaceAnswers();
};

void ProjectStoreTest::shouldRaiseTheEventsOfEachChange_data()
{
    QTest::addColumn<Notifier::Delivery>("delivery");
    QTest::newRow("notifying thread") << Notifier::Delivery::NotifyingThread;
    QTest::newRow("GUI thread") << Notifier::Delivery::GuiThread;
}

void ProjectStoreTest::shouldRaiseTheEventsOfEachChange()
{
    QFETCH(Notifier::Delivery, delivery);
    StoreUnderTest test(delivery);
    ProjectStore& store = test.store;
    const auto processor = [&](quint32 n) { return *store.snapshot().processor(sampleId(n)); };

    store.addProcessors(sampleId(1), 1);
    QCOMPARE(test.events(), QStringLiteral("18"));
    store.addProcessors(QUuid(), 2);
    QCOMPARE(test.events(), QStringLiteral("19"));
    store.addProcessors(sampleId(2), QList<quint32>{0x0A000009});
    QCOMPARE(test.events(), QStringLiteral("18"));
    QCOMPARE(store.snapshot().processors.size(), 8);
    ProcessorGroupNode group;
    group.id = sampleId(3);
    QCOMPARE(store.addGroup(group), sampleId(3));
    QCOMPARE(test.events(), QStringLiteral("17"));

    QVERIFY(store.renameProcessor(sampleId(12), QStringLiteral("New")));
    QCOMPARE(test.events(), QStringLiteral("26"));
    QCOMPARE(processor(12).name, QStringLiteral("New"));
    store.renameGroup(sampleId(1), QStringLiteral("By the panel"), false);
    QCOMPARE(test.events(), QString());
    store.renameGroup(sampleId(1), QStringLiteral("By the host"), true);
    QCOMPARE(test.events(), QStringLiteral("16 30"));
    QCOMPARE(store.snapshot().groups.first().name, QStringLiteral("By the host"));

    store.regroup({sampleId(12)}, sampleId(2));
    QCOMPARE(test.events(), QStringLiteral("20 18"));
    store.regroup({sampleId(12), sampleId(13)}, QUuid());
    QCOMPARE(test.events(), QStringLiteral("21 19"));
    store.storeMembership({sampleId(12), sampleId(13)}, sampleId(1));
    QCOMPARE(test.events(), QStringLiteral("25 25"));
    QCOMPARE(processor(13).groupId, sampleId(1));

    store.setOnline({sampleId(12), sampleId(13)}, true);
    QCOMPARE(test.events(), QStringLiteral("25 25"));
    store.setMonitorWarning({sampleId(12), sampleId(13)}, true);
    QCOMPARE(test.events(), QStringLiteral("39"));
    QVERIFY(processor(13).hostFlag17);
    store.setRedundancyMode({sampleId(14)}, 2);
    QCOMPARE(test.events(), QStringLiteral("25"));
    QCOMPARE(processor(14).redundancyMode, 2);
    store.setAddress(sampleId(14), 0x0A000063);
    QCOMPARE(test.events(), QStringLiteral("25"));
    QVERIFY(processor(14).reachedByIp);
    store.setAddress(sampleId(14), kNoProcessorAddress);
    QCOMPARE(test.events(), QStringLiteral("25"));
    QVERIFY(!processor(14).reachedByIp);
    store.markFound({sampleId(12), sampleId(14)});
    QCOMPARE(test.events(), QStringLiteral("39"));

    store.setCurrentProcessor(sampleId(14));
    QCOMPARE(test.events(), QStringLiteral("30"));
    store.setDetectStrategy(2);
    QCOMPARE(test.events(), QStringLiteral("0"));
    store.setLanUsb(true, {0x0A000001});
    QCOMPARE(test.events(), QStringLiteral("29"));
    store.setDeviceSets({DeviceSet{{toGuid(sampleId(100)), 0, 0}, QStringLiteral("Set")}},
                        toGuid(sampleId(100)));
    QCOMPARE(test.events(), QStringLiteral("1"));

    store.removeProcessors({sampleId(12)});
    QCOMPARE(test.events(), QStringLiteral("20"));
    store.removeProcessors({sampleId(13), sampleId(14)});
    QCOMPARE(test.events(), QStringLiteral("21 30"));
    QCOMPARE(store.snapshot().currentProcessor, sampleId(11));
    store.ungroup(sampleId(1));
    QCOMPARE(test.events(), QStringLiteral("20"));
    store.replace(Project());
    QCOMPARE(test.events(), QStringLiteral("16 1 0 29 30"));
}

void ProjectStoreTest::shouldAnswerFromInsideADelivery()
{
    QFETCH(Notifier::Delivery, delivery);
    StoreUnderTest test(delivery);
    QString seen;
    test.observer.inside = [&](const CSubject& subject) {
        const QUuid id = std::get<0>(subject.GetArgument<QUuid>());
        seen = test.store.snapshot().processor(id)->name;
    };
    test.store.addProcessors(QUuid(), 1);
    QCOMPARE(test.events(), QStringLiteral("18"));
    QCOMPARE(seen, QStringLiteral("Processor 5"));
}

void ProjectStoreTest::shouldAllowChangesInsideADelivery()
{
    StoreUnderTest test(Notifier::Delivery::GuiThread);
    test.observer.inside = [&](const CSubject& subject) {
        if (subject.GetEvent() == 20)
            test.store.storeMembership({sampleId(13)}, QUuid());
    };
    test.store.removeProcessors({sampleId(12)});
    QCOMPARE(test.events(), QStringLiteral("20 25"));
    QVERIFY(test.store.snapshot().processor(sampleId(13))->groupId.isNull());
}

void ProjectStoreTest::shouldRaiseNothingWhenNothingChanges()
{
    StoreUnderTest test(Notifier::Delivery::GuiThread);
    const QSignalSpy changed(&test.store, &ProjectStore::changed);
    test.store.removeProcessors({sampleId(99)});
    test.store.ungroup(sampleId(99));
    test.store.setCurrentProcessor(sampleId(11));
    test.store.setCurrentProcessor(sampleId(99));
    test.store.setOnline({sampleId(11)}, false);
    test.store.regroup({sampleId(11)}, sampleId(1));
    test.store.storeMembership({sampleId(11)}, sampleId(1));
    QVERIFY(!test.store.renameProcessor(sampleId(99), QStringLiteral("X")));
    QVERIFY(test.store.addProcessors(QUuid(), 0).isEmpty());
    QCOMPARE(test.events(), QString());
    QCOMPARE(changed.count(), 0);
    QVERIFY(!test.store.isModified());
}

void ProjectStoreTest::shouldReportWhetherItIsModified()
{
    StoreUnderTest test(Notifier::Delivery::GuiThread);
    QVERIFY(!test.store.isModified());
    test.store.addProcessors(QUuid(), 1);
    QVERIFY(test.store.isModified());
    test.store.markSaved();
    QVERIFY(!test.store.isModified());
    test.store.changeIpList([](IpList&) { return false; });
    QVERIFY(!test.store.isModified());
    test.store.changeIpList([](IpList& list) {
        return list.append({0x0A000005, QString()}) == IpRefusal::None;
    });
    QVERIFY(test.store.isModified());
    test.store.replace(Project());
    QVERIFY(!test.store.isModified());
}

void ProjectStoreTest::shouldKeepTheCurrentProcessorAnnouncedWhenItMoves()
{
    StoreUnderTest test(Notifier::Delivery::GuiThread);
    test.store.regroup({sampleId(11)}, sampleId(2));
    QCOMPARE(test.events(), QStringLiteral("20 18 30"));
}

void ProjectStoreTest::shouldMergeOnlineAddresses()
{
    StoreUnderTest test(Notifier::Delivery::GuiThread);
    QCOMPARE(test.store.mergeOnlineAddresses(), 0xE0831034U);
    test.store.setOnline({sampleId(11), sampleId(14)}, true);
    QCOMPARE(test.store.mergeOnlineAddresses(), 0U);
    QCOMPARE(test.ipTexts(), QStringLiteral("10.0.0.1(P11)"));
    test.store.setOnline({sampleId(12)}, true);
    QCOMPARE(test.store.mergeOnlineAddresses(), 0U);
    QCOMPARE(test.ipTexts(), QStringLiteral("10.0.0.1(P11) 10.0.0.2(P12)"));
    test.store.setAddress(sampleId(11), kNoProcessorAddress);
    test.store.setAddress(sampleId(12), kNoProcessorAddress);
    QCOMPARE(test.store.mergeOnlineAddresses(), 0xE0831034U);
}

void ProjectStoreTest::shouldAddAsManyOnlineAddressesAsFit()
{
    StoreUnderTest test(Notifier::Delivery::GuiThread);
    test.store.setOnline({sampleId(11), sampleId(12)}, true);
    test.store.changeIpList([](IpList& list) {
        for (quint32 n = 0; n < 254; ++n)
            list.append({0x0B000001 + n, QString()});
        return true;
    });
    QCOMPARE(test.store.mergeOnlineAddresses(), 0xE0831028U);
    QCOMPARE(test.store.snapshot().ipList.size(), 255);
    QCOMPARE(test.store.snapshot().ipList.entries().last().address, 0x0A000001U);
    // A full list that has them all is complete.
    test.store.changeIpList([](IpList& list) { return list.remove(0x0B000001); });
    QCOMPARE(test.store.mergeOnlineAddresses(), 0U);
    QCOMPARE(test.store.mergeOnlineAddresses(), 0U);
}

void ProjectStoreTest::shouldKnowTheAddressesOfProcessors()
{
    StoreUnderTest test(Notifier::Delivery::GuiThread);
    QCOMPARE(test.store.processorAddresses(), (QSet<quint32>{0x0A000001, 0x0A000002}));
    test.store.setAddress(sampleId(13), 0x0A000007);
    QVERIFY(test.store.processorAddresses().contains(0x0A000007));
    test.store.removeProcessors({sampleId(11)});
    QVERIFY(!test.store.processorAddresses().contains(0x0A000001));
    test.store.replace(Project());
    QVERIFY(test.store.processorAddresses().isEmpty());
}

void ProjectStoreTest::shouldReplaceAnswers()
{
    StoreUnderTest test(Notifier::Delivery::GuiThread);
    HandlerAnswers answers = test.store.snapshot().answers;
    answers.selectionMode = 2;
    test.store.setAnswers(answers);
    QCOMPARE(test.events(), QString());
    answers.detectStrategy = 2;
    answers.lanUsbMode = true;
    test.store.setAnswers(answers);
    QCOMPARE(test.events(), QStringLiteral("0 29"));
    QCOMPARE(test.store.snapshot().answers.selectionMode, 2);
}

TSA_GUILESS_TEST_MAIN(ProjectStoreTest)
#include "tst_project_store.moc"
