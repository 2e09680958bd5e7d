// What is told of a recording or a playback that is under way.
#include "app/RunNote.h"

#include <QTest>

using app::LastRecordStamp;
using runtime::DateTime;
using runtime::MakeDateTime;

class RunNoteTest : public QObject {
    Q_OBJECT
private slots:
    void Sizes_data();
    void Sizes();
    void Spans_data();
    void Spans();
    void Moments();
    void LastStamp_data();
    void LastStamp();
};

void RunNoteTest::Sizes_data() {
    QTest::addColumn<qint64>("lBytes");
    QTest::addColumn<QString>("sText");
    QTest::newRow("0") << qint64{0} << QStringLiteral("0 bytes");
    QTest::newRow("1") << qint64{1} << QStringLiteral("1 byte");
    QTest::newRow("999") << qint64{999} << QStringLiteral("999 bytes");
    QTest::newRow("1000") << qint64{1000} << QStringLiteral("1.0 kB");
    QTest::newRow("1250") << qint64{1250} << QStringLiteral("1.3 kB");
    QTest::newRow("nearly a million") << qint64{999'949} << QStringLiteral("999.9 kB");
    QTest::newRow("rounded to a million") << qint64{999'951} << QStringLiteral("1.0 MB");
    QTest::newRow("millions") << qint64{12'345'678} << QStringLiteral("12.3 MB");
    QTest::newRow("thousands of millions") << qint64{4'500'000'000} << QStringLiteral("4.5 GB");
    QTest::newRow("more") << qint64{4'500'000'000'000} << QStringLiteral("4500.0 GB");
}

void RunNoteTest::Sizes() {
    QFETCH(qint64, lBytes);
    QFETCH(QString, sText);
    QCOMPARE(QString::fromStdString(app::SizeText(lBytes)), sText);
}

void RunNoteTest::Spans_data() {
    QTest::addColumn<qint64>("lSeconds");
    QTest::addColumn<QString>("sText");
    QTest::newRow("0") << qint64{0} << QStringLiteral("0:00:00");
    QTest::newRow("59") << qint64{59} << QStringLiteral("0:00:59");
    QTest::newRow("a minute") << qint64{60} << QStringLiteral("0:01:00");
    QTest::newRow("an hour less one") << qint64{3599} << QStringLiteral("0:59:59");
    QTest::newRow("more than a day") << qint64{94'200} << QStringLiteral("26:10:00");
    QTest::newRow("a week") << qint64{604'800} << QStringLiteral("168:00:00");
    QTest::newRow("clock set back") << qint64{-5} << QStringLiteral("0:00:00");
}

void RunNoteTest::Spans() {
    QFETCH(qint64, lSeconds);
    QFETCH(QString, sText);
    QCOMPARE(QString::fromStdString(app::SpanText(lSeconds)), sText);
}

void RunNoteTest::Moments() {
    const DateTime dtNow = MakeDateTime({2011, 5, 15}, 12, 0, 0);
    const auto Text = [&](DateTime dt) { return QString::fromStdString(app::MomentText(dt, dtNow)); };
    QCOMPARE(Text(MakeDateTime({2011, 5, 15}, 14, 35, 10)), QStringLiteral("14:35:10"));
    QCOMPARE(Text(MakeDateTime({2011, 5, 15}, 0, 0, 0)), QStringLiteral("00:00:00"));
    QCOMPARE(Text(MakeDateTime({2011, 5, 15}, 23, 59, 59)), QStringLiteral("23:59:59"));
    QCOMPARE(Text(MakeDateTime({2011, 5, 16}, 0, 0, 0)), QStringLiteral("05/16/2011 00:00:00"));
    QCOMPARE(Text(MakeDateTime({2011, 5, 14}, 23, 59, 59)), QStringLiteral("05/14/2011 23:59:59"));
}

void RunNoteTest::LastStamp_data() {
    QTest::addColumn<QByteArray>("sEnd");
    QTest::addColumn<int>("iSecond");  // behind 10:00:00 on 15 May 2011; -1: none
    const QByteArray sFirst = "05/15/2011 10:00:01 $GPGLL,1*00\r\n";
    const QByteArray sSecond = "05/15/2011 10:00:02 $GPGLL,2*00\r\n";
    QTest::newRow("lines") << sFirst + sSecond << 2;
    QTest::newRow("no end of line") << sFirst + sSecond.chopped(2) << 2;
    QTest::newRow("stamp alone") << sFirst + "05/15/2011 10:00:03" << 3;
    QTest::newRow("line feeds alone") << QByteArray(sFirst + sSecond).replace("\r\n", "\n") << 2;
    QTest::newRow("empty lines behind") << sFirst + sSecond + "\r\n\r\n\n" << 2;
    QTest::newRow("torn last line") << sFirst + "05/15/20" << 1;
    QTest::newRow("torn first line") << "15/2011 10:00:01 $GPGLL\r\n" + sSecond << 2;
    QTest::newRow("no stamps") << QByteArray("$GPGLL\r\n$GPGLL\r\n") << -1;
    QTest::newRow("nothing") << QByteArray() << -1;
}

void RunNoteTest::LastStamp() {
    QFETCH(QByteArray, sEnd);
    QFETCH(int, iSecond);
    const auto dt = LastRecordStamp(sEnd.toStdString());
    QCOMPARE(dt.has_value(), iSecond >= 0);
    if (dt) QCOMPARE(dt->lSeconds, MakeDateTime({2011, 5, 15}, 10, 0, iSecond).lSeconds);
}

QTEST_APPLESS_MAIN(RunNoteTest)
#include "RunNoteTest.moc"
