#include "Host/Pictures/PictureReader.h"

#include "Host/Pictures/ColourLayers.h"
#include "Host/Pictures/FileHeader.h"
#include "Host/Pictures/PictureFormat.h"
#include "Host/Pictures/PictureRecord.h"
#include "Host/Pictures/PixelConversion.h"
#include "Host/Pictures/Windows.h"
#include "Host/Text/Error.h"

#include <OpenImageIO/imagebuf.h>
#include <OpenImageIO/imagebufalgo.h>
#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <exception>
#include <iterator>
#include <memory>
#include <new>
#include <string>
#include <system_error>
#include <type_traits>
#include <utility>

namespace Kerovane::Host {

namespace {

using OIIO::ImageSpec;
using OIIO::TypeDesc;

constexpr std::size_t kMegabyte = 1 << 20;

/// What a picture may take: what the machine has, within the library's own limit, which users can
/// change in its own ways and not all of its readers keep to.
std::size_t MostMegabytes() {
    const auto machine = static_cast<std::size_t>(sysconf(_SC_PHYS_PAGES)) *
                         static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) / kMegabyte;
    const auto library = static_cast<std::size_t>(OIIO::get_int_attribute("limits:imagesize_MB"));
    return library > 0 ? std::min(library, machine) : machine;
}

/// Reads one file, part by part; its errors name it.
class PictureFile {
public:
    /// Stands at the first part.
    explicit PictureFile(const std::filesystem::path& file) : mName(file.string()) {
        if (access(file.c_str(), R_OK) != 0) {
            fail(std::generic_category().message(errno));
        }
        if (std::filesystem::is_directory(file)) {
            fail("it is a directory");
        }
        const FileHeader header(file);
        const PictureFormat* format = FormatOf(header);
        refuseFor(ReasonNotToOpen(format, header));
        open(*format);
        check();
        refuseFor(ReasonNotToRead(*format, header, layout()));
    }

    const ImageSpec& layout() const { return mInput->spec(); }

    std::string format() const { return mInput->format_name(); }

    /// Whether what the file says of a display window is meant, and channels are known by name.
    bool isOpenExr() const { return format() == "openexr"; }

    /// Whether each part is a picture of its own.
    bool hasParts() const { return isOpenExr() || format() == "tiff"; }

    /// Goes to the part of the given number. Returns whether there is one.
    bool goTo(int part) {
        bool isThere = false;
        attempt([&] { isThere = mInput->seek_subimage(part, 0); });
        static_cast<void>(mInput->geterror()); // some readers call the end an error
        if (isThere && part > 0 && hasParts()) {
            check();
        }
        mPart = part;
        return isThere;
    }

    /// All channels of all pixels, in `Channel` values.
    template <typename Channel>
    std::unique_ptr<Channel[]> read() {
        std::unique_ptr<Channel[]> pixels;
        attempt([&] { pixels = std::make_unique_for_overwrite<Channel[]>(valueCount()); });
        readTo(OIIO::BaseTypeFromC<Channel>::value, pixels.get());
        return pixels;
    }

    StoredPixels readStored() {
        StoredPixels stored;
        attempt([&] { stored = StoredPixels(layout()); });
        readTo(TypeDesc::UNKNOWN, stored.data());
        return stored;
    }

    [[noreturn]] void fail(const std::string& reason) const {
        // Not all of the library's readers say why.
        throw Error(
            fmt::format("cannot read '{}': {}", mName, reason.empty() ? "it is damaged" : reason));
    }

private:
    void readTo(TypeDesc type, void* pixels) {
        bool isRead = false;
        attempt(
            [&] { isRead = mInput->read_image(mPart, 0, 0, layout().nchannels, type, pixels); });
        if (!isRead) {
            fail(mInput->geterror());
        }
    }

    void refuseFor(const std::string& reason) const {
        if (!reason.empty()) {
            fail(reason);
        }
    }

