#include "counter/TillActions.h"

#include "app/ActivityLog.h"
#include "app/Errors.h"
#include "app/SqlText.h"
#include "counter/CounterNumbers.h"
#include "counter/Invoice.h"
#include "counter/PayingHours.h"
#include "counter/Receipts.h"
#include "counter/frm_Calculator.h"
#include "counter/frm_Change.h"
#include "counter/frm_DrawerOpen.h"
#include "counter/frm_MiscItem.h"
#include "counter/frm_PrintReceipt.h"

#include <QApplication>
#include <QDir>
#include <QScopeGuard>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int longestName = 40;

QString timeOf(const QDateTime &moment)
{
    return moment.toString(u"hh:mm"_s);
}

} // namespace

TillActions::TillActions(Station &station, QWidget *window)
    : QObject(window), m_station(station), m_window(window), m_till(station.clock), m_printing(station, m_printers)
{
}

void TillActions::open()
{
    const int counter = m_station.settings.ThisCounter;
    if (!m_till.open(tillFileName(counter)))
        m_station.prompts.inform(sql(u"Another copy of this program serves counter %1 here and keeps its payment "
                                     "list. The list of this copy is lost when it ends."_s,
                                     counter));
    if (!m_till.damagedFile().isEmpty())
        m_station.prompts.inform(u"The file of the payment list could not be read. It was put aside:\n"_s +
                                 QDir::toNativeSeparators(m_till.damagedFile()));
    bool recorded = false;
    quietly(m_station.database, [&] { recorded = wasRecorded(); });
    if (recorded) {
        tellOfRecord();
        closeSale();
    } else if (!m_till.list().isEmpty()) {
        m_station.prompts.inform(u"The payment list of "_s + timeOf(m_till.begun()) + u" is back"_s);
    }
    changed();
}

bool TillActions::change(const std::function<void(PaymentList &)> &step)
{
    if (!isOpen() || !guarded(m_station.prompts, ErrorCode::Unknown, [&] { m_till.change(step); }))
        return false;
    m_thrownAway = {};
    changed();
    return true;
}

void TillActions::changed()
{
    m_refused.clear();
    if (!m_till.isKept() && !std::exchange(m_toldOfFile, true))
        m_station.prompts.inform(u"The payment list cannot be kept in its file, so a power cut would lose it:\n"_s +
                                 QDir::toNativeSeparators(tillFileName(m_station.settings.ThisCounter)));
    Q_EMIT listChanged();
}

bool TillActions::isOpen()
{
    bool open = !m_till.isInDoubt();
    if (!open)
        guarded(m_station.prompts, ErrorCode::Database, [&] {
            open = !wasRecorded();
            if (!open) {
                tellOfRecord();
                closeSale();
            }
        });
    return open;
}

bool TillActions::wasRecorded()
{
    if (!m_till.isInDoubt())
        return false;
    const auto number = recordedSale(m_station, m_till.list(), m_till.saleBefore(), m_till.changed());
    m_till.setInDoubt(false);
    if (!number)
        return false;
    m_till.setSold(*number);
    return true;
}

void TillActions::tellOfRecord()
{
    m_station.prompts.inform(
        sql(u"The payment list of %1 was recorded as transaction %2."_s, timeOf(m_till.begun()), m_till.lastSale()));
    WriteActivityLog(m_station, m_station.CurrentStaff, u"Sales made, drawer open"_s);
    Q_EMIT hoursTouched();
}

void TillActions::closeSale()
{
    m_till.clear();
    changed();
    Q_EMIT stockTouched();
}

void TillActions::addHours(const DaySelection &selection)
{
    if (!isOpen())
        return;
    guarded(m_station.prompts, ErrorCode::Database, [&] {
        payHours(m_station, selection, m_till.list(), [this](const BookedHour &hour, const SlotPrice &price) {
            m_till.change([&](PaymentList &list) { list.addHour(hour, price); });
        });
    });
    changed();
}

QString TillActions::addItem(const StoreItem &item, const QString &number)
{
    if (item.isMisc()) {
        frm_MiscItem window(m_station.prompts, item.name, m_window);
        if (window.exec() == QDialog::Accepted)
            change([&](PaymentList &list) { list.addMisc(item.name, window.price()); });
        return {};
    }
    frm_Calculator window(m_station.prompts, item.name, item.price, m_window);
    window.preset(number);
    if (window.exec() == QDialog::Accepted) {
        Q_EMIT quantityChosen(window.quantity());
        addQuantity(item.name, item.price, window.quantity());
    }
    return window.scanned();
}

void TillActions::addQuantity(const QString &name, const QString &unitPrice, const QString &quantity)
{
    change([&](PaymentList &list) { list.addItem(name, unitPrice, quantity); });
}

void TillActions::remove(int line)
{
    if (line < 0)
        return;
    const auto index = std::size_t(line);
    std::vector<RefusedLine> refused = m_refused;
    std::erase_if(refused, [=](const RefusedLine &other) { return other.line == index; });
    for (RefusedLine &other : refused)
        other.line -= other.line > index ? 1 : 0;
    if (!change([index](PaymentList &list) { list.remove(index); }))
        return;
    m_refused = std::move(refused);
    Q_EMIT listChanged();
}

void TillActions::reset()
{
    if (!isOpen())
        return;
    if (!m_till.list().isEmpty())
        m_thrownAway = m_till.list();
    closeSale();
}

