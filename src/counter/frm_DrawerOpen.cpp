#include "counter/frm_DrawerOpen.h"

#include "app/Errors.h"
#include "app/Station.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShowEvent>

using namespace Qt::StringLiterals;

frm_DrawerOpen::frm_DrawerOpen(Station &station, QWidget *parent)
    : KeyedDialog(parent), m_station(station), m_drawer(station), m_words(new QLabel(u"Opening the drawer …"_s))
{
    setObjectName(u"frm_DrawerOpen"_s);
    setWindowTitle(u"Drawer"_s);
    setProperty("touch", true);
    m_words->setObjectName(u"lbl_Drawer"_s);
    m_words->setMinimumWidth(320);
    QFont large = m_words->font();
    large.setPointSizeF(large.pointSizeF() * 1.3);
    large.setBold(true);
    m_words->setFont(large);
    auto *close = new QPushButton(u"&Close"_s);
    close->setObjectName(u"Command1"_s);
    close->setAccessibleName(u"Close"_s);
    close->setMinimumWidth(120);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 16, 24, 16);
    layout->setSpacing(16);
    layout->addWidget(m_words);
    layout->addWidget(close, 0, Qt::AlignRight);
    watchKeys();
}

void frm_DrawerOpen::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    // Once it is seen: an error is told in a window above it.
    if (!event->spontaneous())
        QMetaObject::invokeMethod(this, &frm_DrawerOpen::openDrawer, Qt::QueuedConnection);
}

void frm_DrawerOpen::openDrawer()
{
    bool opened = false;
    guarded(m_station.prompts, ErrorCode::LoadingForm, [&] { opened = m_drawer.openOnce(); });
    m_words->setText(opened ? u"The drawer is open."_s : u"The drawer did not open: use its key."_s);
}
