#include "host/widgets/HostTheme.h"

#include "host/widgets/ToolTip.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QStyleFactory>

#include <utility>

namespace {

constexpr int kTextPixels = 12;

// Each name in capitals between at-signs is replaced by a colour.
constexpr char kStyleSheet[] = R"(
QMainWindow, QMainWindow::separator { background: @WINDOW@; }
QMainWindow::separator { width: 8px; height: 8px; }
QDialog, QMessageBox { background: @POPUP@; }
QDialogButtonBox { dialogbuttonbox-buttons-have-icons: 0; }
#DialogCloseButton, #DialogMaximizeButton { border: none; border-radius: 4px; padding: 0; }
#DialogCloseButton:hover, #DialogMaximizeButton:hover { background: @FIELD@; }
#DialogCloseButton:pressed, #DialogMaximizeButton:pressed { background: @LINE@; }
QToolTip { background: @POPUP@; color: @TEXT@; border: 1px solid @LINE@; padding: 4px; }

QMenuBar { background: @WINDOW@; padding: 2px 4px; }
QMenuBar::item { padding: 4px 8px; border-radius: 4px; background: transparent; }
QMenuBar::item:selected, QMenuBar::item:pressed { background: @FIELD@; color: @STRONG@; }
QMenu { background: @POPUP@; border: 1px solid @LINE@; border-radius: 8px; padding: 4px; }
QMenu::item { padding: 5px 24px 5px 28px; border-radius: 4px; }
QMenu::item:selected { background: @ROW@; color: @STRONG@; }
#IPManageMenu::item { height: 22px; }
QMenu::item:disabled { color: @DISABLED@; }
QMenu::separator { height: 1px; background: @LINE@; margin: 4px 8px; }
QMenu::indicator { width: 12px; height: 12px; left: 8px; }
QMenu::indicator:checked { image: url(:/HostWidgets/icons/check.svg); }

QToolBar { background: @WINDOW@; border: none; border-bottom: 1px solid @LINE@; padding: 4px 8px;
           spacing: 4px; }
QToolBar::separator { width: 1px; background: @LINE@; margin: 4px; }
QToolBar QToolButton { padding: 4px 8px; border: 1px solid transparent; border-radius: 4px; }
QToolBar QToolButton:hover, QToolBar QToolButton:checked { background: @FIELD@; color: @STRONG@; }
QToolBar QToolButton:pressed { background: @LINE@; }
QToolBar QToolButton:focus { border-color: @ACCENT@; }
QToolBar QToolButton:disabled { color: @DISABLED@; }

QToolButton#IPManageToolButton { min-width: 22px; max-width: 22px; min-height: 22px;
    max-height: 22px; margin: 0; padding: 0; border: 1px solid transparent; border-radius: 4px; }
QToolButton#IPManageToolButton:hover { background: @FIELD@; }
QToolButton#IPManageToolButton:focus { border-color: @ACCENT@; }
QToolButton#IPManageToolButton:pressed, QToolButton#IPManageToolButton:open { background: @LINE@; }
QToolButton#IPManageToolButton::menu-indicator { image: none; width: 0; }

CMenuToolButton { background: @FIELD@; border: 1px solid @LINE@; border-radius: 4px;
    min-height: 22px; padding: 0; }
CMenuToolButton:hover { background: @LINE@; }
CMenuToolButton:pressed { background: @WINDOW@; }
CMenuToolButton:focus { border-color: @ACCENT@; }
CMenuToolButton:disabled { background: @POPUP@; color: @DISABLED@; }
CMenuToolButton::menu-button { width: 24px; border: none; border-left: 1px solid @FRAME@;
    margin: 5px 0; }
CMenuToolButton::menu-arrow { image: url(:/HostWidgets/icons/chevron-down.svg);
    width: 12px; height: 12px; }
CMenuToolButton::menu-button:disabled { border-left-color: @LINE@; }
CMenuToolButton::menu-arrow:disabled {
    image: url(:/HostWidgets/icons/chevron-down-disabled.svg); }

CPureImageBtn { background: transparent; border: none; border-radius: 4px; padding: 0; margin: 0; }
CPureImageBtn:pressed { background: @LINE@; }
CPureImageBtn::menu-indicator { image: none; width: 0; }

CSeparator { color: @LINE@; }

QDockWidget { color: @WEAK@; titlebar-close-icon: none; titlebar-normal-icon: none; }
QDockWidget::title { background: @WINDOW@; padding: 8px 4px; text-align: left; }
QStatusBar { background: @WINDOW@; color: @WEAK@; border-top: 1px solid @LINE@; }
QStatusBar::item { border: none; }

QLineEdit, QComboBox, QAbstractSpinBox, QPlainTextEdit, QListWidget {
    background: @FIELD@; border: 1px solid @FRAME@; border-radius: 4px; }
