// What a seed decides before anything happens: how the program is set up, when it begins, how many ships there are.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace simulation {

struct Setting {
    std::uint64_t lSeed = 0;
    std::string sClock;        // where the clock begins
    int iTargets = 0;          // of the harbour: few, so that an hour passes in a fraction of a second
    bool bOutput = false;      // every sentence is forwarded
    bool bUnattended = false;  // as the profile says; else a person presses Start and Record
    bool bHourly = false;      // a file an hour; else a file a day
    bool bNever = false;       // one file for all
    bool bCapture = false;     // every byte, beside the recording
    std::int64_t lKeepDays = 0, lKeepMegabytes = 0;  // 0: all
    std::int64_t lFirstNumber = 0;                   // the message number that every run begins behind

    // In words: "unattended, hourly, Keep MB 5".
    std::string Text() const;
};

Setting SettingOf(std::uint64_t lSeed);

}  // namespace simulation
