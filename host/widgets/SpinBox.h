#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QSpinBox>

/// An integer field in the host's look. Unlike in QSpinBox, the wheel changes it only while it has
/// the focus, and a typed number outside of the range becomes the nearest bound when editing ends.
/// GUI thread.
class HOSTWIDGETS_EXPORT CSpinBox : public QSpinBox
{
    Q_OBJECT

public:
    explicit CSpinBox(QWidget* parent = nullptr);

    void fixup(QString& input) const override;

protected:
    QValidator::State validate(QString& input, int& position) const override;
    void wheelEvent(QWheelEvent* event) override;
};
