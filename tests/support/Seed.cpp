#include "tests/support/Seed.h"

#include <QRandomGenerator>

#include <numeric>
#include <optional>

namespace {

std::optional<quint32> givenSeed()
{
    bool given = false;
    const quint32 seed = qEnvironmentVariable("TSA_SEED").toUInt(&given);
    return given ? std::optional(seed) : std::nullopt;
}

} // namespace

quint32 firstSeed()
{
    const auto given = givenSeed();
    return given ? *given : QRandomGenerator::global()->generate();
}

QVector<quint32> seeds(int count)
{
    if (const auto given = givenSeed())
        return {*given};
    QVector<quint32> all(count);
    std::iota(all.begin(), all.end(), 1U);
    return all;
}
