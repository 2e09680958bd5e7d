// The index of an input port and what is kept once per port. The user sees the ports as #1 and #2.
#pragma once

#include <array>
#include <cstdint>

namespace runtime {

using PortIndex = std::int16_t;  // 0 or 1
inline constexpr PortIndex PortCount = 2;

// One value per input port, indexed with round brackets like the controls: m_sCommBuffer(0).
template <class T>
class PerPort {
public:
    T& operator()(PortIndex i) { return m_tValues[static_cast<std::size_t>(i)]; }
    const T& operator()(PortIndex i) const { return m_tValues[static_cast<std::size_t>(i)]; }

private:
    std::array<T, PortCount> m_tValues{};
};

}  // namespace runtime
