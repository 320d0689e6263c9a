#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QSpinBox>

/// A whole-number field in the host's look. Differs from QSpinBox in what the host's dialogs rely
/// on: the wheel changes only a focused field, so that scrolling past one does no harm; and a typed
/// number outside the range is brought to the nearest bound when editing ends. GUI thread.
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
