// Columns of the tables set by hand at their header borders, and the whole text of a cell that is cut.
#include <QHeaderView>
#include <QLabel>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTest>

#include "tests/support/AisEncoder.h"
#include "tests/window/Shown.h"

using namespace support;
using toolkit::Grid;

namespace {

using namespace targets;

void Move(QWidget* pWidget, QPoint tPlace, Qt::MouseButtons eButtons) {
    QMouseEvent tEvent(QEvent::MouseMove, tPlace, pWidget->mapToGlobal(tPlace), Qt::NoButton, eButtons, {});
    QCoreApplication::sendEvent(pWidget, &tEvent);
}

struct Listening {
    World tWorld;
    TestWindow t{tWorld};
    Grid& grd{t.grdTargetData};
    Listening() {
        t.LoadAndShow();
        t.SSTab.SetTab(ui::TabTargets);
        t.StartBoth();
        t.resize(1400, 700);
        Choose(4);
        for (const std::uint32_t lMmsi : {20U, 10U, 30U}) Hear(lMmsi);
    }
    void Hear(std::uint32_t lMmsi) {
        t.FeedLine(0, AisSentence(AisOther(11, lMmsi)));
        t.Synchronize();
    }
    // A detail mode, by the arrow keys.
    void Choose(int iEntry) {
        t.cmbTargetDetail.setFocus();
        while (t.cmbTargetDetail.ListIndex() < iEntry) QTest::keyClick(&t.cmbTargetDetail, Qt::Key_Down);
        while (t.cmbTargetDetail.ListIndex() > iEntry) QTest::keyClick(&t.cmbTargetDetail, Qt::Key_Up);
        t.Synchronize();
    }
    QPoint At(int iRow, int iCol) const { return grd.visualRect(grd.model()->index(iRow - 1, iCol)).center(); }
    void PointAt(int iRow, int iCol) const { Move(grd.viewport(), At(iRow, iCol), Qt::NoButton); }
    QByteArray Tip() const {
        const QLabel& tTip = t.StatusBar.Tip();
        return tTip.isVisible() ? tTip.text().toLatin1() : QByteArray("-");
    }
};

QWidget* Header(const Grid& grd) { return grd.horizontalHeader()->viewport(); }

// The right border of a column in the header, just inside of it.
QPoint BorderOf(const Grid& grd, int iCol) {
    const QHeaderView& tHeader = *grd.horizontalHeader();
    return {tHeader.sectionViewportPosition(iCol) + tHeader.sectionSize(iCol) - 2, tHeader.height() / 2};
}

void Drag(const Grid& grd, int iCol, int iPixels) {
    const QPoint tFrom = BorderOf(grd, iCol);
    const QPoint tTo = tFrom + QPoint(iPixels, 0);
    Move(Header(grd), tFrom, Qt::NoButton);
    QTest::mousePress(Header(grd), Qt::LeftButton, {}, tFrom);
    Move(Header(grd), tFrom + QPoint(iPixels / 2, 0), Qt::LeftButton);
    Move(Header(grd), tTo, Qt::LeftButton);
    QTest::mouseRelease(Header(grd), Qt::LeftButton, {}, tTo);
}

// As a hand does it: click, second press, second release.
void DoubleClickHeader(const Grid& grd, QPoint tPlace) {
    QTest::mouseClick(Header(grd), Qt::LeftButton, {}, tPlace);
    QTest::mouseDClick(Header(grd), Qt::LeftButton, {}, tPlace);
    QTest::mouseRelease(Header(grd), Qt::LeftButton, {}, tPlace);
}
void Fit(const Grid& grd, int iCol) { DoubleClickHeader(grd, BorderOf(grd, iCol)); }

QList<int> Widths(const Grid& grd) {
    QList<int> iWidths;
    for (int i = 0; i < grd.model()->columnCount(); ++i) iWidths << grd.ColWidth(i);
    return iWidths;
}

// The columns that a table starts with, by the table of templates.
QList<int> Templates(const Grid& grd) {
    QList<int> iWidths;
    for (const TargetColumnDesign& t : TargetColumns) iWidths << grd.TextWidth(t.sTemplate);
    return iWidths;
}

}  // namespace

class ColumnWidthsWindowTest : public QObject {
    Q_OBJECT
private slots:
    void columnIsDragged_data();
    void columnIsDragged();
    void draggedWidthSurvivesTraffic();
    void draggedWidthSurvivesTheNextStart();
    void trafficDoesNotDisturbADrag();
    void otherDetailBeginsWithTheTemplates();
    void sameDetailKeepsTheWidths();
    void doubleClickAtABorderFits();
    void fittedColumnIsWideEnoughForItsHeader();
    void otherTablesAreSetByHandToo();
    void headerNeverSelectsNorTracks();
    void hiddenColumnsStayHidden();
    void pointingAtACutCellTellsItsText();
    void tipFollowsWhatComesUnderTheMouse();
    void tipGoesWithTheMouse();
    void panelsStayInSightBesideATip();
};

