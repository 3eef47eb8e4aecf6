#include "schedule/SlotBar.h"

#include "look/Look.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QToolButton>

using namespace Qt::StringLiterals;

SlotBar::SlotBar(const std::vector<MenuEntry> &entries)
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    for (QPushButton *button : makeButtons(entries))
        layout->addWidget(button);
    layout->addStretch(1);
    auto *several = new QToolButton;
    several->setObjectName(u"btn_SelectSeveral"_s);
    several->setText(u"Select se&veral"_s);
    several->setCheckable(true);
    several->setToolTip(u"Lets every tap on an hour add it to the selection or take it out again."_s);
    connect(several, &QToolButton::toggled, this, &SlotBar::severalToggled);
    layout->addWidget(several);
    auto *refresh = new QToolButton;
    refresh->setObjectName(u"btn_Refresh"_s);
    refresh->setIcon(Look::icon(u"refresh"_s));
    refresh->setToolTip(u"Reads the day from the database again."_s);
    refresh->setAccessibleName(refresh->toolTip());
    connect(refresh, &QToolButton::clicked, this, &SlotBar::readingWanted);
    layout->addWidget(refresh);
}
