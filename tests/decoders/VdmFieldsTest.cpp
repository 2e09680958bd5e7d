// The fields as the user sees them, of messages made by the independent encoder.
#include "decoders/VdmFields.h"

#include <QTest>
#include <cmath>
#include <random>

#include "tests/support/AisEncoder.h"
#include "tests/support/Bytes.h"

using namespace decoders;
using support::AisAngle;
using support::AisBits;
using support::AisReport;
using support::Bytes;

namespace {

constexpr int PositionTypes[] = {1, 2, 3, 4, 18, 19};
constexpr int MotionTypes[] = {1, 2, 3, 18, 19};

AisBits Encode(int iType, const AisReport& tReport) {
    switch (iType) {
        case 1:
        case 2:
        case 3:
            return support::AisClassA(iType, tReport);
        case 4:
            return support::AisBaseStation(iType, tReport);
        case 18:
            return support::AisClassB(tReport);
        case 19:
            return support::AisClassBExtended(tReport, "NAME");
        default:
            return support::AisOther(iType, tReport.lMmsi);
    }
}

VdmValues ValuesOf(const AisBits& sBits) {
    VdmValues lData{};
    VdmUnarmor(support::AisPayload(sBits), lData, 0);
    return lData;
}

VdmValues ValuesOf(int iType, const AisReport& tReport) { return ValuesOf(Encode(iType, tReport)); }

// What "0" and "0.0" make of a value that lies on no half.
QByteArray Fixed(double dValue, int iDecimals) { return QByteArray::number(dValue, 'f', iDecimals); }

}  // namespace

class VdmFieldsTest : public QObject {
    Q_OBJECT

private slots:
    void mmsiIsTheNumber();
    void positionReads_data();
    void positionReads();
    void positionIsSignedOverItsWholeRange();
    void oddLongitudeInTheSouth_data();
    void oddLongitudeInTheSouth();
    void rateOfTurnReads_data();
    void rateOfTurnReads();
    void everyRateOfTurn();
    void speedReads_data();
    void speedReads();
    void everySpeed();
    void reservedBitsMakeASpeedThatIsAvailable();
    void courseReads_data();
    void courseReads();
    void everyCourse();
    void everyHeading();
    void typeWithoutTheFieldSaysErr_data();
    void typeWithoutTheFieldSaysErr();
    void anyCharactersAreDecoded();
};

void VdmFieldsTest::mmsiIsTheNumber() {
    for (const std::uint32_t lMmsi : {0U, 1U, 2442000U, 235098765U, 999999999U, 1073741823U}) {
        for (int iType = 0; iType < 64; ++iType) {
            QCOMPARE(VdmMmsi(ValuesOf(support::AisOther(iType, lMmsi))), static_cast<std::int32_t>(lMmsi));
        }
    }
}

