#include "host/workbench/project/NetworkSettings.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

constexpr struct
{
    const char* name;
    ProjectRanges::Range range;
} kRanges[] = {
    {"port", {Loopback::kLeastPort, Loopback::kMostPort}},
    {"probeTimeoutMs", {50, 10000}},
    {"aliveIntervalMs", {50, 60000}},
    {"deadTimeoutMs", {100, 300000}},
};

} // namespace

ProjectRanges::Range NetworkSettings::rangeOf(const char* name)
{
    const auto* const found =
        std::find_if(std::begin(kRanges), std::end(kRanges),
                     [name](const auto& known) { return std::strcmp(known.name, name) == 0; });
    return found == std::end(kRanges) ? ProjectRanges::Range{} : found->range;
}
