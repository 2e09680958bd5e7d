// Each key's own reading.
#include "app/UnattendedKeys.h"

#include <algorithm>
#include <array>

namespace app {
namespace {

constexpr std::size_t LongestValue = 4096;  // a folder's path is taken whole
constexpr std::int64_t Megabyte = 1'000'000;
constexpr std::size_t MostDigits = 9;

using Text = std::u16string_view;

std::optional<bool> ToSwitch(Text sValue) {
    if (sValue == u"0") return false;
    if (sValue == u"1") return true;
    return std::nullopt;
}

std::optional<std::int64_t> ToCount(Text sValue) {
    if (sValue.size() > MostDigits) return std::nullopt;
    std::int64_t lCount = 0;
    for (const char16_t c : sValue) {
        if (c < u'0' || c > u'9') return std::nullopt;
        lCount = lCount * 10 + (c - u'0');
    }
    if (lCount == 0) return std::nullopt;
    return lCount;
}

std::optional<Rotation> ToRotation(Text sValue) {
    struct Name {
        std::string_view sName;
        Rotation eRotation;
    };
    constexpr std::array<Name, 3> tNames = {
        {{"daily", Rotation::Daily}, {"hourly", Rotation::Hourly}, {"never", Rotation::Never}}};
    constexpr char16_t LowerCase = 0x20;
    for (const Name& t : tNames) {
        const bool bSame = std::ranges::equal(
            sValue, t.sName, [](char16_t cA, char cB) { return (cA | LowerCase) == static_cast<unsigned char>(cB); });
        if (bSame) return t.eRotation;
    }
    return std::nullopt;
}

// Where a relative one would lead depends on where the program was started.
std::optional<std::u16string> ToFolder(Text sValue) {
    if (!sValue.starts_with(u'/') && !sValue.starts_with(u"~/")) return std::nullopt;
    return std::u16string(sValue);
}

}  // namespace

UnattendedKeys ReadUnattendedKeys(const runtime::Profile& tProfile, std::vector<WrongValue>& tWrong) {
    const auto Read = [&](std::string_view sKey, auto tTo, std::string_view sWanted) -> decltype(tTo(Text())) {
        std::u16string sValue = tProfile.Read("Unattended", sKey, LongestValue);
        if (sValue.empty()) return std::nullopt;
        auto tRead = tTo(sValue);
        if (!tRead) tWrong.push_back({sKey, std::move(sValue), sWanted});
        return tRead;
    };
    constexpr std::string_view Count = "is no whole number from 1 to 999999999";
    UnattendedKeys t;
    t.bStart = Read("Start", ToSwitch, "is neither 0 nor 1").value_or(false);
    t.sFolder = Read("Record", ToFolder, "does not begin with / or ~/").value_or(std::u16string());
    t.eRotation = Read("Rotate", ToRotation, "is not daily, hourly or never").value_or(Rotation::Daily);
    t.lKeepDays = Read("Keep days", ToCount, Count);
    t.lKeepBytes = Read("Keep MB", ToCount, Count);
    if (t.lKeepBytes) *t.lKeepBytes *= Megabyte;
    t.bCapture = Read("Capture", ToSwitch, "is neither 0 nor 1").value_or(false);
    return t;
}

}  // namespace app
