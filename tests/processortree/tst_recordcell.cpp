#include "base/RecordCell.h"

#include "base/MetaTypes.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "tests/support/TestRecords.h"
#include "tests/support/WarningTrap.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QStandardItem>
#include <QTest>

#include <atomic>
#include <thread>

namespace {
ProcessorNode named(const QString& name)
{
    ProcessorNode processor = testProcessor(1);
    processor.name = name;
    return processor;
}

QString nameIn(const QVariant& stored)
{
    return stored.value<ProcessorNode>().name;
}

} // namespace

class RecordCellTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldReadARecordInEveryForm();
    void shouldReadADefaultRecordFromAnythingElse();
    void shouldReadTheOrderingKeyInEveryForm();
    void shouldShareOneCellBetweenHandles();
    void shouldReadTheSameThroughItemAndIndex();
    void shouldTakeUpRecordsWrittenFromOutside();
    void shouldHandOutARecordAndNotTheCell();
    void shouldShowWhatAnotherThreadWrites();
    void shouldTellViewsOnceAsked();
    void shouldNeverShowHalfARecord();
    void shouldOutliveTheRow();
};

void RecordCellTest::initTestCase()
{
    RegisterMetaTypes();
}

void RecordCellTest::shouldReadARecordInEveryForm()
{
    const ProcessorNode record = named(QStringLiteral("Left"));
    const QVariant plain = QVariant::fromValue(record);
    const QVariant cell = QVariant::fromValue(CRecordHandle(record));
    QCOMPARE(nameIn(plain), QStringLiteral("Left"));
    QCOMPARE(nameIn(cell), QStringLiteral("Left"));
    QCOMPARE(processorRecord(plain).name, QStringLiteral("Left"));
    QCOMPARE(processorRecord(cell).name, QStringLiteral("Left"));
    QVERIFY(cell.canConvert<ProcessorNode>());
    QVariant converted = cell;
    QVERIFY(converted.convert(qMetaTypeId<ProcessorNode>()));
    QCOMPARE(nameIn(converted), QStringLiteral("Left"));
    QVERIFY(!recordHandle(plain).cell());
    QVERIFY(recordHandle(cell).cell());
}

void RecordCellTest::shouldReadADefaultRecordFromAnythingElse()
{
    for (const QVariant& value : {QVariant(), QVariant(7), QVariant::fromValue(testGroup(1)),
                                  QVariant::fromValue(CRecordHandle())}) {
        QVERIFY(processorRecord(value).id.isNull());
        QCOMPARE(processorRecord(value).hostAttribute19, 65535);
        QCOMPARE(recordKey(value).ipAddress, kNoProcessorAddress);
        QVERIFY(!recordHandle(value).cell());
    }
}

void RecordCellTest::shouldReadTheOrderingKeyInEveryForm()
{
    const ProcessorNode record = testIpProcessor(6, 42);
    for (const auto& key : {recordKey(record), recordKey(QVariant::fromValue(record)),
                            recordKey(QVariant::fromValue(CRecordHandle(record)))}) {
        QCOMPARE(key.ipAddress, 42U);
        QCOMPARE(key.number, 5);
        QVERIFY(key.reachedByIp);
    }
}

void RecordCellTest::shouldShareOneCellBetweenHandles()
{
    const CRecordHandle handle(named(QStringLiteral("before")));
    const QVariant stored = QVariant::fromValue(handle);
    handle.cell()->store(named(QStringLiteral("after")));
    QCOMPARE(nameIn(stored), QStringLiteral("after"));
    QCOMPARE(recordHandle(stored).cell(), handle.cell());
}

void RecordCellTest::shouldReadTheSameThroughItemAndIndex()
{
    CProcessorTreeModel model;
    const QAbstractItemModelTester tester(&model);
    model.initRoot();
    model.AppendProcessor(named(QStringLiteral("Left")));
    const QStandardItem* item = model.getItem(testId(1));
    QCOMPARE(nameIn(item->data(259)), QStringLiteral("Left"));
    QCOMPARE(nameIn(item->index().data(259)), QStringLiteral("Left"));
    QCOMPARE(nameIn(model.data(item->index(), 259)), QStringLiteral("Left"));
}

