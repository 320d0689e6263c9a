#include "Interface/HostEvents.h"
#include "Interface/IPStatusCodes.h"
#include "Interface/TargetSelectHandlerBase.h"
#include "plugin/TargetSelectArea.h"
#include "plugin/TargetSelectData.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "tests/support/HostThread.h"
#include "tests/support/LogTrap.h"
#include "tests/support/TestPanel.h"
#include "tests/support/TreeDump.h"
#include "tests/support/WarningTrap.h"

#include <QMenu>
#include <QTest>
#include <QVector>

#include <algorithm>
#include <functional>
#include <memory>
#include <thread>
#include <type_traits>
#include <vector>

namespace {
using Host = ITargetSelectInterfaceHandler;

// An operation that is new in the interface makes the base abstract until the base has it, too.
static_assert(!std::is_abstract_v<CTargetSelectHandlerBase>);

constexpr int kOperations = 60;

struct Operation
{
    const char* name;
    /// Calls it and returns whether its answer is the harmless one.
    std::function<bool(Host&)> isHarmless;
};

/// An operation that returns nothing.
template <typename Call>
Operation request(const char* name, Call call)
{
    return {name, [call](Host& host) {
                call(host);
                return true;
            }};
}

bool leavesTheMenuAlone(Host& host)
{
    QMenu menu;
    host.AppendContextMenu(NodeProcessor, testId(1), false, &menu);
    return menu.isEmpty();
}

bool acceptsAddresses(Host& host)
{
    int code = 1;
    return !host.CheckIPAddress(1, &code, true) && code == 1
           && !host.CheckIPAddress(1, nullptr, false);
}

bool listsNoEntries(Host& host)
{
    QStringList entries{QStringLiteral("stale")};
    host.GetIPList(entries);
    return entries.isEmpty();
}

bool listsNoAddresses(Host& host)
{
    QStringList ips{QStringLiteral("stale")};
    QStringList names{QStringLiteral("stale")};
    host.GetIPNameLists(ips, names);
    return ips.isEmpty() && names.isEmpty();
}

bool listsNoDeviceSets(Host& host)
{
    QStringList texts{QStringLiteral("stale")};
    return host.GetDeviceSetTexts(texts) == 0 && texts.isEmpty();
}

const QVector<Operation>& operations()
{
    static const QVector<Operation> all{
        request("SetObserver", [](Host& host) { host.SetObserver(nullptr); }),
        {"AppendContextMenu", leavesTheMenuAlone},
        {"DetectAllDevices", [](Host& host) { return host.DetectAllDevices() == 0; }},
        request("DetectProcessorsOnly", [](Host& host) { host.DetectProcessorsOnly(); }),
        {"GetDeviceSetText",
         [](Host& host) { return host.GetDeviceSetText(deviceSet(1)).isEmpty(); }},
        {"ConfirmDeviceSetChange",
         [](Host& host) { return !host.ConfirmDeviceSetChange(deviceSet(1), 0); }},
        {"CheckIPAddress", acceptsAddresses},
        {"GetIPCount", [](Host& host) { return host.GetIPCount(0) == 0; }},
        request("AddIPAddress", [](Host& host) { host.AddIPAddress({}, {}); }),
        request("SaveIPList", [](Host& host) { host.SaveIPList(); }),
        request("RefreshIPList", [](Host& host) { host.RefreshIPList(); }),
        request("ModifyIPAddress", [](Host& host) { host.ModifyIPAddress(0, {}, {}); }),
        {"IpListChanged", [](Host& host) { return !host.IpListChanged({}, {}); }},
        {"GetDeviceSetTexts", listsNoDeviceSets},
        {"ShowProcessorMoreButton", [](Host& host) { return !host.ShowProcessorMoreButton(); }},
        {"ShowNodeMoreButton", [](Host& host) { return !host.ShowNodeMoreButton(); }},
        {"GetAllProcessorNodes", [](Host& host) { return host.GetAllProcessorNodes().isEmpty(); }},
        {"GetAllGroupNodes", [](Host& host) { return host.GetAllGroupNodes().isEmpty(); }},
        {"GetGroupNode", [](Host& host) { return host.GetGroupNode(testId(1)).id.isNull(); }},
        request("AddProcessors", [](Host& host) { host.AddProcessors({}, 1); }),
        request("AddProcessorsWithIps", [](Host& host) { host.AddProcessorsWithIps({}, {}); }),
        request("DeleteProcessors", [](Host& host) { host.DeleteProcessors({}); }),
        request("SetProcessorGroup", [](Host& host) { host.SetProcessorGroup({}, {}, {}); }),
        {"GetProcessorNode",
         [](Host& host) { return host.GetProcessorNode(testId(1)).id.isNull(); }},
        {"CanRenameProcessor", [](Host& host) { return !host.CanRenameProcessor(testId(1)); }},
        {"CanAddProcessors", [](Host& host) { return !host.CanAddProcessors({}); }},
        {"IsAddProcessorsEnabled", [](Host& host) { return !host.IsAddProcessorsEnabled({}); }},
        {"RenameProcessor", [](Host& host) { return !host.RenameProcessor(testId(1), {}); }},
        request("SetNewProcessorOutputs", [](Host& host) { host.SetNewProcessorOutputs(4); }),
        {"CreateGroup", [](Host& host) { return host.CreateGroup({}).isNull(); }},
        request("Ungroup", [](Host& host) { host.Ungroup(testId(1)); }),
        request("RenameGroup", [](Host& host) { host.RenameGroup(testId(1), {}); }),
        request("ReportSelection", [](Host& host) { host.ReportSelection({}, {}, {}, {}); }),
        {"IsRestrictedMode", [](Host& host) { return !host.IsRestrictedMode(); }},
        {"IsDeleteBlocked", [](Host& host) { return !host.IsDeleteBlocked(testId(1)); }},
        {"CheckProcessor", [](Host& host) { return !host.CheckProcessor({}); }},
        {"UsesIpAddressing", [](Host& host) { return !host.UsesIpAddressing(); }},
        {"IsLanUsbMode", [](Host& host) { return !host.IsLanUsbMode(); }},
        {"GetLanUsbProcessorIps",
         [](Host& host) { return host.GetLanUsbProcessorIps().isEmpty(); }},
        {"GetNameMaxBytes", [](Host& host) { return host.GetNameMaxBytes() == 0; }},
        {"IsNameUtf8", [](Host& host) { return host.IsNameUtf8(); }},
        {"GetCurrentProcessorId", [](Host& host) { return host.GetCurrentProcessorId().isNull(); }},
        {"ReadOnlineIPAddresses",
         [](Host& host) { return host.ReadOnlineIPAddresses() == IPLIST_ONLINE_EMPTY; }},
        {"GetIPNameLists", listsNoAddresses},
        {"GetIPList", listsNoEntries},
        request("ClearIPList", [](Host& host) { host.ClearIPList(); }),
        request("DeleteIPAddress", [](Host& host) { host.DeleteIPAddress(1); }),
        {"ImportIPFile", [](Host& host) { return host.ImportIPFile({}) == IPIMPORT_NO_VALID_IP; }},
        {"GetIPEntry", [](Host& host) { return host.GetIPEntry(0).isEmpty(); }},
        {"GetFixedOutputCount", [](Host& host) { return host.GetFixedOutputCount() == 0; }},
        {"GetSelectionMode", [](Host& host) { return host.GetSelectionMode() == 0; }},
        {"GetSelectedProcessors",
         [](Host& host) { return host.GetSelectedProcessors().isEmpty(); }},
        {"IsIpManagementAvailable", [](Host& host) { return !host.IsIpManagementAvailable(); }},
        request("AddProcessorsFromIpList",
                [](Host& host) { host.AddProcessorsFromIpList({}, {}); }),
        request("PreDeleteProcessors", [](Host& host) { host.PreDeleteProcessors({}); }),
        {"AcceptProcessorForSnapshot",
         [](Host& host) { return host.AcceptProcessorForSnapshot({}); }},
        request("ShowTipMessage", [](Host& host) { host.ShowTipMessage({}); }),
        {"IsFrontPanelHighlightAvailable",
         [](Host& host) { return !host.IsFrontPanelHighlightAvailable(); }},
        {"IsFrontPanelHighlighted",
         [](Host& host) { return !host.IsFrontPanelHighlighted(testId(1)); }},
        request("SetFrontPanelHighlight", [](Host& host) { host.SetFrontPanelHighlight(true); }),
    };
    return all;
}

/// The functions of the records, in the order in which they were logged.
QStringList loggedOperations(const LogTrap& log)
{
    QStringList names;
    for (const LogRecord& record : log.records())
        names.append(QString::fromStdString(record.function));
    return names;
}

/// The smallest host that shows a project: five operations.
class Viewer final : public CTargetSelectHandlerBase
{
public:
    FakeHandler project;

