// What arrives on an input port: framed into lines, tested, logged, decoded, recorded, forwarded.
#include <QTest>
#include <initializer_list>

#include "tests/window/Bench.h"
#include "tests/window/Shown.h"
#include "tests/window/Views.h"

using namespace support;

namespace {

const std::string Report = AisSentence(AisBaseStation(4, {.lMmsi = 3669999}), 'B');

void AddBytes(const char* sName, const QByteArray& sBytes, std::initializer_list<std::string> sLines) {
    QTest::newRow(sName) << sBytes << Texts(sLines);
}

// An AIS message, one in lLevelsEach with its levels; one in lOthersEach lines is a line of another kind.
std::string AnyLine(Dice& tDice, std::uint32_t lLevelsEach, std::uint32_t lOthersEach) {
    const std::uint32_t lMmsi = 200000000 + tDice() % 60;
    AisReport tReport = {.lMmsi = lMmsi,
                         .lSpeed = tDice() % 300,
                         .lLongitude = static_cast<std::int32_t>(tDice() % 600000) * 2,
                         .lLatitude = static_cast<std::int32_t>(tDice() % 600000)};
    switch (tDice() % (8 * lOthersEach)) {
        case 0:
            return "$GP\r\n";
        case 1:
            return "$GPZDA,1*00\r\n";
        case 2:
            return "$GPZDA,1\r\n";
        case 3:
            return "$GPGLL,00" + std::to_string(10 + tDice() % 50) + ".00,N,00100.00,E,120000,A\r\n";
        case 4:
            return "!AIVDM,1,1,,,5000,0\r\n";
        case 5:
            return "!AIVDM,2,1,3,A,5000,0\r\n";
        case 6:
            return "$PNMLS,,\r\n";
        case 7:
            return WithChecksum("$PNMLS,33,19,3") + "\r\n";
        default:
            break;
    }
    const AisBits sBits = tDice() % 2 == 0   ? AisClassA(1, tReport)
                          : tDice() % 2 == 0 ? AisClassB(tReport)
                                             : AisOther(static_cast<int>(tDice() % 64), lMmsi);
    std::string sLines = AisSentence(sBits, tDice() % 2 == 0 ? 'A' : 'B') + "\r\n";
    if (tDice() % lLevelsEach == 0) {
        sLines += WithChecksum("$PNMLS," + std::to_string(20 + tDice() % 30) + ",19,3") + "\r\n";
    }
    return sLines;
}

// All that the user can see of the traffic.
QStringList Everything(TestWindow& t) {
    QStringList sAll = Views(t) << QString::number(t.m_lMessageRow) << t.txtGpsLat.text();
    for (int i = 1; i <= 5; ++i) sAll << QString::fromLatin1(Panel(t, i));
    return sAll;
}

}  // namespace

class DispatchWindowTest : public QObject {
    Q_OBJECT
private slots:
    void bytesBecomeLines_data();
    void bytesBecomeLines();
    void lineMayComeInPieces_data();
    void lineMayComeInPieces();
    void everyOtherByteBelongsToTheLine();
    void highBytesCountInTheChecksum();
    void lineOf64KiBIsALine();
    void lineBeyond64KiBIsDroppedToItsEnd_data();
    void lineBeyond64KiBIsDroppedToItsEnd();
    void portThatEndsNoLineIsToldOnce();
    void overlongLineIsNotDecodedRecordedOrForwarded();
    void overlongLineEndsWithTheRun();
    void arrivalIsTheTimeOfTheCarriageReturn();
    void everyLineCountsAsTraffic_data();
    void everyLineCountsAsTraffic();
    void shortLineIsASizeError_data();
    void shortLineIsASizeError();
    void sixCharactersAreEnough();
    void wrongChecksumIsRefused_data();
    void wrongChecksumIsRefused();
    void checksumIsAccepted_data();
    void checksumIsAccepted();
    void checksumTextHasTwoUpperCaseDigits_data();
    void checksumTextHasTwoUpperCaseDigits();
    void errorStaysUntilThePanelIsWritten();
    void addressSelectsTheDecoder_data();
    void addressSelectsTheDecoder();
    void linesThatAreDecodedAreMarked();
    void levelsBelongToTheMessageJustBefore_data();
    void levelsBelongToTheMessageJustBefore();
    void eachPortHasItsOwnFlagAndLine();
    void acceptedLinesAreForwarded();
    void gllIsForwardedBehindItsRmc();
    void failedDecodingIsForwardedAllTheSame();
    void refusedLinesAreNotForwarded();
    void nothingIsForwardedWithoutTheBox();
    void onlyDecodedLinesAreRecorded();
    void portEventsAreNotices_data();
    void portEventsAreNotices();
    void portEventsLeaveTheLineAlone();
    void portEventsGoToTheirOwnPort();
    void oldestLineGoes();
    void marksMoveWithTheirLines();
    void newestLineIsCurrentAndInView();
    void toolTipsNumberThePortsFromOne();
    void interleavedPortsKeepTheirOrder();
    void playbackEntersLikePortZero();
    void manyLinesAtOnceShowWhatSingleOnesShow_data();
    void manyLinesAtOnceShowWhatSingleOnesShow();
};

