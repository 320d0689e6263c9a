#include "base/GuiCalls.h"
#include "plugin/TargetSelectArea.h"
#include "plugin/TargetSelectData.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "tests/support/HostThread.h"
#include "tests/support/ReferenceTree.h"
#include "tests/support/Seed.h"
#include "tests/support/TestPanel.h"
#include "tests/support/TreeDump.h"
#include "tests/support/WarningTrap.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QScopeGuard>
#include <QTest>

#include <algorithm>
#include <iterator>

namespace {
constexpr int kSequences = 1000;
constexpr int kEvents = 200;
constexpr quint32 kFirstGroup = 1000;
constexpr quint32 kFirstUnknown = 5000;

struct Step
{
    quint32 event = 0;
    QList<QUuid> ids;

    /// Returns whether the bridge may ask the host on the GUI thread, later: a reset asks for
    /// everything, and the end of a group for the processors that were left out for want of it.
    bool isAnsweredLater() const
    {
        const auto isGroup = [](const QUuid& id) {
            return id.data1 >= kFirstGroup && id.data1 < kFirstUnknown;
        };
        return event == 16
               || ((event == 20 || event == 21) && std::any_of(ids.begin(), ids.end(), isGroup));
    }
};

/// A host that changes its project at random and says so; now and then it says something wrong.
class RandomHost final
{
public:
    explicit RandomHost(quint32 seed)
        : m_random(seed)
        , m_processorCount(4 + m_random.bounded(20U))
        , m_groupCount(1 + m_random.bounded(4U))
    {
    }

    ReferenceProject project;

    Step next()
    {
        change();
        static constexpr quint32 events[] = {16, 17, 17, 18, 18, 18, 18, 19, 19,
                                             20, 20, 21, 25, 25, 26, 26, 20, 18};
        Step step;
        step.event = events[m_random.bounded(static_cast<quint32>(std::size(events)))];
        // A reset brings everything back: rare, so that sequences get somewhere.
        if (step.event == 16 && m_random.bounded(4U) != 0)
            step.event = 18;
        const quint32 count = step.event == 19 || step.event == 21 ? m_random.bounded(5U) : 1;
        for (quint32 i = 0; i < count; ++i)
            step.ids.append(anyId());
        return step;
    }

private:
    QUuid groupId() { return testId(kFirstGroup + m_random.bounded(m_groupCount)); }

    QUuid anyId()
    {
        switch (m_random.bounded(12U)) {
        case 0:
        case 1:
            return groupId();
        case 2:
            return m_random.bounded(4U) == 0 ? QUuid()
                                             : testId(kFirstUnknown + m_random.bounded(3U));
        default:
            return testId(1 + m_random.bounded(m_processorCount));
        }
    }

    ProcessorNode randomProcessor()
    {
        static constexpr quint32 addresses[] = {0x0A000001, 0x0A000002, 0x0A000003,
                                                0xC0A80001, 0,          kNoProcessorAddress};
        ProcessorNode processor = testProcessor(1 + m_random.bounded(m_processorCount));
        processor.number = static_cast<qint32>(m_random.bounded(8U));
        processor.name = QStringLiteral("P%1").arg(m_random.bounded(1000U));
        processor.reachedByIp = m_random.bounded(2U) == 0;
        processor.ipAddress =
            addresses[m_random.bounded(static_cast<quint32>(std::size(addresses)))];
        processor.groupId = m_random.bounded(3U) == 0 ? QUuid() : groupId();
        return processor;
    }

    void change()
    {
        const ProcessorNode processor = randomProcessor();
        const bool repeat = m_random.bounded(40U) == 0;
        auto& processors = project.processors;
        const auto known =
            std::find_if(processors.begin(), processors.end(),
                         [&](const auto& other) { return other.id == processor.id; });
        if (known != processors.end() && !repeat)
            *known = processor;
        else if (processors.size() < 40)
            processors.append(processor);
        if (m_random.bounded(6U) == 0) {
            ProcessorGroupNode group = testGroup(kFirstGroup + m_random.bounded(m_groupCount));
            group.name += QString::number(m_random.bounded(10U));
            const auto same = [&](const auto& other) { return other.id == group.id; };
            auto& groups = project.groups;
            if (std::none_of(groups.begin(), groups.end(), same) || repeat)
                groups.append(group);
        }
    }

    QRandomGenerator m_random;
    quint32 m_processorCount;
    quint32 m_groupCount;
};

void notify(TestPanel& panel, const Step& step)
{
    switch (step.event) {
    case 16:
        panel.notify(step.event);
        break;
    case 19:
    case 21:
        panel.notify<QList<QUuid>>(step.event, step.ids);
        break;
    case 26:
        panel.notify<QUuid, SPrjProcessor>(step.event, step.ids.first(), SPrjProcessor());
        break;
    default:
        panel.notify<QUuid>(step.event, step.ids.first());
        break;
    }
}

} // namespace

/// Random sequences of host events, compared with a reference of the tree that shares no code with
/// the product. On a foreign thread nothing waits for what the bridge only queues.
class BridgeRandomTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldAgreeWithTheReference_data();
    void shouldAgreeWithTheReference();
};

void BridgeRandomTest::shouldAgreeWithTheReference_data()
{
    QTest::addColumn<bool>("foreign");
    QTest::newRow("foreign thread") << true;
    QTest::newRow("GUI thread") << false;
}

void BridgeRandomTest::shouldAgreeWithTheReference()
{
    QFETCH(bool, foreign);
    TestPanel panel;
    const QAbstractItemModelTester tester(&panel.model());
    HostThread thread;
    // However busy the machine is, this host is not slow: no event gives up its wait.
    const auto usual = CHostQuestion::usual();
    const auto restore = qScopeGuard([usual] { CHostQuestion::setUsual(usual); });
    CHostQuestion::setUsual(std::chrono::minutes(10));
    panel.data().guiCalls().setPatience(std::chrono::minutes(10));
    const quint32 first = firstSeed();
    qInfo("TSA_SEED=%u and the %d after it, %d events each", first, kSequences - 1, kEvents);

    for (int sequence = 0; sequence < kSequences; ++sequence) {
        const quint32 seed = first + static_cast<quint32>(sequence);
        RandomHost host(seed);
        ReferenceTree reference;
        panel.area().Initialize();
        const auto play = [&] {
            for (int i = 0; i < kEvents; ++i) {
                const Step step = host.next();
                panel.host().setProject(host.project.groups, host.project.processors);
                reference.apply(step.event, step.ids, host.project);
                notify(panel, step);
                // The answer must not have changed by then.
                if (foreign && step.isAnsweredLater())
                    panel.data().guiCalls().settle();
            }
            panel.data().guiCalls().settle();
        };
        if (foreign)
            QVERIFY(thread.run(play));
        else
            play();
        panel.host().clearCalls();

        QVERIFY2(panel.dump() == reference.dump(),
                 qPrintable(QStringLiteral("TSA_SEED=%1\n%2\n%3")
                                .arg(QString::number(seed), panel.dump(), reference.dump())));
        QVERIFY2(describeTree(panel.model()) == reference.describe(),
                 qPrintable(QStringLiteral("TSA_SEED=%1").arg(seed)));
    }
}

TSA_TEST_MAIN(BridgeRandomTest)
#include "tst_bridgerandom.moc"
