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
 * Writes one picture file, whole or not at all: what stood at the target before outlives a failure.
 * The encoded file is held in memory meanwhile.
 */
class PictureWriter {
public:
    /// The format follows the target's extension. Throws Error if there is no such format, it can't
    /// hold what the settings ask for, or the target can't be written; nothing is created yet.
    explicit PictureWriter(std::filesystem::path target, PictureSettings settings = {});

    /**
     * Writes `picture` with the metadata that still holds: over black if the format has no alpha,
     * as RGB if it has no grey; its first part alone if it is of another format or that holds one
     * only. Bits are those of the picture's own file, as far as the worlds' depth kept them, or the
     * nearest that the format has; tiles and compression if that is of the same format. Returns
     * what of the picture is not in the file, a line each. Throws Error if it fails.
     */
    std::vector<std::string> write(const Picture& picture) const;

private:
    std::filesystem::path mTarget;
    const OutputFormat& mFormat;
    PictureSettings mSettings;
};

/// The same into `file`, which need not have a name of that format. Returns what is lost.
std::vector<std::string> EncodePicture(const Picture& picture, const OutputFormat& format,
                                       const PictureSettings& settings, const MemoryFile& file);

} // namespace Kerovane::Host
