// How the host detects devices: inside the call, with its progress shown and each processor that it
// finds announced by itself.

#include "host/common/AppendLog.h"
#include "host/workbench/handler/WorkbenchHandler.h"
#include "host/workbench/store/ProjectStore.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <utility>

namespace {

/// The detection strategy that uses the IP list.
constexpr int kStrategyByAddress = 2;

struct Plan
{
    QList<QUuid> known;     ///< Processors that have an address.
    QList<quint32> unknown; ///< Addresses of the IP list that no processor has.
    int pauseMs = 0;
};

Plan planFor(const Project& project)
{
    Plan plan;
    plan.pauseMs = project.answers.detectPauseMs;
    QSet<quint32> taken;
    for (const ProcessorNode& node : project.processors) {
        if (node.ipAddress == kNoProcessorAddress)
            continue;
        plan.known.append(node.id);
        taken.insert(node.ipAddress);
    }
    if (project.answers.detectStrategy != kStrategyByAddress)
        return plan;
    for (const IpEntry& entry : project.ipList.entries()) {
        if (!taken.contains(entry.address))
            plan.unknown.append(entry.address);
    }
    return plan;
}

/// Processes events except for user input, as a host does while it talks to devices.
void pause(int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    QEventLoop loop;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, [] {});
    while (!deadline.hasExpired())
        loop.processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
}

} // namespace

quint32 WorkbenchHandler::DetectAllDevices()
{
    m_trace.called("DetectAllDevices");
    if (detect())
        m_store.announceDeviceSets();
    return m_trace.answered("DetectAllDevices", m_store.read([](const Project& project) {
        return project.answers.detectResult;
    }));
}

void WorkbenchHandler::DetectProcessorsOnly()
{
    m_trace.called("DetectProcessorsOnly");
    detect();
}

/// Returns false if a detection is already running.
bool WorkbenchHandler::detect()
{
    if (std::exchange(m_detecting, true)) {
        AppendLog("detect", "HandlerDetection.cpp", __LINE__, "a detection is running already");
        return false;
    }
    const Plan plan = m_store.read(planFor);
    const int project = m_store.projectNumber();
    const int total = plan.known.size() + plan.unknown.size();
    int done = 0;
    const auto proceed = [&](int found) {
        done += found;
        if (showProgress)
            showProgress(done, total);
        if (plan.pauseMs > 0 && done < total)
            pause(plan.pauseMs);
        return m_store.projectNumber() == project;
    };

    bool goesOn = proceed(0);
    if (plan.pauseMs == 0) {
        m_store.markFound(plan.known);
        goesOn = proceed(plan.known.size());
    }
    for (int at = done; goesOn && at < plan.known.size(); ++at) {
        m_store.markFound({plan.known.at(at)});
        goesOn = proceed(1);
    }
    for (int at = 0; goesOn && at < plan.unknown.size(); ++at) {
        m_store.markFound(m_store.addProcessors(QUuid(), QList<quint32>{plan.unknown.at(at)}));
        goesOn = proceed(1);
    }
    // Another project was opened meanwhile.
    if (!goesOn && showProgress)
        showProgress(total, total);
    m_detecting = false;
    return true;
}
