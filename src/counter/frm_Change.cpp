#include "counter/frm_Change.h"

#include "app/Errors.h"
#include "app/Formats.h"
#include "app/Station.h"
#include "counter/AmountGiven.h"
#include "counter/DigitKeys.h"
#include "look/Look.h"
#include "ui_frm_Change.h"

#include <QApplication>
#include <QKeyEvent>
#include <QRegularExpressionValidator>

using namespace Qt::StringLiterals;

namespace {

void enlarge(QWidget *widget, double scale, bool isBold = true)
{
    QFont font = widget->font();
    font.setPointSizeF(font.pointSizeF() * scale);
    font.setBold(isBold);
    widget->setFont(font);
}

void paint(QWidget *box, const Look::Tone &tone)
{
    QPalette colors = box->palette();
    colors.setColor(QPalette::Base, tone.background);
    colors.setColor(QPalette::Text, tone.text);
    box->setPalette(colors);
}

void setInk(QLabel *label, const QColor &ink)
{
    QPalette colors = label->palette();
    colors.setColor(QPalette::WindowText, ink);
    label->setPalette(colors);
}

QString money(qint64 cents)
{
    return formatNumber(static_cast<double>(cents) / 100, u"##0.00"_s);
}

} // namespace

frm_Change::frm_Change(Station &station, const QString &total, Work work, QWidget *parent)
    : KeyedDialog(parent),
      m_station(station),
      m_total(total),
      m_work(std::move(work)),
      m_drawer(station),
      m_ui(std::make_unique<Ui::frm_Change>()),
      m_keys(new DigitKeys(u"btn_Key_"_s, u"00"_s, u"00"_s))
{
    m_ui->setupUi(this);
    buildFigures();
    buildQuickButtons();
    m_ui->layout_Keys->addWidget(m_keys);
    m_ui->layout_Keys->addStretch();
    connect(m_keys, &DigitKeys::keyed, this,
            [this](const QString &digits) { setDigits(m_ui->txt_e->text() + digits); });
    connect(m_keys, &DigitKeys::takenBack, this, [this] { setDigits(digitsAfterKey(m_ui->txt_e->text(), 8)); });
    connect(m_ui->txt_e, &QLineEdit::textChanged, this, &frm_Change::showChange);
    connect(m_ui->btn_OK, &QPushButton::clicked, this, &frm_Change::settle);
    connect(m_ui->btn_Cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_ui->btn_Close, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_ui->btn_PrintReceipt, &QPushButton::clicked, this, &frm_Change::printReceipt);
    // What is below a button that went must not move under the second half of a double click.
    for (QPushButton *button : {m_ui->btn_OK, m_ui->btn_Cancel}) {
        QSizePolicy policy = button->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        button->setSizePolicy(policy);
    }
    m_ui->txt_e->setFocus();
    watchKeys();
}

frm_Change::~frm_Change() = default;

void frm_Change::buildFigures()
{
    m_ui->txt_e->setValidator(
        new QRegularExpressionValidator(QRegularExpression(u"[0-9]*"_s), m_ui->txt_e)); // pasted and set texts too
    m_ui->txt_Total->setText(m_total);
    enlarge(m_ui->txt_Total, 2.4);
    enlarge(m_ui->txt_AmountPaid, 3.4);
    enlarge(m_ui->txt_Change, 4.6);
    enlarge(m_ui->lbl_ChangeWords, 1.4);
    enlarge(m_ui->lbl_SmileAndThankYou, 1.4);
    for (QPushButton *button : {m_ui->btn_OK, m_ui->btn_Close})
        enlarge(button, 1.3);
    enlarge(m_ui->lbl_Drawer, 1.1);
    setInk(m_ui->lbl_SmileAndThankYou, Look::accent);
    setInk(m_ui->lbl_Drawer, Look::alert.background);
    m_ui->lbl_ChangeWords->setText(u"Key the amount given"_s);
}

void frm_Change::buildQuickButtons()
{
    guarded(m_station.prompts, ErrorCode::LoadingForm, [this] {
        const qint64 total = centsOf(m_total);
        addQuickButton(u"btn_Exact"_s, u"&Exact "_s + m_total, total);
        int number = 0;
        for (const qint64 amount : amountsAbove(total, m_station.settings.tillNotes))
            addQuickButton(u"btn_Note_"_s + QString::number(number++), money(amount), amount);
    });
    m_ui->layout_Quick->addStretch();
}

