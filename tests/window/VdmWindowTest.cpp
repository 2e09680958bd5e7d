// AIS messages on the window: how sentences become messages and what the AIS log and the target table tell of them.
#include <QRegularExpression>
#include <QTest>
#include <array>
#include <cmath>
#include <numbers>
#include <random>

#include "tests/window/Bench.h"
#include "tests/window/Shown.h"

using namespace support;

namespace {

constexpr long double Radian = std::numbers::pi_v<long double> / 180;

struct Circle {
    long double dRange;    // nautical miles
    long double dBearing;  // degrees, 0 to 360
};

// Haversine for the distance, the four-quadrant arctangent for the bearing.
Circle GreatCircle(long double dLatitude1, long double dLongitude1, long double dLatitude2, long double dLongitude2) {
    const long double dLat1 = dLatitude1 * Radian;
    const long double dLat2 = dLatitude2 * Radian;
    const long double dLon = (dLongitude2 - dLongitude1) * Radian;
    const long double dSineLat = std::sin((dLat2 - dLat1) / 2);
    const long double dSineLon = std::sin(dLon / 2);
    const long double dHaversine = dSineLat * dSineLat + std::cos(dLat1) * std::cos(dLat2) * dSineLon * dSineLon;
    const long double dBearing =
        std::atan2(std::sin(dLon) * std::cos(dLat2),
                   std::cos(dLat1) * std::sin(dLat2) - std::sin(dLat1) * std::cos(dLat2) * std::cos(dLon)) /
        Radian;
    return {2 * std::asin(std::sqrt(dHaversine)) / Radian * 60, dBearing < 0 ? dBearing + 360 : dBearing};
}

const AisReport Ship = {.lMmsi = 366999123,
                        .lRateOfTurn = 15,
                        .lSpeed = 101,
                        .lLongitude = AisAngle(122, 30.0, true),
                        .lLatitude = AisAngle(47, 40.0),
                        .lCourse = 455,
                        .lHeading = 50};

struct Vdm : Listening {
    void SetOwnPosition(std::string_view sLatitude =
                            "47\xb0"
                            "36.50'N",
                        std::string_view sLongitude =
                            "122\xb0"
                            "20.20'W") {
        txtGpsLat.SetText(sLatitude);
        txtGpsLon.SetText(sLongitude);
    }
    QStringList Log() { return support::Log(*this, lstAisData); }
    QStringList LogOf(const AisBits& sBits) {
        FeedLine(0, AisSentence(sBits));
        return Log();
    }
};

// What a header line says behind the MMSI for each id; nothing for those that are not here.
QByteArray HeaderName(int iId) {
    switch (iId) {
        case 1:
            return ", Position Scheduled";
        case 2:
            return ", Position Assigned";
        case 3:
            return ", Position Response";
        case 4:
            return ", Base Station Report";
        case 5:
            return ", Ship Static and Voyage";
        case 18:
            return ", Class B Standard Position";
        case 19:
            return ", Class B Extended Position";
        default:
            return {};
    }
}

AisBits MessageOfType(int iType, const AisReport& tReport) {
    switch (iType) {
        case 1:
        case 2:
        case 3:
            return AisClassA(iType, tReport);
        case 4:
            return AisBaseStation(4, tReport);
        case 18:
            return AisClassB(tReport);
        case 19:
            return AisClassBExtended(tReport, "YACHT");
        default:
            return AisOther(iType, tReport.lMmsi);
    }
}

template <class Change>
AisBits ClassA(Change tChange) {
    AisReport tReport = Ship;
    tChange(tReport);
    return AisClassA(1, tReport);
}

template <class Change>
AisBits ClassB(Change tChange) {
    AisReport tReport = Ship;
    tChange(tReport);
    return AisClassB(tReport);
}

void AddText(const char* sName, const AisBits& sBits, const char* sLine) {
    QTest::newRow(sName) << Bytes(sBits) << QByteArray(sLine);
}

}  // namespace

class VdmWindowTest : public QObject {
    Q_OBJECT
private slots:
    void badFieldIsNamed_data();
    void badFieldIsNamed();
    void failedSentenceLeavesAMessageUnderWayAlone();
    void whatIsNotExaminedDoesNotMatter_data();
    void whatIsNotExaminedDoesNotMatter();
    void characterIsAValue_data();
    void characterIsAValue();
    void twoSentencesMakeOneHeader();
    void headerIsOfTheLastSentence();
    void lostFirstPartDecodesTheFormerMessageAgain();
    void orderOfPartsIsNotChecked();
    void lengthStaysAfterDecoding();
    void shortMessageReadsWhatCameBefore();
    void portsAssembleApart();
    void fiveHundredTwelveValuesAreAccepted_data();
    void fiveHundredTwelveValuesAreAccepted();
    void headerTellsEveryId_data();
    void headerTellsEveryId();
    void mmsiHasNoLeadingZeros_data();
    void mmsiHasNoLeadingZeros();
    void linesOfAMessageInOrder_data();
    void linesOfAMessageInOrder();
    void rowOfAMessage_data();
    void rowOfAMessage();
    void rangeNeedsAllFourCoordinates_data();
    void rangeNeedsAllFourCoordinates();
    void fieldTexts_data();
    void fieldTexts();
    void fieldsThatATypeLacksAnswerErr();
    void targetAtTheOwnPositionHasNoRange();
    void hundredTargetsAgreeWithTheGreatCircle_data();
    void hundredTargetsAgreeWithTheGreatCircle();
    void levelsTellTheLastDecodedMessage();
    void incompleteMessageShowsNowhere();
    void logKeepsTheNewest101Lines();
    void anyCharactersAreTaken();
};

