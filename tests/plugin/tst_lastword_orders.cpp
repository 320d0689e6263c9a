#include "tests/plugin/Telling.h"

using Event = TrueHost::Event;
using Events = QVector<Event>;

namespace {

/// As many are told inside one question, each about a unit of its own.
constexpr int kBatch = 40;

/// A bridge that is wrong is wrong often; so many are enough to see why.
constexpr int kEnough = 5;

struct Sequence
{
    TrueHost::Start start;
    Events events;

    QString name() const
    {
        static const char* const starts[] = {"nothing", "grouped", "ungrouped"};
        return QStringLiteral("%1: %2").arg(QString::fromLatin1(starts[start]),
                                            TrueHost::names(events));
    }
};

/// All orders of two and three events that can happen, `first` before all where it is given.
QVector<Sequence> sequences(const Events& first = {}, int longest = 3)
{
    QVector<Sequence> all;
    QVector<Events> tails{{}};
    for (int length = 1; length <= longest; ++length) {
        QVector<Events> longer;
        for (const Events& tail : qAsConst(tails)) {
            for (int event = 0; event < TrueHost::kEvents; ++event)
                longer.append(tail + Events{static_cast<Event>(event)});
        }
        tails = longer;
        for (const Events& tail : qAsConst(tails)) {
            const Events events = first + tail;
            for (int start = 0; start < TrueHost::kStarts; ++start) {
                if (events.size() > 1
                    && TrueHost::canHappen(static_cast<TrueHost::Start>(start), events))
                    all.append({static_cast<TrueHost::Start>(start), events});
            }
        }
    }
    return all;
}

/// What went wrong, up to a number that is enough.
class Failures final
{
public:
    void add(const Sequence& sequence, const QString& what)
    {
        m_texts.append(sequence.name() + QLatin1Char('\n') + what);
    }
    bool areEnough() const { return m_texts.size() >= kEnough; }
    bool isEmpty() const { return m_texts.isEmpty(); }
    QByteArray text() const { return m_texts.join(QLatin1Char('\n')).toUtf8(); }

private:
    QStringList m_texts;
};

} // namespace

/// The tree ends as the project after all orders of true events, told while others are still being
/// handled.
class LastWordOrdersTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldKeepAllOrdersOfACalmHost_data();
    void shouldKeepAllOrdersOfACalmHost();
    void shouldKeepAllOrdersInsideOneQuestion();
    void shouldKeepAllOrdersOfTwoThreads_data();
    void shouldKeepAllOrdersOfTwoThreads();
    void shouldKeepAllOrdersRaisedInsideAQuestion_data();
    void shouldKeepAllOrdersRaisedInsideAQuestion();

private:
    static void tellBatch(Telling& telling, const QVector<Sequence>& batch, Failures& failures);
};

void LastWordOrdersTest::shouldKeepAllOrdersOfACalmHost_data()
{
    QTest::addColumn<bool>("foreign");
    QTest::newRow("another thread") << true;
    QTest::newRow("GUI thread") << false;
}

void LastWordOrdersTest::shouldKeepAllOrdersOfACalmHost()
{
    QFETCH(bool, foreign);
    Telling telling;
    Failures failures;
    for (const Sequence& sequence : sequences()) {
        telling.host.start({sequence.start});
        for (const Event event : sequence.events) {
            if (foreign)
                QVERIFY(telling.one.run([&] { telling.host.tell({event}); }));
            else
                telling.host.tell({event});
            QVERIFY(telling.host.settle());
        }
        const QString difference = telling.host.difference();
        if (!difference.isEmpty())
            failures.add(sequence, difference);
        if (failures.areEnough())
            break;
    }
    QVERIFY2(failures.isEmpty(), failures.text().constData());
}

void LastWordOrdersTest::tellBatch(Telling& telling, const QVector<Sequence>& batch,
                                   Failures& failures)
{
    QVector<TrueHost::Start> starts;
    int warned = 0;
    for (const Sequence& sequence : batch) {
        starts.append(sequence.start);
        warned += sequence.events.count(TrueHost::Warned);
    }
    telling.host.start(starts);
    const auto tell = [&] {
        for (int i = 0; i < batch.size(); ++i)
            telling.host.tell(batch.at(i).events, static_cast<quint32>(i + 1));
    };
    QVERIFY(telling.tellInsideAQuestion(tell, warned));
    QVERIFY(telling.host.settle());
    const auto differences = telling.host.differences();
    for (auto it = differences.begin(); it != differences.end(); ++it) {
        if (it.key() > 0 && it.key() <= static_cast<quint32>(batch.size()))
            failures.add(batch.at(static_cast<int>(it.key()) - 1), it.value());
        else
            failures.add(batch.first(), it.value());
    }
}

