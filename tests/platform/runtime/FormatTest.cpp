// The pictures: every figure that the program shows is rounded and padded by them.
#include "platform/runtime/Format.h"

#include <QByteArray>
#include <QTest>
#include <array>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

using namespace runtime;

namespace {

QByteArray Formatted(double dValue, Picture tPicture) { return QByteArray::fromStdString(Format(dValue, tPicture)); }

// A whole number of hundredths by "00.00", in integers alone.
QByteArray HundredthsText(std::int64_t lHundredths) {
    return QByteArray::number(qlonglong(lHundredths / 100)).rightJustified(2, '0') + '.' +
           QByteArray::number(qlonglong(lHundredths % 100)).rightJustified(2, '0');
}

// The reading of 15 digits, rounded as decimal text: slow, and made of nothing that the pictures use.
QByteArray RoundedByText(double dValue, int iDecimals) {
    std::array<char, 40> sText{};
    std::snprintf(sText.data(), sText.size(), "%.14e", std::fabs(dValue));
    const QByteArray sReading(sText.data());
    const int iExponent = sReading.mid(sReading.indexOf('e') + 1).toInt();
    QByteArray sDigits = sReading.left(1) + sReading.mid(2, 14);
    // All digits with the point behind digit iPoint, zeros on both sides.
    int iPoint = iExponent + 1;
    while (iPoint < 1) {
        sDigits.prepend('0');
        ++iPoint;
    }
    while (sDigits.size() < iPoint + iDecimals + 1) sDigits.append('0');
    const bool bUp = sDigits.at(iPoint + iDecimals) >= '5';
    sDigits.truncate(iPoint + iDecimals);
    sDigits.prepend('0');
    for (qsizetype i = sDigits.size() - 1; bUp; --i) {
        if (sDigits.at(i) != '9') {
            sDigits[i] = static_cast<char>(sDigits.at(i) + 1);
            break;
        }
        sDigits[i] = '0';
    }
    if (iDecimals > 0) sDigits.insert(sDigits.size() - iDecimals, '.');
    while (sDigits.size() > 1 && sDigits.at(0) == '0' && sDigits.at(1) != '.') sDigits.remove(0, 1);
    bool bZero = true;
    for (const char c : sDigits) bZero = bZero && (c == '0' || c == '.');
    return (dValue < 0 && !bZero ? "-" : "") + sDigits;
}

}  // namespace

class FormatTest : public QObject {
    Q_OBJECT

private slots:
    void figuresFollowTheirPicture_data();
    void figuresFollowTheirPicture();
    void everyThousandthRoundsAsItsDecimalTextDoes();
    void anyDoubleRoundsAsItsFifteenDigitsDo();
    void hugeValuesPrintAllTheirDigits();
    void figuresAreAppended();
    void wholeNumbersAreAppended_data();
    void wholeNumbersAreAppended();
    void twoDigitsAreAppended();
};

void FormatTest::figuresFollowTheirPicture_data() {
    QTest::addColumn<double>("dValue");
    QTest::addColumn<int>("iWhole");
    QTest::addColumn<int>("iDecimals");
    QTest::addColumn<QByteArray>("sText");
    const auto Row = [](const char* sName, double dValue, Picture t, const char* sText) {
        QTest::newRow(sName) << dValue << t.iWhole << t.iDecimals << QByteArray(sText);
    };
    constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();
    constexpr double Infinity = std::numeric_limits<double>::infinity();

    Row("zero by 0", 0, PictureWhole, "0");
    Row("zero by 0.0", 0, PictureTenths, "0.0");
    Row("zero by 00", 0, PictureTwo, "00");
    Row("zero by 000", 0, PictureThree, "000");
    Row("zero by 00.00", 0, PictureMinutes, "00.00");
    Row("zero by 000.0", 0, PictureCourse, "000.0");

    Row("padded to two", 7, PictureTwo, "07");
    Row("padded to three", 47, PictureThree, "047");
    Row("wider than two", 100, PictureTwo, "100");
    Row("wider than three", 1234, PictureThree, "1234");
    Row("minutes", 36.498, PictureMinutes, "36.50");
    Row("minutes padded in front and behind", 5.1, PictureMinutes, "05.10");
    Row("course", 7.25, PictureCourse, "007.3");
    Row("hundredth of a minute", 0.01, PictureMinutes, "00.01");
    Row("tenth", 0.1, PictureTenths, "0.1");
    Row("less than half a tenth", 0.04, PictureTenths, "0.0");

    Row("half up from even", 0.5, PictureWhole, "1");
    Row("half up from odd", 1.5, PictureWhole, "2");
    Row("half up, two", 2.5, PictureWhole, "3");
    Row("half down below zero", -0.5, PictureWhole, "-1");
    Row("half away below zero", -2.5, PictureWhole, "-3");
    Row("bearing 89.5", 89.5, PictureWhole, "90");
    Row("bearing 359.5", 359.5, PictureWhole, "360");
    Row("bearing 359.49", 359.49, PictureWhole, "359");
    Row("range 60.04", 60.04, PictureTenths, "60.0");
    Row("exact quarter", 0.25, PictureTenths, "0.3");
    Row("0.15 reads as a half", 0.15, PictureTenths, "0.2");
    Row("0.35 reads as a half", 0.35, PictureTenths, "0.4");
    Row("1.005 reads as a half", 1.005, PictureMinutes, "01.01");
    Row("a digit below the half", 0.149999999999999, PictureTenths, "0.1");
    Row("below the half only past fifteen digits", 0.49999999999999994, PictureWhole, "1");
    Row("carry into a new digit", 9.95, PictureTenths, "10.0");
    Row("carry through nines", 99.995, PictureMinutes, "100.00");
    Row("minutes round to sixty", 59.99994, PictureMinutes, "60.00");

    Row("negative", -7.25, PictureTenths, "-7.3");
    Row("negative padded behind the sign", -7, PictureThree, "-007");
    Row("negative that rounds to zero", -0.04, PictureTenths, "0.0");
    Row("negative half of a tenth", -0.05, PictureTenths, "-0.1");
    Row("negative that rounds to zero, whole", -0.4, PictureWhole, "0");
    Row("negative zero", -0.0, PictureWhole, "0");
    Row("the smallest double", -std::numeric_limits<double>::denorm_min(), PictureMinutes, "00.00");

    Row("not a number", NotANumber, PictureWhole, "nan");
    Row("not a number, sign set", -NotANumber, PictureTenths, "nan");
    Row("infinite", Infinity, PictureMinutes, "inf");
    Row("minus infinite", -Infinity, PictureMinutes, "-inf");
    Row("nine decimals", 0.0000000015, {1, 9}, "0.000000002");
    Row("no digit in front wanted", 0.5, {0, 1}, ".5");
    Row("more places than digits are known", 1.25, {1, 17}, "1.25000000000000000");
    Row("less than any of many places", 1e-20, {1, 17}, "0.00000000000000000");
    Row("less than any of many places, negative", -1e-20, {1, 17}, "0.00000000000000000");
}

