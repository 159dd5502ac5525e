#include "Host/Video/FramePixels.h"

#include "Host/Pictures/PixelConversion.h"
#include "Host/Pixels/ConvertPixels.h"
#include "Host/Video/Palette.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

namespace Kerovane::Host {

namespace {

constexpr std::size_t kChannels = 4;
constexpr ChannelPlaces kRgba{.red = 0, .green = 1, .blue = 2, .alpha = 3};

PixelCoding RgbaOf(AVPixelFormat format) {
    return {.format = format, .color = {.matrix = AVCOL_SPC_RGB, .range = AVCOL_RANGE_JPEG}};
}

/// Returns the RGBA format with enough bits for `format`.
AVPixelFormat RgbaFor(AVPixelFormat format) {
    return BitsOf(format) > 8 ? AV_PIX_FMT_RGBA64 : AV_PIX_FMT_RGBA;
}

template <typename Pixel>
std::span<Pixel> RowOf(const PixelView& view, std::ptrdiff_t y) {
    return {reinterpret_cast<Pixel*>(view.row(y)), static_cast<std::size_t>(view.width)};
}

template <typename Pixel>
std::span<const Pixel> RowOf(const ConstPixelView& view, std::ptrdiff_t y) {
    return {reinterpret_cast<const Pixel*>(view.row(y)), static_cast<std::size_t>(view.width)};
}

template <typename Channel>
Channel* RowOf(const AVFrame& rgba, std::ptrdiff_t y) {
    return reinterpret_cast<Channel*>(rgba.data[0] + y * rgba.linesize[0]);
}

PixelView ViewOfRgba(const AVFrame& rgba) {
    return {.top = reinterpret_cast<std::byte*>(rgba.data[0]),
            .rowBytes = rgba.linesize[0],
            .width = rgba.width,
            .height = rgba.height,
            .order = ChannelOrder::Rgba};
}

/// The stored pixels of an upright row: they begin at `x`, `y`, and each is `dx`, `dy` from the one
/// before.
struct StoredRow {
    std::ptrdiff_t x;
    std::ptrdiff_t y;
    int dx;
    int dy;

