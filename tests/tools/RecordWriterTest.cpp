// The record files of the simulator: their form, what each kind holds, and that the samples in the tree are what the
// generator makes.
#include "tools/RecordWriter.h"

#include <QCryptographicHash>
#include <QFile>
#include <QTest>

#include "SentenceReader.h"

using namespace simulator;

namespace {

std::string FileOf(const RecordKind& tKind, std::int64_t lLines) {
    RecordWriter tWriter(tKind, lLines);
    std::string s;
    for (std::int64_t l = 0; l < lLines; ++l) tWriter.AppendLine(s);
    return s;
}

std::string FileOf(std::string_view sKind, std::int64_t lLines) { return FileOf(*FindRecordKind(sKind), lLines); }

std::vector<std::string> LinesOf(const std::string& sFile) {
    std::vector<std::string> sLines;
    for (std::size_t i = 0; i < sFile.size();) {
        const std::size_t iEnd = sFile.find("\r\n", i);
        if (iEnd == std::string::npos) return {};
        sLines.push_back(sFile.substr(i, iEnd - i));
        i = iEnd + 2;
    }
    return sLines;
}

}  // namespace

class RecordWriterTest : public QObject {
    Q_OBJECT

private slots:
    void linesHaveStampBlankAndSentence_data();
    void linesHaveStampBlankAndSentence();
    void reportsAreVdmAlone();
    void mixedHoldsAllKinds();
    void nightPassesMidnight();
    void damagedFileEndsAtAnImpossibleDate();
    void unknownKindIsRefused();
    void samplesAreWhatTheGeneratorMakes_data();
    void samplesAreWhatTheGeneratorMakes();
    void aCrowdsFileStaysWhatItWas_data();
    void aCrowdsFileStaysWhatItWas();
};

void RecordWriterTest::linesHaveStampBlankAndSentence_data() {
    QTest::addColumn<std::string>("sKind");
    for (const char* s : {"harbour", "night", "mixed", "reports"}) QTest::newRow(s) << std::string(s);
}

void RecordWriterTest::linesHaveStampBlankAndSentence() {
    QFETCH(std::string, sKind);
    const auto sLines = LinesOf(FileOf(sKind, 3000));
    QCOMPARE(sLines.size(), std::size_t{3000});
    runtime::DateTime dtLast;
    for (const std::string& s : sLines) {
        const auto dt = runtime::FromRecordStamp(s.substr(0, 19));
        QVERIFY2(dt.has_value(), s.c_str());
        QVERIFY(*dt >= dtLast);
        dtLast = *dt;
        QCOMPARE(s[19], ' ');
        QVERIFY2(reader::ChecksumRight(s.substr(20)), s.c_str());
    }
}

void RecordWriterTest::reportsAreVdmAlone() {
    for (const std::string& s : LinesOf(FileOf("reports", 2000))) QVERIFY(reader::IsVdm(s.substr(20)));
}

void RecordWriterTest::mixedHoldsAllKinds() {
    int iVdm = 0, iSignal = 0, iGll = 0, iRmc = 0;
    for (const std::string& s : LinesOf(FileOf("mixed", 5000))) {
        const std::string sAddress = s.substr(20, 6);
        iVdm += sAddress == "!AIVDM" ? 1 : 0;
        iSignal += sAddress == "$PNMLS" ? 1 : 0;
        iGll += sAddress == "$GPGLL" ? 1 : 0;
        iRmc += sAddress == "$GPRMC" ? 1 : 0;
    }
    QCOMPARE(iVdm + iSignal + iGll + iRmc, 5000);
    QVERIFY(iSignal > 1500);
    QVERIFY(iVdm >= iSignal);  // messages of two sentences have one signal line
    QVERIFY(iGll > 100);
    QVERIFY(std::abs(iGll - iRmc) <= 1);
}

void RecordWriterTest::nightPassesMidnight() {
    const auto sLines = LinesOf(FileOf("night", 5000));
    QCOMPARE(sLines.front().substr(0, 19), std::string("11/21/2025 23:57:30"));
    QCOMPARE(sLines.back().substr(0, 13), std::string("11/22/2025 00"));
}

