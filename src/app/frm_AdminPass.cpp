#include "app/frm_AdminPass.h"

#include "app/FieldLengths.h"
#include "app/Staff.h"
#include "look/NoBackslash.h"
#include "ui_frm_AdminPass.h"

#include <QKeyEvent>

using namespace Qt::StringLiterals;

frm_AdminPass::frm_AdminPass(Station &station, QWidget *parent)
    : QDialog(parent), m_station(station), m_ui(std::make_unique<Ui::frm_AdminPass>())
{
    m_ui->setupUi(this);
    m_ui->txtLogin->setMaxLength(FieldLengths::login);
    m_ui->txtPassword->setMaxLength(FieldLengths::password);
    for (QLineEdit *box : {m_ui->txtLogin, m_ui->txtPassword})
        new NoBackslash(box);
    connect(m_ui->btn_GO, &QPushButton::clicked, this, &QDialog::accept);
}

frm_AdminPass::~frm_AdminPass() = default;

bool frm_AdminPass::GetAdminPass()
{
    const bool right = isAdministrator(m_station.database, m_ui->txtLogin->text(), m_ui->txtPassword->text());
    if (!right)
        m_station.prompts.refuse(u"Login/Password not correct"_s);
    return right;
}

void frm_AdminPass::keyPressEvent(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && m_ui->txtLogin->hasFocus())
        m_ui->txtPassword->setFocus();
    else
        QDialog::keyPressEvent(event);
}