void DispatchWindowTest::bytesBecomeLines_data() {
    QTest::addColumn<QByteArray>("sBytes");
    QTest::addColumn<QStringList>("sLines");
    AddBytes("CR LF", "$GPZDA,1\r\n$GPZDA,2\r\n", {"$GPZDA,1", "$GPZDA,2"});
    AddBytes("LF CR", "$GPZDA,1\n\r$GPZDA,2\n\r", {"$GPZDA,1", "$GPZDA,2"});
    AddBytes("CR alone", "$GPZDA,1\r$GPZDA,2\r", {"$GPZDA,1", "$GPZDA,2"});
    AddBytes("CR CR is a line and a short one", "$GPZDA,1\r\r", {"$GPZDA,1", "<<Size Error>>"});
    AddBytes("CR LF CR LF", "$GPZDA,1\r\n\r\n", {"$GPZDA,1", "<<Size Error>>"});
    AddBytes("LF alone ends nothing", "$GPZDA,1\n$GPZDA,2\n", {});
    AddBytes("LF is dropped wherever it stands", "\n$GP\nZDA\n\n,1\r", {"$GPZDA,1"});
    AddBytes("no end, no line", "$GPZDA,1", {});
    AddBytes("other control characters end nothing", "$GP\x0b\x0c\x1a\x04ZDA\r", {"$GP\x0b\x0c\x1a\x04ZDA"});
    AddBytes("NUL", QByteArray("$GP\0\0\0\r", 7), {std::string("$GP\0\0\0", 6)});
    AddBytes("above 127", "$\x85\x8d\x8a\xff\xb0\r", {"$\x85\x8d\x8a\xff\xb0"});
}

void DispatchWindowTest::bytesBecomeLines() {
    QFETCH(QByteArray, sBytes);
    QFETCH(QStringList, sLines);
    Listening t;
    t.Feed(0, View(sBytes));
    QCOMPARE(Log(t, t.lstCommData(0)), sLines);
    const bool bEnded = sBytes.endsWith('\r') || sBytes.endsWith("\r\n");
    QCOMPARE(t.m_sCommBuffer(0).empty(), bEnded);
    QVERIFY(t.Lines(t.lstCommData(1)).empty());
}

void DispatchWindowTest::lineMayComeInPieces_data() {
    QTest::addColumn<int>("iSize");
    for (const int iSize : {1, 2, 3, 7, 1000}) QTest::addRow("%d at a time", iSize) << iSize;
}

void DispatchWindowTest::lineMayComeInPieces() {
    QFETCH(int, iSize);
    Listening t;
    const std::string sAll = Report + "\r\n" + WithChecksum("$PNMLS,40,19,3") + "\r\n$GPZDA,1\r\nrest";
    for (std::size_t i = 0; i < sAll.size(); i += static_cast<std::size_t>(iSize)) {
        t.Feed(1, sAll.substr(i, static_cast<std::size_t>(iSize)));
    }
    QCOMPARE(Log(t, t.lstCommData(1)), Texts({Report, WithChecksum("$PNMLS,40,19,3"), "$GPZDA,1"}));
    QCOMPARE(Bytes(t.m_sCommBuffer(1)), QByteArray("rest"));
    QCOMPARE(Cell(t, 1, targets::ColSignal), QByteArray("40"));
}

void DispatchWindowTest::everyOtherByteBelongsToTheLine() {
    std::string sLine;
    for (int i = 0; i < 256; ++i) {
        if (i != '\r' && i != '\n') sLine += static_cast<char>(i);
    }
    Forwarding t;
    t.FeedLine(0, sLine);
    QCOMPARE(Log(t, t.lstCommData(0)), Texts({sLine}));
    QCOMPARE(t.Forwarded(), Bytes(sLine + "\r\n"));
}

void DispatchWindowTest::highBytesCountInTheChecksum() {
    Listening t;
    const std::string sLine = WithChecksum("$GPTXT,\xb0\xff\x80");
    t.FeedLine(0, sLine);
    QCOMPARE(Log(t, t.lstCommData(0)), Texts({sLine}));
}

void DispatchWindowTest::lineOf64KiBIsALine() {
    Listening t;
    const std::string sPiece(4096, 'x');
    for (int i = 0; i < 16; ++i) t.Feed(0, sPiece);
    QVERIFY(t.Lines(t.lstCommData(0)).empty());
    t.Feed(0, "\r");
    QCOMPARE(t.Lines(t.lstCommData(0)).at(0).size(), std::size_t{65536});
    QVERIFY(t.m_sCommBuffer(0).empty());
}

namespace {

const std::string TooLong = "<<Line dropped - longer than 65536 characters>>";

}  // namespace

void DispatchWindowTest::lineBeyond64KiBIsDroppedToItsEnd_data() {
    QTest::addColumn<std::size_t>("lLength");
    QTest::addColumn<std::size_t>("lPiece");
    QTest::newRow("by one character") << std::size_t{65537} << std::size_t{65537};
    QTest::newRow("by one character, in pieces") << std::size_t{65537} << std::size_t{4096};
    QTest::newRow("character by character") << std::size_t{65600} << std::size_t{1};
    QTest::newRow("by much") << std::size_t{1000000} << std::size_t{4096};
    QTest::newRow("by much at once") << std::size_t{1000000} << std::size_t{1000000};
}

