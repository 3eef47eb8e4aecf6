#pragma once

#include "plan/HotSpots.h"

#include <QImage>
#include <QWidget>

#include <vector>

/// The picture of a plan, on which the fields' places are drawn: a drag beside the chosen field's place draws it anew,
/// a drag on a place moves it, a drag at a corner changes its size. Arrow keys move the chosen one by a pixel of the
/// picture, with Shift its lower right corner; Delete takes it off the plan. Places keep inside the picture, in its own
/// whole pixels.
class PlanEditor : public QWidget
{
    Q_OBJECT

public:
    explicit PlanEditor(QWidget *parent = nullptr);

    /// A null picture has the size that its places need.
    void setPicture(const QImage &picture);
    void setSpots(std::vector<std::optional<HotSpot>> spots, std::vector<QString> names);
    [[nodiscard]] const std::vector<std::optional<HotSpot>> &spots() const { return m_spots; }

    void chooseField(int field);
    [[nodiscard]] int chosenField() const { return m_chosen; }
    void takeOff();

    /// A field's rectangle in the widget; empty when it is not on the plan.
    [[nodiscard]] QRectF placeOf(int field) const;
    /// Where a point of the picture is in the widget.
    [[nodiscard]] QPointF fromPicture(QPointF point) const;

    [[nodiscard]] QSize sizeHint() const override { return {640, 400}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {320, 200}; }

Q_SIGNALS:
    /// By a click on its place.
    void chosen(int field);
    void changed();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    enum class Drag { None, Draw, Move, Size };

    [[nodiscard]] QSizeF pictureSize() const;
    [[nodiscard]] QRectF pictureRect() const;
    [[nodiscard]] QPointF toPicture(QPointF position) const;
    [[nodiscard]] QRectF chosenRect() const;
    /// The corner of the chosen place that is under the pointer, 0 to 3 clockwise from the upper left; -1 for none.
    [[nodiscard]] int cornerAt(QPointF position) const;
    void showPointerAt(QPointF position);
    void setChosenRect(QRectF rect);
    void paintSpot(QPainter &painter, int field) const;

    QImage m_picture;
    std::vector<std::optional<HotSpot>> m_spots;
    std::vector<QString> m_names;
    int m_chosen = -1;
    Drag m_drag = Drag::None;
    QPointF m_from;  ///< of the drag, in the picture: where it began, or the corner that stays
    QRectF m_before; ///< the chosen place when it began
};
