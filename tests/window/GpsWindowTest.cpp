// GPS sentences on the window: the GPS log, the two boxes, the own position and what is kept for the output port.
#include <QTest>
#include <cmath>

#include "tests/window/Bench.h"
#include "tests/window/Shown.h"

using namespace support;

namespace {

struct Gps : Listening {
    QStringList Log() { return support::Log(*this, lstGpsData); }
    // "box | box", as the user sees them.
    QByteArray Boxes() {
        Synchronize();
        return (txtGpsLat.text() + QLatin1String(" | ") + txtGpsLon.text()).toLatin1();
    }
};

const QByteArray Vancouver =
    "49\xb0"
    "16.45'S | 123\xb0"
    "11.12'W";

bool Near(double a, double b) { return std::abs(a - b) < 1e-11; }

void AddError(const char* sName, const char* sSentence, const char* sField) {
    QTest::newRow(sName) << QByteArray(sSentence) << QByteArray(sField);
}

}  // namespace

class GpsWindowTest : public QObject {
    Q_OBJECT
private slots:
    void exampleOfTheSouth();
    void rmcSetsThePosition();
    void badFieldIsNamed_data();
    void badFieldIsNamed();
    void goodSentencesAreTaken_data();
    void goodSentencesAreTaken();
    void gllPiecesAreKeptAsFarAsDecodingCame_data();
    void gllPiecesAreKeptAsFarAsDecodingCame();
    void gllClearsItsPiecesFirst();
    void rmcLeavesTheGllPiecesAlone();
    void lineIsLoggedBeforeTheBoxesAreSet();
    void ownPositionHasTheBoxesTwoDecimals();
    void ownPositionFollowsForTheNextMessage();
    void bothPortsFeedTheSamePosition();
    void logKeepsTheNewest101Lines();
    void timeIsTheArrival();
    void logSurvivesAStart();
    void textThatIsNoPositionIsToldWhenAsked_data();
    void textThatIsNoPositionIsToldWhenAsked();
    void positionTextsAreRead();
    void positionsAreWritten();
    void coincidentPositionsRaise();
};

void GpsWindowTest::exampleOfTheSouth() {
    Gps t;
    t.FeedLine(0, "$GPGLL,4916.45,S,12311.12,W,225444,A");
    QCOMPARE(t.Log(), Texts({"Time=12:00:00, Utc=22:54:44, Lat=49\xb0"
                             "16.45'S, Lon=123\xb0"
                             "11.12'W"}));
    QCOMPARE(t.Boxes(), Vancouver);
    QVERIFY(Near(t.m_dLatitude, -(49 + 16.45 / 60)));
    QVERIFY(Near(t.m_dLongitude, -(123 + 11.12 / 60)));
    QCOMPARE(Bytes(t.m_sGllLatitude), QByteArray("4916.45,S"));
    QCOMPARE(Bytes(t.m_sGllLongitude), QByteArray("12311.12,W"));
    QCOMPARE(Bytes(t.m_sGllTime), QByteArray("225444"));
    QVERIFY(!t.Marks(t.lstGpsData).at(0));
}

void GpsWindowTest::rmcSetsThePosition() {
    Gps t;
    t.FeedLine(1, WithChecksum("$GPRMC,225446.5,A,0005.10,N,00012.30,E,000.5,054.7,191194,020.3,E"));
    QCOMPARE(t.Log(), Texts({"Time=12:00:00, Utc=22:54:46, Lat=00\xb0"
                             "05.10'N, Lon=000\xb0"
                             "12.30'E"}));
    QVERIFY(Near(t.m_dLatitude, 5.1 / 60));
    QVERIFY(Near(t.m_dLongitude, 12.3 / 60));
}

