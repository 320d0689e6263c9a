#include "processortree/view/ProcessorTreeView.h"
#include "tests/plugin/Telling.h"
#include "tests/support/LogTrap.h"

#include <QSignalSpy>

#include <algorithm>

using Event = TrueHost::Event;

namespace {

/// Hands the observer's events on to the bridge on another thread than their own.
class Detour final : public CObserver
{
public:
    Detour(CObserver* bridge, HostThread& thread)
        : m_bridge(bridge)
        , m_thread(thread)
    {
    }

    void Update(CSubject* subject) override
    {
        m_thread.run([&] { m_bridge->Update(subject); });
    }

private:
    CObserver* m_bridge; // lives on
    HostThread& m_thread;
};

/// Events that take an argument, and have one of another type here.
constexpr quint32 kEventsWithArgument[] = {0, 1, 17, 18, 19, 20, 21, 25, 26, 39};

int linesLogged(const LogTrap& log, int line)
{
    const std::vector<LogRecord> records = log.records();
    return static_cast<int>(
        std::count_if(records.begin(), records.end(), [line](const LogRecord& record) {
            return record.function == "GetArgument" && record.line == line;
        }));
}

} // namespace

/// A host may replace its handler at any time on the GUI thread, without a word, and have none for
/// a while.
class HandlerSwapTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldHandleEventsOfOtherThreadsAfterASwap_data();
    void shouldHandleEventsOfOtherThreadsAfterASwap();
    void shouldSelectTheNewHandlersProcessor_data();
    void shouldSelectTheNewHandlersProcessor();
    void shouldForwardToThePanelAfterASwap();
    void shouldTakeArgumentsWithoutAHandler_data();
    void shouldTakeArgumentsWithoutAHandler();
    void shouldDoWhatNeedsNoHandler_data();
    void shouldDoWhatNeedsNoHandler();

private:
    static std::shared_ptr<FakeHandler> swap(Telling& telling);
};

/// Replaces a handler that other threads know by that of `telling`, which knows the same project
/// for now. Returns the old one.
std::shared_ptr<FakeHandler> HandlerSwapTest::swap(Telling& telling)
{
    auto old = std::make_shared<FakeHandler>();
    old->setProject(telling.panel.host().groups(), telling.panel.host().processors());
    old->currentProcessor = testId(2);
    auto& slot = telling.panel.area().m_controlHandler;
    const auto current = std::exchange(slot, old);
    telling.panel.area().Reconnect();
    slot = current;
    return old;
}

void HandlerSwapTest::shouldHandleEventsOfOtherThreadsAfterASwap_data()
{
    QTest::addColumn<TrueHost::Event>("event");
    QTest::addColumn<bool>("released");
    for (int event = 0; event < TrueHost::kEvents; ++event) {
        const auto told = static_cast<Event>(event);
        for (const bool released : {true, false}) {
            QTest::addRow("%s, the old one %s", qPrintable(TrueHost::name(told)),
                          released ? "released" : "kept alive")
                << told << released;
        }
    }
}

void HandlerSwapTest::shouldHandleEventsOfOtherThreadsAfterASwap()
{
    QFETCH(TrueHost::Event, event);
    QFETCH(bool, released);
    Telling telling;
    const bool adds = TrueHost::canHappen(TrueHost::Nothing, {event}) && event != TrueHost::Reset;
    telling.host.start({adds ? TrueHost::Nothing : TrueHost::Grouped});
    Latch oldAsked;
    auto old = swap(telling);
    old->answered = [&](const QString&, const QUuid&) { oldAsked.arrive(); };
    if (released)
        old.reset();
    // Before this thread has to do with the handler again.
    QVERIFY(comesBack(telling.one.post([&] {
        telling.host.change(event);
        if (event == TrueHost::Warned)
            telling.host.notify(event);
    })));
    if (event == TrueHost::Warned && !released)
        oldAsked.wait(1, kJob);
    else if (event != TrueHost::Warned)
        QVERIFY(telling.one.run([&] { telling.host.notify(event); }));
    VERIFY_TREE_OF(telling.host);
}

void HandlerSwapTest::shouldSelectTheNewHandlersProcessor_data()
{
    QTest::addColumn<bool>("released");
    QTest::newRow("the old one released") << true;
    QTest::newRow("the old one kept alive") << false;
}

