#pragma once

#include "BareClient.h"
#include "Comparison.h"
#include "app/Station.h"

#include <stdexcept>

class QWidget;
class page_Counter;

inline constexpr int benchHalf = 1; // of the pitch 0
inline constexpr int sharedPitch = 0;
inline constexpr int plainCourt = 6;
inline constexpr int blockWeeks = 8;

inline const QString benchStaff = QStringLiteral("bench");
inline const QString benchPassword = QStringLiteral("bench2026");

/// Confirms everything; a refusal or an error ends the measurements.
class Confirming : public Prompts
{
public:
    void refuse(const QString &text, const QString & /*title*/) override { fail(text); }
    void inform(const QString &text, const QString & /*title*/, MessageIcon /*icon*/) override { fail(text); }
    Answer ask(const Question &question) override { return question.buttons.front(); }
    QString askText(const QString &question, int /*maxLength*/, const QString & /*title*/) override { return question; }
    std::optional<Verification> verifyStaff(const QString & /*what*/) override
    {
        return Verification{benchStaff, AccessLevel::Staff};
    }
    void showError(const QString &message, const QString &description) override
    {
        fail(message + QStringLiteral(": ") + description);
    }

private:
    [[noreturn]] static void fail(const QString &text) { throw std::runtime_error(text.toStdString()); }
};

inline void require(bool ok, const char *what)
{
    if (!ok)
        throw std::runtime_error(what);
}

/// The measurements; each part stands in a file of its own.
class Benchmark
{
public:
    Benchmark();

    /// All of "refresh", "operations", "till", "registers", "reports", "flushed" and "windows", or only the ones that
    /// are named.
    void run(const QStringList &wanted);

private:
    /// Some work of the program. Before each round `before` is sent; after it all bookings of the days of
    /// the operations are taken away.
    struct Operation
    {
        QString name;
        int rounds;
        std::function<void()> ours;
        QByteArrayList before = {};
    };

    // An hour in which every counter is open.
    static QDateTime halfPastTwo();
    void makeDatabase();
    void takeAwayBookings();
    /// What the program sends for some work; the work is done.
    QByteArrayList statementsOf(const std::function<void()> &work);
    double round(const Operation &operation, const std::function<void()> &work);
    /// Warms everything up and gives the statements.
    QByteArrayList firstRound(const Operation &operation);
    void measure(const Operation &operation, const QByteArrayList &statements, int i, Comparison &comparison);
    /// Compares and prints; gives the statements.
    QByteArrayList compare(const Operation &operation);
    void compareOperations();
    /// Four hours and six goods, sold again and again.
    Operation sale(const QString &name, int rounds);
    void makeItems(int count);
    void compareTill();
    static double repainted(QWidget &window, const std::function<void()> &work);
    /// Against painting the whole page once.
    static void comparePaintedLine(page_Counter &page, const QString &name);
    /// From a typed letter to the painted list of all that it finds, against the statement alone.
    void compareRegisters();
    /// The window for the money against an empty dialog of its size.
    void compareDialog();
    /// Eleven lines on paper as a file against a page with nothing on it.
    static void comparePdf();
    /// With a server that writes to the disk at every commit one operation is one commit, however many rows it has.
    void compareFlushed();
    void compareRefresh();
    /// Four visitors at the same time, against the bare statements of a page: 10 milliseconds a page are 100 pages a
    /// second.
    void compareReports();
    void compareWindows();

    AppSettings m_settings;
    ConnectionOptions m_options;
    BareClient m_root;
    BareClient m_bare;
    Confirming m_prompts;
    Station m_station;
    QDate m_day = QDate::currentDate().addDays(30);
};
