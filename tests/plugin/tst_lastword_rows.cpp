#include "tests/plugin/Telling.h"

using Event = TrueHost::Event;

/// The rows are those of the host's last word, each processor once and at its place, whatever
/// overtook what.
class LastWordRowsTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldLeaveNoRowOfAProcessorDeletedInsideAQuestion_data();
    void shouldLeaveNoRowOfAProcessorDeletedInsideAQuestion();
    void shouldNotBringBackADeletedRow_data();
    void shouldNotBringBackADeletedRow();
    void shouldKeepAProcessorThatMovesInsideAQuestion();
    void shouldPlaceAProcessorWarnedOfBeforeItMoves();
    void shouldShowAProcessorAddedInsideItsQuestionOnce_data();
    void shouldShowAProcessorAddedInsideItsQuestionOnce();
    void shouldShowAProcessorListedTwiceOnce_data();
    void shouldShowAProcessorListedTwiceOnce();
    void shouldNotBringBackAProcessorThatOnceMissedItsGroup();
    void shouldKeepGroupsInTheOrderInWhichTheyWereTold_data();
    void shouldKeepGroupsInTheOrderInWhichTheyWereTold();
};

void LastWordRowsTest::shouldLeaveNoRowOfAProcessorDeletedInsideAQuestion_data()
{
    QTest::addColumn<TrueHost::Event>("added");
    QTest::addColumn<TrueHost::Event>("removed");
    for (const Event added : {TrueHost::Added, TrueHost::ListAdded}) {
        for (const Event removed : {TrueHost::Removed, TrueHost::ListRemoved}) {
            QTest::addRow("%s, then %s", qPrintable(TrueHost::name(added)),
                          qPrintable(TrueHost::name(removed)))
                << added << removed;
        }
    }
}

void LastWordRowsTest::shouldLeaveNoRowOfAProcessorDeletedInsideAQuestion()
{
    QFETCH(TrueHost::Event, added);
    QFETCH(TrueHost::Event, removed);
    Telling telling;
    telling.host.start({TrueHost::Nothing});
    QVERIFY(telling.tellInsideAQuestion([&] { telling.host.tell({added, removed}); }));
    VERIFY_TREE_OF(telling.host);
}

void LastWordRowsTest::shouldNotBringBackADeletedRow_data()
{
    QTest::addColumn<TrueHost::Event>("slow");
    QTest::addColumn<QVector<TrueHost::Event>>("newer");
    QTest::newRow("17, then 20") << TrueHost::GroupAdded << QVector<Event>{TrueHost::GroupRemoved};
    QTest::newRow("17, then 20 and 16")
        << TrueHost::GroupAdded << QVector<Event>{TrueHost::GroupRemoved, TrueHost::Reset};
    for (const Event slow : {TrueHost::Added, TrueHost::ListAdded, TrueHost::Changed,
                             TrueHost::Moved, TrueHost::ProjectChanged, TrueHost::Warned}) {
        for (const Event newer : {TrueHost::Removed, TrueHost::ListRemoved}) {
            QTest::addRow("%s, then %s", qPrintable(TrueHost::name(slow)),
                          qPrintable(TrueHost::name(newer)))
                << slow << QVector<Event>{newer};
        }
    }
}

void LastWordRowsTest::shouldNotBringBackADeletedRow()
{
    QFETCH(TrueHost::Event, slow);
    QFETCH(QVector<TrueHost::Event>, newer);
    Telling telling;
    const bool adds = TrueHost::canHappen(TrueHost::Nothing, {slow});
    telling.host.start({adds ? TrueHost::Nothing : TrueHost::Grouped});
    QVERIFY(telling.tellOvertaken(slow, newer));
    VERIFY_TREE_OF(telling.host);
}

void LastWordRowsTest::shouldKeepAProcessorThatMovesInsideAQuestion()
{
    Telling telling;
    telling.host.start({TrueHost::Grouped});
    QVERIFY(telling.tellInsideAQuestion([&] {
        telling.host.tell(
            {TrueHost::Reset, TrueHost::Moved, TrueHost::GroupRemoved, TrueHost::Moved});
    }));
    VERIFY_TREE_OF(telling.host);
}

/// The record that the work thread stores has the new address already.
void LastWordRowsTest::shouldPlaceAProcessorWarnedOfBeforeItMoves()
{
    Telling telling;
    telling.panel.host().setProject(
        {}, {testIpProcessor(1, 10), testIpProcessor(2, 20), testProcessor(TrueHost::kWatched)});
    telling.panel.notify(16);
    telling.panel.host().setProcessor(testIpProcessor(1, 30));
    telling.panel.notify<QList<QUuid>>(39, {testId(1), testId(TrueHost::kWatched)});
    QVERIFY(telling.host.settle());
    telling.panel.notify<QUuid>(25, testId(1));
    QVERIFY(telling.host.settle());
    QCOMPARE(telling.panel.dump(), QStringLiteral("All processors(3)[2,1,900]"));
}

