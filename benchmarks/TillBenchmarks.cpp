#include "Benchmark.h"

#include "Painted.h"
#include "app/SqlText.h"
#include "counter/ReceiptPainter.h"
#include "counter/Settlement.h"
#include "counter/ShiftEnd.h"
#include "counter/TillActions.h"
#include "counter/frm_Change.h"
#include "counter/page_Counter.h"

#include <QDialog>
#include <QPainter>
#include <QPdfWriter>
#include <QScreen>
#include <QTemporaryDir>

#include <limits>

using namespace Qt::StringLiterals;

Benchmark::Operation Benchmark::sale(const QString &name, int rounds)
{
    PaymentList list;
    Operation operation{name, rounds, {}};
    for (int hour = 10; hour < 14; ++hour) {
        const BookedHour booked{{sqlDate(m_day), QString::number(hour) + u":00"_s, plainCourt}, u"Harbour"_s};
        list.addHour(booked, {{}, 0, 40, 1, 40});
        operation.before << sql(u"INSERT INTO tbl_booking SET b_datetime='%1', b_field=%2, b_bookername='Harbour'"_s,
                                booked.slot.dateTimeText(), plainCourt)
                                .toUtf8();
    }
    for (int item = 1; item <= 6; ++item)
        list.addItem(u"Item "_s + QString::number(item), u"2.50"_s, u"2"_s);
    operation.ours = [this, list] { require(settle(m_station, list).transaction.has_value(), "The sale refused"); };
    return operation;
}

void Benchmark::makeItems(int count)
{
    m_root.send("DELETE FROM tbl_item");
    m_root.send("INSERT INTO tbl_item (i_id, i_name, i_type, i_key, i_price, i_currentstock) SELECT seq, "
                "CONCAT('Item ', seq), CONCAT('Type ', seq DIV 100), CONCAT('400', seq), 2.5, 20 FROM seq_1_to_" +
                QByteArray::number(count));
}

void Benchmark::compareTill()
{
    constexpr int fewItems = 1000;
    constexpr int manyItems = 5000;
    makeItems(fewItems);
    compare(sale(u"settle 4 hours and 6 goods"_s, 101));
    m_station.shiftName = u"morning"_s;
    compare({u"shift end with 1,000 items"_s, 41, [&] {
                 ShiftEnd end(m_station);
                 end.open();
                 end.record({u"200"_s, u"300"_s, u"100"_s});
             }});
    page_Counter page(m_station);
    page.resize(QGuiApplication::primaryScreen()->availableSize());
    page.show();
    awaitPainted([&] { return &page; });
    compare({u"RefreshStore with 1,000 items"_s, 41, [&] { page.RefreshStore(); }});
    comparePaintedLine(page, u"a line from key to picture, 1,000 items"_s);
    makeItems(manyItems);
    page.RefreshStore();
    comparePaintedLine(page, u"a line from key to picture, 5,000 items"_s);
    page.hide();
    compareDialog();
    comparePdf();
}

void Benchmark::comparePaintedLine(page_Counter &page, const QString &name)
{
    constexpr int rounds = 41;
    constexpr double most = 30; // milliseconds
    Comparison comparison{name, 0, most};
    for (int i = 0; i < rounds; ++i) {
        comparison.ours.push_back(repainted(page, [&] { page.actions().addQuantity(u"Item 7"_s, u"2.50"_s, u"2"_s); }));
        comparison.bare.push_back(repainted(page, [&] { page.update(); }));
    }
    page.actions().reset();
    comparison.print();
}

void Benchmark::compareDialog()
{
    constexpr int rounds = 21;
    Comparison comparison{u"open the change dialog"_s, std::numeric_limits<double>::infinity()};
    for (int i = 0; i < rounds; ++i) {
        std::unique_ptr<QDialog> dialog;
        const auto shown = [&](const std::function<std::unique_ptr<QDialog>()> &make) {
            return milliseconds([&] {
                dialog = make();
                dialog->show();
                awaitPainted([&] { return dialog.get(); });
            });
        };
        comparison.ours.push_back(
            shown([&] { return std::make_unique<frm_Change>(m_station, u"40.25"_s, frm_Change::Work{}); }));
        const QSize size = dialog->size();
        comparison.bare.push_back(shown([&] {
            auto empty = std::make_unique<QDialog>();
            empty->resize(size);
            return empty;
        }));
    }
    comparison.print();
}

void Benchmark::comparePdf()
{
    constexpr int rounds = 21;
    Receipt receipt{u"OFFICIAL RECEIPT"_s};
    for (int line = 1; line <= 11; ++line)
        receipt.lines.push_back(
            {QString::number(line), u"Field Number 7 14/11/2026 20:00"_s, u"40.00"_s, u"1"_s, u"40.00"_s});
    const QTemporaryDir folder;
    Comparison comparison{u"a receipt of 11 lines as PDF"_s, std::numeric_limits<double>::infinity()};
    for (int i = 0; i < rounds; ++i) {
        comparison.ours.push_back(milliseconds(
            [&] { require(savePdf(receipt, Paper::A5, folder.filePath(u"ours.pdf"_s)).isEmpty(), "No PDF"); }));
        comparison.bare.push_back(milliseconds([&] {
            QPdfWriter writer(folder.filePath(u"bare.pdf"_s));
            QPainter(&writer).drawText(100, 100, receipt.title);
        }));
    }
    comparison.print();
}