    /// With the reader of that format alone: the library would try all others once it fails.
    void open(const PictureFormat& format) {
        mInput = OIIO::ImageInput::create(format.reader);
        if (mInput == nullptr) {
            OIIO::geterror(); // takes the message, which would stay for the next failure
            fail(fmt::format("OpenImageIO was built without a reader for {}", format.name));
        }
        ImageSpec wishes;
        wishes.attribute("oiio:UnassociatedAlpha", 1);
        ImageSpec layout;
        bool isOpen = false;
        attempt([&] { isOpen = mInput->open(mName, layout, wishes); });
        if (!isOpen) {
            fail(mInput->geterror());
        }
    }

    /// Some of the library's readers let exceptions through: their own, or for lack of memory.
    template <typename Action>
    void attempt(Action action) const {
        try {
            action();
        } catch (const std::bad_alloc&) {
            fail("out of memory");
        } catch (const std::exception& error) {
            fail(fmt::format("its reader failed: {}", error.what()));
        }
    }

    void check() {
        const ImageSpec& layout = this->layout();
        if (layout.deep || layout.depth > 1) {
            fail("it is not a flat picture, but deep, with several samples a pixel");
        }
        checkSize(layout.width, layout.height);
        if (isOpenExr()) {
            checkSize(layout.full_width, layout.full_height);
        }
        constexpr int kMaxChannels = 1024;
        if (layout.nchannels < 1 || layout.nchannels > kMaxChannels) {
            fail(fmt::format("it has {} channels", layout.nchannels));
        }
        checkMemory();
    }

    void checkSize(int width, int height) const {
        if (std::min(width, height) < 1 || std::max(width, height) > World::kMaxSide) {
            fail(fmt::format("its size of {} x {} is not within 1 to {} pixels a side", width,
                             height, World::kMaxSide));
        }
    }

    /// A few bytes may claim to be more pixels than anybody has the memory for.
    void checkMemory() {
        const std::size_t megabytes = MostMegabytes();
        constexpr std::size_t kChannelsOfFrame = 4;
        const std::size_t frame = isOpenExr() && !FillsItsFrame(layout())
                                      ? static_cast<std::size_t>(layout().full_width) *
                                            static_cast<std::size_t>(layout().full_height)
                                      : 0;
        mValues += valueCount() + frame * kChannelsOfFrame;
        if (mValues * sizeof(float) > megabytes * kMegabyte) {
            fail(fmt::format("its {} x {} pixels of {} channels take more than {} MB",
                             layout().width, layout().height, layout().nchannels, megabytes));
        }
    }

    std::size_t valueCount() const {
        return static_cast<std::size_t>(layout().image_pixels()) *
               static_cast<std::size_t>(layout().nchannels);
    }

