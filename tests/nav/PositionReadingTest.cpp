// Positions as people write them, in every usual form, and texts that must be refused rather than guessed at.
#include "nav/PositionReading.h"

#include <QByteArray>
#include <QTest>
#include <cmath>
#include <string>

#include "nav/PositionText.h"

using namespace nav;

namespace {

// A table's text, with "d" in place of the degree sign.
QByteArray WithDegreeSign(const char* sText) { return QByteArray(sText).replace('d', '\xB0'); }

bool Near(double dA, double dB) { return std::fabs(dA - dB) < 1e-12; }

}  // namespace

class PositionReadingTest : public QObject {
    Q_OBJECT

private slots:
    void latitudesAreRead_data();
    void latitudesAreRead();
    void longitudesAreRead_data();
    void longitudesAreRead();
    void otherTextsAreRefused_data();
    void otherTextsAreRefused();
    void pairsAreRead_data();
    void pairsAreRead();
    void otherPairsAreRefused_data();
    void otherPairsAreRefused();
    void everyHundredthOfAMinuteReadsBack();
    void whatIsReadPrintsWithoutSixtyMinutes();
};

void PositionReadingTest::latitudesAreRead_data() {
    QTest::addColumn<QByteArray>("sText");
    QTest::addColumn<double>("dDegrees");
    const auto Row = [](const char* sName, const char* sText, double dDegrees) {
        QTest::newRow(sName) << WithDegreeSign(sText) << dDegrees;
    };
    Row("as the box shows it", "50d21.40'N", 50 + 21.4 / 60);
    Row("as it is typed", "50 21.40 N", 50 + 21.4 / 60);
    Row("short", "50 21.4 N", 50 + 21.4 / 60);
    Row("letter without a blank", "50 21.4N", 50 + 21.4 / 60);
    Row("small letter", "50 21.4 s", -(50 + 21.4 / 60));
    Row("letter in front", "S50 21.4", -(50 + 21.4 / 60));
    Row("letter and blank in front", "N 50 21.4", 50 + 21.4 / 60);
    Row("blanks everywhere", "  50 d 21.4 ' S  ", -(50 + 21.4 / 60));
    Row("line end behind", "50 21.4 N\r\n", 50 + 21.4 / 60);
    Row("hard blanks",
        "50d\xA0"
        "21.4'\xA0S",
        -(50 + 21.4 / 60));
    Row("the ordinal's ring",
        "50\xBA"
        "21.4'S",
        -(50 + 21.4 / 60));
    Row("dash of the charts", "50-21.4N", 50 + 21.4 / 60);
    Row("colon", "50:21.4N", 50 + 21.4 / 60);
    Row("no mark behind the minutes", "50d21.4N", 50 + 21.4 / 60);
    Row("no letter", "50 21.4", 50 + 21.4 / 60);
    Row("minus reaches the minutes", "-50 21.4", -(50 + 21.4 / 60));
    Row("plus", "+50 21.4", 50 + 21.4 / 60);
    Row("whole minutes", "50 21 S", -(50 + 21 / 60.0));
    Row("minutes and seconds", "50d21'24\"N", 50 + 21.4 / 60);
    Row("seconds with two marks of minutes", "50d21'24''S", -(50 + 21.4 / 60));
    Row("seconds without marks", "50 21 24 S", -(50 + 21.4 / 60));
    Row("seconds with a fraction", "50 21 24.6 N", 50 + 21.41 / 60);
    Row("colons", "50:21:24 N", 50 + 21.4 / 60);
    Row("decimal degrees", "50.35", 50.35);
    Row("decimal degrees, four places", "50.3567", 50 + 21.40 / 60);
    Row("decimal degrees with sign", "-50.35", -50.35);
    Row("decimal degrees with mark and letter", "50.35dS", -50.35);
    Row("decimal degrees and letter", "50.35 S", -50.35);
    Row("degrees alone", "50", 50);
    Row("degrees and letter", "50S", -50);
    Row("pole", "90", 90);
    Row("south pole", "90 00.00 S", -90);
    Row("zero", "0", 0);
    Row("leading zeros", "007 05.5 N", 7 + 5.5 / 60);
    Row("rounded to a hundredth of a minute", "12.999999", 13);
    Row("rounded up", "0 0.006 N", 0.01 / 60);
}

