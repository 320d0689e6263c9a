#include "host/workbench/trace/ShortIds.h"
#include "tests/support/LogTrap.h"
#include "tests/support/WarningTrap.h"
#include "tests/workbench/HandlerUnderTest.h"

#include <QElapsedTimer>
#include <QMenu>
#include <QTest>

#include <memory>

Q_DECLARE_METATYPE(Notifier::Delivery)
Q_DECLARE_METATYPE(HostReply)

namespace {
/// "G1[P11,P12] G2[P13] P14": the groups and, behind them, who stands under the root.
QString treeText(const ProjectStore& store)
{
    const Project project = store.snapshot();
    const auto names = [](const QList<ProcessorNode>& processors) {
        QStringList texts;
        for (const ProcessorNode& node : processors)
            texts.append(node.name);
        return texts;
    };
    QStringList texts;
    for (const ProcessorGroupNode& group : project.allGroups())
        texts.append(QStringLiteral("%1[%2]").arg(group.name,
                                                  names(group.processors).join(QLatin1Char(','))));
    QList<ProcessorNode> loose;
    for (const ProcessorNode& node : project.processors) {
        if (node.groupId.isNull())
            loose.append(node);
    }
    return (texts + names(loose)).join(QLatin1Char(' '));
}

template <typename Value>
void answer(HandlerUnderTest& test, Value HandlerAnswers::*which, const Value& value)
{
    HandlerAnswers answers = test.store.snapshot().answers;
    answers.*which = value;
    test.store.setAnswers(answers);
}

ProcessorGroupNode groupNamed(const QString& name)
{
    ProcessorGroupNode group;
    group.name = name;
    return group;
}

} // namespace

class HandlerEditsTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldReplyAtTheConfiguredTime_data();
    void shouldReplyAtTheConfiguredTime();
    void shouldKeepTheOrderOfLateEdits();
    void shouldNotCarryLateEditsIntoAnotherProject();
    void shouldForgetLateEditsWithTheHandler();
    void shouldChangeTheProjectBeforeItRaisesEvents();
    void shouldRaiseOneEventForEachProcessor();
    void shouldAddToGroups();
    void shouldAddNoMoreThanFit();
    void shouldRefuseTakenAddresses();
    void shouldGiveNewProcessorsTheirOutputs();
    void shouldRefuseDuplicateNames();
    void shouldRestoreGroupNamesAfterARefusal();
    void shouldKeepWhatItMayNotDelete();
    void shouldDeleteFewerThanAsked();
    void shouldMissTheAnnouncementOfADeletion();
    void shouldMoveIntoGroupsAndOut();
    void shouldForgetDeletedProcessorsInTheSelection();
    void shouldKeepTheLightsOfEachRow();
    void shouldExtendContextMenus();
};

void HandlerEditsTest::shouldReplyAtTheConfiguredTime_data()
{
    QTest::addColumn<HostReply>("reply");
    QTest::addColumn<Notifier::Delivery>("delivery");
    for (const HostReply reply : allHostReplies()) {
        const QByteArray name = hostReplyName(reply).toLatin1();
        QTest::newRow(name + ", GUI thread") << reply << Notifier::Delivery::GuiThread;
        QTest::newRow(name + ", notifying thread") << reply << Notifier::Delivery::NotifyingThread;
    }
}