void HandlerSwapTest::shouldSelectTheNewHandlersProcessor()
{
    QFETCH(bool, released);
    Telling telling;
    telling.host.start({TrueHost::Ungrouped, TrueHost::Ungrouped});
    telling.panel.host().currentProcessor = testId(1);
    auto old = swap(telling);
    if (released)
        old.reset();
    QVERIFY(telling.one.run([&] { telling.panel.notify(30); }));
    QVERIFY(telling.host.settle());
    const auto* view = telling.panel.area().findChild<CProcessorTreeView*>();
    QVERIFY(view);
    QTRY_COMPARE(view->selectionModel()->selectedIndexes(),
                 QModelIndexList{telling.panel.index(1)});
}

void HandlerSwapTest::shouldForwardToThePanelAfterASwap()
{
    Telling telling;
    telling.host.start({});
    swap(telling);
    QVERIFY(telling.one.run([&] { telling.panel.notify<int>(0, 17); }));
    QTRY_COMPARE(telling.panel.area().detectStrategy(), 17);
}

void HandlerSwapTest::shouldTakeArgumentsWithoutAHandler_data()
{
    QTest::addColumn<quint32>("event");
    QTest::addColumn<bool>("foreign");
    for (const bool foreign : {true, false}) {
        for (const quint32 event : kEventsWithArgument)
            QTest::addRow("%u, %s", event, foreign ? "another thread" : "GUI thread")
                << event << foreign;
    }
}

void HandlerSwapTest::shouldTakeArgumentsWithoutAHandler()
{
    QFETCH(quint32, event);
    QFETCH(bool, foreign);
    Telling telling;
    telling.host.start({TrueHost::Grouped});
    const QString before = telling.panel.dump();
    telling.panel.area().m_controlHandler.reset();
    telling.panel.area().Reconnect();
    const LogTrap log;

    // Of another type.
    const auto tell = [&] { telling.panel.notify<double>(event, 1.0); };
    if (foreign)
        QVERIFY(telling.one.run(tell));
    else
        tell();
    QCOMPARE(linesLogged(log, 133), 1);

    // On another thread than its own.
    Detour detour(telling.panel.host().observer, telling.two);
    CSubject subject;
    subject.Attach(&detour);
    subject.Notify<QUuid>(event, testId(1));
    QCOMPARE(linesLogged(log, 126), 1);
    QCOMPARE(linesLogged(log, 133), 1);
    QCOMPARE(telling.panel.dump(), before);
}

void HandlerSwapTest::shouldDoWhatNeedsNoHandler_data()
{
    QTest::addColumn<bool>("foreign");
    QTest::newRow("another thread") << true;
    QTest::newRow("GUI thread") << false;
}

void HandlerSwapTest::shouldDoWhatNeedsNoHandler()
{
    QFETCH(bool, foreign);
    Telling telling;
    telling.panel.host().setProject({testGroup(100)},
                                    {testProcessor(1, 100), testProcessor(2), testProcessor(3)});
    telling.panel.notify(16);
    telling.panel.area().m_controlHandler.reset();
    telling.panel.area().Reconnect();
    const auto tell = [&](const std::function<void()>& events) {
        if (foreign)
            QVERIFY(telling.one.run(events));
        else
            events();
    };

    tell([&] { telling.panel.notify<int>(0, 23); });
    QTRY_COMPARE(telling.panel.area().detectStrategy(), 23);
    tell([&] { telling.panel.notify<QUuid>(20, testId(2)); });
    QTRY_COMPARE(telling.panel.dump(), QStringLiteral("All processors(2)[G100[1],3]"));
    tell([&] { telling.panel.notify<QList<QUuid>>(21, {testId(1), testId(100)}); });
    QTRY_COMPARE(telling.panel.dump(), QStringLiteral("All processors(1)[3]"));
    // A tree with rows cannot be filled anew without asking; an empty one can.
    tell([&] {
        telling.panel.notify(16);
        telling.panel.notify<QUuid>(20, testId(3));
    });
    QTRY_COMPARE(telling.panel.dump(), QStringLiteral("All processors(0)[]"));
    QSignalSpy resets(&telling.panel.model(), &QAbstractItemModel::modelReset);
    tell([&] { telling.panel.notify(16); });
    QTRY_COMPARE(resets.count(), 1);
}

TSA_TEST_MAIN(HandlerSwapTest)
#include "tst_handlerswap.moc"
