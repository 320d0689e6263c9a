#include "sdk/validate/Catalogue.h"
#include "sdk/validate/HostSession.h"
#include "sdk/validate/Project.h"
#include "sdk/validate/Threads.h"

namespace {

/// Asks for one more processor in `group` in the way that the panel would choose. Returns false if
/// the host offers none.
bool addOne(HostSession& session, const QUuid& group)
{
    WatchedHandler& handler = session.handler();
    const ProcessorNode first = session.processors().value(0);
    if (!handler.CanAddProcessors(first) || !handler.IsAddProcessorsEnabled(first))
        return false;
    if (handler.IsIpManagementAvailable() && !handler.IsLanUsbMode()) {
        QStringList entries;
        handler.GetIPList(entries);
        if (entries.isEmpty())
            return false;
        session.make("AddProcessorsFromIpList",
                     [&] { handler.AddProcessorsFromIpList(group, {entries.constFirst()}); });
        return true;
    }
    if (!handler.UsesIpAddressing()) {
        session.make("AddProcessors", [&] { handler.AddProcessors(group, 1); });
        return true;
    }
    int code = 0;
    quint32 address = 0x0A4D0002; // 10.77.0.2
    while (address < 0x0A4D00F0 && handler.CheckIPAddress(address, &code, true))
        ++address;
    session.make("AddProcessorsWithIps", [&] { handler.AddProcessorsWithIps(group, {address}); });
    return true;
}

void addTo(HostSession& session, const QUuid& group, const QString& place)
{
    QList<QUuid> before;
    const QList<ProcessorNode> old = session.processors();
    for (const ProcessorNode& node : old)
        before.append(node.id);
    if (!addOne(session, group))
        session.test().skip(QStringLiteral("the host offers no additions"));
    QList<ProcessorNode> added;
    const QList<ProcessorNode> now = session.processors();
    for (const ProcessorNode& node : now) {
        if (!before.contains(node.id))
            added.append(node);
    }
    if (session.test().check(added.size() == 1, Code::NotCarriedOut,
                             QStringLiteral("after the addition of one processor to %1 there are "
                                            "%2 new ones")
                                 .arg(place)
                                 .arg(added.size()))) {
        session.test().check(added.constFirst().groupId == group, Code::NotCarriedOut,
                             QStringLiteral("the new processor is not in %1").arg(place));
    }
    session.expectTree(QStringLiteral("an addition to ") + place, false);
}

void shouldAdd(Test& test)
{
    HostSession session(test);
    addTo(session, QUuid(), QStringLiteral("the root"));
    const ProcessorGroupNode group = session.someGroup();
    if (!group.id.isNull())
        addTo(session, group.id, QStringLiteral("a group"));
}

void shouldDelete(Test& test)
{
    HostSession session(test);
    const auto remove = [&](const QList<QUuid>& ids) {
        WatchedHandler& handler = session.handler();
        session.make("DeleteProcessors", [&] {
            if (handler.IsIpManagementAvailable())
                handler.PreDeleteProcessors(ids);
            handler.DeleteProcessors(ids);
        });
        for (const QUuid& id : ids) {
            test.check(handler.GetProcessorNode(id).id != id, Code::NotCarriedOut,
                       QStringLiteral("%1 is still known after its deletion").arg(id.toString()));
        }
        session.expectTree(QStringLiteral("a deletion"), false);
    };
    const QList<ProcessorNode> all = session.processors();
    remove({all.at(0).id});
    remove({all.at(2).id, all.at(1).id});
}

/// Creates a group as the panel does, and returns its identity; null if the host refuses.
QUuid createGroup(HostSession& session)
{
    QUuid id;
    ProcessorGroupNode wanted;
    wanted.name = QStringLiteral("Validated");
    wanted.processors = {session.processors().value(0)};
    // A null identity refuses, and then nothing follows.
    const auto isRefused = [&] {
        id = session.handler().CreateGroup(wanted);
        if (id.isNull())
            session.test().skip(QStringLiteral("the host creates no groups"));
    };
    session.make("CreateGroup", isRefused);
    return id;
}

void shouldCreateAGroup(Test& test)
{
    HostSession session(test);
    const QUuid id = createGroup(session);
    test.check(session.handler().GetGroupNode(id).id == id, Code::NotCarriedOut,
               QStringLiteral("GetGroupNode does not know what CreateGroup has returned"));
    bool isListed = false;
    const QList<ProcessorGroupNode> groups = session.groups();
    for (const ProcessorGroupNode& group : groups)
        isListed = isListed || group.id == id;
    test.check(isListed, Code::NotCarriedOut,
               QStringLiteral("GetAllGroupNodes does not list what CreateGroup has returned"));
    session.expectTree(QStringLiteral("a group was created"), false);
}

/// Moves two processors into `group`, or out to the root.
void move(HostSession& session, const ProcessorGroupNode& group)
{
    const QList<ProcessorNode> all = session.processors();
    const QList<QUuid> ids{all.at(0).id, all.at(all.size() - 1).id};
    session.make("SetProcessorGroup",
                 [&] { session.handler().SetProcessorGroup(group, group.id, ids); });
    for (const QUuid& id : ids) {
        session.test().check(session.handler().GetProcessorNode(id).groupId == group.id,
                             Code::NotCarriedOut,
                             QStringLiteral("the record of %1 does not name the group to which it "
                                            "was moved")
                                 .arg(id.toString()));
    }
    session.expectTree(QStringLiteral("a move"), true);
}

void shouldMove(Test& test)
{
    HostSession session(test);
    ProcessorGroupNode group = session.someGroup();
    if (group.id.isNull())
        group = session.handler().GetGroupNode(createGroup(session));
    move(session, group);
    move(session, ProcessorGroupNode());
}

void shouldRename(Test& test)
{
    HostSession session(test);
    WatchedHandler& handler = session.handler();
    const QUuid id = session.processors().at(0).id;
    if (!handler.CanRenameProcessor(id))
        test.skip(QStringLiteral("the host lets nobody rename the first processor"));
    const QString before = handler.GetProcessorNode(id).name;
    bool isRenamed = false;
    session.make("RenameProcessor",
                 [&] { isRenamed = handler.RenameProcessor(id, QStringLiteral("Renamed")); });
    test.compare(handler.GetProcessorNode(id).name, isRenamed ? QStringLiteral("Renamed") : before,
                 Code::NotCarriedOut,
                 QStringLiteral("the name after RenameProcessor has answered %1")
                     .arg(isRenamed ? QStringLiteral("true") : QStringLiteral("false")));
    session.expectTree(QStringLiteral("a new name"), true);
}

void shouldRenameAGroup(Test& test)
{
    HostSession session(test);
    ProcessorGroupNode group = session.someGroup();
    if (group.id.isNull())
        group.id = createGroup(session);
    session.make("RenameGroup",
                 [&] { session.handler().RenameGroup(group.id, QStringLiteral("Renamed group")); });
    test.compare(session.handler().GetGroupNode(group.id).name, QStringLiteral("Renamed group"),
                 Code::NotCarriedOut, QStringLiteral("the name of the group after RenameGroup"));
    session.expectTree(QStringLiteral("a new name of a group"), true);
}

void shouldUngroup(Test& test)
{
    HostSession session(test);
    ProcessorGroupNode group = session.someGroup();
    if (group.id.isNull())
        group = session.handler().GetGroupNode(createGroup(session));
    move(session, group);
    const int before = session.processors().size();
    // The panel dissolves the group first, and then moves the processors out, one by one.
    const QList<ProcessorNode> all = session.processors();
    session.make("Ungroup", [&] {
        session.handler().Ungroup(group.id);
        for (const ProcessorNode& node : all) {
            if (node.groupId == group.id)
                session.handler().SetProcessorGroup({}, QUuid(), {node.id});
        }
    });
    test.check(session.handler().GetGroupNode(group.id).id != group.id, Code::NotCarriedOut,
               QStringLiteral("the group is still known after Ungroup"));
    test.check(session.processors().size() == before, Code::NotCarriedOut,
               QStringLiteral("Ungroup takes processors along"));
    const QList<ProcessorNode> left = session.processors();
    for (const ProcessorNode& node : left) {
        test.check(node.groupId != group.id, Code::NotCarriedOut,
                   QStringLiteral("a processor still names the group after Ungroup"));
    }
    session.expectTree(QStringLiteral("a group was dissolved"), true);
}

void shouldPassOverRequestsAboutTheUnknown(Test& test)
{
    HostSession session(test);
    WatchedHandler& handler = session.handler();
    const QString before = session.describe();
    const QUuid unknown = identity(4711);
    test.check(!handler.RenameProcessor(unknown, QStringLiteral("Nobody")),
               Code::UnknownIdentityIsKnown,
               QStringLiteral("RenameProcessor answers true for an unknown processor"));
    handler.DeleteProcessors({unknown, QUuid()});
    handler.DeleteProcessors({});
    handler.RenameGroup(unknown, QStringLiteral("Nobody"));
    handler.Ungroup(unknown);
    handler.SetProcessorGroup({}, QUuid(), {unknown});
    handler.IsDeleteBlocked(unknown);
    handler.CanRenameProcessor(unknown);
    handler.ReportSelection(unknown, {unknown}, {}, QUuid());
    test.compare(session.describe(), before, Code::UnknownIdentityIsKnown,
                 QStringLiteral("the project after requests about unknown identities"));
    // A host that tells of a deletion that was none is told so by the contract checks.
    test.allow(QStringLiteral("TSA-W15"));
    test.allow(QStringLiteral("TSA-E19"));
    session.expectTree(QStringLiteral("requests about unknown identities"), true);
}

void shouldTellItsOwnChanges(Test& test)
{
    HostSession session(test);
    if (!session.change())
        test.skip(QStringLiteral("the host plugin has no changes of its own"));
    for (int round = 0; round < 20; ++round) {
        called(QStringLiteral("the host plugin's change"), [&] { elsewhere(session.change()); });
        session.expectTree(QStringLiteral("a change of the host's own"), false);
    }
    const QList<ToldEvent> events = session.takeEvents();
    for (const ToldEvent& event : events) {
        test.check(event.wrong.isEmpty(), Code::EventBeforeChange,
                   QStringLiteral("event %1: %2").arg(event.number).arg(event.wrong));
    }
}

/// One after the other in one panel, as in a day's work.
void shouldWorkForADay(Test& test)
{
    HostSession session(test);
    for (int round = 0; round < 3; ++round) {
        if (!addOne(session, QUuid()))
            break;
    }
    session.expectTree(QStringLiteral("three additions"), false);
    const QUuid created = createGroup(session);
    move(session, session.handler().GetGroupNode(created));
    session.make("RenameGroup",
                 [&] { session.handler().RenameGroup(created, QStringLiteral("Day")); });
    called(QStringLiteral("Reconnect"), [&] { session.panel().layer()->Reconnect(); });
    session.make("DeleteProcessors",
                 [&] { session.handler().DeleteProcessors({session.processors().at(0).id}); });
    session.expectTree(QStringLiteral("a day's work"), true);
    session.renewPanel();
    addOne(session, created);
    session.expectTree(QStringLiteral("an addition in a new panel"), false);
}

} // namespace

