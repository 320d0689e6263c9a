#include "tests/support/TrueHost.h"

#include "plugin/TargetSelectArea.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "tests/support/HostThread.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QSet>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <optional>

namespace {

/// How long rows may take to follow after the events have.
constexpr auto kLatest = std::chrono::seconds(1);

using Rows = QMap<quint32, QStringList>;

quint32 number(const QUuid& id)
{
    return id.data1;
}

QString rowOf(const ProcessorGroupNode& group, const QUuid& parent, const QString& text)
{
    return QStringLiteral("group %1 in %2 \"%3\" named \"%4\"")
        .arg(number(group.id))
        .arg(number(parent))
        .arg(text, group.name);
}

QString rowOf(const ProcessorNode& processor, const QUuid& parent, const QString& text)
{
    return QStringLiteral("processor %1 in %2 \"%3\" named \"%4\" version %5 address %6 group %7")
        .arg(number(processor.id))
        .arg(number(parent))
        .arg(text, processor.name)
        .arg(processor.hostAttribute5)
        .arg(processor.ipAddress, 0, 16)
        .arg(number(processor.groupId));
}

void collect(const QAbstractItemModel& model, const QModelIndex& parent, Rows& rows)
{
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        const QUuid above = parent.data(UuidRole).toUuid();
        const QUuid id = index.data(UuidRole).toUuid();
        const QString text = index.data().toString();
        const QVariant record = index.data(NodeDataRole);
        if (!parent.isValid())
            rows[0].append(text);
        else if (index.data(NodeTypeRole).toInt() == NodeGroup)
            rows[number(id) % 1000].append(rowOf(record.value<ProcessorGroupNode>(), above, text));
        else
            rows[number(id) % 1000].append(rowOf(record.value<ProcessorNode>(), above, text));
        collect(model, index, rows);
    }
}

Rows rowsOf(const QAbstractItemModel& model)
{
    Rows rows;
    collect(model, QModelIndex(), rows);
    return rows;
}

Rows rowsOf(const FakeHandler& host)
{
    Rows rows;
    const auto groups = host.groups();
    const auto processors = host.processors();
    rows[0].append(QStringLiteral("All processors(%1)").arg(processors.size()));
    for (const ProcessorGroupNode& group : groups)
        rows[number(group.id) % 1000].append(rowOf(group, QUuid(), group.name));
    for (const ProcessorNode& processor : processors)
        rows[number(processor.id) % 1000].append(
            rowOf(processor, processor.groupId, processor.name));
    return rows;
}

/// What a unit is made of, while events happen to it.
struct Unit
{
    bool group = false;
    bool processor = false;
};

/// Returns whether `event` can happen to `unit`, which becomes what the event makes of it.
bool happens(TrueHost::Event event, Unit& unit)
{
    switch (event) {
    case TrueHost::Reset:
        return true;
    case TrueHost::GroupAdded:
        return !std::exchange(unit.group, true);
    case TrueHost::GroupRemoved:
        return std::exchange(unit.group, false);
    case TrueHost::Added:
    case TrueHost::ListAdded:
        return !std::exchange(unit.processor, true);
    case TrueHost::Removed:
    case TrueHost::ListRemoved:
        return std::exchange(unit.processor, false);
    default:
        return unit.processor;
    }
}

template <typename Record>
std::optional<Record> found(const QUuid& id, const QList<Record>& records)
{
    const auto it = std::find_if(records.begin(), records.end(),
                                 [&](const Record& record) { return record.id == id; });
    return it == records.end() ? std::nullopt : std::optional(*it);
}

} // namespace

int TrueHost::s_settled = 100;

TrueHost::TrueHost(TestPanel& panel)
    : m_panel(panel)
{
}

QString TrueHost::name(Event event)
{
    static const char* const names[] = {"16", "17", "20 group", "18",         "19", "20",
                                        "21", "25", "25 moved", "26 changed", "39"};
    return QString::fromLatin1(names[event]);
}

QString TrueHost::names(const QVector<Event>& events)
{
    QStringList all;
    for (const Event event : events)
        all.append(name(event));
    return all.join(QLatin1String(", "));
}

void TrueHost::start(const QVector<Start>& units)
{
    QList<ProcessorGroupNode> groups;
    QList<ProcessorNode> processors{testProcessor(kWatched)};
    for (int i = 0; i < units.size(); ++i) {
        const auto unit = static_cast<quint32>(i + 1);
        if (units.at(i) == Grouped)
            groups.append(testGroup(number(groupId(unit))));
        if (units.at(i) != Nothing)
            processors.append(
                testProcessor(unit, units.at(i) == Grouped ? number(groupId(unit)) : 0));
    }
    m_panel.host().setProject(groups, processors);
    m_panel.notify(16);
}

