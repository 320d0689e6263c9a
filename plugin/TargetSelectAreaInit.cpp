#include "Interface/TargetSelectArea.h"

#include "base/ContractCheck.h"
#include "base/GuiThread.h"
#include "plugin/PanelChecks.h"
#include "plugin/TargetSelectArea.h"

#include <QCoreApplication>

// Resources of a static library register themselves only when somebody asks, and the macro that
// asks works outside any namespace only.
static void initResources()
{
    Q_INIT_RESOURCE(TargetSelectAreaImages);
    Q_INIT_RESOURCE(TargetSelectAreaTranslations);
}

static void checkCaller()
{
    using ContractCheck::Finding;
    if (!QCoreApplication::instance()) {
        ContractCheck::report(Finding::NoApplication,
                              QStringLiteral("TargetSelectArea_Init is called with a QApplication, "
                                             "there is none"));
    } else if (!isGuiThread()) {
        ContractCheck::report(Finding::InitOnWrongThread,
                              QStringLiteral("TargetSelectArea_Init is called on the GUI thread"));
    }
}

bool TargetSelectArea_Init(IAbstractLayerInterface** layer, QWidget* parent)
{
    if (!layer)
        return false;
    ContractCheck::configure();
    checkCaller();
    initResources();
    CTargetSelectArea* panel = CTargetSelectArea::Instance();
    if (!panel)
        return false;
    CPanelChecks::checkParent(*panel, parent);
    *layer = static_cast<ITargetSelectAreaInterface*>(panel);
    (*layer)->GetWidget()->setParent(parent);
    return true;
}
