// The settings profile when it is not ours alone: a second window on it, files written by other programs, files that
// cannot be read or stand where nothing can be written.
#include <sys/stat.h>

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <iostream>

#include "tests/support/OtherUser.h"
#include "tests/support/PrintString.h"
#include "tests/window/Shown.h"

using namespace support;

namespace {

const QByteArray InUse = "Settings - another Tidewatch uses the same file";

QByteArray Profile(const World& tWorld) { return Bytes(tWorld.ReadFile(tWorld.ProfileFile())); }

// A folder that others than its owner can look into but not write to, and the user's own for settings.
struct Installed {
    explicit Installed(std::string_view sProfile) {
        tWorld.WriteFile(tWorld.ProfileFile(), sProfile);
        ::chmod(QFile::encodeName(tWorld.ProfileFile()).constData(), 0444);
        ::chmod(QFile::encodeName(tWorld.Folder()).constData(), 0555);
        ::chmod(QFile::encodeName(tHome.path()).constData(), 0777);
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(tHome.path()));
    }
    ~Installed() {
        qunsetenv("XDG_CONFIG_HOME");
        ::chmod(QFile::encodeName(tWorld.Folder()).constData(), 0700);
    }
    QString OwnFile() const { return tHome.filePath(QStringLiteral("tidewatch/tidewatch.Ini")); }

    World tWorld;
    QTemporaryDir tHome;
};

}  // namespace

class SharedProfileWindowTest : public QObject {
    Q_OBJECT

private slots:
    void secondWindowSaysSo();
    void secondWindowSaysSoUnderAnotherRoad();
    void windowAfterTheFirstSaysNothing();
    void untouchedValuesOfASecondWindowOverwriteNothing();
    void changedValuesOfASecondWindowAreSaved();
    void firstFileIsSharedToo();
    void startedThroughALinkTheProgramHasItsOwnProfile();
    void quotedValuesReachTheirControls();
    void byteOrderMarkAndUtf8AreKept_data();
    void byteOrderMarkAndUtf8AreKept();
    void largeFileIsKeptWhole();
    void unreadableFileIsToldAndKept_data();
    void unreadableFileIsToldAndKept();
    void forbiddenFileIsToldAndKept();
    void settingsBesideAnInstalledProgramAreRead();
    void ownSettingsGoBeforeTheInstalledOnes();
};

void SharedProfileWindowTest::secondWindowSaysSo() {
    World tWorld;
    TestWindow tFirst(tWorld), tSecond(tWorld);
    tFirst.LoadAndShow();
    QCOMPARE(Panel(tFirst, 2), QByteArray());
    tSecond.LoadAndShow();
    QCOMPARE(Panel(tSecond, 2), InUse);
    QCOMPARE(Panel(tFirst, 2), QByteArray());
    QVERIFY(tWorld.sMessages.isEmpty());
}

void SharedProfileWindowTest::secondWindowSaysSoUnderAnotherRoad() {
    World tWorld;
    const QString sLink = tWorld.Path(QStringLiteral("link"));
    QVERIFY(QFile::link(tWorld.Folder(), sLink));
    TestWindow tFirst(tWorld);
    tFirst.LoadAndShow();
    tWorld.tAdjust = [&](toolkit::Platform& t) { t.sProgramFile = sLink + QLatin1String("/tidewatch"); };
    TestWindow tSecond(tWorld);
    tSecond.LoadAndShow();
    QCOMPARE(Panel(tSecond, 2), InUse);
    tWorld.tAdjust = [&](toolkit::Platform& t) { t.sProgramFile = tWorld.Path(QStringLiteral("other")); };
    TestWindow tOther(tWorld);
    tOther.LoadAndShow();
    QCOMPARE(Panel(tOther, 2), QByteArray());
}

void SharedProfileWindowTest::windowAfterTheFirstSaysNothing() {
    World tWorld;
    TestWindow tFirst(tWorld), tSecond(tWorld);
    tFirst.LoadAndShow();
    tFirst.close();
    tSecond.LoadAndShow();
    QCOMPARE(Panel(tSecond, 2), QByteArray());
}

void SharedProfileWindowTest::untouchedValuesOfASecondWindowOverwriteNothing() {
    World tWorld;
    tWorld.WriteFile(tWorld.ProfileFile(), "[Nmea Data]\r\nComm Port #0=7\r\nSettings #0=4800,n,8,1\r\n");
    TestWindow tFirst(tWorld), tSecond(tWorld);
    tFirst.LoadAndShow();
    tSecond.LoadAndShow();
    tFirst.txtCommPort(0).SetText("ttyUSB0");
    tFirst.chkOutputEnabled.setChecked(true);
    tFirst.close();
    tSecond.close();
    QVERIFY(Profile(tWorld).startsWith("[Nmea Data]\r\nComm Port #0=ttyUSB0\r\nSettings #0=4800,n,8,1\r\n"));
    QVERIFY(Profile(tWorld).contains("[Output Data]\r\nEnabled=1\r\n"));
}

