#pragma once

#include "counter/DrawerDialog.h"

/// Opens the drawer, and nothing else.
class frm_DrawerOpen : public DrawerDialog
{
    Q_OBJECT

public:
    explicit frm_DrawerOpen(Station &station, QWidget *parent = nullptr);
};
