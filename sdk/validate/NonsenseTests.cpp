#include "Interface/ObserverPattern"
#include "sdk/validate/Catalogue.h"
#include "sdk/validate/OracleHost.h"
#include "sdk/validate/Panel.h"
#include "sdk/validate/WatchedHandler.h"

#include <atomic>
#include <stdexcept>

namespace {

using namespace HostEvents;

/// Nonsense is a breach of the contract, and the contract checks tell of it.
void allowBreaches(Test& test)
{
    for (int number = 1; number <= 29; ++number) {
        for (const char kind : {'E', 'W'}) {
            test.allow(QStringLiteral("TSA-%1%2")
                           .arg(QLatin1Char(kind))
                           .arg(number, 2, 10, QLatin1Char('0')));
        }
    }
}

/// Shows what the host answers, in every way that does not need the user.
void expose(const Panel& panel)
{
    called(QStringLiteral("painting"), [&] { panel.widget()->grab(); });
    called(QStringLiteral("GetProcessorTree with onlyAccepted"), [&] {
        ProcessorTreeSnapshot snapshot;
        panel.area()->GetProcessorTree(snapshot, true);
    });
    settle();
}

/// Shows a project with nonsense in it, and then a right one, which the tree has to show.
void showAndRecover(Test& test, const std::shared_ptr<OracleHost>& host, const QString& expected,
                    const QString& what)
{
    allowBreaches(test);
    const Panel panel(test, host);
    host->tell<TreeReset>();
    expectTree(test, panel, expected, Code::TreeDiffers, what);
    expose(panel);
    host->project.set({group(100)}, {processor(1, 100), processor(2)});
    host->tell<TreeReset>();
    expectTree(test, panel, host->project.describe(), Code::TreeDiffers,
               what + QStringLiteral(", and a right project afterwards"));
}

void shouldStandBadIdentities(Test& test)
{
    const auto host = std::make_shared<OracleHost>();
    ProcessorNode null = processor(5);
    null.id = QUuid();
    ProcessorGroupNode nullGroup = group(101);
    nullGroup.id = QUuid();
    ProcessorNode again = processor(6);
    again.id = identity(1);
    ProcessorNode asGroup = processor(7);
    asGroup.id = identity(100);
    host->project.set({group(100), nullGroup, group(100)},
                      {processor(1), null, again, asGroup, processor(2, 100), processor(3, 999)});
    showAndRecover(test, host, QStringLiteral("G100[P2],P1"),
                   QStringLiteral("null, repeated and unknown identities"));
}

void shouldStandLongTexts(Test& test)
{
    const auto host = std::make_shared<OracleHost>();
    ProcessorNode longOne = processor(1);
    longOne.name = QString(10000, QLatin1Char('x'));
    ProcessorNode odd = processor(2);
    const QChar surrogate(0xD800);
    odd.name = QStringLiteral("a") + surrogate + QStringLiteral("b\n\t") + QChar(0);
    ProcessorNode empty = processor(3);
    empty.name.clear();
    host->project.set({}, {longOne, odd, empty});
    showAndRecover(test, host, host->project.describe(), QStringLiteral("long and odd names"));
}

void shouldStandManyProcessors(Test& test)
{
    const auto host = std::make_shared<OracleHost>();
    QList<ProcessorNode> many;
    for (uint number = 1; number <= 400; ++number)
        many.append(processor(number, number % 3 == 0 ? 1000 : 0));
    host->project.set({group(1000)}, many);
    showAndRecover(test, host, host->project.describe(), QStringLiteral("400 processors"));
}

void shouldStandStrangeNumbers(Test& test)
{
    const auto host = std::make_shared<OracleHost>();
    QList<ProcessorNode> nodes;
    for (const int number : {-1, 0, 2147483647, -2147483647 - 1}) {
        ProcessorNode node = processor(static_cast<uint>(nodes.size()) + 1);
        node.number = number;
        node.redundancyMode = number;
        node.hostAttribute12 = static_cast<float>(number);
        nodes.append(node);
    }
    host->project.set({}, nodes);
    host->lanUsbAddress = 0xFFFFFFFF;
    host->hasLanUsb = true;
    showAndRecover(test, host, host->project.describe(), QStringLiteral("numbers out of range"));
}

/// Answers with the record of another identity than the one that was asked for.
class LyingHost final : public CTargetSelectHandlerBase
{
public:
    explicit LyingHost(std::shared_ptr<OracleHost> truth)
        : m_truth(std::move(truth))
    {
    }

    std::atomic<bool> lies{true};

