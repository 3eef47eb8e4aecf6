#include "counter/ReceiptPainter.h"
#include "counter/ReceiptPrinting.h"
#include "counter/frm_PrintReceipt.h"
#include "support/DrawnRows.h"
#include "support/ScriptedPrompts.h"
#include "support/TestStation.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QByteArray outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(60'000) || process.exitCode() != 0)
        throw std::runtime_error("Cannot run " + program.toStdString() + ": " +
                                 process.readAllStandardError().toStdString());
    return process.readAllStandardOutput();
}

Receipt sample(int lines)
{
    Receipt receipt{u"OFFICIAL RECEIPT"_s,
                    QStringLiteral(TAMSORA_DATABASE "/../assets/logo.png"),
                    u"Larkmere Sports Centre\r\n12 Heron Walk\r\nLarkmere\r\n"_s,
                    u"Telephone 01632 960900\r\ncounter@larkmere.example\r\n"_s,
                    u"Issued By: anna"_s,
                    u"Time: 14:59:59"_s,
                    u"Date: 14/11/2026"_s,
                    u"NO A 0007"_s};
    const QStringList names{u"Field Number 7 14/11/2026 20:00"_s,
                            u"Café crème \"grande\" 100 %"_s,
                            u"O'Brien's energy drink with an uncommonly long name that no till roll was made for, "
                            "blackcurrant"_s,
                            u"ماء معدني"_s,
                            u"Misc"_s,
                            u"Rubberunderwatertorchlightbatterycompartmentcoverscrewset"_s};
    for (int i = 0; i < lines; ++i)
        receipt.lines.push_back({QString::number(i + 1), names[i % names.size()], i == 2 ? u"12345.67"_s : u"39.95"_s,
                                 i == 2 ? u"100"_s : u"1.5"_s, QString::number(10001 + i) + u".90"_s});
    receipt.amount = u"$ 98765.43"_s;
    return receipt;
}

/// Everything that a PDF says, in the order in which it was written, without blanks.
QString wordsOf(const QString &file)
{
    return QString::fromUtf8(outputOf(u"pdftotext"_s, {u"-raw"_s, file, u"-"_s})).simplified().remove(u' ');
}

QString inOneWord(const ReceiptLine &line)
{
    return QString(line.item + line.description + line.unitPrice + line.quantity + line.price).remove(u' ');
}

/// True when there is ink within this part of the page's width, counted from the left or the right edge.
bool hasInkAtEdges(const QImage &page, qreal part)
{
    const int margin = int(page.width() * part);
    for (int y = 0; y < page.height(); ++y)
        for (int x = 0; x < margin; ++x)
            for (const int here : {x, page.width() - 1 - x})
                if (qGray(page.pixel(here, y)) < 200)
                    return true;
    return false;
}

/// A desk that notes what it is asked for.
class NotingDesk : public PrinterDesk
{
public:
    void lookForPrinters(std::function<void(std::optional<bool>)> told) override { told(printers); }
    std::optional<PrinterChoice> choose(QWidget * /*over*/) override
    {
        notes << u"dialog"_s;
        return chosen;
    }
    void print(const Receipt &receipt, const PrinterChoice &choice, std::function<void(QString trouble)> told) override
    {
        notes << receipt.number + u" on "_s + choice.name +
                     (choice.paper ? u' ' + paperName(*choice.paper) : QString());
        told(trouble);
    }
    QString askForFile(QWidget * /*over*/, const QString &suggestion) override
    {
        notes << suggestion;
        return file;
    }

    std::optional<bool> printers = true;
    std::optional<PrinterChoice> chosen = PrinterChoice{u"Epson & Co"_s, Paper::Roll58};
    QString trouble;
    QString file;
    QStringList notes;
};

/// A counter without a database.
struct Till : ScriptedPerson, Station
{
    explicit Till(const QStringList &script)
        : ScriptedPerson{ScriptedPrompts(script)}, Station(testSettings({}), person)
    {
    }
};

} // namespace

