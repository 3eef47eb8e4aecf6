#include "counter/frm_DrawerOpen.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

frm_DrawerOpen::frm_DrawerOpen(Station &station, QWidget *parent) : DrawerDialog(station, parent)
{
    setObjectName(u"frm_DrawerOpen"_s);
    setWindowTitle(u"Drawer"_s);
    drawerWords()->setMinimumWidth(320);
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 1.3);
    large.setBold(true);
    drawerWords()->setFont(large);
    auto *close = new QPushButton(u"&Close"_s);
    close->setObjectName(u"Command1"_s);
    close->setAccessibleName(u"Close"_s);
    close->setMinimumWidth(120);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 16, 24, 16);
    layout->setSpacing(16);
    layout->addWidget(drawerWords());
    layout->addWidget(close, 0, Qt::AlignRight);
    watchKeys();
}
