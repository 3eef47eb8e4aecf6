-- Tamsora: what must hold in the tables at any moment, whoever was cut off in the middle of what. database/check runs
-- this file; by hand:
--     SET @pairs = '[[0,1],[0,2]]', @last_hour = 2; SOURCE check.sql;
-- @pairs are the entries of [Shared] in the settings, in their order; @last_hour is hour_end. Whoever runs it puts the
-- sales of the other counters where the comment "other counters" stands, and sets @all_counters = 1: by hand only the
-- first counter's sales are looked at.
--
-- It is one statement, so that counters may work meanwhile: it sees one moment. It needs the right to SELECT only, on
-- MariaDB 10.11 or MySQL 8, and gives a row for each fault: its name, the hour, the field, and what stands there.
-- The options of the program run it in parts: a SELECT, UNION ALL or ORDER BY of its own stands in the first column.

SET NAMES utf8mb4 COLLATE utf8mb4_bin;

WITH RECURSIVE
-- A booking on the whole takes the part in full, a booking on the part takes a part of the whole.
shared_pairs AS (
    SELECT place, whole, part
    FROM JSON_TABLE(COALESCE(@pairs, '[]'), '$[*]'
                    COLUMNS (place FOR ORDINALITY, whole INT PATH '$[0]', part INT PATH '$[1]')) AS entries
),
-- What lies in a field, through any number of steps.
inside AS (
    SELECT whole AS field, part FROM shared_pairs
    UNION
    SELECT inside.field, shared_pairs.part FROM inside JOIN shared_pairs ON shared_pairs.whole = inside.part
),
-- Fields with ground in common: one lies in the other, or both hold the same part.
same_ground AS (
    SELECT field, part AS other FROM inside WHERE field <> part
    UNION
    SELECT part, field FROM inside WHERE field <> part
    UNION
    SELECT a.field, b.field FROM inside AS a JOIN inside AS b ON b.part = a.part AND b.field <> a.field
),
-- The whole that counts a part's bookings is that of the first pair.
parents AS (
    SELECT part, whole FROM shared_pairs
    WHERE place = (SELECT MIN(earlier.place) FROM shared_pairs AS earlier WHERE earlier.part = shared_pairs.part)
),
-- The marker rows that a booking on one field leaves on others.
marks AS (
    SELECT whole AS field, part AS other, 'Shared Booking' AS words, 'a partner' AS whose FROM shared_pairs
    UNION ALL
    SELECT part, whole, 'Partially Shared', 'its whole' FROM parents
),
-- Extra time with the hour that it runs into.
extra_times AS (
    SELECT b_datetime, b_field, b_bookername, b_extratime,
           CONCAT(LEFT(b_datetime, 11), LPAD(IF(SUBSTRING(b_datetime, 12, 2) = '24', 1,
                                                SUBSTRING(b_datetime, 12, 2) + 1), 2, '0'), ':00:00') AS next_hour
    FROM tbl_booking
    WHERE b_extratime > 0 AND SUBSTRING(b_datetime, 12, 2) <> IF(COALESCE(@last_hour, 0) = 0, 24, LPAD(@last_hour, 2, '0'))
),
sold AS (
    SELECT 1 AS counter, c_transaction, c_datetime, c_item, c_itemtotal, c_receipt FROM tbl_counter1
    -- other counters
),
-- Booked hours that were sold, with what they brought: "Field Number 7 14/11/2026 18:00" is field 6.
sold_hours AS (
    SELECT CONVERT(CONCAT(LEFT(RIGHT(c_item, 10), 4), '-', LEFT(RIGHT(c_item, 13), 2), '-', LEFT(RIGHT(c_item, 16), 2),
                          ' ', RIGHT(c_item, 5), ':00') USING ascii) COLLATE ascii_bin AS slot,
           SUBSTRING_INDEX(SUBSTRING(c_item, 14), ' ', 1) - 1 AS field, SUM(c_itemtotal) AS brought
    FROM sold WHERE c_item REGEXP '^Field Number [0-9]{1,2} [0-9]{2}/[0-9]{2}/[0-9]{4} [0-9]{2}:[0-9]{2}$'
    GROUP BY slot, field
)

SELECT 'two bookers in one slot' AS fault, b_datetime AS slot, b_field AS field,
       GROUP_CONCAT(b_bookername ORDER BY b_id SEPARATOR ', ') AS words
FROM tbl_booking WHERE b_exclusive = 1
GROUP BY b_datetime, b_field HAVING COUNT(*) > 1

UNION ALL
SELECT 'two bookers on the same ground', a.b_datetime, a.b_field,
       CONCAT(a.b_bookername, '; on field ', b.b_field, ' ', b.b_bookername)
FROM same_ground
JOIN tbl_booking AS a ON a.b_field = same_ground.field AND a.b_exclusive = 1
JOIN tbl_booking AS b ON b.b_datetime = a.b_datetime AND b.b_field = same_ground.other AND b.b_exclusive = 1
WHERE same_ground.field < same_ground.other