void ColumnWidthsWindowTest::columnIsDragged_data() {
    QTest::addColumn<int>("iCol");
    QTest::addColumn<int>("iPixels");
    QTest::newRow("wider") << int{ColMmsi} << 25;
    QTest::newRow("narrower") << int{ColTime} << -20;
    QTest::newRow("the narrowest") << int{ColMessageId} << 60;
    QTest::newRow("the last") << int{ColMiss} << 30;
}

void ColumnWidthsWindowTest::columnIsDragged() {
    QFETCH(int, iCol);
    QFETCH(int, iPixels);
    Listening tListening;
    QList<int> iExpected = Templates(tListening.grd);
    QCOMPARE(Widths(tListening.grd), iExpected);
    Drag(tListening.grd, iCol, iPixels);
    iExpected[iCol] += iPixels;
    QCOMPARE(Widths(tListening.grd), iExpected);
}

void ColumnWidthsWindowTest::draggedWidthSurvivesTraffic() {
    Listening tListening;
    Drag(tListening.grd, ColMessageId, 90);
    const QList<int> iWidths = Widths(tListening.grd);
    for (std::uint32_t i = 1; i < 300; i += 10) tListening.Hear(i);
    tListening.t.SSTab.SetTab(ui::TabInput);
    tListening.Hear(5000);
    tListening.t.SSTab.SetTab(ui::TabTargets);
    tListening.Hear(5001);
    QCOMPARE(Widths(tListening.grd), iWidths);
}

void ColumnWidthsWindowTest::draggedWidthSurvivesTheNextStart() {
    Listening tListening;
    Drag(tListening.grd, ColMessageId, 90);
    const QList<int> iWidths = Widths(tListening.grd);
    tListening.t.Press(ui::KeyStop);
    tListening.t.Press(ui::KeyStart);
    tListening.t.Synchronize();
    QCOMPARE(Widths(tListening.grd), iWidths);
}

void ColumnWidthsWindowTest::trafficDoesNotDisturbADrag() {
    Listening tListening;
    const Grid& grd = tListening.grd;
    const QPoint tFrom = BorderOf(grd, ColTime);
    QTest::mousePress(Header(grd), Qt::LeftButton, {}, tFrom);
    for (int i = 1; i <= 40; ++i) {
        Move(Header(grd), tFrom + QPoint(i, 0), Qt::LeftButton);
        tListening.Hear(static_cast<std::uint32_t>(1000 - i));
        QCOMPARE(grd.columnWidth(ColTime), grd.TextWidth("-hh:mm:ss-") + i);
    }
    QTest::mouseRelease(Header(grd), Qt::LeftButton, {}, tFrom + QPoint(40, 0));
    QCOMPARE(grd.columnWidth(ColTime), grd.TextWidth("-hh:mm:ss-") + 40);
}

void ColumnWidthsWindowTest::otherDetailBeginsWithTheTemplates() {
    Listening tListening;
    const QList<int> iTemplates = Templates(tListening.grd);
    Drag(tListening.grd, ColMmsi, 25);
    Drag(tListening.grd, ColMiss, 25);
    tListening.Choose(3);
    QCOMPARE(tListening.grd.columnWidth(ColMmsi), iTemplates[ColMmsi]);
    QCOMPARE(tListening.grd.columnWidth(ColMiss), iTemplates[ColMiss]);
    Drag(tListening.grd, ColMmsi, 25);
    tListening.Choose(4);
    QCOMPARE(Widths(tListening.grd), iTemplates);
}

void ColumnWidthsWindowTest::sameDetailKeepsTheWidths() {
    Listening tListening;
    Drag(tListening.grd, ColMmsi, 25);
    const QList<int> iWidths = Widths(tListening.grd);
    tListening.t.cmbTargetDetail.setFocus();
    tListening.t.cmbTargetDetail.SetListIndex(4);
    tListening.t.Synchronize();
    QCOMPARE(Widths(tListening.grd), iWidths);
}

