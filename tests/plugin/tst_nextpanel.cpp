#include "base/TargetSelectHandler.h"
#include "plugin/AddressManagement.h"
#include "plugin/TargetSelectArea.h"
#include "tests/support/HostThread.h"
#include "tests/support/Latch.h"
#include "tests/support/TestPanel.h"
#include "tests/support/WarningTrap.h"

#include <QComboBox>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <chrono>
#include <future>
#include <memory>

namespace {

ProcessorNode member(quint32 n)
{
    ProcessorNode processor = testProcessor(n);
    processor.groupId = testId(100);
    return processor;
}

/// A panel that its host replaces by another one, of another host.
class Replaced final
{
public:
    Replaced(const QList<ProcessorGroupNode>& groups, const QList<ProcessorNode>& processors)
        : m_groups(groups)
        , m_processors(processors)
        , m_first(std::make_unique<TestPanel>())
        , m_host(&m_first->host())
        , m_observer(m_host->observer)
    {
        m_host->setProject(groups, processors);
        m_first->notify(16);
    }

    TestPanel& first() { return *m_first; }
    FakeHandler& host() { return *m_host; }
    TestPanel& next() { return *m_next; }
    bool isReplaced() const { return m_next != nullptr; }

    /// Builds the next panel, with a host that has the same project.
    void replace()
    {
        m_first.reset();
        m_next = std::make_unique<TestPanel>();
        m_next->host().setProject(m_groups, m_processors);
        m_next->host().clearCalls();
    }

    /// Returns the next panel's tree when its host has told of its project.
    QString tree()
    {
        m_next->notify(16);
        return m_next->dump();
    }

    void replaceInside(const QString& question)
    {
        m_host->doInside(question, [this] { replace(); });
    }

    /// Delivers an event by the first panel's observer, on the calling thread.
    template <typename... Args>
    void tell(quint32 event, Args... arguments)
    {
        CSubject subject;
        subject.Attach(m_observer);
        subject.Notify<Args...>(event, std::move(arguments)...);
    }

    /// What the next panel's host was asked.
    QString asked() const { return m_next->host().callNames().join(QLatin1Char(' ')); }

private:
    QList<ProcessorGroupNode> m_groups;
    QList<ProcessorNode> m_processors;
    std::unique_ptr<TestPanel> m_first;
    std::unique_ptr<TestPanel> m_next;
    FakeHandler* m_host; // lives while it is asked
    CObserver* m_observer;
};

} // namespace

/// What was begun for a panel neither asks the next one's host nor changes the next one's tree.
class NextPanelTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldGetNoEventsOfAnother();
    void shouldGetNoAnswersToAnother();
    void shouldNotBeUngroupedForAnother();
    void shouldNotBeFilledForAnother();
    void shouldNotLoseRowsOfAnothersRemoval();
    void shouldNotShowWhatAnotherIsCurrentIn();
    void shouldNotBeChangedForAnother();
    void shouldNotDetectForAnother();
    void shouldNotDetectForAnothersAddresses();
};

void NextPanelTest::shouldGetNoEventsOfAnother()
{
    auto first = std::make_unique<TestPanel>();
    first->host().setProject({}, {testProcessor(1)});
    first->notify(16);
    first->host().currentProcessor = testId(1);
    // The work thread comes to these when this thread runs its events.
    first->notify<int>(0, 1234);
    first->notify<GUID, QList<SDeviceSetInfo>>(1, GUID(), {SDeviceSetInfo(), SDeviceSetInfo()});
    first->notify(29);
    first->notify(30);
    first->notify<QList<QUuid>>(39, {testId(1)});
    first.reset();

    TestPanel next;
    next.host().setProject({}, {testProcessor(2)});
    next.notify(16);
    next.host().clearCalls();
    next.notify<QList<QUuid>>(39, {testId(2)});
    QTRY_VERIFY(next.host().callCount(QStringLiteral("GetProcessorNode")) > 0);
    QStringList asked;
    const auto calls = next.host().calls();
    for (const FakeHandler::Call& call : calls)
        asked.append(call.name + QLatin1Char(' ') + call.argument);
    QCOMPARE(asked, QStringList{QStringLiteral("GetProcessorNode ") + testId(2).toString()});
    QCOMPARE(next.area().detectStrategy(), 0);
    QCOMPARE(next.area().findChild<QComboBox*>()->count(), 0);
}

