#pragma once

#include "records/RegisterWindow.h"

/// The register of one special group.
class frm_Members_Dynamic : public RegisterWindow
{
    Q_OBJECT

public:
    frm_Members_Dynamic(Station &station, int group, QWidget *parent = nullptr);

    void RefreshMemberList() { refreshList(); }
};
