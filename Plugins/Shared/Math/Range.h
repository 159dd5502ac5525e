#pragma once

#include <cstdint>
#include <limits>
#include <type_traits>

namespace Kerovane::Tesselune {

/** Two integers. The second is an end or a length; the user of the range decides which. */
class Range {
public:
    std::int32_t start;
    std::int32_t end;

    /// Makes (0, 2147483647) if `all`, else (0, 0).
    explicit constexpr Range(bool all) noexcept
        : Range(0, all ? std::numeric_limits<std::int32_t>::max() : 0) {}
    explicit Range(const void*) = delete; // otherwise a pointer would convert to bool
    explicit constexpr Range(std::int32_t newStart) noexcept : Range(newStart, 0) {}
    constexpr Range(std::int32_t newStart, std::int32_t newEnd) noexcept
        : start(newStart), end(newEnd) {}
};

static_assert(std::is_trivially_copyable_v<Range>);

} // namespace Kerovane::Tesselune
