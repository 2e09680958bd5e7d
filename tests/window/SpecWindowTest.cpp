// The reporting-rate reference: fourteen rows that never change.
#include <QTest>
#include <array>

#include "tests/window/Bench.h"
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
    void cellsAreAligned();
    void columnsAreAsWideAsTheirTemplates();
    void trafficChangesNothing();
    void allRowsShow();
};

void SpecWindowTest::cellsAreAligned() {
    ShownWindow t;
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
    ShownWindow t;
    t.Synchronize();
    const auto tWidth = [&t](const char* sText) {
        return t.grdSpecData.fontMetrics().horizontalAdvance(QString::fromLatin1(sText));
    };
    QCOMPARE(t.grdSpecData.columnWidth(0), 60 * tWidth("-") + tWidth("--Type of Ship--"));
    QCOMPARE(t.grdSpecData.columnWidth(1), tWidth("---Class A Rates---"));
    QCOMPARE(t.grdSpecData.columnWidth(2), tWidth("---Class B Rates---"));
}

void SpecWindowTest::trafficChangesNothing() {
    ShownWindow t;
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
    ShownWindow t;
    t.SSTab.SetTab(ui::TabSpec);
    t.Synchronize();
    for (int i = 1; i < 14; ++i) QVERIFY(t.grdSpecData.RowHeight(i) > 0);
    QVERIFY(t.grdSpecData.Redraw());
}

QTEST_MAIN(SpecWindowTest)
#include "SpecWindowTest.moc"