void SharedProfileWindowTest::changedValuesOfASecondWindowAreSaved() {
    World tWorld;
    tWorld.WriteFile(tWorld.ProfileFile(), "[Nmea Data]\r\nComm Port #0=7\r\nSettings #0=4800,n,8,1\r\n");
    TestWindow tFirst(tWorld), tSecond(tWorld);
    tFirst.LoadAndShow();
    tSecond.LoadAndShow();
    tSecond.txtCommPort(0).SetText("ttyUSB1");
    tSecond.txtCommSettings(0).SetText("38400,n,8,1");
    tFirst.txtCommPort(0).SetText("ttyUSB0");
    tFirst.close();
    tSecond.close();
    QVERIFY(Profile(tWorld).startsWith("[Nmea Data]\r\nComm Port #0=ttyUSB1\r\nSettings #0=38400,n,8,1\r\n"));
}

void SharedProfileWindowTest::firstFileIsSharedToo() {
    World tWorld;
    TestWindow tFirst(tWorld), tSecond(tWorld);
    tFirst.LoadAndShow();
    tSecond.LoadAndShow();
    tFirst.txtCommPort(0).SetText("ttyUSB0");
    tSecond.txtCommPort(1).SetText("ttyUSB1");
    tFirst.close();
    tSecond.close();
    QVERIFY(Profile(tWorld).contains("Comm Port #0=ttyUSB0\r\n"));
    QVERIFY(Profile(tWorld).contains("Comm Port #1=ttyUSB1\r\n"));
}

// This test started again, by names that lead to it.
void SharedProfileWindowTest::startedThroughALinkTheProgramHasItsOwnProfile() {
    const QTemporaryDir tFolder;
    const QString sProgram = QCoreApplication::applicationFilePath();
    const auto tProfileOf = [&](const QString& sStarted) {
        QProcess tProcess;
        tProcess.start(sStarted, {QStringLiteral("--program")});
        tProcess.waitForFinished();
        return QFile::decodeName(tProcess.readAllStandardOutput());
    };
    const QString sBeside = QFileInfo(sProgram).absolutePath();
    QCOMPARE(tProfileOf(sProgram), sBeside + QLatin1String("/SharedProfileWindowTest"));
    for (const QString& sName : {QStringLiteral("north"), QStringLiteral("south"), QString::fromUtf8("приёмник")}) {
        QVERIFY(QFile::link(sProgram, tFolder.filePath(sName)));
        QCOMPARE(tProfileOf(tFolder.filePath(sName)), sBeside + QLatin1Char('/') + sName);
    }
}

void SharedProfileWindowTest::quotedValuesReachTheirControls() {
    World tWorld;
    tWorld.WriteFile(tWorld.ProfileFile(),
                     "[Nmea Data]\r\nEnabled #1=\"1\"\r\nComm Port #0='ttyUSB0'\r\n"
                     "Settings #0= \"4800,n,8,1\" \r\n[Window Data]\r\nHeight='9000'\r\n");
    TestWindow t(tWorld);
    t.LoadAndShow();
    QVERIFY(t.chkCommEnabled(1).isChecked());
    QCOMPARE(t.txtCommPort(0).text(), QStringLiteral("ttyUSB0"));
    QCOMPARE(t.txtCommSettings(0).text(), QStringLiteral("4800,n,8,1"));
    QCOMPARE(t.height(), 600);
}

void SharedProfileWindowTest::byteOrderMarkAndUtf8AreKept_data() {
    QTest::addColumn<QByteArray>("mark");
    QTest::addColumn<QByteArray>("comment");
    QTest::newRow("mark, plain text") << QByteArray("\xEF\xBB\xBF") << QByteArray("; mine");
    QTest::newRow("mark") << QByteArray("\xEF\xBB\xBF") << QByteArray("; приёмник ä");
    QTest::newRow("no mark") << QByteArray() << QByteArray("; приёмник ä");
}

void SharedProfileWindowTest::byteOrderMarkAndUtf8AreKept() {
    QFETCH(QByteArray, mark);
    QFETCH(QByteArray, comment);
    World tWorld;
    const QByteArray sBefore = mark + "[Nmea Data]\r\n" + comment + "\r\nComm Port #0=7\r\nComm Port #1=ttyé\r\n";
    tWorld.WriteFile(tWorld.ProfileFile(), View(sBefore));
    TestWindow t(tWorld);
    t.LoadAndShow();
    QCOMPARE(t.txtCommPort(0).text(), QStringLiteral("7"));
    QCOMPARE(t.txtCommPort(1).text(), QString::fromUtf8("ttyé"));
    t.txtGpsLat.SetText(
        "48\xB0"
        "36.50'N");
    t.close();
    QVERIFY(Profile(tWorld).startsWith(sBefore));
    QVERIFY(Profile(tWorld).contains("Latitude=48°36.50'N\r\n"));
    QCOMPARE(Profile(tWorld).count("[Nmea Data]"), qsizetype{1});
}

