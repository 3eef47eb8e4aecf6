#include "options/page_ThisCounter.h"

#include "app/Errors.h"
#include "app/Station.h"
#include "counter/CashDrawer.h"
#include "options/ConnectionTrial.h"
#include "options/OptionsForm.h"
#include "options/PrinterPart.h"
#include "options/SettingsDraft.h"
#include "options/SignText.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

using namespace Qt::StringLiterals;
using namespace OptionsForm;

namespace {

constexpr int mostPorts = 16;
constexpr int mostCounters = 99;
const QString noDrawer = u"none"_s;
const QString systemSection = u"System"_s;
const QString tillSection = u"Till"_s;
const QString mailSection = u"Mail"_s;

enum DrawerKind { NoDrawer, PortNumber, DevicePath };

} // namespace

page_ThisCounter::page_ThisCounter(Station &station, const QString &administrator, PrinterDesk &desk, QWidget *parent)
    : OptionsPage(station, administrator, parent), m_desk(desk)
{
    setObjectName(u"page_ThisCounter"_s);
    auto *left = new QVBoxLayout;
    auto *right = new QVBoxLayout;
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 8, 0);
    layout->setSpacing(16);
    for (QVBoxLayout *column : {left, right}) {
        column->setSpacing(8);
        layout->addLayout(column, 1);
    }
    addDatabase(left);
    addServices(left);
    left->addStretch();
    addDrawer(right);
    addReceipts(right);
    right->addStretch();
    watch();
}

void page_ThisCounter::watch()
{
    for (const auto *box : findChildren<QLineEdit *>())
        connect(box, &QLineEdit::textChanged, this, &OptionsPage::touched);
    for (const auto *box : findChildren<QComboBox *>())
        connect(box, &QComboBox::currentIndexChanged, this, &OptionsPage::touched);
    for (const auto *box : findChildren<QSpinBox *>())
        connect(box, &QSpinBox::valueChanged, this, &OptionsPage::touched);
}

void page_ThisCounter::addDatabase(QBoxLayout *column)
{
    QFormLayout *form = addGroup(column, u"Database"_s);
    m_server = addBox(form, u"Ser&ver"_s, u"txt_DatabaseServer"_s,
                      u"The computer with the database; a text that begins with / is a unix socket."_s);
    m_user = addBox(form, u"&Account"_s, u"txt_DatabaseUser"_s, u"The account of the program on that server."_s);
    m_password = addBox(form, u"Pass&word"_s, u"txt_DatabasePassword"_s, u"The account's password."_s);
    auto *trial =
        button(u"btn_TryConnection"_s, u"&Try the connection"_s, u"Tries what is entered above, without saving it."_s);
    m_connection = answer(u"lbl_Connection"_s);
    form->addRow(QString(), trial);
    form->addRow(m_connection);
    connect(trial, &QPushButton::clicked, this, &page_ThisCounter::tryConnecting);
    m_settings.addBox(m_server, systemSection, u"database_server"_s, u"database server"_s, u"localhost"_s);
    m_settings.addBox(m_user, systemSection, u"database_user"_s, u"database account"_s);
    m_settings.addBox(m_password, systemSection, u"database_password"_s, u"database password"_s, {}, true);
}

