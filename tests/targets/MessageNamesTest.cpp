// The titles of the message types.
#include "targets/MessageNames.h"

#include <QTest>

#include "tests/support/Bytes.h"

using support::Bytes;
using targets::MessageName;

class MessageNamesTest : public QObject {
    Q_OBJECT

private slots:
    void titleOfType_data();
    void titleOfType();
    void everyOtherTypeIsItsNumber();
    void titlesStayWhereTheyAre();
};

void MessageNamesTest::titleOfType_data() {
    QTest::addColumn<int>("id");
    QTest::addColumn<QByteArray>("title");
    QTest::newRow("1") << 1 << QByteArray("1=Position Scheduled");
    QTest::newRow("2") << 2 << QByteArray("2=Position Assigned");
    QTest::newRow("3") << 3 << QByteArray("3=Position Response");
    QTest::newRow("4") << 4 << QByteArray("4=Base Station Report");
    QTest::newRow("5") << 5 << QByteArray("5=Ship Static and Voyage");
    QTest::newRow("11") << 11 << QByteArray("11=UTC/Date Response");
    QTest::newRow("15") << 15 << QByteArray("15=Interrogation");
    QTest::newRow("18") << 18 << QByteArray("18=Class B Standard Position");
    QTest::newRow("19") << 19 << QByteArray("19=Class B Extended Position");
    QTest::newRow("20") << 20 << QByteArray("20=Data Link Management");
    QTest::newRow("21") << 21 << QByteArray("21=Aids-to-Navigation");
    QTest::newRow("24") << 24 << QByteArray("24=Class B Static Data");
    QTest::newRow("without a name") << 7 << QByteArray("7");
    QTest::newRow("zero") << 0 << QByteArray("0");
    QTest::newRow("last of six bits") << 63 << QByteArray("63");
    QTest::newRow("below six bits") << -48 << QByteArray("-48");
    QTest::newRow("beyond six bits") << 199 << QByteArray("199");
}

void MessageNamesTest::titleOfType() {
    QFETCH(int, id);
    QFETCH(QByteArray, title);
    QCOMPARE(Bytes(MessageName(id)), title);
}

void MessageNamesTest::everyOtherTypeIsItsNumber() {
    const QList<int> iNamed = {1, 2, 3, 4, 5, 11, 15, 18, 19, 20, 21, 24};
    for (int iId = -60; iId < 260; ++iId) {
        const QByteArray sTitle = Bytes(MessageName(iId));
        QCOMPARE(sTitle.contains('='), iNamed.contains(iId));
        QCOMPARE(sTitle.split('=').front(), QByteArray::number(iId));
    }
}

void MessageNamesTest::titlesStayWhereTheyAre() {
    const std::string& sFirst = MessageName(1);
    MessageName(199);
    MessageName(2);
    QCOMPARE(&MessageName(1), &sFirst);
    QCOMPARE(Bytes(sFirst), QByteArray("1=Position Scheduled"));
}

QTEST_GUILESS_MAIN(MessageNamesTest)
#include "MessageNamesTest.moc"
