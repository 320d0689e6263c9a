#include "ipmanage/IPManageDialog.h"

#include "Interface/IPStatusCodes.h"
#include "Interface/ProjectLimits.h"
#include "base/DialogSizes.h"
#include "base/IPText.h"
#include "base/LogCategories.h"
#include "base/UserMessages.h"
#include "host/widgets/ToolTip.h"
#include "ipmanage/AddBatchIPDialog.h"
#include "ipmanage/AddSingleIPDialog.h"
#include "ipmanage/HostIPList.h"
#include "ipmanage/IPListFile.h"
#include "ipmanage/IPListModel.h"
#include "ipmanage/IPListView.h"
#include "ipmanage/ModifyIPDialog.h"

#include <QBoxLayout>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QItemSelectionModel>
#include <QMenu>
#include <QShortcut>
#include <QStandardPaths>
#include <QToolButton>

#include <algorithm>

namespace {

struct ButtonLook
{
    const char* icon;
    const char* toolTip;
    IPManageButtonId id;
    bool hasDisabledIcon;
    char letter; ///< Presses the button together with Alt, in every language.
};

constexpr ButtonLook kButtons[] = {
    {"Add", QT_TRANSLATE_NOOP("CIPManageDialog", "Add"), IPManageAdd, false, 'A'},
    {"Edit", QT_TRANSLATE_NOOP("CIPManageDialog", "Edit"), IPManageEdit, true, 'E'},
    {"Delete", QT_TRANSLATE_NOOP("CIPManageDialog", "Delete"), IPManageDelete, true, 'D'},
    {"Clear", QT_TRANSLATE_NOOP("CIPManageDialog", "Clear"), IPManageClear, true, 'C'},
    {"Import", QT_TRANSLATE_NOOP("CIPManageDialog", "Import"), IPManageImport, false, 'I'},
    {"Export", QT_TRANSLATE_NOOP("CIPManageDialog", "Export"), IPManageExport, true, 'X'},
};

constexpr const char* kMenuTexts[] = {
    QT_TRANSLATE_NOOP("CIPManageDialog", "Read IP from online processors"),
    QT_TRANSLATE_NOOP("CIPManageDialog", "Add an IP address..."),
    QT_TRANSLATE_NOOP("CIPManageDialog", "Add multiple IP addresses..."),
};

constexpr QSize kIconSize(20, 20);
constexpr QSize kButtonSize(24, 24);
constexpr int kToolBarHeight = 37;
constexpr int kAddMenuHeight = 104;

QIcon buttonIcon(const ButtonLook& look)
{
    const QString path =
        QStringLiteral(":/Image/Target/IPManage/%1/%2.svg").arg(QLatin1String(look.icon));
    QIcon icon(path.arg(QStringLiteral("normal")));
    if (look.hasDisabledIcon)
        icon.addFile(path.arg(QStringLiteral("disabled")), kIconSize, QIcon::Disabled, QIcon::Off);
    return icon;
}

/// Returns the desktop, or the user's own folder where there is none: Qt's dialog would begin in
/// the folder from which the program was started.
QString desktopFolder()
{
    const QString desktop = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    return QFileInfo(desktop).isDir() ? desktop : QDir::homePath();
}

} // namespace

CIPManageDialog::CIPManageDialog(QWidget* parent)
    : CDialog(parent, QString(), QString(), CloseTitleButton)
{
    Init();
    updateButtons();
}

void CIPManageDialog::InitWidgets()
{
    setFixedSize(DialogSizes::kAddressManagement);
    createButtons();
    createAddMenu();
    m_view = new CIPListView(this);
    m_view->reload();
    retranslate();
    updateButtons();
}

void CIPManageDialog::createButtons()
{
    for (const ButtonLook& look : kButtons) {
        auto* button = new QToolButton(this);
        button->setIcon(buttonIcon(look));
        button->setObjectName(QStringLiteral("IPManageToolButton"));
        button->setIconSize(kIconSize);
        button->setFixedSize(kButtonSize);
        button->setProperty("ToolLocation", CToolTip::Below);
        button->setShortcut(QLatin1String("Alt+") + QLatin1Char(look.letter));
        m_buttons.insert(look.id, button);
    }
    for (const IPManageButtonId id : {IPManageEdit, IPManageDelete, IPManageClear})
        m_buttons[id]->setEnabled(false);
}

