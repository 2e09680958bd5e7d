// Payload characters as values in the store.
#include "decoders/VdmMessage.h"

#include <QTest>

#include "tests/support/AisEncoder.h"
#include "tests/support/Bytes.h"

using decoders::VdmMessage;
using decoders::VdmUnarmor;
using support::View;

class VdmMessageTest : public QObject {
    Q_OBJECT

private slots:
    void characterStandsForValue_data();
    void characterStandsForValue();
    void alphabetCountsFrom0To63();
    void everyByteFollowsTheRule();
    void valuesAreAppendedAndTheLengthIsLeft();
    void restOfTheStoreIsLeft();
    void fullStoreTakes512Values();
    void encodedBitsComeBack();
};

void VdmMessageTest::characterStandsForValue_data() {
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("value");
    QTest::newRow("0") << int{'0'} << 0;
    QTest::newRow("9") << int{'9'} << 9;
    QTest::newRow("A") << int{'A'} << 17;
    QTest::newRow("W, the last below the gap") << int{'W'} << 39;
    QTest::newRow("`, the first above the gap") << int{'`'} << 40;
    QTest::newRow("w, the last") << int{'w'} << 63;
    QTest::newRow("X, in the gap") << int{'X'} << 40;
    QTest::newRow("_, the last in the gap") << int{'_'} << 47;
    QTest::newRow("x, behind the alphabet") << int{'x'} << 64;
    QTest::newRow("/, before the alphabet") << int{'/'} << -1;
    QTest::newRow("blank") << int{' '} << -16;
    QTest::newRow("NUL") << 0 << -48;
    QTest::newRow("128") << 128 << 72;
    QTest::newRow("255") << 255 << 199;
}

void VdmMessageTest::characterStandsForValue() {
    QFETCH(int, code);
    QFETCH(int, value);
    VdmMessage tMessage;
    const char c = static_cast<char>(code);
    VdmUnarmor({&c, 1}, tMessage.lData, 0);
    QCOMPARE(tMessage.lData[1], value);
}

void VdmMessageTest::alphabetCountsFrom0To63() {
    const std::string_view sAlphabet = "0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVW`abcdefghijklmnopqrstuvw";
    VdmMessage tMessage;
    VdmUnarmor(sAlphabet, tMessage.lData, 0);
    for (std::int32_t i = 0; i < 64; ++i) QCOMPARE(tMessage.lData[static_cast<std::size_t>(i) + 1], i);
}

void VdmMessageTest::everyByteFollowsTheRule() {
    QByteArray sAll;
    for (int i = 0; i < 256; ++i) sAll += static_cast<char>(i);
    VdmMessage tMessage;
    VdmUnarmor(View(sAll), tMessage.lData, 0);
    // Two straight lines that meet in a step back of eight at 96.
    QCOMPARE(tMessage.lData[1], -48);
    for (std::size_t i = 1; i < 256; ++i) {
        QCOMPARE(tMessage.lData[i + 1] - tMessage.lData[i], i == 96 ? -7 : 1);
    }
}

void VdmMessageTest::valuesAreAppendedAndTheLengthIsLeft() {
    VdmMessage tMessage;
    VdmUnarmor("123", tMessage.lData, tMessage.lLength);
    QCOMPARE(tMessage.lLength, 0);
    VdmUnarmor("wW", tMessage.lData, 3);
    const std::int32_t lExpected[] = {0, 1, 2, 3, 63, 39, 0};
    for (std::size_t i = 0; i < std::size(lExpected); ++i) QCOMPARE(tMessage.lData[i], lExpected[i]);
}

void VdmMessageTest::restOfTheStoreIsLeft() {
    VdmMessage tMessage;
    tMessage.lData.fill(77);
    VdmUnarmor("0", tMessage.lData, 4);
    for (std::size_t i = 0; i < tMessage.lData.size(); ++i) QCOMPARE(tMessage.lData[i], i == 5 ? 0 : 77);
    VdmUnarmor("", tMessage.lData, 4);
    QCOMPARE(tMessage.lData[5], 0);
}

void VdmMessageTest::fullStoreTakes512Values() {
    VdmMessage tMessage;
    VdmUnarmor(std::string(512, 'w'), tMessage.lData, 0);
    QCOMPARE(tMessage.lData[0], 0);
    QCOMPARE(tMessage.lData[1], 63);
    QCOMPARE(tMessage.lData[512], 63);
    VdmUnarmor("0", tMessage.lData, 511);
    QCOMPARE(tMessage.lData[512], 0);
}

void VdmMessageTest::encodedBitsComeBack() {
    const support::AisBits sBits = support::AisStaticVoyage(235098765, "EXAMPLE SHIP");
    VdmMessage tMessage;
    VdmUnarmor(support::AisPayload(sBits), tMessage.lData, 0);
    const support::AisBits sFilled = sBits + "00";
    for (std::size_t k = 1; k <= 71; ++k) {
        QCOMPARE(static_cast<std::uint32_t>(tMessage.lData[k]), support::AisUnsigned(sFilled, 6 * (k - 1), 6 * k - 1));
    }
}

QTEST_GUILESS_MAIN(VdmMessageTest)
#include "VdmMessageTest.moc"
