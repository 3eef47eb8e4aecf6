#include "counter/ReceiptPaper.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

struct Kind
{
    Paper paper = Paper::A4;
    QLatin1StringView name;
    PaperForm form;
};

const std::array<Kind, 4> kinds{{
    {Paper::A4, "A4"_L1, {{210, 297}, 18, 15, 26, 10, false}},
    {Paper::A5, "A5"_L1, {{148, 210}, 12, 10, 20, 8.5, false}},
    {Paper::Roll80, "80mm"_L1, {{80, 0}, 4, 4, 20, 9, true}},
    {Paper::Roll58, "58mm"_L1, {{58, 0}, 5, 4, 16, 7, true}},
}};

} // namespace

QString paperName(Paper paper)
{
    return kinds.at(std::size_t(paper)).name;
}

std::optional<Paper> paperNamed(const QString &name)
{
    for (const Kind &kind : kinds)
        if (name.compare(kind.name, Qt::CaseInsensitive) == 0)
            return kind.paper;
    return std::nullopt;
}

Paper paperFor(const QPageSize &size)
{
    constexpr qreal narrowest = 30;
    constexpr qreal widest58 = 65;
    constexpr qreal widest80 = 100;
    constexpr qreal widestA5 = 180;
    const qreal width = size.size(QPageSize::Millimeter).width();
    if (!size.isValid() || width < narrowest || (width > widest58 && width <= widest80))
        return Paper::Roll80;
    if (width <= widest58)
        return Paper::Roll58;
    return width <= widestA5 ? Paper::A5 : Paper::A4;
}

const PaperForm &formOf(Paper paper)
{
    return kinds.at(std::size_t(paper)).form;
}