void DispatchWindowTest::lineBeyond64KiBIsDroppedToItsEnd() {
    QFETCH(std::size_t, lLength);
    QFETCH(std::size_t, lPiece);
    Forwarding t;
    const std::string sLong(lLength, 'x');
    for (std::size_t i = 0; i < lLength; i += lPiece) t.Feed(0, std::string_view(sLong).substr(i, lPiece));
    QCOMPARE(Log(t, t.lstCommData(0)), Texts({TooLong}));  // before its end, which may never come
    QVERIFY(t.m_sCommBuffer(0).size() <= 65537);
    t.Feed(0, "\r\n$GPZDA,1\r\n");
    QCOMPARE(Log(t, t.lstCommData(0)), Texts({TooLong, "$GPZDA,1"}));
    QCOMPARE(Marks(t, t.lstCommData(0)), QByteArray("--"));
    QCOMPARE(Panel(t, ui::PanelSummary), QByteArray());
    QCOMPARE(t.Forwarded(), QByteArray("$GPZDA,1\r\n"));
    // The next one is told of again.
    t.Feed(0, sLong);
    QCOMPARE(Log(t, t.lstCommData(0)), Texts({TooLong, "$GPZDA,1", TooLong}));
}

void DispatchWindowTest::portThatEndsNoLineIsToldOnce() {
    Listening t;
    t.Feed(1, std::string(100000, '\n'));  // a line feed ends nothing, and belongs to no line
    const std::string sNoise(3840, 'x');
    for (int i = 0; i < 3600; ++i) {  // an hour at full rate
        t.Feed(0, sNoise);
        QVERIFY(t.m_sCommBuffer(0).size() <= 65537);
    }
    t.Advance(1);
    QCOMPARE(Log(t, t.lstCommData(0)), Texts({TooLong}));
    QVERIFY(t.Lines(t.lstCommData(1)).empty());
    QCOMPARE(Panel(t, ui::PanelSilence0), QByteArray("00:01"));
    t.Feed(0, "\r");
    t.Advance(1);
    QCOMPARE(Panel(t, ui::PanelSilence0), QByteArray("00:00"));  // a bad line counts as traffic all the same
}

// A good beginning says nothing about a line whose rest has been dropped.
void DispatchWindowTest::overlongLineIsNotDecodedRecordedOrForwarded() {
    Forwarding t;
    const QString sFile = t.tWorld.Path(QStringLiteral("record.txt"));
    t.tWorld.tFileAnswers.push_back(sFile);
    t.Press(ui::KeyRecord);
    t.FeedLine(0, Report);
    const std::string sGll = "$GPGLL,4916.45,N,12311.12,W,225444,A,";
    t.FeedLine(0, sGll + std::string(70000, 'x'));
    t.FeedLine(0, WithChecksum("$PNMLS,29,19,3"));
    t.Press(ui::KeyStop);
    QVERIFY(t.Lines(t.lstGpsData).empty());
    QVERIFY(t.tWorld.ReadFile(sFile).find("GLL") == std::string::npos);
    QVERIFY(!t.Forwarded().contains("GLL"));
    QCOMPARE(Cell(t, 1, targets::ColSignal), QByteArray("29"));  // a bad line changes no more than its buffer
}

void DispatchWindowTest::overlongLineEndsWithTheRun() {
    Listening t;
    t.Feed(0, std::string(70000, 'x'));
    t.Press(ui::KeyStop);
    t.Press(ui::KeyStart);
    t.Feed(0, "$GPZDA,1\r");
    QCOMPARE(Log(t, t.lstCommData(0)), Texts({"$GPZDA,1"}));
}

void DispatchWindowTest::arrivalIsTheTimeOfTheCarriageReturn() {
    Listening t;
    t.tWorld.SetClock("2011-05-15T12:00:10");
    t.Feed(0, Report);
    t.tWorld.SetClock("2011-05-15T12:00:25");
    t.Feed(0, "\r");
    t.tWorld.SetClock("2011-05-15T12:00:40");
    t.Feed(0, "\n");
    QCOMPARE(t.m_dtCommLast(0), runtime::MakeDateTime({2011, 5, 15}, 12, 0, 25));
    QVERIFY(t.Lines(t.lstAisData).at(0).starts_with("Time=12:00:25, "));
    QCOMPARE(Cell(t, 1, targets::ColTime), QByteArray("12:00:25"));
}

void DispatchWindowTest::everyLineCountsAsTraffic_data() {
    QTest::addColumn<QByteArray>("sLine");
    QTest::newRow("decoded") << Bytes(Report);
    QTest::newRow("unknown") << QByteArray("$GPZDA,1");
    QTest::newRow("too short") << QByteArray("$GP");
    QTest::newRow("wrong checksum") << QByteArray("$GPZDA,1*00");
}

