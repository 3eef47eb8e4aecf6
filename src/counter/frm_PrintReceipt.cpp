#include "counter/frm_PrintReceipt.h"

#include "app/PictureFile.h"
#include "counter/ReceiptPrinting.h"
#include "look/Look.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int fewestRows = 11;
constexpr int logoHeight = 72;
constexpr int widthOfDescription = 280;
constexpr Qt::Alignment toLeft = Qt::AlignLeft | Qt::AlignTop | Qt::AlignAbsolute;
constexpr Qt::Alignment toRight = Qt::AlignRight | Qt::AlignTop | Qt::AlignAbsolute;

void enlarge(QLabel &label, qreal scale)
{
    QFont font = label.font();
    font.setPointSizeF(font.pointSizeF() * scale);
    font.setBold(true);
    label.setFont(font);
}

} // namespace

frm_PrintReceipt::frm_PrintReceipt(const Receipt &receipt, ReceiptPrinting &printing, QWidget *parent) : QDialog(parent)
{
    setObjectName(u"frm_PrintReceipt"_s);
    setProperty("touch", true);
    setWindowTitle(kindOf(receipt));
    auto *scroll = new QScrollArea;
    scroll->setObjectName(u"area_Lines"_s);
    scroll->setAccessibleName(u"Lines of the receipt"_s);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidget(lines(receipt));
    scroll->setMinimumWidth(scroll->widget()->minimumSizeHint().width() + 40);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 16, 24, 16);
    layout->setSpacing(8);
    layout->addLayout(heading(receipt));
    layout->addLayout(titleLines(receipt));
    layout->addWidget(scroll, 1);
    layout->addLayout(total(receipt));
    layout->addLayout(buttons(receipt, printing));
    connect(&printing, &ReceiptPrinting::sent, this, &QDialog::accept);
    resize(720, 640);
}

QLabel *frm_PrintReceipt::label(const QString &name, const QString &text, Qt::Alignment alignment)
{
    auto *made = new QLabel(text, this);
    made->setObjectName(name);
    made->setTextFormat(Qt::PlainText);
    made->setAlignment(alignment);
    made->setTextInteractionFlags(Qt::NoTextInteraction);
    return made;
}

QHBoxLayout *frm_PrintReceipt::heading(const Receipt &receipt)
{
    auto *picture = label(u"Image1"_s, {});
    const QPixmap logo = receipt.logo.isEmpty() ? QPixmap() : QPixmap(pictureFile(receipt.logo, 2));
    if (!logo.isNull()) {
        QPixmap shown = logo.scaledToHeight(qRound(logoHeight * devicePixelRatioF()), Qt::SmoothTransformation);
        shown.setDevicePixelRatio(devicePixelRatioF());
        picture->setPixmap(shown);
    }
    auto *row = new QHBoxLayout;
    row->setSpacing(16);
    row->addWidget(picture);
    row->addWidget(label(u"lbl_Info"_s, receipt.info), 1);
    row->addWidget(label(u"lbl_Info2"_s, receipt.info2, toRight));
    return row;
}

QGridLayout *frm_PrintReceipt::titleLines(const Receipt &receipt)
{
    auto *title = label(u"lbl_Title"_s, receipt.title);
    auto *number = label(u"lbl_ReceiptNumber"_s, receipt.number, toRight);
    enlarge(*title, 1.5);
    enlarge(*number, 1.5);
    auto *grid = new QGridLayout;
    grid->addWidget(title, 0, 0, 1, 2);
    grid->addWidget(number, 0, 2);
    grid->addWidget(label(u"lbl_Date"_s, receipt.date), 1, 0);
    grid->addWidget(label(u"lbl_Time"_s, receipt.time), 1, 1);
    grid->addWidget(label(u"lbl_Issued"_s, receipt.issued, toRight), 1, 2);
    grid->setHorizontalSpacing(24);
    grid->setColumnStretch(2, 1);
    return grid;
}

QWidget *frm_PrintReceipt::lines(const Receipt &receipt)
{
    auto *sheet = new QWidget;
    auto *grid = new QGridLayout(sheet);
    grid->setContentsMargins(8, 8, 8, 8);
    grid->setHorizontalSpacing(16);
    const auto addRow = [&](int row, const QString &ending, const ReceiptLine &line) {
        const auto add = [&](int column, const QString &name, const QString &text, Qt::Alignment alignment) {
            auto *made = label(name + ending, text, alignment);
            QFont font = made->font();
            font.setBold(row == 0);
            made->setFont(font);
            grid->addWidget(made, row, column);
            return made;
        };
        add(0, u"lbl_Item"_s, line.item, toLeft);
        add(1, u"lbl_Description"_s, line.description, toLeft)->setWordWrap(row > 0);
        add(2, u"lbl_UnitPrice"_s, line.unitPrice, toRight);
        add(3, u"lbl_Quantity"_s, line.quantity, toRight);
        add(4, u"lbl_Price"_s, line.price, toRight);
    };
    addRow(0, u"_Head"_s, {u"Item"_s, u"Description"_s, u"Price / Unit"_s, u"Quantity"_s, u"Price"_s});
    const int filled = int(receipt.lines.size());
    for (int i = 0; i < std::max(filled, fewestRows); ++i)
        addRow(i + 1, u'_' + QString::number(i), i < filled ? receipt.lines[std::size_t(i)] : ReceiptLine{});
    grid->setColumnMinimumWidth(1, widthOfDescription);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(grid->rowCount(), 1);
    return sheet;
}

QHBoxLayout *frm_PrintReceipt::total(const Receipt &receipt)
{
    auto *caption = label(u"lbl_TotalAmount"_s, u"TOTAL AMOUNT"_s);
    auto *amount = label(u"lbl_Amount"_s, receipt.amount, toRight);
    enlarge(*caption, 1.2);
    enlarge(*amount, 1.5);
    auto *row = new QHBoxLayout;
    row->addWidget(caption);
    row->addWidget(amount, 1);
    return row;
}

QCheckBox *frm_PrintReceipt::withoutAsking()
{
    const QString printer = ReceiptPrinting::printerWithoutAsking();
    auto *box = new QCheckBox(u"&Use "_s + QString(printer).replace(u'&', u"&&"_s) + u" without asking"_s, this);
    box->setObjectName(u"chk_WithoutAsking"_s);
    box->setChecked(true);
    box->setVisible(!printer.isEmpty());
    connect(box, &QCheckBox::clicked, box, [box](bool isChecked) {
        if (isChecked)
            return;
        ReceiptPrinting::askAgain();
        box->setEnabled(false);
    });
    return box;
}

QHBoxLayout *frm_PrintReceipt::buttons(const Receipt &receipt, ReceiptPrinting &printing)
{
    auto *row = new QHBoxLayout;
    row->addWidget(withoutAsking(), 1);
    const auto add = [&](const QString &name, const QString &caption) {
        auto *button = new QPushButton(caption, this);
        button->setObjectName(name);
        row->addWidget(button);
        return button;
    };
    auto *print = add(u"btn_Print"_s, u"&Print"_s);
    print->setDefault(true);
    print->setFocus();
    connect(print, &QPushButton::clicked, this, [this, receipt, &printing] { printing.print(receipt, this); });
    connect(add(u"btn_SavePdf"_s, u"&Save as PDF…"_s), &QPushButton::clicked, this,
            [this, receipt, &printing] { printing.saveAsPdf(receipt, this); });
    connect(add(u"btn_Close"_s, u"&Close"_s), &QPushButton::clicked, this, &QDialog::accept);
    return row;
}
