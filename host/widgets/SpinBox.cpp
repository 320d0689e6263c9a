#include "host/widgets/SpinBox.h"
CSpinBox::CSpinBox(QWidget* parent) : QSpinBox(parent) {}
void CSpinBox::fixup(QString& input) const { QSpinBox::fixup(input); }
QValidator::State CSpinBox::validate(QString& input, int& position) const { return QSpinBox::validate(input, position); }
void CSpinBox::wheelEvent(QWheelEvent* event) { QSpinBox::wheelEvent(event); }
