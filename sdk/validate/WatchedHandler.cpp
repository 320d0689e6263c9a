#include "sdk/validate/WatchedHandler.h"

#include "sdk/validate/Test.h"
#include "sdk/validate/Threads.h"

#include <QString>

#include <optional>
#include <utility>

WatchedHandler::WatchedHandler(std::shared_ptr<ITargetSelectInterfaceHandler> handler, bool isNoted)
    : CHandlerRelay(std::move(handler))
    , m_isNoted(isNoted)
{
}

void WatchedHandler::SetObserver(CObserver* observer)
{
    m_panelObserver = observer;
    CHandlerRelay::SetObserver(observer);
}

void WatchedHandler::setOnEvent(std::function<void(const Events::Event&)> onEvent)
{
    const std::lock_guard guard(m_mutex);
    m_onEvent = std::move(onEvent);
}

CHandlerRelay::Answer WatchedHandler::call(const Call& call, const Ask& ask)
{
    std::optional<::Call> noted;
    if (m_isNoted) {
        noted.emplace(QStringLiteral("the handler's %1%2")
                          .arg(QLatin1String(call.operation.name),
                               isGuiThread() ? QString() : QStringLiteral(" off the GUI thread")));
    }
    if (m_before)
        m_before(call.operation.name);
    return ask();
}

void WatchedHandler::event(const Events::Event& event, const Deliver& deliver)
{
    std::function<void(const Events::Event&)> onEvent;
    {
        const std::lock_guard guard(m_mutex);
        onEvent = m_onEvent;
    }
    if (onEvent)
        onEvent(event);
    deliver();
}
