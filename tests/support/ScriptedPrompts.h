#pragma once

#include "app/Prompts.h"

#include <QStringList>

/// The person at the counter, as a script of what the program must ask, in order, one line each:
///     refuse: You cannot book previous entry        refuse: Invalid Password [Error]
///     plain: Already in the payment list
///     inform: You cannot delete paid item           inform (whatever the words)
///     verify -> anna staff                          verify -> boss admin      verify -> nobody
///     verify Book Field 1, 15:00 -> anna staff (without the words: whatever they are)
///     ask: Enter reason … -> rain                   ask: Enter reason … ->
///     confirm: Confirm delete? [Important] -> yes
///     choose: Is that right? [Important] (warning: ok CANCEL) -> ok      the default button in capitals
///     error: Error while accessing database
/// What stands after "->" is the answer. A question that is not the next line, and a line that was never asked, fail
/// the test.
class ScriptedPrompts : public Prompts
{
public:
    explicit ScriptedPrompts(QStringList script = {});
    ~ScriptedPrompts() override;

    void expect(const QStringList &lines) { m_script += lines; }
    /// The description in the error window shown last.
    [[nodiscard]] QString errorDescription() const { return m_errorDescription; }

    void refuse(const QString &text, const QString &title = {}) override;
    void inform(const QString &text, const QString &title = {}, MessageIcon icon = MessageIcon::Information) override;
    Answer ask(const Question &question) override;
    QString askText(const QString &question, int maxLength, const QString &title = {}) override;
    std::optional<Verification> verifyStaff(const QString &what) override;
    void showError(const QString &message, const QString &description) override;

private:
    QString answerTo(const QString &question);

    QStringList m_script;
    QString m_errorDescription;
};
