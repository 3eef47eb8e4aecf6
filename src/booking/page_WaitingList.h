#pragma once

#include "app/Station.h"
#include "booking/BookingClipboard.h"
#include "booking/WaitingList.h"
#include "look/Page.h"

#include <QDate>
#include <QTimer>

class LayoutPlan;
class QCalendarWidget;
class QLabel;
class QLayout;
class QMenu;
class QStackedWidget;
class RowsTable;

/// The page of the main window on which one day and field's waiting list is read, added to, deleted from and taken from
/// for pasting.
class page_WaitingList : public Page
{
    Q_OBJECT

public:
    page_WaitingList(Station &station, BookingClipboard &clipboard, QWidget *parent = nullptr);

    /// Reads the settings of the plan of the waiting area. Throws SettingError.
    void loadPlan();

    /// "yyyy-mm-dd"
    [[nodiscard]] QString day() const { return m_day; }
    [[nodiscard]] int field() const { return m_field; }
    /// Shows another day without reading its list yet.
    void setDay(QDate day);
    /// As RefreshWaitList, for a caller who tells of the error. Throws DbError.
    void read();
    void refresh() override { RefreshWaitList(); }
    bool follow() override;

public Q_SLOTS:
    /// Shows the list of this field; a number without a field changes nothing.
    void selectField(int field);
    /// Reads the list of the day and field anew (tbl_waitlist); the entry that was selected stays so.
    void RefreshWaitList();

Q_SIGNALS:
    /// Another entry is on the clipboard.
    void clipboardChanged();
    /// An entry was taken and can be pasted on the grid.
    void entryCut();

private:
    QWidget *makeDayAndPlan();
    QWidget *makeList();
    QLayout *makeMenuAndButtons();
    void takeDay(QDate day);
    void showHeading();
    void showEntries(const std::vector<WaitingEntry> &entries, const QString &selected);
    void showMenu(QPoint position);
    [[nodiscard]] QString selectedId() const;
    void addEntry();
    void clearEntry();
    void cutEntry();

    Station &m_station;
    BookingClipboard &m_clipboard;
    QString m_day;
    int m_field = 0;
    bool m_reading = false;
    QTimer m_dayClicked;
    QCalendarWidget *m_calendar = nullptr;
    LayoutPlan *m_plan = nullptr;
    QLabel *m_heading = nullptr;
    QLabel *m_empty = nullptr;
    QStackedWidget *m_listOrEmpty = nullptr;
    RowsTable *m_list = nullptr;
    QMenu *m_menu = nullptr;
};
