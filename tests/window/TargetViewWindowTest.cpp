// How the target table is presented: detail modes, order, tracking, and the user's place while traffic runs.
#include <QAbstractItemModelTester>
#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QGuiApplication>
#include <QScrollBar>
#include <QTest>
#include <algorithm>

#include "tests/support/AisEncoder.h"
#include "tests/window/Shown.h"

using namespace support;

namespace {

constexpr int Number = 0, Mmsi = 1, Channel = 2, Signal = 3, Time = 6, Range = 8;

struct Listening {
    World tWorld;
    TestWindow t{tWorld};
    Listening() {
        t.LoadAndShow();
        t.SSTab.SetTab(ui::TabTargets);
        t.StartBoth();
        t.grdTargetData.setFocus();
    }
    void Hear(std::uint32_t lMmsi, char cChannel = 'A') { t.FeedLine(0, AisSentence(AisOther(11, lMmsi), cChannel)); }
    // A target so many degrees east of the own position at 0, 0; each is 60 nautical miles.
    void HearAt(std::uint32_t lMmsi, int iDegrees) {
        t.txtGpsLat.SetText("00 00.00 N");
        t.txtGpsLon.SetText("000 00.00 E");
        t.FeedLine(0, AisSentence(AisClassA(1, {.lMmsi = lMmsi, .lLongitude = iDegrees * 600000, .lLatitude = 0})));
    }
    void HearLevel(std::uint32_t lMmsi, int iSignal) {
        Hear(lMmsi);
        t.FeedLine(0, WithChecksum("$PNMLS," + std::to_string(iSignal) + ",19,3"));
    }
    QStringList Mmsis() { return Column(t, Mmsi); }
    // The numbers of the columns that show.
    QList<int> ShownColumns() {
        t.Synchronize();
        QList<int> iColumns;
        for (int i = 0; i < 17; ++i) {
            if (!t.grdTargetData.isColumnHidden(i) && t.grdTargetData.ColWidth(i) > 0) iColumns << i;
        }
        return iColumns;
    }
    // Chooses an entry by the arrow keys.
    void Choose(toolkit::ComboBox& cmb, int iEntry) {
        cmb.setFocus();
        while (cmb.ListIndex() < iEntry) QTest::keyClick(&cmb, Qt::Key_Down);
        while (cmb.ListIndex() > iEntry) QTest::keyClick(&cmb, Qt::Key_Up);
    }
    void ToggleTrack() {
        QTest::mouseClick(&t.chkTargetTrack, Qt::LeftButton, {}, QPoint(8, t.chkTargetTrack.height() / 2));
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
    Listening tListening;
    TestWindow& t = tListening.t;
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
    Listening tListening;
    tListening.HearAt(5, 1);
    tListening.Choose(tListening.t.cmbTargetDetail, 4);
    tListening.Choose(tListening.t.cmbTargetDetail, iMode);
    QCOMPARE(tListening.ShownColumns(), iColumns);
    QCOMPARE(tListening.Mmsis(), Texts({"5"}));  // all rows are kept
    QCOMPARE(Cell(tListening.t, 1, 10), QByteArray("00\xb0"
                                                   "00.00'N"));
}

void TargetViewWindowTest::unknownDetailShowsLikeNone() {
    Listening tListening;
    tListening.Choose(tListening.t.cmbTargetDetail, 4);
    tListening.t.cmbTargetDetail.SetText("Everything");
    tListening.t.TargetGridSetup(false);
    QCOMPARE(tListening.ShownColumns(), Always);
    QCOMPARE(Bytes(tListening.t.cmbTargetDetail.Text()), QByteArray("Everything"));
}

void TargetViewWindowTest::detailActsOnlyWithTheFocus() {
    Listening tListening;
    tListening.t.cmbTargetDetail.SetListIndex(4);
    QCOMPARE(tListening.ShownColumns(), Always);
    // What has been set shows with the next layout.
    tListening.t.Press(ui::KeyStop);
    tListening.t.Press(ui::KeyStart);
    QCOMPARE(tListening.ShownColumns().size(), 16);
}

void TargetViewWindowTest::hiddenColumnsKeepTheirHeaders() {
    Listening tListening;
    QCOMPARE(tListening.ShownColumns(), Always);
    QStringList sHeaders;
    for (int i = 10; i < 17; ++i) sHeaders << QString::fromLatin1(Cell(tListening.t, 0, i));
    QCOMPARE(sHeaders, Texts({"Lat", "Lon", "Rot", "Sog", "Last", "Spec", "Miss"}));
}

void TargetViewWindowTest::sortedByMmsi() {
    Listening tListening;
    for (const std::uint32_t lMmsi : {300U, 20U, 1000U, 9U, 20U}) {
        tListening.Hear(lMmsi);
        tListening.t.Advance(1);
    }
    QCOMPARE(tListening.Mmsis(), Texts({"9", "20", "20", "300", "1000"}));  // as numbers, not as texts
    QCOMPARE(Column(tListening.t, Time), Texts({"12:00:03", "12:00:01", "12:00:04", "12:00:00", "12:00:02"}));
    QCOMPARE(Cell(tListening.t, 0, Mmsi), QByteArray("MMSI"));
}

void TargetViewWindowTest::sortedByRange() {
    Listening tListening;
    tListening.Choose(tListening.t.cmbTargetSort, 1);
    tListening.Hear(1);  // no range
    tListening.t.Advance(1);
    tListening.HearAt(2, 1);
    tListening.HearAt(3, 12);
    tListening.t.Advance(1);
    tListening.Hear(4);
    tListening.HearAt(5, 2);
    QCOMPARE(tListening.Mmsis(), Texts({"3", "5", "2", "1", "4"}));  // farthest first, 720.0 before 60.0
    QCOMPARE(Column(tListening.t, Range), Texts({"720.0", "120.0", "60.0", "", ""}));
}

void TargetViewWindowTest::sortedBySignal() {
    Listening tListening;
    tListening.Choose(tListening.t.cmbTargetSort, 2);
    tListening.HearLevel(1, 30);
    tListening.HearLevel(2, 100);
    tListening.t.Advance(1);
    tListening.HearLevel(3, 9);
    tListening.HearLevel(4, 30);
    QCOMPARE(tListening.Mmsis(), Texts({"3", "1", "4", "2"}));
    tListening.t.chkRxNasaPower.setChecked(true);
    tListening.HearLevel(5, 19);  // -107
    QCOMPARE(tListening.Mmsis(), Texts({"5", "3", "1", "4", "2"}));
}

void TargetViewWindowTest::equalRowsKeepTheirOrder() {
    Listening tListening;
    for (int i = 0; i < 5; ++i) tListening.Hear(20);
    tListening.Hear(10);
    tListening.Hear(20);
    QCOMPARE(Column(tListening.t, Number), Texts({"6", "1", "2", "3", "4", "5", "7"}));
}

void TargetViewWindowTest::laterAcrossMidnightSortsFirst() {
    Listening tListening;
    tListening.tWorld.SetClock("2011-05-15T23:59:59");
    tListening.Hear(7);
    tListening.t.Advance(2);
    tListening.Hear(7);
    QCOMPARE(Column(tListening.t, Time), Texts({"00:00:01", "23:59:59"}));
    QCOMPARE(Column(tListening.t, Number), Texts({"2", "1"}));
}

void TargetViewWindowTest::sortByHandActsAtOnce_data() {
    QTest::addColumn<bool>("bMouse");
    QTest::newRow("keyboard") << false;
    QTest::newRow("mouse") << true;
}

void TargetViewWindowTest::sortByHandActsAtOnce() {
    QFETCH(bool, bMouse);
    Listening tListening;
    TestWindow& t = tListening.t;
    tListening.HearAt(10, 1);
    tListening.HearAt(20, 3);
    tListening.HearAt(30, 2);
    QCOMPARE(tListening.Mmsis(), Texts({"10", "20", "30"}));
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
        tListening.Choose(t.cmbTargetSort, 1);
    }
    QCOMPARE(tListening.Mmsis(), Texts({"20", "30", "10"}));
    QVERIFY(t.grdTargetData.Redraw());
}

void TargetViewWindowTest::sortWithoutTheFocusWaitsForAMessage() {
    Listening tListening;
    tListening.HearAt(10, 1);
    tListening.HearAt(20, 3);
    tListening.t.cmbTargetSort.SetListIndex(1);
    QCOMPARE(tListening.Mmsis(), Texts({"10", "20"}));
    tListening.HearAt(30, 2);
    QCOMPARE(tListening.Mmsis(), Texts({"20", "30", "10"}));
    // Under Signal the levels sort, not the message.
    tListening.t.cmbTargetSort.SetListIndex(2);
    tListening.Hear(5);
    QCOMPARE(tListening.Mmsis(), Texts({"20", "30", "10", "5"}));
    tListening.t.FeedLine(0, WithChecksum("$PNMLS,-5,19,3"));
    QCOMPARE(tListening.Mmsis().first(), QStringLiteral("5"));
}

void TargetViewWindowTest::sameCriterionAgainIsHarmless() {
    Listening tListening;
    for (const std::uint32_t lMmsi : {3U, 1U, 2U}) tListening.Hear(lMmsi);
    tListening.t.cmbTargetSort.setFocus();
    for (int i = 0; i < 3; ++i) tListening.t.cmbTargetSort.SetListIndex(0);
    QCOMPARE(tListening.Mmsis(), Texts({"1", "2", "3"}));
}

void TargetViewWindowTest::withoutCriterionTheFormerKeysStay() {
    Listening tListening;
    TestWindow& t = tListening.t;
    tListening.HearAt(10, 1);
    tListening.Choose(t.cmbTargetSort, 1);
    QCOMPARE(t.m_iSortKeys, 2);
    t.cmbTargetSort.setCurrentIndex(-1);
    QCOMPARE(t.cmbTargetSort.ListIndex(), -1);
    tListening.HearAt(20, 3);
    QCOMPARE(tListening.Mmsis(), Texts({"10", "20"}));  // no message sorts now
    t.TargetSort();
    QCOMPARE(tListening.Mmsis(), Texts({"20", "10"}));  // by range still
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
    Listening tListening;
    TestWindow& t = tListening.t;
    t.cmbTargetSort.setCurrentIndex(-1);
    t.m_iSortKeys = 1;
    t.m_tSortKeys[0] = {Channel, iType};
    for (const char c : {'b', 'A', '1', '\xe9', 'a', 'B'}) tListening.Hear(1, c);
    t.TargetSort();
    QCOMPARE(Column(t, Channel), sOrder);
}

void TargetViewWindowTest::unknownKeyTypeIsToldPerComparison() {
    Listening tListening;
    TestWindow& t = tListening.t;
    t.cmbTargetSort.setCurrentIndex(-1);
    for (const std::uint32_t lMmsi : {3U, 1U, 2U}) tListening.Hear(lMmsi);
    t.m_iSortKeys = 2;
    t.m_tSortKeys = {targets::SortKey{1, 5}, targets::SortKey{6, 7}};
    std::int16_t iCmp = 7;
    t.SortCompare(t.grdTargetData, 1, 2, iCmp);
    QCOMPARE(iCmp, std::int16_t{0});
    QCOMPARE(tListening.tWorld.sMessages, QStringList{QStringLiteral("SortCompare, Sort Direction Not Supported")});
    QCOMPARE(tListening.tWorld.eMessageIcons.back(), toolkit::MessageIcon::Exclamation);
    t.TargetSort();
    QCOMPARE(tListening.Mmsis(), Texts({"3", "1", "2"}));
    QVERIFY(tListening.tWorld.sMessages.size() >= 3);  // three rows need two comparisons at least
    QCOMPARE(tListening.tWorld.sMessages.count(tListening.tWorld.sMessages.first()),
             tListening.tWorld.sMessages.size());
}

void TargetViewWindowTest::comparisonAnswersLowerEqualHigher() {
    Listening tListening;
    TestWindow& t = tListening.t;
    tListening.Hear(1);
    tListening.Hear(1);
    tListening.Hear(2);
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
    Listening tListening;
    TestWindow& t = tListening.t;
    Dice tRandom(11);
    for (int i = 1; i <= 400; ++i) {
        tListening.Hear(tRandom() % 50 + 1);
        QCOMPARE(Cell(t, t.m_lMessageRow, Number), QByteArray::number(i));
    }
}

void TargetViewWindowTest::sortByHandLeavesTheNewestRowWhereItWas() {
    Listening tListening;
    TestWindow& t = tListening.t;
    tListening.HearAt(10, 1);
    tListening.HearAt(20, 2);
    tListening.HearAt(30, 3);
    QCOMPARE(t.m_lMessageRow, 3);
    tListening.Choose(t.cmbTargetSort, 1);
    QCOMPARE(tListening.Mmsis(), Texts({"30", "20", "10"}));
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
    Listening tListening;
    TestWindow& t = tListening.t;
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
            tListening.Hear(lMmsi);
        } else {
            tListening.HearAt(lMmsi, iDegrees);
        }
        tHeard.push_back({i, lMmsi, 60.0 * iDegrees, 0, runtime::TimeText(tListening.tWorld.dtNow)});
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
    Listening tListening;
    for (const std::uint32_t lMmsi : {3U, 1U, 2U}) tListening.Hear(lMmsi);
    QCOMPARE(tListening.t.grdTargetData.CurrentCell(), std::make_pair(1, 1));
}

