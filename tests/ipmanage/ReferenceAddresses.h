#pragma once

#include <QVector>

#include <functional>

/// The result of a search for addresses, and the addresses that were checked.
struct ReferenceResult
{
    QVector<quint32> found;
    QVector<quint32> asked;
};

/// Generates the run row by row, where a row is a third octet.
ReferenceResult referenceRun(quint32 start, int count, const std::function<bool(quint32)>& rejects);

/// Takes the first accepted of all possible candidates.
ReferenceResult referenceProposals(quint32 base, int wanted,
                                   const std::function<bool(quint32)>& rejects);
