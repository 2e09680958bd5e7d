// The commands as they leave for the receiver board.
#include "decoders/ReceiverCommand.h"

#include <QTest>

#include "tests/support/Bytes.h"

using decoders::ChannelCommand;
using decoders::IntervalCode;
using decoders::IntervalCommand;
using support::Bytes;
using support::View;

class ReceiverCommandTest : public QObject {
    Q_OBJECT

private slots:
    void channelIsSentAsTyped_data();
    void channelIsSentAsTyped();
    void intervalIsOneCharacterWithThatCode();
    void intervalTextStandsForACode_data();
    void intervalTextStandsForACode();
};

// "PNMLC," is 50 ^ 4E ^ 4D ^ 4C ^ 43 ^ 2C = 70, "PNMLT," 50 ^ 4E ^ 4D ^ 4C ^ 54 ^ 2C = 67.
void ReceiverCommandTest::channelIsSentAsTyped_data() {
    QTest::addColumn<QByteArray>("channel");
    QTest::addColumn<QByteArray>("command");
    QTest::newRow("channel 1") << QByteArray("A") << QByteArray("$PNMLC,A*31\r\n");
    QTest::newRow("channel 2") << QByteArray("B") << QByteArray("$PNMLC,B*32\r\n");
    QTest::newRow("alternating") << QByteArray("S") << QByteArray("$PNMLC,S*23\r\n");
    QTest::newRow("lower case as typed") << QByteArray("s") << QByteArray("$PNMLC,s*03\r\n");
    QTest::newRow("empty") << QByteArray("") << QByteArray("$PNMLC,*70\r\n");
    QTest::newRow("longer than one") << QByteArray("AB") << QByteArray("$PNMLC,AB*73\r\n");
    QTest::newRow("above 127") << QByteArray("\xB0") << QByteArray("$PNMLC,\xB0*C0\r\n");
}

void ReceiverCommandTest::channelIsSentAsTyped() {
    QFETCH(QByteArray, channel);
    QFETCH(QByteArray, command);
    QCOMPARE(Bytes(ChannelCommand(View(channel))), command);
}

void ReceiverCommandTest::intervalIsOneCharacterWithThatCode() {
    QCOMPARE(Bytes(IntervalCommand(3)), QByteArray("$PNMLT,\x03*64\r\n"));
    QCOMPARE(Bytes(IntervalCommand(1)), QByteArray("$PNMLT,\x01*66\r\n"));
    QCOMPARE(Bytes(IntervalCommand(51)), QByteArray("$PNMLT,3*54\r\n"));
    for (unsigned iCode = 0; iCode < 256; ++iCode) {
        const QByteArray sCommand = Bytes(IntervalCommand(static_cast<std::uint8_t>(iCode)));
        QCOMPARE(sCommand.size(), 7 + 1 + 3 + 2);
        QCOMPARE(static_cast<unsigned char>(sCommand[7]), static_cast<unsigned char>(iCode));
        QCOMPARE(sCommand.mid(9, 2), QByteArray::number(0x67U ^ iCode, 16).toUpper().rightJustified(2, '0'));
    }
}

void ReceiverCommandTest::intervalTextStandsForACode_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("code");  // -1: none
    QTest::newRow("3") << QByteArray("3") << 3;
    QTest::newRow("7") << QByteArray("7") << 7;
    QTest::newRow("zero") << QByteArray("0") << 0;
    QTest::newRow("beyond the board's range is not judged") << QByteArray("200") << 200;
    QTest::newRow("last code") << QByteArray("255") << 255;
    QTest::newRow("blanks around") << QByteArray(" 3 ") << 3;
    QTest::newRow("half to even, down") << QByteArray("2.5") << 2;
    QTest::newRow("half to even, up") << QByteArray("3.5") << 4;
    QTest::newRow("rounds to the last code") << QByteArray("255.4") << 255;
    QTest::newRow("rounds to zero") << QByteArray("-0.5") << 0;
    QTest::newRow("rounds beyond the last code") << QByteArray("255.5") << -1;
    QTest::newRow("256") << QByteArray("256") << -1;
    QTest::newRow("negative") << QByteArray("-1") << -1;
    QTest::newRow("beyond 32 bits") << QByteArray("99999999999") << -1;
    QTest::newRow("empty") << QByteArray("") << -1;
    QTest::newRow("letters") << QByteArray("abc") << -1;
    QTest::newRow("number and letters") << QByteArray("3 s") << -1;
}

void ReceiverCommandTest::intervalTextStandsForACode() {
    QFETCH(QByteArray, text);
    QFETCH(int, code);
    const auto iCode = IntervalCode(View(text));
    QCOMPARE(iCode.has_value() ? int{*iCode} : -1, code);
}

QTEST_GUILESS_MAIN(ReceiverCommandTest)
#include "ReceiverCommandTest.moc"
