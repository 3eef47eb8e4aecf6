#include "options/page_Rates.h"

#include "app/Conversions.h"
#include "app/Errors.h"
#include "app/RateType.h"
#include "app/SqlText.h"
#include "counter/ItemQuantity.h"
#include "look/ElidedLabel.h"
#include "look/NoBackslash.h"
#include "look/WrappedLabel.h"
#include "options/RateGrid.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

constexpr int allDays = 0;
constexpr int workDays = 1;
constexpr int weekend = 2;
constexpr int firstSingleDay = 3;
constexpr int saturday = 5;

bool isMeant(int choice, int day)
{
    switch (choice) {
    case allDays:
        return true;
    case workDays:
        return day < saturday;
    case weekend:
        return day >= saturday;
    default:
        return day == choice - firstSingleDay;
    }
}

QString capitalised(QString words)
{
    return words.replace(0, 1, words[0].toUpper());
}

} // namespace

page_Rates::page_Rates(Station &station, const QString &administrator, QWidget *parent)
    : OptionsPage(station, administrator, parent), m_grid(new RateGrid(station.hours()))
{
    setObjectName(u"page_Rates"_s);
    auto *middle = new QHBoxLayout;
    middle->setSpacing(16);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(makeChoice());
    middle->addWidget(m_grid, 1);
    middle->addWidget(makeTools());
    layout->addLayout(middle, 1);
    m_faults = new ElidedLabel;
    m_faults->setObjectName(u"lbl_RateFaults"_s);
    layout->addWidget(m_faults);
    layout->addWidget(wrappedLabel(
        u"lbl_RateLegend"_s,
        u"Hatched: no price. ×2: several prices stand, the one shown is charged. Red corner: not saved yet."_s, 0.9));
    connect(m_grid, &RateGrid::changed, this, &page_Rates::showState);
    connect(m_grid, &RateGrid::choiceChanged, this, [this] { m_chosen->showText(m_grid->chosenInWords()); });
    connect(m_grid, &RateGrid::drawn, this, &page_Rates::paintDrawn);
    connect(m_grid, &RateGrid::typed, this, &page_Rates::paintChosen);
    setEnabled(station.settings.MaxFieldIndex >= 0); // without a field nothing has a price
    m_key = chosenKey();
    connect(m_field, &QComboBox::currentIndexChanged, this, &page_Rates::changeKey);
    connect(m_type, &QComboBox::currentIndexChanged, this, &page_Rates::changeKey);
}

QWidget *page_Rates::makeChoice()
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    QStringList fields;
    for (const QString &name : station().settings.namesOfFields())
        fields << name;
    m_field = addBox(layout, u"cmb_RateField"_s, u"&Field"_s, fields);
    m_type = addBox(layout, u"cmb_RateType"_s, u"Rate &type"_s, {});
    QStringList types{RateType::normal, RateType::member, RateType::student};
    for (int group = 1; group <= station().settings.SpecialGroupLimit; ++group)
        types << RateType::specialGroup(group);
    for (const QString &type : types)
        m_type->addItem(capitalised(RateType::inWords(type)), type);
    m_chosen = new ElidedLabel;
    m_chosen->setObjectName(u"lbl_RateChosen"_s);
    layout->addWidget(m_chosen, 1);
    return row;
}

