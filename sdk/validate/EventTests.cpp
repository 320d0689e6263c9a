#include "sdk/validate/Catalogue.h"
#include "sdk/validate/HostLog.h"
#include "sdk/validate/OracleHost.h"
#include "sdk/validate/PaintCount.h"
#include "sdk/validate/Panel.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QTreeView>

namespace {

using namespace HostEvents;

/// A panel over a project of a group and three processors, filled.
struct Filled
{
    explicit Filled(Test& test)
        : host(makeHost())
        , panel(test, host)
    {
        host->tell<TreeReset>();
        expectTree(test, panel, host->project.describe(), Code::EventHasNoEffect,
                   QStringLiteral("event 16"));
    }

    static std::shared_ptr<OracleHost> makeHost()
    {
        auto made = std::make_shared<OracleHost>();
        made->project.set({group(100)}, {processor(1, 100), processor(2), processor(3)});
        return made;
    }

    std::shared_ptr<OracleHost> host;
    Panel panel;
};

/// The tree, at once: the event takes effect on return while the GUI thread handles its events.
void compareAtOnce(Test& test, const Filled& filled, const QString& what)
{
    test.compare(filled.panel.tree(), filled.host->project.describe(), Code::EventHasNoEffect,
                 what + QStringLiteral(", on return"));
    expectTree(test, filled.panel, filled.host->project.describe(), Code::EventHasNoEffect, what);
}

void shouldFillTheTree(Test& test)
{
    const Filled filled(test);
    filled.host->project.set({group(101), group(100)},
                             {processor(4), processor(5, 100), processor(6, 101)});
    filled.host->tell<TreeReset>();
    expectTree(test, filled.panel, filled.host->project.describe(), Code::EventHasNoEffect,
               QStringLiteral("another event 16"));
    const QString root = filled.panel.view()->model()->index(0, 0).data(Qt::DisplayRole).toString();
    test.check(root.contains(QLatin1Char('3')), Code::EventHasNoEffect,
               QStringLiteral("the root of three processors is \"%1\"").arg(root));
}

void shouldAddAGroup(Test& test)
{
    const Filled filled(test);
    filled.host->project.add(group(101));
    filled.host->tell<GroupAdded>(identity(101));
    compareAtOnce(test, filled, QStringLiteral("event 17"));
    filled.host->project.add(group(102));
    filled.host->tellHere<GroupAdded>(identity(102));
    compareAtOnce(test, filled, QStringLiteral("event 17 on the GUI thread"));
}

void shouldAddAProcessor(Test& test)
{
    const Filled filled(test);
    filled.host->project.add(processor(4, 100));
    filled.host->tell<ProcessorAdded>(identity(4));
    compareAtOnce(test, filled, QStringLiteral("event 18"));
    filled.host->project.add(processor(5));
    filled.host->tellHere<ProcessorAdded>(identity(5));
    compareAtOnce(test, filled, QStringLiteral("event 18 on the GUI thread"));
}

void shouldAddProcessors(Test& test)
{
    const Filled filled(test);
    for (const uint number : {4U, 5U, 6U})
        filled.host->project.add(processor(number, number == 5 ? 100 : 0));
    filled.host->tell<ProcessorsAdded>(QList<QUuid>{identity(4), identity(5), identity(6)});
    compareAtOnce(test, filled, QStringLiteral("event 19"));
}

void shouldRemoveAProcessor(Test& test)
{
    const Filled filled(test);
    filled.host->project.remove(identity(2));
    filled.host->tell<NodeRemoved>(identity(2));
    expectTree(test, filled.panel, filled.host->project.describe(), Code::EventHasNoEffect,
               QStringLiteral("event 20"));
}

void shouldRemoveAGroup(Test& test)
{
    const Filled filled(test);
    filled.host->project.remove(identity(100));
    filled.host->tell<NodeRemoved>(identity(100));
    expectTree(test, filled.panel, QStringLiteral("P1,P2,P3"), Code::EventHasNoEffect,
               QStringLiteral("event 20 for a group"), true);
}

void shouldRemoveSeveral(Test& test)
{
    const Filled filled(test);
    filled.host->project.remove(identity(1));
    filled.host->project.remove(identity(3));
    filled.host->tell<NodesRemoved>(QList<QUuid>{identity(3), identity(1)});
    expectTree(test, filled.panel, filled.host->project.describe(), Code::EventHasNoEffect,
               QStringLiteral("event 21"));
}

void shouldShowChanges(Test& test)
{
    const Filled filled(test);
    const auto rename = [&](const QString& name) {
        filled.host->project.change(identity(2), [&](ProcessorNode& node) { node.name = name; });
    };
    rename(QStringLiteral("Second"));
    filled.host->tell<ProcessorChanged>(identity(2));
    compareAtOnce(test, filled, QStringLiteral("event 25"));
    rename(QStringLiteral("Zwei"));
    filled.host->tell<ProjectProcessorChanged>(identity(2), SPrjProcessor());
    compareAtOnce(test, filled, QStringLiteral("event 26"));
}

void shouldOrderByAddress(Test& test)
{
    const Filled filled(test);
    const auto add = [&](uint number, quint32 address) {
        ProcessorNode node = processor(number, 100);
        node.ipAddress = address;
        node.reachedByIp = true;
        filled.host->project.add(node);
        filled.host->tell<ProcessorAdded>(node.id);
    };
    filled.host->project.remove(identity(1));
    filled.host->tell<NodeRemoved>(identity(1));
    add(4, 0x0A000009);
    add(5, 0x0A000005);
    add(6, 0x0A000007);
    expectTree(test, filled.panel,
               QStringLiteral("G100[P5@10.0.0.5,P6@10.0.0.7,P4@10.0.0.9],P2,P3"),
               Code::EventHasNoEffect, QStringLiteral("event 18 with addresses"));
}

void shouldShowMonitorStates(Test& test)
{
    const Filled filled(test);
    filled.host->project.change(identity(1), [](ProcessorNode& node) { node.online = true; });
    filled.host->project.change(identity(3), [](ProcessorNode& node) { node.online = true; });
    filled.host->tell<MonitorStateChanged>(QList<QUuid>{identity(1), identity(3)});
    expectTree(test, filled.panel, QStringLiteral("G100[P1*],P2,P3*"), Code::EventHasNoEffect,
               QStringLiteral("event 39"));
}

void shouldRepaintForWarnings(Test& test)
{
    const Filled filled(test);
    filled.panel.waitUntilPainted();
    const PaintCount painted(filled.panel.view()->viewport());
    const int before = painted.count();
    filled.host->tell<MonitorWarningChanged>();
    test.check(waitUntil([&] { return painted.count() > before; }), Code::EventHasNoEffect,
               QStringLiteral("event 37 does not repaint the tree"));
}

void shouldFollowTheCurrentProcessor(Test& test)
{
    const Filled filled(test);
    filled.host->current = identity(3);
    filled.host->tell<CurrentProcessorChanged>();
    test.check(waitUntil([&] { return filled.panel.currentRow() == identity(3); }),
               Code::EventHasNoEffect,
               QStringLiteral("event 30 does not select what GetCurrentProcessorId answers"));
    test.check(filled.host->reports == 0, Code::EventHasNoEffect,
               QStringLiteral("event 30 reports the host's own choice as the user's"));
}

void shouldShowTheDetectStrategy(Test& test)
{
    const Filled filled(test);
    const auto* const button = filled.panel.button(QStringLiteral("IP address management"));
    test.require(button, Code::WrongWidget,
                 QStringLiteral("there is no button to manage addresses"));
    for (const int strategy : {2, 1}) {
        filled.host->tell<DetectStrategyChanged>(strategy);
        test.check(waitUntil([&] { return button->isVisible() == (strategy == 2); }),
                   Code::EventHasNoEffect,
                   QStringLiteral("event 0 with %1 leaves the management of addresses as it is")
                       .arg(strategy));
    }
}

void shouldShowDeviceSets(Test& test)
{
    const Filled filled(test);
    QList<SDeviceSetInfo> sets;
    for (const quint32 number : {1U, 2U, 3U}) {
        SDeviceSetInfo set{};
        set.id.Data1 = number;
        sets.append(set);
    }
    filled.host->tell<CurrentDeviceSetChanged>(sets.at(1).id, sets);
    const auto shown = [&] {
        QString text;
        const auto boxes = filled.panel.widget()->findChildren<QComboBox*>();
        for (const QComboBox* box : boxes) {
            if (box->isVisible())
                text = QStringLiteral("%1 of %2").arg(box->currentText()).arg(box->count());
        }
        return text;
    };
    waitUntil([&] { return !shown().isEmpty(); });
    test.compare(shown(), QStringLiteral("Device set 2 of 3"), Code::EventHasNoEffect,
                 QStringLiteral("the selector of device sets after event 1"));
    filled.host->tell<CurrentDeviceSetChanged>(GUID{}, QList<SDeviceSetInfo>());
    test.check(waitUntil([&] { return shown().isEmpty(); }), Code::EventHasNoEffect,
               QStringLiteral("event 1 without device sets leaves the selector"));
}

void shouldShowTheLanUsbAddress(Test& test)
{
    const Filled filled(test);
    filled.host->hasLanUsb = true;
    filled.host->lanUsbAddress = 0x0A010203;
    filled.host->tell<LanUsbProcessorIp>();
    const auto showsIt = [&] {
        const auto labels = filled.panel.widget()->findChildren<QLabel*>();
        for (const QLabel* label : labels) {
            if (label->isVisible() && label->text().contains(QLatin1String("10.1.2.3")))
                return true;
        }
        return false;
    };
    test.check(waitUntil(showsIt), Code::EventHasNoEffect,
               QStringLiteral("event 29 does not show the address of processor 1"));
}

void shouldIgnoreOtherNumbers(Test& test)
{
    test.allow(QStringLiteral("TSA-W14"));
    const Filled filled(test);
    filled.host->project.add(processor(4));
    const QList<quint32> known{0, 1, 16, 17, 18, 19, 20, 21, 25, 26, 29, 30, 37, 39};
    for (quint32 number = 0; number < 60; ++number) {
        if (known.contains(number))
            continue;
        const Call call(QStringLiteral("event %1, which has no meaning").arg(number));
        elsewhere([&] {
            CSubject subject;
            subject.Attach(filled.host->observer());
            subject.Notify<QUuid>(number, identity(4));
        });
    }
    test.compare(filled.panel.tree(), QStringLiteral("G100[P1],P2,P3"), Code::WrongUseHasEffect,
                 QStringLiteral("events without a meaning"));
    test.check(!HostLog::withCode(QStringLiteral("TSA-W14")).isEmpty(), Code::CheckIsMissing,
               QStringLiteral("the contract checks do not tell TSA-W14"));
}

} // namespace

