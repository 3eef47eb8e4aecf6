#include "schedule/frm_Help.h"

#include <QBoxLayout>
#include <QFile>
#include <QPushButton>
#include <QTextBrowser>

using namespace Qt::StringLiterals;

frm_Help::frm_Help(const QString &page, QWidget *parent) : QDialog(parent)
{
    setObjectName(u"frm_Help"_s);
    setWindowTitle(u"Help"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    QFile file(u":/help/"_s + page + u".md"_s);
    auto *text = new QTextBrowser;
    text->setObjectName(u"txt_Help"_s);
    text->setAccessibleName(u"Keys and steps of this page"_s);
    if (file.open(QFile::ReadOnly))
        text->setMarkdown(QString::fromUtf8(file.readAll()));
    auto *close = new QPushButton(u"&Close"_s);
    close->setObjectName(u"btn_Close"_s);
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 16, 24, 16);
    layout->setSpacing(8);
    layout->addWidget(text, 1);
    layout->addWidget(close, 0, Qt::AlignRight);
    resize(620, 560);
}
