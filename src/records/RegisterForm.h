#pragma once

#include "look/EntryForm.h"
#include "records/Register.h"

/// The boxes for one entry of a register.
class RegisterForm : public EntryForm
{
    Q_OBJECT

public:
    explicit RegisterForm(const Register &records, QWidget *parent = nullptr);

    /// Shows an entry's texts; without any the boxes are empty and take nothing.
    void showValues(const QStringList &values);
    /// What was entered, numbers without blanks round them.
    [[nodiscard]] QStringList values() const;
    /// Something was entered since showValues().
    [[nodiscard]] bool isChanged() const;
    /// Shows other hours, or another number, beneath what was entered elsewhere.
    void setText(std::size_t field, const QString &text);
    /// Puts the keys into a field's box and selects its text.
    void focusField(std::size_t field);

Q_SIGNALS:
    /// isChanged() may be another by now.
    void edited();

private:
    const Register m_records;
    std::vector<QLineEdit *> m_fields;
    QStringList m_shown;
};
