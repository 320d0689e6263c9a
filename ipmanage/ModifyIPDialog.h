#pragma once

#include "ipmanage/IPEntryDialog.h"

/// Changes the address and the name of one entry of the host's IP list. OK replaces the entry and
/// does not save the list.
class CModifyIPDialog final : public IPEntryDialog
{
    Q_OBJECT

public:
    /// `row` is the index of the entry in the host's list, `name` its present name.
    CModifyIPDialog(int row, QString name, QWidget* parent);

protected:
    void InitWidgets() override;
    void createFields() override;
    QString title() const override;
    QStringList labels() const override;
    QString refusal() const override;
    bool save() override;

private:
    void loadEntry();
    void moveBesideParent();

    CIPLineEdit* m_address = nullptr; // Qt child
    QLineEdit* m_name = nullptr;      // Qt child
    int m_row;
    QString m_addressOnOpening;
    QString m_nameOnOpening;
};