QPushButton *frm_Change::addQuickButton(const QString &name, const QString &caption, qint64 cents)
{
    auto *button = new QPushButton(caption, this);
    button->setObjectName(name);
    button->setAccessibleName(QString(caption).remove(u'&'));
    button->setMinimumSize(160, 48);
    button->setFocusPolicy(Qt::TabFocus);
    enlarge(button, 1.2, false);
    connect(button, &QPushButton::clicked, this, [this, cents] {
        setDigits(digitsOfAmount(cents));
        m_ui->txt_e->setFocus(); // Enter settles from there
    });
    m_ui->layout_Quick->addWidget(button);
    return button;
}

void frm_Change::setDigits(const QString &digits)
{
    if (!m_isSettled)
        m_ui->txt_e->setText(digits);
}

void frm_Change::showChange()
{
    guarded(m_station.prompts, ErrorCode::Unknown, [this] {
        const ChangeShown shown = changeOf(m_ui->txt_e->text(), m_total);
        m_ui->txt_AmountPaid->setText(shown.amountPaid);
        m_ui->txt_Change->setText(shown.change);
        const qint64 cents = centsOf(shown.change);
        if (shown.change.isEmpty())
            m_ui->lbl_ChangeWords->setText(u"That is no amount of money"_s);
        else if (cents < 0)
            m_ui->lbl_ChangeWords->setText(u"Still to pay "_s + money(-cents));
        else
            m_ui->lbl_ChangeWords->setText(cents > 0 ? u"Change "_s + money(cents) : u"Paid, no change"_s);
        paint(m_ui->txt_Change, shown.isEnough() ? Look::enough : Look::alert);
    });
}

void frm_Change::busily(const std::function<void()> &work)
{
    m_isBusy = true;
    m_isDeaf = true;
    guarded(m_station.prompts, ErrorCode::Database, work);
    m_isBusy = false;
    QCoreApplication::processEvents(); // what was pressed while nobody listened
    m_isDeaf = false;
}

void frm_Change::settle()
{
    if (m_isBusy || m_isSettled)
        return;
    bool isEnough = false;
    guarded(m_station.prompts, ErrorCode::Unknown, [&] {
        isEnough = ChangeShown{m_ui->txt_AmountPaid->text(), m_ui->txt_Change->text()}.isEnough();
        if (!isEnough)
            m_station.prompts.refuse(u"Incorrect amount given!"_s);
    });
    if (isEnough)
        busily([this] {
            m_isSettled = m_work.settle();
            if (m_isSettled)
                endSale();
        });
}

void frm_Change::endSale()
{
    m_ui->btn_OK->hide();
    m_ui->btn_Cancel->hide();
    m_keys->setEnabled(false);
    for (QPushButton *quick : findChildren<QPushButton *>())
        if (m_ui->layout_Quick->indexOf(quick) >= 0)
            quick->setEnabled(false);
    m_ui->txt_e->setReadOnly(true);
    m_ui->btn_PrintReceipt->setEnabled(true);
    m_ui->btn_Close->setEnabled(true);
    m_ui->btn_Close->setDefault(true);
    m_ui->btn_Close->setFocus();
    repaint(); // the cashier reads while the drawer opens
    if (!guarded(m_station.prompts, ErrorCode::Unknown, [this] { m_drawer.openAfterSale(); }))
        m_ui->lbl_Drawer->setText(u"The drawer did not open: use its key."_s);
    m_sincePress.start();
    Q_EMIT changeGiven(m_ui->txt_Change->text());
}

void frm_Change::printReceipt()
{
    if (m_isSettled && !m_isBusy)
        busily(m_work.printReceipt);
}

void frm_Change::done(int)
{
    if (m_isBusy)
        return;
    QDialog::done(m_isSettled ? Accepted : Rejected);
    if (m_isSettled)
        Q_EMIT saleClosed();
}

bool frm_Change::isTooSoon() const
{
    // Longer than a keyboard waits before it repeats a key that is held down: about a second.
    const int untilRepeated = 5 * QApplication::doubleClickInterval() / 2;
    return m_isSettled && m_sincePress.elapsed() < untilRepeated;
}

void frm_Change::takeScan(const QString &digits)
{
    setDigits(m_ui->txt_e->text().chopped(digits.size()));
}

bool frm_Change::takeKey(const QKeyEvent &event)
{
    // A bouncing Enter would close the window before anybody has read the change.
    if (isPressing(event) && isTooSoon()) {
        m_sincePress.start();
        return true;
    }
    const QString digits = m_ui->txt_e->text();
    if (const QString changed = digitsAfterKey(digits, codeOf(event)); changed != digits) {
        setDigits(changed);
        return true;
    }
    const bool leaves = isPressing(event) || event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab ||
                        event.modifiers() & Qt::AltModifier;
    return focusWidget() == m_ui->txt_e && !leaves; // the box takes no other keys
}
