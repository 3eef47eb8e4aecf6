#include "counter/MoneyCount.h"

#include "app/Formats.h"

#include <QGridLayout>
#include <QLabel>
#include <QSpinBox>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int mostPieces = 9999;
constexpr int rowsOfColumn = 6;
constexpr int widgetsOfKind = 3;
constexpr int besideOthers = 24;

QString amountOfCents(qint64 cents)
{
    return formatNumber(double(cents) / 100, u"#0.00"_s);
}

} // namespace

std::vector<qint64> kindsOfMoney(const std::vector<qint64> &notes)
{
    std::vector<qint64> kinds{5, 10, 20, 50, 100, 200};
    kinds.insert(kinds.end(), notes.begin(), notes.end());
    std::sort(kinds.begin(), kinds.end());
    kinds.erase(std::unique(kinds.begin(), kinds.end()), kinds.end());
    return kinds;
}

MoneyCount::MoneyCount(const std::vector<qint64> &kinds, QWidget *parent) : QWidget(parent)
{
    setObjectName(u"MoneyCount"_s);
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(8);
    m_kinds.reserve(kinds.size());
    for (const qint64 cents : kinds) {
        const int row = int(m_kinds.size()) % rowsOfColumn;
        const int column = int(m_kinds.size()) / rowsOfColumn * widgetsOfKind;
        auto *caption = new QLabel(amountOfCents(cents) + u" ×"_s);
        caption->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        auto *pieces = new QSpinBox;
        pieces->setObjectName(u"num_Pieces_"_s + QString::number(cents));
        pieces->setAccessibleName(u"Pieces of "_s + amountOfCents(cents));
        pieces->setRange(0, mostPieces);
        pieces->setButtonSymbols(QAbstractSpinBox::NoButtons);
        pieces->setAlignment(Qt::AlignRight);
        caption->setBuddy(pieces);
        auto *sum = new QLabel;
        sum->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        sum->setMinimumWidth(sum->fontMetrics().horizontalAdvance(u"00000.00"_s));
        if (column > 0)
            grid->setColumnMinimumWidth(column, besideOthers + caption->sizeHint().width());
        grid->addWidget(caption, row, column);
        grid->addWidget(pieces, row, column + 1);
        grid->addWidget(sum, row, column + 2);
        connect(pieces, &QSpinBox::valueChanged, this, &MoneyCount::addUp);
        m_kinds.push_back({cents, pieces, sum});
    }
}

void MoneyCount::addUp()
{
    qint64 cents = 0;
    for (const Kind &kind : m_kinds) {
        const qint64 sum = kind.cents * kind.pieces->value();
        kind.sum->setText(sum > 0 ? amountOfCents(sum) : QString());
        cents += sum;
    }
    Q_EMIT counted(plainNumber(double(cents) / 100));
}
