// Mouse and keyboard on the target table: which cell, selecting and tracking a target, tool-tips.
#include <QHeaderView>
#include <QMouseEvent>
#include <QTest>

#include "tests/window/Bench.h"
#include "tests/window/Shown.h"

using namespace support;

namespace {

constexpr int Mmsi = 1, Channel = 2;

struct Table : ThreeTargets {
    Table() {
        ChooseByKeys(cmbTargetDetail, 4);
        resize(1400, 700);
        QCoreApplication::processEvents();
        Synchronize();
    }
    void DoubleClickOn(int iRow, int iCol) {
        QTest::mouseDClick(grdTargetData.viewport(), Qt::LeftButton, {}, At(iRow, iCol));
    }
    QString TipAt(int iRow, int iCol) {
        if (iRow == 0) {
            QHeaderView* pHeader = grdTargetData.horizontalHeader();
            MoveTo(*pHeader->viewport(), QPoint(pHeader->sectionViewportPosition(iCol) + pHeader->sectionSize(iCol) / 2,
                                                pHeader->height() / 2));
        } else {
            MoveTo(*grdTargetData.viewport(), At(iRow, iCol));
        }
        return grdTargetData.toolTip();
    }
};

}  // namespace

class TargetMouseWindowTest : public QObject {
    Q_OBJECT
private slots:
    void clickOnAnMmsiSelectsIt();
    void clickElsewhereSelectsNothing();
    void clickMakesTheCellCurrent();
    void clickOnTheHeaderDoesNothing();
    void clickUnderTrackingActsAtTheNextMessage();
    void doubleClickSwitchesTrackingOnNeverOff();
    void doubleClickSelectsAndTracks();
    void otherButtonsDoNothing();
    void enterSelectsTheRow();
    void tipTellsTheColumn_data();
    void tipTellsTheColumn();
    void tipOutsideOfAllCellsIsEmpty();
    void tipOfTheHiddenFirstColumnIsEmpty();
    void samePlaceChangesNothing();
    void powerActsAtTheNextMove();
    void placeIsACell();
    void sharedBorderBelongsToTheLowerCell();
    void hiddenRowsTakeNoPlace();
    void placesFollowTheScrolling();
};

void TargetMouseWindowTest::clickOnAnMmsiSelectsIt() {
    Table t;
    QCOMPARE(t.Selected(), QByteArray("20"));
    t.ClickOn(3, Mmsi);
    QCOMPARE(t.Selected(), QByteArray("30"));
    t.ClickOn(1, Mmsi);
    QCOMPARE(t.Selected(), QByteArray("10"));
}

void TargetMouseWindowTest::clickElsewhereSelectsNothing() {
    Table t;
    for (int iCol = 2; iCol < 17; ++iCol) {
        t.ClickOn(3, iCol);
        QCOMPARE(t.Selected(), QByteArray("20"));
    }
    // Below the last row.
    QWidget& tViewport = *t.grdTargetData.viewport();
    QTest::mouseClick(&tViewport, Qt::LeftButton, {}, QPoint(20, tViewport.height() - 3));
    QCOMPARE(t.Selected(), QByteArray("20"));
}

void TargetMouseWindowTest::clickMakesTheCellCurrent() {
    Table t;
    t.ClickOn(2, Mmsi);
    QCOMPARE(t.grdTargetData.CurrentCell(), std::make_pair(2, 1));
    t.ClickOn(3, Channel);
    QCOMPARE(t.grdTargetData.CurrentCell(), std::make_pair(2, 1));
}

void TargetMouseWindowTest::clickOnTheHeaderDoesNothing() {
    Table t;
    QHeaderView* pHeader = t.grdTargetData.horizontalHeader();
    QTest::mouseClick(pHeader->viewport(), Qt::LeftButton, {},
                      QPoint(pHeader->sectionViewportPosition(Mmsi) + 10, pHeader->height() / 2));
    QCOMPARE(t.Selected(), QByteArray("20"));
    QCOMPARE(Column(t, Mmsi), Texts({"10", "20", "30"}));
}

