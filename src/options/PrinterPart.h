#pragma once

#include <QObject>

#include <functional>

class BoundSettings;
class PrinterDesk;
class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QWidget;
struct PrinterChoice;
struct Station;

/// The rows of a form in which the receipt printer and its paper are entered and tried.
class PrinterPart : public QObject
{
    Q_OBJECT

public:
    PrinterPart(Station &station, PrinterDesk &desk, QFormLayout *form, BoundSettings &settings, QWidget *page);

    void forgetAnswer();

private:
    /// Looks whether there is a printer, and lets one be chosen.
    void withPrinter(const std::function<void(const PrinterChoice &choice)> &chosen);
    void choosePrinter();
    void printTestSlip();
    void print(const PrinterChoice &choice);

    Station &m_station;
    PrinterDesk &m_desk;
    QWidget *m_page;
    QLineEdit *m_printer;
    QComboBox *m_paper;
    QLabel *m_answer;
};
