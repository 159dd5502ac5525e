#pragma once

#include "Host/Pictures/OutputFormat.h"
#include "Host/Pictures/Picture.h"
#include "Host/Pictures/PictureRecord.h"

#include <optional>
#include <string>

namespace Kerovane::Host {

/** How pictures are written; what isn't said follows the picture's own file. */
struct PictureSettings {
    std::optional<ColourChannels> channels{};
    bool canLeaveHoles = false; ///< colour gets alpha, unless `channels` says otherwise
    std::optional<ChannelBits> bits{};
    std::string compression{}; ///< by its name; empty: as the picture's own file
    std::optional<int> compressionLevel{};
    std::optional<int> quality{}; ///< 1 to 100
    PictureRecord record{};
};

/// Throws Error, which names what the format has, if files of it can't be written so.
void CheckSettings(const PictureSettings& settings, const OutputFormat& format);

} // namespace Kerovane::Host
