// What a receiver of the simulator's messages finds in them, read bit by bit at the places that the standard gives.
#include "tools/AisEncoding.h"

#include <QTest>

#include "SentenceReader.h"

using namespace simulator;

class AisEncodingTest : public QObject {
    Q_OBJECT

private slots:
    void sixBitsBecomeOneCharacter_data();
    void sixBitsBecomeOneCharacter();
    void unevenBitsAreFilledWithZeros();
    void negativeNumbersAreTwosComplement();
    void textIsCutFilledAndCapital();
    void everyTypeHasItsLength_data();
    void everyTypeHasItsLength();
    void positionReportHasItsFields();
    void missingValuesHaveTheirFigures();
    void baseReportTellsPlaceAndTime();
    void staticDataNamesTheShip();
    void classBReportHasItsFields();
    void extendedClassBNamesTheBoat();
    void aidTellsNameAndPlace();
    void classBDataComesInTwoParts();
    void turnFigureIsScaledRoot_data();
    void turnFigureIsScaledRoot();
    void shortPayloadNeedsOneSentence();
    void longPayloadNeedsTwoSentences();
};

void AisEncodingTest::sixBitsBecomeOneCharacter_data() {
    QTest::addColumn<int>("iValue");
    QTest::addColumn<char>("sCharacter");
    QTest::newRow("0") << 0 << '0';
    QTest::newRow("1") << 1 << '1';
    QTest::newRow("39") << 39 << 'W';
    QTest::newRow("40") << 40 << '`';
    QTest::newRow("63") << 63 << 'w';
}

void AisEncodingTest::sixBitsBecomeOneCharacter() {
    QFETCH(int, iValue);
    QFETCH(char, sCharacter);
    BitWriter tBits;
    tBits.Unsigned(static_cast<std::uint64_t>(iValue), 6);
    tBits.Finish();
    QCOMPARE(std::string(tBits.Payload()), std::string(1, sCharacter));
    QCOMPARE(tBits.FillBits(), 0);
}

void AisEncodingTest::unevenBitsAreFilledWithZeros() {
    BitWriter tBits;
    tBits.Unsigned(0b11111111, 8);
    tBits.Finish();
    QCOMPARE(reader::BitsOf(tBits.Payload()), std::string("111111110000"));
    QCOMPARE(tBits.Bits(), 8);
    QCOMPARE(tBits.FillBits(), 4);
}

void AisEncodingTest::negativeNumbersAreTwosComplement() {
    BitWriter tBits;
    tBits.Signed(-2, 6);
    tBits.Finish();
    QCOMPARE(reader::BitsOf(tBits.Payload()), std::string("111110"));
}

void AisEncodingTest::textIsCutFilledAndCapital() {
    BitWriter tBits;
    tBits.Text("ab 1Z", 4);
    tBits.Text("Q", 3);
    tBits.Finish();
    const std::string sBits = reader::BitsOf(tBits.Payload());
    QCOMPARE(sBits.size(), std::size_t{42});
    QCOMPARE(sBits.substr(0, 24), std::string("000001"
                                              "000010"
                                              "100000"
                                              "110001"));
    QCOMPARE(sBits.substr(24), std::string("010001"
                                           "000000"
                                           "000000"));
}

void AisEncodingTest::everyTypeHasItsLength_data() {
    QTest::addColumn<int>("iType");
    QTest::addColumn<int>("iBits");
    QTest::newRow("1") << 1 << 168;
    QTest::newRow("2") << 2 << 168;
    QTest::newRow("3") << 3 << 168;
    QTest::newRow("4") << 4 << 168;
    QTest::newRow("5") << 5 << 424;
    QTest::newRow("11") << 11 << 168;
    QTest::newRow("15, one question") << 15 << 88;
    QTest::newRow("18") << 18 << 168;
    QTest::newRow("19") << 19 << 312;
    QTest::newRow("20, one reservation") << 20 << 72;
    QTest::newRow("21, short name") << 21 << 272;
    QTest::newRow("24 A") << 24 << 160;
    QTest::newRow("24 B") << 240 << 168;
}

