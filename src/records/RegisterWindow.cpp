#include "records/RegisterWindow.h"

#include "app/Errors.h"
#include "app/Station.h"
#include "look/Look.h"
#include "records/KeptLine.h"
#include "records/RegisterFile.h"
#include "records/RegisterForm.h"
#include "records/RegisterList.h"
#include "records/Registers.h"
#include "records/frm_ImportCsv.h"

#include <QEvent>
#include <QFileDialog>
#include <QLabel>
#include <QPushButton>
#include <QSaveFile>

using namespace Qt::StringLiterals;

RegisterWindow::RegisterWindow(Station &station, const QString &objectName, Register records, QWidget *parent)
    : QDialog(parent),
      m_station(station),
      m_records(std::move(records)),
      m_list(new RegisterList(station, m_records)),
      m_form(new RegisterForm(m_records)),
      m_kept(new KeptLine(u"btn_ForgetKept"_s, u"For&get"_s, u"Keeps nobody for the next booking."_s)),
      m_frame(*this, m_records, *m_list, *m_form, *m_kept)
{
    setObjectName(objectName);
    setWindowTitle(m_records.title);
    connectButtons();
    connect(m_list, &RegisterList::chosen, this, &RegisterWindow::choose,
            Qt::QueuedConnection); // a question must not open inside the mouse press
    connect(m_list, &RegisterList::searched, this, &RegisterWindow::search);
    connect(m_form, &RegisterForm::edited, this, &RegisterWindow::showState);
    connect(m_form, &EntryForm::enteredLast, this, [this] { m_frame.update->setFocus(); });
    m_list->read();
    showEntry(std::nullopt);
    showKept();
    m_list->setFocus();
}

void RegisterWindow::connectButtons()
{
    const std::initializer_list<std::pair<QPushButton *, void (RegisterWindow::*)()>> handlers{
        {m_frame.previous, &RegisterWindow::previous},
        {m_frame.next, &RegisterWindow::next},
        {m_frame.refresh, &RegisterWindow::refresh},
        {m_frame.update, &RegisterWindow::update},
        {m_frame.add, &RegisterWindow::add},
        {m_frame.remove, &RegisterWindow::remove},
        {m_frame.importCsv, &RegisterWindow::importCsv},
        {m_frame.exportCsv, &RegisterWindow::exportCsv},
        {m_frame.paste, &RegisterWindow::paste},
        {m_frame.close, &RegisterWindow::reject}};
    for (const auto &[button, handler] : handlers)
        if (button)
            connect(button, &QPushButton::clicked, this, handler);
    connect(m_kept, &KeptLine::takenBack, this, &RegisterWindow::forgetKept);
}

void RegisterWindow::act(const std::function<void()> &work)
{
    if (!m_station.database.isWaiting())
        guarded(m_station.prompts, ErrorCode::Database, work);
}

int RegisterWindow::shownRow() const
{
    return m_shown ? m_list->rows().rowOf(m_shown->id) : -1;
}

void RegisterWindow::showEntry(const std::optional<RegisterRow> &row)
{
    m_shown = row;
    m_isAdding = false;
    m_form->showValues(row ? row->values : QStringList());
    m_list->select(shownRow());
    showState();
}

void RegisterWindow::showId(const QString &id)
{
    const int row = m_list->rows().rowOf(id);
    showEntry(row < 0 ? std::nullopt : std::optional(m_list->rows().row(row)));
}

void RegisterWindow::showState()
{
    const bool isEdited = m_form->isChanged();
    const int row = shownRow();
    m_frame.heading->setText(m_isAdding ? u"New %1"_s.arg(m_records.entry)
                             : m_shown  ? u"The chosen %1"_s.arg(m_records.entry)
                                        : u"Choose one in the list, or press Add"_s);
    Look::paint(*m_frame.hint, isEdited ? Look::shared : Look::Tone{Look::paper, Look::ink});
    m_frame.previous->setEnabled(row > 0);
    m_frame.next->setEnabled(row + 1 < m_list->rows().rowCount());
    m_frame.update->setEnabled(m_isAdding || m_shown);
    m_frame.remove->setEnabled(m_shown.has_value());
    if (m_frame.paste)
        m_frame.paste->setEnabled(m_shown.has_value());
}

void RegisterWindow::choose(int row)
{
    if (row < 0 || row != m_list->current() || row == shownRow())
        return;
    const QString id = m_list->rows().row(row).id;
    act([&] {
        if (mayLeave())
            showId(id);
    });
    m_list->select(shownRow());
}

void RegisterWindow::step(int by)
{
    act([&] {
        const int row = shownRow() + by;
        if (row < 0 || row >= m_list->rows().rowCount())
            return;
        const QString id = m_list->rows().row(row).id;
        if (mayLeave())
            showId(id);
    });
}

void RegisterWindow::search()
{
    act([&] {
        const bool isRead = m_list->read();
        if (isRead && shownRow() < 0 && m_shown && m_form->isChanged() && !mayLeave()) {
            m_list->setSearch(m_searched);
            m_list->read();
        }
        showList();
    });
}

void RegisterWindow::showList()
{
    m_searched = m_list->search();
    if (m_isAdding || m_form->isChanged()) {
        m_list->select(shownRow());
        showState();
    } else {
        showId(m_shown ? m_shown->id : QString());
    }
}

void RegisterWindow::refreshList()
{
    m_list->read();
    showList();
}