void LastWordOrdersTest::shouldKeepAllOrdersInsideOneQuestion()
{
    Telling telling;
    Failures failures;
    QVector<Sequence> batch;
    const auto all = sequences();
    QVERIFY(all.size() > 1000);
    for (const Sequence& sequence : all) {
        // A fill would mend what another sequence broke.
        if (sequence.events.contains(TrueHost::Reset))
            tellBatch(telling, {sequence}, failures);
        else
            batch.append(sequence);
        if (batch.size() == kBatch)
            tellBatch(telling, std::exchange(batch, {}), failures);
        if (failures.areEnough() || QTest::currentTestFailed())
            break;
    }
    if (!batch.isEmpty())
        tellBatch(telling, batch, failures);
    QVERIFY2(failures.isEmpty(), failures.text().constData());
}

void LastWordOrdersTest::shouldKeepAllOrdersOfTwoThreads_data()
{
    QTest::addColumn<TrueHost::Event>("slow");
    for (int event = 0; event < TrueHost::kEvents; ++event) {
        const auto slow = static_cast<Event>(event);
        if (!Telling::questionOf(slow).isEmpty())
            QTest::addRow("slow %s", qPrintable(TrueHost::name(slow))) << slow;
    }
}

void LastWordOrdersTest::shouldKeepAllOrdersOfTwoThreads()
{
    QFETCH(TrueHost::Event, slow);
    Telling telling;
    Failures failures;
    const auto all = sequences({slow}, 2);
    QVERIFY(!all.isEmpty());
    for (const Sequence& sequence : all) {
        telling.host.start({sequence.start});
        QVERIFY2(telling.tellOvertaken(slow, sequence.events.mid(1)), qPrintable(sequence.name()));
        const QString difference = telling.host.difference();
        if (!difference.isEmpty())
            failures.add(sequence, difference);
        if (failures.areEnough())
            break;
    }
    QVERIFY2(failures.isEmpty(), failures.text().constData());
}

void LastWordOrdersTest::shouldKeepAllOrdersRaisedInsideAQuestion_data()
{
    QTest::addColumn<TrueHost::Event>("asking");
    QTest::addColumn<bool>("foreign");
    QTest::addColumn<QString>("question");
    QTest::addColumn<bool>("answered");
    const auto add = [](Event asking, bool foreign, const QString& question) {
        for (const bool answered : {false, true}) {
            QTest::addRow("%s of %s, %s %s", qPrintable(TrueHost::name(asking)),
                          foreign ? "another thread" : "the GUI thread", qPrintable(question),
                          answered ? "answered" : "asked")
                << asking << foreign << question << answered;
        }
    };
    for (const bool foreign : {true, false}) {
        add(TrueHost::Reset, foreign, QStringLiteral("GetAllProcessorNodes"));
        add(TrueHost::Reset, foreign, QStringLiteral("GetAllGroupNodes"));
        add(TrueHost::ListAdded, foreign, QStringLiteral("GetProcessorNode"));
    }
    add(TrueHost::GroupAdded, false, QStringLiteral("GetGroupNode"));
    for (const Event asking :
         {TrueHost::Added, TrueHost::Changed, TrueHost::Moved, TrueHost::ProjectChanged})
        add(asking, false, QStringLiteral("GetProcessorNode"));
    // The row that goes is selected, and the selection with it.
    QTest::newRow("20 of the GUI thread, ReportSelection")
        << TrueHost::Removed << false << QStringLiteral("ReportSelection") << false;
    QTest::newRow("20 group of the GUI thread, SetProcessorGroup")
        << TrueHost::GroupRemoved << false << QStringLiteral("SetProcessorGroup") << false;
}

void LastWordOrdersTest::shouldKeepAllOrdersRaisedInsideAQuestion()
{
    QFETCH(TrueHost::Event, asking);
    QFETCH(bool, foreign);
    QFETCH(QString, question);
    QFETCH(bool, answered);
    Telling telling;
    Failures failures;
    int asked = 0;
    for (const Sequence& sequence : sequences({asking}, 2)) {
        telling.host.start({sequence.start});
        telling.panel.area().SetCurrentProcessor(testId(1));
        telling.doDuring(question, answered, [&] {
            ++asked;
            telling.host.tell(sequence.events.mid(1));
        });
        telling.host.change(asking);
        if (foreign)
            QVERIFY2(telling.one.run([&] { telling.host.notify(asking); }),
                     qPrintable(sequence.name()));
        else
            telling.host.notify(asking);
        QVERIFY2(telling.host.settle(), qPrintable(sequence.name()));
        telling.disarm();
        const QString difference = telling.host.difference();
        if (!difference.isEmpty())
            failures.add(sequence, difference);
        if (failures.areEnough())
            break;
    }
    QVERIFY2(failures.isEmpty(), failures.text().constData());
    QVERIFY(asked > 0);
}

TSA_TEST_MAIN(LastWordOrdersTest)
#include "tst_lastword_orders.moc"
