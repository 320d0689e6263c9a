#pragma once

#include <QString>
#include <QVariant>
#include <QWidget>
#include <QtGlobal>

class IAbstractLayerInterface;

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

/// The version of the interface that these headers describe. Another number means that an operation
/// was added, removed or moved, so that host and library would call each other's functions wrongly.
constexpr int TARGETSELECTAREA_INTERFACE_VERSION = 1;

/// Compares these headers with the library whose panel TargetSelectArea_Init has made a child of
/// `parent`. Returns an empty text when they fit, and what differs otherwise. Call it right after
/// TargetSelectArea_Init, before the first operation of the layer: it reads properties of the
/// widget and calls nothing that could differ. GUI thread.
inline QString TargetSelectArea_Difference(const QWidget& parent)
{
    // A dock of the host may have the same name.
    const QWidget* panel = nullptr;
    const auto found = parent.findChildren<QWidget*>(QStringLiteral("TargetSelectArea"));
    for (const QWidget* widget : found) {
        if (!panel || widget->property("interfaceVersion").isValid())
            panel = widget;
    }
    if (!panel)
        return QStringLiteral("there is no panel in this parent");
    const QVariant version = panel->property("interfaceVersion");
    if (version.isValid() && version.toInt() == TARGETSELECTAREA_INTERFACE_VERSION)
        return {};
    return QStringLiteral(
               "the host is built for version %1 of the interface, the library %2 has %3")
        .arg(TARGETSELECTAREA_INTERFACE_VERSION)
        .arg(panel->property("libraryVersion").toString(),
             version.isValid() ? version.toString() : QStringLiteral("none"));
}

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
