#include "Interface/DeviceSetInfo.h"
#include "Interface/ProcessorNode.h"
#include "Interface/TargetSelectAreaInterface.h"
#include "Interface/TargetSelectInterfaceHandler.h"
#include "base/MetaTypes.h"
#include "tests/support/WarningTrap.h"

#include <QStringList>
#include <QTest>
#include <QVariant>

#include <string>
#include <type_traits>

namespace {
/// Returns the position of each field of a record as "name@offset+size".
template <typename Record>
class Layout final
{
public:
    template <typename Field>
    Layout& field(const char* name, Field Record::*member)
    {
        const auto* begin = reinterpret_cast<const char*>(&m_record);
        const auto* place = reinterpret_cast<const char*>(&(m_record.*member));
        m_fields.append(QStringLiteral("%1@%2+%3")
                            .arg(QLatin1String(name))
                            .arg(place - begin)
                            .arg(sizeof(Field)));
        return *this;
    }

    QString text() const { return m_fields.join(QLatin1Char(' ')); }

private:
    const Record m_record{};
    QStringList m_fields;
};

// The sizes are those of the 64-bit ABI with the GNU standard library.
static_assert(sizeof(void*) == 8);
static_assert(sizeof(GUID) == 16 && alignof(GUID) == 4);
static_assert(sizeof(SDeviceSetInfo) == 24 && alignof(SDeviceSetInfo) == 4);
static_assert(sizeof(SPrjProcessor) == 24);
static_assert(sizeof(ProcessorNode) == 168 && alignof(ProcessorNode) == 8);
static_assert(sizeof(ProcessorGroupNode) == 40);
static_assert(sizeof(ProcessorTreeSnapshot) == 16);
static_assert(sizeof(SGroupSelection) == 24);
static_assert(sizeof(LanUsbProcessorInfo) == 3 * sizeof(std::string));
static_assert(sizeof(EPrcTreeNodeType) == 4);

static_assert(std::is_trivially_copyable_v<GUID> && std::is_standard_layout_v<GUID>);
static_assert(
    std::is_trivially_copyable_v<SDeviceSetInfo> && std::is_standard_layout_v<SDeviceSetInfo>);
static_assert(std::is_aggregate_v<ProcessorNode> && !std::is_polymorphic_v<ProcessorNode>);
static_assert(
    std::is_aggregate_v<ProcessorGroupNode> && !std::is_polymorphic_v<ProcessorGroupNode>);

template <typename Field, typename Record, typename Member>
constexpr bool is(Member Record::*)
{
    return std::is_same_v<Field, Member>;
}

static_assert(is<QUuid>(&ProcessorNode::id));
static_assert(is<QString>(&ProcessorNode::name));
static_assert(is<qint32>(&ProcessorNode::number));
static_assert(is<QUuid>(&ProcessorNode::groupId));
static_assert(is<qint32>(&ProcessorNode::hostAttribute5));
static_assert(is<qint32>(&ProcessorNode::hostAttribute6));
static_assert(is<qint32>(&ProcessorNode::hostAttribute7));
static_assert(is<qint64>(&ProcessorNode::hostAttribute8));
static_assert(is<qint32>(&ProcessorNode::redundancyMode));
static_assert(is<std::array<quint32, 4>>(&ProcessorNode::hostAttribute10));
static_assert(is<qint32>(&ProcessorNode::hostAttribute11));
static_assert(is<float>(&ProcessorNode::hostAttribute12));
static_assert(is<bool>(&ProcessorNode::hostFlag13));
static_assert(is<QString>(&ProcessorNode::hostText14));
static_assert(is<qint32>(&ProcessorNode::hostAttribute15));
static_assert(is<qint32>(&ProcessorNode::hostAttribute16));
static_assert(is<bool>(&ProcessorNode::hostFlag17));
static_assert(is<qint32>(&ProcessorNode::hostAttribute18));
static_assert(is<qint32>(&ProcessorNode::hostAttribute19));
static_assert(is<quint32>(&ProcessorNode::hostAttribute20));
static_assert(is<quint16>(&ProcessorNode::hostAttribute21));
static_assert(is<qint32>(&ProcessorNode::hostAttribute22));
static_assert(is<bool>(&ProcessorNode::hostFlag23));
static_assert(is<QString>(&ProcessorNode::hostText24));
static_assert(is<quint32>(&ProcessorNode::ipAddress));
static_assert(is<quint32>(&ProcessorNode::secondAddress));
static_assert(is<bool>(&ProcessorNode::online));
static_assert(is<bool>(&ProcessorNode::reachedByIp));

static_assert(is<QUuid>(&ProcessorGroupNode::id));
static_assert(is<QString>(&ProcessorGroupNode::name));
static_assert(is<qint32>(&ProcessorGroupNode::hostAttribute3));
static_assert(is<qint32>(&ProcessorGroupNode::hostAttribute4));
static_assert(is<QList<ProcessorNode>>(&ProcessorGroupNode::processors));

static_assert(is<std::string>(&LanUsbProcessorInfo::ip));
static_assert(is<std::string>(&LanUsbProcessorInfo::processorName));
static_assert(is<std::string>(&LanUsbProcessorInfo::deviceName));
static_assert(is<QList<ProcessorGroupNode>>(&ProcessorTreeSnapshot::groups));
static_assert(is<QList<ProcessorNode>>(&ProcessorTreeSnapshot::processors));
static_assert(is<GUID>(&SDeviceSetInfo::id));

static_assert(std::is_same_v<std::underlying_type_t<EPrcTreeNodeType>, qint32>);
static_assert(std::is_convertible_v<EPrcTreeNodeType, int>);
static_assert(NodeRoot == 0 && NodeGroup == 1 && NodeProcessor == 2);
static_assert(UuidRole == 257 && NodeTypeRole == 258 && NodeDataRole == 259
              && HostCheckRole == 260);
static_assert(Qt::DisplayRole == 0 && Qt::SizeHintRole == 13);
static_assert(kNoProcessorAddress == ((127U << 24) | 1U));

} // namespace

class RecordsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldKeepTheFieldsOfAProcessorInPlace();
    void shouldHaveOnlyTheListedFields();
    void shouldKeepTheFieldsOfAGroupInPlace();
    void shouldKeepTheFieldsOfTheOtherRecordsInPlace();
    void shouldStartAProcessorWithTheHostsDefaults();
    void shouldStartAGroupWithTheHostsDefaults();
    void shouldStartTheOtherRecordsEmpty();
    void shouldDetectTheNullIdentifier();
    void shouldCompareAllFieldsOfIdentifiers();
    void shouldRegisterTheTypesByName_data();
    void shouldRegisterTheTypesByName();
    void shouldRegisterTheNodeTypeAsAnEnumeration();
    void shouldConvertNumbersToNodeTypes();
    void shouldStoreRecordsInVariants();
    void shouldWriteProcessorsForDebugging();
    void shouldWriteGroupsForDebugging();
};

void RecordsTest::initTestCase()
{
    RegisterMetaTypes();
    RegisterMetaTypes();
}

void RecordsTest::shouldKeepTheFieldsOfAProcessorInPlace()
{
    using P = ProcessorNode;
    Layout<P> layout;
    layout.field("id", &P::id)
        .field("name", &P::name)
        .field("number", &P::number)
        .field("groupId", &P::groupId)
        .field("5", &P::hostAttribute5)
        .field("6", &P::hostAttribute6)
        .field("7", &P::hostAttribute7)
        .field("8", &P::hostAttribute8)
        .field("redundancyMode", &P::redundancyMode)
        .field("10", &P::hostAttribute10)
        .field("11", &P::hostAttribute11)
        .field("12", &P::hostAttribute12)
        .field("13", &P::hostFlag13)
        .field("14", &P::hostText14)
        .field("15", &P::hostAttribute15)
        .field("16", &P::hostAttribute16)
        .field("17", &P::hostFlag17)
        .field("18", &P::hostAttribute18)
        .field("19", &P::hostAttribute19)
        .field("20", &P::hostAttribute20)
        .field("21", &P::hostAttribute21)
        .field("22", &P::hostAttribute22)
        .field("23", &P::hostFlag23)
        .field("24", &P::hostText24)
        .field("ipAddress", &P::ipAddress)
        .field("secondAddress", &P::secondAddress)
        .field("online", &P::online)
        .field("reachedByIp", &P::reachedByIp);
    QCOMPARE(layout.text(),
             QStringLiteral("id@0+16 name@16+8 number@24+4 groupId@28+16 5@44+4 6@48+4 7@52+4 "
                            "8@56+8 redundancyMode@64+4 10@68+16 11@84+4 12@88+4 13@92+1 14@96+8 "
                            "15@104+4 16@108+4 17@112+1 18@116+4 19@120+4 20@124+4 21@128+2 "
                            "22@132+4 23@136+1 24@144+8 ipAddress@152+4 secondAddress@156+4 "
                            "online@160+1 reachedByIp@161+1"));
}