void TargetMouseWindowTest::clickUnderTrackingActsAtTheNextMessage() {
    Table t;
    t.chkTargetTrack.setChecked(true);
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"20"}));
    t.chkTargetTrack.setChecked(false);
    t.Synchronize();
    t.ClickOn(3, Mmsi);
    QCOMPARE(VisibleColumn(t, Mmsi).size(), 3);
    t.chkTargetTrack.setChecked(true);
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"30"}));
}

void TargetMouseWindowTest::doubleClickSwitchesTrackingOnNeverOff() {
    Table t;
    t.DoubleClickOn(2, Channel);
    QVERIFY(t.chkTargetTrack.isChecked());
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"20"}));
    t.DoubleClickOn(2, Channel);
    QVERIFY(t.chkTargetTrack.isChecked());
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"20"}));
}

void TargetMouseWindowTest::doubleClickSelectsAndTracks() {
    Table t;
    // As a hand does it: a click first, which selects.
    t.ClickOn(3, Mmsi);
    t.DoubleClickOn(3, Mmsi);
    QCOMPARE(t.Selected(), QByteArray("30"));
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"30"}));
}

void TargetMouseWindowTest::otherButtonsDoNothing() {
    Table t;
    QTest::mouseClick(t.grdTargetData.viewport(), Qt::MiddleButton, {}, t.At(3, Mmsi));
    QTest::mouseDClick(t.grdTargetData.viewport(), Qt::MiddleButton, {}, t.At(3, Mmsi));
    QCOMPARE(t.Selected(), QByteArray("20"));
    QVERIFY(!t.chkTargetTrack.isChecked());
}

void TargetMouseWindowTest::enterSelectsTheRow() {
    Table t;
    t.grdTargetData.setFocus();
    t.grdTargetData.setCurrentIndex(t.grdTargetData.model()->index(0, Channel));
    QTest::keyClick(&t.grdTargetData, Qt::Key_Down);
    QTest::keyClick(&t.grdTargetData, Qt::Key_Down);
    QCOMPARE(t.Selected(), QByteArray("20"));
    QTest::keyClick(&t.grdTargetData, Qt::Key_Return);
    QCOMPARE(t.Selected(), QByteArray("30"));
    QTest::keyClick(&t.grdTargetData, Qt::Key_Up);
    QTest::keyClick(&t.grdTargetData, Qt::Key_Up);
    QTest::keyClick(&t.grdTargetData, Qt::Key_Enter);
    QCOMPARE(t.Selected(), QByteArray("10"));
}

void TargetMouseWindowTest::tipTellsTheColumn_data() {
    QTest::addColumn<int>("iCol");
    QTest::addColumn<QString>("sTip");
    QTest::addColumn<QString>("sTipOfPower");
    const auto tRow = [](int iCol, const char* sTip, const char* sTipOfPower = nullptr) {
        QTest::addRow("%d", iCol) << iCol << QString::fromLatin1(sTip)
                                  << QString::fromLatin1(sTipOfPower != nullptr ? sTipOfPower : sTip);
    };
    tRow(1, "Martime Mobile Service Identifier");
    tRow(2, "Channel Id");
    tRow(3, "Signal Level", "Signal Level (dBm)");
    tRow(4, "Threshold Level", "Threshold Level (dBm), default=-107");
    tRow(5, "Signal to Noise Ratio, bigger is better", "Signal to Noise Ratio (dB), bigger is better");
    tRow(6, "Time (hh:mm:ss)");
    tRow(7, "Message Id");
    tRow(8, "Range (nm)");
    tRow(9, "Bearing (T)");
    tRow(10, "Latitude");
    tRow(11, "Longitude");
    tRow(12, "Rate of Turn (deg/min)");
    tRow(13, "Speed Over Ground (kts)");
    tRow(14, "Time Since Last Message (sec)");
    tRow(15, "Specified Message Interval (sec)");
    tRow(16, "Missing Messages");
}

