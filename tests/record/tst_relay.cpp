#include "Interface/HostEvents.h"
#include "sdk/relay/HandlerRelay.h"
#include "tests/support/FakeHandler.h"
#include "tests/support/TestRecords.h"
#include "tests/support/WarningTrap.h"

#include <QFile>
#include <QMenu>
#include <QRegularExpression>

#include <functional>
#include <thread>
#include <vector>

namespace {

/// Keeps what passes through it, and does with it what a test wants.
class Relay final : public CHandlerRelay
{
public:
    using CHandlerRelay::CHandlerRelay;

    std::vector<Call> calls;
    std::vector<Events::Event> events;
    std::function<Answer(const Call&, const Ask&)> onCall;
    std::function<void(const Events::Event&, const Deliver&)> onEvent;

protected:
    Answer call(const Call& call, const Ask& ask) override
    {
        calls.push_back(call);
        return onCall ? onCall(call, ask) : ask();
    }

    void event(const Events::Event& event, const Deliver& deliver) override
    {
        events.push_back(event);
        if (onEvent)
            onEvent(event, deliver);
        else
            deliver();
    }
};

/// A panel that keeps the identities of the events that it gets.
class Panel final : public CObserver
{
public:
    void Update(CSubject* subject) override
    {
        numbers.append(subject->GetEvent());
        isId.append(subject->GetArgumentType() == typeid(std::tuple<QUuid>).hash_code());
        if (isId.last())
            ids.append(std::get<0>(subject->GetArgument<QUuid>()));
    }

    QList<quint32> numbers;
    QList<bool> isId;
    QList<QUuid> ids;
};

/// Returns where a header of the interface matches `pattern`.
QList<QRegularExpressionMatch> matches(const char* header, const char* pattern)
{
    QFile file(QStringLiteral(TSA_SOURCE_DIR "/Interface/") + QString::fromLatin1(header));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QRegularExpression expression(QString::fromLatin1(pattern));
    QList<QRegularExpressionMatch> all;
    for (auto each = expression.globalMatch(QString::fromUtf8(file.readAll())); each.hasNext();)
        all.append(each.next());
    return all;
}

/// Calls each operation, in the order of the table.
void callAll(ITargetSelectInterfaceHandler& host)
{
    const QUuid id = testId(1);
    const ProcessorNode processor = testProcessor(1);
    const ProcessorGroupNode group = testGroup(1);
    QStringList texts;
    QStringList names;
    int code = 0;
    QMenu menu;
    host.SetObserver(nullptr);
    host.AppendContextMenu(NodeProcessor, id, false, &menu);
    host.DetectAllDevices();
    host.DetectProcessorsOnly();
    host.GetDeviceSetText(deviceSet(1));
    host.ConfirmDeviceSetChange(deviceSet(1), 1);
    host.CheckIPAddress(1, &code, true);
    host.GetIPCount(0);
    host.AddIPAddress(QStringLiteral("10.0.0.1"), QStringLiteral("Left"));
    host.SaveIPList();
    host.RefreshIPList();
    host.ModifyIPAddress(0, QStringLiteral("10.0.0.2"), QStringLiteral("Right"));
    host.IpListChanged({}, {});
    host.GetDeviceSetTexts(texts);
    host.ShowProcessorMoreButton();
    host.ShowNodeMoreButton();
    host.GetAllProcessorNodes();
    host.GetAllGroupNodes();
    host.GetGroupNode(id);
    host.AddProcessors(id, 2);
    host.AddProcessorsWithIps(id, {1, 2});
    host.DeleteProcessors({id});
    host.SetProcessorGroup(group, group.id, {id});
    host.GetProcessorNode(id);
    host.CanRenameProcessor(id);
    host.CanAddProcessors(processor);
    host.IsAddProcessorsEnabled(processor);
    host.RenameProcessor(id, QStringLiteral("Left"));
    host.SetNewProcessorOutputs(4);
    host.CreateGroup(group);
    host.Ungroup(id);
    host.RenameGroup(id, QStringLiteral("Wall"));
    host.ReportSelection(id, {id}, {{id, {id}}}, id);
    host.IsRestrictedMode();
    host.IsDeleteBlocked(id);
    host.CheckProcessor(processor);
    host.UsesIpAddressing();
    host.IsLanUsbMode();
    host.GetLanUsbProcessorIps();
    host.GetNameMaxBytes();
    host.IsNameUtf8();
    host.GetCurrentProcessorId();
    host.ReadOnlineIPAddresses();
    host.GetIPNameLists(texts, names);
    host.GetIPList(texts);
    host.ClearIPList();
    host.DeleteIPAddress(1);
    host.ImportIPFile(QStringLiteral("ipList.txt"));
    host.GetIPEntry(0);
    host.GetFixedOutputCount();
    host.GetSelectionMode();
    host.GetSelectedProcessors();
    host.IsIpManagementAvailable();
    host.AddProcessorsFromIpList(id, {QStringLiteral("10.0.0.1(Left)")});
    host.PreDeleteProcessors({id});
    host.AcceptProcessorForSnapshot(processor);
    host.ShowTipMessage(QStringLiteral("Done"));
    host.IsFrontPanelHighlightAvailable();
    host.IsFrontPanelHighlighted(id);
    host.SetFrontPanelHighlight(true);
}

} // namespace

