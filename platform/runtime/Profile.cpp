// Finds, replaces and inserts lines of the profile's text; a line that is not asked for is never touched.
#include "platform/runtime/Profile.h"

#include <algorithm>
#include <optional>

namespace runtime {
namespace {

using View = std::u16string_view;

constexpr View NewLineEnd = u"\r\n";

View Trim(View sText) {
    constexpr View Blanks = u" \t\r\n";
    const std::size_t iBegin = sText.find_first_not_of(Blanks);
    if (iBegin == View::npos) return {};
    return sText.substr(iBegin, sText.find_last_not_of(Blanks) - iBegin + 1);
}

char16_t Lower(char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + (u'a' - u'A')) : c; }

std::u16string Wide(std::string_view sName) { return {sName.begin(), sName.end()}; }

// sName: in plain letters.
bool SameName(View sText, std::string_view sName) {
    return std::ranges::equal(sText, sName,
                              [](char16_t cA, char cB) { return Lower(cA) == Lower(static_cast<unsigned char>(cB)); });
}

// The name between the brackets of a section line; nothing where the line is none.
std::optional<View> SectionName(View sLine) {
    const View sText = Trim(sLine);
    if (sText.empty() || sText.front() != u'[') return std::nullopt;
    return Trim(sText.substr(1, sText.find(u']') - 1));
}

bool IsComment(View sLine) {
    const View sText = Trim(sLine);
    return sText.starts_with(u';') || sText.starts_with(u'#');
}

// The name in front of "="; nothing for comments and lines without one.
std::optional<View> KeyName(View sLine) {
    const std::size_t iEqual = sLine.find(u'=');
    if (iEqual == View::npos || IsComment(sLine)) return std::nullopt;
    return Trim(sLine.substr(0, iEqual));
}

// Up to a carriage return that stands in the middle of a line: it cannot be written back.
View ValueText(View sLine) {
    const View sText = Trim(sLine.substr(sLine.find(u'=') + 1));
    return Trim(sText.substr(0, sText.find(u'\r')));
}

View WithoutQuotes(View sValue) {
    const bool bQuoted = sValue.size() >= 2 && (sValue.front() == u'"' || sValue.front() == u'\'');
    return bQuoted && sValue.back() == sValue.front() ? sValue.substr(1, sValue.size() - 2) : sValue;
}

// As it is put into the file. A line end inside it would start a line of its own: the value ends there. One that
// reading would make shorter stands in quotes.
std::u16string Written(View sValue) {
    const View sLine = sValue.substr(0, sValue.find_first_of(u"\r\n"));
    if (WithoutQuotes(Trim(sLine)) == sLine) return std::u16string(sLine);
    return std::u16string(u"\"").append(sLine).append(u"\"");
}

// The first characters, whole: those beyond 65535 take two places.
View Beginning(View sText, std::size_t iCharacters) {
    std::size_t iEnd = 0;
    for (; iCharacters > 0 && iEnd < sText.size(); --iCharacters) {
        const bool bPair = sText[iEnd] >= 0xD800 && sText[iEnd] < 0xDC00;
        iEnd += bPair && iEnd + 1 < sText.size() ? 2 : 1;
    }
    return sText.substr(0, iEnd);
}

View LineEnd(View sLine) {
    if (sLine.ends_with(u"\r\n")) return sLine.substr(sLine.size() - 2);
    return sLine.ends_with(u'\n') ? sLine.substr(sLine.size() - 1) : View();
}

// Where a key stands, or would be added. Indexes of lines; nothing where there is none.
struct Place {
    std::optional<std::size_t> iKey;      // the line of the key
    std::optional<std::size_t> iSection;  // the last line with text of the first section of that name
};

Place Find(const std::vector<std::u16string>& sLines, std::string_view sSection, std::string_view sKey) {
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

Profile::Profile(View sText) {
    while (!sText.empty()) {
        const std::size_t iFeed = sText.find(u'\n');
        const std::size_t iLength = iFeed == View::npos ? sText.size() : iFeed + 1;
        m_sLines.emplace_back(sText.substr(0, iLength));
        sText.remove_prefix(iLength);
    }
}

std::u16string Profile::Read(std::string_view sSection, std::string_view sKey, std::size_t iLongest) const {
    const Place tPlace = Find(m_sLines, sSection, sKey);
    if (!tPlace.iKey) return {};
    return std::u16string(Beginning(WithoutQuotes(ValueText(m_sLines[*tPlace.iKey])), iLongest));
}

void Profile::Write(std::string_view sSection, std::string_view sKey, View sValue) {
    const std::u16string sWritten = Written(sValue);
    const Place tPlace = Find(m_sLines, sSection, sKey);
    if (tPlace.iKey) {
        std::u16string& sLine = m_sLines[*tPlace.iKey];
        const std::size_t iValue = std::min(sLine.find_first_not_of(u" \t", sLine.find(u'=') + 1), sLine.size());
        const std::u16string sEnd(LineEnd(sLine));
        const std::size_t iKept = std::min(iValue, sLine.size() - sEnd.size());
        sLine.resize(iKept);
        sLine.append(sWritten).append(sEnd);
        return;
    }
    std::u16string sNew = Wide(sKey).append(u"=").append(sWritten).append(NewLineEnd);
    const std::size_t iAt = tPlace.iSection ? *tPlace.iSection + 1 : m_sLines.size();
    if (iAt > 0 && LineEnd(m_sLines[iAt - 1]).empty()) m_sLines[iAt - 1] += NewLineEnd;
    auto pAt = m_sLines.begin() + static_cast<std::ptrdiff_t>(iAt);
    if (!tPlace.iSection) pAt = std::next(m_sLines.insert(pAt, u'[' + Wide(sSection) + u"]\r\n"));
    m_sLines.insert(pAt, std::move(sNew));
}

std::u16string Profile::Text() const {
    std::u16string sText;
    for (const std::u16string& sLine : m_sLines) sText += sLine;
    return sText;
}

}  // namespace runtime
