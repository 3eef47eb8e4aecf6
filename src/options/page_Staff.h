#pragma once

#include "options/OptionsPage.h"
#include "options/StaffList.h"

class QComboBox;
class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;
class RowsTable;

/// Who may work at the counters: a new staff member, another level, a new password, somebody who leaves. Each button
/// saves at once.
class page_Staff : public OptionsPage
{
    Q_OBJECT

public:
    page_Staff(Station &station, const QString &administrator, QWidget *parent = nullptr);

    void load() override;

private:
    QWidget *makeForm();
    QPushButton *addButton(QLayout *layout, const QString &name, const QString &caption, const QString &tip,
                           void (page_Staff::*action)());
    void showSelected();
    [[nodiscard]] const StaffMember *selected() const;
    [[nodiscard]] TypedPassword password() const;
    [[nodiscard]] AccessLevel level() const;
    void add();
    void setLevel();
    void setPassword();
    void remove();
    /// Carries a change out, says what stands against it, or reads the list anew.
    void change(const std::function<QString()> &action, const QString &done);

    std::vector<StaffMember> m_staff;
    RowsTable *m_list;
    QLineEdit *m_login = nullptr;
    QLineEdit *m_password = nullptr;
    QLineEdit *m_passwordAgain = nullptr;
    QComboBox *m_level = nullptr;
    QLabel *m_selected = nullptr;
    QLabel *m_done = nullptr;
    std::vector<QPushButton *> m_ofSelected;
};