UNION ALL
SELECT 'extra time into ground that is sold', a.b_datetime, a.b_field,
       CONCAT(a.b_bookername, '; the next hour on field ', b.b_field, ' ', b.b_bookername)
FROM extra_times AS a
JOIN tbl_booking AS b ON b.b_datetime = a.next_hour AND b.b_exclusive = 1
WHERE b.b_field = a.b_field
   OR b.b_field IN (SELECT same_ground.other FROM same_ground WHERE same_ground.field = a.b_field)

UNION ALL
SELECT CONCAT('a booking without the ', marks.words, ' row of ', marks.whose), a.b_datetime, a.b_field,
       CONCAT(a.b_bookername, '; none on field ', marks.other)
FROM marks
JOIN tbl_booking AS a ON a.b_field = marks.field AND a.b_exclusive = 1
WHERE NOT EXISTS (SELECT 1 FROM tbl_booking AS mark
                  WHERE mark.b_datetime = a.b_datetime AND mark.b_field = marks.other
                    AND mark.b_bookername = marks.words)

UNION ALL
SELECT 'a Shared Booking row without its booking', mark.b_datetime, mark.b_field, ''
FROM tbl_booking AS mark
WHERE mark.b_bookername = 'Shared Booking'
  AND NOT EXISTS (SELECT 1 FROM shared_pairs
                  JOIN tbl_booking AS a ON a.b_field = shared_pairs.whole AND a.b_exclusive = 1
                  WHERE shared_pairs.part = mark.b_field AND a.b_datetime = mark.b_datetime)

UNION ALL
SELECT 'a Partially Shared row that counts wrong', mark.b_datetime, mark.b_field,
       CONCAT('it says ', mark.b_shared, ', on the parts stand ', COUNT(a.b_id))
FROM tbl_booking AS mark
LEFT JOIN parents ON parents.whole = mark.b_field
LEFT JOIN tbl_booking AS a ON a.b_datetime = mark.b_datetime AND a.b_field = parents.part AND a.b_exclusive = 1
WHERE mark.b_bookername = 'Partially Shared'
GROUP BY mark.b_id, mark.b_datetime, mark.b_field, mark.b_shared
HAVING COUNT(a.b_id) <> mark.b_shared OR COUNT(a.b_id) = 0

UNION ALL
SELECT 'a marker row twice', b_datetime, b_field, b_bookername
FROM tbl_booking WHERE b_exclusive IS NULL
GROUP BY b_datetime, b_field, b_bookername HAVING COUNT(*) > 1

UNION ALL
-- The newest remark about a slot's own booking, whose words are neither of the two for marker rows, tells of a booking.
SELECT 'a booking without its remark', a.b_datetime, a.b_field, a.b_bookername
FROM tbl_booking AS a
WHERE a.b_exclusive = 1 AND a.b_staffname = ''
  AND COALESCE((SELECT own.m_job FROM tbl_remark AS own
                WHERE own.m_datetime = a.b_datetime AND own.m_field = a.b_field AND own.m_job IN ('book', 'cancel')
                  AND own.m_remark <> ' shared booking' AND own.m_remark NOT LIKE ' partially booked field %'
                ORDER BY own.m_id DESC LIMIT 1), '') <> 'book'

UNION ALL
SELECT 'a booking that is gone without a remark', own.m_datetime, own.m_field, own.m_remark
FROM tbl_remark AS own
WHERE own.m_job = 'book'
  AND own.m_remark <> ' shared booking' AND own.m_remark NOT LIKE ' partially booked field %'
  AND NOT EXISTS (SELECT 1 FROM tbl_booking AS a
                  WHERE a.b_datetime = own.m_datetime AND a.b_field = own.m_field AND a.b_exclusive = 1)
  AND NOT EXISTS (SELECT 1 FROM tbl_remark AS later
                  WHERE later.m_datetime = own.m_datetime AND later.m_field = own.m_field
                    AND later.m_id > own.m_id AND later.m_job IN ('book', 'cancel')
                    AND later.m_remark <> ' shared booking' AND later.m_remark NOT LIKE ' partially booked field %')

UNION ALL
SELECT 'a Shared Booking row without its remark', a.b_datetime, shared_pairs.part, ''
FROM shared_pairs
JOIN tbl_booking AS a ON a.b_field = shared_pairs.whole AND a.b_exclusive = 1 AND a.b_staffname = ''
WHERE COALESCE((SELECT m_job FROM tbl_remark
                WHERE m_datetime = a.b_datetime AND m_field = shared_pairs.part AND m_remark = ' shared booking'
                ORDER BY m_id DESC LIMIT 1), '') <> 'book'

UNION ALL
SELECT 'a Partially Shared row without its remarks', counted.b_datetime, counted.whole, ''
FROM (SELECT a.b_datetime, parents.whole, COUNT(*) AS bookings
      FROM parents
      JOIN tbl_booking AS a ON a.b_field = parents.part AND a.b_exclusive = 1 AND a.b_staffname = ''
      GROUP BY a.b_datetime, parents.whole) AS counted