// Does not compile with more or fewer fields.
void RecordsTest::shouldHaveOnlyTheListedFields()
{
    const auto& [a1, a2, a3, a4, a5, a6, a7, a8, a9, a10, a11, a12, a13, a14, a15, a16, a17, a18,
                 a19, a20, a21, a22, a23, a24, a25, a26, a27, a28] = ProcessorNode();
    QVERIFY(&a5 < &a6 && &a15 < &a16 && &a25 < &a26 && &a27 < &a28);
    const auto& [b1, b2, b3, b4, b5] = ProcessorGroupNode();
    QVERIFY(&b3 < &b4 && b5.isEmpty());
    const auto& [c1, c2, c3] = LanUsbProcessorInfo();
    QVERIFY(&c1 < &c2 && &c2 < &c3);
    const auto& [d1, d2] = ProcessorTreeSnapshot();
    QVERIFY(d1.isEmpty() && d2.isEmpty());
}

void RecordsTest::shouldKeepTheFieldsOfAGroupInPlace()
{
    using G = ProcessorGroupNode;
    Layout<G> layout;
    layout.field("id", &G::id)
        .field("name", &G::name)
        .field("3", &G::hostAttribute3)
        .field("4", &G::hostAttribute4)
        .field("processors", &G::processors);
    QCOMPARE(layout.text(), QStringLiteral("id@0+16 name@16+8 3@24+4 4@28+4 processors@32+8"));
}

void RecordsTest::shouldKeepTheFieldsOfTheOtherRecordsInPlace()
{
    using L = LanUsbProcessorInfo;
    Layout<L> lanUsb;
    lanUsb.field("ip", &L::ip)
        .field("processorName", &L::processorName)
        .field("deviceName", &L::deviceName);
    QCOMPARE(lanUsb.text(), QStringLiteral("ip@0+32 processorName@32+32 deviceName@64+32"));

    using T = ProcessorTreeSnapshot;
    Layout<T> snapshot;
    snapshot.field("groups", &T::groups).field("processors", &T::processors);
    QCOMPARE(snapshot.text(), QStringLiteral("groups@0+8 processors@8+8"));

    using S = SDeviceSetInfo;
    Layout<S> set;
    set.field("id", &S::id).field("2", &S::hostAttribute2).field("3", &S::hostAttribute3);
    QCOMPARE(set.text(), QStringLiteral("id@0+16 2@16+4 3@20+4"));

    Layout<GUID> guid;
    guid.field("Data1", &GUID::Data1)
        .field("Data2", &GUID::Data2)
        .field("Data3", &GUID::Data3)
        .field("Data4", &GUID::Data4);
    QCOMPARE(guid.text(), QStringLiteral("Data1@0+4 Data2@4+2 Data3@6+2 Data4@8+8"));

    Layout<SPrjProcessor> project;
    project.field("id", &SPrjProcessor::id).field("name", &SPrjProcessor::name);
    QCOMPARE(project.text(), QStringLiteral("id@0+16 name@16+8"));

    Layout<SGroupSelection> selection;
    selection.field("id", &SGroupSelection::id).field("processors", &SGroupSelection::processors);
    QCOMPARE(selection.text(), QStringLiteral("id@0+16 processors@16+8"));
}

