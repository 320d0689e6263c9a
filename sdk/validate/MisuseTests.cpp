#include "sdk/validate/Catalogue.h"
#include "sdk/validate/HostLog.h"
#include "sdk/validate/OracleHost.h"
#include "sdk/validate/Panel.h"

namespace {

using namespace HostEvents;

/// A handler of some other layer's.
class ForeignHandler final : public IAbstractControlInterface
{
};

std::shared_ptr<OracleHost> smallHost()
{
    auto host = std::make_shared<OracleHost>();
    host->project.set({group(100)}, {processor(1, 100), processor(2)});
    return host;
}

/// The contract checks have to tell of what the test has just done wrong.
void expectBreach(Test& test, const char* code)
{
    const QString text = QString::fromLatin1(code);
    test.allow(text);
    test.check(!HostLog::withCode(text).isEmpty(), Code::CheckIsMissing,
               QStringLiteral("the contract checks do not tell %1").arg(text));
}

template <typename... Arguments>
void tellWrongly(OracleHost& host, quint32 number, Arguments... arguments)
{
    const Call call(QStringLiteral("event %1 with arguments of another type").arg(number));
    elsewhere([&] {
        CSubject subject;
        subject.Attach(host.observer());
        subject.Notify<Arguments...>(number, arguments...);
    });
}

void shouldPassOverWrongTypes(Test& test)
{
    const auto host = smallHost();
    const Panel panel(test, host);
    host->tell<TreeReset>();
    expectTree(test, panel, host->project.describe(), Code::TreeDiffers, QStringLiteral("before"));
    const QString before = panel.tree();
    host->project.add(processor(3));
    for (const quint32 number : {17U, 18U, 20U, 25U}) {
        tellWrongly(*host, number, identity(3).toString());
        tellWrongly(*host, number, 3);
    }
    for (const quint32 number : {19U, 21U, 39U}) {
        tellWrongly(*host, number, identity(1));
        tellWrongly(*host, number, QStringList{identity(1).toString()});
    }
    tellWrongly(*host, 26, identity(1));
    tellWrongly(*host, 0, QStringLiteral("2"));
    tellWrongly(*host, 1, 5);
    tellWrongly(*host, 1, SDeviceSetInfo());
    settle();
    test.compare(panel.tree(), before, Code::WrongUseHasEffect,
                 QStringLiteral("events with arguments of another type"));
    expectBreach(test, "TSA-E13");
    // The panel goes on with an empty argument, which is told too.
    for (const char* code : {"TSA-W15", "TSA-W16", "TSA-W17", "TSA-E19"})
        test.allow(QString::fromLatin1(code));
    host->tell<ProcessorAdded>(identity(3));
    expectTree(test, panel, host->project.describe(), Code::TreeDiffers,
               QStringLiteral("after a right event"));
}

void shouldPassOverUnknownIdentities(Test& test)
{
    const auto host = smallHost();
    const Panel panel(test, host);
    host->tell<TreeReset>();
    expectTree(test, panel, host->project.describe(), Code::TreeDiffers, QStringLiteral("before"));
    host->tell<ProcessorAdded>(identity(77));
    host->tell<GroupAdded>(identity(77));
    host->tell<ProcessorChanged>(identity(77));
    host->tell<NodeRemoved>(identity(77));
    host->tell<MonitorStateChanged>(QList<QUuid>{identity(77)});
    host->tell<ProcessorAdded>(identity(1));
    host->tell<GroupAdded>(identity(100));
    host->tell<ProcessorsAdded>(QList<QUuid>{QUuid(), identity(1), identity(1)});
    host->tell<NodesRemoved>(QList<QUuid>());
    settle();
    test.compare(panel.tree(), host->project.describe(), Code::WrongUseHasEffect,
                 QStringLiteral("events about unknown, known, null and repeated identities"));
    for (const char* code : {"TSA-W15", "TSA-W16", "TSA-W17", "TSA-E19", "TSA-E20"})
        expectBreach(test, code);
}

void shouldTellThatARemovedOneIsStillKnown(Test& test)
{
    const auto host = smallHost();
    const Panel panel(test, host);
    host->tell<TreeReset>();
    host->tell<NodeRemoved>(identity(2));
    expectTree(test, panel, QStringLiteral("G100[P1]"), Code::TreeDiffers,
               QStringLiteral("event 20 of what the host still knows"));
    expectBreach(test, "TSA-E21");
}

void shouldStandOperationsOnOtherThreads(Test& test)
{
    const auto host = smallHost();
    const Panel panel(test, host);
    host->tell<TreeReset>();
    const Call call(QStringLiteral("GetWidget on another thread"));
    elsewhere([&] { panel.layer()->GetWidget(); });
    expectBreach(test, "TSA-E09");
    expectTree(test, panel, host->project.describe(), Code::TreeDiffers,
               QStringLiteral("GetWidget on another thread"));
}

void shouldBuildNothingOnOtherThreads(Test& test)
{
    const TargetSelectAreaInit init = Panel::entryPoint(test);
    IAbstractLayerInterface* layer = nullptr;
    bool isBuilt = true;
    const Call call(QStringLiteral("TargetSelectArea_Init on another thread"));
    elsewhere([&] { isBuilt = init(&layer, nullptr); });
    test.check(!isBuilt && !layer, Code::WrongUseHasEffect,
               QStringLiteral("TargetSelectArea_Init builds a panel on another thread"));
    expectBreach(test, "TSA-E07");
}

void shouldBuildNothingWithoutAnApplication(Test& test)
{
    IAbstractLayerInterface* layer = nullptr;
    const bool isBuilt = called(QStringLiteral("TargetSelectArea_Init without QApplication"),
                                [&] { return Panel::entryPoint(test)(&layer, nullptr); });
    test.check(!isBuilt && !layer, Code::WrongUseHasEffect,
               QStringLiteral("TargetSelectArea_Init builds a panel without a QApplication"));
    expectBreach(test, "TSA-E06");
}

void shouldStartWithoutAHandler(Test& test)
{
    {
        const Panel panel(test, nullptr);
        test.compare(panel.tree(), QString(), Code::WrongUseHasEffect,
                     QStringLiteral("the tree without a handler"));
        called(QStringLiteral("DetectDevices without a handler"),
               [&] { return panel.area()->DetectDevices(); });
        called(QStringLiteral("Reconnect without a handler"),
               [&] { return panel.layer()->Reconnect(); });
        called(QStringLiteral("GetAllProcessorNodes without a handler"),
               [&] { return panel.area()->GetAllProcessorNodes(); });
        expectBreach(test, "TSA-E01");
    }
    const Panel panel(test, std::make_shared<ForeignHandler>());
    test.compare(panel.tree(), QString(), Code::WrongUseHasEffect,
                 QStringLiteral("the tree with a handler of another layer"));
    expectBreach(test, "TSA-E02");
}

void shouldTakeAnotherHandlerAtOnce(Test& test)
{
    const auto first = smallHost();
    const Panel panel(test, first);
    first->tell<TreeReset>();
    const auto second = std::make_shared<OracleHost>();
    second->project.set({}, {processor(9)});
    panel.layer()->m_controlHandler = second;
    first->tell<TreeReset>();
    expectTree(test, panel, second->project.describe(), Code::TreeDiffers,
               QStringLiteral("event 16 after another handler was set without Reconnect"));
    expectBreach(test, "TSA-E05");
}

void shouldTellEventsBeforeTheStart(Test& test)
{
    const auto host = smallHost();
    {
        const Panel panel(test, host);
    }
    const Panel panel(test);
    host->tell<TreeReset>();
    settle();
    test.compare(panel.tree(), QString(), Code::WrongUseHasEffect,
                 QStringLiteral("event 16 before Initialize"));
    expectBreach(test, "TSA-E04");
}

void shouldTellUsesAfterTheEnd(Test& test)
{
    const auto host = smallHost();
    Panel panel(test, host);
    ITargetSelectAreaInterface* const dead = panel.area();
    panel.close();
    called(QStringLiteral("operations of a dead layer"), [&] {
        dead->SetReadOnly(true);
        dead->SetCurrentProcessor(identity(1));
        ProcessorTreeSnapshot snapshot;
        dead->GetProcessorTree(snapshot, true);
    });
    expectBreach(test, "TSA-E12");
    host->tell<TreeReset>();
    expectBreach(test, "TSA-W28");
}

void shouldBuildWithoutAParent(Test& test)
{
    IAbstractLayerInterface* layer = nullptr;
    const bool isBuilt = called(QStringLiteral("TargetSelectArea_Init without a parent"),
                                [&] { return Panel::entryPoint(test)(&layer, nullptr); });
    test.require(isBuilt && layer, Code::EntryPointFails,
                 QStringLiteral("TargetSelectArea_Init refuses a null parent"));
    expectBreach(test, "TSA-W08");
    const QPointer<QWidget> widget = layer->GetWidget();
    test.check(widget && !widget->parentWidget(), Code::WrongWidget,
               QStringLiteral("a panel without a parent has one"));
    called(QStringLiteral("delete layer"), [&] { delete layer; });
    test.check(widget.isNull(), Code::PanelDoesNotEnd,
               QStringLiteral("the widget outlives its layer"));
}

} // namespace