void TillActions::bringBack()
{
    if (canBringBack())
        change([this](PaymentList &list) { list = std::exchange(m_thrownAway, {}); });
}

void TillActions::hold()
{
    if (m_till.list().isEmpty() || !isOpen())
        return;
    const QString name =
        m_station.prompts.askText(u"Under which name shall the payment list wait?"_s, longestName, u"Hold"_s).trimmed();
    if (name.isEmpty())
        return;
    m_thrownAway = {};
    m_till.hold(name);
    changed();
}

void TillActions::recall(std::size_t index)
{
    if (!m_till.list().isEmpty()) {
        m_station.prompts.inform(u"Pay, hold or reset the present payment list first."_s);
        return;
    }
    m_till.recall(index);
    changed();
}

void TillActions::pay()
{
    if (m_till.list().total().isEmpty() || !isOpen())
        return;
    m_thrownAway = {};
    frm_Change window(m_station, m_till.list().total(),
                      {[&] { return settleList(window); }, [this] { printLastReceipt(); }}, m_window);
    connect(&window, &frm_Change::changeGiven, this, &TillActions::changeGiven);
    connect(&window, &frm_Change::saleClosed, this, &TillActions::closeSale);
    window.exec();
}

bool TillActions::settleList(frm_Change &window)
{
    // The grid is read when the change is shown, or the window closed.
    const auto touched =
        qScopeGuard([this] { QMetaObject::invokeMethod(this, &TillActions::hoursTouched, Qt::QueuedConnection); });
    if (m_till.isSold())
        return true;
    if (wasRecorded()) {
        tellOfRecord();
        return true;
    }
    m_till.setInDoubt(true); // until it is known what became of it
    Settlement settlement = settle(m_station, m_till.list(), [this](int before) { m_till.setSaleBefore(before); });
    m_till.setInDoubt(false);
    if (!settlement.transaction) {
        refuse(std::move(settlement.refused), window);
        return false;
    }
    m_till.setSold(*settlement.transaction);
    return true;
}

void TillActions::refuse(std::vector<RefusedLine> refused, frm_Change &window)
{
    m_refused = std::move(refused);
    QStringList reasons;
    for (const RefusedLine &line : m_refused)
        reasons << line.why;
    m_station.prompts.refuse(reasons.join(u'\n') +
                             u"\n\nNothing was recorded. Remove what has changed and pay again."_s);
    // It closes when it does not wait for this any more.
    QMetaObject::invokeMethod(&window, &QDialog::reject, Qt::QueuedConnection);
    Q_EMIT listChanged();
}

void TillActions::noSale()
{
    WriteActivityLog(m_station, m_station.CurrentStaff, u"No Sale button pressed, drawer open"_s);
    frm_DrawerOpen(m_station, m_window).exec();
}

QStringList TillActions::namesOfWaitingLists() const
{
    QStringList names = namesOfHeldLists();
    if (!m_till.list().isEmpty())
        names.prepend(u"the open one ("_s + timeOf(m_till.begun()) + u", "_s + m_till.list().total() + u')');
    return names;
}

QStringList TillActions::namesOfHeldLists() const
{
    QStringList names;
    for (const Till::Held &held : m_till.held())
        names << held.name + u" ("_s + timeOf(held.since) + u", "_s + held.list.total() + u')';
    return names;
}

QStringList TillActions::listsHolding(const QString &itemName) const
{
    const auto holds = [&](const PaymentList &list) {
        return std::ranges::any_of(list.lines(),
                                   [&](const PaymentLine &line) { return !line.hour && line.text == itemName; });
    };
    QStringList names;
    if (holds(m_till.list()))
        names << u"the open payment list"_s;
    for (const Till::Held &held : m_till.held())
        if (holds(held.list))
            names << u"on hold: "_s + held.name;
    return names;
}

void TillActions::tellOfHeldLists()
{
    const QStringList names = namesOfHeldLists();
    if (!names.isEmpty())
        m_station.prompts.inform(u"Payment lists on hold: "_s + names.join(u", "_s));
}

void TillActions::print(const std::function<std::optional<Receipt>()> &describe, bool isShown)
{
    std::optional<Receipt> receipt;
    if (!guarded(m_station.prompts, ErrorCode::Database, [&] { receipt = describe(); }) || !receipt)
        return;
    QWidget *over = QApplication::activeModalWidget() ? QApplication::activeModalWidget() : m_window;
    if (isShown || ReceiptPrinting::printerWithoutAsking().isEmpty())
        frm_PrintReceipt(*receipt, m_printing, over).exec();
    else
        m_printing.print(*receipt, over);
}

void TillActions::printOldReceipt()
{
    print([this] { return askForOldReceipt(m_station); }, true); // there the printer can be chosen anew
}

void TillActions::printLastReceipt()
{
    print([this]() -> std::optional<Receipt> {
        const int counter = m_station.settings.ThisCounter;
        int sale = m_till.lastSale();
        if (sale == 0) { // none since the program was started
            DbConnection connection(m_station.database);
            sale = highestTransactionNumber(connection, counter);
        }
        if (sale > 0)
            return receiptOfTransaction(m_station, sale);
        m_station.prompts.inform(u"Nothing has been sold at this counter yet."_s);
        return std::nullopt;
    });
}

void TillActions::printInvoice(const DaySelection &selection)
{
    print([&] { return invoiceOfSelection(m_station, selection); });
    Q_EMIT hoursTouched();
}
