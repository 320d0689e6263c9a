#include "processortree/ProcessorTreeModel.h"

#include "plugin/MetaTypes.h"
#include "plugin/TargetSelectHandler.h"
#include "processortree/NodeType.h"
#include "processortree/ProcessorItem.h"
#include "processortree/ProcessorOrder.h"

#include <QDataStream>
#include <QHash>
#include <QMimeData>
#include <QSignalBlocker>

#include <algorithm>
#include <utility>
#include <vector>

namespace {

const QString kProcessorMimeType = QStringLiteral("PROCESSOR INFO");

int processorCount(const QStandardItem& parent)
{
    int count = 0;
    for (int row = 0; row < parent.rowCount(); ++row) {
        const QStandardItem* child = parent.child(row);
        const auto type = child ? nodeType(*child) : std::nullopt;
        if (type == NodeProcessor)
            ++count;
        else if (type == NodeGroup)
            count += processorCount(*child);
    }
    return count;
}

void collectProcessors(const QModelIndex& parent, QList<QUuid>& found)
{
    const QAbstractItemModel* model = parent.model();
    for (int row = 0; row < model->rowCount(parent); ++row) {
        const QModelIndex child = model->index(row, 0, parent);
        if (nodeType(child) == NodeProcessor)
            found.append(child.data(UuidRole).toUuid());
        collectProcessors(child, found);
    }
}

bool isSelfOrBelow(const QStandardItem* item, const QStandardItem* ancestor)
{
    while (item && item != ancestor)
        item = item->parent();
    return item != nullptr;
}

CProcessorItem* makeGroup(const ProcessorGroupNode& group)
{
    auto* item = new CProcessorItem(NodeGroup, group.id);
    item->setText(group.name);
    item->setData(QVariant::fromValue(group), NodeDataRole);
    return item;
}

CProcessorItem* makeProcessor(const ProcessorNode& processor, const CRecordHandle& record)
{
    auto* item = new CProcessorItem(NodeProcessor, processor.id);
    item->setText(processor.name);
    item->setData(QVariant::fromValue(record), NodeDataRole);
    return item;
}

/// The processors of one parent, put in order before it gets them as its rows all at once.
struct Branch
{
    /// Makes the row of `processor` and notes it in `known`.
    void grow(const ProcessorNode& processor, CIdentityIndex::Rows& known)
    {
        const CRecordCell::Key key = recordKey(processor);
        const int row = insertionRow(above, keys, key) - above;
        CRecordHandle record(processor);
        QStandardItem* item = makeProcessor(processor, record);
        keys.insert(keys.begin() + row, key);
        rows.insert(row, item);
        known.push_back({processor.id, item, {NodeProcessor, std::move(record)}});
    }

    QStandardItem* parent = nullptr; // owned by the model
    int above = 0;                   // groups among the parent's rows
    int rounds = 1;                  // how often it takes the processors that name it
    std::vector<CRecordCell::Key> keys;
    QList<QStandardItem*> rows;
};

QByteArray dragPayload(bool allProcessors)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << allProcessors;
    return bytes;
}

} // namespace

/// A stretch of changes that views see as one model reset. No row signal may leave the model
/// between the two halves of a reset: views and proxies would follow both.
class CProcessorTreeModel::Batch final
{
public:
    explicit Batch(CProcessorTreeModel* model)
        : m_model(model)
    {
        m_model->beginResetModel();
        m_signalsWereBlocked = m_model->blockSignals(true);
    }

    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;

    ~Batch()
    {
        if (m_model->m_rebuildDue)
            m_model->m_index.rebuild(m_model->m_root);
        m_model->m_rebuildDue = false;
        m_model->blockSignals(m_signalsWereBlocked);
        m_model->endResetModel();
    }

private:
    CProcessorTreeModel* m_model;
    bool m_signalsWereBlocked = false;
};

CProcessorTreeModel::CProcessorTreeModel(QObject* parent)
    : QStandardItemModel(parent)
{
    RegisterMetaTypes();
    // Connected before any view can be, so that whoever hears of a change finds the index right.
    connect(this, &QAbstractItemModel::rowsInserted, this, &CProcessorTreeModel::onRowsInserted);
    connect(this, &QAbstractItemModel::rowsAboutToBeRemoved, this,
            &CProcessorTreeModel::onRowsAboutToBeRemoved);
    connect(this, &QAbstractItemModel::dataChanged, this, &CProcessorTreeModel::onDataChanged);
    const auto rebuildIfDue = [this] {
        if (m_rebuildDue)
            onRestructured();
    };
    connect(this, &QAbstractItemModel::rowsRemoved, this, rebuildIfDue);
    connect(this, &QAbstractItemModel::columnsRemoved, this, &CProcessorTreeModel::onRestructured);
    connect(this, &QAbstractItemModel::layoutChanged, this, &CProcessorTreeModel::onRestructured);
    connect(this, &QAbstractItemModel::modelReset, this, &CProcessorTreeModel::onModelReset);
}

