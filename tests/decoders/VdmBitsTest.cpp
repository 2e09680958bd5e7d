// The raw fields against bits taken from the encoder's bit string, and against the sums in double precision.
#include "decoders/VdmBits.h"

#include <QTest>
#include <cmath>
#include <random>
#include <vector>

#include "tests/support/AisEncoder.h"

using namespace decoders;
using support::AisBits;
using support::AisReport;
using support::AisUnsigned;

namespace {

VdmValues ValuesOf(const AisBits& sBits) {
    VdmValues lData{};
    VdmUnarmor(support::AisPayload(sBits), lData, 0);
    return lData;
}

// A sum as the standard's bit numbers give it, worked out term by term in double precision.
struct Piece {
    std::size_t iCharacter;
    std::int32_t lMask;
    double dFactor;
};
constexpr std::int32_t Whole = ~0;

std::int32_t DoubleSum(const VdmValues& lData, const std::vector<Piece>& tPieces) {
    double dSum = 0;
    for (const Piece& t : tPieces) dSum += (lData[t.iCharacter] & t.lMask) * t.dFactor;
    return static_cast<std::int32_t>(std::nearbyint(dSum));  // half to even
}

// Any report, drawn at random over the whole width of each field.
AisReport AnyReport(std::mt19937& tRandom) {
    const auto Draw = [&](std::int64_t lFrom, std::int64_t lTo) {
        return std::uniform_int_distribution<std::int64_t>(lFrom, lTo)(tRandom);
    };
    AisReport t;
    t.lMmsi = static_cast<std::uint32_t>(Draw(0, 0x3FFFFFFF));
    t.lRateOfTurn = static_cast<std::int32_t>(Draw(-128, 127));
    t.lSpeed = static_cast<std::uint32_t>(Draw(0, 1023));
    t.lLongitude = static_cast<std::int32_t>(Draw(-134217728, 134217727));
    t.lLatitude = static_cast<std::int32_t>(Draw(-67108864, 67108863));
    t.lCourse = static_cast<std::uint32_t>(Draw(0, 4095));
    t.lHeading = static_cast<std::uint32_t>(Draw(0, 511));
    t.lSecond = static_cast<std::uint32_t>(Draw(0, 63));
    t.lReserved = static_cast<std::uint32_t>(Draw(0, 255));
    return t;
}

// What a longitude becomes when the bit behind it adds one half.
std::int32_t WithHalf(std::uint32_t lLongitude, bool bSouth) {
    const bool bOdd = lLongitude % 2 == 1;
    return static_cast<std::int32_t>(lLongitude + (bSouth && bOdd ? 1 : 0));
}

}  // namespace

class VdmBitsTest : public QObject {
    Q_OBJECT

private slots:
    void layoutFollowsFromTheMessageId();
    void workedExample();
    void classABitsStandWhereTheStandardPutsThem();
    void baseStationBitsStandWhereTheStandardPutsThem();
    void classBBitsStandWhereTheStandardPutsThem();
    void mmsiIsReadFromEveryType();
    void oddLongitudeRoundsUpInTheSouth_data();
    void oddLongitudeRoundsUpInTheSouth();
    void reservedBitsReachTheClassBSpeed_data();
    void reservedBitsReachTheClassBSpeed();
    void anyCharactersGiveTheSumInDoublePrecision();
    void fieldThatALayoutLacksIsZero();
};

void VdmBitsTest::layoutFollowsFromTheMessageId() {
    for (int iId = -48; iId < 200; ++iId) {
        VdmLayout eExpected = VdmLayout::None;
        if (iId == 1 || iId == 2 || iId == 3) eExpected = VdmLayout::ClassA;
        if (iId == 4) eExpected = VdmLayout::Base;
        if (iId == 18 || iId == 19) eExpected = VdmLayout::ClassB;
        QCOMPARE(LayoutOf(iId), eExpected);
    }
}

