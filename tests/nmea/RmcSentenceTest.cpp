// The RMC sentence made for the output port.
#include "nmea/RmcSentence.h"

#include <QTest>

#include "tests/support/Bytes.h"

using runtime::MakeDateTime;
using support::Bytes;

namespace {

std::string Rmc(std::string_view sTime, std::string_view sLatitude, std::string_view sLongitude,
                runtime::DateTime dtToday) {
    std::string sSentence = "what stood there before";
    nmea::MakeRmc(sSentence, sTime, sLatitude, sLongitude, dtToday);
    return sSentence;
}

}  // namespace

class RmcSentenceTest : public QObject {
    Q_OBJECT

private slots:
    void sentenceOfTheFifteenthOfMay();
    void hasElevenFieldsWithTheCommaBeforeTheVariation();
    void dateIsTodaysAsDayMonthYear_data();
    void dateIsTodaysAsDayMonthYear();
    void checksumIsThatOfTheBody();
    void fieldsPassAsReceived();
};

void RmcSentenceTest::sentenceOfTheFifteenthOfMay() {
    const std::string sRmc = Rmc("225444", "4916.45,N", "12311.12,W", MakeDateTime({2011, 5, 15}, 0, 0, 0));
    QCOMPARE(Bytes(sRmc.substr(0, sRmc.size() - 2)),
             QByteArray("$ECRMC,225444,A,4916.45,N,12311.12,W,0.0,000.0,150511,0.0,E*"));
}

void RmcSentenceTest::hasElevenFieldsWithTheCommaBeforeTheVariation() {
    const QByteArray sRmc = Bytes(Rmc("225444", "4916.45,N", "12311.12,W", MakeDateTime({2011, 5, 15}, 12, 0, 0)));
    const QList<QByteArray> sFields = sRmc.left(sRmc.indexOf('*')).split(',');
    QCOMPARE(sFields.size(), 12);  // the address and eleven
    QCOMPARE(sFields[9], QByteArray("150511"));
    QCOMPARE(sFields[10], QByteArray("0.0"));
    QCOMPARE(sFields[11], QByteArray("E"));
    QVERIFY(!sRmc.contains('\r') && !sRmc.contains('\n'));
}

void RmcSentenceTest::dateIsTodaysAsDayMonthYear_data() {
    QTest::addColumn<int>("year");
    QTest::addColumn<int>("month");
    QTest::addColumn<int>("day");
    QTest::addColumn<QByteArray>("date");
    QTest::newRow("two digits each") << 2024 << 12 << 31 << QByteArray("311224");
    QTest::newRow("zeros in front") << 2005 << 1 << 2 << QByteArray("020105");
    QTest::newRow("turn of the century") << 2000 << 2 << 29 << QByteArray("290200");
}

void RmcSentenceTest::dateIsTodaysAsDayMonthYear() {
    QFETCH(int, year);
    QFETCH(int, month);
    QFETCH(int, day);
    QFETCH(QByteArray, date);
    const QByteArray sRmc = Bytes(Rmc("000000", "0000.0,N", "00000.0,E", MakeDateTime({year, month, day}, 23, 59, 59)));
    QCOMPARE(sRmc.split(',').at(9), date);
}

void RmcSentenceTest::checksumIsThatOfTheBody() {
    for (int iDay = 1; iDay <= 28; ++iDay) {
        const QByteArray sRmc = Bytes(Rmc("225444", "4916.45,S", "12311.12,E", MakeDateTime({2011, 5, iDay}, 0, 0, 0)));
        const qsizetype iStar = sRmc.indexOf('*');
        unsigned iXor = 0;
        for (qsizetype i = 1; i < iStar; ++i) iXor ^= static_cast<unsigned char>(sRmc[i]);
        QCOMPARE(sRmc.mid(iStar + 1), QByteArray::number(iXor, 16).toUpper().rightJustified(2, '0'));
    }
}

void RmcSentenceTest::fieldsPassAsReceived() {
    const QByteArray sRmc = Bytes(Rmc("000001", "0016.450000,S", "00011.,W", MakeDateTime({2011, 5, 15}, 0, 0, 0)));
    QVERIFY(sRmc.startsWith("$ECRMC,000001,A,0016.450000,S,00011.,W,0.0,"));
}

QTEST_GUILESS_MAIN(RmcSentenceTest)
#include "RmcSentenceTest.moc"
