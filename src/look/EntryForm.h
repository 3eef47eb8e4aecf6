#pragma once

#include <QWidget>

#include <vector>

class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

/// Boxes below each other with their labels. Enter goes to the next box: a number scanner ends with Enter, which must
/// press no button. They take no backslash.
class EntryForm : public QWidget
{
    Q_OBJECT

public:
    explicit EntryForm(QWidget *parent = nullptr);

    /// The next row: a box named txt_`name` whose label is lbl_`name` without "ID".
    QLineEdit *addBox(const QString &caption, const QString &name, int maxLength);
    /// A row above all others. Tab reaches its box first when it was made before the form.
    void addTopRow(QLabel *label, QWidget *box);
    /// The next row: words, and what they are about.
    void addLine(const QString &words, QWidget *content);

    /// These stand beside the box that was added last.
    QPushButton *addButton(const QString &objectName, const QString &caption, const QString &accessibleName);
    /// `widest` is the longest text that the message will have.
    QLabel *addMessage(const QString &objectName, const QString &widest);

Q_SIGNALS:
    /// Enter was pressed in this box, which is about to be left for the next one.
    void entered(QWidget *box);
    /// After it, when there is no next box.
    void enteredLast();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void makeRoomBeside();

    QGridLayout *m_grid;
    int m_messageWidth = 0;
    std::vector<QWidget *> m_boxes; ///< in the order in which Enter goes through them
};
