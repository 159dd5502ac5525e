#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace Kerovane::Fuzz {

inline std::string_view TextOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// Returns the text before and after the first `separator`; an empty second text if there is none.
inline std::pair<std::string_view, std::string_view> SplitInTwo(std::string_view text,
                                                                char separator) {
    const std::size_t place = text.find(separator);
    return {text.substr(0, place),
            place != std::string_view::npos ? text.substr(place + 1) : std::string_view()};
}

} // namespace Kerovane::Fuzz