QWidget *page_Rates::makeTools()
{
    auto *side = new QWidget;
    side->setFixedWidth(208);
    auto *layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    m_price = new QLineEdit;
    m_price->setObjectName(u"txt_RatePrice"_s);
    m_price->setAccessibleName(u"Price of an hour"_s);
    m_price->setPlaceholderText(u"18.00"_s);
    m_price->setMaxLength(12);
    m_price->setToolTip(u"While a price stands here, drawing over the hours with the mouse gives it to them."_s);
    new NoBackslash(m_price);
    auto *label = new QLabel(u"Pri&ce of an hour"_s);
    label->setBuddy(m_price);
    layout->addWidget(label);
    layout->addWidget(m_price);
    addButton(layout, u"btn_RatePaint"_s, u"&Give it to the chosen hours"_s,
              u"Gives the chosen hours this price; drawing over hours with the mouse does the same."_s,
              [this] { paintChosen(m_price->text()); });
    addButton(layout, u"btn_RateClear"_s, u"Ta&ke their price away"_s,
              u"Leaves the chosen hours without a price: they cost nothing."_s, [this] { m_grid->fill(std::nullopt); });
    addButton(layout, u"btn_RateAll"_s, u"Give it to all &hours"_s, u"Gives every hour of the week this price."_s,
              [this] {
                  m_grid->choose(0, 0, WeekRates::days - 1, int(hoursOfDay(station().hours()).size()) - 1);
                  paintChosen(m_price->text());
              });
    layout->addSpacing(8);
    QStringList days{u"all days"_s, u"Monday to Friday"_s, u"Saturday and Sunday"_s};
    for (int day = 0; day < WeekRates::days; ++day)
        days << rateDay(day);
    m_days = addBox(layout, u"cmb_RateDays"_s, u"The chosen &day's prices for"_s, days);
    addButton(layout, u"btn_RateCopyDay"_s, u"Copy the da&y"_s,
              u"Copies the prices of the day in which the grid's mark stands to these days."_s, [this] { copyDay(); });
    layout->addSpacing(8);
    QStringList fields;
    for (const QString &name : station().settings.namesOfFields())
        fields << name;
    m_from = addBox(layout, u"cmb_RateFrom"_s, u"This rate type's &prices from"_s, fields);
    addButton(layout, u"btn_RateCopyField"_s, u"Copy the f&ield"_s,
              u"Shows the week of that field here; it is not saved before you save."_s, [this] { copyField(); });
    layout->addSpacing(8);
    m_settle =
        addButton(layout, u"btn_RateSettle"_s, u"Settle se&veral prices"_s,
                  u"Keeps the price that is charged now where several stand; saving removes the others."_s, [this] {
                      WeekRates week = m_grid->week();
                      week.settleOverlaps();
                      show(week);
                  });
    layout->addStretch();
    return side;
}

QPushButton *page_Rates::addButton(QBoxLayout *layout, const QString &name, const QString &caption, const QString &tip,
                                   std::function<void()> action)
{
    auto *button = new QPushButton(caption);
    button->setObjectName(name);
    button->setToolTip(tip);
    button->setAutoDefault(false);
    layout->addWidget(button);
    connect(button, &QPushButton::clicked, this,
            [this, action = std::move(action)] { guarded(station().prompts, ErrorCode::Database, action); });
    return button;
}

QComboBox *page_Rates::addBox(QBoxLayout *layout, const QString &name, const QString &caption,
                              const QStringList &entries)
{
    auto *box = new QComboBox;
    box->setObjectName(name);
    box->setAccessibleName(QString(caption).remove(u'&'));
    box->addItems(entries);
    auto *label = new QLabel(caption);
    label->setBuddy(box);
    layout->addWidget(label);
    layout->addWidget(box);
    return box;
}

RateKey page_Rates::chosenKey() const
{
    return {std::max(m_field->currentIndex(), 0), m_type->currentData().toString()};
}

void page_Rates::load()
{
    m_key = chosenKey();
    read();
}

bool page_Rates::hasChanges() const
{
    return m_grid->week() != m_stored.week;
}

bool page_Rates::save()
{
    if (!write())
        return false;
    load();
    return true;
}

bool page_Rates::write()
{
    if (saveRates(station(), administrator(), m_key, m_stored, m_grid->week()))
        return true;
    if (station().prompts.confirm(
            u"These prices were changed at another counter after you saw them. Nothing was saved. "
            "Show them as they are now? What you painted is lost then."_s,
            u"Rates"_s))
        read();
    return false;
}

