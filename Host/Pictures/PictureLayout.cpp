#include "Host/Pictures/PictureLayout.h"

#include "Host/Pictures/ColourLayers.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

namespace Kerovane::Host {

namespace {

using OIIO::ImageSpec;
using OIIO::TypeDesc;

ColourChannels ChannelsOf(ColourChannels channels, const OutputFormat& format,
                          const PictureSettings& settings) {
    if (settings.channels) {
        return *settings.channels;
    }
    channels.hasAlpha = (channels.hasAlpha || settings.canLeaveHoles) && format.hasAlpha;
    channels.isGrey = channels.isGrey && (channels.hasAlpha ? format.hasGreyAlpha : format.hasGrey);
    return channels;
}

ChannelBits BitsOf(Depth depth) {
    return depth == Depth::Bits8    ? ChannelBits::Bits8
           : depth == Depth::Bits16 ? ChannelBits::Bits16
                                    : ChannelBits::Float;
}

/// Returns the channel bits of the file that the part was read from, limited to the world's depth.
/// 10 and 12 bits are kept only if the format stays the same.
ChannelBits BitsOf(const PicturePart& part, bool isSameFormat) {
    const ImageSpec& origin = part.origin;
    const Depth depth = part.layers.front().world.depth();
    const int bits = isSameFormat ? origin.get_int_attribute("oiio:BitsPerSample") : 0;
    switch (origin.format.basetype) {
    case TypeDesc::UINT8:
        return ChannelBits::Bits8;
    case TypeDesc::UINT16:
        return depth == Depth::Bits8                   ? ChannelBits::Bits8
               : bits == NumberOf(ChannelBits::Bits10) ? ChannelBits::Bits10
               : bits == NumberOf(ChannelBits::Bits12) ? ChannelBits::Bits12
                                                       : ChannelBits::Bits16;
    case TypeDesc::HALF:
        return depth == Depth::Float32 ? ChannelBits::Half : BitsOf(depth);
    default:
        return BitsOf(depth);
    }
}

/// Returns whether an ICC profile is of the same colour model as the channels.
bool IsProfileFor(ColourChannels channels, const OIIO::ParamValue& profile) {
    constexpr std::size_t kColourSpaceOffset = 16;
    const std::string_view colours = channels.isGrey ? "GRAY" : "RGB ";
    const std::string_view bytes(static_cast<const char*>(profile.data()),
                                 static_cast<std::size_t>(profile.datasize()));
    return bytes.size() > kColourSpaceOffset + colours.size() &&
           bytes.substr(kColourSpaceOffset, colours.size()) == colours;
}

/// Returns whether an attribute describes how a file stored its pixels, which does not apply to
/// another file. A colour profile for other channels counts too.
bool DescribesTheFile(const OIIO::ParamValue& attribute, ColourChannels channels) {
    static constexpr std::array<std::string_view, 13> kPrefixes{
        "bmp:", "dpx:", "gif:",   "ico:",      "jpeg:", "oiio:", "openexr:",
        "png:", "pnm:", "targa:", "thumbnail", "tiff:", "webp:"};
    static constexpr std::array<std::string_view, 5> kNames{"chunkCount", "compression", "name",
                                                            "planarconfig", "type"};
    const std::string_view name(attribute.name().c_str());
    if (name == "oiio:ColorSpace") {
        return false;
    }
    if (name == "ICCProfile") {
        return !IsProfileFor(channels, attribute);
    }
    return std::ranges::find(kNames, name) != kNames.end() ||
           std::ranges::any_of(kPrefixes, [name](auto prefix) { return name.starts_with(prefix); });
}

/// Returns whether users should be told if an attribute is lost.
bool IsWorthTelling(const OIIO::ParamValue& attribute, ColourChannels channels) {
    static constexpr std::array<std::string_view, 12> kUsual{
        "DateTime",           "FramesPerSecond",   "Orientation",     "PixelAspectRatio",
        "ResolutionUnit",     "Software",          "XResolution",     "YResolution",
        "screenWindowCenter", "screenWindowWidth", "oiio:ColorSpace", kSettingsAttribute};
    return !DescribesTheFile(attribute, channels) &&
           std::ranges::find(kUsual, std::string_view(attribute.name().c_str())) == kUsual.end();
}

void CopyMetadata(const ImageSpec& origin, ColourChannels channels, const OutputFormat& format,
                  ImageSpec& file) {
    for (const OIIO::ParamValue& attribute : origin.extra_attribs) {
        if (!DescribesTheFile(attribute, channels)) {
            file.extra_attribs.push_back(attribute);
        }
    }
    if (format.hasNamedChannels) {
        file.x = origin.x;
        file.y = origin.y;
        file.full_x = origin.full_x;
        file.full_y = origin.full_y;
        file.full_width = origin.full_width;
        file.full_height = origin.full_height;
    }
}

/// Copies tiling, compression, line order and the part's name from the file that the part was read
/// from. That file must have the same format.
void CopyStorage(const ImageSpec& origin, const OutputFormat& format, ImageSpec& file) {
    constexpr std::array<std::string_view, 2> kTiled{"openexr", "tiff"};
    if (std::ranges::find(kTiled, format.writer) != kTiled.end() && origin.tile_width > 0 &&
        origin.tile_depth <= 1) {
        file.tile_width = origin.tile_width;
        file.tile_height = origin.tile_height;
        file.tile_depth = 1;
    }
    for (const char* name :
         {"openexr:dwaCompressionLevel", "openexr:lineOrder", "oiio:subimagename"}) {
        if (const OIIO::ParamValue* value = origin.find_attribute(name)) {
            file.extra_attribs.push_back(*value);
        }
    }
    const std::string compression = origin.get_string_attribute("compression");
    if (std::ranges::find(format.compressions, compression, &Compression::name) !=
        format.compressions.end()) {
        file.attribute("compression", compression);
    }
}

void SetCompression(const OutputFormat& format, const PictureSettings& settings, ImageSpec& file) {
    if (!settings.compression.empty()) {
        file.attribute("compression",
                       settings.compressionLevel
                           ? fmt::format("{}:{}", settings.compression, *settings.compressionLevel)
                           : settings.compression);
    }
    if (settings.quality) {
        file.attribute("compression", fmt::format("{}:{}", format.writer, *settings.quality));
    }
    if (format.writer == "jpeg") {
        // Chroma subsampling would smear the cells' hard edges.
        file.attribute("jpeg:subsampling", "4:4:4");
    }
    if (format.writer != "png") {
        return;
    }
    // In a mosaic most rows repeat the row above. With the filter "up" and this level, a PNG is as
    // small as at the library's default level 6 and takes less than half the time.
    constexpr int kFilterUp = 0x20;
    constexpr int kLevel = 4;
    file.attribute("png:filter", kFilterUp);
    file.attribute("png:compressionLevel", settings.compressionLevel.value_or(kLevel));
}

void AddRecord(const OutputFormat& format, const PictureSettings& settings, ImageSpec& file) {
    if (!settings.record.program.empty()) {
        file.attribute("Software", settings.record.program);
    }
    if (format.hasRecord && !settings.record.settings.empty()) {
        file.attribute(kSettingsAttribute, settings.record.settings);
    }
}

/// Returns the channel names for a layer in the file: the names that the layer's channels already
/// have. Channels that the layer lacks get the usual names with the layer's prefix.
std::vector<std::string> NamesOf(ColourChannels channels, const PictureLayer& layer) {
    const std::vector<std::string>& had = layer.channelNames;
    const std::string first = had.empty() ? "" : had.front();
    const std::string prefix = first.substr(0, first.rfind('.') + 1);
    std::vector<std::string> names;
    if (!had.empty() && channels.isGrey == layer.channels.isGrey) {
        names.assign(had.begin(), had.begin() + (channels.isGrey ? 1 : 3));
    } else if (channels.isGrey) {
        names = {prefix + "Y"};
    } else {
        names = {prefix + "R", prefix + "G", prefix + "B"};
    }
    if (channels.hasAlpha) {
        names.push_back(layer.channels.hasAlpha && !had.empty() ? had.back() : prefix + "A");
    }
    return names;
}

void AddChannels(const std::vector<std::string>& names, ImageSpec& file) {
    file.channelnames.insert(file.channelnames.end(), names.begin(), names.end());
    file.nchannels += static_cast<int>(names.size());
}

std::span<const PictureLayer> LayersFor(const OutputFormat& format, const PicturePart& part) {
    return {part.layers.data(), format.hasNamedChannels ? part.layers.size() : 1};
}

/// Returns the layout of a part that has no layers to work on and is passed through.
PartLayout LayoutOfStored(const PicturePart& part, const OutputFormat& format) {
    const ImageSpec& stored = part.stored.layout();
    PartLayout layout{.file = {part.origin.width, part.origin.height, 0, stored.format},
                      .layers = {}};
    CopyMetadata(part.origin, {}, format, layout.file);
    CopyStorage(part.origin, format, layout.file);
    for (const char* name : {"oiio:BitsPerSample", "oiio:UnassociatedAlpha"}) {
        if (const OIIO::ParamValue* value = stored.find_attribute(name)) {
            layout.file.extra_attribs.push_back(*value);
        }
    }
    AddChannels(stored.channelnames, layout.file);
    layout.file.channelformats = stored.channelformats;
    layout.file.alpha_channel = stored.alpha_channel;
    return layout;
}

} // namespace

PartLayout LayoutOf(const PicturePart& part, const std::string& formatOfPicture,
                    const OutputFormat& format, const PictureSettings& settings) {
    if (part.layers.empty()) {
        PartLayout layout = LayoutOfStored(part, format);
        AddRecord(format, settings, layout.file);
        return layout;
    }
    const bool isSameFormat = formatOfPicture == format.writer;
    const ChannelBits bits =
        settings.bits.value_or(NearestBits(format, BitsOf(part, isSameFormat)));
    const World& world = part.layers.front().world;
    const bool hasOverscan = format.hasNamedChannels && part.stored.keepsOverscan();
    PartLayout layout{.file = {hasOverscan ? part.origin.width : world.width(),
                               hasOverscan ? part.origin.height : world.height(), 0, TypeOf(bits)},
                      .layers = {}};
    ImageSpec& file = layout.file;
    for (const PictureLayer& layer : LayersFor(format, part)) {
        const ColourChannels channels = ChannelsOf(layer.channels, format, settings);
        layout.layers.push_back(channels);
        AddChannels(NamesOf(channels, layer), file);
    }
    const ColourChannels& first = layout.layers.front();
    file.alpha_channel = first.hasAlpha ? (first.isGrey ? 1 : 3) : -1;
    CopyMetadata(part.origin, first, format, file);
    if (isSameFormat) {
        CopyStorage(part.origin, format, file);
    }
    SetCompression(format, settings, file);
    AddRecord(format, settings, file);
    if (bits == ChannelBits::Bits10 || bits == ChannelBits::Bits12) {
        file.attribute("oiio:BitsPerSample", NumberOf(bits));
    }
    layout.isStraight = first.hasAlpha && format.isStraight;
    if (layout.isStraight) {
        file.attribute("oiio:UnassociatedAlpha", 1);
    }
    if (format.hasNamedChannels && !part.stored.isEmpty()) {
        file.channelformats.resize(static_cast<std::size_t>(file.nchannels), file.format);
        for (const int place : part.stored.passing()) {
            AddChannels({part.stored.layout().channel_name(place)}, file);
            file.channelformats.push_back(part.stored.layout().channelformat(place));
        }
    }
    return layout;
}

std::vector<std::string> LossesOf(const PicturePart& part, const PartLayout& layout,
                                  const OutputFormat& format, const PictureSettings& settings) {
    std::vector<std::string> losses;
    if (part.layers.empty()) {
        return losses;
    }
    if (!format.hasNamedChannels) {
        losses.push_back(LossOfOtherChannels(part));
    }
    if (!format.hasNamedChannels && part.stored.keepsOverscan()) {
        losses.push_back(fmt::format("pixels outside of the display window are left out, as {} "
                                     "holds none",
                                     format.name));
    }
    const ColourChannels& had = part.layers.front().channels;
    if ((had.hasAlpha || settings.canLeaveHoles) && !layout.layers.front().hasAlpha &&
        !settings.channels) {
        losses.push_back(
            fmt::format("the picture lies over black, as {} holds no alpha", format.name));
    }
    const bool hasMetadata =
        std::ranges::any_of(part.origin.extra_attribs, [&](const OIIO::ParamValue& attribute) {
            return IsWorthTelling(attribute, layout.layers.front());
        });
    if (hasMetadata && !format.hasMetadata) {
        losses.push_back(fmt::format("metadata is left out, as {} holds none", format.name));
    }
    if (!settings.bits) {
        const ChannelBits wanted = BitsOf(part, true);
        losses.push_back(LossOfBits(format, wanted, NearestBits(format, wanted)));
    }
    std::erase(losses, "");
    return losses;
}

} // namespace Kerovane::Host
