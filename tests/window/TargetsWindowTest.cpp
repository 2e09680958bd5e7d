// The target table as a store: rows, target list, lateness, signal levels, the summary.
#include <QTest>

#include "tests/window/Bench.h"
#include "tests/window/Shown.h"

using namespace support;

namespace {

constexpr int Number = 0, Mmsi = 1, Signal = 3, Threshold = 4, Snr = 5, Last = 14, Spec = 15, Miss = 16;

struct Targets : Listening {
    void HearPosition(int iType, std::uint32_t lMmsi, std::uint32_t lSpeed) {
        const AisReport tReport = {.lMmsi = lMmsi, .lSpeed = lSpeed};
        const bool bClassB = iType == 18 || iType == 19;
        const AisBits sBits = iType == 4    ? AisBaseStation(4, tReport)
                              : iType == 19 ? AisClassBExtended(tReport, "YACHT")
                              : bClassB     ? AisClassB(tReport)
                                            : AisClassA(iType, tReport);
        FeedLine(0, AisSentence(sBits));
    }
    QStringList ListItems() {
        cmbTargetTarget.Synchronize();
        QStringList sItems;
        for (int i = 0; i < cmbTargetTarget.count(); ++i) sItems << cmbTargetTarget.itemText(i);
        return sItems;
    }
    QByteArray Summary() { return support::Panel(*this, ui::PanelSummary); }
};

}  // namespace

class TargetsWindowTest : public QObject {
    Q_OBJECT
private slots:
    void columnsAreLaidOut();
    void firstMessageSelectsItsTarget();
    void selectedTargetIsNotReplaced();
    void targetsAreListedByNumber();
    void listKnowsTheSecondOfTheDay();
    void listOutlivesTheRows();
    void rowTellsItsMessage();
    void numbersCountFromOneAfterAClear();
    void lastIsTheTimeSinceTheMessageBefore();
    void sameSecondLeavesLastEmpty();
    void midnightMakesLastNegative();
    void markOfAFullTableComesEarly();
    void tableRollsAt256_data();
    void tableRollsAt256();
    void numbersGoOnBeyondTwoToThe31();
    void summaryReplacesAnError();
    void cellsAreAligned();
    void emptyMotionIsNotWritten();
    void latenessBySpeed_data();
    void latenessBySpeed();
    void otherTypesAreNeverLate();
    void bothPortsFeedOneTable();
    void levelsNeedARow_data();
    void levelsNeedARow();
    void snrIsTheDifference_data();
    void snrIsTheDifference();
    void levelsSortOnlyUnderSignal();
    void newestRowIsKnownOnlyFromTheRefresh();
    void newestRowSurvivesAClear();
    void clearEmptiesListAndTable();
    void findRowAnswersTheFirst();
    void redrawIsOnAfterEveryMessage();
};

void TargetsWindowTest::columnsAreLaidOut() {
    Targets t;
    const QStringList sHeaders = Texts({"", "MMSI", "Ch", "Signal", "Thres", "Snr", "Time", "Message Id", "Rng", "Brg",
                                        "Lat", "Lon", "Rot", "Sog", "Last", "Spec", "Miss"});
    const QStringList sTemplates =
        Texts({"", "------MMSI-----", "-Ch-", "-Signal-", "-Thres-", "-Snr-", "-hh:mm:ss-", "0", "--Rng--", "--Brg--",
               "-00-00.00-N-", "-000-00.00-W-", "--Rot--", "--Sog--", "-Last-", "-Spec-", "-Miss-"});
    t.cmbTargetDetail.SetText("All");
    t.TargetGridSetup(false);
    t.Synchronize();
    QCOMPARE(t.grdTargetData.model()->columnCount(), 17);
    QVERIFY(t.grdTargetData.isColumnHidden(0));
    QCOMPARE(t.grdTargetData.ColWidth(0), 0);
    for (int iCol = 0; iCol < 17; ++iCol) {
        const QVariant tAlignment = t.grdTargetData.model()->headerData(iCol, Qt::Horizontal, Qt::TextAlignmentRole);
        QCOMPARE(Bytes(t.Cell(t.grdTargetData, 0, iCol)), sHeaders[iCol].toLatin1());
        QCOMPARE(tAlignment.value<Qt::Alignment>(), Qt::Alignment(Qt::AlignCenter));
        if (iCol == 0) continue;
        QCOMPARE(t.grdTargetData.columnWidth(iCol), t.grdTargetData.fontMetrics().horizontalAdvance(sTemplates[iCol]));
    }
}