void VdmFieldsTest::positionReads_data() {
    QTest::addColumn<int>("rawLatitude");
    QTest::addColumn<int>("rawLongitude");
    QTest::addColumn<double>("latitude");
    QTest::addColumn<double>("longitude");
    QTest::addColumn<QByteArray>("latitudeText");
    QTest::addColumn<QByteArray>("longitudeText");
    QTest::newRow("north west") << AisAngle(47, 36.5) << AisAngle(122, 20.25, true) << 47 + 36.5 / 60
                                << -(122 + 20.25 / 60)
                                << QByteArray(
                                       "47\xB0"
                                       "36.50'N")
                                << QByteArray(
                                       "122\xB0"
                                       "20.25'W");
    QTest::newRow("south east") << AisAngle(33, 51.5, true) << AisAngle(151, 12.5) << -(33 + 51.5 / 60)
                                << 151 + 12.5 / 60
                                << QByteArray(
                                       "33\xB0"
                                       "51.50'S")
                                << QByteArray(
                                       "151\xB0"
                                       "12.50'E");
    QTest::newRow("small figures") << AisAngle(1, 2.25) << AisAngle(3, 4.75) << 1 + 2.25 / 60 << 3 + 4.75 / 60
                                   << QByteArray(
                                          "01\xB0"
                                          "02.25'N")
                                   << QByteArray(
                                          "003\xB0"
                                          "04.75'E");
    QTest::newRow("zero is north and east") << 0 << 0 << 0.0 << 0.0
                                            << QByteArray(
                                                   "00\xB0"
                                                   "00.00'N")
                                            << QByteArray(
                                                   "000\xB0"
                                                   "00.00'E");
    QTest::newRow("poles and date line") << AisAngle(90, 0) << AisAngle(180, 0) << 90.0 << 180.0
                                         << QByteArray(
                                                "90\xB0"
                                                "00.00'N")
                                         << QByteArray(
                                                "180\xB0"
                                                "00.00'E");
    QTest::newRow("south pole, date line from the east")
        << AisAngle(90, 0, true) << AisAngle(180, 0, true) << -90.0 << -180.0
        << QByteArray(
               "90\xB0"
               "00.00'S")
        << QByteArray(
               "180\xB0"
               "00.00'W");
    QTest::newRow("not available") << 54600000 << 108600000 << -999.0 << -999.0 << QByteArray("n/a")
                                   << QByteArray("n/a");
    QTest::newRow("latitude alone not available") << 54600000 << AisAngle(1, 0) << -999.0 << 1.0 << QByteArray("n/a")
                                                  << QByteArray(
                                                         "001\xB0"
                                                         "00.00'E");
    QTest::newRow("minus 91 and 181 degrees are figures") << -54600000 << -108600000 << -91.0 << -181.0
                                                          << QByteArray(
                                                                 "91\xB0"
                                                                 "00.00'S")
                                                          << QByteArray(
                                                                 "181\xB0"
                                                                 "00.00'W");
}

void VdmFieldsTest::positionReads() {
    QFETCH(int, rawLatitude);
    QFETCH(int, rawLongitude);
    QFETCH(double, latitude);
    QFETCH(double, longitude);
    QFETCH(QByteArray, latitudeText);
    QFETCH(QByteArray, longitudeText);
    AisReport tReport;
    tReport.lLatitude = rawLatitude;
    tReport.lLongitude = rawLongitude;
    for (const int iType : PositionTypes) {
        const VdmValues lData = ValuesOf(iType, tReport);
        double dDegrees = 77;
        std::string sText = "before";
        VdmLatitude(lData, dDegrees, sText);
        QVERIFY(std::fabs(dDegrees - latitude) < 1e-9);
        QCOMPARE(Bytes(sText), latitudeText);
        VdmLongitude(lData, dDegrees, sText);
        QVERIFY(std::fabs(dDegrees - longitude) < 1e-9);
        QCOMPARE(Bytes(sText), longitudeText);
    }
}

void VdmFieldsTest::positionIsSignedOverItsWholeRange() {
    std::mt19937 tRandom(5);
    std::uniform_int_distribution<std::int32_t> Latitude(-67108864, 67108863);
    std::uniform_int_distribution<std::int32_t> Longitude(-134217728, 134217727);
    for (int i = 0; i < 2000; ++i) {
        AisReport tReport;
        tReport.lLatitude = i == 0 ? -67108864 : i == 1 ? 67108863 : i == 2 ? -1 : Latitude(tRandom);
        tReport.lLongitude = i == 0 ? -134217728 : i == 1 ? 134217726 : Longitude(tRandom) & ~1;
        if (tReport.lLatitude == 54600000 || tReport.lLongitude == 108600000) continue;
        for (const int iType : PositionTypes) {
            const VdmValues lData = ValuesOf(iType, tReport);
            double dDegrees = 0;
            std::string sText;
            VdmLatitude(lData, dDegrees, sText);
            QCOMPARE(dDegrees, tReport.lLatitude / 600000.0);
            QCOMPARE(sText.back(), tReport.lLatitude < 0 ? 'S' : 'N');
            VdmLongitude(lData, dDegrees, sText);
            QCOMPARE(dDegrees, tReport.lLongitude / 600000.0);
            QCOMPARE(sText.back(), tReport.lLongitude < 0 ? 'W' : 'E');
            const bool bOnEarth = std::abs(tReport.lLatitude) <= 54000000 && std::abs(tReport.lLongitude) <= 108000000;
            double dLatitude = 0, dLongitude = 0;
            QCOMPARE(VdmPositionDegrees(lData, dLatitude, dLongitude), bOnEarth);
            if (!bOnEarth) continue;
            QCOMPARE(dLatitude, tReport.lLatitude / 600000.0);
            QCOMPARE(dLongitude, tReport.lLongitude / 600000.0);
        }
    }
    double dLatitude = 1, dLongitude = 2;
    QVERIFY(!VdmPositionDegrees(ValuesOf(5, AisReport()), dLatitude, dLongitude));  // a type without position
    QCOMPARE(dLatitude, 1.0);
    QCOMPARE(dLongitude, 2.0);
}