void PositionReadingTest::latitudesAreRead() {
    QFETCH(QByteArray, sText);
    QFETCH(double, dDegrees);
    const auto dRead = ReadLatitude(sText.toStdString());
    QVERIFY(dRead.has_value());
    QVERIFY2(Near(*dRead, dDegrees), QByteArray::number(*dRead, 'g', 17).constData());
}

void PositionReadingTest::longitudesAreRead_data() {
    QTest::addColumn<QByteArray>("sText");
    QTest::addColumn<double>("dDegrees");
    const auto Row = [](const char* sName, const char* sText, double dDegrees) {
        QTest::newRow(sName) << WithDegreeSign(sText) << dDegrees;
    };
    Row("as the box shows it", "004d08.60'W", -(4 + 8.6 / 60));
    Row("as it is typed", "004 08.60 W", -(4 + 8.6 / 60));
    Row("decimal degrees", "-4.135", -(4 + 8.1 / 60));
    Row("east", "4 8.6 e", 4 + 8.6 / 60);
    Row("west in front", "w 4 8.6", -(4 + 8.6 / 60));
    Row("no letter is east", "4 8.6", 4 + 8.6 / 60);
    Row("date line", "180", 180);
    Row("date line, west", "180d00.00'W", -180);
    Row("beyond a latitude", "122 20.2 W", -(122 + 20.2 / 60));
}

void PositionReadingTest::longitudesAreRead() {
    QFETCH(QByteArray, sText);
    QFETCH(double, dDegrees);
    const auto dRead = ReadLongitude(sText.toStdString());
    QVERIFY(dRead.has_value());
    QVERIFY2(Near(*dRead, dDegrees), QByteArray::number(*dRead, 'g', 17).constData());
}

void PositionReadingTest::otherTextsAreRefused_data() {
    QTest::addColumn<QByteArray>("sText");
    const auto Row = [](const char* sName, const char* sText) { QTest::newRow(sName) << WithDegreeSign(sText); };
    Row("empty", "");
    Row("blanks", "   ");
    Row("words", "here");
    Row("a letter alone", "N");
    Row("a sign alone", "-");
    Row("a mark alone", "d");
    Row("sixty minutes", "50 60.0 N");
    Row("sixty seconds", "50 21 60 N");
    Row("beyond the date line", "180 00.01 N");
    Row("beyond every axis", "181");
    Row("far beyond", "1e400");
    Row("far beyond in digits", std::string(400, '9').c_str());
    Row("exponent", "5e1");
    Row("two points", "50.35.67");
    Row("two points in the minutes", "50 21.4.5 N");
    Row("two points in the seconds", "50 21 24.5.6 N");
    Row("a character behind the letters", "50 21.4 {");
    Row("comma", "50,35 N");
    Row("sign and letter", "-50 21.4 N");
    Row("letters on both sides", "N 50 21.4 N");
    Row("two letters", "50 21.4 NN");
    Row("a word for the letter", "50 21.4 North");
    Row("minus within", "50 -21.4 N");
    Row("minutes of broken degrees", "50.5 21.4 N");
    Row("seconds of broken minutes", "50 21.4 30 N");
    Row("a fourth number", "50 21 24 5 N");
    Row("dash at the end", "50-");
    Row("dash before the letter", "50-N");
    Row("colon at the end of the minutes", "50:21:");
    Row("minutes' mark behind degrees", "50'21.4 N");
    Row("one mark of minutes behind the seconds", "50d21'24'N");
    Row("point first", ".5");
    Row("no break between degrees and minutes", "5021.40N");
    Row("hexadecimal", "0x32");
    Row("not a number", "nan");
    Row("text behind", "50 21.4 N about");
    Row("text in front", "lat 50 21.4 N");
    Row("the entry mask", "__ __.__ N");
}

void PositionReadingTest::otherTextsAreRefused() {
    QFETCH(QByteArray, sText);
    QVERIFY(!ReadLatitude(sText.toStdString()));
    QVERIFY(!ReadLongitude(sText.replace('N', 'E').toStdString()));
}