void FormatTest::figuresFollowTheirPicture() {
    QFETCH(double, dValue);
    QFETCH(int, iWhole);
    QFETCH(int, iDecimals);
    QFETCH(QByteArray, sText);
    QCOMPARE(Formatted(dValue, {iWhole, iDecimals}), sText);
}

void FormatTest::everyThousandthRoundsAsItsDecimalTextDoes() {
    for (int i = 0; i <= 200000; ++i) {
        const double dValue = i / 1000.0;
        const QByteArray sText = HundredthsText((i + 5) / 10);
        QCOMPARE(Formatted(dValue, PictureMinutes), sText);
        QCOMPARE(Formatted(-dValue, PictureMinutes), (i >= 5 ? "-" : "") + sText);
    }
}

void FormatTest::anyDoubleRoundsAsItsFifteenDigitsDo() {
    std::mt19937_64 tRandom(1);
    std::uniform_real_distribution<double> tMantissa(-10, 10);
    std::uniform_int_distribution<int> tExponent(-20, 40);
    std::uniform_int_distribution<int> tDecimals(0, 6);
    for (int i = 0; i < 50000; ++i) {
        const double dValue = tMantissa(tRandom) * std::pow(10.0, tExponent(tRandom));
        const int iDecimals = tDecimals(tRandom);
        QCOMPARE(Formatted(dValue, {1, iDecimals}), RoundedByText(dValue, iDecimals));
    }
    // Neighbours of every half.
    for (int i = 0; i < 20000; ++i) {
        const double dHalf = i + 0.5;
        for (const double dValue :
             {dHalf, std::nextafter(dHalf, 0.0), std::nextafter(dHalf, 1e9), dHalf * (1 - 2e-14)}) {
            QCOMPARE(Formatted(dValue, PictureWhole), RoundedByText(dValue, 0));
        }
    }
}

void FormatTest::hugeValuesPrintAllTheirDigits() {
    QCOMPARE(Formatted(1e300, PictureWhole), '1' + QByteArray(300, '0'));
    QCOMPARE(Formatted(-1e300, PictureTenths), "-1" + QByteArray(300, '0') + ".0");
    QCOMPARE(Formatted(1e15, PictureWhole), QByteArray("1000000000000000"));
    QCOMPARE(Formatted(123456789012345, PictureTenths), QByteArray("123456789012345.0"));
    QCOMPARE(Formatted(1234567890123456, PictureWhole), QByteArray("1234567890123460"));
    QCOMPARE(Formatted(999999999999999.9, PictureWhole), QByteArray("1000000000000000"));
    QCOMPARE(Formatted(std::numeric_limits<double>::max(), PictureWhole), "179769313486232" + QByteArray(294, '0'));
}

void FormatTest::figuresAreAppended() {
    std::string sText = "Speed ";
    AppendFormat(sText, 12.34, PictureTenths);
    sText += ' ';
    AppendFormat(sText, 1e15, PictureWhole);
    QCOMPARE(sText, std::string("Speed 12.3 1000000000000000"));
}

void FormatTest::wholeNumbersAreAppended_data() {
    QTest::addColumn<qint64>("lValue");
    QTest::addColumn<QByteArray>("sText");
    QTest::newRow("zero") << qint64(0) << QByteArray("x0");
    QTest::newRow("negative") << qint64(-1) << QByteArray("x-1");
    QTest::newRow("MMSI") << qint64(366123456) << QByteArray("x366123456");
    QTest::newRow("most") << std::numeric_limits<qint64>::max() << QByteArray("x9223372036854775807");
    QTest::newRow("least") << std::numeric_limits<qint64>::min() << QByteArray("x-9223372036854775808");
}

void FormatTest::wholeNumbersAreAppended() {
    QFETCH(qint64, lValue);
    QFETCH(QByteArray, sText);
    std::string sAppended = "x";
    AppendInteger(sAppended, lValue);
    QCOMPARE(QByteArray::fromStdString(sAppended), sText);
}

void FormatTest::twoDigitsAreAppended() {
    for (int i = 0; i < 100; ++i) {
        std::string sText = ":";
        AppendTwoDigits(sText, i);
        QCOMPARE(QByteArray::fromStdString(sText), ':' + QByteArray::number(i).rightJustified(2, '0'));
    }
}

QTEST_GUILESS_MAIN(FormatTest)
#include "FormatTest.moc"
