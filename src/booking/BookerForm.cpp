#include "booking/BookerForm.h"

#include "app/CounterTables.h"
#include "app/DayRow.h"
#include "app/Errors.h"
#include "app/FieldLengths.h"
#include "app/NoBackslash.h"
#include "app/RateType.h"
#include "look/Look.h"
#include "look/WrappedLabel.h"
#include "records/Customers.h"

#include <QBoxLayout>
#include <QDialog>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QSignalBlocker>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

enum Column { Caption, Box, LookButton, Message };

void say(QLabel *label, const QString &text, const QColor &colour)
{
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, colour);
    label->setPalette(palette);
    label->setText(text);
}

QLabel *plainLabel(const QString &text = {})
{
    auto *label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

BookerForm::BookerForm(Station &station, QWidget *parent)
    : QWidget(parent),
      m_station(station),
      m_grid(new QGridLayout(this)),
      m_name(new QLineEdit(this)),
      m_organisation(new QLineEdit(this)),
      m_telephone(new QLineEdit(this)),
      m_rate(plainLabel())
{
    m_grid->setContentsMargins(0, 0, 0, 0);
    m_grid->setHorizontalSpacing(8);
    m_grid->setVerticalSpacing(8);
    m_grid->setColumnMinimumWidth(Caption, 136);
    m_grid->setColumnStretch(Box, 1);
    m_grid->setColumnMinimumWidth(Message, fontMetrics().horizontalAdvance(u"Nobody in group 5 has this number  "_s));

    addBox(u"&Name"_s, u"BookerName"_s, m_name, FieldLengths::name);
    addBox(u"&Organisation"_s, u"BookerOrg"_s, m_organisation, FieldLengths::organisation);
    addBox(u"&Telephone"_s, u"BookerTel"_s, m_telephone, FieldLengths::telephone);
    addNumberBox(u"&Member number"_s, u"BookerMemberID"_s, RateType::member, u"No member has this number"_s,
                 [this](const QString &number) { return findMember(m_station.database, number); });
    addLookButton(u"btn_LookMember"_s, u"Look up the member number"_s)->setText(u"&Look up"_s);
    addNumberBox(u"&Student number"_s, u"BookerStudentID"_s, RateType::student, u"No student has this number"_s,
                 [this](const QString &number) { return findStudent(m_station.database, number); });
    guarded(m_station.prompts, ErrorCode::LoadingForm, [this] {
        for (int group = 1; group <= m_station.settings.SpecialGroupLimit; ++group)
            if (SpecialGroupTableExists(m_station.database, group))
                addGroupBox(group);
    });
    addRateLine();
    setFocusProxy(m_name);
    showRate();
}

void BookerForm::addBox(const QString &caption, const QString &name, QLineEdit *box, int maxLength)
{
    const int row = m_grid->rowCount(); // row 0 is kept for addTopRow()
    QLabel *label = plainLabel(caption);
    label->setObjectName(u"lbl_"_s + QString(name).remove(u"ID"_s));
    label->setBuddy(box);
    box->setObjectName(u"txt_"_s + name);
    box->setAccessibleName(QString(caption).remove(u'&'));
    box->setMaxLength(maxLength);
    box->setMinimumWidth(200);
    new NoBackslash(box);
    box->installEventFilter(this);
    m_grid->addWidget(label, row, Caption);
    m_grid->addWidget(box, row, Box, 1, -1);
    m_boxes.push_back(box);
}

QLineEdit *BookerForm::addNumberBox(const QString &caption, const QString &name, const QString &ownRate,
                                    const QString &unknown, FindBooker find)
{
    auto *box = new QLineEdit(this);
    addBox(caption, name, box, FieldLengths::memberNumber);
    const int row = m_grid->rowCount() - 1;
    m_grid->addWidget(box, row, Box);
    QLabel *message = plainLabel();
    message->setObjectName(u"lbl_LookedUp_"_s + name);
    m_grid->addWidget(message, row, Message);
    const std::size_t index = m_numbers.size();
    m_numbers.push_back({box, message, ownRate, unknown, std::move(find)});
    connect(box, &QLineEdit::textChanged, this, [this, index] { numberTyped(index); });
    return box;
}

QPushButton *BookerForm::addLookButton(const QString &objectName, const QString &accessibleName)
{
    auto *button = new QPushButton(u"Look up"_s, this);
    button->setObjectName(objectName);
    button->setAccessibleName(accessibleName);
    m_grid->addWidget(button, m_grid->rowCount() - 1, LookButton);
    const std::size_t index = m_numbers.size() - 1;
    connect(button, &QPushButton::clicked, this, [this, index] { lookUpOnPurpose(index); });
    return button;
}

void BookerForm::addGroupBox(int group)
{
    const QString n = QString::number(group);
    QLineEdit *box =
        addNumberBox(u"Group "_s + n, u"SpecialGroupID_"_s + n, RateType::specialGroup(group),
                     u"Nobody in group "_s + n + u" has this number"_s, [this, group](const QString &number) {
                         return findGroupMember(m_station.database, group, number);
                     });
    addLookButton(u"btn_LookSpecialGroup_"_s + n, u"Look up the number in group "_s + n);
    if (group > 9)
        return;
    const QKeySequence key(int(Qt::ALT) | (int(Qt::Key_0) + group));
    connect(new QShortcut(key, this), &QShortcut::activated, box, [box] { box->setFocus(Qt::ShortcutFocusReason); });
    box->setToolTip(u"Alt+"_s + n);
}

void BookerForm::addRateLine()
{
    const int row = m_grid->rowCount();
    QFont bold = m_rate->font();
    bold.setBold(true);
    m_rate->setFont(bold);
    m_rate->setObjectName(u"lbl_RateType"_s);
    m_grid->setRowMinimumHeight(row, 32);
    m_grid->addWidget(plainLabel(u"Booked at"_s), row, Caption);
    m_grid->addWidget(m_rate, row, Box, 1, -1);
}

void BookerForm::addTopRow(QLabel *label, QWidget *box)
{
    label->setBuddy(box);
    box->installEventFilter(this);
    m_grid->addWidget(label, 0, Caption);
    m_grid->addWidget(box, 0, Box, 1, -1, Qt::AlignLeft);
    m_boxes.insert(m_boxes.begin(), box);
}

QPushButton *BookerForm::fillWindow(QDialog &window, const QString &heading, const QString &about,
                                    const QString &action)
{
    auto *ok = new QPushButton(action, &window);
    ok->setObjectName(u"cmd_OK"_s);
    m_ok = ok;
    auto *cancel = new QPushButton(u"&Cancel"_s, &window);
    cancel->setObjectName(u"cmd_Cancel"_s);
    cancel->setDefault(true);
    connect(cancel, &QPushButton::clicked, &window, &QDialog::reject);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto *layout = new QVBoxLayout(&window);
    layout->setContentsMargins(24, 16, 24, 16);
    layout->setSpacing(8);
    layout->addWidget(wrappedLabel(u"lbl_Heading"_s, heading, 1.3));
    layout->addWidget(wrappedLabel(u"lbl_About"_s, about));
    layout->addSpacing(8);
    layout->addWidget(this);
    layout->addStretch();
    layout->addSpacing(8);
    layout->addLayout(buttons);
    setFocus();
    return ok;
}

Booker BookerForm::booker() const
{
    return {m_name->text(), m_organisation->text(), m_telephone->text(), chosenRate()};
}

QString BookerForm::refusal() const
{
    if (m_name->text().isEmpty())
        return u"Please enter booker's name!"_s;
    return isMarkerText(m_name->text()) ? u"This name marks shared ground or extra time, please enter another one!"_s
                                        : QString();
}

void BookerForm::clear()
{
    for (QLineEdit *box : {m_name, m_organisation, m_telephone})
        box->clear();
    for (const NumberBox &number : m_numbers)
        number.box->clear();
    m_rateType = RateType::normal;
    showRate();
}

void BookerForm::numberTyped(std::size_t index)
{
    const NumberBox &number = m_numbers[index];
    number.message->clear();
    lookUp(index);
    showRate();
}

void BookerForm::lookUpOnPurpose(std::size_t index)
{
    const NumberBox &number = m_numbers[index];
    number.message->clear();
    if (number.box->text().size() < shortestCustomerNumber)
        say(number.message, u"Too short: at least %1 characters"_s.arg(shortestCustomerNumber), Look::alert.background);
    else if (lookUp(index) == LookUp::Unknown)
        say(number.message, number.unknown, Look::alert.background);
    showRate();
}

BookerForm::LookUp BookerForm::lookUp(std::size_t index)
{
    if (m_lookingUp)
        return LookUp::Failed;
    const QScopedValueRollback<bool> lookingUp(m_lookingUp, true);
    LookUp result = LookUp::Failed;
    guarded(m_station.prompts, ErrorCode::LoadingForm, [&] {
        const auto found = m_numbers[index].find(m_numbers[index].box->text());
        result = found ? LookUp::Found : LookUp::Unknown;
        if (found)
            take(index, *found);
    });
    return result;
}

void BookerForm::take(std::size_t index, const Booker &found)
{
    m_rateType = found.rateType;
    m_name->setText(found.name);
    m_organisation->setText(found.organisation);
    m_telephone->setText(found.telephone);
    for (QLineEdit *box : {m_name, m_organisation, m_telephone})
        box->setCursorPosition(0);
    for (std::size_t other = 0; other < m_numbers.size(); ++other) {
        if (other == index)
            continue;
        const QSignalBlocker quiet(m_numbers[other].box);
        m_numbers[other].box->clear();
        m_numbers[other].message->clear();
    }
    say(m_numbers[index].message, u"Found"_s, Look::accent);
}

QString BookerForm::chosenRate() const
{
    QString rate = m_rateType;
    for (const NumberBox &number : m_numbers)
        if (rate == number.ownRate && number.box->text().trimmed().isEmpty())
            rate = RateType::normal;
    return rate;
}

void BookerForm::showRate()
{
    m_rate->setText(RateType::inWords(chosenRate()));
}

bool BookerForm::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<QKeyEvent *>(event)->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return false;
    goOnFrom(static_cast<QWidget *>(watched));
    return true;
}

void BookerForm::goOnFrom(QWidget *box)
{
    for (std::size_t index = 0; index < m_numbers.size(); ++index) {
        const NumberBox &number = m_numbers[index];
        if (number.box == box && !number.box->text().isEmpty() && number.message->text().isEmpty()) {
            lookUpOnPurpose(index);
            if (box == m_boxes.back())
                return; // staff read first what became of it
        }
    }
    const auto next = std::find(m_boxes.begin(), m_boxes.end(), box) + 1;
    if (next != m_boxes.end())
        (*next)->setFocus(Qt::TabFocusReason);
    else if (m_ok && !m_name->text().isEmpty())
        m_ok->click();
}
