// From sentences to messages: what completes one, what is refused, and what stays in the store.
#include "decoders/VdmAssembly.h"

#include <QByteArray>
#include <QTest>
#include <string>

#include "decoders/VdmFields.h"
#include "tests/support/AisEncoder.h"
#include "tests/support/Bytes.h"

using decoders::VdmMessage;
using decoders::VdmTake;
using support::Bytes;

namespace {

struct Taken {
    std::string_view sError;
    bool bComplete;
    std::string_view sChannel;
};

Taken Take(std::string_view sSentence, VdmMessage& tMessage) {
    decoders::VdmSentence t;
    const std::string_view sError = VdmTake(sSentence, tMessage, t);
    return {sError, sError.empty() && t.CompletesMessage(), t.sChannel};
}

}  // namespace

class VdmAssemblyTest : public QObject {
    Q_OBJECT

private slots:
    void singleSentenceIsComplete();
    void lastSentenceCompletes();
    void lostFirstSentenceGoesBehindWhatIsHeld();
    void refusedSentenceLeavesTheStore_data();
    void refusedSentenceLeavesTheStore();
    void storeTakes512AndNoMore();
};

void VdmAssemblyTest::singleSentenceIsComplete() {
    VdmMessage tMessage;
    const std::string sSentence = support::AisSentence(support::AisOther(9, 244660123), 'B');
    const auto t = Take(sSentence, tMessage);
    QVERIFY(t.sError.empty() && t.bComplete);
    QCOMPARE(Bytes(t.sChannel), QByteArray("B"));
    QCOMPARE(tMessage.lLength, 28);
    QCOMPARE(tMessage.lData[1], 9);
    QCOMPARE(decoders::VdmMmsi(tMessage.lData), 244660123);
}

void VdmAssemblyTest::lastSentenceCompletes() {
    VdmMessage tMessage;
    const auto sSentences = support::AisSentences(support::AisStaticVoyage(244660123, "NAME"), 'A', 3);
    QCOMPARE(sSentences.size(), std::size_t{2});
    QVERIFY(!Take(sSentences[0], tMessage).bComplete);
    QCOMPARE(tMessage.lLength, 60);
    QVERIFY(Take(sSentences[1], tMessage).bComplete);
    QCOMPARE(tMessage.lLength, 71);
    QCOMPARE(decoders::VdmMmsi(tMessage.lData), 244660123);
}

void VdmAssemblyTest::lostFirstSentenceGoesBehindWhatIsHeld() {
    VdmMessage tMessage;
    Take("!AIVDM,1,1,,A,123,0", tMessage);
    const auto t = Take("!AIVDM,2,2,7,B,45,0", tMessage);
    QVERIFY(t.bComplete);
    QCOMPARE(tMessage.lLength, 5);
    for (std::int32_t i = 1; i <= 5; ++i) QCOMPARE(tMessage.lData[static_cast<std::size_t>(i)], i);
}

void VdmAssemblyTest::refusedSentenceLeavesTheStore_data() {
    QTest::addColumn<QByteArray>("sentence");
    QTest::addColumn<QByteArray>("error");
    QTest::newRow("sentences") << QByteArray("!AIVDM,,1,,A,1,0") << QByteArray("Error - Sentences, ");
    QTest::newRow("sentence") << QByteArray("!AIVDM,1,,,A,1,0") << QByteArray("Error - Sentence, ");
    QTest::newRow("sequence id") << QByteArray("!AIVDM,1,1") << QByteArray("Error - Sentence, ");
    QTest::newRow("channel") << QByteArray("!AIVDM,1,1,,,1,0") << QByteArray("Error - Channel, ");
    QTest::newRow("payload") << QByteArray("!AIVDM,1,1,,A,,0") << QByteArray("Error, ");
    QTest::newRow("overlong payload") << "!AIVDM,1,1,,A," + QByteArray(513, '1') + ",0" << QByteArray("Error, ");
}

void VdmAssemblyTest::refusedSentenceLeavesTheStore() {
    QFETCH(QByteArray, sentence);
    QFETCH(QByteArray, error);
    VdmMessage tMessage;
    Take("!AIVDM,1,1,,A,123,0", tMessage);
    const VdmMessage tBefore = tMessage;
    const auto t = Take(support::View(sentence), tMessage);
    QCOMPARE(Bytes(t.sError), error);
    QVERIFY(!t.bComplete);
    QCOMPARE(tMessage.lLength, 3);
    QVERIFY(tMessage.lData == tBefore.lData);
}

void VdmAssemblyTest::storeTakes512AndNoMore() {
    VdmMessage tMessage;
    const std::string sHalf(256, 'w');
    QVERIFY(!Take("!AIVDM,3,1,,A," + sHalf + ",0", tMessage).bComplete);
    QVERIFY(Take("!AIVDM,3,2,,A," + sHalf + ",0", tMessage).sError.empty());
    QCOMPARE(tMessage.lLength, 512);
    QCOMPARE(Bytes(Take("!AIVDM,3,3,,A,1,0", tMessage).sError), QByteArray("Error, "));
    QCOMPARE(tMessage.lLength, 512);
}

QTEST_GUILESS_MAIN(VdmAssemblyTest)
#include "VdmAssemblyTest.moc"
