// What the window shows once it is loaded: first texts, captions and tips, set-up tables, everything stopped; and what
// loading does not do.
#include <QTest>

#include "app/ProfilePath.h"
#include "tests/support/Bytes.h"
#include "tests/support/PrintString.h"
#include "tests/window/Bench.h"

using support::Bytes;
using support::ShownWindow;
using support::TestWindow;
using support::World;

class StartWindowTest : public QObject {
    Q_OBJECT

private slots:
    void profileStandsBesideTheProgram_data();
    void profileStandsBesideTheProgram();
    void profileMovesToTheUsersFolderWhenTheProgramsCannotBeWritten();
    void profileIsNeverKeptAmongTheSystemsPrograms();
    void ownPositionIsUnknown();
    void chosenSortIsLeftAlone();
    void timingPlanIsMadeOnce();
    void everythingIsStopped();
    void wallClockRunsAndMessageClockDoesNot();
    void profileIsReadBeforeAnythingElse();
    void profileLoadTouchesNeitherLayoutNorColumns();
    void missingProfileLooksLikeAnEmptyOne();
};

void StartWindowTest::profileStandsBesideTheProgram_data() {
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("profile");
    QTest::newRow("no extension") << QStringLiteral("tidewatch") << QStringLiteral("tidewatch.Ini");
    QTest::newRow("extension") << QStringLiteral("Tidewatch.exe") << QStringLiteral("Tidewatch.Ini");
    QTest::newRow("two points") << QStringLiteral("tide.watch.bin") << QStringLiteral("tide.watch.Ini");
}

void StartWindowTest::profileStandsBesideTheProgram() {
    QFETCH(QString, program);
    QFETCH(QString, profile);
    const World tWorld;
    QCOMPARE(app::ProfilePath(tWorld.Path(program)).sFile, tWorld.Path(profile));
}

void StartWindowTest::profileMovesToTheUsersFolderWhenTheProgramsCannotBeWritten() {
    const World tWorld;
    qputenv("XDG_CONFIG_HOME", tWorld.Path(QStringLiteral("config")).toUtf8());
    const QString sPath = app::ProfilePath(tWorld.Path(QStringLiteral("no-such-folder/tidewatch"))).sFile;
    qunsetenv("XDG_CONFIG_HOME");
    QCOMPARE(sPath, tWorld.Path(QStringLiteral("config/tidewatch/tidewatch.Ini")));
    tWorld.WriteFile(sPath, "");  // the folder has been made
    QVERIFY(QFile::exists(sPath));
}

void StartWindowTest::profileIsNeverKeptAmongTheSystemsPrograms() {
    // Of a program that is there, and where root runs this one that may be written to as well.
    const World tWorld;
    qputenv("XDG_CONFIG_HOME", tWorld.Path(QStringLiteral("config")).toUtf8());
    const QString sPath = app::ProfilePath(QStringLiteral("/usr/bin/env")).sFile;
    qunsetenv("XDG_CONFIG_HOME");
    QCOMPARE(sPath, tWorld.Path(QStringLiteral("config/tidewatch/env.Ini")));
}

void StartWindowTest::ownPositionIsUnknown() {
    ShownWindow t;
    t.Synchronize();
    QCOMPARE(t.m_dLatitude, -999.0);
    QCOMPARE(t.m_dLongitude, -999.0);
}

void StartWindowTest::chosenSortIsLeftAlone() {
    World tWorld;
    TestWindow t(tWorld);
    QCOMPARE(t.cmbTargetSort.currentIndex(), -1);
    t.cmbTargetSort.SetListIndex(2);
    t.LoadAndShow();
    QCOMPARE(t.cmbTargetSort.currentIndex(), 2);
}

void StartWindowTest::timingPlanIsMadeOnce() {
    World tWorld;
    TestWindow t(tWorld);
    QCOMPARE(t.TimingRuns(), 0);
    QCOMPARE(t.lblTimingChA.Percentage.text(), QStringLiteral("100%"));
    t.Load();
    QCOMPARE(t.TimingRuns(), 1);
    QCOMPARE(t.lblTimingChA.Percentage.text(), QStringLiteral("50%"));
}

