#include "plugin/TargetSelectHandler.h"

#include "plugin/TargetSelectArea.h"

std::shared_ptr<ITargetSelectInterfaceHandler> GetTargetSelectHandler()
{
    std::shared_ptr<IAbstractControlInterface> handler;
    CTargetSelectArea::WithExisting(
        [&](CTargetSelectArea& area) { handler = area.m_controlHandler; });
    return std::dynamic_pointer_cast<ITargetSelectInterfaceHandler>(handler);
}
