// That a receiver's steady traffic takes no memory: every allocation is counted, by whomever, between the bytes that
// wait at the port and the rows, logs and counts that they end in. The views take over later, at their beat, and what
// that takes must not grow with the sentences.
#include <QTest>
#include <functional>
#include <memory>

#include "tests/support/Allocations.h"
#include "tests/support/PtyPort.h"
#include "tests/support/TestWindow.h"
#include "tools/Traffic.h"

using support::Allocations;
using support::PtyPort;
using support::TestWindow;
using support::World;

namespace {

constexpr int Settling = 12000;  // lines after which every ship has been heard and every place been used
constexpr int Counted = 3000;    // lines

// The output port's device, which keeps nothing of what it is given.
class Sink : public support::MemoryDevice {
public:
    using MemoryDevice::MemoryDevice;
    void Write(std::string_view) override {}
};

using Prepare = std::function<void(TestWindow&)>;

struct Traffic {
    World tWorld;
    std::unique_ptr<TestWindow> pWindow;
    simulator::Traffic tTraffic{{.iTargets = 60, .dDamagedPercent = 0, .dtStart = Start()}};
    std::int64_t lMilliseconds = 0;

    static runtime::DateTime Start() { return runtime::MakeDateTime({2011, 5, 15}, 12, 0, 0); }

    explicit Traffic(const Prepare& tPrepare) {
        tWorld.tAdjust = [](toolkit::Platform& t) {
            t.Serial.MakeDevice = [] { return std::make_unique<Sink>([](const QString&) {}); };
        };
        pWindow = std::make_unique<TestWindow>(tWorld);
        pWindow->LoadAndShow();
        tPrepare(*pWindow);
    }
    // As many lines with their line ends, in pieces as receptions bring them: lSize bytes each, 0 for line by line. The
    // clock goes on meanwhile.
    std::vector<std::string> Receptions(int iLines, std::size_t lSize) {
        std::vector<std::string> s;
        std::string sAll;
        for (int i = 0; i < iLines; ++i) {
            const simulator::TrafficLine& t = tTraffic.Next();
            lMilliseconds = t.lMilliseconds;
            if (lSize == 0) {
                s.push_back(t.sText + "\r\n");
            } else {
                sAll += t.sText + "\r\n";
            }
        }
        for (std::size_t i = 0; i < sAll.size(); i += lSize) s.push_back(sAll.substr(i, lSize));
        return s;
    }
    void Feed(const std::vector<std::string>& sReceptions) {
        const std::int64_t lFrom = tWorld.dtNow.lSeconds;
        const std::int64_t lTo = Start().lSeconds + lMilliseconds / 1000;
        for (std::size_t i = 0; i < sReceptions.size(); ++i) {
            const auto lAt = static_cast<std::int64_t>(i);
            tWorld.dtNow.lSeconds = lFrom + (lTo - lFrom) * lAt / static_cast<std::int64_t>(sReceptions.size());
            pWindow->Feed(0, sReceptions[i]);
        }
    }
};

}  // namespace

class AllocationsWindowTest : public QObject {
    Q_OBJECT
private slots:
    void countsWhatIsAllocated();
    void sentencesAllocateNothing_data();
    void sentencesAllocateNothing();
    void theDriversReceptionsAllocateNothing();
    void whatTheViewsTakeDoesNotGrowWithTheSentences();
};

void AllocationsWindowTest::countsWhatIsAllocated() {
    QCOMPARE(Allocations([] {}), 0);
    std::unique_ptr<int> pNumber;
    QCOMPARE(Allocations([&pNumber] { pNumber = std::make_unique<int>(1); }), 1);
    QString sText;
    QCOMPARE(Allocations([&sText] { sText = QString(5, QLatin1Char('x')); }), 1);
    std::string sLong;
    QCOMPARE(Allocations([&sLong] { sLong.assign(100, 'x'); }), 1);
}

