// The settings profile through the window: what is restored, what is saved, and what survives a save.
#include <QDir>
#include <QTest>

#include "tests/support/Bytes.h"
#include "tests/support/FullDisk.h"
#include "tests/support/PrintString.h"
#include "tests/window/Bench.h"

using support::AnyReport;
using support::Bytes;
using support::ShownWindow;
using support::TestWindow;
using support::World;

namespace {

// Every key, none at its first value.
constexpr std::string_view Whole =
    "[Nmea Data]\r\nEnabled #0=0\r\nComm Port #0=11\r\nSettings #0=9600,e,7,2\r\n"
    "Enabled #1=1\r\nComm Port #1=12\r\nSettings #1=19200,o,8,1\r\n"
    "[Receiver Data]\r\nNasa Power=1\r\n"
    "[Gps Data]\r\nLatitude=12 30.00 S\r\nLongitude=123 15.00 E\r\n"
    "[Target Data]\r\nDetail=Speed\r\nTarget=366053209\r\n"
    "[Output Data]\r\nEnabled=1\r\nComm Port=13\r\nSettings=4800,n,8,1\r\n"
    "[Window Data]\r\nTop=300\r\nLeft=600\r\nHeight=9000\r\nWidth=13500\r\n";

// Keys and sections of a profile in the order in which they stand, "Section/Key".
QStringList Keys(const std::string& sText) {
    QStringList sKeys;
    QString sSection;
    for (const QString& sLine : QString::fromLatin1(Bytes(sText)).split(QStringLiteral("\r\n"))) {
        if (sLine.startsWith(QLatin1Char('['))) {
            sSection = sLine.mid(1, sLine.size() - 2);
        } else if (sLine.contains(QLatin1Char('='))) {
            sKeys << sSection + QLatin1Char('/') + sLine.section(QLatin1Char('='), 0, 0);
        }
    }
    return sKeys;
}

QStringList AllKeys() {
    return {QStringLiteral("Nmea Data/Enabled #0"),     QStringLiteral("Nmea Data/Comm Port #0"),
            QStringLiteral("Nmea Data/Settings #0"),    QStringLiteral("Nmea Data/Enabled #1"),
            QStringLiteral("Nmea Data/Comm Port #1"),   QStringLiteral("Nmea Data/Settings #1"),
            QStringLiteral("Receiver Data/Nasa Power"), QStringLiteral("Gps Data/Latitude"),
            QStringLiteral("Gps Data/Longitude"),       QStringLiteral("Target Data/Detail"),
            QStringLiteral("Target Data/Target"),       QStringLiteral("Output Data/Enabled"),
            QStringLiteral("Output Data/Comm Port"),    QStringLiteral("Output Data/Settings"),
            QStringLiteral("Window Data/Top"),          QStringLiteral("Window Data/Left"),
            QStringLiteral("Window Data/Height"),       QStringLiteral("Window Data/Width")};
}

}  // namespace

class ProfileWindowTest : public QObject {
    Q_OBJECT

private slots:
    void everyKeyReachesItsControl();
    void controlsAreRestoredInTheOrderOfTheTable();
    void everyKeyIsSavedInTheOrderOfTheTable();
    void savedWindowComesBackTheSame();
    void emptyOrMissingValueLeavesTheControl_data();
    void emptyOrMissingValueLeavesTheControl();
    void valueThatDoesNotConvertLeavesTheControl_data();
    void valueThatDoesNotConvertLeavesTheControl();
    void longValueIsCutTo79Characters_data();
    void longValueIsCutTo79Characters();
    void onlyTheSecondPortsSettingsStandInTheFile();
    void namesMatchWithoutRegardToCaseAndBlanks();
    void lineFeedAloneEndsALine();
    void positionIsRestoredThroughItsChangeHandlers();
    void positionThatHoldsTheFirstTextIsParsedAllTheSame();
    void unreadablePositionTextMakesItUnknown();
    void steppedPositionTextSurvives();
    void detailThatIsNoItemIsKeptAndShowsLikeNone();
    void restoredTargetIsKeptThoughNothingWasHeard();
    void windowPlaceIsInTwips();
    void otherKeysAndCommentsSurviveASave();
    void valuesAreReplacedNotAdded();
    void missingProfileIsCreatedAtTheFirstUnload();
    void profileThatCannotBeWrittenIsSilent();
    void fullDiskLeavesTheProfileAsItWas_data();
    void fullDiskLeavesTheProfileAsItWas();
    void maximisedWindowKeepsTheLastNormalPlace_data();
    void maximisedWindowKeepsTheLastNormalPlace();
    void choicesOfTheSessionAreNotSaved();
    void portsAreClosedBeforeTheProfileIsWritten();
    void closingTheWindowSavesOnce();
    void nothingIsSavedBeforeTheWindowCloses();
};

