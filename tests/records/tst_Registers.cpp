#include "records/Registers.h"

#include "app/Errors.h"
#include "records/CsvText.h"
#include "records/EntrySaving.h"
#include "records/RegisterFile.h"
#include "support/CuttingProxy.h"
#include "support/DrawnRows.h"
#include "support/PrivateServer.h"
#include "support/TestStation.h"

#include <QRegularExpression>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using Done = SaveOutcome::End;

const QString members =
    u"SELECT CONCAT_WS(', ', m_idno, m_name, m_hour, m_org, m_tel) FROM tbl_member ORDER BY m_idno"_s;
const QString items =
    u"SELECT CONCAT_WS(', ', i_id, i_name, i_type, i_key, i_price, i_currentstock) FROM tbl_item ORDER BY i_id"_s;

Register registerOf(const QString &name)
{
    if (name == u"members")
        return membersRegister();
    if (name == u"students")
        return studentsRegister();
    return name == u"items" ? catalogue() : groupRegister(2);
}

/// A counter at a server, or behind what stands before it, whose person says what the script says.
struct Counter : ScriptedPerson, Station
{
    explicit Counter(const QString &connectionString, const QStringList &script = {})
        : ScriptedPerson{ScriptedPrompts(script)}, Station(testSettings(connectionString), person)
    {
    }
};

RegisterRow rowOf(Station &counter, const Register &records, const QString &number)
{
    const auto rows = GetRecord(counter.database, records);
    const auto found =
        std::find_if(rows.begin(), rows.end(), [&](const RegisterRow &row) { return records.numberOf(row) == number; });
    return found == rows.end() ? RegisterRow{} : *found;
}

/// The row's values with some of them changed: "Telephone=99; Name=Bo".
QStringList edited(const Register &records, QStringList values, const QString &edits)
{
    for (const QString &edit : listOf(edits))
        for (std::size_t field = 0; field < records.fields.size(); ++field)
            if (records.fields[field].name == edit.section(u'=', 0, 0))
                values[qsizetype(field)] = edit.section(u'=', 1);
    return values;
}

QString endOf(const SavedEntry &saved)
{
    return QStringList{u"saved"_s, u"kept"_s, u"theirs"_s}.at(int(saved.end));
}

/// What the lines of a plan come to: "2 add; 3 wrong: The number is missing."
QString drawn(const ImportPlan &plan)
{
    const QStringList deeds{u"add"_s, u"update"_s, u"same"_s, u"skip"_s, u"wrong"_s};
    QStringList lines;
    for (const ImportLine &line : plan.lines)
        lines << QString::number(line.line) + u' ' + deeds.at(int(line.deed)) +
                     (line.reason.isEmpty() ? QString() : u": "_s + line.reason) +
                     (line.remark.isEmpty() ? QString() : u", but: "_s + line.remark);
    return plan.fault.isEmpty() ? lines.join(u"; "_s) : plan.fault;
}

} // namespace

