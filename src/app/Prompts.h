#pragma once

#include <QString>

#include <algorithm>
#include <optional>
#include <vector>

/// "admin" or "staff".
enum class AccessLevel { Staff, Admin };

/// What the staff verification found: who confirmed an operation, and what they may do.
struct Verification
{
    QString staffName;
    AccessLevel level = AccessLevel::Staff;

    [[nodiscard]] bool isAdmin() const { return level == AccessLevel::Admin; }
};

enum class MessageIcon { None, Information, Question, Warning, Critical };

/// A button of a message box.
enum class Answer { Ok, Cancel, Yes, No };

/// A message box with its buttons from left to right.
struct Question
{
    QString text;
    QString title; ///< an empty one is the program's
    MessageIcon icon = MessageIcon::Question;
    std::vector<Answer> buttons = {Answer::Yes, Answer::No};
    Answer defaultButton = Answer::No; ///< what Enter presses, the harmless one

    /// What closing the box stands for: Cancel, else No, else the default.
    [[nodiscard]] Answer closed() const
    {
        for (const Answer way : {Answer::Cancel, Answer::No})
            if (std::find(buttons.begin(), buttons.end(), way) != buttons.end())
                return way;
        return defaultButton;
    }
};

/// Every question and refusal to the person at the counter goes through here.
class Prompts
{
public:
    Prompts() = default;
    Prompts(const Prompts &) = delete;
    Prompts &operator=(const Prompts &) = delete;
    virtual ~Prompts() = default;

    /// A message with the critical icon. An empty title is the program's.
    virtual void refuse(const QString &text, const QString &title = {}) = 0;
    virtual void inform(const QString &text, const QString &title = {},
                        MessageIcon icon = MessageIcon::Information) = 0;
    /// The button that was pressed.
    virtual Answer ask(const Question &question) = 0;
    /// A yes/no question; the harmless answer "no" is the default.
    bool confirm(const QString &text, const QString &title) { return ask({text, title}) == Answer::Yes; }
    /// Asks for one line of at most maxLength characters; empty when the box was cancelled.
    virtual QString askText(const QString &question, int maxLength, const QString &title = {}) = 0;
    /// Who confirms the operation; nothing when nobody did. What they confirm is a line in words, "Clear Court 1,
    /// 20:00".
    virtual std::optional<Verification> verifyStaff(const QString &what = {}) = 0;
    /// The error window: the code's fixed message and the description of what went wrong.
    virtual void showError(const QString &message, const QString &description) = 0;
};
