#pragma once

#include "app/Station.h"

#include <functional>
#include <optional>

/// One fault that database/check.sql found.
struct CheckFinding
{
    QString fault;
    QString slot; ///< "yyyy-mm-dd hh:mm"
    QString words;
    std::optional<int> field;
};

/// The rules of database/check.sql, part by part, so that progress can be shown and the person can stop. All parts see
/// one moment: they stand in one reading transaction on a connection of their own, whatever the counter does meanwhile.
class DatabaseCheck
{
public:
    explicit DatabaseCheck(const AppSettings &settings);

    /// Connects, and gives the number of parts. Throws DbError.
    int begin();
    /// What one part finds. Throws DbError.
    std::vector<CheckFinding> look(int part);

    /// Ends the wait for an answer, in half a second at the latest: begin() or look(), further in, throws GivenUp. The
    /// windows stay alive while they wait.
    void giveUp();

private:
    struct Patience : WaitSign
    {
        void hold() override {}
        void show(const QString & /*what*/, const std::function<void()> &giveUp) override
        {
            end = giveUp;
            if (isOver)
                end();
        }
        void release() override { end = nullptr; }

        std::function<void()> end;
        bool isOver = false;
    };

    void splitScript(const QString &otherCounters);
    [[nodiscard]] QString otherCounters();

    const AppSettings m_settings;
    Patience m_patience;
    Database m_database;
    std::optional<DbConnection> m_connection;
    QString m_terms; ///< what all parts build on
    QStringList m_parts;
};
