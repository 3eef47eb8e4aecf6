#pragma once

#include "app/frm_Waiting.h"
#include "options/BoundSettings.h"
#include "options/OptionsPage.h"

class PrinterDesk;
class PrinterPart;
class QBoxLayout;
class QComboBox;
class QLabel;
class QLineEdit;
class QSpinBox;

/// What belongs to this counter alone: its number, how it reaches the database, the report pages and the mail server,
/// its drawer, its printer and its notes.
class page_ThisCounter : public OptionsPage
{
    Q_OBJECT

public:
    /// The desk outlives the page.
    page_ThisCounter(Station &station, const QString &administrator, PrinterDesk &desk, QWidget *parent = nullptr);

    void load() override;
    [[nodiscard]] bool hasChanges() const override { return m_settings.hasChanges(); }
    bool save() override;

private:
    /// The rest of a page's controls tell of every change.
    void watch();
    void addDatabase(QBoxLayout *column);
    void addServices(QBoxLayout *column);
    void addDrawer(QBoxLayout *column);
    void addReceipts(QBoxLayout *column);
    void bindDrawer();
    void showDrawer();

    /// What is entered and cannot stand in a file, or in a connection.
    [[nodiscard]] QString refusal() const;
    void tryConnecting();
    void openDrawer();

    PrinterDesk &m_desk;
    frm_Waiting m_waiting;
    BoundSettings m_settings;

    QLineEdit *m_server = nullptr;
    QLineEdit *m_user = nullptr;
    QLineEdit *m_password = nullptr;
    QLabel *m_connection = nullptr;
    QComboBox *m_drawer = nullptr;
    QSpinBox *m_drawerPort = nullptr;
    QLineEdit *m_drawerDevice = nullptr;
    QLineEdit *m_drawerLine = nullptr;
    QLineEdit *m_drawerCommand = nullptr;
    QLabel *m_drawerAnswer = nullptr;
    PrinterPart *m_printing = nullptr;
};
