#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QPoint>
#include <QRect>
#include <QString>

class QCoreApplication;
class QWidget;

/// Tool tips in the host's look. The text is plain, and long texts wrap. GUI thread.
namespace CToolTip {

/// Value of the dynamic property "ToolLocation" of a widget: where its tool tip appears. Without
/// the property, or with another value, the tool tip appears at the mouse cursor. A tool tip that
/// does not fit on the screen appears on the opposite side.
enum ToolLocation { AtCursor = 0, Above = 1, Right = 2, Below = 3, Left = 4 };

/// Shows `text` at the global `position`; an empty text hides the tool tip. The tool tip is hidden
/// when the mouse leaves `area` (in coordinates of `widget`; null means the whole widget), when
/// `widget` is destroyed, and after `milliseconds`. If that is negative, the time depends on the
/// length of the text.
HOSTWIDGETS_EXPORT void ShowText(const QString& text, const QPoint& position, QWidget* widget,
                                 const QRect& area = QRect(), int milliseconds = -1);

/// Hides the tool tip.
HOSTWIDGETS_EXPORT void HideText();

} // namespace CToolTip

/// Places the tool tips of all widgets that have the property "ToolLocation". ApplyHostTheme() does
/// so too. May be called repeatedly. GUI thread.
HOSTWIDGETS_EXPORT void installToolTipPlacement(QCoreApplication& application);
