#pragma once

#include <QDialog>

#include <memory>

struct Station;

namespace Ui {
class frm_AdminPass;
}

/// Asks for an administrator's login and password. The caller runs the window and, once it is accepted, asks
/// GetAdminPass for the verdict.
class frm_AdminPass : public QDialog
{
    Q_OBJECT

public:
    explicit frm_AdminPass(Station &station, QWidget *parent = nullptr);
    ~frm_AdminPass() override;

    /// True when the texts are an administrator's; otherwise says that they are not. Throws DbError.
    bool GetAdminPass();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    Station &m_station;
    const std::unique_ptr<Ui::frm_AdminPass> m_ui;
};