// The sentence that the headers explain.
void VdmBitsTest::workedExample() {
    VdmValues lData{};
    VdmUnarmor("13P=BS@3iqo?vspK?N28iFvt0000", lData, 0);
    QCOMPARE(lData[1], 1);
    QCOMPARE(RawMmsi(lData), 235098765);
    QCOMPARE(RawRateOfTurn(lData), 15);
    QCOMPARE(RawSpeed(lData, VdmLayout::ClassA), 121);
    QCOMPARE(RawLongitude(lData, VdmLayout::ClassA), 195032956);
    QCOMPARE(RawLatitude(lData, VdmLayout::ClassA), 28565000);  // 47 * 600000 + 36.5 * 10000
    QCOMPARE(RawCourse(lData, VdmLayout::ClassA), 2245);
    QCOMPARE(RawHeading(lData, VdmLayout::ClassA), 223);
}

void VdmBitsTest::classABitsStandWhereTheStandardPutsThem() {
    std::mt19937 tRandom(1);
    for (int i = 0; i < 3000; ++i) {
        const AisBits sBits = support::AisClassA(1 + i % 3, AnyReport(tRandom));
        const VdmValues lData = ValuesOf(sBits);
        const VdmLayout eLayout = LayoutOf(lData[1]);
        QCOMPARE(static_cast<std::uint32_t>(RawMmsi(lData)), AisUnsigned(sBits, 8, 37));
        QCOMPARE(static_cast<std::uint32_t>(RawRateOfTurn(lData)), AisUnsigned(sBits, 42, 49));
        QCOMPARE(static_cast<std::uint32_t>(RawSpeed(lData, eLayout)), AisUnsigned(sBits, 50, 59));
        QCOMPARE(RawLongitude(lData, eLayout), WithHalf(AisUnsigned(sBits, 61, 88), sBits[89] == '1'));
        QCOMPARE(static_cast<std::uint32_t>(RawLatitude(lData, eLayout)), AisUnsigned(sBits, 89, 115));
        QCOMPARE(static_cast<std::uint32_t>(RawCourse(lData, eLayout)), AisUnsigned(sBits, 116, 127));
        QCOMPARE(static_cast<std::uint32_t>(RawHeading(lData, eLayout)), AisUnsigned(sBits, 128, 136));
    }
}

void VdmBitsTest::baseStationBitsStandWhereTheStandardPutsThem() {
    std::mt19937 tRandom(2);
    for (int i = 0; i < 3000; ++i) {
        const AisBits sBits = support::AisBaseStation(4, AnyReport(tRandom));
        const VdmValues lData = ValuesOf(sBits);
        QCOMPARE(static_cast<std::uint32_t>(RawMmsi(lData)), AisUnsigned(sBits, 8, 37));
        QCOMPARE(RawLongitude(lData, VdmLayout::Base), WithHalf(AisUnsigned(sBits, 79, 106), sBits[107] == '1'));
        QCOMPARE(static_cast<std::uint32_t>(RawLatitude(lData, VdmLayout::Base)), AisUnsigned(sBits, 107, 133));
    }
}

void VdmBitsTest::classBBitsStandWhereTheStandardPutsThem() {
    std::mt19937 tRandom(3);
    for (int i = 0; i < 3000; ++i) {
        const AisReport tReport = AnyReport(tRandom);
        const AisBits sBits = i % 2 == 0 ? support::AisClassB(tReport) : support::AisClassBExtended(tReport, "NAME");
        const VdmValues lData = ValuesOf(sBits);
        const VdmLayout eLayout = LayoutOf(lData[1]);
        QCOMPARE(eLayout, VdmLayout::ClassB);
        QCOMPARE(static_cast<std::uint32_t>(RawMmsi(lData)), AisUnsigned(sBits, 8, 37));
        QCOMPARE(static_cast<std::uint32_t>(RawSpeed(lData, eLayout)), AisUnsigned(sBits, 44, 55));
        QCOMPARE(static_cast<std::uint32_t>(RawLongitude(lData, eLayout)), AisUnsigned(sBits, 57, 84));
        QCOMPARE(static_cast<std::uint32_t>(RawLatitude(lData, eLayout)), AisUnsigned(sBits, 85, 111));
        QCOMPARE(static_cast<std::uint32_t>(RawCourse(lData, eLayout)), AisUnsigned(sBits, 112, 123));
        QCOMPARE(static_cast<std::uint32_t>(RawHeading(lData, eLayout)), AisUnsigned(sBits, 124, 132));
    }
}