void AisEncodingTest::everyTypeHasItsLength() {
    QFETCH(int, iType);
    QFETCH(int, iBits);
    const Identity tWho{244123456, 9123456, "NAME", "CALL1", "PORT", {70, 1, 2, 3, 4}};
    BitWriter tBits;
    switch (iType) {
        case 4:
        case 11:
            EncodeBase(tBits, iType, tWho.lMmsi, {50, 1}, runtime::MakeDateTime({2025, 1, 2}, 3, 4, 5));
            break;
        case 5:
            EncodeStatic(tBits, tWho);
            break;
        case 15:
            EncodeInterrogation(tBits, tWho.lMmsi, 211000001, 5);
            break;
        case 18:
            EncodeClassB(tBits, tWho.lMmsi, {});
            break;
        case 19:
            EncodeClassBExtended(tBits, tWho, {});
            break;
        case 20:
            EncodeLinkManagement(tBits, tWho.lMmsi, 10, 1, 375);
            break;
        case 21:
            EncodeAid(tBits, tWho, 9, {50, 1}, 5);
            break;
        case 24:
            EncodeStaticA(tBits, tWho);
            break;
        case 240:
            EncodeStaticB(tBits, tWho);
            break;
        default:
            EncodePosition(tBits, iType, tWho.lMmsi, 0, 0, {});
            break;
    }
    const std::string sBits = reader::BitsOf(tBits.Payload());
    QCOMPARE(tBits.Bits(), iBits);
    QCOMPARE(static_cast<int>(sBits.size()), iBits + tBits.FillBits());
    QVERIFY(tBits.FillBits() < 6);
    QCOMPARE(reader::Number(sBits, 0, 6), std::int64_t{iType == 240 ? 24 : iType});
    QCOMPARE(reader::Number(sBits, 8, 30), std::int64_t{244123456});
}

void AisEncodingTest::positionReportHasItsFields() {
    BitWriter tBits;
    EncodePosition(tBits, 1, 235012345, 5, -21, {{-33.5, 151.25}, 12.3, 271.4, 269, 42});
    const std::string s = reader::BitsOf(tBits.Payload());
    QCOMPARE(reader::Number(s, 38, 4), std::int64_t{5});
    QCOMPARE(reader::Signed(s, 42, 8), std::int64_t{-21});
    QCOMPARE(reader::Number(s, 50, 10), std::int64_t{123});
    QCOMPARE(reader::Signed(s, 61, 28), std::int64_t{90750000});
    QCOMPARE(reader::Signed(s, 89, 27), std::int64_t{-20100000});
    QCOMPARE(reader::Number(s, 116, 12), std::int64_t{2714});
    QCOMPARE(reader::Number(s, 128, 9), std::int64_t{269});
    QCOMPARE(reader::Number(s, 137, 6), std::int64_t{42});
}

void AisEncodingTest::missingValuesHaveTheirFigures() {
    BitWriter tBits;
    EncodePosition(tBits, 3, 235012345, 15, NoTurn, {});
    const std::string s = reader::BitsOf(tBits.Payload());
    QCOMPARE(reader::Signed(s, 42, 8), std::int64_t{-128});
    QCOMPARE(reader::Number(s, 50, 10), std::int64_t{1023});
    QCOMPARE(reader::Signed(s, 61, 28), std::int64_t{108600000});
    QCOMPARE(reader::Signed(s, 89, 27), std::int64_t{54600000});
    QCOMPARE(reader::Number(s, 116, 12), std::int64_t{3600});
    QCOMPARE(reader::Number(s, 128, 9), std::int64_t{511});
    QCOMPARE(reader::Number(s, 137, 6), std::int64_t{60});
}

