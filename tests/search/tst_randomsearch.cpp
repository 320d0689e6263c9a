// Random changes of the tree and random texts, compared with a search of the whole tree and with a
// list that is rebuilt after each change.

#include "base/RecordCell.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "search/ProcessorFilterModel.h"
#include "search/ProcessorFilterProxyModel.h"
#include "tests/support/Seed.h"
#include "tests/support/TestPanel.h"
#include "tests/support/TreeDump.h"
#include "tests/support/WarningTrap.h"

#include <QListView>
#include <QRegExp>
#include <QSet>
#include <QStandardItem>
#include <QTest>

#include <algorithm>
#include <memory>
#include <random>
#include <utility>
#include <vector>

namespace {
constexpr int kSteps = 150;
constexpr quint32 kProcessors = 14; // with the identities 1 to 14
constexpr quint32 kFirstGroup = 101;
constexpr quint32 kGroups = 4;

/// Applies the search rules to each row of the tree.
class Oracle final
{
public:
    Oracle(const CProcessorTreeModel& tree, const QString& text)
        : m_tree(tree)
        , m_text(text)
        , m_name(text, Qt::CaseInsensitive, QRegExp::FixedString)
    {
        visit({});
        std::stable_sort(m_found.begin(), m_found.end(), [](const Found& left, const Found& right) {
            return left.first < right.first;
        });
    }

    /// Returns the same format as dumpTree() for the filter.
    QString dump() const { return dump({}); }

    QModelIndexList list() const
    {
        QModelIndexList rows;
        for (const Found& found : m_found)
            rows.append(found.second);
        return rows;
    }

private:
    using Found = std::pair<int, QModelIndex>;

    static ProcessorNode record(const QModelIndex& index)
    {
        return index.data(NodeDataRole).value<ProcessorNode>();
    }

    bool accepts(const QModelIndex& index) const
    {
        if (m_text.isEmpty())
            return false;
        const ProcessorNode processor = record(index);
        const quint32 address = processor.ipAddress;
        const QString shown = processor.reachedByIp ? QStringLiteral("%1.%2.%3.%4")
                                                          .arg(address >> 24)
                                                          .arg((address >> 16) & 0xFF)
                                                          .arg((address >> 8) & 0xFF)
                                                          .arg(address & 0xFF)
                                                    : QString::number(qint64{processor.number} + 1);
        return shown.indexOf(m_text) >= 0 || index.data().toString().contains(m_name);
    }

    bool isVisible(const QModelIndex& index) const
    {
        if (accepts(index))
            return true;
        for (int row = 0; row < m_tree.rowCount(index); ++row) {
            if (isVisible(m_tree.index(row, 0, index)))
                return true;
        }
        return false;
    }

    QModelIndexList visibleRows(const QModelIndex& parent) const
    {
        QModelIndexList rows;
        for (int row = 0; row < m_tree.rowCount(parent); ++row) {
            const QModelIndex index = m_tree.index(row, 0, parent);
            if (isVisible(index))
                rows.append(index);
        }
        return rows;
    }

    void visit(const QModelIndex& parent)
    {
        for (const QModelIndex& index : visibleRows(parent)) {
            if (!visibleRows(index).isEmpty())
                visit(index);
            else if (index.data(NodeTypeRole).toInt() == NodeProcessor)
                m_found.emplace_back(record(index).number, index);
        }
    }

    QString dump(const QModelIndex& parent) const
    {
        QStringList rows;
        for (const QModelIndex& index : visibleRows(parent)) {
            QString text = index.data().toString();
            if (index.data(NodeTypeRole).toInt() != NodeProcessor)
                text += QLatin1Char('[') + dump(index) + QLatin1Char(']');
            rows.append(text);
        }
        return rows.join(QLatin1Char(','));
    }