void RecordCellTest::shouldTakeUpRecordsWrittenFromOutside()
{
    CProcessorTreeModel model;
    const QAbstractItemModelTester tester(&model);
    model.initRoot();
    model.AppendProcessor(named(QStringLiteral("first")));
    QStandardItem* item = model.getItem(testId(1));

    item->setData(QVariant::fromValue(named(QStringLiteral("second"))), 259);
    QCOMPARE(nameIn(item->data(259)), QStringLiteral("second"));
    QCOMPARE(nameIn(item->index().data(259)), QStringLiteral("second"));
    const auto row = model.findRow(testId(1));
    QVERIFY(row && row->record.cell());
    QCOMPARE(row->record.cell()->load().name, QStringLiteral("second"));

    QVERIFY(model.setData(item->index(), QVariant::fromValue(named(QStringLiteral("third"))), 259));
    QCOMPARE(nameIn(item->data(259)), QStringLiteral("third"));
    model.findRow(testId(1))->record.cell()->store(named(QStringLiteral("fourth")));
    QCOMPARE(nameIn(item->data(259)), QStringLiteral("fourth"));
    QCOMPARE(nameIn(item->index().data(259)), QStringLiteral("fourth"));
}

void RecordCellTest::shouldHandOutARecordAndNotTheCell()
{
    CProcessorTreeModel model;
    model.initRoot();
    model.AppendProcessor(named(QStringLiteral("Left")));
    const QVariant handedOut = model.getItem(testId(1))->index().data(259);
    QCOMPARE(handedOut.userType(), qMetaTypeId<ProcessorNode>());
    model.findRow(testId(1))->record.cell()->store(named(QStringLiteral("Right")));
    QCOMPARE(nameIn(handedOut), QStringLiteral("Left"));
}

void RecordCellTest::shouldShowWhatAnotherThreadWrites()
{
    CProcessorTreeModel model;
    const QAbstractItemModelTester tester(&model);
    model.initRoot();
    model.AppendProcessor(named(QStringLiteral("before")));
    QSignalSpy dataChanged(&model, &QAbstractItemModel::dataChanged);
    int itemsChanged = 0;
    connect(&model, &QStandardItemModel::itemChanged, this, [&] { ++itemsChanged; });

    std::thread([&] {
        const auto row = model.findRow(testId(1));
        row->record.cell()->store(named(QStringLiteral("after")));
    }).join();
    QCOMPARE(nameIn(model.getItem(testId(1))->data(259)), QStringLiteral("after"));
    QCOMPARE(nameIn(model.getItem(testId(1))->index().data(259)), QStringLiteral("after"));
    QCOMPARE(model.getItem(testId(1))->text(), QStringLiteral("before"));
    QCoreApplication::processEvents();
    QCOMPARE(dataChanged.count(), 0);
    QCOMPARE(itemsChanged, 0);
}

void RecordCellTest::shouldTellViewsOnceAsked()
{
    CProcessorTreeModel model;
    const QAbstractItemModelTester tester(&model);
    model.initRoot();
    model.AppendProcessor(testProcessor(1));
    model.AppendProcessor(testProcessor(2));
    QSignalSpy dataChanged(&model, &QAbstractItemModel::dataChanged);
    model.announceRecords({testId(2), testId(99), testId(1)});
    QCOMPARE(dataChanged.count(), 2);
    QCOMPARE(dataChanged.at(0).at(0).toModelIndex(), model.getItem(testId(2))->index());
    QCOMPARE(dataChanged.at(1).at(0).toModelIndex(), model.getItem(testId(1))->index());
    QCOMPARE(dataChanged.at(0).at(2).value<QVector<int>>(), QVector<int>{259});
}

void RecordCellTest::shouldNeverShowHalfARecord()
{
    CProcessorTreeModel model;
    model.initRoot();
    model.AppendProcessor(named(QStringLiteral("0")));
    std::atomic<bool> written{false};
    std::thread writer([&] {
        for (int i = 0; i < 5000; ++i) {
            ProcessorNode record = named(QString::number(i));
            record.hostText24 = record.name;
            record.number = i;
            model.findRow(testId(1))->record.cell()->store(record);
        }
        written = true;
    });
    const QModelIndex index = model.getItem(testId(1))->index();
    bool whole = true;
    do {
        const auto record = index.data(259).value<ProcessorNode>();
        whole = whole
                && (record.hostText24.isEmpty()
                    || (record.hostText24 == record.name
                        && record.name == QString::number(record.number)));
    } while (!written);
    writer.join();
    QVERIFY(whole);
    QCOMPARE(nameIn(index.data(259)), QStringLiteral("4999"));
}

void RecordCellTest::shouldOutliveTheRow()
{
    CProcessorTreeModel model;
    model.initRoot();
    model.AppendProcessor(named(QStringLiteral("Left")));
    const auto row = model.findRow(testId(1));
    model.removeNode(testId(1));
    row->record.cell()->store(named(QStringLiteral("late")));
    QCOMPARE(row->record.cell()->load().name, QStringLiteral("late"));
    QVERIFY(!model.findRow(testId(1)));
}

TSA_TEST_MAIN(RecordCellTest)
#include "tst_recordcell.moc"
