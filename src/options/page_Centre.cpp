#include "options/page_Centre.h"

#include "app/Errors.h"
#include "app/Station.h"
#include "look/SteadyTabs.h"
#include "options/OptionsForm.h"
#include "options/PlanPart.h"
#include "options/SettingsDraft.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSpinBox>
#include <QTableWidget>

using namespace Qt::StringLiterals;
using namespace OptionsForm;

namespace {

constexpr int mostCounters = 99;
constexpr int leastHeight = 440; // of the tabs

// "08:00"
QString hourText(int hour)
{
    return u"%1:00"_s.arg(hour, 2, 10, QChar(u'0'));
}

QStringList linesOf(const QPlainTextEdit *box)
{
    QStringList lines = box->toPlainText().split(u'\n');
    for (QString &line : lines)
        line = line.trimmed();
    while (!lines.isEmpty() && lines.back().isEmpty())
        lines.pop_back();
    return lines;
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

std::vector<QString> namesOf(const CentreSettings &settings)
{
    std::vector<QString> names;
    names.reserve(settings.fields.size());
    for (int i = 0; i < int(settings.fields.size()); ++i)
        names.push_back(settings.nameOf(i));
    return names;
}

} // namespace

page_Centre::page_Centre(Station &station, const QString &administrator, QWidget *parent)
    : OptionsPage(station, administrator, parent),
      m_fields(new QTableWidget(0, 2)),
      m_pairList(new QListWidget),
      m_plans(new PlanPart)
{
    setObjectName(u"page_Centre"_s);
    auto *tabs = new SteadyTabs;
    tabs->setObjectName(u"SSTabCentre"_s);
    tabs->addTab(makeFields(), u"Fields and &hours"_s);
    tabs->addTab(makeReceipts(), u"Receipts and &counters"_s);
    tabs->addTab(m_plans, u"&Plans"_s);
    tabs->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Ignored); // lists take the room that there is
    tabs->setMinimumHeight(leastHeight);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 8, 0);
    layout->setSpacing(8);
    layout->addWidget(tabs, 1);
    layout->addWidget(makeCopyLine());
    connect(m_plans, &PlanPart::changed, this, &OptionsPage::touched);
    connect(m_plans, &PlanPart::refused, this, &page_Centre::told);
}

QWidget *page_Centre::makeFields()
{
    auto *tab = new QWidget;
    auto *layout = new QHBoxLayout(tab);
    layout->setSpacing(16);
    layout->addWidget(makeFieldsTable(), 1);
    layout->addWidget(makeHoursAndPairs(), 1);
    return tab;
}

