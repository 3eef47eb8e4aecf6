#include "counter/ReceiptPrinting.h"

#include "app/Errors.h"
#include "app/Station.h"
#include "counter/ReceiptPainter.h"

#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

const QString section = u"Till"_s;
constexpr int untilAsked = 200; // milliseconds

std::optional<Paper> paperOfSettings()
{
    return paperNamed(ReadSetting(section, u"paper"_s, {}));
}

QString fileNameOf(const Receipt &receipt)
{
    const QString number = receipt.number.startsWith(u"NO ") ? receipt.number.mid(3) : receipt.number;
    return kindOf(receipt) + u' ' + number + u".pdf"_s;
}

} // namespace

ReceiptPrinting::ReceiptPrinting(Station &station, PrinterDesk &desk, QObject *parent)
    : QObject(parent), m_station(station), m_desk(desk)
{
}

QString ReceiptPrinting::printerWithoutAsking()
{
    return ReadSetting(section, u"printer"_s, {});
}

void ReceiptPrinting::askAgain()
{
    WriteSetting(section, u"printer"_s, {});
}

void ReceiptPrinting::print(const Receipt &receipt, QWidget *over)
{
    if (const QString printer = printerWithoutAsking(); !printer.isEmpty()) {
        send(receipt, {printer, paperOfSettings()}, over);
        return;
    }
    // A window that is gone by then wants it no more.
    const bool hasWindow = over != nullptr;
    m_desk.lookForPrinters([=, self = QPointer(this), window = QPointer(over)](std::optional<bool> isAny) {
        if (self && (window || !hasWindow))
            self->goOn(receipt, isAny, window);
    });
}

// While an answer of the database is waited for, no window can be answered.
void ReceiptPrinting::goOn(const Receipt &receipt, std::optional<bool> isAny, const QPointer<QWidget> &over)
{
    if (m_station.database.isWaiting()) {
        QTimer::singleShot(untilAsked, this, [=, this] { goOn(receipt, isAny, over); });
        return;
    }
    guarded(m_station.prompts, ErrorCode::Unknown, [&] {
        if (isAny.value_or(false))
            choosePrinter(receipt, over);
        else
            tellTrouble(receipt,
                        isAny ? u"No printer is set up on this computer."_s
                              : u"The computer's printers do not answer."_s,
                        over);
    });
}

void ReceiptPrinting::choosePrinter(const Receipt &receipt, QWidget *over)
{
    auto choice = m_desk.choose(over);
    if (!choice)
        return;
    if (!choice->paper)
        choice->paper = paperOfSettings();
    offerToRemember(*choice);
    send(receipt, *choice, over);
}

void ReceiptPrinting::send(const Receipt &receipt, const PrinterChoice &choice, QWidget *over)
{
    m_desk.print(receipt, choice, [=, self = QPointer(this), window = QPointer(over)](const QString &trouble) {
        if (self && !trouble.isEmpty())
            self->tellTrouble(receipt, trouble, window);
    });
    Q_EMIT sent();
}

// Once while the program runs: whoever said no is not asked with every receipt.
void ReceiptPrinting::offerToRemember(const PrinterChoice &choice)
{
    if (m_offered || choice.name.isEmpty())
        return;
    m_offered = true;
    if (!m_station.prompts.confirm(u"Use the printer \""_s + choice.name + u"\" without asking from now on?"_s,
                                   u"Printer"_s))
        return;
    WriteSetting(section, u"printer"_s, choice.name);
    if (choice.paper)
        WriteSetting(section, u"paper"_s, paperName(*choice.paper));
}

// While an answer of the database is waited for, no window can be answered: it is told afterwards.
void ReceiptPrinting::tellTrouble(const Receipt &receipt, const QString &trouble, const QPointer<QWidget> &over)
{
    if (m_station.database.isWaiting()) {
        QTimer::singleShot(untilAsked, this, [=, this] { tellTrouble(receipt, trouble, over); });
        return;
    }
    guarded(m_station.prompts, ErrorCode::Unknown, [&] {
        if (m_station.prompts.confirm(trouble + u"\n\nSave it as PDF instead?"_s, u"Printer"_s))
            saveAsPdf(receipt, over);
    });
}

bool ReceiptPrinting::saveAsPdf(const Receipt &receipt, QWidget *over)
{
    QString file = m_desk.askForFile(over, fileNameOf(receipt));
    if (file.isEmpty())
        return false;
    if (!file.endsWith(u".pdf"_s, Qt::CaseInsensitive))
        file += u".pdf"_s;
    const QString trouble = savePdf(receipt, paperOfSettings().value_or(Paper::Roll80), file);
    if (!trouble.isEmpty())
        m_station.prompts.inform(u"The file was not saved: "_s + trouble, u"Save as PDF"_s);
    else
        Q_EMIT sent();
    return trouble.isEmpty();
}
