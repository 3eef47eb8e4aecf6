#include "counter/ReceiptLayout.h"

#include "app/PictureFile.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr Qt::Alignment toLeft = Qt::AlignLeft | Qt::AlignAbsolute;
constexpr Qt::Alignment toRight = Qt::AlignRight | Qt::AlignAbsolute;
constexpr qreal thinRule = 0.2; // millimetres
constexpr qreal thickRule = 0.5;
constexpr int fewestDots = 2;

/// Text that is broken into lines, between words where it can be.
std::shared_ptr<QTextLayout> laidOut(const QString &text, const QFont &font, QPaintDevice &device, qreal width,
                                     Qt::Alignment alignment, bool wraps)
{
    auto layout = std::make_shared<QTextLayout>(text, font, &device);
    QTextOption option(alignment);
    option.setWrapMode(wraps ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
    if (!wraps)
        option.setTextDirection(Qt::LeftToRight);
    layout->setTextOption(option);
    layout->setCacheEnabled(true);
    layout->beginLayout();
    qreal y = 0;
    for (QTextLine line = layout->createLine(); line.isValid(); line = layout->createLine()) {
        line.setLineWidth(width);
        line.setPosition({0, y});
        y += line.height();
    }
    layout->endLayout();
    return layout;
}

/// The lines of an address as one text that keeps them.
QString keptLines(const QString &lines)
{
    return lines.trimmed().replace(u"\r\n"_s, QString(QChar::LineSeparator));
}

/// Dark ink on white paper. A roll's printer knows black alone: what is nearly black or white becomes so.
QImage inBlackAndWhite(const QImage &picture, bool isRoll)
{
    QImage paper(picture.size(), QImage::Format_RGB32);
    paper.fill(Qt::white);
    QPainter(&paper).drawImage(0, 0, picture);
    QImage grey = paper.convertToFormat(QImage::Format_Grayscale8);
    for (int y = 0; isRoll && y < grey.height(); ++y) {
        uchar *row = grey.scanLine(y);
        std::transform(row, row + grey.width(), row, [](uchar tone) {
            constexpr int black = 100;
            constexpr int white = 200;
            return uchar(std::clamp((int(tone) - black) * 255 / (white - black), 0, 255));
        });
    }
    return grey;
}

} // namespace

ReceiptLayout::ReceiptLayout(const Receipt &receipt, const PaperForm &form, QPaintDevice &device)
    : m_form(form), m_device(device), m_width(device.width()), m_pageHeight(device.height())
{
    m_head = form.isRoll ? rollHead(receipt) : sheetHead(receipt);
    m_nextHead =
        joined({cells({{receipt.title, 0, 0.5, toLeft, true}, {receipt.number, 0.5, 1, toRight, true}}), gap(dots(2))});
    m_columnHeads = columnHeads();
    for (const ReceiptLine &each : receipt.lines)
        m_lines.push_back(line(each, false));
    if (m_lines.empty())
        m_lines.push_back(total(receipt));
    else
        m_lines.back() = joined({m_lines.back(), total(receipt)});
}

qreal ReceiptLayout::dots(qreal millimetres) const
{
    constexpr qreal millimetresOfInch = 25.4;
    return millimetres / millimetresOfInch * m_device.logicalDpiY();
}

QFont ReceiptLayout::fontOf(const Cell &cell) const
{
    QFont font;
    font.setPointSizeF(m_form.letters * cell.scale);
    font.setBold(cell.isBold);
    return font;
}

ReceiptLayout::Block ReceiptLayout::cells(const std::vector<Cell> &cells) const
{
    Block block;
    struct Placed
    {
        qreal x;
        std::shared_ptr<QTextLayout> text;
        qreal ascent; ///< the first lines of all stand on one line
    };
    std::vector<Placed> placed;
    for (const Cell &cell : cells) {
        const qreal width = (cell.right - cell.left) * m_width;
        QFont font = fontOf(cell);
        auto text = laidOut(cell.text, font, m_device, width, cell.alignment, cell.wraps);
        if (const qreal natural = text->maximumWidth(); !cell.wraps && natural > width - fewestDots) {
            font.setPointSizeF(font.pointSizeF() * (width - fewestDots) / natural * 0.98);
            text = laidOut(cell.text, font, m_device, width, cell.alignment, false);
        }
        placed.push_back({cell.left * m_width, text, text->lineAt(0).ascent()});
    }
    const qreal ascent = std::ranges::max(placed, {}, &Placed::ascent).ascent;
    for (const Placed &each : placed)
        block.height = std::max(block.height, ascent - each.ascent + each.text->boundingRect().height());
    block.draw = [placed, ascent](QPainter &painter, qreal top) {
        for (const Placed &each : placed)
            each.text->draw(&painter, {each.x, top + ascent - each.ascent});
    };
    return block;
}

ReceiptLayout::Block ReceiptLayout::rule(qreal thickness) const
{
    const qreal room = dots(1);
    const qreal height = dots(thickness);
    return {2 * room + height, [=, this](QPainter &painter, qreal top) {
                painter.fillRect(QRectF(0, top + room, m_width, height), Qt::black);
            }};
}

ReceiptLayout::Block ReceiptLayout::gap(qreal height)
{
    return {height, [](QPainter & /*painter*/, qreal /*top*/) {}};
}

ReceiptLayout::Block ReceiptLayout::joined(Blocks blocks)
{
    const qreal height = heightOf(blocks);
    return {height, [blocks = std::move(blocks)](QPainter &painter, qreal top) {
                for (const Block &block : blocks) {
                    block.draw(painter, top);
                    top += block.height;
                }
            }};
}

