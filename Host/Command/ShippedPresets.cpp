#include "Host/Command/ShippedPresets.h"

#include "Host/Session/InstalledFile.h"

#include <algorithm>
#include <iterator>
#include <system_error>

namespace Kerovane::Host {

std::vector<ShippedPreset> ShippedPresets() {
    std::vector<ShippedPreset> presets;
    std::error_code error; // ends the loop; the presets found before it are returned
    std::filesystem::directory_iterator entry(InstalledFile(TESSELUNE_PRESET_PATH), error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const std::filesystem::path& file = entry->path();
        if (file.extension() == ".json") {
            presets.push_back({.name = file.stem().string(), .file = file});
        }
    }
    std::ranges::sort(presets, {}, &ShippedPreset::name);
    return presets;
}

std::vector<std::string> ShippedPresetNames() {
    std::vector<std::string> names;
    std::ranges::transform(ShippedPresets(), std::back_inserter(names), &ShippedPreset::name);
    return names;
}

} // namespace Kerovane::Host
