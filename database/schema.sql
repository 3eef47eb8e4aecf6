-- Tamsora: the tables of the centre's database.
--
-- Load it into an existing, empty database (MariaDB 10.11 or later, MySQL 8):
--     mariadb posdb < schema.sql
-- Loading it again changes nothing. All counters share these tables. The program itself adds only the copies of
-- tbl_counter1, tbl_shift1 and tbl_booking_clipboard1 for the counters 2, 3 and so on, made from the definitions below:
-- their comments and key names must therefore hold for every counter.
--
-- Rules of the house
--   * A slot is one hour of one field: a date-time text and a field number from 0. The text is a text and no DATETIME,
--     because hours after midnight keep the date of the business day that they belong to and midnight is its hour 24:
--     '2026-11-14 23:00:00', '2026-11-14 24:00:00', '2026-11-14 01:00:00' follow each other.
--   * Values of the clock on the wall are DATETIME. Nothing here knows of time zones.
--   * The program sends numbers as text too, and an empty text for "no number yet", and opens its sessions with an
--     empty sql_mode for that. So a number column takes '' as 0, and every column has a default.
--   * Numbers whose maximum is asked for (transaction, receipt, invoice) are INT: among texts 9 would beat 10.
--   * Bookers' texts, logins and passwords compare exactly (utf8mb4_bin). Registers and the catalogue are searched by
--     people and compare without regard to case and accents (utf8mb4_unicode_520_ci).
--   * Every table has a primary key, also where nothing asks for one: replication and clusters need it.
--   * No foreign keys, views, triggers or procedures.

SET NAMES utf8mb4;

-- ---------------------------------------------------------------------------------------------------------------------
-- The day: bookings, their history, the waiting list, the lights
-- ---------------------------------------------------------------------------------------------------------------------

CREATE TABLE IF NOT EXISTS tbl_booking (
    b_id          INT UNSIGNED  NOT NULL AUTO_INCREMENT COMMENT 'row id',
    b_datetime    VARCHAR(19) CHARACTER SET ascii COLLATE ascii_bin NOT NULL DEFAULT ''
                  COMMENT 'slot: business day, a blank, the hour 01 to 24, :00:00',
    b_field       INT           NOT NULL DEFAULT 0  COMMENT 'slot: field number from 0',
    b_bookername  VARCHAR(255)  NOT NULL DEFAULT '' COMMENT 'booker, or one of the marker texts Shared Booking and Partially Shared',
    b_bookerorg   VARCHAR(255)  NOT NULL DEFAULT '' COMMENT 'organisation of the booker',
    b_bookertel   VARCHAR(64)   NOT NULL DEFAULT '' COMMENT 'telephone of the booker',
    b_specialrate VARCHAR(32)   NOT NULL DEFAULT '' COMMENT 'rate type: empty for normal, member, student, specialgroup and a number',
    b_shared      INT           NOT NULL DEFAULT 0  COMMENT 'on a Partially Shared row: bookings that stand on the partner fields',
    b_extratime   INT           NOT NULL DEFAULT 0  COMMENT 'extra minutes that run into the next hour: 0, 15, 30 or 45',
    b_paid        DECIMAL(12,2) NOT NULL DEFAULT 0  COMMENT 'amount paid for the hour, above 0 means paid',
    b_invoice     INT           NOT NULL DEFAULT 0  COMMENT 'number of the invoice printed for the hour, 0 for none, counted over the whole table',
    b_staffname   VARCHAR(64)   NOT NULL DEFAULT '' COMMENT 'who booked, on rows older than the remark log, otherwise empty',
    b_exclusive   TINYINT GENERATED ALWAYS AS
                  (IF(b_bookername IN ('Shared Booking', 'Partially Shared'), NULL, 1)) VIRTUAL
                  COMMENT '1 for a booker, NULL for a marker row',
    PRIMARY KEY (b_id),
    -- Two bookers never hold the same hour, while marker rows (NULL) may repeat. Its beginning finds a slot, and all
    -- fields of an hour in the order of the fields.
    UNIQUE KEY slot_of_one_booker (b_datetime, b_field, b_exclusive),
    -- A field's day for the grid, answered from the index alone.
    KEY grid_of_field (b_field, b_datetime, b_bookername, b_bookertel, b_paid, b_extratime),
    -- The highest invoice number, and the slots of an invoice.
    KEY invoice (b_invoice)
) ENGINE = InnoDB DEFAULT CHARACTER SET utf8mb4 COLLATE utf8mb4_bin
  COMMENT = 'Booked hours, one row for each field and hour, and the marker rows of shared fields';

