#pragma once

#include "app/Station.h"
#include "booking/BookingClipboard.h"
#include "counter/PaymentList.h"
#include "support/TestStation.h"

#include <QStringList>

/// A counter whose person confirms everything as an administrator and remembers what was told. It does what a line of
/// text says, on 14 November 2026:
///     book 18:00 3 Whole        clear 18:00 4 Left        extra 18:00 8 Smith        noextra 18:00 8 Smith
///     rate 18:00 8 Smith        wait 18:00 7 Jones        cut                     paste 19:00 7
///     sell 18:00 8 Smith
/// The name is who is booked, who stands in the grid, or who waits. "cut" takes the first entry of the waiting list,
/// and "paste" books it; "sell" sells the hour at 40.00 with two Cola at 2.50.
class DeedCounter : private Prompts
{
public:
    explicit DeedCounter(const QString &connectionString, int number = 1, const QStringList &pairs = sharedPairs);

    /// Gives "done", what was told, or "failed: " and the error.
    QString act(const QString &deed);
    /// Does all, separated by "; "; one that is not done fails the test.
    void actAll(const QString &deeds);
    /// What was told since the last time.
    QStringList takeTold() { return std::exchange(m_told, {}); }

    Station station;

private:
    QString attempt(const QStringList &words);
    QString paste(const SlotKey &slot);
    QString sell(const BookedHour &hour);

    void refuse(const QString &text, const QString & /*title*/ = {}) override { m_told << text; }
    void inform(const QString &text, const QString & /*title*/, MessageIcon /*icon*/) override { m_told << text; }
    Answer ask(const Question &question) override { return question.buttons.front(); }
    QString askText(const QString & /*question*/, int /*maxLength*/, const QString & /*title*/) override
    {
        return QStringLiteral("rain");
    }
    std::optional<Verification> verifyStaff(const QString &what) override;
    void showError(const QString &message, const QString &description) override { m_told << message + description; }

    BookingClipboard m_clipboard;
    QStringList m_told;
};
