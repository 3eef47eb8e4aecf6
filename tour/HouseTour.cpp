#include "HouseTour.h"

#include "WindowDriver.h"

#include <QAbstractItemView>
#include <QGuiApplication>
#include <QScreen>
#include <QTabWidget>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// More than one flat colour.
bool hasDrawing(const QPixmap &picture)
{
    const QImage image = picture.toImage().convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) != image.pixel(0, 0))
                return true;
    return false;
}

void showRegister(WindowDriver &driver, const TourHelp &help)
{
    driver.click(u"btn_Membership"_s);
    driver.awaitWindow(u"frm_Members"_s);
    driver.type(u"txt_SearchMemberName"_s, u"an"_s);
    driver.await(u"those that were found"_s, [] {
        const auto *list = WindowDriver::control<QAbstractItemView>(u"ListView_Member"_s)->model();
        const auto isFound = [list](int row) {
            return list->index(row, 1).data().toString().contains(u"an"_s, Qt::CaseInsensitive);
        };
        return list->rowCount() > 1 && isFound(0) && isFound(1) && isFound(list->rowCount() - 1);
    });
    driver.step(u"choose a member"_s, [] {
        auto *list = WindowDriver::control<QAbstractItemView>(u"ListView_Member"_s);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(list->model()->index(1, 0)).center());
    });
    help.picture(u"register"_s);
    driver.click(u"btn_Close"_s);
    driver.awaitClosed(u"frm_Members"_s);
}

void showOptions(WindowDriver &driver, const TourHelp &help)
{
    driver.click(u"btn_Options"_s);
    help.verifyAdministrator();
    driver.awaitWindow(u"frm_Options"_s);
    const QStringList pages{u"options-counter"_s, u"options-centre"_s, u"options-staff"_s,
                            u"options-rates"_s,   u"options-stock"_s,  u"options-health"_s};
    for (int page = 0; page < pages.size(); ++page) {
        driver.step(pages[page], [page] {
            auto *list = WindowDriver::control<QAbstractItemView>(u"ListView_Pages"_s);
            list->setCurrentIndex(list->model()->index(page, 0));
        });
        if (page == pages.size() - 1)
            driver.await(u"everything looked at"_s,
                         [] { return WindowDriver::find(u"btn_RunCheck"_s)->property("enabled").toBool(); });
        help.picture(pages[page]);
    }
    driver.click(u"btn_Close"_s);
    driver.awaitClosed(u"frm_Options"_s);
}

void showReport(WindowDriver &driver, const TourHelp &help)
{
    driver.click(u"btn_Summary"_s);
    driver.awaitWindow(u"frm_Summary"_s);
    driver.await(u"the painted report"_s, [] {
        const auto *browser = WindowDriver::control<QWidget>(u"WebBrowser"_s);
        return browser && hasDrawing(QGuiApplication::primaryScreen()->grabWindow(0, browser->mapToGlobal(QPoint()).x(),
                                                                                  browser->mapToGlobal(QPoint()).y(),
                                                                                  browser->width(), browser->height()));
    });
    help.picture(u"summary"_s);
    driver.click(u"btn_Close"_s);
    driver.awaitClosed(u"frm_Summary"_s);
}

void endShift(WindowDriver &driver, const TourHelp &help)
{
    driver.step(u"shifts page"_s, [] { WindowDriver::control<QTabWidget>(u"SSTab1"_s)->setCurrentIndex(3); });
    help.picture(u"shifts"_s);
    driver.click(u"btn_EndEveningShift"_s);
    driver.answer(u"Are you REALLY sure that you closing an EVENING Shift?"_s, QMessageBox::Yes);
    driver.awaitWindow(u"frm_ShiftEnd"_s);
    driver.await(u"the figures"_s, [] {
        return WindowDriver::control<QAbstractItemView>(u"ListView_Figures"_s)->model()->rowCount() > 0;
    });
    for (const auto &[kind, pieces] : {std::pair{u"5000"_s, u"4"_s}, {u"2000"_s, u"7"_s}, {u"100"_s, u"12"_s}})
        driver.type(u"num_Pieces_"_s + kind, pieces);
    driver.type(u"txt_CashFloat"_s, u"100"_s);
    help.picture(u"shift-end"_s);
    driver.click(u"btn_OK"_s);
    driver.answer(u"Are you sure that the values is correct?"_s);
    driver.click(u"btn_PrintSlip"_s);
    driver.awaitWindow(u"frm_PrintReceipt"_s);
    help.picture(u"shift-slip"_s);
    driver.click(u"btn_Close"_s);
    driver.awaitClosed(u"frm_PrintReceipt"_s);
    driver.click(u"btn_Cancel"_s);
    driver.awaitClosed(u"frm_Main"_s);
    driver.awaitWindow(u"frm_Login"_s);
    help.picture(u"next-shift"_s);
}

} // namespace

void addHouseTour(WindowDriver &driver, const TourHelp &help)
{
    showRegister(driver, help);
    showOptions(driver, help);
    showReport(driver, help);
    endShift(driver, help);
}
