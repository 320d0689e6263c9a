#pragma once

#include "host/common/AppendLog.h"

#include <QStringList>

/// Collects what goes to the host's log.
class LogTrap final
{
public:
    LogTrap()
        : m_before(SetLogSink([this](const LogRecord& record) {
            lines.append(QString::fromStdString(record.message));
        }))
    {
    }
    ~LogTrap() { SetLogSink(m_before); }
    LogTrap(const LogTrap&) = delete;
    LogTrap& operator=(const LogTrap&) = delete;

    QStringList take()
    {
        QStringList taken;
        taken.swap(lines);
        return taken;
    }

    QStringList lines;

private:
    LogSink m_before;
};
