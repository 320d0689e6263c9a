#include "processortree/model/ProcessorTreeModel.h"
#include "processortree/model/RowDescription.h"
#include "tests/support/Chinese.h"
#include "tests/support/TestPanel.h"
#include "tests/support/WarningTrap.h"

#include <QStandardItem>
#include <QTest>

/// What the rows of the tree tell assistive technology besides their names.
class RowDescriptionTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldDescribeProcessors_data();
    void shouldDescribeProcessors();
    void shouldCountWhatGroupsHold();
    void shouldPreferADescriptionOfTheRowsOwn();
    void shouldNotDescribeRowsWithoutAType();
    void shouldSpeakTheUsersLanguage();
};

namespace {

QString described(const QModelIndex& row)
{
    return row.data(Qt::AccessibleDescriptionRole).toString();
}

/// A tree with the groups 10 and 11, of which 10 holds the processors 1 and 2, and 3 outside.
struct DescribedTree
{
    DescribedTree()
    {
        panel.host().setProject({testGroup(10), testGroup(11)},
                                {testProcessor(1, 10), testProcessor(2, 10), testProcessor(3)});
        panel.model().reset();
    }

    QString of(quint32 n) { return described(panel.index(n)); }

    TestPanel panel;
};

} // namespace

void RowDescriptionTest::shouldDescribeProcessors_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("online");
    QTest::addColumn<bool>("warns");
    QTest::addColumn<bool>("byIp");
    QTest::addColumn<QString>("expected");
    QTest::newRow("number") << 0 << true << false << false << "Processor, Online, Number: 1";
    QTest::newRow("address") << 0 << false << false << true << "Processor, Offline, IP:10.0.0.7";
    QTest::newRow("backup") << 2 << true << false << false << "Backup processor, Online, Number: 1";
    QTest::newRow("all") << 1 << false << true << true
                         << "Processor, Offline, Has a backup, Warning, IP:10.0.0.7";
}

void RowDescriptionTest::shouldDescribeProcessors()
{
    QFETCH(int, mode);
    QFETCH(bool, online);
    QFETCH(bool, warns);
    QFETCH(bool, byIp);
    QFETCH(QString, expected);
    DescribedTree tree;
    ProcessorNode record = testIpProcessor(1, 0x0A000007, 10);
    record.number = 0;
    record.redundancyMode = mode;
    record.online = online;
    record.hostFlag17 = warns;
    record.reachedByIp = byIp;
    tree.panel.model().updateProcessor(tree.panel.model().getItem(testId(1)), record);
    QCOMPARE(tree.of(1), expected);
}

void RowDescriptionTest::shouldCountWhatGroupsHold()
{
    DescribedTree tree;
    QCOMPARE(tree.of(0), QStringLiteral("Project, Processor groups: 2"));
    QCOMPARE(tree.of(10), QStringLiteral("Processor group, Processors: 2"));
    QCOMPARE(tree.of(11), QStringLiteral("Processor group, Processors: 0"));
    tree.panel.model().removeNode(testId(1));
    QCOMPARE(tree.of(10), QStringLiteral("Processor group, Processors: 1"));
    tree.panel.model().removeNode(testId(11));
    QCOMPARE(tree.of(0), QStringLiteral("Project, Processor groups: 1"));
}

void RowDescriptionTest::shouldPreferADescriptionOfTheRowsOwn()
{
    DescribedTree tree;
    QStandardItem* item = tree.panel.model().getItem(testId(1));
    item->setAccessibleDescription(QStringLiteral("left wall"));
    QCOMPARE(tree.of(1), QStringLiteral("left wall"));
    QVERIFY(tree.of(2).startsWith(QStringLiteral("Processor, ")));
}

void RowDescriptionTest::shouldNotDescribeRowsWithoutAType()
{
    DescribedTree tree;
    tree.panel.model().appendRow(new QStandardItem(QStringLiteral("foreign")));
    const QModelIndex foreign = tree.panel.model().index(1, 0);
    QCOMPARE(foreign.data().toString(), QStringLiteral("foreign"));
    QCOMPARE(described(foreign), QString());
    QCOMPARE(rowDescription({}), QString());
}

void RowDescriptionTest::shouldSpeakTheUsersLanguage()
{
    DescribedTree tree;
    const Chinese chinese;
    QVERIFY(chinese.isLoaded());
    QCOMPARE(tree.of(0), QStringLiteral("项目，处理器组：2"));
    QCOMPARE(tree.of(10), QStringLiteral("处理器组，处理器：2"));
    QCOMPARE(tree.of(1), QStringLiteral("处理器, 离线, 编号: 1"));
}

TSA_TEST_MAIN(RowDescriptionTest)
#include "tst_rowdescription.moc"
