#pragma once

#include "records/RegisterModel.h"

#include <QTimer>
#include <QWidget>

class QLabel;
class QLineEdit;
class QTableView;
struct Station;

/// The list of a register with the box in which it is searched as one types. The first letter is answered at once, the
/// following ones together; Enter goes to the rows. What is chosen in the list is told; whether it may be left is the
/// window's decision.
class RegisterList : public QWidget
{
    Q_OBJECT

public:
    RegisterList(Station &station, const Register &records, QWidget *parent = nullptr);

    [[nodiscard]] const RegisterModel &rows() const { return m_model; }
    [[nodiscard]] int current() const;
    [[nodiscard]] QString search() const;
    /// Selects the row and tells nobody; -1 for none.
    void select(int row);
    /// Puts a text into the search box and reads nothing.
    void setSearch(const QString &text);
    /// Reads the entries that are searched for; false after an error, which staff have seen. The list is empty then.
    bool read();

Q_SIGNALS:
    void searched();
    /// A row was chosen: a click, an arrow key.
    void chosen(int row);
    /// Enter or a double click on a row.
    void enterPressed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *makeSearch(const Register &records);
    void makeTable(const Register &records);
    void typed();
    void readTyped();

    Station &m_station;
    const Register m_records;
    RegisterModel m_model;
    QLineEdit *m_search;
    QTableView *m_table;
    QLabel *m_count;
    QTimer m_pause; ///< after a search, until the next one
    bool m_isSelecting = false;
    bool m_isTyped = false; ///< something that is not searched yet
};
