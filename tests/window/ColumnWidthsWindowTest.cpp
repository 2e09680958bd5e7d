// Columns of the tables set by hand at their header borders, and the whole text of a cell that is cut.
#include <QHeaderView>
#include <QLabel>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTest>

#include "tests/window/Bench.h"
#include "tests/window/Shown.h"

using namespace support;
using toolkit::Grid;

namespace {

using namespace targets;

struct Table : ThreeTargets {
    Grid& grd{grdTargetData};
    Table() {
        resize(1400, 700);
        Choose(4);
    }
    // A detail mode.
    void Choose(int iEntry) {
        ChooseByKeys(cmbTargetDetail, iEntry);
        Synchronize();
    }
    void PointAt(int iRow, int iCol) const { MoveTo(*grd.viewport(), At(iRow, iCol)); }
    QByteArray Tip() const {
        const QLabel& tTip = StatusBar.Tip();
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
    MoveTo(*Header(grd), tFrom, Qt::NoButton);
    QTest::mousePress(Header(grd), Qt::LeftButton, {}, tFrom);
    MoveTo(*Header(grd), tFrom + QPoint(iPixels / 2, 0), Qt::LeftButton);
    MoveTo(*Header(grd), tTo, Qt::LeftButton);
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
    Table t;
    QList<int> iExpected = Templates(t.grd);
    QCOMPARE(Widths(t.grd), iExpected);
    Drag(t.grd, iCol, iPixels);
    iExpected[iCol] += iPixels;
    QCOMPARE(Widths(t.grd), iExpected);
}

void ColumnWidthsWindowTest::draggedWidthSurvivesTraffic() {
    Table t;
    Drag(t.grd, ColMessageId, 90);
    const QList<int> iWidths = Widths(t.grd);
    for (std::uint32_t i = 1; i < 300; i += 10) t.Show({i});
    t.SSTab.SetTab(ui::TabInput);
    t.Show({5000});
    t.SSTab.SetTab(ui::TabTargets);
    t.Show({5001});
    QCOMPARE(Widths(t.grd), iWidths);
}

void ColumnWidthsWindowTest::draggedWidthSurvivesTheNextStart() {
    Table t;
    Drag(t.grd, ColMessageId, 90);
    const QList<int> iWidths = Widths(t.grd);
    t.Press(ui::KeyStop);
    t.Press(ui::KeyStart);
    t.Synchronize();
    QCOMPARE(Widths(t.grd), iWidths);
}

void ColumnWidthsWindowTest::trafficDoesNotDisturbADrag() {
    Table t;
    const Grid& grd = t.grd;
    const QPoint tFrom = BorderOf(grd, ColTime);
    QTest::mousePress(Header(grd), Qt::LeftButton, {}, tFrom);
    for (int i = 1; i <= 40; ++i) {
        MoveTo(*Header(grd), tFrom + QPoint(i, 0), Qt::LeftButton);
        t.Show({static_cast<std::uint32_t>(1000 - i)});
        QCOMPARE(grd.columnWidth(ColTime), grd.TextWidth("-hh:mm:ss-") + i);
    }
    QTest::mouseRelease(Header(grd), Qt::LeftButton, {}, tFrom + QPoint(40, 0));
    QCOMPARE(grd.columnWidth(ColTime), grd.TextWidth("-hh:mm:ss-") + 40);
}

void ColumnWidthsWindowTest::otherDetailBeginsWithTheTemplates() {
    Table t;
    const QList<int> iTemplates = Templates(t.grd);
    Drag(t.grd, ColMmsi, 25);
    Drag(t.grd, ColMiss, 25);
    t.Choose(3);
    QCOMPARE(t.grd.columnWidth(ColMmsi), iTemplates[ColMmsi]);
    QCOMPARE(t.grd.columnWidth(ColMiss), iTemplates[ColMiss]);
    Drag(t.grd, ColMmsi, 25);
    t.Choose(4);
    QCOMPARE(Widths(t.grd), iTemplates);
}

void ColumnWidthsWindowTest::sameDetailKeepsTheWidths() {
    Table t;
    Drag(t.grd, ColMmsi, 25);
    const QList<int> iWidths = Widths(t.grd);
    t.cmbTargetDetail.setFocus();
    t.cmbTargetDetail.SetListIndex(4);
    t.Synchronize();
    QCOMPARE(Widths(t.grd), iWidths);
}

void ColumnWidthsWindowTest::doubleClickAtABorderFits() {
    Table t;
    const Grid& grd = t.grd;
    const QList<int> iTemplates = Templates(grd);
    Fit(grd, ColMessageId);
    const int iText = grd.TextWidth("11=UTC/Date Response");
    QVERIFY(grd.columnWidth(ColMessageId) >= iText);
    QVERIFY(grd.columnWidth(ColMessageId) <= iText + 12);
    QVERIFY(!t.chkTargetTrack.isChecked());
    t.PointAt(2, ColMessageId);
    QCOMPARE(t.Tip(), QByteArray("-"));
    t.Show({5});
    QVERIFY(grd.columnWidth(ColMessageId) >= iText);
    // A wide one gets narrower.
    Drag(grd, ColMmsi, 200);
    Fit(grd, ColMmsi);
    QVERIFY(grd.columnWidth(ColMmsi) < iTemplates[ColMmsi] + 20);
    t.Choose(0);
    QCOMPARE(grd.columnWidth(ColMessageId), iTemplates[ColMessageId]);
}

void ColumnWidthsWindowTest::fittedColumnIsWideEnoughForItsHeader() {
    Table t;
    Fit(t.grd, ColThreshold);  // all empty
    QVERIFY(t.grd.columnWidth(ColThreshold) >= t.grd.TextWidth("Thres"));
}

void ColumnWidthsWindowTest::otherTablesAreSetByHandToo() {
    Table t;
    t.SSTab.SetTab(ui::TabMessages);
    const int iBefore = t.grdMessageData.columnWidth(1);
    Drag(t.grdMessageData, 1, -30);
    Fit(t.grdMessageData, 0);
    const int iFitted = t.grdMessageData.columnWidth(0);
    QVERIFY(iFitted >= t.grdMessageData.TextWidth("11=UTC/Date Response"));
    t.Show({77});
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
    Table t;
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
    Table t;
    Grid& grd = t.grd;
    t.Choose(2);
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
        MoveTo(*Header(grd), tPlace + QPoint(3, 0), Qt::LeftButton);
        QTest::mouseRelease(Header(grd), Qt::LeftButton, {}, tPlace + QPoint(3, 0));
        DoubleClickHeader(grd, tPlace);
        QCOMPARE(tHidden(), iHidden);
    }
    t.Show({40});
    QCOMPARE(tHidden(), iHidden);
}

void ColumnWidthsWindowTest::pointingAtACutCellTellsItsText() {
    Table t;
    t.PointAt(2, ColTime);
    QCOMPARE(t.Tip(), QByteArray("-"));
    t.PointAt(2, ColMessageId);
    QCOMPARE(t.Tip(), QByteArray("11=UTC/Date Response"));
    QCOMPARE(t.grd.toolTip(), QStringLiteral("Message Id"));
    t.PointAt(2, ColChannel);
    QCOMPARE(t.Tip(), QByteArray("-"));
    Drag(t.grd, ColTime, -30);
    t.PointAt(3, ColTime);
    QCOMPARE(t.Tip(), QByteArray("12:00:00"));
}

void ColumnWidthsWindowTest::tipFollowsWhatComesUnderTheMouse() {
    Table t;
    t.PointAt(1, ColMessageId);
    QCOMPARE(t.Tip(), QByteArray("11=UTC/Date Response"));
    t.FeedLine(0, AisSentence(AisOther(15, 1)));  // goes to the top
    t.Synchronize();
    QCOMPARE(t.Tip(), QByteArray("15=Interrogation"));
    // By scrolling.
    for (std::uint32_t i = 100; i < 200; ++i) t.FeedLine(0, AisSentence(AisOther(20, i)));
    t.Synchronize();
    QCOMPARE(t.Tip(), QByteArray("15=Interrogation"));
    t.grdTargetData.verticalScrollBar()->setValue(50 * t.grdTargetData.rowHeight(0));
    QCOMPARE(t.Tip(), QByteArray("20=Data Link Management"));
    // By another detail mode or a wider column.
    t.grdTargetData.setColumnWidth(ColMessageId, 300);
    t.Show({2});
    QCOMPARE(t.Tip(), QByteArray("-"));
    t.Press(ui::KeyStop);
    t.Press(ui::KeyStart);
    t.Synchronize();
    QCOMPARE(t.Tip(), QByteArray("-"));
}

void ColumnWidthsWindowTest::tipGoesWithTheMouse() {
    Table t;
    t.PointAt(1, ColMessageId);
    QVERIFY(t.Tip() != "-");
    QEvent tLeave(QEvent::Leave);
    QCoreApplication::sendEvent(t.grdTargetData.viewport(), &tLeave);
    QCOMPARE(t.Tip(), QByteArray("-"));
    t.Show({1});
    QCOMPARE(t.Tip(), QByteArray("-"));
    t.PointAt(1, ColMessageId);
    QVERIFY(t.Tip() != "-");
    t.SSTab.SetTab(ui::TabInput);  // by the keyboard
    QCOMPARE(t.Tip(), QByteArray("-"));
    t.SSTab.SetTab(ui::TabTargets);
    t.Show({2});
    QCOMPARE(t.Tip(), QByteArray("-"));
    // Below the last row.
    t.PointAt(1, ColMessageId);
    QVERIFY(t.Tip() != "-");
    MoveTo(*t.grdTargetData.viewport(), QPoint(20, t.grdTargetData.viewport()->height() - 3));
    QCOMPARE(t.Tip(), QByteArray("-"));
}

void ColumnWidthsWindowTest::panelsStayInSightBesideATip() {
    Table t;
    t.PointAt(1, ColMessageId);
    QVERIFY(t.Tip() != "-");
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
