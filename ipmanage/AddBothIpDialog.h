#pragma once

#include "ipmanage/IPEntryDialog.h"

#include <QList>

/// Enters two addresses, for a processor and its backup. Opens with two free addresses; a field
/// stays empty when the search finds fewer. OK appends both to the IP list and saves the list, in
/// IP management mode.
class CAddBothIpDialog final : public IPEntryDialog
{
    Q_OBJECT

public:
    CAddBothIpDialog(bool ipManagementMode, QWidget* parent);

    /// Returns both addresses in the order of their fields, in host byte order; 0 for an incomplete
    /// one.
    QList<quint32> addresses() const;

protected:
    void createFields() override;
    QString title() const override;
    QStringList labels() const override;
    QString refusal() const override;
    bool save() override;

private:
    CIPLineEdit* m_first = nullptr;  // Qt child
    CIPLineEdit* m_second = nullptr; // Qt child
};