    void SetObserver(CObserver* panel) override { m_truth->SetObserver(panel); }
    QList<ProcessorNode> GetAllProcessorNodes() override { return m_truth->project.processors(); }
    QList<ProcessorGroupNode> GetAllGroupNodes() override { return m_truth->project.groups(); }
    ProcessorNode GetProcessorNode(const QUuid& id) override
    {
        return m_truth->project.processor(lies ? identity(1) : id);
    }
    ProcessorGroupNode GetGroupNode(const QUuid& id) override
    {
        return m_truth->project.group(lies ? identity(100) : id);
    }
    int GetSelectionMode() override { return -7; }
    QList<QUuid> GetSelectedProcessors() override { return {QUuid(), identity(5), identity(5)}; }
    int GetFixedOutputCount() override { return -3; }
    int GetNameMaxBytes() override { return -1; }
    int GetIPCount(int) override { return -5; }
    int GetDeviceSetTexts(QStringList& texts) override
    {
        texts = QStringList{QStringLiteral("one")};
        return 1000;
    }
    void GetIPNameLists(QStringList& ips, QStringList& names) override
    {
        ips = QStringList{QStringLiteral("no address"), QStringLiteral("1.2.3")};
        names.clear();
    }

private:
    const std::shared_ptr<OracleHost> m_truth;
};

void shouldPassOverOtherRecords(Test& test)
{
    allowBreaches(test);
    const auto truth = std::make_shared<OracleHost>();
    truth->project.set({group(100)}, {processor(1, 100), processor(2)});
    const auto liar = std::make_shared<LyingHost>(truth);
    const Panel panel(test, liar);
    truth->tell<TreeReset>();
    expectTree(test, panel, truth->project.describe(), Code::TreeDiffers,
               QStringLiteral("the lists"));
    const QString before = panel.tree();
    truth->project.add(group(101));
    truth->project.add(processor(3));
    truth->project.change(identity(2), [](ProcessorNode& node) { node.online = true; });
    truth->tell<GroupAdded>(identity(101));
    truth->tell<ProcessorAdded>(identity(3));
    truth->tell<ProcessorsAdded>(QList<QUuid>{identity(3)});
    truth->tell<ProcessorChanged>(identity(2));
    truth->tell<ProjectProcessorChanged>(identity(2), SPrjProcessor());
    truth->tell<MonitorStateChanged>(QList<QUuid>{identity(2)});
    expose(panel);
    test.compare(panel.tree(), before, Code::TreeDiffers,
                 QStringLiteral("after events to which records of other identities were answered"));
    liar->lies = false;
    truth->tell<TreeReset>();
    expectTree(test, panel, truth->project.describe(), Code::TreeDiffers,
               QStringLiteral("after true answers"));
}

void shouldStandBadDeviceSets(Test& test)
{
    allowBreaches(test);
    const auto truth = std::make_shared<OracleHost>();
    const Panel panel(test, std::make_shared<LyingHost>(truth));
    QList<SDeviceSetInfo> sets;
    for (int count = 0; count < 300; ++count)
        sets.append(SDeviceSetInfo{});
    truth->tell<CurrentDeviceSetChanged>(GUID{}, sets);
    expose(panel);
    GUID unknown{};
    unknown.Data1 = 77;
    truth->tell<CurrentDeviceSetChanged>(unknown, sets);
    truth->tell<DetectStrategyChanged>(-2147483647);
    truth->tell<LanUsbProcessorIp>();
    truth->tell<CurrentProcessorChanged>();
    truth->tell<TreeReset>();
    expose(panel);
}

void shouldStandExceptions(Test& test)
{
    allowBreaches(test);
    const auto host = std::make_shared<OracleHost>();
    host->project.set({group(100)}, {processor(1, 100)});
    const auto watched = std::make_shared<WatchedHandler>(host, false);
    const auto throws = std::make_shared<std::atomic<bool>>(false);
    watched->setBefore([throws](const char* operation) {
        if (*throws
            && (qstrcmp(operation, "GetProcessorNode") == 0
                || qstrcmp(operation, "GetGroupNode") == 0))
            throw std::runtime_error(operation);
    });
    const Panel panel(test, watched);
    CSubject subject;
    subject.Attach(watched->panelObserver());
    const auto tell = [&](const QString& what, const std::function<void()>& event) {
        bool isThrown = false;
        *throws = true;
        try {
            called(what, event);
        } catch (const std::runtime_error&) {
            isThrown = true;
        }
        *throws = false;
        test.check(isThrown, Code::Exception,
                   what + QStringLiteral(": what the handler throws does not reach the caller"));
    };
    TreeReset::tell(subject);
    host->project.add(processor(2));
    host->project.add(group(101));
    tell(QStringLiteral("event 18, the handler throws"),
         [&] { ProcessorAdded::tell(subject, identity(2)); });
    tell(QStringLiteral("event 17 off the GUI thread, the handler throws"),
         [&] { elsewhere([&] { GroupAdded::tell(subject, identity(101)); }); });
    ProcessorAdded::tell(subject, identity(2));
    elsewhere([&] { GroupAdded::tell(subject, identity(101)); });
    expectTree(test, panel, host->project.describe(), Code::TreeDiffers,
               QStringLiteral("after the handler has thrown"));
}

} // namespace

Catalogue nonsenseTests()
{
    return {
        {"nonsense.identities", 6, "null, repeated and unknown identities get no row",
         shouldStandBadIdentities},
        {"nonsense.texts", 6, "long and odd names do no harm", shouldStandLongTexts},
        {"nonsense.many", 6, "more processors than a project holds do no harm",
         shouldStandManyProcessors},
        {"nonsense.numbers", 6, "numbers out of range do no harm", shouldStandStrangeNumbers},
        {"nonsense.records", 6, "records of other identities change nothing",
         shouldPassOverOtherRecords},
        {"nonsense.sets", 6, "device sets and lists that do not fit do no harm",
         shouldStandBadDeviceSets},
        {"nonsense.exceptions", 6, "what the handler throws reaches the caller and sticks nowhere",
         shouldStandExceptions},
    };
}
