// Text to numbers: lenient for cells and sentence fields, strict for what the user types and the profile holds.
#include "platform/runtime/Convert.h"

#include <QByteArray>
#include <QTest>
#include <clocale>
#include <limits>
#include <string>

using namespace runtime;

namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();

}  // namespace

class ConvertTest : public QObject {
    Q_OBJECT

private slots:
    void leadingPartOfATextIsItsNumber_data();
    void leadingPartOfATextIsItsNumber();
    void wholeTextMustBeANumber_data();
    void wholeTextMustBeANumber();
    void otherTextsAreRefused_data();
    void otherTextsAreRefused();
    void integersRoundHalfToEven_data();
    void integersRoundHalfToEven();
    void integersOutsideThirtyTwoBitsAreRefused_data();
    void integersOutsideThirtyTwoBitsAreRefused();
    void realsRoundHalfToEven();
    void pointIsTheDecimalSignInEveryLocale();
    void refusalNamesTheText();
};

void ConvertTest::leadingPartOfATextIsItsNumber_data() {
    QTest::addColumn<QByteArray>("sText");
    QTest::addColumn<double>("dValue");
    const auto Row = [](const char* sText, double dValue) {
        QTest::addRow("\"%s\"", sText) << QByteArray(sText) << dValue;
    };
    Row("", 0);
    Row("   ", 0);
    Row("n/a", 0);
    Row("nan", 0);
    Row("NAN", 0);
    Row("inf", 0);
    Row("-inf", 0);
    Row("infinity", 0);
    Row("abc12", 0);
    Row("-", 0);
    Row("+", 0);
    Row(".", 0);
    Row("-.e5", 0);
    Row("e5", 0);
    Row("+-5", 0);
    Row("- 5", 0);
    Row("0", 0);
    Row("12", 12);
    Row("+12", 12);
    Row("-12", -12);
    Row("007", 7);
    Row("  12.5", 12.5);
    Row("12.5 kn", 12.5);
    Row("12,5", 12);
    Row("12.", 12);
    Row("12.kn", 12);
    Row(".5", 0.5);
    Row("-.5x", -0.5);
    Row("1.2.3", 1.2);
    Row("1e3", 1000);
    Row("1E3", 1000);
    Row("1e+3", 1000);
    Row("25e-1 ", 2.5);
    Row(".5e1", 5);
    Row("1e", 1);
    Row("1e+", 1);
    Row("1ex", 1);
    Row("1 e3", 1);
    Row("0x10", 0);
    Row("366123456", 366123456);
    Row("1e400", Infinity);
    Row("-1e400", -Infinity);
    Row("1e99999999999999999999", Infinity);
    Row("1e+400", Infinity);
    Row("1e+99999999999999999999", Infinity);
    Row("1e-400", 0);
    Row("1e-99999999999999999999", 0);
    Row("0e99999999999999999999", 0);
    QTest::newRow("400 digits") << QByteArray(400, '9') << Infinity;
    QTest::newRow("400 zeros behind the point") << "0." + QByteArray(400, '0') + '1' << 0.0;
    QTest::newRow("400 zeros behind the point, made large") << "0." + QByteArray(400, '0') + "1e1000" << Infinity;
    QTest::newRow("400 zeros behind the point, made one") << "0." + QByteArray(400, '0') + "1e401" << 1.0;
    QTest::newRow("400 digits, made small") << QByteArray(400, '9') + "e-1000" << 0.0;
    QTest::newRow("zero byte ends it") << QByteArray(
                                              "12\0"
                                              "3",
                                              4)
                                       << 12.0;
}

void ConvertTest::leadingPartOfATextIsItsNumber() {
    QFETCH(QByteArray, sText);
    QFETCH(double, dValue);
    QVERIFY(LeadingNumber(sText.toStdString()) == dValue);
}

void ConvertTest::wholeTextMustBeANumber_data() {
    QTest::addColumn<QByteArray>("sText");
    QTest::addColumn<double>("dValue");
    const auto Row = [](const char* sText, double dValue) {
        QTest::addRow("\"%s\"", sText) << QByteArray(sText) << dValue;
    };
    Row("36.50", 36.5);
    Row("  36.50  ", 36.5);
    Row("+36.50", 36.5);
    Row("-36.50", -36.5);
    Row("0047", 47);
    Row("47.", 47);
    Row(".5", 0.5);
    Row("1e2", 100);
    Row("1E-2", 0.01);
    Row("-0", 0);
    Row("1e-400", 0);
    Row("1.7976931348623157e308", std::numeric_limits<double>::max());
}

