#include "app/QtPrompts.h"

#include "app/Station.h"
#include "app/frm_ErrorDisplay.h"
#include "app/frm_VerifyUser.h"
#include "look/NoBackslash.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QWidget *windowInUse()
{
    QWidget *modal = QApplication::activeModalWidget();
    return modal ? modal : QApplication::activeWindow();
}

QMessageBox::Icon iconOf(MessageIcon icon)
{
    switch (icon) {
    case MessageIcon::None:
        break;
    case MessageIcon::Information:
        return QMessageBox::Information;
    case MessageIcon::Question:
        return QMessageBox::Question;
    case MessageIcon::Warning:
        return QMessageBox::Warning;
    case MessageIcon::Critical:
        return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButton buttonOf(Answer answer)
{
    switch (answer) {
    case Answer::Ok:
        break;
    case Answer::Cancel:
        return QMessageBox::Cancel;
    case Answer::Yes:
        return QMessageBox::Yes;
    case Answer::No:
        return QMessageBox::No;
    }
    return QMessageBox::Ok;
}

QString titleOf(const QString &title)
{
    return title.isEmpty() ? QCoreApplication::applicationName() : title;
}

} // namespace

Answer QtPrompts::ask(const Question &question)
{
    QMessageBox box(iconOf(question.icon), titleOf(question.title), question.text, QMessageBox::NoButton,
                    windowInUse());
    box.setObjectName(u"frm_Message"_s);
    box.setProperty("touch", true);
    box.setTextFormat(Qt::PlainText);
    for (const Answer answer : question.buttons)
        box.addButton(buttonOf(answer));
    box.setDefaultButton(buttonOf(question.defaultButton));
    box.setEscapeButton(buttonOf(question.closed()));
    box.layout()->setContentsMargins(24, 24, 24, 16);
    const int pressed = box.exec();
    const auto found = std::find_if(question.buttons.begin(), question.buttons.end(),
                                    [pressed](Answer answer) { return buttonOf(answer) == pressed; });
    return found != question.buttons.end() ? *found : question.closed();
}

void QtPrompts::refuse(const QString &text, const QString &title)
{
    ask({text, title, MessageIcon::Critical, {Answer::Ok}, Answer::Ok});
}

void QtPrompts::inform(const QString &text, const QString &title, MessageIcon icon)
{
    ask({text, title, icon, {Answer::Ok}, Answer::Ok});
}

QString QtPrompts::askText(const QString &question, int maxLength, const QString &title)
{
    QDialog dialog(windowInUse());
    dialog.setObjectName(u"frm_AskText"_s);
    dialog.setProperty("touch", true);
    dialog.setWindowTitle(titleOf(title));

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
