#include "sdk/validate/Catalogue.h"
#include "sdk/validate/Panel.h"

#include <QProcess>
#include <QStandardPaths>

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
    const QString nm = QStandardPaths::findExecutable(QStringLiteral("nm"));
    if (nm.isEmpty())
        test.skip(QStringLiteral("there is no program \"nm\", which lists symbols"));
    QProcess process;
    process.start(nm, {QStringLiteral("--dynamic"), QStringLiteral("--defined-only"),
                       QStringLiteral("--format=posix"), test.library()});
    test.require(process.waitForFinished(), Code::NotLoaded,
                 QStringLiteral("nm cannot read the library"));
    QStringList others;
    const QStringList lines =
        QString::fromLocal8Bit(process.readAllStandardOutput()).split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        const QString name = line.section(QLatin1Char(' '), 0, 0).section(QLatin1Char('@'), 0, 0);
        const QString type = line.section(QLatin1Char(' '), 1, 1);
        if (QStringLiteral("TWVBDR").contains(type) && !type.isEmpty()
            && name != QLatin1String(TARGETSELECTAREA_INIT_SYMBOL)
            && !name.contains(QLatin1String("_san")))
            others.append(name);
    }
    test.check(others.isEmpty(), Code::EntryPointFails,
               QStringLiteral("the library exports %1 symbols besides its entry point, such as %2")
                   .arg(others.size())
                   .arg(others.value(0)));
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