void ProfileWindowTest::everyKeyReachesItsControl() {
    World tWorld;
    tWorld.WriteFile(tWorld.ProfileFile(), Whole);
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.Synchronize();
    QVERIFY(!t.chkCommEnabled(0).isChecked());
    QVERIFY(t.chkCommEnabled(1).isChecked());
    QCOMPARE(t.txtCommPort(0).text(), QStringLiteral("11"));
    QCOMPARE(t.txtCommPort(1).text(), QStringLiteral("12"));
    QCOMPARE(t.txtCommSettings(0).text(), QStringLiteral("9600,e,7,2"));
    QCOMPARE(t.txtCommSettings(1).text(), QStringLiteral("19200,o,8,1"));
    QVERIFY(t.chkRxNasaPower.isChecked());
    QCOMPARE(t.txtGpsLat.text(), QStringLiteral("12 30.00 S"));
    QCOMPARE(t.txtGpsLon.text(), QStringLiteral("123 15.00 E"));
    QCOMPARE(t.cmbTargetDetail.currentText(), QStringLiteral("Speed"));
    QCOMPARE(t.cmbTargetTarget.currentText(), QStringLiteral("366053209"));
    QVERIFY(t.chkOutputEnabled.isChecked());
    QCOMPARE(t.txtOutputPort.text(), QStringLiteral("13"));
    QCOMPARE(t.txtOutputSettings.text(), QStringLiteral("4800,n,8,1"));
    QCOMPARE(t.size(), QSize(900, 600));
    QCOMPARE(t.pos(), QPoint(40, 20));
}

void ProfileWindowTest::controlsAreRestoredInTheOrderOfTheTable() {
    World tWorld;
    tWorld.WriteFile(tWorld.ProfileFile(), Whole);
    TestWindow t(tWorld);
    QStringList sOrder;
    const auto tNote = [&sOrder](const char* sName) {
        return [&sOrder, sName] {
            if (sOrder.isEmpty() || sOrder.back() != QLatin1String(sName)) sOrder << QLatin1String(sName);
        };
    };
    connect(&t.chkCommEnabled(0), &QCheckBox::toggled, this, tNote("enabled 0"));
    connect(&t.txtCommPort(0), &QLineEdit::textChanged, this, tNote("port 0"));
    connect(&t.txtCommSettings(0), &QLineEdit::textChanged, this, tNote("settings 0"));
    connect(&t.chkCommEnabled(1), &QCheckBox::toggled, this, tNote("enabled 1"));
    connect(&t.txtCommPort(1), &QLineEdit::textChanged, this, tNote("port 1"));
    connect(&t.txtCommSettings(1), &QLineEdit::textChanged, this, tNote("settings 1"));
    connect(&t.chkRxNasaPower, &QCheckBox::toggled, this, tNote("power"));
    connect(&t.txtGpsLat, &toolkit::MaskedBox::Change, this, tNote("latitude"));
    connect(&t.txtGpsLon, &toolkit::MaskedBox::Change, this, tNote("longitude"));
    connect(&t.cmbTargetDetail, &QComboBox::currentTextChanged, this, tNote("detail"));
    connect(&t.chkOutputEnabled, &QCheckBox::toggled, this, tNote("output"));
    connect(&t.txtOutputPort, &QLineEdit::textChanged, this, tNote("output port"));
    connect(&t.txtOutputSettings, &QLineEdit::textChanged, this, tNote("output settings"));
    t.Load();
    QCOMPARE(sOrder.join(QStringLiteral(", ")),
             QStringLiteral("enabled 0, port 0, settings 0, enabled 1, port 1, settings 1, power, latitude, longitude, "
                            "detail, output, output port, output settings"));
}

