#pragma once

#include "plan/AlertLabels.h"
#include "plan/HotSpots.h"
#include "plan/PlacedPicture.h"
#include "plan/PlanStatus.h"

#include <vector>

struct AppSettings;

/// The centre's ground plan with a hot spot for each field. It says what the pointer is over and which field was
/// clicked; what that selects is for the page that owns the plan.
class LayoutPlan : public PlacedPicture
{
    Q_OBJECT

public:
    explicit LayoutPlan(QWidget *parent = nullptr);

    /// Picture section and hot-spot section of the settings file; fields and their names as in the settings. Throws
    /// SettingError for a picture that cannot be placed; its fields can be clicked all the same.
    void load(const QString &section, const QString &hotSpotSection, const AppSettings &settings);
    /// Makes the hidden labels lbl_Alert_0 to lbl_Alert_maxField on their fields. After load(), on one plan only.
    void addAlertLabels();

    void setSelectedField(int field);
    /// One for each field from 0; shorter or empty when nothing is known.
    void setFieldStatus(std::vector<FieldStatus> status);

    /// "Alert" or empty for each field from 0.
    void setAlertCaptions(const std::vector<QString> &captions);
    /// A label is seen while its caption is "Alert" and this is on.
    void setAlertsLit(bool lit);

    /// A field's rectangle in the widget; empty when it is not on the plan.
    [[nodiscard]] QRectF fieldRect(int field) const;

Q_SIGNALS:
    /// The pointer text: a field number, or "X=" and the x coordinate in the picture. Sent before every click, too.
    void hovered(const QString &pointerText);
    /// By mouse, finger or key, on a field.
    void clicked(int field);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    [[nodiscard]] QPointF toPicture(QPointF position) const;
    [[nodiscard]] QString fieldName(int field) const;
    [[nodiscard]] QString fieldSentence(int field) const;
    [[nodiscard]] bool isCompact() const;
    [[nodiscard]] QRectF plateRoom(int field) const;
    void pointAt(int field);
    void paintField(QPainter &painter, int field) const;
    void placeAlertLabels();
    void describe();

    HotSpots m_spots;
    std::vector<QString> m_names; ///< for tips, screen readers, and a plan too small for its own lettering
    std::vector<FieldStatus> m_status;
    AlertLabels m_alerts;
    int m_selected = -1;
    int m_pointed = -1;
};
