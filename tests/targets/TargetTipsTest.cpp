// The tool-tip of each column, with and without units.
#include "targets/TargetTips.h"

#include <QTest>

#include "tests/support/Bytes.h"

using support::Bytes;
using targets::TargetTip;

class TargetTipsTest : public QObject {
    Q_OBJECT

private slots:
    void columnExplainsItself_data();
    void columnExplainsItself();
    void noCellHasNoTip();
};

void TargetTipsTest::columnExplainsItself_data() {
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

void TargetTipsTest::columnExplainsItself() {
    QFETCH(int, column);
    QFETCH(QByteArray, raw);
    QFETCH(QByteArray, power);
    for (const int iRow : {0, 1, 256}) {  // the header row counts too
        QCOMPARE(Bytes(TargetTip(iRow, column, false)), raw);
        QCOMPARE(Bytes(TargetTip(iRow, column, true)), power);
    }
}

void TargetTipsTest::noCellHasNoTip() {
    for (int iColumn = -1; iColumn < 18; ++iColumn) QCOMPARE(Bytes(TargetTip(-1, iColumn, true)), QByteArray());
}

QTEST_GUILESS_MAIN(TargetTipsTest)
#include "TargetTipsTest.moc"
