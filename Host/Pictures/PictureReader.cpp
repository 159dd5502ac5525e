#include "Host/Pictures/PictureReader.h"

#include "Host/Pictures/FileHeader.h"
#include "Host/Pictures/PictureFormat.h"
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

/// -1 where there is none. Not every reader of a format names a channel that the picture has.
int AlphaOf(const ImageSpec& layout) {
    return layout.alpha_channel < layout.nchannels ? layout.alpha_channel
                                                   : layout.channelindex("A");
}

/// The colour channels by name, else the first three; a single one is grey.
ChannelPlaces PlacesOf(const ImageSpec& layout) {
    const int alpha = AlphaOf(layout);
    const int red = layout.channelindex("R");
    const int green = layout.channelindex("G");
    const int blue = layout.channelindex("B");
    if (red >= 0 && green >= 0 && blue >= 0) {
        return {.red = red, .green = green, .blue = blue, .alpha = alpha};
    }
    const bool colour = layout.nchannels - (alpha >= 0 ? 1 : 0) >= 3;
    const int first = alpha == 0 && layout.nchannels > 1 ? 1 : 0;
    return {.red = first,
            .green = first + (colour ? 1 : 0),
            .blue = first + (colour ? 2 : 0),
            .alpha = alpha};
}

OtherChannels OtherChannelsOf(const ImageSpec& layout) {
    const ChannelPlaces places = PlacesOf(layout);
    std::vector<bool> isColour(static_cast<std::size_t>(layout.nchannels));
    for (const int place : {places.red, places.green, places.blue, places.alpha}) {
        if (place >= 0) {
            isColour[static_cast<std::size_t>(place)] = true;
        }
    }
    return {layout, isColour};
}

/// Reads one file; its errors name it.
class PictureFile {
public:
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

    /// Whether what the file says of a display window is meant.
    bool hasWindows() const { return format() == "openexr"; }

    /// All channels of all pixels, in `Channel` values.
    template <typename Channel>
    std::unique_ptr<Channel[]> read() {
        std::unique_ptr<Channel[]> pixels;
        bool isRead = false;
        attempt([&] {
            pixels = std::make_unique_for_overwrite<Channel[]>(valueCount());
            isRead = mInput->read_image(0, 0, 0, layout().nchannels,
                                        OIIO::BaseTypeFromC<Channel>::value, pixels.get());
        });
        if (!isRead) {
            fail(mInput->geterror());
        }
        return pixels;
    }

    /// Those that hold no colour. Only OpenEXR gives channels names by which they are known again.
    OtherChannels otherChannels() {
        OtherChannels others = OtherChannelsOf(layout());
        bool isRead = true;
        if (!others.isEmpty() && hasWindows()) {
            attempt([&] { isRead = others.read(*mInput); });
        }
        if (!isRead) {
            fail(mInput->geterror());
        }
        return others;
    }

    [[noreturn]] void fail(const std::string& reason) const {
        // Not all of the library's readers say why.
        throw Error(
            fmt::format("cannot read '{}': {}", mName, reason.empty() ? "it is damaged" : reason));
    }

private:
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