void CIPManageDialog::createAddMenu()
{
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("IPManageMenu"));
    menu->setFixedHeight(kAddMenuHeight);
    for (const IPManageMenuId id : {IPManageReadOnline, IPManageAddOne, IPManageAddMultiple})
        m_actions.insert(id, menu->addAction(QString()));
    // Before the entry acts: assistive technology triggers it and leaves the menu open.
    connect(menu, &QMenu::triggered, menu, &QWidget::hide);
    QToolButton* button = m_buttons[IPManageAdd];
    button->setMenu(menu);
    button->setPopupMode(QToolButton::InstantPopup);
    button->setArrowType(Qt::NoArrow);
}

void CIPManageDialog::InitLayout(QBoxLayout* body)
{
    body->setContentsMargins(0, 0, 0, 0);
    auto* toolBar = new QWidget(this);
    toolBar->setFixedHeight(kToolBarHeight);
    auto* row = new QHBoxLayout(toolBar);
    row->setContentsMargins(14, 8, 16, 9);
    row->setSpacing(5);
    for (QToolButton* button : qAsConst(m_buttons))
        row->addWidget(button);
    row->addStretch();
    body->addWidget(toolBar);
    body->addWidget(m_view);
}

void CIPManageDialog::InitConnections()
{
    const auto onClick = [this](IPManageButtonId id, void (CIPManageDialog::*action)()) {
        connect(m_buttons[id], &QToolButton::clicked, this, action);
    };
    onClick(IPManageEdit, &CIPManageDialog::editCurrent);
    onClick(IPManageDelete, &CIPManageDialog::deleteSelected);
    onClick(IPManageClear, &CIPManageDialog::clearAll);
    onClick(IPManageImport, &CIPManageDialog::importFile);
    onClick(IPManageExport, &CIPManageDialog::exportFile);

    const auto onTrigger = [this](IPManageMenuId id, void (CIPManageDialog::*action)()) {
        connect(m_actions[id], &QAction::triggered, this, action);
    };
    onTrigger(IPManageReadOnline, &CIPManageDialog::readOnline);
    onTrigger(IPManageAddOne, &CIPManageDialog::addOne);
    onTrigger(IPManageAddMultiple, &CIPManageDialog::addMultiple);

    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &CIPManageDialog::updateSelectionButtons);
    connectList();
}

/// A disabled button ignores click(), so keys and double clicks follow the rules of the buttons.
void CIPManageDialog::connectList()
{
    const auto onKey = [this](const QKeySequence& key, IPManageButtonId id) {
        auto* shortcut = new QShortcut(key, m_view);
        shortcut->setContext(Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, m_buttons[id], &QToolButton::click);
    };
    onKey(Qt::Key_Delete, IPManageDelete);
    onKey(Qt::Key_F2, IPManageEdit);
    connect(m_view, &CIPListView::doubleClicked, m_buttons[IPManageEdit], &QToolButton::click);
}

void CIPManageDialog::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    CDialog::changeEvent(event);
}

void CIPManageDialog::retranslate()
{
    setWindowTitle(tr("IP address management"));
    for (const ButtonLook& look : kButtons) {
        const QString text = tr(look.toolTip);
        m_buttons[look.id]->setToolTip(text);
        m_buttons[look.id]->setAccessibleName(text);
    }
    for (auto action = m_actions.cbegin(); action != m_actions.cend(); ++action)
        action.value()->setText(tr(kMenuTexts[action.key()]));
}

void CIPManageDialog::reload()
{
    m_view->reload();
    updateButtons();
}

void CIPManageDialog::updateButtons()
{
    const bool empty = HostIPList::entries().isEmpty();
    const bool selected = !empty && m_view->selectionModel()->hasSelection();
    m_buttons[IPManageEdit]->setEnabled(selected);
    m_buttons[IPManageDelete]->setEnabled(selected);
    m_buttons[IPManageClear]->setEnabled(!empty);
    m_buttons[IPManageExport]->setEnabled(!empty);
}

void CIPManageDialog::updateSelectionButtons()
{
    const int rows = m_view->selectionModel()->selectedRows().size();
    m_buttons[IPManageEdit]->setEnabled(rows == 1);
    m_buttons[IPManageDelete]->setEnabled(rows >= 1);
}

