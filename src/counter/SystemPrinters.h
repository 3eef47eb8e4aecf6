#pragma once

#include "counter/PrinterDesk.h"

#include <QList>
#include <QObject>
#include <QThread>

/// The printers of this computer. Each print has a thread of its own, so that a slow one delays nobody; the end of the
/// program waits a few seconds for them.
class SystemPrinters : public QObject, public PrinterDesk
{
    Q_OBJECT

public:
    ~SystemPrinters() override;

    void lookForPrinters(std::function<void(std::optional<bool>)> told) override;
    std::optional<PrinterChoice> choose(QWidget *over) override;
    void print(const Receipt &receipt, const PrinterChoice &choice, std::function<void(QString trouble)> told) override;
    QString askForFile(QWidget *over, const QString &suggestion) override;

private:
    /// Runs `work` off this thread and tells its result here; after `patience` milliseconds tells `late` instead.
    template <typename Result>
    void runAside(std::function<Result()> work, int patience, Result late, std::function<void(Result)> told);

    std::shared_ptr<bool> m_isHere = std::make_shared<bool>(true); ///< for work that outlives this object
    QList<QThread *> m_threads;                                    ///< that have not finished
};
