#pragma once

#include <nlohmann/json.hpp>

#include <cstdint>

namespace Kerovane::Host {

/// Returns `value` as a JSON number, as an integer if it is whole.
inline nlohmann::ordered_json JsonNumber(double value) {
    const auto whole = static_cast<std::int64_t>(value);
    return static_cast<double>(whole) == value ? nlohmann::ordered_json(whole)
                                               : nlohmann::ordered_json(value);
}

} // namespace Kerovane::Host
