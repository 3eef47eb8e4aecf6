#include "records/frm_Item.h"

using namespace Qt::StringLiterals;

frm_Item::frm_Item(Station &station, ListsHolding listsHolding, QWidget *parent)
    : RegisterWindow(station, u"frm_Item"_s, catalogue(), parent)
{
    setListsHolding(std::move(listsHolding));
}
