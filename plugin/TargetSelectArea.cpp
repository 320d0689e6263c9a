#include "plugin/TargetSelectArea.h"

#include "ipmanage/HostIPList.h"
#include "ipmanage/IPManageDialog.h"
#include "plugin/MetaTypes.h"
#include "plugin/TargetSelectData.h"
#include "plugin/TargetSelectHandler.h"
#include "processortree/ExpandBranches.h"
#include "processortree/NodeType.h"
#include "processortree/ProcessorTreeModel.h"
#include "processortree/ProcessorTreeView.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QEvent>
#include <QHostAddress>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyleOption>
#include <QStylePainter>
#include <QThread>
#include <QVBoxLayout>

#include <algorithm>
#include <mutex>

namespace {

constexpr int kPanelWidth = 220;
constexpr int kControlWidth = 200;

// The detection strategy that goes by the addresses of the IP list.
constexpr int kStrategyByAddress = 2;

/// The panel of the process, and its handler as other threads may see it. Cleared before anything
/// of the panel is torn down. The handler is not owned here: one that the host replaces must go.
struct ExistingPanel
{
    std::mutex mutex;
    CTargetSelectArea* panel = nullptr;
    std::weak_ptr<IAbstractControlInterface> handler;
};

// Never destroyed: other threads may ask while the process ends.
ExistingPanel& existingPanel()
{
    static auto* const instance = new ExistingPanel;
    return *instance;
}

bool onGuiThread()
{
    const auto* application = QCoreApplication::instance();
    return application && application->thread() == QThread::currentThread();
}

/// The host may destroy `panel` whenever it is asked, and while the dialog is open.
void manageIPAddresses(QWidget* panel)
{
    const QPointer<QWidget> alive(panel);
    const QStringList before = HostIPList::entries();
    if (!alive)
        return;
    CIPManageDialog(panel).exec();
    const QStringList after = HostIPList::entries();
    const auto handler = GetTargetSelectHandler();
    if (handler && handler->IpListChanged(before, after))
        handler->DetectProcessorsOnly();
}

} // namespace

CTargetSelectArea* CTargetSelectArea::Instance()
{
    // Only the GUI thread builds a panel, so none is ever built twice; and it builds it outside the
    // mutex, so that what the constructor runs may ask for the handler.
    if (onGuiThread() && !Existing()) {
        auto* panel = new CTargetSelectArea;
        const std::lock_guard guard(existingPanel().mutex);
        existingPanel().panel = panel;
    }
    return Existing();
}

CTargetSelectArea* CTargetSelectArea::Existing()
{
    const std::lock_guard guard(existingPanel().mutex);
    return existingPanel().panel;
}

std::shared_ptr<IAbstractControlInterface> CTargetSelectArea::ControlHandler()
{
    const std::lock_guard guard(existingPanel().mutex);
    if (!existingPanel().panel)
        return {};
    if (!onGuiThread())
        return existingPanel().handler.lock();
    existingPanel().handler = existingPanel().panel->m_controlHandler;
    return existingPanel().panel->m_controlHandler;
}

