#pragma once

#include <QRandomGenerator>
#include <QString>

#include <functional>

/// A random set of addresses that a host rejects: none, all, all except a few, every nth, scattered
/// ones, or blocks.
struct RandomRejection
{
    explicit RandomRejection(QRandomGenerator& random);

    QString name;
    std::function<bool(quint32)> rejects;
    /// Nearly every address is rejected, which makes runs slow.
    bool dense = false;
};

/// Returns an address that often has octets with a carry or a correction.
quint32 randomAddress(QRandomGenerator& random);
