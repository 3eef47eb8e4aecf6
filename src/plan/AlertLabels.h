#pragma once

#include <QRectF>
#include <QString>

#include <vector>

class QFont;
class QLabel;
class QWidget;

/// The labels lbl_Alert_0, lbl_Alert_1, … of a plan's fields. A label is seen while its caption is "Alert" and the
/// labels are lit.
class AlertLabels
{
public:
    /// One hidden label on the plan for each field.
    void make(QWidget *plan, const std::vector<QString> &fieldNames);

    /// For each field from 0; true when a caption changed.
    bool setCaptions(const std::vector<QString> &captions);
    void setLit(bool lit);
    [[nodiscard]] bool says(int field) const;
    [[nodiscard]] QSize size(int field) const;

    /// Each at the right of its field's room, at its top or its bottom; labels of fields without room stand along the
    /// lower edge of the plan.
    void place(const std::vector<QRectF> &rooms, const QFont &font, bool atBottom, int planHeight);

private:
    std::vector<QLabel *> m_labels;
    bool m_lit = false;
};
