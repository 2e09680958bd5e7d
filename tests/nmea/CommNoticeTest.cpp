// The texts that a port's events leave in the log.
#include "nmea/CommNotice.h"

#include <QTest>

#include "tests/support/Bytes.h"

class CommNoticeTest : public QObject {
    Q_OBJECT

private slots:
    void eventReadsAsNotice_data();
    void eventReadsAsNotice();
    void ownNoticesCount();
};

void CommNoticeTest::eventReadsAsNotice_data() {
    QTest::addColumn<int>("event");
    QTest::addColumn<QByteArray>("notice");
    QTest::newRow("break") << 1001 << QByteArray("<<Break Signal Received>>");
    QTest::newRow("framing error") << 1004 << QByteArray("<<Framing Error>>");
    QTest::newRow("overrun") << 1006 << QByteArray("<<Port Overrun>>");
    QTest::newRow("receive overflow") << 1008 << QByteArray("<<Rx Overflow>>");
    QTest::newRow("parity error") << 1009 << QByteArray("<<Parity Error>>");
    QTest::newRow("waiting line full") << 1010 << QByteArray("<<Event 1010>>");
    QTest::newRow("device lost") << 2001 << QByteArray("<<Event 2001>>");
    QTest::newRow("device back") << 2002 << QByteArray("<<Event 2002>>");
    QTest::newRow("number between the known ones") << 1005 << QByteArray("<<Event 1005>>");
    QTest::newRow("zero") << 0 << QByteArray("<<Event 0>>");
    QTest::newRow("negative") << -7 << QByteArray("<<Event -7>>");
}

void CommNoticeTest::eventReadsAsNotice() {
    QFETCH(int, event);
    QFETCH(QByteArray, notice);
    QCOMPARE(support::Bytes(nmea::CommNotice(event)), notice);
}

void CommNoticeTest::ownNoticesCount() {
    QCOMPARE(support::Bytes(nmea::OutputNotice("full", 816)), QByteArray("<<Output full - 816 sentences dropped>>"));
    QCOMPARE(support::Bytes(nmea::OutputNotice("lost", 1)), QByteArray("<<Output lost - 1 sentence dropped>>"));
    QCOMPARE(support::Bytes(nmea::NotOpenedNotice("permission denied: /dev/ttyUSB0")),
             QByteArray("<<Device not opened - permission denied: /dev/ttyUSB0>>"));
    QCOMPARE(support::Bytes(nmea::HalfLineNotice(1)), QByteArray("<<Half line dropped - 1 character>>"));
    QCOMPARE(support::Bytes(nmea::HalfLineNotice(23)), QByteArray("<<Half line dropped - 23 characters>>"));
    QCOMPARE(support::Bytes(nmea::LongLineNotice(65536)),
             QByteArray("<<Line dropped - longer than 65536 characters>>"));
}

QTEST_GUILESS_MAIN(CommNoticeTest)
#include "CommNoticeTest.moc"
