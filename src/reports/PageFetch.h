#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>
#include <variant>

/// Why a page could not be had, in a plain sentence.
struct FetchFailure
{
    QString words;
};

using FetchedPage = std::variant<QByteArray, FetchFailure>;

/// Fetches a page of a web server ("http://host:port/path?query"), whole or not at all. It waits in place, as long as
/// told at most but for the look-up of the host's name: to be called off the windows' thread.
FetchedPage fetchPage(const QString &address, std::chrono::milliseconds patience);
