// Lines in the order of the file, whatever their stamps say.
#include "tests/simulation/Played.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string_view>

#include "tests/simulation/Stamp.h"

namespace simulation {

namespace {

constexpr std::streamoff MostBytes = 200'000;
constexpr std::size_t StampLength = 20;  // "05/15/2011 12:00:00 "

std::string EndOf(const std::string& sFile) {
    std::ifstream t(sFile, std::ios::binary | std::ios::ate);
    if (!t) return {};
    const auto lSize = static_cast<std::streamoff>(t.tellg());
    t.seekg(std::max<std::streamoff>(lSize - MostBytes, 0));
    std::string s{std::istreambuf_iterator<char>(t), {}};
    s.resize(s.rfind('\n') + 1);  // 0 where there is none
    if (lSize > MostBytes) s.erase(0, s.find('\n') + 1);
    return s;
}

}  // namespace

Played::Played(const std::string& sRecording, const std::string& sFile) {
    const std::string sEnd = EndOf(sRecording);
    std::ofstream(sFile, std::ios::binary) << sEnd;
    for (std::string_view sRest = sEnd; !sRest.empty();) {
        const std::string_view sLine = sRest.substr(0, sRest.find('\r'));
        m_tLines.push_back({MomentOf(sLine), std::string(sLine.substr(StampLength))});
        sRest.remove_prefix(sRest.find('\n') + 1);
    }
}

std::vector<std::string> Played::Due(runtime::DateTime dtNow) {
    if (m_iNext == 0) m_dtBegan = dtNow;
    std::vector<std::string> sDue;
    for (; !Over(); ++m_iNext) {
        const Line& t = m_tLines[m_iNext];
        if (dtNow.lSeconds - m_dtBegan.lSeconds < t.dt.lSeconds - m_tLines.front().dt.lSeconds) break;
        sDue.push_back(t.sSentence);
    }
    return sDue;
}

std::vector<std::string> Played::All() const {
    std::vector<std::string> s;
    for (const Line& t : m_tLines) s.push_back(t.sSentence);
    return s;
}

}  // namespace simulation
