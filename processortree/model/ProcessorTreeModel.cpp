#include "processortree/model/ProcessorTreeModel.h"

#include "Interface/HostEvents.h"
#include "base/HostAnswer.h"
#include "base/MetaTypes.h"
#include "base/NodeType.h"
#include "base/TargetSelectHandler.h"
#include "processortree/model/ProcessorItem.h"
#include "processortree/model/ProcessorTreeModelChange.h"
#include "processortree/model/RowDescription.h"
#include "processortree/model/TreeFill.h"
#include "processortree/model/TreeWalk.h"

#include <QScopedValueRollback>

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
        m_model->m_order.clear();
    }

    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;

    /// Those who hear of the reset may throw.
    ~Batch() noexcept(false)
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
    connect(this, &QAbstractItemModel::rowsRemoved, this, &CProcessorTreeModel::onRowsRemoved);
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
    if (role == Qt::AccessibleDescriptionRole && index.isValid() && !stored.isValid())
        return rowDescription(index);
    return stored;
}

bool CProcessorTreeModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || !value.isValid())
        return false;
    // Whoever hears of a change may take the row away.
    const QPersistentModelIndex row(index);
    if (role != Qt::DisplayRole)
        return QStandardItemModel::setData(index, value, role) && row.isValid();

    QStandardItem* item = itemFromIndex(index);
    const QString name = value.toString();
    const auto type = nodeType(index);
    if (item && type == NodeProcessor) {
        if (processorRecord(item->data(NodeDataRole)).name != name)
            modifyProcessor(item, [&name](ProcessorNode& processor) { processor.name = name; });
    } else if (item && type == NodeGroup) {
        auto group = item->data(NodeDataRole).value<ProcessorGroupNode>();
        if (group.name != name) {
            group.name = name;
            item->setData(QVariant::fromValue(group), NodeDataRole);
        }
    }
    return row.isValid() && QStandardItemModel::setData(row, value, Qt::DisplayRole)
           && row.isValid();
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
    m_isFilled = false;
    m_index.rebuild(nullptr);
    clear();
    // Whoever hears of it may have made one.
    if (!m_root)
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