void HandlerEditsTest::shouldReplyAtTheConfiguredTime()
{
    QFETCH(HostReply, reply);
    QFETCH(Notifier::Delivery, delivery);
    HandlerUnderTest test;
    answer(test, &HandlerAnswers::hostReply, reply);
    test.notifier.setDelivery(delivery);
    QElapsedTimer sinceCall;
    sinceCall.start();
    test.handler.DeleteProcessors({sampleId(12), sampleId(13)});
    const QString onReturn = test.observer.numbers();
    const QString treeOnReturn = treeText(test.store);
    const bool isLate = reply == HostReply::AfterReturn || reply == HostReply::SecondLater;
    QCOMPARE(treeOnReturn, isLate ? QStringLiteral("G1[P11,P12] G2[P13] P14")
                                  : QStringLiteral("G1[P11] G2[] P14"));
    if (isLate)
        QCOMPARE(onReturn, QString());
    else if (reply == HostReply::BeforeReturn || delivery == Notifier::Delivery::GuiThread)
        QCOMPARE(onReturn, QStringLiteral("21"));
    QTRY_COMPARE(test.observer.numbers(), QStringLiteral("21"));
    if (reply == HostReply::SecondLater)
        QVERIFY2(sinceCall.elapsed() >= 990, qPrintable(QString::number(sinceCall.elapsed())));
    QTRY_VERIFY(test.notifier.isIdle());
    QCOMPARE(treeText(test.store), QStringLiteral("G1[P11] G2[] P14"));
    const QList<QThread*> threads = test.observer.threads();
    QCOMPARE(threads.size(), 1);
    QCOMPARE(threads.first() == QThread::currentThread(),
             delivery == Notifier::Delivery::GuiThread);
}

void HandlerEditsTest::shouldKeepTheOrderOfLateEdits()
{
    for (const HostReply reply : {HostReply::AfterReturn, HostReply::SecondLater}) {
        HandlerUnderTest test;
        answer(test, &HandlerAnswers::hostReply, reply);
        const QUuid id = test.handler.CreateGroup(groupNamed(QStringLiteral("New")));
        QVERIFY(!id.isNull());
        QVERIFY(test.handler.GetGroupNode(id).id.isNull());
        test.handler.AddProcessors(id, 2);
        test.handler.SetNewProcessorOutputs(20);
        test.handler.SetProcessorGroup(groupNamed(QStringLiteral("New")), id, {sampleId(14)});
        QVERIFY(test.handler.RenameProcessor(sampleId(14), QStringLiteral("Q14")));
        test.handler.RenameGroup(id, QStringLiteral("Newer"));
        test.handler.Ungroup(sampleId(2));
        test.handler.DeleteProcessors({sampleId(11)});
        QCOMPARE(test.events(), QString());
        QTRY_COMPARE(test.observer.numbers(), QStringLiteral("17 19 25 25 25 26 20 20 30"));
        QCOMPARE(treeText(test.store),
                 QStringLiteral("G1[P12] Newer[Q14,Processor 5,Processor 6] P13"));
        QCOMPARE(test.handler.GetGroupNode(id).processors.size(), 3);
        QCOMPARE(test.store.snapshot().processors.last().hostAttribute11, 20);
    }
}

void HandlerEditsTest::shouldNotCarryLateEditsIntoAnotherProject()
{
    HandlerUnderTest test;
    answer(test, &HandlerAnswers::hostReply, HostReply::AfterReturn);
    test.handler.AddProcessors(QUuid(), 3);
    test.store.replace(smallProject());
    answer(test, &HandlerAnswers::hostReply, HostReply::AfterReturn);
    test.events();
    test.handler.Ungroup(sampleId(2));
    QTRY_COMPARE(test.observer.numbers(), QStringLiteral("20"));
    QCOMPARE(treeText(test.store), QStringLiteral("G1[P11,P12] P13 P14"));
}

void HandlerEditsTest::shouldForgetLateEditsWithTheHandler()
{
    HandlerUnderTest test;
    answer(test, &HandlerAnswers::hostReply, HostReply::AfterReturn);
    auto other = std::make_unique<WorkbenchHandler>(test.store, test.notifier, test.trace);
    other->AddProcessors(QUuid(), 3);
    other.reset();
    test.handler.Ungroup(sampleId(2));
    QTRY_COMPARE(test.observer.numbers(), QStringLiteral("20"));
    QCOMPARE(test.store.snapshot().processors.size(), 4);
}

