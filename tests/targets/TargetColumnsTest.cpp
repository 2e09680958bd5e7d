// The columns of the target table and which of them each detail mode shows.
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
    for (int i = 0; i < targets::TargetColumnCount; ++i) sShown += targets::ColumnShown(i, View(mode)) ? 'x' : '.';
    QCOMPARE(sShown, shown);
    QVERIFY(!targets::ColumnShown(-1, View(mode)));
    QVERIFY(!targets::ColumnShown(17, View(mode)));
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
