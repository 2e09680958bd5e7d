// Positions as text and back, with the examples that users know by heart and every odd form that parses.
#include "nav/PositionText.h"

#include <QByteArray>
#include <QTest>
#include <cmath>
#include <string>

using namespace nav;

namespace {

// A table's text, with "d" in place of the degree sign.
QByteArray WithDegreeSign(const char* sText) { return QByteArray(sText).replace('d', '\xB0'); }

bool Near(double dA, double dB) { return std::fabs(dA - dB) < 1e-12; }

}  // namespace

class PositionTextTest : public QObject {
    Q_OBJECT

private slots:
    void latitudesAreWritten_data();
    void latitudesAreWritten();
    void longitudesAreWritten_data();
    void longitudesAreWritten();
    void latitudesAreRead_data();
    void latitudesAreRead();
    void otherTextsAreNoLatitude_data();
    void otherTextsAreNoLatitude();
    void longitudesAreRead_data();
    void longitudesAreRead();
    void otherTextsAreNoLongitude_data();
    void otherTextsAreNoLongitude();
    void everyHundredthOfAMinuteReadsBack();
    void unknownIsMinusNineHundredNinetyNine();
};

void PositionTextTest::latitudesAreWritten_data() {
    QTest::addColumn<double>("dDegrees");
    QTest::addColumn<QByteArray>("sText");
    const auto Row = [](const char* sName, double dDegrees, const char* sText) {
        QTest::newRow(sName) << dDegrees << WithDegreeSign(sText);
    };
    Row("example", 47.6083, "47d36.50'N");
    Row("padded degrees", 5.0, "05d00.00'N");
    Row("zero is north", 0, "00d00.00'N");
    Row("negative zero is north", -0.0, "00d00.00'N");
    Row("south", -0.5, "00d30.00'S");
    Row("a hair south", -0.0000001, "00d00.00'S");
    Row("minutes reach sixty, no carry", 12.999999, "12d60.00'N");
    Row("minutes reach sixty, south", -12.999999, "12d60.00'S");
    Row("pole", 90, "90d00.00'N");
    Row("not available in the message", 91, "91d00.00'N");
    Row("beyond the field", 100, "100d00.00'N");
    Row("unknown", PositionUnknown, "999d00.00'S");
    Row("minute padded", 1.0 + 1.5 / 60, "01d01.50'N");
}

void PositionTextTest::latitudesAreWritten() {
    QFETCH(double, dDegrees);
    QFETCH(QByteArray, sText);
    QCOMPARE(QByteArray::fromStdString(LatitudeToString(dDegrees)), sText);
}

void PositionTextTest::longitudesAreWritten_data() {
    QTest::addColumn<double>("dDegrees");
    QTest::addColumn<QByteArray>("sText");
    const auto Row = [](const char* sName, double dDegrees, const char* sText) {
        QTest::newRow(sName) << dDegrees << WithDegreeSign(sText);
    };
    Row("example", -122.3366, "122d20.20'W");
    Row("zero is east", 0, "000d00.00'E");
    Row("padded degrees", 5.5, "005d30.00'E");
    Row("west", -0.25, "000d15.00'W");
    Row("date line", 180, "180d00.00'E");
    Row("minutes reach sixty, no carry", 179.999999, "179d60.00'E");
    Row("beyond the field", 1234.5, "1234d30.00'E");
}

void PositionTextTest::longitudesAreWritten() {
    QFETCH(double, dDegrees);
    QFETCH(QByteArray, sText);
    QCOMPARE(QByteArray::fromStdString(LongitudeToString(dDegrees)), sText);
}

void PositionTextTest::latitudesAreRead_data() {
    QTest::addColumn<QByteArray>("sText");
    QTest::addColumn<double>("dDegrees");
    const auto Row = [](const char* sName, const char* sText, double dDegrees) {
        QTest::newRow(sName) << WithDegreeSign(sText) << dDegrees;
    };
    Row("example", "47d36.50'N", 47 + 36.5 / 60);
    Row("entry form", "47 36.50 N", 47 + 36.5 / 60);
    Row("south", "12d30.00'S", -12.5);
    Row("south, entry form", "12 30.00 S", -12.5);
    Row("small s is not south", "12 30.00 s", 12.5);
    Row("s with a blank behind is not south", "12 30.00 S ", 12.5);
    Row("s with a blank in front is not south", "12 30.00  S", 12.5);
    Row("South is not S", "12 30.00 South", 12.5);
    Row("nothing behind", "12 30.00 ", 12.5);
    Row("nothing behind the mark", "12d30.00'", 12.5);
    Row("any other rest", "12 30.00 what", 12.5);
    Row("the longitude's letter does nothing", "12 30.00 W", 12.5);
    Row("degree sign, then blank", "12d30.00 S", -12.5);
    Row("blank, then mark", "12 30.00'S", -12.5);
    Row("minus stays and minutes are added", "-47 30.00 N", -46.5);
    Row("minus and south", "-47 30.00 S", 46.5);
    Row("plus", "+47 30.00 N", 47.5);
    Row("first degree sign, even behind a blank", "12 d30.00'S", -12.5);
    Row("blanks around the degrees", " 12 d30.00'N", 12.5);
    Row("blanks around the minutes", "12d 30.00 'N", 12.5);
    Row("mark wins over an earlier blank", "12  30.00'N", 12.5);
    Row("decimal degrees", "12.5d30'N", 13.0);
    Row("minutes beyond sixty", "12d90.00'N", 13.5);
    Row("negative minutes", "12d-30.00'N", 11.5);
    Row("no field width", "1d3'S", -1.05);
    Row("exponent", "1e1 0 N", 10.0);
    Row("second degree sign in the rest", "12d30.00'dS", 12.5);
}

