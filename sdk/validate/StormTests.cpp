#include "sdk/validate/Catalogue.h"
#include "sdk/validate/OracleHost.h"
#include "sdk/validate/Panel.h"
#include "sdk/validate/WatchedHandler.h"

#include <QTimer>

#include <atomic>
#include <chrono>
#include <memory>
#include <random>
#include <thread>
#include <vector>

namespace {

using namespace HostEvents;

constexpr int kTellers = 3;
constexpr int kStepsOfATeller = 150;
constexpr uint kUnits = 12;

/// Changes a part of the project, which is its own, and tells every change: what concerns one
/// identity is told in the order of the changes, and a group before its processors.
class Teller final
{
public:
    Teller(OracleHost& host, int number, quint32 seed)
        : m_host(host)
        , m_first(static_cast<uint>(number + 1) * 1000)
        , m_random(seed * 31U + static_cast<quint32>(number))
    {
    }

    /// One change and its event. Any thread, one at a time.
    void step()
    {
        const uint unit = m_first + draw(kUnits);
        const uint groupNumber = m_first + 100 + draw(3);
        switch (draw(10)) {
        case 0:
        case 1:
            add(unit, groupNumber);
            break;
        case 2:
            remove(unit);
            break;
        case 3:
        case 4:
            change(unit);
            m_host.tellHere<ProcessorChanged>(identity(unit));
            break;
        case 5:
            // The record alone: the name is a matter of events 25 and 26.
            m_host.project.change(identity(unit),
                                  [](ProcessorNode& node) { node.online = !node.online; });
            m_host.tellHere<MonitorStateChanged>(QList<QUuid>{identity(unit)});
            break;
        case 6:
            addGroup(groupNumber);
            break;
        case 7:
            if (isThere(groupNumber))
                removeAs<NodeRemoved>(identity(groupNumber));
            break;
        case 8:
            addSeveral(groupNumber);
            break;
        default:
            tellSomethingElse();
            break;
        }
    }

private:
    uint draw(uint below) { return static_cast<uint>(m_random()) % below; }

    bool isThere(uint number) const
    {
        return !m_host.project.group(identity(number)).id.isNull()
               || !m_host.project.processor(identity(number)).id.isNull();
    }

    void add(uint unit, uint groupNumber)
    {
        if (isThere(unit))
            return;
        m_host.project.add(processor(unit, isThere(groupNumber) ? groupNumber : 0));
        m_host.tellHere<ProcessorAdded>(identity(unit));
    }

    void remove(uint unit)
    {
        if (!isThere(unit))
            return;
        m_host.project.remove(identity(unit));
        m_host.tellHere<NodesRemoved>(QList<QUuid>{identity(unit)});
    }

    template <typename Event>
    void removeAs(const QUuid& id)
    {
        m_host.project.remove(id);
        m_host.tellHere<Event>(id);
    }

    void change(uint unit)
    {
        const int version = ++m_version;
        m_host.project.change(identity(unit), [&](ProcessorNode& node) {
            node.name = QStringLiteral("P%1v%2").arg(unit).arg(version);
        });
    }

    void addGroup(uint groupNumber)
    {
        if (isThere(groupNumber))
            return;
        m_host.project.add(group(groupNumber));
        m_host.tellHere<GroupAdded>(identity(groupNumber));
    }

    void addSeveral(uint groupNumber)
    {
        QList<QUuid> added;
        for (uint number = 0; number < 3; ++number) {
            const uint unit = m_first + draw(kUnits);
            if (isThere(unit))
                continue;
            m_host.project.add(processor(unit, isThere(groupNumber) ? groupNumber : 0));
            added.append(identity(unit));
        }
        m_host.tellHere<ProcessorsAdded>(added);
    }

    void tellSomethingElse()
    {
        switch (draw(5)) {
        case 0:
            m_host.tellHere<TreeReset>();
            break;
        case 1:
            m_host.tellHere<CurrentProcessorChanged>();
            break;
        case 2:
            m_host.tellHere<DetectStrategyChanged>(static_cast<int>(draw(3)));
            break;
        case 3:
            m_host.tellHere<MonitorWarningChanged>();
            break;
        default:
            m_host.tellHere<LanUsbProcessorIp>();
            break;
        }
    }

