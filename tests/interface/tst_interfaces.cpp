#include "Interface/TargetSelectAreaInterface.h"
#include "Interface/TargetSelectInterfaceHandler.h"
#include "base/TargetSelectHandler.h"
#include "plugin/TargetSelectArea.h"
#include "tests/support/TestPanel.h"
#include "tests/support/WarningTrap.h"

#include <QStringList>
#include <QTest>

#include <algorithm>
#include <cstring>
#include <memory>
#include <type_traits>
#include <utility>

namespace {
using Area = ITargetSelectAreaInterface;
using Handler = ITargetSelectInterfaceHandler;

constexpr int kDestructorSlots = 2; // the complete and the deleting destructor

/// Returns the slot of a virtual operation in the table of its class, or -1 if it is not virtual.
///
/// On this ABI a pointer to a virtual member is the byte offset in the table plus one, followed by
/// an adjustment of `this`. A pointer to another member is an even address.
template <typename Member>
int slotOf(Member member)
{
    static_assert(std::is_member_function_pointer_v<Member>);
    static_assert(sizeof(Member) == 2 * sizeof(std::ptrdiff_t));
    std::ptrdiff_t parts[2];
    std::memcpy(parts, &member, sizeof parts);
    if (parts[0] % 2 == 0 || parts[1] != 0)
        return -1;
    return static_cast<int>((parts[0] - 1) / std::ptrdiff_t(sizeof(void*)));
}

struct Slot
{
    const char* name;
    int slot;
};

/// Returns the operations sorted by slot.
QStringList inOrder(QVector<Slot> table)
{
    std::sort(table.begin(), table.end(),
              [](const Slot& left, const Slot& right) { return left.slot < right.slot; });
    QStringList names;
    for (const Slot& each : qAsConst(table))
        names.append(QLatin1String(each.name));
    return names;
}

QStringList asListed(const QVector<Slot>& table)
{
    QStringList names;
    for (const Slot& each : table)
        names.append(QLatin1String(each.name));
    return names;
}

/// Calls an operation without arguments by its slot in the object's first table.
void callSlot(void* object, int slot)
{
    using Operation = void (*)(void*);
    void** table = nullptr;
    std::memcpy(&table, object, sizeof table);
    Operation operation = nullptr;
    std::memcpy(&operation, &table[slot], sizeof operation);
    operation(object);
}

#define SLOT_OF(type, name) \
    Slot \
    { \
#name, slotOf(&type::name) \
    }

const QVector<Slot>& areaSlots()
{
    static const QVector<Slot> table{
        SLOT_OF(Area, GetWidget),
        SLOT_OF(Area, Initialize),
        SLOT_OF(Area, Reconnect),
        SLOT_OF(Area, DetectDevices),
        SLOT_OF(Area, GetProcessorTree),
        SLOT_OF(Area, SetReadOnly),
        SLOT_OF(Area, SetCurrentProcessor),
        SLOT_OF(Area, SetOperationLock),
        SLOT_OF(Area, RemoveAllGroups),
        SLOT_OF(Area, UpdateMonitorWarningState),
        SLOT_OF(Area, ApplyOperationLock),
        SLOT_OF(Area, ShowLanUsbWarning),
        SLOT_OF(Area, GetAllProcessorNodes),
    };
    return table;
}

const QVector<Slot>& handlerSlots()
{
    static const QVector<Slot> table{
        SLOT_OF(Handler, SetObserver),
        SLOT_OF(Handler, AppendContextMenu),
        SLOT_OF(Handler, DetectAllDevices),
        SLOT_OF(Handler, DetectProcessorsOnly),
        SLOT_OF(Handler, GetDeviceSetText),
        SLOT_OF(Handler, ConfirmDeviceSetChange),
        SLOT_OF(Handler, CheckIPAddress),
        SLOT_OF(Handler, GetIPCount),
        SLOT_OF(Handler, AddIPAddress),
        SLOT_OF(Handler, SaveIPList),
        SLOT_OF(Handler, RefreshIPList),
        SLOT_OF(Handler, ModifyIPAddress),
        SLOT_OF(Handler, IpListChanged),
        SLOT_OF(Handler, GetDeviceSetTexts),
        SLOT_OF(Handler, ShowProcessorMoreButton),
        SLOT_OF(Handler, ShowNodeMoreButton),
        SLOT_OF(Handler, GetAllProcessorNodes),
        SLOT_OF(Handler, GetAllGroupNodes),
        SLOT_OF(Handler, GetGroupNode),
        SLOT_OF(Handler, AddProcessors),
        SLOT_OF(Handler, AddProcessorsWithIps),
        SLOT_OF(Handler, DeleteProcessors),
        SLOT_OF(Handler, SetProcessorGroup),
        SLOT_OF(Handler, GetProcessorNode),
        SLOT_OF(Handler, CanRenameProcessor),
        SLOT_OF(Handler, CanAddProcessors),
        SLOT_OF(Handler, IsAddProcessorsEnabled),
        SLOT_OF(Handler, RenameProcessor),
        SLOT_OF(Handler, SetNewProcessorOutputs),
        SLOT_OF(Handler, CreateGroup),
        SLOT_OF(Handler, Ungroup),
        SLOT_OF(Handler, RenameGroup),
        SLOT_OF(Handler, ReportSelection),
        SLOT_OF(Handler, IsRestrictedMode),
        SLOT_OF(Handler, IsDeleteBlocked),
        SLOT_OF(Handler, CheckProcessor),
        SLOT_OF(Handler, UsesIpAddressing),
        SLOT_OF(Handler, IsLanUsbMode),
        SLOT_OF(Handler, GetLanUsbProcessorIps),
        SLOT_OF(Handler, GetNameMaxBytes),
        SLOT_OF(Handler, IsNameUtf8),
        SLOT_OF(Handler, GetCurrentProcessorId),
        SLOT_OF(Handler, ReadOnlineIPAddresses),
        SLOT_OF(Handler, GetIPNameLists),
        SLOT_OF(Handler, GetIPList),
        SLOT_OF(Handler, ClearIPList),
        SLOT_OF(Handler, DeleteIPAddress),
        SLOT_OF(Handler, ImportIPFile),
        SLOT_OF(Handler, GetIPEntry),
        SLOT_OF(Handler, GetFixedOutputCount),
        SLOT_OF(Handler, GetSelectionMode),
        SLOT_OF(Handler, GetSelectedProcessors),
        SLOT_OF(Handler, IsIpManagementAvailable),
        SLOT_OF(Handler, AddProcessorsFromIpList),
        SLOT_OF(Handler, PreDeleteProcessors),
        SLOT_OF(Handler, AcceptProcessorForSnapshot),
        SLOT_OF(Handler, ShowTipMessage),
        SLOT_OF(Handler, IsFrontPanelHighlightAvailable),
        SLOT_OF(Handler, IsFrontPanelHighlighted),
        SLOT_OF(Handler, SetFrontPanelHighlight),
    };
    return table;
}

// Hosts and panel are built separately and must agree on these.
static_assert(std::is_base_of_v<IAbstractLayerInterface, Area>);
static_assert(std::is_base_of_v<IAbstractControlInterface, Handler>);
static_assert(std::has_virtual_destructor_v<IAbstractLayerInterface>);
static_assert(std::has_virtual_destructor_v<IAbstractControlInterface>);
static_assert(!std::is_abstract_v<Area> && std::is_abstract_v<Handler>);
static_assert(sizeof(IAbstractControlInterface) == sizeof(void*));
static_assert(sizeof(Handler) == sizeof(void*));
static_assert(sizeof(IAbstractLayerInterface)
              == sizeof(void*) + sizeof(std::shared_ptr<IAbstractControlInterface>));
static_assert(sizeof(Area) == sizeof(IAbstractLayerInterface));

template <typename Result, typename Member>
constexpr bool is(Member)
{
    return std::is_same_v<Member, Result>;
}

static_assert(is<QWidget* (IAbstractLayerInterface::*)()>(&IAbstractLayerInterface::GetWidget));
static_assert(is<bool (IAbstractLayerInterface::*)()>(&IAbstractLayerInterface::Initialize));
static_assert(is<bool (IAbstractLayerInterface::*)()>(&IAbstractLayerInterface::Reconnect));
static_assert(is<quint32 (Area::*)()>(&Area::DetectDevices));
static_assert(is<void (Area::*)(ProcessorTreeSnapshot&, bool)>(&Area::GetProcessorTree));
static_assert(is<void (Area::*)(bool)>(&Area::SetReadOnly));
static_assert(is<void (Area::*)(const QUuid&)>(&Area::SetCurrentProcessor));
static_assert(is<void (Area::*)(int, bool)>(&Area::SetOperationLock));
static_assert(is<void (Area::*)()>(&Area::RemoveAllGroups));
static_assert(is<void (Area::*)()>(&Area::UpdateMonitorWarningState));
static_assert(is<void (Area::*)(int)>(&Area::ApplyOperationLock));
static_assert(
    is<void (Area::*)(const std::vector<LanUsbProcessorInfo>&)>(&Area::ShowLanUsbWarning));
static_assert(is<QList<ProcessorNode> (Area::*)()>(&Area::GetAllProcessorNodes));

static_assert(is<void (Handler::*)(CObserver*)>(&Handler::SetObserver));
static_assert(is<void (Handler::*)(EPrcTreeNodeType, const QUuid&, bool, QMenu*)>(
    &Handler::AppendContextMenu));
static_assert(is<QString (Handler::*)(const SDeviceSetInfo&)>(&Handler::GetDeviceSetText));
static_assert(is<bool (Handler::*)(const SDeviceSetInfo&, int)>(&Handler::ConfirmDeviceSetChange));
static_assert(is<bool (Handler::*)(quint32, int*, bool)>(&Handler::CheckIPAddress));
static_assert(is<int (Handler::*)(int)>(&Handler::GetIPCount));
static_assert(is<void (Handler::*)(const QString&, const QString&)>(&Handler::AddIPAddress));
static_assert(
    is<void (Handler::*)(int, const QString&, const QString&)>(&Handler::ModifyIPAddress));
static_assert(
    is<bool (Handler::*)(const QStringList&, const QStringList&)>(&Handler::IpListChanged));
static_assert(is<int (Handler::*)(QStringList&)>(&Handler::GetDeviceSetTexts));
static_assert(is<QList<ProcessorNode> (Handler::*)()>(&Handler::GetAllProcessorNodes));
static_assert(is<QList<ProcessorGroupNode> (Handler::*)()>(&Handler::GetAllGroupNodes));
static_assert(is<ProcessorGroupNode (Handler::*)(const QUuid&)>(&Handler::GetGroupNode));
static_assert(is<void (Handler::*)(const QUuid&, int)>(&Handler::AddProcessors));
static_assert(
    is<void (Handler::*)(const QUuid&, const QList<quint32>&)>(&Handler::AddProcessorsWithIps));
static_assert(is<void (Handler::*)(const QList<QUuid>&)>(&Handler::DeleteProcessors));
static_assert(is<ProcessorNode (Handler::*)(const QUuid&)>(&Handler::GetProcessorNode));
static_assert(is<bool (Handler::*)(const QUuid&)>(&Handler::CanRenameProcessor));
static_assert(is<bool (Handler::*)(const ProcessorNode&)>(&Handler::CanAddProcessors));
static_assert(is<bool (Handler::*)(const ProcessorNode&)>(&Handler::IsAddProcessorsEnabled));
static_assert(is<bool (Handler::*)(const QUuid&, const QString&)>(&Handler::RenameProcessor));
static_assert(is<void (Handler::*)(int)>(&Handler::SetNewProcessorOutputs));
static_assert(is<QUuid (Handler::*)(const ProcessorGroupNode&)>(&Handler::CreateGroup));
static_assert(is<void (Handler::*)(const QUuid&)>(&Handler::Ungroup));
static_assert(is<void (Handler::*)(const QUuid&, const QString&)>(&Handler::RenameGroup));
static_assert(is<bool (Handler::*)(const ProcessorNode&)>(&Handler::CheckProcessor));
static_assert(is<QList<quint32> (Handler::*)()>(&Handler::GetLanUsbProcessorIps));
static_assert(is<QUuid (Handler::*)()>(&Handler::GetCurrentProcessorId));
static_assert(is<quint32 (Handler::*)()>(&Handler::ReadOnlineIPAddresses));
static_assert(is<void (Handler::*)(QStringList&, QStringList&)>(&Handler::GetIPNameLists));
static_assert(is<void (Handler::*)(QStringList&)>(&Handler::GetIPList));
static_assert(is<void (Handler::*)(quint32)>(&Handler::DeleteIPAddress));
static_assert(is<quint32 (Handler::*)(const QString&)>(&Handler::ImportIPFile));
static_assert(is<QString (Handler::*)(int)>(&Handler::GetIPEntry));
static_assert(is<void (Handler::*)(const QList<QUuid>&)>(&Handler::PreDeleteProcessors));
static_assert(is<bool (Handler::*)(const ProcessorNode&)>(&Handler::AcceptProcessorForSnapshot));
static_assert(is<void (Handler::*)(const QString&)>(&Handler::ShowTipMessage));
static_assert(is<void (Handler::*)(bool)>(&Handler::SetFrontPanelHighlight));

/// A layer and a host that override nothing.
class PlainLayer final : public ITargetSelectAreaInterface
{
};

class PlainControl final : public IAbstractControlInterface
{
public:
    explicit PlainControl(bool* destroyed = nullptr)
        : m_destroyed(destroyed)
    {
    }
    ~PlainControl() override
    {
        if (m_destroyed)
            *m_destroyed = true;
    }

private:
    bool* m_destroyed;
};

} // namespace

class InterfacesTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldKeepTheOrderOfTheLayersOperations();
    void shouldKeepTheOrderOfTheHandlersOperations();
    void shouldFindTheOperationsInACompiledTable();
    void shouldKeepTheHandlerBehindTheTablePointer();
    void shouldDoNothingByDefault();
    void shouldReleaseTheHandlerWithTheLayer();
    void shouldHaveNoHandlerWithoutAPanel();
    void shouldRefuseAHandlerOfAnotherKind();
    void shouldKeepAReplacedHandlerUntilTheCallEnds();
    void shouldReturnThePanelAsItsWidget();
};

void InterfacesTest::shouldKeepTheOrderOfTheLayersOperations()
{
    const auto& table = areaSlots();
    QCOMPARE(table.size(), 13);
    QCOMPARE(inOrder(table), asListed(table));
    for (int i = 0; i < table.size(); ++i)
        QCOMPARE(table.at(i).slot, kDestructorSlots + i);
    QCOMPARE(slotOf(&IAbstractLayerInterface::GetWidget), 2);
    QCOMPARE(slotOf(&IAbstractLayerInterface::Initialize), 3);
    QCOMPARE(slotOf(&IAbstractLayerInterface::Reconnect), 4);
}

void InterfacesTest::shouldKeepTheOrderOfTheHandlersOperations()
{
    const auto& table = handlerSlots();
    QCOMPARE(table.size(), 60);
    QCOMPARE(inOrder(table), asListed(table));
    for (int i = 0; i < table.size(); ++i)
        QCOMPARE(table.at(i).slot, kDestructorSlots + i);
    QCOMPARE(slotOf(&IAbstractControlInterface::SetObserver), 2);
}