void VdmWindowTest::badFieldIsNamed_data() {
    QTest::addColumn<QByteArray>("sSentence");
    QTest::addColumn<QByteArray>("sError");
    QTest::newRow("number of sentences empty") << QByteArray("!AIVDM,,1,,A,402R3Kiu,0") << QByteArray("Sentences");
    QTest::newRow("number of sentences missing") << QByteArray("!AIVDM") << QByteArray("Sentences");
    QTest::newRow("number of sentences without comma") << QByteArray("!AIVDM,1") << QByteArray("Sentences");
    QTest::newRow("number of sentences no number") << QByteArray("!AIVDM,x,1,,A,40,0") << QByteArray("Sentences");
    QTest::newRow("sentence number empty") << QByteArray("!AIVDM,1,,,A,402R3Kiu,0") << QByteArray("Sentence");
    QTest::newRow("sentence number without comma") << QByteArray("!AIVDM,1,1") << QByteArray("Sentence");
    QTest::newRow("sentence number no number") << QByteArray("!AIVDM,1,one,,A,40,0") << QByteArray("Sentence");
    QTest::newRow("sequential id missing") << QByteArray("!AIVDM,1,1,") << QByteArray("SequenceId");
    QTest::newRow("sequential id without comma") << QByteArray("!AIVDM,2,1,3") << QByteArray("SequenceId");
    QTest::newRow("sequential id no number") << QByteArray("!AIVDM,1,1,x,A,40,0") << QByteArray("SequenceId");
    QTest::newRow("channel empty") << QByteArray("!AIVDM,1,1,,,402R3Kiu,0") << QByteArray("Channel");
    QTest::newRow("channel without comma") << QByteArray("!AIVDM,1,1,,A") << QByteArray("Channel");
    QTest::newRow("payload empty") << QByteArray("!AIVDM,1,1,,A,,0") << QByteArray();
    QTest::newRow("payload missing") << QByteArray("!AIVDM,1,1,,A,") << QByteArray();
    QTest::newRow("payload without comma") << QByteArray("!AIVDM,1,1,,A,402R3Kiu") << QByteArray();
    QTest::newRow("first failure wins") << QByteArray("!AIVDM,,,,,,") << QByteArray("Sentences");
    QTest::newRow("second failure wins") << QByteArray("!AIVDM,1,,x,,,") << QByteArray("Sentence");
}

void VdmWindowTest::badFieldIsNamed() {
    QFETCH(QByteArray, sSentence);
    QFETCH(QByteArray, sError);
    Vdm t;
    t.FeedLine(0, AisSentence(AisStaticDataA(1234, "NAME")));
    const auto tStore = t.m_tVdmMessage(0);
    t.FeedLine(0, View(sSentence));
    const QByteArray sPrefix = sError.isEmpty() ? QByteArray("Error, ") : "Error - " + sError + ", ";
    QCOMPARE(t.Log().mid(1), Texts({(sPrefix + sSentence).toStdString()}));
    QVERIFY(t.m_tVdmMessage(0).lData == tStore.lData);
    QCOMPARE(t.m_tVdmMessage(0).lLength, tStore.lLength);
    QCOMPARE(t.grdTargetData.Cells.Rows(), 2);
    QCOMPARE(Bytes(t.Cell(t.grdMessageData, 34, 1)), QByteArray("1"));
    QCOMPARE(Panel(t, ui::PanelSummary), QByteArray("1 Targets, 1 Messages"));
}

void VdmWindowTest::failedSentenceLeavesAMessageUnderWayAlone() {
    Vdm t;
    const auto sParts = AisSentences(AisStaticVoyage(235009802, "A SHIP"), 'A', 3);
    QCOMPARE(sParts.size(), std::size_t{2});
    t.FeedLine(0, sParts[0]);
    t.FeedLine(0, "!AIVDM,1,1,,,0000,0");
    t.FeedLine(0, "!AIVDM,x,1,,A,0000,0");
    t.FeedLine(0, sParts[1]);
    QCOMPARE(t.Log().last(), QStringLiteral("Time=12:00:00, Ch=A, Id=5, MMSI=235009802, Ship Static and Voyage"));
}

void VdmWindowTest::whatIsNotExaminedDoesNotMatter_data() {
    QTest::addColumn<QByteArray>("sBefore");
    QTest::addColumn<QByteArray>("sBehind");
    QTest::addColumn<QByteArray>("sChannel");
    QTest::newRow("as sent") << QByteArray("!AIVDM,1,1,,A,") << QByteArray(",0") << QByteArray("A");
    QTest::newRow("sequential id empty or not") << QByteArray("!AIVDM,1,1,7,A,") << QByteArray(",0") << QByteArray("A");
    QTest::newRow("position 7") << QByteArray("!AIVDM?1,1,,A,") << QByteArray(",0") << QByteArray("A");
    QTest::newRow("long channel") << QByteArray("!AIVDM,1,1,,87B left,") << QByteArray(",0") << QByteArray("87B left");
    QTest::newRow("no fill bits") << QByteArray("!AIVDM,1,1,,B,") << QByteArray(",") << QByteArray("B");
    QTest::newRow("odd fill bits") << QByteArray("!AIVDM,1,1,,B,") << QByteArray(",x,y,z") << QByteArray("B");
    QTest::newRow("many sentences in one") << QByteArray("!AIVDM,9,9,,B,") << QByteArray(",0") << QByteArray("B");
}

