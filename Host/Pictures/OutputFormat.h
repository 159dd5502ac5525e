#pragma once

#include <OpenImageIO/imageio.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Kerovane::Host {

/// How many bits a channel has in a file, or which kind of floats.
enum class ChannelBits { Bits8, Bits10, Bits12, Bits16, Half, Float };

/// "8", "10", "12", "16", "half", "float"; in the order of ChannelBits.
const std::vector<std::string>& ChannelBitsNames();

/// The type in which OpenImageIO writes such channels.
OIIO::TypeDesc TypeOf(ChannelBits bits);

/// A number; 0 for floats.
int NumberOf(ChannelBits bits);

/// A way to compress, and the levels that it takes, if any.
struct Compression {
    std::string_view name;
    int firstLevel = 0;
    int lastLevel = 0; ///< 0: it has no levels
};

/** A format in which pictures are written, and what its files can hold. Every one can be read. */
struct OutputFormat {
    std::string_view name;   ///< for users
    std::string_view writer; ///< OpenImageIO's name of it
    std::vector<ChannelBits> bits;
    std::vector<Compression> compressions{};
    bool hasGrey = false;
    bool hasGreyAlpha = false;
    bool hasAlpha = false;
    bool isStraight = false; ///< alpha does not premultiply colour
    bool hasParts = false;
    bool hasNamedChannels = false;
    bool hasQuality = false;
    bool hasMetadata = false;
    bool hasRecord = false; ///< attributes of any name
};

/// The format that the name's extension tells. Throws Error if none does, or if it isn't written.
const OutputFormat& OutputFormatOf(const std::filesystem::path& target);

/// The nearest that the format has: as many bits, else more, else as many as there are.
ChannelBits NearestBits(const OutputFormat& format, ChannelBits wanted);

/// What is lost of channels of `wanted` in a file with `bits`; empty if nothing is.
std::string LossOfBits(const OutputFormat& format, ChannelBits wanted, ChannelBits bits);

} // namespace Kerovane::Host
