#include "host/widgets/ToolTip.h"
#include <QToolTip>
void CToolTip::ShowText(const QString& text, const QPoint& position, QWidget* widget, const QRect& area) { QToolTip::showText(position, text, widget, area); }
void CToolTip::HideText() { QToolTip::hideText(); }
