// Text files by number, on real files of the system: line ends, block borders, and everything that can go wrong.
#include "platform/runtime/TextFiles.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <QByteArray>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <cerrno>
#include <ctime>
#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "tests/support/SlowDisk.h"

using namespace runtime;

namespace {

using Lines = std::vector<std::string>;

// The lines of a text, found character by character.
Lines SplitLines(const QByteArray& sText) {
    Lines sLines;
    std::string sLine;
    bool bOpen = false;
    for (qsizetype i = 0; i < sText.size(); ++i) {
        const char c = sText.at(i);
        if (c != '\r' && c != '\n') {
            sLine += c;
            bOpen = true;
            continue;
        }
        if (c == '\r' && i + 1 < sText.size() && sText.at(i + 1) == '\n') ++i;
        sLines.push_back(sLine);
        sLine.clear();
        bOpen = false;
    }
    if (bOpen) sLines.push_back(sLine);
    return sLines;
}

// What is at hand is taken as one who keeps views into it does: they are looked at when it is used up.
Lines ReadAll(TextFiles& tFiles, std::int16_t iFile) {
    Lines sLines;
    std::vector<std::string_view> sViews;
    for (;;) {
        for (std::string_view sLine; tFiles.AtHand(iFile).Next(sLine);) sViews.push_back(sLine);
        sLines.insert(sLines.end(), sViews.begin(), sViews.end());
        sViews.clear();
        if (tFiles.AtEnd(iFile)) return sLines;
        sLines.emplace_back(tFiles.ReadLine(iFile));
    }
}

// What FileError says, or empty text.
template <typename Action>
QByteArray Failure(Action tAction) {
    try {
        tAction();
    } catch (const FileError& tError) {
        return tError.what();
    }
    return {};
}

qsizetype FirstDifference(const Lines& sA, const Lines& sB) {
    return std::mismatch(sA.begin(), sA.end(), sB.begin(), sB.end()).first - sA.begin();
}

}  // namespace

class TextFilesTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void linesEndInAnyOfThreeWays_data();
    void linesEndInAnyOfThreeWays();
    void lineEndsAcrossEveryBlockBorder_data();
    void lineEndsAcrossEveryBlockBorder();
    void randomFilesSplitAlike();
    void manyLinesOfOneKindAreQuick_data();
    void manyLinesOfOneKindAreQuick();
    void lineOfTheLongestLengthIsRead_data();
    void lineOfTheLongestLengthIsRead();
    void longerLineIsAnError();
    void hugeLineIsAnErrorAtOnce();
    void longFileTakesConstantMemory();
    void beginAndEndAreTold();
    void linesAreCounted_data();
    void linesAreCounted();
    void wholeFileIsRead();
    void wholeFileThatCannotBeRead_data();
    void wholeFileThatCannotBeRead();
    void readingPastTheEndIsAnError();
    void fileThatShrinksEndsEarly();
    void fileThatGrowsIsReadOn();
    void unusualFilesAreRefusedAtOnce_data();
    void unusualFilesAreRefusedAtOnce();
    void unreadableFileIsRefused();
    void numbersAreTheLowestFree();
    void retiredFilesGiveTheirNumbersOldestFirst();
    void retiredFileIsReadOnFromItsPlace_data();
    void retiredFileIsReadOnFromItsPlace();
    void takenNumberIsRefused();
    void numbersOutsideTheRangeAreRefused();
    void writtenLinesEndInCarriageReturnAndLineFeed();
    void everyByteIsWrittenAndReadBack();
    void outputReplacesWhatWasThere();
    void linesReachTheFileAtAFlush();
    void manyLinesAreAllWritten();
    void fullDiskIsReported();
    void fullDiskIsReportedWithoutAFlush();
    void outputThatCannotBeMadeIsRefused_data();
    void outputThatCannotBeMadeIsRefused();
    void writtenBytesAreCounted();
    void endIsReadWithoutMoving();
    void wrongDirectionIsAnError();
    void fileIsMadeOnceAndOnlyWhereItCanBe();
    void failingDiskIsTold();
    void diskIsAwaitedWithPatience();
    void outputWithoutADescriptorForTheDiskIsRefused();
    void fileThatHasGoneIsTold();
    void closingFreesTheNumber();
    void filesAreNotInheritedByOtherPrograms();

private:
    std::string Path(const char* sName) const { return m_tFolder->filePath(QLatin1StringView(sName)).toStdString(); }
    std::string Make(const QByteArray& sText) const;
    static QByteArray Content(const std::string& sPath);

    std::unique_ptr<QTemporaryDir> m_tFolder;
};

void TextFilesTest::init() {
    m_tFolder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_tFolder->isValid());
}

std::string TextFilesTest::Make(const QByteArray& sText) const {
    const std::string sPath = Path("input.txt");
    QFile tFile(QString::fromStdString(sPath));
    if (!tFile.open(QIODevice::WriteOnly) || tFile.write(sText) != sText.size()) qFatal("cannot write the test's file");
    return sPath;
}

