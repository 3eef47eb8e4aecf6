#include "booking/BlockBooking.h"
#include "booking/Cancelling.h"
#include "support/TestStation.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <functional>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QString partially = u"Partially Shared"_s;
const QString shared = u"Shared Booking"_s;

struct Slot
{
    QString day;
    QString hour;
    int field = 0;

    bool operator==(const Slot &) const = default;
    [[nodiscard]] SlotKey key() const { return {day, hour, field}; }
    [[nodiscard]] QString text() const { return day + u' ' + hour + u":00|"_s + QString::number(field); }
};

struct Row
{
    Slot slot;
    QString name;
    int count = 0;

    [[nodiscard]] bool isMarker() const { return name == partially || name == shared; }
};

/// What the tables must hold, kept in the simplest way: a list of rows and a list of remarks.
class Model
{
public:
    explicit Model(std::vector<std::pair<int, int>> pairs) : m_pairs(std::move(pairs)) {}

    bool book(const Slot &slot, const QString &name, const QString &staff)
    {
        if (find(slot) || isGroundTaken(slot))
            return false;
        m_rows.push_back({slot, name});
        note(slot, u" "_s + name + u" 555"_s, u"book"_s, staff);
        for (const Slot &partner : partners(slot)) {
            m_rows.push_back({partner, shared});
            note(partner, u" shared booking"_s, u"book"_s, staff);
        }
        if (const auto parent = parentOf(slot)) {
            const Row *row = find(*parent);
            if (row && row->count != 0)
                count(*parent, 1);
            else
                m_rows.push_back({*parent, partially, 1});
            note(*parent, u" partially booked field "_s + QString::number(parent->field), u"book"_s, staff);
        }
        return true;
    }

    CancelOutcome cancel(const Slot &slot, const QString &shown, const QString &staff)
    {
        if (shown == partially)
            return CancelOutcome::PartiallyShared;
        if (shown == shared)
            return CancelOutcome::SharedBooking;
        if (!find(slot))
            return CancelOutcome::FieldEmpty;
        if (holder(slot) != shown)
            return CancelOutcome::ChangedMeanwhile;
        remove(slot);
        note(slot, u"rain"_s, u"cancel"_s, staff);
        for (const Slot &partner : partners(slot)) {
            remove(partner);
            note(partner, u" shared booking"_s, u"cancel"_s, staff);
        }
        if (const auto parent = parentOf(slot)) {
            const Row *row = find(*parent);
            if (row && row->count == 1)
                remove(*parent);
            else
                count(*parent, -1);
            note(*parent, u" partially booked field "_s + QString::number(parent->field), u"cancel"_s, staff);
        }
        return CancelOutcome::Cancelled;
    }

    /// Who stands on a slot: its booker, and a marker only where there is none.
    [[nodiscard]] QString holder(const Slot &slot) const
    {
        QString name;
        for (const Row &row : m_rows)
            if (row.slot == slot && (name.isEmpty() || !row.isMarker()))
                name = row.name;
        return name;
    }

    /// The row that is met first: marker rows come before a booker's.
    [[nodiscard]] const Row *find(const Slot &slot) const
    {
        const Row *found = nullptr;
        for (const Row &row : m_rows)
            if (row.slot == slot && (!found || (row.isMarker() && !found->isMarker())))
                found = &row;
        return found;
    }

    /// A booking from before the fields were shared: it has no marker rows.
    bool addOldRecord(const Slot &slot)
    {
        const auto standing = bookers();
        if (std::ranges::count(standing, slot, &Row::slot) != 0)
            return false;
        m_rows.push_back({slot, u"Old"_s});
        return true;
    }

    [[nodiscard]] std::vector<Row> bookers() const
    {
        std::vector<Row> found = m_rows;
        std::erase_if(found, std::mem_fn(&Row::isMarker));
        return found;
    }

    [[nodiscard]] QStringList bookings() const
    {
        QStringList lines;
        for (const Row &row : m_rows)
            lines << row.slot.text() + u'|' + row.name + u'|' + QString::number(row.count);
        return lines;
    }