void TargetsWindowTest::firstMessageSelectsItsTarget() {
    Targets t;
    t.Hear(244660123);
    QCOMPARE(t.Selected(), QByteArray("244660123"));
    QCOMPARE(t.ListItems(), Texts({"244660123"}));
    QCOMPARE(Cell(t, 1, Last), QByteArray());
    QCOMPARE(t.Summary(), QByteArray("1 Targets, 1 Messages"));
}

void TargetsWindowTest::selectedTargetIsNotReplaced() {
    Targets t;
    t.Hear(200);
    t.Hear(100);
    QCOMPARE(t.Selected(), QByteArray("200"));
    t.cmbTargetTarget.SetText("no such target");
    t.Hear(300);
    QCOMPARE(t.Selected(), QByteArray("no such target"));
    // Emptied by the user: the next target heard is selected, known or not.
    t.SSTab.SetTab(ui::TabTargets);
    t.cmbTargetTarget.setFocus();
    QTest::keyClick(&t.cmbTargetTarget, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&t.cmbTargetTarget, Qt::Key_Delete);
    QCOMPARE(Bytes(t.cmbTargetTarget.Text()), QByteArray());
    t.Hear(100);
    QCOMPARE(t.Selected(), QByteArray("100"));
}

void TargetsWindowTest::targetsAreListedByNumber() {
    Targets t;
    t.HearAll({50, 1000, 7, 300, 50, 999999999, 8});
    QCOMPARE(t.ListItems(), Texts({"7", "8", "50", "300", "1000", "999999999"}));
    QVERIFY(t.Summary().startsWith("6 Targets, "));
    // Between two that are known.
    t.Hear(299);
    QCOMPARE(t.ListItems(), Texts({"7", "8", "50", "299", "300", "1000", "999999999"}));
    QCOMPARE(t.Selected(), QByteArray("50"));
}

void TargetsWindowTest::listKnowsTheSecondOfTheDay() {
    Targets t;
    t.tWorld.SetClock("2011-05-15T01:02:03");
    t.Hear(5);
    t.Synchronize();
    QCOMPARE(t.cmbTargetTarget.itemData(0).toInt(), 1 * 3600 + 2 * 60 + 3);
    t.tWorld.SetClock("2011-05-15T23:59:59");
    t.Hear(5);
    t.Hear(6);
    t.Synchronize();
    QCOMPARE(t.cmbTargetTarget.itemData(0).toInt(), 86399);
    QCOMPARE(t.cmbTargetTarget.itemData(1).toInt(), 86399);
}

void TargetsWindowTest::listOutlivesTheRows() {
    Targets t;
    for (std::uint32_t i = 1; i <= 300; ++i) t.Hear(i);
    QCOMPARE(t.ListItems().size(), 300);
    QCOMPARE(t.Summary(), QByteArray("300 Targets, >256 Messages"));
    QVERIFY(!Column(t, Mmsi).contains(QStringLiteral("1")));
    // A target that has no row any more is still known: its next message has a Last.
    t.Advance(9);
    t.Hear(1);
    QCOMPARE(Cell(t, 1, Last), QByteArray("9"));
    QCOMPARE(t.Summary(), QByteArray("300 Targets, >256 Messages"));
}

void TargetsWindowTest::rowTellsItsMessage() {
    Targets t;
    t.tWorld.SetClock("2011-05-15T09:08:07");
    t.FeedLine(0, AisSentence(AisOther(20, 2442000), 'B'));
    QStringList sCells;
    for (int iCol = 0; iCol < 17; ++iCol) sCells << QString::fromLatin1(Cell(t, 1, iCol));
    QCOMPARE(sCells, Texts({"1", "2442000", "B", "", "", "", "09:08:07", "20=Data Link Management", "", "", "", "", "",
                            "", "", "", ""}));
}

