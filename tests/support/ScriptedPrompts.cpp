#include "support/ScriptedPrompts.h"

#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString titled(const QString &text, const QString &title)
{
    return title.isEmpty() ? text : text + u" ["_s + title + u']';
}

QString nameOf(Answer answer)
{
    return QStringList{u"ok"_s, u"cancel"_s, u"yes"_s, u"no"_s}.at(int(answer));
}

// "(question: yes NO)"
QString boxOf(const Question &question)
{
    const QStringList icons{u"no icon"_s, u"information"_s, u"question"_s, u"warning"_s, u"critical"_s};
    QStringList buttons;
    for (const Answer answer : question.buttons)
        buttons << (answer == question.defaultButton ? nameOf(answer).toUpper() : nameOf(answer));
    return u'(' + icons.at(int(question.icon)) + u": "_s + buttons.join(u' ') + u')';
}

void failTest(const QString &text)
{
    QTest::qFail(qPrintable(text), __FILE__, __LINE__);
}

} // namespace

ScriptedPrompts::ScriptedPrompts(QStringList script) : m_script(std::move(script)) {}

ScriptedPrompts::~ScriptedPrompts()
{
    if (!m_script.isEmpty())
        failTest(u"Never asked: "_s + m_script.join(u"; "_s));
}

QString ScriptedPrompts::answerTo(const QString &question)
{
    const QString line = m_script.isEmpty() ? u"nothing"_s : m_script.takeFirst();
    if (line.section(u" ->"_s, 0, 0) != question)
        failTest(u"Expected "_s + line + u", but was asked "_s + question);
    return line.section(u" ->"_s, 1).trimmed();
}

void ScriptedPrompts::refuse(const QString &text, const QString &title)
{
    answerTo(u"refuse: "_s + titled(text, title));
}

void ScriptedPrompts::inform(const QString &text, const QString &title, MessageIcon icon)
{
    if (icon == MessageIcon::None)
        answerTo(u"plain: "_s + titled(text, title));
    else
        answerTo(m_script.value(0) == u"inform" ? u"inform"_s : u"inform: "_s + titled(text, title));
}

Answer ScriptedPrompts::ask(const Question &question)
{
    const QString box = boxOf(question);
    const QString text = titled(question.text, question.title);
    const QString pressed =
        answerTo(box == u"(question: yes NO)" ? u"confirm: "_s + text : u"choose: "_s + text + u' ' + box);
    const auto found = std::ranges::find(question.buttons, pressed, &nameOf);
    if (found == question.buttons.end())
        failTest(u"No such button: "_s + pressed);
    return found == question.buttons.end() ? question.closed() : *found;
}

QString ScriptedPrompts::askText(const QString &question, int maxLength, const QString &title)
{
    return answerTo(u"ask: "_s + titled(question, title)).left(maxLength);
}

std::optional<Verification> ScriptedPrompts::verifyStaff(const QString &what)
{
    const bool anyWords = m_script.value(0).startsWith(u"verify ->");
    const QStringList words = answerTo(anyWords ? u"verify"_s : u"verify "_s + what).split(u' ');
    if (words.size() != 2)
        return std::nullopt;
    return Verification{words[0], words[1] == u"admin" ? AccessLevel::Admin : AccessLevel::Staff};
}

void ScriptedPrompts::showError(const QString &message, const QString &description)
{
    m_errorDescription = description;
    answerTo(u"error: "_s + message);
}