Catalogue hostRequestTests()
{
    return {
        {"host.add", 3, "additions are carried out and told", shouldAdd,
         CatalogueEntry::HostPlugin},
        {"host.delete", 3, "deletions are carried out and told", shouldDelete,
         CatalogueEntry::HostPlugin},
        {"host.group", 3, "groups are created and told", shouldCreateAGroup,
         CatalogueEntry::HostPlugin},
        {"host.move", 3, "moves are carried out", shouldMove, CatalogueEntry::HostPlugin},
        {"host.rename", 3, "processors are renamed, or that is refused", shouldRename,
         CatalogueEntry::HostPlugin},
        {"host.renamegroup", 3, "groups are renamed", shouldRenameAGroup,
         CatalogueEntry::HostPlugin},
        {"host.ungroup", 3, "groups are dissolved, their processors stay", shouldUngroup,
         CatalogueEntry::HostPlugin},
        {"host.change", 4, "the host tells its own changes", shouldTellItsOwnChanges,
         CatalogueEntry::HostPlugin},
        {"host.unknownrequests", 5, "requests about the unknown change nothing",
         shouldPassOverRequestsAboutTheUnknown, CatalogueEntry::HostPlugin},
        {"host.day", 5, "one panel shows all requests, and a new one goes on", shouldWorkForADay,
         CatalogueEntry::HostPlugin},
    };
}
