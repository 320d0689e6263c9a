#pragma once

#include <QHash>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>
#include <memory>

class QAction;
class QMenu;
class QPoint;

/// A context menu whose entries act after it has closed: they may open dialogs, and whoever the
/// menu belongs to may be gone by then. GUI thread.
class CTreeMenu final
{
public:
    CTreeMenu(QWidget* parent, int minimumWidth);
    ~CTreeMenu();
    CTreeMenu(const CTreeMenu&) = delete;
    CTreeMenu& operator=(const CTreeMenu&) = delete;

    QAction* add(const QString& text, const std::function<void()>& action, bool enabled = true);
    void addSeparator();

    /// For the host's own entries; null when the parent is gone.
    QMenu* menu() const;

    /// Shows the menu, unless it is empty, until the user chooses or leaves it. Opened `byKey`, its
    /// first entry that can be chosen is active.
    void run(const QPoint& globalPosition, bool byKey);

private:
    QPointer<QWidget> m_parent;
    std::unique_ptr<QMenu> m_menu; // a child of the parent, which it leaves when that goes
    QHash<QAction*, std::function<void()>> m_actions;
};
