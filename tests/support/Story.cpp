#include "support/Story.h"

#include "app/BusinessDay.h"
#include "app/ConnectionOptions.h"
#include "plan/LayoutPlan.h"
#include "schedule/DayModel.h"
#include "support/CuttingProxy.h"

#include <QFile>
#include <QHelpEvent>
#include <QTabWidget>
#include <QTableView>

using namespace Qt::StringLiterals;

QByteArray centre(const PrivateServer &server, const QMap<QString, QString> &changed)
{
    QMap<QString, QString> system{{u"fields"_s, u"9"_s},
                                  {u"counters"_s, u"3"_s},
                                  {u"hour_start"_s, u"8"_s},
                                  {u"hour_end"_s, u"2"_s},
                                  {u"database_user"_s, u"counter"_s},
                                  {u"database_server"_s, server.socketPath()}};
    QString spots;
    for (int field = 0; field < 9; ++field) {
        system[u"pitch"_s + QString::number(field)] = u"F"_s + QString::number(field);
        spots += u"Coord%1=%1, 0, %1.9, 1\n"_s.arg(QString::number(field));
    }
    system.insert(changed);
    QString text = u"[System]\n"_s;
    for (auto key = system.cbegin(); key != system.cend(); ++key)
        text += key.key() + u'=' + key.value() + u'\n';
    return (text + u"[Shared]\nShared0=0&1\nShared1=0&2\n[HotSpot]\n"_s + spots).toUtf8();
}

int rowOf(const QString &hour)
{
    return rowOfClockHour({8, 2}, hour.left(2).toInt() % 24);
}

QString shownBookings()
{
    const auto *model = WindowDriver::control<QTableView>(grid)->model();
    QStringList lines;
    for (int row = 0; row < model->rowCount(); ++row)
        if (const QString booker = model->index(row, DayModel::BookerName).data().toString(); !booker.isEmpty())
            lines << model->index(row, DayModel::HourRange).data().toString().left(5) + u' ' + booker;
    return lines.join(u", "_s);
}

QString textOf(const QString &name)
{
    const QObject *control = WindowDriver::find(name);
    for (const char *property : {"plainText", "text", "windowTitle"})
        if (control && control->property(property).isValid())
            return control->property(property).toString();
    return u"-"_s;
}

EventLoopWatch::EventLoopWatch()
{
    constexpr int pulseMilliseconds = 20;
    m_pulse.setTimerType(Qt::PreciseTimer);
    m_pulse.setInterval(pulseMilliseconds);
    QObject::connect(&m_pulse, &QTimer::timeout, [this] { m_longest = std::max(m_longest, m_since.restart()); });
}

void EventLoopWatch::begin()
{
    m_longest = 0;
    m_since.start();
    m_pulse.start();
}

qint64 EventLoopWatch::longestGap()
{
    m_pulse.stop();
    return std::max(m_longest, m_since.elapsed());
}

void Story::initTestCase()
{
    qputenv("XDG_CONFIG_HOME", m_config.path().toUtf8());
    qApp->installEventFilter(this);
    QApplication::setQuitOnLastWindowClosed(false);
}

void Story::init()
{
    m_server.freshDatabase();
    m_server.exec(u"INSERT INTO tbl_staff (st_login, st_password, st_access) VALUES "
                  "('anna','secret1',0), ('boss','secret2',1);"
                  "INSERT INTO tbl_system SET sys_counter=1, sys_doclose=1;"
                  "INSERT INTO tbl_member SET m_idno='M100007', m_name='Maria M.', m_org='Rovers', m_tel='777'"_s);
    writeSettings(centre(m_server));
    m_now = QDateTime({2026, 11, 14}, {14, 59, 59});
    m_errors = 0;
    d = std::make_unique<WindowDriver>();
}

void Story::cleanup()
{
    d.reset();
    m_program.reset();
    QFile::remove(m_config.filePath(u"tamsora-counter1.json"_s));
    if (QTest::currentTestFailed())
        server(u"restarts"_s);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

bool Story::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show && watched->objectName() == u"frm_ErrorDisplay")
        ++m_errors;
    return false;
}

