#pragma once

#include "Interface/ProcessorNode.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QUuid>

#include <mutex>
#include <vector>

class QRandomGenerator;

/// The project of the storm's host. Every operation is one change or one query under the mutex of
/// the project, which is never held during a call-out. Thread-safe.
///
/// Each identity belongs to a family. A processor is always in a group of its own family or in
/// none, so that a change of one family does not affect another one.
///
/// Changes that no sequence of true events can express are never made: a removed group does not
/// come back under its identity, a processor of a dissolved group does not join a group again, and
/// a processor does not get an address back that it had before.
class StormProject final
{
public:
    static constexpr int kFamilies = 3;

    /// The project at one moment. Shares no list with another state, because ThreadSanitizer does
    /// not see how Qt synchronises implicitly shared lists.
    struct State
    {
        std::vector<ProcessorGroupNode> groups; ///< In the order of their creation.
        std::vector<ProcessorNode> processors;  ///< In the order of their addition.
        QUuid current;

        ProcessorGroupNode group(const QUuid& id) const;
        ProcessorNode processor(const QUuid& id) const;
    };

    State state() const;
    ProcessorGroupNode group(const QUuid& id) const;
    ProcessorNode processor(const QUuid& id) const;
    QUuid current() const;

    /// Return an identity of the family, or null if there is none.
    QUuid anyGroup(int family, quint32 dice) const;
    QUuid anyProcessor(int family, quint32 dice) const;

    // Changes. Each returns the identities that it concerns.
    QUuid addGroup(int family, quint32 dice);
    QList<QUuid> addProcessors(int family, int count, quint32 dice);
    QList<QUuid> removeProcessors(int family, int count, quint32 dice);
    bool removeProcessor(const QUuid& id);
    QUuid dissolveGroup(int family, quint32 dice);
    bool dissolveGroup(const QUuid& id);
    QUuid changeRecord(int family, bool name, quint32 dice);
    QUuid changeAddress(int family, quint32 dice);
    QUuid chooseCurrent(int family, quint32 dice);
    void removeAllGroups();
    bool renameProcessor(const QUuid& id, const QString& name);
    bool renameGroup(const QUuid& id, const QString& name);

    /// Stores a move that the panel has reported, unless the group is no longer there. A null
    /// `group` is the root.
    void storeMembership(const QUuid& group, const QList<QUuid>& processors);

private:
    ProcessorNode* find(const QUuid& id);
    bool dissolve(const QUuid& group);
    QList<QUuid> groupsOf(int family) const;
    QList<QUuid> processorsOf(int family) const;
    QUuid pickGroup(int family, const QUuid& processor, QRandomGenerator& random) const;
    quint32 freshAddress();

    mutable std::mutex m_mutex;
    State m_state;
    QSet<QUuid> m_freed;       // from dissolved groups
    QSet<QUuid> m_addressless; // had no address at some time
    quint32 m_lastAddress = 0;
    uint m_lastGroup = 0;
    int m_lastName = 0;
};

/// Returns the family of an identity, or -1 if it belongs to none.
int stormFamily(const QUuid& id);

/// Returns a short name of an identity: "P0.7", "G2.1", "nobody".
QString stormLabel(const QUuid& id);
QString stormLabels(const QList<QUuid>& ids);