void InterfacesTest::shouldFindTheOperationsInACompiledTable()
{
    FakeHandler host;
    Handler* handler = &host;
    for (const char* name : {"DetectProcessorsOnly", "SaveIPList", "RefreshIPList", "IsNameUtf8",
                             "ClearIPList", "IsFrontPanelHighlightAvailable"}) {
        const auto& table = handlerSlots();
        const auto found = std::find_if(table.begin(), table.end(), [&](const Slot& each) {
            return std::strcmp(each.name, name) == 0;
        });
        QVERIFY(found != table.end());
        host.clearCalls();
        callSlot(handler, found->slot);
        QCOMPARE(host.callNames(), QStringList{QLatin1String(name)});
    }
}

void InterfacesTest::shouldKeepTheHandlerBehindTheTablePointer()
{
    const PlainLayer layer;
    const IAbstractLayerInterface& base = layer;
    const auto* begin = reinterpret_cast<const char*>(&base);
    const auto* member = reinterpret_cast<const char*>(&base.m_controlHandler);
    QCOMPARE(member - begin, std::ptrdiff_t(sizeof(void*)));
    QVERIFY(!base.m_controlHandler);
}

void InterfacesTest::shouldDoNothingByDefault()
{
    PlainLayer plain;
    ITargetSelectAreaInterface& layer = plain;
    QVERIFY(!layer.GetWidget());
    QVERIFY(layer.Initialize());
    QVERIFY(layer.Reconnect());
    QCOMPARE(layer.DetectDevices(), 0U);
    ProcessorTreeSnapshot snapshot{{ProcessorGroupNode()}, {ProcessorNode()}};
    layer.GetProcessorTree(snapshot, true);
    QCOMPARE(snapshot.groups.size(), 1);
    QCOMPARE(snapshot.processors.size(), 1);
    layer.SetReadOnly(true);
    layer.SetCurrentProcessor(QUuid::createUuid());
    layer.SetOperationLock(1, true);
    layer.RemoveAllGroups();
    layer.UpdateMonitorWarningState();
    layer.ApplyOperationLock(1);
    layer.ShowLanUsbWarning({LanUsbProcessorInfo()});
    QVERIFY(layer.GetAllProcessorNodes().isEmpty());

    PlainControl control;
    IAbstractControlInterface& base = control;
    base.SetObserver(nullptr);
}