QList<QUuid> CProcessorTreeModel::getChildProcessor(const QModelIndex& index) const
{
    QList<QUuid> found;
    if (index.isValid())
        collectProcessors(index, found);
    return found;
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

void CProcessorTreeModel::reset()
{
    // Without a handler an empty tree is all that can be said to be right.
    if (!m_root || (m_root->hasChildren() && !GetTargetSelectHandler()))
        return;
    QScopedValueRollback<bool> filled(m_isFilled, false);
    // The host answers before the reset begins, so that it may look at the tree or raise events.
    // Both lists are to come from one handler.
    QList<ProcessorNode> processors;
    QList<ProcessorGroupNode> groups;
    const HandlerPlace::CPanelWatch panel;
    bool isCurrent = false;
    for (int attempt = 0; attempt < kMostAttempts && !isCurrent && !panel.isOver(); ++attempt) {
        const std::weak_ptr<IAbstractControlInterface> source = HandlerPlace::current();
        processors = askHost(&Host::GetAllProcessorNodes);
        if (!panel.isOver())
            groups = askHost(&Host::GetAllGroupNodes);
        isCurrent = HandlerPlace::isCurrent(source);
    }
    if (panel.isOver() || !m_root || (m_root->hasChildren() && !GetTargetSelectHandler()))
        return;

    m_isFilled = true;
    filled.commit();
    const Batch batch(this);
    const int count = processors.size();
    if (!fill(groups, processors)) {
        dropRepeats(groups, processors);
        fill(groups, processors);
    }
    setRootCount(count);
}

CProcessorItem* CProcessorTreeModel::AppendGroup(const ProcessorGroupNode& group)
{
    return m_root ? insertGroup(group, groupCount()) : nullptr;
}

void CProcessorTreeModel::AppendProcessor(const ProcessorNode& processor)
{
    if (QStandardItem* parent = groupItem(processor.groupId)) {
        m_isFilled = true;
        insertProcessor(processor, parent);
        updateRootText();
    }
}

void CProcessorTreeModel::AppendProcessors(const QList<QUuid>& processors)
{
    const HandlerPlace::CPanelWatch panel;
    QList<ProcessorNode> records;
    for (const QUuid& uuid : processors) {
        if (panel.isOver())
            return;
        const auto answer = askForProcessor(uuid, HostEvents::ProcessorsAdded::number);
        if (answer.record())
            records.append(*answer.record());
    }
    if (panel.isOver())
        return;

    const Batch batch(this);
    bool added = false;
    for (const ProcessorNode& processor : qAsConst(records)) {
        if (QStandardItem* parent = groupItem(processor.groupId)) {
            QStandardItem* item = insertProcessor(processor, parent);
            indexRow(item);
            added = true;
        } else {
            m_leftOut.append({processor.id, processor.groupId});
        }
    }
    if (added)
        updateRootText();
}

void CProcessorTreeModel::removeNode(const QUuid& uuid)
{
    const CIdentityTable::Entry* known = m_index.entry(uuid);
    QStandardItem* item = known ? known->item : nullptr;
    if (!item || !item->parent())
        return;
    const auto type = known->row.type;
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

/// Replaces all rows below the root. Returns false, and leaves rows that have to go again, when an
/// identity is null or stands twice. Within a batch.
bool CProcessorTreeModel::fill(const QList<ProcessorGroupNode>& groups,
                               const QList<ProcessorNode>& processors)
{
    // One large block, taken while few small ones are free: those that rows leave behind are as
    // large as those that the new rows need, unless the allocator has joined them for this one.
    CIdentityIndex::Rows known;
    known.reserve(static_cast<std::size_t>(groups.size())
                  + static_cast<std::size_t>(processors.size()));
    // Before the rows go, so that their records go with them.
    m_index.rebuild(nullptr);
    m_root->removeRows(0, m_root->rowCount());
    m_root->removeColumns(0, m_root->columnCount());
    m_index.rebuild(m_root);
    m_leftOut.clear();
    fillTree(*m_root, groups, processors, known, m_leftOut);
    return m_index.add(std::move(known));
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
    // Whoever hears of the row may take it away.
    for (int last = m_root ? m_root->rowCount() - 1 : -1; last >= 0; --last) {
        if (m_root->child(last) == item)
            return item;
    }
    return nullptr;
}

CProcessorItem* CProcessorTreeModel::insertProcessor(const ProcessorNode& processor,
                                                     QStandardItem* parent)
{
    const Change change(this);
    const CRecordHandle record(processor);
    CProcessorItem* item = makeProcessorItem(processor, record);
    const CIdentityTable::Entry made{processor.id, item, {NodeProcessor, record}};
    const QScopedValueRollback making(m_made, &made);
    parent->insertRow(m_order.insertionRow(*parent, recordKey(processor)), item);
    return item;
}

/// Takes up the row that the model has just made, of which nothing need be read again.
void CProcessorTreeModel::indexMade(const QStandardItem& parent, int row)
{
    m_order.onInserted(parent, row, m_made->row.record.cell()->placedKey());
    if (!m_index.add(*m_made))
        m_rebuildDue = true;
}

/// Takes up a row that somebody else made, or one inserted while the model's signals are blocked.
void CProcessorTreeModel::indexRow(QStandardItem* item)
{
    m_order.onInserted(*item->parent(), item->row(), item->row());
    if (!m_index.add(item))
        m_rebuildDue = true;
}

void CProcessorTreeModel::setRootCount(int count)
{
    m_rootText = QStringLiteral("%1(%2)").arg(tr("All processors"), QString::number(count));
    m_rootCount = count;
    m_root->setText(m_rootText);
}

/// Returns whether a search from the root reaches the children of `parent`.
bool CProcessorTreeModel::isSearched(const QStandardItem* parent) const
{
    while (parent && parent != m_root && nodeType(*parent) == NodeGroup)
        parent = parent->parent();
    return parent && parent == m_root;
}

void CProcessorTreeModel::onRowsInserted(const QModelIndex& parent, int first, int last)
{
    const QStandardItem* item = parent.isValid() ? itemFromIndex(parent) : invisibleRootItem();
    const bool areSearched = isSearched(item);
    for (int row = first; row <= last; ++row) {
        QStandardItem* child = item->child(row);
        if (!child)
            continue;
        if (m_made && m_made->item == child) {
            if (areSearched)
                indexMade(*item, row);
            continue;
        }
        adoptRecords(child);
        if (areSearched)
            indexRow(child);
    }
    if (m_rebuildDue)
        onRestructured();
    // They may stand below a row that is about to be removed.
    m_rebuildDue = m_removals > 0;
}

void CProcessorTreeModel::onRowsAboutToBeRemoved(const QModelIndex& parent, int first, int last)
{
    ++m_removals;
    const QStandardItem* item = parent.isValid() ? itemFromIndex(parent) : invisibleRootItem();
    m_order.onAboutToBeRemoved(*item, first, last);
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

void CProcessorTreeModel::onRowsRemoved()
{
    --m_removals;
    if (m_rebuildDue)
        onRestructured();
}

void CProcessorTreeModel::onRestructured()
{
    // Rows that are about to be removed stand in the tree still.
    m_rebuildDue = m_removals > 0;
    m_index.rebuild(m_root);
    m_order.clear();
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
