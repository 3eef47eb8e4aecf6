#pragma once

#include <QString>

#include <functional>
#include <vector>

/// One line of the outcome: the same work done by the program and by the least that could do it, measured in turn.
struct Comparison
{
    QString name;
    double wantedRatio = 1.10;
    double allowance = 0; ///< what the program may take on top, in the line's own unit
    std::vector<double> ours = {};
    std::vector<double> bare = {};

    /// Prints name, medians and their ratio, separated by tabs, on the standard output; a wanted ratio that was missed
    /// is told on the standard error output.
    void print() const;
};

/// How long some work takes, in milliseconds.
double milliseconds(const std::function<void()> &work);
