-- Tamsora: the sample centre. Everybody and everything in it is invented.
--
-- Load it once, after schema.sql, into a database without rows:
--     mariadb posdb < sample_centre.sql
-- The days are counted from today: bookings from a week ago to a fortnight ahead. The same day gives the same rows,
-- but for what is paid, which follows the clock. Nothing is left behind but rows, and counter 2's table of sales.
--
-- Fields: 0 North pitch with its halves 1 and 2, 3 South pitch with its halves 4 and 5, 6 Court 1, 7 Court 2, 8 Hall.
-- Hours: 8 to 2. Below, an hour is counted on after midnight (24, 25, 26), which keeps the arithmetic plain.

SET NAMES utf8mb4;
SET lc_time_names = 'en_US';
SET @today = CURDATE(), @now = NOW();

-- ---------------------------------------------------------------------------------------------------------------------
-- Staff, customers, goods
-- ---------------------------------------------------------------------------------------------------------------------

INSERT INTO tbl_staff (st_login, st_password, st_access) VALUES
    ('admin', 'court2026', 1),
    ('mara', 'field2026', 2),
    ('jonas', 'ball2026', 2);

INSERT INTO tbl_member (m_idno, m_name, m_org, m_tel) VALUES
    ('M100001', 'Amara Okafor', 'Larkmere Harriers', '01632 960001'),
    ('M100002', 'Liam O''Neil', 'Old Mill Strollers', '01632 960002'),
    ('M100003', 'Sofia Lindqvist', 'Larkmere Harriers', '01632 960003'),
    ('M100004', 'Mateusz Kowalczyk', '', '01632 960004'),
    ('M100005', 'Ines Carvalho', 'Bridge Street Runners', '01632 960005'),
    ('M100006', 'Tomáš Dvořák', '', '01632 960006'),
    ('M100007', 'Priya Raghunathan', 'Larkmere Cricket Friends', '01632 960007'),
    ('M100008', 'Björn Ahlgren', 'Heron Walk Residents', '01632 960008'),
    ('M100009', 'Chiara Bellandi', '', '01632 960009'),
    ('M100010', 'Kwame Adjei', 'Quayside Sixes', '01632 960010'),
    ('M100011', 'Zoë Vandermeer', 'Quayside Sixes', '01632 960011'),
    ('M100012', 'Hiroshi Tanabe', '', '01632 960012'),
    ('M100013', 'Fatima Benyahia', 'Sunday Ladies', '01632 960013'),
    ('M100014', 'Gareth Pryce-Jones', 'Old Mill Strollers', '01632 960014'),
    ('M100015', 'Ngozi Eze', 'Sunday Ladies', '01632 960015'),
    ('M100016', 'Pascal Lefèvre', '', '01632 960016'),
    ('M100017', 'Dmitri Sokolenko', 'Larkmere Chess and Football', '01632 960017'),
    ('M100018', 'Aoife D''Arcy', 'Heron Walk Residents', '01632 960018'),
    ('M100019', 'Rafael Ibáñez', 'Quayside Sixes', '01632 960019'),
    ('M100020', 'Hannah Weissbach', '', '01632 960020'),
    ('M100021', 'ليلى الخطيب', 'Sunday Ladies', '01632 960021'),
    ('M100022', 'Viktor Halvorsen', 'Bridge Street Runners', '01632 960022'),
    ('M100023', 'Mei-Ling Chow', '', '01632 960023'),
    ('M100024', 'Tariq Siddiqui', 'Larkmere Cricket Friends', '01632 960024'),
    ('M100025', 'Elena Marchetti', '', '01632 960025'),
    ('M100026', 'Oskar Brandvold', 'Larkmere Harriers', '01632 960026'),
    ('M100027', 'Siobhán Kearney', 'Sunday Ladies', '01632 960027'),
    ('M100028', 'Jerzy Wróbel', '', '01632 960028'),
    ('M100029', 'Adaeze Nwankwo', '', '01632 960029'),
    ('M100030', 'Callum McTavish', 'Old Mill Strollers', '01632 960030'),
    ('M100031', 'Yara Haddad', 'Sunday Ladies', '01632 960031'),
    ('M100032', 'Nikolai Petrenko', 'Larkmere Chess and Football', '01632 960032'),
    ('M100033', 'Brigitte Ostermann', 'Heron Walk Residents', '01632 960033'),
    ('M100034', 'Samuel Mensah', 'Quayside Sixes', '01632 960034'),
    ('M100035', 'Ioana Dumitrescu', '', '01632 960035'),
    ('M100036', 'Henrik Søndergaard', 'Bridge Street Runners', '01632 960036'),
    ('M100037', 'Rosalind Thackray', '', '01632 960037'),
    ('M100038', 'Diego Fuentes', 'Quayside Sixes', '01632 960038'),
    ('M100039', 'Anneke de Wit', 'Larkmere Harriers', '01632 960039'),
    ('M100040', 'Bashir Rahimi', 'Larkmere Cricket Friends', '01632 960040');