void VdmWindowTest::whatIsNotExaminedDoesNotMatter() {
    QFETCH(QByteArray, sBefore);
    QFETCH(QByteArray, sBehind);
    QFETCH(QByteArray, sChannel);
    Vdm t;
    t.FeedLine(0, View(sBefore + Bytes(AisPayload(AisOther(11, 2442000))) + sBehind));
    QCOMPARE(t.Log(), Texts({"Time=12:00:00, Ch=" + sChannel.toStdString() + ", Id=11, MMSI=2442000"}));
    QCOMPARE(Cell(t, 1, targets::ColChannel), sChannel);
}

void VdmWindowTest::characterIsAValue_data() {
    QTest::addColumn<QByteArray>("sCharacter");
    QTest::addColumn<int>("iValue");
    QTest::newRow("0") << QByteArray("0") << 0;
    QTest::newRow("9") << QByteArray("9") << 9;
    QTest::newRow("W") << QByteArray("W") << 39;
    QTest::newRow("`") << QByteArray("`") << 40;
    QTest::newRow("w") << QByteArray("w") << 63;
    QTest::newRow("X, between the ranges") << QByteArray("X") << 40;
    QTest::newRow("_, between the ranges") << QByteArray("_") << 47;
    QTest::newRow("x, above") << QByteArray("x") << 64;
    QTest::newRow("255, above") << QByteArray("\xff") << 199;
    QTest::newRow("/, below") << QByteArray("/") << -1;
    QTest::newRow("blank, below") << QByteArray(" ") << -16;
    QTest::newRow("NUL, below") << QByteArray("\0", 1) << -48;
}

void VdmWindowTest::characterIsAValue() {
    QFETCH(QByteArray, sCharacter);
    QFETCH(int, iValue);
    Vdm t;
    t.FeedLine(0, View("!AIVDM,1,1,,A," + sCharacter + ",0"));
    const QString sHeader = t.Log().value(0);
    QVERIFY2(sHeader.contains(QStringLiteral(", Id=%1, MMSI=0").arg(iValue)), qPrintable(sHeader));
    QCOMPARE(Cell(t, 1, targets::ColMessageId), QByteArray::number(iValue));
}

void VdmWindowTest::twoSentencesMakeOneHeader() {
    Vdm t;
    const auto sParts = AisSentences(AisStaticVoyage(235009802, "A SHIP"), 'B', 3);
    t.FeedLine(0, sParts.at(0));
    QCOMPARE(t.Log(), QStringList());
    QCOMPARE(t.grdTargetData.Cells.Rows(), 1);
    t.FeedLine(0, sParts.at(1));
    QCOMPARE(t.Log(), Texts({"Time=12:00:00, Ch=B, Id=5, MMSI=235009802, Ship Static and Voyage"}));
    QCOMPARE(Cell(t, 1, targets::ColMessageId), QByteArray("5=Ship Static and Voyage"));
    QCOMPARE(Bytes(t.Cell(t.grdMessageData, 5, 1)), QByteArray("1"));
}

void VdmWindowTest::headerIsOfTheLastSentence() {
    Vdm t;
    // Other sequential id, other channel, later.
    const auto sFirst = AisSentences(AisStaticVoyage(235009802, "A SHIP"), 'A', 3);
    const auto sSecond = AisSentences(AisStaticVoyage(235009802, "A SHIP"), 'B', 4);
    t.FeedLine(0, sFirst.at(0));
    t.Advance(7);
    t.FeedLine(0, sSecond.at(1));
    QCOMPARE(t.Log(), Texts({"Time=12:00:07, Ch=B, Id=5, MMSI=235009802, Ship Static and Voyage"}));
    QCOMPARE(Cell(t, 1, targets::ColTime), QByteArray("12:00:07"));
    QCOMPARE(Cell(t, 1, targets::ColChannel), QByteArray("B"));
}

void VdmWindowTest::lostFirstPartDecodesTheFormerMessageAgain() {
    Vdm t;
    const QStringList sOnce = t.LogOf(AisClassA(1, Ship));
    t.FeedLine(0, AisSentences(AisStaticVoyage(235009802, "A SHIP"), 'A', 3).at(1));
    QCOMPARE(t.Log(), sOnce + sOnce);
    QCOMPARE(Column(t, targets::ColMmsi), Texts({"366999123", "366999123"}));
    QCOMPARE(Bytes(t.Cell(t.grdMessageData, 1, 1)), QByteArray("2"));
}

void VdmWindowTest::orderOfPartsIsNotChecked() {
    Vdm t;
    const std::string sPayload = AisPayload(AisStaticDataA(338123456, "NAME OF A YACHT"));
    const std::string sHead = sPayload.substr(0, 10), sTail = sPayload.substr(10);
    // The middle one of three never comes.
    t.FeedLine(0, "!AIVDM,3,1,5,A," + sHead + ",0");
    t.FeedLine(0, "!AIVDM,3,3,5,A," + sTail + ",0");
    QCOMPARE(t.Log(), Texts({"Time=12:00:00, Ch=A, Id=24, MMSI=338123456"}));
    // The second before the first: it completes what was there, then the first waits.
    t.FeedLine(0, "!AIVDM,2,2,5,A," + sTail + ",0");
    t.FeedLine(0, "!AIVDM,2,1,5,A," + sHead + ",0");
    QCOMPARE(t.Log().size(), 2);
}

void VdmWindowTest::lengthStaysAfterDecoding() {
    Vdm t;
    t.LogOf(AisClassA(1, Ship));
    QCOMPARE(t.m_tVdmMessage(0).lLength, 28);
    t.FeedLine(0, "!AIVDM,2,2,,A,0000,0");
    QCOMPARE(t.m_tVdmMessage(0).lLength, 32);
    t.FeedLine(0, "!AIVDM,1,1,,A,400,0");
    QCOMPARE(t.m_tVdmMessage(0).lLength, 3);
}