void GpsWindowTest::badFieldIsNamed_data() {
    QTest::addColumn<QByteArray>("sSentence");
    QTest::addColumn<QByteArray>("sField");
    AddError("GLL latitude empty", "$GPGLL,,N,12311.12,W,225444,A", "Latitude");
    AddError("GLL latitude missing", "$GPGLL", "Latitude");
    AddError("GLL latitude without comma", "$GPGLL,4916.45", "Latitude");
    AddError("GLL latitude no number", "$GPGLL,49x6.45,N,12311.12,W,225444,A", "Latitude");
    AddError("GLL latitude of two characters", "$GPGLL,49,N,12311.12,W,225444,A", "Latitude");
    AddError("GLL latitude with sign", "$GPGLL,-916.45,N,12311.12,W,225444,A", "Latitude");
    AddError("GLL latitude with exponent", "$GPGLL,491e2,N,12311.12,W,225444,A", "Latitude");
    AddError("GLL latitude comes before its sign", "$GPGLL,49x6.45,X,12311.12,W,225444,A", "Latitude");
    AddError("GLL latitude sign", "$GPGLL,4916.45,X,12311.12,W,225444,A", "Latitude Sign");
    AddError("GLL latitude sign small", "$GPGLL,4916.45,n,12311.12,W,225444,A", "Latitude Sign");
    AddError("GLL latitude sign long", "$GPGLL,4916.45,NN,12311.12,W,225444,A", "Latitude Sign");
    AddError("GLL latitude sign missing", "$GPGLL,4916.45,", "Latitude Sign");
    AddError("GLL latitude sign of the other", "$GPGLL,4916.45,E,12311.12,W,225444,A", "Latitude Sign");
    AddError("GLL longitude empty", "$GPGLL,4916.45,N,,W,225444,A", "Longitude");
    AddError("GLL longitude missing", "$GPGLL,4916.45,N,", "Longitude");
    AddError("GLL longitude no number", "$GPGLL,4916.45,N,123:1.12,W,225444,A", "Longitude");
    AddError("GLL longitude of three characters", "$GPGLL,4916.45,N,123,W,225444,A", "Longitude");
    AddError("GLL longitude with two points", "$GPGLL,4916.45,N,12311.1.2,W,225444,A", "Longitude");
    AddError("GLL longitude sign", "$GPGLL,4916.45,N,12311.12,N,225444,A", "Longitude Sign");
    AddError("GLL longitude sign small", "$GPGLL,4916.45,N,12311.12,w,225444,A", "Longitude Sign");
    AddError("GLL time of five", "$GPGLL,4916.45,N,12311.12,W,22544,A", "Time");
    AddError("GLL time empty", "$GPGLL,4916.45,N,12311.12,W,,A", "Time");
    AddError("GLL time without comma", "$GPGLL,4916.45,N,12311.12,W,225444", "Time");
    AddError("GLL not valid", "$GPGLL,4916.45,N,12311.12,W,225444,V", "Time Valid");
    AddError("GLL status small", "$GPGLL,4916.45,N,12311.12,W,225444,a", "Time Valid");
    AddError("GLL status empty", "$GPGLL,4916.45,N,12311.12,W,225444,", "Time Valid");
    AddError("RMC time of five", "$GPRMC,22544,A,4916.45,N,12311.12,W,0,0,191194,,", "Time");
    AddError("RMC time missing", "$GPRMC", "Time");
    AddError("RMC not valid", "$GPRMC,225446,V,4916.45,N,12311.12,W,0,0,191194,,", "Time Valid");
    AddError("RMC status long", "$GPRMC,225446,AA,4916.45,N,12311.12,W,0,0,191194,,", "Time Valid");
    AddError("RMC status before coordinates", "$GPRMC,225446,V,,,,,0,0,191194,,", "Time Valid");
    AddError("RMC time before status", "$GPRMC,,V,,,,,0,0,191194,,", "Time");
    AddError("RMC latitude empty", "$GPRMC,225446,A,,N,12311.12,W,0,0,191194,,", "Latitude");
    AddError("RMC latitude no number", "$GPRMC,225446,A,four,N,12311.12,W,0,0,191194,,", "Latitude");
    AddError("RMC latitude sign", "$GPRMC,225446,A,4916.45,W,12311.12,W,0,0,191194,,", "Latitude Sign");
    AddError("RMC longitude empty", "$GPRMC,225446,A,4916.45,N,,W,0,0,191194,,", "Longitude");
    AddError("RMC longitude no number", "$GPRMC,225446,A,4916.45,N,1 311.12,W,0,0,191194,,", "Longitude");
    AddError("RMC longitude sign", "$GPRMC,225446,A,4916.45,N,12311.12,X,0,0,191194,,", "Longitude Sign");
    AddError("RMC longitude sign without comma", "$GPRMC,225446,A,4916.45,N,12311.12,W", "Longitude Sign");
}