CREATE TABLE IF NOT EXISTS tbl_remark (
    m_id         INT UNSIGNED  NOT NULL AUTO_INCREMENT COMMENT 'row id, the order of the history',
    m_dotime     DATETIME      NULL                COMMENT 'when it was done',
    m_datetime   VARCHAR(19) CHARACTER SET ascii COLLATE ascii_bin NOT NULL DEFAULT ''
                 COMMENT 'slot concerned, as b_datetime',
    m_field      INT           NOT NULL DEFAULT 0  COMMENT 'slot concerned, as b_field',
    m_remark     VARCHAR(1000) NOT NULL DEFAULT '' COMMENT 'booker and telephone, the reason of a cancelling, or what was changed',
    m_job        VARCHAR(32)   NOT NULL DEFAULT '' COMMENT 'book, cancel, change rate, extra time or delete extra time',
    m_staff      VARCHAR(64)   NOT NULL DEFAULT '' COMMENT 'login of the staff member who confirmed it',
    m_actiontime VARCHAR(32)   NOT NULL DEFAULT '' COMMENT 'time as the main window showed it, such as 14 Nov 01:07:08 PM',
    PRIMARY KEY (m_id),
    KEY history_of_slot (m_datetime, m_field, m_id)
) ENGINE = InnoDB DEFAULT CHARACTER SET utf8mb4 COLLATE utf8mb4_bin
  COMMENT = 'What was done to each slot, by whom and when, only ever added to';

CREATE TABLE IF NOT EXISTS tbl_waitlist (
    w_id          INT UNSIGNED NOT NULL AUTO_INCREMENT COMMENT 'entry id, shown in the list',
    w_datetime    VARCHAR(19) CHARACTER SET ascii COLLATE ascii_bin NOT NULL DEFAULT ''
                  COMMENT 'wanted slot, as b_datetime',
    w_field       INT          NOT NULL DEFAULT 0  COMMENT 'wanted field number from 0',
    w_bookername  VARCHAR(255) NOT NULL DEFAULT '' COMMENT 'who wants the hour',
    w_bookerorg   VARCHAR(255) NOT NULL DEFAULT '' COMMENT 'organisation',
    w_bookertel   VARCHAR(64)  NOT NULL DEFAULT '' COMMENT 'telephone',
    w_specialrate VARCHAR(32)  NOT NULL DEFAULT '' COMMENT 'rate type, as b_specialrate',
    w_staffname   VARCHAR(64)  NOT NULL DEFAULT '' COMMENT 'login of the staff member who took the entry',
    PRIMARY KEY (w_id),
    KEY wanted_slot (w_field, w_datetime)
) ENGINE = InnoDB DEFAULT CHARACTER SET utf8mb4 COLLATE utf8mb4_bin
  COMMENT = 'Who wants an hour that is taken';

