#pragma once

#include "app/Station.h"
#include "records/Booker.h"

#include <QObject>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class EntryForm;
class QLabel;
class QLineEdit;
class RegisterWindow;

/// The rows of a form in which a customer's number is looked up as it is typed: members, students, and the special
/// groups whose table exists. A form has at most one customer: who is found empties the other numbers.
class CustomerNumbers : public QObject
{
    Q_OBJECT

public:
    /// Adds the rows to the form.
    CustomerNumbers(Station &station, EntryForm &form);

    /// Of who was found; normal when nobody was, or when the number was emptied again.
    [[nodiscard]] QString rateType() const;
    void clear();
    /// Takes a customer who was chosen in a register, as if their number had been looked up; tells found().
    void take(const Customer &customer);
    /// The Enter that was pressed last looked a number up.
    [[nodiscard]] bool enterLookedUp() const { return m_enterLookedUp; }

Q_SIGNALS:
    void found(const Booker &booker);
    void rateMayHaveChanged();

private:
    using OpenRegister = std::function<std::unique_ptr<RegisterWindow>(QWidget *)>;
    using Find = std::function<std::optional<Booker>(const QString &)>;
    enum class LookUp { Found, Unknown, Failed };

    /// One register's row.
    struct Row
    {
        QLineEdit *box;
        QLabel *message; ///< what the look-up on purpose said
        QString ownRate; ///< the rate that an empty box takes away
        QString unknown; ///< what to say of a number that nobody has
        Find find;
        OpenRegister open;
    };

    QLineEdit *addRow(const QString &caption, const QString &name, const QString &ownRate, const QString &unknown,
                      Find find, OpenRegister open);
    /// A button that opens the register of the row that was added last.
    void addLookButton(const QString &objectName, const QString &caption, const QString &registerName);
    void addGroup(int group);
    void numberTyped(std::size_t index);
    LookUp lookUp(std::size_t index);
    void lookUpOnPurpose(std::size_t index);
    void lookUpEntered(const QWidget *box);
    void openRegister(std::size_t index);
    void take(std::size_t index, const Booker &customer);

    Station &m_station;
    EntryForm &m_form;
    std::vector<Row> m_rows;
    QString m_rateType;
    bool m_lookingUp = false;
    bool m_enterLookedUp = false;
};
