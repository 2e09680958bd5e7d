// The position sentences: what they say and which field is reported as wrong.
#include "decoders/GpsSentence.h"

#include <QTest>
#include <cmath>

#include "tests/support/Bytes.h"

using decoders::DecodeGll;
using decoders::DecodeRmc;
using decoders::GpsPosition;
using support::Bytes;
using support::View;

namespace {

bool Near(double a, double b) { return std::fabs(a - b) < 1e-12; }

}  // namespace

class GpsSentenceTest : public QObject {
    Q_OBJECT

private slots:
    void gllOfTheSouthWest();
    void gllIsRead_data();
    void gllIsRead();
    void gllNamesTheFirstBadField_data();
    void gllNamesTheFirstBadField();
    void gllKeepsThePiecesBeforeTheBadField();
    void rmcIsRead_data();
    void rmcIsRead();
    void rmcNamesTheFirstBadField_data();
    void rmcNamesTheFirstBadField();
    void coordinateMustBePlainDigits_data();
    void coordinateMustBePlainDigits();
    void longitudeNeedsFourCharacters_data();
    void longitudeNeedsFourCharacters();
    void cutSentencesAreSafe();
};

void GpsSentenceTest::gllOfTheSouthWest() {
    const std::string sSentence = "$GPGLL,4916.45,S,12311.12,W,225444,A*00";
    const GpsPosition t = DecodeGll(sSentence);
    QCOMPARE(Bytes(t.sError), QByteArray());
    QCOMPARE(Bytes(t.sUtc), QByteArray("22:54:44"));
    QVERIFY(Near(t.dLatitude, -(49 + 16.45 / 60)));
    QVERIFY(Near(t.dLongitude, -(123 + 11.12 / 60)));
    QCOMPARE(Bytes(t.sLatitude), QByteArray("4916.45,S"));
    QCOMPARE(Bytes(t.sLongitude), QByteArray("12311.12,W"));
    QCOMPARE(Bytes(t.sTime), QByteArray("225444"));
}

void GpsSentenceTest::gllIsRead_data() {
    QTest::addColumn<QByteArray>("sentence");
    QTest::addColumn<double>("latitude");
    QTest::addColumn<double>("longitude");
    QTest::addColumn<QByteArray>("utc");
    QTest::addColumn<QByteArray>("time");
    const double dLatitude = 49 + 16.45 / 60;
    const double dLongitude = 123 + 11.12 / 60;
    const QByteArray sUtc = "22:54:44";
    const QByteArray sTime = "225444";
    QTest::newRow("north east") << QByteArray("$GPGLL,4916.45,N,12311.12,E,225444,A*00") << dLatitude << dLongitude
                                << sUtc << sTime;
    QTest::newRow("another talker") << QByteArray("$ECGLL,4916.45,N,12311.12,E,225444,A*00") << dLatitude << dLongitude
                                    << sUtc << sTime;
    QTest::newRow("any first seven characters")
        << QByteArray("\xFF  GLL;4916.45,N,12311.12,E,225444,A") << dLatitude << dLongitude << sUtc << sTime;
    QTest::newRow("mode behind the status")
        << QByteArray("$GPGLL,4916.45,S,12311.12,E,225444,A,D*00") << -dLatitude << dLongitude << sUtc << sTime;
    QTest::newRow("status ends the line")
        << QByteArray("$GPGLL,4916.45,N,12311.12,W,225444,A") << dLatitude << -dLongitude << sUtc << sTime;
    QTest::newRow("anything behind the status")
        << QByteArray("$GPGLL,4916.45,N,12311.12,W,225444,ABC") << dLatitude << -dLongitude << sUtc << sTime;
    QTest::newRow("fraction of seconds is cut")
        << QByteArray("$GPGLL,4916.45,N,12311.12,E,225444.987,A*00") << dLatitude << dLongitude << sUtc << sTime;
    QTest::newRow("time is not checked") << QByteArray("$GPGLL,4916.45,N,12311.12,E,ab cd/,A*00") << dLatitude
                                         << dLongitude << QByteArray("ab: c:d/") << QByteArray("ab cd/");
    QTest::newRow("minutes without point") << QByteArray("$GPGLL,4916,N,12311,E,000000,A") << 49 + 16.0 / 60
                                           << 123 + 11.0 / 60 << QByteArray("00:00:00") << QByteArray("000000");
    QTest::newRow("degrees with zeros in front") << QByteArray("$GPGLL,0006.00,N,00003.00,W,000000,A") << 0.1 << -0.05
                                                 << QByteArray("00:00:00") << QByteArray("000000");
    QTest::newRow("all zero") << QByteArray("$GPGLL,0000.00,S,00000.00,W,000000,A") << 0.0 << 0.0
                              << QByteArray("00:00:00") << QByteArray("000000");
}

