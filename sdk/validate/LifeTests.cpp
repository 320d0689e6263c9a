#include "Interface/HostRequests.h"
#include "sdk/validate/Catalogue.h"
#include "sdk/validate/OracleHost.h"
#include "sdk/validate/Panel.h"

#include <QApplication>
#include <QTimer>

namespace {

void shouldHandOutTheSamePanel(Test& test)
{
    test.allow(QStringLiteral("TSA-W11"));
    const Panel panel(test);
    QWidget other;
    IAbstractLayerInterface* again = nullptr;
    const bool isBuilt = called(QStringLiteral("TargetSelectArea_Init once more"),
                                [&] { return Panel::entryPoint(test)(&again, &other); });
    test.require(isBuilt && again == panel.layer(), Code::EntryPointFails,
                 QStringLiteral("a second TargetSelectArea_Init hands out another panel"));
    test.check(panel.isAlive() && panel.widget()->parentWidget() == &other, Code::WrongWidget,
               QStringLiteral("a second TargetSelectArea_Init does not give the widget to the new "
                              "parent"));
    called(QStringLiteral("TargetSelectArea_Init with the first parent"),
           [&] { return Panel::entryPoint(test)(&again, panel.window()); });
}

void shouldStart(Test& test)
{
    const auto host = std::make_shared<OracleHost>();
    host->project.set({group(100)}, {processor(1, 100), processor(2)});
    Panel panel(test, host);
    test.check(host->registrations == 1, Code::NotStarted,
               QStringLiteral("Initialize calls SetObserver %1 times").arg(host->registrations));
    test.require(host->observer(), Code::NotStarted,
                 QStringLiteral("Initialize registers no observer"));
    expectTree(test, panel, QString(), Code::NotStarted, QStringLiteral("after Initialize"));
    host->tell<HostEvents::TreeReset>();
    expectTree(test, panel, host->project.describe(), Code::TreeDiffers,
               QStringLiteral("after the first event 16"));
    panel.initialize();
    expectTree(test, panel, QString(), Code::NotStarted,
               QStringLiteral("after another Initialize"));
}

void shouldConnectAgain(Test& test)
{
    const auto first = std::make_shared<OracleHost>();
    Panel panel(test, first);
    const auto second = std::make_shared<OracleHost>();
    second->project.set({}, {processor(7)});
    panel.layer()->m_controlHandler = second;
    const bool isConnected =
        called(QStringLiteral("Reconnect"), [&] { return panel.layer()->Reconnect(); });
    test.check(isConnected, Code::NotStarted, QStringLiteral("Reconnect answers false"));
    test.require(second->observer(), Code::NotStarted,
                 QStringLiteral("Reconnect registers no observer with the new handler"));
    second->tell<HostEvents::TreeReset>();
    expectTree(test, panel, second->project.describe(), Code::TreeDiffers,
               QStringLiteral("after event 16 of the new handler"));
}

void shouldDieWithItsParent(Test& test)
{
    test.allow(QStringLiteral("TSA-W28"));
    const auto host = std::make_shared<OracleHost>();
    host->project.set({}, {processor(1)});
    Panel panel(test, host);
    host->tell<HostEvents::TreeReset>();
    const QPointer<QWidget> widget = panel.widget();
    panel.close();
    test.check(widget.isNull(), Code::PanelDoesNotEnd,
               QStringLiteral("the widget outlives its parent"));
    host->tell<HostEvents::ProcessorAdded>(identity(1));
    host->tell<HostEvents::TreeReset>();
    host->tellHere<HostEvents::NodeRemoved>(identity(1));
    settle();
}

void shouldDieWithItsLayer(Test& test)
{
    const auto host = std::make_shared<OracleHost>();
    Panel panel(test, host);
    called(QStringLiteral("delete layer"), [&] { delete panel.layer(); });
    test.check(!panel.isAlive(), Code::PanelDoesNotEnd,
               QStringLiteral("the widget outlives its layer"));
}

void shouldBeBuiltAgain(Test& test)
{
    const auto host = std::make_shared<OracleHost>();
    host->project.set({group(100)}, {processor(1, 100)});
    for (int round = 1; round <= 3; ++round) {
        Panel panel(test, host);
        host->tell<HostEvents::TreeReset>();
        expectTree(test, panel, host->project.describe(), Code::TreeDiffers,
                   QStringLiteral("panel %1").arg(round));
    }
}

void shouldSayNothingOfARightHost(Test& test)
{
    const auto host = std::make_shared<OracleHost>();
    host->project.set({group(100)}, {processor(1, 100), processor(2)});
    const Panel panel(test, host);
    host->tell<HostEvents::TreeReset>();
    host->project.add(group(101));
    host->tell<HostEvents::GroupAdded>(identity(101));
    host->project.remove(identity(2));
    host->tell<HostEvents::NodeRemoved>(identity(2));
    host->project.change(identity(1), [](ProcessorNode& node) { node.online = true; });
    host->tell<HostEvents::ProcessorChanged>(identity(1));
    expectTree(test, panel, host->project.describe(), Code::TreeDiffers,
               QStringLiteral("after four events"));
    // What the contract checks tell now fails the test; some of it comes with a delay.
    bool isDue = false;
    QTimer::singleShot(HostRequests::kFollowUpMs + 100, qApp, [&isDue] { isDue = true; });
    waitUntil([&isDue] { return isDue; });
}

} // namespace

Catalogue lifeTests()
{
    return {
        {"life.start", 2, "Initialize registers the observer, event 16 fills the tree",
         shouldStart},
        {"life.same", 2, "there is one panel in a process", shouldHandOutTheSamePanel},
        {"life.reconnect", 2, "Reconnect goes over to another handler", shouldConnectAgain},
        {"life.parent", 2, "the panel dies with its parent, later events do nothing",
         shouldDieWithItsParent},
        {"life.layer", 2, "the panel dies with its layer", shouldDieWithItsLayer},
        {"life.again", 2, "a new panel is built after the first one died", shouldBeBuiltAgain},
        {"life.quiet", 2, "the contract checks have nothing to say about a right host",
         shouldSayNothingOfARightHost},
    };
}
