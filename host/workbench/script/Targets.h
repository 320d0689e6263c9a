#pragma once

#include "host/workbench/script/ScriptTokens.h"

#include <QModelIndex>
#include <QString>
#include <QStringList>
#include <QWidget>

class QAbstractButton;
class QComboBox;
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

/// Returns the open popup, else the open dialog, else null.
QWidget* popup();
QWidget* dialog();

/// Returns a button, check box or tool button of the open popup, dialog or window by its text,
/// accessible name or object name.
Found<QAbstractButton> button(ScriptRun& run, const QString& name);

/// Returns a field by its accessible name, the label beside it, or its object name.
Found<QWidget> field(ScriptRun& run, const QString& name);
QString fieldText(QWidget& field);

/// Returns an entry of the open menu and its place there; `enabled` tells about it.
struct Entry
{
    QMenu* menu = nullptr;
    QRect place;
    bool isEnabled = false;
    bool isChecked = false;
    QString reason;
};
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
