#pragma once

#include <QString>

class WaitSign;

/// What came of trying to reach the database.
struct ConnectionTrial
{
    bool works = false;
    QString words; ///< for whoever sets the counter up: what is wrong, and what helps
};

/// Connects as the program would and looks whether the tables are there. The sign tells of a long wait; it may be null.
ConnectionTrial tryConnection(const QString &server, const QString &user, const QString &password, WaitSign *sign);

/// Why this cannot stand in a connection; empty when it can. The name says what it is: "The password".
QString whyNotInConnection(const QString &name, const QString &value);
