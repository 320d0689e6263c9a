#pragma once

#include <QAbstractTableModel>
#include <QElapsedTimer>
#include <QMetaType>
#include <QString>
#include <QTime>
#include <QVector>

#include <deque>
#include <functional>
#include <mutex>
#include <utility>

/// One line of the workbench's live log.
struct TraceEntry
{
    enum class Kind { Call, Event, Log, Finding };

    QTime time;
    Kind kind = Kind::Log;
    QString thread;
    QString text;
    bool isOfPainting = false; ///< A question that the panel asks while it paints.
    qint64 number = 0;         ///< Counts all lines of the log.
    qint64 nanoseconds = -1;   ///< How long it took; negative if that is not known.
};

Q_DECLARE_METATYPE(TraceEntry)

/// Returns the entry as one line of English text; tabs separate the columns. In the text, line
/// breaks, tabs and backslashes are written as in C. The last column is the duration; an entry
/// without one has no such column.
QString traceLine(const TraceEntry& entry);

/// The live log: calls of the panel, raised events, and records of the host's log. Keeps the last
/// kMaxRows lines.
class TraceModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { TimeColumn, KindColumn, ThreadColumn, DurationColumn, TextColumn, ColumnCount };
    enum Role {
        KindRole = Qt::UserRole,
        PaintingRole,
        LineRole, ///< The whole line, see traceLine().
    };
    static constexpr int kMaxRows = 10000;

    explicit TraceModel(QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

    /// Adds a line with the current time and the name of the calling thread. The row is inserted
    /// by a queued call on the GUI thread. Thread-safe.
    /// Returns the number of the line.
    qint64 add(TraceEntry::Kind kind, const QString& text);

    /// Sets how long that took which a line tells of. Thread-safe.
    void setDuration(qint64 number, qint64 nanoseconds);

    /// Inserts the rows of all lines added so far. GUI thread.
    void flush();

    void clear();

    /// Sets what tells whether the panel is painting. It is asked about each call on the GUI
    /// thread.
    void setPaintingProbe(std::function<bool()> isPainting)
    {
        m_isPainting = std::move(isPainting);
    }

    /// Updates the texts after a change of the language.
    void retranslate();

    const TraceEntry& entry(int row) const { return m_rows.at(static_cast<std::size_t>(row)); }

signals:
    /// Emitted for all new lines, including those that exceed kMaxRows.
    void added(const QVector<TraceEntry>& entries);

private:
    QString kindText(TraceEntry::Kind kind) const;
    void storeDuration(qint64 number, qint64 nanoseconds);

    std::function<bool()> m_isPainting; // GUI thread
    std::mutex m_mutex;
    QVector<TraceEntry> m_incoming; // guarded by m_mutex
    qint64 m_lastNumber = 0;        // guarded by m_mutex
    std::deque<TraceEntry> m_rows;
};

/// Measures a call of the panel, from its construction to its destruction: the last line of the
/// kind Call that the thread adds meanwhile, apart from calls inside the call, gets the duration.
class CallTimer final
{
public:
    explicit CallTimer(TraceModel& trace);
    ~CallTimer();
    CallTimer(const CallTimer&) = delete;
    CallTimer& operator=(const CallTimer&) = delete;

private:
    friend class TraceModel;

    TraceModel& m_trace;
    CallTimer* m_outer;
    qint64 m_line = 0;
    QElapsedTimer m_timer;
};