    OracleHost& m_host;
    const uint m_first;
    std::mt19937 m_random;
    int m_version = 0;
};

/// Storms tell what the contract checks look at in orders that they cannot follow: a row may have
/// gone by the time its change is told.
void allowCrossing(Test& test)
{
    for (const char* code : {"TSA-W15", "TSA-W16", "TSA-W17", "TSA-E21", "TSA-W22"})
        test.allow(QString::fromLatin1(code));
}

/// Lets the tellers tell on threads of their own while the GUI thread tells too, and compares.
void storm(Test& test, const std::shared_ptr<OracleHost>& host,
           const std::shared_ptr<IAbstractControlInterface>& handler, quint32 seed)
{
    allowCrossing(test);
    Panel panel(test, handler);
    host->tell<TreeReset>();
    std::vector<std::unique_ptr<Teller>> tellers;
    for (int number = 0; number <= kTellers; ++number)
        tellers.push_back(std::make_unique<Teller>(*host, number, seed));
    // The last one tells on the GUI thread, between the events that this handles.
    int left = kStepsOfATeller;
    QTimer here;
    QObject::connect(&here, &QTimer::timeout, &here, [&] {
        if (left-- > 0)
            tellers.back()->step();
        else
            here.stop();
    });
    here.start(0);
    QList<std::function<void()>> works;
    for (std::size_t number = 0; number < kTellers; ++number) {
        works.append([teller = tellers.at(number).get()] {
            for (int step = 0; step < kStepsOfATeller; ++step)
                teller->step();
        });
    }
    elsewhere(works);
    waitUntil([&] { return !here.isActive(); }, 10 * kSoonMs);
    expectTree(test, panel, host->project.describe(true), Code::TreeDiffers,
               QStringLiteral("after the storm with seed %1").arg(seed), true);
}

void shouldStandAStorm(Test& test)
{
    for (quint32 round = 0; round < 3; ++round) {
        const auto host = std::make_shared<OracleHost>();
        storm(test, host, host, test.seed() + round);
    }
}

/// The host tells something while it is asked, on whatever thread.
void shouldStandEventsInsideQuestions(Test& test)
{
    for (quint32 round = 0; round < 3; ++round) {
        const auto host = std::make_shared<OracleHost>();
        const auto watched = std::make_shared<WatchedHandler>(host, false);
        const auto asked = std::make_shared<std::atomic<int>>(0);
        watched->setBefore([&host = *host, asked](const char* operation) {
            // At most one inside another: a host that always answers with an event never ends.
            thread_local bool isInside = false;
            const bool isRecord = qstrcmp(operation, "GetProcessorNode") == 0
                                  || qstrcmp(operation, "GetGroupNode") == 0
                                  || qstrcmp(operation, "GetAllProcessorNodes") == 0;
            if (!isRecord || isInside || ++*asked % 7 != 0)
                return;
            isInside = true;
            if (*asked % 2 == 0)
                host.tellHere<TreeReset>();
            else
                host.tellHere<MonitorWarningChanged>();
            isInside = false;
        });
        storm(test, host, watched, test.seed() + 100 + round);
    }
}

/// The host takes its time over answers, so that events overtake each other.
void shouldStandSlowAnswers(Test& test)
{
    const auto host = std::make_shared<OracleHost>();
    const auto watched = std::make_shared<WatchedHandler>(host, false);
    const auto asked = std::make_shared<std::atomic<int>>(0);
    watched->setBefore([asked](const char* operation) {
        const bool isRecord =
            qstrcmp(operation, "GetProcessorNode") == 0 || qstrcmp(operation, "GetGroupNode") == 0;
        if (isRecord && ++*asked % 23 == 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(30));
    });
    storm(test, host, watched, test.seed() + 200);
}

} // namespace

Catalogue stormTests()
{
    return {
        {"storm.threads", 7, "the tree equals the project after events on four threads",
         shouldStandAStorm},
        {"storm.questions", 7, "the same with events that are told inside questions",
         shouldStandEventsInsideQuestions},
        {"storm.slow", 7, "the same with answers that take their time", shouldStandSlowAnswers},
    };
}
