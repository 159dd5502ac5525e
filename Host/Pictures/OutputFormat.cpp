#include "Host/Pictures/OutputFormat.h"

#include "Host/Text/Error.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>

namespace Kerovane::Host {

namespace {

using enum ChannelBits;

const std::vector<OutputFormat>& Formats() {
    static const std::vector<OutputFormat> kFormats{
        {.name = "PNG",
         .writer = "png",
         .bits = {Bits8, Bits16},
         .compressions = {{"zip", 0, 9}},
         .hasGrey = true,
         .hasGreyAlpha = true,
         .hasAlpha = true,
         .isStraight = true,
         .hasMetadata = true,
         .hasRecord = true},
        {.name = "JPEG",
         .writer = "jpeg",
         .bits = {Bits8},
         .hasGrey = true,
         .hasQuality = true,
         .hasMetadata = true},
        {.name = "OpenEXR",
         .writer = "openexr",
         .bits = {Half, Float},
         .compressions = {{"none"},
                          {"rle"},
                          {"zip", 1, 9},
                          {"zips", 1, 9},
                          {"piz"},
                          {"pxr24"},
                          {"b44"},
                          {"b44a"},
                          {"dwaa", 1, 1000},
                          {"dwab", 1, 1000}},
         .hasGrey = true,
         .hasGreyAlpha = true,
         .hasAlpha = true,
         .hasParts = true,
         .hasNamedChannels = true,
         .hasMetadata = true,
         .hasRecord = true},
        {.name = "TIFF",
         .writer = "tiff",
         .bits = {Bits8, Bits10, Bits12, Bits16, Float},
         .compressions = {{"none"}, {"lzw"}, {"zip", 1, 9}, {"packbits"}},
         .hasGrey = true,
         .hasGreyAlpha = true,
         .hasAlpha = true,
         .isStraight = true,
         .hasParts = true,
         .hasMetadata = true},
        {.name = "DPX",
         .writer = "dpx",
         .bits = {Bits8, Bits10, Bits12, Bits16},
         .hasAlpha = true,
         .hasMetadata = true},
        {.name = "WebP",
         .writer = "webp",
         .bits = {Bits8},
         .compressions = {{"lossless"}},
         .hasAlpha = true,
         .isStraight = true,
         .hasQuality = true},
        {.name = "GIF", .writer = "gif", .bits = {Bits8}, .hasAlpha = true, .isStraight = true},
        {.name = "BMP", .writer = "bmp", .bits = {Bits8}, .hasAlpha = true, .isStraight = true},
        {.name = "TGA",
         .writer = "targa",
         .bits = {Bits8},
         .compressions = {{"none"}, {"rle"}},
         .hasAlpha = true,
         .isStraight = true},
        {.name = "PNM", .writer = "pnm", .bits = {Bits8}, .hasGrey = true},
        {.name = "Radiance HDR", .writer = "hdr", .bits = {Float}},
    };
    return kFormats;
}

/// Returns why a format is not written although OpenImageIO can write it.
std::string_view WhyNotWritten(std::string_view writer) {
    struct Reason {
        std::string_view writer;
        std::string_view text;
    };
    static constexpr std::array kReasons{
        Reason{"jpeg2000", "JPEG 2000 pictures are not written, as some of what the library "
                           "writes can't be read again"},
        Reason{"fits", "FITS files are not written, as their writer ends the process"},
        Reason{"iff", "IFF pictures are not written, as they can't be read again safely"},
        Reason{"sgi", "SGI pictures are not written, as they can't be read again safely"},
        Reason{"rla", "RLA pictures are not written, as they can't be read again safely"},
        Reason{"ico", "icons are not written, as they can't be read again safely"},
        Reason{"heif", "HEIF and AVIF pictures are not written, as they can't be read again "
                       "safely"},
    };
    const auto* const found = std::ranges::find(kReasons, writer, &Reason::writer);
    return found != kReasons.end() ? found->text : "pictures of that format are not written";
}

std::string NamesOfFormats() {
    std::vector<std::string_view> names;
    std::ranges::transform(Formats(), std::back_inserter(names), &OutputFormat::name);
    const std::string_view last = names.back();
    names.pop_back();
    return fmt::format("{} and {}", fmt::join(names, ", "), last);
}

bool IsFloat(ChannelBits bits) {
    return bits == Half || bits == Float;
}

} // namespace

const std::vector<std::string>& ChannelBitsNames() {
    static const std::vector<std::string> kNames{"8", "10", "12", "16", "half", "float"};
    return kNames;
}

OIIO::TypeDesc TypeOf(ChannelBits bits) {
    switch (bits) {
    case Bits8:
        return OIIO::TypeDesc::UINT8;
    case Half:
        return OIIO::TypeDesc::HALF;
    case Float:
        return OIIO::TypeDesc::FLOAT;
    default:
        return OIIO::TypeDesc::UINT16;
    }
}

int NumberOf(ChannelBits bits) {
    constexpr std::array kNumbers{8, 10, 12, 16, 0, 0};
    return kNumbers.at(static_cast<std::size_t>(bits));
}

const OutputFormat& OutputFormatOf(const std::filesystem::path& target) {
    const auto fail = [&target](std::string_view reason) {
        throw Error(fmt::format("cannot write '{}': {}", target.string(), reason));
    };
    if (!target.has_extension()) {
        fail("its name has no extension that tells the format");
    }
    const std::unique_ptr<OIIO::ImageOutput> output = OIIO::ImageOutput::create(target.string());
    if (output == nullptr) {
        OIIO::geterror(); // clears the message, which OpenImageIO would report again with the next
                          // failure
        fail(fmt::format("no picture format for '{}' can be written; {} can",
                         target.extension().string(), NamesOfFormats()));
    }
    const std::string_view writer = output->format_name();
    const auto found = std::ranges::find(Formats(), writer, &OutputFormat::writer);
    if (found == Formats().end()) {
        fail(fmt::format("{}; {} are", WhyNotWritten(writer), NamesOfFormats()));
    }
    return *found;
}

ChannelBits NearestBits(const OutputFormat& format, ChannelBits wanted) {
    const auto has = [&](ChannelBits bits) {
        return std::ranges::find(format.bits, bits) != format.bits.end();
    };
    if (has(wanted)) {
        return wanted;
    }
    static constexpr std::array kForFloats{Float, Bits16};
    static constexpr std::array kForWhole{Bits16, Float};
    if (wanted == Bits8 && has(Half)) { // half floats hold all 8-bit values exactly
        return Half;
    }
    for (const ChannelBits bits : IsFloat(wanted) ? kForFloats : kForWhole) {
        if (has(bits)) {
            return bits;
        }
    }
    return format.bits.back();
}

std::string LossOfBits(const OutputFormat& format, ChannelBits wanted, ChannelBits bits) {
    if (IsFloat(wanted) && !IsFloat(bits)) {
        return fmt::format("values are cut off at 0 and 1 and have {} bits, as {} holds no floats",
                           NumberOf(bits), format.name);
    }
    if (!IsFloat(bits) && NumberOf(bits) < NumberOf(wanted)) {
        return fmt::format("channels have {} bits instead of {}, as {} holds no more",
                           NumberOf(bits), NumberOf(wanted), format.name);
    }
    return "";
}

} // namespace Kerovane::Host
