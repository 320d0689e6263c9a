#include "base/TargetSelectHandler.h"

#include "base/CheckedHandler.h"
#include "base/ContractCheck.h"
#include "base/GuiThread.h"
#include "base/HostQuestion.h"
#include "base/PanelStep.h"

#include <atomic>
#include <mutex>

namespace {

using Control = std::shared_ptr<IAbstractControlInterface>;

/// A handler while it is asked.
struct Question
{
    explicit Question(std::shared_ptr<ITargetSelectInterfaceHandler> asked)
        : handler(std::move(asked))
    {
    }

    CHostQuestion question;
    CPanelStep step;
    std::shared_ptr<ITargetSelectInterfaceHandler> handler; // may end here, inside the question
};

/// The same while the contract checks are on.
struct CheckedQuestion : Question
{
    explicit CheckedQuestion(std::shared_ptr<ITargetSelectInterfaceHandler> asked)
        : Question(std::move(asked))
        , checked(*handler)
    {
    }

    CCheckedHandler checked;
};

/// The handler is not owned here: one that the host replaces has to go.
struct Place
{
    std::mutex mutex;
    const Control* pointer = nullptr;
    std::weak_ptr<IAbstractControlInterface> seen;
    std::weak_ptr<IAbstractControlInterface> connected; // the observer is registered with it
    bool isConnected = false;
    quint64 panels = 0; // built so far
};

// Never destroyed: other threads may ask while the process ends.
Place& place()
{
    static auto* const instance = new Place;
    return *instance;
}

std::atomic<quint64> currentPanel{0};

/// Events of a host that has replaced its handler reach the panel through the old one's observer.
void checkConnection(const Control& handler)
{
    {
        const std::lock_guard guard(place().mutex);
        const auto is = [&handler](const std::weak_ptr<IAbstractControlInterface>& other) {
            return !other.owner_before(handler) && !handler.owner_before(other);
        };
        // Another thread may have connected the next one since this one was fetched.
        if (is(place().connected) || !is(place().seen) || !place().isConnected)
            return;
    }
    ContractCheck::report(ContractCheck::Finding::HandlerReplaced,
                          QStringLiteral("the handler is not the one that Initialize() or "
                                         "Reconnect() has registered the observer with"));
}

} // namespace

std::shared_ptr<ITargetSelectInterfaceHandler> GetTargetSelectHandler()
{
    auto handler =
        std::dynamic_pointer_cast<ITargetSelectInterfaceHandler>(HandlerPlace::current());
    if (!handler)
        return {};
    if (ContractCheck::isOn()) {
        checkConnection(handler);
        const auto question = std::make_shared<CheckedQuestion>(std::move(handler));
        return {question, &question->checked};
    }
    auto* const operations = handler.get();
    return {std::make_shared<Question>(std::move(handler)), operations};
}

void HandlerPlace::set(const Control* pointer)
{
    const std::lock_guard guard(place().mutex);
    place().pointer = pointer;
    place().seen.reset();
    place().connected.reset();
    place().isConnected = false;
    currentPanel = pointer ? ++place().panels : 0;
}

void HandlerPlace::noteConnected(const Control& handler)
{
    const std::lock_guard guard(place().mutex);
    place().seen = handler;
    place().connected = handler;
    place().isConnected = true;
}

bool HandlerPlace::isConnected()
{
    const std::lock_guard guard(place().mutex);
    return place().isConnected;
}

quint64 HandlerPlace::panel()
{
    return currentPanel;
}

void HandlerPlace::refresh()
{
    Q_ASSERT(isGuiThread());
    const std::lock_guard guard(place().mutex);
    if (place().pointer)
        place().seen = *place().pointer;
}

Control HandlerPlace::current()
{
    const std::lock_guard guard(place().mutex);
    if (!place().pointer)
        return {};
    if (!isGuiThread())
        return place().seen.lock();
    place().seen = *place().pointer;
    return *place().pointer;
}

bool HandlerPlace::isCurrent(const std::weak_ptr<IAbstractControlInterface>& source)
{
    const Control now = current();
    return !source.owner_before(now) && !now.owner_before(source);
}
