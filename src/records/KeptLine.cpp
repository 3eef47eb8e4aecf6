#include "records/KeptLine.h"

#include "look/ElidedLabel.h"
#include "look/Look.h"

#include <QBoxLayout>
#include <QPushButton>

using namespace Qt::StringLiterals;

KeptLine::KeptLine(const QString &buttonName, const QString &caption, const QString &tip, QWidget *parent)
    : QWidget(parent), m_words(new ElidedLabel)
{
    constexpr int space = 8;
    Look::paint(*this, Look::shared);
    m_words->setObjectName(u"lbl_Kept"_s);
    auto *button = new QPushButton(caption);
    button->setObjectName(buttonName);
    button->setAccessibleName(QString(caption).remove(u'&'));
    button->setToolTip(tip);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, &KeptLine::takenBack);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(space, space / 2, space, space / 2);
    layout->setSpacing(space);
    layout->addWidget(m_words, 1);
    layout->addWidget(button);
    hide();
}

void KeptLine::showWords(const QString &words)
{
    m_words->showText(words);
    m_words->setAccessibleName(words);
    setVisible(!words.isEmpty());
}