void HandlerEditsTest::shouldChangeTheProjectBeforeItRaisesEvents()
{
    HandlerUnderTest test;
    answer(test, &HandlerAnswers::hostReply, HostReply::BeforeReturn);
    test.notifier.setDelivery(Notifier::Delivery::NotifyingThread);
    QString told;
    test.observer.inside = [&](const CSubject&) { told = treeText(test.store); };
    test.handler.AddProcessors(sampleId(2), 1);
    QCOMPARE(told, QStringLiteral("G1[P11,P12] G2[P13,Processor 5] P14"));
    test.handler.DeleteProcessors({sampleId(11)});
    QCOMPARE(told, QStringLiteral("G1[P12] G2[P13,Processor 5] P14"));
    QCOMPARE(test.events(), QStringLiteral("18 20 30"));
    test.notifier.stop();
}

void HandlerEditsTest::shouldRaiseOneEventForEachProcessor()
{
    HandlerUnderTest test;
    answer(test, &HandlerAnswers::eventsOneByOne, true);
    test.handler.AddProcessors(sampleId(1), 3);
    QCOMPARE(test.events(), QStringLiteral("18 18 18"));
    test.handler.DeleteProcessors({sampleId(11), sampleId(13)});
    QCOMPARE(test.events(), QStringLiteral("20 20 30"));
    test.store.regroup({sampleId(12), sampleId(14)}, sampleId(2));
    QCOMPARE(test.events(), QStringLiteral("20 20 18 18 30"));
    test.handler.DeleteProcessors({});
    QCOMPARE(test.events(), QString());
}

void HandlerEditsTest::shouldAddToGroups()
{
    HandlerUnderTest test;
    test.handler.AddProcessors(sampleId(2), 2);
    test.handler.AddProcessorsWithIps(sampleId(1), {0x0A000020, 0x0A000021});
    test.handler.AddProcessorsFromIpList(QUuid(), {QStringLiteral("10.0.0.50(A)")});
    QCOMPARE(test.events(), QStringLiteral("19 19 18"));
    QCOMPARE(treeText(test.store),
             QStringLiteral("G1[P11,P12,Processor 7,Processor 8] G2[P13,Processor 5,Processor 6] "
                            "P14 Processor 9"));
    const Project project = test.store.snapshot();
    QCOMPARE(project.processors.last().ipAddress, 0x0A000032U);
    QCOMPARE(project.processors.last().number, 8);
}

void HandlerEditsTest::shouldAddNoMoreThanFit()
{
    LogTrap log;
    HandlerUnderTest test;
    test.handler.AddProcessors(sampleId(1), 250);
    QVERIFY(log.take().isEmpty());
    test.handler.AddProcessorsWithIps(QUuid(), {0x0A000020, 0x0A000021});
    QCOMPARE(log.take(), QStringList{QStringLiteral("1 of 2 found room")});
    QCOMPARE(test.events(), QStringLiteral("19 18"));
    test.handler.AddProcessors(QUuid(), 1);
    QCOMPARE(log.take(), (QStringList{QStringLiteral("0 of 1 found room"),
                                      QStringLiteral("no event 18 or 19 or 16 was raised")}));
    QCOMPARE(test.events(), QString());
    QCOMPARE(test.handler.GetAllProcessorNodes().size(), 255);
}

void HandlerEditsTest::shouldRefuseTakenAddresses()
{
    LogTrap log;
    HandlerUnderTest test;
    test.handler.AddProcessorsWithIps(QUuid(), {0x0A000001, 0x0A000020, 0x0A000020});
    QCOMPARE(test.events(), QStringLiteral("18"));
    QCOMPARE(log.take(),
             (QStringList{QStringLiteral("10.0.0.1 is refused: another processor has it"),
                          QStringLiteral("10.0.0.32 is refused: another processor has it")}));
    test.handler.AddProcessorsFromIpList(
        QUuid(), {QStringLiteral("nonsense"), QStringLiteral("10.0.0.32(A)")});
    QCOMPARE(test.events(), QString());
    QCOMPARE(log.take().constFirst(), QStringLiteral("nonsense is no entry"));
}