void TargetViewWindowTest::trackingShowsTheSelectedTargetOnly() {
    Listening tListening;
    TestWindow& t = tListening.t;
    for (const std::uint32_t lMmsi : {20U, 10U, 30U, 20U}) tListening.Hear(lMmsi);
    tListening.ToggleTrack();
    QVERIFY(t.chkTargetTrack.isChecked());
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"20", "20"}));
    tListening.Hear(15);
    tListening.Hear(20);
    QCOMPARE(VisibleColumn(t, Number), Texts({"1", "4", "6"}));
    QCOMPARE(tListening.Mmsis().size(), 6);
    tListening.ToggleTrack();
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"10", "15", "20", "20", "20", "30"}));
    QVERIFY(t.grdTargetData.Redraw());
    // The rows have the height of all others again.
    for (int i = 1; i <= 6; ++i) QCOMPARE(t.grdTargetData.RowHeight(i), t.grdTargetData.RowHeight(1));
    tListening.Hear(20);
    QCOMPARE(VisibleColumn(t, Mmsi).size(), 7);
}

void TargetViewWindowTest::switchingTrackOnLeavesMatchingRows() {
    Listening tListening;
    TestWindow& t = tListening.t;
    for (const std::uint32_t lMmsi : {20U, 20U, 30U}) tListening.Hear(lMmsi);
    t.grdTargetData.Cells.SetHidden(1, true);
    tListening.ToggleTrack();
    QCOMPARE(VisibleColumn(t, Number), Texts({"2"}));
    tListening.Hear(30);  // a message shows every matching row
    QCOMPARE(VisibleColumn(t, Number), Texts({"1", "2"}));
}

