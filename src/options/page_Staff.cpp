#include "options/page_Staff.h"

#include "app/Errors.h"
#include "app/FieldLengths.h"
#include "app/SqlText.h"
#include "look/EntryForm.h"
#include "look/RowsTable.h"
#include "look/WrappedLabel.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardItem>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString inWords(AccessLevel level)
{
    return level == AccessLevel::Admin ? u"Administrator"_s : u"Staff"_s;
}

} // namespace

page_Staff::page_Staff(Station &station, const QString &administrator, QWidget *parent)
    : OptionsPage(station, administrator, parent),
      m_list(new RowsTable(u"ListView_Staff"_s, u"Who may work at the counters"_s,
                           {u"Login"_s, u"Level"_s, u"Last login"_s}))
{
    setObjectName(u"page_Staff"_s);
    m_list->fitColumns({QString(), u"Administrator"_s, u"0000-00-00 00:00:00"_s});
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(16);
    layout->addWidget(m_list, 1);
    layout->addWidget(makeForm(), 1);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &page_Staff::showSelected);
    showSelected();
}

QWidget *page_Staff::makeForm()
{
    auto *side = new QWidget(this);
    auto *layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    auto *form = new EntryForm(side);
    m_login = form->addBox(u"Lo&gin of a new one"_s, u"StaffLogin"_s, FieldLengths::login);
    m_password = form->addBox(u"Pass&word"_s, u"StaffPassword"_s, FieldLengths::password);
    m_passwordAgain = form->addBox(u"The sa&me again"_s, u"StaffPasswordAgain"_s, FieldLengths::password);
    for (QLineEdit *box : {m_password, m_passwordAgain})
        box->setEchoMode(QLineEdit::Password);
    m_level = new QComboBox;
    m_level->setObjectName(u"cmb_StaffLevel"_s);
    m_level->setAccessibleName(u"Level"_s);
    m_level->addItems({inWords(AccessLevel::Staff), inWords(AccessLevel::Admin)});
    auto *levelLabel = new QLabel(u"Le&vel"_s);
    levelLabel->setBuddy(m_level);
    auto *levelRow = new QHBoxLayout;
    levelLabel->setMinimumWidth(136);
    levelRow->setSpacing(8);
    levelRow->addWidget(levelLabel);
    levelRow->addWidget(m_level, 1);
    layout->addWidget(wrappedLabel(u"lbl_StaffHelp"_s, u"Logins and passwords are made of letters A to Z, a to z and "
                                                       "digits; case counts."_s));
    layout->addWidget(form);
    layout->addLayout(levelRow);
    addButton(layout, u"btn_AddStaff"_s, u"&Add as a new staff member"_s,
              u"Adds somebody with this login, password and level."_s, &page_Staff::add);
    layout->addSpacing(16);
    m_selected = wrappedLabel(u"lbl_StaffSelected"_s, {}, 1.1);
    layout->addWidget(m_selected);
    m_ofSelected = {
        addButton(layout, u"btn_SetLevel"_s, u"Giv&e the level chosen above"_s,
                  u"Makes the selected staff member an administrator or ordinary staff."_s, &page_Staff::setLevel),
        addButton(layout, u"btn_SetPassword"_s, u"Give the &password typed above"_s,
                  u"Gives the selected staff member the password that was typed twice."_s, &page_Staff::setPassword),
        addButton(layout, u"btn_RemoveStaff"_s, u"Rem&ove…"_s,
                  u"Removes the selected staff member after a question; what they did stays recorded."_s,
                  &page_Staff::remove)};
    m_done = wrappedLabel(u"lbl_StaffDone"_s, {});
    layout->addWidget(m_done);
    layout->addStretch();
    return side;
}

QPushButton *page_Staff::addButton(QLayout *layout, const QString &name, const QString &caption, const QString &tip,
                                   void (page_Staff::*action)())
{
    auto *button = new QPushButton(caption);
    button->setObjectName(name);
    button->setToolTip(tip);
    button->setAutoDefault(false);
    layout->addWidget(button);
    connect(button, &QPushButton::clicked, this, action);
    return button;
}

void page_Staff::load()
{
    const StaffMember *before = selected();
    const QString id = before ? before->id : QString();
    m_staff = readStaff(station().database);
    m_list->clearRows();
    for (const StaffMember &member : m_staff) {
        const auto cells = m_list->addRow(
            {member.login, inWords(member.level), member.lastLogin.isEmpty() ? u"never"_s : member.lastLogin});
        if (member.id == id)
            m_list->selectRow(cells.first()->row());
    }
    showSelected();
}

const StaffMember *page_Staff::selected() const
{
    const QModelIndexList rows = m_list->selectionModel()->selectedRows();
    return rows.isEmpty() ? nullptr : &m_staff.at(std::size_t(rows.first().row()));
}

void page_Staff::showSelected()
{
    const StaffMember *member = selected();
    m_selected->setText(member ? sql(u"%1, selected in the list:"_s, member->login)
                               : u"Select somebody in the list to change them:"_s);
    for (QPushButton *button : m_ofSelected)
        button->setEnabled(member != nullptr);
}

TypedPassword page_Staff::password() const
{
    return {m_password->text(), m_passwordAgain->text()};
}

AccessLevel page_Staff::level() const
{
    return m_level->currentIndex() == 1 ? AccessLevel::Admin : AccessLevel::Staff;
}

void page_Staff::change(const std::function<QString()> &action, const QString &done)
{
    m_done->clear();
    guarded(station().prompts, ErrorCode::Database, [&] {
        const QString refusal = action();
        if (!refusal.isEmpty()) {
            station().prompts.refuse(refusal);
            return;
        }
        for (QLineEdit *box : {m_password, m_passwordAgain})
            box->clear();
        m_done->setText(done);
        load();
    });
}

void page_Staff::add()
{
    const QString login = m_login->text();
    change(
        [&] {
            const QString refusal = addStaff(station(), administrator(), login, password(), level());
            if (refusal.isEmpty())
                m_login->clear();
            return refusal;
        },
        login + u" was added."_s);
}

void page_Staff::setLevel()
{
    const StaffMember member = *selected();
    const bool isSelf = member.login == administrator() && level() == AccessLevel::Staff;
    if (isSelf &&
        !station().prompts.confirm(u"You are about to make yourself ordinary staff. You can then not open the options "
                                   "again. Do it?"_s,
                                   u"Staff"_s))
        return;
    change([&] { return setStaffLevel(station(), administrator(), member, level()); },
           sql(u"The level of %1 was changed."_s, member.login));
}

void page_Staff::setPassword()
{
    const StaffMember member = *selected();
    change([&] { return setStaffPassword(station(), administrator(), member, password()); },
           sql(u"%1 has a new password."_s, member.login));
}

void page_Staff::remove()
{
    const StaffMember member = *selected();
    if (!station().prompts.confirm(sql(u"%1 will not be able to log in any more. Remove %1?"_s, member.login),
                                   u"Staff"_s))
        return;
    change([&] { return removeStaff(station(), administrator(), member); }, member.login + u" was removed."_s);
}
