// The stamp that every record line begins with, made by a calendar of its own.
#pragma once

#include <string_view>

#include "platform/runtime/DateTime.h"

namespace simulation {

// "mm/dd/yyyy hh:nn:ss ". The view holds until the next call.
std::string_view Stamp(runtime::DateTime dt);
// The moment that such a text begins with.
runtime::DateTime MomentOf(std::string_view sStamp);

}  // namespace simulation
