#include "processortree/view/TreeMenu.h"

#include <QMenu>

#include <algorithm>

namespace {

void activateFirstEntry(QMenu& menu)
{
    const QList<QAction*> entries = menu.actions();
    const auto first = std::find_if(entries.begin(), entries.end(), [](const QAction* entry) {
        return entry->isVisible() && entry->isEnabled() && !entry->isSeparator();
    });
    if (first != entries.end())
        menu.setActiveAction(*first);
}

} // namespace

CTreeMenu::CTreeMenu(QWidget* parent, int minimumWidth)
    : m_parent(parent)
    , m_menu(new QMenu(parent))
{
    m_menu->setMinimumWidth(minimumWidth);
    // An entry of the host's may end the panel, and QMenu goes on with itself after it has acted.
    QObject::connect(parent, &QObject::destroyed, m_menu.get(), [menu = m_menu.get()] {
        menu->hide();
        menu->setParent(nullptr, menu->windowFlags());
    });
}

CTreeMenu::~CTreeMenu() = default;

QAction* CTreeMenu::add(const QString& text, const std::function<void()>& action, bool enabled)
{
    if (!m_parent)
        return nullptr;
    QAction* entry = m_menu->addAction(text);
    entry->setShortcut(QKeySequence());
    entry->setEnabled(enabled);
    m_actions.insert(entry, action);
    return entry;
}

void CTreeMenu::addSeparator()
{
    if (m_parent)
        m_menu->addSeparator();
}

QMenu* CTreeMenu::menu() const
{
    return m_parent ? m_menu.get() : nullptr;
}

void CTreeMenu::run(const QPoint& globalPosition, bool byKey)
{
    if (!m_parent || m_menu->isEmpty())
        return;
    // Queued: a menu that opens has no active entry.
    const auto start = [menu = m_menu.get()] { activateFirstEntry(*menu); };
    if (byKey)
        QMetaObject::invokeMethod(m_menu.get(), start, Qt::QueuedConnection);
    // Assistive technology triggers an entry and leaves the menu open.
    QAction* triggered = nullptr;
    const auto close = [this, &triggered](QAction* entry) {
        triggered = entry;
        m_menu->hide();
    };
    const auto connection = QObject::connect(m_menu.get(), &QMenu::triggered, m_menu.get(), close);
    m_menu->exec(globalPosition);
    QObject::disconnect(connection);
    if (m_parent && m_actions.contains(triggered))
        m_actions.value(triggered)();
}
