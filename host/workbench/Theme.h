#pragma once

#include <QColor>

class QApplication;

/// The colours of the dark theme.
struct ThemeColors
{
    QColor window{30, 30, 33};
    QColor popup{41, 41, 45}; ///< Menus and dialogs.
    QColor field{52, 52, 57};
    QColor line{62, 62, 68};
    QColor strongText{240, 240, 246};
    QColor text{200, 200, 205};
    QColor weakText{136, 136, 146};
    QColor hintText{115, 115, 128};
    QColor accent{76, 141, 255}; ///< Focus, selection, default buttons.
};

const ThemeColors& themeColors();

/// Dresses the whole application in the dark theme: style, palette, font size, style sheet.
void applyTheme(QApplication& application);
