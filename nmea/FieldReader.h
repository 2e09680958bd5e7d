// The fields of a sentence, one after the other.
#pragma once

#include <algorithm>
#include <string_view>

namespace nmea {

class FieldReader {
public:
    // Begins behind the address field ("!AIVDM", "$GPGLL") and its comma, which is taken to stand there. What is handed
    // out points into sSentence.
    explicit FieldReader(std::string_view sSentence)
        : m_sRest(sSentence.substr(std::min(sSentence.size(), FirstField))) {}

    // The text up to the next cEnd, which is passed over. False, and nothing is passed over, where there is none: a
    // field without its end is missing.
    bool Next(std::string_view& sField, char cEnd = ',') {
        const std::size_t iEnd = m_sRest.find(cEnd);
        if (iEnd == std::string_view::npos) return false;
        sField = m_sRest.substr(0, iEnd);
        m_sRest.remove_prefix(iEnd + 1);
        return true;
    }
    // The same; false also for an empty field.
    bool NextFilled(std::string_view& sField, char cEnd = ',') { return Next(sField, cEnd) && !sField.empty(); }

    // What has not been read, and passing over a text that it begins with.
    std::string_view Rest() const { return m_sRest; }
    bool Skip(std::string_view sText) {
        if (!m_sRest.starts_with(sText)) return false;
        m_sRest.remove_prefix(sText.size());
        return true;
    }

private:
    static constexpr std::size_t FirstField = 7;

    std::string_view m_sRest;
};

}  // namespace nmea
