// The columns of the target table, which of them each detail mode shows, and their tips, with and without units.
#include "targets/TargetColumns.h"

#include <QTest>

#include "tests/support/Bytes.h"

using support::Bytes;
using support::View;

class TargetColumnsTest : public QObject {
    Q_OBJECT

private slots:
    void columnHasHeaderAndTemplate_data();
    void columnHasHeaderAndTemplate();
    void detailModeShowsItsColumns_data();
    void detailModeShowsItsColumns();
    void columnExplainsItself_data();
    void columnExplainsItself();
    void noCellHasNoTip();
    void choicesAreOfferedInOrder();
    void tableHolds256Messages();
};

void TargetColumnsTest::columnHasHeaderAndTemplate_data() {
    QTest::addColumn<int>("column");
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<QByteArray>("width");
    const struct {
        const char* sHeader;
        const char* sTemplate;
    } tColumns[] = {
        {"", ""},
        {"MMSI", "------MMSI-----"},
        {"Ch", "-Ch-"},
        {"Signal", "-Signal-"},
        {"Thres", "-Thres-"},
        {"Snr", "-Snr-"},
        {"Time", "-hh:mm:ss-"},
        {"Message Id", "0"},
        {"Rng", "--Rng--"},
        {"Brg", "--Brg--"},
        {"Lat", "-00-00.00-N-"},
        {"Lon", "-000-00.00-W-"},
        {"Rot", "--Rot--"},
        {"Sog", "--Sog--"},
        {"Last", "-Last-"},
        {"Spec", "-Spec-"},
        {"Miss", "-Miss-"},
    };
    QCOMPARE(std::size(tColumns), targets::TargetColumns.size());
    for (int i = 0; i < static_cast<int>(std::size(tColumns)); ++i) {
        QTest::addRow("column %d", i) << i << QByteArray(tColumns[i].sHeader) << QByteArray(tColumns[i].sTemplate);
    }
}

void TargetColumnsTest::columnHasHeaderAndTemplate() {
    QFETCH(int, column);
    QFETCH(QByteArray, header);
    QFETCH(QByteArray, width);
    const auto& tColumn = targets::TargetColumns[static_cast<std::size_t>(column)];
    QCOMPARE(Bytes(tColumn.sHeader), header);
    QCOMPARE(Bytes(tColumn.sTemplate), width);
}

void TargetColumnsTest::detailModeShowsItsColumns_data() {
    QTest::addColumn<QByteArray>("mode");
    QTest::addColumn<QByteArray>("shown");  // one character per column 0 to 16
    QTest::newRow("None") << QByteArray("None") << QByteArray(".xxxxxxxxx.......");
    QTest::newRow("Lat/Lon") << QByteArray("Lat/Lon") << QByteArray(".xxxxxxxxxxx.....");
    QTest::newRow("Speed") << QByteArray("Speed") << QByteArray(".xxxxxxxxx..xx...");
    QTest::newRow("Missing shows the motion too") << QByteArray("Missing") << QByteArray(".xxxxxxxxx..xxxxx");
    QTest::newRow("All") << QByteArray("All") << QByteArray(".xxxxxxxxxxxxxxxx");
    QTest::newRow("empty text") << QByteArray("") << QByteArray(".xxxxxxxxx.......");
    QTest::newRow("unknown text") << QByteArray("Everything") << QByteArray(".xxxxxxxxx.......");
    QTest::newRow("other case") << QByteArray("all") << QByteArray(".xxxxxxxxx.......");
}

void TargetColumnsTest::detailModeShowsItsColumns() {
    QFETCH(QByteArray, mode);
    QFETCH(QByteArray, shown);
    QByteArray sShown;
    for (const auto& tColumn : targets::TargetColumns) sShown += targets::ColumnShown(tColumn, View(mode)) ? 'x' : '.';
    QCOMPARE(sShown, shown);
}

void TargetColumnsTest::columnExplainsItself_data() {
    QTest::addColumn<int>("column");
    QTest::addColumn<QByteArray>("raw");
    QTest::addColumn<QByteArray>("power");
    const auto Row = [](int iColumn, const char* sText) {
        QTest::addRow("column %d", iColumn) << iColumn << QByteArray(sText) << QByteArray(sText);
    };
    Row(0, "");
    Row(1, "Martime Mobile Service Identifier");
    Row(2, "Channel Id");
    QTest::newRow("signal") << 3 << QByteArray("Signal Level") << QByteArray("Signal Level (dBm)");
    QTest::newRow("threshold") << 4 << QByteArray("Threshold Level")
                               << QByteArray("Threshold Level (dBm), default=-107");
    QTest::newRow("ratio") << 5 << QByteArray("Signal to Noise Ratio, bigger is better")
                           << QByteArray("Signal to Noise Ratio (dB), bigger is better");
    Row(6, "Time (hh:mm:ss)");
    Row(7, "Message Id");
    Row(8, "Range (nm)");
    Row(9, "Bearing (T)");
    Row(10, "Latitude");
    Row(11, "Longitude");
    Row(12, "Rate of Turn (deg/min)");
    Row(13, "Speed Over Ground (kts)");
    Row(14, "Time Since Last Message (sec)");
    Row(15, "Specified Message Interval (sec)");
    Row(16, "Missing Messages");
    Row(17, "");
    Row(-1, "");
}

void TargetColumnsTest::columnExplainsItself() {
    QFETCH(int, column);
    QFETCH(QByteArray, raw);
    QFETCH(QByteArray, power);
    for (const int iRow : {0, 1, 256}) {  // the header row counts too
        QCOMPARE(Bytes(targets::TargetTip(iRow, column, false)), raw);
        QCOMPARE(Bytes(targets::TargetTip(iRow, column, true)), power);
    }
}

void TargetColumnsTest::noCellHasNoTip() {
    for (int iColumn = -1; iColumn < 18; ++iColumn)
        QCOMPARE(Bytes(targets::TargetTip(-1, iColumn, true)), QByteArray());
}

void TargetColumnsTest::choicesAreOfferedInOrder() {
    QByteArrayList sModes;
    for (const auto sMode : targets::DetailModes) sModes += Bytes(sMode);
    QCOMPARE(sModes.join('|'), QByteArray("None|Lat/Lon|Speed|Missing|All"));
    QByteArrayList sCriteria;
    for (const auto sCriterion : targets::SortCriteria) sCriteria += Bytes(sCriterion);
    QCOMPARE(sCriteria.join('|'), QByteArray("MMSI|Range|Signal"));
}

void TargetColumnsTest::tableHolds256Messages() { QCOMPARE(targets::MessageRowLimit, 256); }

QTEST_GUILESS_MAIN(TargetColumnsTest)
#include "TargetColumnsTest.moc"
