#include "host/widgets/ComboBox.h"
CComboBox::CComboBox(QWidget* parent) : QComboBox(parent) {}
void CComboBox::setTextHorizontalAlignment(Qt::Alignment alignment) { m_alignment = alignment; }
bool CComboBox::event(QEvent* event) { return QComboBox::event(event); }
void CComboBox::paintEvent(QPaintEvent* event) { QComboBox::paintEvent(event); }
void CComboBox::wheelEvent(QWheelEvent* event) { QComboBox::wheelEvent(event); }
