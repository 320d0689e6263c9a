#include "plugin/TargetSelectArea.h"

#include "Interface/TargetSelectArea.h"
#include "base/ContractCheck.h"
#include "base/GuiThread.h"
#include "base/LogCategories.h"
#include "base/MetaTypes.h"
#include "base/PanelStep.h"
#include "base/TargetSelectHandler.h"
#include "host/widgets/MenuToolButton.h"
#include "host/widgets/Separator.h"
#include "plugin/AddressManagement.h"
#include "plugin/DeadLayer.h"
#include "plugin/DeviceDetection.h"
#include "plugin/DeviceSetSelector.h"
#include "plugin/LanUsbWarnings.h"
#include "plugin/PanelChecks.h"
#include "plugin/TargetSelectData.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "processortree/view/ProcessorTree.h"

#include <QAbstractEventDispatcher>
#include <QAction>
#include <QEvent>
#include <QHostAddress>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QStyleOption>
#include <QStylePainter>
#include <QVBoxLayout>

#include <atomic>

namespace {

constexpr int kPanelWidth = 220;
constexpr int kControlWidth = 200;

// The detection strategy that goes by the addresses of the IP list.
constexpr int kStrategyByAddress = 2;

/// The panel of the process. Cleared before anything of the panel is torn down.
std::atomic<CTargetSelectArea*> existingPanel{nullptr};

/// Where the layer is in a panel, which is not to be looked up in a dead one.
std::ptrdiff_t placeOfLayer(CTargetSelectArea& panel)
{
    const auto* layer = reinterpret_cast<char*>(static_cast<ITargetSelectAreaInterface*>(&panel));
    return layer - reinterpret_cast<char*>(&panel);
}
std::ptrdiff_t layerInPanel = 0;

void checkThread(const char* operation)
{
    if (!ContractCheck::isOn() || isGuiThread())
        return;
    ContractCheck::report(
        ContractCheck::Finding::CallOnWrongThread,
        QStringLiteral("%1 is called on the GUI thread alone").arg(QLatin1String(operation)));
}

} // namespace

CTargetSelectArea* CTargetSelectArea::Instance()
{
    // Only the GUI thread builds a panel, so none is ever built twice.
    if (isGuiThread() && !Existing()) {
        auto* panel = new CTargetSelectArea;
        existingPanel = panel;
        HandlerPlace::set(&panel->m_controlHandler);
        CTargetSelectData::Instance()->setPanel(panel);
    }
    return Existing();
}

CTargetSelectArea* CTargetSelectArea::Existing()
{
    return existingPanel;
}

CTargetSelectArea::CTargetSelectArea(QWidget* parent)
    : QWidget(parent)
    , m_detection(new CMenuToolButton(this))
    , m_ipManagement(new QPushButton(this))
    , m_processorIpLabel(new QLabel(this))
    , m_deviceSetSelector(new CDeviceSetSelector(this))
    , m_tree(new CProcessorTree(*CTargetSelectData::Instance(),
                                *CTargetSelectData::Instance()->GetModel(), this))
    , m_warnings(new CLanUsbWarnings(this))
{
    RegisterMetaTypes();
    setObjectName(QStringLiteral("TargetSelectArea"));
    setProperty("interfaceVersion", TARGETSELECTAREA_INTERFACE_VERSION);
    setProperty("libraryVersion", QStringLiteral(TSA_VERSION));
    setFixedWidth(kPanelWidth);
    setFocusPolicy(Qt::ClickFocus);

    m_detection->setObjectName(QString());
    m_detection->setFixedWidth(kControlWidth);
    const auto detect = [this](DetectionScope scope) { detectDevices(m_detection, scope); };
    connect(m_detection, &QAbstractButton::clicked, this,
            [detect] { detect(DetectionScope::AllDevices); });
    for (const auto scope : {DetectionScope::AllDevices, DetectionScope::ProcessorsOnly}) {
        connect(m_detection->AddAction(QString()), &QAction::triggered, this,
                [detect, scope] { detect(scope); });
    }
    m_ipManagement->setFixedWidth(kControlWidth);
    connect(m_ipManagement, &QPushButton::clicked, this, [this] { manageAddresses(this); });
    m_deviceSetSelector->setFixedWidth(kControlWidth);
    m_processorIpLabel->setFixedWidth(kControlWidth);
    m_processorIpLabel->setAlignment(Qt::AlignCenter);
    m_processorIpLabel->hide();

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 11, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(m_detection, 0, Qt::AlignCenter);
    layout->addWidget(m_ipManagement, 0, Qt::AlignCenter);
    layout->addWidget(m_deviceSetSelector, 0, Qt::AlignCenter);
    layout->addWidget(m_processorIpLabel, 0, Qt::AlignCenter);
    auto* separator = new CSeparator(this, 0, 4);
    layout->addWidget(separator);
    layout->addWidget(m_tree, 1);
    // Assistive technology reads the parts in the order in which they are stacked.
    for (QWidget* part : {static_cast<QWidget*>(m_processorIpLabel),
                          static_cast<QWidget*>(separator), static_cast<QWidget*>(m_tree)})
        part->raise();
    retranslate();

    // A host assigns its handler without a word; other threads are to have it soon all the same.
    if (const auto* dispatcher = QAbstractEventDispatcher::instance())
        connect(dispatcher, &QAbstractEventDispatcher::awake, this, &HandlerPlace::refresh);
    layerInPanel = placeOfLayer(*this);
    if (ContractCheck::isOn())
        m_checks = new CPanelChecks(*this);
}

