#include "sdk/validate/Catalogue.h"
#include "sdk/validate/OracleHost.h"
#include "sdk/validate/Panel.h"

namespace {

using namespace HostEvents;

constexpr int kCycles = 1000;

/// The thousandth panel is as good as the first.
void shouldBuildAThousandPanels(Test& test)
{
    for (int cycle = 1; cycle <= kCycles; ++cycle) {
        const auto host = hostOfThree();
        const Panel panel(test, host);
        host->tellHere<TreeReset>();
        const QString tree = panel.tree();
        test.require(tree == host->project.describe(), Code::TreeDiffers,
                     QStringLiteral("panel %1 shows %2").arg(cycle).arg(tree));
    }
}

void shouldStartAThousandTimes(Test& test)
{
    const auto host = hostOfThree();
    Panel panel(test, host);
    for (int cycle = 1; cycle <= kCycles; ++cycle) {
        panel.initialize();
        host->tellHere<TreeReset>();
        const QString tree = panel.tree();
        test.require(
            tree == host->project.describe(), Code::TreeDiffers,
            QStringLiteral("after Initialize number %1 the panel shows %2").arg(cycle).arg(tree));
    }
}

void shouldAddAndRemoveAThousandTimes(Test& test)
{
    const auto host = hostOfThree();
    const Panel panel(test, host);
    host->tellHere<TreeReset>();
    for (int cycle = 1; cycle <= kCycles; ++cycle) {
        host->project.add(group(101));
        host->tellHere<GroupAdded>(identity(101));
        host->project.add(processor(4, 101));
        host->tellHere<ProcessorAdded>(identity(4));
        host->project.remove(identity(101));
        host->tellHere<NodeRemoved>(identity(101));
        host->project.remove(identity(4));
        host->tellHere<NodesRemoved>(QList<QUuid>{identity(4)});
        const QString tree = panel.tree();
        test.require(tree == host->project.describe(), Code::TreeDiffers,
                     QStringLiteral("in cycle %1 the panel shows %2").arg(cycle).arg(tree));
    }
    expectTree(test, panel, host->project.describe(), Code::TreeDiffers,
               QStringLiteral("after all cycles"));
}

} // namespace

Catalogue cycleTests()
{
    return {
        {"cycle.panels", 9, "1,000 panels are built, filled and destroyed",
         shouldBuildAThousandPanels, CatalogueEntry::NoChecks},
        {"cycle.starts", 9, "one panel is started 1,000 times", shouldStartAThousandTimes,
         CatalogueEntry::NoChecks},
        {"cycle.rows", 9, "rows come and go 1,000 times", shouldAddAndRemoveAThousandTimes,
         CatalogueEntry::NoChecks},
    };
}
