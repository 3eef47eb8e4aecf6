#include "schedule/HouseBar.h"

#include "look/Look.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QResizeEvent>
#include <QShortcut>

using namespace Qt::StringLiterals;

namespace {

constexpr int space = 4;
constexpr int besideText = 44; ///< picture and frame of a button
constexpr int pictureAlone = 40;
constexpr int placeOfGroups = 1; ///< after the members

} // namespace

HouseBar::HouseBar(QWidget *parent) : QWidget(parent), m_layout(new QHBoxLayout(this))
{
    setObjectName(u"HouseBar"_s);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(space);
    m_layout->addStretch(1);
    connect(add(u"btn_Membership"_s, u"membership"_s, u"Members"_s,
                u"Opens the register of members, to search, add and change them."_s, Qt::CTRL | Qt::Key_M),
            &QPushButton::clicked, this, &HouseBar::membersWanted);
    connect(add(u"btn_Student"_s, u"student"_s, u"Students"_s,
                u"Opens the register of students, to search, add and change them."_s, Qt::CTRL | Qt::Key_T),
            &QPushButton::clicked, this, &HouseBar::studentsWanted);
    connect(add(u"btn_Item"_s, u"items"_s, u"Items"_s,
                u"Opens the catalogue of goods with their prices and keys; for administrators."_s,
                Qt::CTRL | Qt::Key_I),
            &QPushButton::clicked, this, &HouseBar::itemsWanted);
    connect(add(u"btn_Summary"_s, u"summary"_s, u"Summary"_s, u"Shows the summary of the chosen day's bookings."_s,
                Qt::CTRL | Qt::Key_S),
            &QPushButton::clicked, this, &HouseBar::summaryWanted);
    connect(add(u"btn_Options"_s, u"options"_s, u"Options"_s,
                u"Opens the settings of this counter and of the centre; for administrators."_s, Qt::CTRL | Qt::Key_O),
            &QPushButton::clicked, this, &HouseBar::optionsWanted);
    connect(add(u"btn_Help"_s, u"help"_s, u"Help"_s, u"Shows the keys and steps of the page that is open."_s,
                Qt::CTRL | Qt::Key_G),
            &QPushButton::clicked, this, &HouseBar::helpWanted);
}

QPushButton *HouseBar::add(const QString &name, const QString &icon, const QString &caption, const QString &tip,
                           const QKeySequence &key)
{
    auto *button = new QPushButton(Look::icon(icon), caption);
    button->setObjectName(name);
    button->setAccessibleName(caption);
    button->setToolTip(tip.chopped(1) + u" ("_s + key.toString() + u")."_s);
    // A key of the button's own would go with its text.
    connect(new QShortcut(key, this), &QShortcut::activated, button, &QPushButton::click);
    button->setFocusPolicy(Qt::TabFocus); // a click leaves the keys where they are
    m_entries.push_back({button, caption});
    m_layout->addWidget(button);
    return button;
}

void HouseBar::addSpecialGroup(int group)
{
    const QString number = QString::number(group);
    QPushButton *button = add(u"btn_MemberDynamic_"_s + number, u"membership"_s, u"Special Group # "_s + number,
                              u"Opens the register of special group "_s + number + u", to search, add and change."_s,
                              QKeySequence(u"Ctrl+"_s + number));
    m_layout->removeWidget(button);
    m_layout->insertWidget(1 + placeOfGroups + m_groups++, button); // the stretch stands before all
    connect(button, &QPushButton::clicked, this, [this, group] { Q_EMIT groupWanted(group); });
    fit();
}

int HouseBar::widthOf(bool withText) const
{
    int width = 0;
    for (const Entry &entry : m_entries)
        width += space + (withText ? besideText + fontMetrics().horizontalAdvance(entry.caption) : pictureAlone);
    return width;
}

QSize HouseBar::minimumSizeHint() const
{
    return {widthOf(false), m_layout->minimumSize().height()};
}

QSize HouseBar::sizeHint() const
{
    return {widthOf(true), m_layout->sizeHint().height()};
}

void HouseBar::fit()
{
    const bool withText = width() >= widthOf(true);
    for (const Entry &entry : m_entries) {
        entry.button->setText(withText ? entry.caption : QString());
        entry.button->setMinimumWidth(withText ? 0 : pictureAlone);
    }
}

void HouseBar::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    fit();
}