void RecordsTest::shouldStartAProcessorWithTheHostsDefaults()
{
    const ProcessorNode processor;
    QVERIFY(processor.id.isNull());
    QVERIFY(processor.name.isEmpty());
    QCOMPARE(processor.number, 0);
    QVERIFY(processor.groupId.isNull());
    QCOMPARE(processor.hostAttribute5, -1);
    QCOMPARE(processor.hostAttribute6, -1);
    QCOMPARE(processor.hostAttribute7, 4);
    QCOMPARE(processor.hostAttribute8, Q_INT64_C(0));
    QCOMPARE(processor.redundancyMode, 0);
    QVERIFY((processor.hostAttribute10 == std::array<quint32, 4>{0, 0, 0, 0}));
    QCOMPARE(processor.hostAttribute11, 8);
    QCOMPARE(processor.hostAttribute12, 60.0F);
    QCOMPARE(processor.hostFlag13, false);
    QVERIFY(processor.hostText14.isEmpty());
    QCOMPARE(processor.hostAttribute15, 100);
    QCOMPARE(processor.hostAttribute16, 0);
    QCOMPARE(processor.hostFlag17, false);
    QCOMPARE(processor.hostAttribute18, 0);
    QCOMPARE(processor.hostAttribute19, 65535);
    QCOMPARE(processor.hostAttribute20, 0U);
    QCOMPARE(processor.hostAttribute21, quint16(0));
    QCOMPARE(processor.hostAttribute22, 0);
    QCOMPARE(processor.hostFlag23, false);
    QVERIFY(processor.hostText24.isEmpty());
    QCOMPARE(processor.ipAddress, 0x7F000001U);
    QCOMPARE(processor.secondAddress, 0x7F000001U);
    QCOMPARE(processor.online, false);
    QCOMPARE(processor.reachedByIp, false);
}

void RecordsTest::shouldStartAGroupWithTheHostsDefaults()
{
    const ProcessorGroupNode group;
    QVERIFY(group.id.isNull());
    QVERIFY(group.name.isEmpty());
    QCOMPARE(group.hostAttribute3, -1);
    QCOMPARE(group.hostAttribute4, 1);
    QVERIFY(group.processors.isEmpty());
}

void RecordsTest::shouldStartTheOtherRecordsEmpty()
{
    const LanUsbProcessorInfo info;
    QVERIFY(info.ip.empty() && info.processorName.empty() && info.deviceName.empty());
    const SDeviceSetInfo set{};
    QVERIFY(IsNullGuid(set.id));
    QCOMPARE(set.hostAttribute2, 0U);
    QCOMPARE(set.hostAttribute3, 0U);
    const SPrjProcessor project;
    QVERIFY(project.id.isNull() && project.name.isEmpty());
    const SGroupSelection selection;
    QVERIFY(selection.id.isNull() && selection.processors.isEmpty());
}

void RecordsTest::shouldDetectTheNullIdentifier()
{
    QVERIFY(IsNullGuid(GUID{}));
    QVERIFY(!IsNullGuid(GUID{1, 0, 0, {}}));
    QVERIFY(!IsNullGuid(GUID{0, 1, 0, {}}));
    QVERIFY(!IsNullGuid(GUID{0, 0, 1, {}}));
    QVERIFY(!IsNullGuid(GUID{0, 0, 0, {0, 0, 0, 0, 0, 0, 0, 1}}));
}

