// The summary line, with its early mark.
#include "targets/TargetSummary.h"

#include <QTest>

#include "tests/support/Bytes.h"

class TargetSummaryTest : public QObject {
    Q_OBJECT

private slots:
    void summaryReads_data();
    void summaryReads();
};

void TargetSummaryTest::summaryReads_data() {
    QTest::addColumn<int>("heard");
    QTest::addColumn<int>("rows");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("header alone") << 0 << 1 << QByteArray("0 Targets, 0 Messages");
    QTest::newRow("first message") << 1 << 2 << QByteArray("1 Targets, 1 Messages");
    QTest::newRow("253 messages") << 12 << 254 << QByteArray("12 Targets, 253 Messages");
    QTest::newRow("254: the mark comes early") << 12 << 255 << QByteArray("12 Targets, >254 Messages");
    QTest::newRow("255") << 12 << 256 << QByteArray("12 Targets, >255 Messages");
    QTest::newRow("full table") << 12 << 257 << QByteArray("12 Targets, >256 Messages");
    QTest::newRow("more targets than rows") << 1234 << 257 << QByteArray("1234 Targets, >256 Messages");
}

void TargetSummaryTest::summaryReads() {
    QFETCH(int, heard);
    QFETCH(int, rows);
    QFETCH(QByteArray, text);
    std::string sText;
    targets::AppendTargetSummary(sText, heard, rows);
    QCOMPARE(support::Bytes(sText), text);
}

QTEST_GUILESS_MAIN(TargetSummaryTest)
#include "TargetSummaryTest.moc"
