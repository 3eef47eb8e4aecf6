#include "look/EntryForm.h"

#include "look/NoBackslash.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

enum Column { Caption, Box, Button, Message };

QLabel *plainLabel(const QString &text = {})
{
    auto *label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

EntryForm::EntryForm(QWidget *parent) : QWidget(parent), m_grid(new QGridLayout(this))
{
    m_grid->setContentsMargins(0, 0, 0, 0);
    m_grid->setHorizontalSpacing(8);
    m_grid->setVerticalSpacing(8);
    m_grid->setColumnMinimumWidth(Caption, 136);
    m_grid->setColumnStretch(Box, 1);
}

QLineEdit *EntryForm::addBox(const QString &caption, const QString &name, int maxLength)
{
    const int row = m_grid->rowCount(); // row 0 is kept for addTopRow()
    auto *box = new QLineEdit(this);
    QLabel *label = plainLabel(caption);
    label->setObjectName(u"lbl_"_s + QString(name).remove(u"ID"_s));
    label->setBuddy(box);
    box->setObjectName(u"txt_"_s + name);
    box->setAccessibleName(QString(caption).remove(u'&'));
    box->setMaxLength(maxLength);
    box->setMinimumWidth(200);
    new NoBackslash(box);
    box->installEventFilter(this);
    m_grid->addWidget(label, row, Caption);
    m_grid->addWidget(box, row, Box, 1, -1);
    m_boxes.push_back(box);
    return box;
}

void EntryForm::addTopRow(QLabel *label, QWidget *box)
{
    label->setBuddy(box);
    box->installEventFilter(this);
    m_grid->addWidget(label, 0, Caption);
    m_grid->addWidget(box, 0, Box, 1, -1, Qt::AlignLeft);
    m_boxes.insert(m_boxes.begin(), box);
}

void EntryForm::addLine(const QString &words, QWidget *content)
{
    const int row = m_grid->rowCount();
    m_grid->setRowMinimumHeight(row, 32);
    m_grid->addWidget(plainLabel(words), row, Caption);
    m_grid->addWidget(content, row, Box, 1, -1);
}

void EntryForm::makeRoomBeside()
{
    m_grid->addWidget(m_boxes.back(), m_grid->rowCount() - 1, Box);
}

QPushButton *EntryForm::addButton(const QString &objectName, const QString &caption, const QString &accessibleName)
{
    makeRoomBeside();
    auto *button = new QPushButton(caption, this);
    button->setObjectName(objectName);
    button->setAccessibleName(accessibleName);
    m_grid->addWidget(button, m_grid->rowCount() - 1, Button);
    return button;
}

QLabel *EntryForm::addMessage(const QString &objectName, const QString &widest)
{
    makeRoomBeside();
    QLabel *message = plainLabel();
    message->setObjectName(objectName);
    m_messageWidth = std::max(m_messageWidth, fontMetrics().horizontalAdvance(widest + u"  "_s));
    m_grid->setColumnMinimumWidth(Message, m_messageWidth);
    m_grid->addWidget(message, m_grid->rowCount() - 1, Message);
    return message;
}

bool EntryForm::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<QKeyEvent *>(event)->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return false;
    auto *box = static_cast<QWidget *>(watched);
    Q_EMIT entered(box);
    const auto next = std::find(m_boxes.begin(), m_boxes.end(), box) + 1;
    if (next != m_boxes.end())
        (*next)->setFocus(Qt::TabFocusReason);
    else
        Q_EMIT enteredLast();
    return true;
}