void HandlerEditsTest::shouldGiveNewProcessorsTheirOutputs()
{
    LogTrap log;
    HandlerUnderTest test;
    const auto outputs = [&] {
        QStringList texts;
        for (const ProcessorNode& node : test.handler.GetAllProcessorNodes())
            texts.append(QString::number(node.hostAttribute11));
        return texts.mid(4).join(QLatin1Char(' '));
    };
    test.handler.AddProcessors(QUuid(), 2);
    test.handler.SetNewProcessorOutputs(20);
    QCOMPARE(test.events(), QStringLiteral("19 25 25"));
    QCOMPARE(outputs(), QStringLiteral("20 20"));
    // Those that were told are not told again; the next ones start with it.
    test.handler.AddProcessorsWithIps(QUuid(), {0x0A000020});
    test.handler.SetNewProcessorOutputs(4);
    QCOMPARE(test.events(), QStringLiteral("18"));
    QCOMPARE(outputs(), QStringLiteral("20 20 20"));
    test.handler.SetNewProcessorOutputs(0);
    QCOMPARE(log.take(),
             QStringList{QStringLiteral("0 outputs are refused: it has to be one at least")});
    test.handler.AddProcessors(QUuid(), 1);
    QCOMPARE(outputs(), QStringLiteral("20 20 20 4"));
    answer(test, &HandlerAnswers::fixedOutputCount, 16);
    QCOMPARE(test.handler.GetFixedOutputCount(), 16);
    test.handler.AddProcessors(QUuid(), 1);
    QCOMPARE(outputs(), QStringLiteral("20 20 20 4 16"));
}

void HandlerEditsTest::shouldRefuseDuplicateNames()
{
    LogTrap log;
    HandlerUnderTest test;
    QVERIFY(!test.handler.RenameProcessor(sampleId(11), QStringLiteral("P12")));
    QCOMPARE(log.take(),
             QStringList{QStringLiteral("\"P12\" is refused: another processor has it")});
    QVERIFY(!test.handler.RenameProcessor(sampleId(11), QStringLiteral("  ")));
    QCOMPARE(log.take(), QStringList{QStringLiteral("\"  \" is refused: it is empty")});
    QVERIFY(!test.handler.RenameProcessor(sampleId(11), QString(65, QLatin1Char('x'))));
    QVERIFY(log.take().constFirst().endsWith(QStringLiteral("it has 65 bytes of at most 64")));
    QCOMPARE(test.events(), QString());
    QVERIFY(test.handler.RenameProcessor(sampleId(11), QStringLiteral("P11")));
    QVERIFY(test.handler.RenameProcessor(sampleId(11), QStringLiteral("G1")));
    answer(test, &HandlerAnswers::uniqueNames, false);
    QVERIFY(test.handler.RenameProcessor(sampleId(11), QStringLiteral("P12")));
    QCOMPARE(test.events(), QStringLiteral("26 26 26"));
    QCOMPARE(treeText(test.store), QStringLiteral("G1[P12,P12] G2[P13] P14"));
}

void HandlerEditsTest::shouldRestoreGroupNamesAfterARefusal()
{
    HandlerUnderTest test;
    test.handler.RenameGroup(sampleId(1), QStringLiteral("G2"));
    QCOMPARE(test.events(), QString());
    QCOMPARE(test.handler.GetGroupNode(sampleId(1)).name, QStringLiteral("G2"));
    test.handler.RenameGroup(sampleId(1), QString(65, QLatin1Char('x')));
    QCOMPARE(test.events(), QStringLiteral("16 30"));
    answer(test, &HandlerAnswers::acceptNewNames, false);
    test.handler.RenameGroup(sampleId(1), QStringLiteral("G3"));
    QCOMPARE(test.events(), QStringLiteral("16 30"));
    QCOMPARE(test.handler.GetGroupNode(sampleId(1)).name, QStringLiteral("G2"));
}