void Story::writeSettings(const QByteArray &text) const
{
    QFile file(m_config.filePath(u"tamsora.ini"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
}

void Story::start()
{
    m_program = std::make_unique<Program>([this] { return m_now; });
    QVERIFY(m_program->start());
}

void Story::startBehind(const CuttingProxy &proxy)
{
    const QString path = ConnectionOptions::parse(proxy.connectionString()).server;
    writeSettings(centre(m_server, {{u"database_server"_s, path}}));
    start();
}

void Story::script(const QString &steps)
{
    const QStringList lines = steps.split(u" | "_s, Qt::SkipEmptyParts);
    for (const QString &line : lines)
        perform(line.section(u' ', 0, 0), line.section(u' ', 1));
}

void Story::perform(const QString &word, const QString &about)
{
    const QString first = about.section(u' ', 0, 0);
    const QString rest = about.section(u' ', 1);
    if (word == u"click")
        d->click(about);
    else if (word == u"closed")
        d->awaitClosed(about);
    else if (word == u"type")
        d->type(first, rest);
    else if (word == u"enter")
        d->pressKey(about, Qt::Key_Return);
    else if (word == u"key")
        d->step(about, [=, this] {
            const QKeyCombination key = QKeySequence(about)[0];
            QTest::keyClick(m_program->mainWindow(), key.key(), key.keyboardModifiers());
        });
    else if (word == u"page")
        d->step(about, [=, this] { part<QTabWidget>(u"SSTab1"_s)->setCurrentIndex(about.toInt()); });
    else if (word == u"select") {
        std::vector<int> selected;
        for (const QString &hour : about.split(u' '))
            selected.push_back(rowOf(hour));
        d->selectRows(grid, selected);
    } else if (word == u"verify")
        script(u"type txt_user %1 | type txt_password %2 | click btn_Go | closed frm_VerifyUser"_s.arg(first, rest));
    else if (word == u"answer")
        d->answer(about);
    else if (word == u"error") // one error window with this message and none behind it
        script(u"see lbl_Error "_s + about + u" | click btn_Close | closed frm_ErrorDisplay"_s);
    else if (word == u"errors")
        expect(about, [this] { return QString::number(m_errors); });
    else if (word == u"see") {
        d->await(about, [=] { return rest == u"-" || WindowDriver::find(first); });
        expect(rest, [=] { return textOf(first); });
    } else if (word == u"grid")
        expect(about, &shownBookings);
    else if (word == u"behind") // a control of the main window that is hidden, or behind another window
        expect(rest, [=, this] { return part(first)->property("text").toString(); });
    else if (word == u"field")
        script(u"behind txtInfo_FieldSelect "_s + about);
    else if (word == u"plan") // a click on a field of a plan
        d->clickAt(first, [rest](QWidget *plan) {
            return qobject_cast<LayoutPlan *>(plan)->fieldRect(rest.toInt()).center().toPoint();
        });
    else if (word == u"count") // the rows of a list of the main window
        expect(rest, [=, this] { return QString::number(part<QAbstractItemView>(first)->model()->rowCount()); });
    else if (word == u"tick")
        d->step(about, [=, this] {
            m_now.setTime(QTime::fromString(about, u"hh:mm:ss"_s));
            QMetaObject::invokeMethod(part<QTimer>(u"Clock"_s), "timeout");
        });
    else if (word == u"server")
        d->step(about, [=, this] { server(about); });
    else if (word == u"press")
        d->step(u"press "_s + about, [=] { press(about); });
    else if (word == u"keys")
        d->step(u"keys "_s + about, [=] { typeKeys(about); });
    else if (word == u"settled") // nothing is waited for any more
        d->await(word, [this] { return !m_program->station()->database.isWaiting(); });
    else if (word == u"watch")
        d->step(word, [this] { m_watch.begin(); });
    else if (word == u"alive") // since "watch"
        expect(u"alive"_s, [this] {
            constexpr qint64 mostMilliseconds = 500;
            const qint64 gap = m_watch.longestGap();
            return gap < mostMilliseconds ? u"alive"_s : u"away for "_s + QString::number(gap) + u" ms"_s;
        });
    else if (word == u"clock")
        d->step(about, [this] {
            m_program->mainWindow()->resize(1366, 768);
            part<QTimer>(u"Clock"_s)->stop();
        });
    else
        QFAIL(qPrintable(u"No such step: "_s + word));
}

void Story::play()
{
    QVERIFY2(d->run(), qPrintable(d->failure()));
}
void Story::play(const QString &steps)
{
    script(steps);
    play();
}

void Story::server(const QString &what)
{
    if (what == u"cuts")
        m_server.cutConnections();
    else if (what == u"pauses")
        m_server.pause();
    else if (what == u"resumes")
        m_server.resume();
    else if (what != u"comes")
        m_server.kill();
    if (what == u"comes" || what == u"restarts")
        m_server.start();
}

void Story::press(const QString &name)
{
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows)
        for (const QWidget *control : window->findChildren<QWidget *>(name))
            if (control->isVisible() && control->window() == window) {
                const QPoint middle = control->mapTo(window, control->rect().center());
                QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, middle);
                return;
            }
    QFAIL(qPrintable(u"Nothing to press: "_s + name));
}

void Story::typeKeys(const QString &keys)
{
    QVERIFY(QGuiApplication::focusWindow());
    for (const QChar key : keys)
        QTest::keyClick(QGuiApplication::focusWindow(), key.toLatin1());
}

void Story::hover(const QString &hour)
{
    auto *table = WindowDriver::control<QTableView>(grid);
    const QPoint point = table->visualRect(table->model()->index(rowOf(hour), DayModel::Paid)).center();
    QHelpEvent pointer(QEvent::ToolTip, point, table->viewport()->mapToGlobal(point));
    QCoreApplication::sendEvent(table->viewport(), &pointer);
}

void Story::book(const QString &hour, int field, const QString &name) const
{
    m_server.exec(u"INSERT INTO tbl_booking SET b_datetime='2026-11-14 "_s + hour + u":00', b_field="_s +
                  QString::number(field) + u", b_bookername='"_s + name + u"'"_s);
}

QString Story::rows(const QString &sql) const
{
    return m_server.rows(sql).join(u", "_s);
}
QString Story::bookings() const
{
    return rows(u"SELECT MID(b_datetime, 12, 5), b_field, b_bookername, b_specialrate FROM tbl_booking "
                "ORDER BY b_id"_s);
}