    std::string mName;
    std::unique_ptr<OIIO::ImageInput> mInput;
    int mPart = 0;
    std::size_t mValues = 0; ///< of all parts so far
};

Depth DepthOfFile(const ImageSpec& layout) {
    return layout.format == TypeDesc::UINT8 ? Depth::Bits8 : Depth::Float32;
}

bool IsPremultiplied(const PictureFile& file) {
    // These formats have straight alpha, which their readers neither change nor mention.
    const std::string format = file.format();
    const bool straight = file.layout().get_int_attribute("oiio:UnassociatedAlpha") != 0 ||
                          format == "bmp" || format == "gif";
    return !straight;
}

/// Divides colour by alpha, unless that is 0 or counts as 0: there is nothing to divide by, and
/// none is seen.
void Unpremultiply(float* pixel, std::size_t pixels, std::size_t stride, ChannelPlaces places) {
    for (std::size_t i = 0; i < pixels; ++i, pixel += stride) {
        const float alpha = pixel[places.alpha];
        if (alpha == 0 || alpha == 1 || !std::isfinite(alpha)) {
            continue;
        }
        pixel[places.red] /= alpha;
        if (places.green != places.red) {
            pixel[places.green] /= alpha;
            pixel[places.blue] /= alpha;
        }
    }
}

/// 1 to 8: how the picture is stored; 1, upright, if the file says none of these.
int OrientationOf(const ImageSpec& layout) {
    constexpr int kUpright = 1;
    constexpr int kLast = 8;
    const int orientation = layout.get_int_attribute("Orientation", kUpright);
    return orientation >= kUpright && orientation <= kLast ? orientation : kUpright;
}

/// Turns the pixels upright if the file says that they are stored otherwise, and `layout` with
/// them.
template <typename Channel>
void Reorient(ImageSpec& layout, std::unique_ptr<Channel[]>& pixels) {
    const int orientation = OrientationOf(layout);
    if (orientation == 1) {
        return;
    }
    constexpr TypeDesc kType(OIIO::BaseTypeFromC<Channel>::value);
    ImageSpec plain(layout.width, layout.height, layout.nchannels, kType);
    plain.attribute("Orientation", orientation);
    const OIIO::ImageBuf stored(plain, pixels.get());
    const OIIO::ImageBuf upright = OIIO::ImageBufAlgo::reorient(stored);
    auto turned = std::make_unique_for_overwrite<Channel[]>(
        plain.image_pixels() * static_cast<std::size_t>(plain.nchannels));
    upright.get_pixels(upright.roi(), kType, turned.get());
    pixels = std::move(turned);
    layout.width = layout.full_width = upright.spec().width;
    layout.height = layout.full_height = upright.spec().height;
    layout.x = layout.y = layout.full_x = layout.full_y = 0;
    layout.attribute("Orientation", 1);
}

/// Where the channels of a layer's pixels are.
template <typename Channel>
struct ChannelRows {
    std::unique_ptr<Channel[]> pixels;
    std::size_t stride = 0; ///< in channels
    ChannelPlaces places;
};

/// A layer out of a part whose pixels were read as they are stored.
template <typename Channel>
ChannelRows<Channel> RowsOf(const StoredPixels& stored, const ChannelPlaces& places) {
    constexpr TypeDesc kType(OIIO::BaseTypeFromC<Channel>::value);
    const ImageSpec& layout = stored.layout();
    std::vector<int> from{places.red};
    ChannelRows<Channel> rows;
    if (places.green != places.red) {
        from.insert(from.end(), {places.green, places.blue});
        rows.places = {.red = 0, .green = 1, .blue = 2};
    }
    if (places.alpha >= 0) {
        rows.places.alpha = static_cast<int>(from.size());
        from.push_back(places.alpha);
    }
    rows.stride = from.size();
    rows.pixels = std::make_unique_for_overwrite<Channel[]>(
        static_cast<std::size_t>(layout.image_pixels()) * rows.stride);
    Channel* row = rows.pixels.get();
    for (int y = layout.y; y < layout.y + layout.height; ++y) {
        for (std::size_t i = 0; i < from.size(); ++i) {
            stored.copyRow(from[i], y, layout.x, layout.x + layout.width, kType,
                           reinterpret_cast<std::byte*>(row + i), rows.stride * sizeof(Channel));
        }
        row += rows.stride * static_cast<std::size_t>(layout.width);
    }
    return rows;
}

/// Makes worlds of a part's layers.
class LayerReader {
public:
    /// `stored` is empty unless the part was read so.
    LayerReader(PictureFile& file, const StoredPixels& stored, ImageSpec& layout)
        : mFile(file), mStored(stored), mLayout(layout) {}

    World read(const ColourLayer& layer, Depth depth) {
        return withPixelType(depth, [&]<typename Pixel>(std::type_identity<Pixel>) {
            return readPixels<Pixel>(layer, depth);
        });
    }

private:
    /// Reads the channels as the file has them, so that they are rounded once: to the layer's
    /// depth.
    template <typename Pixel>
    World readPixels(const ColourLayer& layer, Depth depth) {
        constexpr unsigned char kFloat = TypeDesc::FLOAT;
        mIsPremultiplied = layer.hasAlpha() && IsPremultiplied(mFile);
        switch (mIsPremultiplied ? kFloat : mLayout.format.basetype) {
        case TypeDesc::UINT8:
            return readChannels<std::uint8_t, Pixel>(layer, depth);
        case TypeDesc::UINT16:
            return readChannels<std::uint16_t, Pixel>(layer, depth);
        default:
            return readChannels<float, Pixel>(layer, depth);
        }
    }

