// Names from stamps and back.
#include "app/RecordFiles.h"

#include <algorithm>
#include <charconv>

#include "app/RecordLine.h"

namespace app {
namespace {

constexpr std::size_t DigitsLength = 15;  // "20110515-120000"
constexpr std::int64_t Hour = 3600;
constexpr std::int64_t Day = 24 * Hour;
constexpr std::int64_t LeastRoom = 200'000'000;
constexpr std::int64_t LeastShare = 20;  // a twentieth

// Whole periods since the beginning of time, rounded down.
std::int64_t PeriodOf(runtime::DateTime dt, std::int64_t lLength) {
    return (dt.lSeconds - (dt.lSeconds % lLength + lLength) % lLength) / lLength;
}

// "20110515-120000" to "05/15/2011 12:00:00".
std::string StampOf(std::string_view sDigits) {
    const auto Part = [sDigits](std::size_t iAt, std::size_t iCount) {
        return std::string(sDigits.substr(iAt, iCount));
    };
    return Part(4, 2) + '/' + Part(6, 2) + '/' + Part(0, 4) + ' ' + Part(9, 2) + ':' + Part(11, 2) + ':' + Part(13, 2);
}

}  // namespace

std::string RecordFileName(std::string_view sProgram, const RecordFileAge& t, std::string_view sSuffix) {
    std::string s;  // "mm/dd/yyyy hh:nn:ss"
    runtime::AppendRecordStamp(s, t.dtFirst);
    std::string sName(sProgram);
    sName += '-' + s.substr(6, 4) + s.substr(0, 2) + s.substr(3, 2);
    sName += '-' + s.substr(11, 2) + s.substr(14, 2) + s.substr(17, 2);
    if (t.iSame > 1) sName += '-' + std::to_string(t.iSame);
    return sName.append(sSuffix);
}

std::optional<RecordFileAge> RecordFileAgeOf(std::string_view sProgram, std::string_view sName,
                                             std::string_view sSuffix) {
    const std::size_t iDigits = sProgram.size() + 1;
    if (sName.size() < iDigits + DigitsLength + sSuffix.size()) return std::nullopt;
    if (!sName.starts_with(sProgram) || !sName.ends_with(sSuffix)) return std::nullopt;
    const auto dtFirst = runtime::FromRecordStamp(StampOf(sName.substr(iDigits, DigitsLength)));
    if (!dtFirst) return std::nullopt;
    RecordFileAge t{*dtFirst, 1};
    const std::string_view sSame =
        sName.substr(iDigits + DigitsLength, sName.size() - iDigits - DigitsLength - sSuffix.size());
    if (!sSame.empty()) std::from_chars(sSame.data() + 1, sSame.data() + sSame.size(), t.iSame);
    if (RecordFileName(sProgram, t, sSuffix) != sName) return std::nullopt;  // whatever else is not as we write it
    return t;
}

bool BeginsWithLineOf(std::string_view sBeginning, runtime::DateTime dtFirst) {
    const std::string_view sSentence = RecordSentence(sBeginning);
    if (!sSentence.starts_with('$') && !sSentence.starts_with('!')) return false;
    if (sBeginning[RecordStampLength] != ' ') return false;
    return runtime::FromRecordStamp(sBeginning.substr(0, RecordStampLength)) == dtFirst;
}

bool IsNextFileDue(Rotation eRotation, runtime::DateTime dtFirst, runtime::DateTime dt) {
    if (eRotation == Rotation::Never) return false;
    const std::int64_t lLength = eRotation == Rotation::Hourly ? Hour : Day;
    const std::int64_t lPeriods = PeriodOf(dt, lLength) - PeriodOf(dtFirst, lLength);
    return lPeriods > 0 || lPeriods < -1;
}

bool IsNearlyFull(const runtime::DiskRoom& t) { return t.lFree < std::min(t.lWhole / LeastShare, LeastRoom); }

}  // namespace app
