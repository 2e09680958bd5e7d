// The fields of an !AIVDM sentence and which of them is reported as wrong.
#include "decoders/VdmSentence.h"

#include <QTest>

#include "tests/support/AisEncoder.h"
#include "tests/support/Bytes.h"

using decoders::VdmSentence;
using decoders::VdmSplit;
using support::Bytes;
using support::View;

class VdmSentenceTest : public QObject {
    Q_OBJECT

private slots:
    void goodSentenceIsSplit_data();
    void goodSentenceIsSplit();
    void firstBadFieldIsNamed_data();
    void firstBadFieldIsNamed();
    void cutAnywhereNamesTheFieldThatIsCut();
    void numberFieldTakesNoByteButDigits();
    void encodedMessageComesApart();
};

void VdmSentenceTest::goodSentenceIsSplit_data() {
    QTest::addColumn<QByteArray>("sentence");
    QTest::addColumn<int>("sentences");
    QTest::addColumn<int>("number");
    QTest::addColumn<QByteArray>("channel");
    QTest::addColumn<QByteArray>("payload");
    const QByteArray sPayload = "13P=BS@3iqo?vspK?N28iFvt0000";
    QTest::newRow("one sentence, empty sequential id")
        << QByteArray("!AIVDM,1,1,,B,13P=BS@3iqo?vspK?N28iFvt0000,0*08") << 1 << 1 << QByteArray("B") << sPayload;
    QTest::newRow("second of two") << QByteArray("!AIVDM,2,2,3,A,000,2*00") << 2 << 2 << QByteArray("A")
                                   << QByteArray("000");
    QTest::newRow("channel of any length")
        << QByteArray("!AIVDM,1,1,,AB 2,1,0") << 1 << 1 << QByteArray("AB 2") << QByteArray("1");
    QTest::newRow("fill bits missing") << QByteArray("!AIVDM,1,1,,A,1,") << 1 << 1 << QByteArray("A")
                                       << QByteArray("1");
    QTest::newRow("fill bits are not looked at")
        << QByteArray("!AIVDM,1,1,,A,1,x,y,*zz") << 1 << 1 << QByteArray("A") << QByteArray("1");
    QTest::newRow("address is not looked at") << QByteArray(
                                                     "1234567"
                                                     "1,1,,A,1,0")
                                              << 1 << 1 << QByteArray("A") << QByteArray("1");
    QTest::newRow("payload outside the alphabet")
        << QByteArray("!AIVDM,1,1,,A,\xFFX *,0") << 1 << 1 << QByteArray("A") << QByteArray("\xFFX *");
    QTest::newRow("numbers of more digits")
        << QByteArray("!AIVDM,0012,12,123456789,A,1,0") << 12 << 12 << QByteArray("A") << QByteArray("1");
    QTest::newRow("ten digits that fit") << QByteArray("!AIVDM,2147483647,1,,A,1,0") << 2147483647 << 1
                                         << QByteArray("A") << QByteArray("1");
    QTest::newRow("negative") << QByteArray("!AIVDM,-1,-2,,A,1,0") << -1 << -2 << QByteArray("A") << QByteArray("1");
    QTest::newRow("blanks around the number")
        << QByteArray("!AIVDM, 2,1 ,,A,1,0") << 2 << 1 << QByteArray("A") << QByteArray("1");
    QTest::newRow("a fraction rounds half to even")
        << QByteArray("!AIVDM,2.5,1.5,,A,1,0") << 2 << 2 << QByteArray("A") << QByteArray("1");
}

void VdmSentenceTest::goodSentenceIsSplit() {
    QFETCH(QByteArray, sentence);
    QFETCH(int, sentences);
    QFETCH(int, number);
    QFETCH(QByteArray, channel);
    QFETCH(QByteArray, payload);
    VdmSentence tFields;
    QCOMPARE(Bytes(VdmSplit(View(sentence), tFields)), QByteArray());
    QCOMPARE(tFields.lSentences, sentences);
    QCOMPARE(tFields.lSentence, number);
    QCOMPARE(Bytes(tFields.sChannel), channel);
    QCOMPARE(Bytes(tFields.sPayload), payload);
}

