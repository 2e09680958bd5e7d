// The room of a real disk, against the standard library's answer.
#include "platform/runtime/DiskRoom.h"

#include <QTemporaryDir>
#include <QTest>
#include <filesystem>

using runtime::RoomOfDisk;

class DiskRoomTest : public QObject {
    Q_OBJECT

private slots:
    void roomIsThatOfTheDisk();
    void missingFolderHasNone();
    void whatIsNoDiskHasNone();
};

void DiskRoomTest::roomIsThatOfTheDisk() {
    const QTemporaryDir tFolder;
    const auto t = RoomOfDisk(tFolder.path().toStdString());
    QVERIFY(t);
    QCOMPARE(t->lWhole, static_cast<std::int64_t>(std::filesystem::space(tFolder.path().toStdString()).capacity));
    QVERIFY(t->lFree >= 0 && t->lFree <= t->lWhole);
}

void DiskRoomTest::missingFolderHasNone() { QVERIFY(!RoomOfDisk("/nowhere/at/all")); }

void DiskRoomTest::whatIsNoDiskHasNone() { QVERIFY(!RoomOfDisk("/proc")); }

QTEST_GUILESS_MAIN(DiskRoomTest)
#include "DiskRoomTest.moc"
