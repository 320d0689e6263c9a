#pragma once

#include "host/widgets/ComboBox.h"
#include "host/widgets/MenuToolButton.h"
#include "plugin/TargetSelectArea.h"
#include "plugin/TargetSelectData.h"
#include "processortree/view/ProcessorTreeView.h"
#include "tests/support/TestPanel.h"
#include "tests/support/WarningTrap.h"

#include <QApplication>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QTest>

/// A panel in an active window, as a host docks it. Its widgets are found as a host's test would
/// find them, by what they are and where they stand.
class ShownPanel final
{
public:
    ShownPanel()
    {
        window.resize(220, 500);
        panel.area().setParent(&window);
        panel.area().resize(window.size());
        window.show();
        panel.area().show();
        QApplication::setActiveWindow(&window);
    }

    FakeHandler& host() { return panel.host(); }
    CTargetSelectArea& area() { return panel.area(); }
    CComboBox* selector() { return area().findChild<CComboBox*>(); }
    CMenuToolButton* detection() { return area().findChild<CMenuToolButton*>(); }
    CProcessorTreeView* view() { return area().findChild<CProcessorTreeView*>(); }

    /// Widgets of the panel's own column.
    template <typename Widget>
    Widget* inColumn()
    {
        return area().findChild<Widget*>(QString(), Qt::FindDirectChildrenOnly);
    }
    QPushButton* ipManagement() { return inColumn<QPushButton>(); }
    QLabel* label() { return inColumn<QLabel>(); }

    QWidget window;
    TestPanel panel;
};

/// Device sets 1 to `count`.
inline QList<SDeviceSetInfo> deviceSets(int count)
{
    QList<SDeviceSetInfo> sets;
    for (int n = 1; n <= count; ++n)
        sets.append(deviceSet(static_cast<quint32>(n)));
    return sets;
}
