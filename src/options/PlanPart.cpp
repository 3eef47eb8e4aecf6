#include "options/PlanPart.h"

#include "app/PictureFile.h"
#include "look/PictureReader.h"
#include "options/OptionsForm.h"
#include "options/PlanEditor.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSpinBox>

using namespace Qt::StringLiterals;
using namespace OptionsForm;

namespace {

constexpr int widthOfSide = 264;
constexpr int farthest = 9999;

QString inWords(const std::optional<HotSpot> &spot)
{
    if (!spot)
        return u"Not on the plan yet: draw its place with the mouse."_s;
    return u"From %1, %2 to %3, %4."_s.arg(spot->left).arg(spot->top).arg(spot->right).arg(spot->bottom);
}

} // namespace

PlanPart::PlanPart(QWidget *parent)
    : QWidget(parent),
      m_plans{{{u"ground plan"_s, {u"Layout"_s, u"HotSpot"_s}, {}},
               {u"waiting-list plan"_s, {u"WaitingList"_s, u"HotSpot2"_s}, {}}}},
      m_editor(new PlanEditor),
      m_fields(new QListWidget),
      m_place(words(u"lbl_Place"_s, {}))
{
    setObjectName(u"PlanPart"_s);
    auto *side = new QVBoxLayout;
    side->setSpacing(8);
    addPicture(addGroup(side, u"Picture"_s));
    m_fields->setObjectName(u"ListView_PlanFields"_s);
    m_fields->setAccessibleName(u"Fields on the plan"_s);
    m_fields->setToolTip(u"The field whose place is drawn on the plan."_s);
    auto *off = button(u"btn_TakeOff"_s, u"Take &off the plan"_s,
                       u"Takes the chosen field off this plan; it stays in the list of fields."_s);
    side->addWidget(m_fields, 1);
    side->addWidget(m_place);
    side->addWidget(off);
    auto *drawing = new QVBoxLayout;
    drawing->setSpacing(8);
    drawing->addWidget(m_editor, 1);
    drawing->addWidget(words(u"lbl_PlanHelp"_s,
                             u"Choose a field, then drag its place on the picture. Drag a place to move it, a "
                             "corner to change its size; arrow keys move it by a pixel."_s));
    auto *layout = new QHBoxLayout(this);
    layout->setSpacing(16);
    auto *sideRoom = new QWidget;
    sideRoom->setFixedWidth(widthOfSide);
    sideRoom->setLayout(side);
    side->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(sideRoom);
    layout->addLayout(drawing, 1);
    connect(off, &QPushButton::clicked, m_editor, &PlanEditor::takeOff);
    connect(m_fields, &QListWidget::currentRowChanged, this, &PlanPart::chooseField);
    connect(m_editor, &PlanEditor::chosen, m_fields, [this](int field) { m_fields->setCurrentRow(field); });
    connect(m_editor, &PlanEditor::changed, this, [this] {
        shown().now.spots = m_editor->spots();
        chooseField(m_editor->chosenField());
        Q_EMIT changed();
    });
}

void PlanPart::addPicture(QFormLayout *form)
{
    m_plan = addChoice(form, u"Pla&n"_s, u"cbo_Plan"_s, u"Which of the two plans is shown."_s);
    m_plan->addItems({u"Ground plan"_s, u"Waiting list"_s});
    m_image = addBox(form, u"P&icture"_s, u"txt_PlanImage"_s,
                     u"The picture file; one in the program's folder goes by its bare name."_s);
    m_image->setReadOnly(true);
    auto *choose = button(u"btn_ChoosePicture"_s, u"C&hoose a picture …"_s,
                          u"Chooses another picture file; it is shown in its own size."_s);
    form->addRow(QString(), choose);
    auto *place = new QGridLayout;
    place->setSpacing(4);
    const std::array names{u"Top"_s, u"Left"_s, u"Height"_s, u"Width"_s};
    for (std::size_t i = 0; i < names.size(); ++i) {
        auto *figure = new QSpinBox;
        figure->setObjectName(u"spn_Plan"_s + names.at(i));
        figure->setAccessibleName(names.at(i) + u" of the picture"_s);
        figure->setToolTip(u"Where the picture stands in the window, and how large."_s);
        figure->setRange(0, farthest);
        auto *label = new QLabel(names.at(i));
        label->setBuddy(figure);
        place->addWidget(label, int(i) % 2 * 2, int(i) / 2);
        place->addWidget(figure, int(i) % 2 * 2 + 1, int(i) / 2);
        connect(figure, &QSpinBox::valueChanged, this, &PlanPart::takePlacement);
        m_placement.at(i) = figure;
    }
    form->addRow(place);
    connect(choose, &QPushButton::clicked, this, &PlanPart::choosePicture);
    connect(m_plan, &QComboBox::currentIndexChanged, this, &PlanPart::showPlan);
}