void PositionTextTest::latitudesAreRead() {
    QFETCH(QByteArray, sText);
    QFETCH(double, dDegrees);
    const auto dRead = ParseLatitude(sText.toStdString());
    QVERIFY(dRead.has_value());
    QVERIFY2(Near(*dRead, dDegrees), QByteArray::number(*dRead, 'g', 17).constData());
}

void PositionTextTest::otherTextsAreNoLatitude_data() {
    QTest::addColumn<QByteArray>("sText");
    const auto Row = [](const char* sName, const char* sText) { QTest::newRow(sName) << WithDegreeSign(sText); };
    Row("no separator", "1230.00S");
    Row("empty", "");
    Row("one blank", " ");
    Row("no minute end", "12 30.00N");
    Row("no minute end behind the degree sign", "12d30.00");
    Row("degree sign alone", "d");
    Row("no degrees", "d30.00'N");
    Row("leading blank makes the degrees empty", " 12 30.00 N");
    Row("blank degrees", "  d30.00'N");
    Row("no minutes", "12d'N");
    Row("two blanks make the minutes empty", "12  30.00 N");
    Row("degrees no number", "xx 30.00 N");
    Row("minutes no number", "12 xx.xx N");
    Row("comma", "12 30,00 N");
    Row("digits and letters", "12x 30.00 N");
    Row("nan", "nan 30.00 N");
    Row("inf", "12 inf N");
    Row("too large", "1e400 30.00 N");
    Row("second degree sign in the minutes", "12d30d00'N");
    Row("the mark before the degree sign", "12'30.00dN");
    Row("entry mask", "__ __.__ N");
}

void PositionTextTest::otherTextsAreNoLatitude() {
    QFETCH(QByteArray, sText);
    QVERIFY(!ParseLatitude(sText.toStdString()));
}

void PositionTextTest::longitudesAreRead_data() {
    QTest::addColumn<QByteArray>("sText");
    QTest::addColumn<double>("dDegrees");
    const auto Row = [](const char* sName, const char* sText, double dDegrees) {
        QTest::newRow(sName) << WithDegreeSign(sText) << dDegrees;
    };
    Row("example", "122d20.20'W", -(122 + 20.2 / 60));
    Row("entry form", "122 20.20 W", -(122 + 20.2 / 60));
    Row("first text of the box", "000 00.00 W", 0);
    Row("east", "005d30.00'E", 5.5);
    Row("small w is not west", "122 30.00 w", 122.5);
    Row("the latitude's letter does nothing", "122 30.00 S", 122.5);
    Row("minus and west", "-122 30.00 W", 121.5);
}

void PositionTextTest::longitudesAreRead() {
    QFETCH(QByteArray, sText);
    QFETCH(double, dDegrees);
    const auto dRead = ParseLongitude(sText.toStdString());
    QVERIFY(dRead.has_value());
    QVERIFY2(Near(*dRead, dDegrees), QByteArray::number(*dRead, 'g', 17).constData());
}

void PositionTextTest::otherTextsAreNoLongitude_data() {
    QTest::addColumn<QByteArray>("sText");
    QTest::newRow("no separator") << QByteArray("12220.20W");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no minute end") << QByteArray("122 20.20W");
    QTest::newRow("leading blank") << QByteArray(" 122 20.20 W");
    QTest::newRow("no number") << QByteArray("12x 20.20 W");
}

void PositionTextTest::otherTextsAreNoLongitude() {
    QFETCH(QByteArray, sText);
    QVERIFY(!ParseLongitude(sText.toStdString()));
}

void PositionTextTest::everyHundredthOfAMinuteReadsBack() {
    for (int i = -5400; i <= 5400; i += 7) {
        for (const int iHundredths : {0, 1, 33, 50, 99}) {
            const double dMinutes = std::abs(i) + iHundredths / 100.0;
            const double dDegrees = (i < 0 ? -dMinutes : dMinutes) / 60;
            const auto dLatitude = ParseLatitude(LatitudeToString(dDegrees));
            const auto dLongitude = ParseLongitude(LongitudeToString(2 * dDegrees));
            QVERIFY(dLatitude && std::fabs(*dLatitude - dDegrees) < 1e-9);
            QVERIFY(dLongitude && std::fabs(*dLongitude - 2 * dDegrees) < 1e-9);
        }
    }
}

void PositionTextTest::unknownIsMinusNineHundredNinetyNine() { QCOMPARE(PositionUnknown, -999.0); }

QTEST_GUILESS_MAIN(PositionTextTest)
#include "PositionTextTest.moc"
