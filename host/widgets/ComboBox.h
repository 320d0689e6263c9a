#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QComboBox>

class QStyleOptionComboBox;

/// A combo box in the host's look. The wheel changes it only while it has the focus. Texts that do
/// not fit are elided in the field and in the list, and shown whole in a tool tip unless there is
/// another tool tip. GUI thread.
class HOSTWIDGETS_EXPORT CComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit CComboBox(QWidget* parent = nullptr);

    /// Sets the alignment of the text in the field and in the list: Qt::AlignLeft (the default),
    /// Qt::AlignHCenter or Qt::AlignRight.
    void setTextHorizontalAlignment(Qt::Alignment alignment);
    Qt::Alignment textHorizontalAlignment() const { return m_alignment; }

protected:
    bool event(QEvent* event) override;
    void childEvent(QChildEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    QRect fieldRect(const QStyleOptionComboBox& option) const;
    QRect textRect(const QStyleOptionComboBox& option) const;
    bool isElided() const;

    Qt::Alignment m_alignment = Qt::AlignLeft;
};
