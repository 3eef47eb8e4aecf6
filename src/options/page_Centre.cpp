#include "options/page_Centre.h"

#include "app/Errors.h"
#include "app/Station.h"
#include "look/SteadyTabs.h"
#include "options/FieldsPart.h"
#include "options/OptionsForm.h"
#include "options/PlanPart.h"
#include "options/SettingsDraft.h"

#include <QBoxLayout>
#include <QFileDialog>
#include <QFormLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>

using namespace Qt::StringLiterals;
using namespace OptionsForm;

namespace {

constexpr int mostCounters = 99;

// Their lists take the room that there is; by itself the height that they would like would be asked for.
class CentreTabs : public SteadyTabs
{
public:
    [[nodiscard]] bool hasHeightForWidth() const override { return false; }
    [[nodiscard]] QSize sizeHint() const override { return minimumSizeHint(); }
};

QStringList linesOf(const QPlainTextEdit *box)
{
    QStringList lines = box->toPlainText().split(u'\n');
    for (QString &line : lines)
        line = line.trimmed();
    while (!lines.isEmpty() && lines.back().isEmpty())
        lines.pop_back();
    return lines;
}

} // namespace

page_Centre::page_Centre(Station &station, const QString &administrator, QWidget *parent)
    : OptionsPage(station, administrator, parent), m_fields(new FieldsPart(station.prompts)), m_plans(new PlanPart)
{
    setObjectName(u"page_Centre"_s);
    auto *tabs = new CentreTabs;
    tabs->setObjectName(u"SSTabCentre"_s);
    tabs->addTab(m_fields, u"Fields &and hours"_s);
    tabs->addTab(makeReceipts(), u"Receipts and &counters"_s);
    tabs->addTab(m_plans, u"&Plans"_s);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 8, 0);
    layout->setSpacing(8);
    layout->addWidget(tabs, 1);
    layout->addWidget(makeCopyLine());
    connect(m_fields, &FieldsPart::changed, this, &OptionsPage::touched);
    connect(m_fields, &FieldsPart::fieldsChanged, this, [this] { m_plans->setFields(entered().names()); });
    connect(m_plans, &PlanPart::changed, this, &OptionsPage::touched);
    connect(m_plans, &PlanPart::refused, this, &page_Centre::told);
}

QWidget *page_Centre::makeReceipts()
{
    auto *tab = new QWidget;
    auto *left = new QVBoxLayout;
    auto *right = new QVBoxLayout;
    auto *layout = new QHBoxLayout(tab);
    layout->setSpacing(16);
    layout->addLayout(left, 1);
    layout->addLayout(right, 1);
    m_address = addLines(left, u"A&ddress at the head of the receipts, line by line"_s, u"txt_Address"_s,
                         u"The centre's name and address, as they stand at the head of a receipt."_s);
    m_contact = addLines(left, u"Co&ntact, line by line"_s, u"txt_Contact"_s,
                         u"Telephone and mail address, as they stand below."_s);
    QFormLayout *form = addGroup(right, u"Counters and special groups"_s);
    m_counters =
        addFigure(form, u"N&umber of counters"_s, u"spn_Counters"_s,
                  u"How many counters the centre has; each gets its own tables at the next start."_s, 1, mostCounters);
    m_groups =
        addFigure(form, u"Special &groups, at most"_s, u"spn_SpecialGroups"_s,
                  u"Special groups with a higher number are not looked for."_s, 0, CentreSettings::mostSpecialGroups);
    right->addStretch();
    for (const QSpinBox *box : {m_counters, m_groups})
        connect(box, &QSpinBox::valueChanged, this, &OptionsPage::touched);
    return tab;
}

QPlainTextEdit *page_Centre::addLines(QBoxLayout *column, const QString &caption, const QString &name,
                                      const QString &tip)
{
    auto *box = new QPlainTextEdit;
    box->setObjectName(name);
    box->setAccessibleName(QString(caption).remove(u'&'));
    box->setToolTip(tip);
    box->setTabChangesFocus(true);
    auto *label = new QLabel(caption);
    label->setBuddy(box);
    column->addWidget(label);
    column->addWidget(box, 1);
    connect(box, &QPlainTextEdit::textChanged, this, &OptionsPage::touched);
    return box;
}

