// Reports that are kept until the lines at hand have been taken in leave what reports shown one by one leave: two
// windows get the same lines, one all lines of an event at once, the other an event a line, and show the same. Random
// scripts, the same in every run.
#include <QTest>
#include <array>
#include <string>
#include <vector>

#include "tests/support/AisEncoder.h"
#include "tests/support/TestWindow.h"
#include "tests/window/Shown.h"
#include "tests/window/Views.h"

using support::AisReport;
using support::Dice;
using support::Difference;
using support::TestWindow;
using support::Views;
using support::World;

namespace {

constexpr std::uint32_t Scripts = 150;
constexpr std::uint32_t Bursts = 20;

// How the lines of an event are mixed: in how many of twenty places stands what.
struct Mix {
    std::uint32_t iSignal;  // behind a report
    std::uint32_t iOther;   // in place of one
};

std::string Position(Dice& tDice) {
    AisReport t;
    t.lMmsi = 205000000 + tDice() % 12 * 1000;
    t.lSpeed = tDice() % 8 == 0 ? 1023 : tDice() % 300;
    t.lRateOfTurn = static_cast<std::int32_t>(tDice() % 256) - 128;
    t.lCourse = tDice() % 3700;
    t.lHeading = tDice() % 512;
    if (tDice() % 10 != 0) {
        const bool bOwnPlace = tDice() % 10 == 0;
        t.lLatitude =
            support::AisAngle(51, 30) + (bOwnPlace ? 0 : static_cast<std::int32_t>(tDice() % 200000) - 100000);
        t.lLongitude = support::AisAngle(1, 20) + (bOwnPlace ? 0 : static_cast<std::int32_t>(tDice() % 200000));
        if (tDice() % 6 == 0) t.lLatitude = -t.lLatitude;
    }
    const char cChannel = "AB"[tDice() % 2];
    switch (tDice() % 8) {
        case 0:
            return support::AisSentence(support::AisClassB(t), cChannel);
        case 1:
            return support::AisSentence(support::AisClassBExtended(t, "SOMEWHERE"), cChannel);
        case 2:
            return support::AisSentence(support::AisBaseStation(4, t), cChannel);
        case 3:
            return support::AisSentence(support::AisOther(static_cast<int>(tDice() % 64), t.lMmsi), cChannel);
        default:
            return support::AisSentence(support::AisClassA(1 + static_cast<int>(tDice() % 3), t), cChannel);
    }
}

std::string Signal(Dice& tDice) {
    if (tDice() % 150 == 0) return TestWindow::WithChecksum("$PNMLS,29,,3");
    if (tDice() % 150 == 0) return TestWindow::WithChecksum("$PNMLS,x,-1.5,");
    const QByteArray sBody = QByteArray("$PNMLS,") + QByteArray::number(tDice() % 60) + ',' +
                             QByteArray::number(tDice() % 30) + ',' + QByteArray::number(tDice() % 8);
    return TestWindow::WithChecksum(sBody.toStdString());
}

void AppendOther(std::vector<std::string>& sLines, Dice& tDice) {
    switch (tDice() % 10) {
        case 0:
            sLines.push_back("$GPGLL,5130.00,N,00120.00,E,225444,A");
            break;
        case 1:
            sLines.push_back("$GPRMC,225446,A,5130.5049,N,00121.0049,W,000.5,054.7,191194,020.3,E");
            break;
        case 2:
            sLines.push_back("$GPGLL,99,N,00120.00,E,225444,A");
            break;
        case 3:
            sLines.push_back("$GPRMC,225446,V,5130.50,N,00121.00,W,000.5,054.7,191194,020.3,E");
            break;
        case 4:
            sLines.push_back("$G");
            break;
        case 5:
            sLines.push_back("$GPZDA,225446*00");
            break;
        case 6:
            sLines.push_back("!AIVDM,1,1,,");
            break;
        case 7:
            sLines.push_back("!AIVDO,1,1,,,15M67F@uQqG?w<hK?Mu8iFv00000,0");
            break;
        default:
            for (const std::string& sLine :
                 support::AisSentences(support::AisStaticVoyage(205000000 + tDice() % 12 * 1000, "NAME"), 'B', 3)) {
                if (tDice() % 8 != 0) sLines.push_back(sLine);
            }
            break;
    }
}

std::vector<std::string> Lines(Dice& tDice, std::size_t iLines, Mix tMix) {
    std::vector<std::string> sLines;
    while (sLines.size() < iLines) {
        if (tDice() % 20 < tMix.iOther) {
            AppendOther(sLines, tDice);
            continue;
        }
        sLines.push_back(Position(tDice));
        if (tDice() % 20 < tMix.iSignal) sLines.push_back(Signal(tDice));
        if (tDice() % 400 < tMix.iSignal) sLines.push_back(Signal(tDice));  // a second one for the same report
    }
    return sLines;
}

// Few lines, or so many that the oldest are out of table and logs by the end, the end mixed otherwise than the begin.
std::vector<std::string> Event(Dice& tDice) {
    constexpr std::array<Mix, 6> Mixes = {{{0, 0}, {0, 0}, {0, 1}, {20, 0}, {20, 1}, {6, 8}}};
    const auto tMix = [&] { return Mixes[tDice() % Mixes.size()]; };
    std::vector<std::string> sLines = Lines(tDice, 1 + tDice() % 30, tMix());
    if (tDice() % 3 != 0) return sLines;
    for (const std::string& sLine : Lines(tDice, tDice() % 700, tMix())) sLines.push_back(sLine);
    return sLines;
}

// What the user may do between two events, to both windows.
void Act(TestWindow& t, std::uint32_t lWhat, std::uint32_t lHow) {
    switch (lWhat) {
        case 0:
            t.cmbTargetSort.SetListIndex(static_cast<int>(lHow % 3));
            break;
        case 1:
            t.chkTargetTrack.setChecked(lHow % 2 == 0);
            break;
        case 2:
            t.chkRxNasaPower.setChecked(lHow % 2 == 0);
            break;
        case 3:
            t.cmbTargetTarget.SetText(std::to_string(205000000 + lHow % 12 * 1000));
            break;
        case 4:
            t.cmbTargetDetail.SetListIndex(static_cast<int>(lHow % 5));
            break;
        case 5:
            t.Press("Stop");
            t.Press("Start");
            break;
        default:
            t.Advance(static_cast<int>(lHow % 40));
            break;
    }
}

std::string Joined(const std::vector<std::string>& sLines) {
    std::string sAll;
    for (const std::string& sLine : sLines) sAll += sLine + "\r\n";
    return sAll;
}

void Open(TestWindow& t) {
    t.LoadAndShow();
    t.cmbTargetDetail.SetText("All");
    t.txtOutputPort.SetText("3");
    t.StartBoth();
}

}  // namespace