void ProfileWindowTest::everyKeyIsSavedInTheOrderOfTheTable() {
    ShownWindow t;
    t.close();
    const std::string sText = t.tWorld.ReadFile(t.tWorld.ProfileFile());
    QCOMPARE(Keys(sText), AllKeys());
    QVERIFY(sText.starts_with(
        "[Nmea Data]\r\nEnabled #0=1\r\nComm Port #0=6\r\nSettings #0=38400,n,8,1\r\n"
        "Enabled #1=0\r\nComm Port #1=5\r\nSettings #1=4800,n,8,1\r\n[Receiver Data]\r\nNasa Power=0\r\n"
        "[Gps Data]\r\nLatitude=00 00.00 N\r\nLongitude=000 00.00 W\r\n[Target Data]\r\nDetail=None\r\nTarget=\r\n"
        "[Output Data]\r\nEnabled=0\r\nComm Port=6\r\nSettings=38400,n,8,1\r\n[Window Data]\r\nTop="));
}

void ProfileWindowTest::savedWindowComesBackTheSame() {
    World tWorld;
    tWorld.WriteFile(tWorld.ProfileFile(), Whole);
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.close();
    QCOMPARE(Bytes(tWorld.ReadFile(tWorld.ProfileFile())), Bytes(Whole));
}

void ProfileWindowTest::emptyOrMissingValueLeavesTheControl_data() {
    QTest::addColumn<QByteArray>("profile");
    QTest::newRow("empty value") << QByteArray("[Nmea Data]\r\nComm Port #0=\r\nSettings #0=   \r\nEnabled #0=\r\n");
    QTest::newRow("missing key") << QByteArray("[Nmea Data]\r\nComm Port=9\r\n");
    QTest::newRow("another section") << QByteArray("[Output]\r\nComm Port #0=9\r\nEnabled #0=0\r\n");
    QTest::newRow("no section") << QByteArray("Comm Port #0=9\r\nEnabled #0=0\r\n");
    QTest::newRow("1-based index") << QByteArray("[Nmea Data]\r\nComm Port #2=9\r\nEnabled #2=1\r\n");
}

void ProfileWindowTest::emptyOrMissingValueLeavesTheControl() {
    QFETCH(QByteArray, profile);
    World tWorld;
    tWorld.WriteFile(tWorld.ProfileFile(), support::View(profile));
    TestWindow t(tWorld);
    t.LoadAndShow();
    QVERIFY(t.chkCommEnabled(0).isChecked());
    QVERIFY(!t.chkCommEnabled(1).isChecked());
    QCOMPARE(t.txtCommPort(0).text(), QStringLiteral("6"));
    QCOMPARE(t.txtCommPort(1).text(), QStringLiteral("5"));
    QCOMPARE(t.txtCommSettings(0).text(), QStringLiteral("38400,n,8,1"));
}

void ProfileWindowTest::valueThatDoesNotConvertLeavesTheControl_data() {
    QTest::addColumn<QByteArray>("value");
    for (const char* s : {"yes", "1x", "99999999999", "nan", "inf", "1e999", "-"}) QTest::newRow(s) << QByteArray(s);
}

