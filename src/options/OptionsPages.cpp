#include "options/OptionsPages.h"

#include "counter/SystemPrinters.h"
#include "options/frm_Options.h"
#include "options/page_Centre.h"
#include "options/page_Health.h"
#include "options/page_Rates.h"
#include "options/page_Staff.h"
#include "options/page_Stock.h"
#include "options/page_ThisCounter.h"

using namespace Qt::StringLiterals;

void addOptionsPages(frm_Options &window, Station &station, const QString &administrator, PrinterDesk &desk)
{
    window.addPage(u"This counter"_s, u"drawer"_s, new page_ThisCounter(station, administrator, desk));
    window.addPage(u"The centre"_s, u"options"_s, new page_Centre(station, administrator));
    window.addPage(u"Staff"_s, u"membership"_s, new page_Staff(station, administrator));
    window.addPage(u"Rates"_s, u"rate"_s, new page_Rates(station, administrator));
    window.addPage(u"Stock"_s, u"items"_s, new page_Stock(station, administrator));
    window.addPage(u"Health"_s, u"help"_s, new page_Health(station, administrator));
}

void openOptions(Station &station, const QString &administrator, QWidget *over)
{
    SystemPrinters printers;
    frm_Options window(station, over);
    addOptionsPages(window, station, administrator, printers);
    window.exec();
}
