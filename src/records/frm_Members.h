#pragma once

#include "records/RegisterWindow.h"

/// The register of members.
class frm_Members : public RegisterWindow
{
    Q_OBJECT

public:
    explicit frm_Members(Station &station, QWidget *parent = nullptr);

    void RefreshMemberList() { refreshList(); }
};