void ProfileWindowTest::valueThatDoesNotConvertLeavesTheControl() {
    QFETCH(QByteArray, value);
    World tWorld;
    const std::string sValue = value.toStdString();
    tWorld.WriteFile(tWorld.ProfileFile(), "[Nmea Data]\r\nEnabled #0=" + sValue + "\r\nEnabled #1=" + sValue +
                                               "\r\nComm Port #0=8\r\n[Window Data]\r\nHeight=" + sValue +
                                               "\r\nWidth=" + sValue + "\r\n");
    World tPlain;
    TestWindow tDesigned(tPlain);
    tDesigned.LoadAndShow();
    TestWindow t(tWorld);
    t.LoadAndShow();
    QVERIFY(t.chkCommEnabled(0).isChecked());
    QVERIFY(!t.chkCommEnabled(1).isChecked());
    QCOMPARE(t.txtCommPort(0).text(), QStringLiteral("8"));  // the rest is read
    QCOMPARE(t.size(), tDesigned.size());
}

void ProfileWindowTest::longValueIsCutTo79Characters_data() {
    QTest::addColumn<int>("characters");
    QTest::addColumn<int>("kept");
    QTest::newRow("78") << 78 << 78;
    QTest::newRow("79") << 79 << 79;
    QTest::newRow("80") << 80 << 79;
    QTest::newRow("500") << 500 << 79;
}

void ProfileWindowTest::longValueIsCutTo79Characters() {
    QFETCH(int, characters);
    QFETCH(int, kept);
    std::string sValue;
    for (int i = 0; i < characters; ++i) sValue += static_cast<char>('a' + i % 26);
    World tWorld;
    tWorld.WriteFile(tWorld.ProfileFile(),
                     "[Nmea Data]\r\nSettings #0=" + sValue + "\r\n[Target Data]\r\nTarget=" + sValue + "\r\n");
    TestWindow t(tWorld);
    t.LoadAndShow();
    const std::string sKept = sValue.substr(0, static_cast<std::size_t>(kept));
    QCOMPARE(t.txtCommSettings(0).Text(), sKept);
    QCOMPARE(t.cmbTargetTarget.Text(), sKept);
}

void ProfileWindowTest::onlyTheSecondPortsSettingsStandInTheFile() {
    World tWorld;
    tWorld.WriteFile(tWorld.ProfileFile(), "[Nmea Data]\r\nSettings #1=57600,n,8,1\r\n");
    TestWindow t(tWorld);
    t.LoadAndShow();
    QCOMPARE(t.txtCommSettings(0).text(), QStringLiteral("38400,n,8,1"));
    QCOMPARE(t.txtCommSettings(1).text(), QStringLiteral("57600,n,8,1"));
}

void ProfileWindowTest::namesMatchWithoutRegardToCaseAndBlanks() {
    World tWorld;
    tWorld.WriteFile(tWorld.ProfileFile(),
                     "[nmea data]\r\n  COMM PORT #0 =  7  \r\nComm Port #0=9\r\n[NMEA DATA]\r\nComm Port #0=10\r\n");
    TestWindow t(tWorld);
    t.LoadAndShow();
    QCOMPARE(t.txtCommPort(0).text(), QStringLiteral("7"));
}

void ProfileWindowTest::lineFeedAloneEndsALine() {
    World tWorld;
    tWorld.WriteFile(tWorld.ProfileFile(), "[Nmea Data]\nComm Port #0=7\nComm Port #1=8\n");
    TestWindow t(tWorld);
    t.LoadAndShow();
    QCOMPARE(t.txtCommPort(0).text(), QStringLiteral("7"));
    QCOMPARE(t.txtCommPort(1).text(), QStringLiteral("8"));
}

void ProfileWindowTest::positionIsRestoredThroughItsChangeHandlers() {
    World tWorld;
    tWorld.WriteFile(tWorld.ProfileFile(), Whole);
    TestWindow t(tWorld);
    t.LoadAndShow();
    QCOMPARE(t.m_dLatitude, -12.5);
    QCOMPARE(t.m_dLongitude, 123.25);
}