void TargetMouseWindowTest::tipTellsTheColumn() {
    QFETCH(int, iCol);
    QFETCH(QString, sTip);
    QFETCH(QString, sTipOfPower);
    Table t;
    QCOMPARE(t.TipAt(2, iCol), sTip);
    QCOMPARE(t.TipAt(0, iCol), sTip);
    t.chkRxNasaPower.setChecked(true);
    QCOMPARE(t.TipAt(3, iCol), sTipOfPower);
    QCOMPARE(t.TipAt(0, iCol), sTipOfPower);
}

void TargetMouseWindowTest::tipOutsideOfAllCellsIsEmpty() {
    Table t;
    QWidget& tViewport = *t.grdTargetData.viewport();
    QVERIFY(!t.TipAt(1, 2).isEmpty());
    MoveTo(tViewport, QPoint(20, tViewport.height() - 3));
    QCOMPARE(t.grdTargetData.toolTip(), QString());
    QVERIFY(!t.TipAt(1, 2).isEmpty());
    const int iRight = t.grdTargetData.columnViewportPosition(16) + t.grdTargetData.columnWidth(16);
    QVERIFY(iRight + 5 < tViewport.width());
    MoveTo(tViewport, QPoint(iRight + 5, 5));
    QCOMPARE(t.grdTargetData.toolTip(), QString());
}

void TargetMouseWindowTest::tipOfTheHiddenFirstColumnIsEmpty() {
    Table t;
    QCOMPARE(t.TipAt(1, Mmsi), QStringLiteral("Martime Mobile Service Identifier"));
    // Column 0 has no width: it lies on the left border of column 1.
    MoveTo(*t.grdTargetData.viewport(), QPoint(0, t.At(1, Mmsi).y()));
    QCOMPARE(t.grdTargetData.toolTip(), QString());
    MoveTo(*t.grdTargetData.viewport(), QPoint(1, t.At(1, Mmsi).y()));
    QCOMPARE(t.grdTargetData.toolTip(), QStringLiteral("Martime Mobile Service Identifier"));
}

void TargetMouseWindowTest::samePlaceChangesNothing() {
    Table t;
    QCOMPARE(t.TipAt(1, 6), QStringLiteral("Time (hh:mm:ss)"));
    t.grdTargetData.setToolTip(QStringLiteral("untouched"));
    QCOMPARE(t.TipAt(1, 6), QStringLiteral("untouched"));
    QCOMPARE(t.TipAt(2, 6), QStringLiteral("Time (hh:mm:ss)"));
    const QPoint tPlace = t.grdTargetData.viewport()->mapTo(&t.grdTargetData, t.At(2, 6));
    QCOMPARE(QPointF(static_cast<double>(t.m_fLastMouseX), static_cast<double>(t.m_fLastMouseY)), QPointF(tPlace));
}

void TargetMouseWindowTest::powerActsAtTheNextMove() {
    Table t;
    QCOMPARE(t.TipAt(1, 3), QStringLiteral("Signal Level"));
    t.chkRxNasaPower.setChecked(true);
    QCOMPARE(t.grdTargetData.toolTip(), QStringLiteral("Signal Level"));
    QCOMPARE(t.TipAt(2, 3), QStringLiteral("Signal Level (dBm)"));
    t.chkRxNasaPower.setChecked(false);
    QCOMPARE(t.TipAt(1, 3), QStringLiteral("Signal Level"));
}

