#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QColor>

class QApplication;

/// The colours of the theme.
struct HostColors
{
    QColor window{30, 30, 33};
    QColor popup{41, 41, 45}; ///< Menus and dialogs.
    QColor field{52, 52, 57};
    QColor line{62, 62, 68};     ///< Decoration: separators, outlines of popups and buttons.
    QColor frame{126, 126, 138}; ///< Outlines of fields, check boxes and scroll bar handles.
    QColor strongText{240, 240, 246};
    QColor text{200, 200, 205};
    QColor weakText{136, 136, 146};
    QColor hintText{160, 160, 170}; ///< Hints and placeholders.
    QColor disabledText{115, 115, 128};
    QColor accent{76, 141, 255}; ///< Focus, selection, default buttons.
};

HOSTWIDGETS_EXPORT const HostColors& hostColors();

/// Applies the host's dark theme to the whole application: style, palette, fonts, style sheet and
/// the position of tool tips. The host calls it once, after it has created the application.
HOSTWIDGETS_EXPORT void ApplyHostTheme(QApplication& application);
