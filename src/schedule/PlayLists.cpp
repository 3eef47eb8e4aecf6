#include "schedule/PlayLists.h"

#include "app/Look.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

QPlainTextEdit *addList(QVBoxLayout *layout, const QString &name, QLabel *title)
{
    auto *list = new QPlainTextEdit;
    list->setObjectName(name);
    list->setReadOnly(true);
    list->setLineWrapMode(QPlainTextEdit::NoWrap);
    list->setTabChangesFocus(true);
    list->setAccessibleName(title->text());
    title->setBuddy(list);
    layout->addWidget(title);
    layout->addWidget(list, 1);
    return list;
}

// The number of the special group whose button this is; behind all of them for any other.
int groupOf(const QLayoutItem &item)
{
    const QString name = item.widget() ? item.widget()->objectName() : QString();
    bool isGroup = false;
    const int group = name.section(u"btn_MemberDynamic_"_s, 1).toInt(&isGroup);
    return isGroup ? group : std::numeric_limits<int>::max();
}

} // namespace

PlayLists::PlayLists(QWidget *parent) : QTabWidget(parent)
{
    setObjectName(u"SSTab2"_s);
    addTab(makeRegisters(), u"Re&gisters"_s);
    addTab(makeLists(), u"Pla&ying"_s);
}

QWidget *PlayLists::makeRegisters()
{
    auto *page = new QWidget;
    m_registers = new QVBoxLayout(page);
    m_registers->setSpacing(8);
    addRegisterButton(u"btn_Item"_s, u"Items"_s, u"items"_s);
    addRegisterButton(u"btn_Options"_s, u"Options"_s, u"options"_s);
    addRegisterButton(u"btn_Membership"_s, u"Membership"_s, u"membership"_s);
    addRegisterButton(u"btn_Student"_s, u"Students"_s, u"student"_s);
    addRegisterButton(u"btn_Summary"_s, u"Booking summary"_s, u"summary"_s);
    m_registers->addStretch(1);
    return page;
}

QPushButton *PlayLists::addRegisterButton(const QString &name, const QString &caption, const QString &iconName)
{
    auto *button = new QPushButton(Look::icon(iconName), caption);
    button->setObjectName(name);
    button->setEnabled(false);
    button->setToolTip(caption + u" will open here in a later version."_s);
    m_registers->addWidget(button);
    return button;
}

void PlayLists::addSpecialGroup(int group)
{
    const QString number = QString::number(group);
    QPushButton *button =
        addRegisterButton(u"btn_MemberDynamic_"_s + number, u"Special Group # "_s + number, u"membership"_s);
    m_registers->removeWidget(button);
    int place = 3; // behind the members
    while (groupOf(*m_registers->itemAt(place)) < group)
        ++place;
    m_registers->insertWidget(place, button);
}

QWidget *PlayLists::makeLists()
{
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    layout->setSpacing(4);
    m_current = addList(layout, u"CurrentPlayList"_s, new QLabel(u"This hour"_s));
    m_previous = addList(layout, u"PreviousPlayList"_s, new QLabel(u"Hour before"_s));
    m_next = addList(layout, u"NextPlayList"_s, new QLabel(u"Next hour"_s));
    m_hourTitle = new QLabel(u"Selected hour on all fields"_s);
    m_hour = addList(layout, u"HourPlayList"_s, m_hourTitle);
    return page;
}

void PlayLists::showDay(const DaySchedule &schedule)
{
    m_current->setPlainText(schedule.currentPlayers);
    m_previous->setPlainText(schedule.previousPlayers);
    m_next->setPlainText(schedule.nextPlayers);
}

void PlayLists::showHour(const QString &hourText, const QString &players)
{
    m_hourTitle->setText(hourText.isEmpty() ? u"Selected hour on all fields"_s : hourText + u" on all fields"_s);
    m_hour->setPlainText(players);
}
