#pragma once

#include "ipmanage/IPEntryDialog.h"

/// Enters one address, with a name if it is for the host's IP list. Opens with a free address.
/// OK appends the entry to the IP list and saves the list, in IP management mode.
class CAddSingleIPDialog final : public IPEntryDialog
{
    Q_OBJECT

public:
    CAddSingleIPDialog(bool ipManagementMode, QWidget* parent);

    /// Returns the address in host byte order; 0 while it is incomplete.
    quint32 address() const;

protected:
    void createFields() override;
    QString title() const override;
    QStringList labels() const override;
    QString refusal() const override;
    bool save() override;

private:
    CIPLineEdit* m_address = nullptr; // Qt child
    QLineEdit* m_name = nullptr;      // Qt child, null in processor mode
};
