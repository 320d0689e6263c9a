#pragma once

#include "host/widgets/Dialog.h"

#include <QList>
#include <QStringList>

class CIPLineEdit;
class CSpinBox;
class QLabel;

/// Enters a run of addresses: how many, and the first of them. Opens with a free first address
/// proposed; the number is limited to what the IP list, or the project, still has room for.
///
/// For the IP list ("IP management mode") accepting it appends each address of the run as it is
/// found and commits the list; for processors it changes nothing, and addresses() is the answer
/// once exec() returned 1. GUI thread.
class CAddBatchIPDialog final : public CDialog
{
    Q_OBJECT

public:
    CAddBatchIPDialog(bool ipManagementMode, QWidget* parent);

    /// The run for new processors, in host byte order. Shorter than the number asked for when the
    /// address space ends before.
    QList<quint32> addresses() const { return m_addresses; }

    /// What went into the IP list, as dotted addresses.
    QStringList addedTexts() const { return m_addedTexts; }

protected:
    void OnAccept() override;
    void OnReject() override;
    void InitWidgets() override;
    void InitLayout(QBoxLayout* body) override;
    void changeEvent(QEvent* event) override;

private:
    void limitCount();
    bool generate(quint32 start);
    void retranslate();

    QStringList m_addedTexts;   // what went into the IP list
    QList<quint32> m_addresses; // what new processors are to get
    bool m_ipManagementMode;
    CSpinBox* m_count = nullptr;      // Qt child
    CIPLineEdit* m_start = nullptr;   // Qt child
    QLabel* m_countLabel = nullptr;   // Qt child
    QLabel* m_addressLabel = nullptr; // Qt child
};