    void check() const {
        const ImageSpec& layout = this->layout();
        if (layout.deep || layout.depth > 1) {
            fail("it is not a flat picture");
        }
        checkSize(layout.width, layout.height);
        if (hasWindows()) {
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
    void checkMemory() const {
        const std::size_t megabytes = MostMegabytes();
        constexpr std::size_t kChannelsOfFrame = 4;
        const std::size_t frame = hasWindows() && !FillsItsFrame(layout())
                                      ? static_cast<std::size_t>(layout().full_width) *
                                            static_cast<std::size_t>(layout().full_height)
                                      : 0;
        const std::size_t values = valueCount() + frame * kChannelsOfFrame;
        if (values * sizeof(float) > megabytes * kMegabyte) {
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
};

Depth DepthOfFile(const ImageSpec& layout) {
    return layout.format == TypeDesc::UINT8 ? Depth::Bits8 : Depth::Float32;
}

PictureForm FormOf(const PictureFile& file) {
    const ChannelPlaces places = PlacesOf(file.layout());
    return {.isGrey = places.red == places.green,
            .hasAlpha = places.alpha >= 0,
            .format = file.format()};
}

bool IsPremultiplied(const PictureFile& file) {
    // These formats have straight alpha, which their readers neither change nor mention.
    const std::string format = file.format();
    const bool straight = file.layout().get_int_attribute("oiio:UnassociatedAlpha") != 0 ||
                          format == "bmp" || format == "gif";
    return AlphaOf(file.layout()) >= 0 && !straight;
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

/// 1 to 8: how the picture is stored; 1, upright, where the file says none of these.
int OrientationOf(const ImageSpec& layout) {
    constexpr int kUpright = 1;
    constexpr int kLast = 8;
    const int orientation = layout.get_int_attribute("Orientation", kUpright);
    return orientation >= kUpright && orientation <= kLast ? orientation : kUpright;
}

/// Turns the pixels upright where the file says that they are stored otherwise, and `layout` with
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

template <typename Channel, typename Pixel>
void FillWorld(const Channel* pixels, const ImageSpec& layout, World& world) {
    const auto stride = static_cast<std::size_t>(layout.nchannels);
    const ChannelPlaces places = PlacesOf(layout);
    for (A_long y = 0; y < world.height(); ++y) {
        ReadRow(pixels, stride, places, world.row<Pixel>(y));
        pixels += stride * static_cast<std::size_t>(layout.width);
    }
}

template <typename Channel, typename Pixel>
World ReadWorld(PictureFile& file, Depth depth, ImageSpec& layout) {
    std::unique_ptr<Channel[]> pixels = file.read<Channel>();
    if constexpr (std::same_as<Channel, float>) {
        if (IsPremultiplied(file)) {
            Unpremultiply(pixels.get(), layout.image_pixels(),
                          static_cast<std::size_t>(layout.nchannels), PlacesOf(layout));
        }
    }
    Reorient(layout, pixels);
    World world(depth, layout.width, layout.height);
    FillWorld<Channel, Pixel>(pixels.get(), layout, world);
    return world;
}

/// Reads the channels as the file has them, so that they are rounded once: to the layer's depth.
template <typename Pixel>
World ReadPixels(PictureFile& file, Depth depth, ImageSpec& layout) {
    constexpr unsigned char kFloat = TypeDesc::FLOAT;
    switch (IsPremultiplied(file) ? kFloat : layout.format.basetype) {
    case TypeDesc::UINT8:
        return ReadWorld<std::uint8_t, Pixel>(file, depth, layout);
    case TypeDesc::UINT16:
        return ReadWorld<std::uint16_t, Pixel>(file, depth, layout);
    default:
        return ReadWorld<float, Pixel>(file, depth, layout);
    }
}

World ReadWorld(PictureFile& file, Depth depth, ImageSpec& layout) {
    return withPixelType(depth, [&]<typename Pixel>(std::type_identity<Pixel>) {
        return ReadPixels<Pixel>(file, depth, layout);
    });
}

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

} // namespace

Picture ReadPicture(const std::filesystem::path& file, std::optional<Depth> depth) {
    PictureFile input(file);
    ImageSpec layout = input.layout();
    Picture picture{.world = ReadWorld(input, depth.value_or(DepthOfFile(layout)), layout),
                    .origin = {},
                    .form = FormOf(input),
                    .others = input.otherChannels(),
                    .losses = {}};
    if (input.hasWindows() && !FillsItsFrame(layout)) {
        if (ReachesBeyondItsFrame(layout)) {
            picture.losses.emplace_back("pixels outside of the display window are left out");
        }
        picture.world = FrameOf(picture.world, layout, !picture.form.hasAlpha);
        TakeFrame(layout);
    }
    picture.world.layer().pix_aspect_ratio = PixelAspectRatio(layout);
    layout.format = layout.channelformat(PlacesOf(layout).red); // channels can differ
    picture.origin = std::move(layout);
    return picture;
}

bool HoldsPictureLike(const std::filesystem::path& file, const std::filesystem::path& other) {
    const PictureFile input(other);
    ImageSpec layout = input.layout();
    if (input.hasWindows()) {
        TakeFrame(layout);
    }
    const auto size = SizeOf(layout);
    try {
        const World world = ReadPicture(file).world;
        return std::pair(world.width(), world.height()) == size;
    } catch (const Error&) {
        return false;
    }
}

} // namespace Kerovane::Host
