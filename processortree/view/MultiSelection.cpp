#include "processortree/view/MultiSelection.h"

#include "base/TargetSelectHandler.h"

namespace {

constexpr int kMultiSelection = 2; // among the host's modes

} // namespace

bool isMultiSelection()
{
    return askHost(&Host::GetSelectionMode) == kMultiSelection
           && askHost(&Host::GetSelectedProcessors).size() > 1;
}
