#pragma once

#include "records/RegisterWindow.h"

/// The register of students.
class frm_Students : public RegisterWindow
{
    Q_OBJECT

public:
    explicit frm_Students(Station &station, QWidget *parent = nullptr);

    void RefreshMemberList() { refreshList(); }
};