QByteArray TextFilesTest::Content(const std::string& sPath) {
    QFile tFile(QString::fromStdString(sPath));
    if (!tFile.open(QIODevice::ReadOnly)) qFatal("cannot read the test's file");
    return tFile.readAll();
}

void TextFilesTest::linesEndInAnyOfThreeWays_data() {
    QTest::addColumn<QByteArray>("sText");
    QTest::addColumn<QByteArrayList>("sLines");
    const auto Row = [](const char* sName, const QByteArray& sText, const QByteArrayList& sLines) {
        QTest::newRow(sName) << sText << sLines;
    };
    Row("empty file", "", {});
    Row("CR LF", "a\r\nb\r\n", {"a", "b"});
    Row("LF", "a\nb\n", {"a", "b"});
    Row("CR", "a\rb\r", {"a", "b"});
    Row("mixed", "a\rb\nc\r\nd", {"a", "b", "c", "d"});
    Row("no end at the last line", "a\r\nb", {"a", "b"});
    Row("one line without end", "a", {"a"});
    Row("empty lines", "\r\n\r\na\n\n", {"", "", "a", ""});
    Row("LF CR is two ends", "a\n\rb\n\r", {"a", "", "b", ""});
    Row("CR CR LF is two ends", "a\r\r\nb", {"a", "", "b"});
    Row("one CR", "\r", {""});
    Row("one LF", "\n", {""});
    Row("one CR LF", "\r\n", {""});
    Row("bytes 0 and 26 are characters",
        QByteArray("a\0\x1A"
                   "b\r\nc",
                   7),
        {QByteArray("a\0\x1A"
                    "b",
                    4),
         "c"});
    Row("high bytes", "\xB0\xFF\r\n", {"\xB0\xFF"});
}

void TextFilesTest::linesEndInAnyOfThreeWays() {
    QFETCH(QByteArray, sText);
    QFETCH(QByteArrayList, sLines);
    TextFiles tFiles;
    tFiles.OpenForInput(1, Make(sText));
    for (const QByteArray& sLine : sLines) {
        QVERIFY(!tFiles.AtEnd(1));
        QCOMPARE(QByteArray::fromStdString(std::string(tFiles.ReadLine(1))), sLine);
    }
    QVERIFY(tFiles.AtEnd(1));
}

void TextFilesTest::lineEndsAcrossEveryBlockBorder_data() {
    QTest::addColumn<int>("iBorder");
    for (const int iKilobytes : {4, 64, 128, 256}) {
        QTest::addRow("%d KiB", iKilobytes) << iKilobytes * 1024;
    }
}

void TextFilesTest::lineEndsAcrossEveryBlockBorder() {
    QFETCH(int, iBorder);
    for (int iShift = -3; iShift <= 3; ++iShift) {
        for (const char* sEnd : {"\r\n", "\r", "\n", "\r\r\n", "\n\r\n"}) {
            for (const char* sRest : {"next\r\nlast", "", "\n"}) {
                const int iFillers = (iBorder + iShift) / 64 - 1;
                const QByteArray sFront = (QByteArray(62, 'x') + "\r\n").repeated(iFillers);
                const QByteArray sBack = QByteArray(iBorder + iShift - sFront.size(), 'y') + sEnd + sRest;
                Lines sExpected(static_cast<std::size_t>(iFillers), std::string(62, 'x'));
                for (const std::string& sLine : SplitLines(sBack)) sExpected.push_back(sLine);
                TextFiles tFiles;
                tFiles.OpenForInput(1, Make(sFront + sBack));
                QVERIFY(ReadAll(tFiles, 1) == sExpected);
            }
        }
    }
}

void TextFilesTest::randomFilesSplitAlike() {
    std::mt19937 tRandom(7);
    for (int iFile = 0; iFile < 10; ++iFile) {
        // From nearly every byte a line end to lines longer than a block.
        const int iOneIn = 1 << (iFile * 2);
        std::uniform_int_distribution<int> tKind(0, 2 * iOneIn);
        QByteArray sText(700000, 'x');
        for (char& c : sText) {
            const int iKind = tKind(tRandom);
            if (iKind < 2) c = iKind == 0 ? '\r' : '\n';
        }
        TextFiles tFiles;
        tFiles.OpenForInput(1, Make(sText));
        const Lines sRead = ReadAll(tFiles, 1);
        const Lines sExpected = SplitLines(sText);
        QCOMPARE(FirstDifference(sRead, sExpected), qsizetype(sExpected.size()));
        QCOMPARE(sRead.size(), sExpected.size());
    }
}

void TextFilesTest::manyLinesOfOneKindAreQuick_data() {
    QTest::addColumn<QByteArray>("sEnd");
    QTest::newRow("CR LF") << QByteArray("\r\n");
    QTest::newRow("LF") << QByteArray("\n");
    QTest::newRow("CR") << QByteArray("\r");
}

