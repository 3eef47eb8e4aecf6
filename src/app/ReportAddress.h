#pragma once

#include "app/Settings.h"

/// Where the report web server shows a page; an address as text.
namespace ReportAddress {

/// day "yyyy-mm-dd": "http://127.0.0.1:8088/report/booking.asp?date=2026-11-14"
QString ofBookings(const AppSettings &settings, const QString &day);
/// "http://127.0.0.1:8088/report/counter.asp?counter=1"
QString ofCounter(const AppSettings &settings, int counter);

} // namespace ReportAddress
