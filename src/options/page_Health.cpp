#include "options/page_Health.h"

#include "app/Errors.h"
#include "app/SqlText.h"
#include "counter/PrinterState.h"
#include "look/Look.h"
#include "look/RowsTable.h"
#include "look/WrappedLabel.h"
#include "options/DatabaseCheck.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QHeaderView>
#include <QHideEvent>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QStandardItem>
#include <QThread>

using namespace Qt::StringLiterals;

/// A check of the whole database that is under way.
class CheckRun
{
public:
    explicit CheckRun(const AppSettings &settings) : check(settings) {}

    DatabaseCheck check;
    int parts = 0;
    int next = 0;
    int found = 0;
    bool isStopped = false;
};

namespace {

constexpr int mostFindings = 200;
const QString bookingsAndSales = u"Bookings and sales"_s;

QString sign(HealthState state)
{
    switch (state) {
    case HealthState::Good:
        return u"✓ good"_s;
    case HealthState::Attention:
        return u"! attention"_s;
    default:
        return u"✗ bad"_s;
    }
}

HealthLine printerLine(const QString &name, const PrinterState &state)
{
    const QString subject = u"Receipt printer"_s;
    const QString advice = u"The page of this counter says which printer it is, and prints a test slip."_s;
    const QString named = u'"' + name + u"\" "_s;
    if (!state.isThere)
        return {HealthState::Bad, subject, named + u"is not there"_s, advice};
    if (!state.takesJobs)
        return {HealthState::Bad, subject, named + u"is paused or has stopped"_s, advice};
    if (!state.trouble.isEmpty())
        return {HealthState::Attention, subject, named + state.trouble, advice};
    return {HealthState::Good, subject, named + u"is ready"_s};
}

} // namespace

page_Health::page_Health(Station &station, const QString &administrator, QWidget *parent)
    : OptionsPage(station, administrator, parent),
      m_list(new RowsTable(u"ListView_Health"_s, u"How the database and this counter are"_s,
                           {u"State"_s, u"What"_s, u"How it is"_s, u"What to do"_s})),
      m_summary(wrappedLabel(u"lbl_HealthSummary"_s, {}, 1.1)),
      m_progress(new QProgressBar),
      m_run(new QPushButton(u"&Check all bookings and sales"_s)),
      m_stop(new QPushButton(u"S&top"_s))
{
    setObjectName(u"page_Health"_s);
    m_list->fitColumns({u"! attention"_s, u"Transactions, counter 10"_s, QString(), QString()});
    m_list->setWordWrap(true);
    m_list->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_progress->setObjectName(u"bar_Health"_s);
    m_progress->setAccessibleName(u"Progress"_s);
    QSizePolicy room = m_progress->sizePolicy();
    room.setRetainSizeWhenHidden(true);
    m_progress->setSizePolicy(room);
    m_run->setObjectName(u"btn_RunCheck"_s);
    m_run->setToolTip(
        u"Looks for hours sold twice, lost marks and sales that are not whole; counters go on meanwhile."_s);
    m_stop->setObjectName(u"btn_StopCheck"_s);
    m_stop->setToolTip(u"Ends the check; what was found so far stays in the list."_s);
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addWidget(m_run);
    buttons->addWidget(m_stop);
    buttons->addWidget(m_progress, 1);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(m_summary);
    layout->addWidget(m_list, 1);
    layout->addLayout(buttons);
    for (QPushButton *button : {m_run, m_stop})
        button->setAutoDefault(false);
    m_step.setSingleShot(true);
    connect(&m_step, &QTimer::timeout, this, [this] { m_check ? takePart() : takeLook(); });
    connect(m_run, &QPushButton::clicked, this, &page_Health::startCheck);
    connect(m_stop, &QPushButton::clicked, this, &page_Health::stop);
    endCheck({});
}

page_Health::~page_Health()
{
    stop();
}

void page_Health::hideEvent(QHideEvent *event)
{
    if (!event->spontaneous())
        stop();
    OptionsPage::hideEvent(event);
}

void page_Health::load()
{
    stop();
    m_step.stop();
    m_list->clearRows();
    m_toMind = 0;
    m_looks = healthLooks(station());
    m_nextLook = 0;
    m_run->setEnabled(false);
    m_step.start();
}

// One look a turn of the event loop, so that the list fills before the person's eyes.
void page_Health::takeLook()
{
    if (m_nextLook >= m_looks.size()) {
        lookAtPrinter();
        endCheck({});
        return;
    }
    const HealthLook &look = m_looks[m_nextLook];
    try {
        for (const HealthLine &line : look.look())
            addLine(line);
    } catch (const DatabaseBusy &) {
        m_step.start(100);
        return;
    } catch (const std::exception &error) {
        addFailed(u"Looking at "_s + look.name, error);
    }
    showProgress(u"Looking at "_s + look.name, int(++m_nextLook), int(m_looks.size()));
    m_step.start();
}