// A search that went through the whole block for every line would take minutes.
void TextFilesTest::manyLinesOfOneKindAreQuick() {
    QFETCH(QByteArray, sEnd);
    const QByteArray sText = ("x" + sEnd).repeated(1000000);
    TextFiles tFiles;
    tFiles.OpenForInput(1, Make(sText));
    const std::clock_t lBegin = std::clock();  // the processor's time: other programs do not count
    int iLines = 0;
    while (!tFiles.AtEnd(1)) iLines += tFiles.ReadLine(1) == "x" ? 1 : 0;
    QCOMPARE(iLines, 1000000);
    QVERIFY(std::clock() - lBegin < 20 * CLOCKS_PER_SEC);
}

void TextFilesTest::lineOfTheLongestLengthIsRead_data() {
    QTest::addColumn<QByteArray>("sBefore");
    QTest::addColumn<QByteArray>("sEnd");
    for (const char* sBefore : {"", "first\r\n"}) {
        for (const char* sEnd : {"\r\n", "\n", "\r", ""}) {
            QTest::addRow("%s before, end of %d", *sBefore ? "line" : "nothing", int(qstrlen(sEnd)) * 100 + sEnd[0])
                << QByteArray(sBefore) << QByteArray(sEnd);
        }
    }
}

void TextFilesTest::lineOfTheLongestLengthIsRead() {
    QFETCH(QByteArray, sBefore);
    QFETCH(QByteArray, sEnd);
    const QByteArray sText = sBefore + QByteArray(TextFiles::LongestLine, 'x') + sEnd + (sEnd.isEmpty() ? "" : "last");
    TextFiles tFiles;
    tFiles.OpenForInput(1, Make(sText));
    QVERIFY(ReadAll(tFiles, 1) == SplitLines(sText));
}

void TextFilesTest::longerLineIsAnError() {
    for (const char* sEnd : {"\r\n", "\n", "\r", ""}) {
        TextFiles tFiles;
        tFiles.OpenForInput(1, Make("first\r\n" + QByteArray(TextFiles::LongestLine + 1, 'x') + sEnd));
        QVERIFY(tFiles.ReadLine(1) == "first");
        QVERIFY(!tFiles.AtEnd(1));
        QCOMPARE(Failure([&] { tFiles.ReadLine(1); }), QByteArray("line 2: too long"));
        tFiles.Close(1);
    }
}

void TextFilesTest::hugeLineIsAnErrorAtOnce() {
    const std::string sPath = Make("");
    QCOMPARE(::truncate(sPath.c_str(), off_t{1} << 30), 0);
    TextFiles tFiles;
    tFiles.OpenForInput(1, sPath);
    QElapsedTimer tClock;
    tClock.start();
    QCOMPARE(Failure([&] { tFiles.ReadLine(1); }), QByteArray("line 1: too long"));
    QVERIFY(tClock.elapsed() < 2000);
}

void TextFilesTest::longFileTakesConstantMemory() {
    const std::string sPath = Path("long.txt");
    {
        TextFiles tFiles;
        tFiles.OpenForOutput(1, sPath);
        for (int i = 0; i < 1000000; ++i) tFiles.WriteLine(1, "!AIVDM,1,1,,A,15M67FC000G?ufbE`FepT@3n00Sa,0*5C");
    }
    struct rusage tBefore {};
    struct rusage tAfter {};
    ::getrusage(RUSAGE_SELF, &tBefore);
    TextFiles tFiles;
    tFiles.OpenForInput(1, sPath);
    int iLines = 0;
    for (; !tFiles.AtEnd(1); ++iLines) tFiles.ReadLine(1);
    ::getrusage(RUSAGE_SELF, &tAfter);
    QCOMPARE(iLines, 1000000);
    QVERIFY2(tAfter.ru_maxrss - tBefore.ru_maxrss < 8 * 1024, "reading 49 MB took more than 8 MB");
}

void TextFilesTest::beginAndEndAreTold() {
    TextFiles tFiles;
    tFiles.OpenForInput(1, Make("a\r\nb\r\n"));
    QVERIFY(tFiles.AtStart(1));
    QVERIFY(!tFiles.AtEnd(1));
    QVERIFY(tFiles.AtStart(1));  // asking for the end reads nothing
    tFiles.ReadLine(1);
    QVERIFY(!tFiles.AtStart(1));
    QVERIFY(!tFiles.AtEnd(1));
    tFiles.ReadLine(1);
    QVERIFY(tFiles.AtEnd(1));
    tFiles.Close(1);

    tFiles.OpenForInput(1, Make(""));
    QVERIFY(tFiles.AtStart(1));
    QVERIFY(tFiles.AtEnd(1));
    QVERIFY(tFiles.AtStart(1));
}

void TextFilesTest::linesAreCounted_data() {
    QTest::addColumn<QByteArray>("sEnd");
    QTest::newRow("CR LF") << QByteArray("\r\n");
    QTest::newRow("LF") << QByteArray("\n");
    QTest::newRow("CR") << QByteArray("\r");
}

