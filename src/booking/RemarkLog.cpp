#include "booking/RemarkLog.h"

#include "app/Formats.h"
#include "app/SqlText.h"

using namespace Qt::StringLiterals;

namespace {

QString historyLine(const DbRows &row)
{
    const QString staff = row.text("m_staff");
    if (staff.isEmpty())
        return {};
    const QString job = row.text("m_job");
    const QString begin = row.text("m_actiontime") + u": "_s + staff;
    if (job == u"cancel")
        return begin + u' ' + job + u" because booker said '"_s + row.text("m_remark") + u"'\r\n"_s;
    if (job == u"book" || job == u"change rate")
        return begin + u' ' + job + row.text("m_remark") + u"\r\n"_s;
    if (job == u"extra time")
        return begin + u" add "_s + job + row.text("m_remark") + u"\r\n"_s;
    if (job == u"delete extra time")
        return begin + u" delete extra time \r\n"_s;
    return {};
}

} // namespace

void writeRemark(const Station &station, DbConnection &connection, const Remark &remark)
{
    QString text = remark.text;
    QString staff = remark.staff;
    connection.execute(u"INSERT INTO tbl_remark SET m_dotime='"_s + sqlDateTime(station.now()) + u"',"_s + remark.gap +
                       u"m_datetime='"_s + remark.slot.dateTimeText() + u"', m_remark='"_s + EscapeQuotes(text) +
                       u"', m_job='"_s + remark.job + u"' ,m_field="_s + QString::number(remark.slot.field) +
                       u", m_staff='"_s + EscapeQuotes(staff) + u"', m_actiontime='"_s + station.timeText + u"'"_s);
}

QString slotHistory(Database &database, const SlotKey &slot)
{
    const QString when = u'"' + slot.dateTimeText() + u'"';
    const QString field = QString::number(slot.field);
    DbConnection connection(database);
    QString history;
    DbRows remarks = connection.query(u"SELECT m_staff, m_job, m_remark, m_actiontime from tbl_remark where "
                                      u"m_datetime="_s +
                                      when + u" AND m_field="_s + field + u" ORDER BY m_id ASC; "_s);
    while (remarks.next())
        history += historyLine(remarks);
    DbRows booking = connection.query(u"SELECT b_specialrate, b_staffname from tbl_booking where b_datetime="_s + when +
                                      u" AND b_field="_s + field + u";"_s);
    while (booking.next()) {
        if (const QString staff = booking.text("b_staffname"); !staff.isEmpty())
            history += u"old record : "_s + staff + u" book\r\n"_s;
        if (const QString rate = booking.text("b_specialrate"); !rate.isEmpty())
            history += u"Special Rate Package = "_s + rate;
    }
    return history;
}
