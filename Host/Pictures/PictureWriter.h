#pragma once

#include "Host/Pictures/MemoryFile.h"
#include "Host/Pictures/Picture.h"

#include <filesystem>

namespace Kerovane::Host {

/// Fills `file`, which is empty, with what PictureWriter writes to a file named `target`.
void EncodePicture(const std::filesystem::path& target, const World& world,
                   const OIIO::ImageSpec& origin, const PictureForm& form,
                   const OtherChannels* others, MemoryFile& file);

/**
 * Writes one picture file, whole or not at all: what stood at the target before outlives a failure.
 * The encoded file is held in memory meanwhile.
 */
class PictureWriter {
public:
    /// The format follows the target's extension. Throws Error where there is no such format or the
    /// target can't be written; nothing is created yet.
    explicit PictureWriter(std::filesystem::path target);

    /**
     * Writes `world` with the metadata of `origin` that still holds: grey or RGB, with alpha or
     * without, as `form` says; over black if the format has no alpha, as RGB if it has no grey. The
     * file's depth is that of the world, half or 16 bits if the world has floats and `origin`
     * those, or the nearest that the format has. Bits within it, tiles and compression are the
     * origin's if that is of the same format. `others`, if given, are
     * ones that it holds. Throws Error if it fails.
     */
    void write(const World& world, const OIIO::ImageSpec& origin, const PictureForm& form = {},
               const OtherChannels* others = nullptr) const;

    /// Whether a file of the target's format can have those channels.
    bool holds(const OtherChannels& channels) const;

private:
    std::filesystem::path mTarget;
};

} // namespace Kerovane::Host
