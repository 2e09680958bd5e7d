// The window as a whole: its tabs, buttons and panels, and what holds for every part of it (bounded logs, error lines,
// no dialogs, redraw on again).
#include <QAction>
#include <QLabel>
#include <QTest>
#include <QToolButton>
#include <array>

#include "tests/support/Bytes.h"
#include "tests/support/PrintString.h"
#include "tests/window/Bench.h"

using support::AnyReport;
using support::Bytes;
using support::ShownWindow;
using support::TestWindow;
using support::World;

namespace {

QString Plain(QString sCaption) { return sCaption.remove(QLatin1Char('&')); }

// The log lists, each with a way to write line number i into it.
struct Writer {
    const char* sName;
    toolkit::LogList& lst;
    std::function<void(int)> tWrite;
};

std::vector<Writer> Writers(TestWindow& t) {
    const auto tLine = [](int i) { return "line " + std::to_string(i); };
    return {{"input 1", t.lstCommData(0), [&t, tLine](int i) { t.CommData(0, tLine(i), false); }},
            {"input 2", t.lstCommData(1), [&t, tLine](int i) { t.CommData(1, tLine(i), false); }},
            {"receiver", t.lstRxData, [&t, tLine](int i) { t.LogRx(tLine(i)); }},
            {"AIS", t.lstAisData, [&t, tLine](int i) { t.LogAis(tLine(i)); }},
            {"GPS", t.lstGpsData, [&t, tLine](int i) { t.LogGps(tLine(i)); }},
            {"output", t.lstOutputData, [&t, tLine](int i) { t.OutputData(tLine(i), false); }}};
}

}  // namespace

class FrameWindowTest : public QObject {
    Q_OBJECT

private slots:
    void elevenTabsStandInTheirOrder();
    void fiveButtonsStandInTheToolbar();
    void fivePanelsStandInTheStatusBar();
    void inputPortsAreShownAsOneAndTwo();
    void everyLogKeepsAHundredAndOneLines();
    void newestLineIsTheCurrentOne();
    void timesAreTwentyFourHour_data();
    void timesAreTwentyFourHour();
    void onlyTheBoxesWriteTheOwnPosition();
    void decodeErrorsNameTheFieldAndTheSentence_data();
    void decodeErrorsNameTheFieldAndTheSentence();
    void failedSentenceChangesNothingElse();
    void runErrorStaysUntilThePanelIsWrittenAgain();
    void unavailableAndMissingValuesDiffer();
    void failuresShowNoDialog();
    void redrawIsOnAgainAfterEveryOperation();
};

void FrameWindowTest::elevenTabsStandInTheirOrder() {
    ShownWindow t;
    QStringList sCaptions;
    for (int i = 0; i < t.SSTab.Count(); ++i) sCaptions << Plain(t.SSTab.Bar().tabText(i));
    QCOMPARE(sCaptions.join(QLatin1Char('|')),
             QStringLiteral("Input|Receiver|AIS|GPS|Targets|Messages|Diagram|About|Spec|Timing|Output"));
    QCOMPARE(t.SSTab.Tab(), 0);
    for (int i = 0; i < t.SSTab.Count(); ++i) {
        t.SSTab.SetTab(i);
        for (int j = 0; j < t.SSTab.Count(); ++j) QCOMPARE(t.Page(j).isVisible(), i == j);
    }
}

void FrameWindowTest::fiveButtonsStandInTheToolbar() {
    ShownWindow t;
    QStringList sCaptions;
    for (QAction* pAction : t.Toolbar.actions()) {
        const bool bButton = qobject_cast<QToolButton*>(t.Toolbar.widgetForAction(pAction)) != nullptr;
        if (bButton) sCaptions << Plain(pAction->text());
    }
    QCOMPARE(sCaptions.join(QLatin1Char('|')), QStringLiteral("Start|Stop|Record|Playback|Playback Burst"));
}

