#pragma once

#include "plugin/TargetSelectArea.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "tests/support/HostThread.h"
#include "tests/support/Latch.h"
#include "tests/support/MessageTrap.h"
#include "tests/support/TestPanel.h"
#include "tests/support/TrueHost.h"
#include "tests/support/WarningTrap.h"

#include <QAbstractItemModelTester>
#include <QCoreApplication>
#include <QTest>

#include <atomic>
#include <chrono>
#include <functional>
#include <utility>

/// Far beyond what a telling thread may be kept by a question, and well below what it may be kept
/// by a GUI thread that is busy with something else.
constexpr auto kReleased = std::chrono::seconds(3);

/// Waits as a host may inside a question. Returns false when `done` is not ready soon enough.
inline bool isReleased(const std::future<void>& done)
{
    return done.wait_for(kReleased) == std::future_status::ready;
}

/// How long a test gives the work thread to do a job while the GUI thread is inside a question. The
/// job may as well wait for the end of the question.
constexpr auto kJob = std::chrono::milliseconds(100);

/// A panel with a true host that has two telling threads, and that holds its questions open.
class Telling final
{
public:
    Telling()
        : tester(&panel.model())
        , host(panel)
    {
        panel.host().inside = [this](const QString& name) { pass(name, false); };
        panel.host().answered = [this](const QString& name, const QUuid& id) {
            if (id == testId(TrueHost::kWatched))
                jobs.arrive();
            else
                pass(name, true);
        };
    }

    /// Does `action`, once, inside the next question of that name, before it is answered or, with
    /// `answered`, when the answer is fixed; on whatever thread asks. Arm one at a time.
    void doDuring(const QString& question, bool answered, std::function<void()> action)
    {
        m_question = question;
        m_answered = answered;
        m_action = std::move(action);
        m_armed = true;
    }

    /// Returns whether the action of doDuring() has run or is running.
    bool wasAsked() const { return !m_armed; }
    void disarm() { m_armed = false; }

    /// Keeps the GUI thread inside a question until `tell` has come back on another thread, and the
    /// work thread is through with `warned` events 39 of it. Returns whether `tell` came back.
    bool tellInsideAQuestion(const std::function<void()>& tell, int warned = 0)
    {
        bool cameBack = false;
        const int before = jobs.count();
        doDuring(QStringLiteral("DetectAllDevices"), false, [&] {
            cameBack = comesBack(one.post(tell));
            jobs.wait(before + warned, kJob);
        });
        panel.area().DetectDevices();
        return cameBack;
    }

    /// Tells `slow` on the first thread, or on this one, about unit 1. Inside the question that
    /// this asks, with the answer fixed, the second thread tells `newer`, if it is asked at all.
    /// Returns whether that came back.
    bool tellOvertaken(TrueHost::Event slow, const QVector<TrueHost::Event>& newer)
    {
        bool cameBack = true;
        const int before = jobs.count();
        doDuring(questionOf(slow), true, [&] {
            cameBack = isReleased(two.post([this, newer] { host.tell(newer); }));
            jobs.wait(before + newer.count(TrueHost::Warned), kJob);
        });
        host.change(slow);
        const bool slowCameBack = one.run([&] { host.notify(slow); });
        // The job of 39, and what waits for the GUI thread.
        return host.settle() && slowCameBack && cameBack && wasAsked();
    }

    /// The question about unit 1 that `event` leads to; empty for none.
    static QString questionOf(TrueHost::Event event)
    {
        switch (event) {
        case TrueHost::Reset:
            return QStringLiteral("GetAllGroupNodes");
        case TrueHost::GroupAdded:
            return QStringLiteral("GetGroupNode");
        case TrueHost::GroupRemoved:
        case TrueHost::Removed:
        case TrueHost::ListRemoved:
            return {};
        default:
            return QStringLiteral("GetProcessorNode");
        }
    }

    /// The bridge may say that the host knew nothing of what it had told of.
    const MessageTrap messages;
    TestPanel panel;
    const QAbstractItemModelTester tester;
    TrueHost host;
    Latch jobs; ///< Of event 39, as far as they asked the host.

private:
    void pass(const QString& name, bool answered)
    {
        if (m_armed && name == m_question && answered == m_answered && m_armed.exchange(false)) {
            const auto action = m_action; // which may arm another one
            action();
        }
    }

    std::atomic<bool> m_armed{false};
    QString m_question;
    bool m_answered = false;
    std::function<void()> m_action;

public:
    // Behind all that they use.
    HostThread one;
    HostThread two;
};