void TargetsWindowTest::numbersCountFromOneAfterAClear() {
    Targets t;
    t.HearAll({3, 1, 2});
    QCOMPARE(Column(t, Number), Texts({"2", "3", "1"}));
    t.Press(ui::KeyStop);
    QCOMPARE(Column(t, Number).size(), 3);  // stopping clears nothing
    t.Press(ui::KeyStart);
    t.Hear(9);
    QCOMPARE(Column(t, Number), Texts({"1"}));
}

void TargetsWindowTest::lastIsTheTimeSinceTheMessageBefore() {
    Targets t;
    t.Hear(1);
    t.Advance(3);
    t.Hear(2);
    t.Advance(4);
    t.Hear(1);
    t.Advance(130);
    t.Hear(1);
    t.Hear(2);
    QCOMPARE(Column(t, Mmsi), Texts({"1", "1", "1", "2", "2"}));
    QCOMPARE(Column(t, Last), Texts({"", "7", "130", "", "134"}));
}

void TargetsWindowTest::sameSecondLeavesLastEmpty() {
    Targets t;
    for (int i = 0; i < 2; ++i) t.HearPosition(1, 100, 300);
    t.Advance(60);
    for (int i = 0; i < 2; ++i) t.HearPosition(1, 100, 300);
    QCOMPARE(Column(t, Last), Texts({"", "", "60", ""}));
    QCOMPARE(Column(t, Spec), Texts({"", "", "2", ""}));
    QCOMPARE(Column(t, Miss), Texts({"", "", "30", ""}));
}

void TargetsWindowTest::midnightMakesLastNegative() {
    Targets t;
    t.tWorld.SetClock("2011-05-15T23:59:50");
    t.HearPosition(1, 100, 300);
    t.tWorld.SetClock("2011-05-16T00:00:20");
    t.HearPosition(1, 100, 300);
    // The later one stands first: the time is compared as text.
    QCOMPARE(Column(t, 6), Texts({"00:00:20", "23:59:50"}));
    QCOMPARE(Column(t, Last), Texts({"-86370", ""}));
    QCOMPARE(Column(t, Spec), Texts({"", ""}));
    QCOMPARE(Column(t, Miss), Texts({"", ""}));
}

void TargetsWindowTest::markOfAFullTableComesEarly() {
    Targets t;
    for (int i = 1; i <= 260; ++i) {
        t.Hear(7);
        const int iRows = std::min(i, 256);
        const QByteArray sMark = i >= 254 ? ">" : "";
        QCOMPARE(t.Summary(), "1 Targets, " + sMark + QByteArray::number(iRows) + " Messages");
    }
}

void TargetsWindowTest::tableRollsAt256_data() {
    QTest::addColumn<int>("iOrder");  // 1 MMSIs rise, -1 they fall, 0 at random
    QTest::addColumn<int>("iSort");
    for (int iSort = 0; iSort < 3; ++iSort) {
        QTest::addRow("rising, sort %d", iSort) << 1 << iSort;
        QTest::addRow("falling, sort %d", iSort) << -1 << iSort;
        QTest::addRow("random, sort %d", iSort) << 0 << iSort;
    }
}

void TargetsWindowTest::tableRollsAt256() {
    QFETCH(int, iOrder);
    QFETCH(int, iSort);
    Targets t;
    t.cmbTargetSort.SetListIndex(iSort);
    Dice tRandom(3);
    const auto tHear = [&](int i) {
        t.Hear(iOrder == 0 ? tRandom() % 1000000 : static_cast<std::uint32_t>(5000 + iOrder * i));
    };
    const auto tNumbers = [&] {
        std::vector<int> iNumbers;
        for (const QString& s : Column(t, Number)) iNumbers.push_back(s.toInt());
        std::ranges::sort(iNumbers);
        return iNumbers;
    };
    const auto tRange = [](int iFirst, int iLast) {
        std::vector<int> iNumbers;
        for (int i = iFirst; i <= iLast; ++i) iNumbers.push_back(i);
        return iNumbers;
    };
    for (int i = 1; i <= 256; ++i) tHear(i);
    QCOMPARE(tNumbers(), tRange(1, 256));
    tHear(257);
    QCOMPARE(tNumbers(), tRange(2, 257));
    for (int i = 258; i <= 400; ++i) tHear(i);
    QCOMPARE(tNumbers(), tRange(145, 400));
    QCOMPARE(t.grdTargetData.model()->rowCount(), 256);
}

