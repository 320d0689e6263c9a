#pragma once

#include "host/widgets/Dialog.h"

#include <QMap>

class CIPListView;
class QAction;
class QToolButton;

/// The buttons of the management dialog, from left to right.
enum IPManageButtonId {
    IPManageAdd,
    IPManageEdit,
    IPManageDelete,
    IPManageClear,
    IPManageImport,
    IPManageExport
};

/// The entries of the add menu, from top to bottom.
enum IPManageMenuId { IPManageReadOnline, IPManageAddOne, IPManageAddMultiple };

/// Shows the host's IP list, and adds, changes, deletes, imports and exports entries. Each change
/// is sent to the host at once. The dialog stores no list of its own and reads the host's list
/// after each change. GUI thread.
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
    void connectList();
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