void StartWindowTest::everythingIsStopped() {
    ShownWindow t;
    QCOMPARE(t.Panel(1), std::string("Stopped"));
    QVERIFY(!t.MSComm(0).PortOpen());
    QVERIFY(!t.MSComm(1).PortOpen());
    QVERIFY(!t.MSCommOutput.PortOpen());
    QVERIFY(t.Toolbar.Action(QStringLiteral("Start")).isEnabled());
    QVERIFY(t.Toolbar.Action(QStringLiteral("Stop")).isChecked());
    QVERIFY(t.txtCommPort(0).isEnabled());
    QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch"));
    QVERIFY(t.tWorld.sMessages.isEmpty());
    QCOMPARE(t.tWorld.tDialogs.size(), std::size_t{0});
}

void StartWindowTest::wallClockRunsAndMessageClockDoesNot() {
    ShownWindow t;
    QVERIFY(t.tmrTime.isActive());
    QCOMPARE(t.tmrTime.interval(), 1000);
    QCOMPARE(t.tmrTime.timerType(), Qt::PreciseTimer);
    QCOMPARE(t.tmrComm.timerType(), Qt::PreciseTimer);
    QVERIFY(!t.tmrComm.isActive());
    QCOMPARE(t.tmrComm.interval(), 1000);
}

void StartWindowTest::profileIsReadBeforeAnythingElse() {
    World tWorld;
    tWorld.WriteFile(tWorld.ProfileFile(), "[Nmea Data]\r\nComm Port #0=17\r\n");
    TestWindow t(tWorld);
    QString sDescription = QStringLiteral("not asked");
    int iSpecRows = -1;
    int iPlans = -1;
    connect(&t.txtCommPort(0), &QLineEdit::textChanged, this, [&] {
        sDescription = t.lblAboutDescription.text();
        iSpecRows = t.grdSpecData.Cells.Rows();
        iPlans = t.TimingRuns();
    });
    t.Load();
    QCOMPARE(sDescription, QString());
    QCOMPARE(iSpecRows, 0);
    QCOMPARE(iPlans, 0);
    QCOMPARE(t.txtCommPort(0).text(), QStringLiteral("17"));
}

// The handlers of the enable boxes and of the detail mode act for the user only.
void StartWindowTest::profileLoadTouchesNeitherLayoutNorColumns() {
    ShownWindow t;
    const QRect tFirst = t.lstCommData(0).geometry();
    const auto tColumns = t.grdTargetData.Columns();
    t.m_tProfile.sText = QStringLiteral("[Nmea Data]\nEnabled #1=1\n[Target Data]\nDetail=All\n");
    t.SSTab.setFocus();
    t.ProfileLoad();
    QVERIFY(t.chkCommEnabled(1).isChecked());
    QCOMPARE(t.cmbTargetDetail.currentText(), QStringLiteral("All"));
    QCOMPARE(t.lstCommData(0).geometry(), tFirst);
    QVERIFY(!t.lstCommData(1).isVisible());
    for (std::size_t i = 0; i < tColumns.size(); ++i) QCOMPARE(t.grdTargetData.Columns()[i].bShown, tColumns[i].bShown);
}

void StartWindowTest::missingProfileLooksLikeAnEmptyOne() {
    World tWithout;
    World tWith;
    tWith.WriteFile(tWith.ProfileFile(), "");
    TestWindow t1(tWithout);
    TestWindow t2(tWith);
    t1.LoadAndShow();
    t2.LoadAndShow();
    QCOMPARE(t1.size(), t2.size());
    QCOMPARE(t1.txtCommPort(0).text(), t2.txtCommPort(0).text());
    QCOMPARE(t1.txtCommSettings(1).text(), t2.txtCommSettings(1).text());
    QCOMPARE(t1.cmbTargetDetail.currentText(), t2.cmbTargetDetail.currentText());
    QVERIFY(!QFile::exists(tWithout.ProfileFile()));
}

QTEST_MAIN(StartWindowTest)
#include "StartWindowTest.moc"
