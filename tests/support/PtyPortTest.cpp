// The pseudo-terminals of the tests themselves: several test programs run at once and share the system's numbers.
#include "tests/support/PtyPort.h"

#include <QFileInfo>
#include <QTest>
#include <list>

using support::PtyPort;

class PtyPortTest : public QObject {
    Q_OBJECT
private slots:
    void NumberOfAVanishedDeviceIsGivenToNobody();
    void ReturnsAsAnotherDevice();
};

void PtyPortTest::NumberOfAVanishedDeviceIsGivenToNobody() {
    PtyPort tPty;
    const QString sDevice = tPty.Device();
    QVERIFY(QFileInfo::exists(sDevice));
    tPty.HangUp();
    QVERIFY(!QFileInfo::exists(sDevice));
    std::list<PtyPort> tOthers;
    for (int i = 0; i < 30; ++i) QVERIFY(tOthers.emplace_back().Device() != sDevice);
    QVERIFY(!QFileInfo::exists(sDevice));
}

void PtyPortTest::ReturnsAsAnotherDevice() {
    PtyPort tPty;
    for (int i = 0; i < 30; ++i) {
        const QString sFormer = tPty.Device();
        tPty.HangUp();
        QVERIFY(!tPty.Exists());
        tPty.Recreate();
        QVERIFY(tPty.Exists());
        QVERIFY(tPty.Device() != sFormer);
        QCOMPARE(QFileInfo(tPty.Link()).canonicalFilePath(), tPty.Device());
    }
}

QTEST_GUILESS_MAIN(PtyPortTest)
#include "PtyPortTest.moc"
