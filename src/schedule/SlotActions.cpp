#include "schedule/SlotActions.h"

#include "app/Errors.h"
#include "app/RateType.h"
#include "booking/BlockBooking.h"
#include "booking/Cancelling.h"
#include "booking/ExtraTime.h"
#include "booking/Rates.h"
#include "booking/RemarkLog.h"
#include "booking/SlotWords.h"
#include "booking/frm_BlockBookingResult.h"
#include "booking/frm_Booker.h"
#include "booking/frm_WaitingList.h"
#include "look/Look.h"

#include <QProgressDialog>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int loadingForm = int(ErrorCode::LoadingForm);
constexpr int database = int(ErrorCode::Database);

QString bookerOnClipboard(const BookingClipboard &clipboard)
{
    return clipboard.fromWaitingList ? clipboard.cut.booker.name : clipboard.copiedBooker.name;
}

} // namespace

SlotActions::SlotActions(Station &station, BookingClipboard &clipboard, Selection selection, QWidget *window)
    : QObject(window),
      m_station(station),
      m_clipboard(clipboard),
      m_selection(std::move(selection)),
      m_window(window),
      m_menu(new QMenu(window))
{
    m_menu->setObjectName(u"mnu_Mouse"_s);
    buildMenu();
}

void SlotActions::addEntries(const std::vector<MenuEntry> &entries)
{
    fillMenu(*m_menu, entries);
    m_entries.insert(m_entries.end(), entries.cbegin(), entries.cend());
}

void SlotActions::buildMenu()
{
    const auto extraTime = [this](qint16 minutes) {
        const QString number = QString::number(minutes);
        return MenuEntry{u"mnu_Add"_s + number, u"Add "_s + number + u" minutes extra time"_s, u"extra-time"_s,
                         [this, minutes] { addExtraTime(minutes); }};
    };
    const EntryButton bookButton{u"btn_Book"_s, u"&Book"_s, 1};
    const EntryButton clearButton{u"btn_Clear"_s, u"C&lear"_s, 2};
    const EntryButton waitButton{u"btn_AddEntry"_s, u"&Waiting list"_s, 3};
    const EntryButton payButton{u"btn_Paid"_s, u"&Pay"_s, 4};
    addEntries(
        {{u"mnu_Book"_s, u"&Book…"_s, u"book"_s, [this] { book(); }, bookButton},
         {u"mnu_AddEntry"_s, u"Put on the &waiting list…"_s, u"add-entry"_s, [this] { addWaitingEntry(); }, waitButton},
         {},
         // Their keys are handled by the page, which sees every key first; here they are only named.
         {u"mnu_Copy"_s, u"&Copy booker\tCtrl+C"_s, u"copy"_s, [this] { copy(); }},
         {u"mnu_Paste"_s, u"&Paste booker\tCtrl+V"_s, u"paste"_s, [this] { paste(); }},
         {u"mnu_BlockBook1"_s, u"Block book &4 weeks"_s, u"block"_s, [this] { blockBook(4); }},
         {u"mnu_BlockBook2"_s, u"Block book &8 weeks"_s, u"block"_s, [this] { blockBook(8); }},
         {},
         extraTime(15),
         extraTime(30),
         extraTime(45),
         {u"mnu_ClearAddition"_s, u"Remove e&xtra time"_s, {}, [this] { clearAddition(); }},
         {},
         {u"mnu_Pay"_s, u"Put on the pa&yment list"_s, u"pay"_s, [this] { pay(); }, payButton},
         {u"mnu_PrintInvoice"_s, u"Print an &invoice…"_s, u"invoice"_s, [this] { printInvoice(); }},
         {}});
    m_rates = m_menu->addMenu(Look::icon(u"rate"_s), u"&Rate"_s);
    addRateEntry(u"mnu_SetNormal"_s, u"normal"_s, RateType::normal);
    addRateEntry(u"mnu_SetMember"_s, u"member"_s, RateType::member);
    addRateEntry(u"mnu_setStudent"_s, u"student"_s, RateType::student);
    addEntries({{},
                {u"mnu_History"_s, u"&History…"_s, {}, [this] { showHistory(); }, {}, QKeySequence(u"Ctrl+H"_s)},
                {u"mnu_Delete"_s, u"C&lear booking…"_s, u"clear"_s, [this] { clear(); }, clearButton}});
    for (QAction *action : m_menu->actions()) {
        if (action->shortcut().isEmpty())
            continue;
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        m_window->addAction(action);
    }
}

void SlotActions::addRateEntry(const QString &name, const QString &rateInWords, const QString &rateType)
{
    fillMenu(*m_rates, {{name, u"Set this slot as '"_s + rateInWords + u"' slot"_s, {}, [this, rateType] {
                             changeRate(rateType);
                         }}});
}

void SlotActions::addSpecialGroup(int group)
{
    const QString number = QString::number(group);
    addRateEntry(u"mnu_SetSpecialGroup_"_s + number, u"special group "_s + number, RateType::specialGroup(group));
}