CREATE TABLE IF NOT EXISTS tbl_waitlist_clipboard (
    w_id          INT UNSIGNED NOT NULL AUTO_INCREMENT COMMENT 'row id, counted up by itself: emptying the table names the rows above 0',
    w_datetime    VARCHAR(19) CHARACTER SET ascii COLLATE ascii_bin NOT NULL DEFAULT ''
                  COMMENT 'as in tbl_waitlist, like all columns that follow',
    w_field       INT          NOT NULL DEFAULT 0  COMMENT 'wanted field number from 0',
    w_bookername  VARCHAR(255) NOT NULL DEFAULT '' COMMENT 'who wants the hour',
    w_bookerorg   VARCHAR(255) NOT NULL DEFAULT '' COMMENT 'organisation',
    w_bookertel   VARCHAR(64)  NOT NULL DEFAULT '' COMMENT 'telephone',
    w_specialrate VARCHAR(32)  NOT NULL DEFAULT '' COMMENT 'rate type',
    w_staffname   VARCHAR(64)  NOT NULL DEFAULT '' COMMENT 'login of the staff member who took the entry',
    PRIMARY KEY (w_id)
) ENGINE = InnoDB DEFAULT CHARACTER SET utf8mb4 COLLATE utf8mb4_bin
  COMMENT = 'The waiting-list entry that was cut last, at whichever counter, held for pasting';

CREATE TABLE IF NOT EXISTS tbl_light (
    l_id       INT UNSIGNED NOT NULL AUTO_INCREMENT COMMENT 'row id',
    l_field    INT          NOT NULL DEFAULT 0  COMMENT 'field number from 0',
    l_staff    VARCHAR(64)  NOT NULL DEFAULT '' COMMENT 'login of the staff member who switched',
    l_datetime DATETIME     NULL                COMMENT 'when the switches were committed',
    l_row0     VARCHAR(3)   NOT NULL DEFAULT 'off' COMMENT 'light row 0: on or off',
    l_row1     VARCHAR(3)   NOT NULL DEFAULT 'off' COMMENT 'light row 1',
    l_row2     VARCHAR(3)   NOT NULL DEFAULT 'off' COMMENT 'light row 2',
    l_row3     VARCHAR(3)   NOT NULL DEFAULT 'off' COMMENT 'light row 3',
    l_row4     VARCHAR(3)   NOT NULL DEFAULT 'off' COMMENT 'light row 4',
    PRIMARY KEY (l_id),
    -- The last known state of a field is its newest row.
    KEY newest_of_field (l_field, l_datetime)
) ENGINE = InnoDB DEFAULT CHARACTER SET utf8mb4 COLLATE utf8mb4_bin
  COMMENT = 'Log of the switched field lights, only ever added to';

-- ---------------------------------------------------------------------------------------------------------------------
-- Prices and goods
-- ---------------------------------------------------------------------------------------------------------------------

CREATE TABLE IF NOT EXISTS tbl_rate (
    r_id        INT UNSIGNED  NOT NULL AUTO_INCREMENT COMMENT 'row id',
    r_day       VARCHAR(16)   NOT NULL DEFAULT '' COMMENT 'full English name of the weekday, Monday to Sunday',
    r_field     INT           NOT NULL DEFAULT 0  COMMENT 'field number from 0',
    r_special   VARCHAR(32)   NOT NULL DEFAULT '' COMMENT 'rate type, as b_specialrate',
    r_timestart INT           NOT NULL DEFAULT 0  COMMENT 'first hour, 0 to 23, midnight is 0',
    r_timestop  INT           NOT NULL DEFAULT 0  COMMENT 'last hour, 0 to 23, itself included',
    r_rate      DECIMAL(12,2) NOT NULL DEFAULT 0  COMMENT 'price of one hour',
    PRIMARY KEY (r_id),
    -- Bands of one day, field and rate type must not overlap: which row would be found first is open.
    KEY price_of_hour (r_field, r_day, r_special, r_timestart, r_timestop, r_rate)
) ENGINE = InnoDB DEFAULT CHARACTER SET utf8mb4 COLLATE utf8mb4_unicode_520_ci
  COMMENT = 'What an hour costs, by weekday, field, rate type and hour of the day. No row means that it is free of charge';

