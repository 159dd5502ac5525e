#include "Host/Pictures/PictureSettings.h"

#include "Host/Text/Error.h"
#include "Host/Text/WordList.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

namespace Kerovane::Host {

namespace {

void CheckBits(ChannelBits bits, const OutputFormat& format) {
    std::vector<std::string> names;
    for (const ChannelBits one : format.bits) {
        names.push_back(ChannelBitsNames()[static_cast<std::size_t>(one)]);
    }
    if (std::ranges::find(format.bits, bits) == format.bits.end()) {
        throw Error(fmt::format("--bits {}: {} holds {}",
                                ChannelBitsNames()[static_cast<std::size_t>(bits)], format.name,
                                WordList(names)));
    }
}

void CheckChannels(const ColourChannels& channels, const OutputFormat& format) {
    if (channels.isGrey && !(channels.hasAlpha ? format.hasGreyAlpha : format.hasGrey)) {
        throw Error(fmt::format("--channels: {} holds no grey{}", format.name,
                                format.hasGrey ? " with alpha" : ""));
    }
    if (channels.hasAlpha && !format.hasAlpha) {
        throw Error(fmt::format("--channels: {} holds no alpha", format.name));
    }
}

void CheckCompression(const PictureSettings& settings, const OutputFormat& format) {
    const auto found =
        std::ranges::find(format.compressions, settings.compression, &Compression::name);
    if (format.compressions.empty()) {
        throw Error(fmt::format("--compression: {} has no choice of it", format.name));
    }
    if (found == format.compressions.end()) {
        std::vector<std::string> names;
        for (const Compression& compression : format.compressions) {
            names.emplace_back(compression.name);
        }
        throw Error(fmt::format("--compression {}: {} has {}", settings.compression, format.name,
                                WordList(names)));
    }
    const int level = settings.compressionLevel.value_or(found->firstLevel);
    if (settings.compressionLevel && found->lastLevel == 0) {
        throw Error(fmt::format("--compression {} takes no level", found->name));
    }
    if (level < found->firstLevel || level > found->lastLevel) {
        throw Error(fmt::format("--compression {} takes levels from {} to {}, not {}", found->name,
                                found->firstLevel, found->lastLevel, level));
    }
}

} // namespace

void CheckSettings(const PictureSettings& settings, const OutputFormat& format) {
    if (settings.bits) {
        CheckBits(*settings.bits, format);
    }
    if (settings.channels) {
        CheckChannels(*settings.channels, format);
    }
    if (!settings.compression.empty()) {
        CheckCompression(settings, format);
    }
    if (settings.quality && !format.hasQuality) {
        throw Error(fmt::format("--quality: {} is written without loss", format.name));
    }
}

} // namespace Kerovane::Host
