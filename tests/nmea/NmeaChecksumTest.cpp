// The checksum of a sentence and its comparison to the letter.
#include "nmea/NmeaChecksum.h"

#include <QTest>

#include "tests/support/Bytes.h"

using support::Bytes;
using support::View;

class NmeaChecksumTest : public QObject {
    Q_OBJECT

private slots:
    void twoUpperCaseDigits_data();
    void twoUpperCaseDigits();
    void everyLengthAndEveryByteCounts();
    void sentenceEndsInItsChecksum_data();
    void sentenceEndsInItsChecksum();
};

void NmeaChecksumTest::twoUpperCaseDigits_data() {
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QByteArray>("checksum");
    QTest::newRow("empty body") << QByteArray("") << QByteArray("00");
    QTest::newRow("one character") << QByteArray("$") << QByteArray("00");
    QTest::newRow("first character does not count") << QByteArray("!A") << QByteArray("41");
    QTest::newRow("below 16: zero in front") << QByteArray("$AB") << QByteArray("03");      // 41 ^ 42
    QTest::newRow("letters are upper case") << QByteArray("$m:0") << QByteArray("67");      // 6D ^ 3A ^ 30
    QTest::newRow("A to F") << QByteArray("$o\xC0") << QByteArray("AF");                    // 6F ^ C0
    QTest::newRow("control character counts") << QByteArray("$A\x03") << QByteArray("42");  // 41 ^ 03
    QTest::newRow("NUL counts as zero") << QByteArray("$A\0B", 4) << QByteArray("03");
    QTest::newRow("bytes above 127 are unsigned") << QByteArray("$\xFF") << QByteArray("FF");
    QTest::newRow("degree sign") << QByteArray("$\xB0") << QByteArray("B0");
    // 7 times "A" and once "B" behind the first character: six cancel out.
    QTest::newRow("longer than a machine word") << QByteArray("$AAAAAAAB") << QByteArray("03");
}

void NmeaChecksumTest::twoUpperCaseDigits() {
    QFETCH(QByteArray, body);
    QFETCH(QByteArray, checksum);
    QCOMPARE(Bytes(nmea::NmeaChecksum(View(body))), checksum);
}

void NmeaChecksumTest::everyLengthAndEveryByteCounts() {
    std::string sBody = "$";
    unsigned iExpected = 0;
    for (unsigned i = 0; i < 600; ++i) {
        const unsigned iByte = (i * 167 + i / 256) % 256;  // every value, in a mixed order
        sBody += static_cast<char>(iByte);
        iExpected ^= iByte;
        QCOMPARE(Bytes(nmea::NmeaChecksum(sBody)), QByteArray::number(iExpected, 16).toUpper().rightJustified(2, '0'));
    }
}

void NmeaChecksumTest::sentenceEndsInItsChecksum_data() {
    QTest::addColumn<QByteArray>("sentence");
    QTest::addColumn<bool>("matches");
    QTest::newRow("right") << QByteArray("$o\xC0*AF") << true;
    QTest::newRow("lower case does not match") << QByteArray("$o\xC0*af") << false;
    QTest::newRow("one digit in lower case") << QByteArray("$o\xC0*Af") << false;
    QTest::newRow("first digit wrong") << QByteArray("$o\xC0*BF") << false;
    QTest::newRow("second digit wrong") << QByteArray("$o\xC0*AE") << false;
    QTest::newRow("six characters") << QByteArray("$AB*03") << true;
    QTest::newRow("six characters, wrong") << QByteArray("$AB*30") << false;
    QTest::newRow("nothing before the star") << QByteArray("*00") << true;
    QTest::newRow("no star") << QByteArray("$AB 03") << false;
}

void NmeaChecksumTest::sentenceEndsInItsChecksum() {
    QFETCH(QByteArray, sentence);
    QFETCH(bool, matches);
    QCOMPARE(nmea::ChecksumMatches(View(sentence)), matches);
}

QTEST_GUILESS_MAIN(NmeaChecksumTest)
#include "NmeaChecksumTest.moc"