void TextFilesTest::linesAreCounted() {
    QFETCH(QByteArray, sEnd);
    TextFiles tFiles;
    tFiles.OpenForInput(1, Make(("a line of text" + sEnd + sEnd).repeated(20000)));  // more than a block
    for (std::uint64_t lLine = 0; lLine < 40000; ++lLine) {
        QCOMPARE(tFiles.LinesRead(1), lLine);
        tFiles.ReadLine(1);
    }
    QCOMPARE(tFiles.LinesRead(1), std::uint64_t{40000});
    QVERIFY(tFiles.AtEnd(1));
}

void TextFilesTest::wholeFileIsRead() {
    QVERIFY(!TextFiles::ReadWhole(Path("none.txt")));
    QVERIFY(!TextFiles::ReadWhole(Path("none/none.txt")));
    QVERIFY(!TextFiles::ReadWhole(Make("a") + "/none.txt"));  // a file is no folder
    QCOMPARE(TextFiles::ReadWhole(Make(""))->size(), std::size_t{0});
    const QByteArray sText = QByteArray("\0\r\n\xFF", 4).repeated(1000000);
    QVERIFY(QByteArray::fromStdString(*TextFiles::ReadWhole(Make(sText))) == sText);
}

void TextFilesTest::wholeFileThatCannotBeRead_data() {
    QTest::addColumn<QString>("sKind");
    QTest::addColumn<QByteArray>("sReason");
    QTest::newRow("folder") << QStringLiteral("folder") << QByteArray("Is a directory");
    QTest::newRow("link to itself") << QStringLiteral("loop") << QByteArray("Too many levels of symbolic links");
    QTest::newRow("pipe without a writer") << QStringLiteral("fifo") << QByteArray("Not a regular file");
    QTest::newRow("device without an end") << QStringLiteral("device") << QByteArray("Not a regular file");
    QTest::newRow("failing disk") << QStringLiteral("memory") << QByteArray("Input/output error");
}

void TextFilesTest::wholeFileThatCannotBeRead() {
    QFETCH(QString, sKind);
    QFETCH(QByteArray, sReason);
    std::string sPath = Path("odd");
    if (sKind == QLatin1String("folder")) QCOMPARE(::mkdir(sPath.c_str(), 0700), 0);
    if (sKind == QLatin1String("loop")) QCOMPARE(::symlink("odd", sPath.c_str()), 0);
    if (sKind == QLatin1String("fifo")) QCOMPARE(::mkfifo(sPath.c_str(), 0600), 0);
    if (sKind == QLatin1String("device")) sPath = "/dev/zero";
    if (sKind == QLatin1String("memory")) sPath = "/proc/self/mem";  // a file whose first page cannot be read
    QCOMPARE(Failure([&] { TextFiles::ReadWhole(sPath); }), sReason);
    if (sKind == QLatin1String("folder")) QCOMPARE(::rmdir(sPath.c_str()), 0);
    if (sPath.ends_with("odd")) ::unlink(sPath.c_str());
}

void TextFilesTest::readingPastTheEndIsAnError() {
    TextFiles tFiles;
    tFiles.OpenForInput(1, Make("a"));
    tFiles.ReadLine(1);
    QCOMPARE(Failure([&] { tFiles.ReadLine(1); }), QByteArray("Input past end of file"));
    QVERIFY(tFiles.AtEnd(1));
}

void TextFilesTest::fileThatShrinksEndsEarly() {
    const std::string sPath = Make(QByteArray("a line of text\r\n").repeated(100000));
    TextFiles tFiles;
    tFiles.OpenForInput(1, sPath);
    QVERIFY(tFiles.ReadLine(1) == "a line of text");
    QCOMPARE(::truncate(sPath.c_str(), 100), 0);
    int iLines = 1;
    for (; !tFiles.AtEnd(1); ++iLines) tFiles.ReadLine(1);
    QVERIFY(iLines < 100000);
}

void TextFilesTest::fileThatGrowsIsReadOn() {
    const std::string sPath = Make("a\r\nb\r");
    TextFiles tFiles;
    tFiles.OpenForInput(1, sPath);
    QVERIFY(tFiles.ReadLine(1) == "a");
    QFile tMore(QString::fromStdString(sPath));
    QVERIFY(tMore.open(QIODevice::Append | QIODevice::Unbuffered));
    tMore.write("\nc");
    QVERIFY(tFiles.ReadLine(1) == "b");  // its LF came later
    tMore.write("d\r\n");
    QVERIFY(tFiles.ReadLine(1) == "cd");
    QVERIFY(tFiles.AtEnd(1));
    tMore.write("e");
    QVERIFY(!tFiles.AtEnd(1));
    QVERIFY(tFiles.ReadLine(1) == "e");
}

