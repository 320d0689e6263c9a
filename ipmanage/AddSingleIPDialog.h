#pragma once

#include "host/widgets/Dialog.h"

class CIPLineEdit;
class QLabel;
class QLineEdit;

/// Enters one address, for the host's IP list together with a name, or for a new processor. Opens
/// with a free address proposed.
///
/// For the IP list ("IP management mode") accepting it appends the entry and commits the list; for
/// a processor it changes nothing, and address() is the answer once exec() returned 1. GUI thread.
class CAddSingleIPDialog final : public CDialog
{
    Q_OBJECT

public:
    CAddSingleIPDialog(bool ipManagementMode, QWidget* parent);

    /// The address in host byte order; 0 while it is incomplete.
    quint32 address() const;

protected:
    void OnAccept() override;
    void OnReject() override;
    void InitWidgets() override;
    void InitLayout(QBoxLayout* body) override;
    void changeEvent(QEvent* event) override;

private:
    void retranslate();

    bool m_ipManagementMode;
    CIPLineEdit* m_address = nullptr; // Qt child
    QLineEdit* m_name = nullptr;      // Qt child, for the IP list only
    QLabel* m_addressLabel = nullptr; // Qt child
    QLabel* m_nameLabel = nullptr;    // Qt child, for the IP list only
};
