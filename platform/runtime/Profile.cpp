// Finds, replaces and inserts lines of the profile's text; a line that is not asked for is never touched.
#include "platform/runtime/Profile.h"

#include <algorithm>
#include <optional>

namespace runtime {
namespace {

constexpr std::string_view NewLineEnd = "\r\n";

std::string_view Trim(std::string_view sText) {
    constexpr std::string_view Blanks = " \t\r\n";
    const std::size_t iBegin = sText.find_first_not_of(Blanks);
    if (iBegin == std::string_view::npos) return {};
    return sText.substr(iBegin, sText.find_last_not_of(Blanks) - iBegin + 1);
}

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

bool SameName(std::string_view sA, std::string_view sB) {
    return std::ranges::equal(sA, sB, [](char cA, char cB) { return Lower(cA) == Lower(cB); });
}

// The name between the brackets of a section line; nothing where the line is none.
std::optional<std::string_view> SectionName(std::string_view sLine) {
    const std::string_view sText = Trim(sLine);
    if (sText.empty() || sText.front() != '[') return std::nullopt;
    return Trim(sText.substr(1, sText.find(']') - 1));
}

bool IsComment(std::string_view sLine) {
    const std::string_view sText = Trim(sLine);
    return !sText.empty() && (sText.front() == ';' || sText.front() == '#');
}

// The name in front of "="; nothing for comments and lines without one.
std::optional<std::string_view> KeyName(std::string_view sLine) {
    const std::size_t iEqual = sLine.find('=');
    if (iEqual == std::string_view::npos || IsComment(sLine)) return std::nullopt;
    return Trim(sLine.substr(0, iEqual));
}

std::string_view ValueText(std::string_view sLine) { return Trim(sLine.substr(sLine.find('=') + 1)); }

std::string_view LineEnd(std::string_view sLine) {
    if (sLine.ends_with("\r\n")) return sLine.substr(sLine.size() - 2);
    return sLine.ends_with('\n') ? sLine.substr(sLine.size() - 1) : std::string_view();
}

// Where a key stands, or would be added. Indexes of lines; nothing where there is none.
struct Place {
    std::optional<std::size_t> iKey;      // the line of the key
    std::optional<std::size_t> iSection;  // the last line with text of the first section of that name
};

Place Find(const std::vector<std::string>& sLines, std::string_view sSection, std::string_view sKey) {
    Place tPlace;
    bool bInside = false;
    bool bFirst = false;  // inside the first section of that name
    for (std::size_t i = 0; i < sLines.size(); ++i) {
        if (const auto sName = SectionName(sLines[i])) {
            bInside = SameName(*sName, sSection);
            bFirst = bInside && !tPlace.iSection;
        }
        if (!bInside || Trim(sLines[i]).empty()) continue;
        if (bFirst) tPlace.iSection = i;
        const auto sName = SectionName(sLines[i]) ? std::nullopt : KeyName(sLines[i]);
        if (!sName || !SameName(*sName, sKey)) continue;
        tPlace.iKey = i;
        return tPlace;
    }
    return tPlace;
}

}  // namespace

Profile::Profile(std::string_view sText) {
    while (!sText.empty()) {
        const std::size_t iFeed = sText.find('\n');
        const std::size_t iLength = iFeed == std::string_view::npos ? sText.size() : iFeed + 1;
        m_sLines.emplace_back(sText.substr(0, iLength));
        sText.remove_prefix(iLength);
    }
}

std::string Profile::Read(std::string_view sSection, std::string_view sKey) const {
    const Place tPlace = Find(m_sLines, sSection, sKey);
    if (!tPlace.iKey) return {};
    return std::string(ValueText(m_sLines[*tPlace.iKey]).substr(0, LongestValue));
}

void Profile::Write(std::string_view sSection, std::string_view sKey, std::string_view sValue) {
    // A line end inside a value would start a line of its own: the value ends there.
    const std::string_view sWritten = sValue.substr(0, sValue.find_first_of("\r\n"));
    const Place tPlace = Find(m_sLines, sSection, sKey);
    if (tPlace.iKey) {
        std::string& sLine = m_sLines[*tPlace.iKey];
        const std::size_t iValue = std::min(sLine.find_first_not_of(" \t", sLine.find('=') + 1), sLine.size());
        const std::string sEnd(LineEnd(sLine));
        const std::size_t iKept = std::min(iValue, sLine.size() - sEnd.size());
        sLine = sLine.substr(0, iKept).append(sWritten).append(sEnd);
        return;
    }
    std::string sNew = std::string(sKey).append("=").append(sWritten).append(NewLineEnd);
    const std::size_t iAt = tPlace.iSection ? *tPlace.iSection + 1 : m_sLines.size();
    if (iAt > 0 && LineEnd(m_sLines[iAt - 1]).empty()) m_sLines[iAt - 1] += NewLineEnd;
    auto pAt = m_sLines.begin() + static_cast<std::ptrdiff_t>(iAt);
    if (!tPlace.iSection) pAt = std::next(m_sLines.insert(pAt, '[' + std::string(sSection) + "]\r\n"));
    m_sLines.insert(pAt, std::move(sNew));
}

std::string Profile::Text() const {
    std::string sText;
    for (const std::string& sLine : m_sLines) sText += sLine;
    return sText;
}

}  // namespace runtime