void GpsSentenceTest::gllIsRead() {
    QFETCH(QByteArray, sentence);
    QFETCH(double, latitude);
    QFETCH(double, longitude);
    QFETCH(QByteArray, utc);
    QFETCH(QByteArray, time);
    const GpsPosition t = DecodeGll(View(sentence));
    QCOMPARE(Bytes(t.sError), QByteArray());
    QVERIFY(Near(t.dLatitude, latitude));
    QVERIFY(Near(t.dLongitude, longitude));
    QCOMPARE(Bytes(t.sUtc), utc);
    QCOMPARE(Bytes(t.sTime), time);
}

void GpsSentenceTest::gllNamesTheFirstBadField_data() {
    QTest::addColumn<QByteArray>("sentence");
    QTest::addColumn<QByteArray>("error");
    const QByteArray sLatitude = "Error - Latitude, ";
    const QByteArray sLatitudeSign = "Error - Latitude Sign, ";
    const QByteArray sLongitude = "Error - Longitude, ";
    const QByteArray sLongitudeSign = "Error - Longitude Sign, ";
    const QByteArray sTime = "Error - Time, ";
    const QByteArray sValid = "Error - Time Valid, ";
    QTest::newRow("address alone") << QByteArray("$GPGLL") << sLatitude;
    QTest::newRow("latitude missing") << QByteArray("$GPGLL,") << sLatitude;
    QTest::newRow("latitude empty") << QByteArray("$GPGLL,,N,12311.12,W,225444,A") << sLatitude;
    QTest::newRow("no fix: all empty") << QByteArray("$GPGLL,,,,,225444,V*00") << sLatitude;
    QTest::newRow("latitude without comma") << QByteArray("$GPGLL,4916.45") << sLatitude;
    QTest::newRow("latitude no number") << QByteArray("$GPGLL,49x6.45,N,12311.12,W,225444,A") << sLatitude;
    QTest::newRow("latitude bad before its letter bad") << QByteArray("$GPGLL,x,X,12311.12,W,225444,A") << sLatitude;
    QTest::newRow("hemisphere X") << QByteArray("$GPGLL,4916.45,X,12311.12,W,225444,A") << sLatitudeSign;
    QTest::newRow("hemisphere in lower case") << QByteArray("$GPGLL,4916.45,n,12311.12,W,225444,A") << sLatitudeSign;
    QTest::newRow("hemisphere empty") << QByteArray("$GPGLL,4916.45,,12311.12,W,225444,A") << sLatitudeSign;
    QTest::newRow("hemisphere of the other axis")
        << QByteArray("$GPGLL,4916.45,E,12311.12,W,225444,A") << sLatitudeSign;
    QTest::newRow("hemisphere of two letters") << QByteArray("$GPGLL,4916.45,NN,12311.12,W,225444,A") << sLatitudeSign;
    QTest::newRow("hemisphere ends the line") << QByteArray("$GPGLL,4916.45,N") << sLatitudeSign;
    QTest::newRow("longitude missing") << QByteArray("$GPGLL,4916.45,N,") << sLongitude;
    QTest::newRow("longitude empty") << QByteArray("$GPGLL,4916.45,N,,W,225444,A") << sLongitude;
    QTest::newRow("longitude without comma") << QByteArray("$GPGLL,4916.45,N,12311.12") << sLongitude;
    QTest::newRow("longitude no number") << QByteArray("$GPGLL,4916.45,N,1231-.12,W,225444,A") << sLongitude;
    QTest::newRow("longitude hemisphere X") << QByteArray("$GPGLL,4916.45,N,12311.12,X,225444,A") << sLongitudeSign;
    QTest::newRow("longitude hemisphere N") << QByteArray("$GPGLL,4916.45,N,12311.12,N,225444,A") << sLongitudeSign;
    QTest::newRow("longitude hemisphere in lower case")
        << QByteArray("$GPGLL,4916.45,N,12311.12,w,225444,A") << sLongitudeSign;
    QTest::newRow("longitude hemisphere ends the line") << QByteArray("$GPGLL,4916.45,N,12311.12,W") << sLongitudeSign;
    QTest::newRow("time of five characters") << QByteArray("$GPGLL,4916.45,N,12311.12,W,22544,A") << sTime;
    QTest::newRow("time empty") << QByteArray("$GPGLL,4916.45,N,12311.12,W,,A") << sTime;
    QTest::newRow("time without comma") << QByteArray("$GPGLL,4916.45,N,12311.12,W,225444*00") << sTime;
    QTest::newRow("time missing") << QByteArray("$GPGLL,4916.45,N,12311.12,W,") << sTime;
    QTest::newRow("status V") << QByteArray("$GPGLL,4916.45,N,12311.12,W,225444,V") << sValid;
    QTest::newRow("status in lower case") << QByteArray("$GPGLL,4916.45,N,12311.12,W,225444,a") << sValid;
    QTest::newRow("status empty") << QByteArray("$GPGLL,4916.45,N,12311.12,W,225444,") << sValid;
    QTest::newRow("status empty before mode") << QByteArray("$GPGLL,4916.45,N,12311.12,W,225444,,A") << sValid;
}

