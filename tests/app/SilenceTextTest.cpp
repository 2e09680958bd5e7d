// The silence of a port, as the status bar shows it.
#include "app/SilenceText.h"

#include <QByteArray>
#include <QTest>

class SilenceTextTest : public QObject {
    Q_OBJECT

private slots:
    void silenceIsShown_data();
    void silenceIsShown();
};

void SilenceTextTest::silenceIsShown_data() {
    QTest::addColumn<int>("iSeconds");
    QTest::addColumn<QByteArray>("sText");
    const auto Row = [](int iSeconds, const char* sText) {
        QTest::addRow("%d seconds", iSeconds) << iSeconds << QByteArray(sText);
    };
    Row(0, "00:00");
    Row(7, "00:07");
    Row(10, "00:10");
    Row(59, "00:59");
    Row(60, "00:60");  // the bound belongs to the first minute
    Row(61, "01:01");
    Row(119, "01:59");
    Row(120, "02:00");
    Row(121, "02:01");
    Row(600, "10:00");
    Row(3599, "59:59");
    Row(3600, "60:00");
    Row(3661, "61:01");
    Row(5999, "99:59");
    Row(6000, "100:00");
    Row(2147483647, "35791394:07");
}

void SilenceTextTest::silenceIsShown() {
    QFETCH(int, iSeconds);
    QFETCH(QByteArray, sText);
    QCOMPARE(QByteArray::fromStdString(app::SilenceText(iSeconds)), sText);
}

QTEST_GUILESS_MAIN(SilenceTextTest)
#include "SilenceTextTest.moc"