    [[nodiscard]] QStringList remarks() const { return m_remarks; }

private:
    /// A booker on any part of the slot, on parts of parts, on a whole but the first one, or on a whole of its parts.
    [[nodiscard]] bool isGroundTaken(const Slot &slot) const
    {
        const auto parent = parentOf(slot);
        for (const Row &row : bookers()) {
            if (row.slot.day != slot.day || row.slot.hour != slot.hour || row.slot.field == slot.field ||
                (parent && row.slot.field == parent->field))
                continue;
            if (contains(slot.field, row.slot.field) || contains(row.slot.field, slot.field) ||
                std::ranges::any_of(m_pairs, [&](const auto &pair) {
                    return contains(slot.field, pair.second) && contains(row.slot.field, pair.second);
                }))
                return true;
        }
        return false;
    }

    [[nodiscard]] bool contains(int whole, int part, int depth = 6) const
    {
        return depth > 0 && std::ranges::any_of(m_pairs, [&](const auto &pair) {
                   return pair.first == whole && (pair.second == part || contains(pair.second, part, depth - 1));
               });
    }

    [[nodiscard]] std::vector<Slot> partners(const Slot &slot) const
    {
        std::vector<Slot> found;
        for (const auto &[whole, part] : m_pairs)
            if (whole == slot.field)
                found.push_back({slot.day, slot.hour, part});
        return found;
    }

    [[nodiscard]] std::optional<Slot> parentOf(const Slot &slot) const
    {
        for (const auto &[whole, part] : m_pairs)
            if (part == slot.field)
                return Slot{slot.day, slot.hour, whole};
        return std::nullopt;
    }

    void count(const Slot &slot, int by)
    {
        for (Row &row : m_rows)
            if (row.slot == slot)
                row.count += by;
    }

    void remove(const Slot &slot)
    {
        std::erase_if(m_rows, [&](const Row &row) { return row.slot == slot; });
    }

    void note(const Slot &slot, const QString &text, const QString &job, const QString &staff)
    {
        m_remarks << slot.text() + u'|' + text + u'|' + job + u'|' + staff;
    }

    std::vector<std::pair<int, int>> m_pairs;
    std::vector<Row> m_rows;
    QStringList m_remarks;
};

struct Counter
{
    TestStation station;
    QString staff;
    QString copiedName = {};
};

} // namespace

/// Two counters do what comes into their heads to fields that share their ground; after each step the tables must hold
/// what the model holds.
class tst_SharedFields : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void randomSequence_data()
    {
        QTest::addColumn<QStringList>("pairs");
        QTest::addColumn<bool>("odd"); // old records, and clearing by a grid that shows an old booker
        QTest::addColumn<int>("seed");
        const QStringList halves{u"0&1"_s, u"0&2"_s, u"3&4"_s, u"3&5"_s};
        const QStringList tangled{u"0&1"_s, u"1&2"_s, u"1&3"_s, u"4&2"_s, u"4&5"_s, u"5&0"_s};
        for (int seed = 1; seed <= 3; ++seed) {
            QTest::addRow("two halves %d", seed) << halves << false << seed;
            QTest::addRow("two halves and odd things %d", seed) << halves << true << seed;
            QTest::addRow("tangled %d", seed) << tangled << true << seed;
        }
    }

    void randomSequence()
    {
        QFETCH(QStringList, pairs);
        QFETCH(bool, odd);
        QFETCH(int, seed);
        m_server.freshDatabase();
        m_server.exec(u"CREATE TABLE tbl_booking_clipboard2 LIKE tbl_booking_clipboard1"_s);
        m_random.seed(quint32(seed));
        AppSettings settings = testSettings(m_server.connectionString());
        settings.SharedFields = {};
        std::vector<std::pair<int, int>> numbers;
        for (const QString &pair : pairs) {
            settings.SharedFields[numbers.size()] = pair;
            numbers.emplace_back(pair.section(u'&', 0, 0).toInt(), pair.section(u'&', 1).toInt());
        }
        m_model = std::make_unique<Model>(numbers);
        Counter anna{TestStation(m_server), u"anna"_s};
        Counter ben{TestStation(m_server, {}, 2), u"ben"_s};
        for (Counter *counter : {&anna, &ben})
            counter->station.shared = SharedFields(settings);
        for (int i = 0; i < 150 && !QTest::currentTestFailed(); ++i) {
            step(below(2) == 0 ? anna : ben, odd);
            QCOMPARE(bookings(), m_model->bookings());
        }
        QCOMPARE(m_server.rows(u"SELECT m_datetime, m_field, m_remark, m_job, m_staff FROM tbl_remark ORDER BY m_id"_s),
                 m_model->remarks());
        if (!odd) {
            for (const Row &row : m_model->bookers())
                clear(anna, row.slot, false);
            QCOMPARE(bookings(), QStringList());
        }
    }