void GpsSentenceTest::gllNamesTheFirstBadField() {
    QFETCH(QByteArray, sentence);
    QFETCH(QByteArray, error);
    const GpsPosition t = DecodeGll(View(sentence));
    QCOMPARE(Bytes(t.sError), error);
    QCOMPARE(Bytes(t.sTime), QByteArray());  // nothing to make an RMC of
}

void GpsSentenceTest::gllKeepsThePiecesBeforeTheBadField() {
    GpsPosition t = DecodeGll("$GPGLL,4916.45,X,12311.12,W,225444,A");
    QVERIFY(t.sLatitude.empty() && t.sLongitude.empty() && t.sUtc.empty());
    t = DecodeGll("$GPGLL,4916.45,N,12311.12,X,225444,A");
    QCOMPARE(Bytes(t.sLatitude), QByteArray("4916.45,N"));
    QVERIFY(t.sLongitude.empty());
    t = DecodeGll("$GPGLL,4916.45,N,12311.12,W,22544,A");
    QCOMPARE(Bytes(t.sLongitude), QByteArray("12311.12,W"));
    QVERIFY(t.sUtc.empty());
    t = DecodeGll("$GPGLL,4916.45,N,12311.12,W,225444,V");
    QCOMPARE(Bytes(t.sUtc), QByteArray("22:54:44"));
    QVERIFY(t.sTime.empty());
}

void GpsSentenceTest::rmcIsRead_data() {
    QTest::addColumn<QByteArray>("sentence");
    QTest::addColumn<double>("latitude");
    QTest::addColumn<double>("longitude");
    QTest::addColumn<QByteArray>("utc");
    const double dLatitude = 49 + 16.45 / 60;
    const double dLongitude = 123 + 11.12 / 60;
    const QByteArray sUtc = "22:54:44";
    QTest::newRow("whole sentence") << QByteArray("$GPRMC,225444,A,4916.45,N,12311.12,W,000.5,054.7,191194,020.3,E*68")
                                    << dLatitude << -dLongitude << sUtc;
    QTest::newRow("south east, another talker")
        << QByteArray("$GNRMC,225444,A,4916.45,S,12311.12,E,") << -dLatitude << dLongitude << sUtc;
    QTest::newRow("fraction of seconds") << QByteArray("$GPRMC,225444.00,A,4916.45,N,12311.12,W,,,,,") << dLatitude
                                         << -dLongitude << sUtc;
    QTest::newRow("the rest is not looked at")
        << QByteArray("$GPRMC,225444,A,4916.45,N,12311.12,W,x") << dLatitude << -dLongitude << sUtc;
}

void GpsSentenceTest::rmcIsRead() {
    QFETCH(QByteArray, sentence);
    QFETCH(double, latitude);
    QFETCH(double, longitude);
    QFETCH(QByteArray, utc);
    const GpsPosition t = DecodeRmc(View(sentence));
    QCOMPARE(Bytes(t.sError), QByteArray());
    QVERIFY(Near(t.dLatitude, latitude));
    QVERIFY(Near(t.dLongitude, longitude));
    QCOMPARE(Bytes(t.sUtc), utc);
}

