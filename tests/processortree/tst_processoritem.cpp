#include "processortree/model/ProcessorItem.h"

#include "base/MetaTypes.h"
#include "base/NodeType.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "tests/support/TestRecords.h"
#include "tests/support/WarningTrap.h"

#include <QDataStream>
#include <QMimeData>
#include <QSize>
#include <QTest>

#include <memory>

class ProcessorItemTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldSetUpARowOfItsKind_data();
    void shouldSetUpARowOfItsKind();
    void shouldHaveAnIdentityOfItsOwn();
    void shouldTakeTheIdentityItIsGiven();
    void shouldKeepNoRecordBeforeItIsGivenOne();
    void shouldReadTheNodeTypeInEveryForm_data();
    void shouldReadTheNodeTypeInEveryForm();
    void shouldReadTheNodeTypeOfItemsAndIndexes();
    void shouldWriteOneByteIntoTheDragPayload_data();
    void shouldWriteOneByteIntoTheDragPayload();
    void shouldStopAtARowWithoutAType();
};

void ProcessorItemTest::initTestCase()
{
    RegisterMetaTypes();
}

void ProcessorItemTest::shouldSetUpARowOfItsKind_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("height");
    QTest::addColumn<bool>("drags");
    QTest::newRow("root") << 0 << 32 << false;
    QTest::newRow("group") << 1 << 32 << false;
    QTest::newRow("processor") << 2 << 42 << true;
}

void ProcessorItemTest::shouldSetUpARowOfItsKind()
{
    QFETCH(int, type);
    QFETCH(int, height);
    QFETCH(bool, drags);
    const CProcessorItem item(static_cast<EPrcTreeNodeType>(type));
    QCOMPARE(item.data(258).userType(), qMetaTypeId<EPrcTreeNodeType>());
    QCOMPARE(item.data(258).toInt(), type);
    QCOMPARE(item.data(13), QVariant(QSize(0, height)));
    QCOMPARE(item.isDragEnabled(), drags);
    QVERIFY(item.isDropEnabled() && item.isEditable() && item.isSelectable() && item.isEnabled());
    QCOMPARE(item.text(), QString());
}

void ProcessorItemTest::shouldHaveAnIdentityOfItsOwn()
{
    const CProcessorItem first(NodeProcessor);
    const CProcessorItem second(NodeProcessor);
    QCOMPARE(first.data(257).userType(), int(QMetaType::QUuid));
    QVERIFY(!first.data(257).toUuid().isNull());
    QVERIFY(first.data(257).toUuid() != second.data(257).toUuid());
}

void ProcessorItemTest::shouldTakeTheIdentityItIsGiven()
{
    CProcessorItem item(NodeGroup);
    const QUuid given = QUuid::createUuid();
    item.setUuid(given);
    QCOMPARE(item.data(257).toUuid(), given);
    item.setUuid(QUuid());
    QCOMPARE(item.data(257).userType(), int(QMetaType::QUuid));
    QVERIFY(item.data(257).toUuid().isNull());
}

void ProcessorItemTest::shouldKeepNoRecordBeforeItIsGivenOne()
{
    for (const auto type : {NodeRoot, NodeGroup, NodeProcessor}) {
        const CProcessorItem item(type);
        QVERIFY(!item.data(259).isValid());
        QVERIFY(!item.data(260).isValid());
    }
}

void ProcessorItemTest::shouldReadTheNodeTypeInEveryForm_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("type"); // -1 for none
    QTest::newRow("enumeration") << QVariant::fromValue(NodeProcessor) << 2;
    QTest::newRow("root") << QVariant::fromValue(NodeRoot) << 0;
    QTest::newRow("int") << QVariant(1) << 1;
    QTest::newRow("zero") << QVariant(0) << 0;
    QTest::newRow("unsigned") << QVariant(2U) << 2;
    QTest::newRow("64 bits") << QVariant(Q_INT64_C(2)) << 2;
    QTest::newRow("none") << QVariant() << -1;
    QTest::newRow("record") << QVariant::fromValue(ProcessorNode()) << -1;
    QTest::newRow("identity") << QVariant(QUuid::createUuid()) << -1;
    QTest::newRow("size") << QVariant(QSize(2, 2)) << -1;
    QTest::newRow("list") << QVariant(QVariantList{2}) << -1;
}

