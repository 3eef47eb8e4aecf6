#pragma once

#include "app/Station.h"
#include "booking/BookingClipboard.h"
#include "schedule/ChangeWatch.h"

#include <QMainWindow>
#include <QTimer>

#include <functional>
#include <vector>

class HouseBar;
class HouseWindows;
class Page;
class PlacedPicture;
class QCloseEvent;
class QKeyEvent;
class QLabel;
class QPushButton;
class QTabWidget;
class page_Booking;
class page_Counter;
class page_Lights;
class page_Shifts;
class page_WaitingList;

/// The one window in which all daily work is done: it composes the pages of SSTab1 and connects them, runs the clock
/// and sees every key before its controls do.
class frm_Main : public QMainWindow
{
    Q_OBJECT

public:
    explicit frm_Main(Station &station, QWidget *parent = nullptr);
    ~frm_Main() override;

    /// Reads pictures, special groups and the day, and opens this counter's shift (tbl_system). What fails is shown
    /// with code 5 and the window stays as far as it came.
    void load();

Q_SIGNALS:
    /// The shift is over and its staff member logged out: the next one is to log in.
    void loggedOut();

protected:
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *makeHeader();
    void addPages();
    void addPage(Page *page, const QString &icon, const QString &title);
    void connectPages();
    /// What the buttons of the house bar open.
    void connectHouse();
    void loadPictures();
    void loadSpecialGroups();
    /// Runs a step of loading; one that fails is kept for the next successful reading of the day. False when it failed.
    bool attempt(std::function<void()> step, bool tell);
    void catchUp();
    void showCounter(int counter);
    void nextCounter();
    [[nodiscard]] Page *shownPage() const;

    void tick();
    /// Shows what other counters changed, and since when the database is away.
    void followOthers();
    bool handleKey(const QKeyEvent &key);
    void logOut();
    void changeShift();

    Station &m_station;
    BookingClipboard m_clipboard;
    int m_shownCounter; ///< whose staff lbl_Counter names
    QTimer m_clock{this};
    bool m_ticking = false;
    std::vector<std::function<void()>> m_missed; ///< steps of loading that the database refused
    ChangeWatch m_watch;
    QLabel *m_noConnection = nullptr;

    QTabWidget *m_tabs = nullptr;
    std::vector<Page *> m_pages;
    PlacedPicture *m_topImage = nullptr;
    HouseBar *m_house = nullptr;
    HouseWindows *m_windows = nullptr;
    QPushButton *m_counter = nullptr;
    page_Booking *m_booking = nullptr;
    page_Counter *m_counterPage = nullptr;
    page_Lights *m_lights = nullptr;
    page_Shifts *m_shifts = nullptr;
    page_WaitingList *m_waiting = nullptr;
};