/// The registers of customers and the catalogue: what is read and written, by two people at once, and as files.
class tst_Registers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_server.freshDatabase();
        m_server.exec(u"INSERT INTO tbl_member (m_idno, m_name, m_hour, m_org, m_tel) VALUES "
                      "('M2', 'Joan Otter', 4, 'Rovers', '22'), ('M1', 'Hanna Ek', 12, 'SC', '11'), "
                      "('M3', 'O\\'Neil 100%', 0, '', '');"
                      "INSERT INTO tbl_item (i_id, i_name, i_type, i_key, i_price, i_currentstock) VALUES "
                      "(7, 'Cola', 'Drinks', 'F1', 2.50, 20), (3, 'Ball', 'Sports', '', 12, -2)"_s);
    }

    void statements_data()
    {
        // Table and beginning of its columns; the query of the records and of the list; blanks behind the table.
        drawnRows(uR"(
            members  | tbl_member        | m_  | SELECT * from tbl_member WHERE m_name LIKE '%a\'b%' ORDER BY m_idno ASC        | SELECT * from tbl_member WHERE m_name LIKE '%a\'b%' ORDER BY m_idno ASC ;         | 1
            students | tbl_student       | st_ | SELECT * from tbl_student WHERE st_name LIKE '%a\'b%' ORDER BY st_idno ASC     | SELECT * from tbl_student WHERE st_name LIKE '%a\'b%' ORDER BY st_idno ASC;       | 1
            group    | tbl_specialgroup2 | m_  | SELECT * from tbl_specialgroup2 WHERE m_name LIKE '%a\'b%' ORDER BY m_idno ASC | SELECT * from tbl_specialgroup2  WHERE m_name LIKE '%a\'b%' ORDER BY m_idno ASC ; | 2
            items    | tbl_item          | i_  | SELECT * from tbl_item ORDER BY i_name ASC                                     | SELECT * from tbl_item ORDER BY i_name ASC ;                                      | 1
        )"_s);
    }

    void statements()
    {
        const auto [table, prefix, recordQuery, listQuery, blanks] = cells<5>();
        const Register records = registerOf(QString::fromLatin1(QTest::currentDataTag()));
        CuttingProxy proxy(m_server);
        Counter counter(proxy.connectionString());
        const auto sent = [&] {
            QStringList all = proxy.statements();
            proxy.pass();
            return all;
        };
        GetRecord(counter.database, records, u"a'b"_s);
        readList(counter.database, records, u"a'b"_s);
        QCOMPARE(sent(), (QStringList{recordQuery, listQuery}));

        QString set = u" %idno='N%1', %name='O\\'Neil', %hour='5', %org='FC \\'B\\'', %tel='+31'"_s;
        QString over = set;
        QStringList values{u"N%1"_s, u"O'Neil"_s, u"5"_s, u"FC 'B'"_s, u"+31"_s};
        if (records.isOfItems()) {
            set = u" %id='9', %name='O\\'Neil', %type='FC \\'B\\'', %key='F2', %price='2.50'"_s;
            over = u"  %name='O\\'Neil', %type='FC \\'B\\'', %key='F2', %price='2.50', %id='9'"_s;
            values = {u"9"_s, u"O'Neil"_s, u"FC 'B'"_s, u"F2"_s, u"2.50"_s};
        }
        const auto full = [&](QString text) { return text.replace(u" %"_s, u' ' + prefix); };
        const QString gap(blanks.toInt(), u' ');
        const RegisterRow row = addRow(counter, records, values).row;
        QCOMPARE(sent().value(1), full(u"INSERT INTO "_s + table + gap + u"SET"_s + set));
        QCOMPARE(row, rowOf(counter, records, values[0]));
        sent();
        QCOMPARE(saveRow(counter, records, row, values).end, Done::Done);
        QCOMPARE(sent().value(2), full(u"UPDATE "_s + table + gap + u"SET"_s + over + u" WHERE %id="_s + row.id));
        QCOMPARE(deleteRow(counter, records, row).end, Done::Done);
        QCOMPARE(sent().value(2), full(u"DELETE FROM "_s + table + gap + u"WHERE %id="_s + row.id));
        QCOMPARE(m_server.rows(u"SELECT COUNT(*) FROM "_s + table),
                 QStringList{QString::number(int(GetRecord(counter.database, records).size()))});
        QCOMPARE(rowOf(counter, records, values[0]), RegisterRow());
    }

    void found_data()
    {
        drawnRows(uR"(
            all, by number     | members |      | Hanna Ek, Joan Otter, O'Neil 100%
            in the middle      | members | an   | Hanna Ek, Joan Otter
            quote              | members | O'N  | O'Neil 100%
            nobody             | members | zz   |
            another register   | group   |      |
            all items, by name | items   |      | Ball, Cola
            item by its type   | items   | drin | Cola
            item by its key    | items   | f1   | Cola
        )"_s);
    }

    void found()
    {
        const auto [name, search, wanted] = cells<3>();
        const Register records = registerOf(name);
        Counter counter(m_server.connectionString());
        QStringList names;
        for (const RegisterRow &row : readList(counter.database, records, search))
            names << records.nameOf(row);
        QCOMPARE(names.join(u", "_s), wanted);
    }

    void saved_data()
    {
        // The number of the entry; what is entered; what is asked, "/" being a new line; how it ended; the entry then.
        drawnRows(uR"(
            plain                 | members | M2  | Telephone=99                  | | saved | M2, Joan Otter, 4, Rovers, 99
            new                   | members | new | Number=M7; Name=Bo; Hours=    | | saved | M7, Bo, 0, ,
            hours with noughts    | members | M2  | Hours=007                     | | saved | M2, Joan Otter, 7, Rovers, 22
            hours no number       | members | M2  | Hours=4.5                     | refuse: Hours must be a whole number, such as 12. | kept | M2, Joan Otter, 4, Rovers, 22
            too many hours        | members | M2  | Hours=2147483648              | refuse: Hours must be a whole number, such as 12. | kept | M2, Joan Otter, 4, Rovers, 22
            nameless              | members | M2  | Name=                         | confirm: The name is empty.//Save it all the same? [Save] -> no  | kept | M2, Joan Otter, 4, Rovers, 22
            nameless all the same | members | M2  | Name=                         | confirm: The name is empty.//Save it all the same? [Save] -> yes | saved | M2, , 4, Rovers, 22
            number of another     | members | M2  | Number=m1                     | confirm: The number M1 belongs to Hanna Ek already.//Save it all the same? [Save] -> yes | saved | m1, Joan Otter, 4, Rovers, 22
            new with its number   | members | new | Number=M2; Name=Bo            | confirm: The number M2 belongs to Joan Otter already.//Save it all the same? [Save] -> no | kept | M2, Joan Otter, 4, Rovers, 22
            price no number       | items   | 7   | Price=2,50                    | refuse: Price must be a number with a point, such as 2.50. | kept | 7, Cola, Drinks, F1, 2.50, 20
            another price         | items   | 7   | Price=3                       | confirm: Cola waits to be paid in: the open list, Held: Ito. What waits there keeps its old name and price.//Save it all the same? [Save] -> yes | saved | 7, Cola, Drinks, F1, 3.00, 20
            another key           | items   | 7   | Key=F9                        | | saved | 7, Cola, Drinks, F9, 2.50, 20
            the same price        | items   | 7   | Price=2.5                     | | saved | 7, Cola, Drinks, F1, 2.50, 20
            another number        | items   | 3   | Number=009                    | | saved | 9, Ball, Sports, , 12.00, -2
            new item              | items   | new | Number=009; Name=Bat; Price=1 | | saved | 9, Bat, , , 1.00, 0
            item without a number | items   | new | Number=0; Name=Bat; Price=1   | refuse: Number must be a whole number from 1, such as 12. | kept |
            number of an item     | items   | new | Number=7; Name=Bat; Price=1   | confirm: The number 7 belongs to Cola already.//Save it all the same? [Save] -> yes | not done | 7, Cola, Drinks, F1, 2.50, 20
            names alike           | items   | 7   | Name=ball                     | confirm: Another item is called ball, too: a sale of one lowers the stock of both./Cola waits to be paid in: the open list, Held: Ito. What waits there keeps its old name and price.//Save it all the same? [Save] -> no | kept | 7, Cola, Drinks, F1, 2.50, 20
        )"_s);
    }

    void saved()
    {
        auto [name, number, edits, script, end, wanted] = cells<6>();
        const Register records = registerOf(name);
        Counter counter(m_server.connectionString(), listOf(script.replace(u'/', u'\n')));
        const auto before = number == u"new" ? std::nullopt : std::optional(rowOf(counter, records, number));
        const QStringList values = edited(records, before ? before->values : records.blankValues(), edits);
        const auto lists = [](const QString &item) {
            return item == u"Cola" ? QStringList{u"the open list"_s, u"Held: Ito"_s} : QStringList();
        };
        QString ended = u"not done"_s;
        RegisterRow row;
        try {
            const SavedEntry outcome = saveEntry(counter, records, before, values, lists);
            ended = endOf(outcome);
            row = outcome.row;
            QCOMPARE(outcome.faulty.has_value(), script.startsWith(u"refuse"));
        } catch (const NotDone &) {
        }
        QCOMPARE(ended, end);
        const QStringList rows = m_server.rows(records.isOfItems() ? items : members);
        const QString begin = wanted.section(u", "_s, 0, 1);
        QCOMPARE(rows.filter(begin.isEmpty() ? u"Bat"_s : begin).join(u' ').trimmed(), wanted);
        if (end != u"saved")
            return;
        // The same person goes on with what the table made of the texts.
        QCOMPARE(row, rowOf(counter, records, records.numberOf(row)));
        const SaveOutcome again = saveRow(counter, records, row, edited(records, row.values, u"Name=Al; Price=4"_s));
        QCOMPARE(again.end, Done::Done);
        QCOMPARE(deleteRow(counter, records, again.row).end, Done::Done);
    }

    void twoEditors_data()
    {
        // What the other did to Joan Otter, what is entered, the answer to the question, how it ended, what stands
        // then.
        drawnRows(uR"(
            hours rose by a sale  | m_hour=6             | Telephone=99 |        | saved  | M2, Joan Otter, 6, Rovers, 99
            hours edited by both  | m_hour=6             | Hours=0      | cancel | kept   | M2, Joan Otter, 6, Rovers, 22
            yours                 | m_tel='33'           | Telephone=99 | yes    | saved  | M2, Joan Otter, 4, Rovers, 99
            yours, and a sale     | m_tel='33', m_hour=6 | Telephone=99 | yes    | saved  | M2, Joan Otter, 6, Rovers, 99
            theirs                | m_tel='33'           | Telephone=99 | no     | theirs | M2, Joan Otter, 4, Rovers, 33
            each their own        | m_name='Joan Ek'     | Telephone=99 | yes    | saved  | M2, Joan Ek, 4, Rovers, 99
            another of its fields | m_name='Joan Ek'     | Telephone=99 | cancel | kept   | M2, Joan Ek, 4, Rovers, 22
            only the case         | m_name='JOAN OTTER'  | Telephone=99 | no     | theirs | M2, JOAN OTTER, 4, Rovers, 22
            the same by both      | m_tel='99'           | Telephone=99 |        | theirs | M2, Joan Otter, 4, Rovers, 99
        )"_s);
    }

    void twoEditors()
    {
        const auto [others, edits, answer, end, wanted] = cells<5>();
        const Register records = membersRegister();
        Counter counter(m_server.connectionString());
        const RegisterRow before = rowOf(counter, records, u"M2"_s);
        const QStringList mine = edited(records, before.values, edits);
        m_server.exec(u"UPDATE tbl_member SET %1 WHERE m_idno='M2'"_s.arg(others));
        const RegisterRow theirs = rowOf(counter, records, u"M2"_s);
        QString told;
        for (qsizetype field = 0; field < mine.size(); ++field) {
            const QString &name = records.fields[std::size_t(field)].name;
            const QString &their = theirs.values[field];
            if (mine[field] != before.values[field] && mine[field] != their)
                told += u"\n%1: theirs \"%2\", yours \"%3\""_s.arg(name, their, mine[field]);
            else if (their != before.values[field])
                told += u"\n%1: \"%2\" now, and you left it alone"_s.arg(name, their);
        }
        if (!answer.isEmpty())
            counter.person.expect({u"choose: Somebody changed this member since you read it:\n"_s + told +
                                   u"\n\nYes saves yours. No takes theirs and forgets yours. Cancel leaves all as it "
                                   "is. [Changed meanwhile] (warning: yes no CANCEL) -> "_s +
                                   answer});
        QCOMPARE(endOf(saveEntry(counter, records, before, mine)), end);
        QCOMPARE(m_server.rows(members).value(1), wanted);
        // Nor is deleted what was not seen; hours that a sale counted do not matter.
        const bool isSame = wanted.startsWith(u"M2, Joan Otter, ") && wanted.endsWith(u", Rovers, 22");
        QCOMPARE(deleteRow(counter, records, before).end, isSame ? Done::Done : Done::Changed);
    }

    void deletedMeanwhile()
    {
        const Register records = membersRegister();
        const QString question = u"confirm: Somebody deleted this member meanwhile.\n\nAdd it anew as you entered it? "
                                 "[Deleted meanwhile] -> "_s;
        Counter counter(m_server.connectionString(), {question + u"no"_s, question + u"yes"_s});
        const RegisterRow before = rowOf(counter, records, u"M2"_s);
        QCOMPARE(deleteRow(counter, records, before).end, Done::Done);
        QCOMPARE(deleteRow(counter, records, before).end, Done::Gone);
        const QStringList values = edited(records, before.values, u"Telephone=99"_s);
        QCOMPARE(endOf(saveEntry(counter, records, before, values)), u"kept"_s);
        QCOMPARE(rowOf(counter, records, u"M2"_s).id, QString());
        const SavedEntry saved = saveEntry(counter, records, before, values);
        QCOMPARE(endOf(saved), u"saved"_s);
        QCOMPARE(rowOf(counter, records, u"M2"_s), saved.row);
    }

    void lostAnswer_data()
    {
        drawnRows(uR"(
            new member          | members | new | Number=M7; Name=Bo
            member              | members | M2  | Telephone=99
            member, only a case | members | M2  | Name=joan otter
            member, like another | members | M2 | Number=M3; Name=O'Neil 100%; Hours=0; Organisation=; Telephone=
            member, deleted     | members | M2  | delete
            new item            | items   | new | Number=9; Name=Bat; Price=1
            item                | items   | 7   | Price=9
        )"_s);
    }

    void lostAnswer()
    {
        const auto [name, number, edits] = cells<3>();
        const Register records = registerOf(name);
        CuttingProxy proxy(m_server);
        Counter counter(proxy.connectionString());
        const RegisterRow before = rowOf(counter, records, number);
        const QStringList values =
            edited(records, before.values.isEmpty() ? records.blankValues() : before.values, edits);
        const auto act = [&] {
            if (edits == u"delete")
                deleteRow(counter, records, before);
            else if (number == u"new")
                addRow(counter, records, values);
            else
                saveRow(counter, records, before, values);
        };
        const QString all = records.isOfItems() ? items : members;
        const QStringList was = m_server.rows(all);
        proxy.cutAt(u"COMMIT"_s, CuttingProxy::Cut::Unsent);
        QString words;
        try {
            act();
        } catch (const NotDone &reason) {
            words = QString::fromUtf8(reason.what());
        }
        QVERIFY2(words.contains(u" was not recorded: "), qPrintable(words));
        QCOMPARE(m_server.rows(all), was);
        proxy.cutAt(u"COMMIT"_s, CuttingProxy::Cut::Unanswered);
        counter.person.expect({u"inform"_s});
        act();
        QVERIFY(m_server.rows(all) != was);
    }

    void cellsOfFiles_data()
    {
        drawnRows(uR"(
            plain       | a
            separators  | a;b,c
            quotes      | say "hi"
            formula     | =1+1
            sign        | +31 6 12
            minus       | -2.50
            at          | @SUM(A1)
            apostrophe  | '=1+1
            two         | ''-1
            Dutch       | 't Hooft
            other words | Żółć 体育 🏸
        )"_s);
    }

    void cellsOfFiles()
    {
        const auto [text] = cells<1>();
        static const QRegularExpression run(u"(^|,)\"?[=+@\\t-]"_s);
        for (const QString &cell : {text, text + u"\r\n2"_s, u'\t' + text + u' '}) {
            const QString file = csvLine({u"first"_s, cell, QString()});
            QVERIFY2(!run.match(file).hasMatch(), qPrintable(file));
            const auto lines = readCsv(u"a,b,c\n"_s + file);
            QCOMPARE(lines.size(), 2);
            QVERIFY(!lines[1].isBroken);
            QCOMPARE(fromSpreadsheet(lines[1].cells.at(1)), cell);
        }
    }

    void planned_data()
    {
        // The text, whose lines end with "/", and what becomes of them.
        drawnRows(uR"(
            new, known, same     | members | Number,Name,Hours,Organisation,Telephone/M7,Bo,3,,/M2,Joan Otter,0,Rovers,99/M1,Hanna Ek,,SC,11 | 2 add; 3 update; 4 same
            semicolons, in order | members | name;NUMBER/Bo;M7/"Ek; Hanna";m1     | 2 add; 3 update
            names of the columns | members | m_idno,m_name/M7,Bo                  | 2 add
            empty lines          | members | Number,Name//M7,Bo//,/M8,Al          | 3 add; 6 add
            wrong lines          | members | Number,Name,Hours/,Bo,1/M7,,1/M8,Al,x/M9,Al/M10,Al,1,2 | 2 wrong: The number is missing.; 3 wrong: The name is missing.; 4 wrong: Hours must be a whole number, such as 12.; 5 wrong: This line has 2 cells, the first line 3.; 6 wrong: This line has 4 cells, the first line 3.
            twice in the file    | members | Number,Name/M7,Bo/m7 ,Al             | 2 add; 3 wrong: Line 2 has the same number.
            open quote           | members | Number,Name/M7,5" Bo/M8,"Al/M9,Ed/    | The quote opened in line 3 is never closed, so nobody can tell where that line ends.
            open in a long line  | members | Number,Name,Telephone/M"7,"5/6","Al/M9 | The quote opened in line 3 is never closed, so nobody can tell where that line ends.
            behind a quote       | members | Number,Name/M7,"5" Bo/M8,Al           | 2 wrong: Something stands behind a closing quote in this line.; 3 add
            backslash            | members | Number,Name/M7,B\o                   | 2 wrong: Name must not hold a backslash (\).
            no heading           | members | M7,Bo                                | The first line must name the columns, at least "Number" and "Name".
            a column twice       | members | Number,Name,Name/1,2,3               | Two columns are called Name.
            nothing              | members |                                      | The file is empty.
            items                | items   | Number,Name,Type,Key,Price,Stock/007,Cola,Drinks,F2,2.50,999/9,Bat,,,x,/0,Bat,,,1,/10,Bat,,,-1.5,5 | 2 update; 3 wrong: Price must be a number with a point, such as 2.50.; 4 wrong: Number must be a whole number from 1, such as 12.; 5 add
            names of items       | items   | Number,Name,Price/8,ball,1/7,Cola,2.5/9,Co_a,1 | 2 add, but: Another item is called ball, too: a sale of one lowers the stock of both.; 3 same; 4 add, but: A name with % or _ stands for others, too: a sale lowers the stock of every item that it fits.
        )"_s);
    }

    void planned()
    {
        auto [name, text, wanted] = cells<3>();
        const Register records = registerOf(name);
        Counter counter(m_server.connectionString());
        const QByteArray bytes = text.replace(u'/', u"\r\n"_s).toUtf8();
        const auto present = GetRecord(counter.database, records);
        QCOMPARE(drawn(planImport(records, present, bytes, true)), wanted);
        QCOMPARE(drawn(planImport(records, present, "\xEF\xBB\xBF" + bytes, false)),
                 wanted.replace(u"update"_s, u"skip: The register has this number."_s));
        QCOMPARE(planImport(records, present, bytes + '\xE9', true).lines.size(), 0U);
    }

    void imported()
    {
        const Register records = membersRegister();
        Counter counter(m_server.connectionString());
        const QByteArray bytes = "Number,Name,Hours,Telephone\nM7,Bo,3,'=1\nM2,Joan O.,0,\n,wrong,,\n";
        const auto plan = [&] { return planImport(records, GetRecord(counter.database, records), bytes, true); };
        const ImportPlan old = plan();
        m_server.exec(u"UPDATE tbl_member SET m_tel='33' WHERE m_idno='M2'"_s);
        const QStringList was = m_server.rows(members);
        QVERIFY(!importFile(counter, records, bytes, true, old)); // not what was shown
        QCOMPARE(m_server.rows(members), was);
        QVERIFY(importFile(counter, records, bytes, true, plan()));
        QCOMPARE(m_server.rows(members).join(u"; "_s), u"M1, Hanna Ek, 12, SC, 11; M2, Joan O., 4, Rovers, ; "
                                                       "M3, O'Neil 100%, 0, , ; M7, Bo, 3, , =1"_s);
        QCOMPARE(drawn(plan()), u"2 same; 3 same; 4 wrong: The number is missing."_s);
        // A line that the database refuses leaves nothing of the others.
        const QByteArray bad = "Number,Name\nM8,Al\nM9,Bert\n";
        m_server.exec(u"ALTER TABLE tbl_member ADD CONSTRAINT no_bert CHECK (m_name <> 'Bert')"_s);
        const ImportPlan refused = planImport(records, GetRecord(counter.database, records), bad, true);
        QVERIFY_EXCEPTION_THROWN(importFile(counter, records, bad, true, refused), DbError);
        QCOMPARE(m_server.rows(members).size(), 4);
    }

    void exportedAndBack_data()
    {
        drawnRows(uR"(
            members | SELECT m_idno, m_name, m_hour, m_org, m_tel FROM tbl_member ORDER BY 1
            items   | SELECT i_id, i_name, i_type, i_key, i_price FROM tbl_item ORDER BY 1
        )"_s);
    }

    void exportedAndBack()
    {
        const auto [all] = cells<1>();
        const Register records = registerOf(QString::fromLatin1(QTest::currentDataTag()));
        m_server.exec(u"INSERT INTO tbl_member (m_idno, m_name, m_org, m_tel, m_hour) VALUES "
                      "('+M4', '=cmd|\\'x\\'', '-\"a;b\",\\n@c', '\\'\\'+31', 7);"
                      "INSERT INTO tbl_item (i_id, i_name, i_price, i_currentstock) VALUES (8, '-5 \"%', -1.25, 5)"_s);
        Counter counter(m_server.connectionString());
        const QStringList was = m_server.rows(all);
        const QByteArray file = exportRegister(counter, records);
        QVERIFY(file.startsWith("\xEF\xBB\xBFNumber,Name,"));
        QCOMPARE(file.contains(",'-1.25,5\r\n"), records.isOfItems());
        m_server.exec(u"DELETE FROM "_s + records.table);
        const ImportPlan plan = planImport(records, {}, file, false);
        QCOMPARE(plan.ignored.join(u' '), records.isOfItems() ? u"Stock"_s : QString());
        QVERIFY(importFile(counter, records, file, false, plan));
        QCOMPARE(m_server.rows(all), was);
        QCOMPARE(m_server.rows(u"SELECT COUNT(*) FROM tbl_item WHERE i_currentstock<>0"_s),
                 QStringList{records.isOfItems() ? u"0"_s : u"3"_s});
    }

private:
    PrivateServer m_server;
};

QTEST_GUILESS_MAIN(tst_Registers)
#include "tst_Registers.moc"