void VdmWindowTest::shortMessageReadsWhatCameBefore() {
    Vdm t;
    const QStringList sFull = t.LogOf(AisClassA(1, Ship));
    AisReport tOther = Ship;
    tOther.lMmsi = 211000001;
    // Id and MMSI take six characters and two bits of the seventh, which the status follows.
    const std::string sStart = AisPayload(AisClassA(3, tOther)).substr(0, 7);
    t.FeedLine(0, "!AIVDM,1,1,,A," + sStart + ",0");
    const QStringList sShort = t.Log().mid(sFull.size());
    QCOMPARE(sShort.value(0), QStringLiteral("Time=12:00:00, Ch=A, Id=3, MMSI=211000001, Position Response"));
    QCOMPARE(sShort.mid(1), sFull.mid(1));
}

void VdmWindowTest::portsAssembleApart() {
    Vdm t;
    const auto sFirst = AisSentences(AisStaticVoyage(235009802, "A SHIP"), 'A', 3);
    const auto sSecond = AisSentences(AisStaticVoyage(219000001, "B SHIP"), 'B', 3);
    t.FeedLine(0, sFirst.at(0));
    t.FeedLine(1, sSecond.at(0));
    t.FeedLine(0, sFirst.at(1));
    t.FeedLine(1, sSecond.at(1));
    QCOMPARE(t.Log(), Texts({"Time=12:00:00, Ch=A, Id=5, MMSI=235009802, Ship Static and Voyage",
                             "Time=12:00:00, Ch=B, Id=5, MMSI=219000001, Ship Static and Voyage"}));
}

void VdmWindowTest::fiveHundredTwelveValuesAreAccepted_data() {
    QTest::addColumn<int>("iFirst");   // payload characters of the first sentence
    QTest::addColumn<int>("iSecond");  // of the second; 0: there is none
    QTest::addColumn<bool>("bAccepted");
    QTest::newRow("512 in one") << 512 << 0 << true;
    QTest::newRow("513 in one") << 513 << 0 << false;
    QTest::newRow("512 in two") << 500 << 12 << true;
    QTest::newRow("513 in two") << 500 << 13 << false;
    QTest::newRow("512 behind one") << 1 << 512 << false;
}

void VdmWindowTest::fiveHundredTwelveValuesAreAccepted() {
    QFETCH(int, iFirst);
    QFETCH(int, iSecond);
    QFETCH(bool, bAccepted);
    Vdm t;
    const auto sOf = [](int iNumber, int iCount, int iSize) {
        return "!AIVDM," + std::to_string(iCount) + "," + std::to_string(iNumber) + ",,A," +
               std::string(static_cast<std::size_t>(iSize), '8') + ",0";
    };
    std::string sLast = sOf(1, iSecond > 0 ? 2 : 1, iFirst);
    const int iHeld = iSecond > 0 ? iFirst : 0;
    if (iSecond > 0) {
        t.FeedLine(0, sLast);
        sLast = sOf(2, 2, iSecond);
    }
    const auto tStore = t.m_tVdmMessage(0);
    t.FeedLine(0, sLast);
    QCOMPARE(t.Log().size(), 1);
    if (bAccepted) {
        QVERIFY(t.Log().at(0).startsWith(QLatin1String("Time=12:00:00, Ch=A, Id=8, MMSI=")));
        QCOMPARE(t.m_tVdmMessage(0).lLength, 512);
    } else {
        QCOMPARE(t.Log(), Texts({"Error, " + sLast}));
        QCOMPARE(t.m_tVdmMessage(0).lLength, iHeld);
        QVERIFY(t.m_tVdmMessage(0).lData == tStore.lData);
        QCOMPARE(t.grdTargetData.Cells.Rows(), 1);
    }
}

void VdmWindowTest::headerTellsEveryId_data() {
    QTest::addColumn<int>("iId");
    for (int i = 0; i < 64; ++i) QTest::addRow("%d", i) << i;
}

void VdmWindowTest::headerTellsEveryId() {
    QFETCH(int, iId);
    Vdm t;
    const QStringList sLines = t.LogOf(AisOther(iId, 244660123));
    QCOMPARE(sLines.value(0).toLatin1(),
             "Time=12:00:00, Ch=A, Id=" + QByteArray::number(iId) + ", MMSI=244660123" + HeaderName(iId));
    const bool bLaidOut = (iId >= 1 && iId <= 4) || iId == 18 || iId == 19;
    QCOMPARE(sLines.size() > 1, bLaidOut);
    QCOMPARE(t.grdTargetData.Cells.Rows(), 2);
    QCOMPARE(Panel(t, ui::PanelSummary), QByteArray("1 Targets, 1 Messages"));
}

void VdmWindowTest::mmsiHasNoLeadingZeros_data() {
    QTest::addColumn<quint32>("lMmsi");
    for (const quint32 lMmsi : {0U, 1U, 2442000U, 970012345U, 536870912U, 1073741823U}) {
        QTest::addRow("%u", lMmsi) << lMmsi;
    }
}

void VdmWindowTest::mmsiHasNoLeadingZeros() {
    QFETCH(quint32, lMmsi);
    Vdm t;
    QCOMPARE(t.LogOf(AisOther(11, lMmsi)).value(0).toLatin1(),
             "Time=12:00:00, Ch=A, Id=11, MMSI=" + QByteArray::number(lMmsi));
    QCOMPARE(Cell(t, 1, targets::ColMmsi), QByteArray::number(lMmsi));
}

