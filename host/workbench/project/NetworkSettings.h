#pragma once

#include "host/simulator/protocol/Loopback.h"
#include "host/workbench/project/ProjectRanges.h"

#include <QtGlobal>

/// The network of simulated processors in which the host detects, with the fields as a project file
/// names them.
struct NetworkSettings
{
    bool enabled = false; ///< Otherwise a detection finds what the project says.
    qint32 port = Loopback::kDefaultPort;
    qint32 probeTimeoutMs = 1000; ///< How long a detection waits for answers.
    qint32 aliveIntervalMs = 500; ///< How often a processor is asked after its detection.
    qint32 deadTimeoutMs = 2000;  ///< After how long a silence a processor counts as offline.

    bool operator==(const NetworkSettings& other) const
    {
        return enabled == other.enabled && port == other.port
               && probeTimeoutMs == other.probeTimeoutMs && aliveIntervalMs == other.aliveIntervalMs
               && deadTimeoutMs == other.deadTimeoutMs;
    }
    bool operator!=(const NetworkSettings& other) const { return !(*this == other); }

    /// Returns the numbers that the field of that name may be.
    static ProjectRanges::Range rangeOf(const char* name);

    /// Returns whether one late answer does not yet count as a silence.
    bool allowsForLateAnswers() const { return deadTimeoutMs / 2 >= aliveIntervalMs; }
};

/// Calls `visit(name, field)` for each field, under its name in a project file.
template <typename Settings, typename Visitor>
void visitNetworkFields(Settings& settings, Visitor& visit)
{
    visit("enabled", settings.enabled);
    visit("port", settings.port);
    visit("probeTimeoutMs", settings.probeTimeoutMs);
    visit("aliveIntervalMs", settings.aliveIntervalMs);
    visit("deadTimeoutMs", settings.deadTimeoutMs);
}
