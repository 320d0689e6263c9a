#include "base/TargetSelectHandler.h"

#include "base/GuiThread.h"
#include "base/HostQuestion.h"
#include "base/PanelStep.h"

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

/// The handler is not owned here: one that the host replaces has to go.
struct Place
{
    std::mutex mutex;
    const Control* pointer = nullptr;
    std::weak_ptr<IAbstractControlInterface> seen;
};

// Never destroyed: other threads may ask while the process ends.
Place& place()
{
    static auto* const instance = new Place;
    return *instance;
}

} // namespace

std::shared_ptr<ITargetSelectInterfaceHandler> GetTargetSelectHandler()
{
    auto handler =
        std::dynamic_pointer_cast<ITargetSelectInterfaceHandler>(HandlerPlace::current());
    if (!handler)
        return {};
    auto* const operations = handler.get();
    return {std::make_shared<Question>(std::move(handler)), operations};
}

void HandlerPlace::set(const Control* pointer)
{
    const std::lock_guard guard(place().mutex);
    place().pointer = pointer;
    place().seen.reset();
}

bool HandlerPlace::isSet()
{
    const std::lock_guard guard(place().mutex);
    return place().pointer;
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
