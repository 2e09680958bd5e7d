// The form in which tests and scripts write a time.
#include "tests/support/IsoTime.h"

#include <QByteArray>
#include <QTest>

using namespace support;

class IsoTimeTest : public QObject {
    Q_OBJECT

private slots:
    void textsAreReadBack();
    void otherTextsAreRefused_data();
    void otherTextsAreRefused();
};

void IsoTimeTest::textsAreReadBack() {
    for (const char* sText : {"2005-03-07T04:05:06", "2000-02-29T23:59:59", "0001-01-01T00:00:00"}) {
        const auto dt = FromIso(sText);
        QVERIFY(dt.has_value());
        QCOMPARE(IsoText(*dt), std::string(sText));
    }
    QVERIFY(FromIso("2005-03-07T04:05:06") == runtime::MakeDateTime({2005, 3, 7}, 4, 5, 6));
    QCOMPARE(IsoText(runtime::MakeDateTime({9999, 10, 11}, 13, 2, 1)), std::string("9999-10-11T13:02:01"));
}

void IsoTimeTest::otherTextsAreRefused_data() {
    QTest::addColumn<QByteArray>("sText");
    for (const char* sText :
         {"", "2005-03-07", "2005-03-07 04:05:06", "2005-03-07T04:05:06Z", "2005-03-07T04:05:6", "2005/03/07T04:05:06",
          "2005-13-07T04:05:06", "2005-02-29T04:05:06", "2005-03-07T24:05:06", "2005-03-07T04:05:60",
          "x005-03-07T04:05:06", "0000-03-07T04:05:06"}) {
        QTest::addRow("\"%s\"", sText) << QByteArray(sText);
    }
}

void IsoTimeTest::otherTextsAreRefused() {
    QFETCH(QByteArray, sText);
    QVERIFY(!FromIso(sText.toStdString()));
}

QTEST_GUILESS_MAIN(IsoTimeTest)
#include "IsoTimeTest.moc"