void TextFilesTest::unusualFilesAreRefusedAtOnce_data() {
    QTest::addColumn<QByteArray>("sPath");
    QTest::addColumn<QByteArray>("sText");
    QTest::newRow("missing") << QByteArray("/nowhere/at/all.txt") << QByteArray("No such file or directory");
    QTest::newRow("no name") << QByteArray("") << QByteArray("No such file or directory");
    QTest::newRow("directory") << QByteArray("/tmp") << QByteArray("Is a directory");
    QTest::newRow("endless device") << QByteArray("/dev/zero") << QByteArray("Not a regular file");
    QTest::newRow("terminal") << QByteArray("/dev/ptmx") << QByteArray("Not a regular file");
    QTest::newRow("FIFO without writer") << QByteArray("fifo") << QByteArray("Not a regular file");
}

void TextFilesTest::unusualFilesAreRefusedAtOnce() {
    QFETCH(QByteArray, sPath);
    QFETCH(QByteArray, sText);
    if (sPath == "fifo") {
        sPath = QByteArray::fromStdString(Path("fifo"));
        QCOMPARE(::mkfifo(sPath.constData(), 0600), 0);
    }
    TextFiles tFiles;
    QCOMPARE(Failure([&] { tFiles.OpenForInput(1, sPath.toStdString()); }), sText);
    QVERIFY(!tFiles.IsOpen(1));
}

void TextFilesTest::unreadableFileIsRefused() {
    const std::string sPath = Make("a\r\n");
    QCOMPARE(::chmod(sPath.c_str(), 0), 0);
    QCOMPARE(::chmod(m_tFolder->path().toLocal8Bit().constData(), 0755), 0);
    const uid_t iUser = ::geteuid();
    if (iUser == 0) QCOMPARE(::seteuid(65534), 0);  // permissions do not bind the superuser
    TextFiles tFiles;
    const QByteArray sText = Failure([&] { tFiles.OpenForInput(1, sPath); });
    QCOMPARE(::seteuid(iUser), 0);
    QCOMPARE(sText, QByteArray("Permission denied"));
}

void TextFilesTest::numbersAreTheLowestFree() {
    const std::string sPath = Make("a\r\n");
    TextFiles tFiles;
    for (std::int16_t i = 1; i <= 255; ++i) {
        QCOMPARE(tFiles.FreeFile(), i);
        tFiles.OpenForInput(i, sPath);
    }
    QVERIFY(!Failure([&] { tFiles.FreeFile(); }).isEmpty());
    tFiles.Close(200);
    tFiles.Close(17);
    QCOMPARE(tFiles.FreeFile(), std::int16_t{17});
    tFiles.OpenForInput(17, sPath);
    QCOMPARE(tFiles.FreeFile(), std::int16_t{200});
}

void TextFilesTest::retiredFilesGiveTheirNumbersOldestFirst() {
    const std::string sPath = Make("a\r\n");
    TextFiles tFiles;
    for (std::int16_t i = 1; i <= 255; ++i) tFiles.OpenForInput(i, sPath);
    for (const std::int16_t i : {std::int16_t{90}, std::int16_t{7}, std::int16_t{255}}) tFiles.Retire(i);
    for (const std::int16_t i : {std::int16_t{90}, std::int16_t{7}, std::int16_t{255}}) {
        QVERIFY(tFiles.IsOpen(i));  // as long as nobody needs its number
        QCOMPARE(tFiles.FreeFile(), i);
        QVERIFY(!tFiles.IsOpen(i));
        QCOMPARE(tFiles.FreeFile(), i);  // asking again takes no other
        tFiles.OpenForInput(i, sPath);
    }
    QCOMPARE(Failure([&] { tFiles.FreeFile(); }), QByteArray("Too many open files"));
    tFiles.Retire(0);
    tFiles.Retire(256);
    tFiles.Close(3);
    tFiles.OpenForOutput(3, Path("output.txt"));
    tFiles.Retire(3);  // what is written is not given up
    QVERIFY(!Failure([&] { tFiles.FreeFile(); }).isEmpty());
}

void TextFilesTest::retiredFileIsReadOnFromItsPlace_data() {
    QTest::addColumn<int>("lines");
    for (const int i : {0, 1, 3000, 39999, 40000}) QTest::addRow("after %d lines", i) << i;
}

void TextFilesTest::retiredFileIsReadOnFromItsPlace() {
    QFETCH(int, lines);
    QByteArray sText;
    for (int i = 0; i < 40000; ++i) sText += QByteArray::number(i) + "\r\n";
    TextFiles tFiles;
    tFiles.OpenForInput(1, Make(sText));
    Lines sRead;
    for (int i = 0; i < lines; ++i) sRead.emplace_back(tFiles.ReadLine(1));
    tFiles.Retire(1);
    const Lines sRest = ReadAll(tFiles, 1);
    sRead.insert(sRead.end(), sRest.begin(), sRest.end());
    QVERIFY(sRead == SplitLines(sText));
}

