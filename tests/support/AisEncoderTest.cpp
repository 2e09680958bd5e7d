// The encoder against messages worked out by hand, and against the lengths that the standard gives.
#include <QTest>

#include "tests/support/AisEncoder.h"
#include "tests/support/Bytes.h"

using namespace support;

class AisEncoderTest : public QObject {
    Q_OBJECT

private slots:
    void messagesHaveTheLengthOfTheStandard_data();
    void messagesHaveTheLengthOfTheStandard();
    void bitsStandWhereTheStandardPutsThem();
    void payloadCharactersFollowTheAlphabet();
    void longMessageIsSpreadOverSentences();
};

void AisEncoderTest::messagesHaveTheLengthOfTheStandard_data() {
    QTest::addColumn<std::string>("bits");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("length");
    const AisReport tReport;
    QTest::newRow("1") << AisClassA(1, tReport) << 1 << 168;
    QTest::newRow("3") << AisClassA(3, tReport) << 3 << 168;
    QTest::newRow("4") << AisBaseStation(4, tReport) << 4 << 168;
    QTest::newRow("5") << AisStaticVoyage(1, "NAME") << 5 << 424;
    QTest::newRow("11") << AisBaseStation(11, tReport) << 11 << 168;
    QTest::newRow("15") << AisInterrogation(1, 2) << 15 << 88;
    QTest::newRow("18") << AisClassB(tReport) << 18 << 168;
    QTest::newRow("19") << AisClassBExtended(tReport, "NAME") << 19 << 312;
    QTest::newRow("20") << AisDataLink(1) << 20 << 72;
    QTest::newRow("21") << AisAidToNavigation(tReport, "NAME") << 21 << 272;
    QTest::newRow("24 A") << AisStaticDataA(1, "NAME") << 24 << 168;
    QTest::newRow("24 B") << AisStaticDataB(1, "CALL") << 24 << 168;
    QTest::newRow("63") << AisOther(63, 1) << 63 << 168;
}

void AisEncoderTest::messagesHaveTheLengthOfTheStandard() {
    QFETCH(std::string, bits);
    QFETCH(int, type);
    QFETCH(int, length);
    QCOMPARE(static_cast<int>(bits.size()), length);
    QCOMPARE(static_cast<int>(AisUnsigned(bits, 0, 5)), type);
}

void AisEncoderTest::bitsStandWhereTheStandardPutsThem() {
    AisReport tReport;
    tReport.lMmsi = 235098765;
    tReport.lRateOfTurn = -2;
    tReport.lSpeed = 5;
    tReport.lLongitude = -1;
    tReport.lLatitude = 1;
    const AisBits sBits = AisClassA(1, tReport);
    QCOMPARE(Bytes(sBits.substr(0, 6)), QByteArray("000001"));
    QCOMPARE(Bytes(sBits.substr(42, 8)), QByteArray("11111110"));
    QCOMPARE(Bytes(sBits.substr(50, 10)), QByteArray("0000000101"));
    QCOMPARE(Bytes(sBits.substr(61, 28)), QByteArray(28, '1'));
    QCOMPARE(Bytes(sBits.substr(89, 27)), QByteArray(26, '0') + '1');
    QCOMPARE(AisUnsigned(sBits, 8, 37), 235098765U);
    QCOMPARE(AisSigned(sBits, 61, 88), -1);
    QCOMPARE(AisSigned(sBits, 42, 49), -2);
}

void AisEncoderTest::payloadCharactersFollowTheAlphabet() {
    QCOMPARE(Bytes(AisPayload("000000100111101000111111")), QByteArray("0W`w"));
    QCOMPARE(Bytes(AisPayload("0000011")), QByteArray("1P"));  // filled up: 100000 is 32
    QCOMPARE(AisFillBits("0000011"), 5);
    QCOMPARE(AisFillBits("000001"), 0);
}

void AisEncoderTest::longMessageIsSpreadOverSentences() {
    const auto sSentences = AisSentences(AisStaticVoyage(235098765, "EXAMPLE"), 'B', 3);
    QCOMPARE(sSentences.size(), std::size_t{2});
    QVERIFY(sSentences[0].starts_with("!AIVDM,2,1,3,B,53P=BS"));
    QVERIFY(sSentences[0].find(",0*") != std::string::npos);
    QVERIFY(sSentences[1].starts_with("!AIVDM,2,2,3,B,"));
    QVERIFY(sSentences[1].find(",2*") != std::string::npos);
}

QTEST_GUILESS_MAIN(AisEncoderTest)
#include "AisEncoderTest.moc"
