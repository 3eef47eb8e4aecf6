#include "look/MenuEntry.h"

#include "look/Look.h"

#include <QMenu>

void fillMenu(QMenu &menu, const std::vector<MenuEntry> &entries)
{
    for (const MenuEntry &entry : entries) {
        if (entry.name.isEmpty()) {
            menu.addSeparator();
            continue;
        }
        QAction *action = menu.addAction(entry.text, entry.handler);
        action->setObjectName(entry.name);
        if (!entry.icon.isEmpty())
            action->setIcon(Look::icon(entry.icon));
        action->setShortcut(entry.key);
        action->setShortcutContext(Qt::WidgetShortcut);
    }
}
