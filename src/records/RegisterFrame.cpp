#include "records/RegisterFrame.h"

#include "look/WrappedLabel.h"
#include "records/KeptLine.h"
#include "records/RegisterForm.h"
#include "records/RegisterList.h"

#include <QBoxLayout>
#include <QDialog>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

constexpr int space = 8;

QPushButton *addButton(QLayout &layout, const QString &name, const QString &text, const QString &tip)
{
    auto *button = new QPushButton(text);
    button->setObjectName(name);
    button->setAccessibleName(QString(text).remove(u'&').remove(u'…'));
    button->setToolTip(tip);
    button->setAutoDefault(false); // Enter in a box presses nothing
    layout.addWidget(button);
    return button;
}

QHBoxLayout *makeRow()
{
    auto *row = new QHBoxLayout;
    row->setSpacing(space);
    return row;
}

} // namespace

RegisterFrame::RegisterFrame(QDialog &window, const Register &records, RegisterList &list, RegisterForm &form,
                             KeptLine &kept)
{
    auto *sides = new QHBoxLayout;
    sides->setSpacing(3 * space);
    sides->addLayout(makeListSide(records.entry, list), 1);
    sides->addLayout(makeEntrySide(records.entry, form), 1);
    auto *layout = new QVBoxLayout(&window);
    layout->setContentsMargins(2 * space, 2 * space, 2 * space, 2 * space);
    layout->setSpacing(space);
    layout->addLayout(sides, 1);
    layout->addWidget(&kept);
    layout->addSpacing(space);
    layout->addLayout(makeBottom(records));
    window.resize(960, 560);
}

QLayout *RegisterFrame::makeListSide(const QString &entry, RegisterList &list)
{
    auto *buttons = makeRow();
    previous = addButton(*buttons, u"btn_Previous"_s, u"&Previous"_s, u"Shows the %1 above in the list."_s.arg(entry));
    next = addButton(*buttons, u"btn_Next"_s, u"&Next"_s, u"Shows the %1 below in the list."_s.arg(entry));
    buttons->addStretch();
    refresh = addButton(*buttons, u"btn_Refresh"_s, u"&Refresh"_s,
                        u"Reads the list again, with what other counters changed."_s);
    auto *side = new QVBoxLayout;
    side->setSpacing(space);
    side->addWidget(&list, 1);
    side->addLayout(buttons);
    return side;
}

QLayout *RegisterFrame::makeEntrySide(const QString &entry, RegisterForm &form)
{
    heading = wrappedLabel(u"lbl_Heading"_s, {}, 1.2);
    hint = new QLabel(u"Press 'Update' when finished !"_s);
    hint->setObjectName(u"lbl_PressUpdate"_s);
    hint->setMargin(space / 2);
    auto *buttons = makeRow();
    update = addButton(*buttons, u"btn_Update"_s, u"&Update"_s, u"Saves what you entered for this %1."_s.arg(entry));
    add = addButton(*buttons, u"btn_Add"_s, u"&Add"_s,
                    u"Empties the boxes for a new %1, which Update then saves."_s.arg(entry));
    buttons->addStretch();
    remove =
        addButton(*buttons, u"btn_Delete"_s, u"&Delete…"_s, u"Deletes the chosen %1 after a question."_s.arg(entry));
    auto *side = new QVBoxLayout;
    side->setSpacing(space);
    side->addWidget(heading);
    side->addWidget(&form);
    side->addWidget(hint, 0, Qt::AlignLeft);
    side->addLayout(buttons);
    side->addStretch();
    return side;
}

QLayout *RegisterFrame::makeBottom(const Register &records)
{
    const QString all = records.entries();
    auto *buttons = makeRow();
    importCsv =
        addButton(*buttons, u"btn_ImportCsv"_s, u"I&mport…"_s,
                  u"Shows what a file for spreadsheets would change among the %1, and takes it over."_s.arg(all));
    exportCsv = addButton(*buttons, u"btn_ExportCsv"_s, u"E&xport…"_s,
                          u"Writes all %1 into a file for spreadsheets."_s.arg(all));
    buttons->addStretch();
    if (!records.isOfItems())
        paste = addButton(*buttons, u"btn_MemberPaste"_s, u"&Keep for the next booking"_s,
                          u"The next booking or waiting-list entry begins with this customer."_s);
    close = addButton(*buttons, u"btn_Close"_s, u"&Close"_s,
                      u"Closes this window and asks first about what is not saved."_s);
    return buttons;
}
