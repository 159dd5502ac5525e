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

    /// Returns the preset that was named, or an empty one. Settings in `onLine` override those of
    /// the preset. The name is that of a file, or else of a shipped preset. Throws Error if neither
    /// exists, or if the preset cannot be used.
    Preset load(const FrameRenderer& renderer, const ParameterSettings& onLine) const;

    /// Writes `preset` to the file of --save-preset, completely or not at all. Does nothing without
    /// that option. Throws Error if writing fails.
    void save(const FrameRenderer& renderer, const Preset& preset) const;

private:
    std::filesystem::path mToLoad; ///< a file or a shipped preset's name
    std::filesystem::path mToSave;
};

} // namespace Kerovane::Host
