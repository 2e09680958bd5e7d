// How far one recording's clock is from the other's, from payloads that stand in both.
#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>

#include "platform/runtime/DateTime.h"

namespace report {

// When payloads were heard that are sent only once. Of more than Capacity a part is kept that is chosen by the payload
// itself, so that two samples keep the same ones.
class PayloadSample {
public:
    static constexpr std::size_t Capacity = 1 << 16;

    struct Seen {
        std::int64_t lSeconds = 0;
        bool bAgain = false;  // heard at another time too, after all: it tells nothing of clocks
    };

    void Add(std::uint64_t lPayload, runtime::DateTime dt);
    const std::unordered_map<std::uint64_t, Seen>& Payloads() const { return m_tSeen; }

private:
    bool Keeps(std::uint64_t lPayload) const { return (lPayload & m_lMask) == 0; }

    std::unordered_map<std::uint64_t, Seen> m_tSeen;
    std::uint64_t m_lMask = 0;
};

struct ClockOffset {
    std::int64_t lSeconds;   // what the second clock shows more than the first
    std::int64_t lAgreeing;  // payloads that say so, to 3 seconds
    std::int64_t lCompared;  // payloads that stand once in each
};

// The offset on which most of the payloads agree that each heard at one time only. Nothing where too few do: fewer than
// 5 (3 if no other contradicts), or less than a fifth of them and less than three times as many as agree on the next
// best.
std::optional<ClockOffset> EstimateOffset(const PayloadSample& tFirst, const PayloadSample& tSecond);

}  // namespace report
