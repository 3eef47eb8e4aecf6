#pragma once

#include <QWidget>

class QKeyEvent;

/// A page of SSTab1, as the main window sees it.
class Page : public QWidget
{
public:
    using QWidget::QWidget;

    /// The page comes to the front: reads anew what it does not follow while another one is shown.
    virtual void refresh() {}
    /// Another counter changed something: reads anew what is shown, quietly. False when it could not be read.
    virtual bool follow() { return true; }
    /// The clock, once a second, whether the page is shown or not.
    virtual void showTime(const QString & /*timeText*/) {}
    /// A key press in the main window while the page is shown, before the page's controls see it. True when it is used
    /// up.
    virtual bool takeKey(const QKeyEvent & /*event*/) { return false; }
};
