#include "schedule/DayChooser.h"

#include "app/Formats.h"
#include "look/Look.h"
#include "plan/LayoutPlan.h"

#include <QCalendarWidget>
#include <QLineEdit>
#include <QScopeGuard>
#include <QTextCharFormat>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int space = 8;
constexpr int leastWidth = 400;

QLineEdit *hiddenBox(const QString &name, QWidget *parent)
{
    auto *box = new QLineEdit(parent);
    box->setObjectName(name);
    box->hide();
    return box;
}

} // namespace

DayChooser::DayChooser(Station &station, QWidget *parent)
    : QWidget(parent),
      m_station(station),
      m_fieldUnderMouse(hiddenBox(u"Text2"_s, this)),
      m_fieldSelected(hiddenBox(u"txtInfo_FieldSelect"_s, this)),
      m_plan(makePlan()),
      m_alerts(station, *m_plan)
{
    m_fieldSelected->setText(QString::number(m_field));
    makeCalendar();
    setMinimumWidth(leastWidth);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(space);
    layout->addWidget(m_plan);
    layout->addWidget(m_calendar, 1);
}

LayoutPlan *DayChooser::makePlan()
{
    auto *plan = new LayoutPlan;
    plan->setObjectName(u"LayoutPlan1"_s);
    QSizePolicy fitting(QSizePolicy::Expanding, QSizePolicy::Preferred);
    fitting.setHeightForWidth(true);
    plan->setSizePolicy(fitting);
    plan->setSelectedField(m_field);
    connect(plan, &LayoutPlan::hovered, m_fieldUnderMouse, &QLineEdit::setText);
    connect(plan, &LayoutPlan::clicked, this, &DayChooser::pressField);
    return plan;
}

void DayChooser::makeCalendar()
{
    m_calendar = new QCalendarWidget;
    m_calendar->setObjectName(u"Calendar"_s);
    m_calendar->setGridVisible(true);
    m_calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    m_calendar->setAccessibleName(u"Day"_s);
    Look::applyTo(*m_calendar);
    // A mouse click tells both that the day changed and that it was clicked: one reading answers both.
    m_dayClicked.setSingleShot(true);
    connect(m_calendar, &QCalendarWidget::selectionChanged, &m_dayClicked, qOverload<>(&QTimer::start));
    connect(m_calendar, &QCalendarWidget::clicked, &m_dayClicked, qOverload<>(&QTimer::start));
    connect(&m_dayClicked, &QTimer::timeout, this, [this] {
        setDay(m_calendar->selectedDate());
        Q_EMIT dayChosen();
    });
}

void DayChooser::loadPlan()
{
    const auto labelled = qScopeGuard([this] { m_plan->addAlertLabels(); });
    m_plan->load(u"Layout"_s, u"HotSpot"_s, m_station.settings);
}

void DayChooser::setDay(QDate day)
{
    m_day = sqlDate(day);
    const QSignalBlocker blocker(m_calendar);
    m_calendar->setSelectedDate(day);
    QTextCharFormat today;
    today.setFontWeight(QFont::Bold);
    today.setBackground(Look::shared.background);
    m_calendar->setDateTextFormat({}, {});
    m_calendar->setDateTextFormat(m_station.now().date(), today);
}

void DayChooser::pressField(int field)
{
    if (field < 0 || field > m_station.settings.MaxFieldIndex)
        return;
    m_field = field;
    m_fieldUnderMouse->setText(QString::number(field));
    m_fieldSelected->setText(QString::number(field));
    m_plan->setSelectedField(field);
    Q_EMIT fieldChosen();
}

void DayChooser::refreshPlan()
{
    std::vector<FieldStatus> status; // without a database the plans say nothing rather than something old
    try {
        status =
            readPlanStatus(m_station.database, m_station.now(), m_station.hours(), m_station.settings.MaxFieldIndex);
    } catch (const DbError &) {
        status.clear();
    } catch (const DatabaseBusy &) {
        return;
    }
    m_planMinute = m_station.now().time().minute();
    m_plan->setFieldStatus(status);
    Q_EMIT planRead(status);
}

void DayChooser::refreshPlanQuietly()
{
    const QuietReads quiet(m_station.database);
    refreshPlan();
}

void DayChooser::goOnTo(QTime now)
{
    if (m_alerts.goOnTo(now))
        Q_EMIT alertsRaised();
    if (m_planMinute >= 0 && m_planMinute != now.minute())
        refreshPlanQuietly();
}
