// Clicks on the target table while traffic runs: the row under the mouse at the press is meant, whatever comes.
#include <QTest>

#include "tests/window/Bench.h"
#include "tests/window/Shown.h"

using namespace support;

namespace {

constexpr int Mmsi = 1, Channel = 2;

}  // namespace

class TargetClickWindowTest : public QObject {
    Q_OBJECT
private slots:
    void clickMeansTheRowOfThePress_data();
    void clickMeansTheRowOfThePress();
    void firstPixelLineBelongsToItsRow();
    void secondReleaseOfADoubleClickSelectsNothing();
    void releaseElsewhereSelectsNothing();
    void doubleClickBelowTheRowsTracks();
    void clickMeansTheRowThatWasSeen();
    void clickOnARowThatIsGoneDoesNothing();
};

void TargetClickWindowTest::clickMeansTheRowOfThePress_data() {
    QTest::addColumn<bool>("bShown");
    QTest::addColumn<bool>("bSort");
    QTest::newRow("rows come") << true << false;
    QTest::newRow("rows come before the next beat") << false << false;
    QTest::newRow("sorted") << true << true;
    QTest::newRow("sorted before the next beat") << false << true;
}

// All that can happen between a press and its release: rows come above it, the order changes.
void TargetClickWindowTest::clickMeansTheRowOfThePress() {
    QFETCH(bool, bShown);
    QFETCH(bool, bSort);
    ThreeTargets t;
    const QPoint tPlace = t.At(2, Mmsi);
    QTest::mousePress(t.grdTargetData.viewport(), Qt::LeftButton, {}, tPlace);
    if (bSort) {
        t.txtGpsLat.SetText("00 00.00 N");
        t.txtGpsLon.SetText("000 00.00 E");
        t.FeedLine(0, AisSentence(AisClassA(1, {.lMmsi = 99, .lLongitude = 600000, .lLatitude = 0})));
        t.cmbTargetSort.setFocus();
        t.cmbTargetSort.SetListIndex(1);
        t.grdTargetData.setFocus();
    } else {
        for (const std::uint32_t lMmsi : {5U, 6U, 7U}) t.FeedLine(0, AisSentence(AisOther(11, lMmsi)));
    }
    if (bShown) {
        t.Synchronize();
        QVERIFY(t.At(2, Mmsi) == tPlace);  // another row stands there now
        QVERIFY(Cell(t, 2, Mmsi) != "20");
    }
    t.cmbTargetTarget.SetText("");
    QTest::mouseRelease(t.grdTargetData.viewport(), Qt::LeftButton, {}, tPlace);
    QCOMPARE(t.Selected(), QByteArray("20"));
    const auto [iRow, iCol] = t.grdTargetData.CurrentCell();
    QCOMPARE(Cell(t, iRow, Mmsi), QByteArray("20"));
    QCOMPARE(iCol, Mmsi);
}

// There the tips' inclusive bounds still mean the row above.
void TargetClickWindowTest::firstPixelLineBelongsToItsRow() {
    ThreeTargets t;
    for (int iRow = 1; iRow <= 3; ++iRow) {
        const QPoint tPlace(t.At(iRow, Mmsi).x(), t.grdTargetData.rowViewportPosition(iRow - 1));
        QTest::mouseClick(t.grdTargetData.viewport(), Qt::LeftButton, {}, tPlace);
        QCOMPARE(t.Selected(), Cell(t, iRow, Mmsi));
        std::int32_t lRow = 99, lCol = 99;
        TestWindow::GridGetRowCol(t.grdTargetData, static_cast<float>(t.grdTargetData.ColPos(Mmsi) + 5),
                                  static_cast<float>(t.grdTargetData.RowPos(iRow)), lRow, lCol);
        QCOMPARE(lRow, iRow - 1);
    }
}

void TargetClickWindowTest::secondReleaseOfADoubleClickSelectsNothing() {
    ThreeTargets t;
    QWidget* pViewport = t.grdTargetData.viewport();
    const QPoint tPlace = t.At(3, Mmsi);
    QTest::mousePress(pViewport, Qt::LeftButton, {}, tPlace);
    QTest::mouseRelease(pViewport, Qt::LeftButton, {}, tPlace);
    QCOMPARE(t.Selected(), QByteArray("30"));
    t.FeedLine(0, AisSentence(AisOther(11, 15)));
    t.Synchronize();
    QCOMPARE(Cell(t, 3, Mmsi), QByteArray("20"));
    QTest::mouseDClick(pViewport, Qt::LeftButton, {}, tPlace);
    QTest::mouseRelease(pViewport, Qt::LeftButton, {}, tPlace);
    QCOMPARE(t.Selected(), QByteArray("30"));
    QVERIFY(t.chkTargetTrack.isChecked());
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"30"}));
}

void TargetClickWindowTest::releaseElsewhereSelectsNothing() {
    ThreeTargets t;
    QWidget* pViewport = t.grdTargetData.viewport();
    const QPoint tPlace = t.At(3, Mmsi);
    for (const QPoint tElsewhere : {t.At(1, Mmsi), t.At(3, Channel), QPoint(tPlace.x(), pViewport->height() + 30),
                                    QPoint(tPlace.x(), -40), QPoint(-30, tPlace.y())}) {
        QTest::mousePress(pViewport, Qt::LeftButton, {}, tPlace);
        QTest::mouseRelease(pViewport, Qt::LeftButton, {}, tElsewhere);
        QCOMPARE(t.Selected(), QByteArray("20"));
    }
}

void TargetClickWindowTest::doubleClickBelowTheRowsTracks() {
    ThreeTargets t;
    QWidget* pViewport = t.grdTargetData.viewport();
    QTest::mouseDClick(pViewport, Qt::LeftButton, {}, QPoint(20, pViewport->height() - 3));
    QVERIFY(t.chkTargetTrack.isChecked());
}

// Traffic goes on between two looks of the view.
void TargetClickWindowTest::clickMeansTheRowThatWasSeen() {
    ThreeTargets t;
    for (const std::uint32_t lMmsi : {5U, 6U, 7U}) t.FeedLine(0, AisSentence(AisOther(11, lMmsi)));
    QCOMPARE(t.grdTargetData.model()->rowCount(), 3);  // not yet taken over
    t.ClickOn(3, Mmsi);
    QCOMPARE(t.Selected(), QByteArray("30"));
    QCOMPARE(t.grdTargetData.CurrentCell(), std::make_pair(6, 1));
    t.grdTargetData.setCurrentIndex(t.grdTargetData.model()->index(0, Mmsi));
    t.FeedLine(0, AisSentence(AisOther(11, 1)));
    QTest::keyClick(&t.grdTargetData, Qt::Key_Return);
    QCOMPARE(t.Selected(), QByteArray("10"));
}

void TargetClickWindowTest::clickOnARowThatIsGoneDoesNothing() {
    ThreeTargets t;
    for (std::uint32_t i = 0; i < 256; ++i) t.FeedLine(0, AisSentence(AisOther(11, 500 + i)));
    QCOMPARE(t.grdTargetData.model()->rowCount(), 3);
    t.ClickOn(3, Mmsi);
    QCOMPARE(t.Selected(), QByteArray("20"));
    t.grdTargetData.setCurrentIndex(t.grdTargetData.model()->index(2, Mmsi));
    QTest::keyClick(&t.grdTargetData, Qt::Key_Return);
    QCOMPARE(t.Selected(), QByteArray("20"));
}

QTEST_MAIN(TargetClickWindowTest)
#include "TargetClickWindowTest.moc"