CREATE TABLE IF NOT EXISTS tbl_item (
    i_id           INT           NOT NULL AUTO_INCREMENT COMMENT 'item number, given by staff when they add the item',
    i_name         VARCHAR(120)  NOT NULL DEFAULT '' COMMENT 'name, by which a sale lowers the stock too',
    i_type         VARCHAR(64)   NOT NULL DEFAULT '' COMMENT 'kind of goods, the order of the counter list',
    i_key          VARCHAR(16)   NOT NULL DEFAULT '' COMMENT 'short-cut key, such as F1',
    i_price        DECIMAL(12,2) NOT NULL DEFAULT 0  COMMENT 'price of one piece',
    i_currentstock INT           NOT NULL DEFAULT 0  COMMENT 'pieces in stock, lowered by each sale, below 0 when more was sold than counted',
    PRIMARY KEY (i_id),
    KEY sold_name (i_name),
    KEY counter_list (i_type)
) ENGINE = InnoDB DEFAULT CHARACTER SET utf8mb4 COLLATE utf8mb4_unicode_520_ci
  COMMENT = 'Goods sold at the counters and their stock';

-- ---------------------------------------------------------------------------------------------------------------------
-- Customers: registers that give a cheaper rate
-- ---------------------------------------------------------------------------------------------------------------------

CREATE TABLE IF NOT EXISTS tbl_member (
    m_id   INT UNSIGNED NOT NULL AUTO_INCREMENT COMMENT 'row id',
    m_idno VARCHAR(64)  NOT NULL DEFAULT '' COMMENT 'membership number, at least 7 characters, shorter ones are not looked up',
    m_name VARCHAR(255) NOT NULL DEFAULT '' COMMENT 'name, by which paid hours are credited',
    m_org  VARCHAR(255) NOT NULL DEFAULT '' COMMENT 'organisation',
    m_tel  VARCHAR(64)  NOT NULL DEFAULT '' COMMENT 'telephone',
    m_hour INT          NOT NULL DEFAULT 0  COMMENT 'hours played and paid',
    PRIMARY KEY (m_id),
    KEY number (m_idno),
    KEY name (m_name)
) ENGINE = InnoDB DEFAULT CHARACTER SET utf8mb4 COLLATE utf8mb4_unicode_520_ci
  COMMENT = 'Register of members';

CREATE TABLE IF NOT EXISTS tbl_student (
    st_id   INT UNSIGNED NOT NULL AUTO_INCREMENT COMMENT 'row id',
    st_idno VARCHAR(64)  NOT NULL DEFAULT '' COMMENT 'student number, at least 7 characters',
    st_name VARCHAR(255) NOT NULL DEFAULT '' COMMENT 'name, by which paid hours are credited',
    st_org  VARCHAR(255) NOT NULL DEFAULT '' COMMENT 'school or university',
    st_tel  VARCHAR(64)  NOT NULL DEFAULT '' COMMENT 'telephone',
    st_hour INT          NOT NULL DEFAULT 0  COMMENT 'hours played and paid',
    PRIMARY KEY (st_id),
    KEY number (st_idno),
    KEY name (st_name)
) ENGINE = InnoDB DEFAULT CHARACTER SET utf8mb4 COLLATE utf8mb4_unicode_520_ci
  COMMENT = 'Register of students';

-- Groups are 1 to 5. The program offers the groups whose table exists: a centre with a third group adds
-- CREATE TABLE tbl_specialgroup3 LIKE tbl_specialgroup1.
CREATE TABLE IF NOT EXISTS tbl_specialgroup1 (
    m_id   INT UNSIGNED NOT NULL AUTO_INCREMENT COMMENT 'row id',
    m_idno VARCHAR(64)  NOT NULL DEFAULT '' COMMENT 'number within the group, at least 7 characters',
    m_name VARCHAR(255) NOT NULL DEFAULT '' COMMENT 'name, by which paid hours are credited',
    m_org  VARCHAR(255) NOT NULL DEFAULT '' COMMENT 'organisation',
    m_tel  VARCHAR(64)  NOT NULL DEFAULT '' COMMENT 'telephone',
    m_hour INT          NOT NULL DEFAULT 0  COMMENT 'hours played and paid',
    PRIMARY KEY (m_id),
    KEY number (m_idno),
    KEY name (m_name)
) ENGINE = InnoDB DEFAULT CHARACTER SET utf8mb4 COLLATE utf8mb4_unicode_520_ci
  COMMENT = 'Register of the special group whose number ends the name of the table';