    void SetObserver(CObserver* observer) override { project.SetObserver(observer); }
    QList<ProcessorGroupNode> GetAllGroupNodes() override { return project.GetAllGroupNodes(); }
    QList<ProcessorNode> GetAllProcessorNodes() override { return project.GetAllProcessorNodes(); }
    ProcessorGroupNode GetGroupNode(const QUuid& id) override { return project.GetGroupNode(id); }
    ProcessorNode GetProcessorNode(const QUuid& id) override
    {
        return project.GetProcessorNode(id);
    }
};

/// The panel with a viewer behind it: the group 10 with the processor 1, and 2 outside.
class ViewedPanel final
{
public:
    ViewedPanel()
    {
        viewer->project.setProject({testGroup(10)}, {testProcessor(1, 10), testProcessor(2)});
        area().m_controlHandler = viewer;
        area().Initialize();
        notify<HostEvents::TreeReset>();
    }

    CTargetSelectArea& area() { return panel.area(); }
    QString dump() { return panel.dump(); }

    template <typename Event, typename... Arguments>
    void notify(Arguments... arguments)
    {
        CSubject subject;
        subject.Attach(viewer->project.observer);
        Event::tell(subject, std::move(arguments)...);
    }

    std::shared_ptr<Viewer> viewer = std::make_shared<Viewer>();
    TestPanel panel;
};

} // namespace

class HandlerBaseTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldAnswerEveryOperationHarmlessly_data();
    void shouldAnswerEveryOperationHarmlessly();
    void shouldKnowEveryOperation();
    void shouldNoteAnOperationOnceForEachHandler();
    void shouldNoteOnceWhenThreadsAskTogether();
    void shouldRunThePanelWithFiveOperations();
    void shouldNoteNothingThatIsOverridden();
    void shouldShowTheHostsProjectAgainAfterAMove();
};

void HandlerBaseTest::shouldAnswerEveryOperationHarmlessly_data()
{
    QTest::addColumn<int>("row");
    for (int row = 0; row < operations().size(); ++row)
        QTest::newRow(operations().at(row).name) << row;
}

void HandlerBaseTest::shouldAnswerEveryOperationHarmlessly()
{
    QFETCH(int, row);
    const LogTrap log;
    CTargetSelectHandlerBase host;
    QVERIFY(operations().at(row).isHarmless(host));

    const QString name = QString::fromLatin1(operations().at(row).name);
    QCOMPARE(loggedOperations(log), QStringList{name});
    const QString start = name + QStringLiteral(" is not overridden; the panel gets: ");
    const QString message = log.messages().join(QLatin1Char('\n'));
    QVERIFY2(message.startsWith(start) && message.size() > start.size(), qPrintable(message));
}

void HandlerBaseTest::shouldKnowEveryOperation()
{
    const LogTrap log;
    CTargetSelectHandlerBase host;
    for (const Operation& operation : operations())
        operation.isHarmless(host);
    QStringList names = loggedOperations(log);
    names.removeDuplicates();
    QCOMPARE(names.size(), kOperations);
}