    template <typename Channel, typename Pixel>
    World readChannels(const ColourLayer& layer, Depth depth) {
        ChannelRows<Channel> rows =
            mStored.isEmpty() ? readAll<Channel>(layer) : RowsOf<Channel>(mStored, layer.places);
        if constexpr (std::same_as<Channel, float>) {
            if (mIsPremultiplied) {
                Unpremultiply(rows.pixels.get(), mLayout.image_pixels(), rows.stride, rows.places);
            }
        }
        if (!mFile.isOpenExr()) {
            Reorient(mLayout, rows.pixels);
        }
        World world(depth, mLayout.width, mLayout.height);
        const Channel* row = rows.pixels.get();
        for (A_long y = 0; y < world.height(); ++y) {
            ReadRow(row, rows.stride, rows.places, world.row<Pixel>(y));
            row += rows.stride * static_cast<std::size_t>(mLayout.width);
        }
        return world;
    }

    template <typename Channel>
    ChannelRows<Channel> readAll(const ColourLayer& layer) {
        return {.pixels = mFile.read<Channel>(),
                .stride = static_cast<std::size_t>(mLayout.nchannels),
                .places = layer.places};
    }

    PictureFile& mFile;
    const StoredPixels& mStored;
    ImageSpec& mLayout; ///< of the part, turned upright with its pixels
    bool mIsPremultiplied = false;
};

PF_RationalScale PixelAspectRatio(const ImageSpec& layout) {
    constexpr A_u_long kDenominator = 10000;
    const float ratio = layout.get_float_attribute("PixelAspectRatio", 1);
    if (!(ratio > 0.01F && ratio < 100)) {
        return {.num = 1, .den = 1};
    }
    return {.num = static_cast<A_long>(std::lround(ratio * kDenominator)), .den = kDenominator};
}

/// As the picture stands upright.
std::pair<A_long, A_long> SizeOf(const ImageSpec& layout) {
    constexpr int kFirstOnItsSide = 5; // of the eight orientations
    const bool onItsSide = OrientationOf(layout) >= kFirstOnItsSide;
    return onItsSide ? std::pair(layout.height, layout.width)
                     : std::pair(layout.width, layout.height);
}

/// The layers to work on of the part that the file stands at.
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

/// Reads one part and adds to `losses` what of it can't be had.
PicturePart ReadPart(PictureFile& file, const std::vector<ColourLayer>& layers,
                     const ReadSetting& setting, std::vector<std::string>& losses) {
    ImageSpec layout = file.layout();
    const std::vector<int> others = OtherPlaces(layout, layers);
    constexpr int kSeparated = 5; // TIFF 6.0, PhotometricInterpretation: CMYK
    if (layout.get_int_attribute("tiff:PhotometricInterpretation") == kSeparated) {
        losses.emplace_back("CMYK was made RGB without a profile");
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
    LayerReader reader(file, part.stored, layout);
    for (const ColourLayer& layer : layers) {
        World world = reader.read(layer, setting.depth.value_or(DepthOfFile(layout)));
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
        layout.format = layout.channelformat(layers.front().places.red); // channels can differ
    }
    part.origin = std::move(layout);
    return part;
}

/// What is in a file of which nothing can be worked on.
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

/// Why a file with these contents has nothing to work on.
std::string WhyNothing(const Contents& contents, const LayerChoice& choice) {
    if (choice.part.value_or(0) >= contents.parts()) {
        return fmt::format("it has no part {}, as there are {}, counted from 0", *choice.part,
                           contents.parts());
    }
    return fmt::format("it has no colour layer{}: {}",
                       choice.layer.empty() ? "" : " '" + choice.layer + "'", contents.text());
}

/// Of formats whose further pictures are no parts: frames, or layers of one picture.
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
                                 ? "the layers of the PSD file are left out: it is taken as they "
                                   "show together"
                                 : "pictures behind the first one in the file are left out");
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
        return false; // not even a picture
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
