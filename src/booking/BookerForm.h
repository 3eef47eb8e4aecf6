#pragma once

#include "app/Station.h"
#include "booking/Booker.h"

#include <QWidget>

#include <functional>
#include <optional>
#include <vector>

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
    [[nodiscard]] bool hasName() const;
    void clear();

    /// Puts a box of the window's own above the booker's, in line with them.
    void addTopRow(QLabel *label, QWidget *box);

protected:
    /// Enter goes to the next box: a number scanner ends with Enter, which must press no button.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct NumberBox
    {
        QLineEdit *box = nullptr;
        QLabel *message = nullptr;
        QString registerName; ///< whom the register holds, in words: "member"
        QString ownRate;      ///< the rate that emptying this box takes away
        std::function<std::optional<Booker>(const QString &)> find;
    };

    QLineEdit *addBox(const QString &objectName, const QString &caption, int maxLength);
    QPushButton *addNumberBox(const QString &objectName, const QString &caption, NumberBox number);
    void addMemberBox();
    void addStudentBox();
    void addGroupBoxes();
    void addGroupBox(int group, bool enabled);
    void addRateLine();
    void numberTyped(std::size_t index);
    void lookUp(std::size_t index, bool onPurpose);
    void take(std::size_t index, const Booker &found);
    void showRate();

    Station &m_station;
    QGridLayout *m_grid;
    QLineEdit *m_name = nullptr;
    QLineEdit *m_organisation = nullptr;
    QLineEdit *m_telephone = nullptr;
    QLabel *m_rate = nullptr;
    std::vector<NumberBox> m_numbers;
    std::vector<QWidget *> m_boxes; ///< in the order in which Enter goes through them
    QString m_rateType;
    bool m_lookingUp = false;
};
