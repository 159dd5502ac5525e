#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Kerovane::Host {

/** A preset that is installed with the command. */
struct ShippedPreset {
    std::string name;
    std::filesystem::path file;
};

/// Return the shipped presets, or their names, sorted by name. Return none if their folder cannot
/// be read.
std::vector<ShippedPreset> ShippedPresets();

std::vector<std::string> ShippedPresetNames();

} // namespace Kerovane::Host
