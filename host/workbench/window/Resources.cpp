#include "host/workbench/window/Resources.h"

#include <QDir>

// Resources of a static library are not registered automatically, and the macro that registers them
// works only outside any namespace.
void initWorkbenchResources()
{
    Q_INIT_RESOURCE(Workbench);
    Q_INIT_RESOURCE(WorkbenchTranslations);
}
