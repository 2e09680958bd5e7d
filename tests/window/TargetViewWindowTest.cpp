// How the target table is presented: detail modes, order, tracking, and the user's place while traffic runs.
#include <QAbstractItemModelTester>
#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QGuiApplication>
#include <QScrollBar>
#include <QTest>
#include <algorithm>

#include "tests/window/Bench.h"
#include "tests/window/Shown.h"

using namespace support;

namespace {

constexpr int Number = 0, Mmsi = 1, Channel = 2, Signal = 3, Time = 6, Range = 8;

struct TargetView : Listening {
    TargetView() : Listening(ui::TabTargets) { grdTargetData.setFocus(); }
    // A target so many degrees east of the own position at 0, 0; each is 60 nautical miles.
    void HearAt(std::uint32_t lMmsi, int iDegrees) {
        txtGpsLat.SetText("00 00.00 N");
        txtGpsLon.SetText("000 00.00 E");
        FeedLine(0, AisSentence(AisClassA(1, {.lMmsi = lMmsi, .lLongitude = iDegrees * 600000, .lLatitude = 0})));
    }
    void HearLevel(std::uint32_t lMmsi, int iSignal) {
        Hear(lMmsi);
        FeedLine(0, WithChecksum("$PNMLS," + std::to_string(iSignal) + ",19,3"));
    }
    QStringList Mmsis() { return support::Column(*this, Mmsi); }
    // The numbers of the columns that show.
    QList<int> ShownColumns() {
        Synchronize();
        QList<int> iColumns;
        for (int i = 0; i < 17; ++i) {
            if (!grdTargetData.isColumnHidden(i) && grdTargetData.ColWidth(i) > 0) iColumns << i;
        }
        return iColumns;
    }
    void ToggleTrack() {
        QTest::mouseClick(&chkTargetTrack, Qt::LeftButton, {}, QPoint(8, chkTargetTrack.height() / 2));
    }
};

const QList<int> Always = {1, 2, 3, 4, 5, 6, 7, 8, 9};

}  // namespace

class TargetViewWindowTest : public QObject {
    Q_OBJECT
private slots:
    void controlsAreEnabledInARun();
    void detailModeShowsItsColumns_data();
    void detailModeShowsItsColumns();
    void unknownDetailShowsLikeNone();
    void detailActsOnlyWithTheFocus();
    void hiddenColumnsKeepTheirHeaders();
    void sortedByMmsi();
    void sortedByRange();
    void sortedBySignal();
    void equalRowsKeepTheirOrder();
    void laterAcrossMidnightSortsFirst();
    void sortByHandActsAtOnce_data();
    void sortByHandActsAtOnce();
    void sortWithoutTheFocusWaitsForAMessage();
    void sameCriterionAgainIsHarmless();
    void withoutCriterionTheFormerKeysStay();
    void textKeysCompareByCase_data();
    void textKeysCompareByCase();
    void unknownKeyTypeIsToldPerComparison();
    void comparisonAnswersLowerEqualHigher();
    void newestRowIsFoundAfterTheSort();
    void sortByHandLeavesTheNewestRowWhereItWas();
    void anyTrafficSortsLikeAStableSort_data();
    void anyTrafficSortsLikeAStableSort();
    void currentCellFollowsTheSort();
    void trackingShowsTheSelectedTargetOnly();
    void switchingTrackOnLeavesMatchingRows();
    void newSelectionUnderTrackingWaits();
    void trackedTextMustMatchExactly();
    void rowMovesWithItsHiddenHeight();
    void viewsChangeNoCells();
    void selectedRowsFollowTheirMessages();
    void selectionEndsWithItsRow();
    void scrollPlaceSurvivesAResort();
    void copyTakesTheSelectedRows();
    void modelsKeepTheirPromises();
    void hiddenTabTakesOverWhenShown();
};

void TargetViewWindowTest::controlsAreEnabledInARun() {
    TargetView t;
    for (const QWidget* p : std::initializer_list<QWidget*>{&t.cmbTargetDetail, &t.cmbTargetSort, &t.cmbTargetTarget,
                                                            &t.chkTargetTrack, &t.grdTargetData}) {
        QVERIFY(p->isEnabled());
    }
}