// After months: the newest 256 stay, in every order, and the newest row is known.
void TargetsWindowTest::numbersGoOnBeyondTwoToThe31() {
    Targets t;
    t.m_lMessageNumber = 2147483647 - 300;
    for (std::uint32_t i = 1; i <= 900; ++i) {
        t.Hear(i);
        QCOMPARE(t.grdTargetData.Cells.Rows() - 1, static_cast<int>(std::min(i, 256U)));
        QCOMPARE(t.m_lMessageRow, static_cast<int>(std::min(i, 256U)));
    }
    QCOMPARE(Cell(t, 1, Mmsi), QByteArray("645"));
    QCOMPARE(Cell(t, 256, Mmsi), QByteArray("900"));
    QCOMPARE(Cell(t, 1, Number), QByteArray("2147483992"));
    QCOMPARE(Cell(t, 256, Number), QByteArray("2147484247"));
}

void TargetsWindowTest::summaryReplacesAnError() {
    Targets t;
    t.Hear(1);
    t.FeedLine(0, "$GP");
    QCOMPARE(t.Summary(), QByteArray("Size Error"));
    t.Hear(1);
    QCOMPARE(t.Summary(), QByteArray("1 Targets, 2 Messages"));
}

void TargetsWindowTest::cellsAreAligned() {
    Targets t;
    t.txtGpsLat.SetText("00 00.00 N");
    t.txtGpsLon.SetText("000 00.00 E");
    AisReport tReport = {.lMmsi = 5, .lRateOfTurn = 3, .lSpeed = 100, .lLongitude = 600000, .lLatitude = 600000};
    t.FeedLine(0, AisSentence(AisClassA(1, tReport)));
    t.Advance(100);
    t.FeedLine(0, AisSentence(AisClassA(1, tReport)));
    t.Synchronize();
    const auto tAlignment = [&](int iCol) {
        return t.grdTargetData.model()->index(1, iCol).data(Qt::TextAlignmentRole).value<Qt::Alignment>();
    };
    QCOMPARE(tAlignment(7), Qt::AlignLeft | Qt::AlignVCenter);
    for (const int iCol : {8, 9, 10, 11, 12, 13, Spec, Miss}) {
        QVERIFY(!Cell(t, 2, iCol).isEmpty());
        QCOMPARE(tAlignment(iCol), Qt::AlignRight | Qt::AlignVCenter);
    }
}

void TargetsWindowTest::emptyMotionIsNotWritten() {
    Targets t;
    t.Hear(5);
    t.TargetSetMotion("+1.0", "2.0");
    t.TargetSetMotion("", "3.0");
    QCOMPARE(Cell(t, 1, 12), QByteArray("+1.0"));
    QCOMPARE(Cell(t, 1, 13), QByteArray("3.0"));
    t.TargetSetMotion("-1.0", "");
    QCOMPARE(Cell(t, 1, 12), QByteArray("-1.0"));
    QCOMPARE(Cell(t, 1, 13), QByteArray("3.0"));
    // Position, range and bearing are written as they come, empty too.
    t.TargetSetPosition("a", "b");
    t.TargetSetPosition("", "");
    t.TargetSetRangeBearing("1.0", "2");
    t.TargetSetRangeBearing("", "");
    for (const int iCol : {8, 9, 10, 11}) QCOMPARE(Cell(t, 1, iCol), QByteArray());
}

