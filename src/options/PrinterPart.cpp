#include "options/PrinterPart.h"

#include "app/Errors.h"
#include "app/Station.h"
#include "counter/PrinterDesk.h"
#include "counter/Receipts.h"
#include "options/BoundSettings.h"
#include "options/OptionsForm.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace OptionsForm;

namespace {

const QString tillSection = u"Till"_s;

} // namespace

PrinterPart::PrinterPart(Station &station, PrinterDesk &desk, QFormLayout *form, BoundSettings &settings, QWidget *page)
    : QObject(page), m_station(station), m_desk(desk), m_page(page)
{
    m_printer = addBox(form, u"Receipt printer"_s, u"txt_Printer"_s,
                       u"The printer that is used without asking; empty when staff are asked each time."_s);
    settings.addBox(m_printer, tillSection, u"printer"_s, u"receipt printer"_s).worksAtOnce = true;
    m_paper = addChoice(form, u"Paper"_s, u"cbo_Paper"_s, u"What the printer is loaded with."_s);
    m_paper->addItem(u"As the printer says"_s, QString());
    for (const Paper paper : {Paper::Roll80, Paper::Roll58, Paper::A5, Paper::A4})
        m_paper->addItem(paperName(paper), paperName(paper));
    settings.addChoice(m_paper, tillSection, u"paper"_s, u"receipt paper"_s).worksAtOnce = true;
    auto *choose = button(u"btn_ChoosePrinter"_s, u"Choose a &printer …"_s,
                          u"Shows the printers of this computer to choose from."_s);
    auto *slip = button(u"btn_TestSlip"_s, u"Print a test sl&ip"_s,
                        u"Prints a slip on the printer and paper entered above, without saving them."_s);
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addWidget(choose);
    buttons->addWidget(slip);
    m_answer = answer(u"lbl_Printer"_s);
    form->addRow(buttons);
    form->addRow(m_answer);
    connect(choose, &QPushButton::clicked, this, &PrinterPart::choosePrinter);
    connect(slip, &QPushButton::clicked, this, &PrinterPart::printTestSlip);
}

void PrinterPart::forgetAnswer()
{
    m_answer->hide();
}

void PrinterPart::withPrinter(const std::function<void(const PrinterChoice &choice)> &chosen)
{
    m_desk.lookForPrinters([this, chosen, self = QPointer(this)](std::optional<bool> isAny) {
        if (!self)
            return;
        if (!isAny.value_or(false)) {
            say(m_answer,
                isAny ? u"No printer is set up on this computer."_s : u"The computer's printers do not answer."_s,
                false);
            return;
        }
        guarded(m_station.prompts, ErrorCode::Unknown, [&] {
            if (const auto choice = m_desk.choose(m_page))
                chosen(*choice);
        });
    });
}

void PrinterPart::choosePrinter()
{
    withPrinter([this](const PrinterChoice &choice) {
        m_printer->setText(choice.name);
        if (choice.paper)
            m_paper->setCurrentIndex(m_paper->findData(paperName(*choice.paper)));
    });
}

void PrinterPart::printTestSlip()
{
    const auto paper = paperNamed(m_paper->currentData().toString());
    if (!m_printer->text().isEmpty())
        print({m_printer->text(), paper});
    else
        withPrinter([this, paper](const PrinterChoice &choice) {
            PrinterChoice with = choice;
            if (!with.paper)
                with.paper = paper;
            print(with);
        });
}

void PrinterPart::print(const PrinterChoice &choice)
{
    Receipt slip = receiptHead(m_station, u"TEST SLIP"_s, 0);
    slip.lines = {{u"1"_s, u"Nothing was sold"_s, u"0.00"_s, u"1"_s, u"0.00"_s}};
    slip.amount = u"$ 0.00"_s;
    say(m_answer, u"The test slip is on its way …"_s, true);
    m_desk.print(slip, choice, [this, self = QPointer(this)](const QString &trouble) {
        if (self)
            say(m_answer, trouble.isEmpty() ? u"The test slip was sent. Does it look well?"_s : trouble,
                trouble.isEmpty());
    });
}
