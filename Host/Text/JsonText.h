#pragma once

#include <nlohmann/json.hpp>

#include <string>

namespace Kerovane::Host {

/// Returns `json` as indented text with a final line break. Bytes that are not UTF-8 are replaced.
inline std::string JsonText(const nlohmann::ordered_json& json) {
    constexpr int kIndent = 2;
    return json.dump(kIndent, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + '\n';
}

} // namespace Kerovane::Host
