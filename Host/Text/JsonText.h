#pragma once

#include <nlohmann/json.hpp>

#include <string>

namespace Kerovane::Host {

/// JSON for files and pipes, indented. Bytes that are no UTF-8 are replaced.
inline std::string JsonText(const nlohmann::ordered_json& json) {
    constexpr int kIndent = 2;
    return json.dump(kIndent, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + '\n';
}

} // namespace Kerovane::Host
