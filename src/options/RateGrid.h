#pragma once

#include "app/BusinessDay.h"
#include "options/WeekRates.h"

#include <QWidget>

/// A week's prices as a painted grid: days from left to right, the hours of the business day from above. Cells are
/// chosen with the mouse (drag, or click on a day, an hour or the corner) or with the arrow keys (with Shift to choose
/// more, Ctrl+A for all); digits and Enter give them a price, Delete takes it away. Hours without a price are hatched,
/// hours with several chequered, and what is not saved has a marked corner.
class RateGrid : public QWidget
{
    Q_OBJECT

public:
    explicit RateGrid(WorkingHours hours, QWidget *parent = nullptr);

    /// Shows a week; what differs from `saved` is marked.
    void setWeek(const WeekRates &week, const WeekRates &saved);
    [[nodiscard]] const WeekRates &week() const { return m_week; }

    /// Chooses cells, by days from Monday, 0, and rows from the first hour, 0.
    void choose(int day, int row, int toDay, int toRow);
    /// Gives the chosen cells a price, or none.
    void fill(std::optional<double> price);
    [[nodiscard]] int currentDay() const { return m_cursor.x(); }
    /// "Monday to Friday, 08:00 to 12:00: 18.00".
    [[nodiscard]] QString chosenInWords() const;
    [[nodiscard]] QRect cellRect(int day, int row) const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// Prices were changed by a person.
    void changed();
    void choiceChanged();
    /// The mouse was let go over cells that it had been drawn over.
    void drawn();
    /// Enter after these digits.
    void typed(const QString &price);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    bool event(QEvent *event) override;

private:
    /// Day and row at a point, -1 for the headings.
    [[nodiscard]] QPoint cellAt(QPoint position) const;
    [[nodiscard]] QRect chosen() const { return QRect(m_anchor, m_cursor).normalized(); }
    [[nodiscard]] int rows() const { return int(m_hours.size()); }
    void move(QPoint cursor, bool extend);
    void take(const QString &digits);
    void commitTyped();
    void tell();
    void paintHeadings(QPainter &painter) const;
    void paintCell(QPainter &painter, int day, int row) const;
    [[nodiscard]] QString cellText(int day, int hour) const;
    [[nodiscard]] QColor priceColour(double price) const;

    const std::vector<int> m_hours; ///< of the rows, midnight as 24
    WeekRates m_week;
    WeekRates m_saved;
    QPoint m_anchor{0, 0}; ///< day and row
    QPoint m_cursor{0, 0};
    QString m_typed; ///< digits that wait for Enter
    bool m_isDrawing = false;
    std::vector<double> m_prices; ///< all that there are, the lowest first
};
