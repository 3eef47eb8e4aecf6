#include "counter/DrawerDialog.h"

#include "app/Errors.h"
#include "app/Station.h"

#include <QLabel>
#include <QLineEdit>
#include <QShowEvent>
#include <QSpinBox>

using namespace Qt::StringLiterals;

DrawerDialog::DrawerDialog(Station &station, QWidget *parent)
    : KeyedDialog(parent), m_station(station), m_drawer(station), m_words(new QLabel(u"Opening the drawer …"_s, this))
{
    setProperty("touch", true);
    m_words->setObjectName(u"lbl_Drawer"_s);
}

void DrawerDialog::showEvent(QShowEvent *event)
{
    KeyedDialog::showEvent(event);
    // Once it is seen: an error is told in a window above it.
    if (!event->spontaneous())
        QMetaObject::invokeMethod(this, &DrawerDialog::openDrawer, Qt::QueuedConnection);
}

void DrawerDialog::openDrawer()
{
    bool opened = false;
    guarded(m_station.prompts, ErrorCode::LoadingForm, [&] { opened = m_drawer.openOnce(); });
    m_words->setText(opened ? u"The drawer is open."_s : u"The drawer did not open: use its key."_s);
}

void DrawerDialog::takeScan(const QString &digits)
{
    if (auto *pieces = qobject_cast<QSpinBox *>(focusWidget()))
        pieces->setValue(0); // what was counted before is under the digits and gone
    auto *box = qobject_cast<QLineEdit *>(focusWidget());
    if (box && !box->isReadOnly() && box->text().endsWith(digits))
        box->setText(box->text().chopped(digits.size()));
}
