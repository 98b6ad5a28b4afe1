#pragma once

#include <array>
#include <cassert>
#include <cstddef>

namespace document {

/// An array that keeps the index range of its domain: `IndexedArray<T, 1, 35>` counts from 1.
template <typename T, int First, int Last>
struct IndexedArray {
    static_assert(First <= Last);
    static constexpr int kFirst = First;
    static constexpr int kLast = Last;

    std::array<T, static_cast<std::size_t>(Last - First + 1)> elements{};

    constexpr T& operator[](int index)
    {
        assert(index >= First && index <= Last);
        return elements[static_cast<std::size_t>(index - First)];
    }
    constexpr const T& operator[](int index) const
    {
        assert(index >= First && index <= Last);
        return elements[static_cast<std::size_t>(index - First)];
    }

    constexpr auto begin() { return elements.begin(); }
    constexpr auto end() { return elements.end(); }
    constexpr auto begin() const { return elements.begin(); }
    constexpr auto end() const { return elements.end(); }

    friend bool operator==(const IndexedArray&, const IndexedArray&) = default;
};

}  // namespace document
