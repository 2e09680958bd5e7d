// Letters beyond ASCII on their way through the window: the system's words on a German and a Russian desktop, what the
// user types into the port and settings fields, names of files and devices.
#include <QFile>
#include <QHelpEvent>
#include <QTemporaryDir>

#include "tests/support/PtyPort.h"
#include "tests/support/SystemLanguage.h"
#include "tests/window/Bench.h"
#include "tests/window/Shown.h"

using namespace support;

namespace {

const QString Receiver = QString::fromUtf8("приёмник");

QString ShownPanel(TestWindow& t, int iPanel) {
    t.Synchronize();
    return t.StatusBar.Panel(iPanel).text();
}

// A record file on a disk that takes nothing.
struct FullRecording : Listening {
    FullRecording() {
        PressWithFile("Record", QStringLiteral("/dev/full"));
        FeedLine(0, "$GPGLL,4916.45,N,12311.12,W,225444,A");
        Advance(1);
    }
};

// Closes a window with these texts in the fields of port #1 and loads another.
struct Reopened : support::OwnWorld, TestWindow {
    Reopened(const QString& sPort, const QString& sSettings) : TestWindow(tWorld) {
        TestWindow tFirst(tWorld);
        tFirst.LoadAndShow();
        tFirst.txtCommPort(0).setText(sPort);
        tFirst.txtCommSettings(0).setText(sSettings);
        tFirst.txtOutputPort.setText(sPort);
        tFirst.close();
        LoadAndShow();
    }
};

}  // namespace

class TranslatedWindowTest : public QObject {
    Q_OBJECT

private slots:
    void fullDiskIsToldInTheUsersLanguage();
    void languageBeyondLatin1IsToldInEnglish();
    void missingFileIsToldInTheUsersLanguage();
    void settingsErrorQuotesWhatWasTyped();
    void portErrorQuotesWhatWasTyped();
    void portTipQuotesWhatWasTyped();
    void deviceIsReadUnderAnyName();
    void recordingIsMadeUnderAnyName();
    void latinTextsComeBackFromTheProfile();
    void otherLettersComeBackFromTheProfile();
};

void TranslatedWindowTest::fullDiskIsToldInTheUsersLanguage() {
    const SystemLanguage tGerman("de",
                                 {{"No space left on device", "Auf dem Gerät ist kein Speicherplatz mehr verfügbar"}});
    FullRecording t;
    const QString sReason = QString::fromUtf8("Record - Auf dem Gerät ist kein Speicherplatz mehr verfügbar");
    QCOMPARE(ShownPanel(t, 2), sReason);
    QCOMPARE(Log(t, t.lstCommData(0)).constLast(), QStringLiteral("<<%1>>").arg(sReason));
}

void TranslatedWindowTest::languageBeyondLatin1IsToldInEnglish() {
    const SystemLanguage tRussian("ru", {{"No space left on device", "На устройстве не осталось свободного места"}});
    FullRecording t;
    QCOMPARE(ShownPanel(t, 2), QStringLiteral("Record - No space left on device"));
}

void TranslatedWindowTest::missingFileIsToldInTheUsersLanguage() {
    const SystemLanguage tFrench("fr", {{"No such file or directory", "Aucun fichier ou répertoire de ce type"},
                                        {"Is a directory", "Est un répertoire"}});
    ShownWindow t;
    t.PressWithFile("Playback", t.tWorld.Path(QStringLiteral("none.txt")));
    QCOMPARE(ShownPanel(t, 2), QString::fromUtf8("Playback - Aucun fichier ou répertoire de ce type"));
    t.PressWithFile("Playback", t.tWorld.Folder());
    QCOMPARE(ShownPanel(t, 2), QString::fromUtf8("Playback - Est un répertoire"));
}

void TranslatedWindowTest::settingsErrorQuotesWhatWasTyped() {
    ShownWindow t;
    t.txtCommPort(0).SetText("1");
    t.txtCommSettings(0).setText(QString::fromUtf8("ä,n,8,1"));
    t.Press("Start");
    QCOMPARE(ShownPanel(t, 2), QString::fromUtf8("Input Comm - Settings \"ä,n,8,1\": baud rate \"ä\" is not a whole "
                                                 "number above 0"));
}

