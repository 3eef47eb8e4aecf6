#pragma once

#include <QLabel>

/// A line of plain text that wraps and never widens its window, whatever a name in it looks like. The scale is that of
/// its font; a heading (over 1) is bold.
inline QLabel *wrappedLabel(const QString &objectName, const QString &text, double scale = 1)
{
    auto *label = new QLabel(text);
    label->setObjectName(objectName);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    QSizePolicy policy = label->sizePolicy();
    policy.setHorizontalPolicy(QSizePolicy::Ignored);
    label->setSizePolicy(policy);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * scale);
    font.setBold(scale > 1);
    label->setFont(font);
    return label;
}