void RecordWriterTest::damagedFileEndsAtAnImpossibleDate() {
    constexpr std::size_t Count = 2000;
    const auto sLines = LinesOf(FileOf("damaged", Count));
    QCOMPARE(sLines.size(), Count);
    std::size_t iFirstBad = Count;
    int iEmpty = 0, iWrong = 0, iBinary = 0;
    for (std::size_t i = 0; i < Count; ++i) {
        if (!runtime::FromRecordStamp(sLines[i].substr(0, 19)) && iFirstBad == Count) iFirstBad = i;
        const std::string sSentence = sLines[i].size() > 20 ? sLines[i].substr(20) : "";
        iEmpty += sSentence.empty() ? 1 : 0;
        iWrong += reader::ChecksumRight(sSentence) ? 0 : 1;
        for (const char c : sSentence) {
            if (static_cast<unsigned char>(c) < 128) continue;
            ++iBinary;
            break;
        }
    }
    QCOMPARE(iFirstBad + 1, Count - RecordWriter::DamageFromEnd);
    QCOMPARE(sLines[iFirstBad].substr(0, 11), std::string("02/30/2025 "));
    QVERIFY(iEmpty > 10);
    QVERIFY(iWrong > 100);
    QVERIFY(iBinary > 40);
}

void RecordWriterTest::unknownKindIsRefused() { QVERIFY(!FindRecordKind("harbor").has_value()); }

void RecordWriterTest::samplesAreWhatTheGeneratorMakes_data() {
    QTest::addColumn<std::string>("sKind");
    QTest::addColumn<std::int64_t>("lLines");
    QTest::addColumn<qint64>("lLargest");
    QTest::newRow("harbour") << std::string("harbour") << std::int64_t{4450} << qint64{400'000};
    QTest::newRow("night") << std::string("night") << std::int64_t{11500} << qint64{700'000};
    QTest::newRow("damaged") << std::string("damaged") << std::int64_t{4000} << qint64{400'000};
}

void RecordWriterTest::samplesAreWhatTheGeneratorMakes() {
    QFETCH(std::string, sKind);
    QFETCH(std::int64_t, lLines);
    QFETCH(qint64, lLargest);
    QFile tFile(QStringLiteral(SAMPLES_FOLDER "/") + QString::fromStdString(sKind) + QStringLiteral(".txt"));
    QVERIFY(tFile.open(QIODevice::ReadOnly));
    QVERIFY(tFile.size() < lLargest);
    QVERIFY(tFile.readAll().toStdString() == FileOf(sKind, lLines));
}

// More ships than the slots can carry. The sums are those of the files that the generator made when it still asked
// every waiting ship in every slot: the same options must go on to make the same file.
void RecordWriterTest::aCrowdsFileStaysWhatItWas_data() {
    QTest::addColumn<std::string>("sKind");
    QTest::addColumn<std::uint64_t>("lSeed");
    QTest::addColumn<int>("iTargets");
    QTest::addColumn<std::int64_t>("lLines");
    QTest::addColumn<QByteArray>("sMd5");
    QTest::newRow("damaged, 500") << std::string("damaged") << std::uint64_t{4} << 500 << std::int64_t{20000}
                                  << QByteArray("c34a22a4a882220b700afa43aa0902c4");
    QTest::newRow("mixed, 3000") << std::string("mixed") << std::uint64_t{8} << 3000 << std::int64_t{40000}
                                 << QByteArray("7c42542e9d81136b2df8e0de928a51b1");
    QTest::newRow("mixed, 20000") << std::string("mixed") << std::uint64_t{10} << 20000 << std::int64_t{30000}
                                  << QByteArray("1d4a57a9d0ec850a03903f67bf91bf06");
}

void RecordWriterTest::aCrowdsFileStaysWhatItWas() {
    QFETCH(std::string, sKind);
    QFETCH(std::uint64_t, lSeed);
    QFETCH(int, iTargets);
    QFETCH(std::int64_t, lLines);
    QFETCH(QByteArray, sMd5);
    RecordKind tKind = *FindRecordKind(sKind);
    tKind.tTraffic.lSeed = lSeed;
    tKind.tTraffic.iTargets = iTargets;
    const QByteArray sFile = QByteArray::fromStdString(FileOf(tKind, lLines));
    QCOMPARE(QCryptographicHash::hash(sFile, QCryptographicHash::Md5).toHex(), sMd5);
}

QTEST_GUILESS_MAIN(RecordWriterTest)
#include "RecordWriterTest.moc"