CREATE TABLE IF NOT EXISTS tbl_specialgroup2 LIKE tbl_specialgroup1;

-- ---------------------------------------------------------------------------------------------------------------------
-- Staff, and the state of the counters
-- ---------------------------------------------------------------------------------------------------------------------

CREATE TABLE IF NOT EXISTS tbl_staff (
    st_id        INT UNSIGNED NOT NULL AUTO_INCREMENT COMMENT 'row id',
    st_login     VARCHAR(64)  NOT NULL DEFAULT '' COMMENT 'login name, letters and digits, case counts',
    st_password  VARCHAR(64)  NOT NULL DEFAULT '' COMMENT 'password as typed, letters and digits, case counts',
    st_access    INT          NOT NULL DEFAULT 0  COMMENT '1 for an administrator, any other number for staff',
    st_lastlogin DATETIME     NULL                COMMENT 'last login, NULL before the first',
    PRIMARY KEY (st_id),
    KEY login (st_login)
) ENGINE = InnoDB DEFAULT CHARACTER SET utf8mb4 COLLATE utf8mb4_bin
  COMMENT = 'Who may work at the counters';

CREATE TABLE IF NOT EXISTS tbl_system (
    sys_counter       INT         NOT NULL DEFAULT 0  COMMENT 'counter number from 1',
    sys_counteractive INT         NOT NULL DEFAULT 0  COMMENT '1 when the counter is in use',
    sys_doclose       INT         NOT NULL DEFAULT 0  COMMENT '0 while the shift of the counter is open, 1 when it was closed',
    sys_counterstaff  VARCHAR(64) NOT NULL DEFAULT '' COMMENT 'login of the staff member who serves the counter',
    PRIMARY KEY (sys_counter)
) ENGINE = InnoDB DEFAULT CHARACTER SET utf8mb4 COLLATE utf8mb4_bin
  COMMENT = 'State of the counters, one row each, added by the program';

CREATE TABLE IF NOT EXISTS tbl_log (
    log_id        INT UNSIGNED NOT NULL AUTO_INCREMENT COMMENT 'row id',
    log_counter   INT          NOT NULL DEFAULT 0  COMMENT 'counter where it happened',
    log_staffname VARCHAR(64)  NOT NULL DEFAULT '' COMMENT 'login of the staff member',
    log_datetime  DATETIME     NULL                COMMENT 'when',
    log_do        VARCHAR(255) NOT NULL DEFAULT '' COMMENT 'what, such as logging in, log out, Cash Collected 250',
    PRIMARY KEY (log_id),
    KEY moment (log_datetime)
) ENGINE = InnoDB DEFAULT CHARACTER SET utf8mb4 COLLATE utf8mb4_bin
  COMMENT = 'Notable actions of staff, only ever added to';

-- ---------------------------------------------------------------------------------------------------------------------
-- One of each for every counter. Those of counter 1 are the patterns of all others.
-- ---------------------------------------------------------------------------------------------------------------------