void SharedProfileWindowTest::largeFileIsKeptWhole() {
    World tWorld;
    const QByteArray sFiller = QByteArray("; a line of somebody's own, and a good many of them\r\n").repeated(60000);
    tWorld.WriteFile(tWorld.ProfileFile(),
                     View("[Nmea Data]\r\nComm Port #0=7\r\n" + sFiller + "[Elsewhere]\r\nlast=1\r\n"));
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.txtCommPort(0).SetText("8");
    t.close();
    QVERIFY(Profile(tWorld).startsWith("[Nmea Data]\r\nComm Port #0=8\r\n" + sFiller));
    QVERIFY(Profile(tWorld).contains("[Elsewhere]\r\nlast=1\r\n"));
}

void SharedProfileWindowTest::unreadableFileIsToldAndKept_data() {
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QByteArray>("reason");
    QTest::newRow("folder") << "folder" << QByteArray("Is a directory");
    QTest::newRow("pipe") << "pipe" << QByteArray("Not a regular file");
}

void SharedProfileWindowTest::unreadableFileIsToldAndKept() {
    QFETCH(QString, kind);
    QFETCH(QByteArray, reason);
    World tWorld;
    const QByteArray sPath = QFile::encodeName(tWorld.ProfileFile());
    QCOMPARE(kind == QLatin1String("folder") ? ::mkdir(sPath.constData(), 0700) : ::mkfifo(sPath.constData(), 0600), 0);
    TestWindow t(tWorld);
    t.LoadAndShow();
    QCOMPARE(Panel(t, 2), "Settings - " + reason + "; the file is left as it is");
    QCOMPARE(t.txtCommPort(0).text(), QStringLiteral("6"));
    t.close();
    QVERIFY(!QFileInfo(tWorld.ProfileFile()).isFile());
    QVERIFY(tWorld.sMessages.isEmpty());
}

// A file that is forbidden while the program starts; by its end it can be read again.
void SharedProfileWindowTest::forbiddenFileIsToldAndKept() {
    const QByteArray sText = "[Nmea Data]\r\nComm Port #0=7\r\n";
    World tWorld;
    tWorld.WriteFile(tWorld.ProfileFile(), View(sText));
    ::chmod(QFile::encodeName(tWorld.ProfileFile()).constData(), 0);
    ::chmod(QFile::encodeName(tWorld.Folder()).constData(), 0777);
    TestWindow t(tWorld);
    {
        const OtherUser tUser;
        t.LoadAndShow();
    }
    QCOMPARE(Panel(t, 2), QByteArray("Settings - Permission denied; the file is left as it is"));
    ::chmod(QFile::encodeName(tWorld.ProfileFile()).constData(), 0600);
    t.close();
    QCOMPARE(Profile(tWorld), sText);
}

void SharedProfileWindowTest::settingsBesideAnInstalledProgramAreRead() {
    const std::string_view sShipped = "; of the administrator\r\n[Nmea Data]\r\nComm Port #0=ttyUSB0\r\n";
    Installed t(sShipped);
    {
        const OtherUser tUser;
        TestWindow tWindow(t.tWorld);
        tWindow.LoadAndShow();
        QCOMPARE(tWindow.txtCommPort(0).text(), QStringLiteral("ttyUSB0"));
        tWindow.txtCommPort(1).SetText("ttyUSB1");
        tWindow.close();
    }
    QCOMPARE(Profile(t.tWorld), Bytes(sShipped));
    const QByteArray sOwn = Bytes(t.tWorld.ReadFile(t.OwnFile()));
    QVERIFY(sOwn.startsWith("; of the administrator\r\n[Nmea Data]\r\nComm Port #0=ttyUSB0\r\n"));
    QVERIFY(sOwn.contains("Comm Port #1=ttyUSB1\r\n"));
}

void SharedProfileWindowTest::ownSettingsGoBeforeTheInstalledOnes() {
    Installed t("[Nmea Data]\r\nComm Port #0=ttyUSB0\r\nComm Port #1=ttyUSB1\r\n");
    const OtherUser tUser;
    QVERIFY(QDir().mkpath(QFileInfo(t.OwnFile()).absolutePath()));
    t.tWorld.WriteFile(t.OwnFile(), "[Nmea Data]\r\nComm Port #0=7\r\n");
    TestWindow tWindow(t.tWorld);
    tWindow.LoadAndShow();
    QCOMPARE(tWindow.txtCommPort(0).text(), QStringLiteral("7"));
    QCOMPARE(tWindow.txtCommPort(1).text(), QStringLiteral("5"));
}

int main(int iCount, char** pArguments) {
    QApplication tApplication(iCount, pArguments);
    if (QCoreApplication::arguments().value(1) == QLatin1String("--program")) {
        std::cout << QFile::encodeName(toolkit::Platform::Native().sProgramFile).constData();
        return 0;
    }
    SharedProfileWindowTest tTest;
    return QTest::qExec(&tTest, iCount, pArguments);
}
#include "SharedProfileWindowTest.moc"