void VdmSentenceTest::firstBadFieldIsNamed_data() {
    QTest::addColumn<QByteArray>("sentence");
    QTest::addColumn<QByteArray>("error");
    const QByteArray sSentences = "Error - Sentences, ";
    const QByteArray sSentence = "Error - Sentence, ";
    const QByteArray sSequenceId = "Error - SequenceId, ";
    const QByteArray sChannel = "Error - Channel, ";
    const QByteArray sPayload = "Error, ";
    QTest::newRow("nothing at all") << QByteArray("") << sSentences;
    QTest::newRow("address alone") << QByteArray("!AIVDM") << sSentences;
    QTest::newRow("address and comma") << QByteArray("!AIVDM,") << sSentences;
    QTest::newRow("comma at position 8") << QByteArray("!AIVDM,,1,,A,1,0") << sSentences;
    QTest::newRow("no comma behind sentences") << QByteArray("!AIVDM,1") << sSentences;
    QTest::newRow("sentences no number") << QByteArray("!AIVDM,x,1,,A,1,0") << sSentences;
    QTest::newRow("sentences number and letter") << QByteArray("!AIVDM,1x,1,,A,1,0") << sSentences;
    QTest::newRow("sentences beyond 32 bits") << QByteArray("!AIVDM,9999999999,1,,A,1,0") << sSentences;
    QTest::newRow("no sentence number") << QByteArray("!AIVDM,1,") << sSentence;
    QTest::newRow("no comma behind sentence number") << QByteArray("!AIVDM,1,1") << sSentence;
    QTest::newRow("sentence number empty") << QByteArray("!AIVDM,1,,,A,1,0") << sSentence;
    QTest::newRow("sentence number no number") << QByteArray("!AIVDM,1,A,,A,1,0") << sSentence;
    QTest::newRow("sentence number blank") << QByteArray("!AIVDM,1, ,,A,1,0") << sSentence;
    QTest::newRow("ends behind the sentence number") << QByteArray("!AIVDM,1,1,") << sSequenceId;
    QTest::newRow("no comma behind sequential id") << QByteArray("!AIVDM,1,1,5") << sSequenceId;
    QTest::newRow("sequential id no number") << QByteArray("!AIVDM,1,1,x,A,1,0") << sSequenceId;
    QTest::newRow("channel missing") << QByteArray("!AIVDM,1,1,,") << sChannel;
    QTest::newRow("channel empty") << QByteArray("!AIVDM,1,1,,,1,0") << sChannel;
    QTest::newRow("no comma behind channel") << QByteArray("!AIVDM,1,1,,A*00") << sChannel;
    QTest::newRow("payload missing") << QByteArray("!AIVDM,1,1,,A,") << sPayload;
    QTest::newRow("payload empty") << QByteArray("!AIVDM,1,1,,A,,0") << sPayload;
    QTest::newRow("no comma behind payload") << QByteArray("!AIVDM,1,1,,A,1*00") << sPayload;
    QTest::newRow("everything wrong: the first counts") << QByteArray("!AIVDM,,,x,,,") << sSentences;
    QTest::newRow("two wrong: the first counts") << QByteArray("!AIVDM,1,1,x,,,") << sSequenceId;
}

void VdmSentenceTest::firstBadFieldIsNamed() {
    QFETCH(QByteArray, sentence);
    QFETCH(QByteArray, error);
    VdmSentence tFields;
    QCOMPARE(Bytes(VdmSplit(View(sentence), tFields)), error);
}

void VdmSentenceTest::cutAnywhereNamesTheFieldThatIsCut() {
    const QByteArray sWhole = "!AIVDM,2,1,3,B,53P=BS0,0*00";
    const char* const sErrors[] = {
        "Error - Sentences, ", "Error - Sentence, ", "Error - SequenceId, ", "Error - Channel, ", "Error, ", ""};
    for (qsizetype i = 0; i <= sWhole.size(); ++i) {
        const QByteArray sCut = sWhole.left(i);
        const auto iFields = std::max<qsizetype>(sCut.count(',') - 1, 0);  // the address has the first comma
        VdmSentence tFields;
        QCOMPARE(Bytes(VdmSplit(View(sCut), tFields)), QByteArray(sErrors[iFields]));
    }
}

void VdmSentenceTest::numberFieldTakesNoByteButDigits() {
    for (int i = 0; i < 256; ++i) {
        const char c = static_cast<char>(i);
        if (c == ',') continue;
        const QByteArray sSentence = QByteArray("!AIVDM,") + c + ",1,,A,1,0";
        VdmSentence tFields;
        const bool bDigit = c >= '0' && c <= '9';
        QCOMPARE(VdmSplit(View(sSentence), tFields).empty(), bDigit);
        if (bDigit) QCOMPARE(tFields.lSentences, c - '0');
    }
}

void VdmSentenceTest::encodedMessageComesApart() {
    const support::AisBits sBits = support::AisStaticVoyage(235098765, "EXAMPLE SHIP");
    const auto sSentences = support::AisSentences(sBits, 'B', 7);
    std::string sPayload;
    for (std::size_t i = 0; i < sSentences.size(); ++i) {
        VdmSentence tFields;
        QCOMPARE(Bytes(VdmSplit(sSentences[i], tFields)), QByteArray());
        QCOMPARE(tFields.lSentences, 2);
        QCOMPARE(tFields.lSentence, static_cast<std::int32_t>(i) + 1);
        QCOMPARE(Bytes(tFields.sChannel), QByteArray("B"));
        sPayload += tFields.sPayload;
    }
    QCOMPARE(Bytes(sPayload), Bytes(support::AisPayload(sBits)));
}

QTEST_GUILESS_MAIN(VdmSentenceTest)
#include "VdmSentenceTest.moc"