void GpsWindowTest::badFieldIsNamed() {
    QFETCH(QByteArray, sSentence);
    QFETCH(QByteArray, sField);
    Gps t;
    t.FeedLine(0, "$GPRMC,225440,A,4916.45,S,12311.12,W,0,0,191194,,");
    t.FeedLine(0, View(sSentence));
    QCOMPARE(t.Log().mid(1), Texts({("Error - " + sField + ", " + sSentence).toStdString()}));
    QCOMPARE(t.Boxes(), Vancouver);
    QVERIFY(Near(t.m_dLatitude, -(49 + 16.45 / 60)));
    QVERIFY(Near(t.m_dLongitude, -(123 + 11.12 / 60)));
    QCOMPARE(Bytes(t.m_sGllTime), QByteArray());
    QCOMPARE(Panel(t, ui::PanelSummary), QByteArray());
}

void GpsWindowTest::goodSentencesAreTaken_data() {
    QTest::addColumn<QByteArray>("sSentence");
    QTest::newRow("any talker") << QByteArray("$ECGLL,4916.45,S,12311.12,W,225444,A");
    QTest::newRow("any first character") << QByteArray("!xyGLL,4916.45,S,12311.12,W,225444,A");
    QTest::newRow("mode field") << QByteArray("$GPGLL,4916.45,S,12311.12,W,225444,A,D");
    QTest::newRow("status with more") << QByteArray("$GPGLL,4916.45,S,12311.12,W,225444,Anything");
    QTest::newRow("checksum") << Bytes(WithChecksum("$GPGLL,4916.45,S,12311.12,W,225444.00,A"));
    QTest::newRow("RMC of any talker") << QByteArray("?INRMC,225444,A,4916.45,S,12311.12,W,");
    QTest::newRow("RMC with rubbish behind") << QByteArray("$GPRMC,225444,A,4916.45,S,12311.12,W,x,,,*");
    QTest::newRow("more decimals") << QByteArray("$GPGLL,4916.450000,S,12311.1200001,W,225444.123,A");
}

void GpsWindowTest::goodSentencesAreTaken() {
    QFETCH(QByteArray, sSentence);
    Gps t;
    t.FeedLine(0, View(sSentence));
    QCOMPARE(t.Log(), Texts({"Time=12:00:00, Utc=22:54:44, Lat=49\xb0"
                             "16.45'S, Lon=123\xb0"
                             "11.12'W"}));
    QCOMPARE(t.Boxes(), Vancouver);
}

void GpsWindowTest::gllPiecesAreKeptAsFarAsDecodingCame_data() {
    QTest::addColumn<QByteArray>("sSentence");
    QTest::addColumn<QByteArray>("sLatitude");
    QTest::addColumn<QByteArray>("sLongitude");
    QTest::newRow("latitude sign") << QByteArray("$GPGLL,4916.45,X,12311.12,W,225444,A") << QByteArray()
                                   << QByteArray();
    QTest::newRow("longitude") << QByteArray("$GPGLL,4916.45,N,,W,225444,A") << QByteArray("4916.45,N") << QByteArray();
    QTest::newRow("longitude sign") << QByteArray("$GPGLL,4916.45,N,12311.12,X,225444,A") << QByteArray("4916.45,N")
                                    << QByteArray();
    QTest::newRow("time") << QByteArray("$GPGLL,4916.45,N,12311.12,W,2254,A") << QByteArray("4916.45,N")
                          << QByteArray("12311.12,W");
    QTest::newRow("status") << QByteArray("$GPGLL,4916.45,N,12311.12,W,225444,V") << QByteArray("4916.45,N")
                            << QByteArray("12311.12,W");
}

void GpsWindowTest::gllPiecesAreKeptAsFarAsDecodingCame() {
    QFETCH(QByteArray, sSentence);
    QFETCH(QByteArray, sLatitude);
    QFETCH(QByteArray, sLongitude);
    Gps t;
    t.FeedLine(0, "$GPGLL,0101.01,S,00202.02,E,030303,A");
    t.FeedLine(0, View(sSentence));
    QCOMPARE(Bytes(t.m_sGllLatitude), sLatitude);
    QCOMPARE(Bytes(t.m_sGllLongitude), sLongitude);
    QCOMPARE(Bytes(t.m_sGllTime), QByteArray());
}

void GpsWindowTest::gllClearsItsPiecesFirst() {
    Gps t;
    t.FeedLine(0, "$GPGLL,4916.45,N,12311.12,W,225444,A");
    t.FeedLine(1, "$GPGLL,,");
    QVERIFY(t.m_sGllLatitude.empty() && t.m_sGllLongitude.empty() && t.m_sGllTime.empty());
}

