// Lines out of blocks: every line end at every place of a block's border.
#include "report/LineReader.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class LineReaderTest : public QObject {
    Q_OBJECT

private slots:
    void linesAreWhatStandsBetweenLineEnds_data();
    void linesAreWhatStandsBetweenLineEnds();
    void anyLineEndAtTheBorderOfABlock();
    void onlyReturnsInALargeFile();
    void longestLine();

private:
    QString Write(const std::string& s) const {
        QFile t(m_tFolder.filePath(QStringLiteral("lines.txt")));
        if (!t.open(QIODevice::WriteOnly) || t.write(s.data(), static_cast<qint64>(s.size())) < 0) qFatal("no file");
        return t.fileName();
    }
    std::vector<std::string> Read(const std::string& s, bool& bUnfinished) const;

    QTemporaryDir m_tFolder;
};

std::vector<std::string> LineReaderTest::Read(const std::string& s, bool& bUnfinished) const {
    report::LineReader t(QFile::encodeName(Write(s)).toStdString());
    std::vector<std::string> sLines;
    std::string_view sLine;
    for (auto e = t.Next(sLine); e != report::LineReader::Found::End; e = t.Next(sLine)) {
        sLines.emplace_back(e == report::LineReader::Found::TooLong ? "<too long>" : sLine);
    }
    bUnfinished = t.Unfinished();
    return sLines;
}

using Lines = std::vector<std::string>;

void LineReaderTest::linesAreWhatStandsBetweenLineEnds_data() {
    QTest::addColumn<std::string>("sFile");
    QTest::addColumn<Lines>("sExpected");
    QTest::addColumn<bool>("bLeft");
    QTest::newRow("CR LF") << std::string("a\r\nbc\r\n") << Lines{"a", "bc"} << false;
    QTest::newRow("LF") << std::string("a\nbc\n") << Lines{"a", "bc"} << false;
    QTest::newRow("CR") << std::string("a\rbc\r") << Lines{"a", "bc"} << false;
    QTest::newRow("all in one") << std::string("a\nb\rc\r\nd\n") << Lines{"a", "b", "c", "d"} << false;
    QTest::newRow("LF CR is two ends") << std::string("a\n\rb\n") << Lines{"a", "", "b"} << false;
    QTest::newRow("empty lines") << std::string("\r\n\r\n\n\r") << Lines{"", "", "", ""} << false;
    QTest::newRow("unfinished") << std::string("a\r\nbc") << Lines{"a"} << true;
    QTest::newRow("nothing") << std::string() << Lines{} << false;
    QTest::newRow("zero bytes") << std::string("a\0b\n", 4) << Lines{std::string("a\0b", 3)} << false;
}

void LineReaderTest::linesAreWhatStandsBetweenLineEnds() {
    QFETCH(std::string, sFile);
    QFETCH(Lines, sExpected);
    QFETCH(bool, bLeft);
    bool bUnfinished = false;
    QVERIFY(Read(sFile, bUnfinished) == sExpected);
    QCOMPARE(bUnfinished, bLeft);
}

void LineReaderTest::anyLineEndAtTheBorderOfABlock() {
    constexpr std::size_t Block = 256 * 1024;
    for (const char* sEnd : {"\r\n", "\n", "\r"}) {
        for (std::size_t lBefore = Block - 3; lBefore <= Block + 2; ++lBefore) {
            const std::string sLong(lBefore, 'x');
            bool bUnfinished = false;
            const Lines sExpected = {sLong, "second", "", "third"};
            const std::string sFile = sLong + sEnd + "second" + sEnd + sEnd + "third" + sEnd;
            QVERIFY2(Read(sFile, bUnfinished) == sExpected, std::to_string(lBefore).c_str());
        }
    }
}

void LineReaderTest::onlyReturnsInALargeFile() {
    std::string sFile;
    for (int i = 0; i < 100000; ++i) sFile += std::to_string(i) + "\r";
    bool bUnfinished = false;
    const Lines sLines = Read(sFile, bUnfinished);
    QCOMPARE(sLines.size(), std::size_t{100000});
    for (std::size_t i = 0; i < sLines.size(); ++i) QCOMPARE(sLines[i], std::to_string(i));
}

void LineReaderTest::longestLine() {
    const std::string sLongest(report::LineReader::LongestLine, 'x');
    for (const std::size_t lMore : {std::size_t{1}, std::size_t{300000}, std::size_t{3000000}}) {
        bool bUnfinished = false;
        const Lines sExpected = {sLongest, "<too long>", "next"};
        QVERIFY(Read(sLongest + "\n" + sLongest + std::string(lMore, 'y') + "\r\nnext\n", bUnfinished) == sExpected);
        QVERIFY(!bUnfinished);
    }
    bool bUnfinished = false;
    QVERIFY(Read("a\n" + sLongest + "y", bUnfinished) == Lines{"a"});
    QVERIFY(bUnfinished);
}

QTEST_GUILESS_MAIN(LineReaderTest)
#include "LineReaderTest.moc"
