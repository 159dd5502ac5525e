#include "Host/Pictures/PictureReader.h"

#include "Host/Pictures/ColourLayers.h"
#include "Host/Pictures/LayerReader.h"
#include "Host/Pictures/PictureFile.h"
#include "Host/Pictures/PictureRecord.h"
#include "Host/Pictures/Windows.h"
#include "Host/Text/Error.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace Kerovane::Host {

namespace {

using OIIO::ImageSpec;
using OIIO::TypeDesc;

Depth DepthOfFile(const ImageSpec& layout) {
    return layout.format == TypeDesc::UINT8 ? Depth::Bits8 : Depth::Float32;
}

PF_RationalScale PixelAspectRatio(const ImageSpec& layout) {
    constexpr A_u_long kDenominator = 10000;
    const float ratio = layout.get_float_attribute("PixelAspectRatio", 1);
    if (!(ratio > 0.01F && ratio < 100)) {
        return {.num = 1, .den = 1};
    }
    return {.num = static_cast<A_long>(std::lround(ratio * kDenominator)), .den = kDenominator};
}

/// Returns the size of the upright picture.
std::pair<A_long, A_long> SizeOf(const ImageSpec& layout) {
    constexpr int kFirstOnItsSide = 5; // orientations 5 to 8 swap the sides
    const bool onItsSide = OrientationOf(layout) >= kFirstOnItsSide;
    return onItsSide ? std::pair(layout.height, layout.width)
                     : std::pair(layout.width, layout.height);
}

/// Returns the layers to work on in the current part, whose number is `part`.
std::vector<ColourLayer> LayersToWorkOn(const PictureFile& file, int part,
                                        const LayerChoice& choice) {
    if (choice.part.value_or(part) != part) {
        return {};
    }
    return file.isOpenExr() ? Chosen(NamedLayers(file.layout()), file.layout(), choice)
                            : Chosen({NamelessLayer(file.layout())}, file.layout(), choice);
}

std::vector<std::string> NamesIn(const ImageSpec& layout, const ChannelPlaces& places) {
    std::vector<std::string> names{layout.channel_name(places.red)};
    if (places.green != places.red) {
        names.push_back(layout.channel_name(places.green));
        names.push_back(layout.channel_name(places.blue));
    }
    if (places.alpha >= 0) {
        names.push_back(layout.channel_name(places.alpha));
    }
    return names;
}

/// Reads the current part and adds what is lost of it to `losses`.
PicturePart ReadPart(PictureFile& file, const std::vector<ColourLayer>& layers,
                     const ReadSetting& setting, std::vector<std::string>& losses) {
    ImageSpec layout = file.layout();
    const std::vector<int> others = OtherPlaces(layout, layers);
    constexpr int kSeparated = 5; // CMYK, by TIFF 6.0
    if (layout.get_int_attribute("tiff:PhotometricInterpretation") == kSeparated) {
        losses.emplace_back("CMYK was converted to RGB without a profile");
    }
    const bool reachesBeyond = file.isOpenExr() && ReachesBeyondItsFrame(layout);
    const bool keepsOverscan = reachesBeyond && setting.keepOverscan;
    if (reachesBeyond && !keepsOverscan) {
        losses.emplace_back("pixels outside of the display window are left out; --overscan keep "
                            "keeps them");
    }
    PicturePart part;
    const bool passes = layers.empty() && file.hasParts();
    if (passes || (file.isOpenExr() && (!others.empty() || layers.size() > 1 || keepsOverscan))) {
        part.stored = file.readStored();
    } else if (!others.empty()) {
        std::vector<std::string> names;
        std::ranges::transform(others, std::back_inserter(names),
                               [&](int place) { return layout.channel_name(place); });
        losses.push_back("other channels are left out: " + ChannelList(names));
    }
    for (const ColourLayer& layer : layers) {
        World world = ReadLayer(file, part.stored, layer,
                                setting.depth.value_or(DepthOfFile(layout)), layout);
        if (file.isOpenExr() && !FillsItsFrame(layout)) {
            world = FrameOf(world, layout, !layer.hasAlpha());
        }
        world.layer().pix_aspect_ratio = PixelAspectRatio(layout);
        part.layers.push_back({.world = std::move(world),
                               .channels = {.isGrey = layer.isGrey(), .hasAlpha = layer.hasAlpha()},
                               .channelNames = NamesIn(layout, layer.places)});
    }
    part.stored.letPass(others);
    if (keepsOverscan) {
        part.stored.keepOverscan();
        CoverFrame(layout);
    } else if (file.isOpenExr()) {
        TakeFrame(layout);
    }
    if (!layers.empty()) {
        // Channels may have different types.
        layout.format = layout.channelformat(layers.front().places.red);
    }
    part.origin = std::move(layout);
    return part;
}

/// The channels of all parts of a file, for error messages.
class Contents {
public:
    void add(const ImageSpec& layout) {
        const std::string name = layout.get_string_attribute("oiio:subimagename");
        mParts.push_back(fmt::format("part {}{} has {}", mParts.size(),
                                     name.empty() ? "" : " '" + name + "'",
                                     ChannelList(layout.channelnames)));
        for (const ColourLayer& layer : NamedLayers(layout)) {
            if (!layer.name.empty()) {
                mLayers.push_back(layer.name);
            }
        }
    }

