#include "tests/contract/FoundBreaches.h"
#include "tests/packaging/LibraryHost.h"

#include <QTest>
#include <QTreeView>

namespace {

/// A host with two groups and four processors that the tree shows, in a window.
class GroupedHost final
{
public:
    GroupedHost()
    {
        if (!host.open())
            qFatal("the library is not there");
        store({processor(1, 100), processor(2, 100), processor(3, 101), processor(4)});
        host.window()->resize(240, 600);
        host.layer()->GetWidget()->resize(220, 600);
        host.window()->show();
        host.notify(16);
    }

    void store(const QList<ProcessorNode>& processors)
    {
        host.handler().setProject({group(100), group(101)}, processors);
    }

    /// The texts of the rows: "G100[1,2],G101[3],4".
    QString rows() const { return textOf(*tree().model(), tree().model()->index(0, 0)); }

    /// The texts of the rows that are selected.
    QStringList selected() const
    {
        QStringList texts;
        for (const QModelIndex& index : tree().selectionModel()->selectedIndexes())
            texts.append(index.data().toString());
        return texts;
    }

    mutable LibraryHost host;

private:
    QTreeView& tree() const { return *host.layer()->GetWidget()->findChild<QTreeView*>(); }

    static QString textOf(const QAbstractItemModel& model, const QModelIndex& parent)
    {
        QStringList texts;
        for (int row = 0; row < model.rowCount(parent); ++row) {
            const QModelIndex index = model.index(row, 0, parent);
            const bool isGroup = index.data(NodeTypeRole).toInt() == NodeGroup;
            texts.append(
                index.data().toString()
                + (isGroup ? QStringLiteral("[%1]").arg(textOf(model, index)) : QString()));
        }
        return texts.join(QLatin1Char(','));
    }
};

} // namespace

/// The ways that docs/integrating.md shows a host: they lead where the page says, and the contract
/// checks find nothing wrong with them.
class TestHostRecipes final : public QObject
{
    Q_OBJECT

private slots:
    void shouldRegroupWithAReset();
    void shouldRegroupWithARemovalAndAnAddition();
    void shouldRegroupWhatTheHostStillKnows();
    void shouldNotRegroupWithAChangedRecord();
    void shouldRegroupWithAChangedAddress();
    void shouldRenameAGroupWithAReset();
    void shouldRenameOnlyTheRowWithAChangeOfAGroup();
    void shouldNotRenameAGroupThatTheHostDoesNotAnswerFor();
    void shouldRenameAProcessorWithAChange();
    void shouldMoveTheProcessorsOfARemovedGroupToTheRoot();
    void shouldSelectTheCurrentProcessorAgain_data();
    void shouldSelectTheCurrentProcessorAgain();
};

void TestHostRecipes::shouldRegroupWithAReset()
{
    FoundBreaches found;
    GroupedHost grouped;
    grouped.store({processor(1, 101), processor(2, 100), processor(3, 101), processor(4, 101)});
    grouped.host.notify(16);
    QTRY_COMPARE(grouped.rows(), QStringLiteral("G100[2],G101[1,3,4]"));
    QCOMPARE(found.codes(), QStringList());
}

void TestHostRecipes::shouldRegroupWithARemovalAndAnAddition()
{
    FoundBreaches found;
    GroupedHost grouped;
    QTRY_COMPARE(grouped.rows(), QStringLiteral("G100[1,2],G101[3],4"));
    const QList<QUuid> moved{identity(1), identity(4)};
    grouped.store({processor(2, 100), processor(3, 101)});
    grouped.host.notify<QList<QUuid>>(21, moved);
    grouped.store({processor(1, 101), processor(2, 100), processor(3, 101), processor(4, 101)});
    grouped.host.notify<QList<QUuid>>(19, moved);
    QCOMPARE(grouped.rows(), QStringLiteral("G100[2],G101[3,1,4]"));

    grouped.store({processor(2, 100), processor(3, 101), processor(4, 101)});
    grouped.host.notify<QUuid>(20, identity(1));
    grouped.store({processor(1), processor(2, 100), processor(3, 101), processor(4, 101)});
    grouped.host.notify<QUuid>(18, identity(1));
    QCOMPARE(grouped.rows(), QStringLiteral("G100[2],G101[3,4],1"));
    QCOMPARE(found.codes(), QStringList());
}

