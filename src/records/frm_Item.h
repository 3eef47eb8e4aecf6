#pragma once

#include "records/RegisterWindow.h"

/// The catalogue of goods. Whoever opens it has made sure that an administrator sits there.
class frm_Item : public RegisterWindow
{
    Q_OBJECT

public:
    /// A change of name or price tells first which payment lists hold the item.
    explicit frm_Item(Station &station, ListsHolding listsHolding = {}, QWidget *parent = nullptr);

    void RefreshitemList() { refreshList(); }
};
