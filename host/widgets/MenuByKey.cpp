#include "host/widgets/MenuByKey.h"

#include <QEvent>
#include <QMenu>

#include <algorithm>

MenuByKey::MenuByKey(QMenu* menu)
{
    if (menu)
        menu->installEventFilter(this);
}

bool MenuByKey::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show) {
        auto* menu = static_cast<QMenu*>(watched);
        const QList<QAction*> entries = menu->actions();
        const auto first = std::find_if(entries.begin(), entries.end(), [](const QAction* entry) {
            return entry->isVisible() && entry->isEnabled() && !entry->isSeparator();
        });
        if (first != entries.end())
            menu->setActiveAction(*first);
    }
    return QObject::eventFilter(watched, event);
}
