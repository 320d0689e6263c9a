#pragma once

#include "Interface/DeviceSetInfo.h"
#include "Interface/TargetSelectAreaInterface.h"
#include "plugin/Singleton.h"

#include <QList>
#include <QUuid>
#include <QWidget>

#include <cstddef>
#include <memory>

class CDeviceSetSelector;
class CLanUsbWarnings;
class CMenuToolButton;
class CPanelChecks;
class CProcessorTree;
class QLabel;
class QPushButton;

/// The panel that the host docks: the device detection, the button of the IP address management,
/// the device set selector, the line with a LAN-USB processor's address, and the processor tree.
///
/// GUI thread, but for Existing(). Lives until its Qt parent, or the host through the layer
/// interface, destroys it; Instance() then builds a new one.
class CTargetSelectArea final : public QWidget,
                                public ITargetSelectAreaInterface,
                                public CSingleton<CTargetSelectArea>
{
    Q_OBJECT

public:
    /// The panel of the process, built on first use and after the last one was destroyed. GUI
    /// thread; any other gets the existing one or null.
    static CTargetSelectArea* Instance();

    /// The panel if there is one. Any thread may ask, the GUI thread may use it.
    static CTargetSelectArea* Existing();

    /// Builds a panel. Does not reach the host, which has given no handler yet.
    explicit CTargetSelectArea(QWidget* parent = nullptr);
    ~CTargetSelectArea() override;

    /// Keeps the memory while the contract checks are on, so that later uses of the layer are told.
    /// Not inlined: a compiler that looks through one of them takes it for a mismatch of the other.
    Q_NEVER_INLINE static void* operator new(std::size_t size);
    Q_NEVER_INLINE static void operator delete(void* memory);

    QWidget* GetWidget() override;
    bool Initialize() override;
    bool Reconnect() override;
    quint32 DetectDevices() override;
    void GetProcessorTree(ProcessorTreeSnapshot& out, bool onlyAccepted) override;
    void SetReadOnly(bool readOnly) override;
    void SetCurrentProcessor(const QUuid& id) override;
    void SetOperationLock(int key, bool locked) override;
    void RemoveAllGroups() override;
    void ApplyOperationLock(int key) override;
    void ShowLanUsbWarning(const std::vector<LanUsbProcessorInfo>& processors) override;
    QList<ProcessorNode> GetAllProcessorNodes() override;

    /// The detection strategy that the host announced last; 0 before it did.
    int detectStrategy() const { return m_detectStrategy; }

public slots:
    /// How the host detects devices: with 2, by the addresses that the user manages.
    void onDetectStrategyChanged(int strategy);

    /// The current one of the host's device sets, all-zero for none; and all of them.
    void onCurrentDeviceSetChanged(GUID, const QList<SDeviceSetInfo>&);

    /// The host made a processor current: selects its row without reporting that back, and asks
    /// again whether there are addresses to manage.
    void onCurrentProcessorChanged(const QUuid& current);

    /// The addresses of LAN-USB processors may have changed.
    void onLANUSBGetProcessorIP();

    /// Repaints the tree.
    void UpdateMonitorWarningState() override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void retranslate();
    void showLanUsbAddress();
    void registerObserver();
    void updateIpManagement();

    CMenuToolButton* m_detection;            // Qt child
    QPushButton* m_ipManagement;             // Qt child
    QLabel* m_processorIpLabel;              // Qt child
    CDeviceSetSelector* m_deviceSetSelector; // Qt child
    CProcessorTree* m_tree;                  // Qt child
    CLanUsbWarnings* m_warnings;             // Qt child
    CPanelChecks* m_checks = nullptr;        // Qt child; null while the checks are off
    quint32 m_lanUsbAddress = 0;             // of the first LAN-USB processor
    int m_detectStrategy = 0;
};