    /// `upright` is the number of the upright row; `width` and `height` are the stored picture's.
    StoredRow(Orientation turn, std::ptrdiff_t upright, int width, int height)
        : x(turn.yx * upright), y(turn.yy * upright), dx(turn.xx), dy(turn.xy) {
        // The inverse of a rotation is its transpose. Coordinates that run downwards begin at the
        // far side.
        x += turn.xx < 0 || turn.yx < 0 ? width - 1 : 0;
        y += turn.xy < 0 || turn.yy < 0 ? height - 1 : 0;
    }
};

template <typename Pixel>
bool IsOpaque(std::span<const Pixel> row) {
    constexpr auto kOpaque = static_cast<LayerChannel<Pixel>>(kLayerWhite<Pixel>);
    LayerChannel<Pixel> least = kOpaque;
    for (const Pixel& pixel : row) {
        least = std::min(least, pixel.alpha);
    }
    return least == kOpaque;
}

bool IsOpaque(const ConstPixelView& view) {
    return withPixelType(view.depth, [&view](auto type) {
        using Pixel = typename decltype(type)::type;
        for (std::ptrdiff_t y = 0; y < view.height; ++y) {
            if (!IsOpaque(RowOf<Pixel>(view, y))) {
                return false;
            }
        }
        return true;
    });
}

/// Returns `view` composited over black, which equals its premultiplied colours.
World OverBlack(const ConstPixelView& view) {
    World world(view.depth, view.width, view.height);
    PixelView premultiplied = ViewOf(world);
    premultiplied.alpha = Alpha::Premultiplied;
    ConvertPixels(view, premultiplied);
    return world;
}

} // namespace

FrameUnpacker::FrameUnpacker(int width, int height, const PixelCoding& coding,
                             Orientation orientation)
    : mWidth(width),
      mHeight(height),
      mOrientation(orientation),
      mFormat(coding.format),
      mBetween(RgbaFor(coding.format)),
      mRgba(mBetween, width, height),
      mScalers(width, height, coding, RgbaOf(mBetween)) {}

bool FrameUnpacker::takes(const AVFrame& frame) const {
    return frame.width == mWidth && frame.height == mHeight && frame.format == mFormat;
}

void FrameUnpacker::unpack(const AVFrame& frame, const PixelView& out) {
    const AvFrame rgba = mRgba.take();
    mScalers.convert(frame, *rgba);
    if (mBetween == AV_PIX_FMT_RGBA64) {
        unpackAs<std::uint16_t>(*rgba, out);
    } else if (out.depth == Depth::Bits8 && mOrientation.isUpright()) {
        ConvertPixels(ViewOfRgba(*rgba), out);
    } else {
        unpackAs<std::uint8_t>(*rgba, out);
    }
}

template <typename FileChannel>
void FrameUnpacker::unpackAs(const AVFrame& rgba, const PixelView& out) const {
    using FilePixel = std::array<FileChannel, kChannels>;
    std::vector<FilePixel> upright(static_cast<std::size_t>(out.width));
    for (std::ptrdiff_t y = 0; y < out.height; ++y) {
        StoredRow stored(mOrientation, y, mWidth, mHeight);
        for (FilePixel& pixel : upright) {
            std::copy_n(RowOf<FileChannel>(rgba, stored.y) + stored.x * std::ptrdiff_t{kChannels},
                        kChannels, pixel.begin());
            stored.x += stored.dx;
            stored.y += stored.dy;
        }
        withPixelType(out.depth, [&](auto type) {
            using Pixel = typename decltype(type)::type;
            ReadRow(upright.front().data(), kChannels, kRgba, RowOf<Pixel>(out, y));
        });
    }
}

FramePacker::FramePacker(int width, int height, const PixelCoding& coding)
    : mCoding(coding),
      mBetween(RgbaFor(coding.format)),
      mRgba(mBetween, width, height),
      mFrames(coding.format, width, height) {
    if (coding.format != mBetween && coding.format != AV_PIX_FMT_PAL8) {
        mScalers.emplace(width, height, RgbaOf(mBetween), coding);
    }
    if (coding.format == AV_PIX_FMT_YUV420P && width % 2 == 0 && height % 2 == 0) {
        mYuv420 = Yuv420::of(coding.color);
    }
}

AvFrame FramePacker::pack(const ConstPixelView& in) {
    AvFrame frame;
    if (!HasAlpha(mCoding.format) && !IsOpaque(in)) {
        mLostAlpha = true;
        const World overBlack = OverBlack(in);
        frame = convert(ViewOf(overBlack));
    } else {
        frame = convert(in);
    }
    SetTags(*frame, mCoding.color);
    return frame;
}

AvFrame FramePacker::convert(const ConstPixelView& in) {
    if (mYuv420 && in.depth == Depth::Bits8) {
        AvFrame frame = mFrames.take();
        mYuv420->convert(in, *frame);
        return frame;
    }
    AvFrame rgba = mRgba.take();
    fill(in, *rgba);
    if (mCoding.format == AV_PIX_FMT_PAL8) {
        return Palettized(*rgba);
    }
    if (!mScalers) {
        return rgba;
    }
    AvFrame frame = mFrames.take();
    mScalers->convert(*rgba, *frame);
    return frame;
}

void FramePacker::fill(const ConstPixelView& in, AVFrame& rgba) const {
    if (mBetween == AV_PIX_FMT_RGBA64) {
        fillAs<std::uint16_t>(in, rgba);
    } else if (in.depth == Depth::Bits8) {
        ConvertPixels(in, ViewOfRgba(rgba));
    } else {
        fillAs<std::uint8_t>(in, rgba);
    }
}

template <typename FileChannel>
void FramePacker::fillAs(const ConstPixelView& in, AVFrame& rgba) {
    withPixelType(in.depth, [&](auto type) {
        using Pixel = typename decltype(type)::type;
        for (std::ptrdiff_t y = 0; y < in.height; ++y) {
            WriteRow(RowOf<Pixel>(in, y), RowOf<FileChannel>(rgba, y));
        }
    });
}

} // namespace Kerovane::Host
