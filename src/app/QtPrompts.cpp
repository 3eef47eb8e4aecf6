#include "app/QtPrompts.h"

#include "app/NoBackslash.h"
#include "app/Station.h"
#include "app/frm_ErrorDisplay.h"
#include "app/frm_VerifyUser.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

QWidget *windowInUse()
{
    QWidget *modal = QApplication::activeModalWidget();
    return modal ? modal : QApplication::activeWindow();
}

// The button that was pressed; the harmless one is the default and what Escape stands for.
QMessageBox::StandardButton showMessage(QMessageBox::Icon icon, const QString &title, const QString &text,
                                        QMessageBox::StandardButtons buttons, QMessageBox::StandardButton harmless)
{
    QMessageBox box(icon, title.isEmpty() ? QCoreApplication::applicationName() : title, text, buttons, windowInUse());
    box.setObjectName(u"frm_Message"_s);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(harmless);
    box.setEscapeButton(harmless);
    box.layout()->setContentsMargins(24, 24, 24, 16);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

} // namespace

void QtPrompts::refuse(const QString &text, const QString &title)
{
    showMessage(QMessageBox::Critical, title, text, QMessageBox::Ok, QMessageBox::Ok);
}

void QtPrompts::inform(const QString &text)
{
    showMessage(QMessageBox::Information, {}, text, QMessageBox::Ok, QMessageBox::Ok);
}

bool QtPrompts::confirm(const QString &question, const QString &title)
{
    return showMessage(QMessageBox::Question, title, question, QMessageBox::Yes | QMessageBox::No, QMessageBox::No) ==
           QMessageBox::Yes;
}

QString QtPrompts::askText(const QString &question, int maxLength)
{
    QDialog dialog(windowInUse());
    dialog.setObjectName(u"frm_AskText"_s);
    dialog.setWindowTitle(QCoreApplication::applicationName());

    auto *label = new QLabel(question);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    auto *answer = new QLineEdit;
    answer->setObjectName(u"txt_Answer"_s);
    answer->setAccessibleName(question);
    answer->setMaxLength(maxLength);
    answer->setMinimumWidth(400);
    new NoBackslash(answer);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);

    auto *layout = new QVBoxLayout(&dialog);
    layout->setContentsMargins(24, 16, 24, 16);
    layout->setSpacing(8);
    layout->addWidget(label);
    layout->addWidget(answer);
    layout->addSpacing(8);
    layout->addWidget(buttons);
    answer->setFocus();
    return dialog.exec() == QDialog::Accepted ? answer->text() : QString();
}

std::optional<Verification> QtPrompts::verifyStaff(const QString &what)
{
    if (!m_station)
        return std::nullopt;
    frm_VerifyUser window(*m_station, what, m_recent.of(m_station->now().date()), windowInUse());
    window.exec();
    if (window.verification())
        m_recent.add(m_station->now().date(), window.verification()->staffName);
    return window.verification();
}

void QtPrompts::showError(const QString &message, const QString &description)
{
    frm_ErrorDisplay(message, description, windowInUse()).exec();
}
