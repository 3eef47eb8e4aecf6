#include "options/OptionsPages.h"

#include "counter/SystemPrinters.h"
#include "options/frm_Options.h"
#include "options/page_Centre.h"
#include "options/page_ThisCounter.h"

using namespace Qt::StringLiterals;

void addOptionsPages(frm_Options &window, Station &station, const QString &administrator, PrinterDesk &desk)
{
    window.addPage(u"This counter"_s, u"drawer"_s, new page_ThisCounter(station, administrator, desk));
    window.addPage(u"The centre"_s, u"options"_s, new page_Centre(station, administrator));
}

void openOptions(Station &station, const QString &administrator, QWidget *over)
{
    SystemPrinters printers;
    frm_Options window(station, over);
    addOptionsPages(window, station, administrator, printers);
    window.exec();
}
