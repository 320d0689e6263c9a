#include "plugin/AddressManagement.h"

#include "base/GuiThread.h"
#include "base/LogCategories.h"
#include "base/TargetSelectHandler.h"
#include "ipmanage/HostIPList.h"
#include "ipmanage/IPManageDialog.h"

#include <QPointer>
#include <QWidget>

namespace {

bool isDetectionDue(const QStringList& before, const QStringList& after)
{
    const auto handler = GetTargetSelectHandler();
    return handler && handler->IpListChanged(before, after);
}

} // namespace

void manageAddresses(QWidget* panel)
{
    Q_ASSERT(panel && isThreadOf(*panel));
    // The host may destroy the panel whenever it is asked, and while the dialog is open.
    const QPointer<QWidget> alive(panel);
    const QStringList before = HostIPList::entries();
    if (!alive)
        return;
    CIPManageDialog(panel).exec();
    if (!alive)
        return;
    const QStringList after = HostIPList::entries();
    if (!alive)
        return;
    const bool isDue = isDetectionDue(before, after);
    qCDebug(lcPanel, "after the IP list, the host wants %s detection", isDue ? "a" : "no");
    if (!isDue || !alive)
        return;
    if (const auto handler = GetTargetSelectHandler())
        handler->DetectProcessorsOnly();
}