void FrameWindowTest::fivePanelsStandInTheStatusBar() {
    ShownWindow t;
    int iLeft = -1;
    for (int i = 1; i <= 5; ++i) {
        QVERIFY(t.StatusBar.Panel(i).isVisible());
        QVERIFY(t.StatusBar.Panel(i).x() > iLeft);
        iLeft = t.StatusBar.Panel(i).x();
    }
    t.StartBoth();
    t.FeedLine(0, AnyReport);
    t.Advance(7);
    QCOMPARE(t.Panel(1), std::string("Running"));
    QCOMPARE(t.Panel(2), std::string("1 Targets, 1 Messages"));
    QCOMPARE(t.Panel(3), std::string("00:06"));
    QCOMPARE(t.Panel(4), std::string("00:07"));
    QCOMPARE(t.Panel(5), std::string("12:00:07"));
}

void FrameWindowTest::inputPortsAreShownAsOneAndTwo() {
    ShownWindow t;
    QVERIFY(Plain(t.chkCommEnabled(0).text()).contains(QLatin1String("#1")));
    QVERIFY(Plain(t.chkCommEnabled(1).text()).contains(QLatin1String("#2")));
    QCOMPARE(t.lstCommData(0).toolTip(), QStringLiteral("#1, NEMA 0183 Data, Highlighted indicates Decoded Data"));
    QCOMPARE(t.lstCommData(1).toolTip(), QStringLiteral("#2, NEMA 0183 Data, Highlighted indicates Decoded Data"));
}

void FrameWindowTest::everyLogKeepsAHundredAndOneLines() {
    ShownWindow t;
    for (const Writer& tWriter : Writers(t)) {
        for (int i = 1; i <= 101; ++i) tWriter.tWrite(i);
        QVERIFY2(t.Lines(tWriter.lst).size() == 101, tWriter.sName);
        QCOMPARE(t.Lines(tWriter.lst).front(), std::string("line 1"));
        tWriter.tWrite(102);
        QVERIFY2(t.Lines(tWriter.lst).size() == 101, tWriter.sName);
        QCOMPARE(t.Lines(tWriter.lst).front(), std::string("line 2"));
        QCOMPARE(t.Lines(tWriter.lst).back(), std::string("line 102"));
    }
}

void FrameWindowTest::newestLineIsTheCurrentOne() {
    ShownWindow t;
    t.chkCommEnabled(1).setChecked(true);
    constexpr std::array iTabs{ui::TabInput, ui::TabInput, ui::TabReceiver, ui::TabAis, ui::TabGps, ui::TabOutput};
    std::size_t iWriter = 0;
    for (const Writer& tWriter : Writers(t)) {
        t.SSTab.SetTab(iTabs[iWriter++]);
        t.FormLayout();
        for (int i = 1; i <= 150; ++i) {
            tWriter.tWrite(i);
            if (i % 50 != 0) continue;
            t.Synchronize();
            const int iLast = tWriter.lst.model()->rowCount() - 1;
            QVERIFY2(tWriter.lst.currentIndex().row() == iLast, tWriter.sName);
            const QRect tLine = tWriter.lst.visualRect(tWriter.lst.model()->index(iLast, 0));
            QVERIFY2(tWriter.lst.viewport()->rect().contains(tLine.center().x(), tLine.bottom()) ||
                         tWriter.lst.viewport()->rect().contains(1, tLine.center().y()),
                     tWriter.sName);
        }
    }
}

void FrameWindowTest::timesAreTwentyFourHour_data() {
    QTest::addColumn<QByteArray>("clock");
    QTest::addColumn<QByteArray>("shown");
    QTest::newRow("midnight") << QByteArray("2011-05-15T00:00:00") << QByteArray("00:00:00");
    QTest::newRow("morning") << QByteArray("2011-05-15T09:05:03") << QByteArray("09:05:03");
    QTest::newRow("afternoon") << QByteArray("2011-05-15T13:07:09") << QByteArray("13:07:09");
    QTest::newRow("last second") << QByteArray("2011-05-15T23:59:59") << QByteArray("23:59:59");
}

