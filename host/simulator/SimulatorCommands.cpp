#include "host/simulator/SimulatorCommands.h"

#include "host/simulator/Simulator.h"

#include <QHostAddress>
#include <QStringList>

#include <algorithm>
#include <iterator>

namespace {

constexpr char kHelp[] =
    "kill N             close the sockets of a processor; N is its number or address\n"
    "mute N             keep them open and say nothing, as a device that hangs\n"
    "start N            bring it back\n"
    "light N on|off     switch the front panel at the device\n"
    "online N on|off    report to be ready, or not\n"
    "outputs N COUNT    1 to 255\n"
    "redundancy N KIND  none, hasBackup or backup\n"
    "name N TEXT        the rest of the line\n"
    "list               all processors\n"
    "ignored            how many datagrams and lines were no messages\n"
    "help               this list\n";

/// Returns whether `argument` is valid for the command, and applies it.
using Apply = bool (*)(Simulator&, SimulatedProcessor&, const QString& argument);

std::optional<bool> switchOf(const QString& text)
{
    if (text == QLatin1String("on"))
        return true;
    return text == QLatin1String("off") ? std::optional(false) : std::nullopt;
}

bool kill(Simulator& /*simulator*/, SimulatedProcessor& processor, const QString& argument)
{
    if (!argument.isEmpty())
        return false;
    processor.kill();
    return true;
}

bool mute(Simulator& /*simulator*/, SimulatedProcessor& processor, const QString& argument)
{
    if (!argument.isEmpty())
        return false;
    processor.setMute(true);
    return processor.life() == SimulatedProcessor::Life::Mute;
}

bool start(Simulator& simulator, SimulatedProcessor& processor, const QString& argument)
{
    if (!argument.isEmpty())
        return false;
    processor.setMute(false);
    return processor.life() == SimulatedProcessor::Life::Alive || processor.start(simulator.port());
}

bool light(Simulator& /*simulator*/, SimulatedProcessor& processor, const QString& argument)
{
    DeviceState state = processor.state();
    state.lit = switchOf(argument).value_or(state.lit);
    processor.setState(state);
    return switchOf(argument).has_value();
}

bool online(Simulator& /*simulator*/, SimulatedProcessor& processor, const QString& argument)
{
    DeviceState state = processor.state();
    state.online = switchOf(argument).value_or(state.online);
    processor.setState(state);
    return switchOf(argument).has_value();
}

bool outputs(Simulator& /*simulator*/, SimulatedProcessor& processor, const QString& argument)
{
    DeviceState state = processor.state();
    const int count = argument.toInt();
    if (count < 1 || count > kMaxDeviceOutputs)
        return false;
    state.outputs = count;
    processor.setState(state);
    return true;
}

bool redundancy(Simulator& /*simulator*/, SimulatedProcessor& processor, const QString& argument)
{
    DeviceState state = processor.state();
    const auto kind = redundancyOfName(argument);
    state.redundancy = kind.value_or(state.redundancy);
    processor.setState(state);
    return kind.has_value();
}

bool name(Simulator& /*simulator*/, SimulatedProcessor& processor, const QString& argument)
{
    DeviceState state = processor.state();
    if (!isDeviceName(argument))
        return false;
    state.name = argument;
    processor.setState(state);
    return true;
}

constexpr struct
{
    const char* word;
    Apply apply;
} kCommands[] = {
    {"kill", kill},     {"mute", mute},       {"start", start}, {"light", light},
    {"online", online}, {"outputs", outputs}, {"name", name},   {"redundancy", redundancy}};

/// Returns the processor of a number, counted from 1, or of an address.
SimulatedProcessor* processorOf(Simulator& simulator, const QString& text)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (isNumber && number >= 1 && number <= simulator.count())
        return &simulator.processor(number - 1);
    for (int at = 0; !isNumber && at < simulator.count(); ++at) {
        if (QHostAddress(simulator.processor(at).address()).toString() == text)
            return &simulator.processor(at);
    }
    return nullptr;
}

QString changed(Simulator& simulator, const QString& line, Apply apply)
{
    const QString target = line.section(QLatin1Char(' '), 1, 1);
    SimulatedProcessor* processor = processorOf(simulator, target);
    if (!processor)
        return QStringLiteral("error there is no processor \"%1\"").arg(target);
    if (!apply(simulator, *processor, line.section(QLatin1Char(' '), 2).trimmed()))
        return QStringLiteral("error \"%1\" cannot be done").arg(line);
    return QStringLiteral("ok ") + Simulator::describe(*processor);
}

} // namespace

QString carryOutCommand(Simulator& simulator, const QString& line)
{
    const QString word = line.section(QLatin1Char(' '), 0, 0);
    if (word == QLatin1String("help"))
        return QLatin1String(kHelp) + QStringLiteral("ok");
    if (word == QLatin1String("ignored"))
        return QStringLiteral("ok %1").arg(simulator.ignored());
    if (word == QLatin1String("list")) {
        QStringList lines;
        for (int at = 0; at < simulator.count(); ++at)
            lines.append(Simulator::describe(simulator.processor(at)));
        return lines.join(QLatin1Char('\n')) + QStringLiteral("\nok %1").arg(simulator.count());
    }
    const auto* const found =
        std::find_if(std::begin(kCommands), std::end(kCommands),
                     [&](const auto& command) { return word == QLatin1String(command.word); });
    if (found == std::end(kCommands))
        return QStringLiteral("error \"%1\" is no command; \"help\" lists them").arg(word);
    return changed(simulator, line, found->apply);
}
