#include "app/frm_ErrorDisplay.h"

#include "ui_frm_ErrorDisplay.h"

#include <QIcon>
#include <QStyle>

frm_ErrorDisplay::frm_ErrorDisplay(const QString &message, const QString &description, QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frm_ErrorDisplay>())
{
    m_ui->setupUi(this);
    m_ui->lbl_Picture->setPixmap(
        style()->standardIcon(QStyle::SP_MessageBoxCritical).pixmap({40, 40}, devicePixelRatioF()));
    QFont strong = font();
    strong.setBold(true);
    m_ui->lbl_Error->setFont(strong);
    m_ui->lbl_Error->setText(message);
    m_ui->txt_Error->setPlainText(description);
    m_ui->btn_Close->setFocus();
}

frm_ErrorDisplay::~frm_ErrorDisplay() = default;
