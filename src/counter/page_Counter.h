#pragma once

#include "look/Page.h"

class QLabel;

/// The page of the till, where staff log out. Paying comes later.
class page_Counter : public Page
{
    Q_OBJECT

public:
    explicit page_Counter(QWidget *parent = nullptr);

    void showTime(const QString &timeText) override;
    /// Alt+F.
    bool takeKey(const QKeyEvent &event) override;

Q_SIGNALS:
    void logOutWanted();

private:
    QLabel *m_time;
};