void TargetViewWindowTest::detailModeShowsItsColumns_data() {
    QTest::addColumn<int>("iMode");
    QTest::addColumn<QList<int>>("iColumns");
    QTest::newRow("None") << 0 << Always;
    QTest::newRow("Lat/Lon") << 1 << Always + QList<int>{10, 11};
    QTest::newRow("Speed") << 2 << Always + QList<int>{12, 13};
    QTest::newRow("Missing") << 3 << Always + QList<int>{12, 13, 14, 15, 16};
    QTest::newRow("All") << 4 << Always + QList<int>{10, 11, 12, 13, 14, 15, 16};
}

void TargetViewWindowTest::detailModeShowsItsColumns() {
    QFETCH(int, iMode);
    QFETCH(QList<int>, iColumns);
    TargetView t;
    t.HearAt(5, 1);
    ChooseByKeys(t.cmbTargetDetail, 4);
    ChooseByKeys(t.cmbTargetDetail, iMode);
    QCOMPARE(t.ShownColumns(), iColumns);
    QCOMPARE(t.Mmsis(), Texts({"5"}));  // all rows are kept
    QCOMPARE(Cell(t, 1, 10), QByteArray("00\xb0"
                                        "00.00'N"));
}

void TargetViewWindowTest::unknownDetailShowsLikeNone() {
    TargetView t;
    ChooseByKeys(t.cmbTargetDetail, 4);
    t.cmbTargetDetail.SetText("Everything");
    t.TargetGridSetup(false);
    QCOMPARE(t.ShownColumns(), Always);
    QCOMPARE(Bytes(t.cmbTargetDetail.Text()), QByteArray("Everything"));
}

void TargetViewWindowTest::detailActsOnlyWithTheFocus() {
    TargetView t;
    t.cmbTargetDetail.SetListIndex(4);
    QCOMPARE(t.ShownColumns(), Always);
    // What has been set shows with the next layout.
    t.Press(ui::KeyStop);
    t.Press(ui::KeyStart);
    QCOMPARE(t.ShownColumns().size(), 16);
}

void TargetViewWindowTest::hiddenColumnsKeepTheirHeaders() {
    TargetView t;
    QCOMPARE(t.ShownColumns(), Always);
    QStringList sHeaders;
    for (int i = 10; i < 17; ++i) sHeaders << QString::fromLatin1(Cell(t, 0, i));
    QCOMPARE(sHeaders, Texts({"Lat", "Lon", "Rot", "Sog", "Last", "Spec", "Miss"}));
}

void TargetViewWindowTest::sortedByMmsi() {
    TargetView t;
    for (const std::uint32_t lMmsi : {300U, 20U, 1000U, 9U, 20U}) {
        t.Hear(lMmsi);
        t.Advance(1);
    }
    QCOMPARE(t.Mmsis(), Texts({"9", "20", "20", "300", "1000"}));  // as numbers, not as texts
    QCOMPARE(Column(t, Time), Texts({"12:00:03", "12:00:01", "12:00:04", "12:00:00", "12:00:02"}));
    QCOMPARE(Cell(t, 0, Mmsi), QByteArray("MMSI"));
}

void TargetViewWindowTest::sortedByRange() {
    TargetView t;
    ChooseByKeys(t.cmbTargetSort, 1);
    t.Hear(1);  // no range
    t.Advance(1);
    t.HearAt(2, 1);
    t.HearAt(3, 12);
    t.Advance(1);
    t.Hear(4);
    t.HearAt(5, 2);
    QCOMPARE(t.Mmsis(), Texts({"3", "5", "2", "1", "4"}));  // farthest first, 720.0 before 60.0
    QCOMPARE(Column(t, Range), Texts({"720.0", "120.0", "60.0", "", ""}));
}

void TargetViewWindowTest::sortedBySignal() {
    TargetView t;
    ChooseByKeys(t.cmbTargetSort, 2);
    t.HearLevel(1, 30);
    t.HearLevel(2, 100);
    t.Advance(1);
    t.HearLevel(3, 9);
    t.HearLevel(4, 30);
    QCOMPARE(t.Mmsis(), Texts({"3", "1", "4", "2"}));
    t.chkRxNasaPower.setChecked(true);
    t.HearLevel(5, 19);  // -107
    QCOMPARE(t.Mmsis(), Texts({"5", "3", "1", "4", "2"}));
}

