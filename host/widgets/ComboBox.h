#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QComboBox>

/// A selector in the host's look. The wheel changes only a focused one; texts that do not fit are
/// elided, in the field and in the list, and shown whole in a tool tip. GUI thread.
class HOSTWIDGETS_EXPORT CComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit CComboBox(QWidget* parent = nullptr);

    /// Where the text stands in the field and in the list: Qt::AlignLeft (the default),
    /// Qt::AlignHCenter or Qt::AlignRight.
    void setTextHorizontalAlignment(Qt::Alignment alignment);
    Qt::Alignment textHorizontalAlignment() const { return m_alignment; }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    Qt::Alignment m_alignment = Qt::AlignLeft;
};