void TargetMouseWindowTest::placeIsACell() {
    Table t;
    const toolkit::Grid& grd = t.grdTargetData;
    for (int iRow = 0; iRow <= 3; ++iRow) {
        for (int iCol = 1; iCol < 17; ++iCol) {
            std::int32_t lRow = 99, lCol = 99;
            const float fX = static_cast<float>(grd.ColPos(iCol)) + static_cast<float>(grd.ColWidth(iCol)) / 2;
            const float fY = static_cast<float>(grd.RowPos(iRow)) + static_cast<float>(grd.RowHeight(iRow)) / 2;
            TestWindow::GridGetRowCol(grd, fX, fY, lRow, lCol);
            QCOMPARE(lRow, iRow);
            QCOMPARE(lCol, iCol);
        }
    }
    std::int32_t lRow = 99, lCol = 99;
    TestWindow::GridGetRowCol(grd, -5, -5, lRow, lCol);
    QCOMPARE(lRow, -1);
    QCOMPARE(lCol, -1);
    TestWindow::GridGetRowCol(grd, 1e6F, 1e6F, lRow, lCol);
    QCOMPARE(lRow, -1);
    QCOMPARE(lCol, -1);
    TestWindow::GridGetRowCol(grd, static_cast<float>(grd.ColPos(5)) + 2, 1e6F, lRow, lCol);
    QCOMPARE(lRow, -1);
    QCOMPARE(lCol, 5);
}

void TargetMouseWindowTest::sharedBorderBelongsToTheLowerCell() {
    Table t;
    const toolkit::Grid& grd = t.grdTargetData;
    const auto tCell = [&grd](float fX, float fY) {
        std::int32_t lRow = 99, lCol = 99;
        TestWindow::GridGetRowCol(grd, fX, fY, lRow, lCol);
        return std::make_pair(lRow, lCol);
    };
    const auto fX = static_cast<float>(grd.ColPos(4)), fY = static_cast<float>(grd.RowPos(2));
    QCOMPARE(grd.ColPos(3) + grd.ColWidth(3), grd.ColPos(4));
    QCOMPARE(grd.RowPos(1) + grd.RowHeight(1), grd.RowPos(2));
    QCOMPARE(tCell(fX, fY), std::make_pair(1, 3));
    QCOMPARE(tCell(fX + 0.5F, fY + 0.5F), std::make_pair(2, 4));
    QCOMPARE(tCell(fX - 0.5F, fY - 0.5F), std::make_pair(1, 3));
    // The header's lower border, and the outer ones, which belong to the table.
    QCOMPARE(tCell(fX + 1, static_cast<float>(grd.RowPos(1))), std::make_pair(0, 4));
    QCOMPARE(tCell(static_cast<float>(grd.ColPos(0)), static_cast<float>(grd.RowPos(0))), std::make_pair(0, 0));
    QCOMPARE(tCell(static_cast<float>(grd.ColPos(16) + grd.ColWidth(16)),
                   static_cast<float>(grd.RowPos(3) + grd.RowHeight(3))),
             std::make_pair(3, 16));
}

void TargetMouseWindowTest::hiddenRowsTakeNoPlace() {
    Table t;
    t.cmbTargetTarget.SetText("30");
    t.chkTargetTrack.setChecked(true);
    t.Synchronize();
    QCOMPARE(t.grdTargetData.RowHeight(1), 0);
    QCOMPARE(t.grdTargetData.RowHeight(2), 0);
    t.ClickOn(3, Mmsi);
    QCOMPARE(t.grdTargetData.CurrentCell(), std::make_pair(3, 1));
    QCOMPARE(t.Selected(), QByteArray("30"));
}

void TargetMouseWindowTest::placesFollowTheScrolling() {
    Table t;
    for (std::uint32_t i = 100; i < 300; ++i) t.FeedLine(0, AisSentence(AisOther(11, i)));
    t.Synchronize();
    t.grdTargetData.scrollTo(t.grdTargetData.model()->index(150, 1), QAbstractItemView::PositionAtTop);
    t.ClickOn(153, Mmsi);
    QCOMPARE(t.Selected(), Cell(t, 153, Mmsi));
}

QTEST_MAIN(TargetMouseWindowTest)
#include "TargetMouseWindowTest.moc"