void page_ThisCounter::addServices(QBoxLayout *column)
{
    QFormLayout *form = addGroup(column, u"Reports and mail"_s);
    QLineEdit *web = addBox(form, u"Report pages"_s, u"txt_WebServer"_s, u"The computer with the report pages."_s);
    m_settings.addBox(web, systemSection, u"webserver"_s, u"report pages"_s, u"localhost"_s);
    const auto add = [this, form](const QString &caption, const QString &name, const QString &key, const QString &tip,
                                  bool isSecret = false) {
        m_settings.addBox(addBox(form, caption, name, tip), mailSection, key, u"mail "_s + key, {}, isSecret)
            .worksAtOnce = true;
    };
    add(u"&Mail server"_s, u"txt_MailServer"_s, u"server"_s, u"The computer that sends mail; empty for no mail."_s);
    add(u"Mail port"_s, u"txt_MailPort"_s, u"port"_s, u"The port of the mail server; empty for the usual one."_s);
    QComboBox *security =
        addChoice(form, u"&Encryption"_s, u"cbo_MailSecurity"_s, u"How the way to the mail server is kept secret."_s);
    security->addItem(u"As usual"_s, QString());
    security->addItem(u"None"_s, u"none"_s);
    security->addItem(u"STARTTLS"_s, u"starttls"_s);
    security->addItem(u"TLS from the start"_s, u"tls"_s);
    m_settings.addChoice(security, mailSection, u"security"_s, u"mail encryption"_s).worksAtOnce = true;
    add(u"Mail account"_s, u"txt_MailUser"_s, u"user"_s,
        u"The account on the mail server; empty when it wants none."_s);
    add(u"Mail password"_s, u"txt_MailPassword"_s, u"password"_s, u"The password of the mail account."_s, true);
    add(u"Sender (from)"_s, u"txt_MailFrom"_s, u"from"_s, u"The address from which the mail comes."_s);
}

void page_ThisCounter::addDrawer(QBoxLayout *column)
{
    QFormLayout *form = addGroup(column, u"Cash drawer"_s);
    m_drawer = addChoice(form, u"&Drawer"_s, u"cbo_Drawer"_s, u"How the drawer is connected to this computer."_s);
    m_drawer->addItems({u"None at this counter"_s, u"Serial port by number"_s, u"Device by its path"_s});
    m_drawerPort =
        addFigure(form, u"Port &number"_s, u"spn_DrawerPort"_s,
                  u"The number of the serial port: 2 is COM2, or the second port of this computer."_s, 1, mostPorts);
    m_drawerDevice = addBox(form, u"Device pat&h"_s, u"txt_DrawerDevice"_s, u"The path of the drawer's port."_s);
    m_drawerLine = addBox(form, u"Line settings"_s, u"txt_DrawerLine"_s,
                          u"Baud rate, parity, data bits and stop bits; empty for 9600,N,8,1."_s);
    m_drawerCommand = addBox(form, u"&Command"_s, u"txt_DrawerCommand"_s,
                             u"What opens the drawer. <1B> stands for the byte 1B (Escape), <3C> for the sign <."_s);
    auto *test = button(u"btn_TestDrawer"_s, u"&Open the drawer now"_s,
                        u"Opens the drawer with what is entered above, without saving it."_s);
    m_drawerAnswer = answer(u"lbl_Drawer"_s);
    form->addRow(QString(), test);
    form->addRow(m_drawerAnswer);
    connect(test, &QPushButton::clicked, this, &page_ThisCounter::openDrawer);
    connect(m_drawer, &QComboBox::currentIndexChanged, this, &page_ThisCounter::showDrawer);
    bindDrawer();
}

void page_ThisCounter::addReceipts(QBoxLayout *column)
{
    QFormLayout *form = addGroup(column, u"Counter and receipts"_s);
    auto *counter =
        addFigure(form, u"N&umber of this counter"_s, u"spn_ThisCounter"_s,
                  u"The number under which this counter sells; each counter has another."_s, 1, mostCounters);
    m_settings.addFigure(counter, systemSection, u"counter"_s, u"number of this counter"_s, u"1"_s);
    m_printing = new PrinterPart(station(), m_desk, form, m_settings, this);
    QLineEdit *notes = addBox(form, u"&Banknotes"_s, u"txt_Notes"_s,
                              u"The banknotes for which the change window has buttons, with commas between them."_s);
    m_settings.addBox(notes, tillSection, u"notes"_s, u"banknotes"_s, u"5,10,20,50,100"_s);
}

void page_ThisCounter::load()
{
    m_settings.load();
    m_connection->hide();
    m_drawerAnswer->hide();
    m_printing->forgetAnswer();
    showDrawer();
    Q_EMIT touched();
}

