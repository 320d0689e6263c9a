#pragma once

#include <QAbstractTableModel>
#include <QMetaType>
#include <QString>
#include <QTime>
#include <QVector>

#include <deque>
#include <mutex>

/// One line of the workbench's live log.
struct TraceEntry
{
    enum class Kind { Call, Event, Log };

    QTime time;
    Kind kind = Kind::Log;
    QString thread;
    QString text;
};

Q_DECLARE_METATYPE(TraceEntry)

/// The entry as plain text in English, the columns parted by tabs.
QString traceLine(const TraceEntry& entry);

/// The live log: calls of the panel, events raised, records of the host's log. Keeps the last
/// kMaxRows lines.
class TraceModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { TimeColumn, KindColumn, ThreadColumn, TextColumn, ColumnCount };
    static constexpr int kMaxRows = 10000;

    explicit TraceModel(QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

    /// Adds a line with the present time and the calling thread's name. The row appears when the
    /// GUI thread's events are next processed. Any thread.
    void add(TraceEntry::Kind kind, const QString& text);

    /// Takes in at once what was added so far. GUI thread.
    void flush();

    void clear();

    /// The language changed.
    void retranslate();

    const TraceEntry& entry(int row) const { return m_rows.at(static_cast<std::size_t>(row)); }

signals:
    /// Entries that came in, also those that the model has no room for any more.
    void added(const QVector<TraceEntry>& entries);

private:
    QString kindText(TraceEntry::Kind kind) const;

    std::mutex m_mutex;
    QVector<TraceEntry> m_incoming; // guarded by m_mutex
    std::deque<TraceEntry> m_rows;
};