QLineEdit, QComboBox, QAbstractSpinBox { min-height: 22px; padding: 0 6px; }
QLineEdit, QAbstractSpinBox, QPlainTextEdit {
    selection-background-color: @ACCENT@; selection-color: @WINDOW@; }
CActionLineEdit { padding: 0; }
CIPLineEdit, QComboBox, QAbstractSpinBox { color: @STRONG@; }
CIPLineEdit:disabled { color: @DISABLED@; }
QTreeView QLineEdit, QTableView QLineEdit, QListView QLineEdit { min-height: 0; padding: 0 2px; }
QLineEdit:focus, QComboBox:focus, QAbstractSpinBox:focus, QPlainTextEdit:focus, QListWidget:focus {
    border-color: @ACCENT@; }
QLineEdit:disabled, QComboBox:disabled, QAbstractSpinBox:disabled {
    border-color: @LINE@; color: @DISABLED@; }
QComboBox::drop-down, QAbstractSpinBox::up-button, QAbstractSpinBox::down-button {
    border: none; width: 20px; }
QComboBox::down-arrow, QAbstractSpinBox::down-arrow {
    image: url(:/HostWidgets/icons/chevron-down.svg); width: 12px; height: 12px; }
QComboBox::down-arrow:disabled, QAbstractSpinBox::down-arrow:disabled {
    image: url(:/HostWidgets/icons/chevron-down-disabled.svg); }
QAbstractSpinBox::up-arrow {
    image: url(:/HostWidgets/icons/chevron-up.svg); width: 12px; height: 12px; }
QComboBox QAbstractItemView { background: @POPUP@; border: 1px solid @LINE@; padding: 4px;
    selection-background-color: @ROW@; selection-color: @STRONG@; outline: none; }

QPushButton { background: @FIELD@; border: 1px solid @LINE@; border-radius: 4px; min-height: 22px;
              padding: 0 12px; }
QDialogButtonBox QPushButton { min-width: 64px; }
QPushButton:hover { background: @LINE@; color: @STRONG@; }
QPushButton:pressed { background: @WINDOW@; }
QPushButton:default { background: @ACCENTDEEP@; border-color: @ACCENTDEEP@; color: @STRONG@; }
QPushButton:default:hover { border-color: @ACCENT@; }
QPushButton:focus { border-color: @ACCENT@; }
QPushButton:default:focus { border-color: @STRONG@; }
QPushButton:disabled { background: @POPUP@; border-color: @LINE@; color: @DISABLED@; }

QCheckBox { spacing: 8px; }
QCheckBox::indicator, QTableView::indicator, QTreeView::indicator
    { width: 14px; height: 14px; border: 1px solid @FRAME@; border-radius: 4px; background: @FIELD@; }
QCheckBox::indicator:checked, QTableView::indicator:checked, QTreeView::indicator:checked
    { background: @ACCENTDEEP@; border-color: @ACCENTDEEP@; image: url(:/HostWidgets/icons/check.svg); }
QCheckBox::indicator:focus, QCheckBox::indicator:hover { border-color: @ACCENT@; }

QTreeView, QTableView { background: @WINDOW@; border: 1px solid @LINE@; border-radius: 4px;
    alternate-background-color: @ALTERNATE@; outline: none; gridline-color: @LINE@; }
QTreeView:focus, QTableView:focus { border-color: @ACCENT@; }
CTreeView { border: none; border-radius: 0; }
QTableView#IPManage { margin: 0 1px 1px 1px; }
QTreeView::item { min-height: 24px; }
QTreeView::item:hover, QTreeView::branch:hover { background: @POPUP@; }
QTreeView::item:selected, QTreeView::branch:selected, QTableView::item:selected {
    background: @ROW@; color: @STRONG@; }
QTreeView::branch:has-children:closed { image: url(:/HostWidgets/icons/chevron-right.svg); }
QTreeView::branch:has-children:open { image: url(:/HostWidgets/icons/chevron-down.svg); }
QListView#ProcessorCompleter { background: transparent; border: none; outline: none; }
QListView#ProcessorCompleter QScrollBar:vertical { margin: 8px 0; }
QListView#ProcessorCompleter::item:hover { background: @FIELD@; }
QListView#ProcessorCompleter::item:selected { background: @ROW@; }
QTableCornerButton::section { background: @WINDOW@; border: none;
    border-bottom: 1px solid @LINE@; }
QHeaderView { background: @WINDOW@; border: none; }
QHeaderView::section { background: @WINDOW@; color: @WEAK@; border: none;
    border-bottom: 1px solid @LINE@; padding: 4px; }