CTargetSelectArea::~CTargetSelectArea()
{
    m_deviceSetSelector->leaveDyingPanel();
    if (!m_detection->isEnabledTo(this)) {
        // The host destroys the panel during a detection: Qt is not done with the click yet.
        CPanelStep::keep(m_detection);
    }
    if (existingPanel == this) {
        existingPanel = nullptr;
        HandlerPlace::set(nullptr);
        CTargetSelectData::Instance()->setPanel(nullptr);
    }
}

void* CTargetSelectArea::operator new(std::size_t size)
{
    return ::operator new(size);
}

void CTargetSelectArea::operator delete(void* memory)
{
    if (ContractCheck::isOn())
        DeadLayer::bury(static_cast<char*>(memory) + layerInPanel);
    else
        ::operator delete(memory);
}

QWidget* CTargetSelectArea::GetWidget()
{
    checkThread("GetWidget");
    return this;
}

bool CTargetSelectArea::Initialize()
{
    checkThread("Initialize");
    const QPointer<CTargetSelectArea> alive(this);
    registerObserver();
    if (!alive)
        return true;
    CTargetSelectData::Instance()->ResetModel();
    if (!alive)
        return true;
    m_tree->ResetView();
    if (m_checks)
        m_checks->noteInitialized();
    updateIpManagement();
    return true;
}

bool CTargetSelectArea::Reconnect()
{
    checkThread("Reconnect");
    registerObserver();
    return true;
}

quint32 CTargetSelectArea::DetectDevices()
{
    checkThread("DetectDevices");
    const auto handler = GetTargetSelectHandler();
    return handler ? handler->DetectAllDevices() : 0;
}

void CTargetSelectArea::GetProcessorTree(ProcessorTreeSnapshot& out, bool onlyAccepted)
{
    checkThread("GetProcessorTree");
    CTargetSelectData::Instance()->GetProcessorTree(out, onlyAccepted);
}

void CTargetSelectArea::SetReadOnly(bool readOnly)
{
    checkThread("SetReadOnly");
    CTargetSelectData::Instance()->SetReadOnly(readOnly);
    m_tree->UpdateAddButton();
}

void CTargetSelectArea::SetCurrentProcessor(const QUuid& id)
{
    checkThread("SetCurrentProcessor");
    m_tree->SelectProcessor(id, true);
}

void CTargetSelectArea::SetOperationLock(int key, bool locked)
{
    checkThread("SetOperationLock");
    qCDebug(lcPanel, "lock %d is %s", key, locked ? "set" : "released");
    m_ipManagement->setEnabled(!locked);
    m_deviceSetSelector->setEnabled(!locked);
    m_tree->SetOperationLock(key, locked);
}

void CTargetSelectArea::RemoveAllGroups()
{
    checkThread("RemoveAllGroups");
    CTargetSelectData::Instance()->RemoveAllGroups();
}

void CTargetSelectArea::ApplyOperationLock(int key)
{
    checkThread("ApplyOperationLock");
    m_tree->ApplyOperationLock(key);
}

