#pragma once

#include "Program.h"
#include "WindowDriver.h"
#include "app/Application.h"
#include "schedule/frm_Main.h"
#include "support/PrivateServer.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

inline const QString grid = QStringLiteral("ListView_Book");
inline const QString logIn =
    QStringLiteral("type txtLogin anna | type txtPassword secret1 | click btn_GO | closed frm_Login | clock by hand");
/// Chooses field 6, which shares its ground with no other.
inline const QString court = QStringLiteral(" | key R");

/// The settings of a centre with nine fields; no names, no hot spots: those are the fields' numbers.
QByteArray centre(const PrivateServer &server, const QMap<QString, QString> &changed = {});
int rowOf(const QString &hour);
/// What the grid shows: "16:00 Team A, 24:00 Team B".
QString shownBookings();
/// What a control says, or a window's title; "-" when there is no such control to be seen.
QString textOf(const QString &name);

/// Measures how long the event loop was away.
class EventLoopWatch
{
public:
    EventLoopWatch();
    void begin();
    /// Milliseconds, since begin().
    [[nodiscard]] qint64 longestGap();

private:
    QTimer m_pulse;
    QElapsedTimer m_since;
    qint64 m_longest = 0;
};

class CuttingProxy;

/// The language of the stories: what happens at a counter in the real windows, on 14 November 2026, from 14:59:59.
class Story : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

    void writeSettings(const QByteArray &text) const;
    void start();
    void startBehind(const CuttingProxy &proxy);
    /// Adds steps, separated by " | ", each a word and what it is about; see the words in perform().
    void script(const QString &steps);
    void perform(const QString &word, const QString &about);
    void play();
    void play(const QString &steps);
    template <typename Ask>
    void expect(const QString &expected, Ask ask)
    {
        d->step(expected, [=] { QCOMPARE(QString(ask()), expected); });
    }
    void server(const QString &what);
    /// A person's press on a control, whether a window is open over it or not, and keys to the window that has them.
    static void press(const QString &name);
    static void typeKeys(const QString &keys);
    static void hover(const QString &hour);

    void book(const QString &hour, int field, const QString &name) const;
    [[nodiscard]] QString rows(const QString &sql) const;
    [[nodiscard]] QString bookings() const;
    template <typename Control = QWidget>
    [[nodiscard]] Control *part(const QString &name) const
    {
        return m_program->mainWindow()->findChild<Control *>(name);
    }

    PrivateServer m_server;
    QTemporaryDir m_config;
    QDateTime m_now;
    std::unique_ptr<Program> m_program;
    std::unique_ptr<WindowDriver> d;
    int m_errors = 0; ///< error windows shown in this story
    EventLoopWatch m_watch;
};

#define STORY_MAIN(Stories)                                                                                            \
    int main(int argc, char **argv)                                                                                    \
    {                                                                                                                  \
        Application application(argc, argv);                                                                           \
        Stories stories;                                                                                               \
        return QTest::qExec(&stories, argc, argv);                                                                     \
    }
