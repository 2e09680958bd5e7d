// The signal sentence's fields and the level curve.
#include "decoders/SignalSentence.h"

#include <QTest>
#include <cmath>

#include "platform/runtime/Format.h"
#include "tests/support/Bytes.h"

using decoders::SignalSentence;
using decoders::SignalSplit;
using decoders::SignalToDbm;
using support::Bytes;
using support::View;

class SignalSentenceTest : public QObject {
    Q_OBJECT

private slots:
    void fieldsAreSplit_data();
    void fieldsAreSplit();
    void firstBadFieldIsNamed_data();
    void firstBadFieldIsNamed();
    void cutSentencesAreSafe();
    void levelReadsInDbm_data();
    void levelReadsInDbm();
    void levelsAreShownAsAsked();
    void curveHasItsCoefficients();
};

void SignalSentenceTest::fieldsAreSplit_data() {
    QTest::addColumn<QByteArray>("sentence");
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<QByteArray>("threshold");
    QTest::addColumn<QByteArray>("interval");
    QTest::newRow("numbers") << QByteArray("$PNMLS,29,19,3*00") << QByteArray("29") << QByteArray("19")
                             << QByteArray("3");
    QTest::newRow("any text") << QByteArray("$PNMLS,x y,-1.5,a,b*00") << QByteArray("x y") << QByteArray("-1.5")
                              << QByteArray("a,b");
    QTest::newRow("interval ends at the first star")
        << QByteArray("$PNMLS,1,2,3*4*00") << QByteArray("1") << QByteArray("2") << QByteArray("3");
    QTest::newRow("star at the end") << QByteArray("$PNMLS,1,2,3*") << QByteArray("1") << QByteArray("2")
                                     << QByteArray("3");
    QTest::newRow("star in an earlier field does not end it")
        << QByteArray("$PNMLS,1*,2*,3*00") << QByteArray("1*") << QByteArray("2*") << QByteArray("3");
    QTest::newRow("seventh character is not looked at")
        << QByteArray("$PNMLSx1,2,3*00") << QByteArray("1") << QByteArray("2") << QByteArray("3");
}

void SignalSentenceTest::fieldsAreSplit() {
    QFETCH(QByteArray, sentence);
    QFETCH(QByteArray, signal);
    QFETCH(QByteArray, threshold);
    QFETCH(QByteArray, interval);
    SignalSentence t;
    QCOMPARE(Bytes(SignalSplit(View(sentence), t)), QByteArray());
    QCOMPARE(Bytes(t.sSignal), signal);
    QCOMPARE(Bytes(t.sThreshold), threshold);
    QCOMPARE(Bytes(t.sInterval), interval);
}

void SignalSentenceTest::firstBadFieldIsNamed_data() {
    QTest::addColumn<QByteArray>("sentence");
    QTest::addColumn<QByteArray>("error");
    const QByteArray sSignal = "Error - Signal, ";
    const QByteArray sThreshold = "Error - Threshold, ";
    const QByteArray sInterval = "Error - Interval, ";
    QTest::newRow("address alone") << QByteArray("$PNMLS") << sSignal;
    QTest::newRow("signal missing") << QByteArray("$PNMLS,") << sSignal;
    QTest::newRow("signal empty") << QByteArray("$PNMLS,,19,3*00") << sSignal;
    QTest::newRow("signal without comma") << QByteArray("$PNMLS,29*00") << sSignal;
    QTest::newRow("threshold missing") << QByteArray("$PNMLS,29,") << sThreshold;
    QTest::newRow("threshold empty") << QByteArray("$PNMLS,29,,3*00") << sThreshold;
    QTest::newRow("threshold without comma") << QByteArray("$PNMLS,29,19*00") << sThreshold;
    QTest::newRow("interval missing") << QByteArray("$PNMLS,29,19,") << sInterval;
    QTest::newRow("interval empty") << QByteArray("$PNMLS,29,19,*00") << sInterval;
    QTest::newRow("no star") << QByteArray("$PNMLS,29,19,3") << sInterval;
    QTest::newRow("star only in front") << QByteArray("$PNMLS,2*9,19,3") << sInterval;
    QTest::newRow("everything empty: the first counts") << QByteArray("$PNMLS,,,*00") << sSignal;
}

