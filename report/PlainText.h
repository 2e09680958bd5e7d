// Texts from outside as other formats can bear them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace report {

// UTF-8 without control characters: what is neither becomes U+FFFD. File names need not be UTF-8.
std::string PlainText(std::string_view sText);
// The same as content of HTML and XML, also between quotes.
std::string MarkupText(std::string_view sText);
// The last part of a path.
std::string FileNameOf(const std::string& sPath);
// Broken at blanks into lines of at most so many bytes, unless a word is longer.
std::vector<std::string> BrokenLines(std::string_view sText, std::size_t lWidth);

}  // namespace report
