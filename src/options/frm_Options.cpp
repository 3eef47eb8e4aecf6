#include "options/frm_Options.h"

#include "app/Errors.h"
#include "app/Station.h"
#include "look/Look.h"
#include "look/WrappedLabel.h"
#include "options/OptionsPage.h"

#include <QBoxLayout>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QStackedWidget>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize usualSize{1120, 680};
constexpr int widthOfNames = 176;

// A page that is larger than its room is scrolled, but never sideways alone for its scroll bar.
QScrollArea *roomFor(OptionsPage *page)
{
    auto *room = new QScrollArea;
    room->setWidget(page);
    room->setWidgetResizable(true);
    room->setFrameShape(QFrame::NoFrame);
    room->setFocusPolicy(Qt::NoFocus);
    return room;
}

} // namespace

frm_Options::frm_Options(Station &station, QWidget *parent)
    : QDialog(parent),
      m_station(station),
      m_names(new QListWidget),
      m_pages(new QStackedWidget),
      m_restart(wrappedLabel(u"lbl_Restart"_s,
                             u"Saved. Close the program and start it again: only then does all of it work."_s))
{
    setObjectName(u"frm_Options"_s);
    setWindowTitle(u"Options"_s);
    m_names->setObjectName(u"ListView_Pages"_s);
    m_names->setAccessibleName(u"Pages of the options"_s);
    m_names->setFixedWidth(widthOfNames);
    m_names->setIconSize({24, 24});
    m_names->setSpacing(2);
    QPalette colours = m_names->palette(); // the drawings are dark
    colours.setColor(QPalette::Highlight, Look::booked.background);
    colours.setColor(QPalette::HighlightedText, Look::booked.text);
    m_names->setPalette(colours);
    connect(m_names, &QListWidget::currentRowChanged, this, &frm_Options::choose);
    Look::paint(*m_restart, Look::shared);
    m_restart->setMargin(8);
    m_restart->hide();

    auto *middle = new QHBoxLayout;
    middle->setSpacing(16);
    middle->addWidget(m_names);
    middle->addWidget(m_pages, 1);
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(8);
    layout->addLayout(middle, 1);
    layout->addWidget(m_restart);
    layout->addLayout(buttons);
    m_save = addButton(u"btn_Save"_s, u"&Save"_s, u"Saves what was entered on this page."_s);
    m_refresh = addButton(u"btn_Refresh"_s, u"&Refresh"_s, u"Reads this page anew and forgets what is not saved."_s);
    m_close = addButton(u"btn_Close"_s, u"C&lose"_s, u"Closes the options."_s);
    buttons->addWidget(m_refresh);
    buttons->addStretch();
    buttons->addWidget(m_save);
    buttons->addWidget(m_close);
    connect(m_save, &QPushButton::clicked, this, &frm_Options::save);
    connect(m_refresh, &QPushButton::clicked, this, &frm_Options::refresh);
    connect(m_close, &QPushButton::clicked, this, &frm_Options::reject);
    resize(usualSize);
    showState();
}

// None of the buttons answers to Enter from afar: in a box of figures it would save or close.
QPushButton *frm_Options::addButton(const QString &name, const QString &caption, const QString &tip)
{
    auto *button = new QPushButton(caption, this);
    button->setObjectName(name);
    button->setToolTip(tip);
    button->setAutoDefault(false);
    return button;
}

void frm_Options::addPage(const QString &name, const QString &icon, OptionsPage *page)
{
    page->setAccessibleName(name);
    const auto buttons = page->findChildren<QPushButton *>();
    for (QPushButton *button : buttons)
        button->setAutoDefault(false);
    connect(page, &OptionsPage::touched, this, &frm_Options::showState);
    connect(page, &OptionsPage::restartNeeded, m_restart, &QWidget::show);
    m_pages->addWidget(roomFor(page));
    // Tab goes from the list through the page to the buttons.
    QWidget *last = previousInFocusChain();
    while (last != m_names && (last->focusPolicy() & Qt::TabFocus) == 0)
        last = last->previousInFocusChain();
    setTabOrder(last, m_refresh);
    setTabOrder(m_refresh, m_save);
    setTabOrder(m_save, m_close);
    const QSignalBlocker unheard(m_names);
    auto *item = new QListWidgetItem(Look::icon(icon), name, m_names);
    item->setSizeHint({0, 44});
    if (m_names->currentRow() < 0)
        m_names->setCurrentRow(0);
}

OptionsPage *frm_Options::shownPage() const
{
    auto *room = static_cast<QScrollArea *>(m_pages->currentWidget());
    return room ? static_cast<OptionsPage *>(room->widget()) : nullptr;
}

bool frm_Options::showPage(int number)
{
    m_names->setCurrentRow(number);
    return m_pages->currentIndex() == number;
}

void frm_Options::choose(int number)
{
    if (number < 0 || number == m_pages->currentIndex())
        return;
    if (settleChanges()) {
        m_pages->setCurrentIndex(number);
        loadPage(shownPage());
    }
    const QSignalBlocker unheard(m_names);
    m_names->setCurrentRow(m_pages->currentIndex());
}

// A cell that is being edited gives its text when it loses the focus.
void frm_Options::endEditing()
{
    const QPointer<QWidget> focus = focusWidget();
    if (!focus)
        return;
    focus->clearFocus();
    if (focus)
        focus->setFocus();
}

bool frm_Options::settleChanges()
{
    endEditing();
    OptionsPage *page = shownPage();
    if (!page || !page->hasChanges())
        return true;
    const Answer answer =
        m_station.prompts.ask({u"Save what was entered on the page \""_s + page->accessibleName() + u"\"?"_s,
                               u"Options"_s,
                               MessageIcon::Question,
                               {Answer::Yes, Answer::No, Answer::Cancel},
                               Answer::Cancel});
    if (answer == Answer::Yes)
        return save();
    if (answer == Answer::No)
        m_loaded.erase(page); // what it shows is not what holds; it is read anew when it comes to the front
    return answer == Answer::No;
}

bool frm_Options::loadPage(OptionsPage *page)
{
    if (!page || m_loaded.contains(page))
        return true;
    const bool loaded = guarded(m_station.prompts, ErrorCode::Database, [page] { page->load(); });
    if (loaded)
        m_loaded.insert(page);
    showState();
    return loaded;
}

bool frm_Options::save()
{
    bool saved = false;
    endEditing();
    guarded(m_station.prompts, ErrorCode::Database, [&] { saved = shownPage() && shownPage()->save(); });
    showState();
    return saved;
}

void frm_Options::refresh()
{
    OptionsPage *page = shownPage();
    if (!page || (page->hasChanges() && !m_station.prompts.confirm(
                                            u"Forget what was entered on this page and is not saved?"_s, u"Options"_s)))
        return;
    m_loaded.erase(page);
    loadPage(page);
}

void frm_Options::showState()
{
    const OptionsPage *page = shownPage();
    m_save->setEnabled(page && page->hasChanges());
    m_refresh->setEnabled(page != nullptr);
}

// Queued, so that a page that cannot be read tells so over the window and not before it.
void frm_Options::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (!event->spontaneous())
        QMetaObject::invokeMethod(
            this, [this] { loadPage(shownPage()); }, Qt::QueuedConnection);
}

void frm_Options::closeEvent(QCloseEvent *event)
{
    event->ignore();
    reject();
}

void frm_Options::reject()
{
    if (settleChanges())
        QDialog::reject();
}

void frm_Options::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        QDialog::keyPressEvent(event);
}
