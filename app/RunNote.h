// What is told of a recording or a playback that is under way: sizes, spans, and where a recording ends.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/runtime/DateTime.h"

namespace app {

// "1 byte", "999 bytes", "1.0 kB", "12.3 MB", "4.5 GB": thousands, as file managers count.
std::string SizeText(std::int64_t lBytes);
// "0:00:07", "26:10:00"; below zero (the clock was set back) it is zero.
std::string SpanText(std::int64_t lSeconds);
// "14:35:10", on another day than dtNow's with the date in front, "05/16/2011 00:10:00".
std::string MomentText(runtime::DateTime dt, runtime::DateTime dtNow);
// The stamp of the last record line in the end of a file; nothing where no line there has one.
std::optional<runtime::DateTime> LastRecordStamp(std::string_view sEnd);

}  // namespace app