void TargetViewWindowTest::newSelectionUnderTrackingWaits() {
    Listening tListening;
    TestWindow& t = tListening.t;
    for (const std::uint32_t lMmsi : {20U, 10U, 30U}) tListening.Hear(lMmsi);
    tListening.ToggleTrack();
    t.cmbTargetTarget.SetText("30");
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"20"}));
    tListening.Hear(10);
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"30"}));
    t.cmbTargetTarget.SetText("10");
    tListening.ToggleTrack();
    tListening.ToggleTrack();
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"10", "10"}));
}

void TargetViewWindowTest::trackedTextMustMatchExactly() {
    Listening tListening;
    TestWindow& t = tListening.t;
    tListening.Hear(20);
    t.cmbTargetTarget.SetText("020");
    tListening.ToggleTrack();
    QCOMPARE(VisibleColumn(t, Mmsi), QStringList());
    // Typed by the user.
    t.cmbTargetTarget.setFocus();
    QTest::keyClick(&t.cmbTargetTarget, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&t.cmbTargetTarget, QStringLiteral("20"));
    tListening.Hear(30);
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"20"}));
}

void TargetViewWindowTest::rowMovesWithItsHiddenHeight() {
    Listening tListening;
    TestWindow& t = tListening.t;
    tListening.HearAt(10, 1);
    tListening.HearAt(20, 2);
    tListening.HearAt(30, 3);
    t.cmbTargetTarget.SetText("10");
    tListening.ToggleTrack();
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"10"}));
    tListening.Choose(t.cmbTargetSort, 1);
    QCOMPARE(tListening.Mmsis(), Texts({"30", "20", "10"}));
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"10"}));
}

