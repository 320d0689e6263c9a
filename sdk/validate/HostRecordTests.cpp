#include "sdk/validate/Catalogue.h"
#include "sdk/validate/HostSession.h"
#include "sdk/validate/Project.h"
#include "sdk/validate/Threads.h"

#include <QSet>

namespace {

QString text(const ProcessorNode& node)
{
    return QStringLiteral("%1 \"%2\" number %3 in %4, address %5")
        .arg(node.id.toString(), node.name)
        .arg(node.number)
        .arg(node.groupId.toString())
        .arg(node.ipAddress, 0, 16);
}

void shouldOpen(Test& test)
{
    const HostSession session(test);
}

void shouldListEachOnce(Test& test)
{
    HostSession session(test);
    QSet<QUuid> seen;
    const auto look = [&](const QUuid& id, const QString& name, const QString& list) {
        test.check(!id.isNull(), Code::BadIdentity,
                   QStringLiteral("\"%1\" in %2 has the null identity").arg(name, list));
        test.check(!seen.contains(id), Code::BadIdentity,
                   QStringLiteral("%1 stands in the lists more than once").arg(id.toString()));
        seen.insert(id);
    };
    const QList<ProcessorGroupNode> groups = session.groups();
    for (const ProcessorGroupNode& group : groups)
        look(group.id, group.name, QStringLiteral("GetAllGroupNodes"));
    const QSet<QUuid> known = seen;
    const QList<ProcessorNode> processors = session.processors();
    for (const ProcessorNode& node : processors) {
        look(node.id, node.name, QStringLiteral("GetAllProcessorNodes"));
        test.check(
            node.groupId.isNull() || known.contains(node.groupId), Code::GroupIsNotListed,
            QStringLiteral("%1 is in a group that GetAllGroupNodes does not list").arg(text(node)));
    }
}

void shouldAnswerWhatItLists(Test& test)
{
    HostSession session(test);
    const QList<ProcessorNode> processors = session.processors();
    for (const ProcessorNode& node : processors) {
        const ProcessorNode answer = session.handler().GetProcessorNode(node.id);
        test.compare(text(answer), text(node), Code::ListAndRecordDisagree,
                     QStringLiteral("GetProcessorNode for a listed processor"));
    }
    const QList<ProcessorGroupNode> groups = session.groups();
    for (const ProcessorGroupNode& group : groups) {
        const ProcessorGroupNode answer = session.handler().GetGroupNode(group.id);
        test.compare(answer.id.toString() + answer.name, group.id.toString() + group.name,
                     Code::ListAndRecordDisagree,
                     QStringLiteral("GetGroupNode for a listed group"));
    }
}

void shouldNotKnowTheUnknown(Test& test)
{
    HostSession session(test);
    QList<QUuid> unknown{QUuid(), identity(4711), identity(4712)};
    const QList<ProcessorGroupNode> groups = session.groups();
    const QList<ProcessorNode> processors = session.processors();
    const auto check = [&](const QUuid& asked, const QUuid& answered, const char* operation) {
        test.check(answered.isNull(), Code::UnknownIdentityIsKnown,
                   QStringLiteral("%1 answers the unknown %2 with the record of %3")
                       .arg(QLatin1String(operation), asked.toString(), answered.toString()));
    };
    for (const QUuid& id : qAsConst(unknown)) {
        check(id, session.handler().GetProcessorNode(id).id, "GetProcessorNode");
        check(id, session.handler().GetGroupNode(id).id, "GetGroupNode");
    }
    for (const ProcessorGroupNode& group : groups)
        check(group.id, session.handler().GetProcessorNode(group.id).id, "GetProcessorNode");
    for (const ProcessorNode& node : processors)
        check(node.id, session.handler().GetGroupNode(node.id).id, "GetGroupNode");
}

void shouldAnswerOnEveryThread(Test& test)
{
    HostSession session(test);
    const QList<ProcessorNode> processors = session.processors();
    const QList<ProcessorGroupNode> groups = session.groups();
    const QUuid current = session.handler().GetCurrentProcessorId();
    const auto work = [&] {
        for (int round = 0; round < 20; ++round) {
            for (const ProcessorNode& node : processors) {
                test.compare(text(session.handler().GetProcessorNode(node.id)), text(node),
                             Code::ThreadsDisagree,
                             QStringLiteral("GetProcessorNode off the GUI thread"));
            }
            for (const ProcessorGroupNode& group : groups) {
                test.compare(session.handler().GetGroupNode(group.id).name, group.name,
                             Code::ThreadsDisagree,
                             QStringLiteral("GetGroupNode off the GUI thread"));
            }
        }
        test.check(session.handler().GetCurrentProcessorId() == current, Code::ThreadsDisagree,
                   QStringLiteral("GetCurrentProcessorId answers otherwise off the GUI thread"));
    };
    elsewhere(QList<std::function<void()>>{work, work});
}

void shouldAnswerListsThatFit(Test& test)
{
    HostSession session(test);
    WatchedHandler& handler = session.handler();
    const auto check = [&](int left, int right, const char* what) {
        test.check(left == right, Code::UnequalLists,
                   QStringLiteral("%1: %2 and %3").arg(QLatin1String(what)).arg(left).arg(right));
    };
    QStringList ips;
    QStringList names;
    QStringList entries;
    QStringList texts;
    handler.GetIPNameLists(ips, names);
    handler.GetIPList(entries);
    check(ips.size(), names.size(), "the lengths of the two lists of GetIPNameLists");
    check(entries.size(), ips.size(), "the lengths of GetIPList and GetIPNameLists");
    check(handler.GetIPCount(0), entries.size(), "GetIPCount and the length of GetIPList");
    for (int row = 0; row < qMin(entries.size(), handler.GetIPCount(0)); ++row) {
        test.compare(handler.GetIPEntry(row), entries.at(row), Code::UnequalLists,
                     QStringLiteral("GetIPEntry %1 and GetIPList").arg(row));
    }
    check(handler.GetDeviceSetTexts(texts), texts.size(),
          "GetDeviceSetTexts and the length of its list");
}

/// What the panel asks while it is painted, while it is clicked and while it writes a snapshot.
void shouldAnswerThePanel(Test& test)
{
    HostSession session(test);
    Panel& panel = session.panel();
    const QList<ProcessorNode> processors = session.processors();
    called(QStringLiteral("painting"), [&] { panel.widget()->grab(); });
    for (const ProcessorNode& node : processors) {
        called(QStringLiteral("SetCurrentProcessor"),
               [&] { panel.area()->SetCurrentProcessor(node.id); });
        settle();
        test.check(panel.currentRow() == node.id, Code::OperationHasNoEffect,
                   QStringLiteral("SetCurrentProcessor does not select %1").arg(text(node)));
    }
    ProcessorTreeSnapshot snapshot;
    called(QStringLiteral("GetProcessorTree with onlyAccepted"),
           [&] { panel.area()->GetProcessorTree(snapshot, true); });
    session.expectTree(QStringLiteral("the user has looked around"), false);
}

} // namespace

Catalogue hostRecordTests()
{
    return {
        {"host.open", 1, "the host plugin opens a project, the panel shows it", shouldOpen,
         CatalogueEntry::HostPlugin},
        {"host.lists", 2, "identities are given once, groups are listed", shouldListEachOnce,
         CatalogueEntry::HostPlugin},
        {"host.records", 2, "records are what the lists say", shouldAnswerWhatItLists,
         CatalogueEntry::HostPlugin},
        {"host.unknown", 2, "there is no record of what is unknown", shouldNotKnowTheUnknown,
         CatalogueEntry::HostPlugin},
        {"host.threads", 2, "records are the same on every thread", shouldAnswerOnEveryThread,
         CatalogueEntry::HostPlugin},
        {"host.counts", 2, "lists and counts fit together", shouldAnswerListsThatFit,
         CatalogueEntry::HostPlugin},
        {"host.panel", 3, "the panel gets the answers that it needs", shouldAnswerThePanel,
         CatalogueEntry::HostPlugin},
    };
}