void VdmWindowTest::linesOfAMessageInOrder_data() {
    QTest::addColumn<int>("iType");
    QTest::addColumn<QByteArray>("sLines");  // first letters of the lines behind the header
    for (const int i : {1, 2, 3}) QTest::addRow("%d", i) << i << QByteArray("LRMC");
    QTest::newRow("4") << 4 << QByteArray("LR");
    for (const int i : {18, 19}) QTest::addRow("%d", i) << i << QByteArray("LRSC");
    for (const int i : {5, 6, 9, 11, 15, 17, 20, 21, 24, 27, 63}) QTest::addRow("%d", i) << i << QByteArray();
}

void VdmWindowTest::linesOfAMessageInOrder() {
    QFETCH(int, iType);
    QFETCH(QByteArray, sLines);
    Vdm t;
    t.SetOwnPosition();
    const Circle tCircle = GreatCircle(47 + 36.5L / 60, -122 - 20.2L / 60, 47 + 40.0L / 60, -122 - 30.0L / 60);
    QStringList sExpected = {QStringLiteral("Time=12:00:00, Ch=A, Id=%1, MMSI=366999123").arg(iType) +
                             QString::fromLatin1(HeaderName(iType))};
    for (const char c : sLines) {
        if (c == 'L') sExpected << QStringLiteral("   Lat=47\u00b040.00'N, Lon=122\u00b030.00'W");
        if (c == 'R') {
            sExpected << QStringLiteral("   Rng=%1, Brg=%2")
                             .arg(static_cast<double>(tCircle.dRange), 0, 'f', 1)
                             .arg(static_cast<double>(tCircle.dBearing), 0, 'f', 0);
        }
        if (c == 'M') sExpected << QStringLiteral("   Rot=+10, Sog=10.1");
        if (c == 'S') sExpected << QStringLiteral("   Sog=10.1");
        if (c == 'C') sExpected << QStringLiteral("   Cog=45.5, Heading=50");
    }
    QCOMPARE(t.LogOf(MessageOfType(iType, Ship)), sExpected);
    QVERIFY(!t.Marks(t.lstAisData).at(0));
}

void VdmWindowTest::rowOfAMessage_data() {
    QTest::addColumn<int>("iType");
    QTest::addColumn<QStringList>("sCells");  // Message Id, Lat, Lon, Rot, Sog
    const std::string sLat =
        "47\xb0"
        "40.00'N";
    const std::string sLon =
        "122\xb0"
        "30.00'W";
    QTest::newRow("1") << 1 << Texts({"1=Position Scheduled", sLat, sLon, "+10", "10.1"});
    QTest::newRow("2") << 2 << Texts({"2=Position Assigned", sLat, sLon, "+10", "10.1"});
    QTest::newRow("3") << 3 << Texts({"3=Position Response", sLat, sLon, "+10", "10.1"});
    QTest::newRow("4") << 4 << Texts({"4=Base Station Report", sLat, sLon, "", ""});
    QTest::newRow("5") << 5 << Texts({"5=Ship Static and Voyage", "", "", "", ""});
    QTest::newRow("9") << 9 << Texts({"9", "", "", "", ""});
    QTest::newRow("11") << 11 << Texts({"11=UTC/Date Response", "", "", "", ""});
    QTest::newRow("18") << 18 << Texts({"18=Class B Standard Position", sLat, sLon, "", "10.1"});
    QTest::newRow("19") << 19 << Texts({"19=Class B Extended Position", sLat, sLon, "", "10.1"});
    QTest::newRow("24") << 24 << Texts({"24=Class B Static Data", "", "", "", ""});
}

void VdmWindowTest::rowOfAMessage() {
    QFETCH(int, iType);
    QFETCH(QStringList, sCells);
    Vdm t;
    t.LogOf(MessageOfType(iType, Ship));
    QStringList sShown;
    for (const int iCol : {7, 10, 11, 12, 13}) sShown << QString::fromLatin1(Cell(t, 1, iCol));
    QCOMPARE(sShown, sCells);
    QCOMPARE(Cell(t, 1, targets::ColMmsi), QByteArray("366999123"));
    QCOMPARE(Cell(t, 1, targets::ColChannel), QByteArray("A"));
    QCOMPARE(Cell(t, 1, targets::ColTime), QByteArray("12:00:00"));
    for (const int iCol : {3, 4, 5, 8, 9, 14, 15, 16}) QCOMPARE(Cell(t, 1, iCol), QByteArray());
}

void VdmWindowTest::rangeNeedsAllFourCoordinates_data() {
    QTest::addColumn<QByteArray>("sOwnLatitude");
    QTest::addColumn<QByteArray>("sOwnLongitude");
    QTest::addColumn<qint32>("lLatitude");
    QTest::addColumn<qint32>("lLongitude");
    QTest::addColumn<bool>("bRange");
    const QByteArray sLat("47 36.50 N"), sLon("122 20.20 W");
    QTest::newRow("all") << sLat << sLon << Ship.lLatitude << Ship.lLongitude << true;
    QTest::newRow("no own latitude") << QByteArray("x") << sLon << Ship.lLatitude << Ship.lLongitude << false;
    QTest::newRow("no own longitude") << sLat << QByteArray("x") << Ship.lLatitude << Ship.lLongitude << false;
    QTest::newRow("no latitude") << sLat << sLon << qint32{54600000} << Ship.lLongitude << false;
    QTest::newRow("no longitude") << sLat << sLon << Ship.lLatitude << qint32{108600000} << false;
}