void TargetViewWindowTest::equalRowsKeepTheirOrder() {
    TargetView t;
    for (int i = 0; i < 5; ++i) t.Hear(20);
    t.Hear(10);
    t.Hear(20);
    QCOMPARE(Column(t, Number), Texts({"6", "1", "2", "3", "4", "5", "7"}));
}

void TargetViewWindowTest::laterAcrossMidnightSortsFirst() {
    TargetView t;
    t.tWorld.SetClock("2011-05-15T23:59:59");
    t.Hear(7);
    t.Advance(2);
    t.Hear(7);
    QCOMPARE(Column(t, Time), Texts({"00:00:01", "23:59:59"}));
    QCOMPARE(Column(t, Number), Texts({"2", "1"}));
}

void TargetViewWindowTest::sortByHandActsAtOnce_data() {
    QTest::addColumn<bool>("bMouse");
    QTest::newRow("keyboard") << false;
    QTest::newRow("mouse") << true;
}

void TargetViewWindowTest::sortByHandActsAtOnce() {
    QFETCH(bool, bMouse);
    TargetView t;
    t.HearAt(10, 1);
    t.HearAt(20, 3);
    t.HearAt(30, 2);
    QCOMPARE(t.Mmsis(), Texts({"10", "20", "30"}));
    if (bMouse) {
        QTest::mouseClick(&t.cmbTargetSort, Qt::LeftButton);
        QAbstractItemView* pList = t.cmbTargetSort.view();
        QTRY_VERIFY(pList->isVisible());
        const QRect tEntry = pList->visualRect(pList->model()->index(1, 0)) & pList->viewport()->rect();
        QTest::mouseMove(pList->viewport(), tEntry.center());
        QTest::qWait(QApplication::doubleClickInterval() + 50);  // the press that opened it must not count as this one
        QTest::mouseClick(pList->viewport(), Qt::LeftButton, {}, tEntry.center());
        QTRY_COMPARE(t.cmbTargetSort.ListIndex(), 1);
    } else {
        ChooseByKeys(t.cmbTargetSort, 1);
    }
    QCOMPARE(t.Mmsis(), Texts({"20", "30", "10"}));
    QVERIFY(t.grdTargetData.Redraw());
}

void TargetViewWindowTest::sortWithoutTheFocusWaitsForAMessage() {
    TargetView t;
    t.HearAt(10, 1);
    t.HearAt(20, 3);
    t.cmbTargetSort.SetListIndex(1);
    QCOMPARE(t.Mmsis(), Texts({"10", "20"}));
    t.HearAt(30, 2);
    QCOMPARE(t.Mmsis(), Texts({"20", "30", "10"}));
    // Under Signal the levels sort, not the message.
    t.cmbTargetSort.SetListIndex(2);
    t.Hear(5);
    QCOMPARE(t.Mmsis(), Texts({"20", "30", "10", "5"}));
    t.FeedLine(0, WithChecksum("$PNMLS,-5,19,3"));
    QCOMPARE(t.Mmsis().first(), QStringLiteral("5"));
}

void TargetViewWindowTest::sameCriterionAgainIsHarmless() {
    TargetView t;
    t.HearAll({3, 1, 2});
    t.cmbTargetSort.setFocus();
    for (int i = 0; i < 3; ++i) t.cmbTargetSort.SetListIndex(0);
    QCOMPARE(t.Mmsis(), Texts({"1", "2", "3"}));
}

void TargetViewWindowTest::withoutCriterionTheFormerKeysStay() {
    TargetView t;
    t.HearAt(10, 1);
    ChooseByKeys(t.cmbTargetSort, 1);
    QCOMPARE(t.m_iSortKeys, 2);
    t.cmbTargetSort.setCurrentIndex(-1);
    QCOMPARE(t.cmbTargetSort.ListIndex(), -1);
    t.HearAt(20, 3);
    QCOMPARE(t.Mmsis(), Texts({"10", "20"}));  // no message sorts now
    t.TargetSort();
    QCOMPARE(t.Mmsis(), Texts({"20", "10"}));  // by range still
    QCOMPARE(t.m_tSortKeys[0], (targets::SortKey{8, 4}));
    QCOMPARE(t.m_tSortKeys[1], (targets::SortKey{6, 7}));
}

