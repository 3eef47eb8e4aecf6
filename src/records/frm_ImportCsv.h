#pragma once

#include "records/EntrySaving.h"
#include "records/RegisterFile.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QPushButton;
class RowsTable;

/// Shows what every line of a file will do to a register, and does it; a change of goods that wait to be paid names the
/// payment lists. Accepted when the register was written.
class frm_ImportCsv : public QDialog
{
    Q_OBJECT

public:
    frm_ImportCsv(Station &station, Register records, const QString &fileName, QByteArray bytes,
                  ListsHolding listsHolding = {}, QWidget *parent = nullptr);

    void reject() override;

private:
    QWidget *makeContent();
    /// Makes the plan anew and shows it.
    void look();
    void showPlan();
    /// What a person should know of the line before it is written.
    [[nodiscard]] QString remarkOf(const ImportLine &line) const;
    void import();

    Station &m_station;
    const Register m_records;
    const QByteArray m_bytes;
    const ListsHolding m_listsHolding;
    ImportPlan m_plan;
    RowsTable *m_lines = nullptr;
    QCheckBox *m_updates = nullptr;
    QCheckBox *m_onlyWrong = nullptr;
    QLabel *m_summary = nullptr;
    QPushButton *m_ok = nullptr;
};
