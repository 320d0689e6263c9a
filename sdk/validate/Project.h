#pragma once

#include "Interface/ProcessorNode.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <functional>
#include <mutex>
#include <vector>

/// Returns the identity with this number; the same number gives the same identity.
QUuid identity(uint number);

/// Returns records for projects: "P7", in the group "G100" if that is not 0, and "G100".
/// @{
ProcessorNode processor(uint number, uint group = 0);
ProcessorGroupNode group(uint number);
/// @}

/// Returns a tree as one line, "G100[P1,P2],P3". An online processor is "P1*", and one with an
/// address "P1@10.0.0.1". With `isSorted`, the rows of each parent are sorted.
QString describe(const QList<ProcessorGroupNode>& groups, const QList<ProcessorNode>& processors,
                 bool isSorted = false);

/// The processors and groups that the tree has to show. Thread-safe; no lock is held once a call
/// has returned.
class Project final
{
public:
    void set(const QList<ProcessorGroupNode>& groups, const QList<ProcessorNode>& processors);
    QList<ProcessorGroupNode> groups() const;
    QList<ProcessorNode> processors() const;

    /// Return the empty record where there is none.
    /// @{
    ProcessorNode processor(const QUuid& id) const;
    ProcessorGroupNode group(const QUuid& id) const;
    /// @}

    void add(const ProcessorNode& processor);
    void add(const ProcessorGroupNode& group);

    /// Removes a processor, or a group, whose processors then belong to none.
    void remove(const QUuid& id);

    /// Calls `change` with the record of the processor. Returns false where there is none.
    bool change(const QUuid& id, const std::function<void(ProcessorNode&)>& change);

    /// Returns the tree that shows this project, as describe() does.
    QString describe(bool isSorted = false) const;

private:
    // Each answer is a list of its own: ThreadSanitizer does not see how Qt synchronises the copies
    // of a list that changes in place.
    mutable std::mutex m_mutex;
    std::vector<ProcessorGroupNode> m_groups;
    std::vector<ProcessorNode> m_processors;
};
