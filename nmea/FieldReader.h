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
        std::size_t iEnd = 0;
        while (iEnd < m_sRest.size() && m_sRest[iEnd] != cEnd) ++iEnd;
        return Take(iEnd, sField);
    }
    // The same for a field of more than a few characters: there a search is quicker than a look at each.
    bool NextLong(std::string_view& sField, char cEnd = ',') {
        return Take(std::min(m_sRest.find(cEnd), m_sRest.size()), sField);
    }
    // False also for an empty field.
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

    bool Take(std::size_t iEnd, std::string_view& sField) {
        if (iEnd == m_sRest.size()) return false;
        sField = {m_sRest.data(), iEnd};
        m_sRest.remove_prefix(iEnd + 1);
        return true;
    }

    std::string_view m_sRest;
};

}  // namespace nmea
