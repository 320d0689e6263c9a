#include "host/simulator/CommandInput.h"
#include "host/simulator/EndRequest.h"
#include "host/simulator/Simulator.h"
#include "host/simulator/SimulatorCommands.h"
#include "host/simulator/SimulatorOptions.h"

#include <QCoreApplication>
#include <QHostAddress>

#include <csignal>
#include <iostream>

#include <unistd.h>

namespace {

bool hasFailed = false; ///< A line could not be printed.

/// Prints lines at once, for programs that wait for them.
void say(const QString& lines)
{
    std::cout << lines.toStdString() << std::endl;
    if (std::cout || hasFailed)
        return;
    hasFailed = true;
    std::cerr << "processor-sim: the output cannot be written\n";
    QCoreApplication::exit(1);
}

int fail(const QString& problem)
{
    std::cerr << "processor-sim: " << problem.toStdString() << '\n';
    return 1;
}

} // namespace

int main(int argc, char** argv)
{
#ifdef SIGPIPE
    // A reader that goes is a failure to write, which is told.
    std::signal(SIGPIPE, SIG_IGN);
#endif
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("processor-sim"));
    QString problem;
    const auto options = parseSimulatorOptions(QCoreApplication::arguments(), problem);
    if (!options)
        return fail(problem);
    const auto endRequest = onEndRequest(&QCoreApplication::quit);

    Simulator simulator(*options);
    QObject::connect(&simulator, &Simulator::said, &application, say);
    if (!simulator.start(problem))
        return fail(problem);
    std::unique_ptr<CommandInput> input;
    if (options->readsInput) {
        input = std::make_unique<CommandInput>(STDIN_FILENO);
        QObject::connect(input.get(), &CommandInput::ended, &application, &QCoreApplication::quit);
        QObject::connect(input.get(), &CommandInput::lineRead, &application,
                         [&](const QString& line) { say(carryOutCommand(simulator, line)); });
    }
    say(QStringLiteral("ready %1 processors from %2 on port %3")
            .arg(simulator.count())
            .arg(QHostAddress(options->base).toString())
            .arg(simulator.port()));
    return hasFailed ? 1 : QCoreApplication::exec();
}
