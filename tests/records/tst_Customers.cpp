#include "records/Customers.h"

#include "support/DrawnRows.h"
#include "support/PrivateServer.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// Who has a customer number.
class tst_Customers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_server.freshDatabase(); }

    void customers_data()
    {
        drawnRows(uR"(
            member                              | member  | M000001     | Mia, SC, 11, member
            member, last of several             | member  | M000002     | Max, , , member
            too short                           | member  | M00001      | nobody
            unknown                             | member  | M000009     | nobody
            quoted                              | member  | ' OR ''='   | nobody
            student                             | student | S000001     | Sue, Uni, 22, student
            any group has the first one's rate  | group   | G'00001     | Gil, Fire, 33, specialgroup1
        )"_s);
    }

    void customers()
    {
        const auto [kind, number, wanted] = cells<3>();
        m_server.exec(u"INSERT INTO tbl_member SET m_idno='M000001', m_name='Mia', m_org='SC', m_tel='11';"
                      "INSERT INTO tbl_member SET m_idno='M00001', m_name='Short';"
                      "INSERT INTO tbl_member SET m_idno='M000002', m_name='Moe';"
                      "INSERT INTO tbl_member SET m_idno='M000002', m_name='Max';"
                      "INSERT INTO tbl_student SET st_idno='S000001', st_name='Sue', st_org='Uni', st_tel='22';"
                      "INSERT INTO tbl_specialgroup2 SET m_idno='G\\'00001', m_name='Gil', m_org='Fire', m_tel='33'"_s);
        Database database(m_server.connectionString());
        const auto found = kind == u"member"    ? findMember(database, number)
                           : kind == u"student" ? findStudent(database, number)
                                                : findGroupMember(database, 2, number);
        const Booker booker = found.value_or(Booker{});
        const QString line =
            QStringList{booker.name, booker.organisation, booker.telephone, booker.rateType}.join(u", "_s);
        QCOMPARE(found ? line : u"nobody"_s, wanted);
    }

private:
    PrivateServer m_server;
};

QTEST_GUILESS_MAIN(tst_Customers)
#include "tst_Customers.moc"