QString page_ThisCounter::refusal() const
{
    const QString inConnection = whyNotInConnection(u"The server"_s, m_server->text()) +
                                 whyNotInConnection(u"The account"_s, m_user->text()) +
                                 whyNotInConnection(u"The password"_s, m_password->text());
    if (!inConnection.isEmpty())
        return inConnection;
    if (m_drawer->currentIndex() == DevicePath && m_drawerDevice->text().trimmed().isEmpty())
        return u"Enter the path of the drawer's device, or choose another kind of drawer."_s;
    if (!meantSigns(m_drawerCommand->text()))
        return u"The drawer's command has a \"<\" that two hexadecimal digits and a \">\" do not follow. "
               "A \"<\" itself is <3C>."_s;
    return {};
}

bool page_ThisCounter::save()
{
    if (const QString reason = refusal(); !reason.isEmpty()) {
        station().prompts.refuse(reason, u"Options"_s);
        return false;
    }
    SettingsDraft draft;
    m_settings.addTo(draft);
    const bool needsRestart = m_settings.needRestart();
    if (!saveDraft(station(), administrator(), draft))
        return false;
    load();
    if (needsRestart)
        Q_EMIT restartNeeded();
    return true;
}

void page_ThisCounter::tryConnecting()
{
    guarded(station().prompts, ErrorCode::Unknown, [this] {
        if (const QString reason = refusal(); !reason.isEmpty()) {
            say(m_connection, reason, false);
            return;
        }
        const ConnectionTrial trial = tryConnection(m_server->text(), m_user->text(), m_password->text(), &m_waiting);
        say(m_connection, trial.words, trial.works);
    });
}

// A station of its own has the drawer as it is entered.
void page_ThisCounter::openDrawer()
{
    guarded(station().prompts, ErrorCode::Unknown, [this] {
        if (const QString reason = refusal(); !reason.isEmpty() || m_drawer->currentIndex() == NoDrawer) {
            say(m_drawerAnswer, reason.isEmpty() ? u"There is no drawer to open."_s : reason, false);
            return;
        }
        Station trial(station().settings, station().prompts, station().clock);
        trial.settings.drawerPort = qint16(m_drawerPort->value());
        trial.settings.drawerDevice = m_drawer->currentIndex() == DevicePath ? m_drawerDevice->text() : QString();
        trial.settings.drawerText = m_drawerLine->text();
        trial.settings.drawerCommand = *meantSigns(m_drawerCommand->text());
        try {
            CashDrawer(trial).openAfterSale();
            logOption(station(), administrator(), u"cash drawer opened as a test"_s);
            say(m_drawerAnswer, u"The command was sent. Is the drawer open?"_s, true);
        } catch (const SerialError &error) {
            say(m_drawerAnswer, u"The drawer's port did not take it: "_s + QString::fromUtf8(error.what()), false);
        }
    });
}

void page_ThisCounter::showDrawer()
{
    const int kind = m_drawer->currentIndex();
    m_drawerPort->setEnabled(kind == PortNumber);
    m_drawerDevice->setEnabled(kind == DevicePath);
    m_drawerLine->setEnabled(kind != NoDrawer);
    m_drawerCommand->setEnabled(kind != NoDrawer);
}

void page_ThisCounter::bindDrawer()
{
    const auto shown = [this] {
        switch (m_drawer->currentIndex()) {
        case NoDrawer:
            return noDrawer;
        case DevicePath:
            return m_drawerDevice->text();
        default:
            return QString();
        }
    };
    m_settings.add({systemSection, u"cashdrawerdevice"_s, u"drawer device"_s, shown, [this](const QString &value) {
                        m_drawerDevice->setText(value == noDrawer ? QString() : value);
                        m_drawer->setCurrentIndex(value.isEmpty() ? PortNumber
                                                                  : (value == noDrawer ? NoDrawer : DevicePath));
                    }});
    m_settings.addFigure(m_drawerPort, systemSection, u"cashdrawercommport"_s, u"drawer port"_s, u"2"_s);
    m_settings.addBox(m_drawerLine, systemSection, u"cashdrawercomm"_s, u"drawer line settings"_s);
    m_settings.add({systemSection, u"cashdrawercommand"_s, u"drawer command"_s,
                    [this] { return meantSigns(m_drawerCommand->text()).value_or(m_drawerCommand->text()); },
                    [this](const QString &value) { m_drawerCommand->setText(shownSigns(value)); }});
}
