#include "plugin/TargetSelectArea.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "tests/support/TestPanel.h"
#include "tests/support/TreeDump.h"
#include "tests/support/WarningTrap.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QSortFilterProxyModel>
#include <QStandardItem>
#include <QTest>
#include <QTreeView>

#include <memory>

namespace {
QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

/// Writes down every signal about structure and content that leaves a model.
class SignalLog final : public QObject
{
public:
    explicit SignalLog(QAbstractItemModel* model)
    {
        using Model = QAbstractItemModel;
        note(model, &Model::modelAboutToBeReset, "begin");
        note(model, &Model::modelReset, "end");
        note(model, &Model::rowsAboutToBeInserted, "rowsAboutToBeInserted");
        note(model, &Model::rowsInserted, "rowsInserted");
        note(model, &Model::rowsAboutToBeRemoved, "rowsAboutToBeRemoved");
        note(model, &Model::rowsRemoved, "rowsRemoved");
        note(model, &Model::rowsAboutToBeMoved, "rowsAboutToBeMoved");
        note(model, &Model::rowsMoved, "rowsMoved");
        note(model, &Model::columnsAboutToBeInserted, "columnsAboutToBeInserted");
        note(model, &Model::columnsInserted, "columnsInserted");
        note(model, &Model::columnsAboutToBeRemoved, "columnsAboutToBeRemoved");
        note(model, &Model::columnsRemoved, "columnsRemoved");
        note(model, &Model::columnsAboutToBeMoved, "columnsAboutToBeMoved");
        note(model, &Model::columnsMoved, "columnsMoved");
        note(model, &Model::layoutAboutToBeChanged, "layoutAboutToBeChanged");
        note(model, &Model::layoutChanged, "layoutChanged");
        note(model, &Model::dataChanged, "dataChanged");
        note(model, &Model::headerDataChanged, "headerDataChanged");
        if (auto* items = qobject_cast<QStandardItemModel*>(model))
            note(items, &QStandardItemModel::itemChanged, "itemChanged");
    }

    QString take()
    {
        QString line = m_names.join(QLatin1Char(' '));
        m_names.clear();
        return line;
    }

private:
    template <typename Model, typename Signal>
    void note(Model* model, Signal signal, const char* name)
    {
        connect(model, signal, this, [this, name] { m_names.append(QLatin1String(name)); });
    }

    QStringList m_names;
};

} // namespace

class TreeResetTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void shouldFillTheTreeInHostOrder();
    void shouldCountTheHostsListAfterAReset();
    void shouldKeepTheRootItem();
    void shouldReplaceEverything();
    void shouldShowProcessorsWhoseGroupComesLater();
    void shouldShowARepeatedProcessorOnce();
    void shouldShowARepeatedGroupOnce();
    void shouldPlaceByAddressInAReset();
    void shouldAskTheHostForProcessorsAndGroups();
    void shouldDoNothingWithoutAHandler();
    void shouldAppendSeveralInTheirOrder();
    void shouldAppendNothingInAResetOfItsOwn();
    void shouldLeaveTheCountWhenNothingWasAdded();
    void shouldAskTheHostForEachAppendedProcessor();
    void shouldAppendNoRecordOfAnotherIdentity();
    void shouldLetNoRowSignalOutOfAReset();
    void shouldLetNoRowSignalThroughAProxyAndAView();
    void shouldShowTheFilteredTreeAfterAReset();
    void shouldFollowRowsInsertedIntoAResetTree();
    void shouldKeepBlockedSignalsBlocked();
    void shouldLetTheHostLookAtTheTreeDuringAReset();

private:
    QString dump() const { return dumpTree(*m_model); }
    FakeHandler& host() const { return m_panel->host(); }

    std::unique_ptr<TestPanel> m_panel;
    std::unique_ptr<CProcessorTreeModel> m_model;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

void TreeResetTest::init()
{
    m_panel = std::make_unique<TestPanel>();
    m_model = std::make_unique<CProcessorTreeModel>();
    m_tester = std::make_unique<QAbstractItemModelTester>(m_model.get());
    m_model->initRoot();
    host().setProject(
        {testGroup(101), testGroup(100)},
        {testProcessor(3), testProcessor(1, 100), testProcessor(2, 101), testProcessor(4, 100)});
}

void TreeResetTest::cleanup()
{
    m_tester.reset();
    m_model.reset();
    m_panel.reset();
}

void TreeResetTest::shouldFillTheTreeInHostOrder()
{
    m_model->reset();
    QCOMPARE(dump(), text("All processors(4)[G101[2],G100[1,4],3]"));
    const QModelIndex row = m_model->getItem(testId(4))->index();
    QCOMPARE(row.data(259).value<ProcessorNode>().groupId, testId(100));
    QVERIFY(m_model->findRow(testId(4))->record.cell());
    QCOMPARE(m_model->columnCount(), 1);
    QCOMPARE(m_model->columnCount(m_model->index(0, 0)), 1);
}

