// The files of an unattended recording: names, the time for the next one, and when a disk is nearly full.
#include "app/RecordFiles.h"

#include <QTest>

#include "tests/support/IsoTime.h"
#include "tests/support/PrintString.h"

using app::BeginsWithLineOf;
using app::IsNearlyFull;
using app::IsNextFileDue;
using app::RecordFileAge;
using app::RecordFileAgeOf;
using app::RecordFileName;
using app::Rotation;

namespace {

runtime::DateTime Time(const char* sIso) { return *support::FromIso(sIso); }

}  // namespace

class RecordFilesTest : public QObject {
    Q_OBJECT

private slots:
    void namesTellTheFirstLine();
    void namesSortByTime();
    void otherNamesAreNotOurs_data();
    void otherNamesAreNotOurs();
    void firstLines_data();
    void firstLines();
    void nextFiles_data();
    void nextFiles();
    void nearlyFullDisks_data();
    void nearlyFullDisks();
};

void RecordFilesTest::namesTellTheFirstLine() {
    const RecordFileAge tFirst{Time("2011-05-15T09:08:07"), 1};
    QCOMPARE(RecordFileName("tidewatch", tFirst), std::string("tidewatch-20110515-090807.txt"));
    QVERIFY(RecordFileAgeOf("tidewatch", "tidewatch-20110515-090807.txt") == tFirst);
    const RecordFileAge tTwelfth{Time("2011-12-31T23:59:59"), 12};
    QCOMPARE(RecordFileName("north-1", tTwelfth), std::string("north-1-20111231-235959-12.txt"));
    QVERIFY(RecordFileAgeOf("north-1", "north-1-20111231-235959-12.txt") == tTwelfth);
}

void RecordFilesTest::namesSortByTime() {
    const RecordFileAge tNewYear{Time("2012-01-01T00:00:00"), 1};
    const RecordFileAge tSecond{Time("2011-12-31T23:59:59"), 2};
    const RecordFileAge tTenth{Time("2011-12-31T23:59:59"), 10};
    QVERIFY(tSecond < tTenth && tTenth < tNewYear);
}

void RecordFilesTest::otherNamesAreNotOurs_data() {
    QTest::addColumn<std::string>("name");
    for (const char* sName : {"",
                              "tidewatch.txt",
                              "tidewatch-.txt",
                              "tidewatch-20110515.txt",
                              "tidewatch-20110515-120000",
                              "tidewatch-20110515-120000.TXT",
                              "tidewatch-20110515-120000.txt~",
                              "tidewatch-20110515-120000.txt.gz",
                              "Tidewatch-20110515-120000.txt",
                              "xtidewatch-20110515-120000.txt",
                              "north-20110515-120000.txt",
                              "tidewatch_20110515-120000.txt",
                              "tidewatch-20110515_120000.txt",
                              "tidewatch-20110230-120000.txt",
                              "tidewatch-20110515-240000.txt",
                              "tidewatch-2011O515-120000.txt",
                              "tidewatch-20110515-120000-1.txt",
                              "tidewatch-20110515-120000-02.txt",
                              "tidewatch-20110515-120000-.txt",
                              "tidewatch-20110515-120000-x.txt",
                              "tidewatch-20110515-120000--2.txt",
                              "tidewatch-20110515-120000 2.txt",
                              "tidewatch-20110515-120000-2 .txt",
                              "tidewatch-20110515-120000-99999999999.txt",
                              "tidewatch-20110515-120000(copy).txt",
                              "tidewatch-20110515-120000.capture"}) {
        QTest::addRow("%s", sName) << std::string(sName);
    }
}

void RecordFilesTest::otherNamesAreNotOurs() {
    QFETCH(std::string, name);
    QVERIFY(!RecordFileAgeOf("tidewatch", name));
}

void RecordFilesTest::firstLines_data() {
    QTest::addColumn<std::string>("beginning");
    QTest::addColumn<bool>("ours");
    const auto Row = [](const char* sBeginning, bool bOurs) {
        QTest::addRow("%s", sBeginning) << std::string(sBeginning) << bOurs;
    };
    Row("05/15/2011 12:00:00 $GPGLL,4916.45,N\r\n", true);
    Row("05/15/2011 12:00:00 !AIVDM,1", true);
    Row("05/15/2011 12:00:01 !AIVDM,1", false);  // another time than the name's
    Row("05/15/2011 12:00:00 ", false);
    Row("05/15/2011 12:00:00", false);
    Row("05/15/2011 12:00:00_!AIVDM,1", false);
    Row("05/15/2011 12:00:00 notes of mine", false);
    Row("", false);
    Row("2011-05-15 12:00:00 !AIVDM,1", false);
}