void NextPanelTest::shouldGetNoAnswersToAnother()
{
    auto first = std::make_unique<TestPanel>();
    const auto handler = std::make_shared<FakeHandler>();
    first->area().m_controlHandler = handler;
    QVERIFY(first->area().Reconnect());
    Latch asked;
    Latch answer;
    handler->doInside(QStringLiteral("GetProcessorNode"), [&] {
        asked.arrive();
        answer.wait();
    });
    HostThread host;
    const auto told = host.post([&] {
        CSubject subject;
        subject.Attach(handler->observer);
        subject.Notify<QUuid>(18, testId(1));
    });
    QVERIFY(asked.wait());
    first.reset();

    TestPanel next;
    next.host().setProject({}, {testProcessor(2)});
    next.notify(16);
    next.host().clearCalls();
    answer.arrive();
    QTRY_VERIFY(told.wait_for(std::chrono::seconds(0)) == std::future_status::ready);
    QCOMPARE(next.host().callNames().join(QLatin1Char(' ')), QString());
    QCOMPARE(next.dump(), QStringLiteral("All processors(1)[2]"));
}

void NextPanelTest::shouldNotBeUngroupedForAnother()
{
    Replaced panels({testGroup(100)}, {member(1), member(2), member(3)});
    panels.host().removeGroup(testId(100));
    panels.replaceInside(QStringLiteral("SetProcessorGroup"));
    panels.tell<QUuid>(20, testId(100));
    QVERIFY(panels.isReplaced());
    QCOMPARE(panels.asked(), QString());
    QCOMPARE(panels.tree(), QStringLiteral("All processors(3)[G100[1,2,3]]"));
}

void NextPanelTest::shouldNotBeFilledForAnother()
{
    Replaced panels({}, {testProcessor(1)});
    panels.replaceInside(QStringLiteral("GetAllProcessorNodes"));
    panels.tell(16);
    QVERIFY(panels.isReplaced());
    QCOMPARE(panels.asked(), QString());
    QCOMPARE(panels.tree(), QStringLiteral("All processors(1)[1]"));
}

/// The host replaces the panel inside a question of an earlier event, which waited.
void NextPanelTest::shouldNotLoseRowsOfAnothersRemoval()
{
    Replaced panels({}, {testProcessor(1)});
    HostThread other;
    QVERIFY(comesBack(other.post([&] { panels.tell(16); })));
    panels.host().doInside(QStringLiteral("GetAllProcessorNodes"), [&] {
        panels.replace();
        panels.next().notify(16);
    });
    panels.tell<QUuid>(20, testId(1));
    QVERIFY(panels.isReplaced());
    QTRY_COMPARE(panels.next().dump(), QStringLiteral("All processors(1)[1]"));
}

void NextPanelTest::shouldNotShowWhatAnotherIsCurrentIn()
{
    Replaced panels({}, {testProcessor(1)});
    panels.host().currentProcessor = testId(1);
    // The second one overtakes the first, which asks again when it is shown.
    panels.tell(30);
    panels.tell(30);
    panels.replaceInside(QStringLiteral("GetCurrentProcessorId"));
    QTRY_VERIFY(panels.isReplaced());
    panels.next().notify<int>(0, 7);
    QTRY_COMPARE(panels.next().area().detectStrategy(), 7);
    QCOMPARE(panels.asked(), QString());
}

void NextPanelTest::shouldNotBeChangedForAnother()
{
    Replaced panels({testGroup(100)}, {member(1)});
    // It waits for the end of the fill.
    panels.host().doInside(QStringLiteral("GetAllProcessorNodes"), [&] {
        panels.first().area().RemoveAllGroups();
        panels.replace();
    });
    panels.tell(16);
    QVERIFY(panels.isReplaced());
    panels.next().notify<int>(0, 7);
    QTRY_COMPARE(panels.next().area().detectStrategy(), 7);
    QCOMPARE(panels.tree(), QStringLiteral("All processors(1)[G100[1]]"));
}

void NextPanelTest::shouldNotDetectForAnother()
{
    Replaced panels({}, {testProcessor(1)});
    panels.replaceInside(QStringLiteral("IsRestrictedMode"));
    auto* detect = panels.first().area().findChild<QToolButton*>();
    QVERIFY(detect);
    detect->menu()->actions().at(1)->trigger();
    QVERIFY(panels.isReplaced());
    QCOMPARE(panels.asked(), QString());
}

void NextPanelTest::shouldNotDetectForAnothersAddresses()
{
    Replaced panels({}, {testProcessor(1)});
    QTimer::singleShot(0, this, [&] {
        panels.replace();
        panels.next().host().ipListChanged = true;
    });
    manageAddresses(&panels.first().area());
    QVERIFY(panels.isReplaced());
    QCOMPARE(panels.asked(), QString());
}

TSA_TEST_MAIN(NextPanelTest)

#include "tst_nextpanel.moc"
