#pragma once

#include "booking/BookingClipboard.h"
#include "schedule/DayModel.h"

#include <QTimer>
#include <QWidget>

#include <map>

class DayView;
class ElidedLabel;
class FreeHourNotice;
class LayoutPlan;
class PlayLists;
class QCalendarWidget;
class QLabel;
class QLineEdit;
class QVBoxLayout;
class SlotActions;

/// The page of the main window on which a field's day is read and changed: plan and calendar, the grid with its
/// buttons, who plays when.
class page_Booking : public QWidget
{
    Q_OBJECT

public:
    page_Booking(Station &station, BookingClipboard &clipboard, QWidget *parent = nullptr);

    /// Empties the grid and builds its rows.
    void RefreshViewInit();
    /// Reads the selected field's day and who plays round the present hour (tbl_booking); the selection stays. After an
    /// error, shown with code 3, the rows are empty and a line says that they could not be read.
    void RefreshView();
    /// As RefreshView after an operation, quietly when its error was shown already. False when the day was not read.
    bool afterOperation(bool ok);

    /// Shows another day; takes effect with the next RefreshView.
    void setDay(QDate day);
    /// Presses the plan's hot spot of this field.
    void pressField(int field);
    /// Moves the clock text and, at a new hour, the marks of the rows.
    void tick(const QString &timeText);
    void showClipboard();
    void addSpecialGroup(int group);

    [[nodiscard]] LayoutPlan &plan() { return *m_plan; }
    [[nodiscard]] PlayLists &playLists() { return *m_playLists; }
    [[nodiscard]] SlotActions &actions() { return *m_actions; }
    /// What is selected on the grid, with the whole day round it.
    [[nodiscard]] DaySelection selection() const;

signals:
    void waitingListTouched();
    /// Another entry of the waiting list is wanted for pasting.
    void waitingEntryWanted(const QString &id);
    /// Bookings may have changed, here or at another counter.
    void dayRead(bool ok);
    void clipboardChanged();
    void clockClicked();

private:
    QWidget *makeDayChooser();
    QWidget *makeGrid();
    QWidget *makeHeading();
    QWidget *makeButtons();
    void connectActions();
    void selectFieldUnderMouse();
    [[nodiscard]] int field() const;
    bool read(bool quietly);
    void showRows(std::vector<DayRow> rows);
    void showHeading();
    void showSelectedHour();
    QString historyOf(int row);

    Station &m_station;
    BookingClipboard &m_clipboard;
    DayModel m_model;
    QTimer m_dayClicked;
    QString m_day;
    int m_hourShown = -1;
    std::map<int, QString> m_histories; ///< by row, read since the last refresh
    bool m_historyReadable = false;     ///< no more after an error, so that the moving pointer does not repeat it

    QLineEdit *m_fieldUnderMouse = nullptr;
    QLineEdit *m_fieldSelected = nullptr;
    LayoutPlan *m_plan = nullptr;
    ElidedLabel *m_fieldName = nullptr;
    QLabel *m_fieldInfo = nullptr;
    QCalendarWidget *m_calendar = nullptr;
    QLabel *m_time = nullptr;
    QLabel *m_dayLabel = nullptr;
    QLabel *m_unread = nullptr;
    ElidedLabel *m_clipboardLabel = nullptr;
    FreeHourNotice *m_notice = nullptr;
    DayView *m_grid = nullptr;
    PlayLists *m_playLists = nullptr;
    SlotActions *m_actions = nullptr;
};
