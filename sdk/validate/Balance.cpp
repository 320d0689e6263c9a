#include "sdk/validate/Balance.h"

#include "sdk/validate/ProcessFigures.h"
#include "sdk/validate/Threads.h"

#include <QApplication>
#include <QStringList>

#include <algorithm>
#include <vector>

namespace {

constexpr int kBatches = 6;

/// A leak of a record or a row is at least as large; what a heap's own books take is less.
constexpr qint64 kBytesOfARound = 48;

/// What grows at least by `perRound` with every round, in every batch.
QString growth(const QString& what, const std::vector<Holdings>& all, qint64 perRound, int rounds,
               const std::function<qint64(const Holdings&)>& value)
{
    qint64 least = value(all.at(1)) - value(all.at(0));
    for (std::size_t batch = 2; batch < all.size(); ++batch)
        least = std::min(least, value(all.at(batch)) - value(all.at(batch - 1)));
    if (least < perRound * rounds)
        return {};
    return QStringLiteral("%1 %2 for each of %3 rounds")
        .arg(static_cast<double>(least) / rounds, 0, 'f', 1)
        .arg(what)
        .arg(rounds * (static_cast<int>(all.size()) - 1));
}

} // namespace

Holdings holdings()
{
    settle();
    Holdings all;
    all.widgets = QApplication::allWidgets().size();
    all.threads = ProcessFigures::threads();
    all.files = ProcessFigures::openFiles();
    all.bytes = ProcessFigures::allocatedBytes();
    return all;
}

Growth growthOf(const std::function<void()>& round, int roundsOfABatch)
{
    const auto batch = [&] {
        for (int number = 0; number < roundsOfABatch; ++number)
            round();
    };
    batch();
    std::vector<Holdings> all{holdings()};
    for (int number = 0; number < kBatches; ++number) {
        batch();
        all.push_back(holdings());
    }
    Growth result;
    result.isMemoryCounted = all.front().bytes.has_value();
    QStringList texts;
    texts.append(growth(QStringLiteral("bytes"), all, kBytesOfARound, roundsOfABatch,
                        [](const Holdings& one) { return one.bytes.value_or(0); }));
    texts.append(growth(QStringLiteral("widgets"), all, 1, roundsOfABatch,
                        [](const Holdings& one) { return qint64(one.widgets); }));
    texts.append(growth(QStringLiteral("threads"), all, 1, roundsOfABatch,
                        [](const Holdings& one) { return qint64(one.threads); }));
    texts.append(growth(QLatin1String(ProcessFigures::kOpenFiles), all, 1, roundsOfABatch,
                        [](const Holdings& one) { return qint64(one.files); }));
    texts.removeAll(QString());
    result.text = texts.join(QStringLiteral(", "));
    return result;
}
