#include "tests/contract/FoundBreaches.h"
#include "tests/packaging/LibraryHost.h"

#include <QTest>

namespace {

/// A host with a project that the tree shows.
class FilledHost final
{
public:
    FilledHost()
    {
        if (!host.open())
            qFatal("the library is not there");
        host.handler().setProject({group(100)}, {processor(1, 100), processor(2)});
        host.notify(16);
    }

    LibraryHost host;
};

} // namespace

/// What the contract checks say of events that a host tells wrongly.
class TestContractEvents final : public QObject
{
    Q_OBJECT

private slots:
    void shouldTellAnEventBeforeInitialize();
    void shouldNameTheTypesOfAnArgument();
    void shouldNameTheTypesOfAnArgument_data();
    void shouldTellANumberWithoutMeaning();
    void shouldTellAnEventAboutNoRow();
    void shouldTellAnEventAboutNoRow_data();
    void shouldTellAnAdditionOfWhatIsThere();
    void shouldSayNothingOfWhatAFillHasShown();
    void shouldTellNullAndRepeatedIdentities();
    void shouldTellAnIdentityThatTheHostDoesNotKnow();
    void shouldTellARecordOfAnotherIdentity();
    void shouldTellWhatIsRemovedAndStillKnown();
    void shouldTellAProcessorOfAnUnknownGroup();
    void shouldTellAnEventThatHadToWait();
    void shouldSayNothingOfALayerOperationThatHadToWait();
};

void TestContractEvents::shouldTellAnEventBeforeInitialize()
{
    LibraryHost first;
    QVERIFY(first.open());
    CObserver* const observer = first.handler().observer;
    first.closeWindow();

    FoundBreaches found;
    QWidget window;
    IAbstractLayerInterface* layer = nullptr;
    QVERIFY(Library::init()(&layer, &window));
    CSubject subject;
    subject.Attach(observer);
    subject.Notify(16);
    QVERIFY(found.line(QStringLiteral("TSA-E04")).contains(QStringLiteral("event 16")));
}

void TestContractEvents::shouldNameTheTypesOfAnArgument_data()
{
    QTest::addColumn<int>("given");
    QTest::addColumn<QString>("line");
    QTest::newRow("text") << 0 << QStringLiteral("event 18 expects QUuid, got QString");
    QTest::newRow("number") << 1 << QStringLiteral("event 18 expects QUuid, got int");
    QTest::newRow("none") << 2 << QStringLiteral("event 18 expects QUuid, got nothing");
    QTest::newRow("vector") << 3
                            << QStringLiteral("event 21 expects QList<QUuid>, got QVector<QUuid>");
    QTest::newRow("short") << 4
                           << QStringLiteral("event 26 expects QUuid, SPrjProcessor, got QUuid");
    QTest::newRow("many") << 5 << QStringLiteral("event 16 expects nothing, got QUuid");
    QTest::newRow("unknown") << 6 << QStringLiteral("event 0 expects int, got an unknown type");
}

void TestContractEvents::shouldNameTheTypesOfAnArgument()
{
    QFETCH(int, given);
    QFETCH(QString, line);
    FoundBreaches found;
    FilledHost filled;
    LibraryHost& host = filled.host;
    switch (given) {
    case 0:
        host.notify<QString>(18, QStringLiteral("1"));
        break;
    case 1:
        host.notify<int>(18, 1);
        break;
    case 2:
        host.notify(18);
        break;
    case 3:
        host.notify<QVector<QUuid>>(21, {identity(1)});
        break;
    case 4:
        host.notify<QUuid>(26, identity(1));
        break;
    case 5:
        host.notify<QUuid>(16, identity(1));
        break;
    default:
        host.notify<LibraryHost*>(0, &host);
        break;
    }
    const QString told = found.line(QStringLiteral("TSA-E13"));
    QVERIFY2(told.contains(line), qPrintable(told));
    QVERIFY(told.contains(QStringLiteral("thread 0x")));
}

void TestContractEvents::shouldTellANumberWithoutMeaning()
{
    FoundBreaches found;
    FilledHost filled;
    filled.host.notify<QUuid>(24, identity(1));
    filled.host.notify(4711);
    const QStringList lines = found.lines(QStringLiteral("TSA-W14"));
    QCOMPARE(lines.size(), 2);
    QVERIFY(lines.at(0).contains(QStringLiteral("got 24")));
    QVERIFY(lines.at(1).contains(QStringLiteral("got 4711")));
}

void TestContractEvents::shouldTellAnEventAboutNoRow_data()
{
    QTest::addColumn<int>("number");
    for (const int number : {20, 21, 25, 26, 39})
        QTest::addRow("%d", number) << number;
}

void TestContractEvents::shouldTellAnEventAboutNoRow()
{
    QFETCH(int, number);
    FoundBreaches found;
    FilledHost filled;
    LibraryHost& host = filled.host;
    const auto event = static_cast<quint32>(number);
    if (number == 26)
        host.notify<QUuid, SPrjProcessor>(event, identity(7), SPrjProcessor());
    else if (number == 21 || number == 39)
        host.notify<QList<QUuid>>(event, {identity(7)});
    else
        host.notify<QUuid>(event, identity(7));
    QTRY_VERIFY(found.has(QStringLiteral("TSA-W15")));
    const QString line = found.line(QStringLiteral("TSA-W15"));
    QVERIFY2(line.contains(identity(7).toString()), qPrintable(line));
    QVERIFY2(line.contains(QStringLiteral("[event %1").arg(number)), qPrintable(line));
}

