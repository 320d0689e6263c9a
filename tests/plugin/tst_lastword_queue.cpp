#include "tests/plugin/Telling.h"

/// The host's last word wins over what waits for its turn: what the GUI thread tells runs what is
/// queued first, and the host may be told more inside the questions of that.
class LastWordQueueTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldKeepARowThatComesAgain();
    void shouldKeepAGroupThatComesAgain();
    void shouldKeepTheOrderOfAResetAndWhatItsQueueTells();
};

void LastWordQueueTest::shouldKeepARowThatComesAgain()
{
    TestPanel panel;
    HostThread other;
    panel.host().setProject({}, {testProcessor(1), testProcessor(2)});
    panel.notify(16);
    QVERIFY(comesBack(other.post([&] { panel.notify(16); })));
    panel.host().removeProcessor(testId(1));
    panel.host().doInside(QStringLiteral("GetAllProcessorNodes"), [&] {
        panel.host().setProcessor(testProcessor(1));
        panel.notify<QUuid>(18, testId(1));
    });
    panel.notify<QUuid>(20, testId(1));
    QTRY_COMPARE(panel.dump(), QStringLiteral("All processors(2)[2,1]"));
}

void LastWordQueueTest::shouldKeepAGroupThatComesAgain()
{
    TestPanel panel;
    HostThread other;
    ProcessorNode member = testProcessor(1);
    member.groupId = testId(100);
    panel.host().setProject({testGroup(100)}, {member});
    panel.notify(16);
    QVERIFY(comesBack(other.post([&] { panel.notify(16); })));
    panel.host().removeGroup(testId(100));
    panel.host().doInside(QStringLiteral("GetAllProcessorNodes"), [&] {
        panel.host().setProject({testGroup(100)}, {member});
        panel.notify<QUuid>(17, testId(100));
        panel.notify<QUuid>(25, testId(1));
    });
    panel.host().memberships.clear();
    panel.notify<QUuid>(20, testId(100));
    QTRY_COMPARE(panel.dump(), QStringLiteral("All processors(1)[G100[1]]"));
    QVERIFY(panel.host().memberships.isEmpty());
}

void LastWordQueueTest::shouldKeepTheOrderOfAResetAndWhatItsQueueTells()
{
    TestPanel panel;
    HostThread other;
    panel.host().setProject({}, {testProcessor(1)});
    panel.notify(16);
    QVERIFY(comesBack(other.post([&] { panel.notify<QList<QUuid>>(21, {testId(1)}); })));
    QVERIFY(comesBack(other.post([&] { panel.notify(16); })));
    panel.host().setProject({}, {testProcessor(2)});
    panel.host().doInside(QStringLiteral("GetAllProcessorNodes"), [&] {
        panel.host().setProcessor(testProcessor(3));
        panel.notify<QUuid>(18, testId(3));
        panel.host().removeProcessor(testId(2));
        panel.notify<QUuid>(20, testId(2));
    });
    panel.notify(16);
    QTRY_COMPARE(panel.dump(), QStringLiteral("All processors(1)[3]"));
}

TSA_TEST_MAIN(LastWordQueueTest)

#include "tst_lastword_queue.moc"
