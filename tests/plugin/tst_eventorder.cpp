#include "plugin/EventOrder.h"
#include "tests/support/HostThread.h"
#include "tests/support/TestRecords.h"
#include "tests/support/WarningTrap.h"

#include <QTest>

using Reach = CEventOrder::Reach;

class EventOrderTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldTellWhatIsNewer();
    void shouldTellWhatReachesTheWholeTree();
    void shouldForgetWhenNoPlaceIsLeft();
    void shouldKnowWhoTold();
    void shouldTellWhatAnotherThreadContests();
    void shouldOutliveTheOrder();
};

void EventOrderTest::shouldTellWhatIsNewer()
{
    CEventOrder order;
    const auto first = order.take({testId(1), testId(2)}, Reach::OwnRows);
    QVERIFY(!order.isOvertaken(*first, testId(1)));
    QVERIFY(!order.isOvertakenAtAll(*first));
    const auto second = order.take({testId(2)}, Reach::OwnRows);
    QVERIFY(!order.isOvertaken(*first, testId(1)));
    QVERIFY(order.isOvertaken(*first, testId(2)));
    QVERIFY(order.isOvertakenAtAll(*first));
    QVERIFY(!order.isOvertaken(*second, testId(2)));
    QVERIFY(!order.isOvertaken(*second, testId(1)));
}

void EventOrderTest::shouldTellWhatReachesTheWholeTree()
{
    CEventOrder order;
    const auto first = order.take({testId(1)}, Reach::OwnRows);
    const auto group = order.take({testId(100)}, Reach::WholeTree);
    QVERIFY(order.isOvertaken(*first, testId(1)));
    QVERIFY(!order.isOvertaken(*group, testId(1)));
}

void EventOrderTest::shouldForgetWhenNoPlaceIsLeft()
{
    CEventOrder order;
    order.take({testId(1)}, Reach::OwnRows);
    const auto later = order.take({testId(2)}, Reach::OwnRows);
    QVERIFY(!order.isOvertaken(*later, testId(1)));
    QVERIFY(!order.isOvertaken(*later, testId(2)));
}

void EventOrderTest::shouldKnowWhoTold()
{
    CEventOrder order;
    HostThread thread;
    CEventOrder::Place there;
    const auto here = order.take({}, Reach::OwnRows);
    QVERIFY(thread.run([&] { there = order.take({}, Reach::OwnRows); }));
    QVERIFY(here->teller() == std::this_thread::get_id());
    QVERIFY(here->teller() != there->teller());
}

void EventOrderTest::shouldTellWhatAnotherThreadContests()
{
    CEventOrder order;
    HostThread thread;
    const auto first = order.take({testId(1), testId(2)}, Reach::OwnRows);
    const auto own = order.take({testId(1)}, Reach::OwnRows);
    CEventOrder::Place foreign;
    QVERIFY(thread.run([&] { foreign = order.take({testId(2)}, Reach::OwnRows); }));
    QVERIFY(!order.isContested(*first, testId(1)));
    QVERIFY(order.isContested(*first, testId(2)));
    QVERIFY(!order.isContested(*foreign, testId(2)));
}

void EventOrderTest::shouldOutliveTheOrder()
{
    auto order = std::make_unique<CEventOrder>();
    CEventOrder::Place place = order->take({testId(1)}, Reach::OwnRows);
    order.reset();
    QVERIFY(place->teller() == std::this_thread::get_id());
    place.reset();
}

TSA_GUILESS_TEST_MAIN(EventOrderTest)
#include "tst_eventorder.moc"