    const CProcessorTreeModel& m_tree;
    QString m_text;
    QRegExp m_name;
    std::vector<Found> m_found;
};

/// The signals that a list must emit, derived from a comparison at each signal of a filter whose
/// rows are all mapped: '-' for lost and '+' for found processors since the last call.
class EagerList final : public QObject
{
public:
    explicit EagerList(QAbstractItemModel& filter)
        : m_filter(filter)
    {
        connect(&filter, &QAbstractItemModel::rowsInserted, this, &EagerList::compare);
        connect(&filter, &QAbstractItemModel::rowsRemoved, this, &EagerList::compare);
        const auto read = [this] { m_processors = processors({}); };
        connect(&filter, &QAbstractItemModel::modelReset, this, read);
        connect(&filter, &QAbstractItemModel::layoutChanged, this, read);
        connect(&filter, &QAbstractItemModel::dataChanged, this, read);
        read();
    }

    QString takeHeard()
    {
        QString heard;
        if (std::exchange(m_haveGone, false))
            heard += QLatin1Char('-');
        if (std::exchange(m_haveCome, false))
            heard += QLatin1Char('+');
        return heard;
    }

private:
    QSet<QUuid> processors(const QModelIndex& parent) const
    {
        QSet<QUuid> found;
        for (int row = 0; row < m_filter.rowCount(parent); ++row) {
            const QModelIndex index = m_filter.index(row, 0, parent);
            if (index.data(NodeTypeRole).toInt() == NodeProcessor)
                found.insert(index.data(UuidRole).toUuid());
            found += processors(index);
        }
        return found;
    }

    void compare()
    {
        const QSet<QUuid> before = std::exchange(m_processors, processors({}));
        m_haveGone |= !(before - m_processors).isEmpty();
        m_haveCome |= !(m_processors - before).isEmpty();
    }

    QAbstractItemModel& m_filter;
    QSet<QUuid> m_processors;
    bool m_haveGone = false;
    bool m_haveCome = false;
};

class Sequence final
{
public:
    Sequence(TestPanel& panel, quint32 seed)
        : m_panel(panel)
        , m_generator(seed)
    {
        m_tree.initRoot();
        m_filter.setSourceModel(&m_tree);
        m_list.setSourceModel(&m_filter);
        m_otherFilter.setSourceModel(&m_tree);
        m_eager = std::make_unique<EagerList>(m_otherFilter);
        m_view.setModel(&m_list);
        QObject::connect(&m_list, &QAbstractItemModel::modelReset, &m_list, [this] { ++m_resets; });
        QObject::connect(&m_list, &CProcessorFilterModel::rowsAdded, &m_list,
                         [this] { m_heard += QLatin1Char('+'); });
        QObject::connect(&m_list, &CProcessorFilterModel::rowsRemed, &m_list,
                         [this] { m_heard += QLatin1Char('-'); });
        for (quint32 n = 0; n < kGroups; ++n)
            m_tree.AppendGroup(testGroup(kFirstGroup + n));
    }

    /// Returns the first error, or an empty text.
    QString run()
    {
        for (int step = 0; step < kSteps; ++step) {
            const QString operation = change();
            QString wrong = wrongSignals();
            // Not after each change, because rows that nobody read must be correct, too.
            if (wrong.isEmpty() && oneIn(2))
                wrong = wrongRows();
            if (!wrong.isEmpty())
                return QStringLiteral("step %1, %2, text '%3': %4")
                    .arg(QString::number(step), operation, m_text, wrong);
        }
        return wrongRows();
    }

private:
    int below(int limit) { return static_cast<int>(m_generator() % static_cast<quint32>(limit)); }
    bool oneIn(int chances) { return below(chances) == 0; }
    QUuid processorId() { return testId(1 + static_cast<quint32>(below(kProcessors))); }
    QUuid groupId() { return testId(kFirstGroup + static_cast<quint32>(below(kGroups))); }

