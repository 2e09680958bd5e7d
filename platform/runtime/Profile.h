// The settings profile: sections of key=value lines in a text file, kept line by line so that unknown sections, keys,
// comments and line ends survive a save. Works on the text alone, whatever its letters: others say how a file's bytes
// mean it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace runtime {

class Profile {
public:
    static constexpr std::size_t LongestValue = 79;  // characters that a read returns, unless told otherwise

    Profile() = default;
    explicit Profile(std::u16string_view sText);  // lines ended by CR LF or LF

    // The value of the first key of that name in the first section of that name that has it, names compared without
    // regard to case, blanks around key and value dropped, then one pair of quotes, single or double, around the value;
    // cut to iLongest characters. Empty when missing.
    std::u16string Read(std::string_view sSection, std::string_view sKey, std::size_t iLongest = LongestValue) const;
    // Replaces the value that Read finds, quotes included, else adds the key at the end of its section, else a new
    // section at the end.
    void Write(std::string_view sSection, std::string_view sKey, std::u16string_view sValue);
    // The whole text; lines that were read keep their line ends, new ones end in CR LF.
    std::u16string Text() const;

private:
    std::vector<std::u16string> m_sLines;  // each with its line end
};

}  // namespace runtime