CProcessorTreeModel::~CProcessorTreeModel() = default;

QVariant CProcessorTreeModel::data(const QModelIndex& index, int role) const
{
    if (role == HostCheckRole) {
        const auto handler = GetTargetSelectHandler();
        const QVariant stored = QStandardItemModel::data(index, NodeDataRole);
        return handler && handler->CheckProcessor(processorRecord(stored));
    }
    QVariant stored = QStandardItemModel::data(index, role);
    if (role == NodeDataRole && stored.userType() == qMetaTypeId<CRecordHandle>())
        return QVariant::fromValue(processorRecord(stored));
    return stored;
}

bool CProcessorTreeModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || !value.isValid())
        return false;
    if (role != Qt::DisplayRole)
        return QStandardItemModel::setData(index, value, role);

    QStandardItem* item = itemFromIndex(index);
    const QString name = value.toString();
    const auto type = nodeType(index);
    if (item && type == NodeProcessor) {
        ProcessorNode processor = processorRecord(item->data(NodeDataRole));
        if (processor.name != name) {
            processor.name = name;
            storeProcessor(item, processor);
        }
    } else if (item && type == NodeGroup) {
        auto group = item->data(NodeDataRole).value<ProcessorGroupNode>();
        if (group.name != name) {
            group.name = name;
            item->setData(QVariant::fromValue(group), NodeDataRole);
        }
    }
    return QStandardItemModel::setData(index, value, Qt::DisplayRole);
}

QStringList CProcessorTreeModel::mimeTypes() const
{
    return {kProcessorMimeType};
}

QMimeData* CProcessorTreeModel::mimeData(const QModelIndexList& indexes) const
{
    bool allProcessors = true;
    for (const QModelIndex& index : indexes) {
        const auto type = nodeType(index);
        if (!type || *type < NodeProcessor) {
            allProcessors = false;
            break;
        }
    }
    auto* payload = new QMimeData;
    const QStringList types = mimeTypes();
    if (!types.isEmpty())
        payload->setData(types.first(), dragPayload(allProcessors));
    return payload;
}

bool CProcessorTreeModel::moveRows(const QModelIndex& sourceParent, int sourceRow, int count,
                                   const QModelIndex& destinationParent, int destinationChild)
{
    if (sourceParent == destinationParent || !sourceParent.isValid() || !destinationParent.isValid()
        || sourceRow < 0 || destinationChild < 0)
        return false;
    QStandardItem* source = itemFromIndex(sourceParent);
    QStandardItem* destination = itemFromIndex(destinationParent);
    if (!source || !destination || sourceRow >= source->rowCount()
        || destinationChild > destination->rowCount())
        return false;
    const int movable = qMin(count, source->rowCount() - sourceRow);
    for (int row = sourceRow; row < sourceRow + movable; ++row) {
        if (source->child(row) && isSelfOrBelow(destination, source->child(row)))
            return false;
    }

    m_index.setMoving(true);
    for (int moved = 0; moved < movable; ++moved)
        destination->insertRow(destinationChild, source->takeRow(sourceRow));
    m_index.setMoving(false);
    return true;
}

void CProcessorTreeModel::initRoot()
{
    setColumnCount(1);
    auto* root = new CProcessorItem(NodeRoot, QUuid());
    root->setEditable(false);
    m_root = root;
    setRootCount(0);
    appendRow(root);
    m_index.rebuild(m_root);
}

void CProcessorTreeModel::clearToRoot()
{
    m_root = nullptr;
    m_index.rebuild(nullptr);
    clear();
    initRoot();
}

void CProcessorTreeModel::updateRootText()
{
    if (m_root)
        setRootCount(getAllProcessorCount());
}

QStandardItem* CProcessorTreeModel::getItem(const QUuid& uuid) const
{
    return m_index.find(uuid);
}

std::optional<CIdentityIndex::Row> CProcessorTreeModel::findRow(const QUuid& uuid) const
{
    return m_index.row(uuid);
}

int CProcessorTreeModel::getAllProcessorCount() const
{
    return m_root ? processorCount(*m_root) : 0;
}

