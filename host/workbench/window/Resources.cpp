#include "host/workbench/window/Resources.h"

#include <QDir>

// Resources of a static library register themselves only when somebody asks, and the macro that
// asks works outside any namespace only.
void initWorkbenchResources()
{
    Q_INIT_RESOURCE(Workbench);
    Q_INIT_RESOURCE(WorkbenchTranslations);
}