void GpsWindowTest::rmcLeavesTheGllPiecesAlone() {
    Gps t;
    t.FeedLine(0, "$GPGLL,4916.45,N,12311.12,W,225444,A");
    t.FeedLine(0, "$GPRMC,111111,A,1010.10,S,01010.10,E,");
    t.FeedLine(0, "$GPRMC,,");
    QCOMPARE(Bytes(t.m_sGllLatitude), QByteArray("4916.45,N"));
    QCOMPARE(Bytes(t.m_sGllLongitude), QByteArray("12311.12,W"));
    QCOMPARE(Bytes(t.m_sGllTime), QByteArray("225444"));
}

void GpsWindowTest::lineIsLoggedBeforeTheBoxesAreSet() {
    Gps t;
    std::vector<int> iLines;
    for (toolkit::MaskedBox* p : {&t.txtGpsLat, &t.txtGpsLon}) {
        connect(p, &toolkit::MaskedBox::Change, this, [&] { iLines.push_back(t.lstGpsData.Lines.Count()); });
    }
    t.FeedLine(0, "$GPGLL,4916.45,N,12311.12,W,225444,A");
    QCOMPARE(iLines, (std::vector<int>{1, 1}));
}

void GpsWindowTest::ownPositionHasTheBoxesTwoDecimals() {
    Gps t;
    t.FeedLine(0, "$GPGLL,4916.4567,N,12311.1234,W,225444,A");
    QCOMPARE(t.Boxes(), QByteArray("49\xb0"
                                   "16.46'N | 123\xb0"
                                   "11.12'W"));
    QVERIFY(Near(t.m_dLatitude, 49 + 16.46 / 60));
    QVERIFY(Near(t.m_dLongitude, -(123 + 11.12 / 60)));
}

void GpsWindowTest::ownPositionFollowsForTheNextMessage() {
    Gps t;
    // A target on the equator, one degree east of zero.
    AisReport tReport = {.lMmsi = 1, .lLongitude = 600000, .lLatitude = 0};
    t.FeedLine(0, AisSentence(AisClassA(1, tReport)));
    t.FeedLine(1, "$GPGLL,0000.00,N,00000.00,E,225444,A");
    t.FeedLine(0, AisSentence(AisClassA(1, tReport)));
    t.FeedLine(1, "$GPRMC,225445,A,0000.00,N,00300.00,E,");
    t.FeedLine(0, AisSentence(AisClassA(1, tReport)));
    QCOMPARE(Column(t, targets::ColRange), Texts({"", "60.0", "120.0"}));
    QCOMPARE(Column(t, targets::ColBearing), Texts({"", "90", "270"}));
}

void GpsWindowTest::bothPortsFeedTheSamePosition() {
    Gps t;
    t.FeedLine(0, "$GPGLL,4916.45,N,12311.12,W,225444,A");
    t.FeedLine(1, "$GPGLL,5016.45,N,12411.12,W,225445,A");
    QVERIFY(Near(t.m_dLatitude, 50 + 16.45 / 60));
    QVERIFY(Near(t.m_dLongitude, -(124 + 11.12 / 60)));
    t.FeedLine(0, "$GPRMC,225446,A,0116.45,S,00211.12,E,");
    QVERIFY(Near(t.m_dLatitude, -(1 + 16.45 / 60)));
    QCOMPARE(t.Log().size(), 3);
}

void GpsWindowTest::logKeepsTheNewest101Lines() {
    Gps t;
    QStringList sExpected;
    for (int i = 0; i < 120; ++i) {
        t.FeedLine(0, "$GPGLL,,line " + std::to_string(i));
        sExpected << QStringLiteral("Error - Latitude, $GPGLL,,line %1").arg(i);
    }
    QCOMPARE(t.Log(), sExpected.mid(19));
    QCOMPARE(t.lstGpsData.currentIndex().row(), 100);
}

void GpsWindowTest::timeIsTheArrival() {
    Gps t;
    t.tWorld.SetClock("2011-05-15T01:02:03");
    t.FeedLine(0, "$GPGLL,4916.45,N,12311.12,W,225444,A");
    QVERIFY(t.Log().at(0).startsWith(QLatin1String("Time=01:02:03, Utc=22:54:44, ")));
}

