// Writing comma-separated values.
#include "platform/runtime/CsvText.h"

#include <string_view>

namespace runtime {

namespace {

void AppendField(std::string& sText, std::string_view sField) {
    if (sField.find_first_of(",\"\r\n") == std::string_view::npos) {
        sText += sField;
        return;
    }
    sText += '"';
    for (const char c : sField) {
        if (c == '"') sText += '"';
        sText += c;
    }
    sText += '"';
}

}  // namespace

void AppendCsvRecord(std::string& sText, const std::vector<std::string>& sFields) {
    for (std::size_t i = 0; i < sFields.size(); ++i) {
        if (i > 0) sText += ',';
        AppendField(sText, sFields[i]);
    }
    sText += "\r\n";
}

}  // namespace runtime