void TargetsWindowTest::latenessBySpeed_data() {
    QTest::addColumn<int>("iType");
    QTest::addColumn<quint32>("lSpeed");  // tenths of knots
    QTest::addColumn<int>("iSeconds");    // since the message before
    QTest::addColumn<int>("iSpec");       // 0: nothing shows
    QTest::addColumn<int>("iMiss");
    const auto tRow = [](const char* sName, int iType, quint32 lSpeed, int iSeconds, int iSpec, int iMiss) {
        QTest::newRow(sName) << iType << lSpeed << iSeconds << iSpec << iMiss;
    };
    tRow("class A at 10 knots, 25 s", 1, 100, 25, 10, 2);
    tRow("class A at 10 knots, 12 s", 1, 100, 12, 0, 0);
    tRow("class A at 10 knots, 13 s", 1, 100, 13, 10, 1);
    tRow("class A at 10 knots, 29 s", 2, 100, 29, 10, 2);
    tRow("class A at 10 knots, 30 s", 3, 100, 30, 10, 3);
    tRow("class A at 23.1 knots, 4 s", 1, 231, 4, 0, 0);
    tRow("class A at 23.1 knots, 5 s", 1, 231, 5, 2, 2);
    tRow("class A at 23 knots", 1, 230, 9, 6, 1);
    tRow("class A at 23 knots, 8 s", 1, 230, 8, 0, 0);
    tRow("class A at 14.1 knots", 2, 141, 25, 6, 4);
    tRow("class A at 14 knots", 2, 140, 25, 10, 2);
    tRow("class A at 2.1 knots", 3, 21, 25, 10, 2);
    tRow("class A at 2 knots", 3, 20, 25, 10, 2);
    tRow("class A at 0.1 knots", 1, 1, 25, 10, 2);
    tRow("class A at rest, 182 s", 1, 0, 182, 0, 0);
    tRow("class A at rest, 183 s", 1, 0, 183, 180, 1);
    tRow("class A at rest, an hour", 1, 0, 3600, 180, 20);
    tRow("class A at 102.2 knots", 1, 1022, 60, 2, 30);
    tRow("class A without speed", 1, 1023, 3600, 0, 0);
    tRow("class B at 23.1 knots, 7 s", 18, 231, 7, 0, 0);
    tRow("class B at 23.1 knots, 8 s", 18, 231, 8, 5, 1);
    tRow("class B at 23 knots", 19, 230, 33, 15, 2);
    tRow("class B at 14.1 knots", 18, 141, 17, 0, 0);
    tRow("class B at 14 knots", 18, 140, 33, 30, 1);
    tRow("class B at 2.1 knots", 19, 21, 100, 30, 3);
    tRow("class B at 2 knots, 182 s", 18, 20, 182, 0, 0);
    tRow("class B at 2 knots, 183 s", 18, 20, 183, 180, 1);
    tRow("class B at 0.1 knots", 18, 1, 720, 180, 4);
    tRow("class B at rest", 18, 0, 7200, 0, 0);
    tRow("class B without speed", 18, 1023, 7200, 0, 0);
}

void TargetsWindowTest::latenessBySpeed() {
    QFETCH(int, iType);
    QFETCH(quint32, lSpeed);
    QFETCH(int, iSeconds);
    QFETCH(int, iSpec);
    QFETCH(int, iMiss);
    Targets t;
    t.HearPosition(iType, 5, lSpeed);
    QCOMPARE(Cell(t, 1, Spec), QByteArray());  // without a Last nothing is checked
    t.tWorld.dtNow.lSeconds += iSeconds;
    t.HearPosition(iType, 5, lSpeed);
    QCOMPARE(Cell(t, 2, Last), QByteArray::number(iSeconds));
    QCOMPARE(Cell(t, 2, Spec), iSpec == 0 ? QByteArray() : QByteArray::number(iSpec));
    QCOMPARE(Cell(t, 2, Miss), iSpec == 0 ? QByteArray() : QByteArray::number(iMiss));
}

void TargetsWindowTest::otherTypesAreNeverLate() {
    Targets t;
    for (int iRound = 0; iRound < 2; ++iRound) {
        for (const int iType : {4, 5, 11, 21, 24}) {
            const AisReport tReport = {.lMmsi = static_cast<std::uint32_t>(iType), .lSpeed = 500};
            t.FeedLine(0, AisSentence(iType == 4 ? AisBaseStation(4, tReport) : AisOther(iType, tReport.lMmsi)));
        }
        t.Advance(1000);
    }
    QCOMPARE(Column(t, Last).count(QStringLiteral("1000")), 5);
    QCOMPARE(Column(t, Spec).count(QString()), 10);
    QCOMPARE(Column(t, Miss).count(QString()), 10);
}