void TextFilesTest::takenNumberIsRefused() {
    TextFiles tFiles;
    tFiles.OpenForInput(1, Make("a\r\nb\r\n"));
    QVERIFY(tFiles.ReadLine(1) == "a");
    const std::string sOther = Path("other.txt");
    QVERIFY(!Failure([&] { tFiles.OpenForInput(1, sOther); }).isEmpty());
    QVERIFY(!Failure([&] { tFiles.OpenForOutput(1, sOther); }).isEmpty());
    QVERIFY(!QFileInfo::exists(QString::fromStdString(sOther)));
    QVERIFY(tFiles.ReadLine(1) == "b");
}

void TextFilesTest::numbersOutsideTheRangeAreRefused() {
    const std::string sPath = Make("a\r\n");
    TextFiles tFiles;
    for (const std::int16_t i : {std::int16_t{-1}, std::int16_t{0}, std::int16_t{256}, std::int16_t{32767}}) {
        QVERIFY(!Failure([&] { tFiles.OpenForInput(i, sPath); }).isEmpty());
        QVERIFY(!Failure([&] { tFiles.OpenForOutput(i, sPath); }).isEmpty());
        QVERIFY(!Failure([&] { tFiles.ReadLine(i); }).isEmpty());
        QVERIFY(!tFiles.IsOpen(i));
        tFiles.Close(i);
        tFiles.Flush(i);
        tFiles.AwaitDisk(i);
        tFiles.CheckInPlace(i);
    }
    QCOMPARE(Content(sPath), QByteArray("a\r\n"));
}

void TextFilesTest::writtenLinesEndInCarriageReturnAndLineFeed() {
    const std::string sPath = Path("output.txt");
    TextFiles tFiles;
    tFiles.OpenForOutput(1, sPath);
    tFiles.WriteLine(1, "first");
    tFiles.WriteLine(1, "");
    tFiles.WriteLine(1, "last");
    tFiles.Close(1);
    QCOMPARE(Content(sPath), QByteArray("first\r\n\r\nlast\r\n"));
}

void TextFilesTest::everyByteIsWrittenAndReadBack() {
    const std::string sPath = Path("output.txt");
    std::string sLine;
    for (int i = 0; i < 256; ++i) {
        if (i != '\r' && i != '\n') sLine += static_cast<char>(i);
    }
    TextFiles tFiles;
    tFiles.OpenForOutput(1, sPath);
    tFiles.WriteLine(1, sLine);
    tFiles.Close(1);
    tFiles.OpenForInput(1, sPath);
    QVERIFY(tFiles.ReadLine(1) == sLine);
    QVERIFY(tFiles.AtEnd(1));
}

void TextFilesTest::outputReplacesWhatWasThere() {
    const std::string sPath = Make("much longer than what comes\r\n");
    TextFiles tFiles;
    tFiles.OpenForOutput(1, sPath);
    QCOMPARE(Content(sPath), QByteArray());
    tFiles.WriteLine(1, "short");
    tFiles.Close(1);
    QCOMPARE(Content(sPath), QByteArray("short\r\n"));
}

void TextFilesTest::linesReachTheFileAtAFlush() {
    const std::string sPath = Path("output.txt");
    {
        TextFiles tFiles;
        tFiles.OpenForOutput(1, sPath);
        tFiles.WriteLine(1, "a");
        tFiles.Flush(1);
        QCOMPARE(Content(sPath), QByteArray("a\r\n"));
        tFiles.Flush(1);
        QCOMPARE(Content(sPath), QByteArray("a\r\n"));
        tFiles.WriteLine(1, "b");
    }
    QCOMPARE(Content(sPath), QByteArray("a\r\nb\r\n"));  // the last one at the end of the files' life
}

void TextFilesTest::manyLinesAreAllWritten() {
    const std::string sPath = Path("output.txt");
    QByteArray sExpected;
    TextFiles tFiles;
    tFiles.OpenForOutput(1, sPath);
    for (int i = 0; i < 100000; ++i) {
        const QByteArray sLine = QByteArray::number(i);
        tFiles.WriteLine(1, sLine.toStdString());
        sExpected += sLine + "\r\n";
    }
    const std::string sLong(1000000, 'x');
    tFiles.WriteLine(1, sLong);
    sExpected += QByteArray::fromStdString(sLong) + "\r\n";
    tFiles.Close(1);
    QVERIFY(Content(sPath) == sExpected);
}

void TextFilesTest::fullDiskIsReported() {
    TextFiles tFiles;
    tFiles.OpenForOutput(1, "/dev/full");
    tFiles.WriteLine(1, "a");
    QCOMPARE(Failure([&] { tFiles.Flush(1); }), QByteArray("No space left on device"));
    tFiles.Close(1);
    QVERIFY(!tFiles.IsOpen(1));
}

