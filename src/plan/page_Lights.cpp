#include "plan/page_Lights.h"

#include "app/Errors.h"
#include "app/Formats.h"
#include "look/Look.h"
#include "ui_page_Lights.h"

#include <QHeaderView>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

constexpr int shownCommits = 20;
constexpr QSize switchPicture{48, 48};
constexpr QSize switchSize{80, 96};
constexpr int firstRowColumn = 2;

// As in the clock, without the seconds: "14 Nov 18:02".
QString shortTime(const QDateTime &when)
{
    return QLocale::c().toString(when, u"d MMM hh:mm"_s);
}

QString word(bool on)
{
    return on ? u"On"_s : u"Off"_s;
}

} // namespace

page_Lights::page_Lights(Station &station, QWidget *parent)
    : Page(parent), m_station(station), m_ui(std::make_unique<Ui::page_Lights>())
{
    m_ui->setupUi(this);
    buildSwitches();
    const AppSettings &settings = m_station.settings;
    try {
        m_ui->LayoutPlan2->load(u"Layout"_s, u"HotSpot"_s, settings);
    } catch (const SettingError &) {
        // The page of the bookings, whose plan has the same settings, tells of it.
    }
    QHeaderView *const header = m_ui->ListView_Light->header();
    header->setSectionResizeMode(QHeaderView::ResizeToContents);
    header->setSectionResizeMode(1, QHeaderView::Stretch);
    header->setStretchLastSection(false);
    m_ui->btn_LightCommit->setEnabled(settings.MaxFieldIndex >= 0);
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    large.setBold(true);
    m_ui->lbl_LightField->setFont(large);
    m_ui->lbl_LightField->setTextFormat(Qt::PlainText);
    m_ui->lbl_LightField->setWordWrap(true);
    showField();
    connect(m_ui->LayoutPlan2, &LayoutPlan::clicked, this, &page_Lights::selectField);
    connect(m_ui->btn_LightCommit, &QPushButton::clicked, this, &page_Lights::commit);
}

page_Lights::~page_Lights() = default;

void page_Lights::buildSwitches()
{
    m_on = QIcon(u":/light_on.svg"_s);
    m_off = QIcon(u":/light_off.svg"_s);
    m_ui->SwitchOn->setPixmap(m_on.pixmap(switchPicture, devicePixelRatioF()));
    m_ui->SwitchOff->setPixmap(m_off.pixmap(switchPicture, devicePixelRatioF()));
    for (std::size_t row = 0; row < m_switches.size(); ++row) {
        auto *const button = new QToolButton(this);
        button->setObjectName(u"LightSwitch_"_s + QString::number(row));
        button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        button->setIconSize(switchPicture);
        button->setMinimumSize(switchSize);
        button->setFocusPolicy(Qt::StrongFocus);
        m_ui->layout_Switches->addWidget(button);
        m_switches.at(row) = button;
        connect(button, &QToolButton::clicked, this, [this, row] { setSwitch(row, !isOn(row)); });
    }
    QWidget *before = m_ui->LayoutPlan2;
    for (QToolButton *const button : m_switches) {
        setTabOrder(before, button);
        before = button;
    }
    setTabOrder(before, m_ui->btn_LightCommit);
    resetSwitches();
}

void page_Lights::setSwitch(std::size_t row, bool on)
{
    QToolButton *const button = m_switches.at(row);
    const QString name = u"Row "_s + QString::number(row + 1);
    button->setIcon(on ? m_on : m_off);
    button->setText(name + u'\n' + word(on));
    button->setAccessibleName(name + u": "_s + word(on));
    QFont letters = font();
    letters.setBold(on);
    button->setFont(letters);
}

bool page_Lights::isOn(std::size_t row) const
{
    return m_switches.at(row)->icon().cacheKey() == m_on.cacheKey();
}

void page_Lights::resetSwitches()
{
    for (std::size_t row = 0; row < m_switches.size(); ++row)
        setSwitch(row, false);
}

void page_Lights::showField()
{
    m_ui->txtInfo_LightSelect->setText(QString::number(m_field));
    m_ui->LayoutPlan2->setSelectedField(m_field);
    m_ui->lbl_LightField->setText(m_station.settings.fieldName(m_field));
}

void page_Lights::refresh()
{
    guarded(m_station.prompts, ErrorCode::Database, [this] { readField(); });
}

void page_Lights::showTime(const QString &timeText)
{
    m_ui->txt_Time3->setText(timeText);
}

std::vector<LightCommit> page_Lights::readField()
{
    // Should it fail, nothing of another field or time stands under this field's name.
    m_ui->ListView_Light->clear();
    m_ui->lbl_LightState->setText(u"The light log of this field could not be read."_s);
    m_ui->LayoutPlan2->setFieldStatus({});
    showStatus(
        readPlanStatus(m_station.database, m_station.now(), m_station.hours(), m_station.settings.MaxFieldIndex));
    auto commits = lastLightCommits(m_station.database, m_field, shownCommits);
    showCommits(commits);
    return commits;
}

void page_Lights::showStatus(const std::vector<FieldStatus> &status)
{
    m_ui->LayoutPlan2->setFieldStatus(status);
}

void page_Lights::showCommits(const std::vector<LightCommit> &commits)
{
    m_ui->ListView_Light->clear();
    for (const LightCommit &commit : commits) {
        const QDateTime when = QDateTime::fromString(commit.when, u"yyyy-MM-dd hh:mm:ss"_s);
        auto *const line = new QTreeWidgetItem({shortTime(when), commit.staff});
        for (std::size_t row = 0; row < commit.rows.size(); ++row) {
            line->setText(firstRowColumn + int(row), word(commit.rows.at(row)).toLower());
            line->setTextAlignment(firstRowColumn + int(row), Qt::AlignCenter);
        }
        m_ui->ListView_Light->addTopLevelItem(line);
    }
    m_ui->lbl_LightState->setText(commits.empty() ? u"Nothing was committed for this field yet."_s
                                                  : u"Switch the rows, then commit them to the log."_s);
}

// Staff go on from what stands in the log, not from five dark rows.
void page_Lights::selectField(int field)
{
    m_field = field;
    resetSwitches();
    showField();
    guarded(m_station.prompts, ErrorCode::Database, [this] {
        const auto commits = readField();
        for (std::size_t row = 0; !commits.empty() && row < m_switches.size(); ++row)
            setSwitch(row, commits.front().rows.at(row));
    });
}

void page_Lights::commit()
{
    guarded(m_station.prompts, ErrorCode::Database, [this] {
        LightRows rows;
        for (std::size_t row = 0; row < rows.size(); ++row)
            rows.at(row) = isOn(row);
        if (!commitLights(m_station, m_field, rows))
            return;
        readField();
        Q_EMIT lightsCommitted();
    });
}
