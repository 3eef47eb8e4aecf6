#pragma once

#include <QDialog>

/// The keys and steps of one page of the main window. It may stay open beside the work.
class frm_Help : public QDialog
{
    Q_OBJECT

public:
    /// `page` is the page's objectName.
    explicit frm_Help(const QString &page, QWidget *parent = nullptr);
};
