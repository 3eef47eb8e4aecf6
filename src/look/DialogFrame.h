#pragma once

class QDialog;
class QPushButton;
class QString;
class QWidget;

/// Fills a window with a heading, what it is about, its content, and the buttons cmd_OK, which says the action, and
/// cmd_Cancel, which is the default one; gives cmd_OK. The content has the focus.
QPushButton *frameDialog(QDialog &window, const QString &heading, const QString &about, QWidget *content,
                         const QString &action);
