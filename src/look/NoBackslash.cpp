#include "look/NoBackslash.h"

#include "look/Look.h"

#include <QEvent>
#include <QLabel>
#include <QLineEdit>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QChar backslash = u'\\';
constexpr int margin = 4;

} // namespace

NoBackslash::NoBackslash(QLineEdit *box) : QValidator(box), m_box(box)
{
    box->setValidator(this);
    box->installEventFilter(this);
}

QValidator::State NoBackslash::validate(QString &text, int &cursor) const
{
    if (!text.contains(backslash))
        return Acceptable;
    cursor -= int(QStringView(text).left(cursor).count(backslash));
    text.remove(backslash);
    // The box tells its text while it is being validated; what it shows is none of the validator's.
    const_cast<NoBackslash *>(this)->say(); // NOLINT(cppcoreguidelines-pro-type-const-cast)
    return Acceptable;
}

bool NoBackslash::eventFilter(QObject *watched, QEvent *event)
{
    if (m_line && (event->type() == QEvent::KeyPress || event->type() == QEvent::FocusOut)) {
        m_line->hide();
        m_box->setAccessibleDescription({});
    }
    return QValidator::eventFilter(watched, event);
}

void NoBackslash::say()
{
    if (!m_box->isVisible())
        return;
    QWidget *window = m_box->window();
    if (!m_line) {
        m_line = new QLabel(u"A backslash (\\) cannot be used here."_s, window);
        m_line->setObjectName(u"lbl_NoBackslash"_s);
        m_line->setAttribute(Qt::WA_TransparentForMouseEvents); // a button may lie behind it
        m_line->setMargin(margin);
        Look::paint(*m_line, Look::alert);
    }
    m_line->adjustSize();
    const QPoint below = m_box->mapTo(window, QPoint(0, m_box->height()));
    m_line->move(std::max(0, std::min(below.x(), window->width() - m_line->width())),
                 std::min(below.y(), window->height() - m_line->height()));
    m_line->show();
    m_line->raise();
    m_box->setAccessibleDescription(m_line->text());
}
