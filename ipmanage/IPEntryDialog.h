#pragma once

#include "host/widgets/Dialog.h"
#include "ipmanage/IPCheckMessages.h"

#include <QStringList>
#include <QVector>

#include <optional>

class CIPLineEdit;
class QLabel;
class QLineEdit;

/// Base of the dialogs in which the user enters addresses: a form with one field a row, and the
/// buttons OK and Cancel. OK checks the fields, and either shows why they are refused and stays
/// open, or saves them and closes with result 1. Cancel closes with result 0.
///
/// In IP management mode a dialog edits the host's IP list. In processor mode it changes nothing,
/// and its caller reads the addresses after exec() returned 1.
///
/// A derived class calls Init() in its constructor, and propose() after that if it opens with free
/// addresses. GUI thread.
class IPEntryDialog : public CDialog
{
    Q_OBJECT

protected:
    /// `leftMargin` is the space at the left of the labels, in pixels.
    IPEntryDialog(bool ipManagementMode, int leftMargin, QWidget* parent);

    void OnAccept() override;
    void OnReject() override;
    void InitWidgets() override;
    void InitLayout(QBoxLayout* body) override;
    void changeEvent(QEvent* event) override;

    /// Creates the fields with the functions below, in the order of their rows.
    virtual void createFields() = 0;

    /// Returns the window title in the current language.
    virtual QString title() const = 0;

    /// Returns the labels of the rows in the current language.
    virtual QStringList labels() const = 0;

    /// Returns the message that refuses what was entered; empty when the fields are accepted.
    virtual QString refusal() const = 0;

    /// Saves the accepted fields. Returns false to keep the dialog open.
    virtual bool save() = 0;

    /// Appends a row with `field`, which becomes a child of the dialog. The label is `labelWidth`
    /// pixels wide; it is the field's buddy and gives the field its accessible name.
    void addField(QWidget* field, int labelWidth);
    CIPLineEdit* addAddressField(int labelWidth);
    QLineEdit* addNameField(int labelWidth);

    /// Writes free addresses into `fields`, which are 1 or 2. A field stays as it is when the
    /// search finds no address for it.
    void propose(const QVector<CIPLineEdit*>& fields) const;

    /// Returns the message for an address that the host rejects; empty when the host accepts it, or
    /// rejects it with the code `ignored`.
    QString hostRefusal(const CIPLineEdit* address, IPField field,
                        std::optional<quint32> ignored = {}) const;

    bool isForIPList() const { return m_ipManagementMode; }

private:
    void retranslate();

    struct Row
    {
        QLabel* label;  // Qt child
        QWidget* field; // Qt child
        int labelWidth;
    };

    QVector<Row> m_rows;
    bool m_ipManagementMode;
    int m_leftMargin;
};
