#include "records/CustomerNumbers.h"

#include "app/CounterTables.h"
#include "app/Errors.h"
#include "app/FieldLengths.h"
#include "app/RateType.h"
#include "look/EntryForm.h"
#include "look/Look.h"
#include "records/Customers.h"
#include "records/frm_Members.h"
#include "records/frm_Members_Dynamic.h"
#include "records/frm_Students.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QSignalBlocker>

using namespace Qt::StringLiterals;

namespace {

void say(QLabel *label, const QString &text, const QColor &colour)
{
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, colour);
    label->setPalette(palette);
    label->setText(text);
}

} // namespace

CustomerNumbers::CustomerNumbers(Station &station, EntryForm &form) : QObject(&form), m_station(station), m_form(form)
{
    addRow(
        u"&Member number"_s, u"BookerMemberID"_s, RateType::member, u"No member has this number"_s,
        [this](const QString &number) { return findMember(m_station.database, number); },
        [this](QWidget *over) { return std::make_unique<frm_Members>(m_station, over); });
    addLookButton(u"btn_LookMember"_s, u"&Look up…"_s, u"members"_s);
    addRow(
        u"&Student number"_s, u"BookerStudentID"_s, RateType::student, u"No student has this number"_s,
        [this](const QString &number) { return findStudent(m_station.database, number); },
        [this](QWidget *over) { return std::make_unique<frm_Students>(m_station, over); });
    addLookButton(u"btn_LookStudent"_s, u"Look up…"_s, u"students"_s);
    guarded(m_station.prompts, ErrorCode::LoadingForm, [this] {
        for (int group = 1; group <= m_station.settings.SpecialGroupLimit; ++group)
            if (SpecialGroupTableExists(m_station.database, group))
                addGroup(group);
    });
    connect(&m_form, &EntryForm::entered, this, &CustomerNumbers::lookUpEntered);
}

QLineEdit *CustomerNumbers::addRow(const QString &caption, const QString &name, const QString &ownRate,
                                   const QString &unknown, Find find, OpenRegister open)
{
    QLineEdit *box = m_form.addBox(caption, name, FieldLengths::memberNumber);
    QLabel *message = m_form.addMessage(u"lbl_LookedUp_"_s + name, u"Nobody in group 5 has this number"_s);
    const std::size_t index = m_rows.size();
    m_rows.push_back({box, message, ownRate, unknown, std::move(find), std::move(open)});
    connect(box, &QLineEdit::textChanged, this, [this, index] { numberTyped(index); });
    return box;
}

void CustomerNumbers::addLookButton(const QString &objectName, const QString &caption, const QString &registerName)
{
    const std::size_t index = m_rows.size() - 1;
    QPushButton *button = m_form.addButton(objectName, caption, u"Look up in the register of "_s + registerName);
    button->setToolTip(u"Opens the register of %1, in which names are searched."_s.arg(registerName));
    connect(button, &QPushButton::clicked, this, [this, index] { openRegister(index); });
}

void CustomerNumbers::addGroup(int group)
{
    const QString n = QString::number(group);
    QLineEdit *box = addRow(
        u"Group "_s + n, u"SpecialGroupID_"_s + n, RateType::specialGroup(group),
        u"Nobody in group "_s + n + u" has this number"_s,
        [this, group](const QString &number) { return findGroupMember(m_station.database, group, number); },
        [this, group](QWidget *over) { return std::make_unique<frm_Members_Dynamic>(m_station, group, over); });
    addLookButton(u"btn_LookSpecialGroup_"_s + n, u"Look up…"_s, u"special group "_s + n);
    if (group > 9)
        return;
    const QKeySequence key(int(Qt::ALT) | (int(Qt::Key_0) + group));
    connect(new QShortcut(key, &m_form), &QShortcut::activated, box, [box] { box->setFocus(Qt::ShortcutFocusReason); });
    box->setToolTip(u"Alt+"_s + n);
}

QString CustomerNumbers::rateType() const
{
    QString rate = m_rateType;
    for (const Row &row : m_rows)
        if (rate == row.ownRate && row.box->text().trimmed().isEmpty())
            rate = RateType::normal;
    return rate;
}

void CustomerNumbers::clear()
{
    for (const Row &row : m_rows)
        row.box->clear();
    m_rateType = RateType::normal;
    Q_EMIT rateMayHaveChanged();
}

void CustomerNumbers::numberTyped(std::size_t index)
{
    const Row &row = m_rows[index];
    row.message->clear();
    lookUp(index);
    Q_EMIT rateMayHaveChanged();
}

void CustomerNumbers::lookUpOnPurpose(std::size_t index)
{
    const Row &row = m_rows[index];
    row.message->clear();
    if (row.box->text().size() < shortestCustomerNumber)
        say(row.message, u"Too short: at least %1 characters"_s.arg(shortestCustomerNumber), Look::alert.background);
    else if (lookUp(index) == LookUp::Unknown)
        say(row.message, row.unknown, Look::alert.background);
    Q_EMIT rateMayHaveChanged();
}

void CustomerNumbers::lookUpEntered(const QWidget *box)
{
    m_enterLookedUp = false;
    for (std::size_t index = 0; index < m_rows.size(); ++index) {
        const Row &row = m_rows[index];
        if (row.box == box && !row.box->text().isEmpty() && row.message->text().isEmpty()) {
            lookUpOnPurpose(index);
            m_enterLookedUp = true;
        }
    }
}

void CustomerNumbers::openRegister(std::size_t index)
{
    if (m_station.database.isWaiting())
        return;
    guarded(m_station.prompts, ErrorCode::LoadingForm, [&] {
        const auto window = m_rows[index].open(m_form.window());
        window->standOverBooking();
        connect(window.get(), &RegisterWindow::pasted, this, qOverload<const Customer &>(&CustomerNumbers::take));
        window->exec();
    });
}

void CustomerNumbers::take(const Customer &customer)
{
    for (std::size_t index = 0; index < m_rows.size(); ++index) {
        if (m_rows[index].ownRate != customer.rateType)
            continue;
        const QSignalBlocker quiet(m_rows[index].box);
        m_rows[index].box->setText(customer.number);
        // Whichever the group, its customers are booked at the first one's rate.
        const bool isOfGroup = customer.rateType != RateType::member && customer.rateType != RateType::student;
        take(index, {customer.name, customer.organisation, customer.telephone,
                     isOfGroup ? RateType::specialGroup(1) : customer.rateType});
        Q_EMIT rateMayHaveChanged();
    }
}

CustomerNumbers::LookUp CustomerNumbers::lookUp(std::size_t index)
{
    if (m_lookingUp)
        return LookUp::Failed;
    const QScopedValueRollback<bool> lookingUp(m_lookingUp, true);
    LookUp result = LookUp::Failed;
    guarded(m_station.prompts, ErrorCode::LoadingForm, [&] {
        const auto customer = m_rows[index].find(m_rows[index].box->text());
        result = customer ? LookUp::Found : LookUp::Unknown;
        if (customer)
            take(index, *customer);
    });
    return result;
}

void CustomerNumbers::take(std::size_t index, const Booker &customer)
{
    m_rateType = customer.rateType;
    for (std::size_t other = 0; other < m_rows.size(); ++other) {
        if (other == index)
            continue;
        const QSignalBlocker quiet(m_rows[other].box);
        m_rows[other].box->clear();
        m_rows[other].message->clear();
    }
    say(m_rows[index].message, u"Found"_s, Look::accent);
    Q_EMIT found(customer);
}
