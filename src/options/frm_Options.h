#pragma once

#include <QDialog>

#include <set>

class OptionsPage;
class QLabel;
class QListWidget;
class QPushButton;
class QStackedWidget;
struct Station;

/// The options: a list of pages at the left, the chosen one at the right. What was entered and not saved is asked about
/// before another page comes and before the window closes. Whoever opens it has verified an administrator.
class frm_Options : public QDialog
{
    Q_OBJECT

public:
    explicit frm_Options(Station &station, QWidget *parent = nullptr);

    /// Adds a page at the end of the list; its icon is the bare name of a drawing. It is loaded when it is first shown.
    void addPage(const QString &name, const QString &icon, OptionsPage *page);
    /// False when the person stays with what is not saved.
    bool showPage(int number);

    /// Closing, Escape and btn_Close.
    void reject() override;

protected:
    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QPushButton *addButton(const QString &name, const QString &caption, const QString &tip);
    [[nodiscard]] OptionsPage *shownPage() const;
    void choose(int number);
    /// Saves, forgets or keeps what was entered, as the person says; false when it is kept.
    bool settleChanges();
    void endEditing();
    bool loadPage(OptionsPage *page);
    bool save();
    void refresh();
    void showState();

    Station &m_station;
    QListWidget *m_names;
    QStackedWidget *m_pages;
    QLabel *m_restart;
    QPushButton *m_save = nullptr;
    QPushButton *m_refresh = nullptr;
    QPushButton *m_close = nullptr;
    std::set<OptionsPage *> m_loaded;
};
