#include "Comparison.h"

#include <QElapsedTimer>
#include <QTextStream>

#include <algorithm>

namespace {

double median(std::vector<double> values)
{
    const auto middle = values.begin() + qsizetype(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace

void Comparison::print() const
{
    const double mine = median(ours);
    const double least = median(bare);
    QTextStream(stdout) << name << '\t' << QString::number(mine, 'f', 2) << '\t' << QString::number(least, 'f', 2)
                        << '\t' << QString::number(mine / least, 'f', 2) << Qt::endl;
    if (mine > least * wantedRatio + allowance)
        QTextStream(stderr) << name << ": wanted at most " << QString::number(least * wantedRatio + allowance, 'f', 2)
                            << Qt::endl;
}

double milliseconds(const std::function<void()> &work)
{
    constexpr double nanosecondsOfMillisecond = 1e6;
    QElapsedTimer timer;
    timer.start();
    work();
    return double(timer.nsecsElapsed()) / nanosecondsOfMillisecond;
}
