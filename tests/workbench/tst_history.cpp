#include "host/workbench/project/ProjectJson.h"
#include "host/workbench/project/RecordDifference.h"
#include "host/workbench/window/LogPanel.h"
#include "tests/support/Seed.h"
#include "tests/workbench/WorkbenchUnderTest.h"

#include <QLineEdit>
#include <QRandomGenerator>
#include <QThread>

#include <functional>
#include <vector>

namespace {

constexpr int kRandomSteps = 30;

/// Returns in what the panel's records differ from those of the project; empty if in nothing.
QString panelDifference(WorkbenchUnderTest& test)
{
    if (!test.session.panelShowsProject())
        return QStringLiteral("other rows");
    const Project project = test.store().snapshot();
    ProcessorTreeSnapshot tree;
    test.session.layer()->GetProcessorTree(tree, false);
    QList<ProcessorNode> shown = tree.processors;
    for (const ProcessorGroupNode& group : tree.groups) {
        shown += group.processors;
        if (group.name != project.group(group.id).name)
            return QStringLiteral("group %1").arg(group.name);
    }
    for (const ProcessorNode& node : qAsConst(shown)) {
        const QStringList fields = differentFields(node, *project.processor(node.id));
        if (!fields.isEmpty())
            return node.name + QLatin1Char(' ') + fields.join(QLatin1Char(','));
    }
    return {};
}

bool waitForRecords(WorkbenchUnderTest& test)
{
    return QTest::qWaitFor([&] { return panelDifference(test).isEmpty(); });
}

/// Makes random changes, by the host's own functions and by requests as the panel makes them.
class RandomChanges final
{
public:
    explicit RandomChanges(WorkbenchUnderTest& test)
        : m_store(test.store())
        , m_handler(test.handler())
        , m_random(seeds(1).first())
    {
    }

    void makeOne()
    {
        const std::vector<std::function<void()>> all{
            [&] { m_store.addProcessors(group(), 1 + number(3)); },
            [&] { m_handler->AddProcessors(group(), 2); },
            [&] { m_store.addProcessors(group(), QList<quint32>{0x0A000100U + m_count}); },
            [&] {
                m_store.addGroup({QUuid(), name(), 1, 2, {}});
            },
            [&] { m_store.removeProcessors({processor()}); },
            [&] {
                m_store.removeProcessors({processor(), processor(), processor()});
            },
            [&] { m_store.ungroup(group()); },
            [&] { m_handler->Ungroup(group()); },
            [&] { m_handler->RenameProcessor(processor(), name()); },
            [&] { m_store.renameGroup(group(), name(), true); },
            [&] {
                m_store.regroup({processor(), processor()}, group());
            },
            [&] {
                m_store.setOnline({processor(), processor()}, number(2) == 0);
            },
            [&] { m_store.setAddress(processor(), 0x0A000001U + m_count); },
            [&] { m_store.setRedundancyMode({processor()}, number(3)); },
            [&] { m_store.setProtected({processor()}, number(2) == 0); },
            [&] {
                m_store.setMonitorWarning({processor(), processor()}, number(2) == 0);
            },
            [&] { m_handler->DetectProcessorsOnly(); },
            [&] { m_store.setCurrentProcessor(processor()); },
            [&] { m_store.setDetectStrategy(number(5)); },
            [&] { m_store.setLanUsb(true, {0x0A000001U + m_count}); },
            [&] {
                m_store.setDeviceSets({DeviceSet{{}, name()}}, GUID());
            },
            [&] { m_store.changeAnswers([&](auto& a) { a.selectionMode = number(100); }); },
            [&] { m_handler->AddIPAddress(QStringLiteral("10.0.1.%1").arg(m_count), name()); },
        };
        ++m_count;
        all.at(static_cast<std::size_t>(number(static_cast<int>(all.size()))))();
    }

private:
    int number(int below) { return m_random.bounded(below); }
    QString name() { return QStringLiteral("N%1").arg(m_count); }

    QUuid processor()
    {
        const QList<ProcessorNode> all = m_store.snapshot().processors;
        return all.isEmpty() ? QUuid() : all.at(number(all.size())).id;
    }

    QUuid group()
    {
        const QList<ProcessorGroupNode> all = m_store.snapshot().groups;
        const int at = number(all.size() + 1);
        return at == all.size() ? QUuid() : all.at(at).id;
    }

    ProjectStore& m_store;
    std::shared_ptr<ITargetSelectInterfaceHandler> m_handler;
    QRandomGenerator m_random;
    quint32 m_count = 0;
};

} // namespace