void TestContractEvents::shouldTellAnAdditionOfWhatIsThere()
{
    FoundBreaches found;
    FilledHost filled;
    QTRY_COMPARE(filled.host.tree(), QStringLiteral("G100[1],2"));
    filled.host.notify<QUuid>(18, identity(2));
    filled.host.notify<QUuid>(17, identity(100));
    QCOMPARE(found.lines(QStringLiteral("TSA-W16")).size(), 2);
}

/// The fill of an event 16 is late, and already shows what the same thread tells next.
void TestContractEvents::shouldSayNothingOfWhatAFillHasShown()
{
    FoundBreaches found;
    FilledHost filled;
    LibraryHost& host = filled.host;
    QTRY_COMPARE(host.tree(), QStringLiteral("G100[1],2"));
    HostThread teller;
    CSubject subject;
    subject.Attach(host.handler().observer);
    QVERIFY(comesBack(teller.post([&] {
        subject.Notify(16);
        host.handler().setProject({group(100)}, {processor(1, 100)});
        subject.Notify<QUuid>(20, identity(2));
    })));
    QTRY_COMPARE(host.tree(), QStringLiteral("G100[1]"));

    QVERIFY(comesBack(teller.post([&] { subject.Notify(16); })));
    host.handler().setProject({group(100)}, {processor(1, 100), processor(3)});
    subject.Notify<QUuid>(18, identity(3));
    QCOMPARE(host.tree(), QStringLiteral("G100[1],3"));
    QCOMPARE(found.codes().join(QLatin1Char(' ')), QString());
}

void TestContractEvents::shouldTellNullAndRepeatedIdentities()
{
    FoundBreaches found;
    FilledHost filled;
    LibraryHost& host = filled.host;
    host.notify<QUuid>(25, QUuid());
    QVERIFY(found.line(QStringLiteral("TSA-E19")).contains(QStringLiteral("event 25")));
    host.notify<QList<QUuid>>(39, {identity(1), identity(1)});
    QVERIFY(found.line(QStringLiteral("TSA-E20")).contains(QStringLiteral("event 39")));
}

void TestContractEvents::shouldTellAnIdentityThatTheHostDoesNotKnow()
{
    FoundBreaches found;
    FilledHost filled;
    filled.host.notify<QUuid>(18, identity(3));
    const QString line = found.line(QStringLiteral("TSA-W17"));
    QVERIFY2(line.contains(QStringLiteral("GetProcessorNode")), qPrintable(line));
    QVERIFY2(line.contains(identity(3).toString()), qPrintable(line));
    QVERIFY2(line.contains(QStringLiteral("event 18")), qPrintable(line));
}

void TestContractEvents::shouldTellARecordOfAnotherIdentity()
{
    FoundBreaches found;
    FilledHost filled;
    filled.host.handler().answerProcessor = processor(9);
    filled.host.notify<QUuid>(25, identity(2));
    const QString line = found.line(QStringLiteral("TSA-E18"));
    QVERIFY2(line.contains(identity(9).toString()), qPrintable(line));
    QVERIFY2(line.contains(identity(2).toString()), qPrintable(line));
}

void TestContractEvents::shouldTellWhatIsRemovedAndStillKnown()
{
    FoundBreaches found;
    FilledHost filled;
    filled.host.notify<QUuid>(20, identity(2));
    QVERIFY(found.line(QStringLiteral("TSA-E21")).contains(QStringLiteral("GetProcessorNode")));
    filled.host.notify<QList<QUuid>>(21, {identity(100)});
    QCOMPARE(found.lines(QStringLiteral("TSA-E21")).size(), 2);
    QVERIFY(found.lines(QStringLiteral("TSA-E21")).at(1).contains(QStringLiteral("GetGroupNode")));
    QVERIFY(!found.has(QStringLiteral("TSA-W17")));
}

void TestContractEvents::shouldTellAProcessorOfAnUnknownGroup()
{
    FoundBreaches found;
    FilledHost filled;
    filled.host.handler().setProject({group(100)}, {processor(1, 100), processor(5, 55)});
    filled.host.notify<QUuid>(18, identity(5));
    const QString line = found.line(QStringLiteral("TSA-W22"));
    QVERIFY2(line.contains(identity(55).toString()), qPrintable(line));
}

void TestContractEvents::shouldTellAnEventThatHadToWait()
{
    FoundBreaches found;
    FilledHost filled;
    LibraryHost& host = filled.host;
    host.handler().setProject({group(100)}, {processor(1, 100), processor(2), processor(3)});
    HostThread teller;
    host.handler().doInside(QStringLiteral("DetectAllDevices"), [&] {
        const auto told = teller.post([&] {
            CSubject subject;
            subject.Attach(host.handler().observer);
            subject.Notify<QUuid>(18, identity(3));
        });
        QVERIFY(comesBack(told));
    });
    host.area()->DetectDevices();
    const QString line = found.line(QStringLiteral("TSA-W24"));
    QVERIFY2(line.contains(QStringLiteral("inside a question")), qPrintable(line));
    QVERIFY2(line.contains(QStringLiteral("event 18")), qPrintable(line));
}

void TestContractEvents::shouldSayNothingOfALayerOperationThatHadToWait()
{
    FoundBreaches found;
    FilledHost filled;
    LibraryHost& host = filled.host;
    QTRY_COMPARE(host.tree(), QStringLiteral("G100[1],2"));
    QString during;
    host.handler().doInside(QStringLiteral("GetAllProcessorNodes"), [&] {
        host.area()->RemoveAllGroups();
        during = host.tree();
    });
    host.notify(16);
    QTRY_COMPARE(host.tree(), QStringLiteral("2"));
    QVERIFY(during.contains(QStringLiteral("G100")));
    QCOMPARE(found.lines(QStringLiteral("TSA-W24")), QStringList());
}

TSA_TEST_MAIN(TestContractEvents)

#include "tst_contractevents.moc"
