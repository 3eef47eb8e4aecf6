#include "reports/MailForm.h"

#include "app/Prompts.h"
#include "look/RowsTable.h"

#include <QBoxLayout>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>

#include <numeric>

using namespace Qt::StringLiterals;

namespace {

// Common servers take 25 MB, and a file grows by 40 % on its way.
constexpr qint64 mostBytes = 15'000'000;

QPushButton *button(const QString &objectName, const QString &caption, const QString &tip)
{
    auto *made = new QPushButton(caption);
    made->setObjectName(objectName);
    made->setToolTip(tip);
    made->setAutoDefault(false);
    return made;
}

QString sizeInWords(qint64 bytes)
{
    return QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

} // namespace

MailForm::MailForm(Prompts &prompts, const QString &subject, const QString &text,
                   std::vector<MailAttachment> attachments, QWidget *parent)
    : QWidget(parent),
      m_prompts(prompts),
      m_attachments(std::move(attachments)),
      m_to(new QLineEdit),
      m_subject(new QLineEdit(subject)),
      m_text(new QPlainTextEdit(text)),
      m_files(new RowsTable(u"ListView_Attachments"_s, u"Attached files"_s, {u"Attached file"_s, u"Size"_s})),
      m_givenSubject(m_subject->text()),
      m_givenText(m_text->toPlainText())
{
    m_to->setObjectName(u"txt_MailTo"_s);
    m_to->setPlaceholderText(u"anna@example.org, tom@example.org"_s);
    m_subject->setObjectName(u"txt_MailSubject"_s);
    m_text->setObjectName(u"txt_MailText"_s);
    m_text->setTabChangesFocus(true);
    m_text->setAccessibleName(u"Text of the mail"_s);
    constexpr int longestSubject = 200;
    m_subject->setMaxLength(longestSubject);

    auto *layout = new QFormLayout(this);
    layout->setContentsMargins({});
    layout->addRow(u"&To"_s, m_to);
    layout->addRow(u"S&ubject"_s, m_subject);
    layout->addRow(u"Te&xt"_s, m_text);
    layout->addRow(attachmentsRow());
    showAttachments();
    setFocusProxy(m_to);
}

QWidget *MailForm::attachmentsRow()
{
    auto *attach = button(u"btn_Attach"_s, u"&Attach …"_s, u"Chooses files of this computer that go with the mail."_s);
    auto *remove = button(u"btn_RemoveAttachment"_s, u"&Remove"_s,
                          u"Takes the selected file out of the mail; the file itself stays."_s);
    connect(attach, &QPushButton::clicked, this, &MailForm::chooseFiles);
    connect(remove, &QPushButton::clicked, this, &MailForm::removeSelected);
    remove->setEnabled(false);
    connect(m_files->selectionModel(), &QItemSelectionModel::selectionChanged, remove,
            [this, remove] { remove->setEnabled(m_files->selectionModel()->hasSelection()); });
    constexpr int heightOfList = 120;
    m_files->setFixedHeight(heightOfList);

    auto *row = new QWidget;
    auto *buttons = new QVBoxLayout;
    buttons->setSpacing(8);
    buttons->addWidget(attach);
    buttons->addWidget(remove);
    buttons->addStretch();
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins({});
    layout->setSpacing(8);
    layout->addWidget(m_files, 1);
    layout->addLayout(buttons);
    return row;
}

void MailForm::chooseFiles()
{
    for (const QString &path : QFileDialog::getOpenFileNames(this, u"Attach files"_s))
        attach(path);
}

void MailForm::attach(const QString &path)
{
    QFile file(path);
    const QString name = QFileInfo(path).fileName();
    const qint64 there =
        std::accumulate(m_attachments.begin(), m_attachments.end(), qint64(0),
                        [](qint64 sum, const MailAttachment &each) { return sum + each.bytes.size(); });
    if (there + file.size() > mostBytes) {
        m_prompts.refuse(name + u" is too large: all files of a mail together may have "_s + sizeInWords(mostBytes) +
                         u'.');
        return;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        m_prompts.refuse(name + u" cannot be read: "_s + file.errorString());
        return;
    }
    m_attachments.push_back({name, file.readAll()});
    m_otherFiles = true;
    showAttachments();
}

void MailForm::removeSelected()
{
    const int row = m_files->currentIndex().row();
    if (row < 0)
        return;
    m_attachments.erase(m_attachments.begin() + row);
    m_otherFiles = true;
    showAttachments();
}

void MailForm::showAttachments()
{
    m_files->clearRows();
    for (const MailAttachment &each : m_attachments)
        m_files->addRow({each.name, sizeInWords(each.bytes.size())});
    m_files->fitColumns(0);
}

bool MailForm::changed() const
{
    return m_otherFiles || !m_to->text().isEmpty() || m_subject->text() != m_givenSubject ||
           m_text->toPlainText() != m_givenText;
}

MailMessage MailForm::message() const
{
    return {{}, mailAddresses(m_to->text()), m_subject->text().trimmed(), m_text->toPlainText(), m_attachments};
}
