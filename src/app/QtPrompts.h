#pragma once

#include "app/Prompts.h"
#include "app/RecentLogins.h"

struct Station;

/// Asks in modal windows over the one in use. Message boxes are named frm_Message, the box that asks for a text is
/// frm_AskText with its line txt_Answer; what they show is plain text, as names in it were typed by people.
class QtPrompts : public Prompts
{
public:
    /// Whose staff verifyStaff checks; before it is set nobody is verified.
    void setStation(Station &station) { m_station = &station; }

    void refuse(const QString &text, const QString &title = {}) override;
    void inform(const QString &text, const QString &title = {}, MessageIcon icon = MessageIcon::Information) override;
    Answer ask(const Question &question) override;
    QString askText(const QString &question, int maxLength, const QString &title = {}) override;
    std::optional<Verification> verifyStaff(const QString &what) override;
    void showError(const QString &message, const QString &description) override;

private:
    Station *m_station = nullptr;
    RecentLogins m_recent;
};
