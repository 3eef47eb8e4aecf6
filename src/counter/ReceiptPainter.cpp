#include "counter/ReceiptPainter.h"

#include "counter/ReceiptLayout.h"

#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qreal longestStrip = 5000; // millimetres; no PDF page is longer

void setPage(QPagedPaintDevice &device, const PaperForm &form, qreal length)
{
    const QSizeF size(form.size.width(), length);
    device.setPageSize(
        QPageSize(size, QPageSize::Millimeter, {}, form.isRoll ? QPageSize::ExactMatch : QPageSize::FuzzyMatch));
    device.setPageOrientation(QPageLayout::Portrait);
    // A printer that needs wider margins keeps its own.
    device.setPageMargins({form.sideMargin, form.endMargin, form.sideMargin, form.endMargin}, QPageLayout::Millimeter);
}

// A strip is always longer than wide, so that no printer turns it round.
qreal lengthOfStrip(const Receipt &receipt, const PaperForm &form, QPagedPaintDevice &device)
{
    constexpr qreal millimetresOfInch = 25.4;
    const qreal content = ReceiptLayout(receipt, form, device).height() / device.logicalDpiY() * millimetresOfInch;
    const QMarginsF margins = device.pageLayout().margins(QPageLayout::Millimeter);
    return std::clamp(content + margins.top() + margins.bottom() + 1, form.size.width() + 5, longestStrip);
}

} // namespace

bool paintReceipt(const Receipt &receipt, Paper paper, QPagedPaintDevice &device)
{
    const PaperForm &form = formOf(paper);
    setPage(device, form, form.isRoll ? longestStrip : form.size.height());
    if (form.isRoll)
        setPage(device, form, lengthOfStrip(receipt, form, device));
    ReceiptLayout layout(receipt, form, device);
    const int pages = layout.paginate();
    QPainter painter;
    if (!painter.begin(&device))
        return false;
    for (int page = 0; page < pages; ++page) {
        if (page > 0 && !device.newPage())
            return false;
        layout.drawPage(painter, page);
    }
    return painter.end();
}

QString savePdf(const Receipt &receipt, Paper paper, const QString &fileName)
{
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    {
        QPdfWriter writer(&file);
        writer.setTitle(receipt.title + u' ' + receipt.number);
        if (!paintReceipt(receipt, paper, writer))
            return u"The file could not be written"_s;
    }
    return file.commit() ? QString() : file.errorString();
}
