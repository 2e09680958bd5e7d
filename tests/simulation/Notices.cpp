// Which notice belongs to which trouble.
#include "tests/simulation/Notices.h"

#include <algorithm>
#include <string_view>

#include "tests/simulation/Failure.h"

namespace simulation {

namespace {

// A trouble's notice may come until the program has tried again, a minute later.
constexpr std::int64_t Aftermath = 125;

struct TroubleNotice {
    std::string_view sBeginning;
    Trouble eTrouble;
};
constexpr TroubleNotice TroubleNotices[] = {
    {"<<Record - ", TroubleDisk},
    {"<<Capture - ", TroubleDisk},
    {"<<Input Comm - ", TroublePort},
    {"<<Event 1010>>", TroubleOutput},
    {"<<Output full - ", TroubleOutput},
    {"<<Output closed", TroubleOutput},
    {"<<Bytes arrive but no sentence", TroubleSpeed},
};

}  // namespace

void Notices::Look(Log eLog, const runtime::LogLines& tLines, std::int64_t lSecond) {
    const auto lNew = static_cast<std::int64_t>(tLines.Added() - m_lAdded[eLog]);
    m_lAdded[eLog] = tLines.Added();
    const int iNew = static_cast<int>(std::min<std::int64_t>(lNew, tLines.Count()));
    for (int i = tLines.Count() - iNew; i < tLines.Count(); ++i) {
        if (tLines.Line(i).starts_with("<<")) Explain(eLog, tLines.Line(i), lSecond);
    }
}

void Notices::Explain(Log eLog, const std::string& sText, std::int64_t lSecond) {
    ++m_lSeen;
    for (const TroubleNotice& t : TroubleNotices) {
        if (sText.starts_with(t.sBeginning) && Recent(t.eTrouble, lSecond, Aftermath)) return;
    }
    auto& sExpected = m_sExpected[eLog];
    const std::string sNext = sExpected.empty() ? "none" : sExpected.front();
    if (sNext != sText) throw Failure("a notice without its cause: " + sText + " (next was to come: " + sNext + ")");
    sExpected.pop_front();
}

void Notices::CheckAllCame() const {
    for (const auto& sExpected : m_sExpected) {
        if (!sExpected.empty()) throw Failure("a cause without its notice: " + sExpected.front());
    }
}

}  // namespace simulation
