#pragma once

#include <QWidget>

struct Station;

/// A page of frm_Options. An administrator has been verified before it is made; their login name goes into the activity
/// log with every change.
class OptionsPage : public QWidget
{
    Q_OBJECT

public:
    OptionsPage(Station &station, QString administrator, QWidget *parent = nullptr)
        : QWidget(parent), m_station(station), m_administrator(std::move(administrator))
    {
    }

    /// Reads what the page shows: when it comes to the front for the first time, and again after "Refresh". Throws
    /// DbError.
    virtual void load() = 0;
    /// Something was entered that is not saved. A page whose buttons each save at once never has any.
    [[nodiscard]] virtual bool hasChanges() const { return false; }
    /// Saves what was entered; false when it was refused, and the page has said why. Throws DbError.
    virtual bool save() { return true; }

signals:
    /// hasChanges() may have changed.
    void touched();
    /// What was saved works only after the program is started again.
    void restartNeeded();

protected:
    [[nodiscard]] Station &station() const { return m_station; }
    [[nodiscard]] const QString &administrator() const { return m_administrator; }

private:
    Station &m_station;
    QString m_administrator;
};
