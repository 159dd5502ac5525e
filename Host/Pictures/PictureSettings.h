#pragma once

#include "Host/Pictures/OutputFormat.h"
#include "Host/Pictures/Picture.h"
#include "Host/Pictures/PictureRecord.h"

#include <optional>
#include <string>

namespace Kerovane::Host {

/**
 * How pictures are written. Settings that are not given follow the file that the picture was read
 * from.
 */
struct PictureSettings {
    std::optional<ColourChannels> channels{};
    bool canLeaveHoles = false; ///< whether alpha is added, unless `channels` is given
    std::optional<ChannelBits> bits{};
    std::string compression{}; ///< name of a method; empty: as in the file that was read
    std::optional<int> compressionLevel{};
    std::optional<int> quality{}; ///< 1 to 100 (best)
    PictureRecord record{};
};

/// Throws Error if the format does not support the settings; the text names what it supports.
void CheckSettings(const PictureSettings& settings, const OutputFormat& format);

} // namespace Kerovane::Host
