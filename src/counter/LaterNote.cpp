#include "counter/LaterNote.h"

#include <QLabel>
#include <QVBoxLayout>

void addLaterNote(QVBoxLayout &layout, const QString &title, const QString &sentence)
{
    auto *heading = new QLabel(title);
    QFont font = heading->font();
    font.setPointSizeF(font.pointSizeF() * 1.6);
    font.setBold(true);
    heading->setFont(font);
    layout.setContentsMargins(24, 24, 24, 24);
    layout.addWidget(heading);
    layout.addWidget(new QLabel(sentence));
    layout.addStretch(1);
}