void VdmFieldsTest::oddLongitudeInTheSouth_data() {
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("sent");
    QTest::addColumn<double>("shown");
    for (const int iType : {1, 2, 3, 4}) {
        QTest::addRow("%d east", iType) << iType << 600001 << 600002 / 600000.0;
        QTest::addRow("%d west", iType) << iType << -600001 << -600000 / 600000.0;
        QTest::addRow("%d even", iType) << iType << 600002 << 600002 / 600000.0;
        QTest::addRow("%d becomes not available", iType) << iType << 108599999 << -999.0;
        QTest::addRow("%d becomes Greenwich", iType) << iType << -1 << 0.0;
    }
    for (const int iType : {18, 19}) {
        QTest::addRow("%d east: as sent", iType) << iType << 600001 << 600001 / 600000.0;
        QTest::addRow("%d stays available", iType) << iType << 108599999 << 108599999 / 600000.0;
    }
}

void VdmFieldsTest::oddLongitudeInTheSouth() {
    QFETCH(int, type);
    QFETCH(int, sent);
    QFETCH(double, shown);
    AisReport tReport;
    tReport.lLatitude = -600000;
    tReport.lLongitude = sent;
    double dDegrees = 77;
    std::string sText;
    VdmLongitude(ValuesOf(type, tReport), dDegrees, sText);
    QCOMPARE(dDegrees, shown);
    QCOMPARE(sText == "n/a", shown == -999.0);
    tReport.lLatitude = 600000;  // in the north everything is as sent
    VdmLongitude(ValuesOf(type, tReport), dDegrees, sText);
    QCOMPARE(dDegrees, sent / 600000.0);
}

void VdmFieldsTest::rateOfTurnReads_data() {
    QTest::addColumn<int>("raw");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("0 has no sign") << 0 << QByteArray("0");
    QTest::newRow("1") << 1 << QByteArray("+0.0");
    QTest::newRow("-1") << -1 << QByteArray("-0.0");
    QTest::newRow("10") << 10 << QByteArray("+4.5");  // 4.464
    QTest::newRow("-10") << -10 << QByteArray("-4.5");
    QTest::newRow("14, below 10 degrees") << 14 << QByteArray("+8.7");  // 8.750 less a hair
    QTest::newRow("15, from 10 degrees on whole") << 15 << QByteArray("+10");
    QTest::newRow("-15") << -15 << QByteArray("-10");
    QTest::newRow("126") << 126 << QByteArray("+709");
    QTest::newRow("-126") << -126 << QByteArray("-709");
    QTest::newRow("127") << 127 << QByteArray("R>720");
    QTest::newRow("-127") << -127 << QByteArray("L>720");
    QTest::newRow("-128") << -128 << QByteArray("n/a");
}

void VdmFieldsTest::rateOfTurnReads() {
    QFETCH(int, raw);
    QFETCH(QByteArray, text);
    AisReport tReport;
    tReport.lRateOfTurn = raw;
    for (const int iType : {1, 2, 3}) QCOMPARE(Bytes(VdmRateOfTurn(ValuesOf(iType, tReport))), text);
}

