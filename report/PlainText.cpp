// UTF-8 as RFC 3629 has it: no longer forms than needed, no surrogates, nothing beyond U+10FFFF.
#include "report/PlainText.h"

#include <algorithm>

namespace report {

namespace {

constexpr std::string_view Replacement = "\xEF\xBF\xBD";

unsigned ByteAt(std::string_view s, std::size_t i) { return i < s.size() ? static_cast<unsigned char>(s[i]) : 0; }

// Bytes of the character that s begins with, 0 when that is none.
std::size_t CharacterLength(std::string_view s) {
    const unsigned c = ByteAt(s, 0), cNext = ByteAt(s, 1);
    if (c < 0x80) return 1;
    const std::size_t lLength = c >= 0xF0 ? 4 : c >= 0xE0 ? 3 : 2;
    const bool bLong = (c == 0xE0 && cNext < 0xA0) || (c == 0xF0 && cNext < 0x90);
    const bool bBeyond = (c == 0xED && cNext > 0x9F) || (c == 0xF4 && cNext > 0x8F);
    if (c < 0xC2 || c > 0xF4 || bLong || bBeyond) return 0;
    for (std::size_t i = 1; i < lLength; ++i) {
        if ((ByteAt(s, i) & 0xC0) != 0x80) return 0;
    }
    return lLength;
}

}  // namespace

std::string PlainText(std::string_view s) {
    std::string sPlain;
    while (!s.empty()) {
        const std::size_t lLength = CharacterLength(s);
        const unsigned c = ByteAt(s, 0);
        const bool bPlain = lLength > 0 && c >= 0x20 && c != 0x7F && !(c == 0xC2 && ByteAt(s, 1) < 0xA0);
        sPlain += bPlain ? s.substr(0, lLength) : Replacement;
        s.remove_prefix(std::max<std::size_t>(lLength, 1));
    }
    return sPlain;
}

std::string MarkupText(std::string_view sText) {
    std::string s;
    for (const char c : PlainText(sText)) {
        switch (c) {
            case '&':
                s += "&amp;";
                break;
            case '<':
                s += "&lt;";
                break;
            case '>':
                s += "&gt;";
                break;
            case '"':
                s += "&quot;";
                break;
            case '\'':
                s += "&#39;";
                break;
            default:
                s += c;
        }
    }
    return s;
}

std::string FileNameOf(const std::string& sPath) {
    const auto lEnd = sPath.find_last_not_of('/');
    if (lEnd == std::string::npos) return sPath;
    const auto lSlash = sPath.rfind('/', lEnd);
    return sPath.substr(lSlash + 1, lEnd - lSlash);
}

std::vector<std::string> BrokenLines(std::string_view s, std::size_t lWidth) {
    std::vector<std::string> sLines;
    while (!s.empty()) {
        std::size_t lEnd = s.size() > lWidth ? s.rfind(' ', lWidth) : s.size();
        if (lEnd == std::string_view::npos) lEnd = s.size();
        sLines.emplace_back(s.substr(0, lEnd));
        s.remove_prefix(std::min(s.size(), lEnd + 1));
    }
    return sLines;
}

}  // namespace report
