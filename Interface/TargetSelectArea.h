#pragma once

#include <QtGlobal>

class IAbstractLayerInterface;
class QWidget;

#if defined(TARGETSELECTAREA_BUILD)
#define TARGETSELECTAREA_EXPORT Q_DECL_EXPORT
#else
#define TARGETSELECTAREA_EXPORT Q_DECL_IMPORT
#endif

/// The panel's one exported function. Builds the panel on first use (or after the last one was
/// destroyed), hands it out in `*layer` and makes its widget a child of `parent`, which may be
/// null. Called again it hands out the same object and moves the widget to the new parent.
///
/// Returns false, and does nothing, when `layer` is null or no panel can be built here. Thread: GUI
/// thread, with a QApplication. Lifetime: the panel belongs to its Qt parent; without one, delete
/// it through `*layer`.
TARGETSELECTAREA_EXPORT bool TargetSelectArea_Init(IAbstractLayerInterface** layer,
                                                   QWidget* parent);

/// Type of TargetSelectArea_Init, for a host that resolves it at run time.
using TargetSelectAreaInit = bool (*)(IAbstractLayerInterface**, QWidget*);

/// The name under which the linker knows TargetSelectArea_Init, for QLibrary::resolve.
#if defined(_MSC_VER) && defined(_WIN64)
#define TARGETSELECTAREA_INIT_SYMBOL \
    "?TargetSelectArea_Init@@YA_NPEAPEAVIAbstractLayerInterface@@PEAVQWidget@@@Z"
#elif defined(_MSC_VER)
#define TARGETSELECTAREA_INIT_SYMBOL \
    "?TargetSelectArea_Init@@YA_NPAPAVIAbstractLayerInterface@@PAVQWidget@@@Z"
#else
#define TARGETSELECTAREA_INIT_SYMBOL "_Z21TargetSelectArea_InitPP23IAbstractLayerInterfaceP7QWidget"
#endif
