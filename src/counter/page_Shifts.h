#pragma once

#include "look/Page.h"

/// The page on which shifts will be ended and handed over.
class page_Shifts : public Page
{
    Q_OBJECT

public:
    explicit page_Shifts(QWidget *parent = nullptr);
};
