#include "sdk/validate/Catalogue.h"
#include "sdk/validate/ExportedSymbols.h"
#include "sdk/validate/Panel.h"

namespace {

void shouldExportItsEntryPoint(Test& test)
{
    Panel::entryPoint(test);
}

void shouldFitTheHeaders(Test& test)
{
    const Panel panel(test);
    test.check(!panel.widget()->property("libraryVersion").toString().isEmpty(),
               Code::VersionDiffers, QStringLiteral("the widget has no property libraryVersion"));
}

/// Whatever else a library exports can clash with what the host has.
void shouldExportNothingElse(Test& test)
{
    QString problem;
    std::optional<QStringList> others = exportedSymbols(test.library(), problem);
    if (!others)
        test.skip(problem);
    others->removeAll(QStringLiteral(TARGETSELECTAREA_INIT_SYMBOL));
    test.check(others->isEmpty(), Code::EntryPointFails,
               QStringLiteral("the library exports %1 symbols besides its entry point, such as %2")
                   .arg(others->size())
                   .arg(others->value(0)));
}

void shouldRefuseToStoreNowhere(Test& test)
{
    const TargetSelectAreaInit init = Panel::entryPoint(test);
    QWidget window;
    const bool isBuilt = called(QStringLiteral("TargetSelectArea_Init with a null layer"),
                                [&] { return init(nullptr, &window); });
    test.check(!isBuilt, Code::EntryPointFails,
               QStringLiteral("TargetSelectArea_Init answers true to a null layer"));
    test.check(window.findChildren<QWidget*>().isEmpty(), Code::EntryPointFails,
               QStringLiteral("TargetSelectArea_Init builds a panel for a null layer"));
}

} // namespace

Catalogue symbolTests()
{
    return {
        {"symbol.entry", 1, "the library loads and exports its entry point",
         shouldExportItsEntryPoint},
        {"symbol.version", 1, "headers and library fit", shouldFitTheHeaders},
        {"symbol.others", 1, "nothing else is exported", shouldExportNothingElse},
        {"symbol.null", 1, "a null layer is refused", shouldRefuseToStoreNowhere},
    };
}
