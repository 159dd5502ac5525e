#pragma once

#include <fmt/format.h>

#include <string>
#include <vector>

namespace Kerovane::Host {

// What stands behind an option in the help, and tells completion what its value can be.
inline constexpr const char* kFileType = "FILE";
inline constexpr const char* kParameterType = "PARAMETER"; ///< the option of one
inline constexpr const char* kVariationType = "PARAMETER=VALUES";
inline constexpr const char* kPresetType = "PRESET"; ///< the name of a shipped one, or a file
inline constexpr char kBetweenChoices = '|';

/// "error|skip|hold"
inline std::string ChoiceType(const std::vector<std::string>& choices) {
    return fmt::format("{}", fmt::join(choices, "|"));
}

} // namespace Kerovane::Host