void AisEncodingTest::baseReportTellsPlaceAndTime() {
    BitWriter tBits;
    EncodeBase(tBits, 4, 2320001, {50.5, -1.25}, runtime::MakeDateTime({2025, 12, 31}, 23, 59, 58));
    const std::string s = reader::BitsOf(tBits.Payload());
    QCOMPARE(reader::Number(s, 38, 14), std::int64_t{2025});
    QCOMPARE(reader::Number(s, 52, 4), std::int64_t{12});
    QCOMPARE(reader::Number(s, 56, 5), std::int64_t{31});
    QCOMPARE(reader::Number(s, 61, 5), std::int64_t{23});
    QCOMPARE(reader::Number(s, 66, 6), std::int64_t{59});
    QCOMPARE(reader::Number(s, 72, 6), std::int64_t{58});
    QCOMPARE(reader::Signed(s, 79, 28), std::int64_t{-750000});
    QCOMPARE(reader::Signed(s, 107, 27), std::int64_t{30300000});
}

void AisEncodingTest::staticDataNamesTheShip() {
    BitWriter tBits;
    EncodeStatic(tBits, {244123456, 9123456, "BLUE HERON", "ABCD5", "ROTTERDAM", {70, 100, 50, 11, 9}});
    const std::string s = reader::BitsOf(tBits.Payload());
    QCOMPARE(reader::Number(s, 40, 30), std::int64_t{9123456});
    QCOMPARE(reader::Text(s, 70, 7), std::string("ABCD5"));
    QCOMPARE(reader::Text(s, 112, 20), std::string("BLUE HERON"));
    QCOMPARE(reader::Number(s, 232, 8), std::int64_t{70});
    QCOMPARE(reader::Number(s, 240, 9), std::int64_t{100});
    QCOMPARE(reader::Number(s, 249, 9), std::int64_t{50});
    QCOMPARE(reader::Number(s, 258, 6), std::int64_t{11});
    QCOMPARE(reader::Number(s, 264, 6), std::int64_t{9});
    QCOMPARE(reader::Text(s, 302, 20), std::string("ROTTERDAM"));
}

void AisEncodingTest::classBReportHasItsFields() {
    BitWriter tBits;
    EncodeClassB(tBits, 235012345, {{50.5, -1.25}, 6.7, 12.3, 511, 7});
    const std::string s = reader::BitsOf(tBits.Payload());
    QCOMPARE(reader::Number(s, 38, 8), std::int64_t{0});
    QCOMPARE(reader::Number(s, 46, 10), std::int64_t{67});
    QCOMPARE(reader::Signed(s, 57, 28), std::int64_t{-750000});
    QCOMPARE(reader::Signed(s, 85, 27), std::int64_t{30300000});
    QCOMPARE(reader::Number(s, 112, 12), std::int64_t{123});
    QCOMPARE(reader::Number(s, 124, 9), std::int64_t{511});
    QCOMPARE(reader::Number(s, 133, 6), std::int64_t{7});
    QCOMPARE(reader::Number(s, 141, 1), std::int64_t{1});  // carrier sense
}

void AisEncodingTest::extendedClassBNamesTheBoat() {
    BitWriter tBits;
    EncodeClassBExtended(tBits, {235012345, 0, "LITTLE GULL", "", "", {37, 5, 4, 1, 2}},
                         {{50.5, -1.25}, 6.7, 12.3, 9, 7});
    const std::string s = reader::BitsOf(tBits.Payload());
    QCOMPARE(reader::Number(s, 46, 10), std::int64_t{67});
    QCOMPARE(reader::Signed(s, 57, 28), std::int64_t{-750000});
    QCOMPARE(reader::Signed(s, 85, 27), std::int64_t{30300000});
    QCOMPARE(reader::Text(s, 143, 20), std::string("LITTLE GULL"));
    QCOMPARE(reader::Number(s, 263, 8), std::int64_t{37});
    QCOMPARE(reader::Number(s, 271, 9), std::int64_t{5});
}