void TargetViewWindowTest::viewsChangeNoCells() {
    Listening tListening;
    TestWindow& t = tListening.t;
    for (std::uint32_t i = 1; i <= 30; ++i) tListening.HearAt(i % 7 + 1, static_cast<int>(i));
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
    for (const int i : {1, 2, 3, 4, 0}) tListening.Choose(t.cmbTargetDetail, i);
    for (const int i : {1, 2, 0}) tListening.Choose(t.cmbTargetSort, i);
    tListening.ToggleTrack();
    tListening.ToggleTrack();
    QCOMPARE(tCells(), sBefore);
}

void TargetViewWindowTest::selectedRowsFollowTheirMessages() {
    Listening tListening;
    TestWindow& t = tListening.t;
    for (const std::uint32_t lMmsi : {40U, 20U, 30U}) tListening.Hear(lMmsi);
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
    for (const std::uint32_t lMmsi : {10U, 25U, 35U, 20U}) tListening.Hear(lMmsi);
    QCOMPARE(tSelected(), Texts({"20", "40"}));
    QCOMPARE(t.grdTargetData.currentIndex().siblingAtColumn(Mmsi).data().toString(), QStringLiteral("40"));
}

void TargetViewWindowTest::selectionEndsWithItsRow() {
    Listening tListening;
    TestWindow& t = tListening.t;
    tListening.Hear(20);
    t.Synchronize();
    t.grdTargetData.selectRow(0);
    for (std::uint32_t i = 0; i < 256; ++i) tListening.Hear(30);
    t.Synchronize();
    QCOMPARE(t.grdTargetData.selectionModel()->selectedRows().size(), 0);
}

