// The rows of the Spec tab.
#include "targets/ReportingRates.h"

namespace targets {

// clang-format off
const std::array<std::array<std::string_view, 3>, 14> ReportingRates = {{
    {"Type of Ship",                         "Class A Rates",   "Class B Rates"},
    {"Ship at Anchor",                       "180 sec",         "180 sec"},
    {"",                                     "",                ""},
    {"Ship 0-14 knots",                      "10 sec",          "30 sec"},
    {"Ship 0-14 knots and Changing Course",  "3 sec",           "30 sec"},
    {"Ship 14-23 knots",                     "6 sec",           "15 sec"},
    {"Ship 14-23 knots and Changing Course", "2 sec",           "15 sec"},
    {"Ship >23 knots",                       "2 sec",           "5 sec"},
    {"Ship >23 knots and Changing Course",   "2 sec",           "5 sec"},
    {"",                                     "",                ""},
    {"Static Information",                   "360 sec",         ""},
    {"Voyage Related Information",           "360 sec",         ""},
    {"",                                     "",                ""},
    {"Mssage Type",                          "1,2,3,4,5,11,21", "18,19,24"},  // Kept on purpose: the spelling
}};
// clang-format on

}  // namespace targets