CREATE TABLE IF NOT EXISTS tbl_counter1 (
    c_id           INT UNSIGNED  NOT NULL AUTO_INCREMENT COMMENT 'row id',
    c_transaction  INT           NOT NULL DEFAULT 0  COMMENT 'number of the sale, the same for all its lines, counted at each counter',
    c_datetime     DATETIME      NULL                COMMENT 'when the line was sold',
    c_item         VARCHAR(255)  NOT NULL DEFAULT '' COMMENT 'item name, or Field Number, the field from 1, dd/mm/yyyy and hh:mm',
    c_itemprice    DECIMAL(12,2) NOT NULL DEFAULT 0  COMMENT 'price of one piece or hour',
    c_itemquantity DOUBLE        NOT NULL DEFAULT 0  COMMENT 'pieces, or hours with quarters as decimals, a DOUBLE so that it prints as 1 or 1.5',
    c_itemtotal    DECIMAL(12,2) NOT NULL DEFAULT 0  COMMENT 'price times quantity',
    c_special      VARCHAR(32)   NOT NULL DEFAULT '' COMMENT 'rate type of a booked hour, empty for items',
    c_receipt      INT           NOT NULL DEFAULT 0  COMMENT 'receipt number, 0 until a receipt is printed, counted at each counter',
    c_staffid      VARCHAR(64)   NOT NULL DEFAULT '' COMMENT 'login of the staff member who sold',
    PRIMARY KEY (c_id),
    KEY transaction_lines (c_transaction),
    KEY receipt_lines (c_receipt),
    KEY moment (c_datetime)
) ENGINE = InnoDB DEFAULT CHARACTER SET utf8mb4 COLLATE utf8mb4_bin
  COMMENT = 'Lines sold at the counter whose number ends the name of the table';

CREATE TABLE IF NOT EXISTS tbl_shift1 (
    sh_id                INT UNSIGNED  NOT NULL AUTO_INCREMENT COMMENT 'row id',
    sh_datetime          DATETIME      NULL                COMMENT 'when the shift was ended',
    sh_lastdatetime      VARCHAR(19)   NOT NULL DEFAULT '' COMMENT 'end of the shift before, yyyy-mm-dd hh:mm:ss, empty for the first shift',
    sh_shift             VARCHAR(16)   NOT NULL DEFAULT '' COMMENT 'morning or evening',
    sh_staff             VARCHAR(64)   NOT NULL DEFAULT '' COMMENT 'login of the staff member who ended it',
    sh_float             DECIMAL(12,2) NOT NULL DEFAULT 0  COMMENT 'cash left in the drawer for the next shift',
    sh_totalmoney        DECIMAL(12,2) NOT NULL DEFAULT 0  COMMENT 'cash counted in the drawer',
    sh_sales             DECIMAL(12,2) NOT NULL DEFAULT 0  COMMENT 'cash counted less the float',
    sh_first_transaction DATETIME      NULL                COMMENT 'when the first line of the shift was sold, the end of the shift when none was',
    sh_stocklog          MEDIUMTEXT    NULL                COMMENT 'stock at the end: for each item its name, =, its stock and |',
    PRIMARY KEY (sh_id),
    KEY moment (sh_datetime)
) ENGINE = InnoDB DEFAULT CHARACTER SET utf8mb4 COLLATE utf8mb4_bin
  COMMENT = 'Ended shifts of the counter whose number ends the name of the table';

CREATE TABLE IF NOT EXISTS tbl_booking_clipboard1 (
    b_id          INT UNSIGNED NOT NULL AUTO_INCREMENT COMMENT 'row id',
    b_datetime    VARCHAR(19) CHARACTER SET ascii COLLATE ascii_bin NOT NULL DEFAULT ''
                  COMMENT 'slot that was copied, as in tbl_booking, like all columns that follow',
    b_field       INT          NOT NULL DEFAULT 0  COMMENT 'field number from 0',
    b_bookername  VARCHAR(255) NOT NULL DEFAULT '' COMMENT 'booker',
    b_bookerorg   VARCHAR(255) NOT NULL DEFAULT '' COMMENT 'organisation',
    b_bookertel   VARCHAR(64)  NOT NULL DEFAULT '' COMMENT 'telephone',
    b_specialrate VARCHAR(32)  NOT NULL DEFAULT '' COMMENT 'rate type',
    PRIMARY KEY (b_id)
) ENGINE = InnoDB DEFAULT CHARACTER SET utf8mb4 COLLATE utf8mb4_bin
  COMMENT = 'The booking copied last at the counter whose number ends the name of the table, held for pasting';