void HandlerBaseTest::shouldNoteAnOperationOnceForEachHandler()
{
    const LogTrap log;
    CTargetSelectHandlerBase first;
    for (int time = 0; time < 3; ++time)
        QCOMPARE(first.GetNameMaxBytes(), 0);
    QCOMPARE(loggedOperations(log), QStringList{QStringLiteral("GetNameMaxBytes")});

    CTargetSelectHandlerBase second;
    QCOMPARE(second.GetNameMaxBytes(), 0);
    QCOMPARE(log.messages().size(), 2);
}

void HandlerBaseTest::shouldNoteOnceWhenThreadsAskTogether()
{
    const LogTrap log;
    CTargetSelectHandlerBase host;
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int n = 0; n < 4; ++n) {
        threads.emplace_back([&] {
            for (int time = 0; time < 1000; ++time) {
                host.GetProcessorNode({});
                host.GetGroupNode({});
                host.GetCurrentProcessorId();
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    QStringList names = loggedOperations(log);
    names.sort();
    QCOMPARE(names.join(QLatin1Char(' ')),
             QStringLiteral("GetCurrentProcessorId GetGroupNode GetProcessorNode"));
}

void HandlerBaseTest::shouldRunThePanelWithFiveOperations()
{
    const LogTrap log;
    ViewedPanel viewed;
    FakeHandler& project = viewed.viewer->project;
    QCOMPARE(viewed.dump(), QStringLiteral("All processors(2)[G10[1],2]"));

    project.setGroup(testGroup(11));
    viewed.notify<HostEvents::GroupAdded>(testId(11));
    HostThread thread;
    QVERIFY(thread.run([&] {
        project.setProcessor(testProcessor(3, 11));
        viewed.notify<HostEvents::ProcessorAdded>(testId(3));
    }));
    QCOMPARE(viewed.dump(), QStringLiteral("All processors(3)[G10[1],G11[3],2]"));

    project.removeProcessor(testId(1));
    viewed.notify<HostEvents::NodeRemoved>(testId(1));
    QCOMPARE(viewed.dump(), QStringLiteral("All processors(2)[G10[],G11[3],2]"));

    ProcessorTreeSnapshot snapshot;
    viewed.area().GetProcessorTree(snapshot, true);
    QCOMPARE(snapshot.groups.size(), 2);
    QCOMPARE(snapshot.processors.size(), 1);
}

void HandlerBaseTest::shouldNoteNothingThatIsOverridden()
{
    const LogTrap log;
    ViewedPanel viewed;
    viewed.area().resize(300, 500);
    viewed.area().show();
    QVERIFY(QTest::qWaitForWindowExposed(&viewed.area()));
    viewed.area().SetCurrentProcessor(testId(2));
    const QStringList noted = loggedOperations(log);
    QVERIFY(noted.contains(QStringLiteral("ReportSelection")));
    QVERIFY(noted.contains(QStringLiteral("IsIpManagementAvailable")));
    for (const char* name : {"SetObserver", "GetAllGroupNodes", "GetAllProcessorNodes",
                             "GetGroupNode", "GetProcessorNode"})
        QVERIFY2(!noted.contains(QLatin1String(name)), name);
}

void HandlerBaseTest::shouldShowTheHostsProjectAgainAfterAMove()
{
    const LogTrap log;
    ViewedPanel viewed;
    CProcessorTreeModel& model = viewed.panel.model();
    const QString before = viewed.dump();

    model.moveProcessors({viewed.panel.index(2)}, testId(10));
    QCOMPARE(viewed.dump(), QStringLiteral("All processors(2)[G10[1,2]]"));
    QVERIFY(loggedOperations(log).contains(QStringLiteral("SetProcessorGroup")));
    viewed.notify<HostEvents::TreeReset>();
    QCOMPARE(viewed.dump(), before);
}

TSA_TEST_MAIN(HandlerBaseTest)
#include "tst_handlerbase.moc"