INSERT INTO tbl_student (st_idno, st_name, st_org, st_tel) VALUES
    ('S200001', 'Noah Achterberg', 'Larkmere College', '01632 960041'),
    ('S200002', 'Leila Farrokhzad', 'Larkmere College', '01632 960042'),
    ('S200003', 'Ethan Greenhalgh', 'Hartfell School', '01632 960043'),
    ('S200004', 'Chloé Martineau', 'Larkmere College', '01632 960044'),
    ('S200005', 'Arjun Venkatesan', 'Hartfell School', '01632 960045'),
    ('S200006', 'Freya Nyström', 'Larkmere College', '01632 960046'),
    ('S200007', 'Marek Zieliński', 'Technical Institute', '01632 960047'),
    ('S200008', 'Grace Oyelaran', 'Hartfell School', '01632 960048'),
    ('S200009', 'Yusuf Demirci', 'Technical Institute', '01632 960049'),
    ('S200010', 'Isla Farquharson', 'Hartfell School', '01632 960050'),
    ('S200011', 'Lucas Moreira', 'Larkmere College', '01632 960051'),
    ('S200012', 'Hana Kobayashi', 'Larkmere College', '01632 960052'),
    ('S200013', 'Connor O''Shaughnessy', 'Hartfell School', '01632 960053'),
    ('S200014', 'Zainab Malik', 'Technical Institute', '01632 960054'),
    ('S200015', 'Emil Rosendahl', 'Larkmere College', '01632 960055'),
    ('S200016', 'Valentina Rossetti', 'Larkmere College', '01632 960056'),
    ('S200017', 'Kofi Asante', 'Technical Institute', '01632 960057'),
    ('S200018', 'Anja Petrović', 'Hartfell School', '01632 960058'),
    ('S200019', 'Minh Tran Duc', 'Technical Institute', '01632 960059'),
    ('S200020', 'Eleri Bowen', 'Hartfell School', '01632 960060'),
    ('S200021', 'יעל ברקוביץ', 'Larkmere College', '01632 960061'),
    ('S200022', 'Pedro Azevedo', 'Technical Institute', '01632 960062'),
    ('S200023', 'Signe Kristoffersen', 'Larkmere College', '01632 960063'),
    ('S200024', 'Omar El-Masri', 'Hartfell School', '01632 960064'),
    ('S200025', 'Katarína Hudáková', 'Larkmere College', '01632 960065'),
    ('S200026', 'Jamal Whitcombe', 'Technical Institute', '01632 960066'),
    ('S200027', 'Lotte van Rijswijk', 'Larkmere College', '01632 960067'),
    ('S200028', 'Andrei Munteanu', 'Technical Institute', '01632 960068'),
    ('S200029', 'Maya Sutherland', 'Hartfell School', '01632 960069'),
    ('S200030', 'Tobias Engelhardt', 'Larkmere College', '01632 960070'),
    ('S200031', 'Nadia Cherkaoui', 'Hartfell School', '01632 960071'),
    ('S200032', 'Joaquín Barrera', 'Technical Institute', '01632 960072'),
    ('S200033', 'Alicja Nowicka', 'Larkmere College', '01632 960073'),
    ('S200034', 'Finlay Drummond', 'Hartfell School', '01632 960074'),
    ('S200035', 'Sanne Hoekstra', 'Larkmere College', '01632 960075'),
    ('S200036', 'Rashid Al-Amin', 'Technical Institute', '01632 960076'),
    ('S200037', 'Beatriz Salgado', 'Larkmere College', '01632 960077'),
    ('S200038', 'Jonas Friedrichsen', 'Hartfell School', '01632 960078'),
    ('S200039', 'Thandiwe Mokoena', 'Larkmere College', '01632 960079'),
    ('S200040', 'Milo Haverford', 'Technical Institute', '01632 960080');

INSERT INTO tbl_specialgroup1 (m_idno, m_name, m_org, m_tel) VALUES
    ('G100001', 'Walter Easterbrook', 'Walking Football 60+', '01632 960081'),
    ('G100002', 'Doreen Applegarth', 'Walking Football 60+', '01632 960082'),
    ('G100003', 'Stanisław Gajewski', 'Walking Football 60+', '01632 960083'),
    ('G100004', 'Margaret Fenwick', 'Walking Football 60+', '01632 960084'),
    ('G100005', 'Ahmet Yıldırım', 'Walking Football 60+', '01632 960085'),
    ('G100006', 'Consuelo Navarrete', 'Walking Football 60+', '01632 960086'),
    ('G100007', 'Bernard Chastain', 'Walking Football 60+', '01632 960087'),
    ('G100008', 'Ingrid Solheim', 'Walking Football 60+', '01632 960088'),
    ('G100009', 'Reginald Okonjo', 'Walking Football 60+', '01632 960089'),
    ('G100010', 'Paulina Wozniak', 'Walking Football 60+', '01632 960090'),
    ('G100011', 'Giuseppe Tarantino', 'Walking Football 60+', '01632 960091'),
    ('G100012', 'Eileen MacAuley', 'Walking Football 60+', '01632 960092');

INSERT INTO tbl_specialgroup2 (m_idno, m_name, m_org, m_tel) VALUES
    ('H100001', 'Rosa Delacroix', 'Open Goal Inclusive Sports', '01632 960093'),
    ('H100002', 'Ivan Horvatić', 'Open Goal Inclusive Sports', '01632 960094'),
    ('H100003', 'Naledi Dube', 'Open Goal Inclusive Sports', '01632 960095'),
    ('H100004', 'Patrick Quinlan', 'Open Goal Inclusive Sports', '01632 960096'),
    ('H100005', 'Sunniva Aasen', 'Open Goal Inclusive Sports', '01632 960097'),
    ('H100006', 'Emre Kaplan', 'Open Goal Inclusive Sports', '01632 960098'),
    ('H100007', 'Tamsin Hollis', 'Open Goal Inclusive Sports', '01632 960099'),
    ('H100008', 'Jin-woo Baek', 'Open Goal Inclusive Sports', '01632 960100'),
    ('H100009', 'Marguerite Fontaine', 'Open Goal Inclusive Sports', '01632 960101'),
    ('H100010', 'Abel Tesfaye Bekele', 'Open Goal Inclusive Sports', '01632 960102'),
    ('H100011', 'Clara Winterbourne', 'Open Goal Inclusive Sports', '01632 960103'),
    ('H100012', 'Goran Milosavljević', 'Open Goal Inclusive Sports', '01632 960104');

