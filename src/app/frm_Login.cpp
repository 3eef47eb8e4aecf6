#include "app/frm_Login.h"

#include "app/Errors.h"
#include "app/FieldLengths.h"
#include "app/Look.h"
#include "app/Staff.h"
#include "ui_frm_Login.h"

#include <QDir>
#include <QImageReader>
#include <QPainter>

using namespace Qt::StringLiterals;

frm_Login::frm_Login(Station &station, QWidget *parent)
    : QWidget(parent), m_station(station), m_ui(std::make_unique<Ui::frm_Login>())
{
    m_ui->setupUi(this);
    guarded(m_station.prompts, ErrorCode::LoadingForm, [this] {
        setFixedSize(size());
        m_ui->txtLogin->setMaxLength(FieldLengths::login);
        m_ui->txtPassword->setMaxLength(FieldLengths::password);
        m_ui->lbl_Version->setText(u"Tamsora "_s + QLatin1StringView(TAMSORA_VERSION));
        loadPicture();
    });
    m_ui->txtLogin->setFocus();
    connect(m_ui->txtLogin, &QLineEdit::returnPressed, this, [this] { m_ui->txtPassword->setFocus(); });
    connect(m_ui->txtPassword, &QLineEdit::returnPressed, this, &frm_Login::cleanAndCheck);
    connect(m_ui->btn_GO, &QPushButton::clicked, this, &frm_Login::cleanAndCheck);
    connect(m_ui->lbl_Stop, &QPushButton::clicked, qApp, &QCoreApplication::quit);
}

frm_Login::~frm_Login() = default;

// Read in just the size that fills the window, so that a large picture costs no time later; a picture that is not there
// leaves the plain paper.
void frm_Login::loadPicture()
{
    QImageReader reader(QDir(QCoreApplication::applicationDirPath()).filePath(m_station.settings.frontPicture));
    reader.setDecideFormatFromContent(true);
    const QSize filling =
        reader.size().scaled(size() * devicePixelRatioF(), Qt::AspectRatioMode::KeepAspectRatioByExpanding);
    if (!filling.isEmpty() && filling != reader.size())
        reader.setScaledSize(filling);
    m_picture = QPixmap::fromImage(reader.read());
    m_picture.setDevicePixelRatio(devicePixelRatioF());
}

void frm_Login::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.drawPixmap(0, 0, m_picture);
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
