#include "Interface/DeviceSetInfo.h"
#include "base/RecordCell.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "tests/support/ReferenceTree.h"
#include "tests/support/Seed.h"
#include "tests/support/TestPanel.h"
#include "tests/support/TreeDump.h"
#include "tests/support/WarningTrap.h"

#include <QAbstractItemModelTester>
#include <QSortFilterProxyModel>
#include <QStandardItem>
#include <QTest>
#include <QTreeView>

#include <random>

namespace {
constexpr quint32 kProcessors = 12; // identities 1 to 12
constexpr quint32 kFirstGroup = 101;
constexpr quint32 kGroups = 4;
constexpr int kOperations = 200;
constexpr int kEvents = 100;

/// One seed, one run: draws a host project, then changes of it and of the tree.
class Dice final
{
public:
    explicit Dice(quint32 seed)
        : m_generator(seed)
    {
    }

    int below(int limit) { return static_cast<int>(m_generator() % static_cast<quint32>(limit)); }
    bool oneIn(int chances) { return below(chances) == 0; }

    QUuid processorId()
    {
        return oneIn(60) ? groupId() : testId(1 + static_cast<quint32>(below(kProcessors)));
    }

    QUuid groupId() { return testId(kFirstGroup + static_cast<quint32>(below(kGroups))); }

    QUuid anyId()
    {
        if (oneIn(40))
            return oneIn(2) ? QUuid() : testId(999);
        return oneIn(3) ? groupId() : processorId();
    }

    QList<QUuid> ids(int limit)
    {
        QList<QUuid> drawn;
        for (int left = below(limit + 1); left > 0; --left)
            drawn.append(anyId());
        return drawn;
    }

    QString name() { return QStringLiteral("n%1").arg(below(500)); }

    ProcessorNode processor()
    {
        static constexpr quint32 addresses[] = {
            0, 1, 2, 3, kNoProcessorAddress, 0x0A000001, 0x0A000002, 0xC0A80001, 0xFFFFFFFF};
        ProcessorNode drawn;
        drawn.id = oneIn(80) ? QUuid() : processorId();
        drawn.name = name();
        drawn.number = below(8) - 1;
        if (!oneIn(3))
            drawn.groupId = oneIn(20) ? testId(998) : groupId();
        drawn.reachedByIp = !oneIn(3);
        drawn.ipAddress = addresses[below(9)];
        drawn.hostAttribute8 = below(1000);
        drawn.online = oneIn(2);
        return drawn;
    }

    ProcessorGroupNode group()
    {
        ProcessorGroupNode drawn;
        drawn.id = oneIn(60) ? QUuid() : oneIn(60) ? processorId() : groupId();
        drawn.name = name();
        drawn.hostAttribute4 = below(1000);
        for (int left = oneIn(4) ? below(3) : 0; left > 0; --left)
            drawn.processors.append(processor());
        return drawn;
    }

    ReferenceProject project()
    {
        ReferenceProject drawn;
        for (int left = below(5); left > 0; --left)
            drawn.groups.append(group());
        for (int left = below(12); left > 0; --left)
            drawn.processors.append(processor());
        return drawn;
    }

private:
    std::mt19937 m_generator;
};

QList<int> pathOf(const QStandardItem* item)
{
    QList<int> path;
    if (!item)
        return {-1};
    for (; item->parent(); item = item->parent())
        path.prepend(item->row());
    return path;
}

/// Returns the differences between the model and the reference; empty without any.
QString difference(const CProcessorTreeModel& model, const ReferenceTree& reference)
{
    const QString line = dumpTree(model);
    if (line != reference.dump())
        return QStringLiteral("tree\n  %1\ninstead of\n  %2").arg(line, reference.dump());
    if (describeTree(model) != reference.describe())
        return QStringLiteral("rows\n%1instead of\n%2")
            .arg(describeTree(model), reference.describe());
    if (model.getAllProcessorCount() != reference.processorCount())
        return QStringLiteral("counts %1").arg(model.getAllProcessorCount());

    QList<QUuid> ids{QUuid(), testId(998), testId(999)};
    for (quint32 n = 1; n <= kProcessors; ++n)
        ids.append(testId(n));
    for (quint32 n = kFirstGroup; n < kFirstGroup + kGroups; ++n)
        ids.append(testId(n));
    for (const QUuid& id : qAsConst(ids)) {
        const QStandardItem* item = model.getItem(id);
        if (pathOf(item) != reference.find(id))
            return QStringLiteral("finds another row for %1").arg(id.toString());
        const auto row = model.findRow(id);
        if (row.has_value() != (item != nullptr))
            return QStringLiteral("threads do not find %1").arg(id.toString());
        if (item
            && (row->type != reference.row(id)->type
                || row->record.cell() != recordHandle(item->data(NodeDataRole)).cell()))
            return QStringLiteral("threads find another row for %1").arg(id.toString());
    }
    return {};
}

/// One random sequence on a fresh tree, and on the reference.
class Sequence final
{
public:
    Sequence(TestPanel& panel, quint32 seed)
        : m_panel(panel)
        , m_dice(seed)
    {
        m_model.initRoot();
        setProject();
        m_panel.host().memberships.clear();
    }