void DispatchWindowTest::everyLineCountsAsTraffic() {
    QFETCH(QByteArray, sLine);
    Listening t;
    t.Advance(5);
    QCOMPARE(Panel(t, ui::PanelSilence1), QByteArray("00:05"));
    t.FeedLine(1, View(sLine));
    QVERIFY(t.m_bCommReceived(1));
    QVERIFY(!t.m_bCommReceived(0));
    t.Advance(1);
    QCOMPARE(Panel(t, ui::PanelSilence1), QByteArray("00:00"));
    QCOMPARE(Panel(t, ui::PanelSilence0), QByteArray("00:06"));
}

void DispatchWindowTest::shortLineIsASizeError_data() {
    QTest::addColumn<QByteArray>("sLine");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("one") << QByteArray("$");
    QTest::newRow("five") << QByteArray("$GPZD");
    QTest::newRow("five with a right checksum") << QByteArray("$A*41");
}

void DispatchWindowTest::shortLineIsASizeError() {
    QFETCH(QByteArray, sLine);
    Forwarding t;
    t.FeedLine(0, View(sLine));
    QCOMPARE(Panel(t, ui::PanelSummary), QByteArray("Size Error"));
    QCOMPARE(Log(t, t.lstCommData(0)), Texts({"<<Size Error>>"}));
    QCOMPARE(Marks(t, t.lstCommData(0)), QByteArray("-"));
    QCOMPARE(t.Forwarded(), QByteArray());
}

void DispatchWindowTest::sixCharactersAreEnough() {
    Listening t;
    t.FeedLine(0, "$GPZDA");
    QCOMPARE(Log(t, t.lstCommData(0)), Texts({"$GPZDA"}));
    QCOMPARE(Panel(t, ui::PanelSummary), QByteArray());
}

void DispatchWindowTest::wrongChecksumIsRefused_data() {
    QTest::addColumn<QByteArray>("sLine");
    QTest::newRow("another number") << QByteArray("$GPGLL,4916.45,N,12311.12,W,225444,A*32");
    QTest::newRow("six characters tested over three") << QByteArray("$AB*04");
    QTest::newRow("no digits") << QByteArray("$GPZDA,1*zz");
    std::string sLower = Report;
    // A payload whose checksum has a letter in it, written small.
    for (std::uint32_t lMmsi = 1; sLower.find_first_of("ABCDEF", sLower.size() - 2) == std::string::npos; ++lMmsi) {
        sLower = AisSentence(AisBaseStation(4, {.lMmsi = lMmsi}));
    }
    for (std::size_t i = sLower.size() - 2; i < sLower.size(); ++i) {
        if (sLower[i] >= 'A') sLower[i] = static_cast<char>(sLower[i] - 'A' + 'a');
    }
    QTest::newRow("right but in lower case") << Bytes(sLower);
}

void DispatchWindowTest::wrongChecksumIsRefused() {
    QFETCH(QByteArray, sLine);
    Forwarding t;
    t.FeedLine(0, View(sLine));
    QCOMPARE(Panel(t, ui::PanelSummary), QByteArray("Checksum Error"));
    QCOMPARE(Log(t, t.lstCommData(0)), Texts({sLine.toStdString(), "<<Checksum Error>>"}));
    QCOMPARE(Marks(t, t.lstCommData(0)), QByteArray("--"));
    for (toolkit::LogList* p : {&t.lstAisData, &t.lstGpsData, &t.lstRxData, &t.lstOutputData}) {
        QVERIFY(t.Lines(*p).empty());
    }
    QCOMPARE(t.Forwarded(), QByteArray());
    QCOMPARE(t.grdTargetData.Cells.Rows(), 1);
}

void DispatchWindowTest::checksumIsAccepted_data() {
    QTest::addColumn<QByteArray>("sLine");
    // "A" xor "B" is 3.
    QTest::newRow("six characters") << QByteArray("$AB*03");
    QTest::newRow("right") << QByteArray("$GPGLL,4916.45,N,12311.12,W,225444,A*31");
    QTest::newRow("none") << QByteArray("$GPZDA,1");
    QTest::newRow("star elsewhere is no checksum") << QByteArray("$GPZDA,1*0");
    QTest::newRow("star fourth from the end") << QByteArray("$GPZDA,1*000");
    QTest::newRow("two stars: everything before the last counts") << Bytes(WithChecksum("$GPZDA,1*00"));
}

void DispatchWindowTest::checksumIsAccepted() {
    QFETCH(QByteArray, sLine);
    Forwarding t;
    t.FeedLine(0, View(sLine));
    QCOMPARE(Log(t, t.lstCommData(0)), Texts({sLine.toStdString()}));
    QCOMPARE(Panel(t, ui::PanelSummary), QByteArray());
    QCOMPARE(t.Forwarded(), sLine + "\r\n");
}

void DispatchWindowTest::checksumTextHasTwoUpperCaseDigits_data() {
    QTest::addColumn<QByteArray>("sBody");
    QTest::addColumn<QByteArray>("sChecksum");
    QTest::newRow("nothing but the first character") << QByteArray("$") << QByteArray("00");
    QTest::newRow("below 16") << QByteArray("$AB") << QByteArray("03");
    QTest::newRow("letter") << QByteArray("$J") << QByteArray("4A");
    QTest::newRow("the first does not count") << QByteArray("!J") << QByteArray("4A");
    QTest::newRow("high") << QByteArray("$\xff") << QByteArray("FF");
    QTest::newRow("position") << QByteArray("$GPGLL,4916.45,N,12311.12,W,225444,A") << QByteArray("31");
}

