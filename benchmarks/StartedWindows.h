#pragma once

#include "Comparison.h"

#include <QByteArrayList>
#include <QStringList>

#include <vector>

/// A program started anew: how long until its first window stood on the screen, how long its second one took, and the
/// most memory that it held. Milliseconds and MiB.
struct StartedWindows
{
    double start = 0;
    double second = 0;
    double peakMemory = 0;
    QString firstSize; ///< "720x420"
    QString secondSize;

    /// Starts it and waits until it ends. Throws std::runtime_error when it tells less than that of `windows` windows.
    static StartedWindows run(const QString &program, const QStringList &arguments, int windows);
};

/// The program as people start it, which logs itself in and tells how its windows fared; to be started by run().
/// Gives the exit code.
int showProgram(const QString &login, const QString &password);
