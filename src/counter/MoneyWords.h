#pragma once

#include "app/Prompts.h"

inline constexpr int longestAmount = 16;

/// Staff stand by the amounts that they counted.
inline bool isValueConfirmed(Prompts &prompts)
{
    return prompts.ask({QStringLiteral("Are you sure that the values is correct?"),
                        {},
                        MessageIcon::Warning,
                        {Answer::Ok, Answer::Cancel},
                        Answer::Cancel}) == Answer::Ok;
}
