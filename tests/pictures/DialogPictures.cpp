// Pictures of the dialogs of the panel.

#include "Interface/IPStatusCodes.h"
#include "base/UserMessages.h"
#include "host/common/SoftwareName.h"
#include "host/widgets/IPLineEdit.h"
#include "host/widgets/SpinBox.h"
#include "ipmanage/AddBatchIPDialog.h"
#include "ipmanage/AddBothIpDialog.h"
#include "ipmanage/AddSingleIPDialog.h"
#include "ipmanage/IPCheckMessages.h"
#include "ipmanage/IPListView.h"
#include "ipmanage/IPManageDialog.h"
#include "ipmanage/ModifyIPDialog.h"
#include "tests/pictures/Album.h"
#include "tests/pictures/Subjects.h"
#include "tests/support/TestPanel.h"

#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QTimer>
#include <QToolButton>

#include <functional>

namespace {

/// Opens `dialog`, lets `prepare` bring it into the state to show, and closes it.
void take(
    Album& album, const char* name, CDialog& dialog, const std::function<void()>& prepare = [] {})
{
    QTimer::singleShot(0, &dialog, [&] {
        prepare();
        album.save(name, dialog);
        dialog.close();
    });
    dialog.exec();
}

/// Of the window that `open` shows and waits for.
void takeOpened(Album& album, const char* name, const std::function<void()>& open)
{
    QTimer::singleShot(0, qApp, [&] {
        QWidget* window = QApplication::activePopupWidget();
        if (!window)
            window = QApplication::activeModalWidget();
        album.save(name, window->grab());
        window->close();
    });
    open();
}

void takeEntryDialogs(Album& album, FakeHandler& host)
{
    for (const bool forList : {true, false}) {
        CAddSingleIPDialog single(forList, nullptr);
        single.findChild<CIPLineEdit*>()->setText(QStringLiteral("192.168.0.21"));
        take(album, forList ? "add-one" : "add-one-processor", single);
    }
    CAddBothIpDialog both(false, nullptr);
    both.findChildren<CIPLineEdit*>().at(0)->setText(QStringLiteral("192.168.0.21"));
    both.findChildren<CIPLineEdit*>().at(1)->setText(QStringLiteral("192.168.0.22"));
    take(album, "add-two", both);
    CAddBatchIPDialog batch(false, nullptr);
    batch.findChild<CSpinBox*>()->setValue(24);
    batch.findChild<CIPLineEdit*>()->setText(QStringLiteral("192.168.0.21"));
    take(album, "add-run", batch);
    host.ipList = QStringList(QStringLiteral("192.168.0.21(Left wing)"));
    CModifyIPDialog change(0, QStringLiteral("Left wing"), nullptr);
    take(album, "change", change);
}

/// The buttons alone: in a picture of the whole dialog the outline of one would count for nothing.
void takeManagementButtons(Album& album)
{
    CIPManageDialog dialog;
    QTimer::singleShot(0, &dialog, [&] {
        QApplication::setActiveWindow(&dialog);
        dialog.findChild<CIPListView*>()->selectRow(2);
        const auto buttons =
            dialog.findChildren<QToolButton*>(QStringLiteral("IPManageToolButton"));
        QWidget* const button = buttons.at(IPManageDelete);
        button->setFocus(Qt::TabFocusReason);
        QApplication::processEvents();
        const QPoint corner = button->parentWidget()->mapTo(&dialog, QPoint());
        album.save("management-button-focused", dialog.grab(QRect(corner, QSize(240, 37))));
        dialog.close();
    });
    dialog.exec();
}

void takeManagement(Album& album, FakeHandler& host)
{
    host.ipList.clear();
    {
        CIPManageDialog empty;
        take(album, "management-empty", empty);
    }
    const char* const names[] = {"Left wing",
                                 "Right wing",
                                 "舞台中央主屏",
                                 "Foyer, upper floor",
                                 "",
                                 "A name that is as long as names get",
                                 "大厅左侧立柱屏（备用）"};
    for (int n = 0; n < 40; ++n) {
        host.ipList.append(
            QStringLiteral("192.168.0.%1(%2)").arg(11 + n).arg(QString::fromUtf8(names[n % 7])));
    }
    CIPManageDialog dialog;
    take(album, "management", dialog, [&] {
        auto* view = dialog.findChild<CIPListView*>();
        view->selectRow(2);
        view->setFocus();
    });
    takeManagementButtons(album);
    takeOpened(album, "add-menu", [&] {
        const auto buttons = dialog.findChildren<QToolButton*>();
        for (QToolButton* button : buttons) {
            if (button->menu())
                button->showMenu();
        }
    });
}

} // namespace

void takeDialogs(Album& album)
{
    set_custom_software_name(QStringLiteral("Workbench"));
    TestPanel panel;
    takeEntryDialogs(album, panel.host());
    takeManagement(album, panel.host());
    takeOpened(album, "message",
               [] { tellUser(nullptr, ipCheckMessage(IPCHECK_SAME_AS_PC, IPField::Single)); });
    takeOpened(album, "question", [] {
        askUser(nullptr, QCoreApplication::translate("CIPManageDialog",
                                                     "Are you sure you want to clear all ips?"));
    });
}
