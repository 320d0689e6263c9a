#include "tests/plugin/Telling.h"
#include "tests/support/Seed.h"

#include <QDeadlineTimer>
#include <QRandomGenerator>

#include <array>
#include <future>
#include <vector>

namespace {

constexpr quint32 kThreads = 3;
constexpr quint32 kUnits = 60; // of each thread
constexpr int kEventsTold = 3 * static_cast<int>(kUnits);

/// As long a question takes when nobody tells anything meanwhile.
constexpr auto kLongest = std::chrono::milliseconds(300);

} // namespace

/// Three threads tell of units of their own, all at once: of many, each a few times, for what comes
/// later mends what went wrong. Every few questions the host takes its time, until others have told
/// some more, or for a while; the GUI thread detects devices again and again.
class LastWordStormTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldEndAsTheProject_data();
    void shouldEndAsTheProject();
};

void LastWordStormTest::shouldEndAsTheProject_data()
{
    QTest::addColumn<quint32>("seed");
    for (const quint32 seed : seeds(8))
        QTest::addRow("TSA_SEED=%u", seed) << seed;
}

void LastWordStormTest::shouldEndAsTheProject()
{
    QFETCH(quint32, seed);
    Telling telling;
    telling.host.start(QVector<TrueHost::Start>(kThreads * kUnits, TrueHost::Grouped));
    Latch told;
    std::atomic<bool> isSlow{true};
    std::atomic<quint32> questions{0};
    const auto takeTime = [&](int most) {
        QRandomGenerator random(seed * 10000 + ++questions);
        if (isSlow && random.bounded(4) == 0)
            told.wait(told.count() + random.bounded(1, most), kLongest);
    };
    telling.panel.host().answered = [&](const QString&, const QUuid&) { takeTime(8); };
    telling.panel.host().inside = [&](const QString& name) {
        if (name == QLatin1String("DetectAllDevices"))
            takeTime(40);
    };

    std::array<HostThread, kThreads> threads;
    std::vector<std::future<void>> all;
    for (quint32 n = 0; n < kThreads; ++n) {
        all.push_back(threads.at(n).post([&, n] {
            QRandomGenerator random(seed * 10 + n);
            for (int i = 0; i < kEventsTold; ++i) {
                // No fill (16), which would mend everything.
                const auto event =
                    static_cast<TrueHost::Event>(random.bounded(1, TrueHost::kEvents));
                telling.host.tell({event}, 1 + n * kUnits + random.bounded(kUnits));
                told.arrive();
            }
        }));
    }
    const QDeadlineTimer limit(std::chrono::minutes(2));
    for (const auto& done : all) {
        while (done.wait_for(std::chrono::seconds(0)) != std::future_status::ready
               && !limit.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
            telling.panel.area().DetectDevices();
        }
    }
    isSlow = false;
    QVERIFY(!limit.hasExpired());
    VERIFY_TREE_OF(telling.host);
}

TSA_TEST_MAIN(LastWordStormTest)
#include "tst_lastword_storm.moc"