void RecordsTest::shouldCompareAllFieldsOfIdentifiers()
{
    const GUID guid{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
    GUID other = guid;
    QVERIFY(guid == other && !(guid != other));
    other.Data4[7] = 0;
    QVERIFY(guid != other && !(guid == other));
    other = guid;
    other.Data1 = 0;
    QVERIFY(guid != other);
}

void RecordsTest::shouldRegisterTheTypesByName_data()
{
    QTest::addColumn<int>("id");
    QTest::newRow("EPrcTreeNodeType") << qMetaTypeId<EPrcTreeNodeType>();
    QTest::newRow("ProcessorNode") << qMetaTypeId<ProcessorNode>();
    QTest::newRow("ProcessorGroupNode") << qMetaTypeId<ProcessorGroupNode>();
    QTest::newRow("GUID") << qMetaTypeId<GUID>();
    QTest::newRow("SDeviceSetInfo") << qMetaTypeId<SDeviceSetInfo>();
    QTest::newRow("QList<SDeviceSetInfo>") << qMetaTypeId<QList<SDeviceSetInfo>>();
    QTest::newRow("QUuid") << qMetaTypeId<QUuid>();
    QTest::newRow("QList<QUuid>") << qMetaTypeId<QList<QUuid>>();
}

void RecordsTest::shouldRegisterTheTypesByName()
{
    QFETCH(int, id);
    QVERIFY(id != QMetaType::UnknownType);
    QCOMPARE(QMetaType::type(QTest::currentDataTag()), id);
    QCOMPARE(QByteArray(QMetaType::typeName(id)), QByteArray(QTest::currentDataTag()));
}

void RecordsTest::shouldRegisterTheNodeTypeAsAnEnumeration()
{
    const auto flags = [](int id) { return QMetaType::typeFlags(id); };
    QVERIFY(flags(qMetaTypeId<EPrcTreeNodeType>()) & QMetaType::IsEnumeration);
    QVERIFY(!(flags(qMetaTypeId<EPrcTreeNodeType>()) & QMetaType::NeedsDestruction));
    QCOMPARE(QMetaType::sizeOf(qMetaTypeId<EPrcTreeNodeType>()), 4);
    for (const int id : {qMetaTypeId<ProcessorNode>(), qMetaTypeId<ProcessorGroupNode>()}) {
        QVERIFY(flags(id) & QMetaType::NeedsConstruction);
        QVERIFY(flags(id) & QMetaType::NeedsDestruction);
    }
}

void RecordsTest::shouldConvertNumbersToNodeTypes()
{
    const int id = qMetaTypeId<EPrcTreeNodeType>();
    for (const int number : {0, 1, 2}) {
        QVariant value(number);
        QCOMPARE(int(value.value<EPrcTreeNodeType>()), number);
        QVERIFY(value.convert(id));
        QCOMPARE(value.userType(), id);
        QCOMPARE(value.toInt(), number);
    }
    const QVariant stored = QVariant::fromValue(NodeProcessor);
    QCOMPARE(stored.userType(), id);
    QCOMPARE(stored.toInt(), 2);
}

void RecordsTest::shouldStoreRecordsInVariants()
{
    ProcessorNode processor;
    processor.id = QUuid::createUuid();
    processor.name = QStringLiteral("Left");
    processor.hostAttribute10 = {1, 2, 3, 4};
    processor.hostAttribute21 = 65535;
    processor.hostText24 = QString(10000, QLatin1Char('x'));
    ProcessorGroupNode group;
    group.hostAttribute4 = 7;
    group.processors = {processor, ProcessorNode()};

    const QVariant whole = QVariant::fromValue(group);
    const auto copy = whole.value<ProcessorGroupNode>();
    QCOMPARE(copy.hostAttribute4, 7);
    QCOMPARE(copy.processors.size(), 2);
    QCOMPARE(copy.processors.at(0).id, processor.id);
    QCOMPARE(copy.processors.at(0).name, processor.name);
    QVERIFY(copy.processors.at(0).hostAttribute10 == processor.hostAttribute10);
    QCOMPARE(copy.processors.at(0).hostAttribute21, quint16(65535));
    QCOMPARE(copy.processors.at(0).hostText24, processor.hostText24);
    QVERIFY(whole.value<ProcessorNode>().id.isNull());
}

void RecordsTest::shouldWriteProcessorsForDebugging()
{
    ProcessorNode processor;
    QString text;
    QDebug(&text) << processor << 1;
    QCOMPARE(text, QStringLiteral("ProcessorNode({00000000-0000-0000-0000-000000000000}, \"\", "
                                  "number 0) 1 "));
    processor.id = QUuid::fromString(QLatin1String("{5b2d1f0c-0000-4000-8000-000000000001}"));
    processor.name = QStringLiteral("Left");
    processor.number = 3;
    processor.groupId = QUuid::fromString(QLatin1String("{5b2d1f0c-0000-4000-8000-000000000002}"));
    processor.ipAddress = 0xC0A80AFE;
    processor.online = true;
    text.clear();
    QDebug(&text).nospace() << processor;
    QCOMPARE(text, QStringLiteral("ProcessorNode({5b2d1f0c-0000-4000-8000-000000000001}, \"Left\", "
                                  "number 3, group {5b2d1f0c-0000-4000-8000-000000000002}, "
                                  "192.168.10.254, online)"));
}

void RecordsTest::shouldWriteGroupsForDebugging()
{
    ProcessorGroupNode group;
    group.name = QStringLiteral("Wall");
    group.processors = {ProcessorNode(), ProcessorNode()};
    QString text;
    QDebug(&text).nospace() << group;
    QCOMPARE(text,
             QStringLiteral("ProcessorGroupNode({00000000-0000-0000-0000-000000000000}, \"Wall\", "
                            "2 processors)"));
}

TSA_TEST_MAIN(RecordsTest)
#include "tst_records.moc"
