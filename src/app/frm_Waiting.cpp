#include "app/frm_Waiting.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

bool isInput(const QEvent &event)
{
    switch (event.type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::InputMethod:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::Drop:
        return true;
    case QEvent::Close:
        return event.spontaneous();
    default:
        return false;
    }
}

} // namespace

frm_Waiting::frm_Waiting()
{
    setObjectName(u"frm_Waiting"_s);
}

frm_Waiting::~frm_Waiting()
{
    release();
}

void frm_Waiting::build()
{
    setWindowTitle(QCoreApplication::applicationName());
    setModal(true);
    m_what = new QLabel;
    m_what->setObjectName(u"lbl_Waiting"_s);
    m_what->setTextFormat(Qt::PlainText);
    m_what->setWordWrap(true);
    m_what->setMinimumWidth(360);
    auto *busy = new QProgressBar;
    busy->setRange(0, 0);
    busy->setTextVisible(false);
    busy->setAccessibleName(u"Waiting"_s);
    auto *giveUp = new QPushButton(u"&Give up"_s);
    giveUp->setObjectName(u"btn_GiveUp"_s);
    giveUp->setAutoDefault(false); // a key that was meant for another window must not end the wait
    connect(giveUp, &QPushButton::clicked, this, &frm_Waiting::reject);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 16, 24, 16);
    layout->setSpacing(8);
    layout->addWidget(m_what);
    layout->addWidget(busy);
    layout->addWidget(giveUp, 0, Qt::AlignRight);
}

void frm_Waiting::hold()
{
    if (m_holding)
        return;
    m_holding = true;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    QApplication::instance()->installEventFilter(this);
}

void frm_Waiting::show(const QString &what, const std::function<void()> &giveUp)
{
    if (!m_what)
        build();
    m_what->setText(what);
    m_giveUp = giveUp;
    const QWidget *below =
        QApplication::activeModalWidget() ? QApplication::activeModalWidget() : QApplication::activeWindow();
    adjustSize();
    const QRect place = below ? below->frameGeometry() : screen()->availableGeometry();
    move(place.center() - rect().center());
    QDialog::show();
    setFocus(); // not the button: Space and Enter come from somebody who was typing
}

void frm_Waiting::release()
{
    if (!m_holding)
        return;
    m_holding = false;
    m_giveUp = nullptr;
    QApplication::instance()->removeEventFilter(this);
    QApplication::restoreOverrideCursor();
    hide();
}

void frm_Waiting::reject()
{
    if (m_giveUp)
        m_giveUp();
}

bool frm_Waiting::isOwn(const QObject *watched) const
{
    if (watched == windowHandle())
        return true;
    const auto *widget = qobject_cast<const QWidget *>(watched);
    return widget && widget->window() == this;
}

bool frm_Waiting::eventFilter(QObject *watched, QEvent *event)
{
    return isInput(*event) && !isOwn(watched) ? true : QDialog::eventFilter(watched, event);
}
