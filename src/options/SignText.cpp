#include "options/SignText.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int base = 16;

bool isTyped(QChar c)
{
    return c > u' ' && c < u'\x7F' && c != u'<';
}

} // namespace

QString shownSigns(const QString &command)
{
    QString shown;
    for (qsizetype i = 0; i < command.size(); ++i) {
        const QChar c = command[i];
        const bool isInnerBlank = c == u' ' && i > 0 && i + 1 < command.size();
        shown += isTyped(c) || isInnerBlank || c.unicode() > 0xFF
                     ? QString(c)
                     : u"<%1>"_s.arg(c.unicode(), 2, base, QChar(u'0')).toUpper();
    }
    return shown;
}

std::optional<QString> meantSigns(const QString &shown)
{
    QString command;
    for (qsizetype i = 0; i < shown.size(); ++i) {
        if (shown[i] != u'<') {
            command += shown[i];
            continue;
        }
        bool isNumber = false;
        const ushort code = shown.mid(i + 1, 2).toUShort(&isNumber, base);
        if (!isNumber || shown.mid(i + 3, 1) != u">")
            return std::nullopt;
        command += QChar(code);
        i += 3;
    }
    return command;
}