// The printing system may take long to answer: nobody waits for it.
void page_Health::lookAtPrinter()
{
    const QString name = ReadSetting(u"Till"_s, u"printer"_s, {});
    if (name.isEmpty()) {
        addLine({HealthState::Good, u"Receipt printer"_s, u"None is chosen; staff are asked for each receipt"_s});
        return;
    }
    const QPointer<page_Health> page(this);
    QThread *thread = QThread::create([name, page] {
        const PrinterState state = PrinterState::of(name);
        if (QObject *application = QCoreApplication::instance())
            QMetaObject::invokeMethod(application, [=] {
                if (page)
                    page->addLine(printerLine(name, state));
            });
    });
    QObject::connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    thread->start();
}

void page_Health::addLine(const HealthLine &line)
{
    const auto cells = m_list->addRow({sign(line.state), line.subject, line.words, line.advice});
    if (line.state != HealthState::Good) {
        ++m_toMind;
        const Look::Tone &tone = line.state == HealthState::Bad ? Look::alert : Look::shared;
        cells[0]->setBackground(tone.background);
        cells[0]->setForeground(tone.text);
    }
    m_summary->setText(m_toMind == 0
                           ? u"Everything that was looked at is well."_s
                           : sql(u"%1 of %2 lines need somebody to look."_s, m_toMind, m_list->model()->rowCount()));
}

void page_Health::addFailed(const QString &subject, const std::exception &error)
{
    addLine({HealthState::Bad, subject, u"It could not be looked at: "_s + QString::fromUtf8(error.what()),
             u"Is the database server reached? Press Refresh to look again."_s});
}

void page_Health::startCheck()
{
    if (m_check)
        return;
    m_check = std::make_shared<CheckRun>(station().settings);
    m_run->setEnabled(false);
    m_stop->setEnabled(true);
    showProgress(u"Connecting"_s, 0, 1);
    m_step.start();
}

// The wait for an answer runs the event loop: the person may stop, or go to another page, in the middle of a part.
void page_Health::takePart()
{
    const std::shared_ptr<CheckRun> run = m_check;
    const QPointer<page_Health> page(this);
    std::vector<CheckFinding> findings;
    try {
        if (run->parts == 0)
            run->parts = run->check.begin();
        else
            findings = run->check.look(run->next++);
    } catch (const std::exception &error) {
        if (page && !run->isStopped) {
            addFailed(bookingsAndSales, error);
            endCheck(u"The check did not come to its end."_s);
        }
        return;
    }
    if (!page || run->isStopped)
        return;
    for (const CheckFinding &finding : findings) {
        if (++run->found > mostFindings)
            continue;
        const QString field = finding.field ? u", "_s + station().settings.fieldName(*finding.field) : QString();
        addLine({HealthState::Bad, finding.slot + field,
                 finding.fault + (finding.words.isEmpty() ? QString() : u" ("_s + finding.words + u')'),
                 u"Tell whoever looks after the database."_s});
    }
    if (!findings.empty())
        m_list->scrollToBottom();
    showProgress(u"Checking bookings and sales"_s, run->next, run->parts);
    if (run->next < run->parts) {
        m_step.start();
        return;
    }
    if (run->found > mostFindings)
        addLine({HealthState::Bad, bookingsAndSales, sql(u"%1 faults more"_s, run->found - mostFindings),
                 u"database/check on the server lists all of them."_s});
    if (run->found == 0)
        addLine({HealthState::Good, bookingsAndSales, sql(u"All %1 rules hold"_s, run->parts)});
    m_list->scrollToBottom();
    endCheck(sql(u"%1 rules checked, %2 faults found"_s, run->parts, run->found));
}

void page_Health::stop()
{
    if (const std::shared_ptr<CheckRun> run = m_check) {
        m_step.stop();
        run->isStopped = true;
        run->check.giveUp();
        endCheck(u"The check was stopped."_s);
    }
}

void page_Health::endCheck(const QString &words)
{
    m_check.reset();
    m_run->setEnabled(true);
    m_stop->setEnabled(false);
    m_progress->setVisible(!words.isEmpty());
    m_progress->setRange(0, 1);
    m_progress->setValue(1);
    m_progress->setFormat(words);
}

void page_Health::showProgress(const QString &words, int done, int all)
{
    m_progress->setVisible(true);
    m_progress->setRange(0, all);
    m_progress->setValue(done);
    m_progress->setFormat(sql(u"%1: %2 of %3"_s, words, done, all));
}
