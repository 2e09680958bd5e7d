// Tables as text for other programs: comma-separated values after RFC 4180.
#pragma once

#include <string>
#include <vector>

namespace runtime {

// Appends a record: its fields with commas in between and CR LF behind. A field with a comma, a quote or a line end in
// it stands in quotes, its own quotes doubled; every other field stands as it is.
void AppendCsvRecord(std::string& sText, const std::vector<std::string>& sFields);

}  // namespace runtime