void TargetViewWindowTest::textKeysCompareByCase_data() {
    QTest::addColumn<int>("iType");
    QTest::addColumn<QStringList>("sOrder");
    QTest::newRow("ascending") << 7 << Texts({"1", "A", "B", "a", "b", "\xe9"});
    QTest::newRow("descending") << 8 << Texts({"\xe9", "b", "a", "B", "A", "1"});
}

void TargetViewWindowTest::textKeysCompareByCase() {
    QFETCH(int, iType);
    QFETCH(QStringList, sOrder);
    TargetView t;
    t.cmbTargetSort.setCurrentIndex(-1);
    t.m_iSortKeys = 1;
    t.m_tSortKeys[0] = {Channel, iType};
    for (const char c : {'b', 'A', '1', '\xe9', 'a', 'B'}) t.Hear(1, c);
    t.TargetSort();
    QCOMPARE(Column(t, Channel), sOrder);
}

void TargetViewWindowTest::unknownKeyTypeIsToldPerComparison() {
    TargetView t;
    t.cmbTargetSort.setCurrentIndex(-1);
    t.HearAll({3, 1, 2});
    t.m_iSortKeys = 2;
    t.m_tSortKeys = {targets::SortKey{1, 5}, targets::SortKey{6, 7}};
    std::int16_t iCmp = 7;
    t.SortCompare(t.grdTargetData, 1, 2, iCmp);
    QCOMPARE(iCmp, std::int16_t{0});
    QCOMPARE(t.tWorld.sMessages, QStringList{QStringLiteral("SortCompare, Sort Direction Not Supported")});
    QCOMPARE(t.tWorld.eMessageIcons.back(), toolkit::MessageIcon::Exclamation);
    t.TargetSort();
    QCOMPARE(t.Mmsis(), Texts({"3", "1", "2"}));
    QVERIFY(t.tWorld.sMessages.size() >= 3);  // three rows need two comparisons at least
    QCOMPARE(t.tWorld.sMessages.count(t.tWorld.sMessages.first()), t.tWorld.sMessages.size());
}

void TargetViewWindowTest::comparisonAnswersLowerEqualHigher() {
    TargetView t;
    t.Hear(1);
    t.Hear(1);
    t.Hear(2);
    const auto tCompare = [&](int iRow1, int iRow2) {
        std::int16_t iCmp = 9;
        t.SortCompare(t.grdTargetData, iRow1, iRow2, iCmp);
        return static_cast<int>(iCmp);
    };
    QCOMPARE(tCompare(1, 3), -1);
    QCOMPARE(tCompare(3, 1), 1);
    QCOMPARE(tCompare(1, 2), 0);
    t.grdTargetData.Cells.SetText(2, Time, "11:59:59");
    QCOMPARE(tCompare(1, 2), 1);
    t.m_tSortKeys[0].lType = 4;
    QCOMPARE(tCompare(1, 3), 1);
    t.m_iSortKeys = 0;
    QCOMPARE(tCompare(1, 3), 0);
}

void TargetViewWindowTest::newestRowIsFoundAfterTheSort() {
    TargetView t;
    Dice tRandom(11);
    for (int i = 1; i <= 400; ++i) {
        t.Hear(tRandom() % 50 + 1);
        QCOMPARE(Cell(t, t.m_lMessageRow, Number), QByteArray::number(i));
    }
}

void TargetViewWindowTest::sortByHandLeavesTheNewestRowWhereItWas() {
    TargetView t;
    t.HearAt(10, 1);
    t.HearAt(20, 2);
    t.HearAt(30, 3);
    QCOMPARE(t.m_lMessageRow, 3);
    ChooseByKeys(t.cmbTargetSort, 1);
    QCOMPARE(t.Mmsis(), Texts({"30", "20", "10"}));
    QCOMPARE(t.m_lMessageRow, 3);
}