QWidget *page_Centre::makeCopyLine()
{
    auto *line = new QWidget;
    auto *layout = new QHBoxLayout(line);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(words(u"lbl_OwnFile"_s,
                            u"Each counter has its own settings file; what is saved here changes this counter's "
                            "alone. Make the same changes at the others, or copy this file for them."_s),
                      1);
    m_copyFor = new QSpinBox;
    m_copyFor->setObjectName(u"spn_CopyFor"_s);
    m_copyFor->setAccessibleName(u"Number of the counter that gets a copy"_s);
    m_copyFor->setToolTip(u"The number of the counter for which the file is copied."_s);
    m_copyFor->setMinimum(1);
    auto *label = new QLabel(u"Count&er"_s);
    label->setBuddy(m_copyFor);
    auto *copy = button(u"btn_CopyForCounter"_s, u"Cop&y for another counter …"_s,
                        u"Saves a settings file like this one, with the number of the counter beside this button."_s);
    layout->addWidget(label);
    layout->addWidget(m_copyFor);
    layout->addWidget(copy);
    connect(copy, &QPushButton::clicked, this, &page_Centre::askForCopy);
    return line;
}

void page_Centre::load()
{
    showSettings(CentreSettings::read());
    m_loaded = entered(); // what cannot be shown is no change
    m_plans->load(m_loaded.names());
    Q_EMIT touched();
}

void page_Centre::showSettings(const CentreSettings &settings)
{
    m_fields->load(settings);
    m_address->setPlainText(settings.address.join(u'\n'));
    m_contact->setPlainText(settings.contact.join(u'\n'));
    m_counters->setValue(settings.counters);
    m_groups->setValue(settings.specialGroups);
    m_copyFor->setMaximum(std::max(1, settings.counters));
    m_copyFor->setValue(station().settings.ThisCounter + 1);
}

CentreSettings page_Centre::entered() const
{
    CentreSettings settings;
    m_fields->enterInto(settings);
    settings.address = linesOf(m_address);
    settings.contact = linesOf(m_contact);
    settings.counters = m_counters->value();
    settings.specialGroups = m_groups->value();
    return settings;
}

bool page_Centre::hasChanges() const
{
    return entered() != m_loaded || m_plans->hasChanges();
}

bool page_Centre::save()
{
    const CentreSettings settings = entered();
    if (const QString reason = settings.refusal(); !reason.isEmpty()) {
        told(reason);
        return false;
    }
    SettingsDraft draft;
    settings.addTo(draft, m_loaded);
    m_plans->addTo(draft);
    const std::size_t fieldsBefore = m_loaded.fields.size();
    if (!saveDraft(station(), administrator(), draft))
        return false;
    for (std::size_t field = fieldsBefore; field < settings.fields.size(); ++field)
        if (!readHotSpot(u"HotSpot"_s, int(field)))
            station().prompts.inform(
                u"\"%1\" has no place on the plan yet, so nobody could choose it there: draw it under \"Plans\"."_s.arg(
                    settings.fields[field].display));
    load();
    Q_EMIT restartNeeded();
    return true;
}

void page_Centre::askForCopy()
{
    if (hasChanges()) {
        told(u"Save this page first: the copy is made of what is saved."_s);
        return;
    }
    const QString path = QFileDialog::getSaveFileName(this, u"Settings for counter %1"_s.arg(m_copyFor->value()),
                                                      u"tamsora.ini"_s, u"Settings (*.ini)"_s);
    if (!path.isEmpty())
        copyFor(m_copyFor->value(), path);
}

bool page_Centre::copyFor(int counter, const QString &path)
{
    return guarded(station().prompts, ErrorCode::Unknown, [&] {
        copySettingsFor(counter, path);
        logOption(station(), administrator(), u"settings copied for counter %1"_s.arg(counter));
        station().prompts.inform(
            u"The file for counter %1 is ready. Put it as tamsora.ini where that computer keeps its "
            "settings. It holds the database password: delete it from the way there."_s.arg(counter),
            u"Options"_s);
    });
}

void page_Centre::told(const QString &refusal) const
{
    station().prompts.refuse(refusal, u"Options"_s);
}
