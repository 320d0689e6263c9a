#include "Interface/TargetSelectArea.h"

#include "plugin/TargetSelectArea.h"

// Resources of a static library register themselves only when somebody asks, and the macro that
// asks works outside any namespace only.
static void initResources()
{
    Q_INIT_RESOURCE(TargetSelectAreaImages);
    Q_INIT_RESOURCE(TargetSelectAreaTranslations);
}

bool TargetSelectArea_Init(IAbstractLayerInterface** layer, QWidget* parent)
{
    if (!layer)
        return false;
    initResources();
    CTargetSelectArea* panel = CTargetSelectArea::Instance();
    if (!panel)
        return false;
    *layer = static_cast<ITargetSelectAreaInterface*>(panel);
    (*layer)->GetWidget()->setParent(parent);
    return true;
}
