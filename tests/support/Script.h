#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// How a script of the folder database ended, and what it said on both its outputs.
struct ScriptEnd
{
    int code = -1;
    QString found; ///< standard output
    QString said;  ///< standard error
};

/// Runs it to its end; `input` is what is typed. A prefix is a shell's text that the call follows: "ulimit -f 20;".
ScriptEnd runScript(const QString &name, const QStringList &options, const QByteArray &input = "\n",
                    const QString &prefix = {});

/// Starts it, and ends it by force with all its children (a kill) or as a terminal does (no kill), as soon as it has
/// said this. False when it ended before.
bool stopScript(const QString &name, const QStringList &options, const QString &whenSaid, bool kill);