private:
    int below(int end) { return m_random.bounded(end); }
    Slot anySlot() { return {m_days[below(2)], m_hours[below(3)], below(6)}; }
    void step(Counter &counter, bool odd)
    {
        const int choice = below(odd ? 12 : 11);
        if (choice < 4) {
            book(counter);
        } else if (choice < 8) {
            const auto bookers = m_model->bookers();
            const bool aimed = !bookers.empty() && below(3) > 0;
            clear(counter, aimed ? bookers[std::size_t(below(int(bookers.size())))].slot : anySlot(), odd);
        } else if (choice == 8) {
            copy(counter);
        } else if (choice < 11) {
            paste(counter, choice == 9 ? 0 : 2);
        } else {
            oldRecord();
        }
    }

    void book(Counter &counter)
    {
        const Slot slot = anySlot();
        const QString name = u"Team "_s + QString::number(++m_team);
        const bool wanted = m_model->book(slot, name, counter.staff);
        const auto outcome = doBooking(counter.station, counter.staff, {slot.key(), {name, u""_s, u"555"_s}});
        QTest::qCompare(outcome, wanted ? BookingOutcome::Booked : BookingOutcome::AlreadyBooked, "outcome", "wanted",
                        __FILE__, __LINE__);
    }

    void clear(Counter &counter, const Slot &slot, bool odd)
    {
        const Row *row = m_model->find(slot);
        const QString shown = !row || (odd && below(4) == 0) ? u"Old"_s : row->name;
        const CancelOutcome wanted = m_model->cancel(slot, shown, counter.staff);
        const auto outcome = doCancel(counter.station, counter.staff, {slot.key(), shown, u"rain"_s}).outcome;
        QTest::qCompare(int(outcome), int(wanted), "outcome", "wanted", __FILE__, __LINE__);
    }

    void copy(Counter &counter)
    {
        const auto bookers = m_model->bookers();
        if (bookers.empty())
            return;
        const Row row = bookers[std::size_t(below(int(bookers.size())))];
        // Beside marker rows it is open which row is copied.
        if (m_model->find(row.slot)->isMarker() || row.name == u"Old")
            return;
        copySlot(counter.station, counter.station.clipboard,
                 drawnDay(row.slot.day, row.slot.field, {u'>' + row.slot.hour + u' ' + row.name}));
        counter.copiedName = row.name;
    }

    void paste(Counter &counter, int weeks)
    {
        if (counter.copiedName.isEmpty())
            return;
        const Slot first = {m_days[0], {}, below(6)};
        QStringList lines;
        for (const QString &hour : m_hours)
            if (below(2) == 0)
                lines << u'>' + hour;
        counter.station.person.expect({u"verify -> "_s + counter.staff + u" staff"_s});
        for (int week = 0; week < qMax(weeks, 1); ++week)
            for (const QString &line : lines)
                if (!m_model->book({m_days[week], line.mid(1), first.field}, counter.copiedName, counter.staff) &&
                    weeks == 0)
                    counter.station.person.expect({u"refuse: The field already being booked"_s});
        const DaySelection selection = drawnDay(first.day, first.field, lines);
        std::vector<BlockBookingHour> results;
        if (weeks == 0)
            pasteSelection(counter.station, counter.station.clipboard, selection);
        else
            bookBlock(
                counter.station, counter.station.clipboard, selection, weeks, [](int) {}, results);
    }

    void oldRecord()
    {
        const Slot slot = anySlot();
        if (m_model->addOldRecord(slot))
            m_server.exec(u"INSERT INTO tbl_booking SET b_datetime='"_s +
                          slot.text().replace(u"|"_s, u"', b_field="_s) + u", b_bookername='Old'"_s);
    }

    [[nodiscard]] QStringList bookings() const
    {
        return m_server.rows(u"SELECT b_datetime, b_field, b_bookername, b_shared FROM tbl_booking ORDER BY b_id"_s);
    }

    const QStringList m_days{u"2026-11-28"_s, u"2026-12-05"_s};
    const QStringList m_hours{u"18:00"_s, u"24:00"_s, u"01:00"_s};
    PrivateServer m_server;
    std::unique_ptr<Model> m_model;
    QRandomGenerator m_random;
    int m_team = 0;
};

QTEST_GUILESS_MAIN(tst_SharedFields)
#include "tst_SharedFields.moc"
