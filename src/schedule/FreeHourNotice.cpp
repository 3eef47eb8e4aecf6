#include "schedule/FreeHourNotice.h"

#include "app/BusinessDay.h"
#include "booking/SlotWords.h"
#include "look/Look.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

constexpr int mostLines = 3;

} // namespace

FreeHourNotice::FreeHourNotice(QWidget *parent) : QFrame(parent)
{
    setObjectName(u"FreeHourNotice"_s);
    setFrameShape(StyledPanel);
    Look::paint(*this, Look::shared);

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 4, 4, 4);
    m_lines = new QVBoxLayout;
    m_lines->setSpacing(4);
    layout->addLayout(m_lines, 1);
    auto *close = new QToolButton;
    close->setObjectName(u"btn_CloseNotice"_s);
    close->setText(u"✕"_s);
    close->setAutoRaise(true);
    close->setToolTip(u"Closes this notice; the people go on waiting."_s);
    close->setAccessibleName(close->toolTip());
    connect(close, &QToolButton::clicked, this, &QWidget::hide);
    layout->addWidget(close, 0, Qt::AlignTop);
    hide();
}

void FreeHourNotice::empty()
{
    while (QLayoutItem *item = m_lines->takeAt(0)) {
        delete item->widget();
        delete item;
    }
}

void FreeHourNotice::announce(Station &station, const std::vector<SlotKey> &freed)
{
    empty();
    hide();
    std::vector<WaitingEntry> waiting;
    for (const SlotKey &slot : freed)
        for (WaitingEntry &entry : waitingFor(station.database, slot))
            waiting.push_back(std::move(entry));
    const auto shown = std::min<std::size_t>(waiting.size(), mostLines);
    for (std::size_t i = 0; i < shown; ++i)
        addLine(waiting[i], station.settings.fieldName(waiting[i].field));
    if (waiting.size() > shown)
        m_lines->addWidget(
            new QLabel(u"%1 more on the waiting-list page"_s.arg(QString::number(waiting.size() - shown))));
    setVisible(!waiting.empty());
}

void FreeHourNotice::addLine(const WaitingEntry &entry, const QString &fieldName)
{
    constexpr qsizetype dayLength = 10;
    constexpr qsizetype hourPosition = 11;
    auto *line = new QWidget;
    auto *layout = new QHBoxLayout(line);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *text = new QLabel(entry.dateTimeText.mid(hourPosition, 5) + u" is free now. Waiting: "_s + entry.booker.name +
                            u", tel. "_s + entry.booker.telephone);
    text->setObjectName(u"lbl_Waiting_"_s + entry.id);
    text->setTextFormat(Qt::PlainText);
    text->setMinimumWidth(0);
    text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    text->setToolTip(u"<qt>"_s + text->text().toHtmlEscaped());
    // The notice stays while staff go to other fields and days.
    auto *place = new QLabel(fieldName + u", "_s + dayInWords(entry.dateTimeText.left(dayLength)));
    place->setObjectName(u"lbl_WaitingPlace_"_s + entry.id);
    place->setTextFormat(Qt::PlainText);
    QFont bold = place->font();
    bold.setBold(true);
    place->setFont(bold);
    auto *words = new QVBoxLayout;
    words->setSpacing(0);
    words->addWidget(place);
    words->addWidget(text);
    auto *take = new QPushButton(Look::icon(u"cut"_s), u"&Take for pasting"_s);
    take->setObjectName(u"btn_TakeWaiting_"_s + entry.id);
    connect(take, &QPushButton::clicked, this, [this, id = entry.id] {
        hide();
        Q_EMIT entryWanted(id);
    });
    layout->addLayout(words, 1);
    layout->addWidget(take);
    m_lines->addWidget(line);
}
