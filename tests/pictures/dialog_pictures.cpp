// Pictures of the panel's dialogs for the documentation: dialog_pictures FOLDER LANGUAGE SUFFIX

#include "Interface/IPStatusCodes.h"
#include "host/common/SoftwareName.h"
#include "host/widgets/HostTheme.h"
#include "host/widgets/IPLineEdit.h"
#include "host/widgets/SpinBox.h"
#include "ipmanage/AddBatchIPDialog.h"
#include "ipmanage/AddBothIpDialog.h"
#include "ipmanage/AddSingleIPDialog.h"
#include "ipmanage/IPCheckMessages.h"
#include "ipmanage/IPListView.h"
#include "ipmanage/IPManageDialog.h"
#include "ipmanage/ModifyIPDialog.h"
#include "plugin/UserMessages.h"
#include "tests/support/TestPanel.h"

#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QTimer>
#include <QToolButton>
#include <QTranslator>

#include <functional>
#include <iostream>

namespace {

class Photographer final
{
public:
    Photographer(QString folder, QString suffix)
        : m_folder(std::move(folder))
        , m_suffix(std::move(suffix))
    {
    }

    bool failed() const { return m_failed; }

    /// Opens `dialog`, lets `prepare` bring it into the state to show, and closes it.
    void take(
        const char* name, CDialog& dialog, const std::function<void()>& prepare = [] {})
    {
        QTimer::singleShot(0, &dialog, [&] {
            prepare();
            QApplication::processEvents();
            save(name, dialog.grab());
            dialog.close();
        });
        dialog.exec();
    }

    /// Of the window that `open` shows and waits for.
    void takeOpened(const char* name, const std::function<void()>& open)
    {
        QTimer::singleShot(0, qApp, [&] {
            QWidget* window = QApplication::activePopupWidget();
            if (!window)
                window = QApplication::activeModalWidget();
            save(name, window->grab());
            window->close();
        });
        open();
    }

private:
    void save(const char* name, const QPixmap& picture)
    {
        const QString file =
            QStringLiteral("%1/%2%3.png").arg(m_folder, QLatin1String(name), m_suffix);
        m_failed = !picture.save(file) || m_failed;
    }

    QString m_folder;
    QString m_suffix;
    bool m_failed = false;
};

void speak(const QString& language)
{
    if (language != QLatin1String("zh_CN"))
        return;
    for (const char* file : {":/TargetSelectArea/translations/TargetSelectArea_zh_CN.qm",
                             ":/HostWidgets/translations/HostWidgets_zh_CN.qm"}) {
        auto* translator = new QTranslator(qApp);
        translator->load(QLatin1String(file));
        QCoreApplication::installTranslator(translator);
    }
}

void takeEntryDialogs(Photographer& photographer, FakeHandler& host)
{
    for (const bool forList : {true, false}) {
        CAddSingleIPDialog single(forList, nullptr);
        single.findChild<CIPLineEdit*>()->setText(QStringLiteral("192.168.0.21"));
        photographer.take(forList ? "add-one" : "add-one-processor", single);
    }
    CAddBothIpDialog both(false, nullptr);
    both.findChildren<CIPLineEdit*>().at(0)->setText(QStringLiteral("192.168.0.21"));
    both.findChildren<CIPLineEdit*>().at(1)->setText(QStringLiteral("192.168.0.22"));
    photographer.take("add-two", both);
    CAddBatchIPDialog batch(false, nullptr);
    batch.findChild<CSpinBox*>()->setValue(24);
    batch.findChild<CIPLineEdit*>()->setText(QStringLiteral("192.168.0.21"));
    photographer.take("add-run", batch);
    host.ipList = QStringList(QStringLiteral("192.168.0.21(Left wing)"));
    CModifyIPDialog change(0, QStringLiteral("Left wing"), nullptr);
    photographer.take("change", change);
}

void takeManagement(Photographer& photographer, FakeHandler& host)
{
    host.ipList.clear();
    {
        CIPManageDialog empty;
        photographer.take("management-empty", empty);
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
    photographer.take("management", dialog, [&] {
        auto* view = dialog.findChild<CIPListView*>();
        view->selectRow(2);
        view->setFocus();
    });
    photographer.takeOpened("add-menu", [&] {
        const auto buttons = dialog.findChildren<QToolButton*>();
        for (QToolButton* button : buttons) {
            if (button->menu())
                button->showMenu();
        }
    });
}

} // namespace

int main(int argc, char** argv)
{
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4 || !QDir().mkpath(arguments.at(1))) {
        std::cerr << "usage: dialog_pictures FOLDER LANGUAGE SUFFIX\n";
        return 2;
    }
    ApplyHostTheme(application);
    set_custom_software_name(QStringLiteral("Workbench"));
    TestPanel panel;
    speak(arguments.at(2));
    Photographer photographer(arguments.at(1), arguments.at(3));
    takeEntryDialogs(photographer, panel.host());
    takeManagement(photographer, panel.host());
    photographer.takeOpened(
        "message", [] { tellUser(nullptr, ipCheckMessage(IPCHECK_SAME_AS_PC, IPField::Single)); });
    photographer.takeOpened("question", [] {
        askUser(nullptr, QCoreApplication::translate("CIPManageDialog",
                                                     "Are you sure you want to clear all ips?"));
    });
    return photographer.failed() ? 1 : 0;
}