PlanPart::Plan &PlanPart::shown()
{
    return m_plans.at(std::size_t(m_plan->currentIndex()));
}

void PlanPart::load(const std::vector<QString> &fieldNames)
{
    m_names = fieldNames;
    for (Plan &plan : m_plans) {
        plan.loaded = PlanSettings::read(plan.loaded.section, plan.loaded.spotSection, int(m_names.size()));
        plan.now = plan.loaded;
    }
    showPlan();
}

void PlanPart::setFields(const std::vector<QString> &fieldNames)
{
    if (fieldNames == m_names)
        return;
    m_names = fieldNames;
    for (Plan &plan : m_plans)
        plan.now.spots.resize(m_names.size());
    showFields();
}

bool PlanPart::hasChanges() const
{
    for (const Plan &plan : m_plans)
        if (!plan.now.sameAs(plan.loaded))
            return true;
    return false;
}

void PlanPart::addTo(SettingsDraft &draft) const
{
    for (const Plan &plan : m_plans)
        plan.now.addTo(draft, plan.loaded, plan.name, m_names);
}

void PlanPart::showPlan()
{
    const QScopedValueRollback showing(m_showing, true);
    const PicturePlacement &picture = shown().now.picture;
    m_image->setText(picture.image);
    const std::array numbers{picture.top, picture.left, picture.height, picture.width};
    for (std::size_t i = 0; i < numbers.size(); ++i)
        m_placement.at(i)->setValue(qRound(numbers.at(i)));
    m_editor->setPicture(PictureReader(pictureFile(picture.image, 1)).read());
    showFields();
}

void PlanPart::showFields()
{
    const int chosen = std::max(0, m_fields->currentRow());
    m_editor->setSpots(shown().now.spots, m_names);
    m_fields->clear();
    for (const QString &name : m_names)
        m_fields->addItem(name);
    m_fields->setCurrentRow(std::min(chosen, m_fields->count() - 1));
    chooseField(m_fields->currentRow());
}

void PlanPart::chooseField(int field)
{
    m_editor->chooseField(field);
    m_place->setText(field < 0 ? QString() : inWords(m_editor->spots()[std::size_t(field)]));
}

void PlanPart::takePlacement()
{
    if (m_showing)
        return;
    PicturePlacement &picture = shown().now.picture;
    picture.top = m_placement[0]->value();
    picture.left = m_placement[1]->value();
    picture.height = m_placement[2]->value();
    picture.width = m_placement[3]->value();
    Q_EMIT changed();
}

void PlanPart::choosePicture()
{
    const QString file =
        QFileDialog::getOpenFileName(this, u"Picture of the plan"_s, QCoreApplication::applicationDirPath(),
                                     u"Pictures (*.png *.jpg *.jpeg *.bmp *.gif *.svg)"_s);
    if (!file.isEmpty() && !takePicture(file))
        Q_EMIT refused(u"%1 cannot be read as a picture."_s.arg(QDir::toNativeSeparators(file)));
}

bool PlanPart::takePicture(const QString &file)
{
    const QSize size = PictureReader(file).read().size();
    if (size.isEmpty())
        return false;
    const QFileInfo info(file);
    const bool isOurs = info.absoluteDir() == QDir(QCoreApplication::applicationDirPath());
    shown().now.picture = {isOurs ? info.fileName() : info.absoluteFilePath(), 0, 0, double(size.height()),
                           double(size.width())};
    showPlan();
    Q_EMIT changed();
    return true;
}