void TreeResetTest::shouldCountTheHostsListAfterAReset()
{
    host().setProject({testGroup(100)},
                      {testProcessor(1), testProcessor(2, 999), testProcessor(3, 100)});
    m_model->reset();
    QCOMPARE(dump(), text("All processors(3)[G100[3],1]"));
    QCOMPARE(m_model->getAllProcessorCount(), 2);
    m_model->AppendProcessor(testProcessor(4));
    QCOMPARE(dump(), text("All processors(3)[G100[3],1,4]"));
    m_model->reset();
    m_model->removeNode(testId(1));
    QCOMPARE(dump(), text("All processors(1)[G100[3]]"));
    m_model->reset();
    m_model->updateRootText();
    QCOMPARE(dump(), text("All processors(2)[G100[3],1]"));
    host().setProject({}, {testProcessor(2, 999)});
    m_model->reset();
    QCOMPARE(dump(), text("All processors(1)[]"));
}

void TreeResetTest::shouldKeepTheRootItem()
{
    const QStandardItem* root = m_model->item(0);
    m_model->reset();
    m_model->reset();
    QCOMPARE(m_model->item(0), root);
    QCOMPARE(m_model->rowCount(), 1);
    QVERIFY(!root->isEditable());
}

void TreeResetTest::shouldReplaceEverything()
{
    m_model->AppendProcessor(testProcessor(77));
    m_model->AppendGroup(testGroup(177));
    const QPersistentModelIndex gone = m_model->getItem(testId(77))->index();
    m_model->reset();
    QCOMPARE(dump(), text("All processors(4)[G101[2],G100[1,4],3]"));
    QVERIFY(!m_model->getItem(testId(77)));
    QVERIFY(!gone.isValid());
    host().setProject({}, {});
    m_model->reset();
    QCOMPARE(dump(), text("All processors(0)[]"));
}

void TreeResetTest::shouldShowProcessorsWhoseGroupComesLater()
{
    host().setProject({testGroup(100), testGroup(101)},
                      {testProcessor(1, 101), testProcessor(2, 100)});
    m_model->reset();
    QCOMPARE(dump(), text("All processors(2)[G100[2],G101[1]]"));
}

void TreeResetTest::shouldShowARepeatedProcessorOnce()
{
    host().setProject({testGroup(100)},
                      {testProcessor(1), testProcessor(1, 100), testProcessor(1, 100)});
    m_model->reset();
    QCOMPARE(dump(), text("All processors(3)[G100[],1]"));
    // Among those that can have a row at all.
    host().setProject({}, {testProcessor(1, 100), testProcessor(2), testProcessor(1),
                           testProcessor(2), testProcessor(0)});
    m_model->reset();
    QCOMPARE(dump(), text("All processors(5)[2,1]"));
}

void TreeResetTest::shouldShowARepeatedGroupOnce()
{
    host().setProject({testGroup(100), testGroup(100)}, {testProcessor(1, 100)});
    m_model->reset();
    QCOMPARE(dump(), text("All processors(1)[G100[1]]"));
}

void TreeResetTest::shouldPlaceByAddressInAReset()
{
    host().setProject({testGroup(100)},
                      {testIpProcessor(9, 9), testIpProcessor(5, 5), testIpProcessor(7, 7),
                       testIpProcessor(3, 3, 100), testIpProcessor(1, 1, 100), testProcessor(8)});
    m_model->reset();
    QCOMPARE(dump(), text("All processors(6)[G100[1,3],5,7,9,8]"));
}

void TreeResetTest::shouldAskTheHostForProcessorsAndGroups()
{
    host().clearCalls();
    m_model->reset();
    QCOMPARE(host().callNames(),
             (QStringList{text("GetAllProcessorNodes"), text("GetAllGroupNodes")}));
}

void TreeResetTest::shouldDoNothingWithoutAHandler()
{
    m_model->reset();
    const QString before = dump();
    m_panel->area().m_controlHandler.reset();
    m_model->reset();
    m_model->AppendProcessors({testId(9)});
    QCOMPARE(dump(), before);

    // A reset of an empty tree without a handler still emits the signals.
    m_model->clearToRoot();
    QSignalSpy resets(m_model.get(), &QAbstractItemModel::modelReset);
    m_model->reset();
    QCOMPARE(resets.count(), 1);
    QCOMPARE(dump(), text("All processors(0)[]"));
}

void TreeResetTest::shouldAppendSeveralInTheirOrder()
{
    m_model->AppendGroup(testGroup(100));
    m_model->AppendProcessors({testId(4), testId(3), testId(2), testId(1)});
    QCOMPARE(dump(), text("All processors(3)[G100[4,1],3]"));
}

void TreeResetTest::shouldAppendNothingInAResetOfItsOwn()
{
    SignalLog log(m_model.get());
    m_model->AppendProcessors({});
    QCOMPARE(log.take(), text("begin end"));
    QCOMPARE(dump(), text("All processors(0)[]"));
}