bool SlotActions::hasField()
{
    if (m_station.settings.MaxFieldIndex >= 0)
        return true;
    m_station.prompts.inform(u"No field is set up: nothing can be booked."_s);
    return false;
}

bool SlotActions::hasRows(const DaySelection &selection)
{
    if (!hasField())
        return false;
    if (!selection.selected.empty())
        return true;
    m_station.prompts.inform(u"Select one or more hours first."_s);
    return false;
}

bool SlotActions::run(const std::function<void(const DaySelection &)> &operation, int errorCode)
{
    const DaySelection selection = m_selection();
    if (!hasRows(selection))
        return false;
    const bool ok = guarded(m_station.prompts, ErrorCode{errorCode}, [&] { operation(selection); });
    Q_EMIT dayTouched(ok);
    return ok;
}

void SlotActions::book()
{
    run(
        [this](const DaySelection &selection) {
            const auto verification = startBooking(m_station, selection);
            if (!verification)
                return;
            frm_Booker window(m_station, *verification, selection, m_window);
            connect(&window, &frm_Booker::failed, this, [this] { Q_EMIT dayTouched(false); });
            window.exec();
        },
        loadingForm);
}

void SlotActions::clear()
{
    std::vector<SlotKey> freed;
    run([&](const DaySelection &selection) { clearSelection(m_station, selection, freed); }, loadingForm);
    if (!freed.empty())
        Q_EMIT slotsFreed(freed);
}

void SlotActions::addWaitingEntry()
{
    if (!hasField())
        return;
    const DaySelection selection = m_selection();
    bool added = false;
    guarded(m_station.prompts, ErrorCode::Database, [&] {
        const auto verification = m_station.prompts.verifyStaff(u"Put on the waiting list of "_s +
                                                                m_station.settings.fieldName(selection.field));
        if (!verification)
            return;
        frm_WaitingList window(m_station, verification->staffName, selection.day, selection.field, m_window);
        if (selection.current >= 0)
            window.setWantedHour(selection.row(selection.current).hourText());
        added = window.exec() == QDialog::Accepted;
    });
    if (added)
        Q_EMIT waitingListTouched();
}

void SlotActions::copy()
{
    if (!hasField())
        return;
    guarded(m_station.prompts, ErrorCode::Database, [this] { copySlot(m_station, m_clipboard, m_selection()); });
    Q_EMIT clipboardChanged();
}

void SlotActions::paste()
{
    if (run([this](const DaySelection &selection) { pasteSelection(m_station, m_clipboard, selection); }, database))
        Q_EMIT waitingListTouched();
    Q_EMIT clipboardChanged();
}

void SlotActions::showHistory()
{
    const DaySelection selection = m_selection();
    if (!hasRows(selection))
        return;
    const SlotKey slot = selection.slotOf(selection.row(selection.current));
    QString history;
    if (guarded(m_station.prompts, ErrorCode::Database,
                [&] { history = slotHistory(m_station.database, slot).trimmed(); }))
        m_station.prompts.inform(taskInWords(u"History of"_s, m_station.settings, slot) + u"\n\n"_s +
                                 (history.isEmpty() ? u"Nothing was done to this hour yet."_s : history));
}

void SlotActions::pay()
{
    const DaySelection selection = m_selection();
    if (hasRows(selection))
        Q_EMIT paymentWanted(selection);
}

void SlotActions::printInvoice()
{
    const DaySelection selection = m_selection();
    if (hasRows(selection))
        Q_EMIT invoiceWanted(selection);
}

void SlotActions::addExtraTime(qint16 minutes)
{
    run([=, this](const DaySelection &selection) { AddExtraTime(m_station, selection, minutes); }, database);
}

void SlotActions::clearAddition()
{
    run([this](const DaySelection &selection) { clearExtraTime(m_station, selection); }, database);
}

void SlotActions::changeRate(const QString &rateType)
{
    run([&](const DaySelection &selection) { changeRateType(m_station, selection, rateType); }, database);
}

void SlotActions::blockBook(int weeks)
{
    std::vector<BlockBookingHour> results;
    std::size_t planned = 0;
    QString heading;
    const bool ok = run(
        [&](const DaySelection &selection) {
            heading = bookerOnClipboard(m_clipboard) + u" on "_s + m_station.settings.fieldName(selection.field);
            planned = selection.selected.size() * std::size_t(weeks);
            // Made after the verification: a progress window shows itself after a while, and in front of any other.
            std::unique_ptr<QProgressDialog> progress;
            const auto tell = [&](int week) {
                if (!progress) {
                    progress = std::make_unique<QProgressDialog>(u"Booking "_s + QString::number(weeks) + u" weeks…"_s,
                                                                 QString(), 0, weeks, m_window);
                    progress->setWindowModality(Qt::WindowModal);
                    progress->setValue(0);
                }
                progress->setValue(week);
            };
            bookBlock(m_station, m_clipboard, selection, weeks, tell, results);
        },
        database);
    if (!results.empty())
        frm_BlockBookingResult(results, planned, heading, m_window).exec();
    if (ok)
        Q_EMIT waitingListTouched();
    Q_EMIT clipboardChanged();
}
