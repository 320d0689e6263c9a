#pragma once

#include "Interface/ProcessorNode.h"

#include <QPair>
#include <QString>
#include <QVector>

#include <variant>
#include <vector>

class QAbstractItemModel;

/// The project as the host answers for it. An identity that it does not know has a default record,
/// which is no answer.
struct ReferenceProject
{
    QList<ProcessorGroupNode> groups;
    QList<ProcessorNode> processors;

    ProcessorGroupNode group(const QUuid& id) const;
    ProcessorNode processor(const QUuid& id) const;
};

/// A second opinion on the processor tree: nested lists, searched and filled the slow and obvious
/// way, with no code of the product's. Tests apply the same changes to both and compare.
class ReferenceTree final
{
public:
    struct Row
    {
        EPrcTreeNodeType type = NodeRoot;
        QUuid id;
        QString text;
        std::variant<std::monostate, ProcessorGroupNode, ProcessorNode> record;
        std::vector<Row> children;

        /// Returns the record, a default one if the row has none of this type.
        template <typename Record>
        Record recordAs() const
        {
            const auto* found = std::get_if<Record>(&record);
            return found ? *found : Record();
        }
    };

    /// A root without rows, counting 0.
    ReferenceTree();

    /// What host event `event` (16 to 21, 25, 26) about `ids` does to the tree. The events about
    /// one row take the first identity; a missing one counts as null, as an argument of another
    /// type does.
    void apply(quint32 event, const QList<QUuid>& ids, const ReferenceProject& project);

    void reset(const ReferenceProject& project);
    void appendGroup(const ProcessorGroupNode& group);
    void appendProcessor(const ProcessorNode& processor);
    void appendProcessors(const QList<ProcessorNode>& processors);
    void removeNode(const QUuid& id);
    void updateProcessor(const QUuid& id, const ProcessorNode& processor);
    void removeAllGroups();
    void rename(const QUuid& id, const QString& text);
    void updateRootText();

    /// Outside code writes into the row of `id`.
    void writeRecord(const QUuid& id, const ProcessorNode& processor);
    void writeId(const QUuid& id, const QUuid& other);

    /// Moves the processor rows of `ids`, one after the other; the moved ones, in that order.
    QList<QUuid> moveProcessors(const QList<QUuid>& ids, const QUuid& target);

    const Row& root() const { return m_root; }
    int processorCount() const;

    /// Rows from the root's first level down to the first row of `id`, depth first: empty for the
    /// root itself, {-1} for none.
    QList<int> find(const QUuid& id) const;
    const Row* row(const QUuid& id) const;

    /// Processor and new group of every move so far that the host has to be told of, in order.
    QVector<QPair<QUuid, QUuid>> memberships;

    /// The same line as dumpTree() of a model in the same state.
    QString dump() const;

    /// Everything that the rows say: kinds, identities, texts and records, one row a line.
    QString describe() const;

private:
    /// The host tells of the end of `ids`: those that a fill left out for want of them have a place
    /// now, or are counted no more.
    void forget(const QList<QUuid>& ids, const ReferenceProject& project);

    void dropLeftOut(const QUuid& processor);

    Row* at(const QList<int>& path);
    Row* parentFor(const QUuid& groupId);
    bool place(const ProcessorNode& processor);
    bool moveOne(const QList<int>& path, const QList<int>& targetPath);
    void setRootCount(int count);

    Row m_root;
    QVector<QPair<QUuid, QUuid>> m_leftOut; ///< By the last fill: processor and group.
};

/// The same lines for a model.
QString describeTree(const QAbstractItemModel& model);
