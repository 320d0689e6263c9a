#include "base/HostQuestion.h"

#include "base/GuiThread.h"

std::optional<CHostQuestion::Clock::time_point> CHostQuestion::Watch::releaseTime() const
{
    return nested > 0 ? std::optional(since + kUsual) : std::nullopt;
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