    QString name()
    {
        static const QStringList names{QStringLiteral("LAB-3"), QStringLiteral("lab 10"),
                                       QStringLiteral("stage"), QStringLiteral("1.2"),
                                       QStringLiteral("Küche"), QStringLiteral("G102"),
                                       QStringLiteral("İz"),    QString()};
        return names.at(below(names.size()));
    }

    QString text()
    {
        static const QStringList texts{QString(),
                                       QStringLiteral("1"),
                                       QStringLiteral("10"),
                                       QStringLiteral("."),
                                       QStringLiteral("10.0"),
                                       QStringLiteral("2.1"),
                                       QStringLiteral("ab"),
                                       QStringLiteral("A"),
                                       QStringLiteral("kü"),
                                       QStringLiteral("G1"),
                                       QStringLiteral("all"),
                                       QStringLiteral("-"),
                                       QStringLiteral("İ"),
                                       QStringLiteral("9"),
                                       QStringLiteral("nowhere")};
        return texts.at(below(texts.size()));
    }

    ProcessorNode processor(const QUuid& id)
    {
        static constexpr quint32 addresses[] = {kNoProcessorAddress, 0x0A000001, 0x0A00000A,
                                                0xC0A80114, 0};
        ProcessorNode drawn;
        drawn.id = id;
        drawn.name = name();
        drawn.number = below(14) - 2;
        drawn.groupId = oneIn(3) ? QUuid() : groupId();
        drawn.reachedByIp = oneIn(2);
        drawn.ipAddress = addresses[below(5)];
        return drawn;
    }

    void setProject()
    {
        QList<ProcessorGroupNode> groups;
        QList<ProcessorNode> processors;
        for (quint32 n = 0; n < kGroups; ++n)
            groups.append(testGroup(kFirstGroup + n));
        for (quint32 n = 1; n <= kProcessors; ++n) {
            if (!oneIn(3))
                processors.append(processor(testId(n)));
        }
        m_panel.host().setProject(groups, processors);
    }

    QString change()
    {
        QStandardItem* item = m_tree.getItem(oneIn(5) ? groupId() : processorId());
        const int kind = below(100);
        if (kind < 25) {
            m_text = text();
            m_filter.setFilterText(m_text);
            m_otherFilter.setFilterText(m_text);
            return QStringLiteral("another text");
        }
        if (kind < 35) {
            const QUuid id = processorId();
            if (!m_tree.getItem(id))
                m_tree.AppendProcessor(processor(id));
            return QStringLiteral("AppendProcessor");
        }
        if (kind < 40) {
            m_tree.removeNode(processorId());
            return QStringLiteral("removeNode");
        }
        if (kind < 42) {
            const QUuid id = groupId();
            m_tree.removeNode(id);
            m_tree.AppendGroup(testGroup(kFirstGroup));
            return QStringLiteral("ungroup");
        }
        if (kind < 45) {
            setProject();
            m_tree.reset();
            return QStringLiteral("reset");
        }
        if (kind < 48) {
            setProject();
            m_tree.AppendProcessors({testId(kProcessors + 1 + static_cast<quint32>(below(2)))});
            return QStringLiteral("AppendProcessors");
        }
        if (kind < 49) {
            m_tree.clearToRoot();
            return QStringLiteral("clearToRoot");
        }
        if (kind < 52) {
            m_tree.sort(0, oneIn(2) ? Qt::AscendingOrder : Qt::DescendingOrder);
            return QStringLiteral("sort");
        }
        return item ? changeRow(item) : QStringLiteral("nothing");
    }