void ProcessorItemTest::shouldReadTheNodeTypeInEveryForm()
{
    QFETCH(QVariant, value);
    QFETCH(int, type);
    const int typeBefore = value.userType();
    const auto read = nodeType(value);
    QCOMPARE(read ? int(*read) : -1, type);
    QCOMPARE(value.userType(), typeBefore);
}

void ProcessorItemTest::shouldReadTheNodeTypeOfItemsAndIndexes()
{
    QStandardItemModel model;
    auto* item = new CProcessorItem(NodeProcessor);
    model.appendRow(item);
    model.appendRow(new QStandardItem);
    QVERIFY(nodeType(*item) == NodeProcessor);
    QVERIFY(nodeType(model.index(0, 0)) == NodeProcessor);
    QVERIFY(!nodeType(*model.item(1)));
    QVERIFY(!nodeType(model.index(1, 0)));
    QVERIFY(!nodeType(QModelIndex()));
}

void ProcessorItemTest::shouldWriteOneByteIntoTheDragPayload_data()
{
    QTest::addColumn<QString>("rows"); // one letter a row
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray yes(1, '\1');
    const QByteArray no(1, '\0');
    QTest::newRow("nothing") << QString() << yes;
    QTest::newRow("one processor") << QStringLiteral("p") << yes;
    QTest::newRow("two processors") << QStringLiteral("pq") << yes;
    QTest::newRow("a group") << QStringLiteral("g") << no;
    QTest::newRow("the root") << QStringLiteral("r") << no;
    QTest::newRow("a group behind processors") << QStringLiteral("pqg") << no;
    QTest::newRow("the root before processors") << QStringLiteral("rpq") << no;
}

void ProcessorItemTest::shouldWriteOneByteIntoTheDragPayload()
{
    QFETCH(QString, rows);
    QFETCH(QByteArray, bytes);
    CProcessorTreeModel model;
    model.initRoot();
    model.AppendGroup(testGroup(100));
    model.AppendProcessor(testProcessor(1, 100));
    model.AppendProcessor(testProcessor(2));
    const QMap<QChar, QUuid> ids{{QLatin1Char('r'), QUuid()},
                                 {QLatin1Char('g'), testId(100)},
                                 {QLatin1Char('p'), testId(1)},
                                 {QLatin1Char('q'), testId(2)}};
    QModelIndexList indexes;
    for (const QChar letter : rows)
        indexes.append(model.getItem(ids.value(letter))->index());

    QCOMPARE(model.mimeTypes(), QStringList{QStringLiteral("PROCESSOR INFO")});
    const std::unique_ptr<QMimeData> payload(model.mimeData(indexes));
    QVERIFY(payload);
    QCOMPARE(payload->formats(), QStringList{QStringLiteral("PROCESSOR INFO")});
    QCOMPARE(payload->data(QStringLiteral("PROCESSOR INFO")), bytes);
    QDataStream stream(payload->data(QStringLiteral("PROCESSOR INFO")));
    bool allProcessors = false;
    stream >> allProcessors;
    QCOMPARE(allProcessors, bytes.at(0) == '\1');
    QVERIFY(stream.atEnd());
}

void ProcessorItemTest::shouldStopAtARowWithoutAType()
{
    CProcessorTreeModel model;
    model.initRoot();
    model.AppendProcessor(testProcessor(1));
    model.item(0)->appendRow(new QStandardItem);
    const QModelIndex root = model.index(0, 0);
    const std::unique_ptr<QMimeData> payload(
        model.mimeData({model.index(0, 0, root), model.index(1, 0, root)}));
    QCOMPARE(payload->data(QStringLiteral("PROCESSOR INFO")), QByteArray(1, '\0'));
    const std::unique_ptr<QMimeData> invalid(model.mimeData({QModelIndex()}));
    QCOMPARE(invalid->data(QStringLiteral("PROCESSOR INFO")), QByteArray(1, '\0'));
}

TSA_TEST_MAIN(ProcessorItemTest)
#include "tst_processoritem.moc"