void HandlerEditsTest::shouldKeepWhatItMayNotDelete()
{
    LogTrap log;
    HandlerUnderTest test;
    answer(test, &HandlerAnswers::ipManagementAvailable, false);
    test.store.setProtected({sampleId(12)}, true);
    QCOMPARE(test.events(), QStringLiteral("25"));
    QVERIFY(test.handler.IsDeleteBlocked(sampleId(12)));
    QVERIFY(!test.handler.IsDeleteBlocked(sampleId(13)));
    QVERIFY(!test.handler.IsDeleteBlocked(sampleId(99)));
    test.handler.DeleteProcessors({sampleId(12), sampleId(13)});
    QCOMPARE(test.events(), QStringLiteral("20"));
    QCOMPARE(log.take(), QStringList{QStringLiteral("1 of 2 stay")});
    answer(test, &HandlerAnswers::blockDelete, true);
    QVERIFY(test.handler.IsDeleteBlocked(sampleId(14)));
    test.handler.DeleteProcessors({sampleId(14)});
    QCOMPARE(test.events(), QString());
    QCOMPARE(treeText(test.store), QStringLiteral("G1[P11,P12] G2[] P14"));
}

void HandlerEditsTest::shouldDeleteFewerThanAsked()
{
    HandlerUnderTest test;
    answer(test, &HandlerAnswers::deleteSpares, 2);
    test.handler.DeleteProcessors({sampleId(14), sampleId(13), sampleId(12)});
    QCOMPARE(test.events(), QStringLiteral("20"));
    QCOMPARE(treeText(test.store), QStringLiteral("G1[P11,P12] G2[P13]"));
    test.handler.DeleteProcessors({sampleId(13)});
    QCOMPARE(test.events(), QString());
    answer(test, &HandlerAnswers::deleteSpares, 0);
    test.handler.DeleteProcessors({sampleId(13), sampleId(99)});
    QCOMPARE(treeText(test.store), QStringLiteral("G1[P11,P12] G2[]"));
}

void HandlerEditsTest::shouldMissTheAnnouncementOfADeletion()
{
    const QStringList missing{QStringLiteral("PreDeleteProcessors did not announce it")};
    LogTrap log;
    HandlerUnderTest test;
    test.handler.PreDeleteProcessors({sampleId(12)});
    test.handler.DeleteProcessors({sampleId(12)});
    QVERIFY(log.take().isEmpty());
    test.handler.DeleteProcessors({sampleId(13)});
    QCOMPARE(log.take(), missing);
    answer(test, &HandlerAnswers::ipManagementAvailable, false);
    test.handler.DeleteProcessors({sampleId(14)});
    QVERIFY(log.take().isEmpty());
}

void HandlerEditsTest::shouldMoveIntoGroupsAndOut()
{
    HandlerUnderTest test;
    const ProcessorGroupNode group = test.handler.GetGroupNode(sampleId(2));
    QCOMPARE(group.processors.size(), 1);
    test.handler.SetProcessorGroup(group, group.id, {sampleId(11), sampleId(13), sampleId(14)});
    QCOMPARE(test.events(), QStringLiteral("25 25"));
    QCOMPARE(treeText(test.store), QStringLiteral("G1[P12] G2[P11,P13,P14]"));
    QCOMPARE(test.handler.GetGroupNode(sampleId(2)).processors.size(), 3);
    test.handler.SetProcessorGroup(ProcessorGroupNode(), QUuid(), {sampleId(12)});
    QCOMPARE(test.events(), QStringLiteral("25"));
    const QList<ProcessorGroupNode> groups = test.handler.GetAllGroupNodes();
    QCOMPARE(groups.at(0).processors.size(), 0);
    QCOMPARE(groups.at(1).processors.size(), 3);
    QCOMPARE(groups.at(1).processors.first().name, QStringLiteral("P11"));
}

