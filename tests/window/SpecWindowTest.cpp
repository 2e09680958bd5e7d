// The reporting-rate reference: fourteen rows that never change.
#include <QTest>
#include <array>

#include "tests/support/AisEncoder.h"
#include "tests/window/Shown.h"

using namespace support;

namespace {

QStringList RowOf(TestWindow& t, int iRow) {
    QStringList sRow;
    for (int iCol = 0; iCol < 3; ++iCol) sRow << QString::fromLatin1(Bytes(t.Cell(t.grdSpecData, iRow, iCol)));
    return sRow;
}

}  // namespace

class SpecWindowTest : public QObject {
    Q_OBJECT
private slots:
    void rowsAreAsListed_data();
    void rowsAreAsListed();
    void cellsAreAligned();
    void columnsAreAsWideAsTheirTemplates();
    void trafficChangesNothing();
    void allRowsShow();
};

void SpecWindowTest::rowsAreAsListed_data() {
    QTest::addColumn<int>("iRow");
    QTest::addColumn<QStringList>("sRow");
    const auto tRow = [](int iRow, const char* sType, const char* sClassA, const char* sClassB) {
        QTest::addRow("%d", iRow) << iRow << Texts({sType, sClassA, sClassB});
    };
    tRow(0, "Type of Ship", "Class A Rates", "Class B Rates");
    tRow(1, "Ship at Anchor", "180 sec", "180 sec");
    tRow(2, "", "", "");
    tRow(3, "Ship 0-14 knots", "10 sec", "30 sec");
    tRow(4, "Ship 0-14 knots and Changing Course", "3 sec", "30 sec");
    tRow(5, "Ship 14-23 knots", "6 sec", "15 sec");
    tRow(6, "Ship 14-23 knots and Changing Course", "2 sec", "15 sec");
    tRow(7, "Ship >23 knots", "2 sec", "5 sec");
    tRow(8, "Ship >23 knots and Changing Course", "2 sec", "5 sec");
    tRow(9, "", "", "");
    tRow(10, "Static Information", "360 sec", "");
    tRow(11, "Voyage Related Information", "360 sec", "");
    tRow(12, "", "", "");
    tRow(13, "Mssage Type", "1,2,3,4,5,11,21", "18,19,24");
}

void SpecWindowTest::rowsAreAsListed() {
    QFETCH(int, iRow);
    QFETCH(QStringList, sRow);
    World tWorld;
    TestWindow t(tWorld);
    t.LoadAndShow();
    QCOMPARE(RowOf(t, iRow), sRow);
    QCOMPARE(t.grdSpecData.Cells.Rows(), 14);
    QCOMPARE(t.grdSpecData.Cells.Cols(), 3);
}

void SpecWindowTest::cellsAreAligned() {
    World tWorld;
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.Synchronize();
    for (int iRow = 0; iRow < 14; ++iRow) {
        for (int iCol = 0; iCol < 3; ++iCol) {
            const QVariant tShown = iRow == 0
                                        ? t.grdSpecData.model()->headerData(iCol, Qt::Horizontal, Qt::TextAlignmentRole)
                                        : t.grdSpecData.model()->index(iRow - 1, iCol).data(Qt::TextAlignmentRole);
            const Qt::Alignment eExpected =
                iRow > 0 && iCol == 0 ? Qt::AlignLeft | Qt::AlignVCenter : Qt::Alignment(Qt::AlignCenter);
            QCOMPARE(tShown.value<Qt::Alignment>(), eExpected);
        }
    }
}

void SpecWindowTest::columnsAreAsWideAsTheirTemplates() {
    World tWorld;
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.Synchronize();
    const auto tWidth = [&t](const char* sText) {
        return t.grdSpecData.fontMetrics().horizontalAdvance(QString::fromLatin1(sText));
    };
    QCOMPARE(t.grdSpecData.columnWidth(0), 60 * tWidth("-") + tWidth("--Type of Ship--"));
    QCOMPARE(t.grdSpecData.columnWidth(1), tWidth("---Class A Rates---"));
    QCOMPARE(t.grdSpecData.columnWidth(2), tWidth("---Class B Rates---"));
}

void SpecWindowTest::trafficChangesNothing() {
    World tWorld;
    TestWindow t(tWorld);
    t.LoadAndShow();
    QList<QStringList> sBefore, sAfter;
    for (int i = 0; i < 14; ++i) sBefore << RowOf(t, i);
    t.StartBoth();
    for (int i = 0; i < 64; ++i) t.FeedLine(0, AisSentence(AisOther(i, 7)));
    t.Press(ui::KeyStop);
    t.Press(ui::KeyStart);
    for (int i = 0; i < 14; ++i) sAfter << RowOf(t, i);
    QCOMPARE(sAfter, sBefore);
}

void SpecWindowTest::allRowsShow() {
    World tWorld;
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.SSTab.SetTab(ui::TabSpec);
    t.Synchronize();
    for (int i = 1; i < 14; ++i) QVERIFY(t.grdSpecData.RowHeight(i) > 0);
    QVERIFY(t.grdSpecData.Redraw());
}

QTEST_MAIN(SpecWindowTest)
#include "SpecWindowTest.moc"