int CProcessorTreeModel::groupCount() const
{
    int count = 0;
    for (int row = 0; m_root && row < m_root->rowCount(); ++row) {
        const QStandardItem* child = m_root->child(row);
        if (child && nodeType(*child) == NodeGroup)
            ++count;
    }
    return count;
}

QList<QUuid> CProcessorTreeModel::getChildProcessor(const QModelIndex& index) const
{
    QList<QUuid> found;
    if (index.isValid())
        collectProcessors(index, found);
    return found;
}

void CProcessorTreeModel::updateProcessor(QStandardItem* item, const ProcessorNode& processor)
{
    if (!item || item == m_root)
        return;
    const ProcessorNode known = processorRecord(item->data(NodeDataRole));
    if (processor.reachedByIp && processor.ipAddress != known.ipAddress) {
        removeNode(known.id);
        AppendProcessor(processor);
        return;
    }
    item->setText(processor.name);
    storeProcessor(item, processor);
}

QList<QPersistentModelIndex>
CProcessorTreeModel::moveProcessors(const QList<QPersistentModelIndex>& indexes,
                                    const QUuid& targetId)
{
    QStandardItem* target = getItem(targetId);
    if (indexes.isEmpty() || !target)
        return {};

    QList<QPersistentModelIndex> moved;
    QList<QUuid> movedIds;
    for (const QPersistentModelIndex& index : indexes) {
        QStandardItem* item = itemFromIndex(index);
        if (!item || nodeType(*item) != NodeProcessor)
            continue;
        const ProcessorNode processor = processorRecord(item->data(NodeDataRole));
        QStandardItem* source = item->parent();
        const int row = insertionRow(*target, recordKey(processor));
        if (!moveRows(index.parent(), index.row(), 1, target->index(), row))
            continue;
        changeMembership(item, source);
        moved.append(item->index());
        movedIds.append(item->data(UuidRole).toUuid());
    }
    const auto handler = GetTargetSelectHandler();
    if (handler && !moved.isEmpty()) {
        const auto group = target == m_root
                               ? ProcessorGroupNode()
                               : target->data(NodeDataRole).value<ProcessorGroupNode>();
        handler->SetProcessorGroup(group, targetId, movedIds);
    }
    return moved;
}

void CProcessorTreeModel::removeAllGroups()
{
    for (int row = m_root ? m_root->rowCount() - 1 : -1; row >= 0; --row) {
        const QStandardItem* child = m_root->child(row);
        if (child && nodeType(*child) == NodeGroup)
            m_root->removeRow(row);
    }
    updateRootText();
}

void CProcessorTreeModel::announceRecords(const QList<QUuid>& processors)
{
    for (const QUuid& uuid : processors) {
        if (const QStandardItem* item = getItem(uuid)) {
            const QModelIndex index = item->index();
            emit dataChanged(index, index, {NodeDataRole});
        }
    }
}

void CProcessorTreeModel::reset()
{
    const auto handler = GetTargetSelectHandler();
    if (!m_root || !handler)
        return;
    // The host answers before the reset begins, so that it may look at the tree or raise events.
    const QList<ProcessorNode> processors = handler->GetAllProcessorNodes();
    const QList<ProcessorGroupNode> groups = handler->GetAllGroupNodes();
    if (!m_root)
        return;

    const Batch batch(this);
    // Before the rows go, so that their records go with them.
    m_index.rebuild(nullptr);
    m_root->removeRows(0, m_root->rowCount());
    m_root->removeColumns(0, m_root->columnCount());
    m_index.rebuild(m_root);
    setRootCount(processors.size());
    fill(groups, processors);
}

CProcessorItem* CProcessorTreeModel::AppendGroup(const ProcessorGroupNode& group)
{
    return m_root ? insertGroup(group, groupCount()) : nullptr;
}

void CProcessorTreeModel::AppendProcessor(const ProcessorNode& processor)
{
    if (QStandardItem* parent = groupItem(processor.groupId)) {
        insertProcessor(processor, parent);
        updateRootText();
    }
}

void CProcessorTreeModel::AppendProcessors(const QList<QUuid>& processors)
{
    const auto handler = GetTargetSelectHandler();
    QList<ProcessorNode> records;
    for (const QUuid& uuid : processors) {
        if (handler)
            records.append(handler->GetProcessorNode(uuid));
    }

    const Batch batch(this);
    bool added = false;
    for (const ProcessorNode& processor : qAsConst(records)) {
        if (QStandardItem* parent = groupItem(processor.groupId)) {
            QStandardItem* item = insertProcessor(processor, parent);
            indexRow(item);
            added = true;
        }
    }
    if (added)
        updateRootText();
}

