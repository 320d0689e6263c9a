#pragma once

#include <QRandomGenerator>
#include <QString>

#include <functional>

/// Which addresses a host rejects, drawn at random: none, all, all but a few, every nth, scattered
/// ones, or blocks of them.
struct RandomRejection
{
    explicit RandomRejection(QRandomGenerator& random);

    QString name;
    std::function<bool(quint32)> rejects;
    /// Whether nearly every address is rejected, which makes runs slow.
    bool dense = false;
};

/// An address, more often than not with octets at which something carries or is put right.
quint32 randomAddress(QRandomGenerator& random);