class KeptReportsTest : public QObject {
    Q_OBJECT
private slots:
    void eventOfManyLinesLeavesWhatSingleLinesLeave();
    void burstLeavesWhatSingleLinesLeave();
    void droppedLevelsUnderSignalMakeTheFirstCellCurrent();
};

void KeptReportsTest::eventOfManyLinesLeavesWhatSingleLinesLeave() {
    World tKeptWorld;
    World tSingleWorld;
    TestWindow tKept(tKeptWorld);
    TestWindow tSingle(tSingleWorld);
    Open(tKept);
    Open(tSingle);
    for (std::uint32_t lScript = 1; lScript <= Scripts; ++lScript) {
        Dice tDice(lScript);
        for (std::uint32_t lEvent = 0; lEvent < 6; ++lEvent) {
            for (std::uint32_t i = tDice() % 4; i > 0; --i) {
                const std::uint32_t lWhat = tDice() % 9;
                const std::uint32_t lHow = tDice();
                Act(tKept, lWhat, lHow);
                Act(tSingle, lWhat, lHow);
            }
            for (TestWindow* p : {&tKept, &tSingle}) p->grdTargetData.SetCurrentCell(-1, -1);
            const app::PortIndex iPort = tDice() % 2 == 0 ? 0 : 1;
            const std::vector<std::string> sLines = Event(tDice);
            tKept.Feed(iPort, Joined(sLines));
            for (const std::string& sLine : sLines) tSingle.FeedLine(iPort, sLine);
            if (lEvent % 2 == 0) continue;
            const QString sDifference = Difference(Views(tKept), Views(tSingle));
            if (sDifference.isEmpty()) continue;
            QFAIL(qPrintable(QStringLiteral("script %1, event %2: ").arg(lScript).arg(lEvent) + sDifference));
        }
    }
}

void KeptReportsTest::burstLeavesWhatSingleLinesLeave() {
    for (std::uint32_t lScript = 1; lScript <= Bursts; ++lScript) {
        Dice tDice(1000 + lScript);
        std::vector<std::string> sLines;
        const int iEvents = lScript % 5 == 0 ? 40 : 5;  // some are longer than the block in which a file is read
        for (int i = 0; i < iEvents; ++i) {
            for (const std::string& sLine : Event(tDice)) sLines.push_back(sLine);
        }
        World tBurstWorld;
        World tSingleWorld;
        TestWindow tBurst(tBurstWorld);
        TestWindow tSingle(tSingleWorld);
        Open(tSingle);
        tBurst.LoadAndShow();
        tBurst.cmbTargetDetail.SetText("All");
        const std::uint32_t lSort = tDice();
        const std::uint32_t lTrack = tDice();
        for (TestWindow* p : {&tBurst, &tSingle}) {
            Act(*p, 0, lSort);
            Act(*p, 1, lTrack);
        }
        std::string sRecord;
        for (const std::string& sLine : sLines) {
            tSingleWorld.dtNow.lSeconds += tDice() % 3;
            runtime::AppendRecordStamp(sRecord, tSingleWorld.dtNow);
            sRecord += ' ' + sLine + "\r\n";
            tSingle.FeedLine(0, sLine);
        }
        const QString sFile = tBurstWorld.Path(QStringLiteral("burst.txt"));
        tBurstWorld.WriteFile(sFile, sRecord);
        tBurstWorld.tFileAnswers = {sFile};
        tBurst.Press("Playback Burst");
        const QString sDifference = Difference(Views(tBurst), Views(tSingle));
        if (!sDifference.isEmpty()) {
            QFAIL(qPrintable(QStringLiteral("burst %1: ").arg(lScript) + sDifference));
        }
    }
}

// The sort that shows them is the only one under this order: a report without levels sorts nothing.
void KeptReportsTest::droppedLevelsUnderSignalMakeTheFirstCellCurrent() {
    World tWorld;
    TestWindow t(tWorld);
    Open(t);
    t.cmbTargetSort.SetListIndex(2);
    Dice tDice(16);
    std::vector<std::string> sLines = {support::AisSentence(support::AisOther(9, 205000000)),
                                       TestWindow::WithChecksum("$PNMLS,29,19,3")};
    for (const std::string& sLine : Lines(tDice, 300, {0, 0})) sLines.push_back(sLine);
    QCOMPARE(t.grdTargetData.CurrentCell(), std::pair(-1, -1));
    t.Feed(0, Joined(sLines));
    QCOMPARE(t.grdTargetData.CurrentCell(), std::pair(1, 1));
}

QTEST_MAIN(KeptReportsTest)
#include "KeptReportsTest.moc"