void VdmWindowTest::rangeNeedsAllFourCoordinates() {
    QFETCH(QByteArray, sOwnLatitude);
    QFETCH(QByteArray, sOwnLongitude);
    QFETCH(qint32, lLatitude);
    QFETCH(qint32, lLongitude);
    QFETCH(bool, bRange);
    AisReport tReport = Ship;
    tReport.lLatitude = lLatitude;
    tReport.lLongitude = lLongitude;
    for (const int iType : {1, 2, 3, 4, 18, 19}) {
        Vdm t;
        t.SetOwnPosition(View(sOwnLatitude), View(sOwnLongitude));
        const QStringList sLines = t.LogOf(MessageOfType(iType, tReport));
        QCOMPARE(sLines.filter(QLatin1String("   Rng=")).size(), bRange ? 1 : 0);
        QCOMPARE(Cell(t, 1, targets::ColRange).isEmpty(), !bRange);
        QCOMPARE(Cell(t, 1, targets::ColBearing).isEmpty(), !bRange);
    }
    // Nothing is known of the own position at the start.
    Vdm t;
    QCOMPARE(t.LogOf(AisClassA(1, Ship)).filter(QLatin1String("Rng=")).size(), 0);
}

void VdmWindowTest::fieldTexts_data() {
    QTest::addColumn<QByteArray>("sBits");
    QTest::addColumn<QByteArray>("sLine");
    // Positions
    AddText("position not available", ClassA([](AisReport& t) { t.lLatitude = 54600000, t.lLongitude = 108600000; }),
            "   Lat=n/a, Lon=n/a");
    AddText("class B position not available",
            ClassB([](AisReport& t) { t.lLatitude = 54600000, t.lLongitude = 108600000; }), "   Lat=n/a, Lon=n/a");
    AddText("zero is north and east", ClassA([](AisReport& t) { t.lLatitude = t.lLongitude = 0; }),
            "   Lat=00\xb0"
            "00.00'N, Lon=000\xb0"
            "00.00'E");
    AddText("south west", ClassB([](AisReport& t) {
                t.lLatitude = AisAngle(33, 51.5, true), t.lLongitude = AisAngle(151, 12.25, true);
            }),
            "   Lat=33\xb0"
            "51.50'S, Lon=151\xb0"
            "12.25'W");
    AddText("lowest values", ClassA([](AisReport& t) { t.lLatitude = -67108864, t.lLongitude = -134217728; }),
            "   Lat=111\xb0"
            "50.89'S, Lon=223\xb0"
            "41.77'W");
    AddText("highest values", ClassA([](AisReport& t) { t.lLatitude = 67108863, t.lLongitude = 134217727; }),
            "   Lat=111\xb0"
            "50.89'N, Lon=223\xb0"
            "41.77'E");
    AddText("minutes may read 60", ClassA([](AisReport& t) { t.lLatitude = 599999, t.lLongitude = 1199999; }),
            "   Lat=00\xb0"
            "60.00'N, Lon=001\xb0"
            "60.00'E");
    // An odd longitude above a southern latitude: 0.1049 becomes 0.1050 and rounds up.
    AddText("odd longitude in the south", ClassA([](AisReport& t) { t.lLatitude = -600000, t.lLongitude = 1049; }),
            "   Lat=01\xb0"
            "00.00'S, Lon=000\xb0"
            "00.11'E");
    AddText("odd longitude in the north", ClassA([](AisReport& t) { t.lLatitude = 600000, t.lLongitude = 1049; }),
            "   Lat=01\xb0"
            "00.00'N, Lon=000\xb0"
            "00.10'E");
    AddText("odd longitude of class B", ClassB([](AisReport& t) { t.lLatitude = -600000, t.lLongitude = 1049; }),
            "   Lat=01\xb0"
            "00.00'S, Lon=000\xb0"
            "00.10'E");
    AddText("odd longitude before not available",
            ClassA([](AisReport& t) { t.lLatitude = -600000, t.lLongitude = 108599999; }),
            "   Lat=01\xb0"
            "00.00'S, Lon=n/a");
    AddText("the same in the north", ClassA([](AisReport& t) { t.lLatitude = 600000, t.lLongitude = 108599999; }),
            "   Lat=01\xb0"
            "00.00'N, Lon=180\xb0"
            "60.00'E");
    AisReport tBase = Ship;
    tBase.lLatitude = -600000;
    tBase.lLongitude = 108599999;
    AddText("odd longitude of a base station", AisBaseStation(4, tBase),
            "   Lat=01\xb0"
            "00.00'S, Lon=n/a");
    // Speed and rate of turn
    AddText("speed not available", ClassA([](AisReport& t) { t.lSpeed = 1023; }), "   Rot=+10, Sog=n/a");
    AddText("highest speed", ClassA([](AisReport& t) { t.lSpeed = 1022; }), "   Rot=+10, Sog=102.2");
    AddText("no speed", ClassA([](AisReport& t) { t.lSpeed = 0; }), "   Rot=+10, Sog=0.0");
    AddText("class B speed not available", ClassB([](AisReport& t) { t.lSpeed = 1023; }), "   Sog=n/a");
    AddText("bit 45 counts in the class B speed", ClassB([](AisReport& t) { t.lSpeed = 100, t.lReserved = 1; }),
            "   Sog=112.4");
    AddText("bit 44 counts in the class B speed", ClassB([](AisReport& t) { t.lSpeed = 100, t.lReserved = 2; }),
            "   Sog=214.8");
    AddText("bit 43 does not", ClassB([](AisReport& t) { t.lSpeed = 100, t.lReserved = 252; }), "   Sog=10.0");
    AddText("1023 with a reserved bit is a speed", ClassB([](AisReport& t) { t.lSpeed = 1023, t.lReserved = 1; }),
            "   Sog=204.7");
    const std::vector<std::pair<int, const char*>> sTurns = {
        {0, "0"},     {1, "+0.0"},   {-1, "-0.0"},   {2, "+0.2"},    {14, "+8.7"},    {-14, "-8.7"}, {15, "+10"},
        {-15, "-10"}, {126, "+709"}, {-126, "-709"}, {127, "R>720"}, {-127, "L>720"}, {-128, "n/a"}};
    for (const auto& [iRaw, sText] : sTurns) {
        const AisBits sBits = ClassA([iRaw = iRaw](AisReport& t) { t.lRateOfTurn = iRaw; });
        QTest::addRow("rate of turn %d", iRaw) << Bytes(sBits) << "   Rot=" + QByteArray(sText) + ", Sog=10.1";
    }
    // Course and heading
    AddText("course and heading not available", ClassA([](AisReport& t) { t.lCourse = 3600, t.lHeading = 511; }),
            "   Cog=n/a, Heading=n/a");
    AddText("class B course and heading not available",
            ClassB([](AisReport& t) { t.lCourse = 3600, t.lHeading = 511; }), "   Cog=n/a, Heading=n/a");
    AddText("last course", ClassA([](AisReport& t) { t.lCourse = 3599, t.lHeading = 359; }),
            "   Cog=359.9, Heading=359");
    AddText("course above the circle", ClassA([](AisReport& t) { t.lCourse = 3601, t.lHeading = 360; }),
            "   Cog=err, Heading=360");
    AddText("highest course", ClassB([](AisReport& t) { t.lCourse = 4095, t.lHeading = 510; }),
            "   Cog=err, Heading=510");
    AddText("north", ClassB([](AisReport& t) { t.lCourse = t.lHeading = 0; }), "   Cog=0.0, Heading=0");
}

