#include "app/frm_VerifyUser.h"

#include "app/Errors.h"
#include "app/FieldLengths.h"
#include "app/Staff.h"
#include "look/NoBackslash.h"
#include "ui_frm_VerifyUser.h"

#include <QKeyEvent>

using namespace Qt::StringLiterals;

frm_VerifyUser::frm_VerifyUser(Station &station, const QString &what, const QStringList &recent, QWidget *parent)
    : QDialog(parent), m_station(station), m_ui(std::make_unique<Ui::frm_VerifyUser>())
{
    m_ui->setupUi(this);
    QFont bold = m_ui->lbl_What->font();
    bold.setBold(true);
    m_ui->lbl_What->setFont(bold);
    m_ui->lbl_What->setText(what);
    m_ui->lbl_What->setVisible(!what.isEmpty());
    for (int i = 0; i < recent.size(); ++i)
        addRecent(i + 1, recent[i]);
    m_ui->txt_user->setMaxLength(FieldLengths::login);
    m_ui->txt_password->setMaxLength(FieldLengths::password);
    for (QLineEdit *box : {m_ui->txt_user, m_ui->txt_password})
        new NoBackslash(box);
    connect(m_ui->btn_Go, &QPushButton::clicked, this, &frm_VerifyUser::verify);
}

frm_VerifyUser::~frm_VerifyUser() = default;

void frm_VerifyUser::addRecent(int number, const QString &login)
{
    constexpr int widestLogin = 104;
    const QString shown = fontMetrics().elidedText(login, Qt::ElideRight, widestLogin).replace(u'&', u"&&"_s);
    auto *button = new QPushButton(u'&' + QString::number(number) + u' ' + shown, this);
    button->setObjectName(u"btn_Recent_"_s + QString::number(number));
    button->setAccessibleName(u"Login "_s + login);
    button->setToolTip(u"Alt+"_s + QString::number(number));
    button->setAutoDefault(false);
    m_ui->layout_Recent->addWidget(button, (number - 1) / 2, (number - 1) % 2);
    connect(button, &QPushButton::clicked, this, [this, login] {
        m_ui->txt_user->setText(login);
        m_ui->txt_password->clear();
        m_ui->txt_password->setFocus();
    });
}

void frm_VerifyUser::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (event->spontaneous())
        return;
    m_verification.reset();
    m_ui->txt_user->clear();
    m_ui->txt_password->clear();
    m_ui->txt_user->setFocus();
}

void frm_VerifyUser::keyPressEvent(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && m_ui->txt_user->hasFocus())
        m_ui->txt_password->setFocus();
    else
        QDialog::keyPressEvent(event);
}

void frm_VerifyUser::verify()
{
    guarded(m_station.prompts, ErrorCode::Database, [this] {
        m_verification = findStaff(m_station.database, m_ui->txt_user->text(), m_ui->txt_password->text());
        if (m_verification) {
            accept();
            return;
        }
        m_station.prompts.refuse(u"Invalid Password, try again!"_s, u"Error"_s);
        m_ui->txt_password->setFocus();
        m_ui->txt_password->selectAll();
    });
}