    QString changeRow(QStandardItem* item)
    {
        const bool isProcessor = item->data(NodeTypeRole).toInt() == NodeProcessor;
        switch (below(8)) {
        case 0:
            m_tree.setData(item->index(), name());
            return QStringLiteral("rename");
        case 1:
            item->setText(name());
            return QStringLiteral("text");
        case 2:
            if (isProcessor)
                m_tree.updateProcessor(item, processor(item->data(UuidRole).toUuid()));
            return QStringLiteral("updateProcessor");
        case 3:
            if (isProcessor)
                m_tree.moveProcessors({item->index()}, oneIn(3) ? QUuid() : groupId());
            return QStringLiteral("moveProcessors");
        case 4:
            if (isProcessor)
                item->setData(QVariant::fromValue(processor(item->data(UuidRole).toUuid())),
                              NodeDataRole);
            return QStringLiteral("plain record");
        case 5:
            if (CRecordCell* cell = recordHandle(item->data(NodeDataRole)).cell()) {
                cell->store(processor(item->data(UuidRole).toUuid()));
                m_tree.announceRecords({item->data(UuidRole).toUuid()});
            }
            return QStringLiteral("record written elsewhere");
        case 6:
            if (isProcessor && oneIn(4))
                item->setData(QVariant::fromValue(NodeGroup), NodeTypeRole);
            return QStringLiteral("type");
        default:
            if (m_list.rowCount() > 0)
                m_view.setCurrentIndex(m_list.index(below(m_list.rowCount()), 0));
            return QStringLiteral("current row");
        }
    }

    QString wrongSignals()
    {
        const QString expected = m_eager->takeHeard();
        const QString heard = std::exchange(m_heard, QString());
        const int resets = std::exchange(m_resets, 0);
        const bool isTold =
            heard.contains(QLatin1Char('-')) == expected.contains(QLatin1Char('-'))
            && heard.contains(QLatin1Char('+')) == expected.contains(QLatin1Char('+'));
        const bool isReset = heard.isEmpty() ? resets == 0 : resets > 0 && resets <= heard.size();
        if (!isTold || !isReset)
            return QStringLiteral("%1 resets, signals '%2' instead of '%3'")
                .arg(QString::number(resets), heard, expected);
        return {};
    }

    QString wrongRows()
    {
        const Oracle oracle(m_tree, m_text);
        if (dumpTree(m_filter) != oracle.dump())
            return QStringLiteral("lets through\n  %1\ninstead of\n  %2")
                .arg(dumpTree(m_filter), oracle.dump());
        const QModelIndexList expected = oracle.list();
        if (m_list.rowCount() != expected.size())
            return QStringLiteral("lists %1 rows instead of %2")
                .arg(m_list.rowCount())
                .arg(expected.size());
        for (int row = 0; row < expected.size(); ++row) {
            const QModelIndex index = m_list.index(row, 0);
            const QModelIndex inFilter = m_list.mapToSource(index);
            if (m_filter.mapToSource(inFilter) != expected.at(row)
                || m_list.mapFromSource(inFilter) != index)
                return QStringLiteral("lists another processor in row %1").arg(row);
        }
        const QModelIndex current = m_view.currentIndex();
        if (current.isValid() && !m_list.mapToSource(current).isValid())
            return QStringLiteral("the view holds row %1, which is nobody's").arg(current.row());
        return {};
    }

    TestPanel& m_panel;
    std::mt19937 m_generator;
    CProcessorTreeModel m_tree;
    CProcessorFilterProxyModel m_filter;
    CProcessorFilterModel m_list;
    CProcessorFilterProxyModel m_otherFilter;
    std::unique_ptr<EagerList> m_eager;
    QListView m_view;
    QString m_text;
    QString m_heard;
    int m_resets = 0;
};

} // namespace

class RandomSearchTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldMatchASearchFromScratch();
};

void RandomSearchTest::shouldMatchASearchFromScratch()
{
    TestPanel panel;
    for (const quint32 seed : seeds(400)) {
        const QString wrong = Sequence(panel, seed).run();
        QVERIFY2(wrong.isEmpty(),
                 qPrintable(QStringLiteral("TSA_SEED=%1: %2").arg(seed).arg(wrong)));
    }
}

TSA_TEST_MAIN(RandomSearchTest)
#include "tst_randomsearch.moc"
