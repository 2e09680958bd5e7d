// The newest of a row of values: a fixed number of places, used again with the memory that their values hold.
#pragma once

#include <array>
#include <cstddef>

namespace runtime {

template <class T, std::size_t Places>
class Ring {
public:
    static constexpr std::size_t Capacity = Places;

    std::size_t Count() const { return m_iCount; }
    bool Empty() const { return m_iCount == 0; }
    bool Full() const { return m_iCount == Capacity; }

    // One more behind the others, still as it was when its place was last used. Where all places are taken it is the
    // oldest's.
    T& Add() {
        if (Full()) DropOldest();
        ++m_iCount;
        return Newest();
    }
    // i from 0 (oldest) to Count() - 1.
    T& At(std::size_t i) { return m_tPlaces[(m_iFirst + i) % Capacity]; }
    T& Oldest() { return At(0); }
    T& Newest() { return At(m_iCount - 1); }
    void DropOldest() {
        m_iFirst = (m_iFirst + 1) % Capacity;
        --m_iCount;
    }

private:
    std::array<T, Capacity> m_tPlaces{};
    std::size_t m_iFirst = 0;
    std::size_t m_iCount = 0;
};

}  // namespace runtime