/// Undo and redo of the workbench.
class HistoryTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldTakeBackAnyChange_data() { addDeliveries(); }
    void shouldTakeBackAnyChange();
    void shouldTakeBackRequestsOfOneClickTogether();
    void shouldTakeBackLateRequestsTogether();
    void shouldKnowWhenTheSavedProjectIsBack();
    void shouldKeepRedoWhenAProcessorIsChosen();
    void shouldTakeBackChangesOfOtherThreads();
    void shouldForgetOldStepsAndFormerProjects();
    void shouldLeaveTheKeysToAField();
    void shouldNameTheStep();

private:
    const TestSettings m_settings;
};

void HistoryTest::shouldTakeBackAnyChange()
{
    QFETCH(Notifier::Delivery, delivery);
    WorkbenchUnderTest test(delivery);
    RandomChanges random(test);
    const auto json = [&] { return projectToJson(test.store().snapshot()); };
    std::vector<QByteArray> states{json()};
    std::vector<QString> steps;
    while (steps.size() < kRandomSteps) {
        random.makeOne();
        QVERIFY2(waitForRecords(test), qPrintable(panelDifference(test)));
        test.store().endStep();
        if (json() == states.back() || !test.session.history().canUndo())
            continue;
        const ChangeTitle title = test.session.history().undoTitle();
        // A choice belongs to the step before it.
        if (test.session.history().count() == static_cast<int>(steps.size())) {
            states.back() = json();
            continue;
        }
        states.push_back(json());
        steps.push_back(changeTitleText(title));
    }
    for (std::size_t at = steps.size(); at > 0; --at) {
        QCOMPARE(json(), states.at(at));
        QCOMPARE(changeTitleText(test.session.history().undoTitle()), steps.at(at - 1));
        test.session.history().undo();
        QVERIFY2(waitForRecords(test), qPrintable(steps.at(at - 1) + panelDifference(test)));
    }
    QVERIFY(!test.session.history().canUndo());
    QCOMPARE(json(), states.front());
    for (std::size_t at = 0; at < steps.size(); ++at) {
        test.session.history().redo();
        QVERIFY2(waitForRecords(test), qPrintable(steps.at(at) + panelDifference(test)));
        QCOMPARE(json(), states.at(at + 1));
    }
    QVERIFY(!test.session.history().canRedo());
}

void HistoryTest::shouldTakeBackRequestsOfOneClickTogether()
{
    WorkbenchUnderTest test(Notifier::Delivery::GuiThread);
    const auto handler = test.handler();
    const Project before = test.store().snapshot();
    handler->AddProcessors(sampleId(1), 2);
    handler->SetNewProcessorOutputs(16);
    QCOMPARE(test.session.history().count(), 1);
    QCOMPARE(changeTitleText(test.session.history().undoTitle()),
             QStringLiteral("addition of 2 processors"));
    test.session.history().undo();
    QCOMPARE(projectToJson(test.store().snapshot()), projectToJson(before));
    // The panel answers the removal of the group by requests to move its processors.
    handler->Ungroup(sampleId(1));
    QTRY_COMPARE(panelDifference(test), QString());
    QCOMPARE(test.session.history().count(), 1);
    test.action(ActionId::Undo)->trigger();
    QTRY_COMPARE(test.panelTree(), QStringLiteral("All processors(4)[G1[P11,P12],G2[P13],P14]"));
    QCOMPARE(projectToJson(test.store().snapshot()), projectToJson(before));
}

void HistoryTest::shouldTakeBackLateRequestsTogether()
{
    WorkbenchUnderTest test;
    test.store().changeAnswers([](HandlerAnswers& a) { a.hostReply = HostReply::AfterReturn; });
    test.store().endStep();
    const auto handler = test.handler();
    ProcessorGroupNode group;
    group.name = QStringLiteral("New");
    const QUuid id = handler->CreateGroup(group);
    handler->SetProcessorGroup(group, id, {sampleId(13)});
    QTRY_COMPARE(test.processor(13).groupId, id);
    QCOMPARE(test.session.history().count(), 2);
    test.session.history().undo();
    QCOMPARE(test.processor(13).groupId, sampleId(2));
    QVERIFY(!test.store().snapshot().hasGroup(id));
    test.waitForPanel();
}

