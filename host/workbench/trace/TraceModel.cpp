#include "host/workbench/trace/TraceModel.h"

#include "host/workbench/trace/ThreadName.h"

#include <QMetaObject>
#include <QThread>

#include <algorithm>
#include <utility>

namespace {

constexpr char kTimeFormat[] = "HH:mm:ss.zzz";

thread_local CallTimer* t_call = nullptr;

/// Returns a duration as text, empty if it is not known.
QString durationText(qint64 nanoseconds)
{
    return nanoseconds < 0
               ? QString()
               : QStringLiteral("%1 ms").arg(static_cast<double>(nanoseconds) / 1e6, 0, 'f', 3);
}

} // namespace

QString traceLine(const TraceEntry& entry)
{
    const char* kinds[] = {"call", "event", "log", "finding"};
    QString text = entry.text;
    // A name with a line break in it does not begin a line.
    text.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    text.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    text.replace(QLatin1Char('\r'), QLatin1String("\\r"));
    text.replace(QLatin1Char('\t'), QLatin1String("\\t"));
    QStringList columns{entry.time.toString(QLatin1String(kTimeFormat)),
                        QLatin1String(kinds[static_cast<int>(entry.kind)]), entry.thread, text};
    if (entry.nanoseconds >= 0)
        columns.append(durationText(entry.nanoseconds));
    return columns.join(QLatin1Char('\t'));
}

TraceModel::TraceModel(QObject* parent)
    : QAbstractTableModel(parent)
{
}

int TraceModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int TraceModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant TraceModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const TraceEntry& entry = m_rows.at(static_cast<std::size_t>(index.row()));
    if (role == KindRole)
        return static_cast<int>(entry.kind);
    if (role == PaintingRole)
        return entry.isOfPainting;
    if (role == Qt::TextAlignmentRole && index.column() == DurationColumn)
        return int{Qt::AlignRight | Qt::AlignVCenter};
    if (role == LineRole)
        return traceLine(entry);
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case TimeColumn:
        return entry.time.toString(QLatin1String(kTimeFormat));
    case KindColumn:
        return kindText(entry.kind);
    case ThreadColumn:
        return entry.thread;
    case DurationColumn:
        return durationText(entry.nanoseconds);
    default:
        return entry.text;
    }
}

QVariant TraceModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case TimeColumn:
        return tr("Time");
    case KindColumn:
        return tr("Kind");
    case ThreadColumn:
        return tr("Thread");
    case DurationColumn:
        return tr("Duration");
    case TextColumn:
        return tr("Text");
    default:
        return {};
    }
}

qint64 TraceModel::add(TraceEntry::Kind kind, const QString& text)
{
    TraceEntry entry{QTime::currentTime(), kind, currentThreadName(), text};
    if (kind == TraceEntry::Kind::Call && QThread::currentThread() == thread())
        entry.isOfPainting = m_isPainting && m_isPainting();
    bool isFirst = false;
    {
        const std::lock_guard guard(m_mutex);
        isFirst = m_incoming.isEmpty();
        entry.number = ++m_lastNumber;
        m_incoming.append(entry);
    }
    if (t_call && kind == TraceEntry::Kind::Call)
        t_call->m_line = entry.number;
    if (isFirst)
        QMetaObject::invokeMethod(this, &TraceModel::flush, Qt::QueuedConnection);
    return entry.number;
}

void TraceModel::setDuration(qint64 number, qint64 nanoseconds)
{
    {
        const std::lock_guard guard(m_mutex);
        for (auto entry = m_incoming.end(); entry != m_incoming.begin();) {
            --entry;
            if (entry->number > number)
                continue;
            if (entry->number == number) {
                entry->nanoseconds = nanoseconds;
                return;
            }
            break;
        }
    }
    QMetaObject::invokeMethod(
        this, [this, number, nanoseconds] { storeDuration(number, nanoseconds); },
        Qt::QueuedConnection);
}

/// Sets the duration of a row. The numbers of the rows have no gaps.
void TraceModel::storeDuration(qint64 number, qint64 nanoseconds)
{
    if (m_rows.empty() || number < m_rows.front().number || number > m_rows.back().number)
        return;
    const int row = static_cast<int>(number - m_rows.front().number);
    m_rows.at(static_cast<std::size_t>(row)).nanoseconds = nanoseconds;
    const QModelIndex changed = index(row, DurationColumn);
    emit dataChanged(changed, changed);
}

void TraceModel::flush()
{
    QVector<TraceEntry> entries;
    {
        const std::lock_guard guard(m_mutex);
        entries.swap(m_incoming);
    }
    if (entries.isEmpty())
        return;
    const int fresh = std::min(entries.size(), kMaxRows);
    const int surplus = rowCount() + fresh - kMaxRows;
    if (surplus > 0) {
        beginRemoveRows(QModelIndex(), 0, surplus - 1);
        m_rows.erase(m_rows.begin(), m_rows.begin() + surplus);
        endRemoveRows();
    }
    beginInsertRows(QModelIndex(), rowCount(), rowCount() + fresh - 1);
    for (int at = entries.size() - fresh; at < entries.size(); ++at)
        m_rows.push_back(entries.at(at));
    endInsertRows();
    emit added(entries);
}

void TraceModel::clear()
{
    flush();
    beginResetModel();
    m_rows.clear();
    endResetModel();
}

void TraceModel::retranslate()
{
    emit headerDataChanged(Qt::Horizontal, 0, ColumnCount - 1);
    if (rowCount() > 0)
        emit dataChanged(index(0, KindColumn), index(rowCount() - 1, KindColumn));
}

QString TraceModel::kindText(TraceEntry::Kind kind) const
{
    switch (kind) {
    case TraceEntry::Kind::Call:
        return tr("Call");
    case TraceEntry::Kind::Event:
        return tr("Event");
    case TraceEntry::Kind::Log:
        return tr("Log");
    case TraceEntry::Kind::Finding:
        return tr("Finding");
    }
    return {};
}

CallTimer::CallTimer(TraceModel& trace)
    : m_trace(trace)
    , m_outer(std::exchange(t_call, this))
{
    m_timer.start();
}

CallTimer::~CallTimer()
{
    t_call = m_outer;
    if (m_line > 0)
        m_trace.setDuration(m_line, m_timer.nsecsElapsed());
}