void CTargetSelectArea::ShowLanUsbWarning(const std::vector<LanUsbProcessorInfo>& processors)
{
    checkThread("ShowLanUsbWarning");
    m_warnings->show(processors);
}

QList<ProcessorNode> CTargetSelectArea::GetAllProcessorNodes()
{
    checkThread("GetAllProcessorNodes");
    const auto handler = GetTargetSelectHandler();
    return handler ? handler->GetAllProcessorNodes() : QList<ProcessorNode>();
}

void CTargetSelectArea::onDetectStrategyChanged(int strategy)
{
    m_detectStrategy = strategy;
    m_ipManagement->setVisible(strategy == kStrategyByAddress);
}

void CTargetSelectArea::onCurrentDeviceSetChanged(GUID current, const QList<SDeviceSetInfo>& sets)
{
    m_deviceSetSelector->setDeviceSets(current, sets);
}

void CTargetSelectArea::onCurrentProcessorChanged(const QUuid& current)
{
    const QPointer<CTargetSelectArea> alive(this);
    m_tree->SelectProcessor(current, false);
    if (alive)
        updateIpManagement();
}

void CTargetSelectArea::onLANUSBGetProcessorIP()
{
    const QPointer<CTargetSelectArea> alive(this);
    QList<quint32> addresses;
    if (askHost(&Host::IsLanUsbMode) && alive)
        addresses = askHost(&Host::GetLanUsbProcessorIps);
    if (!alive)
        return;
    if (!addresses.isEmpty()) {
        m_lanUsbAddress = addresses.first();
        showLanUsbAddress();
    }
    m_processorIpLabel->setVisible(!addresses.isEmpty());
}

void CTargetSelectArea::showLanUsbAddress()
{
    m_processorIpLabel->setText(tr("Processor1 IP: ") + QHostAddress(m_lanUsbAddress).toString());
}

void CTargetSelectArea::UpdateMonitorWarningState()
{
    checkThread("UpdateMonitorWarningState");
    m_tree->UpdateMonitorWarnings();
}

bool CTargetSelectArea::event(QEvent* event)
{
    // Not in changeEvent(), behind which Qt goes on with a panel that the host may have destroyed.
    if (event->type() == QEvent::LanguageChange) {
        const QPointer<CTargetSelectArea> alive(this);
        retranslate();
        m_deviceSetSelector->updateTexts();
        if (!alive)
            return true;
    }
    return QWidget::event(event);
}

void CTargetSelectArea::paintEvent(QPaintEvent* event)
{
    Q_UNUSED(event)
    // A plain QWidget subclass does not draw its style sheet by itself.
    QStyleOption option;
    option.initFrom(this);
    QStylePainter(this).drawPrimitive(QStyle::PE_Widget, option);
}

void CTargetSelectArea::retranslate()
{
    m_detection->setText(tr("Detect devices"));
    m_ipManagement->setText(tr("IP address management..."));
    const QList<QAction*> entries = m_detection->menu()->actions();
    entries.at(0)->setText(tr("All devices"));
    entries.at(1)->setText(tr("Processors only"));
    m_deviceSetSelector->setSpokenName(tr("Device set"));
    showLanUsbAddress();
    CTargetSelectData::Instance()->GetModel()->updateRootText();
}

void CTargetSelectArea::registerObserver()
{
    CTargetSelectData* bridge = CTargetSelectData::Instance();
    bridge->Start();
    const auto control = HandlerPlace::current();
    HandlerPlace::noteConnected(control);
    if (const auto handler = GetTargetSelectHandler()) {
        handler->SetObserver(bridge);
        return;
    }
    qCInfo(lcPanel, "no observer is registered: there is no handler");
    if (control) {
        ContractCheck::report(
            ContractCheck::Finding::ForeignHandler,
            QStringLiteral("m_controlHandler is an ITargetSelectInterfaceHandler, "
                           "got another class"));
    } else {
        ContractCheck::report(ContractCheck::Finding::NoHandler,
                              QStringLiteral("m_controlHandler is assigned before Initialize() and "
                                             "Reconnect(), it is empty"));
    }
}

void CTargetSelectArea::updateIpManagement()
{
    const QPointer<CTargetSelectArea> alive(this);
    const auto handler = GetTargetSelectHandler();
    const bool available = handler && handler->IsIpManagementAvailable();
    if (alive)
        m_ipManagement->setVisible(available);
}
