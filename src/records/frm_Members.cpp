#include "records/frm_Members.h"

using namespace Qt::StringLiterals;

frm_Members::frm_Members(Station &station, QWidget *parent)
    : RegisterWindow(station, u"frm_Members"_s, membersRegister(), parent)
{
}