class RelayTest final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void shouldKnowEachOperationOfTheInterface();
    void shouldNameEachEventOfTheInterface();
    void shouldShowEachCallAsAValue();
    void shouldPassEachCallOn();
    void shouldReturnOutParameters();
    void shouldReturnDefaultsForNothing();
    void shouldAnswerInsteadOfTheHost();
    void shouldAskLater();
    void shouldShowEvents();
    void shouldChangeAndRepeatEvents();
    void shouldDeliverLaterOnAnotherThread();
    void shouldDeliverAfterItsEnd();

private:
    void tell(const std::function<void(CSubject&)>& event) const;

    std::shared_ptr<FakeHandler> m_host;
    std::shared_ptr<Relay> m_relay;
};

void RelayTest::init()
{
    m_host = std::make_shared<FakeHandler>();
    m_relay = std::make_shared<Relay>(m_host);
}

/// Tells an event as the host does, to the observer that it was given.
void RelayTest::tell(const std::function<void(CSubject&)>& event) const
{
    CSubject subject;
    subject.Attach(m_host->observer);
    event(subject);
}

void RelayTest::shouldKnowEachOperationOfTheInterface()
{
    QStringList known{QStringLiteral("SetObserver")}; // of the base class
    for (const auto& match :
         matches("TargetSelectInterfaceHandler.h", "virtual [^;(]*\\b(\\w+)\\([^;]*\\) = 0;"))
        known.append(match.captured(1));
    QStringList names;
    for (const Operations::Operation& operation : Operations::kOperations)
        names.append(QString::fromLatin1(operation.name));
    QCOMPARE(names, known);
}

void RelayTest::shouldNameEachEventOfTheInterface()
{
    const auto events = matches("HostEvents.h", "using (\\w+) = Event<(\\d+)");
    QVERIFY(events.size() > 10);
    for (const auto& match : events)
        QCOMPARE(QString::fromLatin1(Events::name(match.captured(2).toUInt())), match.captured(1));
    QCOMPARE(Events::name(HostEvents::kLastNumber + 1), "Event");
}

void RelayTest::shouldShowEachCallAsAValue()
{
    callAll(*m_relay);
    QCOMPARE(m_relay->calls.size(), std::size(Operations::kOperations));
    for (std::size_t at = 0; at < m_relay->calls.size(); ++at) {
        const CHandlerRelay::Call& call = m_relay->calls.at(at);
        const Operations::Operation& known = Operations::kOperations[at];
        QCOMPARE(&call.operation, &known);
        QCOMPARE(call.arguments.size(), Operations::count(known.arguments));
        for (int number = 0; number < call.arguments.size(); ++number)
            QCOMPARE(call.arguments.at(number).userType(), known.arguments[number].typeId());
    }
}

void RelayTest::shouldPassEachCallOn()
{
    callAll(*m_relay);
    const QStringList passed = m_host->callNames();
    FakeHandler alone;
    callAll(alone);
    QVERIFY(passed.size() > 50);
    QCOMPARE(passed, alone.callNames());
    // The types of the answers are those of the table.
    for (const CHandlerRelay::Call& call : m_relay->calls)
        QVERIFY(call.operation.answerType() != QMetaType::UnknownType);
}

void RelayTest::shouldReturnOutParameters()
{
    m_host->ipList = QStringList{QStringLiteral("10.0.0.1(Left)")};
    m_host->deviceSetTexts = QStringList{QStringLiteral("Evening")};
    m_host->checkIp = [](quint32 address, bool) { return address; };
    QStringList ips;
    QStringList names;
    m_relay->GetIPNameLists(ips, names);
    QCOMPARE(ips, QStringList{QStringLiteral("10.0.0.1")});
    QCOMPARE(names, QStringList{QStringLiteral("Left")});
    QStringList entries;
    m_relay->GetIPList(entries);
    QCOMPARE(entries, m_host->ipList);
    QStringList texts;
    QCOMPARE(m_relay->GetDeviceSetTexts(texts), 1);
    QCOMPARE(texts, m_host->deviceSetTexts);
    int code = 0;
    QVERIFY(m_relay->CheckIPAddress(7, &code, false));
    QCOMPARE(code, 7);
    QVERIFY(m_relay->CheckIPAddress(7, nullptr, false));
}