void ProfileWindowTest::positionThatHoldsTheFirstTextIsParsedAllTheSame() {
    World tWorld;
    tWorld.WriteFile(tWorld.ProfileFile(), "[Gps Data]\r\nLatitude=00 00.00 N\r\nLongitude=000 00.00 W\r\n");
    TestWindow t(tWorld);
    t.LoadAndShow();
    QCOMPARE(t.m_dLatitude, 0.0);
    QCOMPARE(t.m_dLongitude, 0.0);
}

void ProfileWindowTest::unreadablePositionTextMakesItUnknown() {
    World tWorld;
    tWorld.WriteFile(tWorld.ProfileFile(), "[Gps Data]\r\nLatitude=nowhere\r\nLongitude=123 15.00 E\r\n");
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.Synchronize();
    QCOMPARE(t.m_dLatitude, -999.0);
    QCOMPARE(t.m_dLongitude, 123.25);
    QCOMPARE(t.txtGpsLat.text(), QStringLiteral("nowhere"));
    QVERIFY(tWorld.sMessages.isEmpty());
}

void ProfileWindowTest::steppedPositionTextSurvives() {
    World tWorld;
    {
        TestWindow t(tWorld);
        t.LoadAndShow();
        t.txtGpsLat.SetText("47 36.50 N");
        t.SSTab.SetTab(ui::TabGps);
        t.txtGpsLat.ClickAt(1);
        QTest::keyClick(&t.txtGpsLat, Qt::Key_Up);
        t.close();
    }
    const std::string sStepped =
        "48\xB0"
        "36.50'N";
    QVERIFY(tWorld.ReadFile(tWorld.ProfileFile()).find("Latitude=" + sStepped + "\r\n") != std::string::npos);
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.Synchronize();
    QCOMPARE(t.txtGpsLat.Text(), sStepped);
    QCOMPARE(t.txtGpsLat.text(), QString::fromLatin1(Bytes(sStepped)));
    QVERIFY(std::abs(t.m_dLatitude - (48 + 36.5 / 60)) < 1e-9);
}

void ProfileWindowTest::detailThatIsNoItemIsKeptAndShowsLikeNone() {
    World tWorld;
    tWorld.WriteFile(tWorld.ProfileFile(), "[Target Data]\r\nDetail=Everything\r\n");
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.StartBoth();
    QCOMPARE(t.cmbTargetDetail.Text(), std::string("Everything"));
    for (int iCol = 10; iCol <= 16; ++iCol) {
        QVERIFY(!t.grdTargetData.Columns()[static_cast<std::size_t>(iCol)].bShown);
    }
    QVERIFY(t.grdTargetData.Columns()[1].bShown);
    t.close();
    QVERIFY(tWorld.ReadFile(tWorld.ProfileFile()).find("Detail=Everything\r\n") != std::string::npos);
}

void ProfileWindowTest::restoredTargetIsKeptThoughNothingWasHeard() {
    World tWorld;
    tWorld.WriteFile(tWorld.ProfileFile(), "[Target Data]\r\nTarget=123456789\r\n");
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.StartBoth();
    t.FeedLine(0, AnyReport);
    t.Synchronize();
    QCOMPARE(t.cmbTargetTarget.currentText(), QStringLiteral("123456789"));
}

void ProfileWindowTest::windowPlaceIsInTwips() {
    ShownWindow t;
    t.resize(800, 500);
    t.move(31, 47);
    QCoreApplication::processEvents();
    t.close();
    const std::string sText = t.tWorld.ReadFile(t.tWorld.ProfileFile());
    const std::string sPlace = "[Window Data]\r\nTop=" + std::to_string(47 * 15) +
                               "\r\nLeft=" + std::to_string(31 * 15) + "\r\nHeight=" + std::to_string(500 * 15) +
                               "\r\nWidth=" + std::to_string(800 * 15) + "\r\n";
    QVERIFY2(sText.ends_with(sPlace), sText.c_str());
    TestWindow tAgain(t.tWorld);
    tAgain.LoadAndShow();
    QCOMPARE(tAgain.size(), QSize(800, 500));
    QCOMPARE(tAgain.pos(), QPoint(31, 47));
}

