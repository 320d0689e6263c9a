#include "host/widgets/TableView.h"
CTableView::CTableView(QWidget* parent) : QTableView(parent) {}
void CTableView::setPaintAlternatingRowColorsForEmptyArea(bool on) { m_paintEmptyArea = on; }
void CTableView::scrollTo(const QModelIndex& index, ScrollHint hint) { QTableView::scrollTo(index, hint); }
void CTableView::paintEvent(QPaintEvent* event) { QTableView::paintEvent(event); }
