#include "tests/plugin/Telling.h"

using Event = TrueHost::Event;

/// A fill of the whole tree (16) asks the host for two lists. What the host tells between the two,
/// and until the rows stand, is newer than the lists.
class LastWordFillsTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldKeepTheWarningToldDuringAFill_data();
    void shouldKeepTheWarningToldDuringAFill();
    void shouldKeepWhatAnotherThreadTellsDuringAFill_data();
    void shouldKeepWhatAnotherThreadTellsDuringAFill();
    void shouldKeepWhatTheGuiThreadTellsDuringAFill_data();
    void shouldKeepWhatTheGuiThreadTellsDuringAFill();

private:
    static void addFills();
    static bool fill(Telling& telling);
};

/// Who starts the fill, and where in its questions something happens.
void LastWordFillsTest::addFills()
{
    QTest::addColumn<bool>("foreign");
    QTest::addColumn<QString>("question");
    QTest::addColumn<bool>("answered");
    QTest::addColumn<TrueHost::Start>("start");
    QTest::addColumn<QVector<TrueHost::Event>>("events");
}

bool LastWordFillsTest::fill(Telling& telling)
{
    QFETCH(bool, foreign);
    if (!foreign) {
        telling.panel.notify(16);
        return telling.wasAsked();
    }
    const bool cameBack = telling.one.run([&] { telling.panel.notify(16); });
    return telling.host.settle() && cameBack && telling.wasAsked();
}

void LastWordFillsTest::shouldKeepTheWarningToldDuringAFill_data()
{
    QTest::addColumn<bool>("foreign");
    QTest::newRow("another thread's") << true;
    QTest::newRow("the GUI thread's") << false;
}

void LastWordFillsTest::shouldKeepTheWarningToldDuringAFill()
{
    Telling telling;
    telling.host.start({TrueHost::Grouped});
    bool cameBack = false;
    telling.doDuring(QStringLiteral("GetAllGroupNodes"), true, [&] {
        const int before = telling.jobs.count();
        cameBack = comesBack(telling.two.post([&] { telling.host.tell({TrueHost::Warned}); }));
        telling.jobs.wait(before + 1, kJob);
    });
    QVERIFY(fill(telling));
    QVERIFY(cameBack);
    VERIFY_TREE_OF(telling.host);
}

void LastWordFillsTest::shouldKeepWhatAnotherThreadTellsDuringAFill_data()
{
    addFills();
    const QVector<QPair<TrueHost::Start, QVector<Event>>> all{
        {TrueHost::Grouped, {TrueHost::GroupRemoved}},
        {TrueHost::Grouped, {TrueHost::Removed, TrueHost::GroupRemoved}},
        {TrueHost::Nothing, {TrueHost::GroupAdded, TrueHost::Added}},
        {TrueHost::Nothing, {TrueHost::ListAdded}},
        {TrueHost::Grouped, {TrueHost::Removed}},
        {TrueHost::Grouped, {TrueHost::Changed}},
        {TrueHost::Ungrouped, {TrueHost::Moved}},
    };
    for (const bool foreign : {true, false}) {
        for (const char* question : {"GetAllProcessorNodes", "GetAllGroupNodes"}) {
            for (const auto& [start, events] : all) {
                QTest::addRow("%s inside %s, fill of %s", qPrintable(TrueHost::names(events)),
                              question, foreign ? "another thread" : "the GUI thread")
                    << foreign << QString::fromLatin1(question) << true << start << events;
            }
        }
    }
}

void LastWordFillsTest::shouldKeepWhatAnotherThreadTellsDuringAFill()
{
    QFETCH(QString, question);
    QFETCH(bool, answered);
    QFETCH(TrueHost::Start, start);
    QFETCH(QVector<TrueHost::Event>, events);
    Telling telling;
    telling.host.start({start});
    bool cameBack = false;
    telling.doDuring(question, answered, [&] {
        cameBack = comesBack(telling.two.post([&] { telling.host.tell(events); }));
    });
    QVERIFY(fill(telling));
    QVERIFY(cameBack);
    VERIFY_TREE_OF(telling.host);
}

void LastWordFillsTest::shouldKeepWhatTheGuiThreadTellsDuringAFill_data()
{
    addFills();
    for (const bool foreign : {true, false}) {
        for (const char* question : {"GetAllProcessorNodes", "GetAllGroupNodes"}) {
            for (const bool answered : {false, true}) {
                for (const Event event : {TrueHost::Added, TrueHost::ListAdded, TrueHost::Removed,
                                          TrueHost::GroupAdded, TrueHost::GroupRemoved}) {
                    const bool adds = TrueHost::canHappen(TrueHost::Nothing, {event});
                    QTest::addRow("%s inside %s, %s, fill of %s", qPrintable(TrueHost::name(event)),
                                  question, answered ? "answered" : "asked",
                                  foreign ? "another thread" : "the GUI thread")
                        << foreign << QString::fromLatin1(question) << answered
                        << (adds ? TrueHost::Nothing : TrueHost::Grouped) << QVector<Event>{event};
                }
            }
        }
    }
}

void LastWordFillsTest::shouldKeepWhatTheGuiThreadTellsDuringAFill()
{
    QFETCH(QString, question);
    QFETCH(bool, answered);
    QFETCH(TrueHost::Start, start);
    QFETCH(QVector<TrueHost::Event>, events);
    Telling telling;
    telling.host.start({start});
    telling.doDuring(question, answered, [&] { telling.host.tell(events); });
    QVERIFY(fill(telling));
    VERIFY_TREE_OF(telling.host);
}

TSA_TEST_MAIN(LastWordFillsTest)
#include "tst_lastword_fills.moc"