void CProcessorTreeModel::removeNode(const QUuid& uuid)
{
    QStandardItem* item = getItem(uuid);
    const auto type = item ? nodeType(*item) : std::nullopt;
    if (!item || !item->parent())
        return;
    if (type == NodeGroup) {
        const QPersistentModelIndex group = item->index();
        emptyGroup(group);
        if (group.isValid())
            removeRow(group.row(), group.parent());
    } else if (type == NodeProcessor) {
        item->parent()->removeRow(item->row());
        updateRootText();
    }
}

void CProcessorTreeModel::removeNodes(const QList<QUuid>& uuids)
{
    for (const QUuid& uuid : uuids)
        removeNode(uuid);
}

/// The row that takes the processors of `groupId`; null when there is none.
QStandardItem* CProcessorTreeModel::groupItem(const QUuid& groupId) const
{
    if (groupId.isNull())
        return m_root;
    QStandardItem* item = getItem(groupId);
    if (!item || nodeType(*item) == NodeGroup)
        return item;
    // A processor has taken the group's identity and comes first; the group is there all the same.
    for (int row = 0; row < m_root->rowCount(); ++row) {
        QStandardItem* child = m_root->child(row);
        if (child && nodeType(*child) == NodeGroup && child->data(UuidRole).toUuid() == groupId)
            return child;
    }
    return nullptr;
}

CProcessorItem* CProcessorTreeModel::insertGroup(const ProcessorGroupNode& group, int row)
{
    CProcessorItem* item = makeGroup(group);
    m_root->insertRow(row, item);
    return item;
}

CProcessorItem* CProcessorTreeModel::insertProcessor(const ProcessorNode& processor,
                                                     QStandardItem* parent)
{
    CProcessorItem* item = makeProcessor(processor, CRecordHandle(processor));
    parent->insertRow(insertionRow(*parent, recordKey(processor)), item);
    return item;
}

/// Fills the empty root with the host's records in host order. Every parent gets its rows in one
/// go: attaching them one by one costs as much again.
void CProcessorTreeModel::fill(const QList<ProcessorGroupNode>& groups,
                               const QList<ProcessorNode>& processors)
{
    CIdentityIndex::Rows known;
    known.reserve(static_cast<std::size_t>(groups.size() + processors.size()));
    QHash<QUuid, Branch> branches;
    branches.reserve(groups.size() + 1);
    const auto branchOff = [&](QStandardItem* parent, int above) {
        Branch branch{parent, above, 1, {}, {}};
        // Room for as many as stand in each parent where all have the same number.
        const int room = processors.size() / (groups.size() + 1) + 1;
        branch.keys.reserve(static_cast<std::size_t>(room));
        branch.rows.reserve(room);
        return branch;
    };
    branches.insert(QUuid(), branchOff(m_root, groups.size()));

    int rounds = 1;
    QList<QStandardItem*> groupItems;
    groupItems.reserve(groups.size());
    for (const ProcessorGroupNode& group : groups) {
        QStandardItem* item = makeGroup(group);
        groupItems.append(item);
        known.push_back({group.id, item, {NodeGroup, {}}});
        // Of groups that share an identity the first one takes the processors, once for each.
        const auto first = branches.find(group.id);
        if (first == branches.end())
            branches.insert(group.id, branchOff(item, 0));
        else
            rounds = std::max(rounds, ++first->rounds);
    }
    m_root->insertRows(0, groupItems);

    for (int round = 0; round < rounds; ++round) {
        auto branch = branches.end();
        for (const ProcessorNode& processor : processors) {
            // Most often a processor stands in the group of the one before.
            if (branch == branches.end() || branch.key() != processor.groupId)
                branch = branches.find(processor.groupId);
            if (branch != branches.end() && round < branch->rounds)
                branch->grow(processor, known);
        }
    }
    for (const Branch& branch : qAsConst(branches))
        branch.parent->insertRows(branch.above, branch.rows);
    if (!m_index.add(std::move(known)))
        m_rebuildDue = true;
}

/// Takes up a row inserted while the model's signals are blocked.
void CProcessorTreeModel::indexRow(QStandardItem* item)
{
    if (!m_index.add(item))
        m_rebuildDue = true;
}

void CProcessorTreeModel::setRootCount(int count)
{
    m_root->setText(QStringLiteral("%1(%2)").arg(tr("All processors"), QString::number(count)));
}