void RecordFilesTest::firstLines() {
    QFETCH(std::string, beginning);
    QFETCH(bool, ours);
    QCOMPARE(BeginsWithLineOf(beginning, Time("2011-05-15T12:00:00")), ours);
}

void RecordFilesTest::nextFiles_data() {
    QTest::addColumn<int>("rotation");
    QTest::addColumn<std::string>("first");
    QTest::addColumn<std::string>("line");
    QTest::addColumn<bool>("due");
    const auto Row = [](const char* sName, Rotation e, const char* sFirst, const char* sLine, bool bDue) {
        QTest::newRow(sName) << static_cast<int>(e) << std::string(sFirst) << std::string(sLine) << bDue;
    };
    Row("the same second", Rotation::Daily, "2011-05-15T12:00:00", "2011-05-15T12:00:00", false);
    Row("the day's last second", Rotation::Daily, "2011-05-15T00:00:00", "2011-05-15T23:59:59", false);
    Row("midnight", Rotation::Daily, "2011-05-15T23:59:59", "2011-05-16T00:00:00", true);
    Row("turn of the year", Rotation::Daily, "2011-12-31T12:00:00", "2012-01-01T00:00:00", true);
    Row("silent for days", Rotation::Daily, "2011-05-15T12:00:00", "2011-05-25T12:00:00", true);
    Row("set back, the same day", Rotation::Daily, "2011-05-15T12:00:00", "2011-05-15T01:00:00", false);
    Row("set back over midnight", Rotation::Daily, "2011-05-15T00:00:05", "2011-05-14T23:59:58", false);
    Row("set back by days", Rotation::Daily, "2011-05-15T12:00:00", "2011-05-13T23:59:59", true);
    Row("before all dates", Rotation::Daily, "1899-12-29T23:59:59", "1899-12-30T00:00:00", true);
    Row("the hour's last second", Rotation::Hourly, "2011-05-15T12:00:00", "2011-05-15T12:59:59", false);
    Row("the full hour", Rotation::Hourly, "2011-05-15T12:59:59", "2011-05-15T13:00:00", true);
    Row("the end of summer time", Rotation::Hourly, "2011-10-30T02:00:00", "2011-10-30T02:00:00", false);
    Row("its beginning", Rotation::Hourly, "2011-03-27T01:00:00", "2011-03-27T03:00:00", true);
    Row("set back by an hour", Rotation::Hourly, "2011-05-15T12:10:00", "2011-05-15T11:10:00", false);
    Row("set back by two", Rotation::Hourly, "2011-05-15T12:10:00", "2011-05-15T10:59:59", true);
    Row("never", Rotation::Never, "2011-05-15T12:00:00", "2012-05-15T12:00:00", false);
    Row("never, set back", Rotation::Never, "2011-05-15T12:00:00", "2010-05-15T12:00:00", false);
}

void RecordFilesTest::nextFiles() {
    QFETCH(int, rotation);
    QFETCH(std::string, first);
    QFETCH(std::string, line);
    QFETCH(bool, due);
    QCOMPARE(IsNextFileDue(static_cast<Rotation>(rotation), Time(first.c_str()), Time(line.c_str())), due);
}

void RecordFilesTest::nearlyFullDisks_data() {
    QTest::addColumn<qint64>("whole");
    QTest::addColumn<qint64>("free");
    QTest::addColumn<bool>("full");
    QTest::newRow("large, 200 MB") << qint64{1'000'000'000'000} << qint64{200'000'000} << false;
    QTest::newRow("large, less") << qint64{1'000'000'000'000} << qint64{199'999'999} << true;
    QTest::newRow("4 GB, 5 %") << qint64{4'000'000'000} << qint64{199'999'999} << true;
    QTest::newRow("1 GB, 5 %") << qint64{1'000'000'000} << qint64{50'000'000} << false;
    QTest::newRow("1 GB, less") << qint64{1'000'000'000} << qint64{49'999'999} << true;
    QTest::newRow("nothing known") << qint64{0} << qint64{0} << false;
}

void RecordFilesTest::nearlyFullDisks() {
    QFETCH(qint64, whole);
    QFETCH(qint64, free);
    QFETCH(bool, full);
    QCOMPARE(IsNearlyFull({free, whole}), full);
}

QTEST_APPLESS_MAIN(RecordFilesTest)
#include "RecordFilesTest.moc"
