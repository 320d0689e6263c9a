// How the host detects devices: inside the call, with its progress shown and each processor that it
// finds announced by itself.

#include "host/common/AppendLog.h"
#include "host/workbench/handler/WorkbenchHandler.h"
#include "host/workbench/network/InputGate.h"
#include "host/workbench/store/ProjectStore.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace {

/// What DetectAllDevices returns for a detection that did not get to its end.
constexpr quint32 kDetectionCancelled = 0xE0830001;
constexpr quint32 kDetectionFailed = 0xE0830002;

/// How often a pause looks whether it is over.
constexpr int kLookMs = 10;

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
    if (project.answers.detectStrategy != kDetectByAddress)
        return plan;
    for (const IpEntry& entry : project.ipList.entries()) {
        if (!taken.contains(entry.address))
            plan.unknown.append(entry.address);
    }
    return plan;
}

} // namespace

quint32 WorkbenchHandler::DetectAllDevices()
{
    m_trace.called("DetectAllDevices");
    quint32 code =
        m_store.read([](const Project& project) { return project.answers.detectResult; });
    switch (detect()) {
    case DetectionEnd::Finished:
        m_store.announceDeviceSets();
        break;
    case DetectionEnd::Cancelled:
        code = kDetectionCancelled;
        break;
    case DetectionEnd::Failed:
        code = kDetectionFailed;
        break;
    case DetectionEnd::Refused:
        break;
    }
    return m_trace.answered("DetectAllDevices", code);
}

void WorkbenchHandler::DetectProcessorsOnly()
{
    m_trace.called("DetectProcessorsOnly");
    detect();
}

void WorkbenchHandler::cancelDetection()
{
    m_cancelled = true;
    m_devices.cancel();
}

DetectionEnd WorkbenchHandler::detect()
{
    if (std::exchange(m_detecting, true)) {
        AppendLog("detect", "HandlerDetection.cpp", __LINE__, "a detection is running already");
        return DetectionEnd::Refused;
    }
    m_cancelled = false;
    // Events are processed meanwhile, and it is one step to undo all the same.
    const ProjectStep whole(m_store, m_store.step());
    const InputGate gate([this] { cancelDetection(); });
    const bool isReal =
        m_store.read([](const Project& project) { return project.network.enabled; });
    const DetectionEnd end = isReal ? detectOnNetwork() : detectInProject();
    m_detecting = false;
    return end;
}

/// Finds what the project says.
DetectionEnd WorkbenchHandler::detectInProject()
{
    const Plan plan = m_store.read(planFor);
    const int project = m_store.projectNumber();
    const int total = plan.known.size() + plan.unknown.size();
    int done = 0;
    const auto proceed = [&](int found) {
        done += found;
        if (showProgress)
            showProgress(done, total);
        if (plan.pauseMs > 0 && done < total)
            pauseDetection(plan.pauseMs);
        return m_store.projectNumber() == project && !m_cancelled;
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
    if (goesOn || done == total)
        return DetectionEnd::Finished;
    // The user has cancelled it, or another project was opened meanwhile.
    if (showCancelled)
        showCancelled(done);
    return DetectionEnd::Cancelled;
}

/// Asks the simulated processors.
DetectionEnd WorkbenchHandler::detectOnNetwork()
{
    const DetectionEnd end = m_devices.detect([this](int done, int total) {
        if (showProgress)
            showProgress(done, total);
    });
    const int found = m_devices.found();
    if (end == DetectionEnd::Finished && showProgress)
        showProgress(found, found);
    if (end != DetectionEnd::Finished && showCancelled)
        showCancelled(found);
    return end;
}

/// Processes events, as a host does while it talks to devices. The end of the program ends the
/// detection.
void WorkbenchHandler::pauseDetection(int milliseconds)
{
    QDeadlineTimer deadline(milliseconds);
    QEventLoop loop;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        if (m_cancelled || deadline.hasExpired())
            loop.quit();
    });
    look.start(std::min(milliseconds, kLookMs));
    if (!m_cancelled)
        loop.exec();
    m_cancelled = m_cancelled || !deadline.hasExpired();
}
