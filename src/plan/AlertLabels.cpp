#include "plan/AlertLabels.h"

#include "look/Look.h"
#include "plan/Alerts.h"

#include <QLabel>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr double gap = 4;
constexpr int smallestLetters = 9;

} // namespace

void AlertLabels::make(QWidget *plan, const std::vector<QString> &fieldNames)
{
    for (std::size_t field = 0; field < fieldNames.size(); ++field) {
        auto *const label = new QLabel(plan);
        label->setObjectName(u"lbl_Alert_"_s + QString::number(field));
        label->setAccessibleName(u"Alert for "_s + fieldNames[field]);
        label->setAttribute(Qt::WA_TransparentForMouseEvents);
        Look::paint(*label, Look::alert);
        label->setFrameStyle(int(QFrame::Box) | int(QFrame::Plain));
        label->setAlignment(Qt::AlignCenter);
        label->hide();
        m_labels.push_back(label);
    }
}

bool AlertLabels::setCaptions(const std::vector<QString> &captions)
{
    bool changed = false;
    for (std::size_t field = 0; field < std::min(captions.size(), m_labels.size()); ++field) {
        changed = changed || m_labels[field]->text() != captions[field];
        m_labels[field]->setText(captions[field]);
    }
    setLit(m_lit);
    return changed;
}

void AlertLabels::setLit(bool lit)
{
    m_lit = lit;
    for (QLabel *const label : m_labels)
        label->setVisible(lit && label->text() == alertCaption);
}

bool AlertLabels::says(int field) const
{
    return std::size_t(field) < m_labels.size() && m_labels[std::size_t(field)]->text() == alertCaption;
}

QSize AlertLabels::size(int field) const
{
    return m_labels.at(std::size_t(field))->size();
}

void AlertLabels::place(const std::vector<QRectF> &rooms, const QFont &font, bool atBottom, int planHeight)
{
    double looseLeft = gap;
    for (std::size_t field = 0; field < m_labels.size(); ++field) {
        QLabel *const label = m_labels[field];
        const QRectF room = rooms.at(field).adjusted(gap, gap, -gap, -gap);
        QFont letters = font;
        letters.setBold(true);
        letters.setPixelSize(std::clamp(int(room.height() / 3), smallestLetters, QFontInfo(font).pixelSize()));
        label->setFont(letters);
        const QFontMetrics metrics(letters);
        const QSize size(metrics.horizontalAdvance(alertCaption) + 10, metrics.height() + 2);
        label->resize(size);
        if (rooms.at(field).isEmpty()) {
            label->move(int(looseLeft), planHeight - size.height() - int(gap));
            looseLeft += size.width() + gap;
        } else {
            label->move(int(room.right()) - size.width(),
                        atBottom ? int(room.bottom()) - size.height() + 1 : int(room.top()));
        }
    }
}
