// The first minute with the window: what the empty views say before and after Start, how to type a position, and the
// columns of the chosen detail before anything has run.
#include <QEnterEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QTest>

#include "tests/window/Bench.h"
#include "tests/window/Shown.h"
#include "tests/window/Views.h"

using namespace support;

namespace {

// Whether something stands in the middle of a view that has drawn nothing there but its ground.
bool IsWrittenInTheMiddle(QWidget& tViewport) {
    const QRect tMiddle(tViewport.rect().center() - QPoint(100, 20), QSize(200, 40));
    const QImage tImage = tViewport.grab(tMiddle & tViewport.rect()).toImage();
    for (int y = 0; y < tImage.height(); ++y) {
        for (int x = 0; x < tImage.width(); ++x) {
            if (tImage.pixel(x, y) != tImage.pixel(0, 0)) return true;
        }
    }
    return false;
}

struct EmptyView {
    ui::Tab eTab;
    QAbstractItemView* pView;
    QString sHint;
};

// Every view that can be empty.
std::vector<EmptyView> EmptyViews(TestWindow& t) {
    return {{ui::TabInput, &t.lstCommData(0), t.lstCommData(0).EmptyHint()},
            {ui::TabReceiver, &t.lstRxData, t.lstRxData.EmptyHint()},
            {ui::TabAis, &t.lstAisData, t.lstAisData.EmptyHint()},
            {ui::TabGps, &t.lstGpsData, t.lstGpsData.EmptyHint()},
            {ui::TabTargets, &t.grdTargetData, t.grdTargetData.EmptyHint()},
            {ui::TabMessages, &t.grdMessageData, t.grdMessageData.EmptyHint()},
            {ui::TabOutput, &t.lstOutputData, t.lstOutputData.EmptyHint()}};
}

bool Says(const QString& sHint, const char* sPart) { return sHint.contains(QLatin1String(sPart)); }

struct Fresh : ShownWindow {
    Fresh() { Synchronize(); }
};

}  // namespace

class FirstMinuteWindowTest : public QObject {
    Q_OBJECT
private slots:
    void everyEmptyViewSaysWhatToDo();
    void runningItWaitsForTheFirstLine();
    void stoppedAgainItSaysHowToStart();
    void aFailedStartSaysHowToStart();
    void whatIsHeardTakesItsPlace();
    void anOutputThatIsOffSaysSo();
    void playbackIsARun();
    void trackedRowsThatAreGoneAreExplained();
    void positionsSayHowToTypeThem();
    void columnsOfTheChosenDetailStandBeforeStart_data();
    void columnsOfTheChosenDetailStandBeforeStart();
    void hintsAreNowhereElse();
};

void FirstMinuteWindowTest::everyEmptyViewSaysWhatToDo() {
    Fresh t;
    for (const EmptyView& tView : EmptyViews(t)) {
        t.SSTab.SetTab(tView.eTab);
        QVERIFY2(Says(tView.sHint, "press Start") || Says(tView.sHint, "Press Start"), qPrintable(tView.sHint));
        QVERIFY2(IsWrittenInTheMiddle(*tView.pView->viewport()), qPrintable(tView.sHint));
    }
    QCOMPARE(t.lstCommData(0).EmptyHint(), QStringLiteral("Choose the port above and press Start"));
    QCOMPARE(t.lstCommData(1).EmptyHint(), QStringLiteral("Choose the port above and press Start"));
    QVERIFY(Says(t.grdTargetData.EmptyHint(), "No reports yet"));
}

void FirstMinuteWindowTest::runningItWaitsForTheFirstLine() {
    Fresh t;
    t.StartBoth();
    t.Synchronize();
    for (const EmptyView& tView : EmptyViews(t)) {
        t.SSTab.SetTab(tView.eTab);
        QVERIFY2(!tView.sHint.contains(QLatin1String("Start")), qPrintable(tView.sHint));
        QVERIFY2(IsWrittenInTheMiddle(*tView.pView->viewport()), qPrintable(tView.sHint));
    }
    QVERIFY(Says(t.lstCommData(0).EmptyHint(), "No line has come yet"));
    QVERIFY(Says(t.grdTargetData.EmptyHint(), "No reports yet"));
}

void FirstMinuteWindowTest::stoppedAgainItSaysHowToStart() {
    Fresh t;
    t.StartBoth();
    t.Press(ui::KeyStop);
    t.Synchronize();
    QCOMPARE(t.lstCommData(0).EmptyHint(), QStringLiteral("Choose the port above and press Start"));
}

void FirstMinuteWindowTest::aFailedStartSaysHowToStart() {
    Fresh t;
    t.tWorld.sBadPorts[6] = "no such device";
    t.Press(ui::KeyStart);
    QCOMPARE(Panel(t, 1), QByteArray("Stopped"));
    QCOMPARE(t.lstCommData(0).EmptyHint(), QStringLiteral("Choose the port above and press Start"));
}