void VdmWindowTest::fieldTexts() {
    QFETCH(QByteArray, sBits);
    QFETCH(QByteArray, sLine);
    Vdm t;
    const QStringList sLines = t.LogOf(sBits.toStdString());
    QVERIFY2(sLines.contains(QString::fromLatin1(sLine)), qPrintable(sLines.join(QLatin1String(" | "))));
}

void VdmWindowTest::fieldsThatATypeLacksAnswerErr() {
    decoders::VdmValues lData{};
    for (const int iId : {0, 4, 5, 9, 21, 24, 63}) {
        lData[1] = iId;
        QCOMPARE(Bytes(TestWindow::VdmRateOfTurn(lData)), QByteArray("Err"));
        QCOMPARE(Bytes(TestWindow::VdmSpeed(lData)), QByteArray("Err"));
        QCOMPARE(Bytes(TestWindow::VdmCourse(lData)), QByteArray("Err"));
        QCOMPARE(Bytes(TestWindow::VdmHeading(lData)), QByteArray("Err"));
        if (iId == 4) continue;
        double dDegrees = 0;
        std::string sText = "before";
        TestWindow::VdmLatitude(lData, dDegrees, sText);
        QCOMPARE(dDegrees, -999.0);
        QCOMPARE(Bytes(sText), QByteArray());
        dDegrees = 0;
        sText = "before";
        TestWindow::VdmLongitude(lData, dDegrees, sText);
        QCOMPARE(dDegrees, -999.0);
        QCOMPARE(Bytes(sText), QByteArray());
    }
    lData[1] = 18;
    QCOMPARE(Bytes(TestWindow::VdmRateOfTurn(lData)), QByteArray("Err"));
}

void VdmWindowTest::targetAtTheOwnPositionHasNoRange() {
    Vdm t;
    t.SetOwnPosition("00 00.00 N", "000 00.00 E");
    AisReport tReport = Ship;
    tReport.lLatitude = tReport.lLongitude = 0;
    const QStringList sLines = t.LogOf(AisClassA(1, tReport));
    QCOMPARE(sLines.mid(2), Texts({"   Rot=+10, Sog=10.1", "   Cog=45.5, Heading=50"}));
    QCOMPARE(Cell(t, 1, targets::ColRange), QByteArray());
    QCOMPARE(Cell(t, 1, targets::ColBearing), QByteArray());
    QCOMPARE(Cell(t, 1, targets::ColSpeed), QByteArray("10.1"));
    QVERIFY(t.grdTargetData.Redraw());
    // The chain goes on: levels find the row, the next target has its range.
    t.FeedLine(0, "$PNMLS,29,19,3*50");
    QCOMPARE(Cell(t, 1, targets::ColSignal), QByteArray("29"));
    t.FeedLine(0,
               AisSentence(ClassA([](AisReport& r) { r.lMmsi = 999999999, r.lLatitude = 0, r.lLongitude = 600000; })));
    QCOMPARE(Cell(t, 2, targets::ColRange), QByteArray("60.0"));
    QCOMPARE(Cell(t, 2, targets::ColBearing), QByteArray("90"));
}

void VdmWindowTest::hundredTargetsAgreeWithTheGreatCircle_data() {
    QTest::addColumn<QByteArray>("sLatitude");
    QTest::addColumn<QByteArray>("sLongitude");
    QTest::addColumn<double>("dLatitude");
    QTest::addColumn<double>("dLongitude");
    QTest::addColumn<double>("dSpread");  // degrees to each side
    QTest::newRow("harbour") << QByteArray("47 36.50 N") << QByteArray("122 20.20 W") << 47 + 36.5 / 60
                             << -(122 + 20.2 / 60) << 0.7;
    QTest::newRow("ocean") << QByteArray("47 36.50 N") << QByteArray("122 20.20 W") << 47 + 36.5 / 60
                           << -(122 + 20.2 / 60) << 35.0;
    QTest::newRow("date line in the south")
        << QByteArray("36 50.00 S") << QByteArray("179 45.00 E") << -(36 + 50.0 / 60) << 179.75 << 2.0;
}

