#include "Interface/TargetSelectArea.h"

#include "base/ContractCheck.h"
#include "base/GuiThread.h"
#include "plugin/PanelChecks.h"
#include "plugin/TargetSelectArea.h"

#include <QCoreApplication>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

// Resources of a static library register themselves only when somebody asks, and the macro that
// asks works outside any namespace only.
static void initResources()
{
    Q_INIT_RESOURCE(TargetSelectAreaImages);
    Q_INIT_RESOURCE(TargetSelectAreaTranslations);
}

/// Keeps the library mapped until the process ends: Qt keeps pointers into it, and its work thread
/// runs its code. On Linux the linker's option "nodelete" does so.
static void pinLibrary()
{
#ifdef Q_OS_WIN
    HMODULE self = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<LPCWSTR>(&pinLibrary), &self);
#endif
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
    pinLibrary();
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
