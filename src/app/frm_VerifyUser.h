#pragma once

#include "app/Prompts.h"

#include <QDialog>

#include <memory>

struct Station;

namespace Ui {
class frm_VerifyUser;
}

/// Asks a staff member to confirm an operation, which it names, with login and password. Stays open until they are
/// right or the window is cancelled; whenever it is shown it starts empty. Each recent login has a button, btn_Recent_1
/// and on (Alt and the digit), which fills it in and goes on to the password.
class frm_VerifyUser : public QDialog
{
    Q_OBJECT

public:
    frm_VerifyUser(Station &station, const QString &what, const QStringList &recent, QWidget *parent = nullptr);
    ~frm_VerifyUser() override;

    /// Who confirmed; nothing when nobody did.
    [[nodiscard]] const std::optional<Verification> &verification() const { return m_verification; }

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void addRecent(int number, const QString &login);
    void verify();

    Station &m_station;
    const std::unique_ptr<Ui::frm_VerifyUser> m_ui;
    std::optional<Verification> m_verification;
};
