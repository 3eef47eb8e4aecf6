#include "counter/ShiftSlip.h"

#include "app/SqlText.h"
#include "app/Station.h"
#include "counter/Receipts.h"

using namespace Qt::StringLiterals;

namespace {

/// Lines below each other; those that count nothing have only words and an amount.
class SlipLines
{
public:
    void add(const QString &words, double amount) { m_lines.push_back({{}, words, {}, {}, moneyText(amount)}); }
    void addCount(const QString &words, double count, double amount)
    {
        m_lines.push_back({{}, words, {}, plainNumber(count), moneyText(amount)});
    }
    void addWords(const QString &words, double count = 0)
    {
        m_lines.push_back({{}, words, {}, count > 0 ? plainNumber(count) : QString(), {}});
    }
    [[nodiscard]] std::vector<ReceiptLine> lines() const { return m_lines; }

private:
    std::vector<ReceiptLine> m_lines;
};

void addFigures(SlipLines &lines, double cashFloat, const ShiftFigures &figures)
{
    lines.addWords(sql(u"From %1 to %2"_s, figures.from.isEmpty() ? u"the beginning"_s : shortMoment(figures.from),
                       shortMoment(figures.to)));
    lines.addWords(u"Sales"_s, figures.transactions);
    lines.addCount(u"Hours"_s, figures.hours, figures.hoursTotal);
    lines.addCount(u"Goods"_s, figures.pieces, figures.goodsTotal);
    lines.add(u"Float at the beginning"_s, cashFloat);
    for (const ShiftFigures::Collection &collection : figures.collections)
        lines.add(u"Collected "_s + shortMoment(collection.when), -collection.amount);
    lines.add(u"Should be in the drawer"_s, moneyExpected(cashFloat, figures));
    if (figures.noSales > 0)
        lines.addWords(u"Drawer opened without a sale"_s, figures.noSales);
    for (const QString &handOver : figures.handOvers)
        lines.addWords(handOver);
}

Receipt slip(const Station &station, const QString &title, double total, const SlipLines &lines)
{
    Receipt receipt = receiptHead(station, title, 0);
    receipt.number = u"Counter "_s + QString::number(station.settings.ThisCounter);
    receipt.lines = lines.lines();
    receipt.amount = u"$ "_s + moneyText(total);
    return receipt;
}

} // namespace

Receipt interimSlip(Station &station)
{
    const auto before = lastShift(station);
    const double cashFloat = before ? before->cashFloat : 0;
    const ShiftFigures figures = shiftFigures(station, before ? before->ended : QString(), sqlDateTime(station.now()));
    SlipLines lines;
    addFigures(lines, cashFloat, figures);
    return slip(station, u"INTERIM SLIP"_s, moneyExpected(cashFloat, figures), lines);
}

Receipt closingSlip(Station &station, const EndedShift &shift)
{
    DbConnection connection(station.database);
    const ShiftAccount account = accountOf(connection, station.settings.ThisCounter, shift);
    SlipLines lines;
    const QString name = shift.name.left(1).toUpper() + shift.name.mid(1);
    lines.addWords(sql(u"%1 shift of %2, ended by %3"_s, name, shortMoment(shift.ended), shift.staff));
    addFigures(lines, account.floatBefore, account.figures);
    lines.add(u"Counted in the drawer"_s, shift.money);
    lines.add(u"Difference"_s, account.difference());
    lines.add(u"Float for the next shift"_s, shift.cashFloat);
    lines.addWords(u"The total is the money counted less that float."_s);
    return slip(station, u"SHIFT SLIP"_s, shift.sales, lines);
}

QString slipText(const Receipt &slip)
{
    QString text = sql(u"%1, %2\n%3  %4\n\n"_s, slip.title, slip.number, slip.date, slip.time);
    for (const ReceiptLine &line : slip.lines)
        text += QStringList{line.description, line.quantity, line.price}.join(u"  "_s).trimmed() + u'\n';
    return text + u"\nTOTAL AMOUNT  "_s + slip.amount + u'\n';
}