void GpsSentenceTest::rmcNamesTheFirstBadField_data() {
    QTest::addColumn<QByteArray>("sentence");
    QTest::addColumn<QByteArray>("error");
    const QByteArray sLatitude = "Error - Latitude, ";
    const QByteArray sLongitude = "Error - Longitude, ";
    const QByteArray sTime = "Error - Time, ";
    const QByteArray sValid = "Error - Time Valid, ";
    QTest::newRow("address alone") << QByteArray("$GPRMC") << sTime;
    QTest::newRow("time empty") << QByteArray("$GPRMC,,A,4916.45,N,12311.12,W,") << sTime;
    QTest::newRow("time of five characters") << QByteArray("$GPRMC,22544,A,4916.45,N,12311.12,W,") << sTime;
    QTest::newRow("time without comma") << QByteArray("$GPRMC,225444") << sTime;
    QTest::newRow("status V") << QByteArray("$GPRMC,225444,V,4916.45,N,12311.12,W,") << sValid;
    QTest::newRow("status needs its comma") << QByteArray("$GPRMC,225444,A") << sValid;
    QTest::newRow("status of two letters") << QByteArray("$GPRMC,225444,AA,4916.45,N,12311.12,W,") << sValid;
    QTest::newRow("status before coordinates") << QByteArray("$GPRMC,225444,V,,,,,") << sValid;
    QTest::newRow("time before status") << QByteArray("$GPRMC,2254,V,,,,,") << sTime;
    QTest::newRow("latitude empty") << QByteArray("$GPRMC,225444,A,,N,12311.12,W,") << sLatitude;
    QTest::newRow("latitude missing") << QByteArray("$GPRMC,225444,A,") << sLatitude;
    QTest::newRow("latitude no number") << QByteArray("$GPRMC,225444,A,+916.45,N,12311.12,W,") << sLatitude;
    QTest::newRow("latitude hemisphere") << QByteArray("$GPRMC,225444,A,4916.45,X,12311.12,W,")
                                         << QByteArray("Error - Latitude Sign, ");
    QTest::newRow("longitude empty") << QByteArray("$GPRMC,225444,A,4916.45,N,,W,") << sLongitude;
    QTest::newRow("longitude missing") << QByteArray("$GPRMC,225444,A,4916.45,N,") << sLongitude;
    QTest::newRow("longitude hemisphere")
        << QByteArray("$GPRMC,225444,A,4916.45,N,12311.12,S,") << QByteArray("Error - Longitude Sign, ");
    QTest::newRow("comma behind the longitude's letter is needed")
        << QByteArray("$GPRMC,225444,A,4916.45,N,12311.12,W") << QByteArray("Error - Longitude Sign, ");
}

void GpsSentenceTest::rmcNamesTheFirstBadField() {
    QFETCH(QByteArray, sentence);
    QFETCH(QByteArray, error);
    QCOMPARE(Bytes(DecodeRmc(View(sentence)).sError), error);
}

