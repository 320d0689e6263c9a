#pragma once

#include "host/simulator/protocol/Loopback.h"

#include <QString>
#include <QStringList>

#include <optional>

/// What the command line asks for.
struct SimulatorOptions
{
    int count = 50;
    quint32 base = 0x7F000101;             ///< 127.0.1.1
    quint16 port = Loopback::kDefaultPort; ///< 0 for any free one.
    QStringList names;                     ///< Of the first devices.
    quint32 seed = 1;
    int backupEvery = 0; ///< 0 for no backups.
    int dieAfterMs = 0;  ///< 0 for never.
    bool readsInput = true;
};

/// Returns the options, or nothing and the reason in `problem`; the first one of `arguments` is the
/// name of the program. Exits after printing the help if it is asked for.
std::optional<SimulatorOptions> parseSimulatorOptions(const QStringList& arguments,
                                                      QString& problem);