CTargetSelectArea::CTargetSelectArea(QWidget* parent)
    : QWidget(parent)
    , m_ipManagement(new QPushButton(this))
    , m_processorIpLabel(new QLabel(this))
    , m_deviceSetSelector(new QComboBox(this))
    , m_treeView(new CProcessorTreeView(this))
{
    RegisterMetaTypes();
    setObjectName(QStringLiteral("TargetSelectArea"));
    setFixedWidth(kPanelWidth);
    setFocusPolicy(Qt::ClickFocus);

    m_ipManagement->setFixedWidth(kControlWidth);
    connect(m_ipManagement, &QPushButton::clicked, this, [this] { manageIPAddresses(this); });
    m_deviceSetSelector->setFixedWidth(kControlWidth);
    m_deviceSetSelector->hide();
    m_processorIpLabel->setFixedWidth(kControlWidth);
    m_processorIpLabel->setAlignment(Qt::AlignCenter);
    m_processorIpLabel->hide();

    CProcessorTreeModel* model = CTargetSelectData::Instance()->GetModel();
    m_treeView->setModel(model);
    expandBranches(*m_treeView);
    connect(model, &QAbstractItemModel::modelReset, m_treeView,
            [this] { expandBranches(*m_treeView); });
    connect(model, &QAbstractItemModel::rowsInserted, m_treeView,
            [this](const QModelIndex& parentIndex) { m_treeView->expand(parentIndex); });

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 11, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(m_ipManagement, 0, Qt::AlignCenter);
    layout->addWidget(m_deviceSetSelector, 0, Qt::AlignCenter);
    layout->addWidget(m_processorIpLabel, 0, Qt::AlignCenter);
    layout->addWidget(m_treeView, 1);
    retranslate();
}

CTargetSelectArea::~CTargetSelectArea()
{
    const std::lock_guard guard(existingPanel().mutex);
    if (existingPanel().panel == this) {
        existingPanel().panel = nullptr;
        existingPanel().handler.reset();
    }
}

QWidget* CTargetSelectArea::GetWidget()
{
    return this;
}

bool CTargetSelectArea::Initialize()
{
    const QPointer<CTargetSelectArea> alive(this);
    registerObserver();
    if (!alive)
        return true;
    CTargetSelectData::Instance()->ResetModel();
    m_treeView->reset();
    expandBranches(*m_treeView);
    updateIpManagement();
    return true;
}

bool CTargetSelectArea::Reconnect()
{
    registerObserver();
    return true;
}

quint32 CTargetSelectArea::DetectDevices()
{
    const auto handler = GetTargetSelectHandler();
    return handler ? handler->DetectAllDevices() : 0;
}

void CTargetSelectArea::GetProcessorTree(ProcessorTreeSnapshot& out, bool onlyAccepted)
{
    CTargetSelectData::Instance()->GetProcessorTree(out, onlyAccepted);
}

void CTargetSelectArea::SetReadOnly(bool readOnly)
{
    CTargetSelectData::Instance()->SetReadOnly(readOnly);
}

void CTargetSelectArea::SetCurrentProcessor(const QUuid& id)
{
    selectProcessor(id, false);
}

void CTargetSelectArea::RemoveAllGroups()
{
    CTargetSelectData::Instance()->RemoveAllGroups();
}

QList<ProcessorNode> CTargetSelectArea::GetAllProcessorNodes()
{
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
    ++m_deviceSetsGeneration;
    m_deviceSetSelector->disconnect();
    m_deviceSetSelector->clear();
    m_acceptedDeviceSet = -1;
    m_deviceSetSelector->hide();

    const auto isCurrent = [&](const SDeviceSetInfo& set) { return set.id == current; };
    const auto found = std::find_if(sets.begin(), sets.end(), isCurrent);
    const auto handler = GetTargetSelectHandler();
    if (sets.size() < 2 || IsNullGuid(current) || found == sets.end() || !handler)
        return;

    // The host may destroy the panel while it is asked, or announce other sets.
    const QPointer<CTargetSelectArea> alive(this);
    const int generation = m_deviceSetsGeneration;
    QStringList texts;
    for (const SDeviceSetInfo& set : sets)
        texts.append(handler->GetDeviceSetText(set));
    if (!alive || generation != m_deviceSetsGeneration)
        return;
    m_deviceSetSelector->addItems(texts);
    m_acceptedDeviceSet = static_cast<int>(std::distance(sets.begin(), found));
    m_deviceSetSelector->setCurrentIndex(m_acceptedDeviceSet);
    m_deviceSetSelector->show();
    connect(m_deviceSetSelector, qOverload<int>(&QComboBox::currentIndexChanged), this,
            [this, sets](int index) { confirmDeviceSet(sets, index); });
}

