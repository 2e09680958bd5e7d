// The fields of a sentence, one after the other.
#include "nmea/FieldReader.h"

#include <QByteArray>
#include <QTest>

#include "tests/support/Bytes.h"

using nmea::FieldReader;
using support::Bytes;

class FieldReaderTest : public QObject {
    Q_OBJECT

private slots:
    void fieldsComeInTheirOrder();
    void fieldWithoutItsEndIsMissing();
    void emptyFieldIsNotFilled();
    void fieldMayEndAtAnotherSign();
    void longFieldIsReadTheSame();
    void onlyWhatIsNextIsSkipped();
    void shortSentenceHasNoFields();
};

void FieldReaderTest::fieldsComeInTheirOrder() {
    FieldReader t("!AIVDM,1,,B,");
    std::string_view sField;
    for (const char* sExpected : {"1", "", "B"}) {
        QVERIFY(t.Next(sField));
        QCOMPARE(Bytes(sField), QByteArray(sExpected));
    }
    QVERIFY(!t.Next(sField));
}

void FieldReaderTest::fieldWithoutItsEndIsMissing() {
    FieldReader t("$PNMLS,12,34");
    std::string_view sField;
    QVERIFY(t.Next(sField));
    QVERIFY(!t.Next(sField));
    QCOMPARE(Bytes(sField), QByteArray("12"));  // the last one that there was
    QCOMPARE(Bytes(t.Rest()), QByteArray("34"));
}

void FieldReaderTest::emptyFieldIsNotFilled() {
    FieldReader t("$PNMLS,,34,");
    std::string_view sField;
    QVERIFY(!t.NextFilled(sField));
    QVERIFY(t.NextFilled(sField));
    QCOMPARE(Bytes(sField), QByteArray("34"));
    QVERIFY(!t.NextFilled(sField));
}

void FieldReaderTest::fieldMayEndAtAnotherSign() {
    FieldReader t("$PNMLS,1,2*55");
    std::string_view sField;
    QVERIFY(t.Next(sField, '*'));
    QCOMPARE(Bytes(sField), QByteArray("1,2"));
    QCOMPARE(Bytes(t.Rest()), QByteArray("55"));
}

void FieldReaderTest::longFieldIsReadTheSame() {
    FieldReader t("!AIVDM,1,xyz,,rest");
    std::string_view sField;
    QVERIFY(t.NextLong(sField));
    QCOMPARE(Bytes(sField), QByteArray("1"));
    QVERIFY(t.NextLong(sField));
    QCOMPARE(Bytes(sField), QByteArray("xyz"));
    QVERIFY(t.NextLong(sField));
    QVERIFY(sField.empty());
    QVERIFY(!t.NextLong(sField));
    QCOMPARE(Bytes(t.Rest()), QByteArray("rest"));
    QVERIFY(!FieldReader("!AIVDM").NextLong(sField));
}

void FieldReaderTest::onlyWhatIsNextIsSkipped() {
    FieldReader t("$GPGLL,N,5,");
    QVERIFY(!t.Skip("S,"));
    QVERIFY(!t.Skip("N,5,,"));
    QVERIFY(t.Skip("N,"));
    QCOMPARE(Bytes(t.Rest()), QByteArray("5,"));
}

void FieldReaderTest::shortSentenceHasNoFields() {
    for (const char* sSentence : {"", "$GPGLL", "$GPGLL,"}) {
        FieldReader t(sSentence);
        std::string_view sField;
        QVERIFY(!t.Next(sField));
        QVERIFY(t.Rest().empty());
    }
}

QTEST_GUILESS_MAIN(FieldReaderTest)
#include "FieldReaderTest.moc"
