#pragma once

#include "Interface/HostRequests.h"
#include "tests/support/LogTrap.h"
#include "tests/support/WarningTrap.h"

#include <QByteArray>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QTest>
#include <QTimer>

/// While one lives, the contract checks of panels that are built are on, and what they find is
/// collected.
class FoundBreaches final
{
public:
    explicit FoundBreaches(const QByteArray& wish = "1") { qputenv("TARGETSELECT_CHECK", wish); }
    ~FoundBreaches()
    {
        qunsetenv("TARGETSELECT_CHECK");
        // Each line comes in the log category too.
        WarningTrap::take();
    }
    FoundBreaches(const FoundBreaches&) = delete;
    FoundBreaches& operator=(const FoundBreaches&) = delete;

    /// The lines with this code so far.
    QStringList lines(const QString& code) const { return m_log.messages().filter(code); }

    bool has(const QString& code) const { return !lines(code).isEmpty(); }

    /// The one line with this code; empty when there is none, or another number of them.
    QString line(const QString& code) const
    {
        const QStringList found = lines(code);
        return found.size() == 1 ? found.first() : QString();
    }

    /// All codes so far, in order, each once.
    QStringList codes() const
    {
        QStringList all;
        for (const QString& message : m_log.messages()) {
            const auto match = QRegularExpression(QStringLiteral("^TSA-[EW]\\d\\d")).match(message);
            if (match.hasMatch())
                all.append(match.captured());
        }
        all.removeDuplicates();
        return all;
    }

    /// Returns once what was requested so far has been judged: timers of one length end in order.
    static bool waitForJudgement()
    {
        bool isDue = false;
        QTimer::singleShot(HostRequests::kFollowUpMs, qApp, [&isDue] { isDue = true; });
        return QTest::qWaitFor([&isDue] { return isDue; }, 20000);
    }

private:
    LogTrap m_log;
};