void VdmFieldsTest::everyRateOfTurn() {
    for (int iRaw = -126; iRaw <= 126; ++iRaw) {
        if (iRaw == 0) continue;
        AisReport tReport;
        tReport.lRateOfTurn = iRaw;
        const double dRate = std::pow(iRaw / 4.733, 2);
        const QByteArray sExpected = (iRaw > 0 ? "+" : "-") + Fixed(dRate, dRate >= 10 ? 0 : 1);
        QCOMPARE(Bytes(VdmRateOfTurn(ValuesOf(1, tReport))), sExpected);
    }
}

void VdmFieldsTest::speedReads_data() {
    QTest::addColumn<uint>("raw");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("at rest") << 0U << QByteArray("0.0");
    QTest::newRow("slowest") << 1U << QByteArray("0.1");
    QTest::newRow("below ten") << 99U << QByteArray("9.9");
    QTest::newRow("12.1") << 121U << QByteArray("12.1");
    QTest::newRow("102.2") << 1022U << QByteArray("102.2");
    QTest::newRow("not available") << 1023U << QByteArray("n/a");
}

void VdmFieldsTest::speedReads() {
    QFETCH(uint, raw);
    QFETCH(QByteArray, text);
    AisReport tReport;
    tReport.lSpeed = raw;
    for (const int iType : MotionTypes) QCOMPARE(Bytes(VdmSpeed(ValuesOf(iType, tReport))), text);
}

void VdmFieldsTest::everySpeed() {
    for (std::uint32_t lRaw = 0; lRaw < 1023; ++lRaw) {
        AisReport tReport;
        tReport.lSpeed = lRaw;
        for (const int iType : {1, 18}) QCOMPARE(Bytes(VdmSpeed(ValuesOf(iType, tReport))), Fixed(lRaw / 10.0, 1));
    }
}

void VdmFieldsTest::reservedBitsMakeASpeedThatIsAvailable() {
    AisReport tReport;
    tReport.lSpeed = 1023;
    tReport.lReserved = 1;
    QCOMPARE(Bytes(VdmSpeed(ValuesOf(18, tReport))), QByteArray("204.7"));  // 1024 + 1023
    tReport.lReserved = 3;
    QCOMPARE(Bytes(VdmSpeed(ValuesOf(19, tReport))), QByteArray("409.5"));  // 3072 + 1023
    tReport.lSpeed = 121;
    QCOMPARE(Bytes(VdmSpeed(ValuesOf(18, tReport))), QByteArray("319.3"));
}

void VdmFieldsTest::courseReads_data() {
    QTest::addColumn<uint>("raw");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("north") << 0U << QByteArray("0.0");
    QTest::newRow("224.5") << 2245U << QByteArray("224.5");
    QTest::newRow("last") << 3599U << QByteArray("359.9");
    QTest::newRow("not available") << 3600U << QByteArray("n/a");
    QTest::newRow("above: lower case") << 3601U << QByteArray("err");
    QTest::newRow("all bits set") << 4095U << QByteArray("err");
}

void VdmFieldsTest::courseReads() {
    QFETCH(uint, raw);
    QFETCH(QByteArray, text);
    AisReport tReport;
    tReport.lCourse = raw;
    for (const int iType : MotionTypes) QCOMPARE(Bytes(VdmCourse(ValuesOf(iType, tReport))), text);
}

void VdmFieldsTest::everyCourse() {
    for (std::uint32_t lRaw = 0; lRaw < 3600; ++lRaw) {
        AisReport tReport;
        tReport.lCourse = lRaw;
        for (const int iType : {1, 18}) QCOMPARE(Bytes(VdmCourse(ValuesOf(iType, tReport))), Fixed(lRaw / 10.0, 1));
    }
}

void VdmFieldsTest::everyHeading() {
    for (std::uint32_t lRaw = 0; lRaw < 512; ++lRaw) {
        AisReport tReport;
        tReport.lHeading = lRaw;
        const QByteArray sExpected = lRaw == 511 ? QByteArray("n/a") : QByteArray::number(lRaw);
        for (const int iType : MotionTypes) QCOMPARE(Bytes(VdmHeading(ValuesOf(iType, tReport))), sExpected);
    }
}

