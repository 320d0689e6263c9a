#include "host/workbench/trace/TraceModel.h"

#include "host/workbench/trace/ThreadName.h"

#include <QMetaObject>
#include <QThread>

#include <algorithm>
#include <utility>

namespace {

constexpr char kTimeFormat[] = "HH:mm:ss.zzz";

} // namespace

QString traceLine(const TraceEntry& entry)
{
    const char* kinds[] = {"call", "event", "log"};
    QString text = entry.text;
    // A name with a line break in it does not begin a line.
    text.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    text.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    text.replace(QLatin1Char('\r'), QLatin1String("\\r"));
    text.replace(QLatin1Char('\t'), QLatin1String("\\t"));
    return QStringList{entry.time.toString(QLatin1String(kTimeFormat)),
                       QLatin1String(kinds[static_cast<int>(entry.kind)]), entry.thread, text}
        .join(QLatin1Char('\t'));
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
    case TextColumn:
        return tr("Text");
    default:
        return {};
    }
}

void TraceModel::add(TraceEntry::Kind kind, const QString& text)
{
    TraceEntry entry{QTime::currentTime(), kind, currentThreadName(), text};
    if (kind == TraceEntry::Kind::Call && QThread::currentThread() == thread())
        entry.isOfPainting = m_isPainting && m_isPainting();
    bool isFirst = false;
    {
        const std::lock_guard guard(m_mutex);
        isFirst = m_incoming.isEmpty();
        m_incoming.append(entry);
    }
    if (isFirst)
        QMetaObject::invokeMethod(this, &TraceModel::flush, Qt::QueuedConnection);
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
    }
    return {};
}
