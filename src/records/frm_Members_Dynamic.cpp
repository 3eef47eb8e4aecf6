#include "records/frm_Members_Dynamic.h"

using namespace Qt::StringLiterals;

frm_Members_Dynamic::frm_Members_Dynamic(Station &station, int group, QWidget *parent)
    : RegisterWindow(station, u"frm_Members_Dynamic"_s, groupRegister(group), parent)
{
}
