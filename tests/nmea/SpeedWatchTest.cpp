// When an input counts as one at the wrong speed.
#include "nmea/SpeedWatch.h"

#include <QTest>

using nmea::SpeedWatch;

namespace {

constexpr char Good[] = "$GPRMC,,V,,,,,,,,,,N*53";

struct Input {
    Input() { t.Start(tLog); }
    // A second in which characters came, and these lines.
    bool Second(std::initializer_list<std::string_view> sLines = {}) {
        t.Received();
        for (const std::string_view sLine : sLines) tLog.Add(sLine);
        return t.Tick(tLog);
    }
    bool Silence() { return t.Tick(tLog); }
    // In how many of so many seconds the watch spoke.
    int Spoken(int iSeconds, std::initializer_list<std::string_view> sLines = {}) {
        int iSpoken = 0;
        for (int i = 0; i < iSeconds; ++i) iSpoken += Second(sLines);
        return iSpoken;
    }
    runtime::LogLines tLog;
    SpeedWatch t;
};

}  // namespace

class SpeedWatchTest : public QObject {
    Q_OBJECT
private slots:
    void TenSecondsOfCharacters();
    void OncePerStretch();
    void LinesThatAreNoSentences_data();
    void LinesThatAreNoSentences();
    void SentencesAmongNoise();
    void SilentSecondsDoNotCount();
    void StartForgets();
    void MoreLinesThanTheLogHolds();
};

void SpeedWatchTest::TenSecondsOfCharacters() {
    Input t;
    QCOMPARE(t.Spoken(9), 0);
    QVERIFY(!t.t.Doubts());
    QVERIFY(t.Second());
    QVERIFY(t.t.Doubts());
}

void SpeedWatchTest::OncePerStretch() {
    Input t;
    QCOMPARE(t.Spoken(100), 1);
    QVERIFY(!t.Second({Good}));
    QVERIFY(!t.t.Doubts());
    QCOMPARE(t.Spoken(100), 1);
}

void SpeedWatchTest::LinesThatAreNoSentences_data() {
    QTest::addColumn<QByteArray>("sLine");
    QTest::addColumn<QByteArray>("sNext");
    QTest::newRow("notice") << QByteArray("<<Size Error>>") << QByteArray("<<Framing Error>>");
    QTest::newRow("wrong checksum") << QByteArray("$GPRMC,,V,,,,,,,,,,N*54") << QByteArray("<<Checksum Error>>");
    QTest::newRow("other first character") << QByteArray("GPRMC,,V,,,,,,,,,,N") << QByteArray("no sentence");
    QTest::newRow("strange characters") << QByteArray("$G\xf3RMC,,V") << QByteArray("!\x01IVDM");
    QTest::newRow("last control character") << QByteArray("$GPRMC\x7f") << QByteArray("!AIVDM\x1f");
    QTest::newRow("empty") << QByteArray("") << QByteArray("");
}

void SpeedWatchTest::LinesThatAreNoSentences() {
    QFETCH(QByteArray, sLine);
    QFETCH(QByteArray, sNext);
    Input t;
    QCOMPARE(t.Spoken(10, {sLine.toStdString(), sNext.toStdString()}), 1);
}

void SpeedWatchTest::SentencesAmongNoise() {
    Input t;
    QCOMPARE(t.Spoken(50, {"\x80\x81\x82", Good, "<<Size Error>>"}), 0);
    QCOMPARE(t.Spoken(50, {"!AIVDM,1,1,,A,15M67F@uQqG?w<hK?Mu8iFv00000,0*7B"}), 0);
    QCOMPARE(t.Spoken(50, {Good, "$GPRMC*00", "<<Checksum Error>>"}), 0);
    QCOMPARE(t.Spoken(50, {"$PXYZ,of a maker's own"}), 0);  // not decoded, and a sentence all the same
}

void SpeedWatchTest::SilentSecondsDoNotCount() {
    Input t;
    QCOMPARE(t.Spoken(9), 0);
    for (int i = 0; i < 100; ++i) QVERIFY(!t.Silence());
    QVERIFY(t.Second());
    for (int i = 0; i < 100; ++i) QVERIFY(!t.Silence());
    QVERIFY(t.t.Doubts());
}

void SpeedWatchTest::StartForgets() {
    Input t;
    t.Spoken(15);
    t.tLog.Add(Good);
    t.t.Start(t.tLog);
    QVERIFY(!t.t.Doubts());
    QCOMPARE(t.Spoken(9), 0);
    QCOMPARE(t.Spoken(1), 1);
}

void SpeedWatchTest::MoreLinesThanTheLogHolds() {
    Input t;
    t.tLog.Add(Good);
    for (int i = 0; i < 500; ++i) t.tLog.Add("noise");
    QCOMPARE(t.Spoken(9), 0);
    for (int i = 0; i < 500; ++i) t.tLog.Add(i < 450 ? "noise" : Good);
    QVERIFY(!t.Second());
    QCOMPARE(t.Spoken(9), 0);
    t.tLog.Clear();
    QVERIFY(t.Second());
}

QTEST_APPLESS_MAIN(SpeedWatchTest)
#include "SpeedWatchTest.moc"
