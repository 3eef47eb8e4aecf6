#include "app/ReportAddress.h"

using namespace Qt::StringLiterals;

namespace ReportAddress {

QString ofBookings(const AppSettings &settings, const QString &day)
{
    return u"http://"_s + settings.webServer + u"/report/booking.asp?date="_s + day;
}

QString ofCounter(const AppSettings &settings, int counter)
{
    return u"http://"_s + settings.webServer + u"/report/counter.asp?counter="_s + QString::number(counter);
}

} // namespace ReportAddress
