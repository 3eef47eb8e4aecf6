#pragma once

#include <QTableView>

#include <vector>

class StoreModel;

/// The list of items, each group under a band with its type. The band belongs to the group's first row but is none of
/// its item: a press on it chooses nothing.
class StoreView : public QTableView
{
    Q_OBJECT

public:
    explicit StoreView(StoreModel &model, QWidget *parent = nullptr);

Q_SIGNALS:
    /// A click, a tap, or Enter on a row.
    void chosen(int row);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void layOutRows();
    [[nodiscard]] int rowUnder(const QPoint &position) const;

    StoreModel &m_model;
    std::vector<int> m_headings; ///< rows that are higher by a band
    int m_pressed = -1;
};
