#include "look/DialogFrame.h"

#include "look/WrappedLabel.h"

#include <QBoxLayout>
#include <QDialog>
#include <QPushButton>

using namespace Qt::StringLiterals;

QPushButton *frameDialog(QDialog &window, const QString &heading, const QString &about, QWidget *content,
                         const QString &action)
{
    auto *ok = new QPushButton(action, &window);
    ok->setObjectName(u"cmd_OK"_s);
    auto *cancel = new QPushButton(u"&Cancel"_s, &window);
    cancel->setObjectName(u"cmd_Cancel"_s);
    cancel->setDefault(true);
    QObject::connect(cancel, &QPushButton::clicked, &window, &QDialog::reject);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto *layout = new QVBoxLayout(&window);
    layout->setContentsMargins(24, 16, 24, 16);
    layout->setSpacing(8);
    layout->addWidget(wrappedLabel(u"lbl_Heading"_s, heading, 1.3));
    layout->addWidget(wrappedLabel(u"lbl_About"_s, about));
    layout->addSpacing(8);
    layout->addWidget(content);
    layout->addStretch();
    layout->addSpacing(8);
    layout->addLayout(buttons);
    content->setFocus();
    return ok;
}