-- Misc is the item whose price is typed at the counter. Numbers are what a scanner reads, from the range that shops
-- give themselves. Shin guards have run out.
INSERT INTO tbl_item (i_id, i_name, i_type, i_key, i_price, i_currentstock) VALUES
    (1, 'Water still 0.5 l', 'Drinks', 'F1', 1.20, 96),
    (2, 'Water sparkling 0.5 l', 'Drinks', 'F2', 1.20, 84),
    (3, 'Isotonic lemon', 'Drinks', 'F3', 2.20, 60),
    (4, 'Isotonic orange', 'Drinks', 'F4', 2.20, 54),
    (5, 'Apple spritzer', 'Drinks', 'F5', 1.90, 48),
    (6, 'Coffee', 'Drinks', 'F6', 1.80, 200),
    (7, 'Tea', 'Drinks', 'F7', 1.60, 150),
    (8, 'Banana', 'Food', 'F8', 0.60, 40),
    (9, 'Cereal bar', 'Food', 'F9', 1.10, 72),
    (10, 'Cheese roll', 'Food', 'F10', 2.80, 18),
    (11, 'Ham roll', 'Food', 'F11', 2.80, 16),
    (12, 'Crisps salted', 'Food', 'F12', 1.30, 55),
    (13, 'Chocolate bar', 'Food', 'F13', 1.40, 64),
    (14, 'Ball hire', 'Hire', 'F14', 3.00, 20),
    (15, 'Bib set hire', 'Hire', 'F15', 4.00, 12),
    (16, 'Racket hire', 'Hire', 'F16', 3.50, 16),
    (17, 'Towel hire', 'Hire', '2900001000178', 1.50, 60),
    (18, 'Football size 5', 'Kit', '2900001000185', 24.90, 9),
    (19, 'Shuttlecocks tube of 6', 'Kit', '2900001000192', 8.50, 22),
    (20, 'Shin guards', 'Kit', '2900001000208', 11.90, 0),
    (21, 'Sports socks', 'Kit', '2900001000215', 6.90, 35),
    (22, 'Elastic bandage', 'Kit', '2900001000222', 4.50, 25),
    (23, 'Shoelaces', 'Kit', '2900001000239', 2.90, 30),
    (24, 'Locker padlock', 'Various', '2900001000246', 5.50, 18),
    (25, 'Misc', 'Various', '', 0.00, 0);

-- ---------------------------------------------------------------------------------------------------------------------
-- Rates: the normal price of an hour at daytime, dearer in the evening, after midnight and at the weekend, and cheaper
-- for the registered. All prices are multiples of 50 cents.
-- ---------------------------------------------------------------------------------------------------------------------

INSERT INTO tbl_rate (r_day, r_field, r_special, r_timestart, r_timestop, r_rate)
WITH RECURSIVE weekday (n) AS (SELECT 0 UNION ALL SELECT n + 1 FROM weekday WHERE n < 6),
field (n, daytime) AS (
    SELECT 0, 60 UNION ALL SELECT 1, 34 UNION ALL SELECT 2, 34 UNION ALL SELECT 3, 60 UNION ALL SELECT 4, 34
    UNION ALL SELECT 5, 34 UNION ALL SELECT 6, 18 UNION ALL SELECT 7, 18 UNION ALL SELECT 8, 44),
band (start, stop, factor) AS (SELECT 0, 7, 1.20 UNION ALL SELECT 8, 16, 1.00 UNION ALL SELECT 17, 23, 1.40),
package (rate_type, factor) AS (
    SELECT '', 1.00 UNION ALL SELECT 'member', 0.80 UNION ALL SELECT 'student', 0.70
    UNION ALL SELECT 'specialgroup1', 0.75 UNION ALL SELECT 'specialgroup2', 0.60)
SELECT ELT(weekday.n + 1, 'Monday', 'Tuesday', 'Wednesday', 'Thursday', 'Friday', 'Saturday', 'Sunday'),
       field.n, rate_type, start, stop,
       ROUND(2 * daytime * band.factor * package.factor * IF(weekday.n >= 5, 1.25, 1)) / 2
FROM weekday CROSS JOIN field CROSS JOIN band CROSS JOIN package
ORDER BY field.n, weekday.n, rate_type, start;

-- ---------------------------------------------------------------------------------------------------------------------
-- Who books: the registered, and guests who pay the normal price
-- ---------------------------------------------------------------------------------------------------------------------

CREATE TEMPORARY TABLE booker (
    id        INT NOT NULL AUTO_INCREMENT PRIMARY KEY,
    name      VARCHAR(255) CHARACTER SET utf8mb4 COLLATE utf8mb4_bin NOT NULL,
    org       VARCHAR(255) CHARACTER SET utf8mb4 COLLATE utf8mb4_bin NOT NULL,
    tel       VARCHAR(64)  CHARACTER SET utf8mb4 COLLATE utf8mb4_bin NOT NULL,
    rate_type VARCHAR(32)  CHARACTER SET utf8mb4 COLLATE utf8mb4_bin NOT NULL DEFAULT '',
    turn      INT NULL COMMENT 'place in the rota, from 0',
    spare     INT NULL COMMENT 'place in the rota of those who do not stand in the list of today, from 0',
    UNIQUE KEY (name)
);
INSERT INTO booker (name, org, tel) VALUES
    ('Falcons Under 12', 'Hartfell School', '01632 960105'),
    ('Harbour Lights FC', '', '01632 960106'),
    ('Post Office Sixes', '', '01632 960107'),
    ('Comets', 'Comets ⚽ United', '01632 960108'),
    ('Red Kite Rovers', '', '01632 960109'),
    ('Bakers'' Dozen', 'Fennimore Bakery', '01632 960110'),
    ('Library Lions', 'Larkmere Town Library', '01632 960111'),
    ('Night Nurses', 'St Aldwyn Hospital', '01632 960112'),
    ('Station Crew', 'Larkmere Fire Station', '01632 960113'),
    ('Thursday Irregulars', '', '01632 960114'),
    ('Mill Lane Mixed', '', '01632 960115'),
    ('Blue Heron Futsal', '', '01632 960116'),
    ('Code & Kick', 'Brightwater Software', '01632 960117'),
    ('Ledger Legends', 'Pascoe & Daughters Accountants', '01632 960118'),
    ('Green Wave Ultimate', '', '01632 960119'),
    ('Tidewater Veterans', '', '01632 960120'),
    ('Sparrows Girls', 'Sparrows Youth Club', '01632 960121'),
    ('Café Central', 'Café Central', '01632 960122'),
    ('Northgate Joggers', '', '01632 960123'),
    ('Fifth Floor Five', 'County Planning Office', '01632 960124'),
    ('The Lampposts', '', '01632 960125'),
    ('Dentists'' Delight', 'Smile Street Dental', '01632 960126'),
    ('Riverbank Badminton', '', '01632 960127'),
    ('Weekend Warriors', '', '01632 960128'),
    ('Old Boys 1998', 'Hartfell School', '01632 960129'),
    ('Gravel & Sons', 'Gravel & Sons Builders', '01632 960130'),
    ('Moonlight Five', '', '01632 960131'),
    ('Orchard Road Dads', '', '01632 960132'),
    ('Two Left Feet', '', '01632 960133'),
    ('Chess Club Eleven', 'Larkmere Chess and Football', '01632 960134');