void TextFilesTest::fullDiskIsReportedWithoutAFlush() {
    TextFiles tFiles;
    tFiles.OpenForOutput(1, "/dev/full");
    const QByteArray sText = Failure([&] {
        for (int i = 0; i < 1000000; ++i) tFiles.WriteLine(1, "a line of text");
    });
    QCOMPARE(sText, QByteArray("No space left on device"));
}

void TextFilesTest::outputThatCannotBeMadeIsRefused_data() {
    QTest::addColumn<QByteArray>("sPath");
    QTest::addColumn<QByteArray>("sText");
    QTest::newRow("folder missing") << QByteArray("/nowhere/at/all.txt") << QByteArray("No such file or directory");
    QTest::newRow("directory") << QByteArray("/tmp") << QByteArray("Is a directory");
    QTest::newRow("FIFO without reader") << QByteArray("fifo") << QByteArray("No such device or address");
    QTest::newRow("FIFO with a reader") << QByteArray("read fifo") << QByteArray("Not a regular file");
}

void TextFilesTest::outputThatCannotBeMadeIsRefused() {
    QFETCH(QByteArray, sPath);
    QFETCH(QByteArray, sText);
    const bool bReader = sPath == "read fifo";
    if (sPath.endsWith("fifo")) {
        sPath = QByteArray::fromStdString(Path("fifo"));
        QCOMPARE(::mkfifo(sPath.constData(), 0600), 0);
    }
    const int iReader = bReader ? ::open(sPath.constData(), O_RDONLY | O_NONBLOCK) : -1;
    TextFiles tFiles;
    QCOMPARE(Failure([&] { tFiles.OpenForOutput(1, sPath.toStdString()); }), sText);
    QVERIFY(!tFiles.IsOpen(1));
    ::close(iReader);
}

void TextFilesTest::fileIsMadeOnceAndOnlyWhereItCanBe() {
    TextFiles t;
    errno = EEXIST;  // of an earlier call
    QVERIFY(t.Create(1, Path("new.txt")));
    t.WriteLine(1, "a");
    QVERIFY(!t.Create(2, Path("new.txt")));
    QVERIFY(!t.IsOpen(2));
    QCOMPARE(Failure([&] { t.Create(2, Path("none/new.txt")); }), QByteArray("No such file or directory"));
    t.Close(1);
    QCOMPARE(Content(Path("new.txt")), QByteArray("a\r\n"));
}

void TextFilesTest::failingDiskIsTold() {
    TextFiles t([](int) { return EIO; });
    t.OpenForOutput(1, Path("output.txt"));
    t.WriteLine(1, "a");
    t.Flush(1);
    QCOMPARE(Failure([&] { t.AwaitDisk(1); }), QByteArray("Input/output error"));
    t.AwaitDisk(1);  // it is told once
    t.WriteLine(1, "b");
    t.Flush(1);
    QCOMPARE(Failure([&] {
                 while (!t.AwaitDisk(1, std::chrono::milliseconds(1))) {
                 }
             }),
             QByteArray("Input/output error"));
    t.Close(1);
    QCOMPARE(Content(Path("output.txt")), QByteArray("a\r\nb\r\n"));
}

void TextFilesTest::diskIsAwaitedWithPatience() {
    const support::SlowDisk tDisk;
    TextFiles t(tDisk.Function());
    QVERIFY(t.AwaitDisk(1, std::chrono::milliseconds(0)));  // nothing is open
    t.OpenForInput(2, Make("a\r\n"));
    QVERIFY(t.AwaitDisk(2, std::chrono::milliseconds(0)));
    t.AwaitDisk(2);
    t.CheckInPlace(2);
    t.OpenForOutput(1, Path("output.txt"));
    QVERIFY(t.AwaitDisk(1, std::chrono::milliseconds(0)));
    t.WriteLine(1, "a");
    t.Flush(1);
    QVERIFY(!t.AwaitDisk(1, std::chrono::milliseconds(1)));
    tDisk.Release(1);
    t.AwaitDisk(1);
    QVERIFY(t.AwaitDisk(1, std::chrono::milliseconds(0)));
}

void TextFilesTest::outputWithoutADescriptorForTheDiskIsRefused() {
    rlimit tBefore{};
    QCOMPARE(::getrlimit(RLIMIT_NOFILE, &tBefore), 0);
    const int iNext = ::dup(STDERR_FILENO);
    ::close(iNext);
    const rlimit tOne{static_cast<rlim_t>(iNext) + 1, tBefore.rlim_max};
    TextFiles t;
    ::setrlimit(RLIMIT_NOFILE, &tOne);
    const QByteArray sFailure = Failure([&] { t.OpenForOutput(1, Path("output.txt")); });
    ::setrlimit(RLIMIT_NOFILE, &tBefore);
    QCOMPARE(sFailure, QByteArray("Too many open files"));
    QVERIFY(!t.IsOpen(1));
}

