#pragma once

#include <QWidget>

class ElidedLabel;
class QLabel;

/// The line over the grid: which field and which day is shown, and the clock.
class DayHeading : public QWidget
{
    Q_OBJECT

public:
    DayHeading();

    /// `name` is what staff call the field, which is counted from 0 here; `day` is "yyyy-mm-dd".
    void showField(const QString &name, int field);
    void showNoField();
    void showDay(const QString &day);
    void showTime(const QString &timeText);

Q_SIGNALS:
    void clockClicked();

private:
    ElidedLabel *m_fieldName;
    QLabel *m_fieldInfo;
    QLabel *m_day;
    QLabel *m_time;
};