WHERE counted.bookings > (SELECT COALESCE(SUM(IF(m_job = 'book', 1, -1)), 0) FROM tbl_remark
                          WHERE m_datetime = counted.b_datetime AND m_field = counted.whole
                            AND m_job IN ('book', 'cancel') AND m_remark LIKE ' partially booked field %')

UNION ALL
SELECT 'extra time without its remark', a.b_datetime, a.b_field, CONCAT(a.b_bookername, '; ', a.b_extratime)
FROM tbl_booking AS a
WHERE a.b_extratime > 0 AND a.b_staffname = ''
  AND COALESCE((SELECT m_remark FROM tbl_remark
                WHERE m_datetime = a.b_datetime AND m_field = a.b_field
                  AND (m_job IN ('extra time', 'delete extra time') OR (m_job = 'book' AND a.b_exclusive = 1
                       AND m_remark <> ' shared booking' AND m_remark NOT LIKE ' partially booked field %'))
                ORDER BY m_id DESC LIMIT 1), '') <> CONCAT(' for player adding ', a.b_extratime, ' minutes more ')

UNION ALL
SELECT 'extra time that is gone without a remark', a.b_datetime, a.b_field, a.b_bookername
FROM tbl_remark AS added
JOIN tbl_booking AS a
    ON a.b_datetime = added.m_datetime AND a.b_field = added.m_field AND a.b_exclusive = 1 AND a.b_extratime = 0
    AND a.b_staffname = ''
WHERE added.m_job = 'extra time'
  AND NOT EXISTS (SELECT 1 FROM tbl_remark AS later
                  WHERE later.m_datetime = added.m_datetime AND later.m_field = added.m_field
                    AND later.m_id > added.m_id AND later.m_job IN ('extra time', 'delete extra time', 'book'))

UNION ALL
SELECT 'a rate that is not the one of its remark', a.b_datetime, a.b_field,
       CONCAT(a.b_bookername, '; ', IF(a.b_specialrate = '', 'normal', a.b_specialrate))
FROM tbl_remark AS changed
JOIN tbl_booking AS a
    ON a.b_datetime = changed.m_datetime AND a.b_field = changed.m_field AND a.b_exclusive = 1 AND a.b_staffname = ''
WHERE changed.m_job = 'change rate'
  AND LEFT(changed.m_remark, CHAR_LENGTH(a.b_specialrate) + 10) <> CONCAT(' set ', a.b_specialrate, ' rate ')
  AND NOT EXISTS (SELECT 1 FROM tbl_remark AS later
                  WHERE later.m_datetime = changed.m_datetime AND later.m_field = changed.m_field
                    AND later.m_id > changed.m_id AND later.m_job IN ('change rate', 'book'))

UNION ALL
-- Paid and sold are written together, and nobody clears a paid hour.
SELECT 'a sold hour with another amount', a.b_datetime, a.b_field,
       CONCAT(a.b_bookername, '; sold for ', sold_hours.brought, ', paid stands as ', a.b_paid)
FROM sold_hours
JOIN tbl_booking AS a ON a.b_datetime = sold_hours.slot AND a.b_field = sold_hours.field AND a.b_exclusive = 1
WHERE ABS(a.b_paid - sold_hours.brought) >= 0.01

UNION ALL
-- Sales may have been put away to free their numbers, so only what was played a month after the oldest one counts.
SELECT 'a paid hour that no counter sold', a.b_datetime, a.b_field, CONCAT(a.b_bookername, '; ', a.b_paid)
FROM tbl_booking AS a
LEFT JOIN sold_hours ON sold_hours.slot = a.b_datetime AND sold_hours.field = a.b_field
WHERE @all_counters = 1 AND a.b_paid > 0 AND a.b_exclusive = 1 AND sold_hours.slot IS NULL
  AND LEFT(a.b_datetime, 10) > (SELECT CONVERT(DATE_FORMAT(DATE_ADD(MIN(c_datetime), INTERVAL 31 DAY), '%Y-%m-%d')
                                               USING ascii) COLLATE ascii_bin FROM sold)

UNION ALL
SELECT 'one receipt number on two sales', MIN(c_datetime), NULL,
       CONCAT('counter ', counter, ', receipt ', c_receipt, ': transactions ', MIN(c_transaction), ' and ', MAX(c_transaction))
FROM sold WHERE c_receipt > 0
GROUP BY counter, c_receipt HAVING COUNT(DISTINCT c_transaction) > 1

UNION ALL
SELECT 'two receipt numbers on one sale', MIN(c_datetime), NULL,
       CONCAT('counter ', counter, ', transaction ', c_transaction, ': receipts ', MIN(c_receipt), ' and ', MAX(c_receipt))
FROM sold
GROUP BY counter, c_transaction HAVING COUNT(DISTINCT c_receipt) > 1

ORDER BY slot, field, fault;
