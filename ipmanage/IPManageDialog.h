#pragma once

#include "host/widgets/Dialog.h"

#include <QMap>

class CIPListView;
class QAction;
class QToolButton;

/// The buttons of the management dialog, in their order.
enum IPManageButtonId {
    IPManageAdd,
    IPManageEdit,
    IPManageDelete,
    IPManageClear,
    IPManageImport,
    IPManageExport
};

/// The entries of its add menu, in their order.
enum IPManageMenuId { IPManageReadOnline, IPManageAddOne, IPManageAddMultiple };

/// Manages the host's list of IP addresses: shows it, and adds, changes, deletes, imports and
/// exports entries. Every change goes to the host at once; the dialog keeps no list of its own and
/// reads the host's again after each. GUI thread.
class CIPManageDialog final : public CDialog
{
    Q_OBJECT

public:
    explicit CIPManageDialog(QWidget* parent = nullptr);

protected:
    void InitWidgets() override;
    void InitLayout(QBoxLayout* body) override;
    void InitConnections() override;
    void changeEvent(QEvent* event) override;

private:
    void createButtons();
    void createAddMenu();
    void retranslate();

    void reload();
    void updateButtons();
    void updateSelectionButtons();

    void readOnline();
    void addOne();
    void addMultiple();
    bool hasRoom();
    void editCurrent();
    void deleteSelected();
    void clearAll();
    void importFile();
    Q_INVOKABLE void importFiles(const QStringList& files);
    void exportFile();

    QMap<IPManageButtonId, QToolButton*> m_buttons; // Qt children
    QMap<IPManageMenuId, QAction*> m_actions;       // Qt children
    CIPListView* m_view = nullptr;                  // Qt child
};
