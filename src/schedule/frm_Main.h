#pragma once

#include "app/Station.h"
#include "booking/BookingClipboard.h"
#include "plan/Alerts.h"

#include <QMainWindow>
#include <QTimer>

#include <functional>

class LayoutPlan;
class PlacedPicture;
class QKeyEvent;
class QLabel;
class QPushButton;
class QTabWidget;
class page_Booking;
class page_Lights;
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

    /// "morning" or "evening", as it was when the window was loaded.
    [[nodiscard]] QString shiftName() const { return m_shiftName; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    enum Page { BookingPage, CounterPage, LightsPage, ShiftsPage, WaitingPage };

    QWidget *makeHeader();
    void addPages();
    static QWidget *laterPage(const QString &title, const QString &sentence, QLabel *time = nullptr);
    void connectPages();
    void loadPictures();
    void loadSpecialGroups();
    /// Runs a step of loading; one that fails is kept for the next successful reading of the day. False when it failed.
    bool attempt(std::function<void()> step, bool tell);
    void catchUp();
    void showCounter(qint16 counter);
    void nextCounter();
    void selectPage(int page);
    void setWaitingField(int field);
    void takeWaitingEntry(const QString &id);
    void refreshPlan();

    void tick();
    /// False when the alerts could not be raised.
    bool refreshAlerts(bool again);
    void showAlerts(bool lit);

    bool handleKey(const QKeyEvent &key);
    bool handleFieldKey(int key);
    void logOut();

    Station &m_station;
    BookingClipboard m_clipboard;
    AlertClock m_alertClock;
    std::vector<QString> m_alertCaptions;
    QString m_shiftName;
    QTimer m_clock{this};
    bool m_ticking = false;
    int m_planMinute = -1;
    std::vector<std::function<void()>> m_missed; ///< steps of loading that the database refused

    QTabWidget *m_pages = nullptr;
    PlacedPicture *m_topImage = nullptr;
    QPushButton *m_counter = nullptr;
    page_Booking *m_booking = nullptr;
    page_Lights *m_lights = nullptr;
    page_WaitingList *m_waiting = nullptr;
    LayoutPlan *m_waitingPlan = nullptr;
    QString m_waitingPointer; ///< what the pointer is over on the waiting-area plan
    QLabel *m_counterTime = nullptr;
    QLabel *m_lightsTime = nullptr;
};
