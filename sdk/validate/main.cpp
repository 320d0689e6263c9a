#include "sdk/validate/Child.h"
#include "sdk/validate/ChildSystem.h"
#include "sdk/validate/Options.h"
#include "sdk/validate/Reports.h"
#include "sdk/validate/Runner.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <optional>

namespace {

constexpr int kFailed = 1;

void print(const QString& text)
{
    std::fputs(text.toUtf8().constData(), stdout);
    std::fflush(stdout);
}

void complain(const QString& path, const QString& reason)
{
    std::fprintf(stderr, "targetselect-validate: cannot write %s: %s\n", qPrintable(path),
                 qPrintable(reason));
}

/// Returns whether a report may be written: to nothing, an empty file, an earlier report, which
/// names this program, or what keeps nothing, such as a terminal.
bool mayWrite(const QString& path)
{
    const QFileInfo existing(path);
    if (path.isEmpty() || !existing.isFile() || existing.size() == 0)
        return true;
    QFile former(path);
    if (former.open(QIODevice::ReadOnly) && former.readAll().contains("\"targetselect-validate"))
        return true;
    complain(path, QStringLiteral("the file that is there is not a report of this program"));
    return false;
}

bool save(const QString& path, const QByteArray& bytes)
{
    if (path.isEmpty())
        return true;
    QFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush())
        return true;
    complain(path, file.errorString());
    return false;
}

int list()
{
    for (const CatalogueEntry& test : catalogue()) {
        print(QStringLiteral("%1 %2: %3\n")
                  .arg(test.level, 2)
                  .arg(QLatin1String(test.name), QLatin1String(test.title)));
    }
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    const QStringList arguments = ChildSystem::arguments(argc, argv);
    // A test makes the application that it needs, or none.
    std::optional<QCoreApplication> application;
    if (!arguments.contains(QStringLiteral("--child")))
        application.emplace(argc, argv);
    int exitCode = 0;
    const std::optional<Options> options = readOptions(arguments, exitCode);
    if (!options)
        return exitCode;
    if (options->list)
        return list();
    if (!options->child.isEmpty()) {
        ChildSystem::crashWithoutDialog();
        return runChild(*options, argc, argv);
    }

    if (!mayWrite(options->junitFile) || !mayWrite(options->jsonFile))
        return kWrongUse;
    const Report report = run(*options, [](const Result& result) { print(Reports::text(result)); });
    print(Reports::summary(report));
    const bool isSaved = save(options->junitFile, Reports::junit(report))
                         && save(options->jsonFile, Reports::json(report));
    if (!isSaved)
        return kWrongUse;
    return report.isGood() ? 0 : kFailed;
}
