// Comma-separated values: what is quoted, what is not, and that a reader gets back what was written.
#include "platform/runtime/CsvText.h"

#include <QByteArray>
#include <QTest>
#include <random>
#include <string>
#include <vector>

namespace {

using Record = std::vector<std::string>;

// A reader of its own, straight from the grammar of RFC 4180; nothing when the text breaks it.
std::vector<Record> Read(const std::string& sText) {
    std::vector<Record> tRecords;
    std::size_t i = 0;
    while (i < sText.size()) {
        Record& tRecord = tRecords.emplace_back();
        for (;;) {
            std::string& sField = tRecord.emplace_back();
            if (i < sText.size() && sText[i] == '"') {
                for (++i; i < sText.size(); ++i) {
                    if (sText[i] == '"' && sText.compare(i, 2, "\"\"") != 0) break;
                    if (sText[i] == '"') ++i;
                    sField += sText[i];
                }
                ++i;
            } else {
                while (i < sText.size() && sText[i] != ',' && sText[i] != '\r') sField += sText[i++];
            }
            if (i >= sText.size() || sText[i] != ',') break;
            ++i;
        }
        if (sText.compare(i, 2, "\r\n") != 0) return {};
        i += 2;
    }
    return tRecords;
}

}  // namespace

class CsvTextTest : public QObject {
    Q_OBJECT
private slots:
    void recordsAreWritten_data();
    void recordsAreWritten();
    void everythingReadsBack();
};

void CsvTextTest::recordsAreWritten_data() {
    QTest::addColumn<QByteArrayList>("sFields");
    QTest::addColumn<QByteArray>("sRecord");
    const auto Row = [](const char* sName, const QByteArrayList& sFields, const char* sRecord) {
        QTest::newRow(sName) << sFields << QByteArray(sRecord);
    };
    Row("plain", {"235009876", "A", "-87"}, "235009876,A,-87\r\n");
    Row("empty fields", {"", "", ""}, ",,\r\n");
    Row("comma", {"1,2,3", "x"}, "\"1,2,3\",x\r\n");
    Row("quote", {"21'24\"", "x"}, "\"21'24\"\"\",x\r\n");
    Row("only a quote", {"\""}, "\"\"\"\"\r\n");
    Row("line ends", {"a\rb", "c\nd"}, "\"a\rb\",\"c\nd\"\r\n");
    Row("blanks stay, unquoted", {" a ", "b"}, " a ,b\r\n");
    Row("semicolon and tab mean nothing", {"a;b", "c\td"}, "a;b,c\td\r\n");
    Row("degree sign",
        {"50\xB0"
         "21.40'N"},
        "50\xB0"
        "21.40'N\r\n");
}

void CsvTextTest::recordsAreWritten() {
    QFETCH(QByteArrayList, sFields);
    QFETCH(QByteArray, sRecord);
    Record tFields;
    for (const QByteArray& sField : sFields) tFields.push_back(sField.toStdString());
    std::string sText = "before\r\n";
    runtime::AppendCsvRecord(sText, tFields);
    QCOMPARE(QByteArray::fromStdString(sText), "before\r\n" + sRecord);
}

void CsvTextTest::everythingReadsBack() {
    std::mt19937 tRandom(11);
    const std::string sLetters = "a,\"\r\n b\xB0";
    for (int iRun = 0; iRun < 2000; ++iRun) {
        std::vector<Record> tWritten;
        std::string sText;
        for (std::size_t iRecord = 0; iRecord < 1 + tRandom() % 3; ++iRecord) {
            Record& tRecord = tWritten.emplace_back();
            const std::size_t lFields = 1 + tRandom() % 4;
            for (std::size_t i = 0; i < lFields; ++i) {
                std::string& sField = tRecord.emplace_back();
                for (std::size_t l = tRandom() % 6; l > 0; --l) sField += sLetters[tRandom() % sLetters.size()];
            }
            runtime::AppendCsvRecord(sText, tRecord);
        }
        QVERIFY(Read(sText) == tWritten);
    }
}

QTEST_GUILESS_MAIN(CsvTextTest)
#include "CsvTextTest.moc"
