#pragma once

#include <fmt/format.h>

#include <string>
#include <vector>

namespace Kerovane::Host {

// The value types of options, shown in the help and used by completion.
inline constexpr const char* kFileType = "FILE";
inline constexpr const char* kParameterType = "PARAMETER"; ///< the name of a parameter's option
inline constexpr const char* kVariationType = "PARAMETER=VALUES";
inline constexpr const char* kPresetType = "PRESET"; ///< a file or a shipped preset's name
inline constexpr char kBetweenChoices = '|';

/// Returns the type of an option that takes one of `choices`: "error|skip|hold".
inline std::string ChoiceType(const std::vector<std::string>& choices) {
    return fmt::format("{}", fmt::join(choices, "|"));
}

} // namespace Kerovane::Host