    CProcessorTreeModel& model() { return m_model; }

    /// Returns an empty text on success. With `everyStep` it names the first wrong operation.
    QString run(bool everyStep)
    {
        for (int step = 0; step < kOperations; ++step) {
            const QString before = everyStep ? m_reference.dump() : QString();
            const QString operation = change();
            const QString wrong = !m_wrong.isEmpty() ? m_wrong
                                  : everyStep        ? difference(m_model, m_reference)
                                                     : QString();
            if (!wrong.isEmpty())
                return QStringLiteral("step %1, %2 on\n  %3\n%4")
                    .arg(QString::number(step), operation, before, wrong);
        }
        return difference(m_model, m_reference);
    }

private:
    void setProject()
    {
        m_project = m_dice.project();
        m_panel.host().setProject(m_project.groups, m_project.processors);
        m_panel.host().clearCalls();
    }

    QString change()
    {
        const int kind = m_dice.below(100);
        if (kind < 3) {
            setProject();
            m_model.reset();
            m_reference.reset(m_project);
            return QStringLiteral("reset");
        }
        if (kind < 15) {
            const ProcessorGroupNode group = m_dice.group();
            m_model.AppendGroup(group);
            m_reference.appendGroup(group);
            return QStringLiteral("AppendGroup");
        }
        if (kind < 40) {
            const ProcessorNode processor = m_dice.processor();
            m_model.AppendProcessor(processor);
            m_reference.appendProcessor(processor);
            return QStringLiteral("AppendProcessor");
        }
        if (kind < 48)
            return appendProcessors();
        if (kind < 60) {
            const QUuid id = m_dice.anyId();
            m_model.removeNode(id);
            m_reference.removeNode(id);
            return QStringLiteral("removeNode ") + id.toString();
        }
        if (kind < 64) {
            const QList<QUuid> ids = m_dice.ids(3);
            m_model.removeNodes(ids);
            for (const QUuid& id : ids)
                m_reference.removeNode(id);
            return QStringLiteral("removeNodes");
        }
        if (kind < 75) {
            const QUuid id = m_dice.oneIn(20) ? m_dice.anyId() : m_dice.processorId();
            const ProcessorNode processor = m_dice.processor();
            m_model.updateProcessor(m_model.getItem(id), processor);
            m_reference.updateProcessor(id, processor);
            return QStringLiteral("updateProcessor ") + id.toString();
        }
        if (kind < 87)
            return moveProcessors();
        return edit(kind);
    }

    QString appendProcessors()
    {
        const QList<QUuid> ids = m_dice.ids(4);
        QList<ProcessorNode> records;
        for (const QUuid& id : ids) {
            if (m_project.processor(id).id == id)
                records.append(m_project.processor(id));
        }
        m_model.AppendProcessors(ids);
        m_reference.appendProcessors(records);
        return QStringLiteral("AppendProcessors");
    }

    QString moveProcessors()
    {
        const QUuid target = m_dice.oneIn(3) ? QUuid() : m_dice.groupId();
        const ReferenceTree::Row* row = m_reference.row(target);
        if (row && row->type == NodeProcessor)
            return QStringLiteral("nothing");
        QList<QUuid> ids;
        QList<QPersistentModelIndex> indexes;
        for (const QUuid& id : m_dice.ids(4)) {
            const QStandardItem* item = m_model.getItem(id);
            if (item && !ids.contains(id)) {
                ids.append(id);
                indexes.append(item->index());
            }
        }
        const QList<QPersistentModelIndex> moved = m_model.moveProcessors(indexes, target);
        QList<QUuid> movedIds;
        for (const QPersistentModelIndex& index : moved)
            movedIds.append(index.data(UuidRole).toUuid());
        if (movedIds != m_reference.moveProcessors(ids, target))
            m_wrong = QStringLiteral("moveProcessors returns other rows than it moved");
        checkMemberships();
        return QStringLiteral("moveProcessors");
    }

    /// Compares the moves that were reported to the host.
    void checkMemberships()
    {
        QVector<QPair<QUuid, QUuid>> told;
        for (const FakeHandler::Membership& membership : qAsConst(m_panel.host().memberships)) {
            for (const QUuid& id : membership.processors)
                told.append({id, membership.groupId});
        }
        if (told != m_reference.memberships)
            m_wrong = QStringLiteral("the host was told of other moves");
        m_panel.host().memberships.clear();
        m_reference.memberships.clear();
    }