void CTargetSelectArea::onCurrentProcessorChanged(const QUuid& current)
{
    selectProcessor(current, true);
    updateIpManagement();
}

void CTargetSelectArea::onLANUSBGetProcessorIP()
{
    const QPointer<CTargetSelectArea> alive(this);
    QList<quint32> addresses;
    const auto handler = GetTargetSelectHandler();
    if (handler && handler->IsLanUsbMode())
        addresses = handler->GetLanUsbProcessorIps();
    if (!alive)
        return;
    if (!addresses.isEmpty()) {
        m_processorIpLabel->setText(QStringLiteral("Processor1 IP: ")
                                    + QHostAddress(addresses.first()).toString());
    }
    m_processorIpLabel->setVisible(!addresses.isEmpty());
}

void CTargetSelectArea::UpdateMonitorWarningState()
{
    m_treeView->viewport()->update();
}

void CTargetSelectArea::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
        retranslateDeviceSets();
    }
    QWidget::changeEvent(event);
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
    m_ipManagement->setText(tr("IP address management..."));
    m_treeView->setAccessibleName(tr("Processors"));
    m_deviceSetSelector->setAccessibleName(tr("Device set"));
    CTargetSelectData::Instance()->GetModel()->updateRootText();
}

void CTargetSelectArea::retranslateDeviceSets()
{
    const auto handler = GetTargetSelectHandler();
    if (!handler)
        return;
    QStringList texts;
    const int count = handler->GetDeviceSetTexts(texts);
    const int known = std::min({count, texts.size(), m_deviceSetSelector->count()});
    for (int index = 0; count > 1 && index < known; ++index)
        m_deviceSetSelector->setItemText(index, texts.at(index));
}

/// Makes the row of `id` the one selected row, if there is one and it is not selected yet.
void CTargetSelectArea::selectProcessor(const QUuid& id, bool silently)
{
    const QStandardItem* item = CTargetSelectData::Instance()->GetModel()->getItem(id);
    QItemSelectionModel* selection = m_treeView->selectionModel();
    // A host without a current processor names none; that is no reason to pick the root.
    if (!item || nodeType(*item) != NodeProcessor || selection->isSelected(item->index()))
        return;
    {
        const QSignalBlocker blocker(silently ? selection : nullptr);
        selection->setCurrentIndex(item->index(), QItemSelectionModel::ClearAndSelect);
    }
    expandBranches(*m_treeView);
    m_treeView->viewport()->update();
}

/// The user picked entry `index`; a host that refuses gets the last accepted one back.
void CTargetSelectArea::confirmDeviceSet(const QList<SDeviceSetInfo>& sets, int index)
{
    const auto handler = GetTargetSelectHandler();
    if (index < 0 || index >= sets.size() || !handler)
        return;
    // The host may ask the user, and meanwhile change the device sets or destroy the panel.
    const QPointer<CTargetSelectArea> alive(this);
    const int generation = m_deviceSetsGeneration;
    const bool accepted = handler->ConfirmDeviceSetChange(sets.at(index), index);
    if (!alive || generation != m_deviceSetsGeneration)
        return;
    if (accepted) {
        m_acceptedDeviceSet = index;
        return;
    }
    const QSignalBlocker blocker(m_deviceSetSelector);
    m_deviceSetSelector->setCurrentIndex(m_acceptedDeviceSet);
}

void CTargetSelectArea::registerObserver()
{
    CTargetSelectData* bridge = CTargetSelectData::Instance();
    bridge->Start();
    if (const auto handler = GetTargetSelectHandler())
        handler->SetObserver(bridge);
}

void CTargetSelectArea::updateIpManagement()
{
    const QPointer<CTargetSelectArea> alive(this);
    const auto handler = GetTargetSelectHandler();
    const bool available = handler && handler->IsIpManagementAvailable();
    if (alive)
        m_ipManagement->setVisible(available);
}
