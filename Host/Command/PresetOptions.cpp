#include "Host/Command/PresetOptions.h"

#include "Host/Command/ShippedPresets.h"
#include "Host/Command/ValueTypes.h"
#include "Host/Pictures/FileHeader.h"
#include "Host/Pictures/PictureFormat.h"
#include "Host/Pictures/PictureRecord.h"
#include "Host/Pictures/ReplaceFile.h"
#include "Host/Text/Error.h"
#include "Host/Text/NearestNames.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstddef>
#include <fstream>
#include <ios>
#include <span>
#include <string>
#include <system_error>

namespace Kerovane::Host {

namespace {

std::string ContentOf(const std::filesystem::path& path) {
    constexpr std::size_t kMegabytes = 4; // the largest file; holds some hundred thousand keys
    constexpr std::size_t kMost = kMegabytes << 20U;
    std::ifstream file(path, std::ios::binary);
    std::string content(kMost + 1, '\0');
    file.read(content.data(), static_cast<std::streamsize>(content.size()));
    if (!file.is_open() || file.bad()) {
        throw Error(fmt::format("cannot read '{}': {}", path.string(),
                                std::generic_category().message(errno)));
    }
    content.resize(static_cast<std::size_t>(file.gcount()));
    if (content.size() > kMost) {
        throw Error(
            fmt::format("cannot read '{}': it is larger than {} MB", path.string(), kMegabytes));
    }
    return content;
}

std::string SettingsIn(const std::filesystem::path& picture) {
    const std::optional<std::string> settings = RecordedSettings(picture);
    if (!settings) {
        throw Error(fmt::format("'{}' holds no settings: it was not made by tesselune, or its "
                                "format cannot store them as PNG and OpenEXR can",
                                picture.string()));
    }
    return *settings;
}

/// Returns `name` if such a file exists, or else the file of the shipped preset with that name.
/// Throws Error if there is neither.
std::filesystem::path PresetFile(const std::filesystem::path& name) {
    std::error_code error; // a file that cannot be examined counts as absent
    if (std::filesystem::exists(name, error)) {
        return name;
    }
    for (const ShippedPreset& preset : ShippedPresets()) {
        if (preset.name == name) {
            return preset.file;
        }
    }
    throw Error(fmt::format("cannot read '{}': there is no such file, and no preset of that name "
                            "in the list of tesselune presets{}",
                            name.string(), Suggestion(name.string(), ShippedPresetNames())));
}

} // namespace

Preset ReadPreset(const std::filesystem::path& file, const FrameRenderer& renderer) {
    const bool isPicture = FormatOf(FileHeader(file)) != nullptr;
    const std::string content = isPicture ? SettingsIn(file) : ContentOf(file);
    try {
        return ParsePreset(renderer.parameters(), content);
    } catch (const Error& error) {
        throw Error(fmt::format("'{}': {}", file.string(), error.what()));
    }
}

void PresetOptions::addLoadingTo(CLI::App& command) {
    command
        .add_option(
            "--preset", mToLoad,
            "parameters to start from: a file, a rendered picture, or a name that tesselune "
            "presets lists; options override it")
        ->type_name(kPresetType)
        ->group("Presets");
}

void PresetOptions::addTo(CLI::App& command) {
    addLoadingTo(command);
    command.add_option("--save-preset", mToSave, "file to save the parameters to")
        ->type_name(kFileType)
        ->group("Presets");
}

Preset PresetOptions::load(const FrameRenderer& renderer, const ParameterSettings& onLine) const {
    Preset preset = mToLoad.empty() ? Preset() : ReadPreset(PresetFile(mToLoad), renderer);
    ParameterSettings settings = onLine;
    settings.merge(preset.settings); // adds only settings that the command line lacks
    preset.settings = std::move(settings);
    return preset;
}

void PresetOptions::save(const FrameRenderer& renderer, const Preset& preset) const {
    if (!mToSave.empty()) {
        const std::string text = FormatPreset(renderer.parameters(), renderer.version(), preset);
        ReplaceFile(mToSave, std::as_bytes(std::span(text)));
    }
}

} // namespace Kerovane::Host
