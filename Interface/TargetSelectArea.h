#pragma once

#include <QtGlobal>

class IAbstractLayerInterface;
class QWidget;

#if defined(TARGETSELECTAREA_BUILD)
/// Exports a symbol from the panel's library. A host imports it.
#define TARGETSELECTAREA_EXPORT Q_DECL_EXPORT
#else
#define TARGETSELECTAREA_EXPORT Q_DECL_IMPORT
#endif

/// The only exported function. Stores the panel in `*layer` and makes its widget a child of
/// `parent`, which may be null. The first call creates the panel, and so does a call after the
/// panel was destroyed; other calls return the same panel and reparent its widget.
///
/// Returns false without an effect if `layer` is null or the panel cannot be created. GUI thread,
/// with a QApplication. The panel belongs to its Qt parent; without a parent, delete it through
/// `*layer`.
TARGETSELECTAREA_EXPORT bool TargetSelectArea_Init(IAbstractLayerInterface** layer,
                                                   QWidget* parent);

/// The type of TargetSelectArea_Init, for hosts that resolve it at run time.
using TargetSelectAreaInit = bool (*)(IAbstractLayerInterface**, QWidget*);

/// The mangled name of TargetSelectArea_Init, for QLibrary::resolve().
#if defined(_MSC_VER) && defined(_WIN64)
#define TARGETSELECTAREA_INIT_SYMBOL \
    "?TargetSelectArea_Init@@YA_NPEAPEAVIAbstractLayerInterface@@PEAVQWidget@@@Z"
#elif defined(_MSC_VER)
#define TARGETSELECTAREA_INIT_SYMBOL \
    "?TargetSelectArea_Init@@YA_NPAPAVIAbstractLayerInterface@@PAVQWidget@@@Z"
#else
#define TARGETSELECTAREA_INIT_SYMBOL "_Z21TargetSelectArea_InitPP23IAbstractLayerInterfaceP7QWidget"
#endif