void FrameWindowTest::timesAreTwentyFourHour() {
    QFETCH(QByteArray, clock);
    QFETCH(QByteArray, shown);
    ShownWindow t;
    t.StartBoth();
    t.tWorld.SetClock(support::View(clock));
    t.FeedLine(0, AnyReport);
    t.tmrTime_Timer();
    const std::string sTime = shown.toStdString();
    QCOMPARE(t.Panel(5), sTime);
    QCOMPARE(t.Cell(t.grdTargetData, 1, 6), sTime);
    QVERIFY(t.Lines(t.lstAisData).front().starts_with("Time=" + sTime + ", Ch=A"));
}

void FrameWindowTest::onlyTheBoxesWriteTheOwnPosition() {
    ShownWindow t;
    QCOMPARE(t.m_dLatitude, -999.0);
    t.StartBoth();
    t.FeedLine(0, "$GPGLL,4916.45,S,12311.12,E,225444,A");
    t.Synchronize();
    QCOMPARE(t.txtGpsLat.Text(), std::string("49\xB0"
                                             "16.45'S"));
    QVERIFY(std::abs(t.m_dLatitude + (49 + 16.45 / 60)) < 1e-9);
    QVERIFY(std::abs(t.m_dLongitude - (123 + 11.12 / 60)) < 1e-9);
    t.txtGpsLat.SetText("12 00.00 N");
    QCOMPARE(t.m_dLatitude, 12.0);
}

void FrameWindowTest::decodeErrorsNameTheFieldAndTheSentence_data() {
    QTest::addColumn<QByteArray>("sentence");
    QTest::addColumn<int>("tab");
    QTest::addColumn<QByteArray>("field");
    QTest::newRow("GPS") << QByteArray("$GPGLL,,N,12311.12,W,225444,A") << int{ui::TabGps} << QByteArray("Latitude");
    QTest::newRow("AIS") << QByteArray("!AIVDM,1,1") << int{ui::TabAis} << QByteArray("Sentence");
    QTest::newRow("receiver") << QByteArray("$PNMLS,,19,3") << int{ui::TabReceiver} << QByteArray("Signal");
}

void FrameWindowTest::decodeErrorsNameTheFieldAndTheSentence() {
    QFETCH(QByteArray, sentence);
    QFETCH(int, tab);
    QFETCH(QByteArray, field);
    ShownWindow t;
    t.StartBoth();
    t.FeedLine(0, support::View(sentence));
    toolkit::LogList& lst = tab == ui::TabGps ? t.lstGpsData : tab == ui::TabAis ? t.lstAisData : t.lstRxData;
    QCOMPARE(Bytes(t.LastLine(lst)), "Error - " + field + ", " + sentence);
    QCOMPARE(t.Lines(lst).size(), std::size_t{1});
}

void FrameWindowTest::failedSentenceChangesNothingElse() {
    ShownWindow t;
    t.StartBoth();
    t.FeedLine(0, AnyReport);
    t.FeedLine(0, "!AIVDM,1,1,,");
    t.FeedLine(0, "$GPGLL,4916.45,X,12311.12,W,225444,A");
    t.FeedLine(0, "$PNMLS,29,,3");
    QCOMPARE(t.Panel(2), std::string("1 Targets, 1 Messages"));
    QCOMPARE(t.grdTargetData.Cells.Rows(), 2);
    QCOMPARE(t.Cell(t.grdTargetData, 1, 3), std::string());
    QCOMPARE(t.m_dLatitude, -999.0);
    QCOMPARE(t.Cell(t.grdMessageData, 34, 1), std::string("1"));
}