void ProfileWindowTest::otherKeysAndCommentsSurviveASave() {
    World tWorld;
    tWorld.WriteFile(tWorld.ProfileFile(),
                     "; mine\r\n[Nmea Data]\r\nExtra=1\r\nComm Port #0=7\r\n\r\n[Elsewhere]\r\nColour=blue\r\n");
    TestWindow t(tWorld);
    t.LoadAndShow();
    // Somebody adds a key while the program runs.
    tWorld.WriteFile(tWorld.ProfileFile(), tWorld.ReadFile(tWorld.ProfileFile()) + "Late=2\r\n");
    t.close();
    const std::string sText = tWorld.ReadFile(tWorld.ProfileFile());
    QVERIFY(sText.starts_with("; mine\r\n[Nmea Data]\r\nExtra=1\r\nComm Port #0=7\r\n"));
    QVERIFY(sText.find("[Elsewhere]\r\nColour=blue\r\nLate=2\r\n") != std::string::npos);
    QVERIFY(sText.find("Comm Port #1=5\r\n") != std::string::npos);
}

void ProfileWindowTest::valuesAreReplacedNotAdded() {
    World tWorld;
    tWorld.WriteFile(tWorld.ProfileFile(), Whole);
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.txtCommPort(0).SetText("3");
    t.chkCommEnabled(0).setChecked(true);
    t.chkRxNasaPower.setChecked(false);
    t.close();
    const std::string sText = tWorld.ReadFile(tWorld.ProfileFile());
    QCOMPARE(Keys(sText), AllKeys());
    QVERIFY(sText.find("Comm Port #0=3\r\n") != std::string::npos);
    QVERIFY(sText.find("Enabled #0=1\r\n") != std::string::npos);
    QVERIFY(sText.find("Nasa Power=0\r\n") != std::string::npos);
}

void ProfileWindowTest::missingProfileIsCreatedAtTheFirstUnload() {
    ShownWindow t;
    QVERIFY(!QFile::exists(t.tWorld.ProfileFile()));
    t.close();
    QVERIFY(QFile::exists(t.tWorld.ProfileFile()));
}

void ProfileWindowTest::profileThatCannotBeWrittenIsSilent() {
    ShownWindow t;
    t.m_sProfileFile = t.tWorld.Path(QStringLiteral("gone/tidewatch.Ini"));
    QVERIFY(t.close());
    QVERIFY(t.tWorld.sMessages.isEmpty());
}

void ProfileWindowTest::fullDiskLeavesTheProfileAsItWas_data() {
    QTest::addColumn<int>("room");
    QTest::newRow("no byte") << 0;
    QTest::newRow("some bytes") << 100;
}

void ProfileWindowTest::fullDiskLeavesTheProfileAsItWas() {
    QFETCH(int, room);
    World tWorld;
    tWorld.WriteFile(tWorld.ProfileFile(), Whole);
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.txtCommPort(0).SetText("3");
    {
        const support::FullDisk tFull(static_cast<rlim_t>(room));
        QVERIFY(t.close());
    }
    QCOMPARE(Bytes(tWorld.ReadFile(tWorld.ProfileFile())), Bytes(Whole));
    QCOMPARE(QDir(tWorld.Folder()).entryList(QDir::Files), QStringList{QStringLiteral("tidewatch.Ini")});
    QVERIFY(tWorld.sMessages.isEmpty());
}

