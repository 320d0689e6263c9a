#include "processortree/view/OfferedAdditions.h"

#include "base/LogCategories.h"
#include "base/TargetSelectHandler.h"

namespace {

constexpr int kMostForOne = 254;
constexpr int kMostForTwo = 253;

} // namespace

bool OfferedAdditions::isVisible(AddKind kind) const
{
    switch (kind) {
    case AddKind::One:
        return one;
    case AddKind::Two:
        return two;
    case AddKind::Custom:
        return custom;
    }
    return false;
}

OfferedAdditions offeredAdditions()
{
    if (!GetTargetSelectHandler())
        return {};
    const QList<ProcessorNode> processors = askHost(&Host::GetAllProcessorNodes);
    // The host judges by the first processor; where there is none, nothing speaks against adding.
    const bool empty = processors.isEmpty();
    const bool permitted = empty || askHost(&Host::CanAddProcessors, processors.first());
    OfferedAdditions entries;
    entries.one = permitted && processors.size() <= kMostForOne;
    entries.two = permitted && processors.size() <= kMostForTwo;
    entries.custom = entries.one;
    entries.enabled = empty || askHost(&Host::IsAddProcessorsEnabled, processors.first());
    qCDebug(lcTree, "with %d processors, adding is %s and %s", processors.size(),
            permitted ? "permitted" : "not permitted", entries.enabled ? "enabled" : "disabled");
    return entries;
}