void AllocationsWindowTest::sentencesAllocateNothing_data() {
    QTest::addColumn<Prepare>("tPrepare");
    QTest::addColumn<int>("iSize");
    const auto tRows = [](const std::string& sName, const Prepare& tPrepare) {
        for (const int iSize : {0, 100, 512}) {
            QTest::addRow("%s, %d", sName.c_str(), iSize) << tPrepare << iSize;
        }
    };
    tRows("as it starts", [](TestWindow& t) { t.StartBoth(); });
    tRows("dBm", [](TestWindow& t) {
        t.chkRxNasaPower.setChecked(true);
        t.StartBoth();
    });
    tRows("by range", [](TestWindow& t) {
        t.cmbTargetSort.SetListIndex(1);
        t.StartBoth();
    });
    tRows("by signal", [](TestWindow& t) {
        t.cmbTargetSort.SetListIndex(2);
        t.StartBoth();
    });
    tRows("tracking", [](TestWindow& t) {
        t.chkTargetTrack.setChecked(true);
        t.StartBoth();
    });
    tRows("recording", [](TestWindow& t) {
        t.StartBoth();
        t.TheWorld().tFileAnswers = {t.TheWorld().Path(QStringLiteral("record.txt"))};
        t.Press("Record");
    });
    tRows("forwarding", [](TestWindow& t) {
        t.chkOutputEnabled.setChecked(true);
        t.txtOutputPort.SetText("3");
        t.chkOutputRMC.setChecked(true);
        t.StartBoth();
    });
}

void AllocationsWindowTest::sentencesAllocateNothing() {
    QFETCH(Prepare, tPrepare);
    QFETCH(int, iSize);
    Traffic t(tPrepare);
    t.Feed(t.Receptions(Settling, static_cast<std::size_t>(iSize)));
    t.pWindow->Synchronize();
    const std::vector<std::string> sReceptions = t.Receptions(Counted, static_cast<std::size_t>(iSize));
    const auto lRaw = t.pWindow->lstCommData(0).Lines.Added();
    QCOMPARE(Allocations([&] { t.Feed(sReceptions); }), 0);
    QVERIFY(t.pWindow->lstCommData(0).Lines.Added() >= lRaw + Counted - 1);
}

// From the driver on: a real line, Qt's serial port and event loop. A reception is up to 512 bytes long, so that some
// end in the middle of a sentence.
void AllocationsWindowTest::theDriversReceptionsAllocateNothing() {
    World tWorld;
    tWorld.bNativeDevices = true;
    PtyPort tPty;
    TestWindow t(tWorld);  // not shown: no view takes over while the event loop runs
    t.Load();
    t.tmrTime.stop();
    t.txtCommPort(0).SetText(tPty.Link().toStdString());
    t.Press("Start");
    t.tmrComm.stop();
    simulator::Traffic tTraffic({.iTargets = 60, .dtStart = Traffic::Start()});
    const auto tReceive = [&](int iLines) {
        std::string s;
        for (int i = 0; i < iLines; ++i) s += tTraffic.Next().sText + "\r\n";
        const auto lWanted = t.lstCommData(0).Lines.Added() + static_cast<std::uint64_t>(iLines);
        std::int64_t lTaken = 0;
        for (std::string_view sRest = s; !sRest.empty();) {
            sRest.remove_prefix(tPty.WriteSome(sRest.substr(0, 500)));
            lTaken += Allocations([] { QCoreApplication::processEvents(); });
        }
        while (t.lstCommData(0).Lines.Added() < lWanted) {
            lTaken += Allocations([] { QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents); });
        }
        return lTaken;
    };
    tReceive(Settling);
    QCOMPARE(tReceive(Counted), 0);
}

void AllocationsWindowTest::whatTheViewsTakeDoesNotGrowWithTheSentences() {
    Traffic t([](TestWindow& tWindow) { tWindow.StartBoth(); });
    t.pWindow->SSTab.SetTab(ui::TabTargets);
    t.Feed(t.Receptions(Settling, 512));
    t.pWindow->Synchronize();
    const auto tTaken = [&t](int iLines) {
        t.Feed(t.Receptions(iLines, 512));
        return Allocations([&t] { t.pWindow->Synchronize(); });
    };
    const std::int64_t lFew = tTaken(1000);  // all rows and all lines in the logs are new
    QVERIFY(lFew > 0);
    QVERIFY2(tTaken(10000) < lFew * 3 / 2, "ten times as many");
}

QTEST_MAIN(AllocationsWindowTest)
#include "AllocationsWindowTest.moc"
