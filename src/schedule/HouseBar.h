#pragma once

#include <QKeySequence>
#include <QWidget>

class QHBoxLayout;
class QPushButton;

/// The row of buttons that open the other windows of the house. Where the row is short of room, its buttons show their
/// pictures alone.
class HouseBar : public QWidget
{
    Q_OBJECT

public:
    explicit HouseBar(QWidget *parent = nullptr);

    /// Adds btn_MemberDynamic_`group` beside the one before.
    void addSpecialGroup(int group);

    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    void membersWanted();
    void groupWanted(int group);
    void studentsWanted();
    void itemsWanted();
    void summaryWanted();
    void optionsWanted();
    void helpWanted();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    QPushButton *add(const QString &name, const QString &icon, const QString &caption, const QString &tip,
                     const QKeySequence &key);
    void fit();
    [[nodiscard]] int widthOf(bool withText) const;

    struct Entry
    {
        QPushButton *button;
        QString caption;
    };
    QHBoxLayout *m_layout;
    std::vector<Entry> m_entries;
    int m_groups = 0;
};
