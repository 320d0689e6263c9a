#include "host/widgets/IPLineEdit.h"
CIPLineEdit::CIPLineEdit(QWidget* parent) : QFrame(parent), m_octets{} {}
QString CIPLineEdit::text() const { return {}; }
void CIPLineEdit::setText(const QString&) {}
void CIPLineEdit::clear() {}
void CIPLineEdit::selectAll() {}
QSize CIPLineEdit::sizeHint() const { return QFrame::sizeHint(); }
QSize CIPLineEdit::minimumSizeHint() const { return QFrame::minimumSizeHint(); }
bool CIPLineEdit::eventFilter(QObject* watched, QEvent* event) { return QFrame::eventFilter(watched, event); }
void CIPLineEdit::changeEvent(QEvent* event) { QFrame::changeEvent(event); }
void CIPLineEdit::focusInEvent(QFocusEvent* event) { QFrame::focusInEvent(event); }
