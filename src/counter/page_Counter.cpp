#include "counter/page_Counter.h"

#include "counter/LaterNote.h"

#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

page_Counter::page_Counter(QWidget *parent) : Page(parent), m_time(new QLabel)
{
    setObjectName(u"page_Counter"_s);
    m_time->setObjectName(u"txt_Time2"_s);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_time, 0, Qt::AlignRight);
    addLaterNote(*layout, u"Counter"_s, u"Hours and goods will be paid here in a later version."_s);
}

void page_Counter::showTime(const QString &timeText)
{
    m_time->setText(timeText);
}

bool page_Counter::takeKey(const QKeyEvent &event)
{
    if (event.key() != Qt::Key_F || (event.modifiers() & ~Qt::KeypadModifier) != Qt::AltModifier)
        return false;
    Q_EMIT logOutWanted();
    return true;
}