void ProfileWindowTest::maximisedWindowKeepsTheLastNormalPlace_data() {
    QTest::addColumn<int>("state");
    QTest::newRow("maximised") << int{Qt::WindowMaximized};
    QTest::newRow("minimised") << int{Qt::WindowMinimized};
}

void ProfileWindowTest::maximisedWindowKeepsTheLastNormalPlace() {
    QFETCH(int, state);
    World tWorld;
    tWorld.WriteFile(tWorld.ProfileFile(), Whole);
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.setWindowState(static_cast<Qt::WindowState>(state));
    QCoreApplication::processEvents();
    t.txtCommPort(0).SetText("44");
    t.close();
    const std::string sText = tWorld.ReadFile(tWorld.ProfileFile());
    QVERIFY(sText.find("Comm Port #0=44\r\n") != std::string::npos);
    QVERIFY(sText.ends_with("[Window Data]\r\nTop=300\r\nLeft=600\r\nHeight=9000\r\nWidth=13500\r\n"));
}

void ProfileWindowTest::choicesOfTheSessionAreNotSaved() {
    ShownWindow t;
    t.chkOutputRMC.setChecked(true);
    t.chkTargetTrack.setChecked(true);
    t.cmbTargetSort.SetListIndex(2);
    t.txtTimingRateTx.SetText("17");
    t.txtRxNasaChannel.SetText("B");
    t.txtRxNasaInterval.SetText("5");
    t.close();
    QCOMPARE(Keys(t.tWorld.ReadFile(t.tWorld.ProfileFile())), AllKeys());
    TestWindow tAgain(t.tWorld);
    tAgain.LoadAndShow();
    QVERIFY(!tAgain.chkOutputRMC.isChecked());
    QVERIFY(!tAgain.chkTargetTrack.isChecked());
    QCOMPARE(tAgain.cmbTargetSort.currentIndex(), 0);
    QCOMPARE(tAgain.txtTimingRateTx.text(), QStringLiteral("30"));
    QCOMPARE(tAgain.txtRxNasaChannel.text(), QStringLiteral("S"));
    QCOMPARE(tAgain.txtRxNasaInterval.text(), QStringLiteral("3"));
}

void ProfileWindowTest::portsAreClosedBeforeTheProfileIsWritten() {
    ShownWindow t;
    t.StartBoth();
    t.PressWithFile("Record", t.tWorld.Path(QStringLiteral("record.txt")));
    t.FeedLine(0, "$GPGLL,4916.45,N,12311.12,W,225444,A");
    // Where nothing can be written the unload must have closed the ports all the same.
    t.m_sProfileFile = t.tWorld.Path(QStringLiteral("gone/tidewatch.Ini"));
    t.close();
    QVERIFY(!t.MSComm(0).PortOpen());
    QVERIFY(!t.MSComm(1).PortOpen());
    QVERIFY(!t.m_bRecording);
    QCOMPARE(Bytes(t.tWorld.ReadFile(t.tWorld.Path(QStringLiteral("record.txt")))),
             QByteArray("05/15/2011 12:00:00 $GPGLL,4916.45,N,12311.12,W,225444,A\r\n"));
}

void ProfileWindowTest::closingTheWindowSavesOnce() {
    ShownWindow t;
    t.close();
    QVERIFY(QFile::remove(t.tWorld.ProfileFile()));
    t.Form_Unload();
    QVERIFY(!QFile::exists(t.tWorld.ProfileFile()));
}

void ProfileWindowTest::nothingIsSavedBeforeTheWindowCloses() {
    World tWorld;
    tWorld.WriteFile(tWorld.ProfileFile(), Whole);
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.txtCommPort(0).SetText("99");
    t.StartBoth();
    t.Advance(5);
    t.Press("Stop");
    QCOMPARE(Bytes(tWorld.ReadFile(tWorld.ProfileFile())), Bytes(Whole));
}

QTEST_MAIN(ProfileWindowTest)
#include "ProfileWindowTest.moc"
