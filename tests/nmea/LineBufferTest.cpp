// Cutting lines out of what arrives: at carriage returns, without line feeds, whatever the blocks, and without a copy
// where a line lies whole in its block.
#include "nmea/LineBuffer.h"

#include <QTest>
#include <random>
#include <string>
#include <vector>

#include "tests/support/Bytes.h"

using nmea::LineBuffer;
using support::Bytes;

namespace {

// The lines of a text and, as the last one, what is left, with the text cut into blocks of iBlock characters.
std::vector<QByteArray> Lines(std::string_view sText, std::size_t iBlock) {
    std::vector<QByteArray> sLines;
    LineBuffer t;
    for (std::size_t i = 0; i < sText.size(); i += iBlock) {
        const std::string sOwn(sText.substr(i, iBlock));  // gone after the round, as a block is
        std::string_view sBlock = sOwn;
        while (t.Take(sBlock)) {
            sLines.push_back(Bytes(t));
            t.clear();
        }
    }
    sLines.push_back(Bytes(t));
    return sLines;
}

}  // namespace

class LineBufferTest : public QObject {
    Q_OBJECT

private slots:
    void linesEndAtCarriageReturns_data();
    void linesEndAtCarriageReturns();
    void anyBlocksGiveTheSameLines();
    void wholeLineStaysInItsBlock();
    void assignedLineIsACopy();
    void viewIsCopiedWhenItIsKept();
    void overlongLineIsKeptNoFurther();
};

void LineBufferTest::linesEndAtCarriageReturns_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<std::vector<QByteArray>>("lines");
    using Expected = std::vector<QByteArray>;
    QTest::newRow("nothing") << QByteArray("") << Expected{""};
    QTest::newRow("CR LF") << QByteArray("one\r\ntwo\r\n") << Expected{"one", "two", ""};
    QTest::newRow("LF CR") << QByteArray("one\n\rtwo\n\r") << Expected{"one", "two", ""};
    QTest::newRow("CR alone") << QByteArray("one\rtwo\r") << Expected{"one", "two", ""};
    QTest::newRow("CR CR is an empty line") << QByteArray("one\r\r") << Expected{"one", "", ""};
    QTest::newRow("LF alone completes nothing") << QByteArray("one\ntwo\n") << Expected{"onetwo"};
    QTest::newRow("LF inside") << QByteArray("\n\no\nn\n\ne\r\n") << Expected{"one", ""};
    QTest::newRow("rest") << QByteArray("one\r\ntw") << Expected{"one", "tw"};
    QTest::newRow("any other byte") << QByteArray("\0\x1A\xFF\t\r", 5) << Expected{QByteArray("\0\x1A\xFF\t", 4), ""};
}

void LineBufferTest::linesEndAtCarriageReturns() {
    QFETCH(QByteArray, text);
    QFETCH(std::vector<QByteArray>, lines);
    for (std::size_t iBlock = 1; iBlock <= 20; ++iBlock) QCOMPARE(Lines(support::View(text), iBlock), lines);
}

void LineBufferTest::anyBlocksGiveTheSameLines() {
    std::mt19937 tRandom(4);
    for (int i = 0; i < 300; ++i) {
        std::string sText(tRandom() % 200, ' ');
        for (char& c : sText) c = "ab\r\n\n"[tRandom() % 5];
        std::vector<QByteArray> sExpected(1);  // character by character
        for (const char c : sText) {
            if (c == '\r') sExpected.emplace_back();
            if (c != '\r' && c != '\n') sExpected.back() += c;
        }
        QCOMPARE(Lines(sText, 1 + tRandom() % 50), sExpected);
    }
}

void LineBufferTest::wholeLineStaysInItsBlock() {
    const std::string sText = "rest\r\nwhole\r\n";
    LineBuffer t;
    std::string_view sBegin = "the ";
    QVERIFY(!t.Take(sBegin));
    std::string_view sBlock = sText;
    QVERIFY(t.Take(sBlock));
    QCOMPARE(Bytes(t), QByteArray("the rest"));
    t.clear();
    QVERIFY(t.Take(sBlock));
    QCOMPARE(std::string_view(t).data(), sText.data() + 6);
}

void LineBufferTest::assignedLineIsACopy() {
    std::string sLine = "as it was";
    LineBuffer t;
    t.assign(sLine);
    sLine = "something";
    QCOMPARE(Bytes(t), QByteArray("as it was"));
    t.clear();
    QVERIFY(t.empty());
}

void LineBufferTest::viewIsCopiedWhenItIsKept() {
    std::string sBlock = "one,two";
    LineBuffer t;
    t.assign("before");
    t.View(std::string_view(sBlock).substr(4));
    QCOMPARE(std::string_view(t).data(), sBlock.data() + 4);
    QCOMPARE(Bytes(t), QByteArray("two"));
    t.Keep();
    sBlock = "another";
    QCOMPARE(Bytes(t), QByteArray("two"));
    t.Keep();  // what has been kept stays
    QCOMPARE(Bytes(t), QByteArray("two"));
    t.View({});
    t.Keep();
    QVERIFY(t.empty());
    std::string_view sRest = "next\r";
    QVERIFY(t.Take(sRest));
    QCOMPARE(Bytes(t), QByteArray("next"));
}

void LineBufferTest::overlongLineIsKeptNoFurther() {
    LineBuffer t;
    const std::string sPiece(1000, 'x');
    for (int i = 0; i < 66; ++i) {
        QVERIFY(!t.Overlong());
        std::string_view sBlock = sPiece;
        t.Take(sBlock);
    }
    QVERIFY(t.Overlong());
    QCOMPARE(t.size(), std::size_t{65537});
    std::string_view sEnd = "x\rnext\r";
    QVERIFY(t.Take(sEnd));
    QVERIFY(t.Overlong());
    t.clear();
    QVERIFY(t.Take(sEnd));
    QCOMPARE(Bytes(t), QByteArray("next"));
    QVERIFY(!t.Overlong());
}

QTEST_GUILESS_MAIN(LineBufferTest)
#include "LineBufferTest.moc"
