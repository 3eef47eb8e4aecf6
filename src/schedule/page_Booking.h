#pragma once

#include "booking/BookingClipboard.h"
#include "look/Page.h"
#include "plan/PlanStatus.h"
#include "schedule/DayHistories.h"
#include "schedule/DayModel.h"

#include <QTimer>

class ClipboardLine;
class DayChooser;
class DayHeading;
class DayView;
class FreeHourNotice;
class PlayLists;
class QLabel;
class SlotActions;

/// The page of the main window on which a field's day is read and changed: plan and calendar, the grid with its
/// buttons, who plays when.
class page_Booking : public Page
{
    Q_OBJECT

public:
    page_Booking(Station &station, BookingClipboard &clipboard, QWidget *parent = nullptr);

    /// Reads the plan's settings. Throws SettingError.
    void loadPlan();
    /// Empties the grid and builds its rows.
    void RefreshViewInit();
    /// Reads the selected field's day and who plays round the present hour (tbl_booking); the selection stays. After an
    /// error, shown with code 3, the rows are empty and a line says that they could not be read.
    void RefreshView();
    /// As RefreshView after an operation, quietly when its error was shown already. False when the day was not read.
    bool afterOperation(bool ok);

    /// Shows another day; takes effect with the next RefreshView.
    void setDay(QDate day);
    /// The business day that is chosen, "yyyy-mm-dd".
    [[nodiscard]] QString day() const;
    bool follow() override;
    /// The keys begin where they do no harm.
    void focusGrid();
    /// Moves the clock text, the alerts and, at a new hour, the marks of the rows.
    void showTime(const QString &timeText) override;
    /// The letters of the fields, Ctrl+C and Ctrl+V.
    bool takeKey(const QKeyEvent &event) override;
    void addSpecialGroup(int group);

    /// What is selected on the grid, with the whole day round it.
    [[nodiscard]] DaySelection selection() const;

public Q_SLOTS:
    void refreshPlan();
    void showClipboard();

Q_SIGNALS:
    void waitingListTouched();
    void paymentWanted(const DaySelection &selection);
    void invoiceWanted(const DaySelection &selection);
    /// Bookings were read, here changed or at another counter.
    void dayRead();
    void planRead(const std::vector<FieldStatus> &status);

private:
    QWidget *makeGrid();
    void connectActions();
    [[nodiscard]] int field() const;
    void takeWaitingEntry(const QString &id);
    struct ShownDay
    {
        QString day; ///< "yyyy-mm-dd"
        int field = 0;

        bool operator==(const ShownDay &) const = default;
    };

    /// Who waits for a reading, and so what its failure means.
    enum class Reading {
        Asked,   ///< a person, who is told of an error
        Told,    ///< a person who was told of one just now
        ByItself ///< nobody
    };
    bool read(Reading reading);
    void showRows(std::vector<DayRow> rows);
    void showHeading();
    void showSelectedHour();

    Station &m_station;
    BookingClipboard &m_clipboard;
    DayModel m_model;
    int m_hourShown = -1; ///< by the marks of the rows
    int m_hourRead = -1;  ///< when rows and play lists were read
    QTimer m_again;       ///< a reading that is still wanted
    ShownDay m_shown;     ///< what the rows are of
    DayHistories m_histories;

    DayChooser *m_chooser;
    DayHeading *m_heading;
    QLabel *m_unread = nullptr;
    ClipboardLine *m_clipboardLine = nullptr;
    FreeHourNotice *m_notice = nullptr;
    DayView *m_grid = nullptr;
    PlayLists *m_playLists = nullptr;
    SlotActions *m_actions = nullptr;
};