void TargetViewWindowTest::anyTrafficSortsLikeAStableSort_data() {
    QTest::addColumn<int>("iSort");
    QTest::newRow("MMSI") << 0;
    QTest::newRow("Range") << 1;
    QTest::newRow("Signal") << 2;
}

void TargetViewWindowTest::anyTrafficSortsLikeAStableSort() {
    QFETCH(int, iSort);
    TargetView t;
    t.cmbTargetSort.SetListIndex(iSort);
    struct Heard {
        int iNumber;
        std::uint32_t lMmsi;
        double dRange;
        int iSignal;
        std::string sTime;
    };
    std::vector<Heard> tHeard;
    Dice tRandom(5);
    for (int i = 1; i <= 500; ++i) {
        const std::uint32_t lMmsi = tRandom() % 40 + 1;
        const int iDegrees = static_cast<int>(tRandom() % 6);
        const int iSignal = static_cast<int>(tRandom() % 12) + 20;
        if (tRandom() % 3 == 0) t.Advance(1);
        if (tHeard.size() > 255) tHeard.erase(std::ranges::find(tHeard, i - 256, &Heard::iNumber));
        if (iDegrees == 0) {
            t.Hear(lMmsi);
        } else {
            t.HearAt(lMmsi, iDegrees);
        }
        tHeard.push_back({i, lMmsi, 60.0 * iDegrees, 0, runtime::TimeText(t.tWorld.dtNow)});
        // As the table does: by message under the first two, by its levels under the third.
        const auto tSort = [&] {
            std::ranges::stable_sort(tHeard, [iSort](const Heard& a, const Heard& b) {
                if (iSort == 0 && a.lMmsi != b.lMmsi) return a.lMmsi < b.lMmsi;
                if (iSort == 1 && a.dRange != b.dRange) return a.dRange > b.dRange;
                if (iSort == 2 && a.iSignal != b.iSignal) return a.iSignal < b.iSignal;
                return a.sTime < b.sTime;
            });
        };
        if (iSort != 2) tSort();
        if (i % 2 == 0) {
            t.FeedLine(0, WithChecksum("$PNMLS," + std::to_string(iSignal) + ",19,3"));
            std::ranges::find(tHeard, i, &Heard::iNumber)->iSignal = iSignal;
            if (iSort == 2) tSort();
        }
        if (i % 25 != 0) continue;
        QStringList sExpected;
        for (const Heard& tOne : tHeard) sExpected << QString::number(tOne.iNumber);
        QCOMPARE(Column(t, Number), sExpected);
    }
}

void TargetViewWindowTest::currentCellFollowsTheSort() {
    TargetView t;
    t.HearAll({3, 1, 2});
    QCOMPARE(t.grdTargetData.CurrentCell(), std::make_pair(1, 1));
}

void TargetViewWindowTest::trackingShowsTheSelectedTargetOnly() {
    TargetView t;
    t.HearAll({20, 10, 30, 20});
    t.ToggleTrack();
    QVERIFY(t.chkTargetTrack.isChecked());
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"20", "20"}));
    t.Hear(15);
    t.Hear(20);
    QCOMPARE(VisibleColumn(t, Number), Texts({"1", "4", "6"}));
    QCOMPARE(t.Mmsis().size(), 6);
    t.ToggleTrack();
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"10", "15", "20", "20", "20", "30"}));
    QVERIFY(t.grdTargetData.Redraw());
    // The rows have the height of all others again.
    for (int i = 1; i <= 6; ++i) QCOMPARE(t.grdTargetData.RowHeight(i), t.grdTargetData.RowHeight(1));
    t.Hear(20);
    QCOMPARE(VisibleColumn(t, Mmsi).size(), 7);
}

void TargetViewWindowTest::switchingTrackOnLeavesMatchingRows() {
    TargetView t;
    t.HearAll({20, 20, 30});
    t.grdTargetData.Cells.SetHidden(1, true);
    t.ToggleTrack();
    QCOMPARE(VisibleColumn(t, Number), Texts({"2"}));
    t.Hear(30);  // a message shows every matching row
    QCOMPARE(VisibleColumn(t, Number), Texts({"1", "2"}));
}