void DispatchWindowTest::checksumTextHasTwoUpperCaseDigits() {
    QFETCH(QByteArray, sBody);
    QFETCH(QByteArray, sChecksum);
    QCOMPARE(Bytes(app::frmMain::NmeaChecksum(View(sBody))), sChecksum);
}

void DispatchWindowTest::errorStaysUntilThePanelIsWritten() {
    Listening t;
    t.FeedLine(0, "$GP");
    t.FeedLine(0, "$GPZDA,1");
    t.FeedLine(1, "$GPGLL,4916.45,N,12311.12,W,225444,A*31");
    t.Advance(3);
    QCOMPARE(Panel(t, ui::PanelSummary), QByteArray("Size Error"));
    t.FeedLine(0, "$GPZDA,1*00");
    QCOMPARE(Panel(t, ui::PanelSummary), QByteArray("Checksum Error"));
    t.FeedLine(0, Report);
    QCOMPARE(Panel(t, ui::PanelSummary), QByteArray("1 Targets, 1 Messages"));
}

void DispatchWindowTest::addressSelectsTheDecoder_data() {
    QTest::addColumn<QByteArray>("sLine");
    QTest::addColumn<QByteArray>("sDecoder");  // whose log gets the line's error
    QTest::newRow("signal") << QByteArray("$PNMLS,,") << QByteArray("Rx");
    QTest::newRow("signal by six characters only") << QByteArray("$PNMLSGLL,,") << QByteArray("Rx");
    QTest::newRow("signal with nothing behind") << QByteArray("$PNMLS") << QByteArray("Rx");
    QTest::newRow("AIS") << QByteArray("!AIVDM,,") << QByteArray("AIS");
    QTest::newRow("AIS by six characters only") << QByteArray("!AIVDMRMC,,") << QByteArray("AIS");
    QTest::newRow("GLL") << QByteArray("$GPGLL,,") << QByteArray("GPS");
    QTest::newRow("GLL of a chart system") << QByteArray("$ECGLL,,") << QByteArray("GPS");
    QTest::newRow("GLL of anything") << QByteArray("xyzGLL,,") << QByteArray("GPS");
    QTest::newRow("RMC") << QByteArray("$GPRMC,,") << QByteArray("GPS");
    QTest::newRow("RMC of anything") << QByteArray("!,,RMCxx") << QByteArray("GPS");
    QTest::newRow("own ship") << QByteArray("!AIVDO,,") << QByteArray();
    QTest::newRow("other GPS sentence") << QByteArray("$GPGGA,,") << QByteArray();
    QTest::newRow("receiver command") << QByteArray("$PNMLC,,") << QByteArray();
    QTest::newRow("small signal") << QByteArray("$pnmls,,") << QByteArray();
    QTest::newRow("small AIS") << QByteArray("!aivdm,,") << QByteArray();
    QTest::newRow("small GLL") << QByteArray("$GPgll,,") << QByteArray();
    QTest::newRow("small RMC") << QByteArray("$GPrmc,,") << QByteArray();
    QTest::newRow("other first character of AIS") << QByteArray("$AIVDM,,") << QByteArray();
    QTest::newRow("GLL in another place") << QByteArray("$GGLLX,,") << QByteArray();
}

void DispatchWindowTest::addressSelectsTheDecoder() {
    QFETCH(QByteArray, sLine);
    QFETCH(QByteArray, sDecoder);
    Listening t;
    t.FeedLine(0, View(sLine));
    QByteArray sDecoders;
    if (t.Lines(t.lstRxData).size() == 1) sDecoders += "Rx";
    if (t.Lines(t.lstAisData).size() == 1) sDecoders += "AIS";
    if (t.Lines(t.lstGpsData).size() == 1) sDecoders += "GPS";
    QCOMPARE(sDecoders, sDecoder);
    QCOMPARE(Log(t, t.lstCommData(0)), Texts({sLine.toStdString()}));
    QCOMPARE(Marks(t, t.lstCommData(0)), QByteArray(sDecoder.isEmpty() ? "-" : "+"));
}

void DispatchWindowTest::linesThatAreDecodedAreMarked() {
    Listening t;
    for (const std::string_view sLine :
         {std::string_view(Report), std::string_view("$GPZDA,1"), std::string_view("$PNMLS,29,19,3"),
          std::string_view("$GP"), std::string_view("$GPRMC,,"), std::string_view("$GPGLL,,")}) {
        t.FeedLine(1, sLine);
    }
    QCOMPARE(Marks(t, t.lstCommData(1)), QByteArray("+-+-++"));
}

