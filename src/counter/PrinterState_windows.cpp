#include "counter/PrinterState.h"

#include <QPrinterInfo>

PrinterState PrinterState::of(const QString &printer)
{
    const QPrinterInfo info = QPrinterInfo::printerInfo(printer);
    const QPrinter::PrinterState state = info.state();
    return {!info.isNull(), state != QPrinter::Error && state != QPrinter::Aborted, state == QPrinter::Idle};
}