ReceiptLayout::Block ReceiptLayout::logo(const QString &file, qreal left) const
{
    const QImage picture = file.isEmpty() ? QImage() : QImage(pictureFile(file, 2));
    if (picture.isNull())
        return gap(0);
    const QImage printed = inBlackAndWhite(picture, m_form.isRoll);
    const QSizeF size = QSizeF(printed.size()).scaled(m_width / 2, dots(m_form.logo), Qt::KeepAspectRatio);
    const qreal x = left * (m_width - size.width());
    return {size.height(),
            [=](QPainter &painter, qreal top) { painter.drawImage(QRectF(QPointF(x, top), size), printed); }};
}

// The logo left, the address beside it, the ways to reach the centre right.
ReceiptLayout::Block ReceiptLayout::sheetHead(const Receipt &receipt) const
{
    const Block picture = logo(receipt.logo, 0);
    const qreal left = picture.height > 0 ? std::min(0.4, (picture.height + dots(6)) / m_width) : 0;
    const Block words = cells({{keptLines(receipt.info), left, 0.62, toLeft, false, 1, true},
                               {keptLines(receipt.info2), 0.64, 1, toRight, false, 1, true}});
    Block top{std::max(picture.height, words.height), [=](QPainter &painter, qreal y) {
                  picture.draw(painter, y);
                  words.draw(painter, y);
              }};
    return joined(
        {top, gap(dots(6)),
         cells({{receipt.title, 0, 0.66, toLeft, true, 1.7}, {receipt.number, 0.66, 1, toRight, true, 1.7}}),
         gap(dots(2)),
         cells(
             {{receipt.date, 0, 0.25, toLeft}, {receipt.time, 0.27, 0.5, toLeft}, {receipt.issued, 0.52, 1, toRight}}),
         gap(dots(4))});
}

ReceiptLayout::Block ReceiptLayout::rollHead(const Receipt &receipt) const
{
    const auto centred = [this](const QString &lines, bool isBold, qreal scale) {
        return lines.isEmpty() ? gap(0) : cells({{keptLines(lines), 0, 1, Qt::AlignHCenter, isBold, scale, true}});
    };
    return joined({logo(receipt.logo, 0.5), gap(dots(1)), centred(receipt.info, false, 1),
                   centred(receipt.info2, false, 1), gap(dots(2)), centred(receipt.title, true, 1.3),
                   centred(receipt.number, true, 1.3), gap(dots(1)),
                   cells({{receipt.date, 0, 0.55, toLeft}, {receipt.time, 0.55, 1, toRight}}),
                   cells({{receipt.issued, 0, 1, toLeft, false, 1, true}}), gap(dots(1))});
}

ReceiptLayout::Block ReceiptLayout::columnHeads() const
{
    return joined({rule(thinRule),
                   line({u"Item"_s, u"Description"_s, u"Price / Unit"_s, u"Quantity"_s, u"Price"_s}, true),
                   rule(thinRule)});
}

// A roll is too narrow for five columns: the figures stand below the words.
ReceiptLayout::Block ReceiptLayout::line(const ReceiptLine &line, bool isHead) const
{
    const QString words = line.description.simplified();
    const qreal scale = isHead && m_form.isRoll ? 0.85 : 1;
    const auto figure = [=](const QString &text, qreal left, qreal right) {
        return Cell{text, left, right, toRight, isHead, scale};
    };
    const auto number = [=](qreal right) { return Cell{line.item, 0, right, toLeft, isHead, scale}; };
    const auto name = [=](qreal left, qreal right) { return Cell{words, left, right, toLeft, isHead, scale, true}; };
    const Block room = gap(isHead ? 0 : dots(m_form.isRoll ? 0.8 : 1));
    if (m_form.isRoll)
        return joined(
            {cells({number(0.1), name(0.11, 1)}),
             cells({figure(line.unitPrice, 0.11, 0.42), figure(line.quantity, 0.44, 0.68), figure(line.price, 0.7, 1)}),
             room});
    return joined({cells({number(0.075), name(0.085, 0.525), figure(line.unitPrice, 0.53, 0.7),
                          figure(line.quantity, 0.71, 0.84), figure(line.price, 0.85, 1)}),
                   room});
}

ReceiptLayout::Block ReceiptLayout::total(const Receipt &receipt) const
{
    return joined(
        {rule(thickRule),
         cells({{u"TOTAL AMOUNT"_s, 0, 0.5, toLeft, true, 1.2}, {receipt.amount, 0.5, 1, toRight, true, 1.4}}),
         rule(thickRule)});
}

qreal ReceiptLayout::heightOf(const Blocks &blocks)
{
    qreal height = 0;
    for (const Block &block : blocks)
        height += block.height;
    return height;
}

qreal ReceiptLayout::height() const
{
    return m_head.height + m_columnHeads.height + heightOf(m_lines);
}

int ReceiptLayout::paginate()
{
    m_pages.assign(1, {m_head, m_columnHeads});
    const qreal foot = height() > m_pageHeight ? 2 * dots(m_form.letters / 2) : 0;
    qreal used = heightOf(m_pages.back());
    for (const Block &line : m_lines) {
        if (used + line.height > m_pageHeight - foot && m_pages.back().size() > 2) {
            m_pages.push_back({m_nextHead, m_columnHeads});
            used = heightOf(m_pages.back());
        }
        m_pages.back().push_back(line);
        used += line.height;
    }
    return int(m_pages.size());
}

void ReceiptLayout::drawPage(QPainter &painter, int page) const
{
    joined(m_pages.at(std::size_t(page))).draw(painter, 0);
    if (m_pages.size() == 1)
        return;
    const Block foot = cells({{u"Page "_s + QString::number(page + 1) + u" of "_s + QString::number(m_pages.size()), 0,
                               1, Qt::AlignHCenter}});
    foot.draw(painter, m_pageHeight - foot.height);
}