void TestHostRecipes::shouldRegroupWhatTheHostStillKnows()
{
    FoundBreaches found;
    GroupedHost grouped;
    QTRY_COMPARE(grouped.rows(), QStringLiteral("G100[1,2],G101[3],4"));
    grouped.store({processor(1, 101), processor(2, 100), processor(3, 101), processor(4)});
    grouped.host.notify<QUuid>(20, identity(1));
    grouped.host.notify<QUuid>(18, identity(1));
    QCOMPARE(grouped.rows(), QStringLiteral("G100[2],G101[3,1],4"));
    QCOMPARE(found.codes(), QStringList{QStringLiteral("TSA-E21")});
}

void TestHostRecipes::shouldNotRegroupWithAChangedRecord()
{
    FoundBreaches found;
    GroupedHost grouped;
    QTRY_COMPARE(grouped.rows(), QStringLiteral("G100[1,2],G101[3],4"));
    grouped.store({processor(1, 101), processor(2, 100), processor(3, 101), processor(4)});
    grouped.host.notify<QUuid>(25, identity(1));
    grouped.host.notify<QUuid, SPrjProcessor>(26, identity(1), SPrjProcessor());
    QCOMPARE(grouped.rows(), QStringLiteral("G100[1,2],G101[3],4"));
}

void TestHostRecipes::shouldRegroupWithAChangedAddress()
{
    FoundBreaches found;
    GroupedHost grouped;
    QTRY_COMPARE(grouped.rows(), QStringLiteral("G100[1,2],G101[3],4"));
    ProcessorNode moved = processor(1, 101);
    moved.reachedByIp = true;
    moved.ipAddress = 0x0A000001;
    grouped.store({moved, processor(2, 100), processor(3, 101), processor(4)});
    grouped.host.notify<QUuid>(25, identity(1));
    QCOMPARE(grouped.rows(), QStringLiteral("G100[2],G101[1,3],4"));
    QCOMPARE(found.codes(), QStringList());
}

void TestHostRecipes::shouldRenameAGroupWithAReset()
{
    FoundBreaches found;
    GroupedHost grouped;
    QTRY_COMPARE(grouped.rows(), QStringLiteral("G100[1,2],G101[3],4"));
    ProcessorGroupNode renamed = group(100);
    renamed.name = QStringLiteral("Wall");
    grouped.host.handler().setGroup(renamed);
    grouped.host.notify(16);
    QTRY_COMPARE(grouped.rows(), QStringLiteral("Wall[1,2],G101[3],4"));
    QCOMPARE(grouped.host.tree(), QStringLiteral("Wall[1,2],G101[3],4"));
    QCOMPARE(found.codes(), QStringList());
}

void TestHostRecipes::shouldRenameOnlyTheRowWithAChangeOfAGroup()
{
    FoundBreaches found;
    GroupedHost grouped;
    QTRY_COMPARE(grouped.rows(), QStringLiteral("G100[1,2],G101[3],4"));
    ProcessorNode record = processor(100);
    record.name = QStringLiteral("Wall");
    grouped.host.handler().answerProcessor = record;
    grouped.host.notify<QUuid, SPrjProcessor>(26, identity(100), SPrjProcessor());
    grouped.host.handler().answerProcessor.reset();
    QCOMPARE(grouped.rows(), QStringLiteral("Wall[1,2],G101[3],4"));
    // The row has the record of a processor now, so its group has neither name nor identity.
    QCOMPARE(grouped.host.tree(), QStringLiteral("[1,2],G101[3],4"));
    QCOMPARE(found.codes(), QStringList());
}