void DispatchWindowTest::levelsBelongToTheMessageJustBefore_data() {
    QTest::addColumn<QByteArray>("sBefore");  // may be empty
    QTest::addColumn<QByteArray>("sLine");
    QTest::addColumn<bool>("bBelongs");
    const QByteArray sReport = Bytes(Report);
    QTest::newRow("message") << sReport << sReport << true;
    QTest::newRow("unknown sentence clears") << sReport << QByteArray("$GPZDA,1") << false;
    QTest::newRow("own ship clears") << sReport << QByteArray("!AIVDO,1,1,,A,4,0") << false;
    QTest::newRow("levels clear") << sReport << QByteArray("$PNMLS,1,2,3*0") << false;
    QTest::newRow("GLL clears") << sReport << QByteArray("$GPGLL,4916.45,N,12311.12,W,225444,A*31") << false;
    QTest::newRow("failed GLL clears") << sReport << QByteArray("$GPGLL,,") << false;
    QTest::newRow("RMC clears") << sReport << QByteArray("$GPRMC,,") << false;
    QTest::newRow("size error leaves it set") << sReport << QByteArray("$GP") << true;
    QTest::newRow("checksum error leaves it set") << sReport << QByteArray("$GPZDA,1*00") << true;
    QTest::newRow("size error leaves it clear") << QByteArray("$GPZDA,1") << QByteArray("$GP") << false;
    QTest::newRow("refused message leaves it clear")
        << QByteArray("$GPZDA,1") << QByteArray("!AIVDM,1,1,,A,4,0*00") << false;
    QTest::newRow("failed message sets") << QByteArray("$GPZDA,1") << QByteArray("!AIVDM,,") << true;
    QTest::newRow("incomplete message sets") << QByteArray("$GPZDA,1") << QByteArray("!AIVDM,2,1,3,A,55,0") << true;
}

void DispatchWindowTest::levelsBelongToTheMessageJustBefore() {
    QFETCH(QByteArray, sBefore);
    QFETCH(QByteArray, sLine);
    QFETCH(bool, bBelongs);
    Listening t;
    t.FeedLine(0, Report);  // so that there is a channel to be told
    t.FeedLine(0, View(sBefore));
    t.FeedLine(0, View(sLine));
    QCOMPARE(t.m_bCommLastVdm(0), bBelongs);
    t.FeedLine(0, "$PNMLS,29,19,3*50");
    QCOMPARE(t.LastLine(t.lstRxData).find(", Ch= B") != std::string::npos, bBelongs);
    QVERIFY(!t.m_bCommLastVdm(0));
}

void DispatchWindowTest::eachPortHasItsOwnFlagAndLine() {
    Listening t;
    t.FeedLine(0, Report);
    t.Feed(0, "$GPZDA,begun");
    t.FeedLine(1, "$PNMLS,29,19,3*50");
    QVERIFY(t.LastLine(t.lstRxData).find("Ch=") == std::string::npos);
    QVERIFY(t.m_bCommLastVdm(0));
    QVERIFY(!t.m_bCommLastVdm(1));
    t.FeedLine(0, " on one port");
    QCOMPARE(Log(t, t.lstCommData(0)), Texts({Report, "$GPZDA,begun on one port"}));
}

void DispatchWindowTest::acceptedLinesAreForwarded() {
    Forwarding t;
    const std::vector<std::string> sLines = {Report, "$PNMLS,29,19,3*50", "$GPRMC,,", "$GPZDA,1", "anything at all"};
    QByteArray sExpected;
    for (const std::string& sLine : sLines) {
        t.FeedLine(sLine.size() % 2 == 0 ? 0 : 1, sLine);
        sExpected += Bytes(sLine + "\r\n");
    }
    QCOMPARE(t.Forwarded(), sExpected);
    QCOMPARE(Log(t, t.lstOutputData), Texts(sLines));
    QCOMPARE(Marks(t, t.lstOutputData), QByteArray("+++++"));
}

void DispatchWindowTest::gllIsForwardedBehindItsRmc() {
    ShownWindow t;
    t.chkOutputEnabled.setChecked(true);
    t.chkOutputRMC.setChecked(true);
    t.txtOutputPort.SetText("3");
    t.StartBoth();
    t.FeedLine(0, "$GPGLL,4916.45,N,12311.12,W,225444,A*31");
    const auto sLines = t.Lines(t.lstOutputData);
    QCOMPARE(sLines.size(), std::size_t{2});
    QVERIFY(sLines[0].starts_with("$ECRMC,225444,A,"));
    QCOMPARE(Bytes(sLines[1]), QByteArray("$GPGLL,4916.45,N,12311.12,W,225444,A*31"));
    QCOMPARE(Bytes(t.Device(t.MSCommOutput)->Written()), Bytes(sLines[0] + "\r\n" + sLines[1] + "\r\n"));
}

void DispatchWindowTest::failedDecodingIsForwardedAllTheSame() {
    Forwarding t;
    for (const char* sLine : {"!AIVDM,,", "$PNMLS,,", "$GPGLL,,", "$GPRMC,,"}) t.FeedLine(0, sLine);
    QCOMPARE(t.Forwarded(), QByteArray("!AIVDM,,\r\n$PNMLS,,\r\n$GPGLL,,\r\n$GPRMC,,\r\n"));
}

void DispatchWindowTest::refusedLinesAreNotForwarded() {
    Forwarding t;
    for (const char* sLine : {"$GP", "", "$GPZDA,1*00"}) t.FeedLine(0, sLine);
    t.MSComm(0).RaiseEvent(1001);
    QCOMPARE(t.Forwarded(), QByteArray());
    QVERIFY(t.Lines(t.lstOutputData).empty());
}

