#include "options/OptionsPages.h"

#include "counter/SystemPrinters.h"
#include "options/frm_Options.h"

using namespace Qt::StringLiterals;

void addOptionsPages(frm_Options & /*window*/, Station & /*station*/, const QString & /*administrator*/,
                     PrinterDesk & /*desk*/)
{
}

void openOptions(Station &station, const QString &administrator, QWidget *over)
{
    SystemPrinters printers;
    frm_Options window(station, over);
    addOptionsPages(window, station, administrator, printers);
    window.exec();
}
