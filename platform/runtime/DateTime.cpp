// Civil dates over std::chrono's calendar, the fixed texts written and read digit by digit, and the local clock.
#include "platform/runtime/DateTime.h"

#include <time.h>  // NOLINT(modernize-deprecated-headers): POSIX has localtime_r here

#include <algorithm>
#include <chrono>

#include "platform/runtime/Format.h"

namespace runtime {
namespace {

constexpr std::int64_t SecondsPerDay = 86400;
constexpr std::chrono::sys_days Epoch{std::chrono::year{1899} / 12 / 30};

std::int64_t DayOf(DateTime dt) {
    const std::int64_t lDay = dt.lSeconds / SecondsPerDay;
    return dt.lSeconds % SecondsPerDay < 0 ? lDay - 1 : lDay;
}

void AppendYear(std::string& sText, int iYear) { AppendFormat(sText, iYear, {4, 0}); }

// Reads texts of fixed columns; remembers whether every column held what it must.
class FixedReader {
public:
    explicit FixedReader(std::string_view sText) : m_sText(sText) {}

    int Digits(std::size_t iColumn, std::size_t iCount) {
        int iValue = 0;
        for (const char c : m_sText.substr(iColumn, iCount)) {
            if (c < '0' || c > '9') m_bGood = false;
            iValue = iValue * 10 + (c - '0');
        }
        return iValue;
    }
    void Mark(std::size_t iColumn, char c) { m_bGood = m_bGood && m_sText[iColumn] == c; }
    bool Good() const { return m_bGood; }

private:
    std::string_view m_sText;
    bool m_bGood = true;
};

constexpr std::size_t StampLength = 19;  // of both texts that can be read
constexpr std::size_t TimeColumn = 11;   // "hh:nn:ss" stands there in both

bool IsRealDate(CivilDate tDate) {
    return tDate.iYear >= 1 && (std::chrono::year{tDate.iYear} / tDate.iMonth / tDate.iDay).ok();
}

std::optional<DateTime> FinishStamp(FixedReader& tReader, CivilDate tDate) {
    const int iHour = tReader.Digits(TimeColumn, 2);
    tReader.Mark(TimeColumn + 2, ':');
    const int iMinute = tReader.Digits(TimeColumn + 3, 2);
    tReader.Mark(TimeColumn + 5, ':');
    const int iSecond = tReader.Digits(TimeColumn + 6, 2);
    if (!tReader.Good() || !IsRealDate(tDate)) return std::nullopt;
    if (iHour > 23 || iMinute > 59 || iSecond > 59) return std::nullopt;
    return MakeDateTime(tDate, iHour, iMinute, iSecond);
}

}  // namespace

DateTime MakeDateTime(CivilDate tDate, int iHour, int iMinute, int iSecond) {
    const std::chrono::sys_days tDays{std::chrono::year{tDate.iYear} / tDate.iMonth / tDate.iDay};
    const std::int64_t lDays = (tDays - Epoch).count();
    return {lDays * SecondsPerDay + iHour * 3600 + iMinute * 60 + iSecond};
}

CivilDate DateOf(DateTime dt) {
    const std::chrono::year_month_day tDate{Epoch + std::chrono::days{DayOf(dt)}};
    return {static_cast<int>(tDate.year()), static_cast<int>(static_cast<unsigned>(tDate.month())),
            static_cast<int>(static_cast<unsigned>(tDate.day()))};
}

std::int32_t SecondOfDay(DateTime dt) { return static_cast<std::int32_t>(dt.lSeconds - DayOf(dt) * SecondsPerDay); }

void AppendTime(std::string& sText, DateTime dt) {
    const std::int32_t lSecond = SecondOfDay(dt);
    const auto Tens = [](std::int32_t l) { return static_cast<char>('0' + l / 10); };
    const auto Ones = [](std::int32_t l) { return static_cast<char>('0' + l % 10); };
    const std::int32_t lHour = lSecond / 3600;
    const std::int32_t lMinute = lSecond / 60 % 60;
    const char sTime[] = {Tens(lHour),        Ones(lHour),       ':', Tens(lMinute), Ones(lMinute), ':',
                          Tens(lSecond % 60), Ones(lSecond % 60)};
    sText.append(sTime, sizeof sTime);
}

std::string TimeText(DateTime dt) {
    std::string sText;
    AppendTime(sText, dt);
    return sText;
}

void AppendRecordStamp(std::string& sText, DateTime dt) {
    const CivilDate tDate = DateOf(dt);
    AppendTwoDigits(sText, tDate.iMonth);
    sText += '/';
    AppendTwoDigits(sText, tDate.iDay);
    sText += '/';
    AppendYear(sText, tDate.iYear);
    sText += ' ';
    AppendTime(sText, dt);
}

std::string RmcDateText(DateTime dt) {
    const CivilDate tDate = DateOf(dt);
    std::string sText;
    AppendTwoDigits(sText, tDate.iDay);
    AppendTwoDigits(sText, tDate.iMonth);
    AppendTwoDigits(sText, tDate.iYear % 100);
    return sText;
}

std::optional<DateTime> FromRecordStamp(std::string_view sText) {
    if (sText.size() != StampLength) return std::nullopt;
    FixedReader tReader(sText);
    const CivilDate tDate{tReader.Digits(6, 4), tReader.Digits(0, 2), tReader.Digits(3, 2)};
    tReader.Mark(2, '/');
    tReader.Mark(5, '/');
    tReader.Mark(10, ' ');
    return FinishStamp(tReader, tDate);
}

DateTime LocalNow() {
    const time_t lNow = ::time(nullptr);
    struct tm tLocal {};
    ::localtime_r(&lNow, &tLocal);
    return MakeDateTime({tLocal.tm_year + 1900, tLocal.tm_mon + 1, tLocal.tm_mday}, tLocal.tm_hour, tLocal.tm_min,
                        tLocal.tm_sec);
}

double LocalSecondsSinceMidnight() {
    timespec tNow{};
    ::clock_gettime(CLOCK_REALTIME, &tNow);
    struct tm tLocal {};
    ::localtime_r(&tNow.tv_sec, &tLocal);
    const int iSecond = std::min(tLocal.tm_sec, 59);  // time zones with leap seconds count to 60
    return tLocal.tm_hour * 3600 + tLocal.tm_min * 60 + iSecond + static_cast<double>(tNow.tv_nsec) / 1e9;
}

}  // namespace runtime
