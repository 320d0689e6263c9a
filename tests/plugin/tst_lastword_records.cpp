#include "tests/plugin/Telling.h"

#include <memory>
#include <vector>

using Event = TrueHost::Event;

/// The records of the rows are the host's last word, whatever overtook what.
class LastWordRecordsTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldKeepTheWarningThatFollowsInsideAQuestion_data();
    void shouldKeepTheWarningThatFollowsInsideAQuestion();
    void shouldKeepTheWarningsOfALongDetection();
    void shouldKeepTheWarningThatFollowsWhileTheGuiThreadIsBusy();
    void shouldKeepTheNewerAnswerOfTwoThreads_data();
    void shouldKeepTheNewerAnswerOfTwoThreads();
};

void LastWordRecordsTest::shouldKeepTheWarningThatFollowsInsideAQuestion_data()
{
    QTest::addColumn<TrueHost::Event>("event");
    for (const Event event : {TrueHost::Added, TrueHost::Changed, TrueHost::ProjectChanged})
        QTest::addRow("%s", qPrintable(TrueHost::name(event))) << event;
}

void LastWordRecordsTest::shouldKeepTheWarningThatFollowsInsideAQuestion()
{
    QFETCH(TrueHost::Event, event);
    Telling telling;
    telling.host.start({event == TrueHost::Added ? TrueHost::Nothing : TrueHost::Ungrouped});
    QVERIFY(telling.tellInsideAQuestion([&] { telling.host.tell({event, TrueHost::Warned}); }, 1));
    VERIFY_TREE_OF(telling.host);
}

void LastWordRecordsTest::shouldKeepTheWarningsOfALongDetection()
{
    constexpr int kProcessors = 20;

    Telling telling;
    telling.host.start(QVector<TrueHost::Start>(kProcessors, TrueHost::Grouped));
    const auto tell = [&] {
        for (const Event event : {TrueHost::Changed, TrueHost::Warned}) {
            for (quint32 unit = 1; unit <= kProcessors; ++unit)
                telling.host.tell({event}, unit);
        }
    };
    QVERIFY(telling.tellInsideAQuestion(tell, kProcessors));
    VERIFY_TREE_OF(telling.host);
}

void LastWordRecordsTest::shouldKeepTheWarningThatFollowsWhileTheGuiThreadIsBusy()
{
    Telling telling;
    telling.host.start({TrueHost::Nothing, TrueHost::Ungrouped, TrueHost::Ungrouped});
    const QVector<Event> events{TrueHost::Added, TrueHost::Changed, TrueHost::ProjectChanged};
    std::vector<std::unique_ptr<HostThread>> threads;
    std::vector<std::future<void>> told;
    for (quint32 unit = 1; unit <= 3; ++unit) {
        threads.push_back(std::make_unique<HostThread>());
        told.push_back(threads.back()->post([&telling, &events, unit] {
            telling.host.tell({events.at(static_cast<int>(unit) - 1), TrueHost::Warned}, unit);
        }));
    }
    // The GUI thread is busy, inside no question, until they gave up waiting for it.
    bool cameBack = true;
    for (const auto& done : told)
        cameBack = comesBack(done) && cameBack;
    telling.jobs.wait(3, kJob);
    QVERIFY(cameBack);
    VERIFY_TREE_OF(telling.host);
}

void LastWordRecordsTest::shouldKeepTheNewerAnswerOfTwoThreads_data()
{
    QTest::addColumn<TrueHost::Event>("slow");
    QTest::addColumn<QVector<TrueHost::Event>>("newer");
    for (const Event slow : {TrueHost::Added, TrueHost::Changed, TrueHost::ProjectChanged}) {
        for (const Event newer : {TrueHost::Changed, TrueHost::ProjectChanged, TrueHost::Warned}) {
            QTest::addRow("%s, then %s", qPrintable(TrueHost::name(slow)),
                          qPrintable(TrueHost::name(newer)))
                << slow << QVector<Event>{newer};
        }
    }
    QTest::newRow("17, then another group of that identity")
        << TrueHost::GroupAdded << QVector<Event>{TrueHost::GroupRemoved, TrueHost::GroupAdded};
}

void LastWordRecordsTest::shouldKeepTheNewerAnswerOfTwoThreads()
{
    QFETCH(TrueHost::Event, slow);
    QFETCH(QVector<TrueHost::Event>, newer);
    Telling telling;
    const bool adds = slow == TrueHost::Added || slow == TrueHost::GroupAdded;
    telling.host.start({adds ? TrueHost::Nothing : TrueHost::Ungrouped});
    QVERIFY(telling.tellOvertaken(slow, newer));
    VERIFY_TREE_OF(telling.host);
}

TSA_TEST_MAIN(LastWordRecordsTest)
#include "tst_lastword_records.moc"
