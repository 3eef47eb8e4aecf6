#include "options/FieldsPart.h"

#include "app/Prompts.h"
#include "options/OptionsForm.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSpinBox>
#include <QTableWidget>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace OptionsForm;

namespace {

// "08:00"
QString hourText(int hour)
{
    return u"%1:00"_s.arg(hour, 2, 10, QChar(u'0'));
}

QString cell(const QTableWidget *table, int row, int column)
{
    const QTableWidgetItem *item = table->item(row, column);
    return item ? item->text().trimmed() : QString();
}

void fillWithFields(QComboBox *box, const std::vector<QString> &names)
{
    const int chosen = box->currentIndex();
    box->clear();
    for (const QString &name : names)
        box->addItem(name);
    box->setCurrentIndex(std::clamp(chosen, -1, int(names.size()) - 1));
}

} // namespace

FieldsPart::FieldsPart(Prompts &prompts, QWidget *parent)
    : QWidget(parent), m_prompts(prompts), m_fields(new QTableWidget(0, 2)), m_pairList(new QListWidget)
{
    auto *layout = new QHBoxLayout(this);
    layout->setSpacing(16);
    layout->addWidget(makeFields(), 1);
    layout->addWidget(makeHoursAndPairs(), 1);
}

QWidget *FieldsPart::makeFields()
{
    m_fields->setObjectName(u"ListView_Fields"_s);
    m_fields->setAccessibleName(u"Fields of the centre"_s);
    m_fields->setToolTip(u"The fields in their order; press F2 or double-click to change a name."_s);
    m_fields->setHorizontalHeaderLabels({u"Short name"_s, u"Name that staff read"_s});
    m_fields->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    m_fields->setTabKeyNavigation(false);
    connect(m_fields, &QTableWidget::cellChanged, this, &FieldsPart::takeFields);
    auto *add = button(u"btn_AddField"_s, u"A&dd a field"_s, u"Adds a field at the end of the list."_s);
    auto *remove = button(u"btn_RemoveField"_s, u"Re&move the last"_s,
                          u"Removes the last field; the others keep their numbers, and so their bookings."_s);
    connect(add, &QPushButton::clicked, this, &FieldsPart::addField);
    connect(remove, &QPushButton::clicked, this, &FieldsPart::removeField);
    auto *part = new QWidget;
    auto *layout = new QVBoxLayout(part);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(m_fields, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(add);
    buttons->addWidget(remove);
    layout->addLayout(buttons);
    return part;
}

QWidget *FieldsPart::makeHoursAndPairs()
{
    auto *part = new QWidget;
    auto *column = new QVBoxLayout(part);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    QFormLayout *hours = addGroup(column, u"Working hours"_s);
    m_firstHour =
        addFigure(hours, u"&First hour"_s, u"spn_FirstHour"_s, u"The hour at which the business day begins."_s, 1, 23);
    m_lastHour = addFigure(hours, u"Last &hour after midnight"_s, u"spn_LastHour"_s,
                           u"The last hour that can be booked after midnight; 2 means until 03:00."_s, 0, 22);
    m_hours = words(u"lbl_Hours"_s, {});
    hours->addRow(m_hours);
    QFormLayout *pairs = addGroup(column, u"Fields that share their ground"_s);
    m_pairList->setObjectName(u"ListView_Pairs"_s);
    m_pairList->setAccessibleName(u"Pairs of fields that share their ground"_s);
    m_pairList->setToolTip(
        u"A booking of the whole takes the part in full; one of the part takes a part of the whole."_s);
    pairs->addRow(m_pairList);
    m_whole = addChoice(pairs, u"&Whole"_s, u"cbo_Whole"_s, u"The field that has the other one as a part of it."_s);
    m_part = addChoice(pairs, u"Par&t of it"_s, u"cbo_Part"_s, u"The field that lies within the other one."_s);
    auto *add = button(u"btn_AddPair"_s, u"Add the pa&ir"_s, u"Adds the pair chosen above."_s);
    auto *remove =
        button(u"btn_RemovePair"_s, u"Remo&ve the pair"_s, u"Removes the pair that is selected in the list."_s);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(add);
    buttons->addWidget(remove);
    pairs->addRow(buttons);
    connect(add, &QPushButton::clicked, this, &FieldsPart::addPair);
    connect(remove, &QPushButton::clicked, this, &FieldsPart::removePair);
    for (const QSpinBox *box : {m_firstHour, m_lastHour})
        connect(box, &QSpinBox::valueChanged, this, &FieldsPart::showHours);
    return part;
}

void FieldsPart::load(const CentreSettings &settings)
{
    const QScopedValueRollback showing(m_showing, true);
    m_fields->setRowCount(0);
    for (const auto &[name, display] : settings.fields) {
        const int row = m_fields->rowCount();
        m_fields->insertRow(row);
        m_fields->setItem(row, 0, new QTableWidgetItem(name));
        m_fields->setItem(row, 1, new QTableWidgetItem(display));
    }
    m_firstHour->setValue(settings.firstHour);
    m_lastHour->setValue(settings.lastHour);
    m_pairs = settings.pairs;
    showHours();
    showPairs();
}

void FieldsPart::enterInto(CentreSettings &settings) const
{
    settings.fields.clear();
    settings.fields.reserve(std::size_t(m_fields->rowCount()));
    for (int row = 0; row < m_fields->rowCount(); ++row)
        settings.fields.push_back({cell(m_fields, row, 0), cell(m_fields, row, 1)});
    settings.firstHour = m_firstHour->value();
    settings.lastHour = m_lastHour->value();
    settings.pairs = m_pairs;
}

CentreSettings FieldsPart::entered() const
{
    CentreSettings settings;
    enterInto(settings);
    return settings;
}

void FieldsPart::takeFields()
{
    if (m_showing)
        return;
    showPairs();
    Q_EMIT fieldsChanged();
    Q_EMIT changed();
}

void FieldsPart::showHours()
{
    const int last = m_lastHour->value();
    m_hours->setText(u"The day runs from %1 until %2."_s.arg(hourText(m_firstHour->value()), hourText(last + 1)));
    if (!m_showing)
        Q_EMIT changed();
}

void FieldsPart::showPairs()
{
    const CentreSettings settings = entered();
    const std::vector<QString> names = settings.names();
    fillWithFields(m_whole, names);
    fillWithFields(m_part, names);
    m_pairList->clear();
    for (const auto &[whole, part] : m_pairs)
        m_pairList->addItem(u"%1, part of it: %2"_s.arg(settings.nameOf(whole), settings.nameOf(part)));
}

void FieldsPart::addField()
{
    const int row = m_fields->rowCount();
    if (row >= CentreSettings::mostFields) {
        refuse(u"There can be no more than 16 fields."_s);
        return;
    }
    {
        const QScopedValueRollback showing(m_showing, true);
        m_fields->insertRow(row);
        m_fields->setItem(row, 0, new QTableWidgetItem(u"F%1"_s.arg(row + 1)));
        m_fields->setItem(row, 1, new QTableWidgetItem(u"Field %1"_s.arg(row + 1)));
    }
    takeFields();
    m_fields->setCurrentCell(row, 1);
    m_fields->editItem(m_fields->item(row, 1));
}

void FieldsPart::removeField()
{
    const int last = m_fields->rowCount() - 1;
    if (last < 0)
        return;
    const QString name = entered().nameOf(last);
    const auto uses = [last](CentreSettings::Pair pair) { return pair.whole == last || pair.part == last; };
    if (std::ranges::any_of(m_pairs, uses)) {
        refuse(u"%1 shares its ground with another field. Remove that pair first."_s.arg(name));
        return;
    }
    const QString question = u"Remove %1? Its bookings stay in the database, but nobody sees them any more until the "
                             "field is added again."_s;
    if (!m_prompts.confirm(question.arg(name), u"Options"_s))
        return;
    m_fields->removeRow(last);
    takeFields();
}

void FieldsPart::addPair()
{
    const CentreSettings::Pair pair{m_whole->currentIndex(), m_part->currentIndex()};
    if (const QString reason = entered().refusalOfPair(pair); !reason.isEmpty()) {
        refuse(reason);
        return;
    }
    m_pairs.push_back(pair);
    showPairs();
    Q_EMIT changed();
}

void FieldsPart::removePair()
{
    const int row = m_pairList->currentRow();
    if (row < 0) {
        refuse(u"Select the pair that is to be removed."_s);
        return;
    }
    m_pairs.erase(m_pairs.begin() + row);
    showPairs();
    Q_EMIT changed();
}

void FieldsPart::refuse(const QString &reason) const
{
    m_prompts.refuse(reason, u"Options"_s);
}