// Removed, replaced, or in a folder of another name; a link that leads there all the same does.
void TextFilesTest::fileThatHasGoneIsTold() {
    const QByteArray sGone("The file is no longer there");
    const std::string sPath = Path("output.txt"), sOther = Path("other.txt");
    TextFiles t;
    t.OpenForOutput(1, sPath);
    t.CheckInPlace(1);
    std::filesystem::rename(sPath, sOther);
    QCOMPARE(Failure([&] { t.CheckInPlace(1); }), sGone);
    std::filesystem::create_symlink(sOther, sPath);
    t.CheckInPlace(1);
    std::filesystem::remove(sPath);
    std::filesystem::create_symlink("/dev/null", sPath);
    QCOMPARE(Failure([&] { t.CheckInPlace(1); }), sGone);
    std::filesystem::remove(sPath);
    Make("another file");
    std::filesystem::rename(Path("input.txt"), sPath);
    QCOMPARE(Failure([&] { t.CheckInPlace(1); }), sGone);
    std::filesystem::rename(sOther, sPath);
    t.CheckInPlace(1);
}

void TextFilesTest::writtenBytesAreCounted() {
    TextFiles t;
    t.OpenForOutput(1, Path("output.txt"));
    QCOMPARE(t.Written(1), std::int64_t{0});
    t.WriteLine(1, "12345");
    QCOMPARE(t.Written(1), std::int64_t{7});  // CR LF counts, written out or not
    t.Flush(1);
    QCOMPARE(t.Written(1), std::int64_t{7});
    const std::string sLine(1000, 'x');
    for (int i = 0; i < 1000; ++i) t.WriteLine(1, sLine);
    QCOMPARE(t.Written(1), std::int64_t{7 + 1000 * 1002});
    t.Flush(1);
    QCOMPARE(t.Written(1), static_cast<std::int64_t>(Content(Path("output.txt")).size()));
    QVERIFY(!Failure([&] { t.Written(2); }).isEmpty());
}

void TextFilesTest::endIsReadWithoutMoving() {
    QByteArray sText;
    for (int i = 0; i < 50000; ++i) sText += QByteArray::number(i) + "\r\n";
    TextFiles t;
    t.OpenForInput(1, Make(sText));
    QCOMPARE(t.End(1, 10), sText.right(10).toStdString());
    QCOMPARE(t.ReadLine(1), std::string_view("0"));
    QCOMPARE(t.End(1, 100000), sText.right(100000).toStdString());
    QCOMPARE(t.ReadLine(1), std::string_view("1"));
    QCOMPARE(t.End(1, 10'000'000), sText.toStdString());
    Lines sRest = ReadAll(t, 1);
    QCOMPARE(sRest.size(), std::size_t{49998});
    QCOMPARE(sRest.front(), std::string("2"));
    t.Close(1);
    t.OpenForInput(1, Make({}));
    QCOMPARE(t.End(1, 10), std::string());
}

void TextFilesTest::wrongDirectionIsAnError() {
    TextFiles tFiles;
    tFiles.OpenForInput(1, Make("a\r\n"));
    tFiles.OpenForOutput(2, Path("output.txt"));
    QVERIFY(!Failure([&] { tFiles.WriteLine(1, "x"); }).isEmpty());
    QVERIFY(!Failure([&] { tFiles.ReadLine(2); }).isEmpty());
    QVERIFY(!Failure([&] { tFiles.WriteLine(3, "x"); }).isEmpty());
    QVERIFY(!Failure([&] { tFiles.ReadLine(3); }).isEmpty());
    tFiles.Flush(1);
    QVERIFY(tFiles.ReadLine(1) == "a");
}

void TextFilesTest::closingFreesTheNumber() {
    TextFiles tFiles;
    const std::string sPath = Make("a\r\nb\r\n");
    tFiles.OpenForInput(1, sPath);
    QVERIFY(tFiles.IsOpen(1));
    tFiles.ReadLine(1);
    tFiles.Close(1);
    tFiles.Close(1);
    QVERIFY(!tFiles.IsOpen(1));
    tFiles.OpenForInput(1, sPath);
    QVERIFY(tFiles.AtStart(1));
    QVERIFY(tFiles.ReadLine(1) == "a");
}

void TextFilesTest::filesAreNotInheritedByOtherPrograms() {
    const std::string sInput = Make("a\r\n");
    TextFiles tFiles;
    tFiles.OpenForInput(1, sInput);
    tFiles.OpenForOutput(2, Path("output.txt"));
    int iFound = 0;
    for (int iDescriptor = 0; iDescriptor < 1024; ++iDescriptor) {
        const QFileInfo tLink(QStringLiteral("/proc/self/fd/%1").arg(iDescriptor));
        if (!tLink.symLinkTarget().startsWith(m_tFolder->path())) continue;
        ++iFound;
        QVERIFY((::fcntl(iDescriptor, F_GETFD) & FD_CLOEXEC) != 0);
    }
    QCOMPARE(iFound, 3);  // the disk has a copy of what is written
}

QTEST_GUILESS_MAIN(TextFilesTest)
#include "TextFilesTest.moc"
