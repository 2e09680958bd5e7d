// The line of a record file: written column by column, and read back from files that others may have touched.
#include "app/RecordLine.h"

#include <QByteArray>
#include <QTest>
#include <string>

using namespace app;

namespace {

constexpr const char* Sentence = "!AIVDM,1,1,,A,15M67FC000G?ufbE`FepT@3n00Sa,0*5C";
const runtime::DateTime Arrival = runtime::MakeDateTime({2005, 3, 7}, 4, 5, 6);

}  // namespace

class RecordLineTest : public QObject {
    Q_OBJECT

private slots:
    void lineHasItsColumns();
    void lineReplacesWhatWasThere();
    void writtenLineReadsBack_data();
    void writtenLineReadsBack();
    void sentenceBeginsAtColumnTwentyOne_data();
    void sentenceBeginsAtColumnTwentyOne();
    void stampIsRead_data();
    void stampIsRead();
    void damagedStampIsRefused_data();
    void damagedStampIsRefused();
    void rememberedStampIsNotTakenForAnother();
    void damagedStampIsNotRemembered();
};

void RecordLineTest::lineHasItsColumns() {
    std::string sLine;
    WriteRecordLine(sLine, Arrival, Sentence);
    const QByteArray sText = QByteArray::fromStdString(sLine);
    QCOMPARE(sText.mid(0, 10), QByteArray("03/07/2005"));
    QCOMPARE(sText.at(10), ' ');
    QCOMPARE(sText.mid(11, 8), QByteArray("04:05:06"));
    QCOMPARE(sText.at(19), ' ');
    QCOMPARE(sText.mid(20), QByteArray(Sentence));
}

void RecordLineTest::lineReplacesWhatWasThere() {
    std::string sLine = "something longer than what is written over it now";
    WriteRecordLine(sLine, Arrival, "$PNMLS");
    QCOMPARE(sLine, std::string("03/07/2005 04:05:06 $PNMLS"));
}

void RecordLineTest::writtenLineReadsBack_data() {
    QTest::addColumn<QByteArray>("sSentence");
    QTest::newRow("report") << QByteArray(Sentence);
    QTest::newRow("without checksum") << QByteArray("$GPGLL,4736.5,N");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("blanks at both ends") << QByteArray("  $GPGLL  ");
    QTest::newRow("every byte") << QByteArray("\0\x1A\xB0\xFF", 4);
}

void RecordLineTest::writtenLineReadsBack() {
    QFETCH(QByteArray, sSentence);
    std::string sLine;
    WriteRecordLine(sLine, Arrival, sSentence.toStdString());
    QCOMPARE(QByteArray::fromStdString(std::string(RecordSentence(sLine))), sSentence);
    QVERIFY(RecordStampReader().Read(sLine) == Arrival);
}

void RecordLineTest::sentenceBeginsAtColumnTwentyOne_data() {
    QTest::addColumn<QByteArray>("sLine");
    QTest::addColumn<QByteArray>("sSentence");
    const auto Row = [](const char* sName, const char* sLine, const char* sSentence) {
        QTest::newRow(sName) << QByteArray(sLine) << QByteArray(sSentence);
    };
    Row("usual", "03/07/2005 04:05:06 $GPGLL", "$GPGLL");
    Row("character 20 is skipped whatever it is", "03/07/2005 04:05:06X$GPGLL", "$GPGLL");
    Row("a second blank belongs to it", "03/07/2005 04:05:06  $GPGLL", " $GPGLL");
    Row("one character", "03/07/2005 04:05:06 $", "$");
    Row("20 characters", "03/07/2005 04:05:06 ", "");
    Row("19 characters", "03/07/2005 04:05:06", "");
    Row("empty line", "", "");
}

void RecordLineTest::sentenceBeginsAtColumnTwentyOne() {
    QFETCH(QByteArray, sLine);
    QFETCH(QByteArray, sSentence);
    const std::string sText = sLine.toStdString();
    QCOMPARE(QByteArray::fromStdString(std::string(RecordSentence(sText))), sSentence);
}

void RecordLineTest::stampIsRead_data() {
    QTest::addColumn<QByteArray>("sLine");
    QTest::newRow("with a sentence") << QByteArray("03/07/2005 04:05:06 $GPGLL");
    QTest::newRow("alone") << QByteArray("03/07/2005 04:05:06");
    QTest::newRow("with a blank") << QByteArray("03/07/2005 04:05:06 ");
    QTest::newRow("anything behind it") << QByteArray("03/07/2005 04:05:067");
}

void RecordLineTest::stampIsRead() {
    QFETCH(QByteArray, sLine);
    RecordStampReader tReader;
    QVERIFY(tReader.Read(sLine.toStdString()) == Arrival);
    QVERIFY(tReader.Read(sLine.toStdString()) == Arrival);  // this time from memory
}

void RecordLineTest::damagedStampIsRefused_data() {
    QTest::addColumn<QByteArray>("sLine");
    const auto Row = [](const char* sName, const char* sLine) { QTest::newRow(sName) << QByteArray(sLine); };
    Row("empty line", "");
    Row("no stamp", Sentence);
    Row("18 characters", "03/07/2005 04:05:0");
    Row("date alone", "03/07/2005");
    Row("impossible date", "02/30/2005 04:05:06 $GPGLL");
    Row("impossible time", "03/07/2005 24:05:06 $GPGLL");
    Row("second 60", "03/07/2005 04:05:60 $GPGLL");
    Row("second 99", "03/07/2005 04:05:99 $GPGLL");
    Row("tens of seconds below the digits", "03/07/2005 04:05:/6 $GPGLL");
    Row("tens of seconds above the digits", "03/07/2005 04:05::6 $GPGLL");
    Row("seconds below the digits", "03/07/2005 04:05:0/ $GPGLL");
    Row("seconds above the digits", "03/07/2005 04:05:0: $GPGLL");
    Row("day in front of the month", "27/03/2005 04:05:06 $GPGLL");
    Row("leading blank", " 03/07/2005 04:05:06 $GPGLL");
    Row("missing zero", "3/7/2005 4:05:06 $GPGLL,1,2");
    QTest::newRow("zero bytes") << QByteArray(100, '\0');
}

void RecordLineTest::damagedStampIsRefused() {
    QFETCH(QByteArray, sLine);
    RecordStampReader tReader;
    QVERIFY(!tReader.Read(sLine.toStdString()));
    QVERIFY(tReader.Read("03/07/2005 04:05:06 $GPGLL") == Arrival);
    QVERIFY(!tReader.Read(sLine.toStdString()));
}

void RecordLineTest::rememberedStampIsNotTakenForAnother() {
    RecordStampReader tReader;
    for (std::int64_t l = 0; l < 5000; ++l) {
        const runtime::DateTime dt{Arrival.lSeconds + l / 3 * (l % 2 == 0 ? 1 : -1)};
        std::string sLine;
        WriteRecordLine(sLine, dt, Sentence);
        QVERIFY(tReader.Read(sLine) == dt);
    }
}

void RecordLineTest::damagedStampIsNotRemembered() {
    RecordStampReader tReader;
    QVERIFY(!tReader.Read("99/99/9999 99:99:99 $GPGLL"));
    QVERIFY(!tReader.Read("99/99/9999 99:99:99 $GPGLL"));
    QVERIFY(!tReader.Read(""));
}

QTEST_GUILESS_MAIN(RecordLineTest)
#include "RecordLineTest.moc"
