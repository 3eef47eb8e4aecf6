#pragma once

class KeptLine;
class QDialog;
class QLabel;
class QLayout;
class QPushButton;
class QString;
class RegisterForm;
class RegisterList;
struct Register;

/// What stands in the window of a register, and where: the list on one side, an entry on the other, the buttons.
class RegisterFrame
{
public:
    RegisterFrame(QDialog &window, const Register &records, RegisterList &list, RegisterForm &form, KeptLine &kept);

    QPushButton *previous;
    QPushButton *next;
    QPushButton *refresh;
    QPushButton *update;
    QPushButton *add;
    QPushButton *remove;
    QPushButton *importCsv;
    QPushButton *exportCsv;
    QPushButton *paste = nullptr; ///< not for items
    QPushButton *close;
    QLabel *heading;
    QLabel *hint;

private:
    QLayout *makeListSide(const QString &entry, RegisterList &list);
    QLayout *makeEntrySide(const QString &entry, RegisterForm &form);
    QLayout *makeBottom(const Register &records);
};
