#include "app/Application.h"
#include "options/RateGrid.h"
#include "options/page_Health.h"
#include "options/page_Rates.h"
#include "options/page_Staff.h"
#include "options/page_Stock.h"
#include "support/TestStation.h"

#include <QApplication>
#include <QBoxLayout>
#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_OptionsPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pictures()
    {
        QFile sample(QStringLiteral(TAMSORA_DATABASE "/sample_centre.sql"));
        QVERIFY(sample.open(QIODevice::ReadOnly));
        m_server.exec(QString::fromUtf8(sample.readAll()));
        m_server.exec(u"UPDATE tbl_rate SET r_timestop=20 WHERE r_field=0 AND r_day='Monday' AND r_special='' AND r_timestart=8;"
                      "DELETE FROM tbl_rate WHERE r_field=0 AND r_day='Friday' AND r_special='' AND r_timestart=17"_s);
        TestStation station(m_server);
        page_Staff staff(station, u"admin"_s);
        page_Stock stock(station, u"admin"_s);
        page_Rates rates(station, u"admin"_s);
        page_Health health(station, u"admin"_s);
        int n = 0;
        for (OptionsPage *page : {static_cast<OptionsPage *>(&staff), static_cast<OptionsPage *>(&stock), static_cast<OptionsPage *>(&rates), static_cast<OptionsPage *>(&health)}) {
            QDialog window;
            auto *layout = new QVBoxLayout(&window);
            layout->addWidget(page);
            window.resize(1000, 600);
            window.show();
            page->load();
            if (page == &rates) {
                rates.findChild<QLineEdit *>(u"txt_RatePrice"_s)->setText(u"19.5"_s);
                rates.findChild<RateGrid *>()->choose(2, 3, 3, 6);
                rates.findChild<QPushButton *>(u"btn_RatePaint"_s)->click();
            }
            if (page == &stock) {
                auto *list = stock.findChild<QTableView *>(u"ListView_Stock"_s);
                list->selectRow(2);
                stock.findChild<QLineEdit *>(u"txt_StockCount"_s)->setText(u"24"_s);
                list->selectRow(4);
                stock.findChild<QLineEdit *>(u"txt_StockCount"_s)->setText(u"40"_s);
            }
            if (page == &staff)
                staff.findChild<QTableView *>()->selectRow(1);
            QTest::qWait(300);
            if (page == &health) {
                health.findChild<QPushButton *>(u"btn_RunCheck"_s)->click();
                QTest::qWait(3000);
            }
            window.grab().save(u"/tmp/money_page%1.png"_s.arg(n++));
            page->setParent(nullptr);
        }
    }

private:
    PrivateServer m_server;
};

int main(int argc, char **argv)
{
    Application application(argc, argv);
    tst_OptionsPages test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_OptionsPages.moc"
