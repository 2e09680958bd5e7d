// Who has a device open, told without opening it: real programs on real devices.
#include "platform/toolkit/DeviceHolder.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTest>

#include "tests/support/PtyPort.h"

class DeviceHolderTest : public QObject {
    Q_OBJECT
private slots:
    void FreeDeviceHasNone();
    void ProgramThatHasItOpen();
    void OwnerOfTheLockFile();
    void LockFileOfAnEndedProgramTellsNothing();
    void SeveralDevicesAtOnce();
};

namespace {

// A program that has a device open until it is killed.
struct Holder {
    explicit Holder(const QString& sDevice) {
        // Opened by the child itself: in this process it would become the terminal of a test that leads its session.
        tProcess.start(QStringLiteral("sh"), {QStringLiteral("-c"), QStringLiteral("exec sleep 60 < \"$0\""), sDevice});
        if (!tProcess.waitForStarted()) qFatal("no program can be started");
    }
    ~Holder() {
        tProcess.kill();
        tProcess.waitForFinished();
    }
    QString Text() const { return QStringLiteral("sleep (process %1)").arg(tProcess.processId()); }
    QProcess tProcess;
};

// A lock file as other programs leave it: the number of the process in ten columns.
struct LockFile {
    LockFile(const QString& sDevice, qint64 lProcess)
        : sPath(QStringLiteral("/run/lock/LCK..") + sDevice.mid(5).replace(QLatin1Char('/'), QLatin1Char('_'))) {
        QFile tFile(sPath);
        bWritten = tFile.open(QIODevice::WriteOnly | QIODevice::NewOnly);
        tFile.write(QByteArray::number(lProcess).rightJustified(10) + "\n");
    }
    ~LockFile() {
        if (bWritten) QFile::remove(sPath);
    }
    QString sPath;
    bool bWritten = false;
};

}  // namespace

void DeviceHolderTest::FreeDeviceHasNone() {
    support::PtyPort tPty;
    QCOMPARE(toolkit::DeviceHolder(tPty.Device()), QString());
    QCOMPARE(toolkit::DeviceHolder(QStringLiteral("/dev/no such device")), QString());
    QVERIFY(toolkit::DeviceHolders({tPty.Device(), QStringLiteral("/dev/no such device")}).empty());
}

void DeviceHolderTest::ProgramThatHasItOpen() {
    support::PtyPort tPty;
    const Holder tHolder(tPty.Device());
    QTRY_COMPARE(toolkit::DeviceHolder(tPty.Device()), tHolder.Text());
    QCOMPARE(toolkit::DeviceHolder(tPty.Link()), tHolder.Text());  // by another name
}

void DeviceHolderTest::OwnerOfTheLockFile() {
    support::PtyPort tPty;
    support::PtyPort tOther;
    const Holder tOwner(tOther.Device());  // has not opened the first device, but locked it
    {
        const LockFile tLock(tPty.Device(), tOwner.tProcess.processId());
        if (!tLock.bWritten) QSKIP("this user may not write lock files");
        QTRY_COMPARE(toolkit::DeviceHolder(tPty.Device()), tOwner.Text());
    }
    const LockFile tLock(tPty.Device(), QCoreApplication::applicationPid());
    QCOMPARE(toolkit::DeviceHolder(tPty.Device()), QStringLiteral("this program"));
}

void DeviceHolderTest::LockFileOfAnEndedProgramTellsNothing() {
    support::PtyPort tPty;
    qint64 lEnded = 0;
    {
        const Holder tHolder(tPty.Device());
        lEnded = tHolder.tProcess.processId();
    }
    const LockFile tLock(tPty.Device(), lEnded);
    if (!tLock.bWritten) QSKIP("this user may not write lock files");
    QCOMPARE(toolkit::DeviceHolder(tPty.Device()), QString());
}

void DeviceHolderTest::SeveralDevicesAtOnce() {
    support::PtyPort tFirst;
    support::PtyPort tFree;
    support::PtyPort tSecond;
    const Holder tHolder1(tFirst.Device());
    const Holder tHolder2(tSecond.Device());
    const QStringList sDevices{tFirst.Device(), tFirst.Link(), tFree.Device(), tSecond.Device()};
    const std::map<QString, QString> sExpected{
        {tFirst.Device(), tHolder1.Text()}, {tFirst.Link(), tHolder1.Text()}, {tSecond.Device(), tHolder2.Text()}};
    QTRY_VERIFY(toolkit::DeviceHolders(sDevices) == sExpected);
}

QTEST_GUILESS_MAIN(DeviceHolderTest)
#include "DeviceHolderTest.moc"