void ColumnWidthsWindowTest::doubleClickAtABorderFits() {
    Listening tListening;
    const Grid& grd = tListening.grd;
    const QList<int> iTemplates = Templates(grd);
    Fit(grd, ColMessageId);
    const int iText = grd.TextWidth("11=UTC/Date Response");
    QVERIFY(grd.columnWidth(ColMessageId) >= iText);
    QVERIFY(grd.columnWidth(ColMessageId) <= iText + 12);
    QVERIFY(!tListening.t.chkTargetTrack.isChecked());
    tListening.PointAt(2, ColMessageId);
    QCOMPARE(tListening.Tip(), QByteArray("-"));
    tListening.Hear(5);
    QVERIFY(grd.columnWidth(ColMessageId) >= iText);
    // A wide one gets narrower.
    Drag(grd, ColMmsi, 200);
    Fit(grd, ColMmsi);
    QVERIFY(grd.columnWidth(ColMmsi) < iTemplates[ColMmsi] + 20);
    tListening.Choose(0);
    QCOMPARE(grd.columnWidth(ColMessageId), iTemplates[ColMessageId]);
}

void ColumnWidthsWindowTest::fittedColumnIsWideEnoughForItsHeader() {
    Listening tListening;
    Fit(tListening.grd, ColThreshold);  // all empty
    QVERIFY(tListening.grd.columnWidth(ColThreshold) >= tListening.grd.TextWidth("Thres"));
}

void ColumnWidthsWindowTest::otherTablesAreSetByHandToo() {
    Listening tListening;
    TestWindow& t = tListening.t;
    t.SSTab.SetTab(ui::TabMessages);
    const int iBefore = t.grdMessageData.columnWidth(1);
    Drag(t.grdMessageData, 1, -30);
    Fit(t.grdMessageData, 0);
    const int iFitted = t.grdMessageData.columnWidth(0);
    QVERIFY(iFitted >= t.grdMessageData.TextWidth("11=UTC/Date Response"));
    tListening.Hear(77);
    t.Press(ui::KeyStop);
    t.Press(ui::KeyStart);
    t.Synchronize();
    QCOMPARE(t.grdMessageData.columnWidth(0), iFitted);
    QCOMPARE(t.grdMessageData.columnWidth(1), iBefore - 30);
    t.SSTab.SetTab(ui::TabSpec);
    Fit(t.grdSpecData, 0);
    const int iText = t.grdSpecData.TextWidth("Ship 14-23 knots and Changing Course");
    QVERIFY(t.grdSpecData.columnWidth(0) >= iText && t.grdSpecData.columnWidth(0) < iText + 20);
    Drag(t.grdSpecData, 2, 40);
    QCOMPARE(t.grdSpecData.columnWidth(2), t.grdSpecData.TextWidth("---Class B Rates---") + 40);
}

void ColumnWidthsWindowTest::headerNeverSelectsNorTracks() {
    Listening tListening;
    TestWindow& t = tListening.t;
    QCOMPARE(t.cmbTargetTarget.currentText(), QStringLiteral("20"));
    const auto tCurrent = t.grdTargetData.CurrentCell();
    for (int iCol = 1; iCol < TargetColumnCount; ++iCol) {
        Drag(t.grdTargetData, iCol, 10);
        DoubleClickHeader(t.grdTargetData, BorderOf(t.grdTargetData, iCol) - QPoint(10, 0));
        Fit(t.grdTargetData, iCol);
        t.Synchronize();
        QCOMPARE(t.cmbTargetTarget.currentText(), QStringLiteral("20"));
        QVERIFY(!t.chkTargetTrack.isChecked());
    }
    QCOMPARE(t.grdTargetData.CurrentCell(), tCurrent);
    QCOMPARE(Column(t, ColMmsi), Texts({"10", "20", "30"}));
}

void ColumnWidthsWindowTest::hiddenColumnsStayHidden() {
    Listening tListening;
    Grid& grd = tListening.grd;
    tListening.Choose(2);
    const auto tHidden = [&grd] {
        QList<int> iHidden;
        for (int i = 0; i < TargetColumnCount; ++i) {
            if (grd.ColWidth(i) == 0) iHidden << i;
        }
        return iHidden;
    };
    const QList<int> iHidden = {ColNumber, ColLatitude, ColLongitude, ColLast, ColSpec, ColMiss};
    QCOMPARE(tHidden(), iHidden);
    for (int x = 0; x < grd.viewport()->width(); x += 2) {
        const QPoint tPlace(x, 5);
        QTest::mousePress(Header(grd), Qt::LeftButton, {}, tPlace);
        Move(Header(grd), tPlace + QPoint(3, 0), Qt::LeftButton);
        QTest::mouseRelease(Header(grd), Qt::LeftButton, {}, tPlace + QPoint(3, 0));
        DoubleClickHeader(grd, tPlace);
        QCOMPARE(tHidden(), iHidden);
    }
    tListening.Hear(40);
    QCOMPARE(tHidden(), iHidden);
}