void PositionReadingTest::pairsAreRead_data() {
    QTest::addColumn<QByteArray>("sText");
    QTest::addColumn<double>("dLatitude");
    QTest::addColumn<double>("dLongitude");
    const auto Row = [](const char* sName, const char* sText, double dLatitude, double dLongitude) {
        QTest::newRow(sName) << WithDegreeSign(sText) << dLatitude << dLongitude;
    };
    const double dNorth = 50 + 21.4 / 60;
    const double dWest = -(4 + 8.6 / 60);
    Row("decimal degrees of a map", "50.35, -4.15", 50.35, -4.15);
    Row("without a blank", "50.35,-4.15", 50.35, -4.15);
    Row("blank alone", "50.35 -4.15", 50.35, -4.15);
    Row("several blanks", "50.35   -4.15", 50.35, -4.15);
    Row("two cells of a table", "50.35\t-4.15", 50.35, -4.15);
    Row("two lines", "50d21.40'N\r\n004d08.60'W\r\n", dNorth, dWest);
    Row("as the boxes show them", "50d21.40'N 004d08.60'W", dNorth, dWest);
    Row("letters in front", "N 50 21.4 W 4 8.6", dNorth, dWest);
    Row("letters behind", "50 21.4 N 4 8.6 W", dNorth, dWest);
    Row("comma", "50 21.4 N, 4 8.6 W", dNorth, dWest);
    Row("semicolon", "50 21.4 N; 4 8.6 W", dNorth, dWest);
    Row("seconds", "50d21'24\"N 4d08'36\"W", dNorth, dWest);
    Row("south and east", "33 51.3 S 151 12.6 E", -(33 + 51.3 / 60), 151 + 12.6 / 60);
}

void PositionReadingTest::pairsAreRead() {
    QFETCH(QByteArray, sText);
    QFETCH(double, dLatitude);
    QFETCH(double, dLongitude);
    const auto tRead = ReadPosition(sText.toStdString());
    QVERIFY(tRead.has_value());
    QVERIFY2(Near(tRead->dLatitude, dLatitude), QByteArray::number(tRead->dLatitude, 'g', 17).constData());
    QVERIFY2(Near(tRead->dLongitude, dLongitude), QByteArray::number(tRead->dLongitude, 'g', 17).constData());
}

void PositionReadingTest::otherPairsAreRefused_data() {
    QTest::addColumn<QByteArray>("sText");
    QTest::newRow("one coordinate") << QByteArray("50 21.4 N");
    QTest::newRow("one longitude, its degrees and minutes") << QByteArray("4 8.6 W");
    QTest::newRow("one coordinate of whole numbers") << QByteArray("50 4");
    QTest::newRow("the longitude first") << QByteArray("4 8.6 W 50 21.4 N");
    QTest::newRow("many ways") << QByteArray("50 21 4 8");
    QTest::newRow("three") << QByteArray("50.35, -4.15, 12");
    QTest::newRow("a latitude too far") << QByteArray("90 00.01 N, 4 8.6 W");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("a comma") << QByteArray(",");
}

void PositionReadingTest::otherPairsAreRefused() {
    QFETCH(QByteArray, sText);
    QVERIFY(!ReadPosition(sText.toStdString()));
}

// Every text that the boxes can show of a value, and each of its hemispheres.
void PositionReadingTest::everyHundredthOfAMinuteReadsBack() {
    for (int i = -540000; i <= 540000; i += 7) {
        const double dDegrees = i / 6000.0;
        const auto dLatitude = ReadLatitude(LatitudeToString(dDegrees));
        const auto dLongitude = ReadLongitude(LongitudeToString(2 * dDegrees));
        QVERIFY(dLatitude && *dLatitude == dDegrees);
        QVERIFY(dLongitude && *dLongitude == 2 * dDegrees);
    }
}

void PositionReadingTest::whatIsReadPrintsWithoutSixtyMinutes() {
    for (const char* sText : {"12.999999", "12 59.999", "12 59 59.99", "12.99992"}) {
        const auto dRead = ReadLatitude(sText);
        QVERIFY(dRead.has_value());
        QCOMPARE(QByteArray::fromStdString(LatitudeToString(*dRead)), WithDegreeSign("13d00.00'N"));
    }
}

QTEST_GUILESS_MAIN(PositionReadingTest)
#include "PositionReadingTest.moc"