    /// Changes rows as views and outside code do.
    QString edit(int kind)
    {
        const QUuid id = m_dice.anyId();
        QStandardItem* item = m_model.getItem(id);
        const ReferenceTree::Row* row = m_reference.row(id);
        if (!item || !row || kind >= 99) {
            m_model.updateRootText();
            m_reference.updateRootText();
            return QStringLiteral("updateRootText");
        }
        if (kind < 93) {
            const QString name = m_dice.oneIn(3) ? row->text : m_dice.name();
            m_model.setData(item->index(), name, Qt::DisplayRole);
            m_reference.rename(id, name);
            return QStringLiteral("rename ") + id.toString();
        }
        if (kind < 96 && row->type == NodeProcessor) {
            const ProcessorNode processor = m_dice.processor();
            item->setData(QVariant::fromValue(processor), NodeDataRole);
            m_reference.writeRecord(id, processor);
            return QStringLiteral("a plain record for ") + id.toString();
        }
        if (kind < 98 && row->type != NodeRoot) {
            const QUuid other = m_dice.anyId();
            if (m_dice.oneIn(2))
                item->setData(other, UuidRole);
            else
                m_model.setData(item->index(), other, UuidRole);
            m_reference.writeId(id, other);
            return QStringLiteral("another identity for ") + id.toString();
        }
        m_model.removeAllGroups();
        m_reference.removeAllGroups();
        return QStringLiteral("removeAllGroups");
    }

    TestPanel& m_panel;
    Dice m_dice;
    CProcessorTreeModel m_model;
    ReferenceTree m_reference;
    ReferenceProject m_project;
    QString m_wrong;
};

QByteArray reproduce(quint32 seed, const QString& wrong)
{
    return QStringLiteral("TSA_SEED=%1: %2").arg(QString::number(seed), wrong).toUtf8();
}

} // namespace

class RandomTreeTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldAgreeWithTheReferenceOnRandomOperations();
    void shouldAgreeUnderATesterAProxyAndAView();
    void shouldAgreeWithTheReferenceOnHostEvents();
};

void RandomTreeTest::shouldAgreeWithTheReferenceOnRandomOperations()
{
    TestPanel panel;
    for (const quint32 seed : seeds(2500)) {
        const QString wrong = Sequence(panel, seed).run(false);
        if (!wrong.isEmpty()) {
            const QString where = Sequence(panel, seed).run(true);
            QFAIL(reproduce(seed, where.isEmpty() ? wrong : where).constData());
        }
    }
}

void RandomTreeTest::shouldAgreeUnderATesterAProxyAndAView()
{
    TestPanel panel;
    for (const quint32 seed : seeds(40)) {
        Sequence sequence(panel, seed);
        const QAbstractItemModelTester tester(&sequence.model());
        QSortFilterProxyModel proxy;
        proxy.setSourceModel(&sequence.model());
        proxy.setRecursiveFilteringEnabled(true);
        const QAbstractItemModelTester proxyTester(&proxy);
        QTreeView view;
        view.setModel(&proxy);
        view.expandAll();
        const QString wrong = sequence.run(true);
        QVERIFY2(wrong.isEmpty(), reproduce(seed, wrong).constData());
        QCOMPARE(dumpTree(proxy), dumpTree(sequence.model()));
    }
}

void RandomTreeTest::shouldAgreeWithTheReferenceOnHostEvents()
{
    for (const quint32 seed : seeds(150)) {
        TestPanel panel;
        ReferenceTree reference;
        Dice dice(seed);
        for (int step = 0; step < kEvents; ++step) {
            static constexpr quint32 events[] = {16, 17, 18, 18, 19, 20, 21, 25, 25, 26};
            const quint32 event = events[dice.below(10)];
            if (dice.oneIn(10)) {
                const ReferenceProject project = dice.project();
                panel.host().setProject(project.groups, project.processors);
            }
            const QList<QUuid> ids = event == 17 ? QList<QUuid>{dice.groupId()} : dice.ids(4);
            if (event == 16)
                panel.notify(event);
            else if (event == 19 || event == 21)
                panel.notify<QList<QUuid>>(event, ids);
            else if (event == 26)
                panel.notify<QUuid, SPrjProcessor>(event, ids.value(0), {});
            else
                panel.notify<QUuid>(event, ids.value(0));
            reference.apply(event, ids, {panel.host().groups(), panel.host().processors()});
            const QString wrong = difference(panel.model(), reference);
            QVERIFY2(wrong.isEmpty(),
                     reproduce(seed, QStringLiteral("step %1, event %2: %3")
                                         .arg(QString::number(step), QString::number(event), wrong))
                         .constData());
        }
    }
}

TSA_TEST_MAIN(RandomTreeTest)
#include "tst_randomtree.moc"