void TreeResetTest::shouldLeaveTheCountWhenNothingWasAdded()
{
    host().setProject({}, {testProcessor(1), testProcessor(2, 999)});
    m_model->reset();
    m_model->AppendProcessors({});
    m_model->AppendProcessors({testId(2)});
    QCOMPARE(dump(), text("All processors(2)[1]"));
    m_model->AppendProcessors({testId(2), testId(1)});
    QCOMPARE(dump(), text("All processors(2)[1,1]"));
}

void TreeResetTest::shouldAskTheHostForEachAppendedProcessor()
{
    host().clearCalls();
    m_model->AppendProcessors({testId(3), testId(2)});
    QStringList asked;
    for (const FakeHandler::Call& call : host().calls())
        asked.append(call.name + call.argument);
    QCOMPARE(asked, (QStringList{text("GetProcessorNode") + testId(3).toString(),
                                 text("GetProcessorNode") + testId(2).toString()}));
}

void TreeResetTest::shouldAppendNoRecordOfAnotherIdentity()
{
    m_model->AppendProcessors({testId(99)});
    QCOMPARE(dump(), text("All processors(0)[]"));
    QCOMPARE(m_model->item(0)->rowCount(), 0);
}

void TreeResetTest::shouldLetNoRowSignalOutOfAReset()
{
    m_model->AppendProcessor(testProcessor(50));
    SignalLog log(m_model.get());
    m_model->reset();
    QCOMPARE(log.take(), text("begin end"));
    m_model->AppendProcessors({testId(1), testId(2), testId(3)});
    QCOMPARE(log.take(), text("begin end"));
    m_model->AppendProcessor(testProcessor(50));
    QVERIFY(log.take().contains(text("rowsInserted")));
}

void TreeResetTest::shouldLetNoRowSignalThroughAProxyAndAView()
{
    QSortFilterProxyModel proxy;
    proxy.setRecursiveFilteringEnabled(true);
    proxy.setSourceModel(m_model.get());
    const QAbstractItemModelTester tester(&proxy);
    QTreeView view;
    view.setModel(&proxy);
    m_model->reset();
    view.expandAll();
    view.show();
    SignalLog log(&proxy);
    m_model->reset();
    QCOMPARE(log.take(), text("begin end"));
    QCOMPARE(dumpTree(proxy), dump());
    view.expandAll();
    m_model->AppendProcessors({testId(1), testId(3)});
    QCOMPARE(log.take(), text("begin end"));
    QCOMPARE(dumpTree(proxy), dump());
    m_model->removeNode(testId(3));
    QVERIFY(log.take().contains(text("rowsRemoved")));
    QCOMPARE(dumpTree(proxy), dump());
}

void TreeResetTest::shouldShowTheFilteredTreeAfterAReset()
{
    QSortFilterProxyModel proxy;
    proxy.setRecursiveFilteringEnabled(true);
    proxy.setFilterFixedString(text("4"));
    proxy.setSourceModel(m_model.get());
    const QAbstractItemModelTester tester(&proxy);
    QTreeView view;
    view.setModel(&proxy);
    m_model->reset();
    QCOMPARE(dumpTree(proxy), text("All processors(4)[G100[4]]"));
    m_model->AppendProcessors({testId(2)});
    QCOMPARE(dumpTree(proxy), text("All processors(5)[G100[4]]"));
    m_model->removeNode(testId(100));
    QCOMPARE(dumpTree(proxy), text("All processors(5)[4]"));
}

void TreeResetTest::shouldFollowRowsInsertedIntoAResetTree()
{
    m_model->reset();
    m_model->AppendProcessor(testProcessor(7, 100));
    m_model->AppendGroup(testGroup(102));
    m_model->AppendProcessor(testProcessor(8, 102));
    QCOMPARE(dump(), text("All processors(6)[G101[2],G100[1,4,7],G102[8],3]"));
    for (const quint32 n : {1U, 2U, 3U, 4U, 7U, 8U, 100U, 101U, 102U})
        QCOMPARE(m_model->getItem(testId(n))->data(257).toUuid(), testId(n));
}

void TreeResetTest::shouldKeepBlockedSignalsBlocked()
{
    m_tester.reset(); // it would not hear of the changes
    m_model->blockSignals(true);
    m_model->reset();
    QVERIFY(m_model->signalsBlocked());
    m_model->blockSignals(false);
    QCOMPARE(dump(), text("All processors(4)[G101[2],G100[1,4],3]"));
}

void TreeResetTest::shouldLetTheHostLookAtTheTreeDuringAReset()
{
    m_model->reset();
    QStringList seen;
    host().inside = [&](const QString&) {
        seen.append(dump());
        m_model->removeNode(testId(3));
    };
    m_model->AppendProcessors({testId(1), testId(2)});
    host().inside = {};
    QCOMPARE(seen.join(QLatin1Char(' ')),
             text("All processors(4)[G101[2],G100[1,4],3] All processors(3)[G101[2],G100[1,4]]"));
    QCOMPARE(dump(), text("All processors(5)[G101[2,2],G100[1,4,1]]"));
}

TSA_TEST_MAIN(TreeResetTest)
#include "tst_treereset.moc"
