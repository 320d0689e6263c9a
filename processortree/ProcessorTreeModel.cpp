#include "processortree/ProcessorTreeModel.h"

#include "plugin/MetaTypes.h"
#include "plugin/TargetSelectHandler.h"
#include "processortree/NodeType.h"
#include "processortree/ProcessorItem.h"
#include "processortree/ProcessorOrder.h"
#include "processortree/TreeFill.h"
#include "processortree/TreeWalk.h"

#include <QDataStream>
#include <QMimeData>
#include <QSignalBlocker>

#include <algorithm>

namespace {

const QString kProcessorMimeType = QStringLiteral("PROCESSOR INFO");

QByteArray dragPayload(bool allProcessors)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << allProcessors;
    return bytes;
}

} // namespace

/// A stretch in which rows come or go, and who hears of it has not heard of all.
class CProcessorTreeModel::Change final
{
public:
    explicit Change(CProcessorTreeModel* model)
        : m_model(model)
    {
        ++m_model->m_changes;
    }

    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;

    ~Change()
    {
        if (--m_model->m_changes == 0 && m_model->m_onChanged)
            m_model->m_onChanged();
    }

private:
    CProcessorTreeModel* m_model;
};

/// A stretch of changes that views see as one model reset. No row signal may leave the model
/// between the two halves of a reset: views and proxies would follow both.
class CProcessorTreeModel::Batch final
{
public:
    explicit Batch(CProcessorTreeModel* model)
        : m_change(model)
        , m_model(model)
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
    const Change m_change;
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

    const Change change(this);
    const QPersistentModelIndex from = sourceParent;
    const QPersistentModelIndex to = destinationParent;
    m_index.setMoving(true);
    for (int moved = 0; moved < movable && from.isValid(); ++moved) {
        const QList<QStandardItem*> row = itemFromIndex(from)->takeRow(sourceRow);
        // Whoever hears of the row's leaving may take its destination away.
        if (QStandardItem* parent = itemFromIndex(to))
            parent->insertRow(qMin(destinationChild, parent->rowCount()), row);
        else
            qDeleteAll(row);
    }
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
    const Change change(this);
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
    // The record first: who hears of the new text may look at it.
    const QPersistentModelIndex index = item->index();
    storeProcessor(item, processor);
    if (index.isValid())
        itemFromIndex(index)->setText(processor.name);
}

QList<QPersistentModelIndex>
CProcessorTreeModel::moveProcessors(const QList<QPersistentModelIndex>& indexes,
                                    const QUuid& targetId)
{
    QList<QPersistentModelIndex> moved;
    QList<QUuid> movedIds;
    for (const QPersistentModelIndex& index : indexes) {
        // Looked up for each: whoever hears of a move may change the tree.
        const QStandardItem* target = groupItem(targetId);
        const QStandardItem* item = itemFromIndex(index);
        if (!target || !item || nodeType(*item) != NodeProcessor)
            continue;
        const QUuid id = item->data(UuidRole).toUuid();
        const QPersistentModelIndex arrived = moveProcessor(index, target->index());
        if (arrived.isValid()) {
            moved.append(arrived);
            movedIds.append(id);
        }
    }
    const QStandardItem* target = groupItem(targetId);
    const auto handler = GetTargetSelectHandler();
    if (handler && target && !moved.isEmpty()) {
        const auto group = target == m_root
                               ? ProcessorGroupNode()
                               : target->data(NodeDataRole).value<ProcessorGroupNode>();
        handler->SetProcessorGroup(group, targetId, movedIds);
    }
    return moved;
}

/// Moves the processor at `index` to its place under `target`; an invalid index when it stands
/// there already.
QPersistentModelIndex CProcessorTreeModel::moveProcessor(const QModelIndex& index,
                                                         const QPersistentModelIndex& target)
{
    const QStandardItem* item = itemFromIndex(index);
    const QPersistentModelIndex source = index.parent();
    const auto key = recordKey(item->data(NodeDataRole));
    if (!moveRows(source, index.row(), 1, target, insertionRow(*itemFromIndex(target), key)))
        return {};
    const QStandardItem* parent = itemFromIndex(target);
    for (int row = 0; parent && row < parent->rowCount(); ++row) {
        if (parent->child(row) == item) {
            QPersistentModelIndex arrived = item->index();
            changeMembership(arrived, source);
            return arrived;
        }
    }
    return {};
}

