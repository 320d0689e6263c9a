#include "ipmanage/IPListModel.h"

#include "Interface/ProjectLimits.h"
#include "base/GuiThread.h"
#include "base/LogCategories.h"
#include "base/TargetSelectHandler.h"

#include <QPointer>
#include <QStringList>

namespace {

QVector<SIPListItem> readHostList()
{
    QStringList addresses;
    QStringList names;
    QStringList entries;
    if (const auto handler = GetTargetSelectHandler())
        handler->GetIPNameLists(addresses, names);
    if (const auto handler = GetTargetSelectHandler())
        handler->GetIPList(entries);

    const int count = qMin(addresses.size(), ProjectLimits::kMaxIpEntries);
    if (addresses.size() > count || names.size() != addresses.size()
        || entries.size() != addresses.size())
        qCInfo(lcAddresses, "%d of %d addresses are shown, with %d names and %d entries", count,
               addresses.size(), names.size(), entries.size());
    QVector<SIPListItem> items;
    items.reserve(count);
    for (int row = 0; row < count; ++row) {
        SIPListItem item{addresses.at(row), names.value(row), {}};
        item.strIPName = row < entries.size()
                             ? entries.at(row)
                             : QStringLiteral("%1(%2)").arg(item.strIP, item.strName);
        items.append(item);
    }
    return items;
}

} // namespace

CIPListModel::CIPListModel(QObject* parent)
    : QAbstractItemModel(parent)
{
}

QModelIndex CIPListModel::index(int row, int column, const QModelIndex& parent) const
{
    Q_UNUSED(parent)
    if (row < 0 || row >= m_items.size() || column < 0 || column >= ColumnCount)
        return {};
    return createIndex(row, column);
}

QModelIndex CIPListModel::parent(const QModelIndex& child) const
{
    Q_UNUSED(child)
    return {};
}

int CIPListModel::rowCount(const QModelIndex& parent) const
{
    Q_UNUSED(parent)
    return m_items.size();
}

int CIPListModel::columnCount(const QModelIndex& parent) const
{
    Q_UNUSED(parent)
    return ColumnCount;
}

QVariant CIPListModel::data(const QModelIndex& index, int role) const
{
    // A view may keep an index over a reload that returns fewer rows.
    if (index.row() < 0 || index.row() >= m_items.size())
        return {};
    if (index.column() != AddressColumn && index.column() != NameColumn)
        return {};
    const SIPListItem& item = m_items.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return index.column() == AddressColumn ? item.strIP : item.strName;
    case EntryRole:
        return item.strIPName;
    default:
        return {};
    }
}

QVariant CIPListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return m_headers.value(section);
}

bool CIPListModel::setHeaderData(int section, Qt::Orientation orientation, const QVariant& value,
                                 int role)
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return false;
    m_headers.insert(section, value);
    return true;
}

void CIPListModel::reload()
{
    Q_ASSERT(isThreadOf(*this));
    const int reload = ++m_reloads;
    const QPointer<CIPListModel> alive(this);
    QVector<SIPListItem> items = readHostList();
    if (!alive || reload != m_reloads)
        return;
    beginResetModel();
    m_items = std::move(items);
    endResetModel();
}
