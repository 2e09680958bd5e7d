// A decoded AIS message as plain values, kept until the lines at hand have all been taken in (ReportQueue). Its texts
// are made then, if anybody can still see them.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "decoders/VdmMessage.h"
#include "platform/runtime/DateTime.h"

namespace decoders {

struct AisReport {
    static constexpr std::size_t ValuesKept = 24;  // up to payload character 23, the last that any field reads

    std::array<std::int32_t, ValuesKept> lData{};
    runtime::DateTime dt;  // arrival of the completing sentence
    std::string_view sChannel;
    double dOwnLatitude = 0;  // the own position when it was heard
    double dOwnLongitude = 0;
    bool bOwnDecoded = false;  // it is that of a position sentence, which the boxes have not yet rounded
    std::string_view sSignal;  // the receiver's signal sentence that followed, empty where none did
    bool bDbm = false;         // its levels are to be shown in dBm

    void KeepValues(VdmView lValues) { std::memcpy(&lData[1], &lValues[1], sizeof lData - sizeof lData[0]); }

    // Copies the two texts: call it before what they look at goes.
    void KeepTexts() {
        Keep(sChannel, m_sChannel);
        Keep(sSignal, m_sSignal);
    }

private:
    static void Keep(std::string_view& sText, std::string& sCopy) {
        if (sText.data() == sCopy.data()) return;  // it has been kept before
        sCopy = sText;
        sText = sCopy;
    }

    std::string m_sChannel;
    std::string m_sSignal;
};

}  // namespace decoders