void CProcessorTreeModel::removeAllGroups()
{
    const Change change(this);
    for (int row = m_root ? m_root->rowCount() - 1 : -1; m_root && row >= 0; --row) {
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
    if (!m_root || !GetTargetSelectHandler())
        return;
    // The host answers before the reset begins, so that it may look at the tree or raise events.
    QList<ProcessorNode> processors;
    QList<ProcessorGroupNode> groups;
    if (const auto handler = GetTargetSelectHandler())
        processors = handler->GetAllProcessorNodes();
    if (const auto handler = GetTargetSelectHandler())
        groups = handler->GetAllGroupNodes();
    if (!m_root)
        return;

    const Batch batch(this);
    // Before the rows go, so that their records go with them.
    m_index.rebuild(nullptr);
    m_root->removeRows(0, m_root->rowCount());
    m_root->removeColumns(0, m_root->columnCount());
    m_index.rebuild(m_root);
    setRootCount(processors.size());
    if (!m_index.add(fillTree(*m_root, groups, processors)))
        m_rebuildDue = true;
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
    QList<ProcessorNode> records;
    for (const QUuid& uuid : processors) {
        if (const auto handler = GetTargetSelectHandler())
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
        const Change change(this);
        if (group.isValid())
            removeRow(group.row(), group.parent());
    } else if (type == NodeProcessor) {
        const Change change(this);
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
    const Change change(this);
    CProcessorItem* item = makeGroupItem(group);
    m_root->insertRow(row, item);
    return item;
}

CProcessorItem* CProcessorTreeModel::insertProcessor(const ProcessorNode& processor,
                                                     QStandardItem* parent)
{
    const Change change(this);
    CProcessorItem* item = makeProcessorItem(processor, CRecordHandle(processor));
    parent->insertRow(insertionRow(*parent, recordKey(processor)), item);
    return item;
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
    const CRecordHandle handle = recordHandle(item->data(NodeDataRole));
    if (!handle.cell()) {
        item->setData(QVariant::fromValue(CRecordHandle(processor)), NodeDataRole);
        return;
    }
    handle.cell()->store(processor);
    // The item holds the same handle as before, so it has nothing to announce itself.
    const QModelIndex index = item->index();
    if (index.isValid())
        emit dataChanged(index, index, {NodeDataRole});
}

/// After the processor at `moved` came here from `source`: its record names the new group, and the
/// member lists of both groups follow.
void CProcessorTreeModel::changeMembership(const QPersistentModelIndex& moved,
                                           const QPersistentModelIndex& source)
{
    const QPersistentModelIndex target = moved.parent();
    QStandardItem* item = itemFromIndex(moved);
    ProcessorNode processor = processorRecord(item->data(NodeDataRole));
    processor.groupId =
        nodeType(QModelIndex(target)) == NodeGroup ? target.data(UuidRole).toUuid() : QUuid();
    storeProcessor(item, processor);

    for (const QPersistentModelIndex& parent : {source, target}) {
        if (!parent.isValid() || nodeType(QModelIndex(parent)) != NodeGroup)
            continue;
        auto group = parent.data(NodeDataRole).value<ProcessorGroupNode>();
        const auto isMoved = [&](const ProcessorNode& member) { return member.id == processor.id; };
        auto& members = group.processors;
        members.erase(std::remove_if(members.begin(), members.end(), isMoved), members.end());
        if (parent == target && moved.isValid())
            members.insert(qMin(moved.row(), members.size()), processor);
        itemFromIndex(parent)->setData(QVariant::fromValue(group), NodeDataRole);
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
            adoptRecord(item);
            m_index.setRecord(item, recordHandle(item->data(NodeDataRole)));
        }
    }
    if (concerns(UuidRole) || concerns(NodeTypeRole))
        onRestructured();
}

/// A record that somebody stored plainly moves into a cell, where the work thread can reach it.
void CProcessorTreeModel::adoptRecord(QStandardItem* item)
{
    const QVariant stored = item->data(NodeDataRole);
    if (stored.userType() != qMetaTypeId<ProcessorNode>() || nodeType(*item) != NodeProcessor)
        return;
    const QSignalBlocker blocker(this);
    item->setData(QVariant::fromValue(CRecordHandle(processorRecord(stored))), NodeDataRole);
}

void CProcessorTreeModel::adoptRecords(QStandardItem* item)
{
    adoptRecord(item);
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
