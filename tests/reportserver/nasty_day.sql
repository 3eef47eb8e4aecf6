-- What the reports are tested with: 14 November 2026, a Saturday, and what lies beside it and must not come in.
INSERT INTO tbl_booking (b_datetime, b_field, b_bookername, b_bookertel, b_specialrate, b_extratime, b_paid) VALUES
    ('2026-11-14 08:00:00', 6, 'O''Neil & <script>alert("1")</script> %1', '<b>555</b>', '', 0, 50.10),
    ('2026-11-14 09:00:00', 6, REPEAT('W', 255), '0', 'specialgroup2', 0, 0),
    ('2026-11-14 13:00:00', 7, 'ليلى الخطيب', '1', 'member', 30, 0),
    ('2026-11-14 14:00:00', 7, 'Now playing', '1', '', 0, 0),
    ('2026-11-14 23:00:00', 6, 'shared booking', '2', 'student', 0, 0.01),
    ('2026-11-14 24:00:00', 8, 'Midnight', '3', '', 15, 0),
    ('2026-11-14 01:00:00', 8, 'After midnight', '4', '', 45, 33.33),
    ('2026-11-14 02:00:00', 8, 'Last', '5', '', 0, 33.33),
    ('2026-11-14 18:00:00', 0, 'Whole', '6', '', 0, 1234.50),
    ('2026-11-14 18:00:00', 1, 'Shared Booking', '', '', 0, 0),
    ('2026-11-14 18:00:00', 2, 'Shared Booking', '', '', 0, 0),
    ('2026-11-14 20:00:00', 4, 'Half', '7', '', 0, 20),
    ('2026-11-14 20:00:00', 3, 'Partially Shared', '', '', 0, 0),
    ('2026-11-14 20:00:00', 3, 'Partially Shared', '', '', 0, 0),
    ('2026-11-14 21:00:00', 6, '', '', '', 0, 0),
    ('2026-11-13 24:00:00', 6, 'The day before', '8', '', 15, 7),
    ('2026-11-15 08:00:00', 6, 'The day after', '9', '', 15, 8),
    ('2026-11-01 08:00:00', 6, 'First of the month', '9', '', 0, 9),
    ('2026-11-30 24:00:00', 6, 'Last of the month', '9', '', 0, 10),
    ('2026-12-01 08:00:00', 6, 'Next month', '9', '', 0, 11);
INSERT INTO tbl_waitlist (w_datetime, w_field, w_bookername) VALUES
    ('2026-11-14 24:00:00', 6, 'Waits'), ('2026-11-14 10:00:00', 7, 'Waits too'), ('2026-11-15 10:00:00', 7, 'Elsewhere');
INSERT INTO tbl_counter1 (c_transaction, c_datetime, c_item, c_itemprice, c_itemquantity, c_itemtotal, c_receipt, c_staffid) VALUES
    (1, '2026-11-14 04:59:59', 'Coffee', 1000, 1, 1000, 0, 'anna'),
    (2, '2026-11-14 05:00:00', 'Coffee', 1.80, 2, 3.60, 0, 'anna'),
    (3, '2026-11-14 12:00:00', 'Field Number 7 14/11/2026 08:00', 40.08, 1.25, 50.10, 9, 'o''hara'),
    (3, '2026-11-14 12:00:01', 'Field Number One', 5, 1, 5, 9, 'o''hara'),
    (3, '2026-11-14 12:00:01', '<i>"Misc" & more</i>', 0.1, 3, 0.30, 9, 'o''hara'),
    (4, '2026-11-14 17:00:00', 'Field Number 1 14/11/2026 18:00', 1234.50, 1, 1234.50, 10, 'anna'),
    (5, '2026-11-15 03:09:00', 'coffee', 1.80, 1, 1.80, 0, 'anna'),
    (6, '2026-11-15 04:59:59', 'Field Number 9 14/11/2026 02:00', 33.33, 1, 33.33, 0, 'anna'),
    (7, '2026-11-15 05:00:00', 'Coffee', 2000, 1, 2000, 0, 'anna');
INSERT INTO tbl_counter2 (c_transaction, c_datetime, c_item, c_itemprice, c_itemquantity, c_itemtotal, c_staffid) VALUES
    (1, '2026-11-14 11:00:00', 'Coffee', 1.80, 1, 1.80, 'bert'),
    (2, '2026-11-14 23:59:59', 'Field Number 9 14/11/2026 01:00', 33.33, 1, 33.33, 'bert');
INSERT INTO tbl_shift1 (sh_datetime, sh_lastdatetime, sh_shift, sh_staff, sh_float, sh_totalmoney, sh_sales) VALUES
    ('2026-11-14 16:00:00', '', 'morning', 'o''hara', 150, 1160, 1010),
    ('2026-11-15 03:10:00', '2026-11-14 16:00:00', 'evening', 'anna', 80, 1130, 1050);
INSERT INTO tbl_log (log_counter, log_datetime, log_staffname, log_do) VALUES
    (1, '2026-11-14 16:00:00', 'anna', 'Cash Collected 1'), (1, '2026-11-14 16:00:01', 'anna', 'Cash Collected 200.5'),
    (1, '2026-11-15 03:10:00', 'anna', 'Cash Collected 50'), (1, '2026-11-15 03:10:01', 'anna', 'Cash Collected 2'),
    (2, '2026-11-14 18:00:00', 'bert', 'Cash Collected 4'), (1, '2026-11-14 18:00:00', 'anna', 'No Sale 8');
