#pragma once

#include <QAbstractTableModel>
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
    enum class Kind { Call, Event, Log };

    QTime time;
    Kind kind = Kind::Log;
    QString thread;
    QString text;
    bool isOfPainting = false; ///< A question that the panel asks while it paints.
};

Q_DECLARE_METATYPE(TraceEntry)

/// Returns the entry as one line of English text; tabs separate the columns. In the text, line
/// breaks, tabs and backslashes are written as in C.
QString traceLine(const TraceEntry& entry);

/// The live log: calls of the panel, raised events, and records of the host's log. Keeps the last
/// kMaxRows lines.
class TraceModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { TimeColumn, KindColumn, ThreadColumn, TextColumn, ColumnCount };
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
    void add(TraceEntry::Kind kind, const QString& text);

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

    std::function<bool()> m_isPainting; // GUI thread
    std::mutex m_mutex;
    QVector<TraceEntry> m_incoming; // guarded by m_mutex
    std::deque<TraceEntry> m_rows;
};
