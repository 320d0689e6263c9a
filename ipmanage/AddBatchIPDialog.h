#pragma once

#include "ipmanage/IPEntryDialog.h"

#include <QList>

class CSpinBox;

/// Enters a run of addresses: their number and the first address. Opens with a free first address;
/// the number is limited to the room in the IP list, or in the project in processor mode. OK
/// appends each address of the run to the IP list as it is found and then saves the list, in IP
/// management mode.
class CAddBatchIPDialog final : public IPEntryDialog
{
    Q_OBJECT

public:
    CAddBatchIPDialog(bool ipManagementMode, QWidget* parent);

    /// Returns the run in processor mode, in host byte order. It is shorter than the number entered
    /// when the address space ends first.
    QList<quint32> addresses() const { return m_addresses; }

    /// Returns the dotted addresses that were added to the IP list.
    QStringList addedTexts() const { return m_addedTexts; }

protected:
    void OnAccept() override;
    void InitWidgets() override;
    void createFields() override;
    QString title() const override;
    QStringList labels() const override;
    QString refusal() const override;
    bool save() override;

private:
    void limitCount();
    bool generate();

    QStringList m_addedTexts;
    QList<quint32> m_addresses;
    CSpinBox* m_count = nullptr;    // Qt child
    CIPLineEdit* m_start = nullptr; // Qt child
};