void VdmWindowTest::hundredTargetsAgreeWithTheGreatCircle() {
    QFETCH(QByteArray, sLatitude);
    QFETCH(QByteArray, sLongitude);
    QFETCH(double, dLatitude);
    QFETCH(double, dLongitude);
    QFETCH(double, dSpread);
    Vdm t;
    t.SetOwnPosition(View(sLatitude), View(sLongitude));
    std::mt19937 tRandom(20110515);
    std::uniform_real_distribution<double> tSpread(-dSpread, dSpread);
    std::vector<Circle> tExpected;
    for (std::uint32_t i = 0; i < 100; ++i) {
        AisReport tReport = Ship;
        tReport.lMmsi = 200000000 + i;  // sorted by MMSI: row i + 1
        tReport.lLatitude = static_cast<std::int32_t>(std::lround((dLatitude + tSpread(tRandom)) * 600000));
        double dEast = dLongitude + tSpread(tRandom);
        if (dEast > 180) dEast -= 360;
        tReport.lLongitude = 2 * static_cast<std::int32_t>(std::lround(dEast * 300000));  // even: read as sent
        t.FeedLine(0, AisSentence(i % 2 == 0 ? AisClassA(1, tReport) : AisClassB(tReport)));
        tExpected.push_back(
            GreatCircle(dLatitude, dLongitude, tReport.lLatitude / 600000.0L, tReport.lLongitude / 600000.0L));
    }
    const QRegularExpression tRange(QStringLiteral("^\\d+\\.\\d$")), tBearing(QStringLiteral("^\\d+$"));
    for (int i = 0; i < 100; ++i) {
        const QByteArray sRange = Cell(t, i + 1, targets::ColRange);
        const QByteArray sBearing = Cell(t, i + 1, targets::ColBearing);
        QVERIFY(tRange.match(QString::fromLatin1(sRange)).hasMatch());
        QVERIFY(tBearing.match(QString::fromLatin1(sBearing)).hasMatch());
        const Circle& tCircle = tExpected[static_cast<std::size_t>(i)];
        const double dRangeOff = std::abs(sRange.toDouble() - static_cast<double>(tCircle.dRange));
        double dBearingOff = std::abs(sBearing.toDouble() - static_cast<double>(tCircle.dBearing));
        dBearingOff = std::min(dBearingOff, 360 - dBearingOff);
        QVERIFY2(dRangeOff < 0.0501, sRange.constData());
        QVERIFY2(dBearingOff < 0.5001, sBearing.constData());
    }
}

void VdmWindowTest::levelsTellTheLastDecodedMessage() {
    Vdm t;
    t.FeedLine(0, AisSentence(AisOther(11, 2442000), 'A'));
    t.Advance(5);
    t.FeedLine(0, "!AIVDM,2,1,,B,40,0");  // incomplete
    t.FeedLine(0, "!AIVDM,,1,,B,40,0");   // refused
    t.FeedLine(0, "$PNMLS,29,19,3*50");
    QCOMPARE(Bytes(t.LastLine(t.lstRxData)), QByteArray("Time=12:00:00, Ch= A, Sig=29, Thr=19, Int=3"));
}

void VdmWindowTest::incompleteMessageShowsNowhere() {
    Vdm t;
    t.FeedLine(0, AisSentences(AisStaticVoyage(235009802, "A SHIP"), 'A', 3).at(0));
    QCOMPARE(t.Log(), QStringList());
    QCOMPARE(t.grdTargetData.Cells.Rows(), 1);
    QCOMPARE(Bytes(t.Cell(t.grdMessageData, 34, 1)), QByteArray("0"));
    QCOMPARE(Panel(t, ui::PanelSummary), QByteArray());
}

void VdmWindowTest::logKeepsTheNewest101Lines() {
    Vdm t;
    QStringList sExpected;
    for (std::uint32_t i = 1; i <= 130; ++i) {
        t.FeedLine(0, AisSentence(AisOther(11, i)));
        sExpected << QStringLiteral("Time=12:00:00, Ch=A, Id=11, MMSI=%1").arg(i);
        if (i >= 99 && i <= 103) QCOMPARE(t.Log(), sExpected.mid(std::max<qsizetype>(sExpected.size(), 101) - 101));
    }
    QCOMPARE(t.Log(), sExpected.mid(29));
    QCOMPARE(t.lstAisData.currentIndex().row(), 100);
    QVERIFY(!Marks(t, t.lstAisData).contains('+'));
}

void VdmWindowTest::anyCharactersAreTaken() {
    Vdm t;
    t.SetOwnPosition();
    std::mt19937 tRandom(7);
    for (int i = 0; i < 3000; ++i) {
        std::string sLine = "!AIVDM,";
        const std::size_t iLength = tRandom() % 90;
        for (std::size_t j = 0; j < iLength; ++j)
            sLine += static_cast<char>(tRandom() % 5 == 0 ? ',' : tRandom() % 256);
        if (i % 2 == 0) sLine.insert(7, "1,1,,A,");
        t.FeedLine(static_cast<app::PortIndex>(i % 2), sLine);
    }
    QVERIFY(t.Log().size() == 101);
    QVERIFY(t.grdTargetData.Cells.Rows() > 200);
    QVERIFY(t.grdTargetData.Redraw());
}

QTEST_MAIN(VdmWindowTest)
#include "VdmWindowTest.moc"
