// A decoded AIS message as plain values, kept until the lines at hand have all been taken in (ReportQueue). Its texts
// are made then, if anybody can still see them.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "decoders/SignalSentence.h"
#include "decoders/VdmMessage.h"
#include "platform/runtime/DateTime.h"

namespace decoders {

struct AisReport {
    static constexpr std::size_t ValuesKept = 24;  // up to payload character 23, the last that any field reads

    std::array<std::int32_t, ValuesKept> lData{};
    runtime::DateTime dt;  // arrival of the completing sentence
    std::string sChannel;
    double dOwnLatitude = 0;  // the own position when it was heard
    double dOwnLongitude = 0;
    bool bSignal = false;  // the receiver's signal sentence followed
    SignalLevels tSignal;

    void KeepValues(VdmView lValues) { std::copy_n(lValues.begin(), ValuesKept, lData.begin()); }
};

}  // namespace decoders
