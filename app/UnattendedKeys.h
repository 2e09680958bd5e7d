// The profile's section "Unattended": what the program does without a hand on it. Its keys are read and never written.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/Profile.h"

namespace app {

enum class Rotation { Daily, Hourly, Never };

struct UnattendedKeys {
    bool bStart = false;                     // "Start": press Start after the window is shown
    std::u16string sFolder;                  // "Record": record into files of this folder; empty: do not
    Rotation eRotation = Rotation::Daily;    // "Rotate": when a new file begins
    std::optional<std::int64_t> lKeepDays;   // "Keep days": older files are removed
    std::optional<std::int64_t> lKeepBytes;  // "Keep MB", of 1,000,000 bytes: the oldest files beyond are removed
    bool bCapture = false;                   // "Capture": beside each recording, also by hand, all bytes
};

// A value that means nothing there. Its key counts as missing.
struct WrongValue {
    std::string_view sKey;
    std::u16string sValue;
    std::string_view sWanted;  // "is neither 0 nor 1"
};

// The keys in tProfile, and in tWrong what was wrong with them, in the order above.
UnattendedKeys ReadUnattendedKeys(const runtime::Profile& tProfile, std::vector<WrongValue>& tWrong);

}  // namespace app
