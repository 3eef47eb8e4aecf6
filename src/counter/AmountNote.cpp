#include "counter/AmountNote.h"

#include "app/Conversions.h"
#include "app/Formats.h"
#include "look/Look.h"

#include <QLineEdit>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

AmountNote::AmountNote(QLineEdit &box)
{
    setObjectName(box.objectName().replace(u"txt_"_s, u"lbl_Read"_s));
    setMargin(4);
    QSizePolicy kept = sizePolicy();
    kept.setRetainSizeWhenHidden(true);
    setSizePolicy(kept);
    Look::paint(*this, Look::alert);
    show(box.text());
    connect(&box, &QLineEdit::textChanged, this, &AmountNote::show);
}

void AmountNote::show(const QString &typed)
{
    static const QRegularExpression plain(u"^ *-?[0-9]+(\\.[0-9]{1,2})? *$"_s);
    QString number = u"no number"_s;
    try {
        number = plainNumber(leadingNumber(typed));
    } catch (const ConversionError &) {
        number = u"too large"_s;
    }
    setText(u"This is read as "_s + number + u"."_s);
    setVisible(!typed.isEmpty() && !plain.match(typed).hasMatch());
}
