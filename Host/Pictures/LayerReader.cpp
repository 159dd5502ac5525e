#include "Host/Pictures/LayerReader.h"

#include "Host/Pictures/PixelConversion.h"

#include <OpenImageIO/imagebuf.h>
#include <OpenImageIO/imagebufalgo.h>

#include <cmath>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace Kerovane::Host {

namespace {

using OIIO::ImageSpec;
using OIIO::TypeDesc;

bool IsPremultiplied(const PictureFile& file) {
    // Readers of these formats do not set the attribute, although their alpha is straight.
    const std::string format = file.format();
    const bool straight = file.layout().get_int_attribute("oiio:UnassociatedAlpha") != 0 ||
                          format == "bmp" || format == "gif";
    return !straight;
}

/// Divides colour by alpha, except if alpha is 0, or counts as 0 because it is not finite.
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

/// Turns the pixels upright and updates `layout`, if the file states another orientation.
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

/// A layer's pixels and the places of its channels in each pixel.
template <typename Channel>
struct ChannelRows {
    std::unique_ptr<Channel[]> pixels;
    std::size_t stride = 0; ///< distance from pixel to pixel, in channels
    ChannelPlaces places;
};

/// Copies a layer out of the stored pixels of its part.
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

/// Reads the layers of a part into worlds.
class LayerReader {
public:
    /// `stored` is empty if the part's pixels were not read yet.
    LayerReader(PictureFile& file, const StoredPixels& stored, ImageSpec& layout)
        : mFile(file), mStored(stored), mLayout(layout) {}

    World read(const ColourLayer& layer, Depth depth) {
        return withPixelType(depth, [&]<typename Pixel>(std::type_identity<Pixel>) {
            return readPixels<Pixel>(layer, depth);
        });
    }

private:
    /// Reads channels in the file's own type if possible, so that values are rounded only once, to
    /// the layer's depth.
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
    ImageSpec& mLayout; ///< the part's layout; updated when the picture is turned upright
    bool mIsPremultiplied = false;
};

} // namespace

int OrientationOf(const ImageSpec& layout) {
    constexpr int kUpright = 1;
    constexpr int kLast = 8;
    const int orientation = layout.get_int_attribute("Orientation", kUpright);
    return orientation >= kUpright && orientation <= kLast ? orientation : kUpright;
}

World ReadLayer(PictureFile& file, const StoredPixels& stored, const ColourLayer& layer,
                Depth depth, OIIO::ImageSpec& layout) {
    return LayerReader(file, stored, layout).read(layer, depth);
}

} // namespace Kerovane::Host