INSERT INTO booker (name, org, tel, rate_type)
SELECT m_name, m_org, m_tel, 'member' FROM tbl_member ORDER BY m_id;
INSERT INTO booker (name, org, tel, rate_type)
SELECT st_name, st_org, st_tel, 'student' FROM tbl_student ORDER BY st_id;
INSERT INTO booker (name, org, tel, rate_type)
SELECT m_name, m_org, m_tel, 'specialgroup1' FROM tbl_specialgroup1 ORDER BY m_id;
INSERT INTO booker (name, org, tel, rate_type)
SELECT m_name, m_org, m_tel, 'specialgroup2' FROM tbl_specialgroup2 ORDER BY m_id;

-- Today on the North pitch, its halves and Court 1, written by hand: what people look at first.
CREATE TEMPORARY TABLE today_by_hand (
    field      INT NOT NULL,
    first_hour INT NOT NULL,
    hours      INT NOT NULL,
    name       VARCHAR(255) CHARACTER SET utf8mb4 COLLATE utf8mb4_bin NOT NULL,
    extra      INT NOT NULL COMMENT 'extra minutes after the last hour'
);
INSERT INTO today_by_hand (field, first_hour, hours, name, extra) VALUES
    (1,  9, 2, 'Sofia Lindqvist', 0),
    (0, 12, 2, 'Ledger Legends', 0),
    (1, 14, 1, 'Yusuf Demirci', 0),
    (2, 14, 1, 'Anneke de Wit', 0),
    (0, 16, 2, 'Walter Easterbrook', 0),
    (1, 18, 1, 'Kwame Adjei', 30),
    (2, 18, 2, 'Freya Nyström', 0),
    (0, 20, 2, 'Harbour Lights FC', 15),
    (1, 24, 2, 'Night Nurses', 0),
    (6,  8, 1, 'Hiroshi Tanabe', 0),
    (6, 11, 1, 'Rosa Delacroix', 0),
    (6, 12, 1, 'Code & Kick', 0),
    (6, 13, 1, 'Chloé Martineau', 0),
    (6, 16, 1, 'Liam O''Neil', 0),
    (6, 17, 1, 'Hana Kobayashi', 0),
    (6, 18, 2, 'Comets', 0),
    (6, 20, 1, 'Tomáš Dvořák', 0),
    (6, 21, 1, 'ليلى الخطيب', 45);

-- The rota runs through the registered and the guests in a mixed order.
CREATE TEMPORARY TABLE rota (id INT NOT NULL PRIMARY KEY, turn INT NOT NULL, spare INT NOT NULL);
INSERT INTO rota
SELECT id, ROW_NUMBER() OVER (ORDER BY CRC32(name)) - 1,
       ROW_NUMBER() OVER (ORDER BY name IN (SELECT name FROM today_by_hand), CRC32(name)) - 1
FROM booker;
SELECT COUNT(*) INTO @bookers FROM booker;
SELECT COUNT(DISTINCT name) INTO @bookers_by_hand FROM today_by_hand;
UPDATE booker JOIN rota ON rota.id = booker.id SET booker.turn = rota.turn, booker.spare = rota.spare;

-- ---------------------------------------------------------------------------------------------------------------------
-- Bookings: two hours at a time are looked at together, so that a booker often plays both. How busy they are depends
-- on the time of day, and a hash of day, field and hour throws the dice.
-- ---------------------------------------------------------------------------------------------------------------------

CREATE TEMPORARY TABLE pair (pitch INT NOT NULL, half INT NOT NULL PRIMARY KEY);
INSERT INTO pair VALUES (0, 1), (0, 2), (3, 4), (3, 5);

CREATE TEMPORARY TABLE busy (two_hours INT NOT NULL PRIMARY KEY, weekday INT NOT NULL, weekend INT NOT NULL);
INSERT INTO busy VALUES (4, 12, 28), (5, 22, 62), (6, 38, 60), (7, 26, 74), (8, 58, 78), (9, 88, 82), (10, 92, 74),
    (11, 52, 46), (12, 16, 24), (13, 0, 6);

CREATE TEMPORARY TABLE slot (
    id         INT NOT NULL AUTO_INCREMENT PRIMARY KEY,
    day        INT NOT NULL COMMENT 'days from today',
    field      INT NOT NULL,
    hour       INT NOT NULL COMMENT '8 to 26',
    two_hours  INT NOT NULL,
    session    INT NOT NULL COMMENT 'hours that were booked together',
    booker_id  INT NULL,
    by_hand    INT NOT NULL DEFAULT 0,
    extra      INT NOT NULL DEFAULT 0,
    paid       INT NOT NULL DEFAULT 0,
    price      DECIMAL(12,2) NOT NULL DEFAULT 0,
    booked_at  DATETIME NULL COMMENT 'the same for a session, like paid and starts_at',
    starts_at  DATETIME NULL COMMENT 'when the session starts',
    UNIQUE KEY (day, field, hour)
);

INSERT INTO slot (day, field, hour, two_hours, session, booker_id, by_hand, extra)
WITH RECURSIVE second (n) AS (SELECT 0 UNION ALL SELECT 1)
SELECT 0, field, first_hour + n, FLOOR((first_hour + n) / 2), 700 * 100 + field * 1000 + first_hour, booker.id, 1,
       IF(n = hours - 1, extra, 0)
FROM today_by_hand JOIN booker ON booker.name = today_by_hand.name JOIN second ON n < hours;