void TestHostRecipes::shouldNotRenameAGroupThatTheHostDoesNotAnswerFor()
{
    FoundBreaches found;
    GroupedHost grouped;
    QTRY_COMPARE(grouped.rows(), QStringLiteral("G100[1,2],G101[3],4"));
    ProcessorGroupNode renamed = group(100);
    renamed.name = QStringLiteral("Wall");
    grouped.host.handler().setGroup(renamed);
    grouped.host.notify<QUuid>(25, identity(100));
    grouped.host.notify<QUuid, SPrjProcessor>(26, identity(100), SPrjProcessor());
    QCOMPARE(grouped.rows(), QStringLiteral("G100[1,2],G101[3],4"));
    QCOMPARE(found.codes(), QStringList{QStringLiteral("TSA-W17")});
}

void TestHostRecipes::shouldRenameAProcessorWithAChange()
{
    FoundBreaches found;
    GroupedHost grouped;
    QTRY_COMPARE(grouped.rows(), QStringLiteral("G100[1,2],G101[3],4"));
    ProcessorNode renamed = processor(1, 100);
    renamed.name = QStringLiteral("Left");
    grouped.host.handler().setProcessor(renamed);
    grouped.host.notify<QUuid>(25, identity(1));
    QCOMPARE(grouped.rows(), QStringLiteral("G100[Left,2],G101[3],4"));
    QCOMPARE(found.codes(), QStringList());
}

void TestHostRecipes::shouldMoveTheProcessorsOfARemovedGroupToTheRoot()
{
    FoundBreaches found;
    GroupedHost grouped;
    QTRY_COMPARE(grouped.rows(), QStringLiteral("G100[1,2],G101[3],4"));
    grouped.host.handler().removeGroup(identity(100));
    grouped.host.notify<QUuid>(20, identity(100));
    QTRY_COMPARE(grouped.rows(), QStringLiteral("G101[3],4,2,1"));
    // The host is told where they stand now, as after a drop.
    const auto memberships = grouped.host.handler().memberships;
    QCOMPARE(memberships.size(), 2);
    QCOMPARE(memberships.at(0).processors, QList<QUuid>{identity(2)});
    QCOMPARE(memberships.at(1).processors, QList<QUuid>{identity(1)});
    QCOMPARE(memberships.at(1).groupId, QUuid());
    QVERIFY(FoundBreaches::waitForJudgement());
    QCOMPARE(found.codes(), QStringList());
}

void TestHostRecipes::shouldSelectTheCurrentProcessorAgain_data()
{
    QTest::addColumn<quint32>("number");
    for (const quint32 number : {16U, 19U, 20U})
        QTest::addRow("%u", number) << number;
}

void TestHostRecipes::shouldSelectTheCurrentProcessorAgain()
{
    QFETCH(quint32, number);
    FoundBreaches found;
    GroupedHost grouped;
    QTRY_COMPARE(grouped.rows(), QStringLiteral("G100[1,2],G101[3],4"));
    grouped.host.area()->SetCurrentProcessor(identity(2));
    QCOMPARE(grouped.selected(), QStringList{QStringLiteral("2")});
    if (number == 16) {
        grouped.host.notify(16);
    } else if (number == 19) {
        grouped.host.handler().setProcessor(processor(5));
        grouped.host.notify<QList<QUuid>>(19, {identity(5)});
    } else {
        grouped.host.handler().removeProcessor(identity(2));
        grouped.host.notify<QUuid>(20, identity(2));
    }
    QTRY_VERIFY(!grouped.selected().contains(QStringLiteral("2")));
    grouped.host.handler().currentProcessor = identity(3);
    grouped.host.notify(30);
    QTRY_COMPARE(grouped.selected(), QStringList{QStringLiteral("3")});
    QCOMPARE(found.codes(), QStringList());
}

TSA_TEST_MAIN(TestHostRecipes)

#include "tst_hostrecipes.moc"
