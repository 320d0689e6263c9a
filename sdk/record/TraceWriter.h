#pragma once

#include "sdk/record/FileLock.h"
#include "sdk/record/TraceEntry.h"

#include <QElapsedTimer>
#include <QFile>
#include <QJsonObject>
#include <QString>

#include <atomic>
#include <functional>
#include <mutex>

/// The version of the format that CTraceWriter writes and CTraceReader reads.
constexpr int kTraceVersion = 1;

/// Writes a recording, line by line and at once, so that the file is whole when the host crashes.
/// Thread-safe.
class CTraceWriter final
{
public:
    CTraceWriter() = default;
    CTraceWriter(const CTraceWriter&) = delete;
    CTraceWriter& operator=(const CTraceWriter&) = delete;

    /// Is called once, with the reason, when a line cannot be written; on any thread. Set before
    /// open().
    std::function<void(const QString& problem)> onFailure;

    /// Starts the recording, once. Replaces an earlier recording that is not being written any
    /// more, and no other file: returns false and sets `problem` if there is something else at the
    /// path, or if the file cannot be written.
    bool open(const QString& path, QString& problem);

    bool isOpen() const { return m_isOpen; }

    /// Returns whether lines are missing in the file.
    bool hasFailed() const { return m_hasFailed; }

    /// Writes a gesture of the user, which is the cause of what the GUI thread does until
    /// endInput().
    void addInput(const QString& name, const QJsonObject& arguments);
    void endInput() { m_input = 0; }

private:
    friend class CTraceScope;

    void begin(CTraceEntry& entry);
    void write(const CTraceEntry& entry);
    void writeLine(const QByteArray& line);

    std::mutex m_mutex;
    CFileLock m_lock;      // of m_file; guarded by m_mutex
    QFile m_file;          // guarded by m_mutex
    QElapsedTimer m_clock; // started once, before m_isOpen
    qint64 m_sequence = 0; // guarded by m_mutex
    std::atomic<qint64> m_input{0};
    std::atomic<bool> m_isOpen{false};
    std::atomic<bool> m_hasFailed{false};
};

/// A call or event that goes on while this object exists, on one thread. It is the cause of those
/// that begin on the thread meanwhile, and its line is written at its end.
class CTraceScope final
{
public:
    /// With `isShort`, a call that only reads, nothing is written before its end. All others write
    /// a line at their beginning, too, which tells where a host was when it crashed.
    CTraceScope(CTraceWriter& writer, CTraceEntry::Kind kind, const QString& name,
                const QJsonObject& arguments, bool isShort = false);
    ~CTraceScope();

    CTraceScope(const CTraceScope&) = delete;
    CTraceScope& operator=(const CTraceScope&) = delete;

    /// Sets what the call returned, undefined for nothing, and its out parameters by name, for the
    /// line at its end. Without this call the line has neither.
    void setAnswer(const QJsonValue& answer, const QJsonObject& outs = {});

private:
    friend class CTraceWriter;

    CTraceWriter& m_writer;
    const CTraceScope* const m_outer; // on the same thread
    CTraceEntry m_entry;
};