void RegisterWindow::refresh()
{
    act([&] {
        if (!mayLeave())
            return;
        m_isAdding = false;
        refreshList();
    });
}

void RegisterWindow::add()
{
    act([&] {
        if (!mayLeave())
            return;
        showEntry(std::nullopt);
        m_isAdding = true;
        m_form->showValues(m_records.blankValues());
        showState();
        m_form->focusField(0);
    });
}

void RegisterWindow::update()
{
    act([&] {
        if (!(m_isAdding || m_shown) || !save() || shownRow() >= 0 || m_list->search().isEmpty())
            return;
        m_list->setSearch({}); // it does not fit what was saved
        refreshList();
    });
}

bool RegisterWindow::save()
{
    const SavedEntry saved = saveEntry(m_station, m_records, m_shown, m_form->values(), m_listsHolding);
    if (saved.faulty)
        m_form->focusField(*saved.faulty);
    if (saved.end == SavedEntry::End::Kept)
        return false;
    m_list->read();
    showEntry(saved.row);
    if (saved.end == SavedEntry::End::Saved)
        Q_EMIT written();
    return true;
}

bool RegisterWindow::mayLeave()
{
    if (!m_form->isChanged())
        return true;
    const Question question{u"What you entered is not saved yet. Save it now?"_s,
                            m_records.title,
                            MessageIcon::Warning,
                            {Answer::Yes, Answer::No, Answer::Cancel},
                            Answer::Cancel};
    const Answer answer = m_station.prompts.ask(question);
    if (answer == Answer::No)
        showEntry(m_shown);
    return answer == Answer::No || (answer == Answer::Yes && save());
}

void RegisterWindow::remove()
{
    act([&] {
        const Question question{
            u"Confirm delete ?"_s, u"Confirmation"_s, MessageIcon::Critical, {Answer::Yes, Answer::No}, Answer::No};
        if (m_station.prompts.ask(question) != Answer::Yes)
            return;
        if (!m_records.isOfItems()) {
            const auto staff = m_station.prompts.verifyStaff(
                u"Delete the %1 %2"_s.arg(m_records.entry, m_shown ? m_records.nameOf(*m_shown) : QString()));
            if (!staff || !staff->isAdmin())
                return;
        }
        removeShown();
    });
}

void RegisterWindow::removeShown()
{
    if (!m_shown)
        return;
    const SaveOutcome::End end = deleteRow(m_station, m_records, *m_shown).end;
    if (end == SaveOutcome::End::Changed)
        m_station.prompts.inform(
            u"%1 was changed meanwhile and is not deleted. Please look at it again."_s.arg(m_records.nameOf(*m_shown)));
    else
        showEntry(std::nullopt);
    refreshList();
    if (end == SaveOutcome::End::Done)
        Q_EMIT written();
}

void RegisterWindow::paste()
{
    act([&] {
        if (!m_shown || !mayLeave() || !m_shown)
            return;
        const Customer customer = m_records.customer(*m_shown);
        if (m_isOverBooking) {
            Q_EMIT pasted(customer);
            accept();
            return;
        }
        m_station.keptCustomer = customer;
        showKept();
        Q_EMIT customerKept(customer);
    });
}

void RegisterWindow::forgetKept()
{
    m_station.keptCustomer.reset();
    showKept();
}

void RegisterWindow::showKept()
{
    const auto &kept = m_station.keptCustomer;
    const bool isShown = kept && !m_isOverBooking && !m_records.isOfItems();
    m_kept->showWords(isShown ? u"Kept for the next booking: "_s + kept->name : QString());
}

void RegisterWindow::standOverBooking()
{
    m_isOverBooking = true;
    m_frame.paste->setText(u"&Fill in the booking"_s);
    m_frame.paste->setToolTip(u"Fills this customer into the booking and closes this window."_s);
    showKept();
    connect(m_list, &RegisterList::enterPressed, this, &RegisterWindow::paste, Qt::QueuedConnection);
}

void RegisterWindow::importCsv()
{
    const QString path = QFileDialog::getOpenFileName(this, u"Import %1"_s.arg(m_records.entries()), {},
                                                      u"Tables (*.csv *.txt);;All files (*)"_s);
    if (!path.isEmpty())
        importFrom(path);
}

void RegisterWindow::importFrom(const QString &path)
{
    act([&] {
        if (!mayLeave())
            return;
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            throw NotDone(u"The file cannot be read: "_s + file.errorString());
        frm_ImportCsv window(m_station, m_records, QFileInfo(path).fileName(), file.readAll(), m_listsHolding, this);
        if (window.exec() != QDialog::Accepted)
            return;
        refreshList();
        Q_EMIT written();
    });
}

void RegisterWindow::exportCsv()
{
    const QString path = QFileDialog::getSaveFileName(this, u"Export %1"_s.arg(m_records.entries()),
                                                      m_records.title + u".csv"_s, u"Tables (*.csv)"_s);
    if (!path.isEmpty())
        exportTo(path);
}

void RegisterWindow::exportTo(const QString &path)
{
    act([&] {
        const QByteArray bytes = exportRegister(m_station, m_records);
        QSaveFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
            throw NotDone(u"The file cannot be written: "_s + file.errorString());
        m_station.prompts.inform(u"All %1 are written to %2."_s.arg(m_records.entries(), path));
    });
}

void RegisterWindow::reject()
{
    act([&] {
        if (mayLeave())
            QDialog::reject();
    });
}

void RegisterWindow::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange)
        showKept(); // another register may have kept somebody else
}
