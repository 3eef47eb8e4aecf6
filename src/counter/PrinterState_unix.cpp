#include "counter/PrinterState.h"

#include <QLibrary>
#include <QPrinterInfo>

#include <array>

using namespace Qt::StringLiterals;

namespace {

// What is used of the printing system's client library, which is there wherever Qt finds printers.
struct CupsOption
{
    char *name;
    char *value;
};
struct CupsQueue
{
    char *name;
    char *instance;
    int isDefault;
    int optionCount;
    CupsOption *options;
};

class Cups
{
public:
    Cups()
        : m_library(u"cups"_s, 2),
          getQueue(resolved<decltype(getQueue)>("cupsGetNamedDest")),
          getOption(resolved<decltype(getOption)>("cupsGetOption")),
          freeQueues(resolved<decltype(freeQueues)>("cupsFreeDests"))
    {
    }

    [[nodiscard]] bool isThere() const { return getQueue && getOption && freeQueues; }

private:
    template <typename Function>
    Function resolved(const char *name)
    {
        return reinterpret_cast<Function>(m_library.resolve(name));
    }

    QLibrary m_library;

public:
    CupsQueue *(*getQueue)(void *server, const char *name, const char *instance);
    const char *(*getOption)(const char *name, int count, CupsOption *options);
    void (*freeQueues)(int count, CupsQueue *queues);
};

constexpr int stopped = 5;
constexpr int idle = 3;

// The reasons are words of the printing protocol; "-error", "-warning" or "-report" may follow.
QString inWords(const QString &reasons)
{
    static const std::array<std::pair<QLatin1StringView, QLatin1StringView>, 9> known{{
        {"offline"_L1, "is switched off or not connected"_L1},
        {"connecting-to-device"_L1, "is switched off or not connected"_L1},
        {"timed-out"_L1, "is switched off or not connected"_L1},
        {"media-empty"_L1, "is out of paper"_L1},
        {"media-needed"_L1, "is out of paper"_L1},
        {"media-jam"_L1, "has a paper jam"_L1},
        {"cover-open"_L1, "is open"_L1},
        {"door-open"_L1, "is open"_L1},
        {"toner-empty"_L1, "has no ink"_L1},
    }};
    for (const auto &[reason, words] : known)
        if (reasons.contains(reason))
            return words;
    return {};
}

} // namespace

PrinterState PrinterState::of(const QString &printer)
{
    static const Cups cups;
    if (!cups.isThere())
        return {!QPrinterInfo::printerInfo(printer).isNull()};
    CupsQueue *queue = cups.getQueue(nullptr, printer.toUtf8().constData(), nullptr);
    if (!queue)
        return {};
    const auto option = [&](const char *name) {
        return QString::fromUtf8(cups.getOption(name, queue->optionCount, queue->options));
    };
    const int state = option("printer-state").toInt();
    const PrinterState result{true, state != stopped && option("printer-is-accepting-jobs") != u"false", state == idle,
                              inWords(option("printer-state-reasons"))};
    cups.freeQueues(1, queue);
    return result;
}
