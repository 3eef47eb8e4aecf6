#pragma once

#include "app/Database.h"
#include "app/Prompts.h"

#include <stdexcept>
#include <utility>

/// What kept an operation from being done, in plain words for staff: shown as a message, not in the error window.
class NotDone : public std::runtime_error
{
public:
    explicit NotDone(const QString &words) : std::runtime_error(words.toStdString()) {}
};

/// The codes of the error window. 4 and 5 stand in this order on purpose.
enum class ErrorCode { Login = 1, LogFile = 2, Database = 3, Unknown = 4, LoadingForm = 5 };

/// The fixed message of a code; "Unknown Error" for any code without one.
QString errorMessage(ErrorCode code);

/// Shows the code's message with the description and source of the error that is being handled. To be called from a
/// catch block; returns when the window is closed.
void ShowError(Prompts &prompts, ErrorCode code);

/// Runs an action of a window and shows what it throws. True when it threw nothing. An action that was begun while the
/// database keeps another one waiting ends in silence.
template <typename Action>
bool guarded(Prompts &prompts, ErrorCode code, Action &&action)
{
    try {
        std::forward<Action>(action)();
        return true;
    } catch (const DatabaseBusy &) {
        return false;
    } catch (const NotDone &reason) {
        prompts.inform(QString::fromUtf8(reason.what()));
        return false;
    } catch (...) {
        ShowError(prompts, code);
        return false;
    }
}

/// Runs an action that nobody asked for: quick to give up, and silent about a database that does not answer. True when
/// it came through.
template <typename Action>
bool quietly(Database &database, Action &&action)
{
    const QuietReads quiet(database);
    try {
        std::forward<Action>(action)();
        return true;
    } catch (const DatabaseBusy &) {
        return false;
    } catch (const DbError &) {
        return false;
    }
}
