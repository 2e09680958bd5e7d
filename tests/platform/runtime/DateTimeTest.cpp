// Dates and times: the calendar against the system's own, the fixed texts both ways, and the clock.
#include "platform/runtime/DateTime.h"

#include <QByteArray>
#include <QTest>
#include <ctime>
#include <string>

using namespace runtime;

namespace {

// 1899-12-30 in the system's count of seconds since 1970: 25569 days before it.
constexpr std::int64_t EpochSeconds = -25569LL * 86400;

std::tm SystemCalendar(std::int64_t lSeconds) {
    const auto lTime = static_cast<std::time_t>(lSeconds + EpochSeconds);
    std::tm tParts{};
    gmtime_r(&lTime, &tParts);
    return tParts;
}

// The precise clock's second of the day in a zone so many seconds east.
double SystemSecondOfDay(int iOffset) {
    std::timespec tNow{};
    clock_gettime(CLOCK_REALTIME, &tNow);
    return static_cast<double>((tNow.tv_sec + iOffset) % 86400) + static_cast<double>(tNow.tv_nsec) / 1e9;
}

QByteArray StampOf(DateTime dt) {
    std::string sText;
    AppendRecordStamp(sText, dt);
    return QByteArray::fromStdString(sText);
}

}  // namespace

class DateTimeTest : public QObject {
    Q_OBJECT

private slots:
    void neverSetIsTheLastDayButOneOf1899();
    void calendarAgreesWithTheSystems();
    void textsHaveTheirFixedForms_data();
    void textsHaveTheirFixedForms();
    void timeIsAppended();
    void differenceIsInSeconds();
    void stampsAreReadBack_data();
    void stampsAreReadBack();
    void otherStampsAreRefused_data();
    void otherStampsAreRefused();
    void everySecondOfADayReadsBack();
    void clockShowsLocalTime_data();
    void clockShowsLocalTime();
    void cleanup();
};

void DateTimeTest::neverSetIsTheLastDayButOneOf1899() {
    const CivilDate tDate = DateOf({});
    QCOMPARE(tDate.iYear, 1899);
    QCOMPARE(tDate.iMonth, 12);
    QCOMPARE(tDate.iDay, 30);
    QCOMPARE(SecondOfDay({}), 0);
    QCOMPARE(MakeDateTime({1970, 1, 1}, 0, 0, 0).lSeconds, 25569LL * 86400);
}

void DateTimeTest::calendarAgreesWithTheSystems() {
    // A stride of nine days and five hours odd meets every day of the month and hour of the day.
    const std::int64_t lFirst = MakeDateTime({1, 1, 1}, 0, 0, 0).lSeconds;
    const std::int64_t lLast = MakeDateTime({9999, 12, 31}, 23, 59, 59).lSeconds;
    for (std::int64_t l = lFirst; l <= lLast; l += 9 * 86400 + 18011) {
        const std::tm tParts = SystemCalendar(l);
        const CivilDate tDate = DateOf({l});
        QCOMPARE(tDate.iYear, tParts.tm_year + 1900);
        QCOMPARE(tDate.iMonth, tParts.tm_mon + 1);
        QCOMPARE(tDate.iDay, tParts.tm_mday);
        QCOMPARE(SecondOfDay({l}), tParts.tm_hour * 3600 + tParts.tm_min * 60 + tParts.tm_sec);
        QCOMPARE(MakeDateTime(tDate, tParts.tm_hour, tParts.tm_min, tParts.tm_sec).lSeconds, l);
    }
}

