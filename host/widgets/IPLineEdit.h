#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QFrame>

#include <array>

class QLineEdit;

/// Input of an IPv4 address in four octets, each 0 to 255.
///
/// Only digits can be typed; a dot, or a third digit, moves on to the next octet; arrows, Home, End,
/// Backspace and Delete cross the dots. A digit that would make an octet larger than 255 is refused.
/// Pasting or dropping a whole dotted address into any octet replaces all four; other text is
/// refused, digits go where the cursor is. Copying with nothing selected, or all, gives the whole
/// address.
///
/// Acts as one field: one focus frame, one accessible name (setAccessibleName()), one stop for Tab.
/// GUI thread.
class HOSTWIDGETS_EXPORT CIPLineEdit : public QFrame
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged USER true)

public:
    explicit CIPLineEdit(QWidget* parent = nullptr);

    /// The dotted address without leading zeros; empty while an octet is empty.
    QString text() const;

    /// Shows a dotted address; any other text empties the field.
    void setText(const QString& text);

    /// Empties all octets.
    void clear();

    /// Selects the whole address, as Tab into the field does.
    void selectAll();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// The address, or the emptiness of text(), changed: by the user or by setText().
    void textChanged(const QString& text);

    /// Enter was pressed in the field; the key goes on to the dialog.
    void returnPressed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    std::array<QLineEdit*, 4> m_octets; // Qt children
};
