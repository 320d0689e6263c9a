#pragma once

#include "host/workbench/script/ScriptTokens.h"

#include <QModelIndex>
#include <QRect>
#include <QString>
#include <QStringList>
#include <QWidget>

class QAbstractButton;
class QListView;
class QMenu;
class QTreeView;
class ScriptRun;

/// Finds what the steps of scripts are about. GUI thread.
namespace Targets {

/// The result of a search: null, and the reason, if there is not exactly one.
template <typename Target>
struct Found
{
    Target* target = nullptr;
    QString reason;
};

/// A row of the panel's tree.
struct Row
{
    QTreeView* view = nullptr;
    QModelIndex index; ///< Invalid if there is not exactly one.
    QString reason;    ///< Why not.
};

/// Returns the open popup, null if there is none.
QWidget* popup();

/// Returns the modal dialog in front, null if there is none.
QWidget* dialog();

/// Returns a button, check box or tool button of the open popup, dialog or window by its text,
/// accessible name or object name.
Found<QAbstractButton> button(ScriptRun& run, const QString& name);

/// Returns a field by its accessible name, the label beside it, or its object name.
Found<QWidget> field(ScriptRun& run, const QString& name);

/// Returns the value of a field as a screen reader tells it.
QString fieldText(QWidget& field);

/// An entry of the open menu.
struct Entry
{
    QMenu* menu = nullptr; ///< Null if there is no such entry.
    QRect place;           ///< In the menu.
    bool isEnabled = false;
    QString reason; ///< Why there is none.
};

/// Returns the entry of the open menu with this text.
Entry menuEntry(const QString& text);

/// Returns the texts of all labels of the open dialog.
QStringList messages();

/// Returns the tree view of the panel, null without a panel.
QTreeView* tree(ScriptRun& run);

/// Returns the row of a name, of a path such as "Main stage/Stage 1", or of a number without
/// quotation marks.
Row row(ScriptRun& run, const ScriptToken& name);

/// Returns the tree as lines that are indented by two spaces for each level, from the children of
/// `parent` on.
QStringList rowLines(const QAbstractItemModel& model, const QModelIndex& parent);

/// Returns the list of search results, null while it is closed.
QListView* results();

/// Returns a text without the marks of keys and the dots of menus.
QString plain(QString text);

/// Returns whether `text` is `pattern`, in which a "*" stands for any text.
bool matches(const QString& pattern, const QString& text);

} // namespace Targets
