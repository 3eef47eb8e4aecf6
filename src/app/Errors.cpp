#include "app/Errors.h"

#include "app/Database.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {

struct Description
{
    QString text;
    QString source;
};

Description describe(const std::exception_ptr &error)
{
    if (!error)
        return {};
    try {
        std::rethrow_exception(error);
    } catch (const DbError &e) {
        QString source = u"database server"_s;
        if (e.number() != 0)
            source += u", error "_s + QString::number(e.number());
        if (!e.statement().isEmpty())
            source += u"\r\n"_s + e.statement();
        return {QString::fromUtf8(e.what()), source};
    } catch (const std::exception &e) {
        return {QString::fromUtf8(e.what()), QCoreApplication::applicationName()};
    } catch (...) {
        return {u"An error without a description"_s, QCoreApplication::applicationName()};
    }
}

} // namespace

QString errorMessage(ErrorCode code)
{
    switch (code) {
    case ErrorCode::Login:
        return u"Database server cannot be found when trying to login to the system"_s;
    case ErrorCode::LogFile:
        return u"Error while writing to log files"_s;
    case ErrorCode::Database:
        return u"Error while accessing database"_s;
    case ErrorCode::LoadingForm:
        return u"Error while loading form"_s;
    case ErrorCode::Unknown:
        break;
    }
    return u"Unknown Error"_s;
}

void ShowError(Prompts &prompts, ErrorCode code)
{
    const auto [text, source] = describe(std::current_exception());
    prompts.showError(errorMessage(code), text + u"\r\n\r\nSource : "_s + source + u"\r\n\r\n"_s);
}
