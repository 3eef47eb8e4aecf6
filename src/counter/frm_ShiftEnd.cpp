#include "counter/frm_ShiftEnd.h"

#include "app/Conversions.h"
#include "app/Errors.h"
#include "app/Station.h"
#include "counter/AmountNote.h"
#include "counter/FiguresTable.h"
#include "counter/MoneyCount.h"
#include "counter/MoneyWords.h"
#include "look/Look.h"
#include "look/NoBackslash.h"
#include "look/WrappedLabel.h"

#include <QBoxLayout>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

frm_ShiftEnd::frm_ShiftEnd(Station &station, const QStringList &heldLists, QWidget *parent)
    : DrawerDialog(station, parent), m_station(station), m_end(station)
{
    setObjectName(u"frm_ShiftEnd"_s);
    setWindowTitle(u"End of "_s + station.shiftName + u" shift"_s);
    auto *halves = new QHBoxLayout;
    halves->setSpacing(24);
    halves->addWidget(makeCounting());
    halves->addWidget(makeFigures(heldLists), 1);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 16, 24, 16);
    layout->setSpacing(8);
    layout->addWidget(drawerWords());
    layout->addLayout(halves, 1);
    layout->addWidget(makeButtons());
    for (QLineEdit *box : {m_money, m_float})
        connect(box, &QLineEdit::textChanged, this, &frm_ShiftEnd::showSales);
    m_money->setFocus();
    watchKeys();
    resize(920, 620);
}

QLineEdit *frm_ShiftEnd::addAmount(QVBoxLayout &layout, const QString &name, const QString &caption)
{
    auto *box = new QLineEdit;
    box->setObjectName(name);
    box->setMaxLength(longestAmount);
    box->setAlignment(Qt::AlignRight);
    new NoBackslash(box);
    QFont figures = box->font();
    figures.setPointSizeF(figures.pointSizeF() * 1.4);
    box->setFont(figures);
    auto *label = new QLabel(caption);
    label->setBuddy(box);
    layout.addWidget(label);
    layout.addWidget(box);
    return box;
}

QWidget *frm_ShiftEnd::makeCounting()
{
    auto *side = new QWidget;
    auto *layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(wrappedLabel(u"lbl_Count"_s, u"Count the drawer"_s, 1.3));
    auto *count = new MoneyCount(kindsOfMoney(m_station.settings.tillNotes));
    layout->addWidget(count);
    layout->addSpacing(8);
    m_money = addAmount(*layout, u"txt_MoneyInDrawer"_s, u"&Money in the drawer"_s);
    layout->addWidget(new AmountNote(*m_money));
    m_float = addAmount(*layout, u"txt_CashFloat"_s, u"Cash &float left for the next shift"_s);
    layout->addWidget(new AmountNote(*m_float));
    m_sales = addAmount(*layout, u"txt_Sales"_s, u"Sales: the money less the float"_s);
    m_sales->setReadOnly(true);
    layout->addStretch(1);
    connect(count, &MoneyCount::counted, m_money, &QLineEdit::setText);
    return side;
}

QWidget *frm_ShiftEnd::makeFigures(const QStringList &heldLists)
{
    auto *side = new QWidget;
    auto *layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(wrappedLabel(u"lbl_Help"_s, u"For comparison, not recorded"_s, 1.3));
    m_list = new FiguresTable(u"ListView_Figures"_s);
    m_difference = wrappedLabel(u"lbl_Difference"_s, {}, 1.2);
    auto *held = wrappedLabel(u"lbl_HeldLists"_s, u"Payment lists that still wait: "_s + heldLists.join(u", "_s));
    held->setMargin(8);
    Look::paint(*held, Look::shared);
    held->setVisible(!heldLists.isEmpty());
    layout->addWidget(m_list, 1);
    layout->addWidget(m_difference);
    layout->addWidget(held);
    return side;
}

QWidget *frm_ShiftEnd::makeButtons()
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 8, 0, 0);
    layout->setSpacing(8);
    const auto add = [&](const QString &name, const QString &caption, const QString &tip) {
        auto *button = new QPushButton(caption);
        button->setObjectName(name);
        button->setToolTip(tip);
        button->setAutoDefault(false);
        layout->addWidget(button);
        return button;
    };
    connect(add(u"btn_PrintReport"_s, u"Counter &report"_s, u"Opens this counter's report in the web browser."_s),
            &QPushButton::clicked, this, &frm_ShiftEnd::reportWanted);
    m_slip = add(u"btn_PrintSlip"_s, u"&Print slip"_s, u"Prints the figures of the recorded shift on receipt paper."_s);
    m_slip->setEnabled(false);
    connect(m_slip, &QPushButton::clicked, this, [this] { Q_EMIT slipWanted(*m_recorded); });
    layout->addStretch(1);
    m_ok = add(u"btn_OK"_s, u"&OK"_s, u"Records the end of the shift."_s);
    m_cancel = add(u"btn_Cancel"_s, u"&Cancel"_s, u"Closes this window; the shift goes on."_s);
    connect(m_ok, &QPushButton::clicked, this, &frm_ShiftEnd::record);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);
    return row;
}

void frm_ShiftEnd::showEvent(QShowEvent *event)
{
    DrawerDialog::showEvent(event);
    if (!event->spontaneous())
        QMetaObject::invokeMethod(this, &frm_ShiftEnd::readFigures, Qt::QueuedConnection);
}

void frm_ShiftEnd::readFigures()
{
    const bool isRead = quietly(m_station.database, [this] {
        m_end.open();
        m_figures =
            shiftFigures(m_station, m_end.before() ? m_end.before()->ended : QString(), sqlDateTime(m_station.now()));
    });
    if (!isRead) {
        m_difference->setText(u"The figures could not be read. The shift can be ended all the same."_s);
        return;
    }
    m_list->showFigures(*m_figures, m_end.before() ? m_end.before()->cashFloat : 0);
    showSales();
}

void frm_ShiftEnd::showSales()
{
    guarded(m_station.prompts, ErrorCode::Unknown, [this] {
        m_sales->setText(salesOf(m_money->text(), m_float->text()));
        if (!m_figures)
            return;
        const double expected = moneyExpected(m_end.before() ? m_end.before()->cashFloat : 0, *m_figures);
        m_difference->setText(m_money->text().isEmpty() ? QString()
                                                        : differenceWords(leadingNumber(m_money->text()), expected));
    });
}

void frm_ShiftEnd::record()
{
    if (m_recorded)
        return;
    if (m_money->text().isEmpty() || m_float->text().isEmpty()) {
        m_station.prompts.refuse(u"Count the drawer first: the money in it and the float are both needed."_s);
        (m_money->text().isEmpty() ? m_money : m_float)->setFocus();
        return;
    }
    if (!isValueConfirmed(m_station.prompts))
        return;
    guarded(m_station.prompts, ErrorCode::Database, [this] {
        m_recorded = m_end.record({m_sales->text(), m_money->text(), m_float->text()});
    });
    if (!m_recorded)
        return;
    m_ok->setEnabled(false);
    for (QWidget *counting :
         {static_cast<QWidget *>(m_money), static_cast<QWidget *>(m_float), findChild<QWidget *>(u"MoneyCount"_s)})
        counting->setEnabled(false);
    m_slip->setEnabled(true);
    m_cancel->setText(u"Close"_s);
    m_cancel->setToolTip(u"Logs out, so that the next shift can log in."_s);
    m_slip->setFocus();
    drawerWords()->setText(u"The shift was recorded. Please close the cash register."_s);
}
