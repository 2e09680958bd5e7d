// A result as one page of HTML that needs nothing but itself: figures as tables, pictures inline, rules below.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "report/Writer.h"

namespace report {

// The page takes the name sFile when it is whole. Raises std::runtime_error when it cannot be written or drawn.
std::unique_ptr<Writer> MakePageWriter(const std::string& sFile, const std::string& sTitle,
                                       const std::vector<std::string>& sSources);

// What the page looks like, light and dark, on screens from narrow to wide, and on paper.
extern const char* const PageStyle;

}  // namespace report
