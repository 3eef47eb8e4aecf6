#pragma once

#include <QString>

#include <exception>

/// What a step throws; empty when it comes through.
template <typename Step>
QString messageOf(Step step)
{
    try {
        step();
    } catch (const std::exception &error) {
        return QString::fromUtf8(error.what());
    }
    return {};
}
