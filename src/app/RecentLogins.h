#pragma once

#include <QDate>
#include <QStringList>

/// The logins that verified at this counter today, newest first, each once, at most four.
class RecentLogins
{
public:
    void add(QDate today, const QString &login)
    {
        QStringList logins = of(today);
        logins.removeAll(login);
        logins.prepend(login);
        m_logins = logins.mid(0, most);
        m_day = today;
    }

    [[nodiscard]] QStringList of(QDate today) const { return today == m_day ? m_logins : QStringList(); }

private:
    static constexpr qsizetype most = 4;

    QDate m_day;
    QStringList m_logins;
};
