#pragma once

#include <QVector>

/// TSA_SEED of the environment, by which a test at random is run again as it went, or else a seed
/// of its own.
quint32 firstSeed();

/// That of the environment alone, or else `count` of them, the same each time.
QVector<quint32> seeds(int count);
