#include "schedule/HouseWindows.h"

#include "app/Errors.h"
#include "app/Station.h"
#include "counter/TillActions.h"
#include "options/OptionsPages.h"
#include "records/frm_Item.h"
#include "records/frm_Members.h"
#include "records/frm_Members_Dynamic.h"
#include "records/frm_Students.h"
#include "reports/frm_Mail.h"
#include "reports/frm_Summary.h"

#include <algorithm>

using namespace Qt::StringLiterals;

HouseWindows::HouseWindows(Station &station, const TillActions &till, QWidget *window)
    : QObject(window), m_station(station), m_till(till), m_window(window)
{
}

template <typename Window, typename... Arguments>
void HouseWindows::openBeside(const QString &name, Arguments &&...arguments)
{
    guarded(m_station.prompts, ErrorCode::LoadingForm, [&] {
        auto *open = m_window->findChild<Window *>(name, Qt::FindDirectChildrenOnly);
        if (!open) {
            open = new Window(m_station, std::forward<Arguments>(arguments)..., m_window);
            open->setAttribute(Qt::WA_DeleteOnClose);
            connect(open, &RegisterWindow::customerKept, this, &HouseWindows::customerKept);
            connect(open, &QDialog::finished, this, &HouseWindows::customerKept);
        }
        open->setVisible(true);
        open->raise();
        open->activateWindow();
    });
}

void HouseWindows::openMembers()
{
    openBeside<frm_Members>(u"frm_Members"_s);
}

void HouseWindows::openStudents()
{
    openBeside<frm_Students>(u"frm_Students"_s);
}

void HouseWindows::openGroup(int group)
{
    // Another group's window gives way: they carry the same name.
    const auto others = m_window->findChildren<frm_Members_Dynamic *>(QString(), Qt::FindDirectChildrenOnly);
    for (frm_Members_Dynamic *other : others)
        if (!other->close())
            return;
    guarded(m_station.prompts, ErrorCode::LoadingForm, [&] {
        auto *window = new frm_Members_Dynamic(m_station, group, m_window);
        window->setAttribute(Qt::WA_DeleteOnClose);
        connect(window, &RegisterWindow::customerKept, this, &HouseWindows::customerKept);
        connect(window, &QDialog::finished, this, &HouseWindows::customerKept);
        window->setVisible(true);
    });
}

bool HouseWindows::closeAll()
{
    const auto open = m_window->findChildren<QDialog *>(QString(), Qt::FindDirectChildrenOnly);
    return std::all_of(open.begin(), open.end(),
                       [](QDialog *window) { return !window->isVisible() || window->close(); });
}

QString HouseWindows::administratorFor(const QString &what)
{
    const auto person = m_station.prompts.verifyStaff(what);
    return person && person->isAdmin() ? person->staffName : QString();
}

void HouseWindows::openItems()
{
    if (administratorFor(u"Open the catalogue"_s).isEmpty())
        return;
    guarded(m_station.prompts, ErrorCode::LoadingForm, [this] {
        frm_Item(
            m_station, [this](const QString &item) { return m_till.listsHolding(item); }, m_window)
            .exec();
    });
    Q_EMIT itemsTouched();
}

void HouseWindows::openOptions()
{
    const QString administrator = administratorFor(u"Open the options"_s);
    if (administrator.isEmpty())
        return;
    guarded(m_station.prompts, ErrorCode::LoadingForm, [&] { ::openOptions(m_station, administrator, m_window); });
    Q_EMIT itemsTouched();
}

void HouseWindows::openSummary(const QString &day)
{
    guarded(m_station.prompts, ErrorCode::LoadingForm, [&] {
        auto *window = new frm_Summary(m_station, day, m_window);
        window->setAttribute(Qt::WA_DeleteOnClose);
        connect(window, &frm_Summary::mailWanted, this, &HouseWindows::mailReport);
        window->setVisible(true);
    });
}

void HouseWindows::openMail(const QString &subject, const QString &text)
{
    guarded(m_station.prompts, ErrorCode::LoadingForm,
            [&] { frm_Mail(m_station, subject, text, {}, m_window).exec(); });
}

void HouseWindows::mailReport(const QByteArray &html, const QString &subject)
{
    guarded(m_station.prompts, ErrorCode::LoadingForm, [&] {
        frm_Mail(m_station, subject, {}, {{subject + u".html"_s, html}}, m_window).exec();
    });
}
