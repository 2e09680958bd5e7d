// Which lines are accepted, and which decoder gets them.
#include "nmea/Sentence.h"

#include <QTest>

#include "tests/support/AisEncoder.h"
#include "tests/support/Bytes.h"

using nmea::SentenceFault;
using support::Bytes;
using support::View;
using support::WithChecksum;

namespace {

// Tells which operation was called, for the port that the test names.
struct Decoders {
    QByteArray sCalled = "none";
    void PnmlsDecode(runtime::PortIndex i) { Call("signal", i); }
    void VdmDecode(runtime::PortIndex i) { Call("AIS", i); }
    void GllDecode(runtime::PortIndex i) { Call("GLL", i); }
    void RmcDecode(runtime::PortIndex i) { Call("RMC", i); }

private:
    void Call(const char* sName, runtime::PortIndex i) { sCalled = i == 1 ? sName : "another port"; }
};

}  // namespace

class SentenceTest : public QObject {
    Q_OBJECT

private slots:
    void shortOrDamagedLinesAreRefused_data();
    void shortOrDamagedLinesAreRefused();
    void addressFieldChoosesTheDecoder_data();
    void addressFieldChoosesTheDecoder();
};

void SentenceTest::shortOrDamagedLinesAreRefused_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<SentenceFault>("fault");
    const auto None = SentenceFault::None;
    const auto Size = SentenceFault::Size;
    const auto Checksum = SentenceFault::Checksum;
    QTest::newRow("empty line") << QByteArray("") << Size;
    QTest::newRow("five characters") << QByteArray("$GPGL") << Size;
    QTest::newRow("five characters with a right checksum") << QByteArray("$A*41") << Size;
    QTest::newRow("six characters") << QByteArray("$GPGLL") << None;
    QTest::newRow("six characters, checksum over three, right") << QByteArray("$AB*03") << None;
    QTest::newRow("six characters, checksum over three, wrong") << QByteArray("$AB*..") << Checksum;
    QTest::newRow("no checksum field: unchecked") << QByteArray("$GPGLL,4916.45,N") << None;
    QTest::newRow("star in another place: unchecked") << QByteArray("$GPGLL*1234") << None;
    QTest::newRow("star second from the end: unchecked") << QByteArray("$GPGLL*1") << None;
    QTest::newRow("star last: unchecked") << QByteArray("$GPGLL*") << None;
    QTest::newRow("right checksum") << Bytes(WithChecksum("$GPGLL,4916.45,N")) << None;
    QTest::newRow("a character damaged") << Bytes(WithChecksum("$GPGLL,4916.45,N")).replace('9', '8') << Checksum;
    // 41 ^ 49 ^ 56 ^ 44 ^ 4D ^ 6D is 3A.
    QTest::newRow("checksum in upper case") << QByteArray("!AIVDMm*3A") << None;
    QTest::newRow("checksum right but in lower case") << QByteArray("!AIVDMm*3a") << Checksum;
    QTest::newRow("bytes above 127") << Bytes(WithChecksum("$GP\xFF\x80\xB0,1")) << None;
    QTest::newRow("NUL inside") << Bytes(WithChecksum(std::string_view("$GP\0LL,1", 8))) << None;
    QTest::newRow("two stars: everything before the last counts") << Bytes(WithChecksum("$GP*LL,1")) << None;
}

void SentenceTest::shortOrDamagedLinesAreRefused() {
    QFETCH(QByteArray, line);
    QFETCH(SentenceFault, fault);
    QCOMPARE(nmea::TestSentence(View(line)), fault);
}

void SentenceTest::addressFieldChoosesTheDecoder_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("decoder");
    QTest::newRow("signal sentence") << QByteArray("$PNMLS,19,20,3*00") << QByteArray("signal");
    QTest::newRow("signal sentence, anything behind six characters") << QByteArray("$PNMLSGLL") << QByteArray("signal");
    QTest::newRow("signal sentence without fields") << QByteArray("$PNMLS") << QByteArray("signal");
    QTest::newRow("signal sentence in lower case") << QByteArray("$pnmls,19,20,3") << QByteArray("none");
    QTest::newRow("AIS") << QByteArray("!AIVDM,1,1,,A,1,0") << QByteArray("AIS");
    QTest::newRow("AIS, anything behind six characters") << QByteArray("!AIVDMRMC") << QByteArray("AIS");
    QTest::newRow("AIS with another start character") << QByteArray("$AIVDM,1,1,,A,1,0") << QByteArray("none");
    QTest::newRow("AIS in lower case") << QByteArray("!aivdm,1,1,,A,1,0") << QByteArray("none");
    QTest::newRow("own ship's AIS") << QByteArray("!AIVDO,1,1,,A,1,0") << QByteArray("none");
    QTest::newRow("GLL of a GPS") << QByteArray("$GPGLL,4916.45,N") << QByteArray("GLL");
    QTest::newRow("GLL of a chart system") << QByteArray("$ECGLL,4916.45,N") << QByteArray("GLL");
    QTest::newRow("GLL behind any three characters") << QByteArray("x\xFF GLL") << QByteArray("GLL");
    QTest::newRow("GLL in lower case") << QByteArray("$GPgll,4916.45,N") << QByteArray("none");
    QTest::newRow("GLL one place further on") << QByteArray("$GPXGLL,1") << QByteArray("none");
    QTest::newRow("RMC") << QByteArray("$GPRMC,225444,A") << QByteArray("RMC");
    QTest::newRow("RMC of another talker") << QByteArray("$GNRMC,225444,A") << QByteArray("RMC");
    QTest::newRow("RMC in lower case") << QByteArray("$GPrmc,225444,A") << QByteArray("none");
    QTest::newRow("another sentence") << QByteArray("$GPGGA,225444") << QByteArray("none");
    QTest::newRow("noise") << QByteArray("\0\0\0\0\0\0", 6) << QByteArray("none");
}

void SentenceTest::addressFieldChoosesTheDecoder() {
    QFETCH(QByteArray, line);
    QFETCH(QByteArray, decoder);
    Decoders t;
    if (const auto pDecode = nmea::FindDecoder<Decoders>(View(line))) (t.*pDecode)(1);
    QCOMPARE(t.sCalled, decoder);
}

QTEST_GUILESS_MAIN(SentenceTest)
#include "SentenceTest.moc"
