#pragma once

#include <OpenImageIO/imageio.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Kerovane::Host {

/// The bits of a channel in a file, or the kind of floating-point number.
enum class ChannelBits { Bits8, Bits10, Bits12, Bits16, Half, Float };

/// Returns "8", "10", "12", "16", "half" and "float", in the order of the enum.
const std::vector<std::string>& ChannelBitsNames();

/// Returns the type that OpenImageIO uses to write channels of these bits.
OIIO::TypeDesc TypeOf(ChannelBits bits);

/// Returns the number of bits, or 0 for floats.
int NumberOf(ChannelBits bits);

/// A compression method and its range of levels, if it has any.
struct Compression {
    std::string_view name;
    int firstLevel = 0;
    int lastLevel = 0; ///< 0 if it has no levels
};

/**
 * A format that pictures can be written in, and what its files can hold. All of these formats can
 * be read too.
 */
struct OutputFormat {
    std::string_view name;   ///< shown to users
    std::string_view writer; ///< OpenImageIO's name for the format
    std::vector<ChannelBits> bits;
    std::vector<Compression> compressions{};
    bool hasGrey = false;
    bool hasGreyAlpha = false;
    bool hasAlpha = false;
    bool isStraight = false; ///< alpha is stored straight
    bool hasParts = false;
    bool hasNamedChannels = false;
    bool hasQuality = false;
    bool hasMetadata = false;
    bool hasRecord = false; ///< can hold attributes of any name
};

/// Returns the format that belongs to the extension of `target`. Throws Error if there is none or
/// it cannot be written.
const OutputFormat& OutputFormatOf(const std::filesystem::path& target);

/// Returns `wanted` if the format has it, or else bits that hold the same values if it has any, or
/// else those that lose least.
ChannelBits NearestBits(const OutputFormat& format, ChannelBits wanted);

/// Returns a sentence on what is lost if channels of `wanted` bits are stored with `bits`. Empty if
/// nothing is lost.
std::string LossOfBits(const OutputFormat& format, ChannelBits wanted, ChannelBits bits);

} // namespace Kerovane::Host
