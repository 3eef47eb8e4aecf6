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
    qreal sideMargin = 0;
    qreal endMargin = 0; ///< above and below
    qreal logo = 0;      ///< height of the picture
    qreal letters = 0;   ///< size of plain letters
    bool isRoll = false;
};
const PaperForm &formOf(Paper paper);
