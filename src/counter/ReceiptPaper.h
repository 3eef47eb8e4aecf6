#pragma once

#include <QPageSize>
#include <QSizeF>
#include <QString>

#include <optional>

/// What receipts are printed on: sheets, and rolls that end where the receipt ends.
enum class Paper { A4, A5, Roll80, Roll58 };

/// As in the settings: A4, A5, 80mm, 58mm.
QString paperName(Paper paper);
/// Nothing for any other text.
std::optional<Paper> paperNamed(const QString &name);
/// What a printer whose pages are so is loaded with; a roll of 80 mm when that is not known.
Paper paperFor(const QPageSize &size);

/// How a receipt looks on a paper. Millimetres, and points for letters.
struct PaperForm
{
    QSizeF size; ///< of a roll only the width counts
    qreal sideMargin;
    qreal endMargin; ///< above and below
    qreal logo;      ///< height of the picture
    qreal letters;   ///< size of plain letters
    bool isRoll;
};
const PaperForm &formOf(Paper paper);