void AisEncodingTest::aidTellsNameAndPlace() {
    BitWriter tBits;
    EncodeAid(tBits, {992320007, 0, "FAIRWAY", "", "", {}}, 20, {50.5, -1.25}, 33);
    const std::string s = reader::BitsOf(tBits.Payload());
    QCOMPARE(reader::Number(s, 38, 5), std::int64_t{20});
    QCOMPARE(reader::Text(s, 43, 20), std::string("FAIRWAY"));
    QCOMPARE(reader::Signed(s, 164, 28), std::int64_t{-750000});
    QCOMPARE(reader::Signed(s, 192, 27), std::int64_t{30300000});
    QCOMPARE(reader::Number(s, 253, 6), std::int64_t{33});
}

void AisEncodingTest::classBDataComesInTwoParts() {
    const Identity tWho{235012345, 0, "LITTLE GULL", "XYZ12", "", {37, 5, 4, 1, 2}};
    BitWriter tBits;
    EncodeStaticA(tBits, tWho);
    const std::string sA = reader::BitsOf(tBits.Payload());
    QCOMPARE(reader::Number(sA, 38, 2), std::int64_t{0});
    QCOMPARE(reader::Text(sA, 40, 20), std::string("LITTLE GULL"));
    EncodeStaticB(tBits, tWho);
    const std::string sB = reader::BitsOf(tBits.Payload());
    QCOMPARE(reader::Number(sB, 38, 2), std::int64_t{1});
    QCOMPARE(reader::Number(sB, 40, 8), std::int64_t{37});
    QCOMPARE(reader::Text(sB, 90, 7), std::string("XYZ12"));
    QCOMPARE(reader::Number(sB, 132, 9), std::int64_t{5});
}

void AisEncodingTest::turnFigureIsScaledRoot_data() {
    QTest::addColumn<double>("dTurn");
    QTest::addColumn<int>("iFigure");
    QTest::newRow("straight") << 0.0 << 0;
    QTest::newRow("starboard") << 20.0 << 21;  // 4.733 * 4.472 = 21.17
    QTest::newRow("port") << -20.0 << -21;
    QTest::newRow("strongest") << 708.7 << 126;
    QTest::newRow("beyond") << -5000.0 << -126;
}

void AisEncodingTest::turnFigureIsScaledRoot() {
    QFETCH(double, dTurn);
    QFETCH(int, iFigure);
    QCOMPARE(TurnFigure(dTurn), iFigure);
}

void AisEncodingTest::shortPayloadNeedsOneSentence() {
    const std::string sPayload(61, '0');
    QCOMPARE(SentenceCount(sPayload), 1);
    const std::string s = VdmSentence(sPayload, 2, 'B', 7, 1, 1);
    QCOMPARE(s.substr(0, 14), std::string("!AIVDM,1,1,,B,"));
    QCOMPARE(s.substr(75, 3), std::string(",2*"));
    QCOMPARE(s.size(), LongestSentence);
    QVERIFY(reader::ChecksumRight(s));
}

void AisEncodingTest::longPayloadNeedsTwoSentences() {
    const std::string sPayload = std::string(60, 'a') + std::string(11, 'b');
    QCOMPARE(SentenceCount(sPayload), 2);
    const std::string sFirst = VdmSentence(sPayload, 2, 'A', 7, 2, 1);
    const std::string sSecond = VdmSentence(sPayload, 2, 'A', 7, 2, 2);
    QCOMPARE(sFirst.substr(0, 78), "!AIVDM,2,1,7,A," + std::string(60, 'a') + ",0*");
    QCOMPARE(sSecond.substr(0, 29), "!AIVDM,2,2,7,A," + std::string(11, 'b') + ",2*");
    QVERIFY(sFirst.size() <= LongestSentence);
    QVERIFY(reader::ChecksumRight(sFirst));
    QVERIFY(reader::ChecksumRight(sSecond));
}

QTEST_GUILESS_MAIN(AisEncodingTest)
#include "AisEncodingTest.moc"