void DateTimeTest::textsHaveTheirFixedForms_data() {
    QTest::addColumn<qint64>("lSeconds");
    QTest::addColumn<QByteArray>("sTime");
    QTest::addColumn<QByteArray>("sStamp");
    QTest::addColumn<QByteArray>("sRmc");
    const auto Row = [](CivilDate t, int iHour, int iMinute, int iSecond, const char* sTime, const char* sStamp,
                        const char* sRmc) {
        QTest::newRow(sStamp) << qint64(MakeDateTime(t, iHour, iMinute, iSecond).lSeconds) << QByteArray(sTime)
                              << QByteArray(sStamp) << QByteArray(sRmc);
    };
    Row({2005, 3, 7}, 4, 5, 6, "04:05:06", "03/07/2005 04:05:06", "070305");
    Row({2024, 12, 31}, 23, 59, 59, "23:59:59", "12/31/2024 23:59:59", "311224");
    Row({2000, 2, 29}, 0, 0, 0, "00:00:00", "02/29/2000 00:00:00", "290200");
    Row({1899, 12, 29}, 23, 59, 59, "23:59:59", "12/29/1899 23:59:59", "291299");
    Row({1, 1, 1}, 12, 0, 0, "12:00:00", "01/01/0001 12:00:00", "010101");
    Row({9999, 10, 10}, 13, 0, 0, "13:00:00", "10/10/9999 13:00:00", "101099");
}

void DateTimeTest::textsHaveTheirFixedForms() {
    QFETCH(qint64, lSeconds);
    QFETCH(QByteArray, sTime);
    QFETCH(QByteArray, sStamp);
    QFETCH(QByteArray, sRmc);
    QCOMPARE(QByteArray::fromStdString(TimeText({lSeconds})), sTime);
    QCOMPARE(StampOf({lSeconds}), sStamp);
    QCOMPARE(QByteArray::fromStdString(RmcDateText({lSeconds})), sRmc);
}

void DateTimeTest::timeIsAppended() {
    std::string sText = "At ";
    AppendTime(sText, MakeDateTime({2024, 5, 6}, 7, 8, 9));
    QCOMPARE(sText, std::string("At 07:08:09"));
}

void DateTimeTest::differenceIsInSeconds() {
    const DateTime dtBefore = MakeDateTime({2024, 2, 28}, 23, 59, 58);
    const DateTime dtAfter = MakeDateTime({2024, 3, 1}, 0, 0, 3);
    QCOMPARE(dtAfter.lSeconds - dtBefore.lSeconds, std::int64_t{86405});
    QVERIFY(dtBefore < dtAfter);
    QVERIFY(dtBefore != dtAfter);
}

void DateTimeTest::stampsAreReadBack_data() {
    QTest::addColumn<QByteArray>("sStamp");
    for (const char* sStamp : {"03/07/2005 04:05:06", "12/31/1999 23:59:59", "02/29/2000 00:00:00",
                               "02/29/2024 12:00:00", "01/01/0001 00:00:00", "12/31/9999 23:59:59"}) {
        QTest::newRow(sStamp) << QByteArray(sStamp);
    }
}

void DateTimeTest::stampsAreReadBack() {
    QFETCH(QByteArray, sStamp);
    const auto dt = FromRecordStamp(sStamp.toStdString());
    QVERIFY(dt.has_value());
    QCOMPARE(StampOf(*dt), sStamp);
    const std::tm tParts = SystemCalendar(dt->lSeconds);
    QCOMPARE(tParts.tm_mon + 1, sStamp.left(2).toInt());
    QCOMPARE(tParts.tm_mday, sStamp.mid(3, 2).toInt());
    QCOMPARE(tParts.tm_year + 1900, sStamp.mid(6, 4).toInt());
    QCOMPARE(tParts.tm_hour, sStamp.mid(11, 2).toInt());
}