void VdmBitsTest::mmsiIsReadFromEveryType() {
    for (int iType = 0; iType < 64; ++iType) {
        const VdmValues lData = ValuesOf(support::AisOther(iType, 987654321));
        QCOMPARE(lData[1], iType);
        QCOMPARE(RawMmsi(lData), 987654321);
    }
    QCOMPARE(RawMmsi(ValuesOf(support::AisOther(9, 0))), 0);
    QCOMPARE(RawMmsi(ValuesOf(support::AisOther(9, 0x3FFFFFFF))), 0x3FFFFFFF);
}

void VdmBitsTest::oddLongitudeRoundsUpInTheSouth_data() {
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("longitude");
    QTest::addColumn<int>("latitude");
    QTest::addColumn<int>("raw");
    constexpr int Turn = 1 << 28;  // negative longitudes are this much above
    for (const int iType : {1, 2, 3, 4}) {
        QTest::addRow("%d odd, south", iType) << iType << 73402501 << -1 << 73402502;
        QTest::addRow("%d odd, north", iType) << iType << 73402501 << 1 << 73402501;
        QTest::addRow("%d odd, equator", iType) << iType << 73402501 << 0 << 73402501;
        QTest::addRow("%d even, south", iType) << iType << 73402502 << -1 << 73402502;
        QTest::addRow("%d west, odd, south", iType) << iType << -73402501 << -1 << Turn - 73402500;
        QTest::addRow("%d west, even, south", iType) << iType << -73402502 << -1 << Turn - 73402502;
        QTest::addRow("%d last before not available", iType) << iType << 108599999 << -1 << 108600000;
        QTest::addRow("%d a hair west of Greenwich", iType) << iType << -1 << -1 << Turn;
    }
    for (const int iType : {18, 19}) {
        QTest::addRow("%d odd, south: as sent", iType) << iType << 73402501 << -1 << 73402501;
        QTest::addRow("%d west, odd, south: as sent", iType) << iType << -73402501 << -1 << Turn - 73402501;
        QTest::addRow("%d last before not available", iType) << iType << 108599999 << -1 << 108599999;
    }
}

void VdmBitsTest::oddLongitudeRoundsUpInTheSouth() {
    QFETCH(int, type);
    QFETCH(int, longitude);
    QFETCH(int, latitude);
    QFETCH(int, raw);
    AisReport tReport;
    tReport.lLongitude = longitude;
    tReport.lLatitude = latitude;
    AisBits sBits = support::AisClassA(type, tReport);
    if (type == 4) sBits = support::AisBaseStation(type, tReport);
    if (type == 18) sBits = support::AisClassB(tReport);
    if (type == 19) sBits = support::AisClassBExtended(tReport, "NAME");
    QCOMPARE(RawLongitude(ValuesOf(sBits), LayoutOf(type)), raw);
}

void VdmBitsTest::reservedBitsReachTheClassBSpeed_data() {
    QTest::addColumn<uint>("reserved");
    QTest::addColumn<int>("speed");  // 121 sent
    QTest::newRow("none set") << 0U << 121;
    QTest::newRow("bit 45") << 1U << 121 + 1024;
    QTest::newRow("bit 44") << 2U << 121 + 2048;
    QTest::newRow("both") << 3U << 121 + 3072;
    QTest::newRow("bits 38 to 43 do not count") << 0xFCU << 121;
}

void VdmBitsTest::reservedBitsReachTheClassBSpeed() {
    QFETCH(uint, reserved);
    QFETCH(int, speed);
    AisReport tReport;
    tReport.lSpeed = 121;
    tReport.lReserved = reserved;
    QCOMPARE(RawSpeed(ValuesOf(support::AisClassB(tReport)), VdmLayout::ClassB), speed);
    QCOMPARE(RawSpeed(ValuesOf(support::AisClassBExtended(tReport, "NAME")), VdmLayout::ClassB), speed);
}

