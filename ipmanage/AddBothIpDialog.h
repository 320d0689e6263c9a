#pragma once

#include "host/widgets/Dialog.h"

#include <QList>

class CIPLineEdit;
class QLabel;

/// Enters two addresses, for a processor and its backup. Opens with two free addresses proposed; a
/// field stays empty when there are fewer.
///
/// For the IP list ("IP management mode") accepting it appends both and commits the list; for
/// processors it changes nothing, and addresses() is the answer once exec() returned 1. GUI thread.
class CAddBothIpDialog final : public CDialog
{
    Q_OBJECT

public:
    CAddBothIpDialog(bool ipManagementMode, QWidget* parent);

    /// Both addresses in the order of their fields, in host byte order; 0 for one that is
    /// incomplete.
    QList<quint32> addresses() const;

protected:
    void OnAccept() override;
    void OnReject() override;
    void InitWidgets() override;
    void InitLayout(QBoxLayout* body) override;
    void changeEvent(QEvent* event) override;

private:
    QString refusal() const;
    void retranslate();

    bool m_ipManagementMode;
    CIPLineEdit* m_first = nullptr;  // Qt child
    CIPLineEdit* m_second = nullptr; // Qt child
    QLabel* m_firstLabel = nullptr;  // Qt child
    QLabel* m_secondLabel = nullptr; // Qt child
};
