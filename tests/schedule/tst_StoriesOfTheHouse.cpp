#include "support/Story.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QCalendarWidget>
#include <QDesktopServices>
#include <QLineEdit>
#include <QTabWidget>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

bool isControl(const QWidget *widget)
{
    // The grid tells the history of an hour; what stands inside a control or a scroll bar has its tip.
    if (widget->objectName() == grid || widget->objectName().startsWith(u"qt_"))
        return false;
    for (const QWidget *around = widget->parentWidget(); around; around = around->parentWidget())
        if (qobject_cast<const QCalendarWidget *>(around) || qobject_cast<const QAbstractSpinBox *>(around) ||
            qobject_cast<const QAbstractItemView *>(around) || qobject_cast<const QLineEdit *>(around) ||
            qobject_cast<const QTabBar *>(around))
            return false;
    return qobject_cast<const QAbstractButton *>(widget) || qobject_cast<const QLineEdit *>(widget) ||
           qobject_cast<const QAbstractItemView *>(widget) || qobject_cast<const QCalendarWidget *>(widget);
}

} // namespace

/// What is done around the bookings and the till: shifts, registers, options, reports.
class tst_StoriesOfTheHouse : public Story
{
    Q_OBJECT

public Q_SLOTS:
    void openAddress(const QUrl &address) { m_opened << address.toString(); }

private Q_SLOTS:
    void wholeShift()
    {
        m_server.exec(u"INSERT INTO tbl_item SET i_id=1, i_name='Cola', i_key='F2', i_price=2.5, i_currentstock=9"_s);
        QDesktopServices::setUrlHandler(u"http"_s, this, "openAddress");
        start();
        script(logIn + u" | key F2 | type txt_ItemQuantity 2 | click btn_Cancel"_s);
        play(u"closed frm_Calculator | page 3 | click btn_EndEveningShift"_s);
    }

    void everyControlHasATip()
    {
        start();
        play(logIn);
        QStringList bare;
        for (const QWidget *widget : m_program->mainWindow()->findChildren<QWidget *>())
            if (isControl(widget) && !widget->toolTip().endsWith(u'.'))
                bare << QLatin1StringView(widget->metaObject()->className()) + u' ' + widget->objectName();
        const auto *tabs = part<QTabWidget>(u"SSTab1"_s);
        for (int tab = 0; tab < tabs->count(); ++tab)
            if (!tabs->tabToolTip(tab).endsWith(u'.'))
                bare << tabs->tabText(tab);
        QCOMPARE(bare.mid(0, 6).join(u" "_s), QString());
    }

private:
    QStringList m_opened;
};

STORY_MAIN(tst_StoriesOfTheHouse)
#include "tst_StoriesOfTheHouse.moc"
