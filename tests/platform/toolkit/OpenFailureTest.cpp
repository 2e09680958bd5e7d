// Why a device could not be opened, in words, found out on real devices and files.
#include "platform/toolkit/OpenFailure.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include "tests/support/PtyPort.h"

namespace {
const QString SystemText = QStringLiteral("what the system said");
constexpr uid_t Nobody = 65534;

// An ordinary user without rights for as long as it lives, where the test runs as the administrator.
struct OrdinaryUser {
    OrdinaryUser() {
        if (::geteuid() == 0 && ::setegid(Nobody) == 0 && ::seteuid(Nobody) == 0) bChanged = true;
    }
    ~OrdinaryUser() {
        if (bChanged && (::seteuid(0) != 0 || ::setegid(0) != 0)) qFatal("the administrator's rights are lost");
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    bool bChanged = false;
};
}  // namespace

class OpenFailureTest : public QObject {
    Q_OBJECT
private slots:
    void Texts();
    void MissingDevice_data();
    void MissingDevice();
    void NotASerialDevice_data();
    void NotASerialDevice();
    void ForbiddenDevice();
    void BusyDeviceNamesItsHolder();
    void LockedDeviceWithoutKnownHolder();
    void AnythingElseIsWhatTheSystemSaid();
};

void OpenFailureTest::Texts() {
    const QString sDevice = QStringLiteral("/dev/ttyUSB0");
    QCOMPARE(toolkit::PermissionDenied(sDevice, QStringLiteral("dialout"), QStringLiteral("alice")),
             QStringLiteral("permission denied: /dev/ttyUSB0 belongs to group dialout; run \"sudo usermod -aG dialout "
                            "alice\" and log in again"));
    QCOMPARE(toolkit::PermissionDenied(sDevice, {}, QStringLiteral("alice")),
             QStringLiteral("permission denied: /dev/ttyUSB0"));
    QCOMPARE(toolkit::DeviceBusy(sDevice, QStringLiteral("gpsd (process 4711)")),
             QStringLiteral("busy: /dev/ttyUSB0 is in use by gpsd (process 4711)"));
    QCOMPARE(toolkit::DeviceBusy(sDevice, {}), QStringLiteral("busy: /dev/ttyUSB0 is in use by another program"));
}

void OpenFailureTest::MissingDevice_data() {
    QTest::addColumn<QString>("sDevice");
    QTest::newRow("no such file") << QStringLiteral("/dev/ttyUSB99");
    QTest::newRow("no such folder") << QStringLiteral("/nowhere/ttyUSB0");
    QTest::newRow("no name") << QString();
}

void OpenFailureTest::MissingDevice() {
    QFETCH(QString, sDevice);
    QCOMPARE(toolkit::OpenFailure(sDevice, SystemText), QStringLiteral("no such device: ") + sDevice);
}

void OpenFailureTest::NotASerialDevice_data() {
    QTest::addColumn<QString>("sDevice");
    QTest::newRow("null device") << QStringLiteral("/dev/null");
    QTest::newRow("file") << QStringLiteral("/etc/passwd");
    QTest::newRow("folder") << QStringLiteral("/dev");
}

void OpenFailureTest::NotASerialDevice() {
    QFETCH(QString, sDevice);
    QCOMPARE(toolkit::OpenFailure(sDevice, SystemText), QStringLiteral("not a serial device: ") + sDevice);
}

void OpenFailureTest::ForbiddenDevice() {
    support::PtyPort tPty;
    const QByteArray sPath = tPty.Device().toLocal8Bit();
    const gid_t iGroup = 20;  // dialout's number on Debian; any group but the user's own serves
    const bool bGroup = ::geteuid() == 0 && ::chown(sPath.constData(), 0, iGroup) == 0;
    QCOMPARE(::chmod(sPath.constData(), 0), 0);
    const OrdinaryUser tUser;
    const QString sText = toolkit::OpenFailure(tPty.Device(), SystemText);
    QVERIFY2(sText.startsWith(QStringLiteral("permission denied: ") + tPty.Device()), qPrintable(sText));
    if (!bGroup) return;  // the device belongs to the user's own terminals, whose group differs between systems
    QVERIFY2(sText.contains(QLatin1String(" belongs to group ")), qPrintable(sText));
    QVERIFY2(sText.contains(QLatin1String("run \"sudo usermod -aG ")), qPrintable(sText));
    QVERIFY2(sText.endsWith(QLatin1String(" and log in again")), qPrintable(sText));
    QVERIFY2(sText.contains(QLatin1String(" nobody\"")), qPrintable(sText));
}

void OpenFailureTest::BusyDeviceNamesItsHolder() {
    support::PtyPort tPty;
    QProcess tHolder;
    // Opened by the child itself: in this process it would become the terminal of a test that leads its session.
    tHolder.start(QStringLiteral("sh"),
                  {QStringLiteral("-c"), QStringLiteral("exec sleep 60 < \"$0\""), tPty.Device()});
    QVERIFY(tHolder.waitForStarted());
    const QString sLocked = QStringLiteral("Permission error while locking the device");
    const QString sExpected = QStringLiteral("busy: %1 is in use by sleep (process %2)");
    QTRY_COMPARE(toolkit::OpenFailure(tPty.Device(), sLocked), sExpected.arg(tPty.Device()).arg(tHolder.processId()));
    // Through a link as well.
    QCOMPARE(toolkit::OpenFailure(tPty.Link(), sLocked), sExpected.arg(tPty.Link()).arg(tHolder.processId()));
    tHolder.kill();
    QVERIFY(tHolder.waitForFinished());
}

void OpenFailureTest::LockedDeviceWithoutKnownHolder() {
    support::PtyPort tPty;
    QCOMPARE(toolkit::OpenFailure(tPty.Device(), QStringLiteral("Permission error while locking the device")),
             QStringLiteral("busy: %1 is in use by another program").arg(tPty.Device()));
}

void OpenFailureTest::AnythingElseIsWhatTheSystemSaid() {
    support::PtyPort tPty;
    QCOMPARE(toolkit::OpenFailure(tPty.Device(), SystemText), SystemText + QStringLiteral(": ") + tPty.Device());
}

QTEST_GUILESS_MAIN(OpenFailureTest)
#include "OpenFailureTest.moc"
