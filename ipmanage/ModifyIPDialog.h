#pragma once

#include "host/widgets/Dialog.h"

class CIPLineEdit;
class QLabel;
class QLineEdit;

/// Changes the address and the name of one entry of the host's IP list. Accepting it replaces the
/// entry; the list is not committed. GUI thread.
class CModifyIPDialog final : public CDialog
{
    Q_OBJECT

public:
    /// `row` is the entry's place in the host's list, `name` what it is called now.
    CModifyIPDialog(int row, QString name, QWidget* parent);

protected:
    void OnAccept() override;
    void OnReject() override;
    void InitWidgets() override;
    void InitLayout(QBoxLayout* body) override;
    void changeEvent(QEvent* event) override;

private:
    bool isRefused(int* code) const;
    void loadEntry();
    void moveBesideParent();
    void retranslate();

    CIPLineEdit* m_address = nullptr; // Qt child
    QLineEdit* m_name = nullptr;      // Qt child
    int m_row;
    QString m_addressOnOpening;
    QString m_nameOnOpening;
    QLabel* m_addressLabel = nullptr; // Qt child
    QLabel* m_nameLabel = nullptr;    // Qt child
};