/// Moves the group's processors to the root, from the last one to the first.
void CProcessorTreeModel::emptyGroup(const QPersistentModelIndex& group)
{
    // The host hears of every move and may change the tree meanwhile.
    for (int row = rowCount(group) - 1; row >= 0 && group.isValid(); --row) {
        const QModelIndex child = index(row, 0, group);
        if (child.isValid())
            moveProcessors({child}, QUuid());
    }
}

void CProcessorTreeModel::storeProcessor(QStandardItem* item, const ProcessorNode& processor)
{
    CRecordHandle handle = recordHandle(item->data(NodeDataRole));
    if (handle.cell())
        handle.cell()->store(processor);
    else
        handle = CRecordHandle(processor);
    // Written again even when it is the same handle: that is how views learn of the new content.
    item->setData(QVariant::fromValue(handle), NodeDataRole);
}

/// After `item` came here from `source`: its record names the new group, and the member lists of
/// both groups follow.
void CProcessorTreeModel::changeMembership(QStandardItem* item, QStandardItem* source)
{
    QStandardItem* target = item->parent();
    ProcessorNode processor = processorRecord(item->data(NodeDataRole));
    processor.groupId = target == m_root ? QUuid() : target->data(UuidRole).toUuid();
    storeProcessor(item, processor);

    for (QStandardItem* parent : {source, target}) {
        if (nodeType(*parent) != NodeGroup)
            continue;
        auto group = parent->data(NodeDataRole).value<ProcessorGroupNode>();
        const auto isMoved = [&](const ProcessorNode& member) { return member.id == processor.id; };
        auto& members = group.processors;
        members.erase(std::remove_if(members.begin(), members.end(), isMoved), members.end());
        if (parent == target)
            members.insert(qMin(item->row(), members.size()), processor);
        parent->setData(QVariant::fromValue(group), NodeDataRole);
    }
}

/// Whether a search from the root reaches the children of `parent`.
bool CProcessorTreeModel::isSearched(const QStandardItem* parent) const
{
    while (parent && parent != m_root && nodeType(*parent) == NodeGroup)
        parent = parent->parent();
    return parent && parent == m_root;
}

void CProcessorTreeModel::onRowsInserted(const QModelIndex& parent, int first, int last)
{
    const QStandardItem* item = itemFromIndex(parent);
    if (!isSearched(item))
        return;
    for (int row = first; row <= last; ++row) {
        if (QStandardItem* child = item->child(row)) {
            adoptRecords(child);
            indexRow(child);
        }
    }
    if (m_rebuildDue)
        onRestructured();
}

void CProcessorTreeModel::onRowsAboutToBeRemoved(const QModelIndex& parent, int first, int last)
{
    const QStandardItem* item = parent.isValid() ? itemFromIndex(parent) : invisibleRootItem();
    for (int row = first; row <= last; ++row) {
        const QStandardItem* child = item->child(row);
        if (!child)
            continue;
        if (!m_index.remove(child))
            m_rebuildDue = true;
        if (child == m_root)
            m_root = nullptr;
    }
}

void CProcessorTreeModel::onDataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                                        const QVector<int>& roles)
{
    const auto concerns = [&](int role) { return roles.isEmpty() || roles.contains(role); };
    if (concerns(NodeDataRole)) {
        for (int row = topLeft.row(); row <= bottomRight.row(); ++row) {
            QStandardItem* item = itemFromIndex(topLeft.sibling(row, 0));
            if (!item)
                continue;
            adoptRecords(item);
            m_index.setRecord(item, recordHandle(item->data(NodeDataRole)));
        }
    }
    if (concerns(UuidRole) || concerns(NodeTypeRole))
        onRestructured();
}

/// Records that somebody stored plainly move into cells, where the work thread can reach them.
void CProcessorTreeModel::adoptRecords(QStandardItem* item)
{
    const QVariant stored = item->data(NodeDataRole);
    if (stored.userType() == qMetaTypeId<ProcessorNode>() && nodeType(*item) == NodeProcessor) {
        const QSignalBlocker blocker(this);
        item->setData(QVariant::fromValue(CRecordHandle(processorRecord(stored))), NodeDataRole);
    }
    for (int row = 0; row < item->rowCount(); ++row) {
        if (QStandardItem* child = item->child(row))
            adoptRecords(child);
    }
}

void CProcessorTreeModel::onRestructured()
{
    m_rebuildDue = false;
    m_index.rebuild(m_root);
}

/// QStandardItemModel::clear() takes the root row away without another word.
void CProcessorTreeModel::onModelReset()
{
    for (int row = 0; row < rowCount(); ++row) {
        if (item(row) == m_root)
            return;
    }
    m_root = nullptr;
    onRestructured();
}
