#include "records/frm_Students.h"

using namespace Qt::StringLiterals;

frm_Students::frm_Students(Station &station, QWidget *parent)
    : RegisterWindow(station, u"frm_Students"_s, studentsRegister(), parent)
{
}
