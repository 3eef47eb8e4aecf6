#pragma once

#include <QString>

#include <optional>

/// "admin" or "staff".
enum class AccessLevel { Staff, Admin };

/// What the staff verification found: who confirmed an operation, and what they may do.
struct Verification
{
    QString staffName;
    AccessLevel level = AccessLevel::Staff;

    [[nodiscard]] bool isAdmin() const { return level == AccessLevel::Admin; }
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
    /// A plain message.
    virtual void inform(const QString &text) = 0;
    /// A yes/no question; the harmless answer "no" is the default.
    virtual bool confirm(const QString &question, const QString &title) = 0;
    /// Asks for one line of at most maxLength characters; empty when the box was cancelled.
    virtual QString askText(const QString &question, int maxLength) = 0;
    /// Who confirms the operation; nothing when nobody did. What they confirm is a line in words, "Clear Court 1,
    /// 20:00".
    virtual std::optional<Verification> verifyStaff(const QString &what = {}) = 0;
    /// The error window: the code's fixed message and the description of what went wrong.
    virtual void showError(const QString &message, const QString &description) = 0;
};
