#include "sdk/validate/Balance.h"
#include "sdk/validate/Catalogue.h"
#include "sdk/validate/OracleHost.h"
#include "sdk/validate/Panel.h"

namespace {

using namespace HostEvents;

/// A round of each kind is run for so many times in each batch. The contract checks are off: they
/// keep the memory of dead panels.
constexpr int kPanels = 25;
constexpr int kRounds = 100;

std::shared_ptr<OracleHost> hostOfMany()
{
    auto host = std::make_shared<OracleHost>();
    QList<ProcessorNode> processors;
    for (uint number = 1; number <= 20; ++number)
        processors.append(processor(number, number % 2 == 0 ? 100 : 0));
    host->project.set({group(100)}, processors);
    return host;
}

void judge(Test& test, const Growth& growth)
{
    test.check(growth.text.isEmpty(), Code::Leak, growth.text);
    if (!growth.isMemoryCounted)
        test.skip(QStringLiteral("this process' heap does not count what it holds"));
}

/// The panels are not painted: Qt remembers the names of the icons of each for half a minute.
void shouldKeepNothingOfAPanel(Test& test)
{
    const auto host = hostOfMany();
    judge(test, growthOf(
                    [&] {
                        const Panel panel(test, host);
                        host->tellHere<TreeReset>();
                    },
                    kPanels));
}

void shouldKeepNothingOfRows(Test& test)
{
    const auto host = hostOfMany();
    const Panel panel(test, host);
    host->tellHere<TreeReset>();
    judge(test, growthOf(
                    [&] {
                        host->project.add(group(101));
                        host->tellHere<GroupAdded>(identity(101));
                        host->project.add(processor(50, 101));
                        host->tellHere<ProcessorAdded>(identity(50));
                        host->tellHere<ProcessorChanged>(identity(50));
                        host->tellHere<MonitorStateChanged>(QList<QUuid>{identity(50)});
                        host->project.remove(identity(50));
                        host->tellHere<NodeRemoved>(identity(50));
                        host->project.remove(identity(101));
                        host->tellHere<NodesRemoved>(QList<QUuid>{identity(101)});
                        settle();
                    },
                    kRounds));
}

void shouldKeepNothingOfFills(Test& test)
{
    const auto host = hostOfMany();
    const Panel panel(test, host);
    judge(test, growthOf(
                    [&] {
                        host->tellHere<TreeReset>();
                        settle();
                    },
                    kRounds));
}

void shouldKeepNothingOfPainting(Test& test)
{
    const auto host = hostOfMany();
    const Panel panel(test, host);
    host->tellHere<TreeReset>();
    judge(test, growthOf([&] { panel.widget()->grab(); }, kRounds));
}

void shouldKeepNothingOfOperations(Test& test)
{
    const auto host = hostOfMany();
    Panel panel(test, host);
    host->tellHere<TreeReset>();
    uint number = 0;
    judge(test, growthOf(
                    [&] {
                        panel.area()->SetCurrentProcessor(identity(1 + ++number % 20));
                        panel.area()->SetOperationLock(1, number % 2 == 0);
                        panel.area()->SetReadOnly(number % 2 == 0);
                        panel.area()->DetectDevices();
                        panel.area()->UpdateMonitorWarningState();
                        panel.layer()->Reconnect();
                        panel.tree();
                        settle();
                    },
                    kRounds));
}

} // namespace

Catalogue leakTests()
{
    return {
        {"leak.panels", 10, "nothing is kept of a panel that died", shouldKeepNothingOfAPanel,
         CatalogueEntry::NoChecks},
        {"leak.rows", 10, "nothing is kept of rows that come and go", shouldKeepNothingOfRows,
         CatalogueEntry::NoChecks},
        {"leak.fills", 10, "nothing is kept of fills", shouldKeepNothingOfFills,
         CatalogueEntry::NoChecks},
        {"leak.painting", 10, "nothing is kept of painting", shouldKeepNothingOfPainting,
         CatalogueEntry::NoChecks},
        {"leak.operations", 10, "nothing is kept of operations", shouldKeepNothingOfOperations,
         CatalogueEntry::NoChecks},
    };
}
