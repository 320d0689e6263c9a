#pragma once

#include <QVector>

#include <functional>

/// What a search for addresses comes to, and the addresses it asks about.
struct ReferenceResult
{
    QVector<quint32> found;
    QVector<quint32> asked;
};

/// The run of consecutive addresses, row by row: a row is a third octet, and the first rows are
/// those up to 255.
ReferenceResult referenceRun(quint32 start, int count, const std::function<bool(quint32)>& rejects);

/// The proposals, as the first accepted among as many candidates as are ever looked at.
ReferenceResult referenceProposals(quint32 base, int wanted,
                                   const std::function<bool(quint32)>& rejects);