void VdmBitsTest::anyCharactersGiveTheSumInDoublePrecision() {
    const auto Two = [](int iPower) { return std::ldexp(1.0, iPower); };
    std::mt19937 tRandom(4);
    for (int i = 0; i < 5000; ++i) {
        std::string sPayload;
        for (int k = 0; k < 30; ++k) {
            // Whole rows of the lowest and the highest byte now and then, any byte otherwise.
            sPayload += static_cast<char>(i == 0 ? 0 : i == 1 ? 255 : i == 2 ? 95 : tRandom() & 0xFF);
        }
        VdmValues l{};
        VdmUnarmor(sPayload, l, 0);
        const auto A = VdmLayout::ClassA;
        const auto Base = VdmLayout::Base;
        const auto B = VdmLayout::ClassB;
        QCOMPARE(RawMmsi(l), DoubleSum(l, {{2, 15, Two(26)},
                                           {3, Whole, Two(20)},
                                           {4, Whole, Two(14)},
                                           {5, Whole, Two(8)},
                                           {6, Whole, 4},
                                           {7, 48, 1.0 / 16}}));
        QCOMPARE(RawRateOfTurn(l), DoubleSum(l, {{8, Whole, 4}, {9, 48, 1.0 / 16}}));
        QCOMPARE(RawSpeed(l, A), DoubleSum(l, {{9, 15, 64}, {10, Whole, 1}}));
        QCOMPARE(RawSpeed(l, B), DoubleSum(l, {{8, 15, Two(8)}, {9, Whole, 4}, {10, 48, 1.0 / 16}}));
        QCOMPARE(
            RawLongitude(l, A),
            DoubleSum(
                l,
                {{11, 31, Two(23)}, {12, Whole, Two(17)}, {13, Whole, Two(11)}, {14, Whole, Two(5)}, {15, 63, 0.5}}));
        QCOMPARE(
            RawLongitude(l, Base),
            DoubleSum(
                l,
                {{14, 31, Two(23)}, {15, Whole, Two(17)}, {16, Whole, Two(11)}, {17, Whole, Two(5)}, {18, 63, 0.5}}));
        QCOMPARE(RawLongitude(l, B), DoubleSum(l, {{10, 7, Two(25)},
                                                   {11, Whole, Two(19)},
                                                   {12, Whole, Two(13)},
                                                   {13, Whole, Two(7)},
                                                   {14, Whole, 2},
                                                   {15, 32, 1.0 / 32}}));
        QCOMPARE(RawLatitude(l, A), DoubleSum(l, {{15, 1, Two(26)},
                                                  {16, Whole, Two(20)},
                                                  {17, Whole, Two(14)},
                                                  {18, Whole, Two(8)},
                                                  {19, Whole, 4},
                                                  {20, 48, 1.0 / 16}}));
        QCOMPARE(RawLatitude(l, Base), DoubleSum(l, {{18, 1, Two(26)},
                                                     {19, Whole, Two(20)},
                                                     {20, Whole, Two(14)},
                                                     {21, Whole, Two(8)},
                                                     {22, Whole, 4},
                                                     {23, 48, 1.0 / 16}}));
        QCOMPARE(
            RawLatitude(l, B),
            DoubleSum(
                l,
                {{15, 31, Two(22)}, {16, Whole, Two(16)}, {17, Whole, Two(10)}, {18, Whole, Two(4)}, {19, 60, 0.25}}));
        QCOMPARE(RawCourse(l, A), DoubleSum(l, {{20, 15, Two(8)}, {21, Whole, 4}, {22, 48, 1.0 / 16}}));
        QCOMPARE(RawCourse(l, B), DoubleSum(l, {{19, 3, Two(10)}, {20, Whole, Two(4)}, {21, 60, 0.25}}));
        QCOMPARE(RawHeading(l, A), DoubleSum(l, {{22, 15, 32}, {23, 62, 0.5}}));
        QCOMPARE(RawHeading(l, B), DoubleSum(l, {{21, 3, Two(7)}, {22, Whole, 2}, {23, 32, 1.0 / 32}}));
    }
}

void VdmBitsTest::fieldThatALayoutLacksIsZero() {
    VdmValues lData;
    lData.fill(63);
    QCOMPARE(RawSpeed(lData, VdmLayout::Base), 0);
    QCOMPARE(RawCourse(lData, VdmLayout::Base), 0);
    QCOMPARE(RawHeading(lData, VdmLayout::Base), 0);
    QCOMPARE(RawSpeed(lData, VdmLayout::None), 0);
    QCOMPARE(RawLongitude(lData, VdmLayout::None), 0);
    QCOMPARE(RawLatitude(lData, VdmLayout::None), 0);
    QCOMPARE(RawCourse(lData, VdmLayout::None), 0);
    QCOMPARE(RawHeading(lData, VdmLayout::None), 0);
}

QTEST_GUILESS_MAIN(VdmBitsTest)
#include "VdmBitsTest.moc"