QWidget *page_Centre::makeFieldsTable()
{
    m_fields->setObjectName(u"ListView_Fields"_s);
    m_fields->setAccessibleName(u"Fields of the centre"_s);
    m_fields->setToolTip(u"The fields in their order; press F2 or double-click to change a name."_s);
    m_fields->setHorizontalHeaderLabels({u"Short name"_s, u"Name that staff read"_s});
    m_fields->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    m_fields->setTabKeyNavigation(false);
    connect(m_fields, &QTableWidget::cellChanged, this, &page_Centre::fieldsChanged);
    auto *add = button(u"btn_AddField"_s, u"&Add a field"_s, u"Adds a field at the end of the list."_s);
    auto *remove = button(u"btn_RemoveField"_s, u"Re&move the last"_s,
                          u"Removes the last field; the others keep their numbers, and so their bookings."_s);
    connect(add, &QPushButton::clicked, this, &page_Centre::addField);
    connect(remove, &QPushButton::clicked, this, &page_Centre::removeField);
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

QWidget *page_Centre::makeHoursAndPairs()
{
    auto *part = new QWidget;
    auto *column = new QVBoxLayout(part);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    QFormLayout *hours = addGroup(column, u"Working hours"_s);
    m_firstHour =
        addFigure(hours, u"&First hour"_s, u"spn_FirstHour"_s, u"The hour at which the business day begins."_s, 1, 23);
    m_lastHour = addFigure(hours, u"&Last hour after midnight"_s, u"spn_LastHour"_s,
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
    connect(add, &QPushButton::clicked, this, &page_Centre::addPair);
    connect(remove, &QPushButton::clicked, this, &page_Centre::removePair);
    for (const QSpinBox *box : {m_firstHour, m_lastHour})
        connect(box, &QSpinBox::valueChanged, this, &page_Centre::showHours);
    return part;
}

QWidget *page_Centre::makeReceipts()
{
    auto *tab = new QWidget;
    auto *left = new QVBoxLayout;
    auto *right = new QVBoxLayout;
    auto *layout = new QHBoxLayout(tab);
    layout->setSpacing(16);
    layout->addLayout(left, 1);
    layout->addLayout(right, 1);
    m_address = addLines(left, u"A&ddress at the head of the receipts, line by line"_s, u"txt_Address"_s,
                         u"The centre's name and address, as they stand at the head of a receipt."_s);
    m_contact = addLines(left, u"Co&ntact, line by line"_s, u"txt_Contact"_s,
                         u"Telephone and mail address, as they stand below."_s);
    QFormLayout *form = addGroup(right, u"Counters and special groups"_s);
    m_counters =
        addFigure(form, u"N&umber of counters"_s, u"spn_Counters"_s,
                  u"How many counters the centre has; each gets its own tables at the next start."_s, 1, mostCounters);
    m_groups =
        addFigure(form, u"Special &groups, at most"_s, u"spn_SpecialGroups"_s,
                  u"Special groups with a higher number are not looked for."_s, 0, CentreSettings::mostSpecialGroups);
    right->addStretch();
    for (const QSpinBox *box : {m_counters, m_groups})
        connect(box, &QSpinBox::valueChanged, this, &OptionsPage::touched);
    return tab;
}

QPlainTextEdit *page_Centre::addLines(QBoxLayout *column, const QString &caption, const QString &name,
                                      const QString &tip)
{
    auto *box = new QPlainTextEdit;
    box->setObjectName(name);
    box->setAccessibleName(QString(caption).remove(u'&'));
    box->setToolTip(tip);
    box->setTabChangesFocus(true);
    auto *label = new QLabel(caption);
    label->setBuddy(box);
    column->addWidget(label);
    column->addWidget(box, 1);
    connect(box, &QPlainTextEdit::textChanged, this, &OptionsPage::touched);
    return box;
}

QWidget *page_Centre::makeCopyLine()
{
    auto *line = new QWidget;
    auto *layout = new QHBoxLayout(line);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(words(u"lbl_OwnFile"_s,
                            u"Each counter has its own settings file; what is saved here changes this counter's "
                            "alone. Make the same changes at the others, or copy this file for them."_s),
                      1);
    m_copyFor = new QSpinBox;
    m_copyFor->setObjectName(u"spn_CopyFor"_s);
    m_copyFor->setAccessibleName(u"Number of the counter that gets a copy"_s);
    m_copyFor->setToolTip(u"The number of the counter for which the file is copied."_s);
    m_copyFor->setMinimum(1);
    auto *label = new QLabel(u"Count&er"_s);
    label->setBuddy(m_copyFor);
    auto *copy = button(u"btn_CopyForCounter"_s, u"Cop&y for another counter …"_s,
                        u"Saves a settings file like this one, with the number of the counter beside this button."_s);
    layout->addWidget(label);
    layout->addWidget(m_copyFor);
    layout->addWidget(copy);
    connect(copy, &QPushButton::clicked, this, &page_Centre::askForCopy);
    return line;
}

void page_Centre::load()
{
    showSettings(CentreSettings::read());
    m_loaded = entered(); // what cannot be shown is no change
    m_plans->load(namesOf(m_loaded));
    Q_EMIT touched();
}

void page_Centre::showSettings(const CentreSettings &settings)
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
    m_address->setPlainText(settings.address.join(u'\n'));
    m_contact->setPlainText(settings.contact.join(u'\n'));
    m_counters->setValue(settings.counters);
    m_groups->setValue(settings.specialGroups);
    m_copyFor->setMaximum(std::max(1, settings.counters));
    m_copyFor->setValue(station().settings.ThisCounter + 1);
    showHours();
    showPairs();
}

CentreSettings page_Centre::entered() const
{
    CentreSettings settings;
    settings.fields.reserve(std::size_t(m_fields->rowCount()));
    for (int row = 0; row < m_fields->rowCount(); ++row)
        settings.fields.push_back({cell(m_fields, row, 0), cell(m_fields, row, 1)});
    settings.firstHour = m_firstHour->value();
    settings.lastHour = m_lastHour->value();
    settings.pairs = m_pairs;
    settings.address = linesOf(m_address);
    settings.contact = linesOf(m_contact);
    settings.counters = m_counters->value();
    settings.specialGroups = m_groups->value();
    return settings;
}

bool page_Centre::hasChanges() const
{
    return entered() != m_loaded || m_plans->hasChanges();
}

bool page_Centre::save()
{
    const CentreSettings settings = entered();
    if (const QString reason = settings.refusal(); !reason.isEmpty()) {
        told(reason);
        return false;
    }
    SettingsDraft draft;
    settings.addTo(draft, m_loaded);
    m_plans->addTo(draft);
    if (!saveDraft(station(), administrator(), draft))
        return false;
    load();
    Q_EMIT restartNeeded();
    return true;
}

void page_Centre::fieldsChanged()
{
    if (m_showing)
        return;
    showPairs();
    m_plans->setFields(namesOf(entered()));
    Q_EMIT touched();
}

void page_Centre::showHours()
{
    const int last = m_lastHour->value();
    m_hours->setText(u"The day runs from %1 until %2."_s.arg(hourText(m_firstHour->value()), hourText(last + 1)));
    if (!m_showing)
        Q_EMIT touched();
}

void page_Centre::showPairs()
{
    const CentreSettings settings = entered();
    const std::vector<QString> names = namesOf(settings);
    fillWithFields(m_whole, names);
    fillWithFields(m_part, names);
    m_pairList->clear();
    for (const auto &[whole, part] : m_pairs)
        m_pairList->addItem(u"%1, part of it: %2"_s.arg(settings.nameOf(whole), settings.nameOf(part)));
}

void page_Centre::addField()
{
    const int row = m_fields->rowCount();
    if (row >= CentreSettings::mostFields) {
        told(u"There can be no more than 16 fields."_s);
        return;
    }
    {
        const QScopedValueRollback showing(m_showing, true);
        m_fields->insertRow(row);
        m_fields->setItem(row, 0, new QTableWidgetItem(u"F%1"_s.arg(row + 1)));
        m_fields->setItem(row, 1, new QTableWidgetItem(u"Field %1"_s.arg(row + 1)));
    }
    fieldsChanged();
    m_fields->setCurrentCell(row, 1);
    m_fields->editItem(m_fields->item(row, 1));
}

void page_Centre::removeField()
{
    const int last = m_fields->rowCount() - 1;
    if (last < 0)
        return;
    const QString name = entered().nameOf(last);
    const auto uses = [last](CentreSettings::Pair pair) { return pair.whole == last || pair.part == last; };
    if (std::ranges::any_of(m_pairs, uses)) {
        told(u"%1 shares its ground with another field. Remove that pair first."_s.arg(name));
        return;
    }
    const QString question = u"Remove %1? Its bookings stay in the database, but nobody sees them any more until the "
                             "field is added again."_s;
    if (!station().prompts.confirm(question.arg(name), u"Options"_s))
        return;
    m_fields->removeRow(last);
    fieldsChanged();
}

void page_Centre::addPair()
{
    const CentreSettings::Pair pair{m_whole->currentIndex(), m_part->currentIndex()};
    if (const QString reason = entered().refusalOfPair(pair); !reason.isEmpty()) {
        told(reason);
        return;
    }
    m_pairs.push_back(pair);
    showPairs();
    Q_EMIT touched();
}

void page_Centre::removePair()
{
    const int row = m_pairList->currentRow();
    if (row < 0) {
        told(u"Select the pair that is to be removed."_s);
        return;
    }
    m_pairs.erase(m_pairs.begin() + row);
    showPairs();
    Q_EMIT touched();
}

void page_Centre::askForCopy()
{
    if (hasChanges()) {
        told(u"Save this page first: the copy is made of what is saved."_s);
        return;
    }
    const QString path = QFileDialog::getSaveFileName(this, u"Settings for counter %1"_s.arg(m_copyFor->value()),
                                                      u"tamsora.ini"_s, u"Settings (*.ini)"_s);
    if (!path.isEmpty())
        copyFor(m_copyFor->value(), path);
}

bool page_Centre::copyFor(int counter, const QString &path)
{
    return guarded(station().prompts, ErrorCode::Unknown, [&] {
        copySettingsFor(counter, path);
        logOption(station(), administrator(), u"settings copied for counter %1"_s.arg(counter));
        station().prompts.inform(
            u"The file for counter %1 is ready. Put it as tamsora.ini where that computer keeps its "
            "settings. It holds the database password: delete it from the way there."_s.arg(counter),
            u"Options"_s);
    });
}

void page_Centre::told(const QString &refusal) const
{
    station().prompts.refuse(refusal, u"Options"_s);
}
