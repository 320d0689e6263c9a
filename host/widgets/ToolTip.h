#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QPoint>
#include <QRect>
#include <QString>

class QWidget;

/// Tool tips in the host's look. The text is plain and wraps when it is long. GUI thread.
namespace CToolTip {

/// Where the tool tip of a widget appears: the value of its dynamic property "ToolLocation". A
/// widget without it, or with another value, has its tool tip at the mouse cursor. A tool tip that
/// does not fit on the screen goes to the opposite side.
enum ToolLocation { AtCursor = 0, Above = 1, Right = 2, Below = 3, Left = 4 };

/// Shows `text` at `position` (global). The tool tip goes when the mouse leaves `area` (in
/// `widget`'s coordinates; a null rectangle is the whole widget), or `widget` goes. An empty text
/// hides it. It goes by itself after `milliseconds`; a negative number leaves that to the length of
/// the text.
HOSTWIDGETS_EXPORT void ShowText(const QString& text, const QPoint& position, QWidget* widget,
                                 const QRect& area = QRect(), int milliseconds = -1);

/// Hides the tool tip, if one is shown.
HOSTWIDGETS_EXPORT void HideText();

} // namespace CToolTip
