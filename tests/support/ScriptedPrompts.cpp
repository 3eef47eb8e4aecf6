#include "support/ScriptedPrompts.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QString titled(const QString &text, const QString &title)
{
    return title.isEmpty() ? text : text + u" ["_s + title + u']';
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

void ScriptedPrompts::inform(const QString &text)
{
    answerTo(m_script.value(0) == u"inform" ? u"inform"_s : u"inform: "_s + text);
}

bool ScriptedPrompts::confirm(const QString &question, const QString &title)
{
    return answerTo(u"confirm: "_s + titled(question, title)) == u"yes";
}

QString ScriptedPrompts::askText(const QString &question, int maxLength)
{
    return answerTo(u"ask: "_s + question).left(maxLength);
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
