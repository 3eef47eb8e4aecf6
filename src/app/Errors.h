#pragma once

#include "app/Prompts.h"

#include <utility>

/// The codes of the error window. 4 and 5 stand in this order on purpose.
enum class ErrorCode { Login = 1, LogFile = 2, Database = 3, Unknown = 4, LoadingForm = 5 };

/// The fixed message of a code; "Unknown Error" for any code without one.
QString errorMessage(ErrorCode code);

/// Shows the code's message with the description and source of the error that is being handled. To be called from a
/// catch block; returns when the window is closed.
void ShowError(Prompts &prompts, ErrorCode code);

/// Runs an action of a window and shows what it throws. True when it threw nothing.
template <typename Action>
bool guarded(Prompts &prompts, ErrorCode code, Action &&action)
{
    try {
        std::forward<Action>(action)();
        return true;
    } catch (...) {
        ShowError(prompts, code);
        return false;
    }
}
