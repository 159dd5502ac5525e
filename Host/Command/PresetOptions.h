#pragma once

#include "Host/Frames/FrameRenderer.h"
#include "Host/Parameters/Preset.h"

#include <CLI/App.hpp>

#include <filesystem>

namespace Kerovane::Host {

/// Reads a preset file, or the settings recorded in a picture. Throws Error, which names the file,
/// if it cannot be read or does not fit the effect.
Preset ReadPreset(const std::filesystem::path& file, const FrameRenderer& renderer);

/** The command-line options for presets, which are files with an effect's parameters. */
class PresetOptions {
public:
    /// Adds the option that loads a preset.
    void addLoadingTo(CLI::App& command);

    /// Adds the options that load and save a preset.
    void addTo(CLI::App& command);

    /// Returns `onLine` completed by the preset's settings, if a preset was given. The preset is a
    /// file with the given name, or else a shipped preset. Throws Error if there is none or it
    /// cannot be used.
    Preset load(const FrameRenderer& renderer, const ParameterSettings& onLine) const;

    /// Writes a preset completely or not at all, if requested. Throws Error if it fails.
    void save(const FrameRenderer& renderer, const Preset& preset) const;

private:
    std::filesystem::path mToLoad; ///< a file or a shipped preset's name
    std::filesystem::path mToSave;
};

} // namespace Kerovane::Host