void VdmFieldsTest::typeWithoutTheFieldSaysErr_data() {
    QTest::addColumn<int>("type");
    for (int iType = 0; iType < 64; ++iType) QTest::addRow("type %d", iType) << iType;
    QTest::newRow("below the alphabet") << -48;
    QTest::newRow("beyond the alphabet") << 199;
}

void VdmFieldsTest::typeWithoutTheFieldSaysErr() {
    QFETCH(int, type);
    const bool bClassA = type >= 1 && type <= 3;
    const bool bClassB = type == 18 || type == 19;
    VdmValues lData{};
    lData[1] = type;
    QCOMPARE(Bytes(VdmRateOfTurn(lData)), QByteArray(bClassA ? "0" : "Err"));
    QCOMPARE(Bytes(VdmSpeed(lData)), QByteArray(bClassA || bClassB ? "0.0" : "Err"));
    QCOMPARE(Bytes(VdmCourse(lData)), QByteArray(bClassA || bClassB ? "0.0" : "Err"));
    QCOMPARE(Bytes(VdmHeading(lData)), QByteArray(bClassA || bClassB ? "0" : "Err"));
    const bool bPosition = bClassA || bClassB || type == 4;
    double dDegrees = 77;
    std::string sText = "before";
    VdmLatitude(lData, dDegrees, sText);
    QCOMPARE(dDegrees, bPosition ? 0.0 : -999.0);
    QCOMPARE(Bytes(sText), bPosition ? QByteArray("00\xB0"
                                                  "00.00'N")
                                     : QByteArray());
    dDegrees = 77;
    sText = "before";
    VdmLongitude(lData, dDegrees, sText);
    QCOMPARE(dDegrees, bPosition ? 0.0 : -999.0);
    QCOMPARE(Bytes(sText), bPosition ? QByteArray("000\xB0"
                                                  "00.00'E")
                                     : QByteArray());
}

// Payloads that no encoder makes, the lowest and highest bytes among them: every field still has a text.
void VdmFieldsTest::anyCharactersAreDecoded() {
    std::mt19937 tRandom(6);
    for (int i = 0; i < 3000; ++i) {
        std::string sPayload;
        for (int k = 0; k < 30; ++k) {
            sPayload += static_cast<char>(i < 6 ? 0 : i < 12 ? 255 : tRandom() & 0xFF);
        }
        VdmValues lData{};
        VdmUnarmor(sPayload, lData, 0);
        lData[1] = PositionTypes[static_cast<std::size_t>(i) % std::size(PositionTypes)];
        double dDegrees = 0;
        std::string sText;
        VdmLatitude(lData, dDegrees, sText);
        QVERIFY(!sText.empty() && std::isfinite(dDegrees));
        VdmLongitude(lData, dDegrees, sText);
        QVERIFY(!sText.empty() && std::isfinite(dDegrees));
        QVERIFY(!VdmRateOfTurn(lData).empty());
        QVERIFY(!VdmSpeed(lData).empty());
        QVERIFY(!VdmCourse(lData).empty());
        QVERIFY(!VdmHeading(lData).empty());
    }
    // NUL is -48: its low four bits are 0, so the class A speed is -48 tenths.
    VdmValues lLow{};
    VdmUnarmor(std::string(30, '\0'), lLow, 0);
    lLow[1] = 1;
    QCOMPARE(Bytes(VdmSpeed(lLow)), QByteArray("-4.8"));
    // 4 * -48 and the bits 16 of -48: raw -191, (191 / 4.733)^2 is 1628.5 and a little.
    QCOMPARE(Bytes(VdmRateOfTurn(lLow)), "-" + Fixed(std::pow(191 / 4.733, 2), 0));
}

QTEST_GUILESS_MAIN(VdmFieldsTest)
#include "VdmFieldsTest.moc"
