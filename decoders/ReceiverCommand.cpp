// Builds the receiver board's two commands.
#include "decoders/ReceiverCommand.h"

#include "nmea/NmeaChecksum.h"
#include "platform/runtime/Convert.h"

namespace decoders {

namespace {

constexpr std::int32_t LastCode = 255;

std::string Complete(std::string sBody) {
    const std::string sChecksum = nmea::NmeaChecksum(sBody);
    sBody += '*';
    sBody += sChecksum;
    sBody += "\r\n";
    return sBody;
}

}  // namespace

std::string ChannelCommand(std::string_view sChannel) { return Complete(std::string("$PNMLC,").append(sChannel)); }

std::optional<std::uint8_t> IntervalCode(std::string_view sInterval) {
    try {
        const std::int32_t lCode = runtime::ToInteger(sInterval);
        if (lCode < 0 || lCode > LastCode) return std::nullopt;
        return static_cast<std::uint8_t>(lCode);
    } catch (const runtime::ConversionError&) {
        return std::nullopt;
    }
}

std::string IntervalCommand(std::uint8_t iInterval) {
    // Kept on purpose: the character with that code, control characters included; the board reads no digits here.
    return Complete(std::string("$PNMLT,").append(1, static_cast<char>(iInterval)));
}

}  // namespace decoders
