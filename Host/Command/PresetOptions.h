#pragma once

#include "Host/Frames/FrameRenderer.h"
#include "Host/Parameters/Preset.h"

#include <CLI/App.hpp>

#include <filesystem>

namespace Kerovane::Host {

/** Options of the command line for presets: files that keep an effect's parameters. */
class PresetOptions {
public:
    void addTo(CLI::App& command);

    /// What the preset sets, if one was given. Throws Error, which names the file, where it can't
    /// be read or doesn't fit the effect.
    Preset load(const FrameRenderer& renderer) const;

    /// Writes a preset, whole or not at all, if that was asked for. Throws Error where it fails.
    void save(const FrameRenderer& renderer, const Preset& preset) const;

private:
    std::filesystem::path mToLoad;
    std::filesystem::path mToSave;
};

} // namespace Kerovane::Host
