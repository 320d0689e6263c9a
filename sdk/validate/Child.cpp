#include "sdk/validate/Child.h"

#include "sdk/validate/Catalogue.h"
#include "sdk/validate/HostLog.h"
#include "sdk/validate/Test.h"

#include <QApplication>
#include <QTimer>

#include <exception>

namespace {

/// These depend on how busy the machine is, and are never wrong of a host.
bool dependsOnTime(const QString& code)
{
    return code == QLatin1String("TSA-W23") || code == QLatin1String("TSA-W24");
}

/// What the contract checks and Qt said that the test does not expect.
void findWhatWasLogged(Test& test, bool isHostTest)
{
    const QStringList codes = HostLog::codes();
    for (const QString& code : codes) {
        if (test.allowed().contains(code))
            continue;
        const QString line = HostLog::withCode(code).constFirst();
        if (isHostTest) {
            if (code != QLatin1String("TSA-W24"))
                Journal::find(code, line.mid(code.size() + 1));
        } else if (!dependsOnTime(code)) {
            test.find(Code::CheckIsWrong, line);
        }
    }
    QStringList warnings = HostLog::warnings();
    warnings.removeDuplicates();
    for (const QString& warning : qAsConst(warnings))
        test.find(Code::QtWarning, warning);
}

void runTest(const CatalogueEntry& entry, Test& test)
{
    const bool isHostTest = (entry.needs & CatalogueEntry::HostPlugin) != 0;
    const Code thrown = isHostTest ? Code::HandlerThrows : Code::Exception;
    try {
        entry.function(test);
    } catch (const Stop&) {
        // What there is to say has been said.
    } catch (const std::exception& exception) {
        test.find(thrown, QString::fromLocal8Bit(exception.what()));
    } catch (...) {
        test.find(thrown, QStringLiteral("of a type that is no std::exception"));
    }
    findWhatWasLogged(test, isHostTest);
    Journal::done();
}

} // namespace

int runChild(const Options& options, int& argc, char** argv)
{
    const CatalogueEntry* chosen = nullptr;
    for (const CatalogueEntry& entry : catalogue()) {
        if (options.child == QLatin1String(entry.name))
            chosen = &entry;
    }
    if (!chosen) {
        Journal::skip(QStringLiteral("there is no such test"));
        Journal::done();
        return 2;
    }
    HostLog::install();
    Test test(options);
    if ((chosen->needs & CatalogueEntry::NoApplication) != 0) {
        runTest(*chosen, test);
        return 0;
    }
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    // Inside an event loop, as a host calls the panel. A real timer: a call that is queued, as by
    // one of 0 ms, would keep the list of posted events growing until the test has ended.
    QTimer::singleShot(1, &application, [&] {
        runTest(*chosen, test);
        QApplication::quit();
    });
    return QApplication::exec();
}
