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

void writeRemark(const Station &station, Operation &operation, const Remark &remark)
{
    const QString now = sqlDateTime(station.now());
    const QString slot = remark.slot.dateTimeText();
    const QString staff = quoted(remark.staff);
    operation.insertProof(sql(u"INSERT INTO tbl_remark SET m_dotime='%1',%2m_datetime='%3', m_remark='%4', m_job='%5' "
                              ",m_field=%6, m_staff='%7', m_actiontime='%8'"_s,
                              now, remark.gap, slot, quoted(remark.text), remark.job, remark.slot.field, staff,
                              station.timeText),
                          u"tbl_remark"_s, u"m_id"_s,
                          sql(u"m_dotime='%1' AND m_datetime='%2' AND m_field=%3 AND m_job='%4' AND m_staff='%5'"_s,
                              now, slot, remark.slot.field, remark.job, staff));
}

QString slotHistory(Database &database, const SlotKey &slot)
{
    DbConnection connection(database);
    QString history;
    DbRows remarks = connection.query(sql(u"SELECT m_staff, m_job, m_remark, m_actiontime from tbl_remark where "
                                          "m_datetime=\"%1\" AND m_field=%2 ORDER BY m_id ASC; "_s,
                                          slot.dateTimeText(), slot.field));
    while (remarks.next())
        history += historyLine(remarks);
    DbRows booking = connection.query(sql(u"SELECT b_specialrate, b_staffname from tbl_booking where b_datetime=\"%1\" "
                                          "AND b_field=%2;"_s,
                                          slot.dateTimeText(), slot.field));
    while (booking.next()) {
        if (const QString staff = booking.text("b_staffname"); !staff.isEmpty())
            history += u"old record : "_s + staff + u" book\r\n"_s;
        if (const QString rate = booking.text("b_specialrate"); !rate.isEmpty())
            history += u"Special Rate Package = "_s + rate;
    }
    return history;
}