void FirstMinuteWindowTest::whatIsHeardTakesItsPlace() {
    Fresh t;
    t.StartBoth();
    t.FeedLine(0, AisSentence(AisOther(11, 20)));
    t.FeedLine(0, "$PNMLS,21,9");
    t.FeedLine(0, "$GPGLL,4916.45,N,12311.12,W,225444,A");
    t.Synchronize();
    for (const EmptyView& tView : EmptyViews(t)) {
        if (tView.eTab == ui::TabOutput) continue;  // off
        t.SSTab.SetTab(tView.eTab);
        QCOMPARE(tView.sHint, QString());
        QVERIFY(!IsWrittenInTheMiddle(*tView.pView->viewport()));
    }
}

void FirstMinuteWindowTest::anOutputThatIsOffSaysSo() {
    Fresh t;
    t.StartBoth();
    QVERIFY(Says(t.lstOutputData.EmptyHint(), "The output is off"));
    t.Press(ui::KeyStop);
    t.chkOutputEnabled.setChecked(true);
    t.txtOutputPort.SetText("3");
    t.Press(ui::KeyStart);
    QCOMPARE(t.lstOutputData.EmptyHint(), QStringLiteral("No line sent yet"));
}

void FirstMinuteWindowTest::playbackIsARun() {
    Fresh t;
    const QString sFile = t.tWorld.Path(QStringLiteral("played.txt"));
    t.tWorld.WriteFile(sFile, "05/15/2011 11:00:00 $GPGLL,4916.45,N,12311.12,W,225444,A\r\n");
    t.PressWithFile(ui::KeyPlayback, sFile);
    QVERIFY(!t.grdTargetData.EmptyHint().contains(QLatin1String("Start")));
    QVERIFY(Says(t.grdTargetData.EmptyHint(), "No reports yet"));
}

void FirstMinuteWindowTest::trackedRowsThatAreGoneAreExplained() {
    Fresh t;
    t.StartBoth();
    t.FeedLine(0, AisSentence(AisOther(11, 20)));
    t.SSTab.SetTab(ui::TabTargets);
    t.cmbTargetTarget.SetText("30");
    t.chkTargetTrack.setChecked(true);
    t.Synchronize();
    QVERIFY(Says(t.grdTargetData.EmptyHint(), "Untick Track"));
    QVERIFY(IsWrittenInTheMiddle(*t.grdTargetData.viewport()));
    t.chkTargetTrack.setChecked(false);
    t.Synchronize();
    QCOMPARE(t.grdTargetData.EmptyHint(), QString());
}

void FirstMinuteWindowTest::positionsSayHowToTypeThem() {
    Fresh t;
    t.SSTab.SetTab(ui::TabGps);
    const auto Point = [&t](QWidget& txt) {
        QEnterEvent tEnter(QPointF(3, 3), txt.mapTo(&t, QPointF(3, 3)), txt.mapToGlobal(QPointF(3, 3)));
        QCoreApplication::sendEvent(&txt, &tEnter);
        return t.StatusBar.Tip().text();
    };
    QVERIFY(Says(Point(t.txtGpsLat), "N or S at the end"));
    QVERIFY(t.StatusBar.Tip().isVisible());
    QVERIFY(Says(Point(t.txtGpsLon), "E or W at the end"));
    QCOMPARE(t.txtGpsLat.toolTip(), QStringLiteral("Latitude"));
}

void FirstMinuteWindowTest::columnsOfTheChosenDetailStandBeforeStart_data() {
    QTest::addColumn<QByteArray>("sDetail");
    QTest::addColumn<int>("iGroups");  // a bit each: position, motion, missing
    QTest::newRow("None") << QByteArray("None") << 0;
    QTest::newRow("Lat/Lon") << QByteArray("Lat/Lon") << 1;
    QTest::newRow("Speed") << QByteArray("Speed") << 2;
    QTest::newRow("Missing") << QByteArray("Missing") << 6;
    QTest::newRow("All") << QByteArray("All") << 7;
}

void FirstMinuteWindowTest::columnsOfTheChosenDetailStandBeforeStart() {
    QFETCH(QByteArray, sDetail);
    QFETCH(int, iGroups);
    World tWorld;
    tWorld.WriteFile(tWorld.ProfileFile(), "[Target Data]\r\nDetail=" + sDetail.toStdString() + "\r\n");
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.SSTab.SetTab(ui::TabTargets);
    t.Synchronize();
    for (int iCol = 0; iCol < 17; ++iCol) {
        const int iGroup = iCol < 10 ? -1 : iCol < 12 ? 0 : iCol < 14 ? 1 : 2;
        const bool bShown = iCol > 0 && (iGroup < 0 || (iGroups >> iGroup & 1) != 0);
        QCOMPARE(!t.grdTargetData.isColumnHidden(iCol), bShown);
        QCOMPARE(t.grdTargetData.horizontalHeader()->sectionSize(iCol) > 0, bShown);
    }
    QVERIFY(!t.m_bTargetGridLaidOut);
}

void FirstMinuteWindowTest::hintsAreNowhereElse() {
    Fresh t;
    const QString sAll = Views(t).join(QLatin1Char('\n'));
    for (const EmptyView& tView : EmptyViews(t)) {
        for (const QString& sLine : tView.sHint.split(QLatin1Char('\n'))) QVERIFY(!sAll.contains(sLine));
    }
}

QTEST_MAIN(FirstMinuteWindowTest)
#include "FirstMinuteWindowTest.moc"
