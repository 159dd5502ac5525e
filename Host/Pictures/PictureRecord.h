#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace Kerovane::Host {

/** What a picture file says of how it was made. */
struct PictureRecord {
    std::string program{};  ///< with its version; empty: nothing is said
    std::string settings{}; ///< one line, for formats that hold it
};

/// The attribute that holds the settings.
inline constexpr const char* kSettingsAttribute = "tesselune:settings";

/// The settings that a picture file holds, if it can be opened and has any.
std::optional<std::string> RecordedSettings(const std::filesystem::path& file);

} // namespace Kerovane::Host
