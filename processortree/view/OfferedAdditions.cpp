#include "processortree/view/OfferedAdditions.h"

#include "Interface/ProjectLimits.h"
#include "base/LogCategories.h"
#include "base/TargetSelectHandler.h"

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
    const int room = ProjectLimits::kMaxProcessors - processors.size();
    OfferedAdditions offered;
    offered.one = permitted && room >= 1;
    offered.two = permitted && room >= 2;
    offered.custom = offered.one;
    offered.enabled = empty || askHost(&Host::IsAddProcessorsEnabled, processors.first());
    qCDebug(lcTree, "with %d processors, adding is %s and %s", processors.size(),
            permitted ? "permitted" : "not permitted", offered.enabled ? "enabled" : "disabled");
    return offered;
}
