// Whatever arrives on whichever port while the user does whatever: the window goes on, its lists and its table stay
// within their bounds, and it still decodes the next good sentence. The same course of events in every run.
#include <QTest>
#include <algorithm>
#include <array>
#include <string>

#include "tests/window/Bench.h"
#include "tests/window/Shown.h"

namespace {

using support::Dice;
using support::ShownWindow;
using support::TestWindow;

constexpr int Steps = 15000;
constexpr int CheckEvery = 100;
constexpr int MostLines = 101;
constexpr int MostRows = 257;  // the header and 256 messages

const std::array<std::string, 9> Bodies = {
    "!AIVDM,1,1,,A,15M67F@uQqG?w<hK?Mu8iFv00000,0",
    "!AIVDM,1,1,,B,4025boiuho;?HwJSOhD@?w?000S:,0",
    "!AIVDM,1,1,,B,B52K>;h00Fc>jpUlNV@ikwpUoP06,0",
    "!AIVDM,2,1,4,A,55M67F@00001L@?;?CM<4pE=@Dr0598T000000151H53340Ht0000000000,0",
    "!AIVDM,2,2,4,A,00000000000,2",
    "$PNMLS,29,19,3",
    "$GPGLL,4916.45,N,12311.12,W,225444,A",
    "$GPRMC,225446,A,4916.45,N,12311.12,W,000.5,054.7,191194,020.3,E",
    "!AIVDO,1,1,,,15M67F@uQqG?w<hK?Mu8iFv00000,0",
};

char AnyByte(Dice& tDice) { return static_cast<char>(tDice() & 0xFF); }

std::size_t Place(Dice& tDice, const std::string& s) { return tDice() % (s.size() + 1); }

void Mutate(Dice& tDice, std::string& s) {
    const std::size_t iPlace = Place(tDice, s);
    switch (tDice() % 6) {
        case 0:
            if (iPlace < s.size()) s[iPlace] = AnyByte(tDice);
            break;
        case 1:
            s.insert(iPlace, 1, AnyByte(tDice));
            break;
        case 2:
            s.erase(iPlace, 1 + tDice() % 5);
            break;
        case 3:
            s.resize(iPlace);
            break;
        case 4:
            s.insert(iPlace, s.substr(Place(tDice, s)));
            break;
        default:
            s.insert(iPlace, 1 + tDice() % 8, ",,09-+.eE*"[tDice() % 10]);
            break;
    }
}

std::string Sentence(Dice& tDice) {
    std::string s = Bodies[tDice() % Bodies.size()];
    for (std::uint32_t i = tDice() % 4; i > 0; --i) Mutate(tDice, s);
    if (tDice() % 4 != 0) s = TestWindow::WithChecksum(s);
    if (tDice() % 16 == 0) Mutate(tDice, s);
    return s + (tDice() % 16 == 0 ? "\r" : "\r\n");
}

std::string Noise(Dice& tDice) {
    std::string s(tDice() % 16 == 0 ? tDice() % 5000 : tDice() % 40, '\0');
    for (char& c : s) c = AnyByte(tDice);
    return s;
}

void Feed(TestWindow& t, Dice& tDice) {
    std::string s = tDice() % 8 == 0 ? Noise(tDice) : Sentence(tDice);
    const app::PortIndex i = tDice() % 2 == 0 ? 0 : 1;
    while (!s.empty()) {  // in pieces, as a port gives it
        const std::size_t iPiece = tDice() % 2 == 0 ? s.size() : 1 + tDice() % s.size();
        t.Feed(i, std::string_view(s).substr(0, iPiece));
        s.erase(0, iPiece);
    }
}

void UseViews(TestWindow& t, Dice& tDice) {
    switch (tDice() % 7) {
        case 0:
            t.cmbTargetSort.SetListIndex(static_cast<int>(tDice() % 3));
            break;
        case 1:
            t.cmbTargetDetail.SetListIndex(static_cast<int>(tDice() % 5));
            break;
        case 2:
            t.chkTargetTrack.setChecked(tDice() % 2 == 0);
            break;
        case 3:
            t.cmbTargetTarget.SetText(tDice() % 2 == 0 ? "366053209" : Noise(tDice));
            break;
        case 4:
            t.SSTab.SetTab(static_cast<int>(tDice() % 11));
            break;
        case 5:
            t.grdTargetData.Click(static_cast<float>(tDice() % 900), static_cast<float>(tDice() % 500));
            break;
        default:
            t.grdTargetData.MouseMove(static_cast<float>(tDice() % 900), static_cast<float>(tDice() % 500));
            break;
    }
}

void Run(TestWindow& t, Dice& tDice) {
    switch (tDice() % 12) {
        case 0:
            t.Press("Stop");
            t.chkOutputEnabled.setChecked(tDice() % 2 == 0);
            t.chkOutputRMC.setChecked(tDice() % 2 == 0);
            t.Press("Start");
            break;
        case 1:
            t.chkRxNasaPower.setChecked(tDice() % 2 == 0);
            break;
        case 2:
            t.MSComm(tDice() % 2 == 0 ? 0 : 1).RaiseEvent(static_cast<int>(1000 + tDice() % 12));
            break;
        default:
            t.Advance(1 + static_cast<int>(tDice() % 3));
            break;
    }
}

}  // namespace

class RandomBytesTest : public QObject {
    Q_OBJECT
private slots:
    void theWindowGoesOnWhateverArrives_data();
    void theWindowGoesOnWhateverArrives();
};

void RandomBytesTest::theWindowGoesOnWhateverArrives_data() {
    QTest::addColumn<std::uint32_t>("lSeed");
    for (const std::uint32_t lSeed : {1u, 20u, 300u}) QTest::addRow("seed %u", lSeed) << lSeed;
}

void RandomBytesTest::theWindowGoesOnWhateverArrives() {
    QFETCH(std::uint32_t, lSeed);
    Dice tDice(lSeed);
    ShownWindow t;
    t.txtOutputPort.SetText("3");
    t.StartBoth();
    for (int i = 1; i <= Steps; ++i) {
        const std::uint32_t lKind = tDice() % 20;
        if (lKind == 0) {
            Run(t, tDice);
        } else if (lKind == 1) {
            UseViews(t, tDice);
        } else {
            Feed(t, tDice);
        }
        QVERIFY(t.grdTargetData.Redraw());
        QVERIFY(t.grdTargetData.Cells.Rows() <= MostRows);
        for (toolkit::LogList* p :
             {&t.lstCommData(0), &t.lstCommData(1), &t.lstRxData, &t.lstAisData, &t.lstGpsData, &t.lstOutputData}) {
            QVERIFY(p->Lines.Count() <= MostLines);
        }
        if (i % CheckEvery != 0) continue;
        t.Synchronize();
        QCOMPARE(t.grdTargetData.model()->rowCount(), std::max(0, t.grdTargetData.Cells.Rows() - 1));
        QCOMPARE(t.lstAisData.model()->rowCount(), t.lstAisData.Lines.Count());
        QCOMPARE(t.StatusBar.PanelText(1), std::string("Running"));
    }
    QVERIFY(t.grdTargetData.Cells.Rows() > 1);  // the course of events did bring messages

    t.Press("Stop");
    t.Press("Start");
    t.FeedLine(0, TestWindow::WithChecksum(Bodies[0]));
    QCOMPARE(t.Cell(t.grdTargetData, 1, 1), std::string("366053209"));
    QCOMPARE(t.Panel(2), std::string("1 Targets, 1 Messages"));
}

QTEST_MAIN(RandomBytesTest)
#include "RandomBytesTest.moc"
