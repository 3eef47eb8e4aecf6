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

    QPushButton *previous = nullptr;
    QPushButton *next = nullptr;
    QPushButton *refresh = nullptr;
    QPushButton *update = nullptr;
    QPushButton *add = nullptr;
    QPushButton *remove = nullptr;
    QPushButton *importCsv = nullptr;
    QPushButton *exportCsv = nullptr;
    QPushButton *paste = nullptr; ///< not for items
    QPushButton *close = nullptr;
    QLabel *heading = nullptr;
    QLabel *hint = nullptr;

private:
    QLayout *makeListSide(const QString &entry, RegisterList &list);
    QLayout *makeEntrySide(const QString &entry, RegisterForm &form);
    QLayout *makeBottom(const Register &records);
};
