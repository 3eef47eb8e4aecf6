#include "records/RegisterForm.h"

#include <QLineEdit>

using namespace Qt::StringLiterals;

RegisterForm::RegisterForm(const Register &records, QWidget *parent) : EntryForm(parent), m_records(records)
{
    m_fields.reserve(records.fields.size());
    for (const RegisterField &field : records.fields) {
        QLineEdit *box = addBox(field.caption, field.box, field.maxLength);
        if (field.kind == RegisterField::Kind::Hours || field.kind == RegisterField::Kind::Price)
            box->setAlignment(Qt::AlignRight);
        connect(box, &QLineEdit::textChanged, this, &RegisterForm::edited);
        m_fields.push_back(box);
    }
    setFocusProxy(m_fields.front());
}

void RegisterForm::showValues(const QStringList &values)
{
    m_shown.clear();
    for (std::size_t field = 0; field < m_fields.size(); ++field) {
        const QSignalBlocker quiet(m_fields[field]);
        m_fields[field]->setText(values.value(qsizetype(field)));
        m_fields[field]->setCursorPosition(0);
        m_fields[field]->setEnabled(!values.isEmpty());
    }
    m_shown = this->values();
    Q_EMIT edited();
}

QStringList RegisterForm::values() const
{
    QStringList values;
    for (std::size_t field = 0; field < m_fields.size(); ++field) {
        const QString text = m_fields[field]->text();
        values << (m_records.fields[field].kind == RegisterField::Kind::Text ? text : text.trimmed());
    }
    return values;
}

bool RegisterForm::isChanged() const
{
    return values() != m_shown;
}

void RegisterForm::setText(std::size_t field, const QString &text)
{
    m_fields[field]->setText(text);
}

void RegisterForm::focusField(std::size_t field)
{
    m_fields[field]->setFocus();
    m_fields[field]->selectAll();
}
