#pragma once

#include "tests/support/TestPanel.h"

#include <QMap>
#include <QStringList>
#include <QVector>

#include <atomic>
#include <mutex>

/// A host whose events are true: it changes the project of a panel's fake host and then tells of
/// it. Its project is made of units, each of one processor and one group that may hold it; every
/// change gives the records a version of their own. The tree has to end as that project.
class TrueHost final
{
public:
    /// What happens to a unit.
    enum Event {
        Reset,
        GroupAdded,
        GroupRemoved,
        Added,
        ListAdded,
        Removed,
        ListRemoved,
        Changed,        // 25
        Moved,          // 25, with another address
        ProjectChanged, // 26
        Warned,         // 39
    };
    static constexpr int kEvents = Warned + 1;

    /// How a unit begins.
    enum Start { Nothing, Grouped, Ungrouped };
    static constexpr int kStarts = Ungrouped + 1;

    /// A processor that event 39 names behind every other one: when the host has been asked for it,
    /// the job of that event is done with those.
    static constexpr quint32 kWatched = 900;

    explicit TrueHost(TestPanel& panel);

    static QUuid groupId(quint32 unit) { return testId(1000 + unit); }
    static QString name(Event event);
    static QString names(const QVector<Event>& events);

    /// The project anew, with unit 1 and those after it as given, and the tree like it. GUI thread.
    void start(const QVector<Start>& units);

    /// Changes the project. Returns false where that cannot happen: what is not there cannot
    /// change. Any thread.
    bool change(Event event, quint32 unit = 1);

    /// Tells of it. Any thread.
    void notify(Event event, quint32 unit = 1);

    /// One after the other; the events that can not happen are left out. Any thread.
    void tell(const QVector<Event>& events, quint32 unit = 1);

    /// Returns whether `events` can happen one after the other to a unit that begins so.
    static bool canHappen(Start start, const QVector<Event>& events);

    /// Processes events until all that was told has taken effect, jobs of the work thread included.
    /// Fails the test and returns false when that does not happen. GUI thread.
    bool settle();

    /// What the rows show instead of the project, by unit; empty when the tree is right. Rows may
    /// follow an event by a little, so events are processed until it is. GUI thread.
    QMap<quint32, QString> differences();

    /// The same as one text.
    QString difference();

private:
    QMap<quint32, QString> differencesNow();

    TestPanel& m_panel;
    std::mutex m_mutex;
    int m_version = 0;
    static int s_settled;
};

/// Compares the tree with the project of a TrueHost, after all it told.
#define VERIFY_TREE_OF(host) \
    do { \
        QVERIFY((host).settle()); \
        const QString difference = (host).difference(); \
        QVERIFY2(difference.isEmpty(), qPrintable(difference)); \
    } while (false)

Q_DECLARE_METATYPE(TrueHost::Event)
Q_DECLARE_METATYPE(TrueHost::Start)
