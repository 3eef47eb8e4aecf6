#include "counter/DigitKeys.h"

#include <QGridLayout>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize keySize{76, 64};

} // namespace

DigitKeys::DigitKeys(const QString &prefix, const QString &extra, const QString &extraName, QWidget *parent)
    : QWidget(parent)
{
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(8);
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 1.6);
    setFont(large);
    for (int digit = 1; digit <= 9; ++digit)
        addKey(prefix + QString::number(digit), QString::number(digit), 2 - (digit - 1) / 3, (digit - 1) % 3);
    addKey(prefix + u'0', u"0"_s, 3, 0, extra.isEmpty() ? 2 : 1);
    if (!extra.isEmpty())
        addKey(prefix + extraName, extra, 3, 1);
    QPushButton *back = addKey(prefix + u"Back"_s, u"\u2190"_s, 3, 2);
    back->setAccessibleName(u"Backspace"_s);
    back->disconnect(this);
    connect(back, &QPushButton::clicked, this, &DigitKeys::takenBack);
}

QPushButton *DigitKeys::addKey(const QString &name, const QString &caption, int row, int column, int width)
{
    auto *key = new QPushButton(caption, this);
    key->setObjectName(name);
    key->setMinimumSize(keySize);
    key->setFocusPolicy(Qt::NoFocus);
    key->setAutoDefault(false);
    static_cast<QGridLayout *>(layout())->addWidget(key, row, column, 1, width);
    connect(key, &QPushButton::clicked, this, [this, caption] { Q_EMIT keyed(caption); });
    return key;
}
