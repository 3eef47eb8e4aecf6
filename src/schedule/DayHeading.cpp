#include "schedule/DayHeading.h"

#include "look/ElidedLabel.h"

#include <QDate>
#include <QHBoxLayout>
#include <QLocale>
#include <QMouseEvent>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

/// A line of text that can be clicked.
class ClickedLabel : public QLabel
{
public:
    explicit ClickedLabel(std::function<void()> clicked) : m_clicked(std::move(clicked)) {}

protected:
    void mouseReleaseEvent(QMouseEvent *event) override
    {
        if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
            m_clicked();
    }

private:
    std::function<void()> m_clicked;
};

void makeLarge(QLabel *label)
{
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * 1.25);
    font.setBold(true);
    label->setFont(font);
}

} // namespace

DayHeading::DayHeading()
    : m_fieldName(new ElidedLabel),
      m_fieldInfo(new QLabel),
      m_day(new QLabel),
      m_time(new ClickedLabel([this] { Q_EMIT clockClicked(); }))
{
    m_fieldName->setObjectName(u"lbl_FieldName"_s);
    m_fieldInfo->setObjectName(u"lbl_FieldInfo"_s);
    m_day->setObjectName(u"lbl_Day"_s);
    m_time->setObjectName(u"txt_Time"_s);
    m_time->setToolTip(u"Looks for changes of players at the coming hour."_s);
    makeLarge(m_fieldName);
    makeLarge(m_time);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(16);
    for (QLabel *label : {static_cast<QLabel *>(m_fieldName), m_fieldInfo, m_day, m_time}) {
        label->setTextFormat(Qt::PlainText);
        layout->addWidget(label, label == m_day ? 1 : 0);
    }
}

void DayHeading::showField(const QString &name, int field)
{
    m_fieldName->showText(name);
    m_fieldInfo->setText(u"Field Number "_s + QString::number(field + 1)); // people count from 1
}

void DayHeading::showNoField()
{
    m_fieldName->showText(u"No field is set up"_s);
    m_fieldInfo->clear();
}

void DayHeading::showDay(const QString &day)
{
    m_day->setText(QLocale::c().toString(QDate::fromString(day, Qt::ISODate), u"ddd d MMMM yyyy"_s));
}

void DayHeading::showTime(const QString &timeText)
{
    m_time->setText(timeText);
}
