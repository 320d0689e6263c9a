#include "host/workbench/project/ProjectRanges.h"

#include "Interface/ProjectLimits.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <limits>

namespace {

constexpr qint32 kMost = std::numeric_limits<qint32>::max();

struct Known
{
    const char* name;
    ProjectRanges::Range range;
};

// A detection may take a minute for a full project, not hours.
constexpr Known kAnswers[] = {
    {"detectPauseMs", {0, 10000}},
    {"nameMaxBytes", {0, ProjectRanges::kMaxNameLength}},
    {"fixedOutputCount", {0, kMost}},
    {"newProcessorOutputs", {0, kMost}},
    {"deleteSpares", {0, ProjectLimits::kMaxProcessors}},
    {"ipCheckCount", {0, kMost}},
};

} // namespace

ProjectRanges::Range ProjectRanges::ofAnswer(const char* name)
{
    const auto* found =
        std::find_if(std::begin(kAnswers), std::end(kAnswers),
                     [name](const Known& known) { return std::strcmp(known.name, name) == 0; });
    return found == std::end(kAnswers) ? Range{std::numeric_limits<qint32>::min(), kMost}
                                       : found->range;
}
