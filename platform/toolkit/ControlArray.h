// Controls that exist several times, indexed with round brackets like everything kept once per port.
#pragma once

#include <array>
#include <cstdint>

namespace toolkit {

template <class T, std::size_t Count = 2>
class ControlArray {
public:
    // Makes the controls as children of pParent, which owns them.
    template <class Parent>
    explicit ControlArray(Parent* pParent) {
        for (T*& p : m_pControls) p = new T(pParent);
    }
    T& operator()(std::int16_t i) const { return *m_pControls[static_cast<std::size_t>(i)]; }

private:
    std::array<T*, Count> m_pControls{};
};

}  // namespace toolkit