void GpsSentenceTest::coordinateMustBePlainDigits_data() {
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<bool>("good");
    QTest::addColumn<double>("latitude");
    QTest::newRow("plain") << QByteArray("4916.45") << true << 49 + 16.45 / 60;
    QTest::newRow("three characters") << QByteArray("496") << true << 49.1;
    QTest::newRow("point at the end") << QByteArray("4916.") << true << 49 + 16.0 / 60;
    QTest::newRow("point before the minutes") << QByteArray("49.5") << true << 49 + 0.5 / 60;
    QTest::newRow("minutes beyond sixty are not judged") << QByteArray("4999.0") << true << 49 + 99.0 / 60;
    QTest::newRow("many decimals") << QByteArray("4916.4500000000000000000000000") << true << 49 + 16.45 / 60;
    QTest::newRow("one character") << QByteArray("4") << false << 0.0;
    QTest::newRow("two characters, no minutes") << QByteArray("49") << false << 0.0;
    QTest::newRow("a point is no number") << QByteArray("49.") << false << 0.0;
    QTest::newRow("point among the degrees") << QByteArray("4.916") << false << 0.0;
    QTest::newRow("two points") << QByteArray("4916.4.5") << false << 0.0;
    QTest::newRow("minus") << QByteArray("-916.45") << false << 0.0;
    QTest::newRow("minus before the minutes") << QByteArray("49-6.45") << false << 0.0;
    QTest::newRow("plus") << QByteArray("49+6.45") << false << 0.0;
    QTest::newRow("below the digits") << QByteArray("4/16.45") << false << 0.0;
    QTest::newRow("above the digits") << QByteArray("4:16.45") << false << 0.0;
    QTest::newRow("blank in front") << QByteArray(" 4916.45") << false << 0.0;
    QTest::newRow("blank behind") << QByteArray("4916.45 ") << false << 0.0;
    QTest::newRow("exponent") << QByteArray("4916e1") << false << 0.0;
    QTest::newRow("hexadecimal") << QByteArray("490x10") << false << 0.0;
    QTest::newRow("words for no number") << QByteArray("49nan") << false << 0.0;
    QTest::newRow("infinite") << QByteArray("49inf") << false << 0.0;
    QTest::newRow("decimal semicolon") << QByteArray("4916;45") << false << 0.0;
    QTest::newRow("NUL inside") << QByteArray(
                                       "4916\0"
                                       "45",
                                       7)
                                << false << 0.0;
    QTest::newRow("too large for any number") << "49" + QByteArray(400, '9') << false << 0.0;
}

void GpsSentenceTest::coordinateMustBePlainDigits() {
    QFETCH(QByteArray, field);
    QFETCH(bool, good);
    QFETCH(double, latitude);
    const QByteArray sGll = "$GPGLL," + field + ",N,12311.12,W,225444,A";
    const QByteArray sRmc = "$GPRMC,225444,A," + field + ",N,12311.12,W,";
    const QByteArray sError = good ? "" : "Error - Latitude, ";
    const GpsPosition tGll = DecodeGll(View(sGll));
    const GpsPosition tRmc = DecodeRmc(View(sRmc));
    QCOMPARE(Bytes(tGll.sError), sError);
    QCOMPARE(Bytes(tRmc.sError), sError);
    QVERIFY(Near(tGll.dLatitude, latitude));
    QVERIFY(Near(tRmc.dLatitude, latitude));
    if (good) QCOMPARE(Bytes(tGll.sLatitude), field + ",N");
}

void GpsSentenceTest::longitudeNeedsFourCharacters_data() {
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<bool>("good");
    QTest::addColumn<double>("longitude");
    QTest::newRow("four characters") << QByteArray("1236") << true << 123.1;
    QTest::newRow("three characters") << QByteArray("123") << false << 0.0;
    QTest::newRow("degrees and a point") << QByteArray("123.") << false << 0.0;
    QTest::newRow("point among the degrees") << QByteArray("12.3") << false << 0.0;
    QTest::newRow("letter") << QByteArray("12311.1E") << false << 0.0;
}

void GpsSentenceTest::longitudeNeedsFourCharacters() {
    QFETCH(QByteArray, field);
    QFETCH(bool, good);
    QFETCH(double, longitude);
    const QByteArray sGll = "$GPGLL,4916.45,N," + field + ",E,225444,A";
    const GpsPosition t = DecodeGll(View(sGll));
    QCOMPARE(Bytes(t.sError), QByteArray(good ? "" : "Error - Longitude, "));
    QVERIFY(Near(t.dLongitude, longitude));
}

void GpsSentenceTest::cutSentencesAreSafe() {
    const std::string sGll = "$GPGLL,4916.45,S,12311.12,W,225444,A";
    const std::string sRmc = "$GPRMC,225444,A,4916.45,N,12311.12,W,";
    for (std::size_t i = 0; i < sGll.size(); ++i) QVERIFY(!DecodeGll(std::string(sGll, 0, i)).sError.empty());
    for (std::size_t i = 0; i < sRmc.size(); ++i) QVERIFY(!DecodeRmc(std::string(sRmc, 0, i)).sError.empty());
    QVERIFY(DecodeGll(sGll).sError.empty());
    QVERIFY(DecodeRmc(sRmc).sError.empty());
}

QTEST_GUILESS_MAIN(GpsSentenceTest)
#include "GpsSentenceTest.moc"