void FrameWindowTest::runErrorStaysUntilThePanelIsWrittenAgain() {
    ShownWindow t;
    t.StartBoth();
    t.FeedLine(0, "$X");
    QCOMPARE(t.Panel(2), std::string("Size Error"));
    t.Advance(30);
    t.FeedLine(0, "$GPGSV,1,1,00");
    QCOMPARE(t.Panel(2), std::string("Size Error"));
    t.FeedLine(0, AnyReport);
    QCOMPARE(t.Panel(2), std::string("1 Targets, 1 Messages"));
}

void FrameWindowTest::unavailableAndMissingValuesDiffer() {
    decoders::VdmValues lValues{};
    lValues[1] = 5;  // a type without speed, course or heading
    QCOMPARE(TestWindow::VdmSpeed(lValues), std::string("Err"));
    QCOMPARE(TestWindow::VdmCourse(lValues), std::string("Err"));
    QCOMPARE(TestWindow::VdmHeading(lValues), std::string("Err"));

    ShownWindow t;
    t.StartBoth();
    support::AisReport tReport;  // nothing available
    tReport.lMmsi = 211000001;
    t.FeedLine(0, support::AisSentence(support::AisClassA(1, tReport)));
    QCOMPARE(t.Cell(t.grdTargetData, 1, 10), std::string("n/a"));
    QCOMPARE(t.Cell(t.grdTargetData, 1, 11), std::string("n/a"));
    QCOMPARE(t.Cell(t.grdTargetData, 1, 13), std::string("n/a"));
}

void FrameWindowTest::failuresShowNoDialog() {
    World tWorld;
    tWorld.sBadPorts[2] = "no such device";
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.StartBoth();  // port 2 fails
    tWorld.sBadPorts.clear();
    t.StartBoth();
    t.FeedLine(0, "$X");
    t.FeedLine(0, "$GPGLL,4916.45,N,12311.12,W,225444,A*00");
    t.FeedLine(0, "!AIVDM,1,x,,A,,0");
    t.FeedLine(0, "$PNMLS,,,");
    t.MSComm(0).RaiseEvent(1004);
    t.Device(t.MSComm(1))->Vanish();
    t.txtGpsLat.SetText("nonsense");
    t.txtTimingRateTx.SetText("none");
    t.TimingPlan();
    tWorld.tFileAnswers = {tWorld.Path(QStringLiteral("no/such/folder/record.txt"))};
    t.Press("Record");
    t.Press("Stop");
    tWorld.tFileAnswers = {tWorld.Path(QStringLiteral("missing.txt"))};
    t.Press("Playback");
    QVERIFY(tWorld.sMessages.isEmpty());
    QCOMPARE(tWorld.iUnanswered, 0);
}

void FrameWindowTest::redrawIsOnAgainAfterEveryOperation() {
    ShownWindow t;
    const auto tAllOn = [&t] {
        return t.grdTargetData.Redraw() && t.grdMessageData.Redraw() && t.grdSpecData.Redraw();
    };
    QVERIFY(tAllOn());
    t.StartBoth();
    QVERIFY(tAllOn());
    t.FeedLine(0, AnyReport);
    QVERIFY(tAllOn());
    t.FeedLine(0, "$PNMLS,29,19,3*50");
    QVERIFY(tAllOn());
    t.chkTargetTrack.setChecked(true);
    QVERIFY(tAllOn());
    t.SSTab.SetTab(ui::TabTargets);
    for (int i = 0; i < 3; ++i) {
        t.cmbTargetSort.setFocus();
        t.cmbTargetSort.SetListIndex(i);
        QVERIFY(tAllOn());
    }
    for (int i = 0; i < 5; ++i) {
        t.cmbTargetDetail.setFocus();
        t.cmbTargetDetail.SetListIndex(i);
        QVERIFY(tAllOn());
    }
    t.Press("Stop");
    QVERIFY(tAllOn());
}

QTEST_MAIN(FrameWindowTest)
#include "FrameWindowTest.moc"
