#pragma once

#include "Host/Pictures/MemoryFile.h"
#include "Host/Pictures/OutputFormat.h"
#include "Host/Pictures/Picture.h"
#include "Host/Pictures/PictureSettings.h"

#include <filesystem>
#include <string>
#include <vector>

namespace Kerovane::Host {

/**
 * Writes a picture file completely or not at all; if writing fails, an existing target is
 * unchanged. The encoded file is first built in memory.
 */
class PictureWriter {
public:
    /// The target's extension selects the format. Throws Error if it is not a supported format, the
    /// format does not support the settings, or the target cannot be written. Creates nothing yet.
    explicit PictureWriter(std::filesystem::path target, PictureSettings settings = {});

    /**
     * Writes `picture` with the metadata that is still valid, and returns what is lost, one line
     * each. Throws Error if writing fails.
     *
     * The picture is composited over black if the format has no alpha, and written as RGB if it has
     * no grey. If the format changes or holds a single part, only the first part with colour layers
     * is written. Channel bits follow the file that the picture was read from, limited to the
     * worlds' depth, or are the nearest that the format has. Tiles and compression are kept if the
     * format stays the same.
     */
    std::vector<std::string> write(const Picture& picture) const;

private:
    std::filesystem::path mTarget;
    const OutputFormat& mFormat;
    PictureSettings mSettings;
};

/// Encodes `picture` into `file`, whose name does not select the format, and returns what is lost.
std::vector<std::string> EncodePicture(const Picture& picture, const OutputFormat& format,
                                       const PictureSettings& settings, const MemoryFile& file);

} // namespace Kerovane::Host