void DateTimeTest::otherStampsAreRefused_data() {
    QTest::addColumn<QByteArray>("sStamp");
    const auto Row = [](const char* sName, const char* sStamp) { QTest::newRow(sName) << QByteArray(sStamp); };
    Row("empty", "");
    Row("date alone", "03/07/2005");
    Row("a character short", "03/07/2005 04:05:0");
    Row("a character long", "03/07/2005 04:05:06 ");
    Row("no leading zero", "3/07/2005 04:05:06 ");
    Row("dashes", "03-07-2005 04:05:06");
    Row("year first", "2005/03/07 04:05:06");
    Row("letter T between", "03/07/2005T04:05:06");
    Row("points in the time", "03/07/2005 04.05.06");
    Row("letter in the month", "0x/07/2005 04:05:06");
    Row("letter in the day", "03/o7/2005 04:05:06");
    Row("letter in the year", "03/07/20o5 04:05:06");
    Row("letter in the hour", "03/07/2005 o4:05:06");
    Row("letter in the minute", "03/07/2005 04:o5:06");
    Row("letter in the second", "03/07/2005 04:05:o6");
    Row("blank in the hour", "03/07/2005  4:05:06");
    Row("sign in the year", "03/07/+005 04:05:06");
    Row("month 0", "00/07/2005 04:05:06");
    Row("month 13", "13/07/2005 04:05:06");
    Row("day 0", "03/00/2005 04:05:06");
    Row("April 31", "04/31/2005 04:05:06");
    Row("February 29 of no leap year", "02/29/2005 04:05:06");
    Row("February 29 of 1900", "02/29/1900 04:05:06");
    Row("February 30", "02/30/2024 04:05:06");
    Row("year 0", "03/07/0000 04:05:06");
    Row("hour 24", "03/07/2005 24:00:00");
    Row("minute 60", "03/07/2005 04:60:06");
    Row("second 60", "03/07/2005 04:05:60");
    Row("a sentence", "!AIVDM,1,1,,A,13u?e");
    QTest::newRow("zero bytes") << QByteArray(19, '\0');
    QTest::newRow("high bytes") << QByteArray(19, '\xFF');
}

void DateTimeTest::otherStampsAreRefused() {
    QFETCH(QByteArray, sStamp);
    QVERIFY(!FromRecordStamp(sStamp.toStdString()));
}

void DateTimeTest::everySecondOfADayReadsBack() {
    const DateTime dtDay = MakeDateTime({2024, 2, 29}, 0, 0, 0);
    for (std::int64_t l = 0; l < 86400; ++l) {
        const DateTime dt{dtDay.lSeconds + l};
        std::string sText;
        AppendRecordStamp(sText, dt);
        QVERIFY(FromRecordStamp(sText) == dt);
    }
}

void DateTimeTest::clockShowsLocalTime_data() {
    QTest::addColumn<QByteArray>("sZone");
    QTest::addColumn<int>("iOffset");
    QTest::newRow("UTC") << QByteArray("UTC0") << 0;
    QTest::newRow("five hours and a half east") << QByteArray("XST-5:30") << 19800;
    QTest::newRow("eight hours west") << QByteArray("XST8") << -28800;
}

void DateTimeTest::clockShowsLocalTime() {
    QFETCH(QByteArray, sZone);
    QFETCH(int, iOffset);
    qputenv("TZ", sZone);
    tzset();
    const std::int64_t lBefore = std::time(nullptr) + iOffset - EpochSeconds;
    const std::int64_t lNow = LocalNow().lSeconds;
    const std::int64_t lAfter = std::time(nullptr) + iOffset - EpochSeconds;
    QVERIFY(lBefore <= lNow);
    QVERIFY(lNow <= lAfter);

    // The clock with fractions runs some milliseconds ahead of the one with whole seconds.
    const double dBefore = SystemSecondOfDay(iOffset);
    const double dFraction = LocalSecondsSinceMidnight();
    const double dAfter = SystemSecondOfDay(iOffset);
    QVERIFY(dFraction >= 0);
    QVERIFY(dFraction < 86400);
    const bool bMidnightBetween = dAfter < dBefore;
    QVERIFY(bMidnightBetween || (dBefore <= dFraction && dFraction <= dAfter));
}

void DateTimeTest::cleanup() {
    qunsetenv("TZ");
    tzset();
}

QTEST_GUILESS_MAIN(DateTimeTest)
#include "DateTimeTest.moc"