void CIPManageDialog::readOnline()
{
    switch (HostIPList::readOnline()) {
    case 0:
        reload();
        break;
    case IPLIST_FULL:
        tellUser(this, tr("The number of IP addresses exceeds 255, and some IP addresses are not "
                          "added."));
        break;
    case IPLIST_ONLINE_EMPTY:
        tellUser(this, tr("Online IP gets successfully, but the number of IP addresses is 0."));
        break;
    default:
        break;
    }
}

void CIPManageDialog::addOne()
{
    if (!hasRoom())
        return;
    CAddSingleIPDialog dialog(true, this);
    if (dialog.exec() == Accepted)
        reload();
}

void CIPManageDialog::addMultiple()
{
    if (!hasRoom())
        return;
    CAddBatchIPDialog dialog(true, this);
    if (dialog.exec() == Accepted)
        reload();
}

/// Returns whether the list has room for an entry; otherwise informs the user.
bool CIPManageDialog::hasRoom()
{
    if (HostIPList::entries().size() < ProjectLimits::kMaxIpEntries)
        return true;
    tellUser(this, tr("The number of IP addresses exceeds 255, and some IP addresses are not "
                      "added."));
    return false;
}

void CIPManageDialog::editCurrent()
{
    const QItemSelectionModel* selection = m_view->selectionModel();
    const QModelIndex current = selection->currentIndex();
    if (!selection->hasSelection() || !current.isValid())
        return;
    const QString name = current.sibling(current.row(), 1).data().toString();
    CModifyIPDialog dialog(current.row(), name, this);
    if (dialog.exec() == Accepted)
        reload();
}

void CIPManageDialog::deleteSelected()
{
    // Collected first, because the host may change the list, and close the dialog, during a
    // deletion.
    QList<quint32> addresses;
    const QModelIndexList rows = m_view->selectionModel()->selectedRows(0);
    for (const QModelIndex& row : rows)
        addresses.append(networkAddressOfEntry(row.data(CIPListModel::EntryRole).toString()));
    for (const quint32 address : qAsConst(addresses))
        HostIPList::remove(address);
    reload();
}

void CIPManageDialog::clearAll()
{
    if (!askUser(this, tr("Are you sure you want to clear all ips?")))
        return;
    HostIPList::clear();
    HostIPList::save();
    reload();
}

void CIPManageDialog::importFile()
{
    QFileDialog dialog(this, tr("Import an IP address list"), desktopFolder(),
                       tr("IP Address File(*.txt);;AllFile(*.*)"));
    if (dialog.exec() != Accepted)
        return;
    importFiles(dialog.selectedFiles());
}

void CIPManageDialog::importFiles(const QStringList& files)
{
    if (files.size() > 1) {
        qCInfo(lcAddresses, "%d files are not imported: one at a time", files.size());
        return;
    }
    if (files.value(0).isEmpty()) {
        tellUser(this, tr("Import failed, file name is empty."));
        return;
    }
    switch (HostIPList::importFile(files.first())) {
    case 0:
        reload();
        HostIPList::showTip(tr("Import successfully."));
        break;
    case IPIMPORT_NO_VALID_IP:
        tellUser(this, tr("Import failed, no valid IP."));
        break;
    case IPIMPORT_OPEN_FAILED:
        tellUser(this, tr("Import failed with file opening error."));
        break;
    default:
        break;
    }
}

void CIPManageDialog::exportFile()
{
    const QString path = QFileDialog::getSaveFileName(
        this, tr("Export an IP address list"), desktopFolder() + QStringLiteral("/ipList.txt"),
        tr("IP Address File(*.txt);;*.txt"));
    QFile file(path);
    // Opening the file truncates it, so it must not happen without a handler.
    if (path.isEmpty() || !HostIPList::isThere()
        || !file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text)) {
        qCInfo(lcAddresses, "nothing is exported to \"%s\": %s", qPrintable(path),
               qPrintable(file.errorString()));
        return;
    }
    const IPListFile::Result result = IPListFile::write(file, HostIPList::entries());
    file.close();
    switch (result) {
    case IPListFile::Result::Written:
        HostIPList::showTip(tr("Export successfully."));
        break;
    case IPListFile::Result::Replaced:
        HostIPList::showTip(
            tr("Export successfully. Characters that the file's encoding lacks were replaced."));
        break;
    case IPListFile::Result::Failed:
        tellUser(this, tr("Export failed, the file could not be written completely."));
        break;
    }
}