void ColumnWidthsWindowTest::pointingAtACutCellTellsItsText() {
    Listening tListening;
    tListening.PointAt(2, ColTime);
    QCOMPARE(tListening.Tip(), QByteArray("-"));
    tListening.PointAt(2, ColMessageId);
    QCOMPARE(tListening.Tip(), QByteArray("11=UTC/Date Response"));
    QCOMPARE(tListening.grd.toolTip(), QStringLiteral("Message Id"));
    tListening.PointAt(2, ColChannel);
    QCOMPARE(tListening.Tip(), QByteArray("-"));
    Drag(tListening.grd, ColTime, -30);
    tListening.PointAt(3, ColTime);
    QCOMPARE(tListening.Tip(), QByteArray("12:00:00"));
}

void ColumnWidthsWindowTest::tipFollowsWhatComesUnderTheMouse() {
    Listening tListening;
    TestWindow& t = tListening.t;
    tListening.PointAt(1, ColMessageId);
    QCOMPARE(tListening.Tip(), QByteArray("11=UTC/Date Response"));
    t.FeedLine(0, AisSentence(AisOther(15, 1)));  // goes to the top
    t.Synchronize();
    QCOMPARE(tListening.Tip(), QByteArray("15=Interrogation"));
    // By scrolling.
    for (std::uint32_t i = 100; i < 200; ++i) t.FeedLine(0, AisSentence(AisOther(20, i)));
    t.Synchronize();
    QCOMPARE(tListening.Tip(), QByteArray("15=Interrogation"));
    t.grdTargetData.verticalScrollBar()->setValue(50 * t.grdTargetData.rowHeight(0));
    QCOMPARE(tListening.Tip(), QByteArray("20=Data Link Management"));
    // By another detail mode or a wider column.
    t.grdTargetData.setColumnWidth(ColMessageId, 300);
    tListening.Hear(2);
    QCOMPARE(tListening.Tip(), QByteArray("-"));
    t.Press(ui::KeyStop);
    t.Press(ui::KeyStart);
    t.Synchronize();
    QCOMPARE(tListening.Tip(), QByteArray("-"));
}

void ColumnWidthsWindowTest::tipGoesWithTheMouse() {
    Listening tListening;
    TestWindow& t = tListening.t;
    tListening.PointAt(1, ColMessageId);
    QVERIFY(tListening.Tip() != "-");
    QEvent tLeave(QEvent::Leave);
    QCoreApplication::sendEvent(t.grdTargetData.viewport(), &tLeave);
    QCOMPARE(tListening.Tip(), QByteArray("-"));
    tListening.Hear(1);
    QCOMPARE(tListening.Tip(), QByteArray("-"));
    tListening.PointAt(1, ColMessageId);
    QVERIFY(tListening.Tip() != "-");
    t.SSTab.SetTab(ui::TabInput);  // by the keyboard
    QCOMPARE(tListening.Tip(), QByteArray("-"));
    t.SSTab.SetTab(ui::TabTargets);
    tListening.Hear(2);
    QCOMPARE(tListening.Tip(), QByteArray("-"));
    // Below the last row.
    tListening.PointAt(1, ColMessageId);
    QVERIFY(tListening.Tip() != "-");
    Move(t.grdTargetData.viewport(), QPoint(20, t.grdTargetData.viewport()->height() - 3), Qt::NoButton);
    QCOMPARE(tListening.Tip(), QByteArray("-"));
}

void ColumnWidthsWindowTest::panelsStayInSightBesideATip() {
    Listening tListening;
    TestWindow& t = tListening.t;
    tListening.PointAt(1, ColMessageId);
    QVERIFY(tListening.Tip() != "-");
    t.Advance(1);
    t.FeedLine(0, "$GPGLL,4916.45,N,12311.12,W,225444,A*00");
    t.Synchronize();
    QCoreApplication::processEvents();
    const std::vector<std::string> sTexts = {"Running", "Checksum Error", "00:00", "00:01", "12:00:01"};
    for (int i = 1; i <= 5; ++i) {
        const QLabel& tPanel = t.StatusBar.Panel(i);
        QVERIFY(tPanel.isVisible());
        QCOMPARE(Panel(t, i), Bytes(sTexts[static_cast<std::size_t>(i - 1)]));
        QVERIFY(tPanel.width() >= tPanel.fontMetrics().horizontalAdvance(tPanel.text()));
        QVERIFY(!tPanel.geometry().intersects(t.StatusBar.Tip().geometry()));
    }
}

QTEST_MAIN(ColumnWidthsWindowTest)
#include "ColumnWidthsWindowTest.moc"
