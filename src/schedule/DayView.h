#pragma once

#include <QTableView>

#include <functional>

/// The booking grid: a business day that fills the height it has, its rows told apart by colour and words, several of
/// them selectable by mouse, Shift, Ctrl and, with setTapSelects, by touch.
class DayView : public QTableView
{
    Q_OBJECT

public:
    explicit DayView(QWidget *parent = nullptr);

    void setModel(QAbstractItemModel *model) override;
    /// Who tells a row's history, shown as its tooltip.
    void setHistory(std::function<QString(int row)> history) { m_history = std::move(history); }
    /// Every tap selects or deselects its row and leaves the others alone.
    void setTapSelects(bool on);

    /// The selected rows, ascending.
    [[nodiscard]] std::vector<int> selectedRowNumbers() const;
    /// The row that operations on a single slot mean: the current one if selected, else the first selected, else -1.
    [[nodiscard]] int currentRowNumber() const;

signals:
    /// A row was double-clicked, or Enter pressed on it.
    void bookingWanted();
    /// The row under the pointer is selected by now.
    void menuWanted(QPoint globalPosition);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    bool viewportEvent(QEvent *event) override;

private:
    void setUpColumns();
    void wantMenuAtCurrentRow();

    std::function<QString(int row)> m_history;
};
