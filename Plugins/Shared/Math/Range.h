#pragma once

#include <cstdint>
#include <limits>
#include <type_traits>

namespace Kerovane::Tesselune {

/** Two integers. What the second means, an end or a length, is up to whoever uses it. */
class Range {
public:
    std::int32_t start;
    std::int32_t end;

    /// All there is, (0, 2147483647), or nothing, (0, 0).
    explicit constexpr Range(bool all) noexcept
        : Range(0, all ? std::numeric_limits<std::int32_t>::max() : 0) {}
    explicit Range(const void*) = delete; // or a pointer would be a bool
    explicit constexpr Range(std::int32_t newStart) noexcept : Range(newStart, 0) {}
    constexpr Range(std::int32_t newStart, std::int32_t newEnd) noexcept
        : start(newStart), end(newEnd) {}
};

static_assert(std::is_trivially_copyable_v<Range>);

} // namespace Kerovane::Tesselune
