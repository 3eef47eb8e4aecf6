#include "counter/page_Shifts.h"

#include "counter/LaterNote.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;

page_Shifts::page_Shifts(QWidget *parent) : Page(parent)
{
    setObjectName(u"page_Shifts"_s);
    addLaterNote(*new QVBoxLayout(this), u"Shifts"_s,
                 u"Shifts will be ended and handed over here in a later version."_s);
}
