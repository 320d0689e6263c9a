#include "base/HostQuestion.h"

#include "base/GuiThread.h"

#include <atomic>

namespace {

std::atomic<std::chrono::milliseconds> usualDuration{std::chrono::milliseconds(20)};

} // namespace

std::chrono::milliseconds CHostQuestion::usual()
{
    return usualDuration;
}

void CHostQuestion::setUsual(std::chrono::milliseconds duration)
{
    usualDuration = duration;
}

std::optional<CHostQuestion::Clock::time_point> CHostQuestion::Watch::releaseTime() const
{
    return nested > 0 ? std::optional(since + usual()) : std::nullopt;
}

CHostQuestion::Watch& CHostQuestion::watch()
{
    static auto* const instance = new Watch;
    return *instance;
}

CHostQuestion::CHostQuestion()
    : m_counts(isGuiThread())
{
    if (!m_counts)
        return;
    {
        const std::lock_guard guard(watch().mutex);
        if (watch().nested++ > 0)
            return;
        watch().since = Clock::now();
    }
    watch().changed.notify_all();
}

CHostQuestion::~CHostQuestion()
{
    if (!m_counts)
        return;
    {
        const std::lock_guard guard(watch().mutex);
        if (--watch().nested > 0)
            return;
    }
    watch().changed.notify_all();
}

bool CHostQuestion::holdsUpGuiThread()
{
    const std::lock_guard guard(watch().mutex);
    const auto release = watch().releaseTime();
    return release && Clock::now() >= *release;
}
