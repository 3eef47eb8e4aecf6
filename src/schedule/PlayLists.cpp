#include "schedule/PlayLists.h"

#include "look/Look.h"

#include <QLabel>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBlock>
#include <QVBoxLayout>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

/// Lines "3 - Name" with the display name of the field beside each, which is no part of the text.
class FieldLines : public QPlainTextEdit
{
public:
    explicit FieldLines(const std::vector<QString> &names) : m_names(names), m_beside(new Beside(this))
    {
        connect(this, &QPlainTextEdit::updateRequest, m_beside, qOverload<>(&QWidget::update));
        connect(this, &QPlainTextEdit::textChanged, this, [this] { makeRoom(); });
    }

    void setObjectName(const QString &name)
    {
        QPlainTextEdit::setObjectName(name);
        m_beside->setObjectName(name + u"_Fields"_s);
    }

protected:
    void resizeEvent(QResizeEvent *event) override
    {
        QPlainTextEdit::resizeEvent(event);
        makeRoom();
    }

private:
    class Beside : public QWidget
    {
    public:
        explicit Beside(FieldLines *lines) : QWidget(lines), m_lines(lines) {}

    protected:
        void paintEvent(QPaintEvent *) override { m_lines->paintBeside(*this); }

    private:
        FieldLines *m_lines;
    };

    [[nodiscard]] QString nameOf(const QTextBlock &line) const
    {
        bool isNumber = false;
        const auto field = line.text().section(u" - "_s, 0, 0).toUInt(&isNumber);
        return isNumber && field < m_names.size() ? m_names[field] : QString();
    }

    // Names take no more than what a line needs least: the players stand in front of them.
    void makeRoom()
    {
        constexpr double widestShare = 0.4;
        constexpr int gap = 6;
        int widest = 0;
        QStringList names;
        for (QTextBlock line = document()->begin(); line.isValid(); line = line.next()) {
            names << nameOf(line);
            widest = std::max(widest, fontMetrics().horizontalAdvance(names.last()));
        }
        const QRect inside = contentsRect();
        const int room = widest == 0 ? 0 : std::min(widest + 2 * gap, int(inside.width() * widestShare));
        setViewportMargins(0, 0, room, 0);
        m_beside->setGeometry(viewport()->geometry().right() + 1, viewport()->y(), room, viewport()->height());
        m_beside->setAccessibleName(names.join(u'\n').trimmed());
        m_beside->update();
    }

    void paintBeside(QWidget &beside) const
    {
        constexpr int gap = 6;
        QPainter painter(&beside);
        painter.fillRect(beside.rect(), palette().base());
        painter.setFont(font());
        painter.setPen(palette().color(QPalette::PlaceholderText));
        for (QTextBlock line = firstVisibleBlock(); line.isValid(); line = line.next()) {
            const QRectF place = blockBoundingGeometry(line).translated(contentOffset());
            if (place.top() > beside.height())
                return;
            const QRectF box(gap, place.top(), beside.width() - 2 * gap, place.height());
            painter.drawText(box, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine,
                             fontMetrics().elidedText(nameOf(line), Qt::ElideRight, int(box.width())));
        }
    }

    const std::vector<QString> &m_names;
    Beside *m_beside;
};

QPlainTextEdit *addList(QVBoxLayout *layout, const QString &name, QLabel *title, const std::vector<QString> &fieldNames)
{
    auto *list = new FieldLines(fieldNames);
    list->setObjectName(name);
    list->setReadOnly(true);
    list->setLineWrapMode(QPlainTextEdit::NoWrap);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // the arrow keys move a long line
    list->setTabChangesFocus(true);
    list->setAccessibleName(title->text());
    title->setBuddy(list);
    layout->addWidget(title);
    layout->addWidget(list, 1);
    return list;
}

// The number of the special group whose button this is; behind all of them for any other.
int groupOf(const QLayoutItem &item)
{
    const QString name = item.widget() ? item.widget()->objectName() : QString();
    bool isGroup = false;
    const int group = name.section(u"btn_MemberDynamic_"_s, 1).toInt(&isGroup);
    return isGroup ? group : std::numeric_limits<int>::max();
}

} // namespace

PlayLists::PlayLists(std::vector<QString> fieldNames, QWidget *parent)
    : SteadyTabs(parent), m_fieldNames(std::move(fieldNames))
{
    setObjectName(u"SSTab2"_s);
    addTab(makeRegisters(), u"Re&gisters"_s);
    addTab(makeLists(), u"Pla&ying"_s);
}

QWidget *PlayLists::makeRegisters()
{
    auto *page = new QWidget;
    m_registers = new QVBoxLayout(page);
    m_registers->setSpacing(8);
    addRegisterButton(u"btn_Item"_s, u"Items"_s, u"items"_s);
    addRegisterButton(u"btn_Options"_s, u"Options"_s, u"options"_s);
    addRegisterButton(u"btn_Membership"_s, u"Membership"_s, u"membership"_s);
    addRegisterButton(u"btn_Student"_s, u"Students"_s, u"student"_s);
    addRegisterButton(u"btn_Summary"_s, u"Booking summary"_s, u"summary"_s);
    m_registers->addStretch(1);
    return page;
}

QPushButton *PlayLists::addRegisterButton(const QString &name, const QString &caption, const QString &iconName)
{
    auto *button = new QPushButton(Look::icon(iconName), caption);
    button->setObjectName(name);
    button->setEnabled(false);
    button->setToolTip(caption + u" will open here in a later version."_s);
    m_registers->addWidget(button);
    return button;
}

void PlayLists::addSpecialGroup(int group)
{
    const QString number = QString::number(group);
    QPushButton *button =
        addRegisterButton(u"btn_MemberDynamic_"_s + number, u"Special Group # "_s + number, u"membership"_s);
    m_registers->removeWidget(button);
    int place = 3; // behind the members
    while (groupOf(*m_registers->itemAt(place)) < group)
        ++place;
    m_registers->insertWidget(place, button);
}

QWidget *PlayLists::makeLists()
{
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    layout->setSpacing(4);
    m_current = addList(layout, u"CurrentPlayList"_s, new QLabel(u"This hour"_s), m_fieldNames);
    m_previous = addList(layout, u"PreviousPlayList"_s, new QLabel(u"Hour before"_s), m_fieldNames);
    m_next = addList(layout, u"NextPlayList"_s, new QLabel(u"Next hour"_s), m_fieldNames);
    m_hourTitle = new QLabel(u"Selected hour on all fields"_s);
    m_hour = addList(layout, u"HourPlayList"_s, m_hourTitle, m_fieldNames);
    return page;
}

void PlayLists::showDay(const DaySchedule &schedule)
{
    show(m_current, schedule.currentPlayers);
    show(m_previous, schedule.previousPlayers);
    show(m_next, schedule.nextPlayers);
}

void PlayLists::showHour(const QString &hourText, const QString &players)
{
    m_hourTitle->setText(hourText.isEmpty() ? u"Selected hour on all fields"_s : hourText + u" on all fields"_s);
    show(m_hour, players);
}

void PlayLists::show(QPlainTextEdit *list, const QString &text)
{
    if (m_texts[list] == text)
        return;
    m_texts[list] = text;
    list->setPlainText(text);
}
