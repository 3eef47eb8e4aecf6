#include "options/frm_FirstRun.h"

#include "app/Errors.h"
#include "app/Settings.h"
#include "look/DialogFrame.h"
#include "options/ConnectionTrial.h"
#include "options/OptionsForm.h"
#include "options/SettingsDraft.h"

#include <QBoxLayout>
#include <QFileInfo>
#include <QFormLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

using namespace Qt::StringLiterals;
using namespace OptionsForm;

namespace {

constexpr int mostCounters = 99;
constexpr int usualWidth = 560;
const QString systemSection = u"System"_s;
const QString title = u"Set up this counter"_s;

} // namespace

bool frm_FirstRun::isNeeded()
{
    if (!QFileInfo::exists(settingsFilePath()))
        return true;
    const auto text = [](const QString &key) { return ReadSetting(systemSection, key, {}); };
    return text(u"hour_start"_s) == u"StartOfWorkingHour" && text(u"hour_end"_s) == u"EndOfWorkingHour" &&
           text(u"database_user"_s).isEmpty() && text(u"database_server"_s) == u"localhost";
}

frm_FirstRun::frm_FirstRun(Prompts &prompts, QWidget *parent) : QDialog(parent), m_prompts(prompts)
{
    setObjectName(u"frm_FirstRun"_s);
    setWindowTitle(title);
    QWidget *content = makeContent();
    QPushButton *ok = frameDialog(
        *this, title,
        u"There are no settings on this computer yet. Fields, drawer and printer are entered in the options "
        "of the program."_s,
        content, u"&Save and start"_s);
    ok->setToolTip(u"Tries the connection, writes the settings file and starts the program."_s);
    ok->setAutoDefault(false);
    connect(ok, &QPushButton::clicked, this, &frm_FirstRun::finish);
    resize(usualWidth, sizeHint().height());
}

QWidget *frm_FirstRun::makeContent()
{
    auto *content = new QWidget;
    auto *column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    QFormLayout *database = addGroup(column, u"Database"_s);
    m_server = addBox(database, u"Ser&ver"_s, u"txt_DatabaseServer"_s,
                      u"The computer with the database; a text that begins with / is a unix socket."_s);
    m_server->setText(u"localhost"_s);
    m_user = addBox(database, u"&Account"_s, u"txt_DatabaseUser"_s,
                    u"The account of the program, as database/install made it."_s);
    m_password = addBox(database, u"Pass&word"_s, u"txt_DatabasePassword"_s, u"The account's password."_s);
    m_password->setEchoMode(QLineEdit::Password);
    auto *trial = button(u"btn_TryConnection"_s, u"&Try the connection"_s,
                         u"Tries what is entered above, without writing anything."_s);
    m_connection = answer(u"lbl_Connection"_s);
    database->addRow(QString(), trial);
    database->addRow(m_connection);
    connect(trial, &QPushButton::clicked, this,
            [this] { guarded(m_prompts, ErrorCode::Unknown, [this] { tryConnecting(); }); });

    QFormLayout *centre = addGroup(column, u"Centre and counter"_s);
    m_firstHour =
        addFigure(centre, u"&First hour"_s, u"spn_FirstHour"_s, u"The hour at which the business day begins."_s, 1, 23);
    m_firstHour->setValue(8);
    m_lastHour = addFigure(centre, u"&Last hour after midnight"_s, u"spn_LastHour"_s,
                           u"The last hour that can be booked after midnight; 2 means until 03:00."_s, 0, 22);
    m_counter = addFigure(centre, u"&Number of this counter"_s, u"spn_ThisCounter"_s,
                          u"The number under which this counter sells; each counter has another."_s, 1, mostCounters);
    m_counters = addFigure(centre, u"N&umber of counters"_s, u"spn_Counters"_s, u"How many counters the centre has."_s,
                           1, mostCounters);
    return content;
}

QString frm_FirstRun::refusalOfConnection() const
{
    if (m_server->text().isEmpty() || m_user->text().isEmpty())
        return u"Enter the database server and the account."_s;
    return whyNotInConnection(u"The server"_s, m_server->text()) +
           whyNotInConnection(u"The account"_s, m_user->text()) +
           whyNotInConnection(u"The password"_s, m_password->text());
}

QString frm_FirstRun::refusal() const
{
    if (const QString reason = refusalOfConnection(); !reason.isEmpty())
        return reason;
    if (m_lastHour->value() >= m_firstHour->value())
        return u"The last hour after midnight must be before the first hour, when the next day begins."_s;
    if (m_counter->value() > m_counters->value())
        return u"The number of this counter is above the number of counters."_s;
    return {};
}

bool frm_FirstRun::tryConnecting()
{
    const QString reason = refusalOfConnection();
    const ConnectionTrial trial = !reason.isEmpty()
                                      ? ConnectionTrial{false, reason}
                                      : tryConnection(m_server->text(), m_user->text(), m_password->text(), &m_waiting);
    m_trouble = trial.works ? QString() : trial.words;
    say(m_connection, trial.words, trial.works);
    resize(width(), std::max(height(), layout()->totalHeightForWidth(width())));
    return trial.works;
}

void frm_FirstRun::finish()
{
    guarded(m_prompts, ErrorCode::Unknown, [this] {
        if (const QString reason = refusal(); !reason.isEmpty()) {
            m_prompts.refuse(reason, title);
            return;
        }
        if (!tryConnecting() &&
            !m_prompts.confirm(m_trouble + u"\n\nWrite the settings all the same? The program cannot start with them "
                                           "before this is mended."_s,
                               title))
            return;
        SettingsDraft draft;
        for (const auto &[key, box] : {std::pair{u"database_server"_s, m_server}, std::pair{u"database_user"_s, m_user},
                                       std::pair{u"database_password"_s, m_password}})
            draft.set(systemSection, key, box->text());
        for (const auto &[key, figure] : {std::pair{u"hour_start"_s, m_firstHour}, std::pair{u"hour_end"_s, m_lastHour},
                                          std::pair{u"counter"_s, m_counter}, std::pair{u"counters"_s, m_counters}})
            draft.set(systemSection, key, QString::number(figure->value()));
        if (const QString reason = draft.refusal(); !reason.isEmpty()) {
            m_prompts.refuse(reason, title);
            return;
        }
        draft.write();
        accept();
    });
}

// Enter in a box neither saves nor gives up.
void frm_FirstRun::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        QDialog::keyPressEvent(event);
}
