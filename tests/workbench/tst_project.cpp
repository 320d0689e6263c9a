#include "host/workbench/addresses/AddressTexts.h"
#include "tests/support/WarningTrap.h"
#include "tests/workbench/SampleRecords.h"

#include <QTest>

#include <limits>

class ProjectTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldGiveAddedProcessorsTheNextNumbers();
    void shouldNumberProcessorsUpToTheLastNumber();
    void shouldAddNoMoreThan255Processors();
    void shouldAddUnderTheRootWhenTheGroupIsUnknown();
    void shouldGiveAGroupWithATakenIdentityAnother();
    void shouldFillInTheProcessorsOfAGroup();
    void shouldMakeTheFirstProcessorCurrentWhenTheCurrentOneGoes();
    void shouldKeepProcessorsOfADissolvedGroup();
    void shouldMoveOnlyProcessorsOfOtherGroups();
    void shouldReadDottedAddresses_data();
    void shouldReadDottedAddresses();
    void shouldReadListsOfAddresses();
};

void ProjectTest::shouldGiveAddedProcessorsTheNextNumbers()
{
    Project project = smallProject();
    const QList<QUuid> added = project.addProcessors(sampleId(2), 2);
    QCOMPARE(added.size(), 2);
    QCOMPARE(project.processor(added.at(0))->number, 4);
    QCOMPARE(project.processor(added.at(1))->number, 5);
    QCOMPARE(project.processor(added.at(1))->groupId, sampleId(2));
    QCOMPARE(project.processor(added.at(1))->name, QStringLiteral("Processor 6"));
    QVERIFY(!project.processor(added.at(1))->reachedByIp);

    const QList<QUuid> withAddress = project.addProcessors(QUuid(), QList<quint32>{0x0A00000F});
    QCOMPARE(project.processor(withAddress.first())->ipAddress, 0x0A00000FU);
    QVERIFY(project.processor(withAddress.first())->reachedByIp);
}

void ProjectTest::shouldNumberProcessorsUpToTheLastNumber()
{
    const qint32 last = std::numeric_limits<qint32>::max();
    Project project = smallProject();
    project.processors.first().number = last;
    const QList<QUuid> added = project.addProcessors(QUuid(), 1);
    QCOMPARE(project.processor(added.first())->number, last);
    QCOMPARE(project.processor(added.first())->name, QStringLiteral("Processor 2147483648"));
}

void ProjectTest::shouldAddNoMoreThan255Processors()
{
    Project project;
    QCOMPARE(project.addProcessors(QUuid(), 300).size(), 255);
    QCOMPARE(project.roomForProcessors(), 0);
    QVERIFY(project.addProcessors(QUuid(), QList<quint32>{1}).isEmpty());
}

void ProjectTest::shouldAddUnderTheRootWhenTheGroupIsUnknown()
{
    Project project = smallProject();
    const QUuid id = project.addProcessors(sampleId(99), 1).constFirst();
    QVERIFY(project.processor(id)->groupId.isNull());
}

void ProjectTest::shouldGiveAGroupWithATakenIdentityAnother()
{
    Project project = smallProject();
    ProcessorGroupNode group;
    group.id = sampleId(11);
    group.name = QStringLiteral("New");
    const QUuid id = project.addGroup(group);
    QVERIFY(id != sampleId(11));
    QCOMPARE(project.group(id).name, QStringLiteral("New"));
    group.id = sampleId(77);
    QCOMPARE(project.addGroup(group), sampleId(77));
}

void ProjectTest::shouldFillInTheProcessorsOfAGroup()
{
    const Project project = smallProject();
    QCOMPARE(project.group(sampleId(1)).processors.size(), 2);
    QCOMPARE(project.allGroups().at(1).processors.first().id, sampleId(13));
    QVERIFY(project.group(sampleId(99)).id.isNull());
    QVERIFY(project.groups.first().processors.isEmpty());
}

void ProjectTest::shouldMakeTheFirstProcessorCurrentWhenTheCurrentOneGoes()
{
    Project project = smallProject();
    QCOMPARE(project.removeProcessors({sampleId(11), sampleId(99)}), QList<QUuid>{sampleId(11)});
    QCOMPARE(project.currentProcessor, sampleId(12));
    project.removeProcessors({sampleId(12), sampleId(13), sampleId(14)});
    QVERIFY(project.currentProcessor.isNull());
}

void ProjectTest::shouldKeepProcessorsOfADissolvedGroup()
{
    Project project = smallProject();
    QVERIFY(project.ungroup(sampleId(1)));
    QVERIFY(!project.ungroup(sampleId(1)));
    QCOMPARE(project.processors.size(), 4);
    QVERIFY(project.processor(sampleId(11))->groupId.isNull());
}

void ProjectTest::shouldMoveOnlyProcessorsOfOtherGroups()
{
    Project project = smallProject();
    QCOMPARE(project.regroup({sampleId(11), sampleId(13), sampleId(99)}, sampleId(2)),
             QList<QUuid>{sampleId(11)});
    QVERIFY(project.regroup({sampleId(11)}, sampleId(99)).isEmpty());
    QCOMPARE(project.regroup({sampleId(11)}, QUuid()), QList<QUuid>{sampleId(11)});
}

void ProjectTest::shouldReadDottedAddresses_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isAddress");
    QTest::newRow("plain") << QStringLiteral("192.168.0.1") << true;
    QTest::newRow("largest") << QStringLiteral("255.255.255.255") << true;
    QTest::newRow("too large") << QStringLiteral("256.0.0.1") << false;
    QTest::newRow("three parts") << QStringLiteral("10.0.1") << false;
    QTest::newRow("five parts") << QStringLiteral("10.0.0.0.1") << false;
    QTest::newRow("empty part") << QStringLiteral("10..0.1") << false;
    QTest::newRow("sign") << QStringLiteral("10.0.0.-1") << false;
    QTest::newRow("blank") << QStringLiteral("10.0.0. 1") << false;
    QTest::newRow("other digits") << QString::fromUtf8("10.0.0.١") << false;
    QTest::newRow("long part") << QStringLiteral("10.0.0.0001") << false;
    QTest::newRow("empty") << QString() << false;
}

void ProjectTest::shouldReadDottedAddresses()
{
    QFETCH(QString, text);
    QFETCH(bool, isAddress);
    quint32 address = 7;
    QCOMPARE(parseDottedAddress(text, address), isAddress);
    if (isAddress)
        QCOMPARE(dottedAddress(address), text);
    else
        QCOMPARE(address, 7U);
}

void ProjectTest::shouldReadListsOfAddresses()
{
    const auto addresses = addressesOfText(QStringLiteral(" 10.0.0.1 ,10.0.0.2, "));
    QVERIFY(addresses);
    QCOMPARE(addressesText(*addresses), QStringLiteral("10.0.0.1, 10.0.0.2"));
    QVERIFY(addressesOfText(QString())->isEmpty());
    QVERIFY(!addressesOfText(QStringLiteral("10.0.0.1; 10.0.0.2")));
}

TSA_GUILESS_TEST_MAIN(ProjectTest)
#include "tst_project.moc"