void TargetViewWindowTest::scrollPlaceSurvivesAResort() {
    Listening tListening;
    TestWindow& t = tListening.t;
    for (std::uint32_t i = 0; i < 200; ++i) tListening.Hear(1000 + i);
    t.Synchronize();
    QCoreApplication::processEvents();
    QScrollBar* pBar = t.grdTargetData.verticalScrollBar();
    QVERIFY(pBar->maximum() > 100);
    pBar->setValue(pBar->maximum() / 2);
    const int iPlace = pBar->value();
    for (std::uint32_t i = 0; i < 50; ++i) tListening.Hear(2000 - i);
    t.Synchronize();
    QCoreApplication::processEvents();
    QCOMPARE(pBar->value(), iPlace);
    tListening.Choose(t.cmbTargetSort, 1);
    t.Synchronize();
    QCoreApplication::processEvents();
    QCOMPARE(pBar->value(), iPlace);
}

void TargetViewWindowTest::copyTakesTheSelectedRows() {
    Listening tListening;
    TestWindow& t = tListening.t;
    tListening.HearAt(30, 3);
    tListening.HearAt(10, 1);
    tListening.Hear(20);
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
    Listening tListening;
    TestWindow& t = tListening.t;
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
                tListening.HearAt(tRandom() % 60, static_cast<int>(tRandom() % 90));
                break;
            case 1:
                tListening.HearLevel(tRandom() % 60, static_cast<int>(tRandom() % 60));
                break;
            case 2:
                t.FeedLine(0, "$GPZDA,1");
                break;
            case 3:
                tListening.Choose(t.cmbTargetSort, static_cast<int>(tRandom() % 3));
                break;
            case 4:
                t.chkTargetTrack.setChecked(tRandom() % 2 == 0);
                break;
            case 5:
                t.grdTargetData.selectRow(static_cast<int>(tRandom() % 40));
                break;
            default:
                tListening.Hear(tRandom() % 60);
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
    Listening tListening;
    TestWindow& t = tListening.t;
    t.SSTab.SetTab(ui::TabInput);
    for (std::uint32_t i = 1; i <= 20; ++i) tListening.Hear(i);
    QTest::qWait(150);  // three beats
    QCOMPARE(t.grdTargetData.model()->rowCount(), 0);
    t.SSTab.SetTab(ui::TabTargets);
    QCOMPARE(t.grdTargetData.model()->rowCount(), 20);
}

QTEST_MAIN(TargetViewWindowTest)
#include "TargetViewWindowTest.moc"