void TranslatedWindowTest::portErrorQuotesWhatWasTyped() {
    World tWorld;
    tWorld.bNativeDevices = true;
    TestWindow t(tWorld);
    t.LoadAndShow();
    const QString sDevice = tWorld.Path(Receiver);
    t.txtCommPort(0).setText(sDevice);
    t.Press("Start");
    QCOMPARE(ShownPanel(t, 2), QStringLiteral("Input Comm - no such device: ") + sDevice);
    t.txtCommPort(0).setText(Receiver);
    t.Press("Start");
    QCOMPARE(ShownPanel(t, 2), QStringLiteral("Input Comm - \"%1\" names no serial port").arg(Receiver));
    t.txtCommPort(0).SetText("1");
    t.Press("Stop");
    t.ClearDisplays();
    QCOMPARE(ShownPanel(t, 2), QString());
}

void TranslatedWindowTest::portTipQuotesWhatWasTyped() {
    ShownWindow t;
    t.txtCommPort(0).setText(Receiver);
    QHelpEvent tHelp(QEvent::ToolTip, QPoint(1, 1), QPoint(1, 1));
    QCoreApplication::sendEvent(&t.txtCommPort(0), &tHelp);
    QVERIFY(t.txtCommPort(0).toolTip().contains(QStringLiteral("\"%1\" names no serial port").arg(Receiver)));
}

void TranslatedWindowTest::deviceIsReadUnderAnyName() {
    World tWorld;
    tWorld.bNativeDevices = true;
    PtyPort tPty;
    const QString sLink = tWorld.Path(Receiver);
    QVERIFY(QFile::link(tPty.Device(), sLink));
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.txtCommPort(0).setText(sLink);
    t.Press("Start");
    QCOMPARE(ShownPanel(t, 1), QStringLiteral("Running"));
    QVERIFY(tPty.Write("$GPZDA,1\r\n"));
    QTRY_COMPARE(Log(t, t.lstCommData(0)), QStringList{QStringLiteral("$GPZDA,1")});
}

void TranslatedWindowTest::recordingIsMadeUnderAnyName() {
    ShownWindow t;
    t.StartBoth();
    const QString sFile = t.tWorld.Path(Receiver + QStringLiteral(".txt"));
    t.PressWithFile("Record", sFile);
    t.FeedLine(0, "$PNMLS,1,1,1*");
    t.Press("Stop");
    QCOMPARE(Bytes(t.tWorld.ReadFile(sFile)), QByteArray("05/15/2011 12:00:00 $PNMLS,1,1,1*\r\n"));
    t.PressWithFile("Playback", sFile);
    t.Advance(1);
    QCOMPARE(Log(t, t.lstCommData(0)), QStringList{QStringLiteral("$PNMLS,1,1,1*")});
    QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch - %1.txt").arg(Receiver));
}

// One byte a character, as the program has always written them.
void TranslatedWindowTest::latinTextsComeBackFromTheProfile() {
    const QString sText = QString::fromUtf8("ä");
    Reopened t(sText, sText);
    QCOMPARE(t.txtCommPort(0).text(), sText);
    QCOMPARE(t.txtCommSettings(0).text(), sText);
    QVERIFY(Bytes(t.tWorld.ReadFile(t.tWorld.ProfileFile())).contains("Settings #0=\xE4\r\n"));
}

void TranslatedWindowTest::otherLettersComeBackFromTheProfile() {
    Reopened t(Receiver, QString::fromUtf8("ä"));
    QCOMPARE(t.txtCommPort(0).text(), Receiver);
    QCOMPARE(t.txtOutputPort.text(), Receiver);
    QCOMPARE(t.txtCommSettings(0).text(), QString::fromUtf8("ä"));
    QVERIFY(Bytes(t.tWorld.ReadFile(t.tWorld.ProfileFile())).contains("Comm Port #0=приёмник\r\n"));
    // A position, which is Latin-1 inside, comes through a file of another code as well.
    t.txtGpsLat.SetText(
        "48\xB0"
        "36.50'N");
    t.close();
    TestWindow tAgain(t.tWorld);
    tAgain.LoadAndShow();
    QCOMPARE(QString::fromLatin1(Bytes(tAgain.txtGpsLat.Text())), QString::fromUtf8("48°36.50'N"));
    QCOMPARE(tAgain.txtCommPort(0).text(), Receiver);
}

QTEST_MAIN(TranslatedWindowTest)
#include "TranslatedWindowTest.moc"
