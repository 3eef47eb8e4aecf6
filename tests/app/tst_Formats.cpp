#include "app/Conversions.h"
#include "app/Formats.h"

#include <QLocale>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

class tst_Formats : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Nothing here may follow the system's language.
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German)); }
    void formatsNumbers_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QStringList>("texts"); // in the order of the patterns below
        const auto row = [](double value, const char *texts) {
            QTest::addRow("%.17g", value) << value << QString::fromLatin1(texts).split(u' ');
        };
        row(0, "0.00 0.00 0.00 .00 00 0000");
        row(-1e-17, "0.00 0.00 0.00 .00 00 0000");
        row(0.005, "0.01 0.01 0.01 .01 00 0000");
        row(0.0049999, "0.00 0.00 0.00 .00 00 0000");
        row(5.25, "5.25 5.25 5.25 5.25 05 0005");
        row(1234567.891, "1234567.89 1,234,567.89 1234567.89 1234567.89 1234568 1234568");
        row(-0.5, "-0.50 -0.50 -0.50 -.50 -01 -0001");
        row(-123456, "-123456.00 -123,456.00 -123456.00 -123456.00 -123456 -123456");
        row(1.005, "1.01 1.01 1.01 1.01 01 0001");
        row(9.995, "10.00 10.00 10.00 10.00 10 0010");
        row(2.5, "2.50 2.50 2.50 2.50 03 0003");
        row(1e17, "100000000000000000.00 100,000,000,000,000,000.00 100000000000000000.00 100000000000000000.00 "
                  "100000000000000000 100000000000000000");
    }

    void formatsNumbers()
    {
        QFETCH(double, value);
        QStringList texts;
        for (const QString &pattern : {u"##0.00"_s, u"##,##0.00"_s, u"#0.00"_s, u"##.#0"_s, u"0#"_s, u"#0000"_s})
            texts += formatNumber(value, pattern);
        QTEST(texts, "texts");
    }

    void formatsMoments()
    {
        for (const QString &line :
             {u"2026-11-14 00:05:09 = 14 Nov 12:05:09 AM"_s, u"2026-01-02 12:30:05 = 2 Jan 12:30:05 PM"_s,
              u"2026-12-31 23:59:59 = 31 Dec 11:59:59 PM"_s}) {
            const QDateTime moment = QDateTime::fromString(line.left(19), u"yyyy-MM-dd HH:mm:ss"_s);
            QCOMPARE(sqlDateTime(moment) + u" = "_s + clockText(moment), line);
            QCOMPARE(sqlDate(moment.date()), line.left(10));
        }
    }

    void formatsSmallThings()
    {
        QStringList plain;
        for (const double value : {60.0, 1.5, 0.1 + 0.2, 100.1 - 50, 200.0 / 3, 1e15, 1e-5, -0.0})
            plain += plainNumber(value);
        QCOMPARE(plain.join(u' '), u"60 1.5 0.3 50.1 66.6666666666667 1E+15 1E-05 0"_s);
        QStringList twoDigits;
        for (const int value : {0, 7, 24, 123, -3})
            twoDigits += formatTwoDigits(value);
        QCOMPARE(twoDigits.join(u' '), u"00 07 24 123 -03"_s);
        QCOMPARE(formatNumber(std::numeric_limits<double>::infinity(), u"##0.00"_s), u"INF"_s);
        QCOMPARE(formatNumber(1.5, u"0.0##"_s), u"1.5"_s);

        QStringList week;
        for (int day = 15; day < 22; ++day)
            week += weekdayName(QDate(2026, 11, day));
        QCOMPARE(week.join(u' '), u"Sunday Monday Tuesday Wednesday Thursday Friday Saturday"_s);
    }

    void converts_data()
    {
        QTest::addColumn<QString>("asDouble");
        QTest::addColumn<QString>("asInt16");
        const auto rows = [](const char *texts, const char *asDouble, const char *asInt16) {
            for (const QString &text : QString::fromUtf8(texts).split(u'|'))
                QTest::newRow(text.toUtf8().constData())
                    << QString::fromLatin1(asDouble) << QString::fromLatin1(asInt16);
        };
        rows("8| 8 |\\t8\\r\\n|+8|00008|8.|$8|8$|$ 8|8+", "8", "8");
        rows("-8|8-|(8)| - 8|-$8|($8)|( 8 ) ", "-8", "-8");
        rows(".5|0.5|+.50", "0.5", "0");
        rows("1.5", "1.5", "2");
        rows("2.5", "2.5", "2");
        rows("-.5", "-0.5", "0");
        rows("-1.5", "-1.5", "-2");
        rows(".00|-0", "0", "0");
        rows("1,234|1,2,3,4|12,34|1234,", "1234", "1234");
        rows("1,234.5", "1234.5", "1234");
        rows("1e2|1E2|1e+2|1000e-1", "100", "100");
        rows("&HFF|&hff", "255", "255");
        rows("&O17", "15", "15");
        rows("32767.4", "32767.4", "32767");
        rows("32767.5", "32767.5", "Overflow");
        rows("32768|&H8000", "32768", "Overflow");
        rows("1e5", "100000", "Overflow");
        rows("-32768.5", "-32768.5", "-32768");
        rows("-32768.6", "-32768.6", "Overflow");
        rows("1e400|-1e400|&HFFFFFFFFF", "Overflow", "Overflow");
        rows("1e-400", "0", "0");
        rows("|   |abc|8a|8 0|8:00|12%|1.2.3|1.2,3|--8|-|.|,5|0x10|True|StartOfWorkingHour|1726 56th Ave "
             "NE|1d2|1e|1e+|nan|"
             "inf|\u20AC8|\u00A38|8\u00A0|-8-|(-8)|(8|8)|( )8|$8$|&|&H|&HG|&O8|&X1|-&HFF|\u0668|8\\0",
             "Type mismatch", "Type mismatch");
    }

    void converts()
    {
        // The row's name is the text, with its special characters spelled out.
        QString text = QString::fromUtf8(QTest::currentDataTag());
        text.replace(u"\\t"_s, u"\t"_s).replace(u"\\r"_s, u"\r"_s).replace(u"\\n"_s, u"\n"_s);
        text.replace(u"\\0"_s, QString(QChar(u'\0')));
        const auto outcome = [&text](auto convert) {
            try {
                return plainNumber(convert(text));
            } catch (const ConversionError &error) {
                return QString::fromLatin1(error.what());
            }
        };
        QTEST(outcome(toDouble), "asDouble");
        QTEST(outcome(toInt16), "asInt16");
    }
};

QTEST_GUILESS_MAIN(tst_Formats)
#include "tst_Formats.moc"
