#include "counter/Till.h"

#include "app/Settings.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

QJsonObject toJson(const BookedHour &hour)
{
    return {{u"day"_s, hour.slot.day},  {u"hour"_s, hour.slot.hourText}, {u"field"_s, hour.slot.field},
            {u"booker"_s, hour.booker}, {u"rate"_s, hour.rateType},      {u"extra"_s, hour.extraMinutes}};
}

BookedHour hourFrom(const QJsonObject &json)
{
    return {{json[u"day"].toString(), json[u"hour"].toString(), json[u"field"].toInt()},
            json[u"booker"].toString(),
            json[u"rate"].toString(),
            json[u"extra"].toInt()};
}

QJsonObject toJson(const PaymentList &list)
{
    QJsonArray lines;
    for (const PaymentLine &line : list.lines()) {
        QJsonObject json{
            {u"text"_s, line.text}, {u"price"_s, line.price}, {u"quantity"_s, line.quantity}, {u"total"_s, line.total}};
        if (line.hour)
            json[u"booked"_s] = toJson(*line.hour);
        lines << json;
    }
    return {{u"lines"_s, lines}, {u"total"_s, list.total()}};
}

PaymentList listFrom(const QJsonObject &json)
{
    std::vector<PaymentLine> lines;
    const QJsonArray kept = json[u"lines"].toArray();
    for (const auto value : kept) {
        PaymentLine line{value[u"text"].toString(), value[u"price"].toString(), value[u"quantity"].toString(),
                         value[u"total"].toString()};
        if (value.toObject().contains(u"booked"))
            line.hour = hourFrom(value[u"booked"].toObject());
        lines.push_back(line);
    }
    return {std::move(lines), json[u"total"].toString()};
}

QString momentText(const QDateTime &moment)
{
    return moment.toString(Qt::ISODate);
}

QDateTime momentFrom(const QJsonValue &json)
{
    return QDateTime::fromString(json.toString(), Qt::ISODate);
}

} // namespace

bool Till::open(const QString &fileName)
{
    QDir().mkpath(QFileInfo(fileName).path());
    m_lock = std::make_unique<QLockFile>(fileName + u".lock"_s);
    m_lock->setStaleLockTime(0);
    if (!m_lock->tryLock() && m_lock->error() == QLockFile::LockFailedError)
        return false;
    m_fileName = fileName;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return true;
    const QJsonObject kept = QJsonDocument::fromJson(file.readAll()).object();
    if (kept.isEmpty()) {
        m_damagedFile = fileName + u".damaged"_s;
        QFile::remove(m_damagedFile);
        file.rename(m_damagedFile);
        return true;
    }
    m_list = listFrom(kept[u"list"].toObject());
    m_begun = momentFrom(kept[u"begun"]);
    m_changed = momentFrom(kept[u"changed"]);
    m_saleBefore = kept[u"saleBefore"].toInt();
    m_inDoubt = !m_list.isEmpty();
    const QJsonArray lists = kept[u"held"].toArray();
    for (const auto held : lists)
        m_held.push_back({held[u"name"].toString(), momentFrom(held[u"since"]), listFrom(held[u"list"].toObject())});
    return true;
}

void Till::change(const std::function<void(PaymentList &)> &step)
{
    PaymentList changed = m_list;
    step(changed);
    if (changed == m_list)
        return;
    if (m_list.isEmpty()) {
        m_begun = m_clock();
        m_saleBefore = m_lastSale;
    }
    m_list = std::move(changed);
    touch();
}

void Till::clear()
{
    m_list = {};
    m_isSold = false;
    touch();
}

void Till::setSold(int transaction)
{
    m_lastSale = transaction;
    m_isSold = true;
    touch();
}

void Till::hold(const QString &name)
{
    m_held.push_back({name, m_clock(), std::exchange(m_list, {})});
    touch();
}

void Till::recall(std::size_t index)
{
    m_begun = m_held.at(index).since;
    m_list = std::move(m_held[index].list);
    m_held.erase(m_held.begin() + std::ptrdiff_t(index));
    m_saleBefore = m_lastSale;
    touch();
}

void Till::touch()
{
    m_changed = m_clock();
    m_inDoubt = false;
    save();
}

void Till::save()
{
    if (m_fileName.isEmpty())
        return;
    const PaymentList open = m_isSold ? PaymentList() : m_list;
    if (open.isEmpty() && m_held.empty()) {
        m_kept = !QFile::exists(m_fileName) || QFile::remove(m_fileName);
        return;
    }
    QJsonArray held;
    for (const Held &list : m_held)
        held << QJsonObject{
            {u"name"_s, list.name}, {u"since"_s, momentText(list.since)}, {u"list"_s, toJson(list.list)}};
    const QJsonObject kept{{u"list"_s, toJson(open)},
                           {u"begun"_s, momentText(m_begun)},
                           {u"changed"_s, momentText(m_changed)},
                           {u"saleBefore"_s, m_saleBefore},
                           {u"held"_s, held}};
    QSaveFile file(m_fileName);
    m_kept = file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(kept).toJson()) >= 0 && file.commit();
}

QString tillFileName(int counter)
{
    const QString name = u"tamsora-counter"_s + QString::number(counter) + u".json"_s;
#ifdef Q_OS_WIN
    // The settings stand in the Windows directory, where an ordinary user may not write.
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + u'/' + name;
#else
    return QFileInfo(settingsFilePath()).path() + u'/' + name;
#endif
}
