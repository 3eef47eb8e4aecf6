#pragma once

#include "records/EntrySaving.h"
#include "records/RegisterFrame.h"

#include <QDialog>

class KeptLine;
class RegisterForm;
class RegisterList;
struct Station;

/// A register of customers, or the catalogue: a list that is searched, and the boxes of the entry that was chosen or
/// is being added. What was entered and not saved is asked about before it is lost.
class RegisterWindow : public QDialog
{
    Q_OBJECT

public:
    RegisterWindow(Station &station, const QString &objectName, Register records, QWidget *parent = nullptr);

    /// The window stands over one that takes the customer: btn_MemberPaste tells pasted() and closes it. Otherwise that
    /// button keeps the customer for the next booking (Station::keptCustomer).
    void standOverBooking();

    /// Writes all entries into a file.
    void exportTo(const QString &path);
    /// Opens frm_ImportCsv for a file.
    void importFrom(const QString &path);

public Q_SLOTS:
    void reject() override;

Q_SIGNALS:
    void pasted(const Customer &customer);
    void customerKept(const Customer &customer);
    /// Something was written into the register.
    void written();

protected:
    /// Reads the list anew; what was entered stays.
    void refreshList();
    void setListsHolding(ListsHolding lists) { m_listsHolding = std::move(lists); }
    void changeEvent(QEvent *event) override;

private:
    void connectButtons();
    /// Runs a handler unless the database keeps another one waiting.
    void act(const std::function<void()> &work);
    void choose(int row);
    void step(int by);
    void next() { step(1); }
    void previous() { step(-1); }
    void search();
    void refresh();
    void add();
    void update();
    void remove();
    /// Deletes the chosen entry. One that somebody changed meanwhile stays, and so does what was entered over it.
    void removeShown();
    void paste();
    void forgetKept();
    void importCsv();
    void exportCsv();

    /// Shows an entry and selects it in the list; nothing for nobody.
    void showEntry(const std::optional<RegisterRow> &row);
    /// Shows the entry with this id as the list has it; nobody when it has none.
    void showId(const QString &id);
    void showList();
    void showState();
    void showKept();
    /// False when what was entered must not be lost.
    bool mayLeave();
    /// True when nothing that was entered is unsaved after it.
    bool save();
    [[nodiscard]] int shownRow() const;

    Station &m_station;
    const Register m_records;
    ListsHolding m_listsHolding;
    std::optional<RegisterRow> m_shown; ///< as it was read
    bool m_isAdding = false;
    bool m_isOverBooking = false;
    QString m_searched; ///< what the list shows

    RegisterList *m_list;
    RegisterForm *m_form;
    KeptLine *m_kept;
    RegisterFrame m_frame;
};