INSERT INTO slot (day, field, hour, two_hours, session)
WITH RECURSIVE calendar (day) AS (SELECT -7 UNION ALL SELECT day + 1 FROM calendar WHERE day < 14),
field (field) AS (SELECT 0 UNION ALL SELECT field + 1 FROM field WHERE field < 8),
hour (hour) AS (SELECT 8 UNION ALL SELECT hour + 1 FROM hour WHERE hour < 26),
dice AS (
    SELECT day, field, hour, FLOOR(hour / 2) AS two_hours,
           IF(WEEKDAY(DATE_ADD(@today, INTERVAL day DAY)) >= 5, weekend, weekday) * IF(day > 6, 0.7, 1) AS percent,
           CRC32(CONCAT_WS('/', 'busy', day, field, two_hours)) % 100 AS throw,
           CRC32(CONCAT_WS('/', 'kind', day, field, two_hours)) % 4 AS kind,
           CRC32(CONCAT_WS('/', 'pitch', day, FLOOR(field / 3), two_hours)) % 100 AS whole_pitch
    FROM calendar CROSS JOIN field CROSS JOIN hour JOIN busy ON busy.two_hours = FLOOR(hour / 2))
SELECT day, field, hour, two_hours,
       -- kind 3: the two hours belong to two bookers; kind 2: only the first one is taken; otherwise one booker plays both
       (day + 7) * 10000 + field * 1000 + IF(kind = 3, hour, 2 * two_hours)
FROM dice
WHERE throw < percent * IF(field IN (0, 3), 0.9, 0.85)
  AND NOT (kind = 2 AND hour % 2 = 1)
  -- A pitch is booked as a whole, or its halves are.
  AND (field > 5 OR (field IN (0, 3)) = (whole_pitch < 45))
  -- Hours that stay free every day.
  AND NOT (field IN (0, 2) AND hour IN (11, 15, 23, 24, 25, 26))
  AND NOT (field = 6 AND hour IN (10, 15, 23, 24, 25, 26))
  AND NOT (field = 7 AND hour IN (9, 14, 22, 23, 24, 25, 26))
  AND NOT (day = 0 AND field IN (0, 1, 2, 6))
ORDER BY day, field, hour;

-- Nobody plays twice on one day: the sessions of a day take the bookers in turn. 37 has no factor in common with the
-- numbers of bookers.
CREATE TEMPORARY TABLE session (session INT NOT NULL PRIMARY KEY, day INT NOT NULL, first_hour INT NOT NULL, turn INT NOT NULL);
INSERT INTO session
SELECT session, day, MIN(hour), CRC32(CONCAT('turn', day)) % 1000 + 37 * ROW_NUMBER() OVER (PARTITION BY day ORDER BY session)
FROM slot GROUP BY session, day;
UPDATE slot JOIN session ON session.session = slot.session
JOIN booker ON IF(session.day = 0, booker.spare = session.turn % (@bookers - @bookers_by_hand),
                  booker.turn = session.turn % @bookers)
SET slot.booker_id = booker.id
WHERE slot.by_hand = 0;

-- Extra time, where the session ends and the next hour of the field is free and no marker row stands there.
CREATE TEMPORARY TABLE taken (day INT NOT NULL, field INT NOT NULL, hour INT NOT NULL, PRIMARY KEY (day, field, hour));
INSERT INTO taken SELECT day, field, hour FROM slot;
INSERT INTO taken
SELECT day, half, hour FROM slot JOIN pair ON field = pitch;
INSERT INTO taken
SELECT DISTINCT day, pitch, hour FROM slot JOIN pair ON field = half;
UPDATE slot LEFT JOIN taken ON taken.day = slot.day AND taken.field = slot.field AND taken.hour = slot.hour + 1
SET slot.extra = 15 * (1 + CRC32(CONCAT_WS('/', 'minutes', slot.day, slot.field, slot.hour)) % 3)
WHERE slot.by_hand = 0 AND taken.day IS NULL AND slot.hour < 26
  AND CRC32(CONCAT_WS('/', 'extra', slot.day, slot.field, slot.hour)) % 6 = 0;

-- Booked two to seven days before the day, or before today for the days to come.
UPDATE slot JOIN session USING (session)
SET starts_at = DATE_ADD(@today, INTERVAL session.first_hour + 24 * session.day HOUR),
    booked_at = DATE_ADD(DATE_SUB(DATE_ADD(@today, INTERVAL LEAST(session.day, 0) DAY),
                                  INTERVAL 2 + CRC32(CONCAT('days', session)) % 6 DAY),
                         INTERVAL 9 * 3600 + CRC32(CONCAT('second', session)) % 39600 SECOND);

-- Sessions that have begun are paid but for a few, and some that are still to come today and tomorrow. The price is the
-- rate of the hour, extra minutes cost the same.
UPDATE slot JOIN booker ON booker.id = booker_id
JOIN tbl_rate ON r_field = field AND r_special = rate_type AND MOD(hour, 24) BETWEEN r_timestart AND r_timestop
    AND r_day = ELT(WEEKDAY(DATE_ADD(@today, INTERVAL day DAY)) + 1,
                    'Monday', 'Tuesday', 'Wednesday', 'Thursday', 'Friday', 'Saturday', 'Sunday')
SET price = r_rate,
    paid = IF(starts_at <= @now, CRC32(CONCAT('paid', session)) % 25 > 0,
              day IN (0, 1) AND CRC32(CONCAT('ahead', session)) % 4 = 0);

INSERT INTO tbl_booking (b_datetime, b_field, b_bookername, b_bookerorg, b_bookertel, b_specialrate, b_extratime, b_paid)
SELECT CONCAT(DATE_ADD(@today, INTERVAL day DAY), ' ', LPAD(IF(hour > 24, hour - 24, hour), 2, '0'), ':00:00'),
       field, name, org, tel, rate_type, extra, IF(paid, ROUND(price * (1 + extra / 60), 2), 0)
FROM slot JOIN booker ON booker.id = booker_id
ORDER BY booked_at, session, hour;

