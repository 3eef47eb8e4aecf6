#pragma once

#include "counter/PaymentList.h"

#include <QDateTime>
#include <QLockFile>

#include <functional>
#include <memory>

/// The payment list of a counter and the lists on hold, kept in a file with every change, so that neither a crash nor a
/// power cut loses them.
class Till
{
public:
    /// A list that was put aside under a name.
    struct Held
    {
        QString name;
        QDateTime since;
        PaymentList list;
    };

    /// Keeps nothing in a file until open() is called.
    explicit Till(std::function<QDateTime()> clock) : m_clock(std::move(clock)) {}

    /// Takes over what the counter's file keeps. False when another copy of the program serves this counter from the
    /// same file: then nothing is read, and nothing kept.
    bool open(const QString &fileName);
    /// Of the last change: false when the file could not be written.
    [[nodiscard]] bool isKept() const { return m_kept; }
    /// Where a file that could not be read was put aside; empty for none.
    [[nodiscard]] const QString &damagedFile() const { return m_damagedFile; }

    [[nodiscard]] const PaymentList &list() const { return m_list; }
    /// When the first line was added, and when the list was changed last.
    [[nodiscard]] const QDateTime &begun() const { return m_begun; }
    [[nodiscard]] const QDateTime &changed() const { return m_changed; }
    /// A step that throws leaves the list as it was.
    void change(const std::function<void(PaymentList &)> &step);
    void clear();

    [[nodiscard]] const std::vector<Held> &held() const { return m_held; }
    void hold(const QString &name);
    /// Brings a held list back in place of an empty one.
    void recall(std::size_t index);

    /// The number of this counter's sale before the list was begun, 0 when it is not known.
    [[nodiscard]] int saleBefore() const { return m_saleBefore; }
    void setSaleBefore(int transaction) { m_saleBefore = transaction; }
    /// The last sale of this copy, 0 before the first.
    [[nodiscard]] int lastSale() const { return m_lastSale; }
    void setLastSale(int transaction) { m_lastSale = transaction; }
    /// The list stands as this sale: the file forgets it at once, the list when it is cleared.
    void setSold(int transaction);
    [[nodiscard]] bool isSold() const { return m_isSold; }

    /// The list's settlement ended without anybody knowing whether it stands.
    [[nodiscard]] bool isInDoubt() const { return m_inDoubt; }
    void setInDoubt(bool doubt) { m_inDoubt = doubt; }

private:
    void touch();
    void save();

    std::function<QDateTime()> m_clock;
    QString m_fileName;
    QString m_damagedFile;
    std::unique_ptr<QLockFile> m_lock;
    PaymentList m_list;
    QDateTime m_begun;
    QDateTime m_changed;
    std::vector<Held> m_held;
    int m_saleBefore = 0;
    int m_lastSale = 0;
    bool m_inDoubt = false;
    bool m_isSold = false;
    bool m_kept = true;
};

/// The file of a counter's lists, beside its settings.
QString tillFileName(int counter);