void HistoryTest::shouldKnowWhenTheSavedProjectIsBack()
{
    WorkbenchUnderTest test;
    const auto change = [&] {
        test.store().addProcessors(QUuid(), 1);
        test.store().endStep();
    };
    change();
    QString problem;
    QVERIFY2(test.window.files().save(m_settings.filePath(QStringLiteral("saved.json")), problem),
             qPrintable(problem));
    QVERIFY(!test.window.isWindowModified());
    test.session.history().undo();
    QVERIFY(test.window.isWindowModified());
    test.session.history().redo();
    QVERIFY(!test.window.isWindowModified());
    change();
    test.session.history().undo();
    QVERIFY(!test.window.isWindowModified());
    // The saved state stays a step of its own.
    test.store().setCurrentProcessor(sampleId(14));
    QVERIFY(test.window.isWindowModified());
    test.session.history().undo();
    change();
    test.session.history().undo();
    test.session.history().undo();
    QVERIFY(test.window.isWindowModified());
}

void HistoryTest::shouldKeepRedoWhenAProcessorIsChosen()
{
    WorkbenchUnderTest test;
    test.store().removeProcessors({sampleId(12)});
    test.store().endStep();
    test.session.history().undo();
    test.store().setCurrentProcessor(sampleId(14));
    QVERIFY(test.session.history().canRedo());
    test.session.history().redo();
    QVERIFY(!test.store().snapshot().processor(sampleId(12)));
    test.session.history().undo();
    QCOMPARE(test.store().snapshot().currentProcessor, sampleId(14));
}

void HistoryTest::shouldTakeBackChangesOfOtherThreads()
{
    WorkbenchUnderTest test;
    const std::unique_ptr<QThread> worker(QThread::create([&] {
        for (int n = 0; n < 20; ++n)
            test.store().addProcessors(QUuid(), 1);
    }));
    worker->start();
    for (int n = 0; n < 20; ++n) {
        test.store().addProcessors(sampleId(1), 1);
        test.store().endStep();
        test.session.history().undo();
        test.session.history().redo();
    }
    QVERIFY(worker->wait());
    // A change that comes between undo and redo drops what could be redone.
    QTRY_VERIFY(!test.session.history().canRedo());
    QTRY_COMPARE(test.store().snapshot().processors.size(), 4 + test.session.history().count());
    QVERIFY(test.session.history().count() >= 20);
    while (test.session.history().canUndo())
        test.session.history().undo();
    QCOMPARE(test.store().snapshot().processors.size(), 4);
    test.waitForPanel();
}

void HistoryTest::shouldForgetOldStepsAndFormerProjects()
{
    WorkbenchUnderTest test;
    for (int n = 0; n < History::kMaxSteps + 5; ++n) {
        test.store().setDetectStrategy(n);
        test.store().endStep();
    }
    QCOMPARE(test.session.history().count(), History::kMaxSteps);
    while (test.session.history().canUndo())
        test.session.history().undo();
    QCOMPARE(test.store().snapshot().answers.detectStrategy, 4);
    test.action(ActionId::NewProject)->trigger();
    QVERIFY(!test.session.history().canRedo());
    QVERIFY(!test.action(ActionId::Undo)->isEnabled());
}

void HistoryTest::shouldLeaveTheKeysToAField()
{
    WorkbenchUnderTest test;
    test.store().removeProcessors({sampleId(12)});
    test.store().endStep();
    QLineEdit* field = test.window.log().filterField();
    field->setFocus();
    QTest::keyClicks(field, QStringLiteral("word"));
    QTest::keyClick(field, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(field->text(), QString());
    QVERIFY(!test.store().snapshot().processor(sampleId(12)));
    QTest::keyClick(&test.window, Qt::Key_2, Qt::ControlModifier);
    QTest::keyClick(&test.window, Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(test.store().snapshot().processor(sampleId(12)));
    QTest::keyClick(&test.window, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(!test.store().snapshot().processor(sampleId(12)));
}

void HistoryTest::shouldNameTheStep()
{
    WorkbenchUnderTest test;
    QVERIFY(!test.action(ActionId::Undo)->isEnabled());
    test.store().renameProcessor(sampleId(12), QStringLiteral("R&D"));
    test.store().endStep();
    QCOMPARE(test.action(ActionId::Undo)->text(), QStringLiteral("&Undo rename of P12"));
    test.store().setOnline({sampleId(12)}, true);
    QCOMPARE(test.action(ActionId::Undo)->text(), QStringLiteral("&Undo state of R&&D"));
    test.action(ActionId::Undo)->trigger();
    QCOMPARE(test.action(ActionId::Redo)->text(), QStringLiteral("&Redo state of R&&D"));
    test.action(ActionId::Chinese)->trigger();
    QTRY_VERIFY(!test.action(ActionId::Undo)->text().contains(QStringLiteral("rename")));
    QVERIFY(test.action(ActionId::Undo)->text().contains(QStringLiteral("P12")));
}

TSA_TEST_MAIN(HistoryTest)

#include "tst_history.moc"
