#include "host/workbench/window/LogFilter.h"

#include "host/workbench/dialogs/PlainText.h"
#include "host/workbench/trace/TraceModel.h"
#include "host/workbench/window/Findings.h"

#include <algorithm>

LogFilter::LogFilter(QObject* parent)
    : QSortFilterProxyModel(parent)
{
}

void LogFilter::setWords(const QString& words)
{
    m_wanted.clear();
    m_unwanted.clear();
    for (const QString& word : words.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        if (word.startsWith(QLatin1Char('-')) && word.size() > 1)
            m_unwanted.append(word.mid(1));
        else
            m_wanted.append(word);
    }
    invalidateFilter();
}

void LogFilter::setKind(int kind)
{
    m_kind = kind;
    invalidateFilter();
}

QVariant LogFilter::data(const QModelIndex& index, int role) const
{
    if (role != Qt::ToolTipRole && role != Qt::ForegroundRole)
        return QSortFilterProxyModel::data(index, role);
    const bool isFinding =
        index.data(TraceModel::KindRole).toInt() == static_cast<int>(TraceEntry::Kind::Finding);
    const QString text = index.siblingAtColumn(TraceModel::TextColumn).data().toString();
    if (role == Qt::ToolTipRole && index.column() == TraceModel::TextColumn)
        return PlainText::toolTip(isFinding ? text + Findings::help(text) : text);
    if (role == Qt::ForegroundRole && isFinding)
        return Findings::colour(text);
    return QSortFilterProxyModel::data(index, role);
}

void LogFilter::setShowsPainting(bool shows)
{
    m_showsPainting = shows;
    invalidateFilter();
}

bool LogFilter::filterAcceptsRow(int row, const QModelIndex& parent) const
{
    const QModelIndex textIndex = sourceModel()->index(row, TraceModel::TextColumn, parent);
    if (!m_showsPainting && textIndex.data(TraceModel::PaintingRole).toBool())
        return false;
    if (m_kind >= 0 && textIndex.data(TraceModel::KindRole).toInt() != m_kind)
        return false;
    const QString line = textIndex.data().toString() + QLatin1Char(' ')
                         + textIndex.siblingAtColumn(TraceModel::ThreadColumn).data().toString();
    const auto occurs = [&](const QString& word) {
        return line.contains(word, Qt::CaseInsensitive);
    };
    return std::all_of(m_wanted.begin(), m_wanted.end(), occurs)
           && std::none_of(m_unwanted.begin(), m_unwanted.end(), occurs);
}
