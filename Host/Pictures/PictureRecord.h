#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace Kerovane::Host {

/** The record in a picture file of how it was made. */
struct PictureRecord {
    std::string program{};  ///< name and version; empty: not recorded
    std::string settings{}; ///< on one line, for formats that hold it
};

/// The name of the attribute that holds the settings.
inline constexpr const char* kSettingsAttribute = "tesselune:settings";

/// Returns the settings recorded in a picture file, or nothing if there are none or the file cannot
/// be read.
std::optional<std::string> RecordedSettings(const std::filesystem::path& file);

} // namespace Kerovane::Host
