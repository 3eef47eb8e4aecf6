#include "records/frm_ImportCsv.h"

#include "app/Errors.h"
#include "app/Station.h"
#include "look/DialogFrame.h"
#include "look/Look.h"
#include "look/RowsTable.h"
#include "look/WrappedLabel.h"
#include "records/Registers.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QHeaderView>
#include <QPushButton>
#include <QStandardItem>

using namespace Qt::StringLiterals;

namespace {

using Deed = ImportLine::Deed;

QString inWords(const ImportLine &line)
{
    switch (line.deed) {
    case Deed::Add:
        return u"add"_s;
    case Deed::Update:
        return u"update"_s;
    case Deed::Same:
        return u"the same already"_s;
    case Deed::Skip:
        return u"leave out: "_s + line.reason;
    case Deed::Wrong:
        break;
    }
    return u"WRONG: "_s + line.reason;
}

} // namespace

frm_ImportCsv::frm_ImportCsv(Station &station, Register records, const QString &fileName, QByteArray bytes,
                             ListsHolding listsHolding, QWidget *parent)
    : QDialog(parent),
      m_station(station),
      m_records(std::move(records)),
      m_bytes(std::move(bytes)),
      m_listsHolding(std::move(listsHolding))
{
    setObjectName(u"frm_ImportCsv"_s);
    setWindowTitle(u"Import %1"_s.arg(m_records.entries()));
    QWidget *content = makeContent();
    m_ok = frameDialog(*this, u"Import %1 into %2"_s.arg(fileName, m_records.title),
                       u"Nothing is written before you press Import. Lines that are wrong are left out then, and all "
                       "others are written together."_s,
                       content, u"&Import"_s);
    static_cast<QBoxLayout *>(layout())->setStretchFactor(content, 1);
    m_ok->setToolTip(u"Writes all lines that are not wrong into the register."_s);
    connect(m_ok, &QPushButton::clicked, this, &frm_ImportCsv::import);
    resize(1000, 600);
    look();
}

QWidget *frm_ImportCsv::makeContent()
{
    QStringList headings{u"Line"_s, u"What is done"_s};
    QStringList widest{u"00000"_s, u"WRONG: Telephone is too long: it has 100 charac"_s};
    for (const RegisterField &field : m_records.fields) {
        headings << field.name;
        widest << (field.column == m_records.fields[m_records.name].column ? QString() : u"M00000000000"_s);
    }
    m_lines = new RowsTable(u"ListView_Import"_s, u"Lines of the file"_s, headings);
    m_lines->fitColumns(widest);
    m_updates = new QCheckBox(u"&Update entries whose number the register has already (their hours stay)"_s);
    m_updates->setObjectName(u"chk_Update"_s);
    m_updates->setChecked(true);
    m_updates->setToolTip(u"Without it lines with a number that the register has are left out."_s);
    m_onlyWrong = new QCheckBox(u"Show only lines that are &wrong or have a remark"_s);
    m_onlyWrong->setObjectName(u"chk_OnlyWrong"_s);
    m_onlyWrong->setToolTip(u"Hides the lines that can be taken over."_s);
    m_summary = wrappedLabel(u"lbl_Summary"_s, {});
    connect(m_updates, &QCheckBox::toggled, this, &frm_ImportCsv::look);
    connect(m_onlyWrong, &QCheckBox::toggled, this, &frm_ImportCsv::showPlan);

    auto *content = new QWidget;
    auto *layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(m_updates);
    layout->addWidget(m_lines, 1);
    layout->addWidget(m_onlyWrong);
    layout->addWidget(m_summary);
    return content;
}

void frm_ImportCsv::look()
{
    m_plan = {u"The register could not be read."_s};
    guarded(m_station.prompts, ErrorCode::Database, [this] {
        m_plan = planImport(m_records, GetRecord(m_station.database, m_records), m_bytes, m_updates->isChecked());
    });
    showPlan();
}

QString frm_ImportCsv::remarkOf(const ImportLine &line) const
{
    const QString waiting =
        line.deed == Deed::Update ? waitingGoods(m_records, *line.before, line.values, m_listsHolding) : QString();
    return (line.remark + u' ' + waiting).trimmed();
}

void frm_ImportCsv::showPlan()
{
    m_lines->clearRows();
    int remarks = 0;
    for (const ImportLine &line : m_plan.lines) {
        const QString remark = remarkOf(line);
        const bool isWrong = line.deed == Deed::Wrong;
        remarks += int(!remark.isEmpty());
        if (m_onlyWrong->isChecked() && !isWrong && remark.isEmpty())
            continue;
        const QString deed = inWords(line) + (remark.isEmpty() ? QString() : u", but: "_s + remark);
        const auto cells = m_lines->addRow(QStringList{QString::number(line.line), deed} + line.values);
        if (isWrong || !remark.isEmpty()) {
            const Look::Tone &tone = isWrong ? Look::alert : Look::shared;
            cells[1]->setBackground(tone.background);
            cells[1]->setForeground(tone.text);
        }
    }
    const auto count = [this](Deed deed) { return QString::number(m_plan.count(deed)); };
    QString summary = u"%1 to add, %2 to update, %3 the same already, %4 left out, %5 wrong."_s.arg(
        count(Deed::Add), count(Deed::Update), count(Deed::Same), count(Deed::Skip), count(Deed::Wrong));
    if (remarks > 0)
        summary += u" Lines with a remark, which their tip tells in full: %1."_s.arg(remarks);
    if (!m_plan.ignored.isEmpty())
        summary += u" Columns that are not taken: "_s + m_plan.ignored.join(u", "_s) + u'.';
    m_summary->setText(m_plan.fault.isEmpty() ? summary : m_plan.fault);
    m_ok->setEnabled(m_plan.count(Deed::Add) + m_plan.count(Deed::Update) > 0);
}

void frm_ImportCsv::import()
{
    if (m_station.database.isWaiting())
        return;
    bool isDone = false;
    const bool ok = guarded(m_station.prompts, ErrorCode::Database, [&] {
        isDone = importFile(m_station, m_records, m_bytes, m_updates->isChecked(), m_plan);
    });
    if (isDone) {
        accept();
    } else if (ok) {
        m_station.prompts.inform(
            u"Somebody changed the register meanwhile. Nothing was written; please look at the lines again."_s);
        look();
    }
}

void frm_ImportCsv::reject()
{
    if (!m_station.database.isWaiting())
        QDialog::reject();
}