void LastWordRowsTest::shouldShowAProcessorAddedInsideItsQuestionOnce_data()
{
    QTest::addColumn<bool>("foreign");
    QTest::addColumn<bool>("answered");
    QTest::addColumn<TrueHost::Event>("raised");
    for (const bool foreign : {true, false}) {
        for (const bool answered : {false, true}) {
            for (const Event raised : {TrueHost::Added, TrueHost::ListAdded, TrueHost::Reset}) {
                QTest::addRow("%s inside 19 of %s, %s", qPrintable(TrueHost::name(raised)),
                              foreign ? "another thread" : "the GUI thread",
                              answered ? "answered" : "asked")
                    << foreign << answered << raised;
            }
        }
    }
}

void LastWordRowsTest::shouldShowAProcessorAddedInsideItsQuestionOnce()
{
    QFETCH(bool, foreign);
    QFETCH(bool, answered);
    QFETCH(TrueHost::Event, raised);
    Telling telling;
    telling.host.start({TrueHost::Nothing});
    telling.host.change(TrueHost::ListAdded);
    telling.doDuring(QStringLiteral("GetProcessorNode"), answered,
                     [&] { telling.host.notify(raised); });
    const auto tell = [&] { telling.host.notify(TrueHost::ListAdded); };
    if (foreign)
        QVERIFY(telling.one.run(tell));
    else
        tell();
    QVERIFY(telling.wasAsked());
    VERIFY_TREE_OF(telling.host);
}

void LastWordRowsTest::shouldShowAProcessorListedTwiceOnce_data()
{
    QTest::addColumn<bool>("foreign");
    QTest::newRow("another thread") << true;
    QTest::newRow("GUI thread") << false;
}

void LastWordRowsTest::shouldShowAProcessorListedTwiceOnce()
{
    QFETCH(bool, foreign);
    Telling telling;
    telling.host.start({TrueHost::Nothing});
    telling.host.change(TrueHost::ListAdded);
    const auto tell = [&] { telling.panel.notify<QList<QUuid>>(19, {testId(1), testId(1)}); };
    if (foreign)
        QVERIFY(telling.one.run(tell));
    else
        tell();
    VERIFY_TREE_OF(telling.host);
}

/// A fill finds no group for it; a list brings it outside all groups.
void LastWordRowsTest::shouldNotBringBackAProcessorThatOnceMissedItsGroup()
{
    Telling telling;
    telling.panel.host().setProject({}, {testProcessor(1), testProcessor(2, 100)});
    telling.panel.notify(16);
    telling.panel.host().setProject({}, {testProcessor(1), testProcessor(2)});
    telling.panel.notify<QList<QUuid>>(19, {testId(2)});
    QCOMPARE(telling.panel.dump(), QStringLiteral("All processors(2)[1,2]"));
    telling.panel.notify<QList<QUuid>>(21, {testId(100), testId(2)});
    QCOMPARE(telling.panel.dump(), QStringLiteral("All processors(1)[1]"));
}

void LastWordRowsTest::shouldKeepGroupsInTheOrderInWhichTheyWereTold_data()
{
    QTest::addColumn<bool>("foreign");
    QTest::newRow("another thread") << true;
    QTest::newRow("GUI thread") << false;
}

/// The second group is created and told while the host is asked about the first one.
void LastWordRowsTest::shouldKeepGroupsInTheOrderInWhichTheyWereTold()
{
    QFETCH(bool, foreign);
    Telling telling;
    const QList<ProcessorGroupNode> groups{testGroup(100), testGroup(200), testGroup(300)};
    telling.panel.host().setProject(groups.mid(0, 1), {});
    telling.panel.notify(16);
    telling.panel.host().setProject(groups.mid(0, 2), {});
    telling.doDuring(QStringLiteral("GetGroupNode"), false, [&] {
        telling.panel.host().setProject(groups, {});
        telling.panel.notify<QUuid>(17, testId(300));
    });
    const auto tell = [&] { telling.panel.notify<QUuid>(17, testId(200)); };
    if (foreign)
        QVERIFY(telling.one.run(tell));
    else
        tell();
    QVERIFY(telling.wasAsked());
    QCOMPARE(telling.panel.dump(), QStringLiteral("All processors(0)[G100[],G200[],G300[]]"));
    telling.panel.host().setProject(groups + QList<ProcessorGroupNode>{testGroup(400)}, {});
    telling.panel.notify<QUuid>(17, testId(400));
    QCOMPARE(telling.panel.dump(),
             QStringLiteral("All processors(0)[G100[],G200[],G300[],G400[]]"));
}

TSA_TEST_MAIN(LastWordRowsTest)
#include "tst_lastword_rows.moc"