/// Receipts as files, read again by other programs: pdftotext gives the words, pdftoppm the picture.
class tst_ReceiptsOnPaper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("XDG_CONFIG_HOME", m_folder.path().toUtf8()); }
    void init() { QFile::remove(settingsFilePath()); }

    void everyPaper_data()
    {
        // Paper, lines, pages, width in points.
        drawnRows(uR"(
            A4 one       | A4   |  1 | 1 | 595
            A4 eleven    | A4   | 11 | 1 | 595
            A4 twelve    | A4   | 12 | 1 | 595
            A4 forty     | A4   | 40 | 2 | 595
            A5 one       | A5   |  1 | 1 | 420
            A5 eleven    | A5   | 11 | 1 | 420
            A5 twelve    | A5   | 12 | 1 | 420
            A5 forty     | A5   | 40 | 2 | 420
            80 mm none   | 80mm |  0 | 1 | 227
            80 mm one    | 80mm |  1 | 1 | 227
            80 mm eleven | 80mm | 11 | 1 | 227
            80 mm twelve | 80mm | 12 | 1 | 227
            80 mm forty  | 80mm | 40 | 1 | 227
            58 mm one    | 58mm |  1 | 1 | 164
            58 mm eleven | 58mm | 11 | 1 | 164
            58 mm twelve | 58mm | 12 | 1 | 164
            58 mm forty  | 58mm | 40 | 1 | 164
            no roll is so long | 58mm | 700 | 2 | 164
        )"_s);
    }

    void everyPaper()
    {
        const auto [paper, lines, pages, width] = cells<4>();
        const QString file = m_folder.filePath(paper + u'-' + lines + u".pdf"_s);
        const Receipt receipt = sample(lines.toInt());
        QCOMPARE(savePdf(receipt, *paperNamed(paper), file), QString());

        const QString words = wordsOf(file);
        for (const ReceiptLine &line : receipt.lines)
            if (!line.description.contains(QChar(0x0645))) // other programs read Arabic in another order
                QVERIFY2(words.count(inOneWord(line)) == 1, qPrintable(inOneWord(line) + u" in "_s + words));
            else
                QCOMPARE(words.count(line.unitPrice + line.quantity + line.price), 1);
        QCOMPARE(words.count(u"TOTALAMOUNT"_s), 1);
        QVERIFY(words.contains((receipt.lines.empty() ? QString() : receipt.lines.back().price) +
                               u"TOTALAMOUNT$98765.43"_s));
        QCOMPARE(words.count(u"DescriptionPrice/UnitQuantityPrice"_s), pages.toInt());
        for (int page = 1; page <= pages.toInt(); ++page)
            QCOMPARE(words.count(u"Page"_s + QString::number(page) + u"of"_s + pages), pages == u"1" ? 0 : 1);

        const QString about = QString::fromUtf8(outputOf(u"pdfinfo"_s, {file})).simplified();
        QVERIFY2(about.contains(u"Pages: "_s + pages + u' ') && about.contains(u"Page size: "_s + width + u" x "_s),
                 qPrintable(about));
        if (lines.toInt() > 40)
            return;
        outputOf(u"pdftoppm"_s, {u"-r"_s, u"72"_s, u"-gray"_s, file, file});
        const auto pictures = QDir(m_folder.path()).entryList({paper + u'-' + lines + u".pdf*.pgm"_s});
        QCOMPARE(pictures.size(), pages.toInt());
        const qreal margin = formOf(*paperNamed(paper)).sideMargin * 72 / 25.4 / width.toDouble();
        for (const QString &picture : pictures) {
            const QImage page(m_folder.filePath(picture));
            QVERIFY2(!hasInkAtEdges(page, margin - 0.01), qPrintable(picture));
            QVERIFY(hasInkAtEdges(page, margin + 0.03)); // both columns of figures and words reach their edges
        }
    }

    void paperOfPrinters()
    {
        for (const auto &[width, paper] : {std::pair{210, u"A4"},
                                           {216, u"A4"},
                                           {148, u"A5"},
                                           {72, u"80mm"},
                                           {58, u"58mm"},
                                           {48, u"58mm"},
                                           {0, u"80mm"}})
            QCOMPARE(paperName(paperFor(QPageSize(QSizeF(width, 297), QPageSize::Millimeter))),
                     QString::fromUtf16(paper));
    }

    void printing_data()
    {
        // Settings; what the desk finds; what staff are asked; what the desk is asked; the settings afterwards.
        drawnRows(uR"(
            first time, yes | | | confirm: Use the printer "Epson & Co" without asking from now on? [Printer] -> yes | dialog; NO A 0007 on Epson & Co 58mm; NO A 0007 on Epson & Co 58mm | Epson & Co 58mm
            first time, no  | | | confirm: Use the printer "Epson & Co" without asking from now on? [Printer] -> no | dialog; NO A 0007 on Epson & Co 58mm; dialog; NO A 0007 on Epson & Co 58mm |
            without asking  | Star A5 | | | NO A 0007 on Star A5; NO A 0007 on Star A5 | Star A5
            own paper       | Star | | | NO A 0007 on Star; NO A 0007 on Star | Star
            odd paper       | Star A3 | | | NO A 0007 on Star; NO A 0007 on Star | Star A3
            cancelled       | | cancel | | dialog; dialog |
            no printer      | | none   | confirm: No printer is set up on this computer. Save it as PDF instead? [Printer] -> no; confirm: No printer is set up on this computer. Save it as PDF instead? [Printer] -> no | |
            system hangs    | | silent | confirm: The computer's printers do not answer. Save it as PDF instead? [Printer] -> no; confirm: The computer's printers do not answer. Save it as PDF instead? [Printer] -> no | |
            paused          | Star | paused | confirm: Paused. Save it as PDF instead? [Printer] -> no; confirm: Paused. Save it as PDF instead? [Printer] -> no | NO A 0007 on Star; NO A 0007 on Star | Star
        )"_s);
    }

    void printing()
    {
        const auto [before, found, asked, wanted, after] = cells<5>();
        if (!before.isEmpty())
            WriteSetting(u"Till"_s, u"printer"_s, before.section(u' ', 0, 0));
        if (before.contains(u' '))
            WriteSetting(u"Till"_s, u"paper"_s, before.section(u' ', 1));
        NotingDesk desk;
        if (found == u"none" || found == u"silent")
            desk.printers = found == u"none" ? std::optional(false) : std::nullopt;
        if (found == u"cancel")
            desk.chosen.reset();
        desk.trouble = found == u"paused" ? u"Paused."_s : QString();
        Till till(QStringList(listOf(asked)).replaceInStrings(u" Save it"_s, u"\n\nSave it"_s));
        ReceiptPrinting printing(till, desk);
        printing.print(sample(1), nullptr);
        printing.print(sample(1), nullptr);
        QCOMPARE(desk.notes, listOf(wanted));
        QCOMPARE(
            QString(ReadSetting(u"Till"_s, u"printer"_s, {}) + u' ' + ReadSetting(u"Till"_s, u"paper"_s, {})).trimmed(),
            after);
    }

    void fileInstead()
    {
        NotingDesk desk;
        desk.printers = false;
        desk.file = m_folder.filePath(u"saved"_s);
        WriteSetting(u"Till"_s, u"paper"_s, u"A5"_s);
        Till till({u"confirm: No printer is set up on this computer.\n\nSave it as PDF instead? [Printer] -> yes"_s,
                   u"inform"_s});
        ReceiptPrinting printing(till, desk);
        printing.print(sample(2), nullptr);
        QCOMPARE(desk.notes, QStringList{u"Receipt A 0007.pdf"_s});
        QVERIFY(wordsOf(m_folder.filePath(u"saved.pdf"_s)).contains(inOneWord(sample(2).lines[1])));
        QVERIFY(outputOf(u"pdfinfo"_s, {m_folder.filePath(u"saved.pdf"_s)}).contains("A5"));
        desk.file = m_folder.filePath(u"no such folder/saved.pdf"_s);
        QVERIFY(!printing.saveAsPdf(sample(2), nullptr));
    }

    void formShowsEveryLine()
    {
        NotingDesk desk;
        Till till({u"confirm: Use the printer \"Epson & Co\" without asking from now on? [Printer] -> yes"_s});
        ReceiptPrinting printing(till, desk);
        const auto shown = [](const frm_PrintReceipt &form, const QString &name) {
            const auto *label = form.findChild<QLabel *>(name);
            return label ? label->text() : u"(none)"_s;
        };
        for (const int lines : {0, 3, 40}) {
            const Receipt receipt = sample(lines);
            frm_PrintReceipt form(receipt, printing);
            form.show();
            for (const auto &[name, text] : {std::pair{u"lbl_Title"_s, receipt.title},
                                             {u"lbl_Info"_s, receipt.info},
                                             {u"lbl_Info2"_s, receipt.info2},
                                             {u"lbl_Issued"_s, receipt.issued},
                                             {u"lbl_Time"_s, receipt.time},
                                             {u"lbl_Date"_s, receipt.date},
                                             {u"lbl_ReceiptNumber"_s, receipt.number},
                                             {u"lbl_Amount"_s, receipt.amount}})
                QCOMPARE(shown(form, name), text);
            QVERIFY(!form.findChild<QLabel *>(u"Image1"_s)->pixmap(Qt::ReturnByValue).isNull());
            for (int i = 0; i < qMax(lines, 11); ++i) {
                const ReceiptLine line = i < lines ? receipt.lines[std::size_t(i)] : ReceiptLine{};
                const QString ending = u'_' + QString::number(i);
                for (const auto &[name, text] : {std::pair{u"lbl_Item"_s, line.item},
                                                 {u"lbl_Description"_s, line.description},
                                                 {u"lbl_UnitPrice"_s, line.unitPrice},
                                                 {u"lbl_Quantity"_s, line.quantity},
                                                 {u"lbl_Price"_s, line.price}})
                    QCOMPARE(shown(form, name + ending), text);
            }
            QCOMPARE(shown(form, u"lbl_Item_"_s + QString::number(qMax(lines, 11))), u"(none)"_s);
            form.findChild<QPushButton *>(u"btn_Print"_s)->click();
            QVERIFY(!form.isVisible());
        }
        QCOMPARE(desk.notes.count(u"dialog"_s), 1);
    }

private:
    QTemporaryDir m_folder;
};

QTEST_MAIN(tst_ReceiptsOnPaper)
#include "tst_ReceiptsOnPaper.moc"
