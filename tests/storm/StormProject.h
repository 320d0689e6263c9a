#pragma once

#include "Interface/ProcessorNode.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QUuid>

#include <mutex>
#include <vector>

class QRandomGenerator;

/// The project of the storm's host. Every operation is one change, or one look, under a mutex of
/// its own, which no call-out ever holds. Any thread.
///
/// Identities come in families. A processor only ever stands in a group of its own family, or in
/// none, so that a change of one family says nothing about another one.
///
/// What no sequence of true events can tell is not done: a group that is gone does not come back
/// under its identity, a processor that a dissolved group set free joins no group again, and an
/// address that a processor has had does not return to it.
class StormProject final
{
public:
    static constexpr int kFamilies = 3;

    /// The project as it is at one moment. Shares no list with any other state: a list of Qt's that
    /// was shared once is written in place without a word to ThreadSanitizer.
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

    /// An identity of the family; null when there is none.
    QUuid anyGroup(int family, quint32 dice) const;
    QUuid anyProcessor(int family, quint32 dice) const;

    // Changes; each returns the identities that it concerns.
    QUuid addGroup(int family, quint32 dice);
    QList<QUuid> addProcessors(int family, int count, quint32 dice);
    QList<QUuid> removeProcessors(int family, int count, quint32 dice);
    bool removeProcessor(const QUuid& id);
    QUuid dissolveGroup(int family, quint32 dice);
    QUuid changeRecord(int family, bool name, quint32 dice);
    QUuid changeAddress(int family, quint32 dice);
    QUuid chooseCurrent(int family, quint32 dice);
    void removeAllGroups();
    bool renameProcessor(const QUuid& id, const QString& name);
    bool renameGroup(const QUuid& id, const QString& name);

    /// What the panel reports when it has moved rows; null `group` is the root.
    void storeMembership(const QUuid& group, const QList<QUuid>& processors);

private:
    ProcessorNode* find(const QUuid& id);
    QList<QUuid> groupsOf(int family) const;
    QList<QUuid> processorsOf(int family) const;
    QUuid pickGroup(int family, const QUuid& processor, QRandomGenerator& random) const;
    quint32 freshAddress();

    mutable std::mutex m_mutex;
    State m_state;
    QSet<QUuid> m_freed;       // by dissolved groups
    QSet<QUuid> m_addressless; // once
    quint32 m_lastAddress = 0;
    uint m_lastGroup = 0;
    int m_lastName = 0;
};

/// The family of an identity; -1 for one that is nobody's.
int stormFamily(const QUuid& id);

/// A short name for an identity: "P0.7", "G2.1", "nobody".
QString stormLabel(const QUuid& id);
QString stormLabels(const QList<QUuid>& ids);
