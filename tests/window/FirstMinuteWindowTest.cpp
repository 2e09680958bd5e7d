// The first minute with the window: what the empty views say before and after Start, how to type a position, and the
// columns of the chosen detail before anything has run.
#include <QEnterEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QTest>

#include "tests/support/AisEncoder.h"
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

struct Fresh {
    World tWorld;
    TestWindow t{tWorld};
    Fresh() {
        t.LoadAndShow();
        t.Synchronize();
    }
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
    Fresh f;
    for (const EmptyView& tView : EmptyViews(f.t)) {
        f.t.SSTab.SetTab(tView.eTab);
        QVERIFY2(Says(tView.sHint, "press Start") || Says(tView.sHint, "Press Start"), qPrintable(tView.sHint));
        QVERIFY2(IsWrittenInTheMiddle(*tView.pView->viewport()), qPrintable(tView.sHint));
    }
    QCOMPARE(f.t.lstCommData(0).EmptyHint(), QStringLiteral("Choose the port above and press Start"));
    QCOMPARE(f.t.lstCommData(1).EmptyHint(), QStringLiteral("Choose the port above and press Start"));
    QVERIFY(Says(f.t.grdTargetData.EmptyHint(), "No reports yet"));
}

void FirstMinuteWindowTest::runningItWaitsForTheFirstLine() {
    Fresh f;
    f.t.StartBoth();
    f.t.Synchronize();
    for (const EmptyView& tView : EmptyViews(f.t)) {
        f.t.SSTab.SetTab(tView.eTab);
        QVERIFY2(!tView.sHint.contains(QLatin1String("Start")), qPrintable(tView.sHint));
        QVERIFY2(IsWrittenInTheMiddle(*tView.pView->viewport()), qPrintable(tView.sHint));
    }
    QVERIFY(Says(f.t.lstCommData(0).EmptyHint(), "No line has come yet"));
    QVERIFY(Says(f.t.grdTargetData.EmptyHint(), "No reports yet"));
}

void FirstMinuteWindowTest::stoppedAgainItSaysHowToStart() {
    Fresh f;
    f.t.StartBoth();
    f.t.Press(ui::KeyStop);
    f.t.Synchronize();
    QCOMPARE(f.t.lstCommData(0).EmptyHint(), QStringLiteral("Choose the port above and press Start"));
}

void FirstMinuteWindowTest::aFailedStartSaysHowToStart() {
    Fresh f;
    f.tWorld.sBadPorts[6] = "no such device";
    f.t.Press(ui::KeyStart);
    QCOMPARE(Panel(f.t, 1), QByteArray("Stopped"));
    QCOMPARE(f.t.lstCommData(0).EmptyHint(), QStringLiteral("Choose the port above and press Start"));
}

void FirstMinuteWindowTest::whatIsHeardTakesItsPlace() {
    Fresh f;
    f.t.StartBoth();
    f.t.FeedLine(0, AisSentence(AisOther(11, 20)));
    f.t.FeedLine(0, "$PNMLS,21,9");
    f.t.FeedLine(0, "$GPGLL,4916.45,N,12311.12,W,225444,A");
    f.t.Synchronize();
    for (const EmptyView& tView : EmptyViews(f.t)) {
        if (tView.eTab == ui::TabOutput) continue;  // off
        f.t.SSTab.SetTab(tView.eTab);
        QCOMPARE(tView.sHint, QString());
        QVERIFY(!IsWrittenInTheMiddle(*tView.pView->viewport()));
    }
}

void FirstMinuteWindowTest::anOutputThatIsOffSaysSo() {
    Fresh f;
    f.t.StartBoth();
    QVERIFY(Says(f.t.lstOutputData.EmptyHint(), "The output is off"));
    f.t.Press(ui::KeyStop);
    f.t.chkOutputEnabled.setChecked(true);
    f.t.txtOutputPort.SetText("3");
    f.t.Press(ui::KeyStart);
    QCOMPARE(f.t.lstOutputData.EmptyHint(), QStringLiteral("No line sent yet"));
}

void FirstMinuteWindowTest::playbackIsARun() {
    Fresh f;
    const QString sFile = f.tWorld.Path(QStringLiteral("played.txt"));
    f.tWorld.WriteFile(sFile, "05/15/2011 11:00:00 $GPGLL,4916.45,N,12311.12,W,225444,A\r\n");
    f.tWorld.tFileAnswers = {sFile};
    f.t.Press(ui::KeyPlayback);
    QVERIFY(!f.t.grdTargetData.EmptyHint().contains(QLatin1String("Start")));
    QVERIFY(Says(f.t.grdTargetData.EmptyHint(), "No reports yet"));
}

void FirstMinuteWindowTest::trackedRowsThatAreGoneAreExplained() {
    Fresh f;
    f.t.StartBoth();
    f.t.FeedLine(0, AisSentence(AisOther(11, 20)));
    f.t.SSTab.SetTab(ui::TabTargets);
    f.t.cmbTargetTarget.SetText("30");
    f.t.chkTargetTrack.setChecked(true);
    f.t.Synchronize();
    QVERIFY(Says(f.t.grdTargetData.EmptyHint(), "Untick Track"));
    QVERIFY(IsWrittenInTheMiddle(*f.t.grdTargetData.viewport()));
    f.t.chkTargetTrack.setChecked(false);
    f.t.Synchronize();
    QCOMPARE(f.t.grdTargetData.EmptyHint(), QString());
}

void FirstMinuteWindowTest::positionsSayHowToTypeThem() {
    Fresh f;
    f.t.SSTab.SetTab(ui::TabGps);
    const auto Point = [&f](QWidget& txt) {
        QEnterEvent tEnter(QPointF(3, 3), txt.mapTo(&f.t, QPointF(3, 3)), txt.mapToGlobal(QPointF(3, 3)));
        QCoreApplication::sendEvent(&txt, &tEnter);
        return f.t.StatusBar.Tip().text();
    };
    QVERIFY(Says(Point(f.t.txtGpsLat), "N or S at the end"));
    QVERIFY(f.t.StatusBar.Tip().isVisible());
    QVERIFY(Says(Point(f.t.txtGpsLon), "E or W at the end"));
    QCOMPARE(f.t.txtGpsLat.toolTip(), QStringLiteral("Latitude"));
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
    Fresh f;
    const QString sAll = Views(f.t).join(QLatin1Char('\n'));
    for (const EmptyView& tView : EmptyViews(f.t)) {
        for (const QString& sLine : tView.sHint.split(QLatin1Char('\n'))) QVERIFY(!sAll.contains(sLine));
    }
}

QTEST_MAIN(FirstMinuteWindowTest)
#include "FirstMinuteWindowTest.moc"