void ConvertTest::wholeTextMustBeANumber() {
    QFETCH(QByteArray, sText);
    QFETCH(double, dValue);
    QVERIFY(ToReal(sText.toStdString()) == dValue);
}

void ConvertTest::otherTextsAreRefused_data() {
    QTest::addColumn<QByteArray>("sText");
    for (const char* sText :
         {"",    " ",   "x",   "12x", "x12",  "12 kn", "12,5",  "1 2",    "1e",    "1e+",  ".",   "-",
          "+-1", "--1", "nan", "inf", "-inf", "0x10",  "1e400", "-1e400", "1.2.3", "\t12", "12\r"}) {
        QTest::addRow("\"%s\"", sText) << QByteArray(sText);
    }
    QTest::newRow("zero byte behind") << QByteArray("12\0", 3);
}

void ConvertTest::otherTextsAreRefused() {
    QFETCH(QByteArray, sText);
    QVERIFY_EXCEPTION_THROWN(ToReal(sText.toStdString()), ConversionError);
    QVERIFY_EXCEPTION_THROWN(ToInteger(sText.toStdString()), ConversionError);
}

void ConvertTest::integersRoundHalfToEven_data() {
    QTest::addColumn<QByteArray>("sText");
    QTest::addColumn<qint32>("lValue");
    const auto Row = [](const char* sText, qint32 lValue) {
        QTest::addRow("\"%s\"", sText) << QByteArray(sText) << lValue;
    };
    Row("6", 6);
    Row(" 6 ", 6);
    Row("-6", -6);
    Row("0.5", 0);
    Row("1.5", 2);
    Row("2.5", 2);
    Row("2.51", 3);
    Row("-0.5", 0);
    Row("-1.5", -2);
    Row("-2.5", -2);
    Row("1e3", 1000);
    Row("2147483647", std::numeric_limits<qint32>::max());
    Row("2147483647.4", std::numeric_limits<qint32>::max());
    Row("-2147483648", std::numeric_limits<qint32>::min());
    Row("-2147483648.5", std::numeric_limits<qint32>::min());
}

void ConvertTest::integersRoundHalfToEven() {
    QFETCH(QByteArray, sText);
    QFETCH(qint32, lValue);
    QCOMPARE(ToInteger(sText.toStdString()), lValue);
}

void ConvertTest::integersOutsideThirtyTwoBitsAreRefused_data() {
    QTest::addColumn<QByteArray>("sText");
    for (const char* sText : {"2147483648", "2147483647.5", "-2147483649", "-2147483648.6", "1e300", "-1e300"}) {
        QTest::addRow("%s", sText) << QByteArray(sText);
    }
}

void ConvertTest::integersOutsideThirtyTwoBitsAreRefused() {
    QFETCH(QByteArray, sText);
    QVERIFY_EXCEPTION_THROWN(ToInteger(sText.toStdString()), ConversionError);
}

void ConvertTest::realsRoundHalfToEven() {
    for (int i = -1000; i < 1000; ++i) {
        const int iEven = i % 2 == 0 ? i : i + 1;
        QCOMPARE(RoundHalfEven(i + 0.5), iEven);
        QCOMPARE(RoundHalfEven(i + 0.25), i);
        QCOMPARE(RoundHalfEven(i + 0.75), i + 1);
        QCOMPARE(RoundHalfEven(i), i);
    }
    QCOMPARE(RoundHalfEven(2147483647.0), std::numeric_limits<qint32>::max());
    QCOMPARE(RoundHalfEven(-2147483648.0), std::numeric_limits<qint32>::min());
}

void ConvertTest::pointIsTheDecimalSignInEveryLocale() {
    // Where none of these locales is installed the "C" locale stays, and the test shows less.
    for (const char* sLocale : {"de_DE.UTF-8", "de_DE", "fr_FR.UTF-8", "C"}) {
        std::setlocale(LC_ALL, sLocale);
        QVERIFY(ToReal("36.50") == 36.5);
        QVERIFY(LeadingNumber("36.50") == 36.5);
        QVERIFY_EXCEPTION_THROWN(ToReal("36,50"), ConversionError);
    }
}

void ConvertTest::refusalNamesTheText() {
    try {
        ToReal("six");
        QFAIL("not refused");
    } catch (const ConversionError& tError) {
        QVERIFY(QByteArray(tError.what()).contains("\"six\""));
    }
}

QTEST_GUILESS_MAIN(ConvertTest)
#include "ConvertTest.moc"
