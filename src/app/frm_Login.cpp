#include "app/frm_Login.h"

#include "app/Errors.h"
#include "app/FieldLengths.h"
#include "app/PictureFile.h"
#include "app/Staff.h"
#include "look/Look.h"
#include "look/NoBackslash.h"
#include "look/PictureReader.h"
#include "ui_frm_Login.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

// The picture, as large as fills the window; none when it cannot be read.
QImage readPicture(const QString &file, QSize window, qreal scale)
{
    QImage picture = PictureReader(file).read();
    if (!picture.isNull()) {
        picture = picture.scaled(window * scale, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
        picture.setDevicePixelRatio(scale);
    }
    return picture;
}

} // namespace

frm_Login::frm_Login(Station &station, QWidget *parent)
    : QWidget(parent), m_station(station), m_ui(std::make_unique<Ui::frm_Login>())
{
    m_ui->setupUi(this);
    guarded(m_station.prompts, ErrorCode::LoadingForm, [this] {
        setFixedSize(size());
        m_ui->txtLogin->setMaxLength(FieldLengths::login);
        m_ui->txtPassword->setMaxLength(FieldLengths::password);
        for (QLineEdit *box : {m_ui->txtLogin, m_ui->txtPassword})
            new NoBackslash(box);
        m_ui->lbl_Version->setText(u"Tamsora "_s + QLatin1StringView(TAMSORA_VERSION));
        const QString file = pictureFile(m_station.settings.frontPicture, devicePixelRatioF());
        m_coming = std::async(std::launch::async, readPicture, file, size(), devicePixelRatioF());
    });
    QPalette inviting = m_ui->btn_GO->palette();
    inviting.setColor(QPalette::Button, Look::accent.darker(130));
    inviting.setColor(QPalette::ButtonText, Qt::white);
    m_ui->btn_GO->setPalette(inviting);
    m_ui->txtLogin->setFocus();
    connect(m_ui->txtLogin, &QLineEdit::returnPressed, this, [this] { m_ui->txtPassword->setFocus(); });
    connect(m_ui->txtPassword, &QLineEdit::returnPressed, this, &frm_Login::cleanAndCheck);
    connect(m_ui->btn_GO, &QPushButton::clicked, this, &frm_Login::cleanAndCheck);
    connect(m_ui->lbl_Stop, &QPushButton::clicked, qApp, &QCoreApplication::quit);
}

frm_Login::~frm_Login() = default;

void frm_Login::paintEvent(QPaintEvent *)
{
    if (m_coming.valid())
        m_picture = m_coming.get();
    QPainter painter(this);
    painter.drawImage(0, 0, m_picture);
    QColor calm = Look::paper;
    calm.setAlphaF(0.9F);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(calm);
    painter.drawRoundedRect(m_ui->panel->geometry(), 8, 8);
}

void frm_Login::cleanAndCheck()
{
    m_ui->txtLogin->setText(cleanCredential(m_ui->txtLogin->text()));
    m_ui->txtPassword->setText(cleanCredential(m_ui->txtPassword->text()));
    CheckStaffLogin();
}

void frm_Login::CheckStaffLogin()
{
    guarded(m_station.prompts, ErrorCode::Login, [this] {
        if (logIn(m_station, m_ui->txtLogin->text(), m_ui->txtPassword->text())) {
            Q_EMIT loggedIn();
            return;
        }
        m_station.prompts.refuse(u"Login/Password not correct"_s);
        m_ui->txtPassword->setFocus();
        m_ui->txtPassword->selectAll();
    });
}