void TargetViewWindowTest::newSelectionUnderTrackingWaits() {
    TargetView t;
    t.HearAll({20, 10, 30});
    t.ToggleTrack();
    t.cmbTargetTarget.SetText("30");
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"20"}));
    t.Hear(10);
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"30"}));
    t.cmbTargetTarget.SetText("10");
    t.ToggleTrack();
    t.ToggleTrack();
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"10", "10"}));
}

void TargetViewWindowTest::trackedTextMustMatchExactly() {
    TargetView t;
    t.Hear(20);
    t.cmbTargetTarget.SetText("020");
    t.ToggleTrack();
    QCOMPARE(VisibleColumn(t, Mmsi), QStringList());
    // Typed by the user.
    t.cmbTargetTarget.setFocus();
    QTest::keyClick(&t.cmbTargetTarget, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&t.cmbTargetTarget, QStringLiteral("20"));
    t.Hear(30);
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"20"}));
}

void TargetViewWindowTest::rowMovesWithItsHiddenHeight() {
    TargetView t;
    t.HearAt(10, 1);
    t.HearAt(20, 2);
    t.HearAt(30, 3);
    t.cmbTargetTarget.SetText("10");
    t.ToggleTrack();
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"10"}));
    ChooseByKeys(t.cmbTargetSort, 1);
    QCOMPARE(t.Mmsis(), Texts({"30", "20", "10"}));
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"10"}));
}

void TargetViewWindowTest::viewsChangeNoCells() {
    TargetView t;
    for (std::uint32_t i = 1; i <= 30; ++i) t.HearAt(i % 7 + 1, static_cast<int>(i));
    const auto tCells = [&] {
        QStringList sRows;
        for (int iRow = 1; iRow < t.grdTargetData.Cells.Rows(); ++iRow) {
            QString sRow;
            for (int iCol = 0; iCol < 17; ++iCol) {
                sRow += toolkit::FromLatin1(t.grdTargetData.Cells.Text(iRow, iCol)) + QLatin1Char('|');
            }
            sRows << sRow;
        }
        sRows.sort();
        return sRows;
    };
    const QStringList sBefore = tCells();
    for (const int i : {1, 2, 3, 4, 0}) ChooseByKeys(t.cmbTargetDetail, i);
    for (const int i : {1, 2, 0}) ChooseByKeys(t.cmbTargetSort, i);
    t.ToggleTrack();
    t.ToggleTrack();
    QCOMPARE(tCells(), sBefore);
}

void TargetViewWindowTest::selectedRowsFollowTheirMessages() {
    TargetView t;
    t.HearAll({40, 20, 30});
    t.Synchronize();
    const auto tSelected = [&] {
        t.Synchronize();
        QStringList sSelected;
        QModelIndexList tRows = t.grdTargetData.selectionModel()->selectedRows(Mmsi);
        std::ranges::sort(tRows, {}, [](const QModelIndex& i) { return i.row(); });
        for (const QModelIndex& tRow : tRows) sSelected << tRow.data().toString();
        return sSelected;
    };
    const auto tClick = [&](int iRow, Qt::KeyboardModifiers eModifiers) {
        const QRect tCell = t.grdTargetData.visualRect(t.grdTargetData.model()->index(iRow - 1, Channel));
        QTest::mouseClick(t.grdTargetData.viewport(), Qt::LeftButton, eModifiers, tCell.center());
    };
    tClick(1, Qt::NoModifier);
    tClick(3, Qt::ControlModifier);
    QCOMPARE(tSelected(), Texts({"20", "40"}));
    t.HearAll({10, 25, 35, 20});
    QCOMPARE(tSelected(), Texts({"20", "40"}));
    QCOMPARE(t.grdTargetData.currentIndex().siblingAtColumn(Mmsi).data().toString(), QStringLiteral("40"));
}

void TargetViewWindowTest::selectionEndsWithItsRow() {
    TargetView t;
    t.Hear(20);
    t.Synchronize();
    t.grdTargetData.selectRow(0);
    for (std::uint32_t i = 0; i < 256; ++i) t.Hear(30);
    t.Synchronize();
    QCOMPARE(t.grdTargetData.selectionModel()->selectedRows().size(), 0);
}

