#pragma once

#include <QPointer>
#include <QValidator>

class QLabel;
class QLineEdit;

/// Keeps backslashes out of an entry box, typed, pasted or set: within a statement the server takes them for itself.
/// The line lbl_NoBackslash below the box says so until the next key. The box owns it.
class NoBackslash : public QValidator
{
public:
    explicit NoBackslash(QLineEdit *box);

    State validate(QString &text, int &cursor) const override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void say();

    QLineEdit *m_box;
    QPointer<QLabel> m_line; ///< a child of the window, so that it covers nothing but what is below the box
};