Catalogue eventTests()
{
    return {
        {"event.0", 4, "the detection strategy shows and hides the IP list",
         shouldShowTheDetectStrategy},
        {"event.1", 4, "device sets fill the selector", shouldShowDeviceSets},
        {"event.16", 4, "the tree is filled anew", shouldFillTheTree},
        {"event.17", 4, "a group is added", shouldAddAGroup},
        {"event.18", 4, "a processor is added", shouldAddAProcessor},
        {"event.18.order", 4, "processors with addresses stand in their order",
         shouldOrderByAddress},
        {"event.19", 4, "processors are added", shouldAddProcessors},
        {"event.20", 4, "a processor is removed", shouldRemoveAProcessor},
        {"event.20.group", 4, "a group is removed, its processors stay", shouldRemoveAGroup},
        {"event.21", 4, "several are removed", shouldRemoveSeveral},
        {"event.25", 4, "a processor is changed, also by event 26", shouldShowChanges},
        {"event.29", 4, "the LAN-USB address is shown", shouldShowTheLanUsbAddress},
        {"event.30", 4, "the host's current processor is selected",
         shouldFollowTheCurrentProcessor},
        {"event.37", 4, "the tree is painted anew", shouldRepaintForWarnings},
        {"event.39", 4, "monitor states change", shouldShowMonitorStates},
        {"event.others", 4, "other numbers do nothing", shouldIgnoreOtherNumbers},
    };
}
