#include "schedule/PlayLists.h"

#include <QLabel>
#include <QPainter>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QVBoxLayout>

#include <algorithm>

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

} // namespace

PlayLists::PlayLists(std::vector<QString> fieldNames, QWidget *parent)
    : SteadyTabs(parent), m_fieldNames(std::move(fieldNames))
{
    setObjectName(u"SSTab2"_s);
    addTab(makeHour(), u"&Hour"_s);
    addTab(makeLists(), u"Pla&ying"_s);
}

QWidget *PlayLists::makeHour()
{
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    layout->setSpacing(4);
    m_hourTitle = new QLabel(u"Selected hour on all fields"_s);
    m_hourTitle->setWordWrap(true);
    m_hour = addList(layout, u"HourPlayList"_s, m_hourTitle, m_fieldNames);
    return page;
}

QWidget *PlayLists::makeLists()
{
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    layout->setSpacing(4);
    m_current = addList(layout, u"CurrentPlayList"_s, new QLabel(u"This hour"_s), m_fieldNames);
    m_previous = addList(layout, u"PreviousPlayList"_s, new QLabel(u"Hour before"_s), m_fieldNames);
    m_next = addList(layout, u"NextPlayList"_s, new QLabel(u"Next hour"_s), m_fieldNames);
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