void TargetsWindowTest::bothPortsFeedOneTable() {
    Targets t;
    t.Hear(20, 0);
    t.Advance(4);
    t.Hear(20, 1);
    t.Hear(10, 1);
    QCOMPARE(Column(t, Mmsi), Texts({"10", "20", "20"}));
    QCOMPARE(Column(t, Last), Texts({"", "", "4"}));
    QCOMPARE(t.Summary(), QByteArray("2 Targets, 3 Messages"));
}

void TargetsWindowTest::levelsNeedARow_data() {
    QTest::addColumn<int>("iRow");
    QTest::addColumn<bool>("bWritten");
    QTest::newRow("none") << -1 << false;
    QTest::newRow("header") << 0 << false;
    QTest::newRow("first") << 1 << true;
    QTest::newRow("last") << 2 << true;
    QTest::newRow("behind the last") << 3 << false;
    QTest::newRow("far behind") << 100000 << false;
    QTest::newRow("far before") << -100000 << false;
}

void TargetsWindowTest::levelsNeedARow() {
    QFETCH(int, iRow);
    QFETCH(bool, bWritten);
    Targets t;
    t.Hear(1);
    t.Hear(2);
    t.m_lMessageRow = iRow;
    t.TargetSetSignal("29", "19");
    for (int i = 0; i <= 2; ++i) {
        const QByteArray sHeader = i == 0 ? "Signal" : "";
        QCOMPARE(Cell(t, i, Signal), bWritten && i == iRow ? QByteArray("29") : sHeader);
    }
    QVERIFY(t.grdTargetData.Redraw());
}

void TargetsWindowTest::snrIsTheDifference_data() {
    QTest::addColumn<QByteArray>("sSignal");
    QTest::addColumn<QByteArray>("sThreshold");
    QTest::addColumn<QByteArray>("sSnr");
    QTest::newRow("raw") << QByteArray("29") << QByteArray("19") << QByteArray("10");
    QTest::newRow("dBm") << QByteArray("-87") << QByteArray("-107") << QByteArray("20");
    QTest::newRow("below the threshold") << QByteArray("10") << QByteArray("19") << QByteArray("-9");
    QTest::newRow("half rounds away from zero") << QByteArray("20.5") << QByteArray("19") << QByteArray("2");
    QTest::newRow("half below zero") << QByteArray("17.5") << QByteArray("19") << QByteArray("-2");
    QTest::newRow("zero has no sign") << QByteArray("18.7") << QByteArray("19") << QByteArray("0");
    QTest::newRow("no number") << QByteArray("loud") << QByteArray("19") << QByteArray("-19");
    QTest::newRow("empty") << QByteArray() << QByteArray() << QByteArray("0");
    QTest::newRow("leading number") << QByteArray(" 29 dB") << QByteArray("1e1x") << QByteArray("19");
}

void TargetsWindowTest::snrIsTheDifference() {
    QFETCH(QByteArray, sSignal);
    QFETCH(QByteArray, sThreshold);
    QFETCH(QByteArray, sSnr);
    Targets t;
    t.Hear(1);
    t.TargetSetSignal(View(sSignal), View(sThreshold));
    QCOMPARE(Cell(t, 1, Signal), sSignal);
    QCOMPARE(Cell(t, 1, Threshold), sThreshold);
    QCOMPARE(Cell(t, 1, Snr), sSnr);
}

void TargetsWindowTest::levelsSortOnlyUnderSignal() {
    Targets t;
    t.Hear(30);
    t.FeedLine(0, WithChecksum("$PNMLS,50,19,3"));
    t.cmbTargetSort.SetListIndex(2);
    t.Hear(10);
    QCOMPARE(Column(t, Mmsi), Texts({"30", "10"}));  // stays last until its levels come
    t.FeedLine(0, WithChecksum("$PNMLS,40,19,3"));
    QCOMPARE(Column(t, Mmsi), Texts({"10", "30"}));
    t.Hear(20);
    t.FeedLine(0, WithChecksum("$PNMLS,45,19,3"));
    QCOMPARE(Column(t, Mmsi), Texts({"10", "20", "30"}));
    t.cmbTargetSort.SetListIndex(0);
    t.Hear(15);
    t.FeedLine(0, WithChecksum("$PNMLS,99,19,3"));
    QCOMPARE(Column(t, Mmsi), Texts({"10", "15", "20", "30"}));
    QCOMPARE(Column(t, Signal), Texts({"40", "99", "45", "50"}));
}

