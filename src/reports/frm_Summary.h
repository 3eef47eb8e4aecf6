#pragma once

#include "app/Station.h"
#include "reports/Browser.h"
#include "reports/PageFetch.h"

#include <QDialog>
#include <QTimer>

#include <future>
#include <memory>

class QLabel;
class QPrinter;
class QPushButton;
class QStackedWidget;

/// Shows a page of the report web server: in an embedded browser, or, where there is none, in the system's browser,
/// which it says.
class frm_Summary : public QDialog
{
    Q_OBJECT

public:
    /// The bookings of a day, "yyyy-mm-dd".
    frm_Summary(Station &station, const QString &day, QWidget *parent = nullptr);
    /// Any report.
    frm_Summary(Station &station, const QString &title, const QUrl &address, QWidget *parent = nullptr);
    ~frm_Summary() override;

Q_SIGNALS:
    /// btn_Mail: the shown report as it came from the server, and what it is called.
    void mailWanted(const QByteArray &html, const QString &subject);

protected:
    /// The page is asked for when the window is first shown.
    void showEvent(QShowEvent *event) override;
    /// Nothing when there is none.
    [[nodiscard]] virtual std::unique_ptr<BrowserView> makeBrowser();

private:
    void layOut();
    [[nodiscard]] QPushButton *addButton(const QString &name, const QString &text, const QString &tip,
                                         void (frm_Summary::*action)());
    void openBrowser();
    void load();
    void openOutside();
    void showResult(bool came);
    void tell(const QString &words);
    void print();
    void printed(bool isPrinted);
    void mail();
    void lookForPage();

    Station &m_station;
    const QUrl m_firstAddress;
    const QString m_firstTitle;
    QUrl m_address; ///< of the page that is shown, or did not come: links lead on from the first one
    QStackedWidget *m_shown;
    QLabel *m_note;
    QPushButton *m_retry = nullptr;
    QPushButton *m_print = nullptr;
    QPushButton *m_mail = nullptr;
    std::unique_ptr<QPrinter> m_printer; ///< while it prints
    std::unique_ptr<BrowserView> m_browser;
    std::future<FetchedPage> m_fetched; ///< for the mail
    QString m_mailSubject;
    QTimer m_fetching;
    bool m_isLoaded = false;
};