void TargetViewWindowTest::scrollPlaceSurvivesAResort() {
    TargetView t;
    for (std::uint32_t i = 0; i < 200; ++i) t.Hear(1000 + i);
    t.Synchronize();
    QCoreApplication::processEvents();
    QScrollBar* pBar = t.grdTargetData.verticalScrollBar();
    QVERIFY(pBar->maximum() > 100);
    pBar->setValue(pBar->maximum() / 2);
    const int iPlace = pBar->value();
    for (std::uint32_t i = 0; i < 50; ++i) t.Hear(2000 - i);
    t.Synchronize();
    QCoreApplication::processEvents();
    QCOMPARE(pBar->value(), iPlace);
    ChooseByKeys(t.cmbTargetSort, 1);
    t.Synchronize();
    QCoreApplication::processEvents();
    QCOMPARE(pBar->value(), iPlace);
}

void TargetViewWindowTest::copyTakesTheSelectedRows() {
    TargetView t;
    t.HearAt(30, 3);
    t.HearAt(10, 1);
    t.Hear(20);
    t.Synchronize();
    QGuiApplication::clipboard()->clear();
    t.grdTargetData.setFocus();
    QTest::keyClick(&t.grdTargetData, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QString());
    QTest::keyClick(&t.grdTargetData, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&t.grdTargetData, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text().split(QLatin1Char('\n')),
             Texts({"10\tA\t\t\t\t12:00:00\t1=Position Scheduled\t60.0\t90",
                    "20\tA\t\t\t\t12:00:00\t11=UTC/Date Response\t\t",
                    "30\tA\t\t\t\t12:00:00\t1=Position Scheduled\t180.0\t90", ""}));
}

void TargetViewWindowTest::modelsKeepTheirPromises() {
    TargetView t;
    std::vector<std::unique_ptr<QAbstractItemModelTester>> pTesters;
    for (QAbstractItemModel* p :
         {t.grdTargetData.model(), t.grdMessageData.model(), t.grdSpecData.model(), t.lstCommData(0).model(),
          t.lstAisData.model(), t.lstRxData.model(), t.lstOutputData.model(), t.cmbTargetTarget.model()}) {
        pTesters.push_back(
            std::make_unique<QAbstractItemModelTester>(p, QAbstractItemModelTester::FailureReportingMode::Fatal));
    }
    Dice tRandom(17);
    for (int i = 0; i < 1500; ++i) {
        switch (tRandom() % 8) {
            case 0:
                t.HearAt(tRandom() % 60, static_cast<int>(tRandom() % 90));
                break;
            case 1:
                t.HearLevel(tRandom() % 60, static_cast<int>(tRandom() % 60));
                break;
            case 2:
                t.FeedLine(0, "$GPZDA,1");
                break;
            case 3:
                ChooseByKeys(t.cmbTargetSort, static_cast<int>(tRandom() % 3));
                break;
            case 4:
                t.chkTargetTrack.setChecked(tRandom() % 2 == 0);
                break;
            case 5:
                t.grdTargetData.selectRow(static_cast<int>(tRandom() % 40));
                break;
            default:
                t.Hear(tRandom() % 60);
                break;
        }
        if (tRandom() % 4 == 0) t.Synchronize();
        if (i % 50 == 0) QCoreApplication::processEvents();
        if (i % 400 == 399) {
            t.Press(ui::KeyStop);
            t.Press(ui::KeyStart);
        }
    }
    t.Synchronize();
    QCOMPARE(t.grdTargetData.model()->rowCount(), t.grdTargetData.Cells.Rows() - 1);
}

void TargetViewWindowTest::hiddenTabTakesOverWhenShown() {
    TargetView t;
    t.SSTab.SetTab(ui::TabInput);
    for (std::uint32_t i = 1; i <= 20; ++i) t.Hear(i);
    QTest::qWait(150);  // three beats
    QCOMPARE(t.grdTargetData.model()->rowCount(), 0);
    t.SSTab.SetTab(ui::TabTargets);
    QCOMPARE(t.grdTargetData.model()->rowCount(), 20);
}

QTEST_MAIN(TargetViewWindowTest)
#include "TargetViewWindowTest.moc"
