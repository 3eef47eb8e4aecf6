#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class frm_ErrorDisplay;
}

/// The error window: a fixed message, and below it what exactly went wrong, to be read or copied.
class frm_ErrorDisplay : public QDialog
{
    Q_OBJECT

public:
    frm_ErrorDisplay(const QString &message, const QString &description, QWidget *parent = nullptr);
    ~frm_ErrorDisplay() override;

private:
    const std::unique_ptr<Ui::frm_ErrorDisplay> m_ui;
};
