#pragma once

#include "Host/Frames/FrameRenderer.h"
#include "Host/Parameters/Preset.h"

#include <CLI/App.hpp>

#include <filesystem>

namespace Kerovane::Host {

/// Reads a file that keeps an effect's parameters. Throws Error, which names the file, if it can't
/// be read or doesn't fit the effect.
Preset ReadPreset(const std::filesystem::path& file, const FrameRenderer& renderer);

/** Options of the command line for presets: files that keep an effect's parameters. */
class PresetOptions {
public:
    /// Adds the option to load a preset.
    void addLoadingTo(CLI::App& command);

    /// Adds the options to load and to save one.
    void addTo(CLI::App& command);

    /// `onLine`, and what the preset sets beside, if one was given: a file of that name, else a
    /// shipped preset. Throws Error if there is none or it can't be used.
    Preset load(const FrameRenderer& renderer, const ParameterSettings& onLine) const;

    /// Writes a preset, whole or not at all, if that was asked for. Throws Error if it fails.
    void save(const FrameRenderer& renderer, const Preset& preset) const;

private:
    std::filesystem::path mToLoad; ///< or the name of a shipped one
    std::filesystem::path mToSave;
};

} // namespace Kerovane::Host