-- The marker rows of shared fields.
INSERT INTO tbl_booking (b_datetime, b_field, b_bookername)
SELECT b_datetime, half, 'Shared Booking'
FROM tbl_booking JOIN pair ON b_field = pitch
ORDER BY b_datetime, half;
INSERT INTO tbl_booking (b_datetime, b_field, b_bookername, b_shared)
SELECT b_datetime, pitch, 'Partially Shared', COUNT(*)
FROM tbl_booking JOIN pair ON b_field = half
WHERE b_bookername <> 'Shared Booking'
GROUP BY b_datetime, pitch
ORDER BY b_datetime, pitch;

-- Invoices for firms that are still to play and have not paid, numbered in the order of the days.
CREATE TEMPORARY TABLE invoice (id INT NOT NULL PRIMARY KEY, number INT NOT NULL);
INSERT INTO invoice
SELECT b_id, DENSE_RANK() OVER (ORDER BY LEFT(b_datetime, 10), b_bookername)
FROM tbl_booking
WHERE b_bookerorg IN ('Brightwater Software', 'Pascoe & Daughters Accountants', 'County Planning Office',
                      'Gravel & Sons Builders', 'Fennimore Bakery')
  AND b_paid = 0 AND b_datetime > DATE_FORMAT(@now, '%Y-%m-%d %H:%i:%s');
UPDATE tbl_booking JOIN invoice ON invoice.id = b_id SET b_invoice = number;

-- ---------------------------------------------------------------------------------------------------------------------
-- The history of the slots
-- ---------------------------------------------------------------------------------------------------------------------

CREATE TEMPORARY TABLE remark (
    id       INT NOT NULL AUTO_INCREMENT PRIMARY KEY,
    done_at  DATETIME NOT NULL,
    part     INT NOT NULL COMMENT 'order among the rows of one moment',
    day      INT NOT NULL,
    hour     INT NOT NULL,
    field    INT NOT NULL,
    job      VARCHAR(32) NOT NULL,
    text     VARCHAR(1000) CHARACTER SET utf8mb4 COLLATE utf8mb4_bin NOT NULL,
    staff    VARCHAR(64) NOT NULL
);

INSERT INTO remark (done_at, part, day, hour, field, job, text, staff)
SELECT booked_at, 10 * hour, day, hour, field, 'book', CONCAT(' ', name, ' ', tel),
       ELT(1 + CRC32(CONCAT('staff', session)) % 5, 'mara', 'jonas', 'mara', 'jonas', 'admin')
FROM slot JOIN booker ON booker.id = booker_id;

-- A called-off hour on Court 1 that somebody else took later, and one on North B that stayed free.
INSERT INTO remark (done_at, part, day, hour, field, job, text, staff) VALUES
    (TIMESTAMPADD(SECOND, -9 * 86400 + 41525, @today), 0, 0, 18, 6, 'book', ' Pascal Lefèvre 01632 960016', 'mara'),
    (TIMESTAMPADD(SECOND, -8 * 86400 + 63187, @today), 0, 0, 18, 6, 'cancel', 'twisted an ankle at work', 'jonas'),
    (TIMESTAMPADD(SECOND, -4 * 86400 + 37262, @today), 0, 0, 15, 2, 'book', ' Elena Marchetti 01632 960025', 'jonas'),
    (TIMESTAMPADD(SECOND, -2 * 86400 + 44711, @today), 0, 0, 15, 2, 'cancel', 'not enough players', 'mara');

-- Rows of the shared fields, right after the row of the field itself.
INSERT INTO remark (done_at, part, day, hour, field, job, text, staff)
SELECT done_at, part + half, day, hour, half, job, ' shared booking', staff
FROM remark JOIN pair ON field = pitch;
INSERT INTO remark (done_at, part, day, hour, field, job, text, staff)
SELECT done_at, part + 6, day, hour, pitch, job, CONCAT(' partially booked field ', pitch), staff
FROM remark JOIN pair ON field = half
WHERE text <> ' shared booking';

-- Extra time some minutes after the booking, and once taken back again.
INSERT INTO remark (done_at, part, day, hour, field, job, text, staff)
SELECT TIMESTAMPADD(SECOND, 300 + CRC32(CONCAT('later', id)) % 2400, booked_at), 0, day, hour, field, 'extra time',
       CONCAT(' for player adding ', extra, ' minutes more '), ELT(1 + CRC32(CONCAT('adder', id)) % 2, 'mara', 'jonas')
FROM slot WHERE extra > 0;
INSERT INTO remark (done_at, part, day, hour, field, job, text, staff)
SELECT TIMESTAMPADD(SECOND, 640, booked_at), 0, day, hour, field, 'extra time',
       ' for player adding 30 minutes more ', 'mara'
FROM slot WHERE day = 0 AND field = 1 AND hour = 10;
INSERT INTO remark (done_at, part, day, hour, field, job, text, staff)
SELECT TIMESTAMPADD(SECOND, 3877, booked_at), 0, day, hour, field, 'delete extra time', ' do not want extratime.', 'mara'
FROM slot WHERE day = 0 AND field = 1 AND hour = 10;

-- Bookings of group 2 get their own rate by hand, from the administrator, and so do a few members who had forgotten
-- their number at first.
INSERT INTO remark (done_at, part, day, hour, field, job, text, staff)
SELECT TIMESTAMPADD(SECOND, 3000 + CRC32(CONCAT('rate', session)) % 3000, booked_at), 10 * hour, day, hour, field,
       'change rate', CONCAT(' set ', rate_type, ' rate for ', name, ' ', LPAD(IF(hour > 24, hour - 24, hour), 2, '0'), ':00'),
       'admin'
FROM slot JOIN booker ON booker.id = booker_id
WHERE rate_type = 'specialgroup2' OR (rate_type = 'member' AND CRC32(CONCAT('forgot', session)) % 12 = 0);

INSERT INTO tbl_remark (m_dotime, m_datetime, m_remark, m_job, m_field, m_staff, m_actiontime)
SELECT done_at, CONCAT(DATE_ADD(@today, INTERVAL day DAY), ' ', LPAD(IF(hour > 24, hour - 24, hour), 2, '0'), ':00:00'),
       text, job, field, staff, DATE_FORMAT(done_at, '%e %b %h:%i:%s %p')