bool TrueHost::canHappen(Start start, const QVector<Event>& events)
{
    Unit unit{start == Grouped, start != Nothing};
    return std::all_of(events.begin(), events.end(),
                       [&](Event event) { return happens(event, unit); });
}

bool TrueHost::change(Event event, quint32 unit)
{
    const std::lock_guard guard(m_mutex);
    FakeHandler& host = m_panel.host();
    const auto group = found(groupId(unit), host.groups());
    auto processor = found(testId(unit), host.processors());
    Unit made{group.has_value(), processor.has_value()};
    if (!happens(event, made))
        return false;

    const QString name = QStringLiteral("%1 v%2").arg(unit).arg(++m_version);
    switch (event) {
    case GroupAdded:
        host.setGroup(testGroup(number(groupId(unit)), name));
        return true;
    case GroupRemoved:
        host.removeGroup(groupId(unit));
        return true;
    case Removed:
    case ListRemoved:
        host.removeProcessor(testId(unit));
        return true;
    case Added:
    case ListAdded:
        processor = testProcessor(unit, group ? number(groupId(unit)) : 0);
        break;
    case Moved:
        processor->reachedByIp = true;
        processor->ipAddress = 0x0A000000 + static_cast<quint32>(m_version);
        break;
    default:
        break;
    }
    if (!processor)
        return true;
    // Monitor states leave the text of a row alone.
    if (event != Warned)
        processor->name = name;
    processor->hostAttribute5 = m_version;
    host.setProcessor(*processor);
    return true;
}

void TrueHost::notify(Event event, quint32 unit)
{
    const QUuid id = testId(unit);
    switch (event) {
    case Reset:
        m_panel.notify(16);
        break;
    case GroupAdded:
        m_panel.notify<QUuid>(17, groupId(unit));
        break;
    case GroupRemoved:
        m_panel.notify<QUuid>(20, groupId(unit));
        break;
    case Added:
        m_panel.notify<QUuid>(18, id);
        break;
    case ListAdded:
        m_panel.notify<QList<QUuid>>(19, {id});
        break;
    case Removed:
        m_panel.notify<QUuid>(20, id);
        break;
    case ListRemoved:
        m_panel.notify<QList<QUuid>>(21, {id});
        break;
    case Changed:
    case Moved:
        m_panel.notify<QUuid>(25, id);
        break;
    case ProjectChanged:
        m_panel.notify<QUuid, SPrjProcessor>(26, id, SPrjProcessor());
        break;
    case Warned:
        m_panel.notify<QList<QUuid>>(39, {id, testId(kWatched)});
        break;
    }
}

void TrueHost::tell(const QVector<Event>& events, quint32 unit)
{
    for (const Event event : events) {
        if (change(event, unit))
            notify(event, unit);
    }
}

bool TrueHost::settle()
{
    // Comes behind all jobs that were posted before.
    const int last = ++s_settled;
    m_panel.notify<int>(0, last);
    QTimer wake;
    wake.start(50);
    const QDeadlineTimer limit(kSoon);
    while (m_panel.area().detectStrategy() != last && !limit.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    if (m_panel.area().detectStrategy() == last)
        return true;
    QTest::qFail("what was told does not take effect", __FILE__, __LINE__);
    return false;
}

QMap<quint32, QString> TrueHost::differences()
{
    QTimer wake;
    wake.start(20);
    const QDeadlineTimer limit(kLatest);
    auto all = differencesNow();
    while (!all.isEmpty() && !limit.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        all = differencesNow();
    }
    return all;
}

QString TrueHost::difference()
{
    return QStringList(differences().values()).join(QLatin1Char('\n'));
}

QMap<quint32, QString> TrueHost::differencesNow()
{
    Rows shown = rowsOf(m_panel.model());
    Rows expected = rowsOf(m_panel.host());
    QMap<quint32, QString> all;
    QSet<quint32> units;
    for (const Rows* rows : {&shown, &expected}) {
        for (auto row = rows->cbegin(); row != rows->cend(); ++row)
            units.insert(row.key());
    }
    for (const quint32 unit : qAsConst(units)) {
        QStringList& left = shown[unit];
        QStringList& right = expected[unit];
        left.sort();
        right.sort();
        if (left != right)
            all.insert(unit,
                       QStringLiteral("shown: %1\ntrue:  %2")
                           .arg(left.join(QLatin1String("; ")), right.join(QLatin1String("; "))));
    }
    return all;
}
