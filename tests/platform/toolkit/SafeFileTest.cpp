// Replacing a file's content: wholly, or not at all, whatever goes wrong.
#include "platform/toolkit/SafeFile.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <cerrno>
#include <memory>

#include "tests/support/Bytes.h"
#include "tests/support/FullDisk.h"

using support::FullDisk;

namespace {

const QByteArray Old = "[Window Data]\r\nTop=300\r\n";
const QByteArray New = QByteArray("[Nmea Data]\r\nEnabled #0=1\r\n").repeated(40);

int iSynchronizations = 0;
int iSynchronizationError = 0;  // what the system answers: 0 or an error number

void Write(const QString& sPath, const QByteArray& sContent) {
    QFile tFile(sPath);
    if (!tFile.open(QIODevice::WriteOnly) || tFile.write(sContent) != sContent.size()) {
        qFatal("cannot write %s", qPrintable(sPath));
    }
}

QByteArray Content(const QString& sPath) {
    QFile tFile(sPath);
    return tFile.open(QIODevice::ReadOnly) ? tFile.readAll() : QByteArray("no file");
}

unsigned Permissions(const QString& sPath) {
    struct stat tStatus {};
    if (::stat(QFile::encodeName(sPath).constData(), &tStatus) != 0) return 0;
    return tStatus.st_mode & 07777U;
}

// A disk of 64 KiB in the place of a folder, for this process alone. False without the right to make one.
bool MountSmallDisk(const QString& sFolder) {
    const QByteArray sUser = "0 " + QByteArray::number(::geteuid()) + " 1";
    const QByteArray sGroup = "0 " + QByteArray::number(::getegid()) + " 1";
    if (::unshare(CLONE_NEWNS) != 0) {
        if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
        Write(QStringLiteral("/proc/self/setgroups"), "deny");
        Write(QStringLiteral("/proc/self/uid_map"), sUser);
        Write(QStringLiteral("/proc/self/gid_map"), sGroup);
    }
    return ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           ::mount("none", QFile::encodeName(sFolder).constData(), "tmpfs", 0, "size=64k") == 0;
}

constexpr int NoRight = 99;

// Saves on a disk of 64 KiB that is full, then on one with room again. 0, NoRight or the step that went wrong.
int FillSmallDisk(const QString& sFolder) {
    if (!MountSmallDisk(sFolder)) return NoRight;
    const QString sPath = sFolder + QStringLiteral("/profile.Ini");
    Write(sPath, Old);
    QFile tBallast(sFolder + QStringLiteral("/ballast"));
    if (!tBallast.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) return 1;
    while (tBallast.write(QByteArray(512, 'x')) == 512) continue;
    if (toolkit::ReplaceFile(sPath, support::View(New))) return 2;
    if (Content(sPath) != Old) return 3;
    if (QDir(sFolder).entryList(QDir::Files | QDir::Hidden).size() != 2) return 4;
    if (!tBallast.remove() || !toolkit::ReplaceFile(sPath, support::View(New))) return 5;
    return Content(sPath) == New ? 0 : 6;
}

}  // namespace

// Stands in for the system's own in this program.
extern "C" int fsync(int) {
    ++iSynchronizations;
    errno = iSynchronizationError;
    return iSynchronizationError == 0 ? 0 : -1;
}

class SafeFileTest : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_pFolder = std::make_unique<QTemporaryDir>();
        iSynchronizations = 0;
        iSynchronizationError = 0;
    }

    void contentIsReplaced_data();
    void contentIsReplaced();
    void contentIsOnTheDiskBeforeItTakesThePlace();
    void missingFileIsMade();
    void lockKeepsOthersOut();
    void lockThatIsNeverFreeIsDoneWithout();
    void permissionsAreKept_data();
    void permissionsAreKept();
    void linksAreFollowed_data();
    void linksAreFollowed();
    void diskWithoutRoomLeavesTheOldFile_data();
    void diskWithoutRoomLeavesTheOldFile();
    void diskThatFailsLeavesTheOldFile_data();
    void diskThatFailsLeavesTheOldFile();
    void fileSystemWithoutSynchronizationIsWritten();
    void folderThatTakesNoFileLeavesTheOldFile();
    void folderThatIsMissingIsAFailure();
    void realFullDiskLeavesTheOldFile();