FROM remark
ORDER BY done_at, part, id;

-- ---------------------------------------------------------------------------------------------------------------------
-- The waiting list: evening hours of today and tomorrow that are taken
-- ---------------------------------------------------------------------------------------------------------------------

CREATE TEMPORARY TABLE wish (day INT NOT NULL, field INT NOT NULL, place INT NOT NULL, name VARCHAR(255) CHARACTER SET utf8mb4
    COLLATE utf8mb4_bin NOT NULL, staff VARCHAR(64) NOT NULL);
INSERT INTO wish VALUES
    (0, 0, 1, 'Red Kite Rovers', 'mara'), (0, 1, 1, 'Emil Rosendahl', 'jonas'), (0, 6, 1, 'Viktor Halvorsen', 'mara'),
    (0, 6, 2, 'Mill Lane Mixed', 'jonas'), (0, 7, 1, 'Grace Oyelaran', 'mara'), (1, 6, 1, 'Henrik Søndergaard', 'jonas'),
    (1, 7, 1, 'The Lampposts', 'mara'), (1, 8, 1, 'Riverbank Badminton', 'mara'), (1, 8, 2, 'Doreen Applegarth', 'jonas');
-- The first or second booked hour from 18 o'clock on, where the one who waits does not play at that time.
INSERT INTO tbl_waitlist (w_datetime, w_field, w_bookername, w_bookerorg, w_bookertel, w_specialrate, w_staffname)
SELECT CONCAT(DATE_ADD(@today, INTERVAL wish.day DAY), ' ', evening.hour, ':00:00'), wish.field, name, org, tel,
       -- A look-up gives every group the rate of the first one.
       IF(rate_type LIKE 'specialgroup%', 'specialgroup1', rate_type), staff
FROM wish JOIN booker USING (name)
JOIN (SELECT day, field, hour, ROW_NUMBER() OVER (PARTITION BY day, field ORDER BY hour) AS place
      FROM slot WHERE hour BETWEEN 18 AND 22) AS evening USING (day, field, place)
WHERE NOT EXISTS (SELECT 1 FROM slot AS own WHERE own.day = wish.day AND own.hour = evening.hour
                  AND own.booker_id = booker.id)
ORDER BY wish.day, wish.field, wish.place;

-- ---------------------------------------------------------------------------------------------------------------------
-- Counters 1 and 2: what was paid, a sale for each session, now and then with a drink, most of them with a receipt
-- ---------------------------------------------------------------------------------------------------------------------

-- Who has played is paid for some minutes before the start, who pays ahead did so yesterday afternoon.
CREATE TEMPORARY TABLE sale (
    session INT NOT NULL PRIMARY KEY,
    counter INT NOT NULL,
    sold_at DATETIME NOT NULL,
    number  INT NOT NULL DEFAULT 0,
    receipt INT NOT NULL DEFAULT 0
);
INSERT INTO sale (session, counter, sold_at)
SELECT session, IF(CRC32(CONCAT('counter', session)) % 4 = 0, 2, 1),
       IF(starts_at <= @now,
          DATE_SUB(starts_at, INTERVAL 240 + CRC32(CONCAT('sold', session)) % 900 SECOND),
          DATE_ADD(DATE_SUB(@today, INTERVAL 8 HOUR), INTERVAL CRC32(CONCAT('sold', session)) % 7000 SECOND))
FROM slot WHERE paid GROUP BY session, starts_at;
CREATE TEMPORARY TABLE sale_number (session INT NOT NULL PRIMARY KEY, number INT NOT NULL, receipt INT NOT NULL);
INSERT INTO sale_number
SELECT session, ROW_NUMBER() OVER (PARTITION BY counter ORDER BY sold_at, session),
       IF(CRC32(CONCAT('receipt', session)) % 10 < 7,
          SUM(CRC32(CONCAT('receipt', session)) % 10 < 7) OVER (PARTITION BY counter ORDER BY sold_at, session), 0)
FROM sale;
UPDATE sale JOIN sale_number USING (session) SET sale.number = sale_number.number, sale.receipt = sale_number.receipt;

CREATE TEMPORARY TABLE sold_line AS
SELECT counter, line, number, sold_at, item, price, quantity, ROUND(price * quantity, 2) AS total, special, receipt,
       ELT(1 + HOUR(sold_at) DIV 15, 'mara', 'jonas') AS staff
FROM (SELECT counter, number, sold_at, receipt, hour AS line, price, 1 + extra / 60 AS quantity, rate_type AS special,
             CONCAT('Field Number ', field + 1, ' ', DATE_FORMAT(DATE_ADD(@today, INTERVAL day DAY), '%d/%m/%Y'), ' ',
                    LPAD(IF(hour > 24, hour - 24, hour), 2, '0'), ':00') AS item
      FROM sale JOIN slot USING (session) JOIN booker ON booker.id = booker_id WHERE paid
      UNION ALL
      SELECT counter, number, sold_at, receipt, 99, i_price, 1 + CRC32(CONCAT('pieces', session)) % 3, '', i_name
      FROM sale JOIN tbl_item ON i_id = 1 + CRC32(CONCAT('drink', session)) % 7
      WHERE CRC32(CONCAT('thirst', session)) % 3 = 0) AS sold;

CREATE TABLE IF NOT EXISTS tbl_counter2 LIKE tbl_counter1;
INSERT INTO tbl_system (sys_counter, sys_counteractive) VALUES (1, 1), (2, 1);
INSERT INTO tbl_counter1 (c_transaction, c_datetime, c_item, c_itemprice, c_itemquantity, c_itemtotal, c_special,
                          c_receipt, c_staffid)
SELECT number, sold_at, item, price, quantity, total, special, receipt, staff
FROM sold_line WHERE counter = 1 ORDER BY number, line;
INSERT INTO tbl_counter2 (c_transaction, c_datetime, c_item, c_itemprice, c_itemquantity, c_itemtotal, c_special,
                          c_receipt, c_staffid)
SELECT number, sold_at, item, price, quantity, total, special, receipt, staff
FROM sold_line WHERE counter = 2 ORDER BY number, line;