void DispatchWindowTest::nothingIsForwardedWithoutTheBox() {
    Listening t;
    t.FeedLine(0, Report);
    QVERIFY(t.Lines(t.lstOutputData).empty());
    QVERIFY(!t.MSCommOutput.PortOpen());
}

void DispatchWindowTest::onlyDecodedLinesAreRecorded() {
    Listening t;
    const QString sFile = t.tWorld.Path(QStringLiteral("recorded.txt"));
    t.tWorld.tFileAnswers.push_back(sFile);
    t.Press(ui::KeyRecord);
    t.tWorld.SetClock("2011-05-15T22:54:44");
    t.FeedLine(0, Report);
    t.FeedLine(0, "$GPZDA,1");
    t.FeedLine(1, "$GPZDA,1*00");
    t.FeedLine(0, "$GPGLL,4916.45,N,12311.12,W,225444,A*32");
    t.FeedLine(0, "$GP");
    t.MSComm(0).RaiseEvent(1004);
    t.FeedLine(1, "$GPRMC,,");
    t.Press(ui::KeyStop);
    const std::string sStamp = "05/15/2011 22:54:44 ";
    QCOMPARE(Bytes(t.tWorld.ReadFile(sFile)), Bytes(sStamp + Report + "\r\n" + sStamp + "$GPRMC,,\r\n"));
}

void DispatchWindowTest::portEventsAreNotices_data() {
    QTest::addColumn<int>("iEvent");
    QTest::addColumn<QByteArray>("sNotice");
    QTest::newRow("break") << 1001 << QByteArray("<<Break Signal Received>>");
    QTest::newRow("framing") << 1004 << QByteArray("<<Framing Error>>");
    QTest::newRow("overrun") << 1006 << QByteArray("<<Port Overrun>>");
    QTest::newRow("overflow") << 1008 << QByteArray("<<Rx Overflow>>");
    QTest::newRow("parity") << 1009 << QByteArray("<<Parity Error>>");
    for (const int iEvent : {0, 1, 3, 7, 1002, 1005, 1010, 12345, -1}) {
        QTest::addRow("%d", iEvent) << iEvent << "<<Event " + QByteArray::number(iEvent) + ">>";
    }
}

void DispatchWindowTest::portEventsAreNotices() {
    QFETCH(int, iEvent);
    QFETCH(QByteArray, sNotice);
    Listening t;
    t.MSComm(1).RaiseEvent(iEvent);
    QCOMPARE(Log(t, t.lstCommData(1)), Texts({sNotice.toStdString()}));
    QCOMPARE(Marks(t, t.lstCommData(1)), QByteArray("-"));
    QVERIFY(t.MSComm(1).PortOpen());
    QVERIFY(!t.m_bCommReceived(1));
    QCOMPARE(Panel(t, ui::PanelSummary), QByteArray());
}

void DispatchWindowTest::portEventsLeaveTheLineAlone() {
    Listening t;
    t.Feed(0, "$GPZDA");
    t.MSComm(0).RaiseEvent(1009);
    t.Feed(0, ",1\r\n");
    QCOMPARE(Log(t, t.lstCommData(0)), Texts({"<<Parity Error>>", "$GPZDA,1"}));
}

void DispatchWindowTest::portEventsGoToTheirOwnPort() {
    Listening t;
    t.MSComm(0).RaiseEvent(1001);
    t.MSComm(1).RaiseEvent(1004);
    QCOMPARE(Log(t, t.lstCommData(0)), Texts({"<<Break Signal Received>>"}));
    QCOMPARE(Log(t, t.lstCommData(1)), Texts({"<<Framing Error>>"}));
    QVERIFY(t.Lines(t.lstOutputData).empty());
}

void DispatchWindowTest::oldestLineGoes() {
    Listening t;
    QStringList sExpected;
    for (int i = 1; i <= 101; ++i) {
        t.FeedLine(0, "$GPZDA," + std::to_string(i));
        sExpected << QStringLiteral("$GPZDA,%1").arg(i);
    }
    QCOMPARE(Log(t, t.lstCommData(0)), sExpected);
    for (int i = 102; i <= 250; ++i) {
        t.FeedLine(0, "$GPZDA," + std::to_string(i));
        sExpected.removeFirst();
        sExpected << QStringLiteral("$GPZDA,%1").arg(i);
        if (i < 105) QCOMPARE(Log(t, t.lstCommData(0)), sExpected);
    }
    QCOMPARE(Log(t, t.lstCommData(0)), sExpected);
}

void DispatchWindowTest::marksMoveWithTheirLines() {
    Listening t;
    QByteArray sExpected;
    for (int i = 0; i < 130; ++i) {
        t.FeedLine(0, i % 3 == 0 ? "$GPRMC,," : "$GPZDA,1");
        sExpected += i % 3 == 0 ? '+' : '-';
    }
    QCOMPARE(Marks(t, t.lstCommData(0)), sExpected.right(101));
}