private:
    bool Replace(const QByteArray& sText) const { return toolkit::ReplaceFile(Path(), support::View(sText)); }
    QString Path(const char* sName = "profile.Ini") const { return m_pFolder->filePath(QLatin1String(sName)); }
    QStringList Files() const { return QDir(m_pFolder->path()).entryList(QDir::Files | QDir::Hidden); }

    std::unique_ptr<QTemporaryDir> m_pFolder;
};

void SafeFileTest::contentIsReplaced_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("longer") << New;
    QTest::newRow("shorter") << QByteArray("x");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("more than any buffer") << QByteArray(300000, 'x');
    QTest::newRow("any bytes") << QByteArray("\0\xB0\r\n\x1A\xFF", 6);
}

void SafeFileTest::contentIsReplaced() {
    QFETCH(QByteArray, content);
    Write(Path(), Old);
    QVERIFY(Replace(content));
    QCOMPARE(Content(Path()), content);
    QCOMPARE(Files(), QStringList{QStringLiteral("profile.Ini")});
}

void SafeFileTest::contentIsOnTheDiskBeforeItTakesThePlace() {
    Write(Path(), Old);
    iSynchronizationError = EIO;  // so the old one is still in its place at that moment
    QVERIFY(!Replace(New));
    QCOMPARE(iSynchronizations, 1);
    QCOMPARE(Content(Path()), Old);
}

void SafeFileTest::missingFileIsMade() {
    const mode_t eMask = ::umask(026);
    const bool bDone = Replace(New);
    ::umask(eMask);
    QVERIFY(bDone);
    QCOMPARE(Content(Path()), New);
    QCOMPARE(Permissions(Path()), 0640U);
}

void SafeFileTest::lockKeepsOthersOut() {
    const int iFolder = ::open(QFile::encodeName(m_pFolder->path()).constData(), O_RDONLY | O_DIRECTORY);
    QVERIFY(iFolder >= 0);
    {
        const toolkit::FolderLock tLock(m_pFolder->filePath(QStringLiteral("any")));
        QVERIFY(::flock(iFolder, LOCK_EX | LOCK_NB) != 0);
    }
    QCOMPARE(::flock(iFolder, LOCK_EX | LOCK_NB), 0);
    ::close(iFolder);
}

void SafeFileTest::lockThatIsNeverFreeIsDoneWithout() {
    const int iFolder = ::open(QFile::encodeName(m_pFolder->path()).constData(), O_RDONLY | O_DIRECTORY);
    QCOMPARE(::flock(iFolder, LOCK_EX), 0);
    const toolkit::FolderLock tLock(m_pFolder->filePath(QStringLiteral("any")));  // goes on by itself
    QVERIFY(toolkit::ReplaceFile(m_pFolder->filePath(QStringLiteral("any")), "saved"));
    ::close(iFolder);
}

void SafeFileTest::permissionsAreKept_data() {
    QTest::addColumn<unsigned>("permissions");
    for (const unsigned e : {0600U, 0640U, 0644U, 0666U}) QTest::addRow("%o", e) << e;
}

void SafeFileTest::permissionsAreKept() {
    QFETCH(unsigned, permissions);
    Write(Path(), Old);
    QCOMPARE(::chmod(QFile::encodeName(Path()).constData(), permissions), 0);
    QVERIFY(Replace(New));
    QCOMPARE(Permissions(Path()), permissions);
    QCOMPARE(Content(Path()), New);
}

void SafeFileTest::linksAreFollowed_data() {
    QTest::addColumn<QString>("link");
    QTest::addColumn<QString>("target");
    QTest::newRow("to a file") << "profile.Ini"
                               << "elsewhere/real.Ini";
    QTest::newRow("to a file that is missing") << "profile.Ini"
                                               << "elsewhere/new.Ini";
    QTest::newRow("to a link") << "profile.Ini"
                               << "elsewhere/second.Ini";
    QTest::newRow("to a folder") << "linked"
                                 << "elsewhere";
}