-- The shifts of both counters in the last week: morning until 15:00, evening until 02:30. A hundred stays in the drawer;
-- now and then some cents are missing. The stock is today's and what was sold since.
CREATE TEMPORARY TABLE shift_end AS
SELECT number AS counter, moment, name, staff, 100 AS cash_float,
       LAG(moment) OVER (PARTITION BY number ORDER BY moment) AS before_it
FROM (SELECT counters.seq AS number, days.seq AS day, 'morning' AS name, 'mara' AS staff,
             TIMESTAMPADD(HOUR, 15, DATE_SUB(@today, INTERVAL days.seq DAY)) AS moment
      FROM seq_1_to_2 AS counters, seq_0_to_7 AS days
      UNION ALL
      SELECT counters.seq, days.seq, 'evening', 'jonas', 
             TIMESTAMPADD(MINUTE, 26 * 60 + 30, DATE_SUB(@today, INTERVAL days.seq DAY))
      FROM seq_1_to_2 AS counters, seq_0_to_7 AS days) AS ends
WHERE moment < @now;
CREATE TEMPORARY TABLE shift AS
SELECT shift_end.counter, moment, before_it, name, shift_end.staff, cash_float, COALESCE(MIN(sold_at), moment) AS first_sale,
       COALESCE(SUM(total), 0) - IF(CRC32(CONCAT('short', moment)) % 4 = 0, 0.5, 0) AS sales
FROM shift_end LEFT JOIN sold_line ON sold_line.counter = shift_end.counter AND sold_at > before_it AND sold_at <= moment
WHERE before_it IS NOT NULL
GROUP BY shift_end.counter, moment;
CREATE TEMPORARY TABLE stock_then AS
SELECT moment, GROUP_CONCAT(i_name, '=', then_there, '|' ORDER BY i_id SEPARATOR '') AS stock_log
FROM (SELECT moment, i_id, i_name, i_currentstock + CAST(COALESCE(SUM(quantity), 0) AS SIGNED) AS then_there
      FROM (SELECT DISTINCT moment FROM shift_end) AS moments JOIN tbl_item
      LEFT JOIN sold_line ON item = i_name AND sold_at > moment
      GROUP BY moment, i_id) AS stock
GROUP BY moment;
CREATE TABLE IF NOT EXISTS tbl_shift2 LIKE tbl_shift1;
INSERT INTO tbl_shift1 (sh_datetime, sh_lastdatetime, sh_shift, sh_staff, sh_float, sh_totalmoney, sh_sales,
                        sh_first_transaction, sh_stocklog)
SELECT moment, before_it, name, staff, cash_float, cash_float + sales, sales, first_sale, stock_log
FROM shift JOIN stock_then USING (moment) WHERE counter = 1 ORDER BY moment;
INSERT INTO tbl_shift2 (sh_datetime, sh_lastdatetime, sh_shift, sh_staff, sh_float, sh_totalmoney, sh_sales,
                        sh_first_transaction, sh_stocklog)
SELECT moment, before_it, name, staff, cash_float, cash_float + sales, sales, first_sale, stock_log
FROM shift JOIN stock_then USING (moment) WHERE counter = 2 ORDER BY moment;

-- Hours played: what the registered brought along, and what they paid above.
UPDATE tbl_member SET m_hour = CRC32(m_idno) % 60 + (SELECT COUNT(*) FROM slot JOIN booker ON booker.id = booker_id
    WHERE paid AND name = m_name AND rate_type = 'member');
UPDATE tbl_student SET st_hour = CRC32(st_idno) % 40 + (SELECT COUNT(*) FROM slot JOIN booker ON booker.id = booker_id
    WHERE paid AND name = st_name AND rate_type = 'student');
UPDATE tbl_specialgroup1 SET m_hour = CRC32(m_idno) % 30 + (SELECT COUNT(*) FROM slot JOIN booker ON booker.id = booker_id
    WHERE paid AND name = m_name AND rate_type = 'specialgroup1');
UPDATE tbl_specialgroup2 SET m_hour = CRC32(m_idno) % 30 + (SELECT COUNT(*) FROM slot JOIN booker ON booker.id = booker_id
    WHERE paid AND name = m_name AND rate_type = 'specialgroup2');

-- ---------------------------------------------------------------------------------------------------------------------
-- Lights: on at dusk and off in the night of yesterday; Court 1 and the Hall have been on for a while now
-- ---------------------------------------------------------------------------------------------------------------------

INSERT INTO tbl_light (l_field, l_staff, l_datetime, l_row0, l_row1, l_row2, l_row3, l_row4) VALUES
    (0, 'jonas', TIMESTAMPADD(MINUTE, 17 * 60 + 4 - 1440, @today), 'on', 'on', 'on', 'on', 'off'),
    (3, 'jonas', TIMESTAMPADD(MINUTE, 17 * 60 + 5 - 1440, @today), 'on', 'on', 'on', 'on', 'off'),
    (7, 'jonas', TIMESTAMPADD(MINUTE, 17 * 60 + 12 - 1440, @today), 'on', 'on', 'off', 'off', 'off'),
    (3, 'jonas', TIMESTAMPADD(MINUTE, 22 * 60 + 9 - 1440, @today), 'on', 'on', 'off', 'off', 'off'),
    (7, 'jonas', TIMESTAMPADD(MINUTE, 22 * 60 + 14 - 1440, @today), 'off', 'off', 'off', 'off', 'off'),
    (0, 'jonas', TIMESTAMPADD(MINUTE, 23 * 60 + 6 - 1440, @today), 'off', 'off', 'off', 'off', 'off'),
    (3, 'jonas', TIMESTAMPADD(MINUTE, 23 * 60 + 7 - 1440, @today), 'off', 'off', 'off', 'off', 'off'),
    (8, 'mara', TIMESTAMPADD(MINUTE, -52, @now), 'on', 'on', 'on', 'on', 'on'),
    (6, 'mara', TIMESTAMPADD(MINUTE, -38, @now), 'on', 'on', 'on', 'off', 'off');
