#pragma once

#include "app/Station.h"
#include "look/EntryForm.h"
#include "records/Booker.h"

class CustomerNumbers;
class KeptLine;

/// Who books: the boxes that the booker window and the waiting-list window have in common. Who is found by a customer
/// number fills the boxes and sets the rate. It begins with the customer whom a register keeps for it.
class BookerForm : public EntryForm
{
    Q_OBJECT

public:
    explicit BookerForm(Station &station, QWidget *parent = nullptr);

    /// What was entered. The rate is normal when its customer number was emptied again.
    [[nodiscard]] Booker booker() const;
    /// What is wrong with the name, to be told before anything is booked; empty when nothing is.
    [[nodiscard]] QString refusal() const;
    void clear();
    /// The booking is made: the customer whom a register kept for it is kept no longer.
    void forgetKept();

Q_SIGNALS:
    /// Enter was pressed in the last box and there is a name: staff want what cmd_OK does.
    void completed();

private:
    void fillIn(const Booker &found);
    void showRate();
    void takeKept();

    Station &m_station;
    QLineEdit *m_name;
    QLineEdit *m_organisation;
    QLineEdit *m_telephone;
    CustomerNumbers *m_numbers;
    QLabel *m_rate;
    KeptLine *m_kept = nullptr;
};