QHeaderView::section:vertical { border: none; padding: 0 4px; }
QTableView::item { border: none; padding: 0 4px; }
QTableView::item:hover { background: @POPUP@; }
QTableView::item:selected:hover { background: @ROW@; }
QTableView QHeaderView::section:horizontal { padding: 0 7px; }

QProgressBar { background: @FIELD@; border: 1px solid @LINE@; border-radius: 4px;
    min-height: 14px; max-height: 14px; text-align: center; }
QProgressBar::chunk { background: @ACCENTDEEP@; border-radius: 3px; }

QScrollBar { background: transparent; border: none; margin: 0; }
QScrollBar:vertical { width: 10px; }
QScrollBar:horizontal { height: 10px; }
QScrollBar::handle { background: @FRAME@; border-radius: 3px; margin: 2px; }
QScrollBar::handle:vertical { min-height: 24px; }
QScrollBar::handle:horizontal { min-width: 24px; }
QScrollBar::handle:hover { background: @HINT@; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
QScrollArea:focus { border: 1px solid @ACCENT@; border-radius: 4px; }
QSplitter::handle { background: @WINDOW@; }
QLabel[hint="true"] { color: @HINT@; }
)";

QColor mixed(const QColor& below, const QColor& above, double share)
{
    const auto part = [share](int low, int high) {
        return static_cast<int>(low + (high - low) * share);
    };
    return {part(below.red(), above.red()), part(below.green(), above.green()),
            part(below.blue(), above.blue())};
}

QString styleSheet(const HostColors& colors)
{
    QString sheet = QLatin1String(kStyleSheet);
    const std::pair<const char*, QColor> names[] = {
        {"@WINDOW@", colors.window},
        {"@ALTERNATE@", mixed(colors.window, colors.popup, 0.4)},
        {"@POPUP@", colors.popup},
        {"@FIELD@", colors.field},
        {"@LINE@", colors.line},
        {"@FRAME@", colors.frame},
        {"@STRONG@", colors.strongText},
        {"@TEXT@", colors.text},
        {"@WEAK@", colors.weakText},
        {"@HINT@", colors.hintText},
        {"@DISABLED@", colors.disabledText},
        {"@ACCENT@", colors.accent},
        {"@ACCENTDEEP@", mixed(colors.window, colors.accent, 0.7)},
        {"@ROW@", mixed(colors.window, colors.accent, 0.35)},
    };
    for (const auto& [name, color] : names)
        sheet.replace(QLatin1String(name), color.name());
    return sheet;
}

QPalette palette(const HostColors& colors)
{
    QPalette palette(colors.text, colors.window);
    palette.setColor(QPalette::Base, colors.window);
    palette.setColor(QPalette::AlternateBase, mixed(colors.window, colors.popup, 0.4));
    palette.setColor(QPalette::Button, colors.field);
    palette.setColor(QPalette::Text, colors.text);
    palette.setColor(QPalette::WindowText, colors.text);
    palette.setColor(QPalette::ButtonText, colors.text);
    palette.setColor(QPalette::BrightText, colors.strongText);
    palette.setColor(QPalette::ToolTipBase, colors.popup);
    palette.setColor(QPalette::ToolTipText, colors.text);
    palette.setColor(QPalette::PlaceholderText, colors.hintText);
    palette.setColor(QPalette::Highlight, mixed(colors.window, colors.accent, 0.35));
    palette.setColor(QPalette::HighlightedText, colors.strongText);
    palette.setColor(QPalette::Link, colors.accent);
    palette.setColor(QPalette::Light, colors.line);
    palette.setColor(QPalette::Midlight, colors.line);
    palette.setColor(QPalette::Mid, colors.line);
    palette.setColor(QPalette::Dark, colors.window);
    palette.setColor(QPalette::Shadow, colors.window);
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, colors.disabledText);
    return palette;
}

} // namespace

const HostColors& hostColors()
{
    static const HostColors colors;
    return colors;
}

void ApplyHostTheme(QApplication& application)
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QFont font = QApplication::font();
    font.setPixelSize(kTextPixels);
    // Explicit families, so that Chinese texts get the regular weight of a sans-serif font.
    font.setFamilies(
        {font.family(), QStringLiteral("Noto Sans CJK SC"), QStringLiteral("Microsoft YaHei")});
    const QPalette general = palette(hostColors());
    QApplication::setPalette(general);
    QPalette field = general;
    field.setColor(QPalette::Text, hostColors().strongText);
    field.setColor(QPalette::Disabled, QPalette::Text, hostColors().disabledText);
    for (const char* widget : {"QLineEdit", "QComboBox", "QAbstractSpinBox"})
        QApplication::setPalette(field, widget);
    application.setStyleSheet(styleSheet(hostColors()));
    // Last, for a new style brings back the fonts that Windows has for menus, tables and others.
    QApplication::setFont(font);
    installToolTipPlacement(application);
}