void SignalSentenceTest::firstBadFieldIsNamed() {
    QFETCH(QByteArray, sentence);
    QFETCH(QByteArray, error);
    SignalSentence t;
    QCOMPARE(Bytes(SignalSplit(View(sentence), t)), error);
}

void SignalSentenceTest::cutSentencesAreSafe() {
    const std::string sWhole = "$PNMLS,29,19,3*";
    for (std::size_t i = 0; i <= sWhole.size(); ++i) {
        SignalSentence t;
        QCOMPARE(SignalSplit(std::string_view(sWhole).substr(0, i), t).empty(), i == sWhole.size());
    }
}

void SignalSentenceTest::levelReadsInDbm_data() {
    QTest::addColumn<QByteArray>("level");
    QTest::addColumn<QByteArray>("dbm");  // by the picture "0"
    QTest::newRow("1 uV") << QByteArray("19") << QByteArray("-107");
    QTest::newRow("10 uV") << QByteArray("29") << QByteArray("-87");
    QTest::newRow("100 uV") << QByteArray("40") << QByteArray("-67");
    // x = -19: -0.008658 * 361 - 2.08658 * 19 - 107 = -3.125538 - 39.64502 - 107 = -149.77
    QTest::newRow("empty counts as 0") << QByteArray("") << QByteArray("-150");
    QTest::newRow("no number counts as 0") << QByteArray("abc") << QByteArray("-150");
    QTest::newRow("zero") << QByteArray("0") << QByteArray("-150");
    QTest::newRow("leading number counts") << QByteArray("29 dB") << QByteArray("-87");
    QTest::newRow("blanks in front") << QByteArray("  40") << QByteArray("-67");
    // x = 0.5: -0.0021645 + 1.04329 - 107 = -105.96
    QTest::newRow("fraction") << QByteArray("19.5") << QByteArray("-106");
    // x = -20: -3.4632 - 41.7316 - 107 = -152.19
    QTest::newRow("negative") << QByteArray("-1") << QByteArray("-152");
}

void SignalSentenceTest::levelReadsInDbm() {
    QFETCH(QByteArray, level);
    QFETCH(QByteArray, dbm);
    QCOMPARE(Bytes(runtime::Format(SignalToDbm(View(level)), runtime::PictureWhole)), dbm);
}

void SignalSentenceTest::levelsAreShownAsAsked() {
    const decoders::SignalTexts tRaw = decoders::ShownSignal({"29", " 40x", "3"}, false);
    QCOMPARE(tRaw.sSignal, std::string("29"));
    QCOMPARE(tRaw.sThreshold, std::string(" 40x"));
    QCOMPARE(Bytes(tRaw.sInterval), QByteArray("3"));
    const decoders::SignalTexts tDbm = decoders::ShownSignal({"29", " 40x", "29"}, true);
    QCOMPARE(tDbm.sSignal, std::string("-87"));
    QCOMPARE(tDbm.sThreshold, std::string("-67"));
    QCOMPARE(Bytes(tDbm.sInterval), QByteArray("29"));
}

void SignalSentenceTest::curveHasItsCoefficients() {
    QVERIFY(std::fabs(SignalToDbm("19") + 107.0) < 1e-12);
    // The slope at 19 and the bend, by differences over one step to either side.
    QVERIFY(std::fabs((SignalToDbm("20") - SignalToDbm("18")) / 2 - 2.08658) < 1e-9);
    QVERIFY(std::fabs((SignalToDbm("20") - 2 * SignalToDbm("19") + SignalToDbm("18")) / 2 + 0.008658) < 1e-9);
    // 100 above: -86.58 + 208.658 - 107
    QVERIFY(std::fabs(SignalToDbm("119") - 15.078) < 1e-9);
}

QTEST_GUILESS_MAIN(SignalSentenceTest)
#include "SignalSentenceTest.moc"