void InterfacesTest::shouldReleaseTheHandlerWithTheLayer()
{
    bool destroyed = false;
    IAbstractLayerInterface* layer = new PlainLayer;
    layer->m_controlHandler = std::make_shared<PlainControl>(&destroyed);
    QVERIFY(!destroyed);
    delete layer;
    QVERIFY(destroyed);
}

void InterfacesTest::shouldHaveNoHandlerWithoutAPanel()
{
    QVERIFY(!CTargetSelectArea::Existing());
    QVERIFY(!GetTargetSelectHandler());
    const TestPanel panel;
    QVERIFY(GetTargetSelectHandler());
}

void InterfacesTest::shouldRefuseAHandlerOfAnotherKind()
{
    TestPanel panel;
    QCOMPARE(GetTargetSelectHandler().get(), static_cast<Handler*>(&panel.host()));
    panel.area().m_controlHandler = std::make_shared<PlainControl>();
    QVERIFY(!GetTargetSelectHandler());
    panel.area().m_controlHandler.reset();
    QVERIFY(!GetTargetSelectHandler());
}

void InterfacesTest::shouldKeepAReplacedHandlerUntilTheCallEnds()
{
    TestPanel panel;
    auto host = std::make_shared<FakeHandler>();
    const std::weak_ptr<FakeHandler> watch = host;
    panel.area().m_controlHandler = std::exchange(host, nullptr);
    watch.lock()->inside = [&](const QString&) { panel.area().m_controlHandler.reset(); };

    const auto handler = GetTargetSelectHandler();
    handler->SaveIPList();
    QVERIFY(!panel.area().m_controlHandler);
    QCOMPARE(watch.lock()->callNames(), QStringList{QStringLiteral("SaveIPList")});
}

void InterfacesTest::shouldReturnThePanelAsItsWidget()
{
    TestPanel panel;
    IAbstractLayerInterface& layer = panel.area();
    QCOMPARE(layer.GetWidget(), static_cast<QWidget*>(&panel.area()));
}

TSA_TEST_MAIN(InterfacesTest)
#include "tst_interfaces.moc"