void HandlerEditsTest::shouldForgetDeletedProcessorsInTheSelection()
{
    HandlerUnderTest test;
    answer(test, &HandlerAnswers::selectionMode, 2);
    QCOMPARE(test.handler.GetSelectionMode(), 2);
    test.handler.ReportSelection(sampleId(13), {sampleId(12), sampleId(13)},
                                 {SGroupSelection{sampleId(1), {sampleId(12)}}}, QUuid());
    QCOMPARE(test.handler.GetSelectedProcessors(), (QList<QUuid>{sampleId(12), sampleId(13)}));
    test.handler.DeleteProcessors({sampleId(13)});
    QCOMPARE(test.handler.GetSelectedProcessors(), QList<QUuid>{sampleId(12)});
    test.store.replace(Project());
    QVERIFY(test.handler.GetSelectedProcessors().isEmpty());
}

void HandlerEditsTest::shouldKeepTheLightsOfEachRow()
{
    LogTrap log;
    HandlerUnderTest test;
    const auto light = [&](quint32 n, bool on) {
        test.handler.IsFrontPanelHighlighted(sampleId(n));
        test.handler.SetFrontPanelHighlight(on);
    };
    light(12, true);
    light(1, true);
    QVERIFY(log.take().constLast().endsWith(QStringLiteral(" is lit")));
    QVERIFY(test.handler.IsFrontPanelHighlighted(sampleId(1)));
    QVERIFY(test.handler.IsFrontPanelHighlighted(sampleId(12)));
    QVERIFY(!test.handler.IsFrontPanelHighlighted(sampleId(11)));
    light(12, false);
    QVERIFY(log.take().constLast().endsWith(QStringLiteral(" is dark")));
    QVERIFY(!test.handler.IsFrontPanelHighlighted(sampleId(12)));
    light(99, true);
    QVERIFY(!test.handler.IsFrontPanelHighlighted(sampleId(99)));
    light(13, true);
    QVERIFY(!test.store.isModified());
    // Whoever goes takes the light along.
    test.handler.Ungroup(sampleId(1));
    test.handler.DeleteProcessors({sampleId(13)});
    QVERIFY(test.store.snapshot().litFrontPanels.isEmpty());
    answer(test, &HandlerAnswers::frontPanelHighlightAvailable, false);
    QVERIFY(!test.handler.IsFrontPanelHighlightAvailable());
}

void HandlerEditsTest::shouldExtendContextMenus()
{
    HandlerUnderTest test;
    QString words;
    test.handler.showInLog = [&](const QString& text) { words = text; };
    const auto entries = [](const QMenu& menu) {
        QStringList texts;
        for (const QAction* action : menu.actions()) {
            if (!action->isSeparator())
                texts.append(action->text());
        }
        return texts.join(QLatin1Char('|'));
    };
    QMenu root;
    test.handler.AppendContextMenu(NodeRoot, QUuid(), false, &root);
    QVERIFY(root.isEmpty());
    QMenu group;
    test.handler.AppendContextMenu(NodeGroup, sampleId(1), true, &group);
    QCOMPARE(entries(group), QStringLiteral("Host: show in log"));
    group.actions().constLast()->trigger();
    QCOMPARE(words, shortId(sampleId(1)));
    QMenu processor;
    test.handler.AppendContextMenu(NodeProcessor, sampleId(12), false, &processor);
    QCOMPARE(entries(processor), QStringLiteral("Host: make current|Host: show in log"));
    processor.actions().constLast()->trigger();
    QCOMPARE(words, shortId(sampleId(12)));
    answer(test, &HandlerAnswers::contextMenuEntries, false);
    QMenu none;
    test.handler.AppendContextMenu(NodeProcessor, sampleId(12), false, &none);
    QVERIFY(none.isEmpty());
}

TSA_TEST_MAIN(HandlerEditsTest)
#include "tst_handler_edits.moc"