void DispatchWindowTest::newestLineIsCurrentAndInView() {
    Listening t;
    t.SSTab.SetTab(ui::TabInput);
    for (int i = 0; i < 150; ++i) {
        t.FeedLine(0, "$GPZDA,1");
        if (i != 0 && i != 149) continue;
        t.Synchronize();
        QCOMPARE(t.lstCommData(0).currentIndex().row(), i == 0 ? 0 : 100);
    }
    const QRect tLast = t.lstCommData(0).visualRect(t.lstCommData(0).model()->index(100, 0));
    QVERIFY(t.lstCommData(0).viewport()->rect().intersects(tLast));
}

void DispatchWindowTest::toolTipsNumberThePortsFromOne() {
    Listening t;
    QCOMPARE(t.lstCommData(0).toolTip(), QStringLiteral("#1, NEMA 0183 Data, Highlighted indicates Decoded Data"));
    QCOMPARE(t.lstCommData(1).toolTip(), QStringLiteral("#2, NEMA 0183 Data, Highlighted indicates Decoded Data"));
}

void DispatchWindowTest::interleavedPortsKeepTheirOrder() {
    Forwarding t;
    std::string sPort0, sPort1;
    QStringList sExpected0, sExpected1;
    for (int i = 0; i < 40; ++i) {
        sPort0 += "$GPZDA,zero " + std::to_string(i) + "\r\n";
        sPort1 += "$GPZDA,one " + std::to_string(i) + "\r\n";
        sExpected0 << QStringLiteral("$GPZDA,zero %1").arg(i);
        sExpected1 << QStringLiteral("$GPZDA,one %1").arg(i);
    }
    for (std::size_t i = 0; i < sPort0.size(); i += 11) {
        t.Feed(0, sPort0.substr(i, 11));
        if (i < sPort1.size()) t.Feed(1, sPort1.substr(i, 11));
    }
    QCOMPARE(Log(t, t.lstCommData(0)), sExpected0);
    QCOMPARE(Log(t, t.lstCommData(1)), sExpected1);
    QCOMPARE(t.Lines(t.lstOutputData).size(), std::size_t{80});
}

void DispatchWindowTest::playbackEntersLikePortZero() {
    ShownWindow t;
    const QString sFile = t.tWorld.Path(QStringLiteral("played.txt"));
    const std::string sStamp = "05/15/2011 22:54:44 ";
    t.tWorld.WriteFile(sFile, sStamp + Report + "\r\n" + sStamp + "$GPZDA,1*00\r\n" + sStamp + "$GPZDA,1\r\n");
    t.tWorld.tFileAnswers.push_back(sFile);
    t.Press(ui::KeyPlaybackBurst);
    QCOMPARE(Log(t, t.lstCommData(0)), Texts({Report, "$GPZDA,1*00", "<<Checksum Error>>", "$GPZDA,1"}));
    QCOMPARE(Marks(t, t.lstCommData(0)), QByteArray("+---"));
    QVERIFY(t.Lines(t.lstAisData).at(0).starts_with("Time=22:54:44, Ch=B, Id=4, "));
}

void DispatchWindowTest::manyLinesAtOnceShowWhatSingleOnesShow_data() {
    QTest::addColumn<int>("iSort");
    QTest::addColumn<bool>("bTrack");
    QTest::addColumn<quint32>("lAtOnce");      // lines that arrive together
    QTest::addColumn<quint32>("lLevelsEach");  // one message in so many is followed by its levels
    for (int iSort = 0; iSort < 3; ++iSort) {
        for (const quint32 lAtOnce : {3U, 40U, 700U}) {
            QTest::addRow("sort %d, %u lines, levels often", iSort, lAtOnce) << iSort << false << lAtOnce << 1U;
            QTest::addRow("sort %d, %u lines, levels rare", iSort, lAtOnce) << iSort << false << lAtOnce << 60U;
        }
        QTest::addRow("sort %d, tracking", iSort) << iSort << true << 500U << 2U;
    }
}

void DispatchWindowTest::manyLinesAtOnceShowWhatSingleOnesShow() {
    QFETCH(int, iSort);
    QFETCH(bool, bTrack);
    QFETCH(quint32, lAtOnce);
    QFETCH(quint32, lLevelsEach);
    Forwarding tAlone, tTogether;
    for (Forwarding* p : {&tAlone, &tTogether}) {
        p->cmbTargetSort.SetListIndex(iSort);
        p->chkTargetTrack.setChecked(bTrack);
    }
    Dice tDice(lAtOnce * 10 + lLevelsEach);
    for (const app::PortIndex iPort : std::initializer_list<app::PortIndex>{0, 1, 0, 1, 1, 0}) {
        std::string sTogether;
        for (quint32 i = 0; i < lAtOnce; ++i) {
            const std::string sLine = AnyLine(tDice, lLevelsEach, lAtOnce < 500 ? 5 : 500);
            tAlone.Feed(iPort, sLine);
            sTogether += sLine;
        }
        tTogether.Feed(iPort, sTogether);
        QCOMPARE(Everything(tTogether), Everything(tAlone));
        for (Forwarding* p : {&tAlone, &tTogether}) p->Advance(1 + static_cast<int>(lAtOnce % 7));
    }
    QCOMPARE(tTogether.Forwarded(), tAlone.Forwarded());
}

QTEST_MAIN(DispatchWindowTest)
#include "DispatchWindowTest.moc"
