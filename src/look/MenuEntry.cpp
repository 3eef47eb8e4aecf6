#include "look/MenuEntry.h"

#include "look/Look.h"

#include <QMenu>
#include <QPushButton>

#include <algorithm>

void fillMenu(QMenu &menu, const std::vector<MenuEntry> &entries)
{
    for (const MenuEntry &entry : entries) {
        if (entry.name.isEmpty()) {
            if (entry.button.name.isEmpty())
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

std::vector<QPushButton *> makeButtons(const std::vector<MenuEntry> &entries)
{
    std::vector<const MenuEntry *> shown;
    for (const MenuEntry &entry : entries)
        if (!entry.button.name.isEmpty())
            shown.push_back(&entry);
    std::ranges::stable_sort(shown, {}, [](const MenuEntry *entry) { return entry->button.place; });
    std::vector<QPushButton *> buttons;
    for (const MenuEntry *entry : shown) {
        auto *button = new QPushButton(entry->button.text.isEmpty() ? entry->text : entry->button.text);
        button->setObjectName(entry->button.name);
        if (!entry->icon.isEmpty())
            button->setIcon(Look::icon(entry->icon));
        QObject::connect(button, &QPushButton::clicked, entry->handler);
        buttons.push_back(button);
    }
    return buttons;
}
