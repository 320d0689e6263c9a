#pragma once

#include "host/common/AppendLog.h"

#include <QStringList>

#include <mutex>
#include <utility>
#include <vector>

/// Collects what goes to the host's log while it lives, on whatever thread.
class LogTrap final
{
public:
    LogTrap()
        : m_before(SetLogSink([this](const LogRecord& record) {
            const std::lock_guard guard(m_mutex);
            m_records.push_back(record);
        }))
    {
    }
    ~LogTrap() { SetLogSink(m_before); }
    LogTrap(const LogTrap&) = delete;
    LogTrap& operator=(const LogTrap&) = delete;

    std::vector<LogRecord> records() const
    {
        const std::lock_guard guard(m_mutex);
        return m_records;
    }

    QStringList messages() const { return messagesOf(records()); }

    /// The messages since the last time.
    QStringList take()
    {
        const std::lock_guard guard(m_mutex);
        return messagesOf(std::exchange(m_records, {}));
    }

private:
    static QStringList messagesOf(const std::vector<LogRecord>& records)
    {
        QStringList messages;
        for (const LogRecord& record : records)
            messages.append(QString::fromStdString(record.message));
        return messages;
    }

    mutable std::mutex m_mutex;
    std::vector<LogRecord> m_records;
    LogSink m_before;
};
