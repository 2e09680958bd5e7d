// The system speaks UTF-8: its words are rewritten a byte a character, or taken untranslated.
#include "platform/runtime/SystemText.h"

#include <cstring>
#include <optional>
#include <string_view>
#include <system_error>

namespace runtime {
namespace {

// Nothing where the text is no UTF-8 or has a character beyond Latin-1. Two bytes, 110000xx 10xxxxxx, say those from
// 128 to 255; longer ones say none.
std::optional<std::string> Latin1(std::string_view sUtf8) {
    std::string sText;
    for (std::size_t i = 0; i < sUtf8.size(); ++i) {
        const auto cFirst = static_cast<unsigned char>(sUtf8[i]);
        if (cFirst < 0x80) {
            sText += sUtf8[i];
            continue;
        }
        if (cFirst != 0xC2 && cFirst != 0xC3) return std::nullopt;
        if (++i == sUtf8.size()) return std::nullopt;
        const auto cSecond = static_cast<unsigned char>(sUtf8[i]);
        if ((cSecond & 0xC0) != 0x80) return std::nullopt;
        sText += static_cast<char>((cFirst & 0x03) << 6 | (cSecond & 0x3F));
    }
    return sText;
}

}  // namespace

std::string SystemText(int iError) {
    if (auto sText = Latin1(std::generic_category().message(iError))) return *std::move(sText);
    if (const char* pEnglish = ::strerrordesc_np(iError)) return pEnglish;
    return "Unknown error " + std::to_string(iError);
}

}  // namespace runtime