void GpsWindowTest::logSurvivesAStart() {
    Gps t;
    t.FeedLine(0, "$GPGLL,,");
    t.Press(ui::KeyStop);
    t.Press(ui::KeyStart);
    QCOMPARE(t.Log().size(), 1);
}

void GpsWindowTest::textThatIsNoPositionIsToldWhenAsked_data() {
    QTest::addColumn<QByteArray>("sText");
    for (const char* sText : {"1230.00S", "", " 12 30.00 S", "12 30.00", "x 30.00 N", "12 y N"}) {
        QTest::addRow("\"%s\"", sText) << QByteArray(sText);
    }
}

void GpsWindowTest::textThatIsNoPositionIsToldWhenAsked() {
    QFETCH(QByteArray, sText);
    Gps t;
    double dLatitude = 1;
    double dLongitude = 1;
    QVERIFY(!t.LatitudeFromString(View(sText), dLatitude, false));
    QVERIFY(!t.LongitudeFromString(View(sText), dLongitude, false));
    QCOMPARE(dLatitude, -999.0);
    QCOMPARE(dLongitude, -999.0);
    QCOMPARE(t.tWorld.sMessages, QStringList());
    dLatitude = dLongitude = 1;
    QVERIFY(!t.LatitudeFromString(View(sText), dLatitude, true));
    QVERIFY(!t.LongitudeFromString(View(sText), dLongitude, true));
    QCOMPARE(dLatitude, -999.0);
    QCOMPARE(dLongitude, -999.0);
    QCOMPARE(t.tWorld.sMessages, QStringList({QStringLiteral("Unable for decode Latitude ") + QLatin1String(sText),
                                              QStringLiteral("Unable for decode Longitude ") + QLatin1String(sText)}));
    for (const toolkit::MessageIcon eIcon : t.tWorld.eMessageIcons) {
        QCOMPARE(eIcon, toolkit::MessageIcon::Exclamation);
    }
}

void GpsWindowTest::positionTextsAreRead() {
    Gps t;
    double d = 0;
    QVERIFY(
        t.LatitudeFromString("12\xb0"
                             "30.00'S",
                             d, true));
    QCOMPARE(d, -12.5);
    QVERIFY(t.LatitudeFromString("12 30.00 S", d, true));
    QCOMPARE(d, -12.5);
    QVERIFY(t.LatitudeFromString("12 30.00 s", d, true));
    QCOMPARE(d, 12.5);
    QVERIFY(t.LatitudeFromString("-47 30.00 S", d, true));
    QCOMPARE(d, 46.5);
    QVERIFY(
        t.LongitudeFromString("122\xb0"
                              "20.20'W",
                              d, true));
    QVERIFY(Near(d, -(122 + 20.2 / 60)));
    QCOMPARE(t.tWorld.sMessages, QStringList());
}

void GpsWindowTest::positionsAreWritten() {
    QCOMPARE(Bytes(TestWindow::LatitudeToString(47.6083)), QByteArray("47\xb0"
                                                                      "36.50'N"));
    QCOMPARE(Bytes(TestWindow::LongitudeToString(-122.3366)), QByteArray("122\xb0"
                                                                         "20.20'W"));
    QCOMPARE(Bytes(TestWindow::LatitudeToString(0)), QByteArray("00\xb0"
                                                                "00.00'N"));
    QCOMPARE(Bytes(TestWindow::LongitudeToString(0)), QByteArray("000\xb0"
                                                                 "00.00'E"));
    QCOMPARE(Bytes(TestWindow::LatitudeToString(12.999999)), QByteArray("12\xb0"
                                                                        "60.00'N"));
}

// The operation itself raises; it is the decoder that goes without.
void GpsWindowTest::coincidentPositionsRaise() {
    Gps t;
    t.txtGpsLat.SetText("00 00.00 N");
    t.txtGpsLon.SetText("179 00.00 E");
    std::string sRange, sBearing;
    t.RangeBearingText(0, -179, sRange, sBearing);
    QCOMPARE(Bytes(sRange), QByteArray("120.0"));
    QCOMPARE(Bytes(sBearing), QByteArray("90"));
    t.txtGpsLon.SetText("000 00.00 E");
    QVERIFY_EXCEPTION_THROWN(t.RangeBearingText(0, 0, sRange, sBearing), nav::DivisionByZero);
}

QTEST_MAIN(GpsWindowTest)
#include "GpsWindowTest.moc"
