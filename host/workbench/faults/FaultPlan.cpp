#include "host/workbench/faults/FaultPlan.h"

#include <cstddef>
#include <utility>

FaultPlan::Counted FaultPlan::fresh(const FaultRule& rule)
{
    return {rule, std::minstd_rand(rule.seed), 0, 0};
}

void FaultPlan::setRules(const QList<FaultRule>& rules)
{
    const std::lock_guard guard(m_mutex);
    bool isChanged = m_rules.size() != static_cast<std::size_t>(rules.size());
    std::vector<Counted> counted;
    for (int at = 0; at < rules.size(); ++at) {
        const auto place = static_cast<std::size_t>(at);
        const bool isKept = place < m_rules.size() && m_rules[place].rule == rules.at(at);
        counted.push_back(isKept ? m_rules[place] : fresh(rules.at(at)));
        isChanged = isChanged || !isKept;
    }
    m_rules = std::move(counted);
    if (isChanged) {
        ++m_changes;
        m_rulesChanged.notify_all();
    }
}

void FaultPlan::restart()
{
    const std::lock_guard guard(m_mutex);
    for (Counted& each : m_rules)
        each = fresh(each.rule);
}

template <typename IsAbout>
QList<FaultRule> FaultPlan::strikeIf(const IsAbout& isAbout, const IsPossible& isPossible)
{
    QList<FaultRule> striking;
    {
        const std::lock_guard guard(m_mutex);
        for (Counted& each : m_rules) {
            const FaultRule& rule = each.rule;
            if (!rule.enabled || !isAbout(rule) || !isPossible(rule.effect))
                continue;
            ++each.seen;
            // A random number for each, so that the others fall as they do without the rest.
            const double drawn = std::uniform_real_distribution<double>(0, 1)(each.random);
            const bool strikes = rule.call > 0 ? each.seen == rule.call
                                               : drawn < static_cast<double>(rule.probability);
            if (!strikes)
                continue;
            ++each.strikes;
            striking.append(rule);
        }
    }
    if (!striking.isEmpty())
        emit struck();
    return striking;
}

QList<FaultRule> FaultPlan::strike(const Operations::Operation& operation,
                                   const IsPossible& isPossible)
{
    return strikeIf([&](const FaultRule& rule) { return rule.isAbout(operation); }, isPossible);
}

QList<FaultRule> FaultPlan::strike(quint32 event)
{
    return strikeIf([&](const FaultRule& rule) { return rule.isAbout(event); },
                    [](FaultEffect) { return true; });
}

quint64 FaultPlan::changes() const
{
    const std::lock_guard guard(m_mutex);
    return m_changes;
}

void FaultPlan::keepThread(std::chrono::milliseconds time, quint64 changes)
{
    std::unique_lock guard(m_mutex);
    m_rulesChanged.wait_for(guard, time, [&] { return m_changes != changes; });
}

QList<qint64> FaultPlan::strikes() const
{
    const std::lock_guard guard(m_mutex);
    QList<qint64> counts;
    for (const Counted& each : m_rules)
        counts.append(each.strikes);
    return counts;
}
