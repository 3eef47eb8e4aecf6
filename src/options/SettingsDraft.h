#pragma once

#include <QString>
#include <QStringList>

#include <vector>

struct AppSettings;
struct Station;

/// Why the settings file cannot hold this value, in words for the person who entered it: "is longer than …". Empty when
/// it can.
QString whyNotInFile(const QString &value);

/// Changes of the settings file that are checked and written together, and what the activity log says of them.
class SettingsDraft
{
public:
    /// Nothing when the file says so already.
    void set(const QString &section, const QString &key, const QString &value);
    /// A line of the activity log, "hours 8-1 to 7-1"; none when both are the same.
    void tell(const QString &name, const QString &before, const QString &after);
    /// Of a secret it says only that it was changed.
    void tellChanged(const QString &name);

    [[nodiscard]] bool isEmpty() const { return m_changes.empty(); }

    /// Empty when the file can take all changes and the program starts with it, else what stands against it: a copy of
    /// the file gets the changes and is read as the start reads it.
    [[nodiscard]] QString refusal() const;
    /// Writes all changes. Throws NotDone when one cannot be written: then it has put the others back, or names those
    /// that it could not.
    void write() const;
    /// What was told, without the passwords.
    [[nodiscard]] const QStringList &lines() const { return m_lines; }

private:
    struct Change
    {
        QString section;
        QString key;
        QString value;
        QString before;
    };

    [[nodiscard]] QString wordsOf(const Change &change) const;
    [[nodiscard]] QString refusalOfCopy(const QString &copy) const;

    std::vector<Change> m_changes;
    QStringList m_lines;
};

/// Checks and writes a draft, and logs its lines under the administrator's name. False when it was refused, which the
/// person has been told. Throws NotDone.
bool saveDraft(Station &station, const QString &administrator, const SettingsDraft &draft);

/// The activity log's row "options: …" under the administrator's name.
void logOption(Station &station, const QString &administrator, const QString &what);

/// Makes the file for another counter at this path: all of this one, with that counter's number. Throws NotDone.
void copySettingsFor(int counter, const QString &path);