    std::string text() const {
        const std::string parts = mParts.size() == 1
                                      ? mParts.front().substr(mParts.front().find(" has ") + 5)
                                      : fmt::format("{}", fmt::join(mParts, "; "));
        return mLayers.empty() ? parts
                               : fmt::format("{}; --layer takes {}", parts, ChannelList(mLayers));
    }

    int parts() const { return static_cast<int>(mParts.size()); }

private:
    std::vector<std::string> mParts;
    std::vector<std::string> mLayers;
};

/// Returns why a file with these contents has no layer to work on.
std::string WhyNothing(const Contents& contents, const LayerChoice& choice) {
    if (choice.part.value_or(0) >= contents.parts()) {
        return fmt::format("it has no part {}, as there are {}, counted from 0", *choice.part,
                           contents.parts());
    }
    return fmt::format("it has no colour layer{}: {}",
                       choice.layer.empty() ? "" : " '" + choice.layer + "'", contents.text());
}

/// Checks whether a file of a format without parts has more than one picture. Throws Error if it is
/// an animation; otherwise adds the other pictures to the losses.
void CheckSingle(PictureFile& file, Picture& picture) {
    if (!file.goTo(1)) {
        return;
    }
    if (picture.format == "gif") {
        file.fail("it is animated; render takes it as a movie if OUT is a movie or a sequence");
    }
    if (picture.format == "webp") {
        file.fail("it is animated, and of WebP only still pictures are read");
    }
    picture.losses.push_back(picture.format == "psd"
                                 ? "the layers of the PSD file are left out: only the merged "
                                   "picture is read"
                                 : "pictures after the first one in the file are left out");
}

} // namespace

Picture ReadPicture(const std::filesystem::path& file, const ReadSetting& setting) {
    PictureFile input(file);
    Picture picture{.parts = {}, .format = input.format()};
    Contents contents;
    bool hasColour = false;
    do {
        const std::vector<ColourLayer> layers =
            LayersToWorkOn(input, contents.parts(), setting.choice);
        contents.add(input.layout());
        hasColour = hasColour || !layers.empty();
        picture.parts.push_back(ReadPart(input, layers, setting, picture.losses));
    } while (input.hasParts() && input.goTo(contents.parts()));
    if (!hasColour) {
        input.fail(WhyNothing(contents, setting.choice));
    }
    if (!input.hasParts()) {
        CheckSingle(input, picture);
    }
    return picture;
}

bool IsAnimated(const std::filesystem::path& file) {
    try {
        PictureFile input(file);
        return (input.format() == "gif" || input.format() == "webp") && input.goTo(1);
    } catch (const Error&) {
        return false; // not readable as a picture
    }
}

bool HoldsPictureLike(const std::filesystem::path& file, const std::filesystem::path& other) {
    const PictureFile input(other);
    ImageSpec layout = input.layout();
    if (input.isOpenExr()) {
        TakeFrame(layout);
    }
    const auto size = SizeOf(layout);
    try {
        const Picture picture = ReadPicture(file);
        const World& world = picture.first().world;
        return std::pair(world.width(), world.height()) == size;
    } catch (const Error&) {
        return false;
    }
}

std::optional<std::string> RecordedSettings(const std::filesystem::path& file) {
    try {
        const PictureFile input(file);
        const std::string settings(input.layout().get_string_attribute(kSettingsAttribute));
        return settings.empty() ? std::nullopt : std::optional(settings);
    } catch (const Error&) {
        return std::nullopt;
    }
}

} // namespace Kerovane::Host
