#include "processortree/TreeMenu.h"

#include <QMenu>

CTreeMenu::CTreeMenu(QWidget* parent, int minimumWidth)
    : m_menu(new QMenu(parent))
{
    m_menu->setMinimumWidth(minimumWidth);
}

CTreeMenu::~CTreeMenu()
{
    delete m_menu;
}

QAction* CTreeMenu::add(const QString& text, const std::function<void()>& action, bool enabled)
{
    if (!m_menu)
        return nullptr;
    QAction* entry = m_menu->addAction(text);
    entry->setShortcut(QKeySequence());
    entry->setEnabled(enabled);
    m_actions.insert(entry, action);
    return entry;
}

void CTreeMenu::addSeparator()
{
    if (m_menu)
        m_menu->addSeparator();
}

void CTreeMenu::run(const QPoint& globalPosition)
{
    if (!m_menu || m_menu->isEmpty())
        return;
    QAction* chosen = m_menu->exec(globalPosition);
    if (m_menu && m_actions.contains(chosen))
        m_actions.value(chosen)();
}
