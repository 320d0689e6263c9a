#include "tests/plugin/Bridge.h"
#include "tests/support/LogTrap.h"

#include <QSignalSpy>

/// Events that the host should not have raised.
class BridgeNonsenseTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Bridge::addThreads(); }

    void shouldIgnoreOtherNumbers();
    void shouldLogWrongArgumentTypesAndGoOn();
    void shouldStandNonsense();
};

void BridgeNonsenseTest::shouldIgnoreOtherNumbers()
{
    Bridge bridge;
    bridge.panel.host().setProject({testGroup(100)}, {testProcessor(1)});
    bridge.notify(16);
    QTRY_COMPARE(bridge.panel.dump(), QStringLiteral("All processors(1)[G100[],1]"));
    bridge.panel.host().setProject({}, {});
    bridge.panel.host().clearCalls();

    QList<quint32> numbers{22, 23, 24, 27, 28, 38, 40, 41, 255, 256, 1000, 0x80000000, 0xFFFFFFFF};
    for (quint32 number = 2; number <= 15; ++number)
        numbers.append(number);
    for (quint32 number = 31; number <= 36; ++number)
        numbers.append(number);
    for (const quint32 number : qAsConst(numbers)) {
        bridge.notify(number);
        bridge.notify<QUuid>(number, testId(1));
    }
    bridge.notify<int>(0, 5);

    QTRY_COMPARE(bridge.panel.area().detectStrategy(), 5);
    QCOMPARE(bridge.panel.host().callNames(), QStringList());
    QCOMPARE(bridge.panel.dump(), QStringLiteral("All processors(1)[G100[],1]"));
}

void BridgeNonsenseTest::shouldLogWrongArgumentTypesAndGoOn()
{
    Bridge bridge;
    const LogTrap log;
    bridge.panel.host().setProject({testGroup(100)}, {testProcessor(1, 100)});
    bridge.notify(16);
    bridge.notify<int>(0, 4);
    QTRY_COMPARE(bridge.panel.area().detectStrategy(), 4);
    bridge.panel.host().clearCalls();
    QSignalSpy resets(&bridge.panel.model(), &QAbstractItemModel::modelReset);

    for (const quint32 number : {0U, 1U, 17U, 18U, 19U, 20U, 21U, 25U, 26U, 39U})
        bridge.notify<QString>(number, QStringLiteral("nonsense"));

    // A strategy of 0, an empty list of processors and null identities.
    QTRY_COMPARE(bridge.panel.area().detectStrategy(), 0);
    QCOMPARE(resets.count(), 1);
    QCOMPARE(bridge.panel.dump(), QStringLiteral("All processors(1)[G100[1]]"));
    const std::vector<LogRecord> records = log.records();
    QCOMPARE(records.size(), std::size_t(10));
    for (const LogRecord& record : records) {
        QCOMPARE(record.line, 133);
        QCOMPARE(record.function, std::string("GetArgument"));
        QCOMPARE(record.message, std::string("CSubject::GetArgument:bad type cast!"));
    }
}

void BridgeNonsenseTest::shouldStandNonsense()
{
    Bridge bridge;
    QList<ProcessorNode> many;
    for (quint32 n = 1; n <= 300; ++n)
        many.append(testProcessor(n, n % 3 == 0 ? 1000 : 0));
    many[0].name = QString(10000, QChar(0x5904));
    bridge.panel.host().setProject({testGroup(1000, QString(10000, QLatin1Char('g')))}, many);

    bridge.notify(16);
    QTRY_COMPARE(bridge.panel.model().getAllProcessorCount(), 300);

    // A processor whose group comes later is not added; it is when it is announced again.
    bridge.panel.host().setGroup(testGroup(2000));
    bridge.panel.host().setProcessor(testProcessor(400, 2000));
    bridge.notify<QUuid>(18, testId(400));
    QCOMPARE(bridge.panel.model().getAllProcessorCount(), 300);
    bridge.notify<QUuid>(17, testId(2000));
    bridge.notify<QUuid>(18, testId(400));
    QCOMPARE(bridge.panel.model().getAllProcessorCount(), 301);

    // Unknown and repeated identities.
    bridge.notify<QList<QUuid>>(19, {testId(7), testId(7), testId(9999), testId(9999)});
    bridge.notify<QList<QUuid>>(21, {testId(7), testId(7), testId(9998), QUuid()});
    bridge.notify<QUuid>(20, QUuid());
    bridge.notify<QUuid>(25, QUuid());
    bridge.notify<QList<QUuid>>(39, {QUuid(), testId(9998), testId(7)});
    bridge.notify<int>(0, 11);
    QTRY_COMPARE(bridge.panel.area().detectStrategy(), 11);
    QVERIFY(!bridge.panel.model().getItem(testId(7)));
}

TSA_TEST_MAIN(BridgeNonsenseTest)

#include "tst_bridgenonsense.moc"
