#pragma once

#include "app/Station.h"
#include "records/Booker.h"

#include <QWidget>

#include <functional>
#include <optional>
#include <vector>

class QDialog;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

/// Who books: the boxes that the booker window and the waiting-list window have in common. A customer number is looked
/// up as it is typed; who is found fills the boxes and sets the rate. Only special groups whose table exists are shown.
class BookerForm : public QWidget
{
    Q_OBJECT

public:
    explicit BookerForm(Station &station, QWidget *parent = nullptr);

    /// What was entered. The rate is normal when its customer number was emptied again.
    [[nodiscard]] Booker booker() const;
    /// What is wrong with the name, to be told before anything is booked; empty when nothing is.
    [[nodiscard]] QString refusal() const;
    void clear();

    /// Puts a box of the window's own above the booker's, in line with them. Tab reaches it first when it was made
    /// before the form.
    void addTopRow(QLabel *label, QWidget *box);

    /// Fills a window with a heading, what it is about, this form, and the buttons cmd_OK and cmd_Cancel; gives cmd_OK.
    /// The default button is cmd_Cancel.
    QPushButton *fillWindow(QDialog &window, const QString &heading, const QString &about, const QString &action);

protected:
    /// Enter goes to the next box: a number scanner ends with Enter, which must press no button. In the last box it
    /// presses cmd_OK when there is a name.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    using FindBooker = std::function<std::optional<Booker>(const QString &)>;
    enum class LookUp { Found, Unknown, Failed };

    /// One register's row of the form.
    struct NumberBox
    {
        QLineEdit *box;
        QLabel *message; ///< what the look-up on purpose said
        QString ownRate; ///< the rate that an empty box takes away
        QString unknown; ///< what to say of a number that nobody has
        FindBooker find;
    };

    /// The name stands behind lbl_ and txt_.
    void addBox(const QString &caption, const QString &name, QLineEdit *box, int maxLength);
    QLineEdit *addNumberBox(const QString &caption, const QString &name, const QString &ownRate, const QString &unknown,
                            FindBooker find);
    QPushButton *addLookButton(const QString &objectName, const QString &accessibleName);
    void addGroupBox(int group);
    void addRateLine();
    void numberTyped(std::size_t index);
    LookUp lookUp(std::size_t index);
    void lookUpOnPurpose(std::size_t index);
    void take(std::size_t index, const Booker &found);
    void goOnFrom(QWidget *box);
    [[nodiscard]] QString chosenRate() const;
    void showRate();

    Station &m_station;
    QGridLayout *m_grid;
    QLineEdit *m_name;
    QLineEdit *m_organisation;
    QLineEdit *m_telephone;
    QLabel *m_rate;
    QPushButton *m_ok = nullptr;
    std::vector<NumberBox> m_numbers;
    std::vector<QWidget *> m_boxes; ///< in the order in which Enter goes through them
    QString m_rateType;
    bool m_lookingUp = false;
};
