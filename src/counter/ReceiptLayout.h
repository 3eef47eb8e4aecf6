#pragma once

#include "counter/Receipt.h"
#include "counter/ReceiptPaper.h"

#include <QFont>

#include <functional>
#include <vector>

class QPaintDevice;
class QPainter;

/// A receipt as blocks below each other, measured for one width of a paint device, in its own dots.
class ReceiptLayout
{
public:
    ReceiptLayout(const Receipt &receipt, const PaperForm &form, QPaintDevice &device);

    /// Of everything on one page.
    [[nodiscard]] qreal height() const;
    /// Shares everything out to pages of the device's height; gives their number.
    int paginate();
    void drawPage(QPainter &painter, int page) const;

private:
    /// A strip of the page that is never torn.
    struct Block
    {
        qreal height = 0;
        std::function<void(QPainter &, qreal top)> draw = {};
    };
    /// Text in a column. It wraps, or its letters shrink until it fits.
    struct Cell
    {
        QString text;
        qreal left; ///< parts of the page's width
        qreal right;
        Qt::Alignment alignment = Qt::AlignLeft;
        bool isBold = false;
        qreal scale = 1; ///< of the plain letters
        bool wraps = false;
    };
    using Blocks = std::vector<Block>;

    [[nodiscard]] qreal dots(qreal millimetres) const;
    [[nodiscard]] QFont fontOf(const Cell &cell) const;
    [[nodiscard]] Block cells(const std::vector<Cell> &cells) const;
    [[nodiscard]] Block rule(qreal thickness) const;
    [[nodiscard]] static Block gap(qreal height);
    [[nodiscard]] static Block joined(Blocks blocks);
    [[nodiscard]] Block logo(const QString &file, qreal left) const;
    [[nodiscard]] Block sheetHead(const Receipt &receipt) const;
    [[nodiscard]] Block rollHead(const Receipt &receipt) const;
    [[nodiscard]] Block columnHeads() const;
    [[nodiscard]] Block line(const ReceiptLine &line, bool isHead) const;
    [[nodiscard]] Block total(const Receipt &receipt) const;
    [[nodiscard]] static qreal heightOf(const Blocks &blocks);

    const PaperForm &m_form;
    QPaintDevice &m_device;
    qreal m_width;
    qreal m_pageHeight;
    Block m_head;
    Block m_nextHead; ///< of the pages after the first
    Block m_columnHeads;
    Blocks m_lines; ///< the last one with the total
    std::vector<Blocks> m_pages;
};
