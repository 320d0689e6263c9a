#include "host/workbench/faults/FaultyHandler.h"

#include "Interface/HostRequests.h"
#include "host/workbench/events/EventNumber.h"
#include "host/workbench/faults/FaultThread.h"
#include "host/workbench/faults/WrongAnswers.h"
#include "host/workbench/handler/CallTrace.h"
#include "host/workbench/trace/TraceModel.h"

#include <QMetaObject>
#include <QMetaType>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <utility>

namespace {

bool isOn(const QObject& object)
{
    return QThread::currentThread() == object.thread();
}

/// Returns the time of the first rule with this effect.
std::optional<int> timeOf(const QList<FaultRule>& rules, FaultEffect effect)
{
    for (const FaultRule& rule : rules) {
        if (rule.effect == effect)
            return rule.milliseconds;
    }
    return std::nullopt;
}

bool has(const QList<FaultRule>& rules, FaultEffect effect)
{
    return timeOf(rules, effect).has_value();
}

} // namespace

FaultyHandler::FaultyHandler(std::shared_ptr<ITargetSelectInterfaceHandler> handler, Host host)
    : CHandlerRelay(std::move(handler))
    , m_host(std::move(host))
{
}

CHandlerRelay::Answer FaultyHandler::call(const Call& call, const Ask& ask)
{
    const CallTimer timer(m_host.trace);
    const quint64 changes = m_host.plan.changes();
    const QList<FaultRule> rules = m_host.plan.strike(
        call.operation, [this](FaultEffect effect) { return isPossible(effect); });
    if (rules.isEmpty())
        return ask();
    // The panel may let go of the handler inside the question.
    const auto self = shared_from_this();
    for (const FaultRule& rule : rules)
        log(QLatin1String(call.operation.name), rule);
    if (const auto time = timeOf(rules, FaultEffect::Slow))
        m_host.plan.keepThread(std::chrono::milliseconds(*time), changes);
    for (const FaultRule& rule : rules)
        disturb(rule.effect);
    const bool isRefused = has(rules, FaultEffect::Refusal);
    if (isRefused || has(rules, FaultEffect::DefaultAnswer))
        CallTrace(m_host.trace).calledWith(call.operation.name, call.arguments);
    if (isRefused) {
        refuse(call.operation);
        return refusalOf(call.operation);
    }
    if (has(rules, FaultEffect::DefaultAnswer))
        return {};
    Answer answer = ask();
    if (has(rules, FaultEffect::WrongIdentity))
        answer.result = withWrongIdentity(answer.result);
    return answer;
}

void FaultyHandler::event(const Events::Event& event, const Deliver& deliver)
{
    const QList<FaultRule> rules = m_host.plan.strike(event.number);
    for (const FaultRule& rule : rules) {
        log(QStringLiteral("event %1").arg(event.number), rule);
        disturb(rule.effect);
    }
    if (has(rules, FaultEffect::Lost))
        return;
    Deliver act = deliver;
    if (has(rules, FaultEffect::WrongType)) {
        act = [handler = weak_from_this(), number = event.number] {
            if (const auto self = handler.lock())
                self->tellPanel({number, {}, "unknown"});
        };
    }
    if (has(rules, FaultEffect::Twice)) {
        act = [once = act] {
            once();
            once();
        };
    }
    const int time = timeOf(rules, FaultEffect::Late).value_or(0);
    const bool toGui = has(rules, FaultEffect::GuiThread);
    const bool toOther = has(rules, FaultEffect::OtherThread);
    if (time == 0 && !toGui && !toOther) {
        act();
    } else if (toGui || (!toOther && isOn(*m_host.gui))) {
        if (time == 0 && isOn(*m_host.gui))
            act();
        else
            QMetaObject::invokeMethod(
                m_host.gui, [gui = m_host.gui, time, act] { QTimer::singleShot(time, gui, act); },
                Qt::QueuedConnection);
    } else {
        m_host.thread.callLater(time, act);
    }
}

/// While the panel paints, nobody can destroy it: Qt goes on with it.
bool FaultyHandler::isPossible(FaultEffect effect) const
{
    return effect != FaultEffect::PanelDestroyed || !isOn(*m_host.gui) || !m_host.isPainting();
}

void FaultyHandler::log(const QString& what, const FaultRule& rule) const
{
    m_host.trace.add(TraceEntry::Kind::Log,
                     QStringLiteral("Fault at %1: %2").arg(what, faultText(rule)));
}

/// Calls `act` at once if this is the GUI thread, which is inside the question or the event then.
void FaultyHandler::onGuiThread(const std::function<void()>& act) const
{
    if (isOn(*m_host.gui))
        act();
    else
        QMetaObject::invokeMethod(m_host.gui, act, Qt::QueuedConnection);
}

void FaultyHandler::disturb(FaultEffect effect) const
{
    if (effect == FaultEffect::HandlerReplaced)
        onGuiThread(m_host.replaceHandler);
    else if (effect == FaultEffect::PanelDestroyed)
        onGuiThread(m_host.destroyPanel);
}

/// Announces the tree if the panel shows the result of the request at once, and no answer can tell
/// it that the host has refused.
void FaultyHandler::refuse(const Operations::Operation& operation) const
{
    const HostRequests::Request* request = HostRequests::find(operation.name);
    const bool isShownAtOnce = request && request->events[0] == HostRequests::kNone;
    if (isShownAtOnce && operation.answerType() == QMetaType::Void)
        m_host.announceTree();
}