void RelayTest::shouldReturnDefaultsForNothing()
{
    m_relay->onCall = [](const auto&, const auto&) { return CHandlerRelay::Answer(); };
    m_host->setProject({}, {testProcessor(1)});
    m_host->nameMaxBytes = 7;
    QVERIFY(m_relay->GetAllProcessorNodes().isEmpty());
    QCOMPARE(m_relay->GetNameMaxBytes(), 0);
    // A value of another type counts as missing.
    m_relay->onCall = [](const auto&, const auto&) {
        return CHandlerRelay::Answer{QStringLiteral("7"), {}};
    };
    QCOMPARE(m_relay->GetNameMaxBytes(), 0);
    QVERIFY(m_host->callNames().isEmpty());
    Relay alone(nullptr);
    QVERIFY(!alone.IsNameUtf8());
}

void RelayTest::shouldAnswerInsteadOfTheHost()
{
    m_relay->onCall = [](const auto&, const auto&) {
        return CHandlerRelay::Answer{QVariant::fromValue(testProcessor(9)), {}};
    };
    QCOMPARE(m_relay->GetProcessorNode(testId(1)).id, testProcessor(9).id);
}

void RelayTest::shouldAskLater()
{
    CHandlerRelay::Ask later;
    m_relay->onCall = [&](const auto&, const CHandlerRelay::Ask& ask) {
        later = ask;
        return CHandlerRelay::Answer();
    };
    m_relay->RenameGroup(testId(3), QStringLiteral("Wall"));
    QVERIFY(m_host->callNames().isEmpty());
    m_relay.reset();
    std::thread(later).join();
    QCOMPARE(m_host->callNames(), QStringList{QStringLiteral("RenameGroup")});
}

void RelayTest::shouldShowEvents()
{
    Panel panel;
    m_relay->SetObserver(&panel);
    tell([](CSubject& subject) { HostEvents::ProcessorAdded::tell(subject, testId(4)); });
    tell([](CSubject& subject) {
        HostEvents::CurrentDeviceSetChanged::tell(subject, {}, {deviceSet(1)});
    });
    tell([](CSubject& subject) { subject.Notify<long double>(18, 1.0L); });
    QCOMPARE(m_relay->events.size(), std::size_t{3});
    QCOMPARE(m_relay->events.at(0).arguments.value(0).value<QUuid>(), testId(4));
    QCOMPARE(m_relay->events.at(1).types, QByteArray("GUID, QList<SDeviceSetInfo>"));
    QVERIFY(m_relay->events.at(2).types.startsWith("unknown "));
    QCOMPARE(panel.ids, QList<QUuid>{testId(4)});
    QCOMPARE(panel.numbers, (QList<quint32>{18, 1, 18}));
}

void RelayTest::shouldChangeAndRepeatEvents()
{
    Panel panel;
    m_relay->SetObserver(&panel);
    m_relay->onEvent = [&](const Events::Event& event, const CHandlerRelay::Deliver& deliver) {
        deliver();
        deliver();
        m_relay->tellPanel(Events::make(event.number, {QStringLiteral("no identity")}));
    };
    tell([](CSubject& subject) { HostEvents::ProcessorAdded::tell(subject, testId(4)); });
    QCOMPARE(panel.ids, (QList<QUuid>{testId(4), testId(4)}));
    QCOMPARE(panel.isId, (QList<bool>{true, true, false}));
}

void RelayTest::shouldDeliverLaterOnAnotherThread()
{
    Panel panel;
    m_relay->SetObserver(&panel);
    CHandlerRelay::Deliver later;
    m_relay->onEvent = [&](const auto&, const CHandlerRelay::Deliver& deliver) { later = deliver; };
    tell([](CSubject& subject) { HostEvents::ProcessorAdded::tell(subject, testId(4)); });
    QVERIFY(panel.numbers.isEmpty());
    std::thread(later).join();
    QCOMPARE(panel.ids, QList<QUuid>{testId(4)});
}

void RelayTest::shouldDeliverAfterItsEnd()
{
    Panel panel;
    m_relay->SetObserver(&panel);
    m_relay.reset();
    tell([](CSubject& subject) { HostEvents::ProcessorAdded::tell(subject, testId(4)); });
    QCOMPARE(panel.ids, QList<QUuid>{testId(4)});
}

TSA_TEST_MAIN(RelayTest)

#include "tst_relay.moc"