void page_Rates::read()
{
    m_stored = StoredRates::read(station().database, m_key);
    show(m_stored.week);
}

bool page_Rates::mayLeave()
{
    if (!hasChanges())
        return true;
    const Answer answer =
        station().prompts.ask({sql(u"The prices of %1, %2, are not saved. Save them?"_s,
                                   station().settings.fieldName(m_key.field), RateType::inWords(m_key.rateType)),
                               u"Rates"_s,
                               MessageIcon::Question,
                               {Answer::Yes, Answer::No, Answer::Cancel},
                               Answer::Cancel});
    return answer == Answer::No || (answer == Answer::Yes && write());
}

void page_Rates::changeKey()
{
    if (const RateKey wanted = chosenKey(); wanted.field == m_key.field && wanted.rateType == m_key.rateType)
        return;
    bool goesOn = false;
    guarded(station().prompts, ErrorCode::Database, [&] {
        goesOn = mayLeave();
        if (goesOn)
            load();
    });
    if (goesOn)
        return;
    const QSignalBlocker quietField(m_field);
    const QSignalBlocker quietType(m_type);
    m_field->setCurrentIndex(m_key.field);
    m_type->setCurrentIndex(m_type->findData(m_key.rateType));
}

void page_Rates::show(const WeekRates &week)
{
    m_grid->setWeek(week, m_stored.week);
    showState();
}

void page_Rates::showState()
{
    const WeekRates &week = m_grid->week();
    const QString gaps = gapsInWords(week, station().hours());
    const QString overlaps = overlapsInWords(week, station().hours());
    QStringList faults;
    if (!overlaps.isEmpty())
        faults << u"Several prices: "_s + overlaps + u'.';
    if (!gaps.isEmpty())
        faults << u"No price, so free of charge: "_s + gaps + u'.';
    if (const int useless = m_stored.uselessRows(); useless > 0)
        faults << sql(u"Rows that never apply, without a day of the week or with an end before the start: %1."_s,
                      useless);
    m_faults->showText(faults.isEmpty() ? u"Every hour has one price."_s : faults.join(u' '));
    m_settle->setEnabled(!overlaps.isEmpty());
    Q_EMIT touched();
}

std::optional<double> page_Rates::priceOf(const QString &text)
{
    try {
        // A comma would stand between thousands: 11,5 is 115.
        if (const double price = typedPrice(text).toDouble(); price >= 0 && !text.contains(u','))
            return price;
    } catch (const ConversionError &) {
        // told below, like a price below zero
    }
    station().prompts.refuse(
        text.isEmpty() ? u"Please enter a price first."_s
                       : sql(u"\"%1\" is no price of an hour. Write it with a point, such as 18.50."_s, text));
    m_price->setFocus();
    m_price->selectAll();
    return std::nullopt;
}

void page_Rates::paintChosen(const QString &text)
{
    if (const auto price = priceOf(text))
        m_grid->fill(price);
}

// Without a price drawing only chooses hours.
void page_Rates::paintDrawn()
{
    if (!m_price->text().isEmpty())
        paintChosen(m_price->text());
}

void page_Rates::copyField()
{
    const RateKey from{std::max(m_from->currentIndex(), 0), m_key.rateType};
    if (from.field == m_key.field) {
        station().prompts.inform(u"Please choose another field to copy from."_s);
        return;
    }
    WeekRates week = StoredRates::read(station().database, from).week;
    week.settleOverlaps();
    show(week);
}

void page_Rates::copyDay()
{
    WeekRates week = m_grid->week();
    const int from = m_grid->currentDay();
    for (int day = 0; day < WeekRates::days; ++day)
        for (int hour = 0; day != from && isMeant(m_days->currentIndex(), day) && hour < WeekRates::clockHours; ++hour)
            week.setPrice(day, hour, week.price(from, hour));
    show(week);
}
