#include "Bookings.h"

namespace {

// The keys as "ADD …" and "DROP …": filled in one go without them, and sorted into them afterwards, takes half the
// time.
struct Keys
{
    QByteArrayList added;
    QByteArrayList dropped;
};

Keys keysOfBookings(BareClient &root)
{
    Keys keys;
    const auto lines = root.column("SHOW CREATE TABLE tbl_booking").value(0).split('\n');
    for (const QByteArray &line : lines) {
        QByteArray key = line.trimmed();
        if (!key.startsWith("KEY ") && !key.startsWith("UNIQUE KEY "))
            continue;
        if (key.endsWith(','))
            key.chop(1);
        keys.dropped << "DROP KEY " + key.split('`').at(1);
        keys.added << "ADD " + key;
    }
    return keys;
}

// Of two neighbouring fields one is booked in every hour, which one seems left to chance. 8 pairs of fields and 19
// hours make 152 bookings a day.
const QByteArray bookings =
    "INSERT INTO tbl_booking (b_datetime, b_field, b_bookername, b_bookerorg, b_bookertel, b_paid, b_extratime)"
    " SELECT CONCAT(CURDATE() - INTERVAL 3322 DAY + INTERVAL seq DIV 152 DAY, ' ',"
    " LPAD(IF(seq DIV 8 MOD 19 < 17, seq DIV 8 MOD 19 + 8, seq DIV 8 MOD 19 - 16), 2, '0'), ':00:00'),"
    " seq MOD 8 * 2 + CRC32(seq) MOD 2,"
    " CONCAT(ELT(CRC32(seq) DIV 2 MOD 8 + 1, 'Ada', 'Ben', 'Cleo', 'Dan', 'Eve', 'Finn', 'Gwen', 'Hugo'), ' Team ',"
    " CRC32(seq) MOD 4999), IF(CRC32(seq) MOD 3, '', 'Harbour School'),"
    " CONCAT('06', LPAD(CRC32(seq) MOD 100000000, 8, '0')),"
    " IF(seq < 500000, CRC32(seq) MOD 4 * 15, 0), IF(CRC32(seq) MOD 20 = 7, 30, 0)"
    " FROM seq_0_to_1009999";

} // namespace

qint64 makeMillionBookings(BareClient &root)
{
    root.send("TRUNCATE TABLE tbl_booking");
    const Keys keys = keysOfBookings(root);
    root.sendAll({"ALTER TABLE tbl_booking " + keys.dropped.join(", "), bookings,
                  "ALTER TABLE tbl_booking " + keys.added.join(", "), "ANALYZE TABLE tbl_booking"});
    return root.column("SELECT COUNT(*) FROM tbl_booking").value(0).toLongLong();
}
