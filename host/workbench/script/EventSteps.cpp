// Steps that raise events, true ones and others, and wait until they are delivered.

#include "host/workbench/events/EventNumber.h"
#include "host/workbench/script/ScriptRun.h"
#include "host/workbench/script/Steps.h"
#include "host/workbench/session/Session.h"
#include "host/workbench/store/ProjectDiff.h"

#include <optional>

namespace {

using EventNumber::ArgumentType;

/// The greatest number that a script may raise.
constexpr quint32 kMostNumber = 255;

const QStringList& typeNames()
{
    static const QStringList names{QStringLiteral("none"),       QStringLiteral("number"),
                                   QStringLiteral("identity"),   QStringLiteral("identities"),
                                   QStringLiteral("devicesets"), QStringLiteral("record")};
    return names;
}

/// Returns the number of an event by its number or name.
std::optional<quint32> eventOf(const QString& text)
{
    bool isNumber = false;
    const quint32 written = text.toUInt(&isNumber);
    if (isNumber)
        return written <= kMostNumber ? std::optional(written) : std::nullopt;
    for (quint32 number = 0; number <= HostEvents::kLastNumber; ++number) {
        if (EventNumber::isKnown(number) && EventNumber::name(number) == text)
            return number;
    }
    return std::nullopt;
}

ArgumentType typeOf(const ScriptStep& step, quint32 number)
{
    const int named = typeNames().indexOf(step.value("TYPE"));
    return named < 0 ? EventNumber::argumentType(number) : static_cast<ArgumentType>(named);
}

std::optional<ScriptProblem> checkRaise(const ScriptStep& step)
{
    const auto number = eventOf(step.value("EVENT"));
    if (!number)
        return step.problemAt(step.token("EVENT"),
                              QStringLiteral("there is no event \"%1\"").arg(step.value("EVENT")));
    if (step.has("TYPE") && !typeNames().contains(step.value("TYPE")))
        return step.problemAt(
            step.token("TYPE"),
            QStringLiteral("%1 is expected").arg(typeNames().join(QStringLiteral(" or "))));
    if (step.has("on") != step.has("gui|notify"))
        return ScriptProblem{step.line, step.column,
                             QStringLiteral("\"on gui\" or \"on notify\" "
                                            "is expected")};
    const ArgumentType type = typeOf(step, *number);
    const int count = step.all("ARGUMENT").size();
    const bool takesNone = type == ArgumentType::None || type == ArgumentType::DeviceSets;
    const bool isCountRight = type == ArgumentType::Ids || count == (takesNone ? 0 : 1);
    if (!isCountRight)
        return step.problemAt(step.token("EVENT"),
                              takesNone ? QStringLiteral("the event takes no argument")
                                        : QStringLiteral("the event takes one argument"));
    bool isNumber = type != ArgumentType::Number;
    if (!isNumber)
        step.value("ARGUMENT").toInt(&isNumber);
    if (!isNumber)
        return step.problemAt(step.token("ARGUMENT"), QStringLiteral("a whole number is expected"));
    return std::nullopt;
}

HostEvent::Argument argumentOf(ArgumentType type, const QList<QUuid>& ids, const ScriptStep& step,
                               const Project& project)
{
    switch (type) {
    case ArgumentType::None:
        break;
    case ArgumentType::Number:
        return step.number("ARGUMENT");
    case ArgumentType::Id:
        return ids.value(0);
    case ArgumentType::Ids:
        return ids;
    case ArgumentType::DeviceSets:
        return deviceSetsEvent(project).argument();
    case ArgumentType::ChangedProcessor: {
        const ProcessorNode* node = project.processor(ids.value(0));
        return HostEvent::ChangedProcessor(
            ids.value(0), SPrjProcessor{ids.value(0), node ? node->name : QString()});
    }
    }
    return {};
}

Progress raiseEvent(ScriptRun& run, const ScriptStep& step)
{
    Notifier& notifier = run.session().notifier();
    const QString thread = step.value("gui|notify");
    // The thread is known to the notifier for all that it has not delivered.
    if (run.phase == 0 && thread == QLatin1String("gui") && !notifier.isIdle())
        return Progress::waiting(QStringLiteral("earlier events are not delivered"));
    const quint32 number = eventOf(step.value("EVENT")).value_or(0);
    const ArgumentType type = typeOf(step, number);
    QList<QUuid> ids;
    for (const QString& name : step.values("ARGUMENT")) {
        ids.append(run.identity(name));
        if (run.phase == 0 && ids.constLast().isNull() && type != ArgumentType::Number
            && name != QLatin1String("null"))
            return Progress::failed(QStringLiteral("there is no record \"%1\"").arg(name));
    }
    const HostEvent event(number, argumentOf(type, ids, step, run.session().store().snapshot()));
    return run.once([&notifier, event, thread] {
        const Notifier::Delivery usual = notifier.delivery();
        if (!thread.isEmpty())
            notifier.setDelivery(thread == QLatin1String("gui")
                                     ? Notifier::Delivery::GuiThread
                                     : Notifier::Delivery::NotifyingThread);
        notifier.raise(event);
        notifier.setDelivery(usual);
    });
}

} // namespace

void addEventSteps(StepRegistry& registry)
{
    registry.add({QStringLiteral("raise EVENT [ARGUMENT...] [as] [TYPE] [on] [gui|notify]"),
                  raiseEvent, checkRaise});
    registry.add({QStringLiteral("expect idle"),
                  [](ScriptRun& run, const ScriptStep&) {
                      return Progress::when(run.session().notifier().isIdle(),
                                            QStringLiteral("events are not delivered"));
                  },
                  {}});
    registry.add({QStringLiteral("expect shown"),
                  [](ScriptRun& run, const ScriptStep&) {
                      return Progress::when(
                          run.session().notifier().isIdle() && run.session().panelShowsProject(),
                          QStringLiteral("the panel does not show the host's project"));
                  },
                  {}});
    registry.add({QStringLiteral("expect panel"),
                  [](ScriptRun& run, const ScriptStep&) {
                      return Progress::when(run.session().layer() != nullptr,
                                            QStringLiteral("there is no panel"));
                  },
                  {}});
    registry.add({QStringLiteral("expect no panel"),
                  [](ScriptRun& run, const ScriptStep&) {
                      return Progress::when(run.session().layer() == nullptr,
                                            QStringLiteral("there is a panel"));
                  },
                  {}});
}
