#include "counter/ShiftActions.h"

#include "app/Errors.h"
#include "app/ReportAddress.h"
#include "app/SqlText.h"
#include "app/Staff.h"
#include "app/Station.h"
#include "counter/CashAmountDialog.h"
#include "counter/HandOver.h"
#include "counter/ShiftSlip.h"
#include "counter/TillActions.h"
#include "counter/frm_PrintReceipt.h"
#include "counter/frm_ShiftEnd.h"

#include <QApplication>
#include <QDesktopServices>
#include <QUrl>

using namespace Qt::StringLiterals;

ShiftActions::ShiftActions(Station &station, const TillActions &till, QWidget *window)
    : QObject(window), m_station(station), m_till(till), m_window(window), m_printing(station, m_printers)
{
}

void ShiftActions::endShift(QStringView name)
{
    m_station.shiftName = name.toString();
    // "a MORNING", but "an EVENING" shift.
    const QString article = name == u"evening" ? u"an"_s : u"a"_s;
    if (!m_station.prompts.confirm(
            sql(u"Are you REALLY sure that you closing %1 %2 Shift?"_s, article, m_station.shiftName.toUpper()), {}))
        return;
    if (!m_mayLeave())
        return;
    frm_ShiftEnd window(m_station, m_till.namesOfWaitingLists(), m_window);
    connect(&window, &frm_ShiftEnd::slipWanted, this, &ShiftActions::printSlip);
    connect(&window, &frm_ShiftEnd::reportWanted, this, &ShiftActions::openReport);
    window.exec();
    if (window.isRecorded())
        Q_EMIT shiftClosed();
}

void ShiftActions::handOver()
{
    const auto taker = m_station.prompts.verifyStaff(u"Take over the counter"_s);
    if (!taker)
        return;
    if (cleanCredential(taker->staffName) != taker->staffName) {
        m_station.prompts.refuse(
            sql(u"%1 cannot log in at a counter: a login has only letters A to Z and digits."_s, taker->staffName));
        return;
    }
    requestHandOver(m_station, taker->staffName);
    CashRecord record(m_station);
    CashAmountDialog window(
        m_station,
        {u"frm_HandOver"_s, u"Hand over"_s,
         sql(u"%1 hands the counter over to %2"_s, m_station.CurrentStaff, taker->staffName), u"txt_CashRegister"_s,
         u"Money in the cash &register"_s},
        [&](const QString &amount) { record.handOver(taker->staffName, amount); }, m_window);
    if (window.exec() == QDialog::Accepted)
        Q_EMIT staffChanged();
    Q_EMIT recorded();
}

void ShiftActions::collectCash()
{
    const auto collector = m_station.prompts.verifyStaff(u"Collect cash from the drawer"_s);
    if (!collector)
        return;
    if (!collector->isAdmin()) {
        m_station.prompts.refuse(u"Only an administrator may collect cash."_s);
        return;
    }
    CashRecord record(m_station);
    CashAmountDialog window(
        m_station,
        {u"frm_CollectCash"_s, u"Collect cash"_s, sql(u"%1 takes cash out of the drawer"_s, collector->staffName),
         u"txt_Amount"_s, u"&Amount that is taken out"_s},
        [&](const QString &amount) { record.collect(amount); }, m_window);
    window.exec();
    Q_EMIT recorded();
}

void ShiftActions::printInterimSlip()
{
    show([this] { return interimSlip(m_station); });
}

void ShiftActions::printSlip(const EndedShift &shift)
{
    show([&] { return closingSlip(m_station, shift); });
}

QString ShiftActions::interimText()
{
    QString text;
    guarded(m_station.prompts, ErrorCode::Database, [&] { text = slipText(interimSlip(m_station)); });
    return text;
}

void ShiftActions::show(const std::function<Receipt()> &describe)
{
    Receipt slip;
    if (!guarded(m_station.prompts, ErrorCode::Database, [&] { slip = describe(); }))
        return;
    QWidget *over = QApplication::activeModalWidget() ? QApplication::activeModalWidget() : m_window;
    frm_PrintReceipt(slip, m_printing, over).exec();
}

void ShiftActions::openReport()
{
    const QUrl address(ReportAddress::ofCounter(m_station.settings, m_station.settings.ThisCounter));
    if (!QDesktopServices::openUrl(address))
        m_station.prompts.inform(u"This computer opens no web browser. The report stands at\n"_s + address.toString());
}
