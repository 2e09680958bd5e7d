// Clicks on the target table while traffic runs: the row under the mouse at the press is meant, whatever comes.
#include <QTest>

#include "tests/support/AisEncoder.h"
#include "tests/window/Shown.h"

using namespace support;

namespace {

constexpr int Mmsi = 1, Channel = 2;

struct Listening {
    World tWorld;
    TestWindow t{tWorld};
    Listening() {
        t.LoadAndShow();
        t.SSTab.SetTab(ui::TabTargets);
        t.StartBoth();
        for (const std::uint32_t lMmsi : {20U, 10U, 30U}) t.FeedLine(0, AisSentence(AisOther(11, lMmsi)));
        t.Synchronize();
    }
    QPoint At(int iRow, int iCol) {
        return t.grdTargetData.visualRect(t.grdTargetData.model()->index(iRow - 1, iCol)).center();
    }
    void ClickOn(int iRow, int iCol) {
        QTest::mouseClick(t.grdTargetData.viewport(), Qt::LeftButton, {}, At(iRow, iCol));
    }
    QByteArray Selected() {
        t.cmbTargetTarget.Synchronize();
        return t.cmbTargetTarget.currentText().toLatin1();
    }
};

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
    Listening tListening;
    TestWindow& t = tListening.t;
    const QPoint tPlace = tListening.At(2, Mmsi);
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
        QVERIFY(tListening.At(2, Mmsi) == tPlace);  // another row stands there now
        QVERIFY(Cell(t, 2, Mmsi) != "20");
    }
    t.cmbTargetTarget.SetText("");
    QTest::mouseRelease(t.grdTargetData.viewport(), Qt::LeftButton, {}, tPlace);
    QCOMPARE(tListening.Selected(), QByteArray("20"));
    const auto [iRow, iCol] = t.grdTargetData.CurrentCell();
    QCOMPARE(Cell(t, iRow, Mmsi), QByteArray("20"));
    QCOMPARE(iCol, Mmsi);
}

// There the tips' inclusive bounds still mean the row above.
void TargetClickWindowTest::firstPixelLineBelongsToItsRow() {
    Listening tListening;
    TestWindow& t = tListening.t;
    for (int iRow = 1; iRow <= 3; ++iRow) {
        const QPoint tPlace(tListening.At(iRow, Mmsi).x(), t.grdTargetData.rowViewportPosition(iRow - 1));
        QTest::mouseClick(t.grdTargetData.viewport(), Qt::LeftButton, {}, tPlace);
        QCOMPARE(tListening.Selected(), Cell(t, iRow, Mmsi));
        std::int32_t lRow = 99, lCol = 99;
        TestWindow::GridGetRowCol(t.grdTargetData, static_cast<float>(t.grdTargetData.ColPos(Mmsi) + 5),
                                  static_cast<float>(t.grdTargetData.RowPos(iRow)), lRow, lCol);
        QCOMPARE(lRow, iRow - 1);
    }
}

void TargetClickWindowTest::secondReleaseOfADoubleClickSelectsNothing() {
    Listening tListening;
    TestWindow& t = tListening.t;
    QWidget* pViewport = t.grdTargetData.viewport();
    const QPoint tPlace = tListening.At(3, Mmsi);
    QTest::mousePress(pViewport, Qt::LeftButton, {}, tPlace);
    QTest::mouseRelease(pViewport, Qt::LeftButton, {}, tPlace);
    QCOMPARE(tListening.Selected(), QByteArray("30"));
    t.FeedLine(0, AisSentence(AisOther(11, 15)));
    t.Synchronize();
    QCOMPARE(Cell(t, 3, Mmsi), QByteArray("20"));
    QTest::mouseDClick(pViewport, Qt::LeftButton, {}, tPlace);
    QTest::mouseRelease(pViewport, Qt::LeftButton, {}, tPlace);
    QCOMPARE(tListening.Selected(), QByteArray("30"));
    QVERIFY(t.chkTargetTrack.isChecked());
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"30"}));
}

void TargetClickWindowTest::releaseElsewhereSelectsNothing() {
    Listening tListening;
    TestWindow& t = tListening.t;
    QWidget* pViewport = t.grdTargetData.viewport();
    const QPoint tPlace = tListening.At(3, Mmsi);
    for (const QPoint tElsewhere :
         {tListening.At(1, Mmsi), tListening.At(3, Channel), QPoint(tPlace.x(), pViewport->height() + 30),
          QPoint(tPlace.x(), -40), QPoint(-30, tPlace.y())}) {
        QTest::mousePress(pViewport, Qt::LeftButton, {}, tPlace);
        QTest::mouseRelease(pViewport, Qt::LeftButton, {}, tElsewhere);
        QCOMPARE(tListening.Selected(), QByteArray("20"));
    }
}

void TargetClickWindowTest::doubleClickBelowTheRowsTracks() {
    Listening tListening;
    QWidget* pViewport = tListening.t.grdTargetData.viewport();
    QTest::mouseDClick(pViewport, Qt::LeftButton, {}, QPoint(20, pViewport->height() - 3));
    QVERIFY(tListening.t.chkTargetTrack.isChecked());
}

// Traffic goes on between two looks of the view.
void TargetClickWindowTest::clickMeansTheRowThatWasSeen() {
    Listening tListening;
    TestWindow& t = tListening.t;
    for (const std::uint32_t lMmsi : {5U, 6U, 7U}) t.FeedLine(0, AisSentence(AisOther(11, lMmsi)));
    QCOMPARE(t.grdTargetData.model()->rowCount(), 3);  // not yet taken over
    tListening.ClickOn(3, Mmsi);
    QCOMPARE(tListening.Selected(), QByteArray("30"));
    QCOMPARE(t.grdTargetData.CurrentCell(), std::make_pair(6, 1));
    t.grdTargetData.setCurrentIndex(t.grdTargetData.model()->index(0, Mmsi));
    t.FeedLine(0, AisSentence(AisOther(11, 1)));
    QTest::keyClick(&t.grdTargetData, Qt::Key_Return);
    QCOMPARE(tListening.Selected(), QByteArray("10"));
}

void TargetClickWindowTest::clickOnARowThatIsGoneDoesNothing() {
    Listening tListening;
    TestWindow& t = tListening.t;
    for (std::uint32_t i = 0; i < 256; ++i) t.FeedLine(0, AisSentence(AisOther(11, 500 + i)));
    QCOMPARE(t.grdTargetData.model()->rowCount(), 3);
    tListening.ClickOn(3, Mmsi);
    QCOMPARE(tListening.Selected(), QByteArray("20"));
    t.grdTargetData.setCurrentIndex(t.grdTargetData.model()->index(2, Mmsi));
    QTest::keyClick(&t.grdTargetData, Qt::Key_Return);
    QCOMPARE(tListening.Selected(), QByteArray("20"));
}

QTEST_MAIN(TargetClickWindowTest)
#include "TargetClickWindowTest.moc"