Catalogue misuseTests()
{
    return {
        {"misuse.types", 5, "arguments of another type are told and change nothing",
         shouldPassOverWrongTypes},
        {"misuse.identities", 5, "unknown, null and repeated identities change nothing",
         shouldPassOverUnknownIdentities},
        {"misuse.removed", 5, "what is told as removed goes, and is told if still known",
         shouldTellThatARemovedOneIsStillKnown},
        {"misuse.thread", 5, "an operation on another thread is told",
         shouldStandOperationsOnOtherThreads},
        {"misuse.initthread", 5, "no panel is built on another thread",
         shouldBuildNothingOnOtherThreads},
        {"misuse.application", 5, "no panel is built without a QApplication",
         shouldBuildNothingWithoutAnApplication, CatalogueEntry::NoApplication},
        {"misuse.handler", 5, "a missing or foreign handler is told and does no harm",
         shouldStartWithoutAHandler},
        {"misuse.replaced", 5, "a handler that is replaced without a word is used",
         shouldTakeAnotherHandlerAtOnce},
        {"misuse.early", 5, "events before Initialize are told and do nothing",
         shouldTellEventsBeforeTheStart},
        {"misuse.late", 5, "uses after the panel's death are told", shouldTellUsesAfterTheEnd},
        {"misuse.parent", 5, "a panel without a parent lives until its layer is deleted",
         shouldBuildWithoutAParent},
    };
}