void SafeFileTest::linksAreFollowed() {
    QFETCH(QString, link);
    QFETCH(QString, target);
    QVERIFY(QDir(m_pFolder->path()).mkdir(QStringLiteral("elsewhere")));
    Write(Path("elsewhere/real.Ini"), Old);
    QVERIFY(QFile::link(QStringLiteral("real.Ini"), Path("elsewhere/second.Ini")));
    const QString sLink = m_pFolder->filePath(link);
    QVERIFY(QFile::link(target, sLink));
    const bool bFolder = link == QLatin1String("linked");
    const QString sPath = bFolder ? sLink + QStringLiteral("/real.Ini") : sLink;
    QVERIFY(toolkit::ReplaceFile(sPath, support::View(New)));
    QCOMPARE(Content(sPath), New);
    QVERIFY(QFileInfo(sLink).isSymLink());
    QCOMPARE(Content(bFolder ? Path("elsewhere/real.Ini") : m_pFolder->filePath(target)), New);
    QCOMPARE(QDir(Path("elsewhere")).entryList(QDir::Files | QDir::Hidden).filter(QStringLiteral(".Ini.")),
             QStringList());
}

void SafeFileTest::diskWithoutRoomLeavesTheOldFile_data() {
    QTest::addColumn<bool>("before");
    QTest::addColumn<int>("room");
    QTest::newRow("no byte") << true << 0;
    QTest::newRow("some bytes") << true << 100;
    QTest::newRow("all but one") << true << int(New.size()) - 1;
    QTest::newRow("no file before") << false << 100;
}

void SafeFileTest::diskWithoutRoomLeavesTheOldFile() {
    QFETCH(bool, before);
    QFETCH(int, room);
    if (before) Write(Path(), Old);
    {
        const FullDisk tFull(static_cast<rlim_t>(room));
        QVERIFY(!Replace(New));
    }
    QCOMPARE(Content(Path()), before ? Old : QByteArray("no file"));
    QCOMPARE(Files().size(), before ? 1 : 0);
    QVERIFY(Replace(New));  // when there is room again
    QCOMPARE(Content(Path()), New);
}

void SafeFileTest::diskThatFailsLeavesTheOldFile_data() {
    QTest::addColumn<int>("error");
    QTest::newRow("medium") << EIO;
    QTest::newRow("room promised and not there") << ENOSPC;
    QTest::newRow("quota") << EDQUOT;
}

void SafeFileTest::diskThatFailsLeavesTheOldFile() {
    QFETCH(int, error);
    Write(Path(), Old);
    iSynchronizationError = error;
    QVERIFY(!Replace(New));
    QCOMPARE(Content(Path()), Old);
    QCOMPARE(Files(), QStringList{QStringLiteral("profile.Ini")});
}

void SafeFileTest::fileSystemWithoutSynchronizationIsWritten() {
    Write(Path(), Old);
    iSynchronizationError = EINVAL;
    QVERIFY(Replace(New));
    QCOMPARE(Content(Path()), New);
}

// The old file might be written in its place, but a failure in the middle of that would cost it.
void SafeFileTest::folderThatTakesNoFileLeavesTheOldFile() {
    Write(Path(), Old);
    QCOMPARE(::chmod(QFile::encodeName(Path()).constData(), 0666), 0);
    QCOMPARE(::chmod(QFile::encodeName(m_pFolder->path()).constData(), 0555), 0);
    const uid_t iUser = ::geteuid();
    if (iUser == 0) QCOMPARE(::seteuid(65534), 0);  // permissions do not bind the superuser
    const bool bDone = Replace(New);
    QCOMPARE(::seteuid(iUser), 0);
    QCOMPARE(::chmod(QFile::encodeName(m_pFolder->path()).constData(), 0755), 0);
    QVERIFY(!bDone);
    QCOMPARE(Content(Path()), Old);
}

void SafeFileTest::folderThatIsMissingIsAFailure() {
    QVERIFY(!toolkit::ReplaceFile(Path("none/profile.Ini"), support::View(New)));
    QVERIFY(!toolkit::ReplaceFile(QString(), support::View(New)));
    QVERIFY(Files().isEmpty());
}

// In a process of its own: only one without threads may ask for the right, and nobody else ever sees the disk.
void SafeFileTest::realFullDiskLeavesTheOldFile() {
    const pid_t iChild = ::fork();
    if (iChild == 0) ::_exit(FillSmallDisk(m_pFolder->path()));
    int iStatus = -1;
    QCOMPARE(::waitpid(iChild, &iStatus, 0), iChild);
    QVERIFY(WIFEXITED(iStatus));
    if (WEXITSTATUS(iStatus) == NoRight) QSKIP("no right to mount here");
    QCOMPARE(WEXITSTATUS(iStatus), 0);
}

QTEST_GUILESS_MAIN(SafeFileTest)
#include "SafeFileTest.moc"
