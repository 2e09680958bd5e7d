// What the simulated board understands of the bytes that it is sent.
#include "tools/BoardCommands.h"

#include <QTest>

using simulator::BoardCommand;
using simulator::BoardCommands;

namespace {

// The sum is worked out here, not by the program.
std::string Closed(const std::string& sBody) {
    unsigned iSum = 0;
    for (std::size_t i = 1; i < sBody.size(); ++i) iSum ^= static_cast<unsigned char>(sBody[i]);
    const std::string sDigits = "0123456789ABCDEF";
    return sBody + '*' + sDigits[iSum >> 4] + sDigits[iSum & 15U] + "\r\n";
}

}  // namespace

class BoardCommandsTest : public QObject {
    Q_OBJECT

private slots:
    void boardSaysWhatItUnderstood_data();
    void boardSaysWhatItUnderstood();
    void everyIntervalCodeArrives();
    void commandMayArriveByteByByte();
    void twoCommandsInOneRead();
    void endlessNoiseIsForgotten();
};

void BoardCommandsTest::boardSaysWhatItUnderstood_data() {
    QTest::addColumn<QByteArray>("sBytes");
    QTest::addColumn<QByteArray>("sSaid");
    QTest::addColumn<bool>("bObeyed");
    const auto Row = [](const char* sName, const std::string& sBytes, const char* sSaid, bool bObeyed) {
        QTest::newRow(sName) << QByteArray::fromStdString(sBytes) << QByteArray(sSaid) << bObeyed;
    };
    Row("channel A", "$PNMLC,A*31\r\n", "channel A", true);
    Row("channel B", Closed("$PNMLC,B"), "channel B", true);
    Row("both channels", Closed("$PNMLC,S"), "channel S", true);
    Row("no such channel", Closed("$PNMLC,C"), "channel C unknown", false);
    Row("small letter", Closed("$PNMLC,a"), "channel a unknown", false);
    Row("interval 3", Closed("$PNMLT,\x03"), "interval 3", true);
    Row("interval 7", Closed("$PNMLT,\x07"), "interval 7", true);
    Row("interval 8", Closed("$PNMLT,\x08"), "interval 8 out of range", false);
    Row("a digit is its code", Closed("$PNMLT,3"), "interval 51 out of range", false);
    Row("no interval", Closed("$PNMLT,"), "interval of 0 characters", false);
    Row("wrong checksum", "$PNMLC,A*00\r\n", "wrong checksum", false);
    Row("no checksum", "$PNMLC,A\r\n", "wrong checksum", false);
    Row("another sentence", Closed("$PXYZ,A"), "unknown command", false);
}

void BoardCommandsTest::boardSaysWhatItUnderstood() {
    QFETCH(QByteArray, sBytes);
    QFETCH(QByteArray, sSaid);
    QFETCH(bool, bObeyed);
    BoardCommands tBoard;
    const auto tCommands = tBoard.Take(sBytes.toStdString());
    QCOMPARE(tCommands.size(), std::size_t{1});
    QCOMPARE(tCommands[0].sSaid, sSaid.toStdString());
    const bool bToObey =
        tCommands[0].eKind == BoardCommand::Kind::Channel || tCommands[0].eKind == BoardCommand::Kind::Interval;
    QCOMPARE(bToObey, bObeyed);
}

void BoardCommandsTest::everyIntervalCodeArrives() {
    for (int i = 0; i < 256; ++i) {
        BoardCommands tBoard;
        const auto tCommands = tBoard.Take(Closed("$PNMLT," + std::string(1, static_cast<char>(i))));
        QCOMPARE(tCommands.size(), std::size_t{1});
        QCOMPARE(tCommands[0].iInterval, i);
    }
}

void BoardCommandsTest::commandMayArriveByteByByte() {
    BoardCommands tBoard;
    const std::string sBytes = Closed("$PNMLC,B");
    for (std::size_t i = 0; i + 1 < sBytes.size(); ++i) QVERIFY(tBoard.Take(sBytes.substr(i, 1)).empty());
    const auto tCommands = tBoard.Take("\n");
    QCOMPARE(tCommands.size(), std::size_t{1});
    QCOMPARE(tCommands[0].sChannel, 'B');
}

void BoardCommandsTest::twoCommandsInOneRead() {
    BoardCommands tBoard;
    const auto tCommands = tBoard.Take(Closed("$PNMLC,A") + Closed("$PNMLT,\x05"));
    QCOMPARE(tCommands.size(), std::size_t{2});
    QCOMPARE(tCommands[0].sChannel, 'A');
    QCOMPARE(tCommands[1].iInterval, 5);
}

void BoardCommandsTest::endlessNoiseIsForgotten() {
    BoardCommands tBoard;
    QVERIFY(tBoard.Take(std::string(100000, 'x')).empty());
    QCOMPARE(tBoard.Take(Closed("$PNMLC,A")).at(0).sSaid, std::string("channel A"));
}

QTEST_GUILESS_MAIN(BoardCommandsTest)
#include "BoardCommandsTest.moc"