void TargetsWindowTest::newestRowIsKnownOnlyFromTheRefresh() {
    Targets t;
    QCOMPARE(t.m_lMessageRow, 0);
    t.Hear(30);
    QCOMPARE(t.m_lMessageRow, 1);
    t.Hear(40);
    QCOMPARE(t.m_lMessageRow, 2);
    t.Hear(20);
    QCOMPARE(t.m_lMessageRow, 1);
    t.TargetUpdate(t.tWorld.dtNow, 10, "A", "11");
    QCOMPARE(t.m_lMessageRow, 1);
    t.TargetSort();
    QCOMPARE(t.m_lMessageRow, 1);
    t.TargetRefresh();
    QCOMPARE(Cell(t, t.m_lMessageRow, Mmsi), QByteArray("10"));
}

void TargetsWindowTest::newestRowSurvivesAClear() {
    Targets t;
    for (std::uint32_t i = 1; i <= 4; ++i) t.Hear(i);
    QCOMPARE(t.m_lMessageRow, 4);
    t.Press(ui::KeyStop);
    t.Press(ui::KeyStart);
    QCOMPARE(t.m_lMessageRow, 4);
    t.TargetSetSignal("29", "19");
    QCOMPARE(t.grdTargetData.Cells.Rows(), 1);
    t.Hear(9);
    QCOMPARE(t.m_lMessageRow, 1);
}

void TargetsWindowTest::clearEmptiesListAndTable() {
    Targets t;
    for (std::uint32_t i = 1; i <= 4; ++i) t.Hear(i);
    t.cmbTargetTarget.SetText("3");
    t.Press(ui::KeyStop);
    t.Press(ui::KeyStart);
    QCOMPARE(t.ListItems(), QStringList());
    QCOMPARE(t.Selected(), QByteArray("3"));
    t.Synchronize();
    QCOMPARE(t.grdTargetData.model()->rowCount(), 0);
    QCOMPARE(t.grdTargetData.model()->columnCount(), 17);
    QCOMPARE(t.m_lMessageNumber, 0);
    QCOMPARE(t.Summary(), QByteArray());
    t.Hear(1);
    QCOMPARE(Cell(t, 1, Last), QByteArray());
    QCOMPARE(t.Selected(), QByteArray("3"));
    QCOMPARE(t.Summary(), QByteArray("1 Targets, 1 Messages"));
}

void TargetsWindowTest::findRowAnswersTheFirst() {
    Targets t;
    t.HearAll({30, 10, 20, 20});
    QCOMPARE(t.TargetFindRow(99), -1);
    QVERIFY(t.grdTargetData.Redraw());
    QCOMPARE(t.TargetFindRow(20), 2);
    QVERIFY(!t.grdTargetData.Redraw());
    QCOMPARE(t.TargetFindRow(99), -1);
    QVERIFY(!t.grdTargetData.Redraw());  // as it was before
    t.Hear(5);
    QVERIFY(t.grdTargetData.Redraw());
    QCOMPARE(t.TargetFindRow(5), 1);
}

void TargetsWindowTest::redrawIsOnAfterEveryMessage() {
    Targets t;
    for (int i = 0; i < 64; ++i) {
        t.FeedLine(0, AisSentence(AisOther(i, 7)));
        QVERIFY(t.grdTargetData.Redraw());
        QVERIFY(t.grdMessageData.Redraw());
        t.FeedLine(0, "$PNMLS,29,19,3*50");
        QVERIFY(t.grdTargetData.Redraw());
    }
}

QTEST_MAIN(TargetsWindowTest)
#include "TargetsWindowTest.moc"
